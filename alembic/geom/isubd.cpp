/// Subdivision surfaces, read.
#include <Alembic/AbcGeom/ISubD.h>

#include "geom/property_lookup.h"

namespace Alembic {
namespace AbcGeom {
inline namespace ALEMBIC_VERSION_NS {

void ISubDSchema::init(SchemaInterpMatching matching)
{
    if (!getPtr()) {
        return; // the base reported why
    }
    ALEMBIC_ABC_SAFE_CALL_BEGIN("ISubDSchema::init()");
    matching_ = matching;
    // Old files call positions vectors: their interpretation is never looked at.
    positions_ = required_property<IP3fArrayProperty>(*this, "P", kNoMatching);
    face_indices_ = required_property<IInt32ArrayProperty>(*this, ".faceIndices", matching);
    face_counts_ = required_property<IInt32ArrayProperty>(*this, ".faceCounts", matching);

    const auto find = [&](auto& property, const char* name) {
        property = optional_property<std::decay_t<decltype(property)>>(*this, name, matching);
    };
    find(optional_.face_varying_interpolate_boundary, ".faceVaryingInterpolateBoundary");
    find(optional_.face_varying_propagate_corners, ".faceVaryingPropagateCorners");
    find(optional_.interpolate_boundary, ".interpolateBoundary");
    find(optional_.crease_indices, ".creaseIndices");
    find(optional_.crease_lengths, ".creaseLengths");
    find(optional_.crease_sharpnesses, ".creaseSharpnesses");
    find(optional_.corner_indices, ".cornerIndices");
    find(optional_.corner_sharpnesses, ".cornerSharpnesses");
    find(optional_.holes, ".holes");
    find(optional_.scheme, ".scheme");
    find(optional_.velocities, ".velocities");
    ALEMBIC_ABC_SAFE_CALL_END_RESET();
}

MeshTopologyVariance ISubDSchema::getTopologyVariance() const
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("ISubDSchema::getTopologyVariance()");
    return topology_variance(face_indices_.isConstant() && face_counts_.isConstant(), positions_.isConstant());
    ALEMBIC_ABC_SAFE_CALL_END();
    return kConstantTopology;
}

size_t ISubDSchema::getNumSamples() const
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("ISubDSchema::getNumSamples()");
    return greatest_sample_count(*this);
    ALEMBIC_ABC_SAFE_CALL_END();
    return 0;
}

void ISubDSchema::get(Sample& sample, const ISampleSelector& selector) const
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("ISubDSchema::get()");
    positions_.get(sample.positions_, selector);
    face_indices_.get(sample.face_indices_, selector);
    face_counts_.get(sample.face_counts_, selector);
    read_self_bounds(sample.self_bounds_, selector);

    // Intended: a property that is there without a sample is an error, velocities alone excepted. Creases without
    // sharpnesses are written like that.
    const auto get = [&](const auto& property, auto& value) {
        if (property.getPtr()) {
            property.get(value, selector);
        }
    };
    get(optional_.face_varying_interpolate_boundary, sample.face_varying_interpolate_boundary_);
    get(optional_.face_varying_propagate_corners, sample.face_varying_propagate_corners_);
    get(optional_.interpolate_boundary, sample.interpolate_boundary_);
    get(optional_.crease_indices, sample.crease_indices_);
    get(optional_.crease_lengths, sample.crease_lengths_);
    get(optional_.crease_sharpnesses, sample.crease_sharpnesses_);
    get(optional_.corner_indices, sample.corner_indices_);
    get(optional_.corner_sharpnesses, sample.corner_sharpnesses_);
    get(optional_.holes, sample.holes_);
    get(optional_.scheme, sample.scheme_);
    get_if_set(optional_.velocities, sample.velocities_, selector);
    ALEMBIC_ABC_SAFE_CALL_END();
}

IInt32Property ISubDSchema::getFaceVaryingInterpolateBoundaryProperty() const
{
    return handed_out(optional_.face_varying_interpolate_boundary, getErrorHandlerPolicy());
}

IInt32Property ISubDSchema::getFaceVaryingPropagateCornersProperty() const
{
    return handed_out(optional_.face_varying_propagate_corners, getErrorHandlerPolicy());
}

IInt32Property ISubDSchema::getInterpolateBoundaryProperty() const
{
    return handed_out(optional_.interpolate_boundary, getErrorHandlerPolicy());
}

IInt32ArrayProperty ISubDSchema::getCreaseIndicesProperty() const
{
    return handed_out(optional_.crease_indices, getErrorHandlerPolicy());
}

IInt32ArrayProperty ISubDSchema::getCreaseLengthsProperty() const
{
    return handed_out(optional_.crease_lengths, getErrorHandlerPolicy());
}

IFloatArrayProperty ISubDSchema::getCreaseSharpnessesProperty() const
{
    return handed_out(optional_.crease_sharpnesses, getErrorHandlerPolicy());
}

IInt32ArrayProperty ISubDSchema::getCornerIndicesProperty() const
{
    return handed_out(optional_.corner_indices, getErrorHandlerPolicy());
}

IFloatArrayProperty ISubDSchema::getCornerSharpnessesProperty() const
{
    return handed_out(optional_.corner_sharpnesses, getErrorHandlerPolicy());
}

IInt32ArrayProperty ISubDSchema::getHolesProperty() const
{
    return handed_out(optional_.holes, getErrorHandlerPolicy());
}

IStringProperty ISubDSchema::getSubdivisionSchemeProperty() const
{
    return handed_out(optional_.scheme, getErrorHandlerPolicy());
}

IV3fArrayProperty ISubDSchema::getVelocitiesProperty() const
{
    return handed_out(optional_.velocities, getErrorHandlerPolicy());
}

IV2fGeomParam ISubDSchema::getUVsParam() const
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("ISubDSchema::getUVsParam()");
    return optional_param<IV2fGeomParam>(*this, "uv", matching_);
    ALEMBIC_ABC_SAFE_CALL_END();
    return IV2fGeomParam();
}

void ISubDSchema::getFaceSetNames(std::vector<std::string>& faceSetNames) const
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("ISubDSchema::getFaceSetNames()");
    append_face_set_names(getObject(), faceSetNames);
    ALEMBIC_ABC_SAFE_CALL_END();
}

IFaceSet ISubDSchema::getFaceSet(const std::string& faceSetName) const
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("ISubDSchema::getFaceSet()");
    const IObject mesh = getObject();
    ABCA_ASSERT(has_face_set(mesh, faceSetName), "The requested FaceSet name can't be found in SubD.");
    return IFaceSet(mesh, faceSetName);
    ALEMBIC_ABC_SAFE_CALL_END();
    return IFaceSet();
}

bool ISubDSchema::hasFaceSet(const std::string& faceSetName) const
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("ISubDSchema::hasFaceSet (faceSetName)");
    return has_face_set(getObject(), faceSetName);
    ALEMBIC_ABC_SAFE_CALL_END();
    return false;
}

void ISubDSchema::reset()
{
    positions_.reset();
    face_indices_.reset();
    face_counts_.reset();
    optional_ = Optional();
    IGeomBaseSchema<SubDSchemaInfo>::reset();
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcGeom
} // namespace Alembic
