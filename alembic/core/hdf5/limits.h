/// @file
/// What keeps a hostile or damaged HDF5 archive from costing more than an error.
#pragma once

#include <Alembic/Util/Config.h>

#include <cstddef>
#include <cstdint>

namespace Alembic {
namespace AbcCoreHDF5 {
inline namespace ALEMBIC_VERSION_NS {

/// Objects nested deeper are refused, and so are compounds within one object: long before any stack is in danger.
constexpr std::uint32_t max_depth = 1200;

/// A link takes at least that many bytes of its group: its header, the length of the name, the address. What is kept of
/// the tree is counted against the file's size: a file that shares groups cannot unfold into a larger tree.
constexpr std::uint64_t link_bytes = 16;

/// Full names repeat the names of all ancestors: all of an archive together may take this many times the file's size,
/// or `full_name_floor` if that is more.
constexpr std::uint64_t full_name_factor = 64;
constexpr std::uint64_t full_name_floor = 16u << 20;

/// The value of one attribute: metadata, names, scalar samples. A larger one is refused.
constexpr std::uint64_t max_attribute_bytes = 64u << 20;

/// What describes a file's objects - headers, tables of links, their names, indices of chunks - may be read this many
/// times by the checks of the whole archive. Sound files need less: in them each part belongs to one object.
constexpr std::uint64_t check_factor = 8;

/// Bytes that the checks of an archive may read, all together.
constexpr std::uint64_t check_budget(std::uint64_t file_size)
{
    return check_factor * file_size;
}

/// Objects whose checks read no more than that are checked again whenever they are opened: to remember millions of
/// small data sets would cost more.
constexpr std::uint64_t forgotten_check_bytes = 4096;

/// Sizes of the indices and heaps that many links or attributes lie in. libhdf5 makes nodes of 512 bytes, and blocks of
/// up to 64 KiB in rows of four.
constexpr std::uint16_t max_index_level = 16;            ///< of a root above the leaves
constexpr std::uint32_t max_node_bytes = 1u << 20;       ///< of an index
constexpr std::uint64_t max_heap_block_bytes = 1u << 30; ///< that objects lie in
constexpr std::uint16_t max_heap_row = 1024;             ///< blocks side by side

/// What libhdf5 keeps of the description of each file's objects.
constexpr std::size_t metadata_cache_bytes = std::size_t(1) << 20;

/// Deflate makes data smaller by no more than this factor: what promises more than the stored bytes can hold is refused
/// before anything is allocated.
constexpr std::uint64_t deflate_factor = 1032;

/// Memory that the strings of one sample may take is this many times the file's size, or `text_floor` if that is more.
/// An empty string takes one stored byte and thirty times that in memory: deflated as well, some kilobytes could ask
/// for all memory there is. What is not deflated never gets there.
constexpr std::uint64_t text_factor = 64;
constexpr std::uint64_t text_floor = 64u << 20;

/// The most that one chunk of a compressed data set may unfold into, unless the data are larger still.
constexpr std::uint64_t chunk_floor = 1u << 20;

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreHDF5
} // namespace Alembic
