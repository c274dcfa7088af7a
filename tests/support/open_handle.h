/// A handle on an archive for the length of a scope.
#pragma once

#include <abc_input.h>

#include <memory>

class OpenHandle
{
public:
    explicit OpenHandle(const AbcFileList& files)
        : handle_(AbcInput::get_archive(files))
    {
    }
    ~OpenHandle() { AbcInput::release_archive(handle_.get()); }
    OpenHandle(const OpenHandle&) = delete;
    OpenHandle& operator=(const OpenHandle&) = delete;

    AbcInputArchiveHandle& operator*() const { return *handle_; }
    AbcInputArchiveHandle* operator->() const { return handle_.get(); }

private:
    const std::unique_ptr<AbcInputArchiveHandle> handle_;
};
