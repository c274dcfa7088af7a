/// @file
/// An Ogawa archive open for reading: owns the file and all that has been parsed of it.
#pragma once

#include "core/ogawa/metadata_table.h"
#include "core/ogawa/object_reader.h"
#include "core/ogawa/property_table_cache.h"
#include "core/ogawa/time_sampling_table.h"
#include "ogawa/container_reader.h"

#include <atomic>
#include <iosfwd>
#include <memory>
#include <string>
#include <vector>

namespace Alembic {
namespace AbcCoreOgawa {
inline namespace ALEMBIC_VERSION_NS {

class ArchiveReader final : public AbcA::ArchiveReader, public std::enable_shared_from_this<ArchiveReader>
{
public:
    /// Opens `file_name`, or `streams` if there are any (then it is only a name). Throws what is wrong with it.
    static std::shared_ptr<ArchiveReader> open(const std::string& file_name, const std::vector<std::istream*>& streams);

    const std::string& getName() const override { return name_; }
    const AbcA::MetaData& getMetaData() const override { return top_->getHeader().getMetaData(); }
    AbcA::ObjectReaderPtr getTop() override { return handle_of(*top_); }
    AbcA::ReadArraySampleCachePtr getReadArraySampleCachePtr() override { return {}; }
    void setReadArraySampleCachePtr(AbcA::ReadArraySampleCachePtr) override {}
    std::uint32_t getNumTimeSamplings() override { return static_cast<std::uint32_t>(time_samplings_.size()); }
    AbcA::TimeSamplingPtr getTimeSampling(std::uint32_t index) override;
    AbcA::index_t getMaxNumSamplesForTimeSamplingIndex(std::uint32_t index) override;
    std::int32_t getArchiveVersion() override { return library_version_; }
    AbcA::ArchiveReaderPtr asArchivePtr() override { return shared_from_this(); }

    const Ogawa::BlockBuffer& file() const { return container_.file(); }
    const MetadataTable& metadata_table() const { return metadata_table_; }

    /// A pointer to a node of the tree that keeps the archive, and with it the node and its parents, alive.
    AbcA::ObjectReaderPtr handle_of(ObjectReader& node) { return AbcA::ObjectReaderPtr(shared_from_this(), &node); }

    /// The property headers at the end of a compound's group; the table stays as long as the archive. Throws what is
    /// wrong with them.
    const PropertyTable& properties_of(const Ogawa::GroupReader& compound);

    /// Counts what the tree has grown by. check throws when `bytes` more would be more than the file can hold; add
    /// counts them.
    void check_tree_size(std::uint64_t bytes) const;
    void add_tree_size(std::uint64_t bytes) { tree_size_.fetch_add(bytes, std::memory_order_relaxed); }

    /// The same for the lengths of full names.
    void check_full_names(std::uint64_t bytes) const;
    void add_full_names(std::uint64_t bytes) { full_names_.fetch_add(bytes, std::memory_order_relaxed); }

private:
    template <class Source>
    ArchiveReader(const std::string& name, const Source& source);

    /// Reads the six children of the root group. Throws what is wrong with them.
    void read_root(const std::string& unfrozen_text);

    std::string name_;
    Ogawa::ContainerReader container_;
    std::int32_t library_version_ = 0;
    MetadataTable metadata_table_;
    std::vector<TimeSamplingEntry> time_samplings_;
    PropertyTable no_properties_;
    PropertyTableCache property_tables_;
    std::atomic<std::uint64_t> tree_size_{0};
    std::atomic<std::uint64_t> full_names_{0};
    std::unique_ptr<ObjectReader> top_;
};

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreOgawa
} // namespace Alembic
