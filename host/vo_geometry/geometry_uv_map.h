/// Texture coordinates of a geometry.
#pragma once

#include "vo_core/core_array.h"
#include "vo_core/core_string.h"
#include "vo_gmath/gmath_vec3.h"

struct VO_HOST_EXPORT GeometryUvMap
{
    CoreArray<GMathVec3<float>> values; ///< (u, v, 0) each
    CoreArray<unsigned int> indices;    ///< into `values`; empty: value i belongs to point i
    CoreString name;                    ///< as users see it; may be empty

    GeometryUvMap() = default;
    GeometryUvMap(CoreString map_name, CoreArray<GMathVec3<float>> map_values, CoreArray<unsigned int> map_indices);
    bool operator==(const GeometryUvMap& other) const;
    bool operator!=(const GeometryUvMap& other) const { return !(*this == other); }
    /// Bytes of the record and of what it owns.
    std::size_t get_memory_size() const;
};
