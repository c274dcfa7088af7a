/// @file
/// The stored form of attributes, and of the types and spaces that data sets have, too.
#include "core/hdf5/message_check.h"

#include "core/ogawa/byte_cursor.h"

#include <Alembic/AbcCoreAbstract/All.h>

#include <cstdint>
#include <string>

namespace Alembic {
namespace AbcCoreHDF5 {
inline namespace ALEMBIC_VERSION_NS {

namespace {

using AbcCoreOgawa::ByteCursor;

[[noreturn]] void fail(std::string_view name, const char* reason)
{
    if (name.empty()) ABCA_THROW("A data set or a nameless attribute is damaged: " << reason);
    ABCA_THROW("Attribute '" << name << "' is damaged: " << reason);
}

/// The first byte of flags of a number: little-endian, known padding and kind of mantissa, nothing else set.
bool are_number_flags(bool is_real, std::uint8_t flags)
{
    constexpr std::uint8_t whole_known = 0x0e;                 // padding, and whether there is a sign
    constexpr std::uint8_t real_known = 0x3e, mantissa = 0x30; // padding, kind of mantissa
    if (!is_real) return (flags & ~whole_known) == 0;
    return (flags & ~real_known) == 0 && (flags & mantissa) != mantissa;
}

/// Bytes of one value of the type that is stored.
std::uint64_t check_stored_type(std::string_view stored, std::string_view name)
{
    constexpr unsigned whole_number = 0, real_number = 1, text = 3;
    constexpr std::size_t real_properties = 12, whole_properties = 4;
    constexpr std::uint32_t most_number_bytes = 8;
    ByteCursor cursor(stored);
    std::uint8_t class_and_version = 0, flags[3] = {};
    std::uint32_t size = 0;
    if (!cursor.take(class_and_version) || !cursor.take(flags) || !cursor.take(size)) fail(name, "its type is cut");
    const unsigned version = class_and_version >> 4, kind = class_and_version & 0xf;
    if (version < 1 || version > 3 || size == 0) fail(name, "its type is unknown");
    if (kind == text) {
        constexpr std::uint8_t most_paddings = 2, most_character_sets = 1;
        if ((flags[0] & 0xf) > most_paddings || flags[0] >> 4 > most_character_sets) fail(name, "its type is unknown");
        return size;
    }
    if (kind != whole_number && kind != real_number) fail(name, "its type is not one that archives use");

    if (!are_number_flags(kind == real_number, flags[0])) fail(name, "its type is unknown");
    std::uint16_t first_bit = 0, bit_count = 0;
    if (cursor.left() < (kind == real_number ? real_properties : whole_properties)) fail(name, "its type is cut");
    cursor.take(first_bit);
    cursor.take(bit_count);
    if (size > most_number_bytes || bit_count == 0 || first_bit + bit_count > size * 8)
        fail(name, "its type is unknown");
    if (kind == real_number) {
        std::uint8_t exponent[2] = {}, mantissa[2] = {}; // the first bit and the number of bits of each
        cursor.take(exponent);
        cursor.take(mantissa);
        const unsigned bits = first_bit + bit_count;
        if (exponent[0] + exponent[1] > bits || mantissa[0] + mantissa[1] > bits || flags[1] >= bits)
            fail(name, "its type is unknown");
    }
    return size;
}

struct Space
{
    std::uint64_t count; ///< of values: 1 for a single one, 0 for none
    std::uint8_t rank;
};

Space check_stored_space(std::string_view stored, std::string_view name)
{
    constexpr std::uint8_t most_extents = 1, has_most = 1;
    constexpr std::size_t first_version_padding = 5;
    constexpr std::uint8_t kind_row = 1, kind_none = 2;
    ByteCursor cursor(stored);
    std::uint8_t version = 0, rank = 0, flags = 0, kind = 0;
    std::string_view padding;
    if (!cursor.take(version) || !cursor.take(rank) || !cursor.take(flags)) fail(name, "its space is cut");
    if (version == 1 ? !cursor.take(first_version_padding, padding) : !cursor.take(kind))
        fail(name, "its space is cut");
    if (version < 1 || version > 2 || rank > most_extents || flags > has_most) fail(name, "its space is unknown");
    if (version == 2 && (kind > kind_none || (kind != kind_row && rank > 0))) fail(name, "its space is unknown");
    std::uint64_t count = version == 2 && kind == kind_none ? 0 : 1;
    for (int i = 0; i < rank; ++i) {
        std::uint64_t extent = 0, most = 0;
        if (!cursor.take(extent) || (flags & has_most && !cursor.take(most))) fail(name, "its space is cut");
        if (flags & has_most && most < extent) fail(name, "its space is unknown");
        count *= extent;
    }
    return {count, rank};
}

} // namespace

std::uint64_t check_type(std::string_view message)
{
    return check_stored_type(message, "");
}

std::uint8_t check_space(std::string_view message)
{
    return check_stored_space(message, "").rank;
}

std::string_view check_attribute(std::string_view message)
{
    constexpr std::size_t first_version_unit = 8; // parts of the first version are padded to it
    ByteCursor cursor(message);
    std::uint8_t version = 0, flags = 0, character_set = 0;
    std::uint16_t name_size = 0, type_size = 0, space_size = 0;
    if (!cursor.take(version) || !cursor.take(flags) || !cursor.take(name_size) || !cursor.take(type_size) ||
        !cursor.take(space_size) || (version == 3 && !cursor.take(character_set)))
        fail("", "it is cut");
    if (version < 1 || version > 3 || (version > 1 && flags != 0)) fail("", "its version is unknown");
    const auto padded = [&](std::size_t size) {
        return version > 1 ? size : (size + first_version_unit - 1) / first_version_unit * first_version_unit;
    };
    std::string_view name, type, space;
    if (!cursor.take(padded(name_size), name)) fail("", "its name is cut");
    // The name ends at its first zero, which is the last byte that belongs to it.
    if (name_size == 0 || name.find('\0') != name_size - 1u) fail("", "its name is not closed");
    name = name.substr(0, name_size - 1u);
    if (!cursor.take(padded(type_size), type)) fail(name, "its type is cut");
    if (!cursor.take(padded(space_size), space)) fail(name, "its space is cut");
    const std::uint64_t value_size = check_stored_type(type.substr(0, type_size), name);
    std::uint64_t size = 0;
    if (__builtin_mul_overflow(check_stored_space(space.substr(0, space_size), name).count, value_size, &size) ||
        size > cursor.left())
        fail(name, "its value is cut");
    return name;
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreHDF5
} // namespace Alembic
