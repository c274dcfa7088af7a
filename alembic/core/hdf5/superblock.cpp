/// @file
/// The stored form of superblocks, as far as it leads to the root group.
#include "core/hdf5/superblock.h"

#include "core/hdf5/stored_bytes.h"

#include <Alembic/AbcCoreAbstract/All.h>

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <string>
#include <string_view>

namespace Alembic {
namespace AbcCoreHDF5 {
inline namespace ALEMBIC_VERSION_NS {

namespace {

constexpr std::string_view signature("\x89HDF\r\n\x1a\n", 8);
constexpr std::size_t longest = 96; ///< of the start that matters here

/// Where things stand in a superblock.
struct Places
{
    std::size_t address_size, length_size; ///< one byte each
    std::size_t base, end, root;           ///< addresses
    std::size_t extension;                 ///< address of what later versions put elsewhere; 0 for none
};

const Places& places_of(std::uint8_t version)
{
    static const Places places[] = {
        {13, 14, 24, 40, 64, 0}, {13, 14, 28, 44, 68, 0}, {9, 10, 12, 28, 36, 20}, {9, 10, 12, 28, 36, 20}};
    if (version >= std::size(places)) ABCA_THROW("it has an unknown version of HDF5's format");
    return places[version];
}

std::uint64_t number_at(const std::string& bytes, std::size_t place, std::size_t size)
{
    std::uint64_t number = 0;
    if (place > bytes.size() || size > bytes.size() - place) ABCA_THROW("it is cut");
    std::copy_n(bytes.data() + place, size, reinterpret_cast<char*>(&number));
    return number;
}

} // namespace

Superblock read_superblock(const Ogawa::ByteSource& file)
{
    std::string start(static_cast<std::size_t>(std::min<std::uint64_t>(longest, file.size())), '\0');
    file.read(0, &start[0], start.size());
    if (std::string_view(start).substr(0, signature.size()) != signature) ABCA_THROW("it is not an HDF5 file");
    const Places& places = places_of(static_cast<std::uint8_t>(number_at(start, signature.size(), 1)));
    if (number_at(start, places.address_size, 1) != 8 || number_at(start, places.length_size, 1) != 8)
        ABCA_THROW("its addresses do not have 8 bytes");
    if (number_at(start, places.base, 8) != 0) ABCA_THROW("its addresses do not count from its start");
    if (places.extension != 0 && number_at(start, places.extension, 8) != nowhere)
        ABCA_THROW("it uses parts of HDF5's format that archives do not need");
    const Superblock superblock = {number_at(start, places.end, 8), number_at(start, places.root, 8)};
    if (superblock.end > file.size())
        ABCA_THROW("it has " << file.size() << " of " << superblock.end << " bytes: was copying it interrupted?");
    return superblock;
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreHDF5
} // namespace Alembic
