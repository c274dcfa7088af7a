/// OutputFile: a file that is there whole or not at all.
#pragma once

#include "new_file.h"

#include <fmt/compile.h>
#include <fmt/format.h>

#include <cstdint>
#include <cstdio>
#include <iterator>
#include <string>
#include <string_view>
#include <utility>

/// Writes to a temporary file beside `path`, which takes that name on `commit`. Without it nothing remains, and a file
/// that was there before stays as it is. Every failure throws ToolError.
class OutputFile
{
public:
    explicit OutputFile(const std::string& path);
    ~OutputFile();
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    /// Adds formatted text; the format is a FMT_COMPILE.
    template <class Format, class... Values>
    void print(const Format& format, const Values&... values)
    {
        fmt::format_to(std::back_inserter(buffer_), format, values...);
        if (buffer_.size() >= flush_size) flush();
    }
    void write(std::string_view text);
    /// Four bytes, the least significant first.
    void write_little_endian(std::uint32_t value);
    void write_little_endian(float value);

    void commit();

private:
    static constexpr std::size_t flush_size = 1 << 20;

    void flush();

    NewFile new_file_;
    std::FILE* file_ = nullptr;
    fmt::memory_buffer buffer_;
};
