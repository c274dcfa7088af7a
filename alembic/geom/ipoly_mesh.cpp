/// Polygon meshes, read.
#include <Alembic/AbcGeom/IPolyMesh.h>

#include "geom/property_lookup.h"

namespace Alembic {
namespace AbcGeom {
inline namespace ALEMBIC_VERSION_NS {

void IPolyMeshSchema::init(SchemaInterpMatching matching)
{
    if (!getPtr()) {
        return; // the base reported why
    }
    ALEMBIC_ABC_SAFE_CALL_BEGIN("IPolyMeshSchema::init()");
    matching_ = matching;
    // Old files call positions vectors: their interpretation is never looked at.
    positions_ = required_property<IP3fArrayProperty>(*this, "P", kNoMatching);
    face_indices_ = required_property<IInt32ArrayProperty>(*this, ".faceIndices", matching);
    face_counts_ = required_property<IInt32ArrayProperty>(*this, ".faceCounts", matching);
    velocities_ = optional_property<IV3fArrayProperty>(*this, ".velocities", matching);
    ALEMBIC_ABC_SAFE_CALL_END_RESET();
}

MeshTopologyVariance IPolyMeshSchema::getTopologyVariance() const
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("IPolyMeshSchema::getTopologyVariance()");
    return topology_variance(face_indices_.isConstant() && face_counts_.isConstant(), positions_.isConstant());
    ALEMBIC_ABC_SAFE_CALL_END();
    return kConstantTopology;
}

void IPolyMeshSchema::get(Sample& sample, const ISampleSelector& selector) const
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("IPolyMeshSchema::get()");
    positions_.get(sample.positions_, selector);
    face_indices_.get(sample.face_indices_, selector);
    face_counts_.get(sample.face_counts_, selector);
    get_if_set(velocities_, sample.velocities_, selector);
    read_self_bounds(sample.self_bounds_, selector);
    ALEMBIC_ABC_SAFE_CALL_END();
}

IV2fGeomParam IPolyMeshSchema::getUVsParam() const
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("IPolyMeshSchema::getUVsParam()");
    return optional_param<IV2fGeomParam>(*this, "uv", matching_);
    ALEMBIC_ABC_SAFE_CALL_END();
    return IV2fGeomParam();
}

IN3fGeomParam IPolyMeshSchema::getNormalsParam() const
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("IPolyMeshSchema::getNormalsParam()");
    return optional_param<IN3fGeomParam>(*this, "N", matching_);
    ALEMBIC_ABC_SAFE_CALL_END();
    return IN3fGeomParam();
}

void IPolyMeshSchema::getFaceSetNames(std::vector<std::string>& faceSetNames) const
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("IPolyMeshSchema::getFaceSetNames()");
    append_face_set_names(getObject(), faceSetNames);
    ALEMBIC_ABC_SAFE_CALL_END();
}

IFaceSet IPolyMeshSchema::getFaceSet(const std::string& faceSetName) const
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("IPolyMeshSchema::getFaceSet()");
    const IObject mesh = getObject();
    ABCA_ASSERT(has_face_set(mesh, faceSetName), "The requested FaceSet name can't be found in PolyMesh.");
    return IFaceSet(mesh, faceSetName);
    ALEMBIC_ABC_SAFE_CALL_END();
    return IFaceSet();
}

bool IPolyMeshSchema::hasFaceSet(const std::string& faceSetName) const
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("IPolyMeshSchema::hasFaceSet (iFaceSetName)");
    return has_face_set(getObject(), faceSetName);
    ALEMBIC_ABC_SAFE_CALL_END();
    return false;
}

void IPolyMeshSchema::reset()
{
    positions_.reset();
    face_indices_.reset();
    face_counts_.reset();
    velocities_.reset();
    IGeomBaseSchema<PolyMeshSchemaInfo>::reset();
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcGeom
} // namespace Alembic
