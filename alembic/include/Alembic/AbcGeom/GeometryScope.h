/// What the values of a geometry parameter belong to: the whole primitive, faces, points or face corners.
#pragma once

#include <Alembic/AbcGeom/Foundation.h>

namespace Alembic {
namespace AbcGeom {
inline namespace ALEMBIC_VERSION_NS {

/// Stored as metadata `geoScope`, by the short names given here.
enum GeometryScope : int {
    kConstantScope = 0,    ///< `con`, or absent: one value for all
    kUniformScope = 1,     ///< `uni`: one per face, curve or patch
    kVaryingScope = 2,     ///< `var`: one per point, blended linearly
    kVertexScope = 3,      ///< `vtx`: one per point, blended as positions are
    kFacevaryingScope = 4, ///< `fvr`: one per corner of each face
    kUnknownScope = 127,   ///< any other name
};

ALEMBIC_EXPORT GeometryScope GetGeometryScope(const AbcA::MetaData& metaData);

/// Sets `geoScope`; an unknown scope leaves the metadata as they are.
ALEMBIC_EXPORT void SetGeometryScope(AbcA::MetaData& metaData, GeometryScope scope);

/// How many values a parameter of `scope` needs on a primitive; 0 for an unknown scope. `sumOfCounts` is the number of
/// face corners, or of the points of all curves. `...NoWrap` is true for a primitive that is not closed in that
/// direction. Cubic patches and curves are counted as Bezier ones: three points further make the next segment.
ALEMBIC_EXPORT size_t GeometryScopeNumValuesQuadrics(GeometryScope scope);
ALEMBIC_EXPORT size_t GeometryScopeNumValuesPolygon(GeometryScope scope, size_t numVerts);
ALEMBIC_EXPORT size_t GeometryScopeNumValuesPointsPolygons(GeometryScope scope, size_t numPolys, size_t numVerts,
                                                           size_t sumOfCounts);
ALEMBIC_EXPORT size_t GeometryScopeNumValuesPoints(GeometryScope scope, size_t numPoints);
ALEMBIC_EXPORT size_t GeometryScopeNumValuesSubdivisionMesh(GeometryScope scope, size_t numFaces, size_t numVerts,
                                                            size_t sumOfCounts);
ALEMBIC_EXPORT size_t GeometryScopeNumValuesBilinearPatch(GeometryScope scope);
ALEMBIC_EXPORT size_t GeometryScopeNumValuesBicubicPatch(GeometryScope scope);
ALEMBIC_EXPORT size_t GeometryScopeNumValuesBilinearPatchMesh(GeometryScope scope, size_t nu, bool uNoWrap, size_t nv,
                                                              bool vNoWrap);
ALEMBIC_EXPORT size_t GeometryScopeNumValuesBicubicPatchMesh(GeometryScope scope, size_t nu, bool uNoWrap, size_t nv,
                                                             bool vNoWrap);
ALEMBIC_EXPORT size_t GeometryScopeNumValuesNuPatch(GeometryScope scope, size_t nu, size_t uorder, size_t nv,
                                                    size_t vorder);
ALEMBIC_EXPORT size_t GeometryScopeNumValuesLinearCurves(GeometryScope scope, size_t numCurves, bool noWrap,
                                                         size_t sumOfCounts);
ALEMBIC_EXPORT size_t GeometryScopeNumValuesCubicCurves(GeometryScope scope, size_t numCurves, bool noWrap,
                                                        size_t sumOfCounts);

/// Marks a parameter of two floats as something else than texture coordinates: `false` sets metadata `notUV` to `1`.
/// `true` does nothing, so that a mark set before stays.
ALEMBIC_EXPORT void SetIsUV(AbcA::MetaData& metaData, bool isUV);

/// Whether a property holds texture coordinates: two floats, interpretation `vector`, not marked by SetIsUV, and one
/// value per point or corner.
ALEMBIC_EXPORT bool isUV(const AbcA::PropertyHeader& header);

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcGeom
} // namespace Alembic
