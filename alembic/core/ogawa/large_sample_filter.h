/// @file
/// Tells that a large sample is new without reading all of it.
#pragma once

#include "ogawa/output_target.h"

#include <Alembic/Util/Config.h>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace Alembic {
namespace AbcCoreOgawa {
inline namespace ALEMBIC_VERSION_NS {

/// Remembers one bit for a few of the bytes of each sample. A bit not met before means a sample not met before; a bit
/// that was met says nothing. Takes 32 KiB from the first sample on, however many there are.
class LargeSampleFilter
{
public:
    /// Notes a sample of at least 8 bytes. True when no equal one was noted before; false when that is not
    /// known.
    bool note(const Ogawa::Bytes& sample);

private:
    std::vector<bool> met_;
};

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreOgawa
} // namespace Alembic
