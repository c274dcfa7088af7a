/// @file
/// Which samples of a property are stored, and where its group refers to them.
#include "sample_sequence.h"

namespace Alembic {
namespace AbcCoreOgawa {
inline namespace ALEMBIC_VERSION_NS {

namespace {

/// What a sample adds to the accumulated hash: for arrays the shape counts.
Util::Digest hashed_with_shape(const Util::Digest& digest, const AbcA::Dimensions* dimensions)
{
    if (dimensions == nullptr || dimensions->rank() == 0) return digest;
    return ContentHash().add(dimensions->rootPtr(), dimensions->rank() * sizeof(std::uint64_t)).add(digest).result();
}

} // namespace

void SampleSequence::check_room(const AbcA::TimeSampling& sampling, std::uint64_t sample_count, const char* verb) const
{
    if (sampling.getTimeSamplingType().isAcyclic() && sample_count > sampling.getNumStoredTimes())
        ABCA_THROW("Can not " << verb << " more samples than we have times for when using Acyclic sampling.");
    if (sample_count > UINT32_MAX)
        ABCA_THROW("Property '" << record_.header.getName() << "' cannot have more than " << UINT32_MAX << " samples");
}

std::uint64_t SampleSequence::store_dimensions(const AbcA::Dimensions& dimensions)
{
    const Util::PlainOldDataType pod = record_.header.getDataType().getPod();
    const bool is_text = pod == Util::kStringPOD || pod == Util::kWstringPOD;
    if (dimensions.rank() <= 1 && !is_text) return Ogawa::empty_data; // readers divide the size
    // Nothing has rank 0 in an archive: that is no element in a row.
    const AbcA::Dimensions stored = dimensions.rank() == 0 ? AbcA::Dimensions(0) : dimensions;
    return archive_.file().append_data({{stored.rootPtr(), stored.rank() * sizeof(std::uint64_t)}});
}

void SampleSequence::refer_to(const SampleStore::Stored& sample, const AbcA::Dimensions* dimensions)
{
    const std::uint64_t dimensions_entry = dimensions != nullptr ? store_dimensions(*dimensions) : Ogawa::empty_data;

    // Repeats between two changes are stored as further references to the sample before.
    const std::uint32_t index = record_.sample_count;
    const std::uint32_t repeats = record_.first_changed != 0 ? index - record_.last_changed - 1 : 0;
    try {
        data_entries_.append(data_entries_.back(), repeats);
        data_entries_.append(sample.entry);
        if (dimensions != nullptr) {
            dimensions_entries_.append(dimensions_entries_.back(), repeats);
            dimensions_entries_.append(dimensions_entry);
        }
    } catch (const std::exception& exception) { // no memory: the lists may not fit together any more
        archive_.file().give_up(exception.what());
        throw;
    }

    if (record_.first_changed == 0) record_.first_changed = index; // stays 0 for the first sample
    record_.last_changed = index;
    last_ = sample;
    last_hashed_ = hashed_with_shape(sample.key.digest, dimensions);
}

void SampleSequence::append(const void* data, std::uint64_t pod_count, const AbcA::Dimensions* dimensions)
{
    archive_.file().check();
    check_room(*record_.header.getTimeSampling(), std::uint64_t(record_.sample_count) + 1, "write");
    const AbcA::DataType& type = record_.header.getDataType();
    const Ogawa::Bytes encoded = archive_.samples().encode(data, type.getPod(), pod_count, record_.header.getName());
    const SampleStore::Stored* const last = record_.sample_count != 0 ? &last_ : nullptr;
    const SampleStore::Stored sample = archive_.samples().store(encoded, type.getPod(), last);
    // Intended: the same values in another shape are a repeat, and the shape is that of the sample stored last.
    if (last == nullptr || sample.key != last->key) {
        refer_to(sample, dimensions);
        if (dimensions != nullptr && pod_count != type.getExtent()) record_.has_one_element_each = false;
        if (dimensions != nullptr && pod_count != 0 && type.getExtent() > 1) record_.counts_values_as_elements = false;
    }
    hash_.add(last_hashed_);
    ++record_.sample_count;
}

void SampleSequence::append_previous()
{
    archive_.file().check();
    if (record_.sample_count == 0) ABCA_THROW("Can't set from previous sample before any samples have been written");
    check_room(*record_.header.getTimeSampling(), std::uint64_t(record_.sample_count) + 1, "set");
    hash_.add(last_hashed_);
    ++record_.sample_count;
}

void SampleSequence::set_time_sampling(std::uint32_t index)
{
    archive_.file().check();
    const AbcA::TimeSamplingPtr sampling = archive_.getTimeSampling(index);
    check_room(*sampling, record_.sample_count, "set");
    record_.header.setTimeSampling(sampling);
    record_.time_sampling_index = index;
}

void SampleSequence::finish()
{
    const AbcA::PropertyHeader& header = record_.header;
    EntryList::Reader data(data_entries_);
    EntryList::Reader dimensions(dimensions_entries_);
    const bool is_array = header.isArray();
    bool is_dimensions = false;
    record_.group_entry = archive_.file().append_group(data_entries_.size() + dimensions_entries_.size(), [&] {
        const std::uint64_t entry = is_dimensions ? dimensions.next() : data.next();
        is_dimensions = is_array && !is_dimensions;
        return entry;
    });
    const bool is_constant = record_.sample_count > 0 && record_.first_changed == 0;
    archive_.note_sample_count(record_.time_sampling_index, is_constant ? 1 : record_.sample_count);

    ContentHash hash;
    hash.add(header.getName()).add(header.getMetaData().serialize());
    hash.add_number(std::uint8_t(header.getDataType().getPod())).add_number(header.getDataType().getExtent());
    if (header.isScalar()) hash.add_number(std::uint8_t(0));
    hash.add(*header.getTimeSampling());
    if (hash_.has_samples()) hash.add(hash_.result());
    record_.hash = hash.result();
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreOgawa
} // namespace Alembic
