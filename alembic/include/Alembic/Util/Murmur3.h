/// MurmurHash3, the x64 variant with 128 bits and seed 0: the digest of every stored sample.
#pragma once

#include <Alembic/Util/Foundation.h>

namespace Alembic {
namespace Util {
inline namespace ALEMBIC_VERSION_NS {

/// Hashes `len` bytes at `key` (null is allowed when `len` is 0) into the 16 bytes at `out`.
/// The result is that of the little-endian bytes: a big-endian host swaps each value of `podSize` bytes first.
ALEMBIC_EXPORT void MurmurHash3_x64_128(const void* key, size_t len, size_t podSize, void* out);

} // namespace ALEMBIC_VERSION_NS
} // namespace Util
} // namespace Alembic
