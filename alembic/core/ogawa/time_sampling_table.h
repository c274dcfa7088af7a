/// @file
/// The time samplings of an archive, known by their index.
#pragma once

#include <Alembic/AbcCoreOgawa/ReadWrite.h>

#include "ogawa/data_reader.h"

#include <vector>

namespace Alembic {
namespace AbcCoreOgawa {
inline namespace ALEMBIC_VERSION_NS {

/// A time sampling and the largest number of samples of any property that uses it.
struct TimeSamplingEntry
{
    AbcA::TimeSamplingPtr sampling;
    AbcA::index_t max_samples = 0;
};

/// Parses the time samplings of an archive; no data gives none. Throws "Read invalid: TimeSamples ..." when a record
/// runs past the end, and what AbcA::TimeSampling throws for times that break its rules.
std::vector<TimeSamplingEntry> read_time_samplings(const Ogawa::DataReader& data);

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreOgawa
} // namespace Alembic
