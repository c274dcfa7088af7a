/// Which faces of a mesh can be drawn.
#pragma once

#include "world_scene.h"

/// Calls `use(face, first_corner, corner_count)` for each face of at least three corners whose points are all there and
/// can be drawn. By the reader's design a face index may be equal to the number of points.
template <class Use>
void for_each_drawable_face(const WorldMesh& mesh, Use&& use)
{
    const CoreArray<unsigned int>&counts = mesh.geometry.face_counts, &indices = mesh.geometry.face_indices;
    std::size_t first = 0;
    for (unsigned int face = 0; face < counts.get_count(); first += counts[face], ++face) {
        bool is_drawable = counts[face] >= 3;
        for (std::size_t corner = first; is_drawable && corner < first + counts[face]; ++corner)
            is_drawable = indices[corner] < mesh.is_usable.size() && mesh.is_usable[indices[corner]];
        if (is_drawable) use(face, first, counts[face]);
    }
}
