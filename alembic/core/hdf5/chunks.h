/// @file
/// Reads data sets that are stored in chunks. libhdf5 only hands out the stored bytes: releases of it that are in use read
/// beyond a chunk that unfolds into less than it should.
#pragma once

#include "core/hdf5/library.h"

#include <cstdint>
#include <string>

namespace Alembic {
namespace AbcCoreHDF5 {
inline namespace ALEMBIC_VERSION_NS {

/// One row of values in chunks.
struct ChunkedRow
{
    hid_t data_set;
    std::uint64_t bytes;       ///< of all values
    std::uint64_t value_bytes; ///< of one
    std::uint64_t file_bytes;  ///< of the file: no chunk takes more
};

/// Reads all values as they are stored to `into`. Throws when a chunk is missing, or not as long as it should be; `name` is
/// for the message.
void read_chunks(const ChunkedRow& row, const std::string& name, void* into);

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreHDF5
} // namespace Alembic
