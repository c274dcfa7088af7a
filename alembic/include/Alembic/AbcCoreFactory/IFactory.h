/// Opens archives of any kind by their names.
#pragma once

#include <Alembic/Abc/ErrorHandler.h>
#include <Alembic/Abc/IArchive.h>
#include <Alembic/AbcCoreAbstract/ReadArraySampleCache.h>

#include <cstddef>
#include <iosfwd>
#include <string>
#include <vector>

namespace Alembic {
namespace AbcCoreFactory {
inline namespace ALEMBIC_VERSION_NS {

/// Tells the kind of a file from its contents, and opens several files as layers of one archive. Opening never throws
/// and never prints: what cannot be opened gives an invalid IArchive, with throw policy; its error log says for each
/// file why it was refused, unless the factory's own policy is to throw. A factory belongs to one thread at a time.
class ALEMBIC_EXPORT IFactory
{
public:
    enum CoreType {
        kHDF5 = 0,   ///< an HDF5 file; in a build without HDF5 also one that was recognised and refused
        kOgawa = 1,  ///< an Ogawa file
        kLayer = 2,  ///< two or more files
        kUnknown = 3 ///< nothing that can be opened
    };

    /// How an Ogawa file is read; a hint.
    enum OgawaReadStrategy { kFileStreams = 0, kMemoryMappedFiles = 1 };

    IFactory() = default;

    /// Opens one file; `type` says what it is.
    Abc::IArchive getArchive(const std::string& fileName, CoreType& type);
    Abc::IArchive getArchive(const std::string& fileName);

    /// Opens several files as layers, the strongest first. Files that cannot be opened are left out; when one is left
    /// it is opened by itself, and `type` is that of the last name, be it left out (kUnknown) or not.
    Abc::IArchive getArchive(const std::vector<std::string>& fileNames, CoreType& type);
    Abc::IArchive getArchive(const std::vector<std::string>& fileNames);

    /// Opens one Ogawa archive of which each stream holds a copy. The caller keeps the streams as long as the archive.
    Abc::IArchive getArchive(const std::vector<std::istream*>& streams, CoreType& type);

    /// The error policy of archives that open; kThrowPolicy at first.
    Abc::ErrorHandler::Policy getPolicy() { return policy_; }
    void setPolicy(Abc::ErrorHandler::Policy policy) { policy_ = policy; }

    /// Hints for reading Ogawa files, 1 and kMemoryMappedFiles at first. Kept, but reading needs neither.
    size_t getOgawaNumStreams() const { return ogawa_stream_count_; }
    void setOgawaNumStreams(size_t numStreams) { ogawa_stream_count_ = numStreams; }
    OgawaReadStrategy getOgawaReadStrategy() { return ogawa_strategy_; }
    void setOgawaReadStrategy(OgawaReadStrategy strategy) { ogawa_strategy_ = strategy; }

    /// Whether HDF5 files are read through the table of their hierarchy, where they have one; true at first.
    bool getHDF5CacheHierarchy() const { return hdf5_cache_hierarchy_; }
    void setHDF5CacheHierarchy(bool cacheHierarchy) { hdf5_cache_hierarchy_ = cacheHierarchy; }

    /// The cache that HDF5 archives put array samples into; null, for none, at first.
    AbcCoreAbstract::ReadArraySampleCachePtr getSampleCache() const { return sample_cache_; }
    void setSampleCache(AbcCoreAbstract::ReadArraySampleCachePtr cachePtr) { sample_cache_ = cachePtr; }

private:
    AbcCoreAbstract::ArchiveReaderPtr open_file(const std::string& name, CoreType& type, std::string& refusals) const;
    AbcCoreAbstract::ArchiveReaderPtr open_hdf5(const std::string& name) const;

    Abc::ErrorHandler::Policy policy_ = Abc::ErrorHandler::kThrowPolicy;
    size_t ogawa_stream_count_ = 1;
    OgawaReadStrategy ogawa_strategy_ = kMemoryMappedFiles;
    bool hdf5_cache_hierarchy_ = true;
    AbcCoreAbstract::ReadArraySampleCachePtr sample_cache_;
};

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreFactory
} // namespace Alembic
