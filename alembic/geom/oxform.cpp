/// Transforms, written.
#include <Alembic/AbcGeom/OXform.h>

#include "geom/long_scalar.h"

#include <cmath>
#include <iostream>
#include <vector>

namespace Alembic {
namespace AbcGeom {
inline namespace ALEMBIC_VERSION_NS {

namespace {

constexpr size_t max_operations = 255; // a file stores their number in one byte

bool differ(double a, double b)
{
    return !(std::abs(a - b) <= kXFORM_DELTA_TOLERANCE); // what is not a number differs from everything
}

} // namespace

struct OXformSchema::State : OSchemaState
{
    using OSchemaState::OSchemaState;

    // A destructor cannot throw; the reason goes where the archive's log can no longer take it.
    ~State() override
    {
        try {
            write_animated_channels();
        } catch (const std::exception& error) {
            std::cerr << "OXformSchema: the list of animated channels was not written: " << error.what() << "\n";
        }
    }

    void write(const XformSample& sample)
    {
        if (num_samples() == 0)
            create_properties(sample);
        else if (!sample.isTopologyEqual(first_sample_))
            ABCA_THROW("Invalid sample topology!");

        std::vector<double> values;
        values.reserve(sample.getNumOpChannels());
        bool is_identity = true;
        for (size_t i = 0; i < sample.getNumOps(); ++i) {
            const XformOp& op = sample[i];
            for (size_t channel = 0; channel < op.getNumChannels(); ++channel) {
                values.push_back(op.getChannelValue(channel));
                is_identity = is_identity && !differ(values.back(), op.getDefaultChannelValue(channel));
            }
        }
        inherits_.set(sample.getInheritsXforms());
        if (ops_.getPtr()) ops_.set(encoded_ops_.data());
        values_.set(values);
        if (!is_identity && !is_not_constant_identity_.getPtr()) {
            is_not_constant_identity_ = OBoolProperty(compound(), "isNotConstantIdentity");
            is_not_constant_identity_.set(true);
        }
        note_animated_channels(values);
        count_sample();
    }

    void repeat_sample() override
    {
        OSchemaState::repeat_sample();
        inherits_.setFromPrevious();
        if (ops_.getPtr()) ops_.setFromPrevious();
        values_.repeat();
    }

private:
    void create_properties(const XformSample& sample)
    {
        if (sample.getNumOps() > max_operations)
            ABCA_THROW("A transform has " << sample.getNumOps() << " operations; a file holds " << max_operations
                                          << " at most. Combine some of them in a matrix");
        // Intended: this one count is refused, as it is by every writer of this format. One more makes an array.
        if (sample.getNumOpChannels() == LongScalar<Abc::Float64TPTraits>::longest_scalar + 1)
            ABCA_THROW("createScalarProperty, illegal DataType provided.\nA transform of exactly "
                       << sample.getNumOpChannels() << " channels cannot be stored: add or leave out an operation");
        inherits_ = OBoolProperty(compound(), ".inherits", time_sampling_index());
        first_sample_ = sample;
        for (size_t i = 0; i < sample.getNumOps(); ++i)
            encoded_ops_.push_back(sample[i].getOpEncoding());
        if (encoded_ops_.empty()) return;
        // The operations never change: they are in time sampling 0.
        const AbcA::DataType ops_type(Alembic::Util::kUint8POD, static_cast<uint8_t>(encoded_ops_.size()));
        ops_ = Abc::OScalarProperty(compound(), ".ops", ops_type);
        values_.create(compound(), ".vals", sample.getNumOpChannels(), time_sampling_index());
    }

    void note_animated_channels(const std::vector<double>& values)
    {
        if (num_samples() == 0) {
            first_values_ = values;
            is_animated_.assign(values.size(), false);
        }
        for (size_t i = 0; i < values.size(); ++i)
            if (differ(values[i], first_values_[i])) is_animated_[i] = true;
    }

    void write_animated_channels()
    {
        std::vector<uint32_t> channels;
        for (size_t i = 0; i < is_animated_.size(); ++i)
            if (is_animated_[i]) channels.push_back(static_cast<uint32_t>(i));
        if (!channels.empty())
            OUInt32ArrayProperty(compound(), ".animChans", time_sampling_index()).set(UInt32ArraySample(channels));
    }

    void change_time_sampling() override
    {
        OSchemaState::change_time_sampling();
        if (inherits_.getPtr()) inherits_.setTimeSampling(time_sampling_index());
        values_.set_time_sampling(time_sampling_index());
    }

    OBoolProperty inherits_;
    Abc::OScalarProperty ops_;
    LongScalar<Abc::Float64TPTraits> values_;
    OBoolProperty is_not_constant_identity_;

    XformSample first_sample_;
    std::vector<uint8_t> encoded_ops_;
    std::vector<double> first_values_;
    std::vector<bool> is_animated_;
};

OXformSchema::OXformSchema(AbcA::CompoundPropertyWriterPtr parent, const std::string& name, const Argument& arg0,
                           const Argument& arg1, const Argument& arg2, const Argument& arg3)
    : OSampledSchema(parent, name, arg0, arg1, arg2, arg3)
{
    start<State>("OXformSchema", arg0, arg1, arg2, arg3);
}

OXformSchema::OXformSchema(OCompoundProperty parent, const std::string& name, const Argument& arg0,
                           const Argument& arg1, const Argument& arg2)
    : OXformSchema(parent.getPtr(), name, Abc::GetErrorHandlerPolicy(parent), arg0, arg1, arg2)
{
}

void OXformSchema::set(XformSample& sample)
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("OXformSchema::set()");
    writable_state<State>().write(sample);
    sample.freezeTopology();
    ALEMBIC_ABC_SAFE_CALL_END();
}

void OXformSchema::setFromPrevious()
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("OXformSchema::setFromPrevious()");
    writable_state<State>().repeat_sample();
    ALEMBIC_ABC_SAFE_CALL_END();
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcGeom
} // namespace Alembic
