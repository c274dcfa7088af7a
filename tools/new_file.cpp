#include "new_file.h"

#include "tool_error.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <system_error>

#include <sys/stat.h>
#include <unistd.h>

namespace {

/// The access that a file newly made by this process has.
mode_t new_file_mode()
{
    const mode_t mask = umask(0);
    umask(mask);
    return 0666 & ~mask;
}

} // namespace

NewFile::NewFile(const std::string& path)
    : path_(path)
    , temporary_path_(path + ".XXXXXX")
{
    struct stat status;
    if (stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode)) fail(EISDIR);
    descriptor_ = mkstemp(temporary_path_.data());
    if (descriptor_ < 0) fail(errno);
    if (fchmod(descriptor_, new_file_mode()) == 0) return;
    const int error_number = errno;
    close(descriptor_);
    unlink(temporary_path_.c_str());
    fail(error_number);
}

NewFile::~NewFile()
{
    close(descriptor_);
    if (!is_committed_) unlink(temporary_path_.c_str());
}

void NewFile::commit()
{
    // On the disk before it takes the name: otherwise a power cut could leave the name on an empty file.
    if (fsync(descriptor_) != 0 || std::rename(temporary_path_.c_str(), path_.c_str()) != 0) fail(errno);
    is_committed_ = true;
}

void NewFile::fail(int error_number) const
{
    throw ToolError(path_ + ": cannot be written: " + std::generic_category().message(error_number));
}
