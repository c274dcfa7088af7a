/// @file
/// Takes numbers and strings off a run of bytes without ever leaving it.
#pragma once

#include <Alembic/Util/Config.h>

#include <cstddef>
#include <cstring>
#include <string_view>

namespace Alembic {
namespace AbcCoreOgawa {
inline namespace ALEMBIC_VERSION_NS {

/// A position in bytes that belong to someone else.
class ByteCursor
{
public:
    explicit ByteCursor(std::string_view bytes)
        : at_(bytes.data())
        , end_(bytes.data() + bytes.size())
    {
    }

    std::size_t left() const { return static_cast<std::size_t>(end_ - at_); }

    /// Takes a number as it stands in memory. False, nothing taken, when there are not enough bytes.
    template <class Number>
    bool take(Number& number)
    {
        if (left() < sizeof number) return false;
        std::memcpy(&number, at_, sizeof number);
        at_ += sizeof number;
        return true;
    }

    /// Takes `size` bytes, a view on them. False, nothing taken, when there are not enough.
    bool take(std::size_t size, std::string_view& bytes)
    {
        if (left() < size) return false;
        bytes = std::string_view(at_, size);
        at_ += size;
        return true;
    }

private:
    const char* at_;
    const char* end_;
};

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreOgawa
} // namespace Alembic
