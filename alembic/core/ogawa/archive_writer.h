/// @file
/// An Ogawa archive that is being written.
#pragma once

#include "header_encoding.h"
#include "ogawa/file_writer.h"
#include "sample_store.h"
#include "writer_records.h"

#include <Alembic/AbcCoreAbstract/All.h>

#include <exception>
#include <memory>
#include <string>
#include <vector>

namespace Alembic {
namespace AbcCoreOgawa {
inline namespace ALEMBIC_VERSION_NS {

/// Owns what lives as long as the file: the container, the stored samples, time samplings, shared metadata, and what is
/// known of the top object. Everything made in the archive keeps it alive; its destructor completes the file.
class OgawaArchiveWriter final : public AbcA::ArchiveWriter, public std::enable_shared_from_this<OgawaArchiveWriter>
{
public:
    /// `name` is the file's, empty for a stream; `metadata` is the top object's.
    OgawaArchiveWriter(std::unique_ptr<Ogawa::OutputTarget> target, const std::string& name,
                       const AbcA::MetaData& metadata);
    /// Completes the file, or, after a failure, leaves it marked as incomplete. A failure that no call could report
    /// any more is printed to std::cerr.
    ~OgawaArchiveWriter() override;

    const std::string& getName() const override { return name_; }
    const AbcA::MetaData& getMetaData() const override { return top_header_.getMetaData(); }
    AbcA::ObjectWriterPtr getTop() override;
    AbcA::ArchiveWriterPtr asArchivePtr() override { return shared_from_this(); }

    std::uint32_t addTimeSampling(const AbcA::TimeSampling& sampling) override;
    AbcA::TimeSamplingPtr getTimeSampling(std::uint32_t index) override;
    std::uint32_t getNumTimeSamplings() override { return std::uint32_t(time_samplings_.size()); }
    AbcA::index_t getMaxNumSamplesForTimeSamplingIndex(std::uint32_t index) override;
    /// An index that does not exist is ignored.
    void setMaxNumSamplesForTimeSamplingIndex(std::uint32_t index, AbcA::index_t count) override;

    Ogawa::FileWriter& file() { return file_; }
    SampleStore& samples() { return samples_; }
    SharedMetadata& shared_metadata() { return shared_metadata_; }
    const AbcA::ObjectHeader& top_header() const { return top_header_; }
    ObjectContents& top_contents() { return top_contents_; }

    /// Takes into account that a property with this time sampling is finished with `sample_count` samples.
    void note_sample_count(std::uint32_t time_sampling_index, std::uint32_t sample_count);

    /// For destructors: lets go of the parent of what is being destroyed. A long chain of parents that all end with
    /// their last child is released one after the other, not one inside of the other.
    static void release_parent(std::shared_ptr<OgawaArchiveWriter> archive, std::shared_ptr<void> parent) noexcept;

    /// For destructors: runs `operation`; what it throws makes the archive fail.
    template <class Operation>
    void finish_part(Operation operation) noexcept
    {
        const bool has_failed_before = file_.has_failed();
        try {
            operation();
        } catch (const std::exception& exception) {
            file_.give_up(exception.what());
            has_silent_failure_ = has_silent_failure_ || !has_failed_before;
        }
    }

private:
    struct TimeSamplingRecord
    {
        AbcA::TimeSamplingPtr sampling;
        AbcA::index_t max_sample_count = 0; ///< of the properties finished so far
    };

    void write_end();

    std::string name_;
    Ogawa::FileWriter file_;
    SampleStore samples_;
    SharedMetadata shared_metadata_;
    std::vector<TimeSamplingRecord> time_samplings_;
    AbcA::ObjectHeader top_header_;
    ObjectContents top_contents_;
    std::weak_ptr<AbcA::ObjectWriter> top_;
    std::uint64_t file_version_entry_ = 0;
    std::uint64_t library_version_entry_ = 0;
    std::vector<std::shared_ptr<void>> parents_to_release_;
    bool is_releasing_ = false;
    bool has_silent_failure_ = false; ///< a failure was met where nothing could be thrown
};

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreOgawa
} // namespace Alembic
