/// @file
/// Takes chunks from libhdf5 and unfolds them.
#include "core/hdf5/chunks.h"

#include <zlib.h>

#include <algorithm>
#include <cstring>
#include <vector>

namespace Alembic {
namespace AbcCoreHDF5 {
inline namespace ALEMBIC_VERSION_NS {

namespace {

/// Unfolds `stored` to exactly `size` bytes; false when they are not that many.
bool inflate_exactly(const std::vector<unsigned char>& stored, unsigned char* into, std::uint64_t size)
{
    uLongf unfolded = static_cast<uLongf>(size);
    return uncompress(into, &unfolded, stored.data(), static_cast<uLong>(stored.size())) == Z_OK && unfolded == size;
}

} // namespace

void read_chunks(const ChunkedRow& row, const std::string& name, void* into)
{
    const std::string failure = "Could not read data set '" + name + "'";
    const Handle creation = require(Handle(H5Dget_create_plist(row.data_set), H5Pclose), failure);
    hsize_t extent = 0;
    if (H5Pget_chunk(creation.id(), 1, &extent) != 1 || extent == 0) throw_failed(failure);
    const bool is_deflated = H5Pget_nfilters(creation.id()) > 0; // what opening let pass is deflate
    const std::uint64_t chunk_bytes = extent * row.value_bytes;

    auto* target = static_cast<unsigned char*>(into);
    std::vector<unsigned char> stored, last;
    hsize_t first_value = 0;
    for (std::uint64_t left = row.bytes; left > 0; first_value += extent) {
        hsize_t size = 0;
        if (H5Dget_chunk_storage_size(row.data_set, &first_value, &size) < 0) throw_failed(failure);
        if (size == 0 || size > row.file_bytes) ABCA_THROW(failure << ": a chunk is missing");
        stored.resize(static_cast<std::size_t>(size));
        std::uint32_t skipped_filters = 0;
        if (H5Dread_chunk(row.data_set, H5P_DEFAULT, &first_value, &skipped_filters, stored.data()) < 0)
            throw_failed(failure);

        const std::uint64_t wanted = std::min(left, chunk_bytes); // the last chunk may go on behind the values
        if (!is_deflated || skipped_filters != 0) {
            if (size < wanted) ABCA_THROW(failure << ": a chunk is cut");
            std::memcpy(target, stored.data(), static_cast<std::size_t>(wanted));
        } else {
            last.resize(static_cast<std::size_t>(wanted < chunk_bytes ? chunk_bytes : 0));
            if (!inflate_exactly(stored, last.empty() ? target : last.data(), chunk_bytes))
                ABCA_THROW(failure << ": a chunk is damaged");
            if (!last.empty()) std::memcpy(target, last.data(), static_cast<std::size_t>(wanted));
        }
        target += wanted;
        left -= wanted;
    }
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreHDF5
} // namespace Alembic
