/// @file
/// The checksum that HDF5 files keep of what describes their objects.
#pragma once

#include <Alembic/Util/Config.h>

#include <cstdint>
#include <string_view>

namespace Alembic {
namespace AbcCoreHDF5 {
inline namespace ALEMBIC_VERSION_NS {

/// Bob Jenkins's lookup3 of the bytes, from 0. Names in indices are hashed with it, too.
std::uint32_t checksum(std::string_view bytes);

/// Whether the last four bytes are the checksum of those before them.
bool ends_in_checksum(std::string_view bytes);

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreHDF5
} // namespace Alembic
