/// The allocation functions of this program.
#include "counted_memory.h"

#include <atomic>
#include <cerrno>
#include <cstddef>
#include <cstdlib>
#include <limits>
#include <malloc.h>
#include <new>

namespace counted_memory {

namespace {

constexpr std::size_t never = std::numeric_limits<std::size_t>::max();

std::atomic<std::size_t> in_use{0}, blocks{0}, highest{0}, count{0}, failing_at{never};
std::atomic<bool> fails_for_good{false};

bool may_allocate()
{
    const std::size_t number = count++;
    const std::size_t limit = failing_at;
    return number < limit || (number > limit && !fails_for_good);
}

/// What `get()` returns, counted; null when memory is to run out.
template <class Get>
void* counted(const Get& get)
{
    void* const block = may_allocate() ? get() : nullptr;
    if (!block) return nullptr;
    ++blocks;
    const std::size_t now = in_use += malloc_usable_size(block);
    std::size_t before = highest;
    while (before < now && !highest.compare_exchange_weak(before, now)) {
    }
    return block;
}

void uncount(void* block)
{
    if (!block) return;
    --blocks;
    in_use -= malloc_usable_size(block);
}

} // namespace

std::size_t bytes_in_use()
{
    return in_use;
}
std::size_t peak()
{
    return highest;
}
void reset_peak()
{
    highest = in_use.load();
}
std::size_t blocks_in_use()
{
    return blocks;
}
std::size_t allocation_count()
{
    return count;
}
void fail_after(std::size_t before, bool for_good)
{
    fails_for_good = for_good;
    failing_at = count + before;
}
void never_fail()
{
    failing_at = never;
}

} // namespace counted_memory

using namespace counted_memory;

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)

// The sanitizers have malloc for themselves: here it is C++ and the host's containers whose memory runs out.

namespace {

void* get_block(std::size_t size, std::size_t alignment = alignof(std::max_align_t))
{
    return counted([=] { return aligned_alloc(alignment, (size + alignment) / alignment * alignment); });
}

void* new_block(std::size_t size, std::size_t alignment = alignof(std::max_align_t))
{
    void* const block = get_block(size, alignment);
    if (!block) throw std::bad_alloc();
    return block;
}

void delete_block(void* block)
{
    uncount(block);
    std::free(block);
}

} // namespace

void* operator new(std::size_t size)
{
    return new_block(size);
}
void* operator new[](std::size_t size)
{
    return new_block(size);
}
void* operator new(std::size_t size, std::align_val_t alignment)
{
    return new_block(size, std::size_t(alignment));
}
void* operator new[](std::size_t size, std::align_val_t alignment)
{
    return new_block(size, std::size_t(alignment));
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept
{
    return get_block(size);
}
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept
{
    return get_block(size);
}
void operator delete(void* block) noexcept
{
    delete_block(block);
}
void operator delete[](void* block) noexcept
{
    delete_block(block);
}
void operator delete(void* block, std::size_t) noexcept
{
    delete_block(block);
}
void operator delete[](void* block, std::size_t) noexcept
{
    delete_block(block);
}
void operator delete(void* block, std::align_val_t) noexcept
{
    delete_block(block);
}
void operator delete(void* block, std::size_t, std::align_val_t) noexcept
{
    delete_block(block);
}
void operator delete[](void* block, std::align_val_t) noexcept
{
    delete_block(block);
}
void operator delete[](void* block, std::size_t, std::align_val_t) noexcept
{
    delete_block(block);
}

#else

// Seen by the libraries, too, whatever the program is compiled with.
#pragma GCC visibility push(default)
extern "C" {

void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);
void __libc_free(void* block);

void* malloc(std::size_t size)
{
    return counted([=] { return __libc_malloc(size); });
}
void* calloc(std::size_t count, std::size_t size)
{
    return counted([=] { return __libc_calloc(count, size); });
}
void* realloc(void* block, std::size_t size)
{
    const std::size_t before = block ? malloc_usable_size(block) : 0;
    void* const moved = counted([=] { return __libc_realloc(block, size); });
    if (moved || size == 0) in_use -= before;
    if (block && (moved || size == 0)) --blocks;
    return moved;
}
void* memalign(std::size_t alignment, std::size_t size)
{
    return counted([=] { return __libc_memalign(alignment, size); });
}
void* aligned_alloc(std::size_t alignment, std::size_t size)
{
    return memalign(alignment, size);
}
int posix_memalign(void** block, std::size_t alignment, std::size_t size)
{
    void* const made = memalign(alignment, size);
    if (!made) return ENOMEM;
    *block = made;
    return 0;
}
void free(void* block)
{
    uncount(block);
    __libc_free(block);
}
}
#pragma GCC visibility pop

#endif
