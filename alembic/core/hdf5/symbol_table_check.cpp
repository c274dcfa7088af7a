/// @file
/// The stored form of symbol tables: a tree of nodes of links, and a heap of names.
#include "core/hdf5/symbol_table_check.h"

#include "core/hdf5/btree_check.h"
#include "core/hdf5/stored_bytes.h"
#include "core/ogawa/byte_cursor.h"

#include <Alembic/AbcCoreAbstract/All.h>

#include <string>
#include <string_view>

namespace Alembic {
namespace AbcCoreHDF5 {
inline namespace ALEMBIC_VERSION_NS {

namespace {

using AbcCoreOgawa::ByteCursor;

[[noreturn]] void fail(const char* reason)
{
    ABCA_THROW("A table of links is damaged: " << reason);
}

/// The names of a heap, once its list of free blocks is known to come to an end.
std::string heap_names(const Ogawa::ByteSource& file, std::uint64_t position, CheckLedger& ledger)
{
    constexpr std::size_t header_size = 32, signature_and_version = 8;
    constexpr std::uint64_t no_block = 1;
    const std::string header = read_bytes(file, position, header_size, ledger);
    ByteCursor cursor(header);
    std::string_view start;
    std::uint64_t size = 0, free_block = 0, data = 0;
    cursor.take(signature_and_version, start);
    cursor.take(size);
    cursor.take(free_block);
    cursor.take(data);
    if (start.substr(0, 5) != std::string_view("HEAP\0", 5)) fail("its heap is lost");
    // Right behind its header libhdf5 keeps both as one.
    if (data != position + header_size) ledger.claim(data, position);
    const std::string names = read_bytes(file, data, size, ledger);

    // Free blocks lie one behind the other, from the front to the back or not: together they fit the heap.
    std::uint64_t total = 0;
    while (free_block != no_block) {
        if (free_block >= size) fail("a free block lies outside its heap");
        ByteCursor block(std::string_view(names).substr(static_cast<std::size_t>(free_block)));
        std::uint64_t next = 0, block_size = 0;
        constexpr std::size_t least = sizeof next + sizeof block_size;
        if (!block.take(next) || !block.take(block_size) || block_size < least || block_size > size - free_block)
            fail("a free block lies outside its heap");
        total += block_size;
        if (total > size) fail("its free blocks overlap");
        free_block = next;
    }
    return names;
}

/// Most links of one node. Files of the later superblocks do not say it at their start: there it is the usual number.
std::uint64_t most_links(const Ogawa::ByteSource& file)
{
    constexpr std::size_t version_place = 8, half_place = 16;
    constexpr std::uint64_t usual_half = 4;
    std::uint8_t version = 0;
    std::uint16_t half = 0;
    file.read(version_place, &version, sizeof version);
    file.read(half_place, &half, sizeof half);
    return 2 * (version > 1 ? usual_half : half);
}

/// A name must end before the heap does. Many that end alike would take more bytes than there are.
void check_name(const std::string& names, std::uint64_t at, ReadBudget& budget)
{
    const std::size_t end = at < names.size() ? names.find('\0', static_cast<std::size_t>(at)) : names.npos;
    if (end == names.npos) fail("a name is not closed");
    budget.take(end - at);
}

void check_node(const std::string& bytes, const std::string& names, ReadBudget& budget)
{
    constexpr std::uint32_t has_target_name = 2;
    ByteCursor cursor(bytes);
    std::uint64_t name = 0, address = 0;
    std::uint32_t kind = 0, reserved = 0, target = 0;
    std::string_view scratch;
    while (cursor.take(name) && cursor.take(address) && cursor.take(kind) && cursor.take(reserved) &&
           cursor.take(16, scratch)) {
        check_name(names, name, budget);
        if (kind != has_target_name) continue;
        ByteCursor(scratch).take(target);
        check_name(names, target, budget);
    }
}

} // namespace

void check_symbol_table(const Ogawa::ByteSource& file, const LinkTable& table, CheckLedger& ledger)
{
    constexpr std::size_t key_size = 8, node_header = 8, link_size = 40;
    const std::string names = heap_names(file, table.heap, ledger);
    const std::uint64_t most = most_links(file);
    TreeUse use;
    use.use_key = [&](std::string_view key) {
        std::uint64_t name = 0;
        ByteCursor(key).take(name);
        check_name(names, name, ledger);
    };
    use.use_entry = [&](std::string_view, std::uint64_t position) {
        const std::string header = read_bytes(file, position, node_header, ledger);
        ByteCursor cursor(header);
        std::string_view start;
        std::uint16_t count = 0;
        cursor.take(6, start);
        cursor.take(count);
        if (start.substr(0, 4) != "SNOD" || count > most) fail("a node is lost");
        check_node(read_bytes(file, position + node_header, count * link_size, ledger), names, ledger);
    };
    walk_tree(file, table.tree, TreeKind::SYMBOLS, key_size, use, ledger);
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreHDF5
} // namespace Alembic
