/// @file
/// Reads fractal heaps, which hold the links and attributes of objects that have many, before libhdf5 does.
#pragma once

#include "core/hdf5/check_ledger.h"
#include "ogawa/byte_source.h"

#include <Alembic/Util/Config.h>

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace Alembic {
namespace AbcCoreHDF5 {
inline namespace ALEMBIC_VERSION_NS {

/// A heap whose every block is sound.
class FractalHeap
{
public:
    /// Reads the heap at `position`, whose objects are named by IDs of `id_size` bytes, into memory. Takes its bytes
    /// from `ledger`. Throws for heaps that do not lie in the file, are damaged, or have a form that neither links nor
    /// attributes need: filters, and sizes beyond the limits.
    FractalHeap(const Ogawa::ByteSource& file, std::uint64_t position, std::size_t id_size, CheckLedger& ledger);

    /// The bytes of the object with that ID. Throws when there is none.
    std::string read_object(std::string_view id) const;

private:
    /// A block of objects, the numbers in front of them included.
    struct Block
    {
        std::uint64_t start; ///< in the heap's addresses
        std::string bytes;
    };

    /// An object with a place of its own in the file.
    struct HugeObject
    {
        std::uint64_t address, size; ///< in the file
    };

    void take_header(std::size_t id_size);
    void check_sizes(std::size_t id_size) const;
    void load_block(std::uint64_t address, std::uint64_t start, std::uint64_t size);
    void load_table(std::uint64_t address, std::uint64_t start, unsigned row_count);
    void load_huge_objects();
    void check_block_start(std::string_view bytes, std::string_view signature, std::uint64_t start) const;
    std::uint64_t block_size(unsigned row) const;
    std::uint64_t row_start(unsigned row) const;
    unsigned direct_row_count() const;
    std::size_t offset_width() const;
    std::size_t length_width() const;
    std::size_t block_prefix() const;

    const Ogawa::ByteSource& file_;
    CheckLedger& ledger_;
    const std::uint64_t position_;

    // As stored in its header.
    std::uint8_t flags_ = 0;
    std::uint32_t most_managed_ = 0; ///< bytes of an object in a block
    std::uint64_t huge_tree_ = 0, huge_count_ = 0;
    std::uint16_t width_ = 0;                        ///< blocks in a row
    std::uint64_t first_size_ = 0, most_direct_ = 0; ///< bytes of the smallest and the largest block of objects
    std::uint16_t address_bits_ = 0, first_rows_ = 0, root_rows_ = 0;
    std::uint64_t root_ = 0;

    std::vector<Block> blocks_; ///< in the order of their starts
    std::map<std::uint64_t, HugeObject> huge_;
};

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreHDF5
} // namespace Alembic
