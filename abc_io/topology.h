/// Checks of a mesh's faces before anything is done with them.
#pragma once

#include <vo_core/core_array.h>

#include <cstddef>
#include <cstdint>

/// Whether every index is at most `limit` and, read as a signed number, not negative.
bool indices_are_at_most(const CoreArray<unsigned int>& indices, std::uint64_t limit);

/// Whether no count, read as a signed number, is negative and all of them together need no more than `point_count` points.
bool counts_fit(const CoreArray<unsigned int>& counts, std::size_t point_count);

/// Whether the counts are those of polygons made of `index_count` indices in all.
bool face_counts_add_up(const CoreArray<unsigned int>& face_counts, std::size_t index_count);
