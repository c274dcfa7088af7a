/// @file
/// Pieces of a file, for the checks.
#pragma once

#include "core/hdf5/read_budget.h"
#include "ogawa/byte_source.h"

#include <Alembic/Util/Config.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace Alembic {
namespace AbcCoreOgawa {
inline namespace ALEMBIC_VERSION_NS {
class ByteCursor;
}
} // namespace AbcCoreOgawa

namespace AbcCoreHDF5 {
inline namespace ALEMBIC_VERSION_NS {

/// An address that leads nowhere.
constexpr std::uint64_t nowhere = ~std::uint64_t(0);

/// The `size` bytes at `position`. Throws when they are not all in the file.
std::string read_bytes(const Ogawa::ByteSource& file, std::uint64_t position, std::uint64_t size);

/// The same, taken from `budget` first.
std::string read_bytes(const Ogawa::ByteSource& file, std::uint64_t position, std::uint64_t size, ReadBudget& budget);

/// Takes a number of `width` bytes, at most 8. False when there are not as many.
bool take_sized(AbcCoreOgawa::ByteCursor& cursor, std::size_t width, std::uint64_t& number);

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreHDF5
} // namespace Alembic
