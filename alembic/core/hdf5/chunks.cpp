/// @file
/// Finds chunks and unfolds them.
#include "core/hdf5/chunks.h"

#include "core/hdf5/btree_check.h"
#include "core/hdf5/stored_bytes.h"
#include "core/ogawa/byte_cursor.h"

#include <Alembic/AbcCoreAbstract/All.h>

#include <zlib.h>

#include <algorithm>
#include <cstring>
#include <vector>

namespace Alembic {
namespace AbcCoreHDF5 {
inline namespace ALEMBIC_VERSION_NS {

namespace {

constexpr std::uint64_t deflate_overhead = 64; ///< more than the bytes around what is deflated

/// Unfolds `stored` to exactly `size` bytes; false when they are not that many.
bool inflate_exactly(const std::string& stored, unsigned char* into, std::uint64_t size)
{
    uLongf unfolded = static_cast<uLongf>(size);
    return uncompress(into, &unfolded, reinterpret_cast<const Bytef*>(stored.data()),
                      static_cast<uLong>(stored.size())) == Z_OK &&
           unfolded == size;
}

/// Fills the row with one chunk after the other.
class RowReader
{
public:
    RowReader(const Ogawa::ByteSource& file, const ChunkedRow& row, const std::string& name, void* into)
        : file_(file)
        , row_(row)
        , failure_("Could not read data set '" + name + "'")
        , target_(static_cast<unsigned char*>(into))
    {
    }

    void read()
    {
        ReadBudget budget(file_.size());
        TreeUse use;
        use.use_entry = [this](std::string_view key, std::uint64_t address) { read_chunk(parse_chunk(key, address)); };
        if (row_.index.tree != nowhere)
            walk_tree(file_, row_.index.tree, TreeKind::CHUNKS, chunk_key_size(row_.index), use, budget);
        if (done_ != row_.bytes) ABCA_THROW(failure_ << ": a chunk is missing");
    }

private:
    void read_chunk(const StoredChunk& chunk)
    {
        if (done_ == row_.bytes) return; // values that were cut off
        const std::uint64_t chunk_bytes = row_.index.chunk_bytes;
        if (chunk.first_value != done_ / row_.index.value_bytes) ABCA_THROW(failure_ << ": a chunk is missing");
        // Chunks that do not get smaller are not deflated.
        if (chunk.size > chunk_bytes + chunk_bytes / 2 + deflate_overhead)
            ABCA_THROW(failure_ << ": a chunk is damaged");
        const std::string stored = read_bytes(file_, chunk.address, chunk.size);
        const std::uint64_t wanted = std::min(row_.bytes - done_, chunk_bytes); // the last chunk may go on behind them
        if (!row_.is_deflated || chunk.skipped_filters != 0) {
            if (stored.size() < wanted) ABCA_THROW(failure_ << ": a chunk is cut");
            std::memcpy(target_ + done_, stored.data(), static_cast<std::size_t>(wanted));
        } else if (wanted == chunk_bytes) {
            if (!inflate_exactly(stored, target_ + done_, wanted)) ABCA_THROW(failure_ << ": a chunk is damaged");
        } else {
            std::vector<unsigned char> whole(static_cast<std::size_t>(chunk_bytes));
            if (!inflate_exactly(stored, whole.data(), chunk_bytes)) ABCA_THROW(failure_ << ": a chunk is damaged");
            std::memcpy(target_ + done_, whole.data(), static_cast<std::size_t>(wanted));
        }
        done_ += wanted;
    }

    const Ogawa::ByteSource& file_;
    const ChunkedRow& row_;
    const std::string failure_;
    unsigned char* const target_;
    std::uint64_t done_ = 0; ///< bytes that are there
};

} // namespace

std::size_t chunk_key_size(const ChunkIndex& index)
{
    return 2 * sizeof(std::uint32_t) + index.rank * sizeof(std::uint64_t);
}

StoredChunk parse_chunk(std::string_view key, std::uint64_t address)
{
    StoredChunk chunk = {address, 0, 0, 0};
    AbcCoreOgawa::ByteCursor cursor(key);
    cursor.take(chunk.size);
    cursor.take(chunk.skipped_filters);
    cursor.take(chunk.first_value);
    return chunk;
}

void read_chunks(const Ogawa::ByteSource& file, const ChunkedRow& row, const std::string& name, void* into)
{
    RowReader(file, row, name, into).read();
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreHDF5
} // namespace Alembic
