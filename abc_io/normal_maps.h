/// Normals as the host's normal map.
#pragma once

#include "sample_span.h"

#include <Alembic/AbcGeom/All.h>
#include <vo_core/core_array.h>
#include <vo_geometry/geometry_normal_map.h>

#include <cstddef>
#include <optional>

/// Fills one map with the normals at `selector` when there are `index_count` indices into them (those stored, or one
/// for each normal). False, maps untouched, with another number of indices or without normals; false and no map when an
/// index lies beyond the normals.
bool read_normal_map(const Alembic::AbcGeom::IN3fGeomParam& normals, const Alembic::Abc::ISampleSelector& selector,
                     std::size_t index_count, CoreArray<GeometryNormalMap>& normal_maps);

/// The same for the corners of polygons: indices in the host's winding, `corner_count` of them, which the face counts
/// add up to.
bool read_corner_normals(const Alembic::AbcGeom::IN3fGeomParam& normals, const Alembic::Abc::ISampleSelector& selector,
                         const CoreArray<unsigned int>& face_counts, std::size_t corner_count,
                         CoreArray<GeometryNormalMap>& normal_maps);

/// Where `time` (seconds) falls among the normals' samples; see find_sample_span.
std::optional<SampleSpan> find_normals_span(const Alembic::AbcGeom::IN3fGeomParam& normals, double time);

/// `map` holds the values of the span's floor sample; blends them with those of its ceiling sample at `time`, which
/// lies between the two. Not renormalised. False, map untouched, when the two samples differ in size.
bool blend_normals(const Alembic::AbcGeom::IN3fGeomParam& normals, const SampleSpan& span, double time,
                   GeometryNormalMap& map);
