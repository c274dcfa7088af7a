/// What all writing geometry schemas share: samples set one after the other, one time sampling for all properties, and
/// the optional properties that exist from the first time somebody asks for them.
#pragma once

#include <Alembic/Abc/All.h>
#include <Alembic/AbcGeom/Foundation.h>
#include <Alembic/AbcGeom/SchemaInfoDeclarations.h>

#include <memory>
#include <string>
#include <vector>

namespace Alembic {
namespace AbcGeom {
inline namespace ALEMBIC_VERSION_NS {

class SchemaPart;

/// What a writing schema has written and is going to write. All copies of one schema share it, so a property that one
/// copy creates is known to the others, and what closes a schema happens when the last copy goes. Each schema derives
/// its own, with a part for each of its properties.
class ALEMBIC_EXPORT OSchemaState : private Alembic::Util::noncopyable
{
public:
    /// For the schema's `compound`. `time_sampling_index` is one of the archive's; `sparse` schemas write only what
    /// they are given.
    OSchemaState(AbcA::CompoundPropertyWriterPtr compound, uint32_t time_sampling_index, bool sparse);
    virtual ~OSchemaState();

    const AbcA::CompoundPropertyWriterPtr& compound() const { return compound_; }
    uint32_t time_sampling_index() const { return time_sampling_index_; }
    bool sparse() const { return sparse_; }
    AbcA::TimeSamplingPtr time_sampling() const;

    /// Samples set so far, repeated ones included: the index of the sample that is set next.
    virtual size_t num_samples() const { return num_samples_; }

    /// Adds a sample that repeats the previous one in every property. Throws before the first sample.
    virtual void repeat_sample();

    /// Makes every property of the schema refer to another time sampling of the archive. Throws, with nothing changed,
    /// when the archive has no such sampling.
    void set_time_sampling(uint32_t index);
    void set_time_sampling(const AbcA::TimeSampling& time);

    /// Created on first call.
    OCompoundProperty arb_geom_params();
    OCompoundProperty user_properties();
    OBox3dProperty child_bounds();

    /// Called by each part when it is made: parts are repeated, and change their time sampling, in this order.
    void add_part(SchemaPart& part) { parts_.push_back(&part); }

protected:
    void count_sample() { ++num_samples_; }

    /// The schema's properties beside its parts; called with the new index already in time_sampling_index().
    virtual void change_time_sampling();

private:
    AbcA::CompoundPropertyWriterPtr compound_;
    uint32_t time_sampling_index_;
    bool sparse_;
    size_t num_samples_ = 0;
    std::vector<SchemaPart*> parts_;
    OCompoundProperty arb_geom_params_;
    OCompoundProperty user_properties_;
    OBox3dProperty child_bounds_;
};

/// Index of the time sampling that a schema's arguments ask for; a sampling given as such is added to the archive.
ALEMBIC_EXPORT uint32_t time_sampling_index_of(const AbcA::CompoundPropertyWriterPtr& compound, const Argument& arg0,
                                               const Argument& arg1, const Argument& arg2, const Argument& arg3);

/// Base of the writing geometry schemas. Errors of all members go to the schema's error handler.
template <class INFO>
class ALEMBIC_EXPORT OSampledSchema : public Abc::OSchema<INFO>
{
public:
    typedef OSampledSchema<INFO> this_type;

    OSampledSchema() = default;
    OSampledSchema(AbcA::CompoundPropertyWriterPtr parent, const std::string& name, const Argument& arg0 = Argument(),
                   const Argument& arg1 = Argument(), const Argument& arg2 = Argument(),
                   const Argument& arg3 = Argument())
        : Abc::OSchema<INFO>(parent, name, arg0, arg1, arg2, arg3)
    {
    }

    /// Samples set so far, repeated ones included; 0 for an invalid schema.
    size_t getNumSamples() const { return state_ ? state_->num_samples() : 0; }

    /// The schema's time sampling; null for an invalid schema.
    AbcA::TimeSamplingPtr getTimeSampling() const
    {
        const std::string where = context("getTimeSampling()");
        ALEMBIC_ABC_SAFE_CALL_BEGIN(where.c_str());
        if (state_) return state_->time_sampling();
        ALEMBIC_ABC_SAFE_CALL_END();
        return AbcA::TimeSamplingPtr();
    }

    /// Adds a sample that repeats the previous one in every property. An error before the first sample.
    void setFromPrevious()
    {
        const std::string where = context("setFromPrevious");
        ALEMBIC_ABC_SAFE_CALL_BEGIN(where.c_str());
        writable_state().repeat_sample();
        ALEMBIC_ABC_SAFE_CALL_END();
    }

    /// Time sampling of all properties of the schema, whenever they are or were created: an index of the archive's, or
    /// a sampling that is added to the archive (null: nothing changes).
    void setTimeSampling(uint32_t index)
    {
        const std::string where = context("setTimeSampling( uint32_t )");
        ALEMBIC_ABC_SAFE_CALL_BEGIN(where.c_str());
        writable_state().set_time_sampling(index);
        ALEMBIC_ABC_SAFE_CALL_END();
    }
    void setTimeSampling(AbcA::TimeSamplingPtr time)
    {
        const std::string where = context("setTimeSampling( TimeSamplingPtr )");
        ALEMBIC_ABC_SAFE_CALL_BEGIN(where.c_str());
        if (time) writable_state().set_time_sampling(*time);
        ALEMBIC_ABC_SAFE_CALL_END();
    }

    /// Compound of the user's geometry parameters, `.arbGeomParams`; created on first call.
    OCompoundProperty getArbGeomParams()
    {
        const std::string where = context("getArbGeomParams()");
        ALEMBIC_ABC_SAFE_CALL_BEGIN(where.c_str());
        return writable_state().arb_geom_params();
        ALEMBIC_ABC_SAFE_CALL_END();
        return OCompoundProperty();
    }

    /// Compound of the user's properties of any kind, `.userProperties`; created on first call.
    OCompoundProperty getUserProperties()
    {
        const std::string where = context("getUserProperties()");
        ALEMBIC_ABC_SAFE_CALL_BEGIN(where.c_str());
        return writable_state().user_properties();
        ALEMBIC_ABC_SAFE_CALL_END();
        return OCompoundProperty();
    }

    /// Bounds of the object's children, `.childBnds`; created on first call, with the schema's time sampling. Its
    /// samples are the caller's business.
    OBox3dProperty getChildBoundsProperty()
    {
        const std::string where = context("getChildBoundsProperty()");
        ALEMBIC_ABC_SAFE_CALL_BEGIN(where.c_str());
        return writable_state().child_bounds();
        ALEMBIC_ABC_SAFE_CALL_END();
        return OBox3dProperty();
    }

    virtual void reset()
    {
        state_.reset();
        Abc::OSchema<INFO>::reset();
    }
    virtual bool valid() const { return Abc::OSchema<INFO>::valid() && state_ != nullptr; }
    ALEMBIC_OVERRIDE_OPERATOR_BOOL(this_type::valid());

protected:
    /// Ends a constructor: makes the state of the schema called `schema_name`, with the arguments of the constructor.
    /// Reports to the error handler as `NAME::init()`, and leaves the schema invalid, when that fails.
    template <class STATE>
    void start(const char* schema_name, const Argument& arg0, const Argument& arg1, const Argument& arg2,
               const Argument& arg3)
    {
        schema_name_ = schema_name;
        const AbcA::CompoundPropertyWriterPtr compound = this->getPtr();
        if (!compound) return; // reported by the base class
        const std::string where = context("init()");
        ALEMBIC_ABC_SAFE_CALL_BEGIN(where.c_str());
        state_ = std::make_shared<STATE>(compound, time_sampling_index_of(compound, arg0, arg1, arg2, arg3),
                                         Abc::IsSparse(arg0, arg1, arg2, arg3));
        ALEMBIC_ABC_SAFE_CALL_END_RESET();
    }

    /// The state as the schema's own class of state; throws for an invalid schema.
    template <class STATE = OSchemaState>
    STATE& writable_state() const
    {
        if (!state_) ABCA_THROW("The schema is not valid: nothing can be written to it");
        return static_cast<STATE&>(*state_);
    }

    /// The member set() of a schema whose samples may be partial: calls `write(sample, is_partial)` of its state.
    template <class STATE, class SAMPLE>
    void write_sample(const SAMPLE& sample)
    {
        const std::string where = context("set()");
        ALEMBIC_ABC_SAFE_CALL_BEGIN(where.c_str());
        STATE& state = writable_state<STATE>();
        if (state.sparse() || sample.isPartialSample())
            write_selected<STATE>(sample);
        else
            state.write(sample, false);
        ALEMBIC_ABC_SAFE_CALL_END();
    }

    /// Context of an error in a member: "OPolyMeshSchema::set()".
    std::string context(const char* member) const { return std::string(schema_name_) + "::" + member; }

private:
    template <class STATE, class SAMPLE>
    void write_selected(const SAMPLE& sample)
    {
        const std::string where = context("selectiveSet()");
        ALEMBIC_ABC_SAFE_CALL_BEGIN(where.c_str());
        writable_state<STATE>().write(sample, true);
        ALEMBIC_ABC_SAFE_CALL_END();
    }

    const char* schema_name_ = "OSchema";
    std::shared_ptr<OSchemaState> state_;
};

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcGeom
} // namespace Alembic
