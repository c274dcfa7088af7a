/// Curves, read.
#include <Alembic/AbcGeom/ICurves.h>

#include "geom/property_lookup.h"

namespace Alembic {
namespace AbcGeom {
inline namespace ALEMBIC_VERSION_NS {

namespace {

/// Type, wrap, basis, and the basis again, which is not looked at.
constexpr int basis_and_type_size = 4;

} // namespace

void ICurvesSchema::init(SchemaInterpMatching matching)
{
    if (!getPtr()) {
        return; // the base reported why
    }
    ALEMBIC_ABC_SAFE_CALL_BEGIN("ICurvesSchema::init()");
    matching_ = matching;
    // Old files call positions vectors: their interpretation is never looked at.
    positions_ = required_property<IP3fArrayProperty>(*this, "P", kNoMatching);
    num_vertices_ = required_property<IInt32ArrayProperty>(*this, "nVertices", matching);
    basis_and_type_ = IScalarProperty(*this, "curveBasisAndType", ErrorHandler::kThrowPolicy);
    if (basis_and_type_.getDataType() != DataType(kUint8POD, basis_and_type_size)) {
        ABCA_THROW("Incorrect match of header datatype: " << basis_and_type_.getDataType()
                                                          << " to expected: uint8_t[4], property: curveBasisAndType");
    }
    velocities_ = optional_property<IV3fArrayProperty>(*this, ".velocities", matching);
    weights_ = optional_property<IFloatArrayProperty>(*this, "w", matching);
    orders_ = optional_property<IUcharArrayProperty>(*this, ".orders", matching);
    knots_ = optional_property<IFloatArrayProperty>(*this, ".knots", matching);
    ALEMBIC_ABC_SAFE_CALL_END_RESET();
}

MeshTopologyVariance ICurvesSchema::getTopologyVariance() const
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("ICurvesSchema::getTopologyVariance()");
    return topology_variance(num_vertices_.isConstant() && basis_and_type_.isConstant(),
                             positions_.isConstant() && weights_.isConstant());
    ALEMBIC_ABC_SAFE_CALL_END();
    return kConstantTopology;
}

void ICurvesSchema::get(Sample& sample, const ISampleSelector& selector) const
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("ICurvesSchema::get()");
    if (!valid()) {
        return;
    }
    positions_.get(sample.positions_, selector);
    num_vertices_.get(sample.num_vertices_, selector);
    uint8_t basis_and_type[basis_and_type_size] = {};
    basis_and_type_.get(basis_and_type, selector);
    sample.type_ = static_cast<CurveType>(basis_and_type[0]);
    sample.wrap_ = static_cast<CurvePeriodicity>(basis_and_type[1]);
    sample.basis_ = static_cast<BasisType>(basis_and_type[2]);

    get_if_set(weights_, sample.position_weights_, selector);
    get_if_set(orders_, sample.orders_, selector);
    get_if_set(knots_, sample.knots_, selector);
    get_if_set(velocities_, sample.velocities_, selector);
    read_self_bounds(sample.self_bounds_, selector);
    ALEMBIC_ABC_SAFE_CALL_END();
}

IV2fGeomParam ICurvesSchema::getUVsParam() const
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("ICurvesSchema::getUVsParam()");
    return optional_param<IV2fGeomParam>(*this, "uv", matching_);
    ALEMBIC_ABC_SAFE_CALL_END();
    return IV2fGeomParam();
}

IN3fGeomParam ICurvesSchema::getNormalsParam() const
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("ICurvesSchema::getNormalsParam()");
    return optional_param<IN3fGeomParam>(*this, "N", matching_);
    ALEMBIC_ABC_SAFE_CALL_END();
    return IN3fGeomParam();
}

IFloatGeomParam ICurvesSchema::getWidthsParam() const
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("ICurvesSchema::getWidthsParam()");
    return optional_param<IFloatGeomParam>(*this, "width", matching_);
    ALEMBIC_ABC_SAFE_CALL_END();
    return IFloatGeomParam();
}

void ICurvesSchema::reset()
{
    positions_.reset();
    num_vertices_.reset();
    basis_and_type_.reset();
    velocities_.reset();
    weights_.reset();
    orders_.reset();
    knots_.reset();
    IGeomBaseSchema<CurvesSchemaInfo>::reset();
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcGeom
} // namespace Alembic
