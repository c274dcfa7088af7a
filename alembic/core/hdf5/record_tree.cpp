/// @file
/// The stored form of B-trees of the second version.
#include "core/hdf5/record_tree.h"

#include "core/hdf5/bit_widths.h"
#include "core/hdf5/checksum.h"
#include "core/hdf5/limits.h"
#include "core/hdf5/stored_bytes.h"
#include "core/ogawa/byte_cursor.h"

#include <Alembic/AbcCoreAbstract/All.h>

#include <string>
#include <vector>

namespace Alembic {
namespace AbcCoreHDF5 {
inline namespace ALEMBIC_VERSION_NS {

namespace {

using AbcCoreOgawa::ByteCursor;

constexpr std::size_t node_prefix = 6, checksum_size = 4, address_size = 8;

[[noreturn]] void fail(const char* reason)
{
    ABCA_THROW("An index is damaged: " << reason);
}

/// How nodes that are so many levels above the leaves are stored.
struct Level
{
    std::uint64_t most_records; ///< in one node
    std::uint64_t most_below;   ///< in one node and all below it
    std::size_t total_width;    ///< bytes of the number of records in one node and all below it; 0 for leaves
};

/// Where a node is, and what the one above it says of it.
struct NodePlace
{
    std::uint64_t address, record_count, total;
};

class RecordTree
{
public:
    RecordTree(const Ogawa::ByteSource& file, std::uint64_t position, RecordKind kind,
               const std::function<void(std::string_view)>& use, CheckLedger& ledger)
        : file_(file)
        , position_(position)
        , kind_(kind)
        , use_(use)
        , ledger_(ledger)
    {
        constexpr std::size_t size = 38;
        ledger.claim(position, position);
        const std::string bytes = read_bytes(file, position, size, ledger);
        ByteCursor cursor(bytes);
        std::string_view signature;
        std::uint8_t version = 0, stored_kind = 0, split = 0, merge = 0;
        std::uint16_t record_size = 0, root_count = 0;
        cursor.take(4, signature);
        cursor.take(version);
        cursor.take(stored_kind);
        cursor.take(node_size_);
        cursor.take(record_size);
        cursor.take(depth_);
        cursor.take(split);
        cursor.take(merge);
        cursor.take(root_.address);
        cursor.take(root_count);
        cursor.take(root_.total);
        if (signature != "BTHD" || version != 0 || !ends_in_checksum(bytes)) fail("it is lost");
        if (stored_kind != kind.stored || record_size != kind.size) fail("it is one of something else");
        if (node_size_ > max_node_bytes || depth_ > max_index_level) fail("its nodes have no size that is known");
        if (split > 100 || merge > 100) fail("it has an unknown form");
        root_.record_count = root_count;
        measure_levels();
    }

    void walk()
    {
        if (root_.record_count == 0 && depth_ == 0 && root_.total == 0) return;
        walk(root_, depth_);
    }

private:
    void measure_levels()
    {
        for (int above_leaves = 0; above_leaves <= depth_; ++above_leaves) {
            const std::size_t child = above_leaves == 0 ? 0 : pointer_size(above_leaves);
            const std::size_t overhead = node_prefix + checksum_size + child;
            const std::uint64_t most = node_size_ < overhead ? 0 : (node_size_ - overhead) / (kind_.size + child);
            if (most == 0) fail("its nodes have no room");
            Level level = {most, most, 0};
            if (above_leaves > 0) {
                const std::uint64_t below = levels_.back().most_below;
                if (__builtin_mul_overflow(most + 1, below, &level.most_below) ||
                    __builtin_add_overflow(level.most_below, most, &level.most_below))
                    fail("it has more levels than there can be");
                level.total_width = bytes_to_count_to(level.most_below);
            }
            levels_.push_back(level);
        }
    }

    /// Bytes by which a node that is so many levels above the leaves leads to one below.
    std::size_t pointer_size(int above_leaves) const
    {
        return address_size + count_width() + levels_[std::size_t(above_leaves) - 1].total_width;
    }

    /// Bytes of the number of records in one node.
    std::size_t count_width() const { return bytes_to_count_to(levels_.front().most_records); }

    void walk(const NodePlace& place, int above_leaves)
    {
        if (place.record_count == 0 || place.record_count > levels_[std::size_t(above_leaves)].most_records)
            fail("a node has more records than fit, or none");
        // libhdf5 reads whole nodes, whatever is in them, and keeps them in the form that their tree has.
        ledger_.claim(place.address, position_);
        const std::string node = read_bytes(file_, place.address, node_size_, ledger_);
        const std::size_t records_size = std::size_t(place.record_count) * kind_.size;
        const std::size_t child_count = above_leaves == 0 ? 0 : std::size_t(place.record_count) + 1;
        const std::size_t children_size = above_leaves == 0 ? 0 : child_count * pointer_size(above_leaves);
        const std::string_view used =
            std::string_view(node).substr(0, node_prefix + records_size + children_size + checksum_size);
        ByteCursor cursor(used);
        std::string_view signature, records, record;
        std::uint8_t version = 0, stored_kind = 0;
        cursor.take(4, signature);
        cursor.take(version);
        cursor.take(stored_kind);
        if (signature != (above_leaves == 0 ? "BTLF" : "BTIN") || version != 0 || stored_kind != kind_.stored ||
            !ends_in_checksum(used))
            fail("a node is lost");
        cursor.take(records_size, records);
        ByteCursor record_cursor(records);
        std::uint64_t total = place.record_count;
        for (std::size_t i = 0; i < child_count; ++i) {
            const NodePlace child = take_child(cursor, above_leaves);
            total += child.total;
            walk(child, above_leaves - 1);
            if (record_cursor.take(kind_.size, record)) use_(record);
        }
        while (record_cursor.take(kind_.size, record)) // a leaf's
            use_(record);
        if (total != place.total) fail("it does not have as many records as it says");
    }

    NodePlace take_child(ByteCursor& cursor, int above_leaves) const
    {
        NodePlace child = {};
        cursor.take(child.address);
        take_sized(cursor, count_width(), child.record_count);
        const std::size_t total_width = levels_[std::size_t(above_leaves) - 1].total_width;
        take_sized(cursor, total_width, child.total);
        if (total_width == 0) child.total = child.record_count;
        return child;
    }

    const Ogawa::ByteSource& file_;
    const std::uint64_t position_;
    const RecordKind kind_;
    const std::function<void(std::string_view)>& use_;
    CheckLedger& ledger_;
    std::uint32_t node_size_ = 0;
    std::uint16_t depth_ = 0; ///< levels below the root
    NodePlace root_ = {};
    std::vector<Level> levels_; ///< from the leaves up
};

} // namespace

void walk_records(const Ogawa::ByteSource& file, std::uint64_t position, RecordKind kind,
                  const std::function<void(std::string_view record)>& use, CheckLedger& ledger)
{
    RecordTree(file, position, kind, use, ledger).walk();
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreHDF5
} // namespace Alembic
