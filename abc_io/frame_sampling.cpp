/// AbcInternal::get_frame_sampling: stored samples become a host sampling.
#include "abc_internal.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

using Alembic::AbcGeom::index_t;
using Alembic::AbcGeom::TimeSampling;

namespace {

constexpr double regular_tolerance = 1e-8; // seconds; a step off by exactly this much still counts as regular

CoreArray<double> gather_times(const TimeSampling& sampling, index_t first, index_t count)
{
    CoreArray<double> times(static_cast<std::size_t>(count));
    for (index_t i = 0; i < count; ++i)
        times[static_cast<std::size_t>(i)] = sampling.getSampleTime(first + i);
    return times;
}

bool are_regular(const CoreArray<double>& times, double step)
{
    for (unsigned int i = 1; i < times.get_count(); ++i)
        if (std::abs(times[i] - times[i - 1] - step) > regular_tolerance) return false;
    return true;
}

} // namespace

void AbcInternal::get_frame_sampling(const std::shared_ptr<TimeSampling>& alembic_sampling, const size_t& sample_count,
                                     const double& start_time, const double& end_time, GMathTimeSampling& result)
{
    if (!alembic_sampling || sample_count == 0) return result.init(1, 0.0, 0.0);
    const auto stored_count = static_cast<index_t>(sample_count);
    const auto [floor_index, floor_time] = alembic_sampling->getFloorIndex(start_time, stored_count);
    const auto [ceil_index, ceil_time] = alembic_sampling->getCeilIndex(end_time, stored_count);
    const std::int64_t count = ceil_index - floor_index + 1;
    if (count < 1) return result.init(1, floor_time, floor_time); // the interval ends before it starts
    if (count < 3 || alembic_sampling->getTimeSamplingType().isUniform())
        return result.init(static_cast<unsigned int>(count), floor_time, ceil_time);

    const double step = (ceil_time - floor_time) / static_cast<double>(count - 1);
    const CoreArray<double> times = gather_times(*alembic_sampling, floor_index, count);
    if (are_regular(times, step))
        result.init(static_cast<unsigned int>(count), floor_time, ceil_time);
    else
        result.init(times);
}
