/// @file
/// The Ogawa back end: functors that open and create archives, given to IArchive, OArchive and CreateArchiveWithInfo.
#pragma once

#include <Alembic/AbcCoreAbstract/All.h>
#include <Alembic/Util/Export.h>

#include <cstddef>
#include <iosfwd>
#include <string>
#include <vector>

namespace Alembic {
namespace AbcCoreOgawa {
inline namespace ALEMBIC_VERSION_NS {

namespace AbcA = ::Alembic::AbcCoreAbstract;

/// Creates an archive. Handed to OArchive: `OArchive(WriteArchive(), "file.abc")`.
///
/// Sharing: equal samples are stored once, whatever property they belong to: a property's previous sample always,
/// others when they are among the last different ones of the archive, at least 65,536 and 4 for each property. An equal
/// sample that was not met for longer is stored once more.
///
/// Memory: up to 6 MiB for sharing; what objects and properties take, each up to 512 bytes for sharing among it; and
/// where each stored sample stands. That is nothing for samples that follow each other in the file at even distances,
/// as animation with samples of constant size does, and 3 to 12 bytes for others (an array of two or more dimensions:
/// twice that), until the property is finished. The samples themselves are not kept.
///
/// Threads: one at a time for an archive, any number with archives of their own. A sample of 1 MiB or more is hashed on
/// a second thread while it is written, if there is a second processor; that thread ends before the call returns.
class ALEMBIC_EXPORT WriteArchive
{
public:
    WriteArchive();

    /// Creates or overwrites `fileName`. `metaData` becomes the metadata of the top object, with
    /// `_ai_AlembicVersion` added. Throws "Could not open file: NAME".
    AbcA::ArchiveWriterPtr operator()(const std::string& fileName, const AbcA::MetaData& metaData) const;

    /// Writes to `stream`, from where it stands; the caller keeps it alive until the archive is finished, and it must
    /// be able to seek. Throws "Could not use the given ostream.".
    AbcA::ArchiveWriterPtr operator()(std::ostream* stream, const AbcA::MetaData& metaData) const;
};

/// Opens an archive. Handed to IArchive: `IArchive(ReadArchive(), "file.abc")`.
/// Any number of threads may read one archive at once; files are read with positioned reads, no seeking, no lock.
class ALEMBIC_EXPORT ReadArchive
{
public:
    ReadArchive();

    /// The two hints are accepted for source compatibility: reading needs neither several streams nor a map.
    ReadArchive(std::size_t numStreams, bool useMMap);

    /// Streams that hold copies of one archive, each from where it stands now; the caller keeps them alive as long as
    /// anything of the archive. As many threads read at once as there are streams.
    ReadArchive(const std::vector<std::istream*>& streams);

    /// Opens `fileName` (only a name when streams were given). Throws "Could not open as Ogawa file: NAME" when it is
    /// absent, unreadable or another kind of file, "Ogawa file not cleanly closed while being written: NAME", or what
    /// is wrong with the archive inside.
    AbcA::ArchiveReaderPtr operator()(const std::string& fileName) const;

    /// The same. An Ogawa archive needs no sample cache: `cache` is ignored.
    AbcA::ArchiveReaderPtr operator()(const std::string& fileName, AbcA::ReadArraySampleCachePtr cache) const;

private:
    std::vector<std::istream*> streams_;
};

} // namespace ALEMBIC_VERSION_NS

} // namespace AbcCoreOgawa
} // namespace Alembic
