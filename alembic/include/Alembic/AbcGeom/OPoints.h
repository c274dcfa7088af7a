/// Points, written.
#pragma once

#include <Alembic/AbcGeom/OGeomBase.h>
#include <Alembic/AbcGeom/OGeomParam.h>

namespace Alembic {
namespace AbcGeom {
inline namespace ALEMBIC_VERSION_NS {

class ALEMBIC_EXPORT OPointsSchema : public OGeomBaseSchema<PointsSchemaInfo>
{
public:
    typedef OPointsSchema this_type;

    /// Views of the caller's arrays, which must live until set() returns. In samples after the first, what is not given
    /// repeats the previous sample.
    class Sample
    {
    public:
        Sample() = default;
        Sample(const Abc::P3fArraySample& pos, // NOLINT: implicit
               const Abc::V3fArraySample& velocities = Abc::V3fArraySample(),
               const OFloatGeomParam::Sample& widths = OFloatGeomParam::Sample())
            : positions_(pos)
            , velocities_(velocities)
            , widths_(widths)
        {
        }
        Sample(const Abc::P3fArraySample& pos, const Abc::UInt64ArraySample& id,
               const Abc::V3fArraySample& velocities = Abc::V3fArraySample(),
               const OFloatGeomParam::Sample& widths = OFloatGeomParam::Sample())
            : positions_(pos)
            , ids_(id)
            , velocities_(velocities)
            , widths_(widths)
        {
        }

        /// In object space.
        const Abc::P3fArraySample& getPositions() const { return positions_; }
        void setPositions(const Abc::P3fArraySample& sample) { positions_ = sample; }

        /// What identifies each point from sample to sample.
        const Abc::UInt64ArraySample& getIds() const { return ids_; }
        void setIds(const Abc::UInt64ArraySample& sample) { ids_ = sample; }

        /// One vector per point, units per second.
        const Abc::V3fArraySample& getVelocities() const { return velocities_; }
        void setVelocities(const Abc::V3fArraySample& sample) { velocities_ = sample; }
        const OFloatGeomParam::Sample& getWidths() const { return widths_; }
        void setWidths(const OFloatGeomParam::Sample& sample) { widths_ = sample; }

        /// In object space; computed from the positions when not given.
        const Abc::Box3d& getSelfBounds() const { return self_bounds_; }
        void setSelfBounds(const Abc::Box3d& sample) { self_bounds_ = sample; }

        void reset() { *this = Sample(); }

        /// No positions, but something else: only that is written.
        bool isPartialSample() const
        {
            return !positions_.valid() && (ids_.valid() || velocities_.valid() || widths_.valid());
        }

    private:
        Abc::P3fArraySample positions_;
        Abc::UInt64ArraySample ids_;
        Abc::V3fArraySample velocities_;
        OFloatGeomParam::Sample widths_;
        Abc::Box3d self_bounds_;
    };

    OPointsSchema() = default;

    /// Creates the schema's compound `name` in `parent`. Arguments: error policy, time sampling, metadata, sparseness.
    OPointsSchema(AbcA::CompoundPropertyWriterPtr parent, const std::string& name, const Argument& arg0 = Argument(),
                  const Argument& arg1 = Argument(), const Argument& arg2 = Argument(),
                  const Argument& arg3 = Argument());
    OPointsSchema(OCompoundProperty parent, const std::string& name, const Argument& arg0 = Argument(),
                  const Argument& arg1 = Argument(), const Argument& arg2 = Argument());

    /// The first sample needs positions (an empty array will do), unless the schema is sparse; without ids it gets
    /// empty ids.
    void set(const Sample& sample);

private:
    struct State;
};

typedef Abc::OSchemaObject<OPointsSchema> OPoints;
typedef Alembic::Util::shared_ptr<OPoints> OPointsPtr;

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcGeom
} // namespace Alembic
