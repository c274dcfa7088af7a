/// @file
/// The property headers of a compound, which are attributes of its group.
#pragma once

#include "core/common/property_table.h"
#include "core/hdf5/library.h"

#include <vector>

namespace Alembic {
namespace AbcCoreHDF5 {
inline namespace ALEMBIC_VERSION_NS {

using AbcCoreCommon::NameIndex;
using AbcCoreCommon::PropertyRecord;
using AbcCoreCommon::PropertyTable;

typedef std::vector<AbcA::TimeSamplingPtr> TimeSamplings;

/// The properties of the compound in `group`, by name: files do not keep the order in which they were made. The caller
/// holds a LibraryLock. Throws "Corrupt sampling information for property: ..." and the like for what could not be read
/// safely, and for attributes that take more than the `file_size` bytes there are.
PropertyTable parse_properties(hid_t group, const TimeSamplings& time_samplings, std::uint64_t file_size);

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreHDF5
} // namespace Alembic
