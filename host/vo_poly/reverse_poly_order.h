/// Turning polygons round.
#pragma once

#include "vo_core/core_array.h"
#include "vo_core/export.h"

/// Reverses, in place, each polygon's run of `indices`; `counts` holds the length of each run, in order. Where the
/// counts ask for more indices than there are, the polygon that would pass the end and all after it are left as they
/// are; indices beyond the last polygon are too.
VO_HOST_EXPORT void reverse_poly_order(const CoreArray<unsigned int>& counts, CoreArray<unsigned int>& indices);
