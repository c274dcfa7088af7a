/// UV sets: which fit a mesh, and their values and indices.
#include "uv_maps.h"

#include "indexed_parameter.h"
#include "sample_pieces.h"

#include <string>
#include <utility>
#include <vector>

using namespace Alembic::AbcGeom;

namespace {

/// Texture coordinates as archives store them.
struct UvPair
{
    float u, v;
};

} // namespace

template <>
struct ElementLayout<UvPair>
{
    using Scalar = float;
    static constexpr std::size_t extent = 2;
};

namespace {

/// (u, v) to (u, v, 0), from front to back.
void spread(const float* pairs, std::size_t count, GMathVec3<float>* triples)
{
    for (std::size_t i = 0; i < count; ++i) {
        const float u = pairs[2 * i], v = pairs[2 * i + 1];
        triples[i] = GMathVec3<float>(u, v, 0.0f);
    }
}

/// A UV set whose counts fit the mesh.
struct UvSet
{
    IV2fGeomParam parameter;
    CoreString name;
    bool is_face_varying; ///< else one per point
};

/// Adds the set when it fits the mesh. One index per corner and per point alike is taken as one per corner.
void add_fitting_set(std::vector<UvSet>& sets, const IV2fGeomParam& parameter, CoreString name,
                     const ISampleSelector& selector, const UvMesh& mesh)
{
    if (parameter_value_count(parameter, selector) == 0) return;
    const std::size_t index_count = parameter_index_count(parameter, selector);
    const bool is_face_varying = index_count == mesh.face_indices.get_count();
    if (index_count == 0 || (!is_face_varying && index_count != mesh.point_count)) return;
    sets.push_back({parameter, std::move(name), is_face_varying});
}

void add_sets_of_compound(std::vector<UvSet>& sets, const ICompoundProperty& compound, const char* left_out,
                          const ISampleSelector& selector, const UvMesh& mesh)
{
    if (!compound.valid()) return;
    for (std::size_t i = 0; i < compound.getNumProperties(); ++i) {
        const PropertyHeader& header = compound.getPropertyHeader(i);
        if (header.getName() == left_out || !isUV(header)) continue;
        add_fitting_set(sets, IV2fGeomParam(compound, header.getName()), CoreString(header.getName()), selector, mesh);
    }
}

/// False when an index of the set lies beyond its values.
bool read_set(const UvSet& set, const ISampleSelector& selector, const UvMesh& mesh, GeometryUvMap& map)
{
    map.name = set.name;
    if (!read_uv_values(set.parameter, selector, map.values)) return false;
    const std::size_t value_count = map.values.get_count();
    if (set.is_face_varying)
        return read_corner_parameter_indices(set.parameter, selector, value_count, mesh.face_counts, map.indices);
    // One per point: the mesh's own indices lead to them. Those may be as large as the number of points, not larger.
    if (value_count <= mesh.point_count && !indices_are_below(mesh.face_indices, value_count)) return false;
    map.indices = mesh.face_indices;
    return true;
}

} // namespace

bool read_uv_values(const IV2fGeomParam& uvs, const ISampleSelector& selector, CoreArray<GMathVec3<float>>& values)
{
    IV2fArrayProperty property = IV2fGeomParam(uvs).getValueProperty(); // getAs is not const
    const SamplePieces<UvPair> pieces(property, selector, element_count(property, selector));
    const std::size_t count = pieces.size();
    if (count == 0 || !can_hold<UvPair>(property, count)) return false;
    values.resize_for_overwrite(count);
    const bool is_whole = !pieces.is_worthwhile();
    const std::size_t length = is_whole ? count : piece_length<GMathVec3<float>>;
    for (std::size_t first = 0; first < count; first += length) {
        // The pairs are read into the last two thirds of their piece and then spread out from its front: a triple never
        // reaches the pairs that are still to come.
        const std::size_t part = std::min(length, count - first);
        GMathVec3<float>* const triples = values.get_data() + first;
        float* const pairs = &triples->x + part;
        if (is_whole)
            property.getAs(pairs, selector);
        else
            pieces.read(first, part, reinterpret_cast<UvPair*>(pairs));
        spread(pairs, part, triples);
    }
    return true;
}

CoreString parameter_display_name(const MetaData& meta_data, const std::string& own_name)
{
    const std::string source_name = GetSourceName(meta_data);
    return CoreString(source_name.empty() ? own_name : source_name);
}

void read_uv_maps(const IV2fGeomParam& default_uvs, const ICompoundProperty& arbitrary_parameters,
                  const ICompoundProperty& schema, const ISampleSelector& selector, const UvMesh& mesh,
                  CoreArray<GeometryUvMap>& uv_maps)
{
    std::vector<UvSet> sets;
    if (default_uvs.valid())
        add_fitting_set(sets, default_uvs, parameter_display_name(default_uvs.getMetaData(), default_uvs.getName()),
                        selector, mesh);
    std::size_t count = sets.empty() ? uv_maps.get_count() : 0; // the default set replaces what there was
    add_sets_of_compound(sets, arbitrary_parameters, "", selector, mesh);
    add_sets_of_compound(sets, schema, "uv", selector, mesh); // the default set is not loaded twice
    if (sets.empty()) return;

    uv_maps.resize(count + sets.size());
    for (const UvSet& set : sets)
        if (read_set(set, selector, mesh, uv_maps[count])) ++count;
    uv_maps.resize(count);
}
