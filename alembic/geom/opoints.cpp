/// Points, written.
#include <Alembic/AbcGeom/OPoints.h>

#include "geom/schema_parts.h"

namespace Alembic {
namespace AbcGeom {
inline namespace ALEMBIC_VERSION_NS {

struct OPointsSchema::State : OSchemaState
{
    SelfBoundsPart self_bounds{*this};
    ArrayPart<Abc::P3fTPTraits> positions{*this, "P", scope_metadata(kVaryingScope)};
    ArrayPart<Abc::Uint64TPTraits> ids{*this, ".pointIds", scope_metadata(kVaryingScope)};
    ArrayPart<Abc::V3fTPTraits> velocities{*this, ".velocities"};
    ParamPart<Abc::Float32TPTraits> widths{*this, ".widths"};

    State(AbcA::CompoundPropertyWriterPtr compound, uint32_t time_sampling_index, bool sparse)
        : OSchemaState(std::move(compound), time_sampling_index, sparse)
    {
        velocities.let_one_sample_hold_at_any_time();
        if (sparse) return;
        self_bounds.create();
        positions.create();
        ids.create();
    }

    void check(const Sample& sample) const
    {
        if (!sparse() && num_samples() == 0 && !sample.getPositions().valid())
            ABCA_THROW("Can't set from previous sample before any samples have been written: sample 0 has no "
                       "positions");
    }

    void write(const Sample& sample, bool is_partial)
    {
        check(sample);
        const Absent absent = is_partial ? Absent::stays_out : Absent::repeats;
        self_bounds.write(sample.getSelfBounds(), sample.getPositions(), absent);
        positions.write(sample.getPositions(), Absent::repeats); // Intended: also in a partial sample.
        ids.write_or_start_empty(sample.getIds(), absent);
        velocities.write(sample.getVelocities(), absent);
        widths.write(sample.getWidths(), absent);
        count_sample();
    }
};

OPointsSchema::OPointsSchema(AbcA::CompoundPropertyWriterPtr parent, const std::string& name, const Argument& arg0,
                             const Argument& arg1, const Argument& arg2, const Argument& arg3)
    : OGeomBaseSchema(parent, name, arg0, arg1, arg2, arg3)
{
    start<State>("OPointsSchema", arg0, arg1, arg2, arg3);
}

OPointsSchema::OPointsSchema(OCompoundProperty parent, const std::string& name, const Argument& arg0,
                             const Argument& arg1, const Argument& arg2)
    : OPointsSchema(parent.getPtr(), name, Abc::GetErrorHandlerPolicy(parent), arg0, arg1, arg2)
{
}

void OPointsSchema::set(const Sample& sample)
{
    write_sample<State>(sample);
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcGeom
} // namespace Alembic
