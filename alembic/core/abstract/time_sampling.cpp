/// From sample indices to times, and from times to sample indices.
#include <Alembic/AbcCoreAbstract/TimeSampling.h>

#include <algorithm>
#include <cmath>

namespace Alembic {
namespace AbcCoreAbstract {
inline namespace ALEMBIC_VERSION_NS {

namespace {

constexpr chrono_t tolerance = 1e-5; // seconds; a time no further from a sample's counts as at it

bool about(chrono_t a, chrono_t b)
{
    return std::fabs(a - b) <= tolerance;
}

} // namespace

TimeSampling::TimeSampling(const TimeSamplingType& timeSamplingType, const std::vector<chrono_t>& sampleTimes)
    : type_(timeSamplingType)
    , times_(sampleTimes)
{
    check();
}

TimeSampling::TimeSampling(chrono_t timePerCycle, chrono_t startTime)
    : type_(timePerCycle)
    , times_(1, startTime)
{
}

TimeSampling::TimeSampling()
    : times_(1, 0.0)
{
}

void TimeSampling::check() const
{
    const size_t expected = type_.isAcyclic() ? std::max<size_t>(times_.size(), 1) : type_.getNumSamplesPerCycle();
    if (times_.size() != expected)
        ABCA_THROW("Incorrect number of time samples specified, expected " << expected << ", got: " << times_.size());
    for (size_t i = 1; i < times_.size(); ++i)
        if (!(times_[i] > times_[i - 1]))
            ABCA_THROW("Sample " << i << " value: " << times_[i]
                                 << " is not greater than the previous sample: " << times_[i - 1]);
    const chrono_t length = times_.back() - times_.front();
    if (type_.isCyclic() && !(length <= type_.getTimePerCycle()))
        ABCA_THROW("Cyclic samples provided are greater than the time per cycle. Expected: " << type_.getTimePerCycle()
                                                                                             << " Found: " << length);
}

chrono_t TimeSampling::getSampleTime(index_t index) const
{
    if (type_.isUniform()) return times_[0] + type_.getTimePerCycle() * static_cast<chrono_t>(index);

    const index_t stored = static_cast<index_t>(times_.size());
    if (type_.isAcyclic()) {
        if (index < 0 || index >= stored)
            ABCA_THROW("Out-of-range acyclic index: " << index << ", range [0-" << stored - 1 << "]");
        return times_[static_cast<size_t>(index)];
    }

    index_t cycle = index / stored;
    index_t position = index % stored;
    if (position < 0) {
        position += stored;
        --cycle;
    }
    return times_[static_cast<size_t>(position)] + type_.getTimePerCycle() * static_cast<chrono_t>(cycle);
}

TimeSampling::IndexAndTime TimeSampling::getFloorIndex(chrono_t time, index_t numSamples) const
{
    if (numSamples < 1) return IndexAndTime(0, 0.0);
    const IndexAndTime first = at(0);
    if (!(time > first.second)) return first; // in this form also for a time that is not a number
    const IndexAndTime last = at(numSamples - 1);
    if (time >= last.second) return last;
    // Intended: where a cycle ends at the very time at which the next one starts, a time just below that is the start
    // of the next cycle, also when the samples end there: the index is then one past the last. Selectors clamp it.
    const index_t most = type_.isCyclic() ? numSamples : numSamples - 1;
    return at(std::clamp<index_t>(floor_between(time, numSamples), 0, most));
}

TimeSampling::IndexAndTime TimeSampling::getCeilIndex(chrono_t time, index_t numSamples) const
{
    const IndexAndTime floor = getFloorIndex(time, numSamples);
    if (numSamples < 1 || !(time > getSampleTime(0))) return floor;
    if (floor.first == numSamples - 1 || about(time, floor.second)) return floor;
    return at(floor.first + 1);
}

TimeSampling::IndexAndTime TimeSampling::getNearIndex(chrono_t time, index_t numSamples) const
{
    const IndexAndTime floor = getFloorIndex(time, numSamples);
    if (numSamples < 1 || floor.first == numSamples - 1) return floor;
    const IndexAndTime next = at(floor.first + 1);
    const bool next_is_closer = std::fabs(time - floor.second) > std::fabs(next.second - time);
    return next_is_closer ? next : floor;
}

// The floor of a time that lies between the first and the last sample.
index_t TimeSampling::floor_between(chrono_t time, index_t numSamples) const
{
    if (type_.isUniform()) return uniform_floor(time, numSamples);
    return type_.isCyclic() ? cyclic_floor(time, numSamples) : acyclic_floor(time);
}

index_t TimeSampling::uniform_floor(chrono_t time, index_t numSamples) const
{
    // Clamped before the conversion: the quotient of a tiny period may exceed any integer.
    const chrono_t steps = (time - times_[0]) / type_.getTimePerCycle();
    index_t index = numSamples - 1;
    if (steps < static_cast<chrono_t>(numSamples - 1)) index = static_cast<index_t>(std::max(steps, 0.0));

    const chrono_t here = getSampleTime(index);
    if (here > time && index > 0 && !about(time, here)) return index - 1;
    if (index < numSamples - 1 && about(time, getSampleTime(index + 1))) return index + 1;
    return index;
}

index_t TimeSampling::acyclic_floor(chrono_t time) const
{
    // The first stored time after `time`; there is one before it, since `time` is past the first.
    const auto next = std::upper_bound(times_.begin(), times_.end(), time);
    const index_t index = next - times_.begin() - 1;
    if (next == times_.end() || times_[static_cast<size_t>(index)] == time) return index;
    return about(time, *next) ? index + 1 : index;
}

index_t TimeSampling::cyclic_floor(chrono_t time, index_t numSamples) const
{
    const chrono_t cycles = (time - times_[0]) / type_.getTimePerCycle();
    chrono_t whole_cycles = std::trunc(cycles);
    if (std::fabs(cycles - whole_cycles - 1.0) <= tolerance) whole_cycles += 1.0;
    const index_t stored = static_cast<index_t>(times_.size());
    whole_cycles = std::min(whole_cycles, static_cast<chrono_t>(numSamples / stored)); // so that it fits an index
    const chrono_t cycle_start = whole_cycles * type_.getTimePerCycle();

    const auto found = std::lower_bound(times_.begin(), times_.end(), time - cycle_start);
    index_t position = std::min<index_t>(found - times_.begin(), stored - 1);
    const chrono_t sample_time = cycle_start + times_[static_cast<size_t>(position)];
    if (!about(time, sample_time) && position > 0 && time < sample_time) --position;
    return stored * static_cast<index_t>(whole_cycles) + position;
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreAbstract
} // namespace Alembic
