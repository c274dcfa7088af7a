/// @file
/// The properties of a compound, found by number and by name.
#pragma once

#include "core/common/name_index.h"
#include "core/common/property_record.h"

#include <cstdint>
#include <string_view>
#include <utility>
#include <vector>

namespace Alembic {
namespace AbcCoreCommon {
inline namespace ALEMBIC_VERSION_NS {

/// Never changes once made.
class PropertyTable
{
public:
    /// A compound without properties.
    PropertyTable() = default;

    explicit PropertyTable(std::vector<PropertyRecord> records)
        : records_(std::move(records))
    {
        index_.build(static_cast<std::uint32_t>(records_.size()), NameOf{*this});
    }

    /// Different names there are; this many records can be reached by number.
    std::uint32_t size() const { return index_.size(); }

    /// Record `index`, which must be below the number of records.
    const PropertyRecord& record(std::uint32_t index) const { return records_[index]; }

    /// The number of the last property of that name, or NameIndex::none.
    std::uint32_t find(std::string_view name) const { return index_.find(name, NameOf{*this}); }

private:
    struct NameOf
    {
        std::string_view operator()(std::uint32_t i) const { return table.records_[i].header.getName(); }

        const PropertyTable& table;
    };

    std::vector<PropertyRecord> records_;
    NameIndex index_;
};

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreCommon
} // namespace Alembic
