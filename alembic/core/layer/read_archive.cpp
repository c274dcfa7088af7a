/// The functor that joins layers.
#include <Alembic/AbcCoreLayer/Read.h>

#include "core/layer/archive_reader.h"

namespace Alembic {
namespace AbcCoreLayer {
inline namespace ALEMBIC_VERSION_NS {

ReadArchive::ReadArchive() = default;

AbcCoreAbstract::ArchiveReaderPtr ReadArchive::operator()(ArchiveReaderPtrs& archives) const
{
    if (archives.empty()) ABCA_THROW("Cannot read layers: no archives were given");
    for (size_t i = 0; i < archives.size(); ++i)
        if (!archives[i]) ABCA_THROW("Cannot read layers: archive " << i << " is null");
    return std::make_shared<ArchiveReader>(archives);
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreLayer
} // namespace Alembic
