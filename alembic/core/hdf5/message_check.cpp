/// @file
/// The stored form of links, indices, filters and layouts.
#include "core/hdf5/message_check.h"

#include "core/hdf5/stored_bytes.h"
#include "core/ogawa/byte_cursor.h"

#include <Alembic/AbcCoreAbstract/All.h>

#include <cstdint>

namespace Alembic {
namespace AbcCoreHDF5 {
inline namespace ALEMBIC_VERSION_NS {

namespace {

using AbcCoreOgawa::ByteCursor;

[[noreturn]] void fail(const char* what)
{
    ABCA_THROW(what);
}

/// Both kinds of indices: version, flags, the next number if members are numbered, then addresses.
DenseIndex check_index(std::string_view message, std::size_t number_size)
{
    constexpr std::uint8_t is_numbered = 0x01, has_numbers_tree = 0x02, known_flags = 0x03;
    constexpr const char* const damaged = "An index of links or attributes is damaged";
    ByteCursor cursor(message);
    std::uint8_t version = 0, flags = 0;
    std::string_view number;
    DenseIndex index = {nowhere, nowhere, nowhere};
    if (!cursor.take(version) || !cursor.take(flags) || version != 0 || (flags & ~known_flags) ||
        (flags & is_numbered && !cursor.take(number_size, number)) || !cursor.take(index.heap) ||
        !cursor.take(index.by_name) || (flags & has_numbers_tree && !cursor.take(index.by_order)))
        fail(damaged);
    const bool is_negative = !number.empty() && number_size == 8 && (number.back() & 0x80) != 0;
    if (is_negative || (index.heap == nowhere) != (index.by_name == nowhere) ||
        (index.heap == nowhere && index.by_order != nowhere) ||
        (index.heap != nowhere && flags & has_numbers_tree && index.by_order == nowhere))
        fail(damaged);
    return index;
}

} // namespace

DenseIndex check_link_index(std::string_view message)
{
    return check_index(message, sizeof(std::int64_t));
}

DenseIndex check_attribute_index(std::string_view message)
{
    return check_index(message, sizeof(std::uint16_t));
}

std::string_view check_link(std::string_view message)
{
    constexpr std::uint8_t name_width_mask = 0x03, has_order = 0x04, has_kind = 0x08, has_character_set = 0x10;
    constexpr std::uint8_t known_flags = 0x1f;
    constexpr std::uint8_t hard = 0, external = 64;
    constexpr const char* const damaged = "A link is damaged";
    ByteCursor cursor(message);
    std::uint8_t version = 0, flags = 0, kind = hard, character_set = 0;
    std::int64_t order = 0;
    if (!cursor.take(version) || !cursor.take(flags) || version != 1 || (flags & ~known_flags)) fail(damaged);
    if ((flags & has_kind && !cursor.take(kind)) || (flags & has_order && !cursor.take(order)) ||
        (flags & has_character_set && !cursor.take(character_set)))
        fail(damaged);
    std::uint64_t name_size = 0, target_size = 0;
    std::string_view name, target;
    if (!take_sized(cursor, std::size_t(1) << (flags & name_width_mask), name_size) || name_size == 0 ||
        !cursor.take(name_size, name))
        fail(damaged);
    if (kind != hard && !take_sized(cursor, 2, target_size)) fail(damaged);
    if (!cursor.take(kind == hard ? sizeof(std::uint64_t) : target_size, target)) fail(damaged);
    if (character_set > 1 || (kind > 1 && kind != external) || (kind != hard && target.empty())) fail(damaged);
    return name;
}

void check_filters(std::string_view message)
{
    constexpr std::uint8_t most_filters = 32;
    constexpr std::uint16_t first_nameless = 256; // in the second version known filters have no name
    constexpr std::size_t name_unit = 8, value_size = 4;
    constexpr const char* const damaged = "A list of filters is damaged";
    ByteCursor cursor(message);
    std::uint8_t version = 0, count = 0;
    std::string_view skipped;
    if (!cursor.take(version) || !cursor.take(count) || version < 1 || version > 2) fail(damaged);
    if (count == 0 || count > most_filters || (version == 1 && !cursor.take(6, skipped))) fail(damaged);
    for (int i = 0; i < count; ++i) {
        std::uint16_t filter = 0, name_size = 0, flags = 0, value_count = 0;
        std::string_view name;
        if (!cursor.take(filter)) fail(damaged);
        if ((version == 1 || filter >= first_nameless) && !cursor.take(name_size)) fail(damaged);
        if (!cursor.take(flags) || !cursor.take(value_count)) fail(damaged);
        if (version == 1 && name_size % name_unit != 0) fail(damaged);
        if (!cursor.take(name_size, name) || (name_size > 0 && name.find('\0') == name.npos)) fail(damaged);
        const std::size_t padding = version == 1 && value_count % 2 == 1 ? 1 : 0;
        if (!cursor.take((value_count + padding) * value_size, skipped)) fail(damaged);
    }
}

void check_first_fill(std::string_view message)
{
    ByteCursor cursor(message);
    std::uint32_t size = 0;
    if (!cursor.take(size) || size > cursor.left()) fail("A fill value is damaged");
}

void check_fill(std::string_view message)
{
    constexpr std::uint8_t undefined = 0x10, has_value = 0x20, known_flags = 0x3f;
    constexpr const char* const damaged = "A fill value is damaged";
    ByteCursor cursor(message);
    std::uint8_t version = 0, flags = 0, write_time = 0, is_defined = 0;
    std::uint32_t size = 0;
    if (!cursor.take(version) || !cursor.take(flags) || version < 1 || version > 3) fail(damaged);
    if (version == 3) {
        if (flags & ~known_flags || (flags & undefined && flags & has_value)) fail(damaged);
        is_defined = flags & has_value;
    } else if (!cursor.take(write_time) || !cursor.take(is_defined) || flags > 3 || write_time > 2 || is_defined > 1) {
        fail(damaged);
    }
    if (version > 1 && !is_defined) return;
    if (!cursor.take(size) || size > cursor.left()) fail(damaged);
}

std::optional<ChunkIndex> check_layout(std::string_view message)
{
    constexpr std::uint8_t kind_compact = 0, kind_chunked = 2;
    constexpr std::uint64_t chunk_limit = std::uint64_t(1) << 32; // bytes, of the format
    constexpr std::size_t reserved_size = 5;
    constexpr const char* const damaged = "A layout is damaged";
    ByteCursor cursor(message);
    std::uint8_t version = 0, kind = 0, rank = 0;
    std::uint64_t address = 0;
    std::string_view skipped;
    if (!cursor.take(version) || version < 1 || version > 4) fail(damaged);
    if (version < 3 ? !cursor.take(rank) || !cursor.take(kind) || !cursor.take(reserved_size, skipped)
                    : !cursor.take(kind))
        fail(damaged);
    if (kind > kind_chunked || (version < 3 && kind == kind_compact)) fail(damaged); // those may lie elsewhere
    if (kind == kind_compact) {
        std::uint16_t size = 0;
        if (!cursor.take(size) || size > cursor.left()) fail(damaged);
    }
    if (kind != kind_chunked) return {};
    if (version == 4)
        fail(
            "Chunks are found in a way that only later archives could use: rewrite the file with 'h5repack -f GZIP=6'");
    if ((version == 3 && !cursor.take(rank)) || !cursor.take(address)) fail(damaged);
    // A chunk's extent along each axis, and last the size of one value.
    std::uint64_t size = 1;
    std::uint32_t extent = 0;
    for (int i = 0; i < rank; ++i) {
        if (!cursor.take(extent) || extent == 0) fail(damaged);
        size *= extent;
        if (size >= chunk_limit) fail(damaged);
    }
    if (rank == 0) fail(damaged);
    return ChunkIndex{address, size, extent, rank};
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreHDF5
} // namespace Alembic
