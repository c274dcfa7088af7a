/// @file
/// Encoding of headers, field by field.
#include "header_encoding.h"

#include <algorithm>
#include <vector>

namespace Alembic {
namespace AbcCoreOgawa {
inline namespace ALEMBIC_VERSION_NS {

namespace {

// Fields of a property header's first 32 bits.
constexpr std::uint32_t kind_scalar_like_array = 3;
constexpr int width_shift = 2;
constexpr int pod_shift = 4;
constexpr std::uint32_t has_time_sampling_bit = 1u << 8;
constexpr std::uint32_t has_changed_range_bit = 1u << 9;
constexpr std::uint32_t homogeneous_bit = 1u << 10;
constexpr std::uint32_t constant_bit = 1u << 11;
constexpr int extent_shift = 12;
constexpr int metadata_shift = 20;

template <class Number>
void append_number(Number number, std::string& blob)
{
    blob.append(reinterpret_cast<const char*>(&number), sizeof number);
}

/// `width` 0, 1, 2: one, two, four bytes.
void append_sized(std::uint32_t number, std::uint32_t width, std::string& blob)
{
    blob.append(reinterpret_cast<const char*>(&number), std::size_t(1) << width);
}

std::uint32_t checked_length(const std::string& text)
{
    if (text.size() > UINT32_MAX) ABCA_THROW("A name or metadata of " << text.size() << " bytes is too long");
    return std::uint32_t(text.size());
}

} // namespace

std::uint8_t SharedMetadata::index_of(const std::string& metadata)
{
    if (metadata.empty()) return 0;
    if (metadata.size() > 255) return Ogawa::metadata_in_place;
    const auto found = indices_.find(metadata);
    if (found != indices_.end()) return found->second;
    if (indices_.size() >= Ogawa::metadata_indices) return Ogawa::metadata_in_place;
    const std::uint8_t index = std::uint8_t(indices_.size() + 1);
    indices_.emplace(metadata, index);
    encoded_ += char(metadata.size());
    encoded_ += metadata;
    return index;
}

void encode_property_header(const WrittenProperty& property, SharedMetadata& table, std::string& blob)
{
    const AbcA::PropertyHeader& header = property.header;
    const std::string& name = header.getName();
    const std::string metadata = header.getMetaData().serialize();
    const std::uint32_t name_length = checked_length(name);
    const std::uint32_t metadata_length = checked_length(metadata);
    const std::uint8_t metadata_index = table.index_of(metadata);
    const bool is_simple = header.isSimple();

    // The metadata counts even when the table holds it. A compound has neither samples nor sampling.
    const std::uint32_t largest =
        std::max({name_length, metadata_length, property.sample_count, property.time_sampling_index});
    const std::uint32_t width = largest <= 0xff ? 0 : largest <= 0xffff ? 1 : 2;

    std::uint32_t info =
        header.getPropertyType() | width << width_shift | std::uint32_t(metadata_index) << metadata_shift;
    const bool is_constant = property.first_changed == 0 && property.last_changed == 0;
    const bool changes_throughout = property.first_changed == 1 && property.last_changed == property.sample_count - 1;
    const bool has_changed_range = is_simple && !is_constant && !changes_throughout;
    const bool has_time_sampling = is_simple && property.time_sampling_index != 0;
    if (is_simple) {
        if (header.isArray() && property.has_one_element_each) info |= kind_scalar_like_array;
        info |= std::uint32_t(header.getDataType().getPod()) << pod_shift;
        info |= std::uint32_t(header.getDataType().getExtent()) << extent_shift;
        if (has_time_sampling) info |= has_time_sampling_bit;
        if (has_changed_range) info |= has_changed_range_bit;
        if (property.counts_values_as_elements) info |= homogeneous_bit;
        if (is_constant) info |= constant_bit;
    }

    append_number(info, blob);
    if (is_simple) append_sized(property.sample_count, width, blob);
    if (has_changed_range) {
        append_sized(property.first_changed, width, blob);
        append_sized(property.last_changed, width, blob);
    }
    if (has_time_sampling) append_sized(property.time_sampling_index, width, blob);
    append_sized(name_length, width, blob);
    blob += name;
    if (metadata_index == Ogawa::metadata_in_place) {
        append_sized(metadata_length, width, blob);
        blob += metadata;
    }
}

void encode_object_header(const AbcA::ObjectHeader& object, SharedMetadata& table, std::string& blob)
{
    const std::string metadata = object.getMetaData().serialize();
    const std::uint8_t metadata_index = table.index_of(metadata);
    append_number(checked_length(object.getName()), blob);
    blob += object.getName();
    append_number(metadata_index, blob);
    if (metadata_index == Ogawa::metadata_in_place) {
        append_number(checked_length(metadata), blob);
        blob += metadata;
    }
}

void encode_time_sampling(const AbcA::TimeSampling& sampling, std::uint32_t max_sample_count, std::string& blob)
{
    const std::vector<AbcA::chrono_t>& times = sampling.getStoredTimes();
    append_number(max_sample_count, blob);
    append_number<double>(sampling.getTimeSamplingType().getTimePerCycle(), blob);
    append_number(std::uint32_t(times.size()), blob);
    for (const AbcA::chrono_t time : times)
        append_number<double>(time, blob);
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreOgawa
} // namespace Alembic
