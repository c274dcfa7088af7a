/// @file
/// Opens HDF5 archives.
#include "core/hdf5/archive_reader.h"

#include "core/hdf5/attribute.h"
#include "core/hdf5/limits.h"

#include <algorithm>
#include <utility>

namespace Alembic {
namespace AbcCoreHDF5 {
inline namespace ALEMBIC_VERSION_NS {

namespace {

constexpr std::int32_t file_version = -8;
constexpr std::int32_t missing_file_version = -2147483647;
constexpr std::int32_t missing_library_version = 9999;
constexpr std::uint32_t acyclic = 0xffffffff;

AbcA::TimeSamplingType type_of(std::optional<std::uint32_t> samples_per_cycle, std::optional<double> time_per_cycle)
{
    if (!samples_per_cycle) return AbcA::TimeSamplingType(*time_per_cycle);
    if (*samples_per_cycle == acyclic) return AbcA::TimeSamplingType(AbcA::TimeSamplingType::kAcyclic);
    // Intended: with one sample per cycle the time per cycle is 1, whatever is stored.
    if (*samples_per_cycle == 1) return AbcA::TimeSamplingType(1.0);
    return AbcA::TimeSamplingType(*samples_per_cycle, time_per_cycle.value_or(1.0));
}

} // namespace

std::shared_ptr<ArchiveReader> ArchiveReader::open(const std::string& file_name, AbcA::ReadArraySampleCachePtr cache)
{
    const LibraryLock lock;
    std::shared_ptr<ArchiveReader> archive(new ArchiveReader(file_name));
    archive->cache_ = std::move(cache);
    return archive;
}

ArchiveReader::ArchiveReader(const std::string& name)
    : name_(name)
    , file_(name)
{
    const Handle root = file_.open_root();

    const std::int32_t version = read_number<std::int32_t>(root.id(), "abc_version").value_or(missing_file_version);
    if (version != file_version) ABCA_THROW("Unsupported file version detected: " << version);
    library_version_ = read_number<std::int32_t>(root.id(), "abc_release_version").value_or(missing_library_version);
    read_time_samplings(root.id());

    const Handle top = file_.open_linked(root.id(), "ABC", H5I_GROUP);
    if (!top) ABCA_THROW("Invalid Alembic file: " << name << " has no group 'ABC'");
    const AbcA::ObjectHeader header("ABC", "/", read_metadata(top.id(), ".prop.meta"));
    top_ = std::make_unique<ObjectReader>(*this, nullptr, header, address_of(top.id()));
    top_->getNumChildren(); // an archive whose top cannot be read is refused now, not later
}

void ArchiveReader::read_time_samplings(hid_t root)
{
    time_samplings_.push_back(std::make_shared<AbcA::TimeSampling>()); // the identity, which is not stored
    for (unsigned number = 1;; ++number) {
        const std::string prefix = std::to_string(number);
        const auto samples_per_cycle = read_number<std::uint32_t>(root, prefix + ".tspc");
        const auto time_per_cycle = read_number<double>(root, prefix + ".ttpc");
        if (!samples_per_cycle && !time_per_cycle) break;
        const auto times = read_numbers<double>(root, prefix + ".time");
        if (!times) ABCA_THROW("Invalid Alembic file: time sampling " << number << " has no times");
        time_samplings_.push_back(
            std::make_shared<AbcA::TimeSampling>(type_of(samples_per_cycle, time_per_cycle), *times));
    }
    if (auto max_samples = read_numbers<std::int64_t>(root, "abc_max_samples")) max_samples_ = std::move(*max_samples);
}

AbcA::TimeSamplingPtr ArchiveReader::getTimeSampling(std::uint32_t index)
{
    if (index >= time_samplings_.size()) ABCA_THROW("Invalid index provided to getTimeSampling.");
    return time_samplings_[index];
}

AbcA::index_t ArchiveReader::getMaxNumSamplesForTimeSamplingIndex(std::uint32_t index)
{
    return index < max_samples_.size() ? max_samples_[index] : INDEX_UNKNOWN;
}

const PropertyTable& ArchiveReader::properties_of(const Handle& group)
{
    if (!group) return no_properties_;
    std::unique_ptr<const PropertyTable>& table = property_tables_[address_of(group.id())];
    if (!table)
        table = std::make_unique<const PropertyTable>(parse_properties(group.id(), time_samplings_, file_.size()));
    return *table;
}

void ArchiveReader::count_links(std::uint64_t links)
{
    links_ += links;
    if (links_ > file_.size() / link_bytes)
        ABCA_THROW("Read invalid: " << name_ << " has more objects than fit into its " << file_.size()
                                    << " bytes: groups are shared between parents.");
}

void ArchiveReader::count_full_name(std::uint64_t bytes)
{
    full_names_ += bytes;
    const std::uint64_t limit = std::max(full_name_floor, full_name_factor * file_.size());
    if (full_names_ > limit)
        ABCA_THROW("Read invalid: the full names of the objects in " << name_ << " take more than " << limit
                                                                     << " bytes.");
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreHDF5
} // namespace Alembic
