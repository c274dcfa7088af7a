/// @file
/// The blocks a thread keeps.
#include "ogawa/block_buffer.h"

#include <algorithm>
#include <atomic>
#include <new>
#include <pthread.h>

namespace Alembic::Ogawa {

__thread LastBlock last_block;

namespace {

struct Block
{
    std::uint64_t source_id = 0; ///< 0: holds nothing
    std::uint64_t number = 0;
    std::unique_ptr<char[]> bytes;
};

/// A set-associative cache; the ways of a set are replaced in turn.
struct ThreadBlocks
{
    Block blocks[BlockBuffer::sets][BlockBuffer::ways];
    unsigned char next_way[BlockBuffer::sets] = {};
};

thread_local ThreadBlocks* thread_blocks = nullptr;
thread_local bool thread_ends = false; // readers in other destructors outlive the blocks: they read directly

/// Gives a thread's blocks back at its end. A key, not an object with a destructor: registering one of those ends the
/// program when there is no memory for it, where a key just fails.
class ThreadEnd
{
public:
    ThreadEnd()
        : is_made_(::pthread_key_create(&key_, give_back) == 0)
    {
    }
    ~ThreadEnd()
    {
        if (is_made_) ::pthread_key_delete(key_); // the code that it would call goes
    }
    ThreadEnd(const ThreadEnd&) = delete;
    ThreadEnd& operator=(const ThreadEnd&) = delete;

    /// False when the blocks would not be given back.
    bool note(ThreadBlocks* blocks) const { return is_made_ && ::pthread_setspecific(key_, blocks) == 0; }

private:
    static void give_back(void* blocks)
    {
        last_block = {};
        delete static_cast<ThreadBlocks*>(blocks);
        thread_blocks = nullptr;
        thread_ends = true;
    }

    pthread_key_t key_ = {};
    const bool is_made_;
};

/// Null when there is no memory for them.
ThreadBlocks* blocks_of_this_thread()
{
    if (thread_blocks || thread_ends) return thread_blocks;
    static const ThreadEnd end;
    std::unique_ptr<ThreadBlocks> blocks(new (std::nothrow) ThreadBlocks);
    if (!blocks || !end.note(blocks.get())) return nullptr;
    return thread_blocks = blocks.release();
}

/// Makes block `number` the one used last, and reads it if it is not there yet. False when there is no memory to keep
/// it.
bool use_block(const ByteSource& source, std::uint64_t source_id, std::uint64_t number)
{
    ThreadBlocks* const cache = blocks_of_this_thread();
    if (!cache) return false;
    const std::uint64_t start = number * BlockBuffer::block_size;
    const std::uint64_t size = std::min<std::uint64_t>(BlockBuffer::block_size, source.size() - start);
    const std::size_t set = (number + source_id * 5) % BlockBuffer::sets;
    for (const Block& block : cache->blocks[set]) {
        if (block.number != number || block.source_id != source_id) continue;
        last_block = {source_id, start, size, block.bytes.get()};
        return true;
    }

    Block& block = cache->blocks[set][cache->next_way[set]];
    if (!block.bytes) block.bytes.reset(new (std::nothrow) char[BlockBuffer::block_size]);
    if (!block.bytes) return false;
    cache->next_way[set] = static_cast<unsigned char>((cache->next_way[set] + 1) % BlockBuffer::ways);
    block.source_id = 0; // holds nothing until the read has succeeded, and was perhaps the block used last
    last_block = {};
    source.read(start, block.bytes.get(), static_cast<std::size_t>(size));
    block.source_id = source_id;
    block.number = number;
    last_block = {source_id, start, size, block.bytes.get()};
    return true;
}

std::uint64_t next_source_id()
{
    static std::atomic<std::uint64_t> last{0};
    return ++last;
}

} // namespace

BlockBuffer::BlockBuffer(std::unique_ptr<const ByteSource> source)
    : source_(std::move(source))
    , size_(source_->size())
    , id_(next_source_id())
{
    if (size_ == 0 || size_ > whole_limit) return;
    std::unique_ptr<char[]> bytes(new char[static_cast<std::size_t>(size_)]);
    source_->read(0, bytes.get(), static_cast<std::size_t>(size_));
    whole_ = std::move(bytes);
}

void BlockBuffer::read_elsewhere(std::uint64_t position, void* into, std::size_t size) const
{
    if (position > size_ || size > size_ - position) throw_read_failed();
    if (size > small_limit) return source_->read(position, into, size);
    auto* target = static_cast<char*>(into);
    while (size > 0) {
        if (!use_block(*source_, id_, position / block_size)) return source_->read(position, target, size);
        const auto offset = static_cast<std::size_t>(position % block_size);
        const std::size_t part = std::min(size, block_size - offset);
        std::memcpy(target, last_block.bytes + offset, part);
        position += part;
        target += part;
        size -= part;
    }
}

} // namespace Alembic::Ogawa
