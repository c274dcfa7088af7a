/// @file
/// Looks through an object header before libhdf5 does: releases of it that are in use crash on attributes that do not
/// fit.
#pragma once

#include "core/hdf5/check_ledger.h"
#include "core/hdf5/message_check.h"
#include "core/hdf5/symbol_table_check.h"
#include "ogawa/byte_source.h"

#include <Alembic/Util/Config.h>

#include <cstdint>
#include <optional>
#include <vector>

namespace Alembic {
namespace AbcCoreHDF5 {
inline namespace ALEMBIC_VERSION_NS {

/// What a header leads to.
struct ObjectHeader
{
    std::vector<std::uint64_t> continuations;   ///< addresses
    std::optional<LinkTable> links;             ///< of a group whose links stand in a table
    std::optional<DenseIndex> dense_links;      ///< of a group that numbers its links, or has many
    std::optional<DenseIndex> dense_attributes; ///< of an object that has many
    std::optional<ChunkIndex> chunks;           ///< of a data set that has chunks
};

/// Checks the header, with all its continuations, of the object at `position` in the file, and takes its bytes from
/// `budget`. Throws what is wrong with it, or what is sound but not for us: attributes of types that archives do not
/// use.
ObjectHeader check_object_header(const Ogawa::ByteSource& file, std::uint64_t position, ReadBudget& budget);

/// The same with what the header leads to: libhdf5 may open the object. Claims what belongs to it alone.
void check_object(const Ogawa::ByteSource& file, std::uint64_t position, CheckLedger& ledger);

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreHDF5
} // namespace Alembic
