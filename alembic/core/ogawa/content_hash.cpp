/// @file
/// Hashing of properties, objects and sample sequences.
#include "content_hash.h"

#include <cstdint>
#include <vector>

namespace Alembic {
namespace AbcCoreOgawa {
inline namespace ALEMBIC_VERSION_NS {

ContentHash& ContentHash::add(const void* data, std::size_t size)
{
    if (size > 0) hash_.Update(data, size);
    return *this;
}

ContentHash& ContentHash::add(const AbcA::TimeSampling& sampling)
{
    const std::vector<AbcA::chrono_t>& times = sampling.getStoredTimes();
    add_number<double>(sampling.getTimeSamplingType().getTimePerCycle());
    add_number(std::uint32_t(times.size()));
    return add(times.data(), times.size() * sizeof(AbcA::chrono_t));
}

Util::Digest ContentHash::result() const
{
    Util::Digest digest;
    hash_.Final(&digest.words[0], &digest.words[1]);
    return digest;
}

void SampleSequenceHash::add(const Util::Digest& sample)
{
    if (!has_samples_) {
        accumulated_ = sample;
        has_samples_ = true;
        return;
    }
    Util::Digest mixed = sample;
    Util::SpookyHash::ShortEnd(accumulated_.words[0], accumulated_.words[1], mixed.words[0], mixed.words[1]);
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreOgawa
} // namespace Alembic
