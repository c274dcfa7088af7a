/// @file
/// The functors of the HDF5 back end.
#include <Alembic/AbcCoreHDF5/ReadWrite.h>

#include "core/hdf5/archive_reader.h"

namespace Alembic {
namespace AbcCoreHDF5 {
inline namespace ALEMBIC_VERSION_NS {

ReadArchive::ReadArchive() = default;

ReadArchive::ReadArchive(bool) {}

AbcA::ArchiveReaderPtr ReadArchive::operator()(const std::string& fileName) const
{
    return ArchiveReader::open(fileName, {});
}

AbcA::ArchiveReaderPtr ReadArchive::operator()(const std::string& fileName, AbcA::ReadArraySampleCachePtr cache) const
{
    return ArchiveReader::open(fileName, std::move(cache));
}

WriteArchive::WriteArchive() = default;

WriteArchive::WriteArchive(bool) {}

AbcA::ArchiveWriterPtr WriteArchive::operator()(const std::string& fileName, const AbcA::MetaData&) const
{
    ABCA_THROW("Could not open file: " << fileName
                                       << ": HDF5 archives are read, not written: use AbcCoreOgawa::WriteArchive");
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreHDF5
} // namespace Alembic
