/// @file
/// Parses property headers.
#include "core/hdf5/property_parsing.h"

#include "core/hdf5/attribute.h"

#include <algorithm>
#include <cstring>
#include <string>
#include <string_view>
#include <utility>

namespace Alembic {
namespace AbcCoreHDF5 {
inline namespace ALEMBIC_VERSION_NS {

namespace {

constexpr std::string_view header_ending = ".info";

// The first word of each header.
constexpr std::uint32_t kind_mask = 0x3;
constexpr std::uint32_t kind_compound = 0;
constexpr std::uint32_t kind_scalar = 1;
constexpr std::uint32_t kind_scalar_like_array = 3;
constexpr unsigned pod_shift = 2;
constexpr std::uint32_t pod_mask = 0xf;
constexpr std::uint32_t has_time_sampling = 0x40;
constexpr std::uint32_t no_repeats = 0x80;
constexpr unsigned extent_shift = 8;
constexpr std::size_t most_words = 5;

typedef std::vector<std::string> Names;

/// What listing the attributes of a group fills.
struct Listing
{
    Names names;
    std::uint64_t most_bytes; ///< of names and values together, less with each one: a damaged index may repeat some
};

herr_t take_name(hid_t, const char* name, const H5A_info_t* info, void* listing)
{
    try {
        Listing& list = *static_cast<Listing*>(listing);
        const std::uint64_t bytes = std::strlen(name) + info->data_size;
        if (bytes > list.most_bytes) return -1;
        list.most_bytes -= bytes;
        list.names.emplace_back(name);
        return 0;
    } catch (...) {
        return -1;
    }
}

/// The names of all attributes, in order.
Names attribute_names(hid_t group, std::uint64_t file_size)
{
    Listing listing = {{}, file_size};
    hsize_t position = 0;
    // Sorted here: what libhdf5 sorts it takes into a table first, which it cannot free when one turns out damaged.
    if (H5Aiterate2(group, H5_INDEX_NAME, H5_ITER_NATIVE, &position, take_name, &listing) < 0)
        throw_failed("Could not list the properties of a compound");
    std::sort(listing.names.begin(), listing.names.end());
    return std::move(listing.names);
}

/// A header that is being parsed.
struct Header
{
    hid_t group;
    const Names& attributes;
    std::string name;
    std::vector<std::uint32_t> words;

    bool has_attribute(const std::string& attribute) const
    {
        return std::binary_search(attributes.begin(), attributes.end(), attribute);
    }
    std::uint32_t info() const { return words[0]; }
    bool has_time_sampling_word() const { return (info() & has_time_sampling) != 0 && words.size() > 1; }
};

bool has_first_sample(const Header& header)
{
    const std::string first = header.name + ".smp0";
    if ((header.info() & kind_mask) == kind_scalar) return header.has_attribute(first);
    const htri_t there = H5Lexists(header.group, first.c_str(), H5P_DEFAULT);
    if (there < 0) throw_failed("Could not look for '" + first + "'");
    return there > 0;
}

AbcCoreCommon::SampleRange sample_range(const Header& header)
{
    AbcCoreCommon::SampleRange range;
    const std::size_t word_count = header.words.size() - (header.has_time_sampling_word() ? 1 : 0);
    if (word_count == 1) {
        range.count = has_first_sample(header) ? 1 : 0;
    } else if (word_count == 2) {
        range.count = header.words[1];
        if ((header.info() & no_repeats) && range.count > 0) {
            range.first_changed = 1;
            range.last_changed = range.count - 1;
        }
    } else if (word_count == 4) {
        range.count = header.words[1];
        range.first_changed = header.words[2];
        range.last_changed = header.words[3];
    } else {
        ABCA_THROW("Corrupt sampling information for property: " << header.name << ", its header has "
                                                                 << header.words.size() << " words");
    }
    if (range.first_changed > range.last_changed || range.last_changed > range.count)
        ABCA_THROW("Corrupt sampling information for property: "
                   << header.name << ", first change index: " << range.first_changed
                   << ", last change index: " << range.last_changed << ", total number of samples: " << range.count);
    return range;
}

AbcA::DataType data_type(std::uint32_t info)
{
    const std::uint32_t pod = info >> pod_shift & pod_mask;
    if (pod > AbcA::kWstringPOD) ABCA_THROW("Read invalid POD type: " << pod);
    const auto extent = static_cast<std::uint8_t>(info >> extent_shift);
    if (extent == 0) ABCA_THROW("Degenerate extent 0");
    return AbcA::DataType(static_cast<AbcA::PlainOldDataType>(pod), extent);
}

PropertyRecord parse_record(const Header& header, const TimeSamplings& time_samplings)
{
    if (header.words.empty() || header.words.size() > most_words)
        ABCA_THROW("Corrupt header of property: " << header.name << ", it has " << header.words.size() << " words");
    const AbcA::MetaData metadata = header.has_attribute(header.name + ".meta")
                                        ? read_metadata(header.group, header.name + ".meta")
                                        : AbcA::MetaData();

    PropertyRecord record;
    const std::uint32_t kind = header.info() & kind_mask;
    if (kind == kind_compound) {
        record.header = AbcA::PropertyHeader(header.name, metadata);
        return record;
    }
    const AbcA::DataType type = data_type(header.info());
    const std::uint32_t sampling = header.has_time_sampling_word() ? header.words.back() : 0;
    if (sampling >= time_samplings.size()) ABCA_THROW("Invalid index provided to getTimeSampling.");
    record.samples = sample_range(header);
    record.scalar_like = kind == kind_scalar_like_array;
    record.header =
        AbcA::PropertyHeader(header.name, kind == kind_scalar ? AbcA::kScalarProperty : AbcA::kArrayProperty, metadata,
                             type, time_samplings[sampling]);
    return record;
}

} // namespace

PropertyTable parse_properties(hid_t group, const TimeSamplings& time_samplings, std::uint64_t file_size)
{
    const Names names = attribute_names(group, file_size);
    std::vector<PropertyRecord> records;
    for (const std::string& attribute : names) {
        const std::string_view whole = attribute;
        if (whole.size() <= header_ending.size()) continue;
        const std::string_view name = whole.substr(0, whole.size() - header_ending.size());
        if (whole.substr(name.size()) != header_ending) continue;
        if (name.find('/') != name.npos) ABCA_THROW("A property has the name '" << name << "', with a slash in it");
        const auto words = read_numbers<std::uint32_t>(group, attribute);
        if (!words) ABCA_THROW("The header of property '" << name << "' is listed but not there");
        records.push_back(parse_record({group, names, std::string(name), *words}, time_samplings));
    }
    return PropertyTable(std::move(records));
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreHDF5
} // namespace Alembic
