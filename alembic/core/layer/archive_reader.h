/// An archive made of layers.
#pragma once

#include <Alembic/AbcCoreLayer/Read.h>

#include "core/layer/object_reader.h"

#include <memory>
#include <string>
#include <unordered_set>
#include <vector>

namespace Alembic {
namespace AbcCoreLayer {
inline namespace ALEMBIC_VERSION_NS {

/// Owns the merged objects and compounds. Pointers to them that are handed out share the archive's count.
class ArchiveReader final : public AbcCoreAbstract::ArchiveReader, public std::enable_shared_from_this<ArchiveReader>
{
public:
    /// `layers`: at least one, none of them null, weakest first. Throws what a layer throws for its top.
    explicit ArchiveReader(const ArchiveReaderPtrs& layers);

    const std::string& getName() const override { return name_; }
    const AbcCoreAbstract::MetaData& getMetaData() const override { return top_header_.getMetaData(); }
    AbcCoreAbstract::ObjectReaderPtr getTop() override { return shared(*top_); }
    /// That of the weakest layer which has one.
    AbcCoreAbstract::ReadArraySampleCachePtr getReadArraySampleCachePtr() override;
    /// Given to each layer.
    void setReadArraySampleCachePtr(AbcCoreAbstract::ReadArraySampleCachePtr ptr) override;
    uint32_t getNumTimeSamplings() override { return static_cast<uint32_t>(time_samplings_.size()); }
    AbcCoreAbstract::TimeSamplingPtr getTimeSampling(uint32_t index) override;
    AbcCoreAbstract::index_t getMaxNumSamplesForTimeSamplingIndex(uint32_t index) override;
    int32_t getArchiveVersion() override { return version_; }
    AbcCoreAbstract::ArchiveReaderPtr asArchivePtr() override { return shared_from_this(); }

    /// A pointer to one of the archive's own objects or compounds that keeps the archive.
    template <class T>
    std::shared_ptr<T> shared(T& part)
    {
        return std::shared_ptr<T>(shared_from_this(), &part);
    }

private:
    struct LayerTimeSampling
    {
        AbcCoreAbstract::TimeSamplingPtr sampling;
        AbcCoreAbstract::index_t max_samples;
    };

    /// `known` are those that are there already.
    void add_time_samplings(AbcCoreAbstract::ArchiveReader& layer,
                            std::unordered_set<const AbcCoreAbstract::TimeSampling*>& known);

    const ArchiveReaderPtrs layers_; // weakest first
    std::string name_;
    int32_t version_ = 0;
    std::vector<LayerTimeSampling> time_samplings_;
    AbcCoreAbstract::ObjectHeader top_header_; // without a name
    std::unique_ptr<ObjectReader> top_;
};

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreLayer
} // namespace Alembic
