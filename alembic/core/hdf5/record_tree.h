/// @file
/// Walks B-trees of the second version, the indices of links and attributes where there are many, before libhdf5 does:
/// checksums keep accidents from it, but not those who mean harm.
#pragma once

#include "core/hdf5/check_ledger.h"
#include "ogawa/byte_source.h"

#include <Alembic/Util/Config.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string_view>

namespace Alembic {
namespace AbcCoreHDF5 {
inline namespace ALEMBIC_VERSION_NS {

/// What a tree keeps records of, as it is stored, and the bytes that each record has.
struct RecordKind
{
    std::uint8_t stored;
    std::size_t size;
};

/// Gives the records of the tree at `position` to `use`, from the first to the last. Takes the bytes of its nodes from
/// `ledger`, and claims them. Throws for nodes that do not lie in the file or are damaged, and for a tree that does not
/// have as many records as it says.
void walk_records(const Ogawa::ByteSource& file, std::uint64_t position, RecordKind kind,
                  const std::function<void(std::string_view record)>& use, CheckLedger& ledger);

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreHDF5
} // namespace Alembic
