#include "schema_samples.h"

#include <algorithm>

SchemaSamples::SchemaSamples(std::string object, std::string compound, const std::vector<StoredProperty>& properties,
                             Findings& findings)
    : object_(std::move(object))
    , compound_(std::move(compound) + "/")
    , findings_(findings)
{
    for (const StoredProperty& property : properties)
        if (property.get_path().compare(0, compound_.size(), compound_) == 0)
            properties_.emplace(property.get_path().substr(compound_.size()), &property);
}

const StoredProperty* SchemaSamples::find(const std::string& name) const
{
    const auto found = properties_.find(name);
    return found == properties_.end() ? nullptr : found->second;
}

std::uint64_t SchemaSamples::count(const std::string& name) const
{
    const StoredProperty* const property = find(name);
    return property && property->get_sample_count() > 0 ? property->get_element_count(sample_of(*property)) : 0;
}

void SchemaSamples::report(Severity severity, const std::string& name, const std::string& what)
{
    const StoredProperty* const property = find(name);
    if (!property || property->get_sample_count() == 0) return findings_.add(severity, object_, compound_ + name, what);
    const std::size_t sample = sample_of(*property);
    findings_.add_sample(severity, object_, compound_ + name, sample, property->get_time(sample), what);
}

bool SchemaSamples::choose_leader(std::initializer_list<const char*> names)
{
    leader_ = nullptr;
    bool is_complete = true;
    for (const char* const name : names) {
        const StoredProperty* const property = find(name);
        if (!property)
            findings_.add(Severity::ERROR, object_, compound_ + name, "is missing, the schema needs it");
        else if (property->get_sample_count() == 0)
            findings_.add(Severity::WARNING, object_, compound_ + name, "has no samples");
        else if (!leader_ || property->get_sample_count() > leader_->get_sample_count())
            leader_ = property;
        is_complete = is_complete && property && property->get_sample_count() > 0;
    }
    return is_complete;
}

bool SchemaSamples::is_new_sample() const
{
    if (sample_ == 0) return true;
    return std::any_of(properties_.begin(), properties_.end(), [&](const auto& entry) {
        const StoredProperty& property = *entry.second;
        return property.get_sample_count() > 1 && !property.is_constant() && !property.repeats(sample_of(property));
    });
}

std::size_t SchemaSamples::sample_of(const StoredProperty& property) const
{
    const bool is_in_step = property.get_header().getTimeSampling() == leader_->get_header().getTimeSampling();
    if (is_in_step) return std::min(sample_, property.get_sample_count() - 1);
    return property.find_sample(time_);
}
