/// Raw memory of the host's containers.
#pragma once

#include <cstddef>

#include "vo_core/export.h"

class VO_HOST_EXPORT CoreMemory
{
public:
    static constexpr std::size_t huge_page_bytes = std::size_t(2) << 20;
    /// Blocks from this size on are worth huge pages: faulting 4 KiB pages costs several times the filling itself.
    static constexpr std::size_t large_block_bytes = std::size_t(2) << 20;

    /// Uninitialised block of `bytes` bytes (more than 0), aligned to `alignment` (a power of two); a large block is
    /// aligned to `huge_page_bytes`, asks the system for huge pages and may take up to a tenth more to end with a whole
    /// one. Throws std::bad_alloc.
    static void* allocate(std::size_t bytes, std::size_t alignment);
    /// Gives back what `allocate` returned; null is allowed.
    static void release(void* block) noexcept;
};
