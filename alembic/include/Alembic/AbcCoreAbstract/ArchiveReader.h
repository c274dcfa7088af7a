/// An archive that is open for reading, whatever its back end.
#pragma once

#include <Alembic/AbcCoreAbstract/ForwardDeclarations.h>
#include <Alembic/AbcCoreAbstract/Foundation.h>
#include <Alembic/AbcCoreAbstract/MetaData.h>
#include <Alembic/AbcCoreAbstract/TimeSampling.h>

#include <string>

namespace Alembic {
namespace AbcCoreAbstract {
inline namespace ALEMBIC_VERSION_NS {

class ALEMBIC_EXPORT ArchiveReader : private Alembic::Util::noncopyable
{
public:
    virtual ~ArchiveReader();

    /// Of the file.
    virtual const std::string& getName() const = 0;
    /// The top object's.
    virtual const MetaData& getMetaData() const = 0;
    virtual ObjectReaderPtr getTop() = 0;

    /// The cache in use; null where the back end has none.
    virtual ReadArraySampleCachePtr getReadArraySampleCachePtr() = 0;
    virtual void setReadArraySampleCachePtr(ReadArraySampleCachePtr ptr) = 0;

    virtual uint32_t getNumTimeSamplings() = 0;
    /// Throws (a layered archive: null) for an index that does not exist.
    virtual TimeSamplingPtr getTimeSampling(uint32_t index) = 0;
    /// The greatest number of samples of any property on that sampling, constant ones counting 1; INDEX_UNKNOWN for an
    /// index that does not exist.
    virtual index_t getMaxNumSamplesForTimeSamplingIndex(uint32_t index) = 0;

    /// Of the library that wrote it: 10000 * major + 100 * minor + patch.
    virtual int32_t getArchiveVersion() = 0;

    virtual ArchiveReaderPtr asArchivePtr() = 0;

protected:
    ArchiveReader() = default;
};

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreAbstract
} // namespace Alembic
