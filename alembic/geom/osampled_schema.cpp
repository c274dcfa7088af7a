/// The state that all copies of a writing schema share.
#include <Alembic/AbcGeom/OSampledSchema.h>

#include "geom/schema_parts.h"

namespace Alembic {
namespace AbcGeom {
inline namespace ALEMBIC_VERSION_NS {

OSchemaState::OSchemaState(AbcA::CompoundPropertyWriterPtr compound, uint32_t time_sampling_index, bool sparse)
    : compound_(std::move(compound))
    , time_sampling_index_(time_sampling_index)
    , sparse_(sparse)
{
}

OSchemaState::~OSchemaState() = default;

AbcA::TimeSamplingPtr OSchemaState::time_sampling() const
{
    return compound_->getObject()->getArchive()->getTimeSampling(time_sampling_index_);
}

void OSchemaState::repeat_sample()
{
    if (num_samples() == 0) ABCA_THROW("Can't set from previous sample before any samples have been written");
    for (SchemaPart* part : parts_)
        part->repeat();
    count_sample();
}

void OSchemaState::set_time_sampling(uint32_t index)
{
    compound_->getObject()->getArchive()->getTimeSampling(index); // throws when there is none
    time_sampling_index_ = index;
    change_time_sampling();
}

void OSchemaState::set_time_sampling(const AbcA::TimeSampling& time)
{
    set_time_sampling(compound_->getObject()->getArchive()->addTimeSampling(time));
}

void OSchemaState::change_time_sampling()
{
    for (SchemaPart* part : parts_)
        part->change_time_sampling();
    if (child_bounds_.getPtr()) child_bounds_.setTimeSampling(time_sampling_index_);
}

OCompoundProperty OSchemaState::arb_geom_params()
{
    if (!arb_geom_params_.getPtr()) arb_geom_params_ = OCompoundProperty(compound_, ".arbGeomParams");
    return arb_geom_params_;
}

OCompoundProperty OSchemaState::user_properties()
{
    if (!user_properties_.getPtr()) user_properties_ = OCompoundProperty(compound_, ".userProperties");
    return user_properties_;
}

OBox3dProperty OSchemaState::child_bounds()
{
    if (!child_bounds_.getPtr()) child_bounds_ = OBox3dProperty(compound_, ".childBnds", time_sampling_index_);
    return child_bounds_;
}

uint32_t time_sampling_index_of(const AbcA::CompoundPropertyWriterPtr& compound, const Argument& arg0,
                                const Argument& arg1, const Argument& arg2, const Argument& arg3)
{
    if (const AbcA::TimeSamplingPtr time = Abc::GetTimeSampling(arg0, arg1, arg2, arg3))
        return compound->getObject()->getArchive()->addTimeSampling(*time);
    return Abc::GetTimeSamplingIndex(arg0, arg1, arg2, arg3);
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcGeom
} // namespace Alembic
