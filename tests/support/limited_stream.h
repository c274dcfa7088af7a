/// @file
/// A stream in memory that takes only so many bytes, like a disk that is full.
#pragma once

#include <cstddef>
#include <sstream>
#include <streambuf>

class LimitedBuffer : public std::stringbuf
{
public:
    /// `capacity`: writes that reach beyond that many bytes fail.
    explicit LimitedBuffer(std::size_t capacity)
        : std::stringbuf(std::ios::in | std::ios::out | std::ios::binary)
        , capacity_(capacity)
    {
    }

protected:
    std::streamsize xsputn(const char* data, std::streamsize size) override
    {
        const std::streamoff position = seekoff(0, std::ios::cur, std::ios::out);
        if (std::size_t(position + size) > capacity_) return 0;
        return std::stringbuf::xsputn(data, size);
    }

    int_type overflow(int_type character) override
    {
        const std::streamoff position = seekoff(0, std::ios::cur, std::ios::out);
        if (std::size_t(position) >= capacity_) return traits_type::eof();
        return std::stringbuf::overflow(character);
    }

private:
    std::size_t capacity_;
};
