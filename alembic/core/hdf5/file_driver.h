/// @file
/// How libhdf5 gets at the bytes of an archive: through our own positioned reads.
#pragma once

#include "core/hdf5/library.h"
#include "ogawa/byte_source.h"

#include <string>

namespace Alembic {
namespace AbcCoreHDF5 {
inline namespace ALEMBIC_VERSION_NS {

/// The file driver, for property lists of file access. The caller holds a LibraryLock.
///
/// Unlike libhdf5's own drivers ours opens a file anew each time: of a file that was rewritten since it was opened
/// before, libhdf5 would hand out what it remembers. It takes no file locks, and a read past the end is an error.
Handle register_driver();

/// Why the driver did not open the last file it was asked to open; empty when it did, or when that was told already.
std::string take_driver_refusal();

/// The bytes of a file that was opened with the driver; they stay as long as it is open. Null on failure.
const Ogawa::ByteSource* driver_bytes(hid_t file);

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreHDF5
} // namespace Alembic
