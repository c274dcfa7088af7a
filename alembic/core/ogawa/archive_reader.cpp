/// @file
/// Opens Ogawa archives.
#include "core/ogawa/archive_reader.h"

#include "core/ogawa/limits.h"

#include <algorithm>
#include <filesystem>
#include <string>

namespace Alembic {
namespace AbcCoreOgawa {
inline namespace ALEMBIC_VERSION_NS {

namespace {

// The children of the root group.
constexpr std::uint64_t root_file_version = 0;
constexpr std::uint64_t root_library_version = 1;
constexpr std::uint64_t root_top_object = 2;
constexpr std::uint64_t root_metadata = 3;
constexpr std::uint64_t root_time_samplings = 4;
constexpr std::uint64_t root_metadata_table = 5;
constexpr std::uint64_t root_child_count = 6;

constexpr std::int32_t newest_file_version = 0;
constexpr std::int32_t oldest_library_version = 9999;

/// The number in a child of 4 bytes, `otherwise` when it has another size.
std::int32_t read_number(const Ogawa::BlockBuffer& file, const Ogawa::GroupReader& root, std::uint64_t index,
                         std::int32_t otherwise)
{
    const Ogawa::DataReader data(file, root, index);
    if (data.size() == sizeof otherwise) data.read(0, &otherwise, sizeof otherwise);
    return otherwise;
}

AbcA::MetaData read_metadata(const Ogawa::DataReader& data)
{
    std::string text(static_cast<std::size_t>(data.size()), '\0');
    data.read(0, &text[0], text.size());
    AbcA::MetaData metadata;
    metadata.deserialize(text);
    return metadata;
}

bool is_archive_root(const Ogawa::GroupReader& root)
{
    if (root.count() < root_child_count) return false;
    for (std::uint64_t i = 0; i < root_child_count; ++i)
        if (root.is_data(i) != (i != root_top_object)) return false;
    return true;
}

} // namespace

std::shared_ptr<ArchiveReader> ArchiveReader::open(const std::string& file_name,
                                                   const std::vector<std::istream*>& streams)
{
    std::shared_ptr<ArchiveReader> archive;
    try {
        archive.reset(streams.empty() ? new ArchiveReader(file_name, file_name)
                                      : new ArchiveReader(file_name, streams));
    } catch (const std::exception& reason) {
        std::error_code unknown;
        if (streams.empty() && !std::filesystem::exists(file_name, unknown) && !unknown)
            ABCA_THROW("Could not open as Ogawa file: " << file_name);
        if (streams.empty()) ABCA_THROW("Could not open as Ogawa file: " << file_name << "\n" << reason.what());
        ABCA_THROW("Could not open as Ogawa file from provided streams.\n" << reason.what());
    }
    archive->read_root(streams.empty() ? "Ogawa file not cleanly closed while being written: " + file_name
                                       : "Ogawa streams not cleanly closed while being written. ");
    return archive;
}

template <class Source>
ArchiveReader::ArchiveReader(const std::string& name, const Source& source)
    : name_(name)
    , container_(Ogawa::open_container(source))
    , property_tables_(container_.file().size())
{
}

void ArchiveReader::read_root(const std::string& unfrozen_text)
{
    if (!container_.is_frozen()) ABCA_THROW(unfrozen_text);
    const Ogawa::GroupReader& root = container_.root();
    if (!is_archive_root(root)) ABCA_THROW("Invalid Alembic file.");

    const std::int32_t file_version = read_number(file(), root, root_file_version, -1);
    if (file_version < 0 || file_version > newest_file_version)
        ABCA_THROW("Unsupported file version detected: " << file_version);
    library_version_ = read_number(file(), root, root_library_version, 0);
    if (library_version_ < oldest_library_version)
        ABCA_THROW("Unsupported Alembic version detected: " << library_version_);

    time_samplings_ = read_time_samplings(Ogawa::DataReader(file(), root, root_time_samplings));
    metadata_table_ = MetadataTable(Ogawa::DataReader(file(), root, root_metadata_table));
    const AbcA::ObjectHeader header("ABC", "/", read_metadata(Ogawa::DataReader(file(), root, root_metadata)));
    top_ = std::make_unique<ObjectReader>(*this, nullptr, header, root, root_top_object);
    top_->require_usable();
    top_->getNumChildren(); // an archive whose top cannot be read is refused now, not later
}

AbcA::TimeSamplingPtr ArchiveReader::getTimeSampling(std::uint32_t index)
{
    if (index >= time_samplings_.size()) ABCA_THROW("Invalid index provided to getTimeSampling.");
    return time_samplings_[index].sampling;
}

AbcA::index_t ArchiveReader::getMaxNumSamplesForTimeSamplingIndex(std::uint32_t index)
{
    return index < time_samplings_.size() ? time_samplings_[index].max_samples : INDEX_UNKNOWN;
}

const PropertyTable& ArchiveReader::properties_of(const Ogawa::GroupReader& compound)
{
    if (compound.count() == 0) return no_properties_;
    const Ogawa::Entry last = compound.entry(compound.count() - 1);
    if (!last.is_data()) return no_properties_;
    const Ogawa::DataReader data(file(), last);
    if (!data) ABCA_THROW("Read invalid: Property header start.");
    if (data.size() == 0) return no_properties_;

    // Most compounds have a few hundred bytes of headers, and most of those are known already.
    const HeaderContext context = {metadata_table_, time_samplings_, compound.count() - 1};
    char few[1024];
    if (data.size() <= sizeof few) {
        data.read(0, few, static_cast<std::size_t>(data.size()));
        return property_tables_.find_or_parse(std::string_view(few, static_cast<std::size_t>(data.size())), context);
    }
    std::string many(static_cast<std::size_t>(data.size()), '\0');
    data.read(0, &many[0], many.size());
    return property_tables_.find_or_parse(many, context);
}

void ArchiveReader::check_tree_size(std::uint64_t bytes) const
{
    const std::uint64_t limit = file().size();
    if (bytes > limit || tree_size_.load(std::memory_order_relaxed) > limit - bytes)
        ABCA_THROW("Read invalid: " << name_ << " has more objects than fit into its " << limit
                                    << " bytes: groups are shared between parents, or overlap.");
}

void ArchiveReader::check_full_names(std::uint64_t bytes) const
{
    const std::uint64_t limit = std::max(full_name_floor, full_name_factor * file().size());
    if (bytes > limit || full_names_.load(std::memory_order_relaxed) > limit - bytes)
        ABCA_THROW("Read invalid: the full names of the objects in " << name_ << " take more than " << limit
                                                                     << " bytes.");
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreOgawa
} // namespace Alembic
