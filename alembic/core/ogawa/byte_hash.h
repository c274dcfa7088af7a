/// @file
/// Hash of a few bytes for tables in memory; never stored.
#pragma once

#include <Alembic/Util/Config.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace Alembic {
namespace AbcCoreOgawa {
inline namespace ALEMBIC_VERSION_NS {

/// Different in every process, so that no file can be made whose names all fall into one slot.
std::uint64_t process_seed();

inline std::uint64_t multiply_and_fold(std::uint64_t a, std::uint64_t b)
{
    __extension__ typedef unsigned __int128 Wide;
    const Wide product = static_cast<Wide>(a) * b;
    return static_cast<std::uint64_t>(product) ^ static_cast<std::uint64_t>(product >> 64);
}

/// Hash of `bytes`, eight at a time.
inline std::uint64_t hash_bytes(std::string_view bytes, std::uint64_t seed)
{
    constexpr std::uint64_t spread = 0x9e3779b97f4a7c15;
    const char* at = bytes.data();
    std::size_t left = bytes.size();
    std::uint64_t hash = seed ^ (left * spread);
    for (; left >= 8; at += 8, left -= 8) {
        std::uint64_t word;
        std::memcpy(&word, at, 8);
        hash = multiply_and_fold(hash ^ word, seed ^ spread);
    }
    std::uint64_t word = 0;
    if (left > 0) std::memcpy(&word, at, left);
    hash = multiply_and_fold(hash ^ word, seed ^ spread);
    return hash ^ (hash >> 32);
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreOgawa
} // namespace Alembic
