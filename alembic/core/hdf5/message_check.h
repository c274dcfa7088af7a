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

/// Checks an attribute: name, type, space and value must lie in the message, one after the other. Throws for those that
/// do not, and for types other than whole numbers, floating-point numbers and strings of fixed length.
void check_attribute(std::string_view message);

/// Checks the type of the values of a data set, as that of an attribute. Returns the bytes of one value.
std::uint64_t check_type(std::string_view message);

/// Checks the space of a data set, as that of an attribute. Returns its rank.
std::uint8_t check_space(std::string_view message);

/// Check what a data set holds where nothing was written, in the first stored form and in the later one. Throw when it
/// does not lie in the message.
void check_first_fill(std::string_view message);
void check_fill(std::string_view message);

/// Checks a link of a group: its name, and where it leads, must lie in the message. Throws when they do not.
void check_link(std::string_view message);

/// Where the chunks of a data set are found.
struct ChunkIndex
{
    static constexpr std::uint64_t nowhere = ~std::uint64_t(0);

    std::uint64_t tree;        ///< address of a B-tree of the first version; `nowhere` when there are no chunks
    std::uint64_t chunk_bytes; ///< of one chunk once it is unfolded
    std::uint64_t value_bytes; ///< of one value
    std::uint8_t rank;         ///< of the data, and one for the bytes of a value
};

/// Checks the filters of a data set: there must be as many as it says, in the message. Throws when there are not.
void check_filters(std::string_view message);

/// Checks the layout of a data set. Throws when it is of a kind that archives do not use, and when its chunks have
/// no size, or more than can be. Returns where they are found, if that is such a tree.
std::optional<ChunkIndex> check_layout(std::string_view message);

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreHDF5
} // namespace Alembic
