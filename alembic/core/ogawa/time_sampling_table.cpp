/// @file
/// Parses the time samplings of an archive.
#include "core/ogawa/time_sampling_table.h"

#include "core/ogawa/byte_cursor.h"

#include <cstring>
#include <memory>
#include <string>

namespace Alembic {
namespace AbcCoreOgawa {
inline namespace ALEMBIC_VERSION_NS {

namespace {

AbcA::TimeSamplingType type_of(double time_per_cycle, std::uint32_t time_count)
{
    if (time_per_cycle == AbcA::TimeSamplingType::AcyclicTimePerCycle())
        return AbcA::TimeSamplingType(AbcA::TimeSamplingType::kAcyclic);
    return AbcA::TimeSamplingType(time_count, time_per_cycle);
}

} // namespace

std::vector<TimeSamplingEntry> read_time_samplings(const Ogawa::DataReader& data)
{
    std::string bytes(static_cast<std::size_t>(data.size()), '\0');
    data.read(0, &bytes[0], bytes.size());

    std::vector<TimeSamplingEntry> entries;
    ByteCursor cursor(bytes);
    while (cursor.left() > 0) {
        std::uint32_t max_samples = 0;
        double time_per_cycle = 0.0;
        std::uint32_t time_count = 0;
        if (!cursor.take(max_samples) || !cursor.take(time_per_cycle) || !cursor.take(time_count))
            ABCA_THROW("Read invalid: TimeSamples info.");
        std::string_view time_bytes;
        if (time_count == 0 || !cursor.take(std::size_t(time_count) * sizeof(double), time_bytes))
            ABCA_THROW("Read invalid: TimeSamples sample times.");
        std::vector<AbcA::chrono_t> times(time_count);
        std::memcpy(times.data(), time_bytes.data(), time_bytes.size());
        entries.push_back(
            {std::make_shared<AbcA::TimeSampling>(type_of(time_per_cycle, time_count), times), max_samples});
    }
    return entries;
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreOgawa
} // namespace Alembic
