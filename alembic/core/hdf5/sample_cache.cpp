/// @file
/// The cache of array samples that clients may give to archives.
#include <Alembic/AbcCoreHDF5/ReadWrite.h>

#include <algorithm>
#include <memory>
#include <mutex>

namespace Alembic {
namespace AbcCoreHDF5 {
inline namespace ALEMBIC_VERSION_NS {

namespace {

/// Knows the samples that somebody holds; holds none itself.
class SampleCache final : public AbcA::ReadArraySampleCache
{
public:
    AbcA::ReadArraySampleID find(const AbcA::ArraySample::Key& key) override
    {
        const std::lock_guard<std::mutex> guard(mutex_);
        const auto found = samples_.find(key);
        return found == samples_.end() ? AbcA::ReadArraySampleID() : id_of(key, found->second.lock());
    }

    AbcA::ReadArraySampleID store(const AbcA::ArraySample::Key& key, AbcA::ArraySamplePtr sample) override
    {
        const std::lock_guard<std::mutex> guard(mutex_);
        std::weak_ptr<AbcA::ArraySample>& known = samples_[key];
        if (const AbcA::ArraySamplePtr there = known.lock()) return id_of(key, there);
        known = sample;
        if (samples_.size() >= next_sweep_) sweep();
        return id_of(key, sample);
    }

private:
    static AbcA::ReadArraySampleID id_of(const AbcA::ArraySample::Key& key, const AbcA::ArraySamplePtr& sample)
    {
        return sample ? AbcA::ReadArraySampleID(key, sample) : AbcA::ReadArraySampleID();
    }

    /// Forgets samples that are gone. Done each time their number has doubled, it costs little.
    void sweep()
    {
        for (auto entry = samples_.begin(); entry != samples_.end();)
            entry = entry->second.expired() ? samples_.erase(entry) : std::next(entry);
        next_sweep_ = std::max(first_sweep, 2 * samples_.size());
    }

    static constexpr std::size_t first_sweep = 1024;

    std::mutex mutex_;
    AbcA::UnorderedMapUtil<std::weak_ptr<AbcA::ArraySample>>::umap_type samples_;
    std::size_t next_sweep_ = first_sweep;
};

} // namespace

AbcA::ReadArraySampleCachePtr CreateCache()
{
    return std::make_shared<SampleCache>();
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreHDF5
} // namespace Alembic
