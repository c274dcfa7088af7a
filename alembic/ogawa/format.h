/// @file
/// Constants of the Ogawa container as they stand in a file. All numbers are little-endian but the two version bytes.
#pragma once

#include <cstddef>
#include <cstdint>

namespace Alembic::Ogawa {

#if defined(__BYTE_ORDER__) && __BYTE_ORDER__ != __ORDER_LITTLE_ENDIAN__
#error "Ogawa archives are little-endian, and read and written without swapping: this host is not supported"
#endif

// Header: 5 bytes magic, 1 byte frozen flag, 2 bytes version (big-endian), 8 bytes position of the root group.
constexpr unsigned char magic[5] = {'O', 'g', 'a', 'w', 'a'};
constexpr std::uint64_t frozen_position = 5;
constexpr unsigned char frozen_flag = 0xff; ///< the file was closed properly; any other value: it was not
constexpr std::uint64_t version_position = 6;
constexpr std::uint16_t container_version = 1;
constexpr std::uint64_t root_position = 8; ///< where the header keeps the position of the root group
constexpr std::uint64_t header_size = 16;

// Blocks: a group is a count and as many child entries, data is a size and as many bytes.
constexpr std::uint64_t count_size = 8;
constexpr std::uint64_t entry_size = 8;

// Child entries: bit 63 tells data from group, the rest is the position of the block.
constexpr std::uint64_t data_bit = 0x8000000000000000;
constexpr std::uint64_t position_mask = 0x7fffffffffffffff;
constexpr std::uint64_t empty_group = 0;       ///< entry of a group without children: no block stands for it
constexpr std::uint64_t empty_data = data_bit; ///< entry of data of size 0: no block stands for it

// The Alembic layer's own numbers.
constexpr std::size_t digest_size = 16;               ///< stored before the bytes of every sample that has bytes
constexpr std::size_t object_hashes_size = 32;        ///< properties and children hash, the end of a header blob
constexpr std::uint8_t metadata_in_place = 0xff;      ///< metadata index: the string follows in the header
constexpr std::uint64_t metadata_table_limit = 65536; ///< bytes; a larger table of shared metadata is refused
constexpr std::size_t metadata_indices = 254;         ///< the table holds at most that many strings (1 to 254)

} // namespace Alembic::Ogawa
