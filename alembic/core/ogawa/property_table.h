/// @file
/// The property headers of a compound, parsed once and shared by every compound with equal headers.
#pragma once

#include "core/common/name_index.h"
#include "core/common/property_table.h"
#include "core/ogawa/metadata_table.h"
#include "core/ogawa/time_sampling_table.h"

#include <cstdint>
#include <string_view>
#include <vector>

namespace Alembic {
namespace AbcCoreOgawa {
inline namespace ALEMBIC_VERSION_NS {

using AbcCoreCommon::PropertyRecord;
using AbcCoreCommon::SampleRange;

/// What property headers refer to by a number.
struct HeaderContext
{
    const MetadataTable& metadata;
    const std::vector<TimeSamplingEntry>& time_samplings;
    std::uint64_t most_properties; ///< that the compound's group has room for; headers of more are refused
};

/// The properties of a compound, in the order written: a property's number is also that of its group among the
/// compound's.
class PropertyTable : public AbcCoreCommon::PropertyTable
{
public:
    /// A compound without properties.
    PropertyTable() = default;

    /// Parses the headers of a compound. Throws "Read invalid: Property ..." and the like for headers that are cut,
    /// refer to what is not there, or could not be read safely.
    PropertyTable(std::string_view headers, const HeaderContext& context);
};

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreOgawa
} // namespace Alembic
