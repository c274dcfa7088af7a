/// @file
/// Batches small reads: a system call for 8 bytes costs as much as one for 32 KiB that the next hundred reads use too.
#pragma once

#include "ogawa/byte_source.h"

#include <cstring>
#include <memory>

namespace Alembic::Ogawa {

/// The block that a thread used last: most small reads fall into it. Plain thread-local storage without a constructor,
/// so that looking at it costs an instruction or two.
struct LastBlock
{
    std::uint64_t source_id; ///< 0: none
    std::uint64_t start;     ///< position of its first byte
    std::uint64_t size;
    const char* bytes;
};
extern __thread LastBlock last_block __attribute__((visibility("hidden"), tls_model("initial-exec")));

/// Reads of a byte source, the small ones through blocks. Any number of threads may read at once: there is no lock and
/// nothing is shared that changes.
///
/// A source of up to `whole_limit` bytes is read once and kept. Of a larger one each thread keeps the blocks it used
/// last: `sets * ways` blocks (1 MiB) a thread for all sources together, given back when the thread ends. Reads above
/// `small_limit` go straight to their place.
class BlockBuffer
{
public:
    static constexpr std::size_t whole_limit = 64 * 1024;
    static constexpr std::size_t block_size = 32 * 1024;
    static constexpr std::size_t small_limit = 16 * 1024;
    static constexpr std::size_t sets = 8;
    static constexpr std::size_t ways = 4;

    /// Takes the source over. Throws std::runtime_error when a small one cannot be read.
    explicit BlockBuffer(std::unique_ptr<const ByteSource> source);

    std::uint64_t size() const { return size_; }

    /// Copies the `size` bytes at `position` to `into`. Throws std::runtime_error "Ogawa IStreams::read failed." when
    /// they do not lie inside the source.
    void read(std::uint64_t position, void* into, std::size_t size) const
    {
        if (const char* const bytes = find(position, size))
            std::memcpy(into, bytes, size);
        else
            read_elsewhere(position, into, size);
    }

    /// The u64 at `position`; throws as read() does.
    std::uint64_t read_u64(std::uint64_t position) const
    {
        std::uint64_t value;
        if (const char* const bytes = find(position, sizeof value))
            std::memcpy(&value, bytes, sizeof value);
        else
            read_elsewhere(position, &value, sizeof value);
        return value;
    }

private:
    /// The bytes when they lie in the source that is kept whole, or in the block used last; else null.
    const char* find(std::uint64_t position, std::size_t size) const
    {
        if (last_block.source_id == id_) {
            const std::uint64_t offset = position - last_block.start; // before its start: a very large number
            if (offset < last_block.size && size <= last_block.size - offset) return last_block.bytes + offset;
        }
        if (whole_ && position <= size_ && size <= size_ - position) return whole_.get() + position;
        return nullptr;
    }

    void read_elsewhere(std::uint64_t position, void* into, std::size_t size) const;

    std::unique_ptr<const ByteSource> source_;
    std::uint64_t size_;
    std::uint64_t id_;              ///< tells the blocks of this source from all others', also from closed ones'
    std::unique_ptr<char[]> whole_; ///< the bytes of a small source
};

} // namespace Alembic::Ogawa
