/// NURBS patches, read.
#include <Alembic/AbcGeom/INuPatch.h>

#include "geom/property_lookup.h"

namespace Alembic {
namespace AbcGeom {
inline namespace ALEMBIC_VERSION_NS {

void INuPatchSchema::init(SchemaInterpMatching matching)
{
    if (!getPtr()) {
        return; // the base reported why
    }
    ALEMBIC_ABC_SAFE_CALL_BEGIN("INuPatchSchema::init()");
    matching_ = matching;
    // Old files call positions vectors: their interpretation is never looked at.
    positions_ = required_property<IP3fArrayProperty>(*this, "P", kNoMatching);
    num_u_ = required_property<IInt32Property>(*this, "nu", matching);
    num_v_ = required_property<IInt32Property>(*this, "nv", matching);
    u_order_ = required_property<IInt32Property>(*this, "uOrder", matching);
    v_order_ = required_property<IInt32Property>(*this, "vOrder", matching);
    u_knot_ = required_property<IFloatArrayProperty>(*this, "uKnot", matching);
    v_knot_ = required_property<IFloatArrayProperty>(*this, "vKnot", matching);
    velocities_ = optional_property<IV3fArrayProperty>(*this, ".velocities", matching);
    weights_ = optional_property<IFloatArrayProperty>(*this, "w", matching);
    find_trim_curves(matching);
    ALEMBIC_ABC_SAFE_CALL_END_RESET();
}

void INuPatchSchema::find_trim_curves(SchemaInterpMatching matching)
{
    bool complete = true;
    const auto find = [&](auto& property, const char* name) {
        property = optional_property<std::decay_t<decltype(property)>>(*this, name, matching);
        return property.getPtr() != nullptr;
    };
    complete = find(trim_.num_loops, "trim_nloops") && complete;
    complete = find(trim_.num_vertices, "trim_n") && complete;
    complete = find(trim_.orders, "trim_order") && complete;
    complete = find(trim_.knots, "trim_knot") && complete;
    complete = find(trim_.mins, "trim_min") && complete;
    complete = find(trim_.maxes, "trim_max") && complete;
    complete = find(trim_.u, "trim_u") && complete;
    complete = find(trim_.v, "trim_v") && complete;
    complete = find(trim_.w, "trim_w") && complete;
    if (!complete) {
        trim_ = Trim();
        return;
    }
    find(trim_.num_curves, "trim_ncurves"); // intended: may be absent
}

bool INuPatchSchema::valid() const
{
    return IGeomBaseSchema<NuPatchSchemaInfo>::valid() && positions_.valid() && num_u_.valid() && num_v_.valid() &&
           u_order_.valid() && v_order_.valid() && u_knot_.valid() && v_knot_.valid();
}

bool INuPatchSchema::hasTrimCurve() const
{
    return trim_.num_loops.getNumSamples() > 0;
}

bool INuPatchSchema::trimCurveTopologyIsHomogenous() const
{
    return trim_.num_loops.isConstant() && trim_.num_curves.isConstant() && trim_.num_vertices.isConstant() &&
           trim_.orders.isConstant() && trim_.mins.isConstant() && trim_.maxes.isConstant();
}

bool INuPatchSchema::trimCurveTopologyIsConstant() const
{
    return trimCurveTopologyIsHomogenous() && trim_.knots.isConstant() && trim_.u.isConstant() &&
           trim_.v.isConstant() && trim_.w.isConstant();
}

MeshTopologyVariance INuPatchSchema::getTopologyVariance() const
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("INuPatchSchema::getTopologyVariance()");
    const bool connections_constant =
        u_knot_.isConstant() && v_knot_.isConstant() && u_order_.isConstant() && v_order_.isConstant();
    const bool trimmed = hasTrimCurve();
    const bool positions_constant = positions_.isConstant() && weights_.isConstant();
    return topology_variance(connections_constant && (!trimmed || trimCurveTopologyIsHomogenous()),
                             positions_constant && (!trimmed || trimCurveTopologyIsConstant()));
    ALEMBIC_ABC_SAFE_CALL_END();
    return kConstantTopology;
}

void INuPatchSchema::get(Sample& sample, const ISampleSelector& selector) const
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("INuPatch::get()");
    positions_.get(sample.positions_, selector);
    num_u_.get(sample.num_u_, selector);
    num_v_.get(sample.num_v_, selector);
    u_order_.get(sample.u_order_, selector);
    v_order_.get(sample.v_order_, selector);
    u_knot_.get(sample.u_knot_, selector);
    v_knot_.get(sample.v_knot_, selector);
    get_if_set(velocities_, sample.velocities_, selector);
    get_if_set(weights_, sample.position_weights_, selector);
    if (hasTrimCurve()) {
        get_trim_curves(sample, selector);
    }
    read_self_bounds(sample.self_bounds_, selector);
    ALEMBIC_ABC_SAFE_CALL_END();
}

void INuPatchSchema::get_trim_curves(Sample& sample, const ISampleSelector& selector) const
{
    get_if_set(trim_.num_loops, sample.trim_num_loops_, selector);
    get_if_set(trim_.num_curves, sample.trim_num_curves_, selector);
    get_if_set(trim_.num_vertices, sample.trim_num_vertices_, selector);
    get_if_set(trim_.orders, sample.trim_orders_, selector);
    get_if_set(trim_.knots, sample.trim_knots_, selector);
    get_if_set(trim_.mins, sample.trim_mins_, selector);
    get_if_set(trim_.maxes, sample.trim_maxes_, selector);
    get_if_set(trim_.u, sample.trim_u_, selector);
    get_if_set(trim_.v, sample.trim_v_, selector);
    get_if_set(trim_.w, sample.trim_w_, selector);
}

IN3fGeomParam INuPatchSchema::getNormalsParam() const
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("INuPatchSchema::getNormalsParam()");
    return optional_param<IN3fGeomParam>(*this, "N", matching_);
    ALEMBIC_ABC_SAFE_CALL_END();
    return IN3fGeomParam();
}

IV2fGeomParam INuPatchSchema::getUVsParam() const
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("INuPatchSchema::getUVsParam()");
    return optional_param<IV2fGeomParam>(*this, "uv", matching_);
    ALEMBIC_ABC_SAFE_CALL_END();
    return IV2fGeomParam();
}

void INuPatchSchema::reset()
{
    positions_.reset();
    num_u_.reset();
    num_v_.reset();
    u_order_.reset();
    v_order_.reset();
    u_knot_.reset();
    v_knot_.reset();
    velocities_.reset();
    weights_.reset();
    trim_ = Trim();
    IGeomBaseSchema<NuPatchSchemaInfo>::reset();
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcGeom
} // namespace Alembic
