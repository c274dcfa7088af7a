/// How samples lie in time: evenly, in repeating cycles, or anywhere.
#pragma once

#include <Alembic/AbcCoreAbstract/Foundation.h>

#include <iosfwd>

namespace Alembic {
namespace AbcCoreAbstract {
inline namespace ALEMBIC_VERSION_NS {

/// Samples per cycle and the length of a cycle. Exactly one of uniform, cyclic, acyclic is true.
class ALEMBIC_EXPORT TimeSamplingType
{
public:
    enum AcyclicFlag { kAcyclic };

    /// What stands for "acyclic" in place of a count, and in place of a length.
    static uint32_t AcyclicNumSamples();
    static chrono_t AcyclicTimePerCycle();

    /// Uniform, a sample each 1.0 s.
    TimeSamplingType() = default;
    /// Uniform, a sample each `timePerCycle` seconds. Throws unless that is positive and below the acyclic constant.
    explicit TimeSamplingType(chrono_t timePerCycle);
    /// Cyclic; uniform when `numSamplesPerCycle` is 1, acyclic when both are the acyclic constants. Throws for any
    /// other combination of which one is not in range.
    TimeSamplingType(uint32_t numSamplesPerCycle, chrono_t timePerCycle);
    /// Acyclic.
    explicit TimeSamplingType(AcyclicFlag);

    bool isUniform() const { return samples_per_cycle_ == 1; }
    bool isCyclic() const { return !isUniform() && !isAcyclic(); }
    bool isAcyclic() const { return samples_per_cycle_ == AcyclicNumSamples(); }

    uint32_t getNumSamplesPerCycle() const { return samples_per_cycle_; }
    chrono_t getTimePerCycle() const { return time_per_cycle_; }

    /// Same number of samples, lengths within 1e-9 s.
    bool operator==(const TimeSamplingType& rhs) const;
    bool operator!=(const TimeSamplingType& rhs) const { return !(*this == rhs); }

private:
    uint32_t samples_per_cycle_ = 1;
    chrono_t time_per_cycle_ = 1.0; // seconds
};

ALEMBIC_EXPORT std::ostream& operator<<(std::ostream& ostr, const TimeSamplingType& tst);

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreAbstract
} // namespace Alembic
