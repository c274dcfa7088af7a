/// @file
/// An HDF5 archive open for reading: owns the file and all that has been parsed of it.
#pragma once

#include "core/hdf5/file.h"
#include "core/hdf5/object_reader.h"
#include "core/hdf5/property_parsing.h"

#include <cstdint>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

namespace Alembic {
namespace AbcCoreHDF5 {
inline namespace ALEMBIC_VERSION_NS {

/// Any number of threads may use it and what it hands out: each call takes a LibraryLock where it needs libhdf5.
class ArchiveReader final : public AbcA::ArchiveReader, public std::enable_shared_from_this<ArchiveReader>
{
public:
    /// Opens `file_name`. Throws what is wrong with it. `cache`, which may be null, is asked for array samples.
    static std::shared_ptr<ArchiveReader> open(const std::string& file_name, AbcA::ReadArraySampleCachePtr cache);

    const std::string& getName() const override { return name_; }
    const AbcA::MetaData& getMetaData() const override { return top_->getHeader().getMetaData(); }
    AbcA::ObjectReaderPtr getTop() override { return handle_of(*top_); }
    AbcA::ReadArraySampleCachePtr getReadArraySampleCachePtr() override { return std::atomic_load(&cache_); }
    void setReadArraySampleCachePtr(AbcA::ReadArraySampleCachePtr cache) override { std::atomic_store(&cache_, cache); }
    std::uint32_t getNumTimeSamplings() override { return static_cast<std::uint32_t>(time_samplings_.size()); }
    AbcA::TimeSamplingPtr getTimeSampling(std::uint32_t index) override;
    AbcA::index_t getMaxNumSamplesForTimeSamplingIndex(std::uint32_t index) override;
    std::int32_t getArchiveVersion() override { return library_version_; }
    AbcA::ArchiveReaderPtr asArchivePtr() override { return shared_from_this(); }

    /// The caller holds a LibraryLock.
    File& file() { return file_; }

    /// A pointer to a node of the tree that keeps the archive, and with it the node and its parents, alive.
    AbcA::ObjectReaderPtr handle_of(ObjectReader& node) { return AbcA::ObjectReaderPtr(shared_from_this(), &node); }

    /// The properties of a compound, whose group may be none; the table stays as long as the archive. The caller holds
    /// a LibraryLock. Throws what is wrong with them.
    const PropertyTable& properties_of(const Handle& group);

    /// Counts what the tree grows by: links of groups, and bytes of full names. The caller holds a LibraryLock. Throws
    /// when it is more than the file can hold.
    void count_links(std::uint64_t links);
    void count_full_name(std::uint64_t bytes);

private:
    explicit ArchiveReader(const std::string& name);

    void read_time_samplings(hid_t root);

    const std::string name_;
    File file_; ///< closed last: all other handles are within it
    std::int32_t library_version_ = 0;
    TimeSamplings time_samplings_;
    std::vector<std::int64_t> max_samples_; ///< per time sampling; may have fewer
    AbcA::ReadArraySampleCachePtr cache_;
    const PropertyTable no_properties_;
    std::unordered_map<haddr_t, std::unique_ptr<const PropertyTable>> property_tables_; ///< by the group's place
    std::uint64_t links_ = 0;
    std::uint64_t full_names_ = 0;
    std::unique_ptr<ObjectReader> top_;
};

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreHDF5
} // namespace Alembic
