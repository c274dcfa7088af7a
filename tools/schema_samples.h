/// SchemaSamples: the properties of one object's schema, read together at the times of its samples.
#pragma once

#include "findings.h"
#include "stored_view.h"

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <map>
#include <string>
#include <vector>

/// The values of one sample, of one type. They live as long as the object.
template <class T>
struct StoredValues
{
    AbcA::ArraySamplePtr owner; ///< null when the property is absent, has no samples or another type
    const T* data = nullptr;
    std::size_t count = 0; ///< values: elements by extent

    const T* begin() const { return data; }
    const T* end() const { return data + count; }
    explicit operator bool() const { return owner != nullptr; }
};

/// Property names are relative to the schema's compound: "P" for ".geom/P".
class SchemaSamples
{
public:
    /// `object` is the object's full name, `compound` its schema's: ".geom".
    SchemaSamples(std::string object, std::string compound, const std::vector<StoredProperty>& properties,
                  Findings& findings);

    const StoredProperty* find(const std::string& name) const;
    const std::map<std::string, const StoredProperty*>& get_properties() const { return properties_; }

    /// Calls `check()` at the time of each sample of the property that has most of them among `names`, but for those at
    /// which none of them differs from before. False when one of `names` is missing or has no samples, which is then
    /// added to the findings.
    template <class Check>
    bool for_each_sample(std::initializer_list<const char*> names, Check&& check)
    {
        if (!choose_leader(names)) return false;
        for (sample_ = 0; sample_ < leader_->get_sample_count(); ++sample_) {
            time_ = leader_->get_time(sample_);
            if (is_new_sample()) check();
        }
        return true;
    }

    /// The sample of a property that belongs to the present time.
    template <class T>
    StoredValues<T> read(const std::string& name) const
    {
        StoredValues<T> values;
        const StoredProperty* const property = find(name);
        if (!property || property->get_sample_count() == 0) return values;
        if (property->get_header().getDataType().getPod() != Alembic::Util::PODTraitsFromType<T>::pod_enum)
            return values;
        values.owner = property->read(sample_of(*property));
        values.data = static_cast<const T*>(values.owner->getData());
        values.count = values.owner->size() * values.owner->getDataType().getExtent();
        return values;
    }
    /// Its number of elements, without reading; 0 when it is absent or has no samples.
    std::uint64_t count(const std::string& name) const;

    double get_time() const { return time_; }
    /// Adds a finding about the property at the present sample.
    void report(Severity severity, const std::string& name, const std::string& what);

private:
    bool choose_leader(std::initializer_list<const char*> names);
    bool is_new_sample() const;
    std::size_t sample_of(const StoredProperty& property) const;

    const std::string object_, compound_;
    std::map<std::string, const StoredProperty*> properties_;
    Findings& findings_;
    const StoredProperty* leader_ = nullptr;
    std::size_t sample_ = 0;
    double time_ = 0.0;
};
