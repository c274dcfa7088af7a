/// The times of a property's samples, and which sample belongs to a time.
#pragma once

#include <Alembic/AbcCoreAbstract/Foundation.h>
#include <Alembic/AbcCoreAbstract/TimeSamplingType.h>

#include <utility>
#include <vector>

namespace Alembic {
namespace AbcCoreAbstract {
inline namespace ALEMBIC_VERSION_NS {

/// Maps sample indices to times in seconds. A sampling does not know how many samples a property has: the look-ups are
/// told. Immutable but for assignment, so one sampling is shared by many properties and threads.
class ALEMBIC_EXPORT TimeSampling
{
public:
    /// A sample index and its time.
    typedef std::pair<index_t, chrono_t> IndexAndTime;

    /// `sampleTimes`: one per sample of a cycle (acyclic: one or more), strictly increasing, a cycle no longer than its
    /// length in the type. Throws otherwise.
    TimeSampling(const TimeSamplingType& timeSamplingType, const std::vector<chrono_t>& sampleTimes);
    /// Uniform: a sample each `timePerCycle` seconds, the first at `startTime`.
    TimeSampling(chrono_t timePerCycle, chrono_t startTime);
    /// Uniform, each 1.0 s from 0.0: what index 0 of every archive is.
    TimeSampling();
    TimeSampling(const TimeSampling& copy) = default;
    TimeSampling& operator=(const TimeSampling& copy) = default;

    /// Types equal, and stored times exactly equal.
    bool operator==(const TimeSampling& rhs) const { return type_ == rhs.type_ && times_ == rhs.times_; }
    bool operator!=(const TimeSampling& rhs) const { return !(*this == rhs); }

    size_t getNumStoredTimes() const { return times_.size(); }
    /// The times of one cycle (uniform: the start alone), or all of them when acyclic.
    const std::vector<chrono_t>& getStoredTimes() const { return times_; }
    TimeSamplingType getTimeSamplingType() const { return type_; }

    /// Time of a sample. Uniform and cyclic ones extend to any index, negative too; acyclic ones throw outside.
    chrono_t getSampleTime(index_t index) const;

    /// The last sample at or before `time`; one at most 1e-5 s after it counts as at it. Before the first sample the
    /// first, (0, 0.0) without samples. Acyclic: throws when `numSamples` exceeds the stored times.
    IndexAndTime getFloorIndex(chrono_t time, index_t numSamples) const;
    /// The first sample at or after `time`, with the same tolerance before it; after the last sample the last.
    IndexAndTime getCeilIndex(chrono_t time, index_t numSamples) const;
    /// The sample closest to `time`; of two equally close ones the earlier.
    IndexAndTime getNearIndex(chrono_t time, index_t numSamples) const;

private:
    void check() const;
    IndexAndTime at(index_t index) const { return IndexAndTime(index, getSampleTime(index)); }
    index_t floor_between(chrono_t time, index_t numSamples) const;
    index_t uniform_floor(chrono_t time, index_t numSamples) const;
    index_t cyclic_floor(chrono_t time, index_t numSamples) const;
    index_t acyclic_floor(chrono_t time) const;

    TimeSamplingType type_;
    std::vector<chrono_t> times_; // seconds, strictly increasing, never empty
};

typedef Alembic::Util::shared_ptr<TimeSampling> TimeSamplingPtr;

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreAbstract
} // namespace Alembic
