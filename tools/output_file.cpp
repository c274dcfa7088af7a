#include "output_file.h"

#include "tool_error.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <system_error>

#include <fcntl.h>
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

OutputFile::OutputFile(const std::string& path)
    : path_(path)
    , temporary_path_(path + ".XXXXXX")
{
    struct stat status;
    if (stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode)) fail(EISDIR);
    const int descriptor = mkstemp(temporary_path_.data());
    if (descriptor < 0) fail(errno);
    if (fchmod(descriptor, new_file_mode()) == 0) file_ = fdopen(descriptor, "wb");
    if (file_) return;
    const int error_number = errno;
    close(descriptor);
    unlink(temporary_path_.c_str());
    fail(error_number);
}

OutputFile::~OutputFile()
{
    if (!file_) return;
    std::fclose(file_);
    unlink(temporary_path_.c_str());
}

void OutputFile::write(std::string_view text)
{
    buffer_.append(text.data(), text.data() + text.size());
    if (buffer_.size() >= flush_size) flush();
}

void OutputFile::write_little_endian(std::uint32_t value)
{
    const char bytes[4] = {static_cast<char>(value), static_cast<char>(value >> 8), static_cast<char>(value >> 16),
                           static_cast<char>(value >> 24)};
    write(std::string_view(bytes, 4));
}

void OutputFile::write_little_endian(float value)
{
    std::uint32_t bits = 0;
    std::memcpy(&bits, &value, sizeof(bits));
    write_little_endian(bits);
}

void OutputFile::commit()
{
    flush();
    std::FILE* const file = std::exchange(file_, nullptr);
    // On the disk before it takes the name: otherwise a power cut could leave the name on an empty file.
    bool is_written = std::fflush(file) == 0 && fsync(fileno(file)) == 0;
    int error_number = errno;
    if (std::fclose(file) != 0 && std::exchange(is_written, false)) error_number = errno;
    if (is_written && std::rename(temporary_path_.c_str(), path_.c_str()) != 0) {
        error_number = errno;
        is_written = false;
    }
    if (is_written) return;
    unlink(temporary_path_.c_str());
    fail(error_number);
}

void OutputFile::flush()
{
    if (std::fwrite(buffer_.data(), 1, buffer_.size(), file_) != buffer_.size()) fail(errno);
    buffer_.clear();
}

void OutputFile::fail(int error_number) const
{
    throw ToolError(path_ + ": cannot be written: " + std::generic_category().message(error_number));
}
