/// @file
/// The stored form of fractal heaps. Blocks stand in rows of the same number; from the third row on each row has blocks
/// twice as large as those of the row before. Blocks beyond the largest size are tables of smaller ones.
#include "core/hdf5/fractal_heap.h"

#include "core/hdf5/bit_widths.h"
#include "core/hdf5/checksum.h"
#include "core/hdf5/limits.h"
#include "core/hdf5/record_tree.h"
#include "core/hdf5/stored_bytes.h"
#include "core/ogawa/byte_cursor.h"

#include <Alembic/AbcCoreAbstract/All.h>

#include <algorithm>

namespace Alembic {
namespace AbcCoreHDF5 {
inline namespace ALEMBIC_VERSION_NS {

namespace {

using AbcCoreOgawa::ByteCursor;

constexpr std::size_t checksum_size = 4, address_size = 8;
constexpr std::uint8_t blocks_have_checksums = 0x02, known_flags = 0x03;

[[noreturn]] void fail(const char* reason)
{
    ABCA_THROW("A heap of links or attributes is damaged: " << reason);
}

} // namespace

FractalHeap::FractalHeap(const Ogawa::ByteSource& file, std::uint64_t position, std::size_t id_size,
                         CheckLedger& ledger)
    : file_(file)
    , ledger_(ledger)
    , position_(position)
{
    ledger.claim(position, position);
    take_header(id_size);
    if (root_ != nowhere) {
        if (root_rows_ == 0)
            load_block(root_, 0, first_size_);
        else
            load_table(root_, 0, root_rows_);
    }
    load_huge_objects();
}

void FractalHeap::take_header(std::size_t id_size)
{
    constexpr std::size_t size = 146;
    const std::string bytes = read_bytes(file_, position_, size, ledger_);
    ByteCursor cursor(bytes);
    std::string_view signature, skipped;
    std::uint8_t version = 0;
    std::uint16_t stored_id_size = 0, filter_size = 0;
    cursor.take(4, signature);
    cursor.take(version);
    cursor.take(stored_id_size);
    cursor.take(filter_size);
    cursor.take(flags_);
    cursor.take(most_managed_);
    cursor.take(8, skipped); // the next ID of a huge object
    cursor.take(huge_tree_);
    cursor.take(7 * 8, skipped); // what is free, allocated and used
    cursor.take(huge_count_);
    cursor.take(2 * 8, skipped); // objects in IDs
    cursor.take(width_);
    cursor.take(first_size_);
    cursor.take(most_direct_);
    cursor.take(address_bits_);
    cursor.take(first_rows_);
    cursor.take(root_);
    cursor.take(root_rows_);
    if (signature != "FRHP" || version != 0 || !ends_in_checksum(bytes)) fail("it is lost");
    if (filter_size != 0 || (flags_ & ~known_flags) || stored_id_size != id_size) fail("it has an unknown form");
    check_sizes(id_size);
    // With a tree of none, libhdf5 would have it removed.
    if ((huge_tree_ == nowhere) != (huge_count_ == 0)) fail("its large objects are lost");
}

void FractalHeap::check_sizes(std::size_t id_size) const
{
    constexpr std::uint64_t least_block = 64;
    constexpr std::uint16_t most_address_bits = 63;
    if (!is_power_of_two(width_) || !is_power_of_two(first_size_) || !is_power_of_two(most_direct_) ||
        width_ > max_heap_row || first_size_ < least_block || first_size_ > most_direct_ ||
        most_direct_ > max_heap_block_bytes)
        fail("its blocks have sizes that cannot be");
    // A table fits into the first row of tables, and there are addresses for that row.
    const unsigned first_row_bits = highest_bit(first_size_) + highest_bit(width_);
    if (first_row_bits > highest_bit(most_direct_) + 1 || address_bits_ > most_address_bits ||
        address_bits_ <= highest_bit(most_direct_) + highest_bit(width_))
        fail("its blocks have sizes that cannot be");
    const unsigned most_rows = address_bits_ - first_row_bits + 1;
    if (root_rows_ > most_rows || first_rows_ > most_rows) fail("it has more rows than there can be");
    if (most_managed_ > most_direct_ || 1 + offset_width() + length_width() > id_size) fail("its IDs are too short");
}

/// Bytes of a place in the heap's addresses.
std::size_t FractalHeap::offset_width() const
{
    return (address_bits_ + std::size_t(7)) / 8;
}

/// Bytes of the size of an object in a block.
std::size_t FractalHeap::length_width() const
{
    return std::min(bytes_to_count_to(most_direct_), bytes_to_count_to(most_managed_));
}

std::uint64_t FractalHeap::block_size(unsigned row) const
{
    return row < 2 ? first_size_ : first_size_ << (row - 1);
}

std::uint64_t FractalHeap::row_start(unsigned row) const
{
    return row == 0 ? 0 : width_ * first_size_ << (row - 1);
}

unsigned FractalHeap::direct_row_count() const
{
    return highest_bit(most_direct_) - highest_bit(first_size_) + 2;
}

/// Bytes in front of what a block or a table holds, without a checksum.
std::size_t FractalHeap::block_prefix() const
{
    return 4 + 1 + address_size + offset_width();
}

void FractalHeap::check_block_start(std::string_view bytes, std::string_view signature, std::uint64_t start) const
{
    ByteCursor cursor(bytes);
    std::string_view stored_signature;
    std::uint8_t version = 0;
    std::uint64_t heap = 0, stored_start = 0;
    cursor.take(4, stored_signature);
    cursor.take(version);
    cursor.take(heap);
    take_sized(cursor, offset_width(), stored_start);
    if (stored_signature != signature || version != 0 || heap != position_ || stored_start != start)
        fail("a block is lost");
}

void FractalHeap::load_block(std::uint64_t address, std::uint64_t start, std::uint64_t size)
{
    std::string bytes = read_bytes(file_, address, size, ledger_);
    check_block_start(bytes, "FHDB", start);
    if (flags_ & blocks_have_checksums) {
        // It counts itself as zeros.
        const std::string stored = bytes.substr(block_prefix(), checksum_size);
        std::fill_n(bytes.begin() + std::ptrdiff_t(block_prefix()), checksum_size, '\0');
        const std::uint32_t sum = checksum(bytes);
        if (stored != std::string_view(reinterpret_cast<const char*>(&sum), sizeof sum)) fail("a block is lost");
    }
    blocks_.push_back({start, std::move(bytes)});
}

void FractalHeap::load_table(std::uint64_t address, std::uint64_t start, unsigned row_count)
{
    const std::size_t size = block_prefix() + std::size_t(row_count) * width_ * address_size + checksum_size;
    const std::string bytes = read_bytes(file_, address, size, ledger_);
    if (!ends_in_checksum(bytes)) fail("a table of blocks is lost");
    check_block_start(bytes, "FHIB", start);
    ByteCursor cursor(std::string_view(bytes).substr(block_prefix()));
    for (unsigned row = 0; row < row_count; ++row) {
        for (unsigned column = 0; column < width_; ++column) {
            std::uint64_t block = 0;
            cursor.take(block);
            if (block == nowhere) continue;
            const std::uint64_t block_start = start + row_start(row) + column * block_size(row);
            if (row < direct_row_count())
                load_block(block, block_start, block_size(row));
            else // one that covers as much: it has fewer rows than this one
                load_table(block, block_start, highest_bit(block_size(row)) - highest_bit(width_ * first_size_) + 1);
        }
    }
}

void FractalHeap::load_huge_objects()
{
    if (huge_tree_ == nowhere) return;
    constexpr RecordKind kind = {1, 24};
    const auto use = [this](std::string_view record) {
        ByteCursor cursor(record);
        HugeObject object = {};
        std::uint64_t id = 0;
        cursor.take(object.address);
        cursor.take(object.size);
        cursor.take(id);
        if (!huge_.empty() && id <= huge_.rbegin()->first) fail("its large objects are out of order");
        huge_.emplace_hint(huge_.end(), id, object);
    };
    walk_records(file_, huge_tree_, kind, use, ledger_);
}

std::string FractalHeap::read_object(std::string_view id) const
{
    constexpr std::uint8_t managed = 0x00, huge = 0x10, kind_mask = 0xf0; // with the version, which is 0
    ByteCursor cursor(id);
    std::uint8_t kind = 0;
    cursor.take(kind);
    if ((kind & kind_mask) == huge) {
        std::uint64_t number = 0;
        take_sized(cursor, cursor.left(), number);
        const auto object = huge_.find(number);
        if (object == huge_.end()) fail("an object is lost");
        return read_bytes(file_, object->second.address, object->second.size, ledger_);
    }
    if ((kind & kind_mask) != managed) fail("an object is of an unknown kind");
    std::uint64_t offset = 0, size = 0;
    take_sized(cursor, offset_width(), offset);
    take_sized(cursor, length_width(), size);
    const auto after = std::upper_bound(blocks_.begin(), blocks_.end(), offset,
                                        [](std::uint64_t at, const Block& block) { return at < block.start; });
    if (after == blocks_.begin()) fail("an object is lost");
    const Block& block = *(after - 1);
    const std::uint64_t at = offset - block.start;
    const std::size_t prefix = block_prefix() + (flags_ & blocks_have_checksums ? checksum_size : 0);
    if (at < prefix || at > block.bytes.size() || size == 0 || size > block.bytes.size() - at || size > most_managed_)
        fail("an object is lost");
    ledger_.take(size); // IDs may lead to the same bytes any number of times
    return block.bytes.substr(std::size_t(at), std::size_t(size));
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreHDF5
} // namespace Alembic
