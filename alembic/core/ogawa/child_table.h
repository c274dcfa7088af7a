/// @file
/// The children of an object: their headers parsed once, their nodes made when they are asked for.
#pragma once

#include "core/common/name_index.h"
#include "core/ogawa/limits.h"
#include "core/ogawa/metadata_table.h"

#include <atomic>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace Alembic {
namespace AbcCoreOgawa {
inline namespace ALEMBIC_VERSION_NS {

class ObjectReader;

/// Does not change once made, but for the nodes, which appear one by one and stay.
class ChildTable
{
public:
    /// No children.
    ChildTable() = default;
    ~ChildTable();
    ChildTable(const ChildTable&) = delete;
    ChildTable& operator=(const ChildTable&) = delete;

    /// Parses the child headers in `data`, the last child of an object group, all but the two hashes at its end. Throws
    /// "Read invalid: Object Headers ..." when they are cut, refer to metadata that is not there, or are more than the
    /// `children_in_group`.
    ChildTable(const Ogawa::DataReader& data, const MetadataTable& metadata, std::uint64_t children_in_group);

    /// Different names there are; this many children can be reached by number.
    std::uint32_t size() const { return index_.size(); }
    std::uint32_t record_count() const { return static_cast<std::uint32_t>(records_.size()); }

    /// Bytes of a file that these children take at least: their headers, and their entries in the object's group.
    std::uint64_t byte_cost() const { return byte_count_ + child_entry_bytes * records_.size(); }

    /// The number of the last child of that name, or AbcCoreCommon::NameIndex::none.
    std::uint32_t find(std::string_view name) const;

    /// Of child `index`, which must be below the number of records.
    std::string_view name(std::uint32_t index) const;
    AbcA::MetaData metadata(std::uint32_t index, const MetadataTable& table) const;

    /// The child's node, null while nobody has asked for it.
    ObjectReader* node(std::uint32_t index) const { return nodes_[index].load(std::memory_order_acquire); }

    /// Puts a child's node in its place. When another thread was faster its node stays and is returned, `node` is
    /// freed. `added` tells which.
    ObjectReader* add_node(std::uint32_t index, std::unique_ptr<ObjectReader> node, bool& added) const;

private:
    struct Record
    {
        std::uint64_t name_offset;
        std::uint32_t name_size;
        std::uint32_t metadata_size; ///< 0 but for metadata that stands in the header; it follows the name
        std::uint8_t metadata_index;
    };

    std::unique_ptr<char[]> bytes_; ///< the headers as they stand in the file
    std::size_t byte_count_ = 0;
    std::vector<Record> records_;
    AbcCoreCommon::NameIndex index_;
    std::unique_ptr<std::atomic<ObjectReader*>[]> nodes_;
    mutable std::atomic<ObjectReader*> last_made_{nullptr}; ///< all nodes, each leading to the one made before it
};

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreOgawa
} // namespace Alembic
