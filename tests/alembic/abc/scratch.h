/// What the tests of the typed layer share: a file of their own, and the text of what is thrown.
#pragma once

#include <Alembic/Abc/All.h>
#include <Alembic/AbcCoreOgawa/All.h>

#include <gtest/gtest.h>

#include <unistd.h>

#include <cstdio>
#include <string>

namespace abc_tests {

using namespace Alembic::Abc;
using Alembic::AbcCoreOgawa::ReadArchive;
using Alembic::AbcCoreOgawa::WriteArchive;

constexpr ErrorHandler::Policy QUIET = ErrorHandler::kQuietNoopPolicy;
constexpr ErrorHandler::Policy NOISY = ErrorHandler::kNoisyNoopPolicy;
constexpr ErrorHandler::Policy THROW = ErrorHandler::kThrowPolicy;

/// A path that no other test or process uses; the file goes with the scope.
class ScratchFile
{
public:
    ScratchFile()
    {
        static int count = 0;
        path_ = ::testing::TempDir() + "abc_" + std::to_string(::getpid()) + "_" + std::to_string(count++) + ".abc";
    }
    ~ScratchFile() { std::remove(path_.c_str()); }
    ScratchFile(const ScratchFile&) = delete;
    ScratchFile& operator=(const ScratchFile&) = delete;

    const std::string& path() const { return path_; }

private:
    std::string path_;
};

/// The text of the library's exception that `call` throws; "" when it throws nothing.
template <class CALL>
std::string thrown_text(CALL call)
{
    try {
        call();
    } catch (const Exception& exception) {
        return exception.what();
    }
    return std::string();
}

} // namespace abc_tests
