/// Ordered list of sample times.
#pragma once

#include "vo_core/core_array.h"
#include "vo_core/export.h"

/// Times in seconds: either uniform (a count, the first and the last time, evenly spaced) or explicit (any times, in
/// the order given, which need not ascend). Without samples by default.
class VO_HOST_EXPORT GMathTimeSampling
{
public:
    GMathTimeSampling() = default;
    explicit GMathTimeSampling(const CoreBasicArray<double>& times) { init(times); }

    /// `count` samples from `start` to `end`, both included; a single one stands at `start`.
    void init(const unsigned int& count, const double& start, const double& end);
    /// Exactly these times, in this order.
    void init(const CoreBasicArray<double>& times);
    /// One sample.
    void init(const double& time);
    /// The source's samples, each later by `offset`; the source may be this sampling.
    void copy_from(const GMathTimeSampling& source, const double& offset);

    /// The sample nearest to `time`: of two equally near ones the earlier, of equal times the first. 0 without samples.
    unsigned int get_nearest_sample(const double& time) const;
    /// An index beyond the last sample yields the last; without samples the time is 0.
    double get_sample_time(const unsigned int& index) const;
    unsigned int get_sample_count() const { return count_; }
    double get_start_time() const { return start_; } ///< time of sample 0; 0 without samples
    double get_end_time() const { return end_; }     ///< time of the last sample; 0 without samples
    bool is_uniform() const { return times_.is_empty(); }

    /// Bytes of this object and of its times.
    std::size_t get_memory_size() const { return sizeof(*this) - sizeof(times_) + times_.get_memory_size(); }
    /// Same kind and same times.
    bool operator==(const GMathTimeSampling& other) const;
    bool operator!=(const GMathTimeSampling& other) const { return !(*this == other); }

private:
    unsigned int count_ = 0;
    double start_ = 0.0;
    double end_ = 0.0;
    CoreArray<double> times_;  ///< empty when the sampling is uniform
    bool is_ascending_ = true; ///< whether times_ can be searched by halving
};
