/// @file
/// Hash of a few bytes for tables in memory; never stored.
#pragma once

#include <Alembic/Util/Config.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace Alembic {
namespace AbcCoreCommon {
inline namespace ALEMBIC_VERSION_NS {

/// Different in every process, so that no file can be made whose names all fall into one slot.
extern const std::uint64_t seed_of_process __attribute__((visibility("hidden")));
inline std::uint64_t process_seed()
{
    return seed_of_process;
}

inline std::uint64_t multiply_and_fold(std::uint64_t a, std::uint64_t b)
{
    __extension__ typedef unsigned __int128 Wide;
    const Wide product = static_cast<Wide>(a) * b;
    return static_cast<std::uint64_t>(product) ^ static_cast<std::uint64_t>(product >> 64);
}

inline std::uint64_t load_u64(const char* bytes)
{
    std::uint64_t word;
    std::memcpy(&word, bytes, sizeof word);
    return word;
}

inline std::uint32_t load_u32(const char* bytes)
{
    std::uint32_t word;
    std::memcpy(&word, bytes, sizeof word);
    return word;
}

/// Hash of `bytes`, eight at a time.
inline std::uint64_t hash_bytes(std::string_view bytes, std::uint64_t seed)
{
    constexpr std::uint64_t spread = 0x9e3779b97f4a7c15;
    const char* const data = bytes.data();
    const std::size_t size = bytes.size();
    std::uint64_t hash = seed ^ (size * spread);
    for (std::size_t at = 0; at + 8 < size; at += 8)
        hash = multiply_and_fold(hash ^ load_u64(data + at), seed ^ spread);
    // The last 1 to 8 bytes; longer names have some of them in the word before too, which does no harm.
    std::uint64_t last = 0;
    if (size >= 8)
        last = load_u64(data + size - 8);
    else if (size >= 4)
        last = std::uint64_t(load_u32(data)) << 32 | load_u32(data + size - 4);
    else
        for (std::size_t at = 0; at < size; ++at)
            last = last << 8 | static_cast<unsigned char>(data[at]);
    hash = multiply_and_fold(hash ^ last, seed ^ spread);
    return hash ^ (hash >> 32);
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreCommon
} // namespace Alembic
