/// @file
/// Memory that is counted, and that can be made to run out. Covers operator new and aligned blocks of the whole
/// process, the libraries included.
#pragma once

#include <cstddef>

namespace counted_memory {

/// Bytes in use now, and the most there were since reset_peak().
std::size_t bytes_in_use();
std::size_t peak();
void reset_peak();

/// Blocks in use now: unlike their bytes a number that does not depend on how the system rounds sizes.
std::size_t blocks_in_use();

/// Allocations so far.
std::size_t allocation_count();

/// Lets the allocation after the next `before` fail, and with `for_good` all that follow, until never_fail().
void fail_after(std::size_t before, bool for_good);
void never_fail();

} // namespace counted_memory
