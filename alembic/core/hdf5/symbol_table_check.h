/// @file
/// Looks through a group whose links stand in a table of their own before libhdf5 does.
#pragma once

#include "core/hdf5/check_ledger.h"
#include "ogawa/byte_source.h"

#include <Alembic/Util/Config.h>

#include <cstdint>

namespace Alembic {
namespace AbcCoreHDF5 {
inline namespace ALEMBIC_VERSION_NS {

/// Where the links of such a group stand.
struct LinkTable
{
    std::uint64_t tree; ///< address of a B-tree of nodes of links
    std::uint64_t heap; ///< address of the heap of their names
};

/// Checks the links and their names, and takes their bytes from `ledger`. Throws what is wrong with them.
void check_symbol_table(const Ogawa::ByteSource& file, const LinkTable& table, CheckLedger& ledger);

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreHDF5
} // namespace Alembic
