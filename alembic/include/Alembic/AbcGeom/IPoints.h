/// Points, read.
#pragma once

#include <Alembic/AbcGeom/Foundation.h>
#include <Alembic/AbcGeom/IGeomBase.h>
#include <Alembic/AbcGeom/IGeomParam.h>
#include <Alembic/AbcGeom/SchemaInfoDeclarations.h>

#include <algorithm>
#include <string>

namespace Alembic {
namespace AbcGeom {
inline namespace ALEMBIC_VERSION_NS {

class ALEMBIC_EXPORT IPointsSchema : public IGeomBaseSchema<PointsSchemaInfo>
{
public:
    typedef IPointsSchema this_type;

    /// What is absent is null. Nothing checks that the parts fit each other.
    class ALEMBIC_EXPORT Sample
    {
    public:
        typedef Sample this_type;

        P3fArraySamplePtr getPositions() const { return positions_; }
        /// One a point; points that were written without have no elements here.
        UInt64ArraySamplePtr getIds() const { return ids_; }
        /// Units per second, one a point.
        V3fArraySamplePtr getVelocities() const { return velocities_; }
        /// In the space of the object; the empty box when absent.
        Box3d getSelfBounds() const { return self_bounds_; }

        bool valid() const { return positions_ && ids_; }
        void reset() { *this = Sample(); }
        ALEMBIC_OPERATOR_BOOL(valid());

    private:
        friend class IPointsSchema;
        P3fArraySamplePtr positions_;
        UInt64ArraySamplePtr ids_;
        V3fArraySamplePtr velocities_;
        Box3d self_bounds_;
    };

    /// Invalid.
    IPointsSchema() = default;

    /// The compound `name` of `parent`, or `property` itself. Arguments: policy (else the parent's), matching.
    IPointsSchema(const ICompoundProperty& parent, const std::string& name, const Argument& arg0 = Argument(),
                  const Argument& arg1 = Argument())
        : IGeomBaseSchema<PointsSchemaInfo>(parent, name, arg0, arg1)
    {
        init(GetSchemaInterpMatching(arg0, arg1));
    }
    IPointsSchema(const ICompoundProperty& property, const Argument& arg0 = Argument(),
                  const Argument& arg1 = Argument())
        : IGeomBaseSchema<PointsSchemaInfo>(property, arg0, arg1)
    {
        init(GetSchemaInterpMatching(arg0, arg1));
    }

    /// The greater count of positions and ids.
    size_t getNumSamples() const { return std::max(positions_.getNumSamples(), ids_.getNumSamples()); }
    /// Positions and ids are constant.
    bool isConstant() const { return positions_.isConstant() && ids_.isConstant(); }
    /// Of the positions.
    AbcA::TimeSamplingPtr getTimeSampling() const { return positions_.getTimeSampling(); }

    /// Each property at the index that the selector gives with its own time sampling and count. What the points have
    /// not stays as it is in `sample`.
    void get(Sample& sample, const ISampleSelector& selector = ISampleSelector()) const;
    Sample getValue(const ISampleSelector& selector = ISampleSelector()) const
    {
        Sample sample;
        get(sample, selector);
        return sample;
    }

    IP3fArrayProperty getPositionsProperty() const { return handed_out(positions_, getErrorHandlerPolicy()); }
    IUInt64ArrayProperty getIdsProperty() const { return handed_out(ids_, getErrorHandlerPolicy()); }
    /// Invalid when absent.
    IV3fArrayProperty getVelocitiesProperty() const { return handed_out(velocities_, getErrorHandlerPolicy()); }
    /// Invalid when absent or of another kind.
    IFloatGeomParam getWidthsParam() const;

    /// Clears everything but the policy.
    void reset() override;
    bool valid() const override
    {
        return IGeomBaseSchema<PointsSchemaInfo>::valid() && positions_.valid() && ids_.valid();
    }
    ALEMBIC_OVERRIDE_OPERATOR_BOOL(IPointsSchema::valid());

private:
    void init(SchemaInterpMatching matching);

    IP3fArrayProperty positions_;
    IUInt64ArrayProperty ids_;
    IV3fArrayProperty velocities_;
    SchemaInterpMatching matching_ = kNoMatching;
};

typedef Abc::ISchemaObject<IPointsSchema> IPoints;
typedef Alembic::Util::shared_ptr<IPoints> IPointsPtr;

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcGeom
} // namespace Alembic
