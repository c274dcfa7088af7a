/// The two samples that a time lies between, as all evaluations choose them.
#pragma once

#include <Alembic/AbcCoreAbstract/TimeSampling.h>

#include <cmath>
#include <cstddef>
#include <optional>

/// Times in seconds; `ceil_time` is later than `floor_time`.
struct SampleSpan
{
    Alembic::AbcCoreAbstract::index_t floor = 0, ceil = 0;
    double floor_time = 0.0, ceil_time = 0.0;
};

/// The span around `time` among `sample_count` samples. None where a single sample, the nearest one, is to be taken as
/// it is: before the first, after the last, at a sample or nearly so, and where neighbouring samples share a time.
inline std::optional<SampleSpan> find_sample_span(const Alembic::AbcCoreAbstract::TimeSampling& sampling,
                                                  std::size_t sample_count, double time)
{
    // Intended: a sample this near (seconds) is taken as it is, without blending.
    constexpr double near_enough = 0.001;
    const auto count = static_cast<Alembic::AbcCoreAbstract::index_t>(sample_count);
    if (count < 2 || !(time >= sampling.getSampleTime(0) && time <= sampling.getSampleTime(count - 1)) ||
        !(std::fabs(time - sampling.getNearIndex(time, count).second) > near_enough))
        return std::nullopt;
    const auto [floor, floor_time] = sampling.getFloorIndex(time, count);
    const auto [ceil, ceil_time] = sampling.getCeilIndex(time, count);
    if (!(ceil_time > floor_time)) return std::nullopt;
    return SampleSpan{floor, ceil, floor_time, ceil_time};
}
