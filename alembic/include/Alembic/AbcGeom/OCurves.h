/// Curves, written.
#pragma once

#include <Alembic/AbcGeom/Basis.h>
#include <Alembic/AbcGeom/CurveType.h>
#include <Alembic/AbcGeom/OGeomBase.h>
#include <Alembic/AbcGeom/OGeomParam.h>

namespace Alembic {
namespace AbcGeom {
inline namespace ALEMBIC_VERSION_NS {

class ALEMBIC_EXPORT OCurvesSchema : public OGeomBaseSchema<CurvesSchemaInfo>
{
public:
    typedef OCurvesSchema this_type;

    /// Views of the caller's arrays, which must live until set() returns. In samples after the first, what is not given
    /// repeats the previous sample; type, wrap and basis are always those of the sample.
    class Sample
    {
    public:
        Sample() = default;
        Sample(const Abc::P3fArraySample& pos) // NOLINT: implicit
            : positions_(pos)
        {
        }
        Sample(const Abc::P3fArraySample& pos, const Abc::Int32ArraySample& nVertices, const CurveType& type = kCubic,
               CurvePeriodicity wrap = kNonPeriodic, const OFloatGeomParam::Sample& widths = OFloatGeomParam::Sample(),
               const OV2fGeomParam::Sample& uvs = OV2fGeomParam::Sample(),
               const ON3fGeomParam::Sample& normals = ON3fGeomParam::Sample(), const BasisType& basis = kBezierBasis,
               const Abc::FloatArraySample& posWeight = Abc::FloatArraySample(),
               const Abc::UcharArraySample& orders = Abc::UcharArraySample(),
               const Abc::FloatArraySample& knots = Abc::FloatArraySample());

        /// The points of all curves, one curve after the other, in object space.
        const Abc::P3fArraySample& getPositions() const { return positions_; }
        void setPositions(const Abc::P3fArraySample& sample) { positions_ = sample; }

        /// Number of points of each curve.
        const Abc::Int32ArraySample& getCurvesNumVertices() const { return num_vertices_; }
        void setCurvesNumVertices(const Abc::Int32ArraySample& sample) { num_vertices_ = sample; }
        size_t getNumCurves() const { return num_vertices_.size(); }

        CurveType getType() const { return type_; }
        void setType(const CurveType& type) { type_ = type; }
        CurvePeriodicity getWrap() const { return wrap_; }
        void setWrap(const CurvePeriodicity& wrap) { wrap_ = wrap; }
        BasisType getBasis() const { return basis_; }
        void setBasis(const BasisType& basis) { basis_ = basis; }

        const OFloatGeomParam::Sample& getWidths() const { return widths_; }
        void setWidths(const OFloatGeomParam::Sample& sample) { widths_ = sample; }
        const OV2fGeomParam::Sample& getUVs() const { return uvs_; }
        void setUVs(const OV2fGeomParam::Sample& sample) { uvs_ = sample; }
        const ON3fGeomParam::Sample& getNormals() const { return normals_; }
        void setNormals(const ON3fGeomParam::Sample& sample) { normals_ = sample; }

        /// One weight per point; absent: 1.
        const Abc::FloatArraySample& getPositionWeights() const { return position_weights_; }
        void setPositionWeights(const Abc::FloatArraySample& sample) { position_weights_ = sample; }

        /// Order of each curve, where they vary.
        const Abc::UcharArraySample& getOrders() const { return orders_; }
        void setOrders(const Abc::UcharArraySample& sample) { orders_ = sample; }

        /// The knots of all curves, one curve after the other.
        const Abc::FloatArraySample& getKnots() const { return knots_; }
        void setKnots(const Abc::FloatArraySample& sample) { knots_ = sample; }

        /// One vector per point, units per second.
        const Abc::V3fArraySample& getVelocities() const { return velocities_; }
        void setVelocities(const Abc::V3fArraySample& sample) { velocities_ = sample; }

        /// In object space; computed from the positions when not given.
        const Abc::Box3d& getSelfBounds() const { return self_bounds_; }
        void setSelfBounds(const Abc::Box3d& sample) { self_bounds_ = sample; }

        void reset() { *this = Sample(); }

        /// No positions, but something else: only that is written.
        bool isPartialSample() const;

    private:
        Abc::P3fArraySample positions_;
        Abc::Int32ArraySample num_vertices_;
        CurveType type_ = kCubic;
        CurvePeriodicity wrap_ = kNonPeriodic;
        BasisType basis_ = kBezierBasis;
        OFloatGeomParam::Sample widths_;
        OV2fGeomParam::Sample uvs_;
        ON3fGeomParam::Sample normals_;
        Abc::FloatArraySample position_weights_;
        Abc::UcharArraySample orders_;
        Abc::FloatArraySample knots_;
        Abc::V3fArraySample velocities_;
        Abc::Box3d self_bounds_;
    };
    typedef Sample sample_type;

    OCurvesSchema() = default;

    /// Creates the schema's compound `name` in `parent`. Arguments: error policy, time sampling, metadata, sparseness.
    OCurvesSchema(AbcA::CompoundPropertyWriterPtr parent, const std::string& name, const Argument& arg0 = Argument(),
                  const Argument& arg1 = Argument(), const Argument& arg2 = Argument(),
                  const Argument& arg3 = Argument());
    OCurvesSchema(OCompoundProperty parent, const std::string& name, const Argument& arg0 = Argument(),
                  const Argument& arg1 = Argument(), const Argument& arg2 = Argument());

    /// The first sample needs positions (an empty array will do), unless the schema is sparse.
    void set(const sample_type& sample);

private:
    struct State;
};

typedef Abc::OSchemaObject<OCurvesSchema> OCurves;
typedef Alembic::Util::shared_ptr<OCurves> OCurvesPtr;

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcGeom
} // namespace Alembic
