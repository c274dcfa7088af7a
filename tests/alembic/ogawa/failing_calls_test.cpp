/// Files of which the system does not tell what they are.
#include "ogawa/byte_source.h"
#include "ogawa/output_target.h"
#include "support/scratch_file.h"

#include <gmock/gmock.h>

#include <cerrno>
#include <fcntl.h>
#include <fstream>
#include <sys/stat.h>

namespace {

bool fstat_fails = false;

} // namespace

/// What the container's sources call: they are part of this program.
int fstat(int descriptor, struct stat* status) noexcept
{
    if (!fstat_fails) return fstatat(descriptor, "", status, AT_EMPTY_PATH);
    errno = EIO;
    return -1;
}

TEST(FailingCalls, AFileWithoutASizeIsRefused)
{
    const ScratchFile file("file.abc");
    std::ofstream(file.path()) << "text";
    fstat_fails = true;
    std::string reading, writing;
    try {
        const Alembic::Ogawa::FileSource source(file.path());
    } catch (const std::exception& error) {
        reading = error.what();
    }
    try {
        Alembic::Ogawa::open_output_file(file.path());
    } catch (const std::exception& error) {
        writing = error.what();
    }
    fstat_fails = false;
    EXPECT_EQ(reading, "its size cannot be found out");
    EXPECT_EQ(writing, "Could not open file: " + file.path() + " (Input/output error)");
    EXPECT_EQ(Alembic::Ogawa::FileSource(file.path()).size(), 0u) << "opening for writing had emptied it";
}
