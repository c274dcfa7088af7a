/// Curves, read.
#pragma once

#include <Alembic/AbcGeom/Basis.h>
#include <Alembic/AbcGeom/CurveType.h>
#include <Alembic/AbcGeom/Foundation.h>
#include <Alembic/AbcGeom/IGeomBase.h>
#include <Alembic/AbcGeom/IGeomParam.h>
#include <Alembic/AbcGeom/SchemaInfoDeclarations.h>

#include <string>

namespace Alembic {
namespace AbcGeom {
inline namespace ALEMBIC_VERSION_NS {

class ALEMBIC_EXPORT ICurvesSchema : public IGeomBaseSchema<CurvesSchemaInfo>
{
public:
    typedef ICurvesSchema this_type;

    /// What is absent is null. Nothing checks that the parts fit each other.
    class ALEMBIC_EXPORT Sample
    {
    public:
        typedef Sample this_type;

        P3fArraySamplePtr getPositions() const { return positions_; }
        size_t getNumCurves() const { return num_vertices_ ? num_vertices_->size() : 0; }
        /// Points of each curve.
        Int32ArraySamplePtr getCurvesNumVertices() const { return num_vertices_; }

        /// As stored; a file may hold numbers without a name.
        CurveType getType() const { return type_; }
        CurvePeriodicity getWrap() const { return wrap_; }
        BasisType getBasis() const { return basis_; }

        /// One a point; all 1 when absent.
        FloatArraySamplePtr getPositionWeights() const { return position_weights_; }
        /// One a curve, for curves of variable order.
        UcharArraySamplePtr getOrders() const { return orders_; }
        FloatArraySamplePtr getKnots() const { return knots_; }
        /// In the space of the object; the empty box when absent.
        Box3d getSelfBounds() const { return self_bounds_; }
        /// Units per second, one a point.
        V3fArraySamplePtr getVelocities() const { return velocities_; }

        bool valid() const { return positions_ && num_vertices_; }
        void reset() { *this = Sample(); }
        ALEMBIC_OPERATOR_BOOL(valid());

    private:
        friend class ICurvesSchema;
        P3fArraySamplePtr positions_;
        Int32ArraySamplePtr num_vertices_;
        CurveType type_ = kCubic;
        CurvePeriodicity wrap_ = kNonPeriodic;
        BasisType basis_ = kBezierBasis;
        FloatArraySamplePtr position_weights_;
        UcharArraySamplePtr orders_;
        FloatArraySamplePtr knots_;
        Box3d self_bounds_;
        V3fArraySamplePtr velocities_;
    };
    typedef Sample sample_type;

    /// Invalid.
    ICurvesSchema() = default;

    /// The compound `name` of `parent`, or `property` itself. Arguments: policy (else the parent's), matching.
    ICurvesSchema(const ICompoundProperty& parent, const std::string& name, const Argument& arg0 = Argument(),
                  const Argument& arg1 = Argument())
        : IGeomBaseSchema<CurvesSchemaInfo>(parent, name, arg0, arg1)
    {
        init(GetSchemaInterpMatching(arg0, arg1));
    }
    ICurvesSchema(const ICompoundProperty& property, const Argument& arg0 = Argument(),
                  const Argument& arg1 = Argument())
        : IGeomBaseSchema<CurvesSchemaInfo>(property, arg0, arg1)
    {
        init(GetSchemaInterpMatching(arg0, arg1));
    }

    /// Of the positions.
    size_t getNumSamples() const { return positions_.getNumSamples(); }
    AbcA::TimeSamplingPtr getTimeSampling() const { return positions_.getTimeSampling(); }

    /// By positions, weights, numbers of vertices, type and basis alone.
    MeshTopologyVariance getTopologyVariance() const;
    bool isConstant() const { return getTopologyVariance() == kConstantTopology; }

    /// Each property at the index that the selector gives with its own time sampling and count. What the curves have
    /// not stays as it is in `sample`. Does nothing on an invalid schema.
    void get(Sample& sample, const ISampleSelector& selector = ISampleSelector()) const;
    Sample getValue(const ISampleSelector& selector = ISampleSelector()) const
    {
        Sample sample;
        get(sample, selector);
        return sample;
    }

    IP3fArrayProperty getPositionsProperty() const { return handed_out(positions_, getErrorHandlerPolicy()); }
    IInt32ArrayProperty getNumVerticesProperty() const { return handed_out(num_vertices_, getErrorHandlerPolicy()); }

    /// These are invalid when absent.
    IV3fArrayProperty getVelocitiesProperty() const { return handed_out(velocities_, getErrorHandlerPolicy()); }
    IFloatArrayProperty getPositionWeightsProperty() const { return handed_out(weights_, getErrorHandlerPolicy()); }
    IUcharArrayProperty getOrdersProperty() const { return handed_out(orders_, getErrorHandlerPolicy()); }
    IFloatArrayProperty getKnotsProperty() const { return handed_out(knots_, getErrorHandlerPolicy()); }

    /// Invalid when absent or of another kind.
    IV2fGeomParam getUVsParam() const;
    IN3fGeomParam getNormalsParam() const;
    IFloatGeomParam getWidthsParam() const;

    /// Clears everything but the policy.
    void reset() override;
    bool valid() const override
    {
        return IGeomBaseSchema<CurvesSchemaInfo>::valid() && positions_.valid() && num_vertices_.valid() &&
               basis_and_type_.valid();
    }
    ALEMBIC_OVERRIDE_OPERATOR_BOOL(ICurvesSchema::valid());

private:
    void init(SchemaInterpMatching matching);

    IP3fArrayProperty positions_;
    IInt32ArrayProperty num_vertices_;
    IScalarProperty basis_and_type_; ///< four bytes: type, wrap, basis, basis again
    IV3fArrayProperty velocities_;
    IFloatArrayProperty weights_;
    IUcharArrayProperty orders_;
    IFloatArrayProperty knots_;
    SchemaInterpMatching matching_ = kNoMatching;
};

typedef Abc::ISchemaObject<ICurvesSchema> ICurves;
typedef Alembic::Util::shared_ptr<ICurves> ICurvesPtr;

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcGeom
} // namespace Alembic
