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
        : bytes_(bytes)
    {
    }

    std::size_t left() const { return bytes_.size(); }

    /// Takes a number as it stands in memory. False, nothing taken, when there are not enough bytes.
    template <class Number>
    bool take(Number& number)
    {
        if (bytes_.size() < sizeof number) return false;
        std::memcpy(&number, bytes_.data(), sizeof number);
        bytes_.remove_prefix(sizeof number);
        return true;
    }

    /// Takes `size` bytes, a view on them. False, nothing taken, when there are not enough.
    bool take(std::size_t size, std::string_view& bytes)
    {
        if (bytes_.size() < size) return false;
        bytes = bytes_.substr(0, size);
        bytes_.remove_prefix(size);
        return true;
    }

private:
    std::string_view bytes_;
};

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreOgawa
} // namespace Alembic
