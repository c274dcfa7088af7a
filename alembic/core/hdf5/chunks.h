/// @file
/// Reads data sets that are stored in chunks. Not left to libhdf5: releases of it that are in use read beyond a chunk
/// that unfolds into less than it should, and write beyond the room for one that is longer than it says.
#pragma once

#include "core/hdf5/message_check.h"
#include "ogawa/byte_source.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace Alembic {
namespace AbcCoreHDF5 {
inline namespace ALEMBIC_VERSION_NS {

/// A chunk, as the tree of chunks has it.
struct StoredChunk
{
    std::uint64_t address;
    std::uint64_t first_value;     ///< number of its first value in the row
    std::uint32_t size;            ///< bytes that are stored
    std::uint32_t skipped_filters; ///< a bit for each filter that it did not go through
};

/// Bytes of a key of the tree.
std::size_t chunk_key_size(const ChunkIndex& index);

StoredChunk parse_chunk(std::string_view key, std::uint64_t address);

/// One row of values in chunks.
struct ChunkedRow
{
    ChunkIndex index;
    std::uint64_t bytes; ///< of all values
    bool is_deflated;    ///< each chunk; it may say that it is not
};

/// Reads all values as they are stored to `into`. Throws when a chunk is missing, or not as long as it should be;
/// `name` is for the message.
void read_chunks(const Ogawa::ByteSource& file, const ChunkedRow& row, const std::string& name, void* into);

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreHDF5
} // namespace Alembic
