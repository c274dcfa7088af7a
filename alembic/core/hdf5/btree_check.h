/// @file
/// Walks B-trees of the first version before libhdf5 does: releases of it that are in use follow damaged ones anywhere.
#pragma once

#include "core/hdf5/read_budget.h"
#include "ogawa/byte_source.h"

#include <Alembic/Util/Config.h>

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace Alembic {
namespace AbcCoreHDF5 {
inline namespace ALEMBIC_VERSION_NS {

/// What stands below the leaves of a tree.
enum class TreeKind : std::uint8_t {
    SYMBOLS = 0, ///< nodes of links
    CHUNKS = 1,  ///< pieces of data sets
};

/// What is wanted of a tree. Keys come as they are stored.
struct TreeUse
{
    std::function<void(std::string_view key)> use_key;                          ///< each key of each node; may be empty
    std::function<void(std::string_view key, std::uint64_t address)> use_entry; ///< each entry of each leaf
};

/// Visits the tree at `root`, from its first entry to its last, whose keys have `key_size` bytes. Takes the bytes of
/// its nodes from `budget`. Throws for nodes that do not lie in the file, are of another kind, or hang at a wrong
/// level.
void walk_tree(const Ogawa::ByteSource& file, std::uint64_t root, TreeKind kind, std::size_t key_size,
               const TreeUse& use, ReadBudget& budget);

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreHDF5
} // namespace Alembic
