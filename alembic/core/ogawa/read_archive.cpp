/// @file
/// The functor that opens Ogawa archives.
#include <Alembic/AbcCoreOgawa/ReadWrite.h>

#include "core/ogawa/archive_reader.h"

namespace Alembic {
namespace AbcCoreOgawa {
inline namespace ALEMBIC_VERSION_NS {

ReadArchive::ReadArchive() = default;

ReadArchive::ReadArchive(std::size_t, bool) {}

ReadArchive::ReadArchive(const std::vector<std::istream*>& streams)
    : streams_(streams)
{
}

AbcA::ArchiveReaderPtr ReadArchive::operator()(const std::string& fileName) const
{
    return ArchiveReader::open(fileName, streams_);
}

AbcA::ArchiveReaderPtr ReadArchive::operator()(const std::string& fileName, AbcA::ReadArraySampleCachePtr) const
{
    return ArchiveReader::open(fileName, streams_);
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreOgawa
} // namespace Alembic
