/// @file
/// What a writer remembers of the properties and child objects it has made, until their parent is written.
#pragma once

#include "ogawa/format.h"

#include <Alembic/AbcCoreAbstract/All.h>
#include <Alembic/Util/Digest.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace Alembic {
namespace AbcCoreOgawa {
inline namespace ALEMBIC_VERSION_NS {

namespace AbcA = ::Alembic::AbcCoreAbstract;

/// A property. Its writer fills the record in while it lives, and `group_entry` and `hash` at its end.
struct WrittenProperty
{
    AbcA::PropertyHeader header;
    std::weak_ptr<AbcA::BasePropertyWriter> writer;

    std::uint64_t group_entry = Ogawa::empty_group; ///< of the samples, or of the compound's properties
    Util::Digest hash;

    std::uint32_t time_sampling_index = 0;
    std::uint32_t sample_count = 0;        ///< set so far, with repeats
    std::uint32_t first_changed = 0;       ///< first sample that differs from the one before; 0: none does
    std::uint32_t last_changed = 0;        ///< last such sample
    bool has_one_element_each = true;      ///< so far no sample of an array had another number of elements than one
    bool counts_values_as_elements = true; ///< stored with the header; no reader makes use of it
};

/// A child object.
struct WrittenObject
{
    AbcA::ObjectHeader header;
    std::weak_ptr<AbcA::ObjectWriter> writer;

    std::uint64_t group_entry = Ogawa::empty_group;
    Util::Digest hash;
};

/// Records in order of creation, each with a name of its own. A record's address stays the same.
template <class Record>
class NamedRecords
{
public:
    std::size_t size() const { return records_.size(); }
    Record& operator[](std::size_t i) const { return *records_[i]; } ///< `i` below size()

    /// Null when there is none of that name.
    Record* find(const std::string& name) const
    {
        const auto found = by_name_.find(name);
        return found == by_name_.end() ? nullptr : found->second;
    }

    /// Appends a record whose header is set and whose name find() does not find.
    Record& add(std::unique_ptr<Record> record)
    {
        records_.push_back(std::move(record));
        Record& added = *records_.back();
        try {
            by_name_.emplace(added.header.getName(), &added);
        } catch (...) {
            records_.pop_back();
            throw;
        }
        return added;
    }

    /// Takes back the record added last.
    void remove_last()
    {
        by_name_.erase(records_.back()->header.getName());
        records_.pop_back();
    }

private:
    std::vector<std::unique_ptr<Record>> records_;
    std::unordered_map<std::string_view, Record*> by_name_; ///< keys are the records' own names
};

/// All that an object consists of.
struct ObjectContents
{
    NamedRecords<WrittenProperty> properties; ///< of its top compound
    NamedRecords<WrittenObject> children;
};

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreOgawa
} // namespace Alembic
