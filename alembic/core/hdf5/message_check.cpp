/// @file
/// The stored form of links and layouts.
#include "core/hdf5/message_check.h"

#include "core/ogawa/byte_cursor.h"

#include <Alembic/AbcCoreAbstract/All.h>

#include <cstdint>
#include <cstring>

namespace Alembic {
namespace AbcCoreHDF5 {
inline namespace ALEMBIC_VERSION_NS {

namespace {

using AbcCoreOgawa::ByteCursor;

[[noreturn]] void fail(const char* what)
{
    ABCA_THROW(what);
}

/// Takes a number of `width` bytes, at most 8.
bool take_sized(ByteCursor& cursor, std::size_t width, std::uint64_t& number)
{
    std::string_view bytes;
    number = 0;
    if (width > sizeof number || !cursor.take(width, bytes)) return false;
    std::memcpy(&number, bytes.data(), width);
    return true;
}

} // namespace

void check_link(std::string_view message)
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
}

void check_layout(std::string_view message)
{
    constexpr std::uint8_t kind_chunked = 2;
    constexpr std::uint64_t chunk_limit = std::uint64_t(1) << 32; // bytes, of the format
    constexpr std::size_t address_size = 8, reserved_size = 5;
    constexpr const char* const damaged = "A layout is damaged";
    ByteCursor cursor(message);
    std::uint8_t version = 0, kind = 0, rank = 0, flags = 0, width = 4;
    std::string_view skipped;
    if (!cursor.take(version) || version < 1 || version > 4) fail(damaged);
    if (version < 3 ? !cursor.take(rank) || !cursor.take(kind) || !cursor.take(reserved_size, skipped)
                    : !cursor.take(kind))
        fail(damaged);
    if (kind != kind_chunked) return;
    if (version == 4 ? !cursor.take(flags) || !cursor.take(rank) || !cursor.take(width)
                     : (version == 3 && !cursor.take(rank)) || !cursor.take(address_size, skipped))
        fail(damaged);
    // A chunk's extent along each axis, and last the size of one value.
    std::uint64_t size = 1;
    for (int i = 0; i < rank; ++i) {
        std::uint64_t extent = 0;
        if (!take_sized(cursor, width, extent) || extent == 0 || extent >= chunk_limit) fail(damaged);
        size *= extent;
        if (size >= chunk_limit) fail(damaged);
    }
    if (rank == 0) fail(damaged);
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreHDF5
} // namespace Alembic
