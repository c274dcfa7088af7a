/// Words of little-endian bytes, for the hash functions.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace Alembic {
namespace Util {

constexpr bool host_is_big_endian = __BYTE_ORDER__ == __ORDER_BIG_ENDIAN__;

/// The 64-bit word at `bytes`, at any alignment.
inline std::uint64_t load_word(const std::uint8_t* bytes)
{
    std::uint64_t word;
    std::memcpy(&word, bytes, sizeof(word));
    return host_is_big_endian ? __builtin_bswap64(word) : word;
}

/// Rotates left by `bits`, 1 to 63.
inline std::uint64_t rotate_left(std::uint64_t word, int bits)
{
    return (word << bits) | (word >> (64 - bits));
}

} // namespace Util
} // namespace Alembic
