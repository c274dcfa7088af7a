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

/// The name of the file that a link leads to, so that the link stays one.
std::string resolved(const std::string& path)
{
    char* const found = realpath(path.c_str(), nullptr);
    const std::string name = found ? found : path;
    std::free(found);
    return name;
}

} // namespace

NewFile::NewFile(const std::string& path)
    : path_(resolved(path))
    , temporary_path_(path_ + ".XXXXXX")
{
    struct stat status;
    mode_t mode = new_file_mode();
    if (stat(path.c_str(), &status) == 0) {
        if (S_ISDIR(status.st_mode)) fail(EISDIR);
        if (!S_ISREG(status.st_mode)) throw ToolError(path + ": cannot be written: it is no plain file");
        if (access(path.c_str(), W_OK) != 0) fail(errno);
        mode = status.st_mode & 07777;
    } else if (const int error_number = errno; lstat(path.c_str(), &status) == 0) {
        fail(error_number); // a link that leads nowhere stays as it is
    }
    descriptor_ = mkstemp(temporary_path_.data());
    if (descriptor_ < 0) fail(errno);
    if (fchmod(descriptor_, mode) == 0) return;
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
