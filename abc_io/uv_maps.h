/// Texture coordinates of a mesh as the host's UV maps.
#pragma once

#include <Alembic/AbcGeom/All.h>
#include <vo_core/core_array.h>
#include <vo_geometry/geometry_uv_map.h>

#include <cstddef>

/// Reads (u, v) values at `selector` as (u, v, 0), in place: no memory beside the array itself. False without values.
bool read_uv_values(const Alembic::AbcGeom::IV2fGeomParam& uvs, const Alembic::Abc::ISampleSelector& selector,
                    CoreArray<GMathVec3<float>>& values);

/// Name under which users know a parameter: the one it had in its source, else its own.
CoreString parameter_display_name(const Alembic::AbcGeom::MetaData& meta_data, const std::string& own_name);

/// A mesh as its UV sets see it; faces already in the host's winding.
struct UvMesh
{
    const CoreArray<unsigned int>& face_counts;
    const CoreArray<unsigned int>& face_indices;
    std::size_t point_count;
};

/// All UV sets at `selector`: the default one first (`default_uvs`, may be invalid), then those among the arbitrary
/// geometry parameters, then those of the schema's own compound, each in stored order. A set counts when it has one
/// index per polygon corner or else one per point; other sets, and sets with an index beyond their values, are left
/// out. The default set replaces what `uv_maps` held; without one, the others are appended to that.
void read_uv_maps(const Alembic::AbcGeom::IV2fGeomParam& default_uvs,
                  const Alembic::Abc::ICompoundProperty& arbitrary_parameters,
                  const Alembic::Abc::ICompoundProperty& schema, const Alembic::Abc::ISampleSelector& selector,
                  const UvMesh& mesh, CoreArray<GeometryUvMap>& uv_maps);
