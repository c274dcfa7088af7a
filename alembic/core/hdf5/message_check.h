/// @file
/// Tells sound messages of object headers from damaged ones by their stored bytes.
#pragma once

#include <Alembic/Util/Config.h>

#include <cstdint>
#include <optional>
#include <string_view>

namespace Alembic {
namespace AbcCoreHDF5 {
inline namespace ALEMBIC_VERSION_NS {

/// Flags that a message, or an attribute in a heap, may have: it is constant, it must not be shared. Others say that it
/// lies elsewhere.
constexpr std::uint8_t known_message_flags = 0x05;

/// Checks an attribute: name, type, space and value must lie in the message, one after the other. Throws for those that
/// do not, and for types other than whole numbers, floating-point numbers and strings of fixed length. Returns its name.
std::string_view check_attribute(std::string_view message);

/// Checks the type of the values of a data set, as that of an attribute. Returns the bytes of one value.
std::uint64_t check_type(std::string_view message);

/// Checks the space of a data set, as that of an attribute. Returns its rank.
std::uint8_t check_space(std::string_view message);

/// Check what a data set holds where nothing was written, in the first stored form and in the later one. Throw when it
/// does not lie in the message.
void check_first_fill(std::string_view message);
void check_fill(std::string_view message);

/// Checks a link of a group: its name, and where it leads, must lie in the message. Throws when they do not. Returns the
/// name.
std::string_view check_link(std::string_view message);

/// Where the links or the attributes of an object are found that has many.
struct DenseIndex
{
    std::uint64_t heap;     ///< address of the heap that holds them; `nowhere` when there are not many
    std::uint64_t by_name;  ///< address of a tree of their names' hashes; `nowhere` when there is no heap
    std::uint64_t by_order; ///< address of a tree of numbers that they got when they were made; `nowhere` for none
};

/// Check where many links, and many attributes, are found. Throw for what is cut, or has an unknown form.
DenseIndex check_link_index(std::string_view message);
DenseIndex check_attribute_index(std::string_view message);

/// Where the chunks of a data set are found.
struct ChunkIndex
{
    std::uint64_t tree;        ///< address of a B-tree of the first version; `nowhere` when there are none
    std::uint64_t chunk_bytes; ///< of one chunk once it is unfolded
    std::uint64_t value_bytes; ///< of one value
    std::uint8_t rank;         ///< of the data, and one for the bytes of a value
};

/// Checks the filters of a data set: there must be as many as it says, in the message. Throws when there are not.
void check_filters(std::string_view message);

/// Checks the layout of a data set. Throws when it is of a kind that archives do not use, and when its chunks have
/// no size, or more than can be. Returns where they are found.
std::optional<ChunkIndex> check_layout(std::string_view message);

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreHDF5
} // namespace Alembic
