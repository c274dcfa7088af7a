/// @file
/// The property headers of a compound, parsed once and shared by every compound with equal headers.
#pragma once

#include "core/ogawa/metadata_table.h"
#include "core/ogawa/name_index.h"
#include "core/ogawa/time_sampling_table.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace Alembic {
namespace AbcCoreOgawa {
inline namespace ALEMBIC_VERSION_NS {

/// Which of a property's samples are stored: the first one, and those from the first to the last change.
struct SampleRange
{
    std::uint32_t count = 0;         ///< samples that were set, repeats included
    std::uint32_t first_changed = 0; ///< 0: no sample differs from sample 0
    std::uint32_t last_changed = 0;

    /// The position among the stored samples of sample `index`, which must be below the count.
    std::uint64_t stored_index(std::uint64_t index) const
    {
        if (index < first_changed || last_changed == 0) return 0;
        if (index >= last_changed) return std::uint64_t(last_changed) - first_changed + 1;
        return index - first_changed + 1;
    }
};

/// One property of a compound.
struct PropertyRecord
{
    AbcA::PropertyHeader header;
    SampleRange samples;      ///< of a simple property
    bool scalar_like = false; ///< an array whose samples all have one element
};

/// What property headers refer to by a number.
struct HeaderContext
{
    const MetadataTable& metadata;
    const std::vector<TimeSamplingEntry>& time_samplings;
};

/// The properties of a compound, in the order written. Never changes once made.
class PropertyTable
{
public:
    /// A compound without properties.
    PropertyTable() = default;

    /// Parses the headers of a compound. Throws "Read invalid: Property ..." and the like for headers that are cut,
    /// refer to what is not there, or could not be read safely.
    PropertyTable(std::string_view headers, const HeaderContext& context);

    /// Different names there are; this many records can be reached by number.
    std::uint32_t size() const { return index_.size(); }

    /// Record `index`, which must be below the number of records. It is also the number of the child group.
    const PropertyRecord& record(std::uint32_t index) const { return records_[index]; }

    /// The number of the last property of that name, or NameIndex::none.
    std::uint32_t find(std::string_view name) const;

private:
    std::vector<PropertyRecord> records_;
    NameIndex index_;
};

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreOgawa
} // namespace Alembic
