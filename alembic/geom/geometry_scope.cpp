/// Scopes of geometry parameters, their names, and how many values they need.
#include <Alembic/AbcGeom/GeometryScope.h>

#include <Alembic/AbcGeom/IGeomParam.h>

namespace Alembic {
namespace AbcGeom {
inline namespace ALEMBIC_VERSION_NS {

namespace {

const char* const scope_key = "geoScope";
const char* const not_uv_key = "notUV";
const char* const scope_names[] = {"con", "uni", "var", "vtx", "fvr"};
constexpr int scope_count = 5;

/// Values of a primitive: for the whole, one a part, one a point blended linearly, one a point, one a corner.
size_t choose(GeometryScope scope, size_t uniform, size_t varying, size_t vertex, size_t facevarying)
{
    switch (scope) {
    case kConstantScope:
        return 1;
    case kUniformScope:
        return uniform;
    case kVaryingScope:
        return varying;
    case kVertexScope:
        return vertex;
    case kFacevaryingScope:
        return facevarying;
    default:
        return 0;
    }
}

size_t less(size_t count, size_t by)
{
    return count > by ? count - by : 0;
}

/// Bezier segments along `count` points.
size_t cubic_segments(size_t count, bool no_wrap)
{
    return no_wrap ? less(count, 1) / 3 : count / 3;
}

} // namespace

GeometryScope GetGeometryScope(const AbcA::MetaData& metaData)
{
    const std::string name = metaData.get(scope_key);
    if (name.empty()) {
        return kConstantScope;
    }
    for (int i = 0; i < scope_count; ++i) {
        if (name == scope_names[i]) {
            return static_cast<GeometryScope>(i);
        }
    }
    return kUnknownScope;
}

void SetGeometryScope(AbcA::MetaData& metaData, GeometryScope scope)
{
    if (scope >= 0 && scope < scope_count) {
        metaData.set(scope_key, scope_names[scope]);
    }
}

size_t GeometryScopeNumValuesQuadrics(GeometryScope scope)
{
    return choose(scope, 1, 4, 4, 4);
}

size_t GeometryScopeNumValuesPolygon(GeometryScope scope, size_t numVerts)
{
    return choose(scope, 1, numVerts, numVerts, numVerts);
}

size_t GeometryScopeNumValuesPointsPolygons(GeometryScope scope, size_t numPolys, size_t numVerts, size_t sumOfCounts)
{
    return choose(scope, numPolys, numVerts, numVerts, sumOfCounts);
}

size_t GeometryScopeNumValuesPoints(GeometryScope scope, size_t numPoints)
{
    return choose(scope, 1, numPoints, numPoints, numPoints);
}

size_t GeometryScopeNumValuesSubdivisionMesh(GeometryScope scope, size_t numFaces, size_t numVerts, size_t sumOfCounts)
{
    return choose(scope, numFaces, numVerts, numVerts, sumOfCounts);
}

size_t GeometryScopeNumValuesBilinearPatch(GeometryScope scope)
{
    return choose(scope, 1, 4, 4, 4);
}

size_t GeometryScopeNumValuesBicubicPatch(GeometryScope scope)
{
    return choose(scope, 1, 4, 16, 4);
}

size_t GeometryScopeNumValuesBilinearPatchMesh(GeometryScope scope, size_t nu, bool uNoWrap, size_t nv, bool vNoWrap)
{
    const size_t patches = (uNoWrap ? less(nu, 1) : nu) * (vNoWrap ? less(nv, 1) : nv);
    return choose(scope, patches, nu * nv, nu * nv, nu * nv);
}

size_t GeometryScopeNumValuesBicubicPatchMesh(GeometryScope scope, size_t nu, bool uNoWrap, size_t nv, bool vNoWrap)
{
    const size_t u_patches = cubic_segments(nu, uNoWrap);
    const size_t v_patches = cubic_segments(nv, vNoWrap);
    const size_t corners = (u_patches + (uNoWrap ? 1 : 0)) * (v_patches + (vNoWrap ? 1 : 0));
    return choose(scope, u_patches * v_patches, corners, nu * nv, corners);
}

size_t GeometryScopeNumValuesNuPatch(GeometryScope scope, size_t nu, size_t uorder, size_t nv, size_t vorder)
{
    const size_t segments = less(nu + 1, uorder) * less(nv + 1, vorder);
    const size_t corners = less(nu + 2, uorder) * less(nv + 2, vorder);
    return choose(scope, segments, corners, nu * nv, corners);
}

size_t GeometryScopeNumValuesLinearCurves(GeometryScope scope, size_t numCurves, bool, size_t sumOfCounts)
{
    return choose(scope, numCurves, sumOfCounts, sumOfCounts, sumOfCounts);
}

size_t GeometryScopeNumValuesCubicCurves(GeometryScope scope, size_t numCurves, bool noWrap, size_t sumOfCounts)
{
    const size_t ends = noWrap ? less(sumOfCounts, numCurves) / 3 + numCurves : sumOfCounts / 3;
    return choose(scope, numCurves, ends, sumOfCounts, ends);
}

void SetIsUV(AbcA::MetaData& metaData, bool isUV)
{
    if (!isUV) {
        metaData.set(not_uv_key, "1");
    }
}

bool isUV(const AbcA::PropertyHeader& header)
{
    if (!IV2fGeomParam::matches(header) || header.getMetaData().get(not_uv_key) == "1") {
        return false;
    }
    const GeometryScope scope = GetGeometryScope(header.getMetaData());
    return scope == kVaryingScope || scope == kVertexScope || scope == kFacevaryingScope;
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcGeom
} // namespace Alembic
