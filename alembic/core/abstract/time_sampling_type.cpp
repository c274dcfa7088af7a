/// Kinds of time samplings, and their text.
#include <Alembic/AbcCoreAbstract/TimeSamplingType.h>

#include <cmath>
#include <limits>
#include <ostream>

namespace Alembic {
namespace AbcCoreAbstract {
inline namespace ALEMBIC_VERSION_NS {

namespace {

constexpr chrono_t same_period = 1e-9; // seconds; periods no further apart are equal

bool is_period(chrono_t time_per_cycle)
{
    return time_per_cycle > 0.0 && time_per_cycle < TimeSamplingType::AcyclicTimePerCycle();
}

} // namespace

uint32_t TimeSamplingType::AcyclicNumSamples()
{
    return std::numeric_limits<uint32_t>::max();
}

chrono_t TimeSamplingType::AcyclicTimePerCycle()
{
    return std::numeric_limits<chrono_t>::max() / 32.0;
}

TimeSamplingType::TimeSamplingType(chrono_t timePerCycle)
    : samples_per_cycle_(1)
    , time_per_cycle_(timePerCycle)
{
    if (!is_period(timePerCycle))
        ABCA_THROW("Time per cycle must be greater than 0 and can not be ACYCLIC_TIME_PER_CYCLE.");
}

TimeSamplingType::TimeSamplingType(uint32_t numSamplesPerCycle, chrono_t timePerCycle)
    : samples_per_cycle_(numSamplesPerCycle)
    , time_per_cycle_(timePerCycle)
{
    const bool is_acyclic = isAcyclic() && timePerCycle == AcyclicTimePerCycle();
    const bool is_cyclic = numSamplesPerCycle > 0 && !isAcyclic() && is_period(timePerCycle);
    if (!is_acyclic && !is_cyclic)
        ABCA_THROW("Invalid Time Sampling Type, time per cycle: " << timePerCycle
                                                                  << " samples per cycle: " << numSamplesPerCycle);
}

TimeSamplingType::TimeSamplingType(AcyclicFlag)
    : samples_per_cycle_(AcyclicNumSamples())
    , time_per_cycle_(AcyclicTimePerCycle())
{
}

bool TimeSamplingType::operator==(const TimeSamplingType& rhs) const
{
    return samples_per_cycle_ == rhs.samples_per_cycle_ &&
           std::fabs(time_per_cycle_ - rhs.time_per_cycle_) <= same_period;
}

std::ostream& operator<<(std::ostream& ostr, const TimeSamplingType& tst)
{
    if (tst.isAcyclic()) return ostr << "Acyclic time sampling";
    if (tst.isUniform()) return ostr << "Uniform time sampling with " << tst.getTimePerCycle() << " chrono_ts/cycle";
    return ostr << "Cyclic time sampling with " << tst.getNumSamplesPerCycle() << " samps/cycle and "
                << tst.getTimePerCycle() << " chrono_ts/cycle";
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreAbstract
} // namespace Alembic
