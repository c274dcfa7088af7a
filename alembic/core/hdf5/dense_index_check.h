/// @file
/// Looks through the links and attributes of objects that have many before libhdf5 does: a heap that holds them, and
/// trees that find them in it.
#pragma once

#include "core/hdf5/check_ledger.h"
#include "core/hdf5/message_check.h"
#include "ogawa/byte_source.h"

#include <Alembic/Util/Config.h>

namespace Alembic {
namespace AbcCoreHDF5 {
inline namespace ALEMBIC_VERSION_NS {

/// Check each link, or attribute, as if it stood in the object's header, and that each tree leads to each once. Take
/// their bytes from `ledger`. Throw what is wrong with them.
void check_dense_links(const Ogawa::ByteSource& file, const DenseIndex& index, CheckLedger& ledger);
void check_dense_attributes(const Ogawa::ByteSource& file, const DenseIndex& index, CheckLedger& ledger);

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreHDF5
} // namespace Alembic
