/// Normals of a geometry.
#pragma once

#include "vo_core/core_array.h"
#include "vo_core/core_string.h"
#include "vo_gmath/gmath_vec3.h"

struct VO_HOST_EXPORT GeometryNormalMap
{
    CoreArray<GMathVec3<float>> values; ///< directions, as stored: not necessarily of length 1
    CoreArray<unsigned int> indices;    ///< into `values`, one per polygon corner or per point
    CoreString name;                    ///< as users see it; may be empty

    GeometryNormalMap() = default;
    GeometryNormalMap(CoreString map_name, CoreArray<GMathVec3<float>> map_values, CoreArray<unsigned int> map_indices);
    bool operator==(const GeometryNormalMap& other) const;
    bool operator!=(const GeometryNormalMap& other) const { return !(*this == other); }
    /// Bytes of the record and of what it owns.
    std::size_t get_memory_size() const;
};
