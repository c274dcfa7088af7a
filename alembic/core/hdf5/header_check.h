/// @file
/// Looks through an object header before libhdf5 does: releases of it that are in use crash on attributes that do not fit.
#pragma once

#include "core/hdf5/message_check.h"
#include "ogawa/byte_source.h"

#include <Alembic/Util/Config.h>

#include <cstdint>
#include <optional>

namespace Alembic {
namespace AbcCoreHDF5 {
inline namespace ALEMBIC_VERSION_NS {

/// Checks the header, with all its continuations, of the object at `position` in the file. Throws what is wrong with it,
/// or what is sound but not for us: attributes of types that archives do not use. Returns where
/// the chunks of a data set are found, if it has chunks.
std::optional<ChunkIndex> check_object_header(const Ogawa::FileSource& file, std::uint64_t position);

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreHDF5
} // namespace Alembic
