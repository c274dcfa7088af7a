/// @file
/// How libhdf5 gets at the bytes of an archive: through our own positioned reads.
#pragma once

#include "core/hdf5/library.h"

#include <cstdint>
#include <string>

namespace Alembic {
namespace AbcCoreHDF5 {
inline namespace ALEMBIC_VERSION_NS {

/// Opens a file for reading; `size` gets its size. Nothing when it cannot be opened or is no HDF5 file, see
/// throw_failed(). The caller holds a LibraryLock.
///
/// Unlike libhdf5's own drivers ours opens a file anew each time: of a file that was rewritten since it was opened
/// before, libhdf5 would hand out what it remembers. It takes no file locks, and a read past the end is an error.
Handle open_file(const std::string& name, std::uint64_t& size);

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreHDF5
} // namespace Alembic
