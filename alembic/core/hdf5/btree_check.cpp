/// @file
/// The stored form of B-trees of the first version.
#include "core/hdf5/btree_check.h"

#include "core/hdf5/stored_bytes.h"
#include "core/ogawa/byte_cursor.h"

#include <Alembic/AbcCoreAbstract/All.h>

#include <algorithm>
#include <cstddef>
#include <string>
#include <vector>

namespace Alembic {
namespace AbcCoreHDF5 {
inline namespace ALEMBIC_VERSION_NS {

namespace {

using AbcCoreOgawa::ByteCursor;

constexpr std::size_t node_header = 24; ///< bytes: signature, kind, level, number of entries, two siblings
constexpr std::size_t address_size = 8;

struct PendingNode
{
    std::uint64_t position;
    int level; ///< that it must have; -1 for the root, which may have any
};

[[noreturn]] void fail(const char* reason)
{
    ABCA_THROW("An index is damaged: " << reason);
}

} // namespace

void walk_tree(const Ogawa::ByteSource& file, std::uint64_t root, TreeKind kind, std::size_t key_size,
               const TreeUse& use, ReadBudget& budget)
{
    std::vector<PendingNode> pending = {{root, -1}};
    while (!pending.empty()) {
        const PendingNode node = pending.back();
        pending.pop_back();
        const std::string header = read_bytes(file, node.position, node_header, budget);
        ByteCursor cursor(header);
        std::string_view signature;
        std::uint8_t stored_kind = 0, level = 0;
        std::uint16_t count = 0;
        cursor.take(4, signature);
        cursor.take(stored_kind);
        cursor.take(level);
        cursor.take(count);
        if (signature != "TREE" || stored_kind != static_cast<std::uint8_t>(kind)) fail("a node is lost");
        if (node.level >= 0 && level != node.level) fail("a node hangs at a wrong level");

        const std::size_t size = count * (key_size + address_size) + key_size; // a last key ends the last entry
        const std::string entries = read_bytes(file, node.position + node_header, size, budget);
        const std::size_t children = pending.size();
        ByteCursor entry(entries);
        std::string_view key;
        std::uint64_t address = 0;
        while (entry.take(key_size, key)) {
            if (use.use_key) use.use_key(key);
            if (!entry.take(address)) break;
            if (address >= file.size()) fail("it leads outside the file");
            if (level == 0)
                use.use_entry(key, address);
            else
                pending.push_back({address, level - 1});
        }
        std::reverse(pending.begin() + std::ptrdiff_t(children), pending.end()); // taken from the end: in their order
    }
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreHDF5
} // namespace Alembic
