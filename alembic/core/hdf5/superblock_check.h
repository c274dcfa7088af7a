/// @file
/// Looks at the start of a file, and at the header of its root group, before libhdf5 does.
#pragma once

#include "ogawa/byte_source.h"

#include <Alembic/Util/Config.h>

namespace Alembic {
namespace AbcCoreHDF5 {
inline namespace ALEMBIC_VERSION_NS {

/// Throws what keeps the file from being an HDF5 archive that can be opened: another signature at its start, addresses
/// that do not have 8 bytes or do not count from the start, a root group whose header is damaged.
void check_superblock(const Ogawa::FileSource& file);

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreHDF5
} // namespace Alembic
