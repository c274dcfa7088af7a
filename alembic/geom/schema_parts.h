/// The properties that writing schemas consist of. A part exists from the start, comes with the first sample that has
/// data for it, or never comes; the rules for that stand here, once for all schemas.
#pragma once

#include <Alembic/AbcGeom/OGeomParam.h>
#include <Alembic/AbcGeom/OSampledSchema.h>

#include <string>

namespace Alembic {
namespace AbcGeom {
inline namespace ALEMBIC_VERSION_NS {

/// What becomes of a part that a sample does not give.
enum class Absent {
    repeats,   ///< its previous sample, as in every whole sample
    stays_out, ///< nothing is written, as in a partial sample
};

/// One property of a schema.
class SchemaPart
{
public:
    virtual ~SchemaPart() = default;

    /// Adds a sample that repeats the part's previous one; nothing when there is none.
    virtual void repeat() = 0;
    void leave_out(Absent absent)
    {
        if (absent == Absent::repeats) repeat();
    }

    /// Follows the schema to another time sampling.
    virtual void change_time_sampling() = 0;
};

/// What all kinds of parts do. PROPERTY is a writing property or geometry parameter; DERIVED has create_for(value)
/// and write_default().
template <class DERIVED, class PROPERTY>
class SchemaPartOf : public SchemaPart
{
public:
    SchemaPartOf(OSchemaState& owner, std::string name)
        : owner_(owner)
        , name_(std::move(name))
    {
        owner.add_part(*this);
    }

    bool exists() const { return property_.valid(); }
    PROPERTY& property() { return property_; }

    /// Writes a sample. A part that comes late is filled up with samples without elements (scalars: the default), so
    /// that its sample indices agree with the schema's.
    template <class VALUE>
    void set(const VALUE& value)
    {
        if (!exists()) self().create_for(value);
        if (property_.getNumSamples() == 0)
            for (size_t i = starts_one_short_ ? 1 : 0; i < owner_.num_samples(); ++i)
                self().write_default();
        property_.set(value);
        settle_time_sampling();
    }

    /// The part's share of a sample, an array or geometry parameter.
    template <class VALUE>
    void write(const VALUE& value, Absent absent)
    {
        if (value.valid())
            set(value);
        else
            leave_out(absent);
    }

    void repeat() override
    {
        if (!exists() || property_.getNumSamples() == 0) return;
        property_.setFromPrevious();
        settle_time_sampling();
    }

    void change_time_sampling() override
    {
        if (exists() && !holds_at_any_time_) property_.setTimeSampling(owner_.time_sampling_index());
    }

    /// For some parts of sparse schemas: a single sample holds at any time and is stored in time sampling 0; from the
    /// second sample on the part has the schema's.
    void let_one_sample_hold_at_any_time() { holds_at_any_time_ = owner_.sparse(); }

    /// Intended for creases, corners and holes: coming late they are filled up one sample short, so that their indices
    /// lag by one. Archives of this format are like that, and an archive must not depend on who wrote it.
    void start_one_short() { starts_one_short_ = true; }

protected:
    uint32_t first_time_sampling() const { return holds_at_any_time_ ? 0 : owner_.time_sampling_index(); }

    OSchemaState& owner_;
    std::string name_;
    PROPERTY property_;

private:
    DERIVED& self() { return static_cast<DERIVED&>(*this); }

    void settle_time_sampling()
    {
        if (!holds_at_any_time_ || property_.getNumSamples() < 2) return;
        property_.setTimeSampling(owner_.time_sampling_index());
        holds_at_any_time_ = false;
    }

    bool holds_at_any_time_ = false;
    bool starts_one_short_ = false;
};

/// An array or scalar property.
template <class DERIVED, class PROPERTY>
class PropertyPart : public SchemaPartOf<DERIVED, PROPERTY>
{
public:
    PropertyPart(OSchemaState& owner, std::string name, AbcA::MetaData metadata = AbcA::MetaData())
        : SchemaPartOf<DERIVED, PROPERTY>(owner, std::move(name))
        , metadata_(std::move(metadata))
    {
    }

    /// Creates the property now, without samples.
    void create()
    {
        this->property_ = PROPERTY(this->owner_.compound(), this->name_, metadata_, this->first_time_sampling());
    }

    template <class VALUE>
    void create_for(const VALUE&)
    {
        create();
    }

private:
    AbcA::MetaData metadata_;
};

template <class TRAITS>
class ArrayPart : public PropertyPart<ArrayPart<TRAITS>, Abc::OTypedArrayProperty<TRAITS>>
{
public:
    using PropertyPart<ArrayPart, Abc::OTypedArrayProperty<TRAITS>>::PropertyPart;

    /// The same, with a sample without elements where the first one is not given.
    void write_or_start_empty(const Abc::TypedArraySample<TRAITS>& sample, Absent absent)
    {
        if (!sample.valid() && absent == Absent::repeats && (!this->exists() || this->property_.getNumSamples() == 0))
            this->set(Abc::TypedArraySample<TRAITS>::emptySample());
        else
            this->write(sample, absent);
    }

    void write_default() { this->property_.set(Abc::TypedArraySample<TRAITS>::emptySample()); }
};

template <class TRAITS>
class ScalarPart : public PropertyPart<ScalarPart<TRAITS>, Abc::OTypedScalarProperty<TRAITS>>
{
public:
    using value_type = typename TRAITS::value_type;

    ScalarPart(OSchemaState& owner, std::string name, value_type default_value = TRAITS::defaultValue())
        : PropertyPart<ScalarPart, Abc::OTypedScalarProperty<TRAITS>>(owner, std::move(name))
        , default_value_(std::move(default_value))
    {
    }

    /// The part's share of a sample; `not_set` is the value that says that it is not given.
    void write(const value_type& value, const value_type& not_set, Absent absent)
    {
        if (value != not_set)
            this->set(value);
        else
            this->leave_out(absent);
    }

    void write_default() { this->property_.set(default_value_); }

private:
    value_type default_value_;
};

/// A geometry parameter. Its first sample decides whether it is indexed, and its scope.
template <class TRAITS>
class ParamPart : public SchemaPartOf<ParamPart<TRAITS>, OTypedGeomParam<TRAITS>>
{
public:
    using Sample = typename OTypedGeomParam<TRAITS>::Sample;

    ParamPart(OSchemaState& owner, std::string name)
        : SchemaPartOf<ParamPart, OTypedGeomParam<TRAITS>>(owner, std::move(name))
    {
        this->let_one_sample_hold_at_any_time();
    }

    /// Name the data had in its source. No effect on a parameter that exists.
    void set_source_name(const std::string& name) { source_name_ = name; }

    void create_for(const Sample& sample)
    {
        AbcA::MetaData metadata;
        if (!source_name_.empty()) Abc::SetSourceName(metadata, source_name_);
        this->property_ = OTypedGeomParam<TRAITS>(this->owner_.compound(), this->name_, sample.getIndices().valid(),
                                                  sample.getScope(), 1, metadata, this->first_time_sampling());
    }

    void write_default()
    {
        this->property_.set(Sample(Abc::TypedArraySample<TRAITS>::emptySample(), Abc::UInt32ArraySample::emptySample(),
                                   this->property_.getScope()));
    }

private:
    std::string source_name_;
};

/// Metadata of positions and ids: `geoScope`.
AbcA::MetaData scope_metadata(GeometryScope scope);

/// `.selfBnds`, the bounds of the object itself.
class SelfBoundsPart : public ScalarPart<Abc::Box3dTPTraits>
{
public:
    explicit SelfBoundsPart(OSchemaState& owner)
        : ScalarPart<Abc::Box3dTPTraits>(owner, ".selfBnds", Abc::Box3d())
    {
    }

    /// Bounds of a sample: as given, computed from the positions, or as before. A partial sample with neither bounds
    /// nor positions leaves them out.
    void write(const Abc::Box3d& given, const Abc::P3fArraySample& positions, Absent absent);
};

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcGeom
} // namespace Alembic
