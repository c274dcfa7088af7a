/// @file
/// Opens data sets with care and reads them.
#include "core/hdf5/data_set.h"

#include "core/hdf5/limits.h"
#include "core/hdf5/pod_types.h"

#include <algorithm>
#include <cstring>
#include <vector>

namespace Alembic {
namespace AbcCoreHDF5 {
inline namespace ALEMBIC_VERSION_NS {

namespace {

/// How much larger than their stored bytes the values may be. Throws for filters that archives do not use: libhdf5
/// would look for plugins.
std::uint64_t unfolding_factor(hid_t creation, const std::string& name)
{
    std::uint64_t factor = 1;
    const int count = H5Pget_nfilters(creation);
    if (count < 0) throw_failed("Could not open data set '" + name + "'");
    if (count > 1) ABCA_THROW("Could not open data set '" << name << "': it is compressed more than once");
    for (int i = 0; i < count; ++i) {
        unsigned flags = 0, config = 0;
        std::size_t values = 0;
        const H5Z_filter_t filter =
            H5Pget_filter2(creation, static_cast<unsigned>(i), &flags, &values, nullptr, 0, nullptr, &config);
        if (filter == H5Z_FILTER_DEFLATE)
            factor = deflate_factor;
        else
            ABCA_THROW("Could not open data set '" << name << "': it is compressed with filter " << filter
                                                   << ", archives are only deflated");
    }
    return factor;
}

/// Bytes of one chunk once it is unfolded.
std::uint64_t chunk_size(hid_t creation, std::uint64_t value_size)
{
    hsize_t extent = 0;
    return H5Pget_chunk(creation, 1, &extent) == 1 ? extent * value_size : 0;
}

} // namespace

DataSet::DataSet(Handle data_set, AbcA::PlainOldDataType pod, const std::string& name, const File& file)
    : name_(name)
    , data_set_(std::move(data_set))
    , file_(file)
{
    const std::string failure = "Could not open data set '" + name + "'";
    const Handle type = require(Handle(H5Dget_type(id()), H5Tclose), failure);
    require_type(type.id(), pod, "array dataset", name);
    const Handle space = require(Handle(H5Dget_space(id()), H5Sclose), failure);
    const H5S_class_t kind = H5Sget_simple_extent_type(space.id());
    if (kind == H5S_NULL) return;
    if (kind != H5S_SIMPLE || H5Sget_simple_extent_ndims(space.id()) != 1)
        ABCA_THROW(failure << ": H5Sget_simple_extent_ndims() must be 1.");
    const hssize_t count = H5Sget_simple_extent_npoints(space.id());
    if (count < 0) throw_failed(failure);
    count_ = static_cast<std::uint64_t>(count);
    std::uint64_t bytes = 0;
    if (__builtin_mul_overflow(count_, stored_size(pod), &bytes)) bytes = ~std::uint64_t(0);
    if (bytes > 0) require_storage(bytes);
}

void DataSet::require_storage(std::uint64_t bytes)
{
    const std::string failure = "Could not open data set '" + name_ + "'";
    const Handle creation = require(Handle(H5Dget_create_plist(id()), H5Pclose), failure);
    const H5D_layout_t layout = H5Pget_layout(creation.id());
    const bool chunked = layout == H5D_CHUNKED;
    if ((!chunked && layout != H5D_CONTIGUOUS && layout != H5D_COMPACT) || H5Pget_external_count(creation.id()) != 0)
        ABCA_THROW(failure << ": its values are not in the archive itself");

    const std::uint64_t stored = std::min<std::uint64_t>(H5Dget_storage_size(id()), file_.size());
    std::uint64_t most = stored;
    if (chunked && __builtin_mul_overflow(stored, unfolding_factor(creation.id(), name_), &most))
        most = ~std::uint64_t(0);
    if (bytes > most)
        ABCA_THROW(failure << ": its values take " << bytes << " bytes, and only " << stored << " are stored");
    if (chunked && chunk_size(creation.id(), bytes / count_) > std::max(most, chunk_floor))
        ABCA_THROW(failure << ": its chunks are larger than what is stored");
    if (!chunked) return;
    chunks_ = ChunkedRow{file_.chunks_of(id()).value(), bytes, H5Pget_nfilters(creation.id()) > 0};
}

void DataSet::read_converted(hid_t memory_type, void* into) const
{
    const std::string failure = "Could not read data set '" + name_ + "'";
    const Handle type = require(Handle(H5Dget_type(id()), H5Tclose), failure);
    if (H5Tequal(type.id(), memory_type) > 0) return read_chunks(file_.bytes(), *chunks_, name_, into);
    const std::size_t target_bytes = H5Tget_size(memory_type);
    std::vector<char> values(static_cast<std::size_t>(count_) *
                             std::max<std::size_t>(target_bytes, chunks_->index.value_bytes));
    read_chunks(file_.bytes(), *chunks_, name_, values.data());
    if (H5Tconvert(type.id(), memory_type, static_cast<std::size_t>(count_), values.data(), nullptr, H5P_DEFAULT) < 0)
        throw_failed(failure);
    std::memcpy(into, values.data(), static_cast<std::size_t>(count_) * target_bytes);
}

void DataSet::read(hid_t memory_type, void* into) const
{
    if (count_ == 0) return;
    if (chunks_) return read_converted(memory_type, into);
    if (H5Dread(id(), memory_type, H5S_ALL, H5S_ALL, H5P_DEFAULT, into) < 0)
        throw_failed("Could not read data set '" + name_ + "'");
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreHDF5
} // namespace Alembic
