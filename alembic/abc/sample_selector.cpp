/// From a wish to the index of a sample.
#include <Alembic/Abc/ISampleSelector.h>

#include <algorithm>

namespace Alembic {
namespace Abc {
inline namespace ALEMBIC_VERSION_NS {

index_t ISampleSelector::getIndex(const AbcA::TimeSamplingPtr& tsmp, index_t numSamples) const
{
    if (numSamples < 1) return -1;
    index_t index = index_;
    if (index < 0) {
        // A negative index that somebody asked for has time 0 and nearest beside it.
        if (!tsmp) return 0;
        switch (time_index_type_) {
        case kFloorIndex:
            index = tsmp->getFloorIndex(time_, numSamples).first;
            break;
        case kCeilIndex:
            index = tsmp->getCeilIndex(time_, numSamples).first;
            break;
        case kNearIndex:
            index = tsmp->getNearIndex(time_, numSamples).first;
            break;
        }
    }
    return std::max<index_t>(0, std::min(index, numSamples - 1));
}

} // namespace ALEMBIC_VERSION_NS
} // namespace Abc
} // namespace Alembic
