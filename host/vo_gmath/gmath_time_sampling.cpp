/// Ordered list of sample times.
#include "vo_gmath/gmath_time_sampling.h"

#include <algorithm>
#include <cmath>

namespace {

// Keeps in `best` the sample that `get_nearest_sample` promises.
class NearestSample
{
public:
    explicit NearestSample(double time)
        : time_(time)
    {
    }

    void consider(unsigned int index, double sample_time)
    {
        const double distance = std::abs(sample_time - time_);
        const bool is_better = distance < distance_ || (distance == distance_ && sample_time < best_time_);
        if (!is_better) return;
        best = index;
        best_time_ = sample_time;
        distance_ = distance;
    }

    unsigned int best = 0;

private:
    double time_;
    double best_time_ = 0.0;
    double distance_ = HUGE_VAL;
};

} // namespace

void GMathTimeSampling::init(const unsigned int& count, const double& start, const double& end)
{
    const double last = count > 1 ? end : start;
    count_ = count;
    start_ = count > 0 ? start : 0.0;
    end_ = count > 0 ? last : 0.0;
    times_.clear();
    is_ascending_ = true;
}

void GMathTimeSampling::init(const CoreBasicArray<double>& times)
{
    times_ = times;
    count_ = times_.get_count();
    start_ = count_ > 0 ? times_[0] : 0.0;
    end_ = count_ > 0 ? times_[count_ - 1] : 0.0;
    is_ascending_ = std::is_sorted(times_.begin(), times_.end());
}

void GMathTimeSampling::init(const double& time)
{
    init(1u, time, time);
}

void GMathTimeSampling::copy_from(const GMathTimeSampling& source, const double& offset)
{
    const double shift = offset; // it may be a part of the source
    if (this != &source) *this = source;
    if (count_ == 0) return;
    start_ += shift;
    end_ += shift;
    for (double& time : times_)
        time += shift;
    is_ascending_ = std::is_sorted(times_.begin(), times_.end());
}

double GMathTimeSampling::get_sample_time(const unsigned int& index) const
{
    if (count_ == 0) return 0.0;
    const unsigned int clamped = std::min(index, count_ - 1);
    if (!times_.is_empty()) return times_[clamped];
    if (clamped == 0) return start_;
    if (clamped == count_ - 1) return end_;
    return start_ + (end_ - start_) * (static_cast<double>(clamped) / (count_ - 1));
}

unsigned int GMathTimeSampling::get_nearest_sample(const double& time) const
{
    if (count_ == 0 || std::isnan(time) || (is_uniform() && start_ == end_)) return 0;
    NearestSample nearest(time);
    if (!times_.is_empty() && !is_ascending_) {
        for (unsigned int i = 0; i < count_; ++i)
            nearest.consider(i, times_[i]);
        return nearest.best;
    }
    if (!times_.is_empty()) {
        const double* const after = std::lower_bound(times_.begin(), times_.end(), time);
        const double* const before = after == times_.begin() ? after : after - 1;
        // Of a run of equal times before `time` the first is wanted, not the last.
        const double* const first = std::lower_bound(times_.begin(), times_.end(), *before);
        nearest.consider(static_cast<unsigned int>(first - times_.begin()), *first);
        if (after != times_.end()) nearest.consider(static_cast<unsigned int>(after - times_.begin()), *after);
        return nearest.best;
    }
    // Uniform: rounding may put the guess one sample off, so its neighbours are asked too.
    const double position = (time - start_) / (end_ - start_) * (count_ - 1);
    const double last = count_ - 1;
    const unsigned int guess = position > 0.0 ? static_cast<unsigned int>(std::min(position, last)) : 0;
    const unsigned int first = guess > 0 ? guess - 1 : 0;
    for (unsigned int i = first; i < count_ && i <= first + 3; ++i)
        nearest.consider(i, get_sample_time(i));
    return nearest.best;
}

bool GMathTimeSampling::operator==(const GMathTimeSampling& other) const
{
    return count_ == other.count_ && start_ == other.start_ && end_ == other.end_ && times_ == other.times_;
}
