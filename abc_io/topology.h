/// Checks of a mesh's faces before anything is done with them.
#pragma once

#include <vo_core/core_array.h>

#include <cstddef>
#include <cstdint>

/// Whether every index is at most `limit` and, read as a signed number, not negative.
bool indices_are_at_most(const CoreArray<unsigned int>& indices, std::uint64_t limit);

/// Whether the counts are those of polygons made of `index_count` indices in all.
bool face_counts_add_up(const CoreArray<unsigned int>& face_counts, std::size_t index_count);
