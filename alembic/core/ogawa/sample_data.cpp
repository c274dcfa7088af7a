/// @file
/// Reads stored samples.
#include "core/ogawa/sample_data.h"

#include "core/ogawa/pod_conversion.h"

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

namespace Alembic {
namespace AbcCoreOgawa {
inline namespace ALEMBIC_VERSION_NS {

namespace {

constexpr std::size_t chunk_size = 16 * 1024; ///< bytes on the stack; a multiple of every number's size

/// The width of one stored unit: a number, or a character of text.
std::uint64_t unit_size(AbcA::PlainOldDataType pod)
{
    if (pod == AbcA::kStringPOD) return 1;
    return pod == AbcA::kWstringPOD ? sizeof(std::uint32_t) : AbcA::PODNumBytes(pod);
}

/// Calls `consume(units, count)` with all stored characters, some thousands at a time.
template <class Unit, class Consume>
void for_each_chunk(const Ogawa::DataReader& data, const Consume& consume)
{
    Unit units[chunk_size / sizeof(Unit)];
    const std::uint64_t end = Ogawa::digest_size + payload_size(data) / sizeof(Unit) * sizeof(Unit);
    for (std::uint64_t at = Ogawa::digest_size; at < end;) {
        const auto size = static_cast<std::size_t>(std::min<std::uint64_t>(end - at, chunk_size));
        data.read(at, units, size);
        consume(units, size / sizeof(Unit));
        at += size;
    }
}

template <class Unit>
std::uint64_t count_zeros(const Ogawa::DataReader& data)
{
    std::uint64_t zeros = 0;
    for_each_chunk<Unit>(data, [&zeros](const Unit* units, std::size_t count) {
        zeros += static_cast<std::uint64_t>(std::count(units, units + count, Unit(0)));
    });
    return zeros;
}

std::uint64_t stored_text_count(const Ogawa::DataReader& data, AbcA::PlainOldDataType pod)
{
    return pod == AbcA::kStringPOD ? count_zeros<char>(data) : count_zeros<std::uint32_t>(data);
}

/// Splits the stored characters at their zeros into `count` texts.
template <class Unit, class Text>
void split_text(const Ogawa::DataReader& data, Text* texts, std::uint64_t count)
{
    AbcCoreCommon::TextSplitter<Unit, Text> splitter(texts, count);
    for_each_chunk<Unit>(data, [&splitter](const Unit* units, std::size_t size) { splitter.add(units, size); });
}

/// The product of the dimensions, or more than any file holds when it is.
std::uint64_t point_count(const AbcA::Dimensions& dimensions)
{
    std::uint64_t product = dimensions.rank() > 0 ? 1 : 0;
    for (std::size_t i = 0; i < dimensions.rank(); ++i)
        if (__builtin_mul_overflow(product, dimensions[i], &product)) return ~std::uint64_t(0);
    return product;
}

/// Whether `points` elements of `type` are what `payload` bytes hold.
bool fits(std::uint64_t points, std::uint64_t payload, const AbcA::DataType& type)
{
    std::uint64_t bytes = 0;
    if (__builtin_mul_overflow(points, unit_size(type.getPod()) * type.getExtent(), &bytes)) return false;
    return is_text(type.getPod()) ? bytes <= payload : bytes == payload;
}

} // namespace

void require_data(const Ogawa::DataReader& data)
{
    if (!data) ABCA_THROW("ReadData invalid: Null IDataPtr.");
}

std::uint64_t payload_size(const Ogawa::DataReader& data)
{
    if (data.size() > 0 && data.size() < Ogawa::digest_size)
        ABCA_THROW("Incorrect data, expected to be empty or to have a key and data");
    return data.size() > 0 ? data.size() - Ogawa::digest_size : 0;
}

std::uint64_t guess_point_count(const Ogawa::DataReader& data, const AbcA::DataType& type)
{
    if (is_text(type.getPod())) return stored_text_count(data, type.getPod()) / type.getExtent();
    const std::uint64_t element = type.getNumBytes();
    return payload_size(data) / element + (payload_size(data) % element != 0);
}

AbcA::Dimensions read_dimensions(const Ogawa::DataReader& data, const Ogawa::DataReader& stored,
                                 const AbcA::DataType& type)
{
    if (data.size() < Ogawa::digest_size) return AbcA::Dimensions(std::uint64_t(0));
    const auto rank = static_cast<std::size_t>(stored.size() / sizeof(std::uint64_t));
    if (rank > 0) {
        AbcA::Dimensions dimensions;
        dimensions.setRank(rank);
        stored.read(0, dimensions.rootPtr(), rank * sizeof(std::uint64_t));
        if (fits(point_count(dimensions), payload_size(data), type)) return dimensions;
    }
    return AbcA::Dimensions(guess_point_count(data, type));
}

void read_array(const Ogawa::DataReader& data, const AbcA::DataType& type, std::uint64_t points, void* into)
{
    if (is_text(type.getPod())) {
        read_text(data, type.getPod(), into, points * type.getExtent());
        return;
    }
    read_array_part(data, type, 0, points, into);
}

void read_array_part(const Ogawa::DataReader& data, const AbcA::DataType& type, std::uint64_t first,
                     std::uint64_t points, void* into)
{
    const std::uint64_t stored = payload_size(data);
    const std::uint64_t begin = first * type.getNumBytes();
    const std::uint64_t wanted = points * type.getNumBytes();
    const std::uint64_t there = begin < stored ? std::min(stored - begin, wanted) : 0;
    data.read(data.size() - stored + std::min(begin, stored), into, static_cast<std::size_t>(there));
    if (there < wanted) // the bytes end inside an element: the rest of it reads as zero
        std::memset(static_cast<char*>(into) + there, 0, static_cast<std::size_t>(wanted - there));
}

void read_array_as(const Ogawa::DataReader& data, const AbcA::DataType& type, std::uint64_t points, void* into,
                   AbcA::PlainOldDataType pod)
{
    const std::uint64_t from_size = unit_size(type.getPod());
    const std::uint64_t to_size = unit_size(pod);
    const std::uint64_t stored = payload_size(data);
    const std::uint64_t all = points * type.getNumBytes();
    alignas(8) char chunk[chunk_size];
    auto* target = static_cast<char*>(into);
    for (std::uint64_t at = 0; at < all; at += chunk_size) {
        const auto size = static_cast<std::size_t>(std::min<std::uint64_t>(all - at, chunk_size));
        const auto there = static_cast<std::size_t>(at < stored ? std::min<std::uint64_t>(stored - at, size) : 0);
        data.read(Ogawa::digest_size + std::min(at, stored), chunk, there);
        std::memset(chunk + there, 0, size - there);
        const auto count = static_cast<std::size_t>(size / from_size);
        convert_numbers(type.getPod(), chunk, pod, target, count);
        target += count * to_size;
    }
}

void read_text(const Ogawa::DataReader& data, AbcA::PlainOldDataType pod, void* into, std::uint64_t count)
{
    if (pod == AbcA::kStringPOD)
        split_text<char>(data, static_cast<std::string*>(into), count);
    else
        split_text<std::uint32_t>(data, static_cast<std::wstring*>(into), count);
}

void require_text_count(const Ogawa::DataReader& data, AbcA::PlainOldDataType pod, std::uint64_t count)
{
    const std::uint64_t stored = stored_text_count(data, pod);
    if (stored < count) ABCA_THROW("Incorrect data, expected " << count << " strings, got: " << stored);
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreOgawa
} // namespace Alembic
