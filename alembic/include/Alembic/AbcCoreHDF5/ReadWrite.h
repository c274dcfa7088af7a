/// @file
/// The HDF5 back end: functors that open archives of the older kind, given to
/// IArchive. It only reads.
#pragma once

#include <Alembic/AbcCoreAbstract/All.h>
#include <Alembic/Util/Export.h>

#include <string>

namespace Alembic {
namespace AbcCoreHDF5 {
inline namespace ALEMBIC_VERSION_NS {

namespace AbcA = ::Alembic::AbcCoreAbstract;

/// There for programs that name it: HDF5 archives are not written. Archives are
/// made with AbcCoreOgawa::WriteArchive.
class ALEMBIC_EXPORT WriteArchive {
public:
  WriteArchive();
  explicit WriteArchive(bool cacheHierarchy);

  /// Always throws "Could not open file: NAME", with the reason.
  AbcA::ArchiveWriterPtr operator()(const std::string &fileName,
                                    const AbcA::MetaData &metaData) const;
};

/// Opens an archive. Handed to IArchive: `IArchive(ReadArchive(), "file.abc")`.
/// Any number of threads may read at once; libhdf5 serves one at a time,
/// whatever archives they read. Programs that call libhdf5 themselves on other
/// threads meanwhile need one that was built to be thread-safe.
class ALEMBIC_EXPORT ReadArchive {
public:
  ReadArchive();

  /// The hint is accepted for source compatibility: what is parsed is kept, and
  /// a stored copy of the hierarchy is not needed.
  explicit ReadArchive(bool cacheHierarchy);

  /// Opens `fileName`. Throws "Nonexistent or not an Alembic file: NAME" when
  /// it is absent, unreadable or no HDF5 file, "Unsupported file version
  /// detected: N", or what is wrong with the archive inside.
  AbcA::ArchiveReaderPtr operator()(const std::string &fileName) const;

  /// The same. Array samples are asked of `cache`, which may be null, before
  /// they are read, and given to it afterwards.
  AbcA::ArchiveReaderPtr operator()(const std::string &fileName,
                                    AbcA::ReadArraySampleCachePtr cache) const;
};

/// A cache of array samples for ReadArchive and IArchive; any number of
/// archives and threads may share it. It keeps no sample alive: while somebody
/// holds a sample, reading equal data gives that one again.
ALEMBIC_EXPORT AbcA::ReadArraySampleCachePtr CreateCache();

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreHDF5
} // namespace Alembic
