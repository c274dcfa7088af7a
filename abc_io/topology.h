/// A mesh's faces: checks before anything is done with them, and corners in the host's winding.
#pragma once

#include <Alembic/Abc/All.h>
#include <vo_core/core_array.h>

#include <cstddef>
#include <cstdint>

/// Whether every index is below `end` and, read as a signed number, not negative.
bool indices_are_below(const unsigned int* indices, std::size_t count, std::uint64_t end);
bool indices_are_below(const CoreArray<unsigned int>& indices, std::uint64_t end);

/// Whether no count, read as a signed number, is negative and all of them together need no more than `point_count`
/// points.
bool counts_fit(const CoreArray<unsigned int>& counts, std::size_t point_count);

/// Whether the counts are those of polygons made of `index_count` indices in all.
bool face_counts_add_up(const CoreArray<unsigned int>& face_counts, std::size_t index_count);

/// Reads one index per corner at `selector`, each face's in the host's winding, which is the other way round. False,
/// with `indices` in an unspecified state, when one of them is not below `end`, or as read_array says.
bool read_corner_indices(const Alembic::Abc::IArrayProperty& property, const Alembic::Abc::ISampleSelector& selector,
                         std::uint64_t end, const CoreArray<unsigned int>& face_counts,
                         CoreArray<unsigned int>& indices);
