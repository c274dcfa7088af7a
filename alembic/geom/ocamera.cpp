/// Cameras, written.
#include <Alembic/AbcGeom/OCamera.h>

#include "geom/long_scalar.h"

#include <string>
#include <vector>

namespace Alembic {
namespace AbcGeom {
inline namespace ALEMBIC_VERSION_NS {

namespace {

constexpr size_t core_count = 16;

} // namespace

struct OCameraSchema::State : OSchemaState
{
    State(AbcA::CompoundPropertyWriterPtr compound_writer, uint32_t time_sampling_index, bool sparse)
        : OSchemaState(std::move(compound_writer), time_sampling_index, sparse)
    {
        const AbcA::DataType core_type(Alembic::Util::kFloat64POD, core_count);
        core_ = Abc::OScalarProperty(compound(), ".core", core_type, time_sampling_index);
    }

    void write(const CameraSample& sample)
    {
        if (num_samples() == 0)
            create_film_back(sample);
        else
            check_film_back(sample);

        double core[core_count];
        for (size_t i = 0; i < core_count; ++i)
            core[i] = sample.getCoreValue(i);
        std::vector<double> channels;
        for (size_t i = 0; i < sample.getNumOps(); ++i)
            for (size_t channel = 0; channel < sample[i].getNumChannels(); ++channel)
                channels.push_back(sample[i].getChannelValue(channel));
        core_.set(core);
        channels_.set(channels);
        count_sample();
    }

    void repeat_sample() override
    {
        OSchemaState::repeat_sample();
        core_.setFromPrevious();
        channels_.repeat();
    }

private:
    // Film back operations are written once. Intended: their channels, though they may change, are in time sampling 0,
    // where readers take the sample number from the core values' sampling.
    void create_film_back(const CameraSample& sample)
    {
        std::vector<std::string> names;
        for (size_t i = 0; i < sample.getNumOps(); ++i) {
            op_types_.push_back(sample[i].getType());
            names.push_back(sample[i].getTypeAndHint());
        }
        ops_.create(compound(), ".filmBackOps", names.size(), 0);
        ops_.set(names);
        channels_.create(compound(), ".filmBackChannels", sample.getNumOpChannels(), 0);
    }

    void check_film_back(const CameraSample& sample) const
    {
        bool is_same = sample.getNumOps() == op_types_.size();
        for (size_t i = 0; is_same && i < op_types_.size(); ++i)
            is_same = sample[i].getType() == op_types_[i];
        if (!is_same)
            ABCA_THROW("Invalid sample topology! The film back operations differ from those of the first sample");
    }

    void change_time_sampling() override
    {
        OSchemaState::change_time_sampling();
        core_.setTimeSampling(time_sampling_index());
    }

    Abc::OScalarProperty core_;
    LongScalar<Abc::StringTPTraits> ops_;
    LongScalar<Abc::Float64TPTraits> channels_;
    std::vector<FilmBackXformOperationType> op_types_;
};

OCameraSchema::OCameraSchema(AbcA::CompoundPropertyWriterPtr parent, const std::string& name, const Argument& arg0,
                             const Argument& arg1, const Argument& arg2, const Argument& arg3)
    : OSampledSchema(parent, name, arg0, arg1, arg2, arg3)
{
    start<State>("OCameraSchema", arg0, arg1, arg2, arg3);
}

OCameraSchema::OCameraSchema(OCompoundProperty parent, const std::string& name, const Argument& arg0,
                             const Argument& arg1, const Argument& arg2)
    : OCameraSchema(parent.getPtr(), name, Abc::GetErrorHandlerPolicy(parent), arg0, arg1, arg2)
{
}

void OCameraSchema::set(const CameraSample& sample)
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("OCameraSchema::set()");
    writable_state<State>().write(sample);
    ALEMBIC_ABC_SAFE_CALL_END();
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcGeom
} // namespace Alembic
