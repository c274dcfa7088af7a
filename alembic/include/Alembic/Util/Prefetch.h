/// Fetching memory ahead of a loop that goes through much of it and computes long on each cache line.
#pragma once

#include <Alembic/Util/Config.h>

#include <cstddef>

namespace Alembic {
namespace Util {
inline namespace ALEMBIC_VERSION_NS {

constexpr std::size_t cache_line_size = 64;

/// Asks for the cache line half a page behind `address`, to be called at least once per line of a loop. A processor
/// looks ahead over a few hundred instructions; where that is all the prefetching there is, hashing of memory outside
/// the caches ran at a quarter of its speed. Memory that does not exist may be asked for.
inline void prefetch_ahead(const void* address)
{
    constexpr std::size_t distance = 2048;
    __builtin_prefetch(static_cast<const char*>(address) + distance);
}

} // namespace ALEMBIC_VERSION_NS
} // namespace Util
} // namespace Alembic
