/// @file
/// The types that values of each POD have in a file and in memory.
#pragma once

#include "core/hdf5/library.h"

#include <cstdint>

namespace Alembic {
namespace AbcCoreHDF5 {
inline namespace ALEMBIC_VERSION_NS {

/// The type of a stored value; of a string's characters for strings. The caller holds a LibraryLock.
Handle file_type(AbcA::PlainOldDataType pod);

/// The same as values have it in memory. Halves and bools have types of their own: values of a file type become those
/// of the same POD bit by bit.
Handle memory_type(AbcA::PlainOldDataType pod);

/// Bytes of one stored value.
std::uint64_t stored_size(AbcA::PlainOldDataType pod);

/// Throws "File DataType clash for KIND: NAME" when values of type `stored` are not what those of `pod` are.
void require_type(hid_t stored, AbcA::PlainOldDataType pod, const char* kind, const std::string& name);

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreHDF5
} // namespace Alembic
