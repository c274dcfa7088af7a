/// @file
/// Widths of numbers that HDF5 files store in no more bytes than they need.
#pragma once

#include <Alembic/Util/Config.h>

#include <cstddef>
#include <cstdint>

namespace Alembic {
namespace AbcCoreHDF5 {
inline namespace ALEMBIC_VERSION_NS {

/// The place of the highest bit that is set, from 0; of 0 as of 1.
constexpr unsigned highest_bit(std::uint64_t number)
{
    unsigned bit = 0;
    while (number >>= 1)
        ++bit;
    return bit;
}

constexpr bool is_power_of_two(std::uint64_t number)
{
    return number != 0 && (number & (number - 1)) == 0;
}

/// Bytes of numbers up to `most`.
constexpr std::size_t bytes_to_count_to(std::uint64_t most)
{
    return highest_bit(most) / 8 + 1;
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreHDF5
} // namespace Alembic
