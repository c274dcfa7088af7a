#include "time_cut.h"

#include <algorithm>
#include <limits>

namespace AbcA = Alembic::AbcCoreAbstract;

namespace {

/// More samples than any property can have.
constexpr std::int64_t endless = std::numeric_limits<std::uint32_t>::max();

/// The sample to begin with instead of `first`. Where a cycle ends at the very time at which the next one starts, no cycle
/// can begin in the middle of one: two of its samples would have the same time.
std::int64_t whole_cycles(const AbcA::TimeSampling& sampling, std::int64_t first)
{
    const AbcA::TimeSamplingType type = sampling.getTimeSamplingType();
    if (!type.isCyclic()) return first;
    const std::int64_t per_cycle = type.getNumSamplesPerCycle();
    const bool cycles_touch = sampling.getSampleTime(per_cycle) <= sampling.getSampleTime(per_cycle - 1);
    return cycles_touch ? first - first % per_cycle : first;
}

/// What the sampling is when its sample `first` becomes number 0.
AbcA::TimeSampling sampling_from(const AbcA::TimeSampling& sampling, const SampleSpan& samples)
{
    const AbcA::TimeSamplingType type = sampling.getTimeSamplingType();
    const std::int64_t count = type.isAcyclic() ? samples.last - samples.first + 1 : type.getNumSamplesPerCycle();
    std::vector<AbcA::chrono_t> times;
    for (std::int64_t i = 0; i < count; ++i)
        times.push_back(sampling.getSampleTime(samples.first + i));
    return AbcA::TimeSampling(type, times);
}

} // namespace

TimeCut::Cut TimeCut::cut(const AbcA::TimeSampling& sampling, const TimeSpan& span)
{
    const std::int64_t count =
        sampling.getTimeSamplingType().isAcyclic() ? static_cast<std::int64_t>(sampling.getNumStoredTimes()) : endless;
    const SampleSpan samples = {whole_cycles(sampling, sampling.getFloorIndex(span.start, count).first),
                                sampling.getCeilIndex(span.end, count).first};
    // Left as it is, not computed anew: the default sampling keeps its place.
    return {samples.first == 0 ? sampling : sampling_from(sampling, samples), samples};
}

TimeCut::TimeCut(AbcA::ArchiveReader& archive, const std::optional<TimeSpan>& span)
    : is_cut_(span.has_value())
{
    for (std::uint32_t i = 0; i < archive.getNumTimeSamplings(); ++i) {
        const AbcA::TimeSampling& sampling = *archive.getTimeSampling(i);
        cuts_.push_back(span ? cut(sampling, *span) : Cut{sampling, {0, endless}});
    }
}

SampleSpan TimeCut::get_samples(std::uint32_t index, std::int64_t sample_count) const
{
    // A property of fewer samples holds its last one from there on.
    const SampleSpan& samples = cuts_[index].samples;
    return {std::min(samples.first, sample_count - 1), std::min(samples.last, sample_count - 1)};
}
