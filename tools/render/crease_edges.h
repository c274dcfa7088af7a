/// Creases of subdivision meshes as edges.
#pragma once

#include <vo_core/core_array.h>

#include <vector>

struct CreaseEdge
{
    unsigned int points[2];
    float sharpness;
};

/// The edges of creases that are stored as chains of vertices, one sharpness a chain, when the lengths of the chains
/// are not known: pairs, else chains of one length, else chains that end where two vertices share no edge of the mesh,
/// else one sharpness for each edge. Edges that the mesh does not have are left out. False, and no edges, when nothing
/// fits.
bool find_crease_edges(const CoreArray<int>& indices, const CoreArray<float>& sharpnesses,
                       const CoreArray<unsigned int>& face_counts, const CoreArray<unsigned int>& face_indices,
                       std::vector<CreaseEdge>& edges);
