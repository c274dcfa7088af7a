/// NURBS patches, written.
#pragma once

#include <Alembic/AbcGeom/OGeomBase.h>
#include <Alembic/AbcGeom/OGeomParam.h>

namespace Alembic {
namespace AbcGeom {
inline namespace ALEMBIC_VERSION_NS {

/// Of a sample's numbers and orders: not set. Never stored.
const int32_t ABC_GEOM_NUPATCH_NULL_INT_VALUE = -536870912;

class ALEMBIC_EXPORT ONuPatchSchema : public OGeomBaseSchema<NuPatchSchemaInfo>
{
public:
    typedef ONuPatchSchema this_type;

    /// Views of the caller's arrays, which must live until set() returns. In samples after the first, what is not given
    /// repeats the previous sample.
    class Sample
    {
    public:
        Sample() = default;
        Sample(const Abc::P3fArraySample& pos, const int32_t& numU, const int32_t& numV, const int32_t& uOrder,
               const int32_t& vOrder, const Abc::FloatArraySample& uKnot, const Abc::FloatArraySample& vKnot,
               const ON3fGeomParam::Sample& normals = ON3fGeomParam::Sample(),
               const OV2fGeomParam::Sample& uvs = OV2fGeomParam::Sample(),
               const Abc::FloatArraySample& posWeight = Abc::FloatArraySample());

        /// Control points, u fastest, in object space.
        const Abc::P3fArraySample& getPositions() const { return positions_; }
        void setPositions(const Abc::P3fArraySample& sample) { positions_ = sample; }

        /// One weight per control point; absent: 1.
        const Abc::FloatArraySample& getPositionWeights() const { return position_weights_; }
        void setPositionWeights(const Abc::FloatArraySample& sample) { position_weights_ = sample; }

        /// Numbers of control points, and orders; not set: ABC_GEOM_NUPATCH_NULL_INT_VALUE.
        int32_t getNu() const { return num_u_; }
        void setNu(int32_t nu) { num_u_ = nu; }
        int32_t getNv() const { return num_v_; }
        void setNv(int32_t nv) { num_v_ = nv; }
        int32_t getUOrder() const { return u_order_; }
        void setUOrder(int32_t uOrder) { u_order_ = uOrder; }
        int32_t getVOrder() const { return v_order_; }
        void setVOrder(int32_t vOrder) { v_order_ = vOrder; }

        const Abc::FloatArraySample& getUKnot() const { return u_knot_; }
        void setUKnot(const Abc::FloatArraySample& sample) { u_knot_ = sample; }
        const Abc::FloatArraySample& getVKnot() const { return v_knot_; }
        void setVKnot(const Abc::FloatArraySample& sample) { v_knot_ = sample; }
        const OV2fGeomParam::Sample& getUVs() const { return uvs_; }
        void setUVs(const OV2fGeomParam::Sample& sample) { uvs_ = sample; }
        const ON3fGeomParam::Sample& getNormals() const { return normals_; }
        void setNormals(const ON3fGeomParam::Sample& sample) { normals_ = sample; }

        /// One vector per control point, units per second.
        const Abc::V3fArraySample& getVelocities() const { return velocities_; }
        void setVelocities(const Abc::V3fArraySample& sample) { velocities_ = sample; }

        /// In object space; computed from the positions when not given.
        const Abc::Box3d& getSelfBounds() const { return self_bounds_; }
        void setSelfBounds(const Abc::Box3d& sample) { self_bounds_ = sample; }

        /// Trims the patch: loops, curves of each loop, and for each curve the number of its points, order, knots,
        /// parameter range and homogeneous points.
        void setTrimCurve(int32_t trim_nLoops, const Abc::Int32ArraySample& trim_nCurves,
                          const Abc::Int32ArraySample& trim_n, const Abc::Int32ArraySample& trim_order,
                          const Abc::FloatArraySample& trim_knot, const Abc::FloatArraySample& trim_min,
                          const Abc::FloatArraySample& trim_max, const Abc::FloatArraySample& trim_u,
                          const Abc::FloatArraySample& trim_v, const Abc::FloatArraySample& trim_w);
        int32_t getTrimNumLoops() const { return trim_num_loops_; }
        const Abc::Int32ArraySample& getTrimNumCurves() const { return trim_num_curves_; }
        const Abc::Int32ArraySample& getTrimNumVertices() const { return trim_num_vertices_; }
        const Abc::Int32ArraySample& getTrimOrder() const { return trim_order_; }
        const Abc::FloatArraySample& getTrimKnot() const { return trim_knot_; }
        const Abc::FloatArraySample& getTrimMin() const { return trim_min_; }
        const Abc::FloatArraySample& getTrimMax() const { return trim_max_; }
        const Abc::FloatArraySample& getTrimU() const { return trim_u_; }
        const Abc::FloatArraySample& getTrimV() const { return trim_v_; }
        const Abc::FloatArraySample& getTrimW() const { return trim_w_; }
        bool hasTrimCurve() const { return has_trim_; }

        void reset() { *this = Sample(); }

        /// No positions, but something else: only that is written.
        bool isPartialSample() const;
        bool hasKnotSampleData() const { return u_knot_.valid() && v_knot_.valid(); }

    private:
        Abc::P3fArraySample positions_;
        Abc::FloatArraySample position_weights_;
        int32_t num_u_ = ABC_GEOM_NUPATCH_NULL_INT_VALUE;
        int32_t num_v_ = ABC_GEOM_NUPATCH_NULL_INT_VALUE;
        int32_t u_order_ = ABC_GEOM_NUPATCH_NULL_INT_VALUE;
        int32_t v_order_ = ABC_GEOM_NUPATCH_NULL_INT_VALUE;
        Abc::FloatArraySample u_knot_;
        Abc::FloatArraySample v_knot_;
        OV2fGeomParam::Sample uvs_;
        ON3fGeomParam::Sample normals_;
        Abc::V3fArraySample velocities_;
        Abc::Box3d self_bounds_;
        bool has_trim_ = false;
        int32_t trim_num_loops_ = ABC_GEOM_NUPATCH_NULL_INT_VALUE;
        Abc::Int32ArraySample trim_num_curves_;
        Abc::Int32ArraySample trim_num_vertices_;
        Abc::Int32ArraySample trim_order_;
        Abc::FloatArraySample trim_knot_;
        Abc::FloatArraySample trim_min_;
        Abc::FloatArraySample trim_max_;
        Abc::FloatArraySample trim_u_;
        Abc::FloatArraySample trim_v_;
        Abc::FloatArraySample trim_w_;
    };
    typedef Sample sample_type;

    ONuPatchSchema() = default;

    /// Creates the schema's compound `name` in `parent`. Arguments: error policy, time sampling, metadata, sparseness.
    ONuPatchSchema(AbcA::CompoundPropertyWriterPtr parent, const std::string& name, const Argument& arg0 = Argument(),
                   const Argument& arg1 = Argument(), const Argument& arg2 = Argument(),
                   const Argument& arg3 = Argument());
    ONuPatchSchema(OCompoundProperty parent, const std::string& name, const Argument& arg0 = Argument(),
                   const Argument& arg1 = Argument(), const Argument& arg2 = Argument());

    /// The first sample needs positions, numbers, orders and knots, unless the schema is sparse.
    void set(const sample_type& sample);

private:
    struct State;
};

typedef Abc::OSchemaObject<ONuPatchSchema> ONuPatch;
typedef Alembic::Util::shared_ptr<ONuPatch> ONuPatchPtr;

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcGeom
} // namespace Alembic
