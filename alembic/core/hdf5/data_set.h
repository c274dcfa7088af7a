/// @file
/// Data sets: the values of array samples.
#pragma once

#include "core/hdf5/chunks.h"
#include "core/hdf5/file.h"

#include <cstdint>
#include <optional>
#include <string>

namespace Alembic {
namespace AbcCoreHDF5 {
inline namespace ALEMBIC_VERSION_NS {

/// An open data set of one row of values. Its user holds a LibraryLock.
class DataSet
{
public:
    /// Takes an open data set of the file, which must outlive it. Throws when its values do not have `pod`'s type, or
    /// when it claims more values than the file can hold.
    DataSet(Handle data_set, AbcA::PlainOldDataType pod, const std::string& name, const File& file);

    hid_t id() const { return data_set_.id(); }

    /// Values there are; 0 for a null space.
    std::uint64_t count() const { return count_; }

    /// Reads all values as `memory_type` to `into`.
    void read(hid_t memory_type, void* into) const;

private:
    void require_storage(std::uint64_t bytes);
    void read_converted(hid_t memory_type, void* into) const;

    std::string name_;
    Handle data_set_;
    std::uint64_t count_ = 0;
    const File& file_;
    std::optional<ChunkedRow> chunks_;
};

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreHDF5
} // namespace Alembic
