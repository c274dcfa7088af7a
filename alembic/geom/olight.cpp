/// Lights, written.
#include <Alembic/AbcGeom/OLight.h>

namespace Alembic {
namespace AbcGeom {
inline namespace ALEMBIC_VERSION_NS {

struct OLightSchema::State : OSchemaState
{
    using OSchemaState::OSchemaState;

    size_t num_samples() const override { return camera_.getNumSamples(); }

    void write(const CameraSample& sample)
    {
        if (!camera_.getPtr()) camera_ = OCameraSchema(compound(), ".camera", time_sampling_index());
        camera_.set(sample);
    }

    void repeat_sample() override
    {
        if (!camera_.getPtr()) ABCA_THROW("Can't set from previous sample before any samples have been written");
        camera_.setFromPrevious();
    }

private:
    void change_time_sampling() override
    {
        OSchemaState::change_time_sampling();
        if (camera_.getPtr()) camera_.setTimeSampling(time_sampling_index());
    }

    OCameraSchema camera_;
};

OLightSchema::OLightSchema(AbcA::CompoundPropertyWriterPtr parent, const std::string& name, const Argument& arg0,
                           const Argument& arg1, const Argument& arg2, const Argument& arg3)
    : OSampledSchema(parent, name, arg0, arg1, arg2, arg3)
{
    start<State>("OLightSchema", arg0, arg1, arg2, arg3);
}

OLightSchema::OLightSchema(OCompoundProperty parent, const std::string& name, const Argument& arg0,
                           const Argument& arg1, const Argument& arg2)
    : OLightSchema(parent.getPtr(), name, Abc::GetErrorHandlerPolicy(parent), arg0, arg1, arg2)
{
}

void OLightSchema::setCameraSample(const CameraSample& sample)
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("OLightSchema::setCameraSample()");
    writable_state<State>().write(sample);
    ALEMBIC_ABC_SAFE_CALL_END();
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcGeom
} // namespace Alembic
