/// NURBS patches, read.
#pragma once

#include <Alembic/AbcGeom/Foundation.h>
#include <Alembic/AbcGeom/IGeomBase.h>
#include <Alembic/AbcGeom/IGeomParam.h>
#include <Alembic/AbcGeom/SchemaInfoDeclarations.h>

#include <string>

namespace Alembic {
namespace AbcGeom {
inline namespace ALEMBIC_VERSION_NS {

class ALEMBIC_EXPORT INuPatchSchema : public IGeomBaseSchema<NuPatchSchemaInfo>
{
public:
    typedef INuPatchSchema this_type;

    /// What is absent is null, or 0. Nothing checks that the parts fit each other.
    class ALEMBIC_EXPORT Sample
    {
    public:
        typedef Sample this_type;

        /// Rows along u, `getNumU()` by `getNumV()` of them.
        P3fArraySamplePtr getPositions() const { return positions_; }
        /// Units per second, one a point.
        V3fArraySamplePtr getVelocities() const { return velocities_; }
        int32_t getNumU() const { return num_u_; }
        int32_t getNumV() const { return num_v_; }
        /// Degree plus one.
        int32_t getUOrder() const { return u_order_; }
        int32_t getVOrder() const { return v_order_; }
        FloatArraySamplePtr getUKnot() const { return u_knot_; }
        FloatArraySamplePtr getVKnot() const { return v_knot_; }
        /// One a point; all 1 when absent.
        FloatArraySamplePtr getPositionWeights() const { return position_weights_; }

        /// The trimming curves, loop by loop.
        int32_t getTrimNumLoops() const { return trim_num_loops_; }
        Int32ArraySamplePtr getTrimNumVertices() const { return trim_num_vertices_; }
        Int32ArraySamplePtr getTrimNumCurves() const { return trim_num_curves_; }
        Int32ArraySamplePtr getTrimOrders() const { return trim_orders_; }
        FloatArraySamplePtr getTrimKnots() const { return trim_knots_; }
        FloatArraySamplePtr getTrimMins() const { return trim_mins_; }
        FloatArraySamplePtr getTrimMaxes() const { return trim_maxes_; }
        FloatArraySamplePtr getTrimU() const { return trim_u_; }
        FloatArraySamplePtr getTrimV() const { return trim_v_; }
        FloatArraySamplePtr getTrimW() const { return trim_w_; }
        bool hasTrimCurve() const { return trim_num_loops_ != 0; }

        /// In the space of the object; the empty box when absent.
        Box3d getSelfBounds() const { return self_bounds_; }

        bool valid() const { return positions_ && u_knot_ && v_knot_; }
        void reset() { *this = Sample(); }
        ALEMBIC_OPERATOR_BOOL(valid());

    private:
        friend class INuPatchSchema;
        P3fArraySamplePtr positions_;
        V3fArraySamplePtr velocities_;
        int32_t num_u_ = 0;
        int32_t num_v_ = 0;
        int32_t u_order_ = 0;
        int32_t v_order_ = 0;
        FloatArraySamplePtr u_knot_;
        FloatArraySamplePtr v_knot_;
        FloatArraySamplePtr position_weights_;
        int32_t trim_num_loops_ = 0;
        Int32ArraySamplePtr trim_num_vertices_;
        Int32ArraySamplePtr trim_num_curves_;
        Int32ArraySamplePtr trim_orders_;
        FloatArraySamplePtr trim_knots_;
        FloatArraySamplePtr trim_mins_;
        FloatArraySamplePtr trim_maxes_;
        FloatArraySamplePtr trim_u_;
        FloatArraySamplePtr trim_v_;
        FloatArraySamplePtr trim_w_;
        Box3d self_bounds_;
    };
    typedef Sample sample_type;

    /// Invalid.
    INuPatchSchema() = default;

    /// The compound `name` of `parent`, or `property` itself. Arguments: policy (else the parent's), matching.
    INuPatchSchema(const ICompoundProperty& parent, const std::string& name, const Argument& arg0 = Argument(),
                   const Argument& arg1 = Argument())
        : IGeomBaseSchema<NuPatchSchemaInfo>(parent, name, arg0, arg1)
    {
        init(GetSchemaInterpMatching(arg0, arg1));
    }
    explicit INuPatchSchema(const ICompoundProperty& property, const Argument& arg0 = Argument(),
                            const Argument& arg1 = Argument())
        : IGeomBaseSchema<NuPatchSchemaInfo>(property, arg0, arg1)
    {
        init(GetSchemaInterpMatching(arg0, arg1));
    }

    /// Of the positions.
    size_t getNumSamples() const { return positions_.getNumSamples(); }
    AbcA::TimeSamplingPtr getTimeSampling() const { return positions_.getTimeSampling(); }

    /// By positions, weights, knots, orders and trimming curves.
    MeshTopologyVariance getTopologyVariance() const;
    bool isConstant() const { return getTopologyVariance() == kConstantTopology; }

    /// Each property at the index that the selector gives with its own time sampling and count. What the patch has not
    /// stays as it is in `sample`.
    void get(Sample& sample, const ISampleSelector& selector = ISampleSelector()) const;
    Sample getValue(const ISampleSelector& selector = ISampleSelector()) const
    {
        Sample sample;
        get(sample, selector);
        return sample;
    }

    IP3fArrayProperty getPositionsProperty() const { return handed_out(positions_, getErrorHandlerPolicy()); }
    IFloatArrayProperty getUKnotsProperty() const { return handed_out(u_knot_, getErrorHandlerPolicy()); }
    IFloatArrayProperty getVKnotsProperty() const { return handed_out(v_knot_, getErrorHandlerPolicy()); }
    /// Invalid when absent.
    IV3fArrayProperty getVelocitiesProperty() const { return handed_out(velocities_, getErrorHandlerPolicy()); }
    IFloatArrayProperty getPositionWeightsProperty() const { return handed_out(weights_, getErrorHandlerPolicy()); }

    /// Invalid when absent or of another kind.
    IN3fGeomParam getNormalsParam() const;
    IV2fGeomParam getUVsParam() const;

    /// The patch is trimmed: the trimming properties exist and were set.
    bool hasTrimCurve() const;
    /// The curves' numbers, orders and ranges are constant.
    bool trimCurveTopologyIsHomogenous() const;
    /// Everything about the curves is constant.
    bool trimCurveTopologyIsConstant() const;

    /// Clears everything but the policy.
    void reset() override;
    bool valid() const override;
    ALEMBIC_OVERRIDE_OPERATOR_BOOL(INuPatchSchema::valid());

private:
    /// The trimming curves; all there, or the patch is not trimmed (but for the numbers of curves, which may be
    /// absent).
    struct Trim
    {
        IInt32Property num_loops;
        IInt32ArrayProperty num_curves;
        IInt32ArrayProperty num_vertices;
        IInt32ArrayProperty orders;
        IFloatArrayProperty knots;
        IFloatArrayProperty mins;
        IFloatArrayProperty maxes;
        IFloatArrayProperty u;
        IFloatArrayProperty v;
        IFloatArrayProperty w;
    };

    void init(SchemaInterpMatching matching);
    void find_trim_curves(SchemaInterpMatching matching);
    void get_trim_curves(Sample& sample, const ISampleSelector& selector) const;

    IP3fArrayProperty positions_;
    IInt32Property num_u_;
    IInt32Property num_v_;
    IInt32Property u_order_;
    IInt32Property v_order_;
    IFloatArrayProperty u_knot_;
    IFloatArrayProperty v_knot_;
    IV3fArrayProperty velocities_;
    IFloatArrayProperty weights_;
    Trim trim_;
    SchemaInterpMatching matching_ = kNoMatching;
};

typedef Abc::ISchemaObject<INuPatchSchema> INuPatch;
typedef Alembic::Util::shared_ptr<INuPatch> INuPatchPtr;

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcGeom
} // namespace Alembic
