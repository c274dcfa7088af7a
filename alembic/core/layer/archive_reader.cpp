/// What a layered archive says of itself.
#include "core/layer/archive_reader.h"

#include <algorithm>

namespace Alembic {
namespace AbcCoreLayer {
inline namespace ALEMBIC_VERSION_NS {

namespace AbcA = ::Alembic::AbcCoreAbstract;

namespace {

// The layers' values of each key, joined; the keys of all of them.
AbcA::MetaData joined_metadata(const ArchiveReaderPtrs& layers)
{
    AbcA::MetaData joined;
    for (const AbcA::ArchiveReaderPtr& layer : layers) {
        const AbcA::MetaData metadata = layer->getMetaData();
        for (const auto& [key, value] : metadata) {
            if (value.empty()) continue;
            const std::string so_far = joined.get(key);
            joined.set(key, so_far.empty() ? value : so_far + " , " + value);
        }
    }
    return joined;
}

} // namespace

ArchiveReader::ArchiveReader(const ArchiveReaderPtrs& layers)
    : layers_(layers)
{
    std::vector<AbcA::ObjectReaderPtr> tops;
    std::unordered_set<const AbcA::TimeSampling*> known_samplings;
    for (const AbcA::ArchiveReaderPtr& layer : layers_) {
        name_.append(name_.empty() ? "" : ",").append(layer->getName());
        version_ = std::max(version_, layer->getArchiveVersion());
        add_time_samplings(*layer, known_samplings);
        tops.push_back(layer->getTop());
    }
    top_header_.getMetaData() = joined_metadata(layers_);
    top_ = std::make_unique<ObjectReader>(*this, nullptr, top_header_, std::move(tops));
}

void ArchiveReader::add_time_samplings(AbcA::ArchiveReader& layer, std::unordered_set<const AbcA::TimeSampling*>& known)
{
    const uint32_t count = layer.getNumTimeSamplings();
    for (uint32_t i = 0; i < count; ++i) {
        const AbcA::TimeSamplingPtr sampling = layer.getTimeSampling(i);
        // The very same object may come twice when one reader is given as several layers.
        if (known.insert(sampling.get()).second)
            time_samplings_.push_back({sampling, layer.getMaxNumSamplesForTimeSamplingIndex(i)});
    }
}

AbcA::TimeSamplingPtr ArchiveReader::getTimeSampling(uint32_t index)
{
    return index < time_samplings_.size() ? time_samplings_[index].sampling : AbcA::TimeSamplingPtr();
}

AbcA::index_t ArchiveReader::getMaxNumSamplesForTimeSamplingIndex(uint32_t index)
{
    return index < time_samplings_.size() ? time_samplings_[index].max_samples : 0;
}

AbcA::ReadArraySampleCachePtr ArchiveReader::getReadArraySampleCachePtr()
{
    for (const AbcA::ArchiveReaderPtr& layer : layers_)
        if (const AbcA::ReadArraySampleCachePtr cache = layer->getReadArraySampleCachePtr()) return cache;
    return AbcA::ReadArraySampleCachePtr();
}

void ArchiveReader::setReadArraySampleCachePtr(AbcA::ReadArraySampleCachePtr ptr)
{
    for (const AbcA::ArchiveReaderPtr& layer : layers_)
        layer->setReadArraySampleCachePtr(ptr);
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreLayer
} // namespace Alembic
