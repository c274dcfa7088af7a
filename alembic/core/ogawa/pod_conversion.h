/// @file
/// Numbers of one type turned into another.
#pragma once

#include <Alembic/AbcCoreOgawa/ReadWrite.h>

#include <cstddef>

namespace Alembic {
namespace AbcCoreOgawa {
inline namespace ALEMBIC_VERSION_NS {

/// Converts `count` numbers at `from` to `to`; both types are number PODs, the memory is aligned for them and does not
/// overlap. Bools become 0 or 1, what is not zero becomes true. Other values are clamped to what the target holds, then
/// cast; NaN becomes 0 in integers.
void convert_numbers(AbcA::PlainOldDataType from_pod, const void* from, AbcA::PlainOldDataType to_pod, void* to,
                     std::size_t count);

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreOgawa
} // namespace Alembic
