/// Triangles of polygons.
#pragma once

#include "vector_math.h"

#include <vector>

/// Appends the triangles of a polygon, three corner numbers each, wound as the polygon. A convex polygon is a fan; of a
/// concave one ears are cut, as long as it has at most 256 corners.
void triangulate(const std::vector<Vec3>& corners, std::vector<unsigned int>& triangles);
