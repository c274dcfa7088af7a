/// AbcInput::compute_time_sampling: which samples are read at a time, and where they stand relative to it.
#include "abc_input.h"

#include <algorithm>

namespace {

/// The nearest sample alone; returns its index.
unsigned int take_nearest(const GMathTimeSampling& sampling, double time, GMathTimeSampling& relative,
                          GMathTimeSampling& absolute)
{
    const unsigned int index = sampling.get_nearest_sample(time);
    const double sample_time = sampling.get_sample_time(index);
    relative.init(sample_time - time);
    absolute.init(sample_time);
    return index;
}

void take_all(const GMathTimeSampling& sampling, double time, GMathTimeSampling& relative, GMathTimeSampling& absolute)
{
    const GMathTimeSampling source = sampling; // which may be one of the outputs
    absolute.copy_from(source, 0.0);
    relative.copy_from(source, -time);
}

/// The stored sample behind host sample `index`. A table that is too short, which is a fault of the caller, yields its
/// last entry, and an empty one the index itself.
unsigned int stored_index(const AbcInput::PlainPropertyInfo& info, unsigned int index)
{
    const unsigned int count = info.sample_indices.get_count();
    return count == 0 ? index : info.sample_indices[std::min(index, count - 1)];
}

bool covers(const GMathTimeSampling& sampling, double time)
{
    return sampling.get_start_time() <= time && time <= sampling.get_end_time();
}

} // namespace

void AbcInput::compute_time_sampling(const GMathTimeSampling& sampling, const double& time, const bool& all_samples,
                                     GMathTimeSampling& relative, GMathTimeSampling& absolute,
                                     unsigned int& sample_index)
{
    if (all_samples)
        take_all(sampling, time, relative, absolute);
    else
        sample_index = take_nearest(sampling, time, relative, absolute);
}

void AbcInput::compute_time_sampling(const GMathTimeSampling& first, const GMathTimeSampling& second,
                                     const double& time, const bool& before_split, const double& offset,
                                     const bool& all_samples, GMathTimeSampling& relative, GMathTimeSampling& absolute,
                                     unsigned int& sample_index)
{
    if (!all_samples) {
        const bool use_first = first.get_start_time() <= time && first.get_end_time() >= time;
        sample_index = take_nearest(use_first ? first : second, time, relative, absolute);
        return;
    }
    const unsigned int first_count = first.get_sample_count();
    const unsigned int second_count = second.get_sample_count();
    CoreArray<double> relative_times(std::size_t(first_count) + second_count);
    CoreArray<double> absolute_times(std::size_t(first_count) + second_count);
    for (unsigned int i = 0; i < first_count; ++i) {
        absolute_times[i] = first.get_sample_time(i);
        relative_times[i] = (before_split ? absolute_times[i] - offset : absolute_times[i]) - time;
    }
    for (unsigned int i = 0; i < second_count; ++i) {
        const std::size_t at = std::size_t(first_count) + i;
        absolute_times[at] = second.get_sample_time(i);
        relative_times[at] = (before_split ? absolute_times[at] : absolute_times[at] + offset) - time;
    }
    relative.init(relative_times);
    absolute.init(absolute_times); // in the order of the two samplings, by intention not sorted
}

void AbcInput::compute_time_sampling(const PlainPropertyInfo& info, const double& time, const double& split_time,
                                     const double& offset, const bool& all_samples, unsigned int& sample_index,
                                     GMathTimeSampling& relative, GMathTimeSampling& absolute,
                                     PlainPropertyInfo* second)
{
    const bool all = all_samples && info.multi_sample;
    unsigned int local_index = 0;
    if (second)
        compute_time_sampling(info.time_sampling, second->time_sampling, time, time <= split_time, offset, all,
                              relative, absolute, local_index);
    else
        compute_time_sampling(info.time_sampling, time, all, relative, absolute, local_index);

    if (all || (!second && info.time_sampling.get_sample_count() < 2))
        sample_index = stored_index(info, 0);
    else if (!second || covers(info.time_sampling, time))
        sample_index = stored_index(info, local_index);
    else
        sample_index = stored_index(*second, local_index);
}
