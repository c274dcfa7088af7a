/// @file
/// The samples of one simple property while it is written.
#pragma once

#include "archive_writer.h"
#include "content_hash.h"
#include "entry_list.h"
#include "sample_store.h"
#include "writer_records.h"

#include <Alembic/AbcCoreAbstract/All.h>

#include <cstdint>

namespace Alembic {
namespace AbcCoreOgawa {
inline namespace ALEMBIC_VERSION_NS {

/// Recognises repeated samples, keeps the child entries of those that have to be stored (see EntryList), and
/// accumulates the hash. `archive` and `record` outlive it.
class SampleSequence
{
public:
    SampleSequence(OgawaArchiveWriter& archive, WrittenProperty& record)
        : archive_(archive)
        , record_(record)
    {
    }

    /// Appends a sample of `pod_count` values at `data`. `dimensions` is null for a scalar. Throws, and appends
    /// nothing, for what cannot be stored and when writing fails.
    void append(const void* data, std::uint64_t pod_count, const AbcA::Dimensions* dimensions);

    /// Appends the previous sample once more.
    void append_previous();

    void set_time_sampling(std::uint32_t index);

    /// Writes the group of samples and completes the record.
    void finish();

private:
    void check_room(const AbcA::TimeSampling& sampling, std::uint64_t sample_count, const char* verb) const;
    void refer_to(const SampleStore::Stored& sample, const AbcA::Dimensions* dimensions);
    std::uint64_t store_dimensions(const AbcA::Dimensions& dimensions);

    OgawaArchiveWriter& archive_;
    WrittenProperty& record_;
    // Children of the property's group: the data of each stored sample, and for arrays its dimensions behind it.
    EntryList data_entries_;
    EntryList dimensions_entries_;
    SampleSequenceHash hash_;

    // The sample stored last. Meaningful once there is one.
    SampleStore::Stored last_;
    Util::Digest last_hashed_; ///< what the sample adds to the accumulated hash
};

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreOgawa
} // namespace Alembic
