/// @file
/// Bits of large samples.
#include "large_sample_filter.h"

#include "core/common/byte_hash.h"

namespace Alembic {
namespace AbcCoreOgawa {
inline namespace ALEMBIC_VERSION_NS {

namespace {

constexpr int bit_count_log2 = 18;
constexpr std::size_t word_count = 128; // evenly over the sample: what moves is seldom between all of them

/// Of the sample's size and a few of its words. Need not differ for different samples.
std::uint64_t hash_of_some(const Ogawa::Bytes& sample)
{
    const char* const bytes = static_cast<const char*>(sample.data);
    const std::size_t last = sample.size - sizeof(std::uint64_t);
    const std::size_t step = last / (word_count - 1);
    std::uint64_t hash = sample.size;
    for (std::size_t i = 0; i < word_count; ++i)
        hash = AbcCoreCommon::multiply_and_fold(hash ^ AbcCoreCommon::load_u64(bytes + i * step), 0x9e3779b97f4a7c15);
    return hash;
}

} // namespace

bool LargeSampleFilter::note(const Ogawa::Bytes& sample)
{
    if (met_.empty()) met_.resize(std::size_t(1) << bit_count_log2);
    const std::size_t bit = std::size_t(hash_of_some(sample) >> (64 - bit_count_log2));
    const bool is_new = !met_[bit];
    met_[bit] = true;
    return is_new;
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreOgawa
} // namespace Alembic
