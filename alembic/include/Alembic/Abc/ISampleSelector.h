/// Which sample of a property to read: by index, or by time.
#pragma once

#include <Alembic/Abc/Foundation.h>

#include <type_traits>

namespace Alembic {
namespace Abc {
inline namespace ALEMBIC_VERSION_NS {

class ALEMBIC_EXPORT ISampleSelector
{
public:
    /// Which sample a time between two of them means.
    enum TimeIndexType {
        kFloorIndex = 0, ///< the one before
        kCeilIndex = 1,  ///< the one after
        kNearIndex = 2   ///< the nearer one; the earlier of two equally near
    };

    /// Sample 0.
    ISampleSelector() = default;

    /// The sample of an index. Implicit, so that `get(sample, i)` works for every integer; a floating number that is
    /// not spelled as a selector is truncated to an index, too.
    ISampleSelector(index_t reqIdx)
        : index_(reqIdx)
    {
    }
    template <class INTEGER, class = typename std::enable_if<std::is_integral<INTEGER>::value>::type>
    ISampleSelector(INTEGER reqIdx)
        : index_(static_cast<index_t>(reqIdx))
    {
    }

    /// The sample at a time, in seconds.
    explicit ISampleSelector(chrono_t reqTime, TimeIndexType reqIdxType = kNearIndex)
        : index_(-1)
        , time_(reqTime)
        , time_index_type_(reqIdxType)
    {
    }

    /// -1 when made from a time.
    index_t getRequestedIndex() const { return index_; }
    /// 0 when made from an index.
    chrono_t getRequestedTime() const { return time_; }
    TimeIndexType getRequestedTimeIndexType() const { return time_index_type_; }

    /// The index among `numSamples` samples, never beyond the last; -1 when there are none. A selector made from a
    /// negative index selects as if made from time 0.
    index_t getIndex(const AbcA::TimeSamplingPtr& tsmp, index_t numSamples) const;

    /// The same for the samples of a scalar or array property's reader; looks at its times only when it must.
    template <class READER>
    index_t index_in(READER& reader) const
    {
        const index_t count = static_cast<index_t>(reader.getNumSamples());
        if (index_ >= 0) return index_ < count ? index_ : count - 1;
        return getIndex(reader.getTimeSampling(), count);
    }

private:
    index_t index_ = 0;
    chrono_t time_ = 0.0;
    TimeIndexType time_index_type_ = kNearIndex;
};

} // namespace ALEMBIC_VERSION_NS
} // namespace Abc
} // namespace Alembic
