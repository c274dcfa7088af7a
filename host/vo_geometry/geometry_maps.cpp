/// Maps of a geometry: UVs, colours, normals.
#include "vo_geometry/geometry_color_map.h"
#include "vo_geometry/geometry_normal_map.h"
#include "vo_geometry/geometry_uv_map.h"

namespace {

template <class Map>
bool are_equal(const Map& a, const Map& b)
{
    return a.name == b.name && a.indices == b.indices && a.values == b.values;
}

template <class Map>
std::size_t memory_size_of(const Map& map)
{
    return sizeof(map) - sizeof(map.values) - sizeof(map.indices) + map.values.get_memory_size() +
           map.indices.get_memory_size() + map.name.get_size() + 1;
}

} // namespace

GeometryUvMap::GeometryUvMap(CoreString map_name, CoreArray<GMathVec3<float>> map_values,
                             CoreArray<unsigned int> map_indices)
    : values(std::move(map_values))
    , indices(std::move(map_indices))
    , name(std::move(map_name))
{
}

bool GeometryUvMap::operator==(const GeometryUvMap& other) const
{
    return are_equal(*this, other);
}
std::size_t GeometryUvMap::get_memory_size() const
{
    return memory_size_of(*this);
}

GeometryNormalMap::GeometryNormalMap(CoreString map_name, CoreArray<GMathVec3<float>> map_values,
                                     CoreArray<unsigned int> map_indices)
    : values(std::move(map_values))
    , indices(std::move(map_indices))
    , name(std::move(map_name))
{
}

bool GeometryNormalMap::operator==(const GeometryNormalMap& other) const
{
    return are_equal(*this, other);
}
std::size_t GeometryNormalMap::get_memory_size() const
{
    return memory_size_of(*this);
}

GeometryColorMap::GeometryColorMap(CoreString map_name, CoreArray<GeometryColor> map_values,
                                   CoreArray<unsigned int> map_indices)
    : values(std::move(map_values))
    , indices(std::move(map_indices))
    , name(std::move(map_name))
{
}

bool GeometryColorMap::operator==(const GeometryColorMap& other) const
{
    return are_equal(*this, other);
}
std::size_t GeometryColorMap::get_memory_size() const
{
    return memory_size_of(*this);
}
