/// The factory: which back end opens a file, and why none does.
#include <Alembic/AbcCoreFactory/IFactory.h>

#include <Alembic/AbcCoreLayer/Read.h>
#include <Alembic/AbcCoreOgawa/ReadWrite.h>

#include "ogawa/byte_source.h"

#include <algorithm>
#include <cstring>
#include <exception>
#include <filesystem>

#ifdef ALEMBIC_WITH_HDF5
#include <Alembic/AbcCoreHDF5/ReadWrite.h>
#define ALEMBIC_FACTORY_READS_HDF5 1
#else
#define ALEMBIC_FACTORY_READS_HDF5 0
#endif

namespace Alembic {
namespace AbcCoreFactory {
inline namespace ALEMBIC_VERSION_NS {

namespace AbcA = ::Alembic::AbcCoreAbstract;

namespace {

bool starts_with_hdf5_signature(const std::string& name)
{
    static const unsigned char signature[8] = {0x89, 'H', 'D', 'F', '\r', '\n', 0x1a, '\n'};
    unsigned char start[sizeof signature];
    try {
        const Ogawa::FileSource file(name);
        if (file.size() < sizeof start) return false;
        file.read(0, start, sizeof start);
    } catch (const std::exception&) {
        return false;
    }
    return std::memcmp(start, signature, sizeof start) == 0;
}

// The reason as lines of their own that name the file.
std::string refusal(const std::string& name, std::string reason)
{
    std::error_code unknown;
    if (!std::filesystem::exists(name, unknown) && !unknown) reason += "\nthere is no such file";
    const bool names_file = !name.empty() && reason.find(name) != std::string::npos;
    return (names_file ? reason : name + ": " + reason) + "\n";
}

// A handle that is not valid. It has throw policy, as every default handle. Its log says why, unless the factory is one
// that throws: under that policy logs stay empty.
Abc::IArchive refused(std::string refusals, Abc::ErrorHandler::Policy factory_policy)
{
    Abc::IArchive archive;
    if (factory_policy == Abc::ErrorHandler::kThrowPolicy) return archive;
    Abc::ErrorHandler& handler = archive.getErrorHandler();
    const Abc::ErrorHandler::Policy policy = handler.getPolicy();
    if (!refusals.empty() && refusals.back() == '\n') refusals.pop_back();
    handler.setPolicy(Abc::ErrorHandler::kQuietNoopPolicy);
    handler(refusals, "IFactory::getArchive()");
    handler.setPolicy(policy);
    return archive;
}

} // namespace

AbcA::ArchiveReaderPtr IFactory::open_hdf5(const std::string& name) const
{
#if ALEMBIC_FACTORY_READS_HDF5
    return AbcCoreHDF5::ReadArchive(hdf5_cache_hierarchy_)(name, sample_cache_);
#else
    ABCA_THROW("Could not open file: " << name
                                       << "\nit is an HDF5 archive, which this build of the library does not read: "
                                          "convert it to Ogawa, or build with HDF5");
#endif
}

// The reader of one file, or null; then `refusals` has gained a line, and `type` is kHDF5 where that is all that is
// missing.
AbcA::ArchiveReaderPtr IFactory::open_file(const std::string& name, CoreType& type, std::string& refusals) const
{
    type = kUnknown;
    try {
        if (!starts_with_hdf5_signature(name)) {
            const AbcCoreOgawa::ReadArchive open_ogawa(ogawa_stream_count_, ogawa_strategy_ == kMemoryMappedFiles);
            const AbcA::ArchiveReaderPtr archive = open_ogawa(name);
            type = kOgawa;
            return archive;
        }
        if (!ALEMBIC_FACTORY_READS_HDF5) type = kHDF5;
        const AbcA::ArchiveReaderPtr archive = open_hdf5(name);
        type = kHDF5;
        return archive;
    } catch (const std::exception& error) {
        refusals += refusal(name, error.what());
    }
    return AbcA::ArchiveReaderPtr();
}

Abc::IArchive IFactory::getArchive(const std::string& fileName, CoreType& type)
{
    std::string refusals;
    const AbcA::ArchiveReaderPtr archive = open_file(fileName, type, refusals);
    return archive ? Abc::IArchive(archive, policy_) : refused(refusals, policy_);
}

Abc::IArchive IFactory::getArchive(const std::string& fileName)
{
    CoreType type = kUnknown;
    return getArchive(fileName, type);
}

Abc::IArchive IFactory::getArchive(const std::vector<std::string>& fileNames, CoreType& type)
{
    type = kUnknown;
    if (fileNames.empty()) return refused("No file names were given.", policy_);

    std::string refusals;
    AbcCoreLayer::ArchiveReaderPtrs layers;
    for (const std::string& name : fileNames)
        if (const AbcA::ArchiveReaderPtr layer = open_file(name, type, refusals)) layers.push_back(layer);
    if (layers.size() == 1) return Abc::IArchive(layers.front(), policy_);
    if (layers.empty()) {
        type = kUnknown;
        return refused(refusals, policy_);
    }

    std::reverse(layers.begin(), layers.end()); // names come strongest first, layers weakest first
    try {
        const AbcA::ArchiveReaderPtr archive = AbcCoreLayer::ReadArchive()(layers);
        type = kLayer;
        return Abc::IArchive(archive, policy_);
    } catch (const std::exception& error) {
        type = kUnknown;
        return refused(refusal(fileNames.front(), error.what()), policy_);
    }
}

Abc::IArchive IFactory::getArchive(const std::vector<std::string>& fileNames)
{
    CoreType type = kUnknown;
    return getArchive(fileNames, type);
}

Abc::IArchive IFactory::getArchive(const std::vector<std::istream*>& streams, CoreType& type)
{
    type = kUnknown;
    if (streams.empty()) return refused("No streams were given.", policy_);
    try {
        const AbcA::ArchiveReaderPtr archive = AbcCoreOgawa::ReadArchive(streams)("");
        type = kOgawa;
        return Abc::IArchive(archive, policy_);
    } catch (const std::exception& error) {
        return refused(error.what(), policy_);
    }
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreFactory
} // namespace Alembic
