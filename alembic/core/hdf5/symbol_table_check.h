/// @file
/// Looks through a group whose links stand in a table of their own before libhdf5 does.
#pragma once

#include "ogawa/byte_source.h"

#include <Alembic/Util/Config.h>

#include <cstdint>

namespace Alembic {
namespace AbcCoreHDF5 {
inline namespace ALEMBIC_VERSION_NS {

/// Checks the links below the tree at `tree`, and the heap of their names at `heap`. Throws what is wrong with them.
void check_symbol_table(const Ogawa::FileSource& file, std::uint64_t tree, std::uint64_t heap);

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreHDF5
} // namespace Alembic
