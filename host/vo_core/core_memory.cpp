/// Raw memory of the host's containers.
#include "vo_core/core_memory.h"

#include <algorithm>
#include <cstdlib>
#include <new>

#include <sys/mman.h>

namespace {

/// The block's size, rounded up to whole huge pages where that adds little to it.
std::size_t size_with_huge_pages(std::size_t bytes)
{
    const std::size_t added =
        (CoreMemory::huge_page_bytes - bytes % CoreMemory::huge_page_bytes) % CoreMemory::huge_page_bytes;
    return added <= bytes / 10 && bytes + added > bytes ? bytes + added : bytes;
}

} // namespace

void* CoreMemory::allocate(std::size_t bytes, std::size_t alignment)
{
    const bool is_large = bytes >= large_block_bytes;
    if (is_large) {
        alignment = std::max(alignment, huge_page_bytes);
        bytes = size_with_huge_pages(bytes);
    }
    void* block = nullptr;
    if (posix_memalign(&block, std::max(alignment, sizeof(void*)), bytes) != 0) throw std::bad_alloc();
    // Whole huge pages only: the rest of the last one may belong to somebody else. A refusal costs speed, no more.
    if (is_large) (void)madvise(block, bytes & ~(huge_page_bytes - 1), MADV_HUGEPAGE);
    return block;
}

void CoreMemory::release(void* block) noexcept
{
    std::free(block);
}
