/// @file
/// Opening an archive for writing, and its last blocks.
#include "archive_writer.h"

#include "object_writer.h"

#include <Alembic/AbcCoreOgawa/ReadWrite.h>

#include <algorithm>
#include <iostream>

namespace Alembic {
namespace AbcCoreOgawa {
inline namespace ALEMBIC_VERSION_NS {

namespace {

constexpr std::int32_t file_version = 0;
constexpr std::int32_t library_version = ALEMBIC_LIBRARY_VERSION;

AbcA::MetaData with_library_version(const AbcA::MetaData& metadata)
{
    AbcA::MetaData result = metadata;
    result.set("_ai_AlembicVersion", AbcA::GetLibraryVersion());
    result.serialize(); // throws what cannot be stored before anything is created
    return result;
}

} // namespace

OgawaArchiveWriter::OgawaArchiveWriter(std::unique_ptr<Ogawa::OutputTarget> target, const std::string& name,
                                       const AbcA::MetaData& metadata)
    : name_(name)
    , file_(std::move(target))
    , samples_(file_)
    , top_header_("ABC", "/", metadata)
{
    time_samplings_.push_back({std::make_shared<AbcA::TimeSampling>(), 0});
    file_version_entry_ = file_.append_data({{&file_version, sizeof file_version}});
    library_version_entry_ = file_.append_data({{&library_version, sizeof library_version}});
}

OgawaArchiveWriter::~OgawaArchiveWriter()
{
    if (!file_.has_failed()) finish_part([this] { write_end(); });
    if (!has_silent_failure_) return;
    finish_part([this] {
        try {
            file_.check();
        } catch (const std::exception& exception) {
            std::cerr << "Alembic: an archive is not complete and cannot be read: " << exception.what() << std::endl;
        }
    });
}

void OgawaArchiveWriter::write_end()
{
    const FinishedObject top = write_object(*this, top_header_, top_contents_);
    const std::string metadata = top_header_.getMetaData().serialize();
    const std::uint64_t metadata_entry = file_.append_data({{metadata.data(), metadata.size()}});

    std::string samplings;
    for (const TimeSamplingRecord& record : time_samplings_)
        encode_time_sampling(*record.sampling, std::uint32_t(record.max_sample_count), samplings);
    const std::uint64_t samplings_entry = file_.append_data({{samplings.data(), samplings.size()}});
    const std::string& table = shared_metadata_.encoded();
    const std::uint64_t table_entry = file_.append_data({{table.data(), table.size()}});

    file_.finish(file_.append_group(
        {file_version_entry_, library_version_entry_, top.group_entry, metadata_entry, samplings_entry, table_entry}));
}

AbcA::ObjectWriterPtr OgawaArchiveWriter::getTop()
{
    AbcA::ObjectWriterPtr top = top_.lock();
    if (!top) {
        top = std::make_shared<OgawaObjectWriter>(shared_from_this());
        top_ = top;
    }
    return top;
}

std::uint32_t OgawaArchiveWriter::addTimeSampling(const AbcA::TimeSampling& sampling)
{
    file_.check();
    const auto same = [&](const TimeSamplingRecord& record) { return *record.sampling == sampling; };
    const auto found = std::find_if(time_samplings_.begin(), time_samplings_.end(), same);
    const std::uint32_t index = std::uint32_t(found - time_samplings_.begin());
    if (found == time_samplings_.end()) time_samplings_.push_back({std::make_shared<AbcA::TimeSampling>(sampling), 0});
    return index;
}

AbcA::TimeSamplingPtr OgawaArchiveWriter::getTimeSampling(std::uint32_t index)
{
    if (index >= time_samplings_.size()) ABCA_THROW("Invalid index provided to getTimeSampling.");
    return time_samplings_[index].sampling;
}

AbcA::index_t OgawaArchiveWriter::getMaxNumSamplesForTimeSamplingIndex(std::uint32_t index)
{
    return index < time_samplings_.size() ? time_samplings_[index].max_sample_count : INDEX_UNKNOWN;
}

void OgawaArchiveWriter::setMaxNumSamplesForTimeSamplingIndex(std::uint32_t index, AbcA::index_t count)
{
    if (index >= time_samplings_.size()) return;
    time_samplings_[index].max_sample_count = std::clamp<AbcA::index_t>(count, 0, UINT32_MAX);
}

void OgawaArchiveWriter::note_sample_count(std::uint32_t time_sampling_index, std::uint32_t sample_count)
{
    AbcA::index_t& largest = time_samplings_[time_sampling_index].max_sample_count;
    largest = std::max<AbcA::index_t>(largest, sample_count);
}

void OgawaArchiveWriter::release_parent(std::shared_ptr<OgawaArchiveWriter> archive,
                                        std::shared_ptr<void> parent) noexcept
{
    std::vector<std::shared_ptr<void>>& waiting = archive->parents_to_release_;
    try {
        waiting.push_back(std::move(parent));
    } catch (const std::exception&) { // no memory to wait: `parent` goes right away
        return;
    }
    if (archive->is_releasing_) return;
    archive->is_releasing_ = true;
    while (!waiting.empty()) {
        std::shared_ptr<void> next = std::move(waiting.back());
        waiting.pop_back();
        next.reset(); // may add another one
    }
    archive->is_releasing_ = false;
}

WriteArchive::WriteArchive() = default;

AbcA::ArchiveWriterPtr WriteArchive::operator()(const std::string& fileName, const AbcA::MetaData& metaData) const
{
    const AbcA::MetaData metadata = with_library_version(metaData);
    return std::make_shared<OgawaArchiveWriter>(Ogawa::open_output_file(fileName), fileName, metadata);
}

AbcA::ArchiveWriterPtr WriteArchive::operator()(std::ostream* stream, const AbcA::MetaData& metaData) const
{
    if (stream == nullptr) ABCA_THROW("Could not use the given ostream.");
    const AbcA::MetaData metadata = with_library_version(metaData);
    return std::make_shared<OgawaArchiveWriter>(Ogawa::open_output_stream(*stream), std::string(), metadata);
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreOgawa
} // namespace Alembic
