#include "output_file.h"

#include <cerrno>
#include <cstring>

#include <unistd.h>

OutputFile::OutputFile(const std::string& path)
    : new_file_(path)
{
    const int descriptor = dup(new_file_.get_descriptor());
    if (descriptor >= 0) file_ = fdopen(descriptor, "wb");
    if (file_) return;
    const int error_number = errno;
    if (descriptor >= 0) close(descriptor);
    new_file_.fail(error_number);
}

OutputFile::~OutputFile()
{
    if (file_) std::fclose(file_);
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
    if (std::fclose(std::exchange(file_, nullptr)) != 0) new_file_.fail(errno);
    new_file_.commit();
}

void OutputFile::flush()
{
    if (std::fwrite(buffer_.data(), 1, buffer_.size(), file_) != buffer_.size()) new_file_.fail(errno);
    buffer_.clear();
}
