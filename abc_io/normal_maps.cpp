/// Normals of one sample, and between two.
#include "normal_maps.h"

#include "blend.h"
#include "indexed_parameter.h"

using namespace Alembic::AbcGeom;

namespace {

/// `read_indices(value_count, indices)` fills the map's indices, of which there are to be `index_count`.
template <class ReadIndices>
bool read_map(const IN3fGeomParam& normals, const ISampleSelector& selector, std::size_t index_count,
              CoreArray<GeometryNormalMap>& normal_maps, ReadIndices read_indices)
{
    const std::size_t value_count = parameter_value_count(normals, selector);
    if (value_count == 0 || parameter_index_count(normals, selector) != index_count) return false;

    normal_maps.resize(1);
    GeometryNormalMap& map = normal_maps[0];
    map.name = CoreString(normals.getName());
    if (read_array(IN3fGeomParam(normals).getValueProperty(), selector, map.values) &&
        read_indices(value_count, map.indices))
        return true;
    normal_maps.resize(0);
    return false;
}

} // namespace

bool read_normal_map(const IN3fGeomParam& normals, const ISampleSelector& selector, std::size_t index_count,
                     CoreArray<GeometryNormalMap>& normal_maps)
{
    return read_map(normals, selector, index_count, normal_maps,
                    [&](std::size_t value_count, CoreArray<unsigned int>& indices) {
                        return read_parameter_indices(normals, selector, value_count, indices);
                    });
}

bool read_corner_normals(const IN3fGeomParam& normals, const ISampleSelector& selector,
                         const CoreArray<unsigned int>& face_counts, std::size_t corner_count,
                         CoreArray<GeometryNormalMap>& normal_maps)
{
    return read_map(normals, selector, corner_count, normal_maps,
                    [&](std::size_t value_count, CoreArray<unsigned int>& indices) {
                        return read_corner_parameter_indices(normals, selector, value_count, face_counts, indices);
                    });
}

std::optional<SampleSpan> find_normals_span(const IN3fGeomParam& normals, double time)
{
    const TimeSamplingPtr sampling = normals.getTimeSampling();
    return sampling ? find_sample_span(*sampling, normals.getNumSamples(), time) : std::nullopt;
}

bool blend_normals(const IN3fGeomParam& normals, const SampleSpan& span, double time, GeometryNormalMap& map)
{
    CoreArray<GMathVec3<float>> later;
    if (parameter_value_count(normals, span.ceil) != map.values.get_count() ||
        parameter_index_count(normals, span.ceil) != map.indices.get_count() ||
        !read_array(IN3fGeomParam(normals).getValueProperty(), span.ceil, later))
        return false;
    const double weight = (time - span.floor_time) / (span.ceil_time - span.floor_time);
    blend(&map.values.get_data()->x, &later.get_data()->x, &map.values.get_data()->x,
          std::size_t(later.get_count()) * 3, weight, BlendRounding::FLOAT_PRODUCTS);
    return true;
}
