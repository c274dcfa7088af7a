/// @file
/// Parses property headers.
#include "core/ogawa/property_table.h"

#include "core/ogawa/byte_cursor.h"

namespace Alembic {
namespace AbcCoreOgawa {
inline namespace ALEMBIC_VERSION_NS {

namespace {

// The info word that starts each header.
constexpr std::uint32_t kind_mask = 0x3;
constexpr std::uint32_t kind_scalar = 1;
constexpr std::uint32_t kind_scalar_like_array = 3;
constexpr unsigned size_hint_shift = 2;
constexpr std::uint32_t size_hint_mask = 0x3;
constexpr unsigned pod_shift = 4;
constexpr std::uint32_t pod_mask = 0xf;
constexpr std::uint32_t has_time_sampling = 0x100;
constexpr std::uint32_t has_changed_range = 0x200;
constexpr std::uint32_t is_constant = 0x800;
constexpr unsigned extent_shift = 12;
constexpr unsigned metadata_shift = 20;

/// Takes a number of the width that the header's size hint gives.
std::uint32_t take_sized(ByteCursor& cursor, std::uint32_t size_hint)
{
    std::uint8_t narrow = 0;
    std::uint16_t middle = 0;
    std::uint32_t wide = 0;
    if (size_hint == 0 && cursor.take(narrow)) return narrow;
    if (size_hint == 1 && cursor.take(middle)) return middle;
    if (size_hint == 2 && cursor.take(wide)) return wide;
    ABCA_THROW("Read invalid: Property Header bad uint32 hint.");
}

SampleRange take_samples(ByteCursor& cursor, std::uint32_t info, std::uint32_t size_hint)
{
    SampleRange range;
    range.count = take_sized(cursor, size_hint);
    if (info & has_changed_range) {
        range.first_changed = take_sized(cursor, size_hint);
        range.last_changed = take_sized(cursor, size_hint);
    } else if (!(info & is_constant)) {
        range.first_changed = 1;
        range.last_changed = range.count - 1;
    }
    if (range.count == 0) return {};
    const bool constant = range.first_changed == 0 && range.last_changed == 0;
    if (!constant && (range.first_changed > range.last_changed || range.last_changed >= range.count))
        ABCA_THROW("Read invalid: Property Header changes from sample " << range.first_changed << " to "
                                                                        << range.last_changed << " of " << range.count);
    return range;
}

AbcA::DataType data_type_of(std::uint32_t info)
{
    const std::uint32_t pod = info >> pod_shift & pod_mask;
    if (pod > AbcA::kWstringPOD) ABCA_THROW("Read invalid POD type: " << pod);
    const auto extent = static_cast<std::uint8_t>(info >> extent_shift);
    if (extent == 0) ABCA_THROW("Read invalid: Property Header extent 0.");
    return AbcA::DataType(static_cast<AbcA::PlainOldDataType>(pod), extent);
}

PropertyRecord take_record(ByteCursor& cursor, const HeaderContext& context)
{
    std::uint32_t info = 0;
    if (!cursor.take(info)) ABCA_THROW("Read invalid: Property header start.");
    const std::uint32_t kind = info & kind_mask;
    const std::uint32_t size_hint = info >> size_hint_shift & size_hint_mask;

    PropertyRecord record;
    AbcA::DataType data_type;
    AbcA::TimeSamplingPtr time_sampling;
    if (kind != AbcA::kCompoundProperty) {
        data_type = data_type_of(info);
        record.samples = take_samples(cursor, info, size_hint);
        const std::uint32_t index = info & has_time_sampling ? take_sized(cursor, size_hint) : 0;
        if (index >= context.time_samplings.size()) ABCA_THROW("Invalid index provided to getTimeSampling.");
        time_sampling = context.time_samplings[index].sampling;
        record.scalar_like = kind == kind_scalar_like_array;
    }

    std::string_view name;
    const std::uint32_t name_size = take_sized(cursor, size_hint);
    if (name_size == 0 || !cursor.take(name_size, name)) ABCA_THROW("Read invalid: Property Headers name.");

    const auto metadata_index = static_cast<std::uint8_t>(info >> metadata_shift);
    std::string_view metadata_text;
    if (metadata_index == Ogawa::metadata_in_place && !cursor.take(take_sized(cursor, size_hint), metadata_text))
        ABCA_THROW("Read invalid: Property Header MetaData string.");
    AbcA::MetaData parsed;
    const AbcA::MetaData* const metadata = context.metadata.find(metadata_index, metadata_text, parsed);
    if (!metadata) ABCA_THROW("Read invalid: Property Header MetaData index.");

    const AbcA::PropertyType type = kind == AbcA::kCompoundProperty ? AbcA::kCompoundProperty
                                    : kind == kind_scalar           ? AbcA::kScalarProperty
                                                                    : AbcA::kArrayProperty;
    record.header = AbcA::PropertyHeader(std::string(name), type, *metadata, data_type, time_sampling);
    return record;
}

std::vector<PropertyRecord> parse_records(std::string_view headers, const HeaderContext& context)
{
    std::vector<PropertyRecord> records;
    ByteCursor cursor(headers);
    while (cursor.left() > 0) {
        if (records.size() == context.most_properties)
            ABCA_THROW("Read invalid: a compound has headers for more properties than the " << context.most_properties
                                                                                            << " in its group.");
        records.push_back(take_record(cursor, context));
    }
    return records;
}

} // namespace

PropertyTable::PropertyTable(std::string_view headers, const HeaderContext& context)
    : AbcCoreCommon::PropertyTable(parse_records(headers, context))
{
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreOgawa
} // namespace Alembic
