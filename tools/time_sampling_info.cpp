#include "time_sampling_info.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

using namespace Alembic::Abc;

namespace {

constexpr double usual_rates[] = {
    12.0, 15.0, 24000.0 / 1001.0, 24.0, 25.0, 30000.0 / 1001.0, 30.0, 48.0, 50.0, 60000.0 / 1001.0, 60.0, 100.0, 120.0};

/// The mean distance of the samples that are stored or made of one cycle; 0 without two samples.
double mean_distance(const TimeSamplingInfo& info, std::uint32_t samples_per_cycle)
{
    if (info.time_per_cycle > 0.0) return info.time_per_cycle / std::max(samples_per_cycle, 1u);
    if (info.stored_times.size() < 2) return 0.0;
    return (info.stored_times.back() - info.stored_times.front()) / static_cast<double>(info.stored_times.size() - 1);
}

std::string describe_rate(double rate)
{
    return fmt::format(", looks like {:.6g} a second", rate);
}

} // namespace

double guess_frame_rate(double time_per_sample)
{
    if (!(time_per_sample > 0.0)) return 0.0;
    const double rate = 1.0 / time_per_sample;
    const auto distance = [&](double usual) { return std::fabs(usual - rate); };
    const double* const nearest = std::min_element(std::begin(usual_rates), std::end(usual_rates),
                                                   [&](double a, double b) { return distance(a) < distance(b); });
    // Rates of 24 and 24000/1001 lie a thousandth apart: half of that tells one from the other.
    return distance(*nearest) < 0.0005 * *nearest ? *nearest : rate;
}

TimeSamplingInfo::TimeSamplingInfo(IArchive& archive, std::uint32_t sampling_index)
    : index(sampling_index)
{
    const TimeSamplingPtr sampling = archive.getTimeSampling(sampling_index);
    if (!sampling) return;
    const TimeSamplingType type = sampling->getTimeSamplingType();
    kind = type.isUniform() ? "uniform" : type.isCyclic() ? "cyclic" : "acyclic";
    stored_times = sampling->getStoredTimes();
    if (!type.isAcyclic()) time_per_cycle = type.getTimePerCycle();
    const index_t count = archive.getMaxNumSamplesForTimeSamplingIndex(sampling_index);
    if (count >= 0 && count < INDEX_UNKNOWN) max_sample_count = count;

    start_time = end_time = sampling->getSampleTime(0);
    const std::int64_t known_times = static_cast<std::int64_t>(stored_times.size());
    const std::int64_t last = type.isAcyclic() ? std::min(max_sample_count, known_times) : max_sample_count;
    if (last > 0) end_time = sampling->getSampleTime(last - 1);
    frame_rate = guess_frame_rate(mean_distance(*this, type.getNumSamplesPerCycle()));
}

bool TimeSamplingInfo::tells_frame_rate() const
{
    if (max_sample_count > 1) return frame_rate > 0.0;
    return index > 0 && std::find(std::begin(usual_rates), std::end(usual_rates), frame_rate) != std::end(usual_rates);
}

std::string TimeSamplingInfo::describe() const
{
    const std::string samples =
        max_sample_count < 0 ? "number of samples unknown"
                             : "at most " + counted(static_cast<std::size_t>(max_sample_count), "sample", "samples");
    // The default sampling of an archive is nobody's frame rate, however many samples use it.
    return fmt::format("{}: {}, {}, {}{}", index, kind, samples, time_range(start_time, end_time),
                       index > 0 && tells_frame_rate() ? describe_rate(frame_rate) : "");
}

Json TimeSamplingInfo::to_json() const
{
    Json json;
    json["index"] = index;
    json["kind"] = kind;
    json["max_samples"] = max_sample_count < 0 ? Json() : Json(max_sample_count);
    json["time_per_cycle"] = time_per_cycle > 0.0 ? Json(time_per_cycle) : Json();
    json["stored_times"] = stored_times;
    json["start_time"] = start_time;
    json["end_time"] = end_time;
    json["frames_per_second"] = frame_rate > 0.0 ? Json(frame_rate) : Json();
    return json;
}
