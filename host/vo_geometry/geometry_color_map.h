/// Colours of a geometry.
#pragma once

#include "vo_core/core_array.h"
#include "vo_core/core_string.h"
#include "vo_geometry/geometry_color.h"

struct VO_HOST_EXPORT GeometryColorMap
{
    CoreArray<GeometryColor> values; ///< red, green, blue, alpha
    CoreArray<unsigned int> indices; ///< into `values`; empty: value i belongs to point i
    CoreString name;                 ///< as users see it; may be empty

    GeometryColorMap() = default;
    GeometryColorMap(CoreString map_name, CoreArray<GeometryColor> map_values, CoreArray<unsigned int> map_indices);
    bool operator==(const GeometryColorMap& other) const;
    bool operator!=(const GeometryColorMap& other) const { return !(*this == other); }
    /// Bytes of the record and of what it owns.
    std::size_t get_memory_size() const;
};
