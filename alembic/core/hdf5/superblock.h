/// @file
/// The start of a file, looked at before libhdf5 does.
#pragma once

#include "ogawa/byte_source.h"

#include <Alembic/Util/Config.h>

#include <cstdint>

namespace Alembic {
namespace AbcCoreHDF5 {
inline namespace ALEMBIC_VERSION_NS {

struct Superblock
{
    std::uint64_t end;  ///< bytes that the file says it has
    std::uint64_t root; ///< address of the header of the root group
};

/// Throws what keeps the file from being an HDF5 archive that can be opened: another signature at its start, addresses
/// that do not have 8 bytes or do not count from the start, extensions, an end behind that of the file.
Superblock read_superblock(const Ogawa::ByteSource& file);

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreHDF5
} // namespace Alembic
