/// Turning polygons round.
#pragma once

#include "vo_core/core_array.h"
#include "vo_core/export.h"

#include <cstddef>

/// Reverses, in place, each polygon's run of `indices`; `counts` holds the length of each run, in order. Where the
/// counts ask for more indices than there are, the polygon that would pass the end and all after it are left as they
/// are; indices beyond the last polygon are too.
VO_HOST_EXPORT void reverse_poly_order(const CoreArray<unsigned int>& counts, CoreArray<unsigned int>& indices);

/// The same for part of a mesh: reverses the runs that lie whole within `index_count` indices, `count` onwards, and
/// moves `count` past their lengths. Returns how many indices they take.
VO_HOST_EXPORT std::size_t reverse_whole_polygons(const unsigned int*& count, const unsigned int* counts_end,
                                                  unsigned int* indices, std::size_t index_count);
