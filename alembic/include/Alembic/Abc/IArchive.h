/// A handle of an archive that is being read.
#pragma once

#include <Alembic/Abc/Argument.h>
#include <Alembic/Abc/Base.h>
#include <Alembic/Abc/Foundation.h>

#include <string>

namespace Alembic {
namespace Abc {
inline namespace ALEMBIC_VERSION_NS {

class IObject;

/// Copies share one open file, which stays open as long as any handle into it lives. An invalid handle answers quietly
/// with empty values.
class ALEMBIC_EXPORT IArchive : public Base
{
public:
    typedef IArchive this_type;

    /// Invalid.
    IArchive() = default;

    /// Opens `fileName` by `ctor(fileName, cache)`, e.g. with `AbcCoreOgawa::ReadArchive()`. A failure is reported
    /// under `policy`.
    template <class CTOR>
    IArchive(CTOR ctor, const std::string& fileName, ErrorHandler::Policy policy = ErrorHandler::kThrowPolicy,
             AbcA::ReadArraySampleCachePtr cache = AbcA::ReadArraySampleCachePtr())
        : Base(policy)
    {
        ALEMBIC_ABC_SAFE_CALL_BEGIN("IArchive::IArchive( iFileName )");
        archive_ = ctor(fileName, cache);
        ALEMBIC_ABC_SAFE_CALL_END_RESET();
    }

    /// Takes over an open reader.
    IArchive(AbcA::ArchiveReaderPtr ptr, ErrorHandler::Policy policy = ErrorHandler::kThrowPolicy);
    IArchive(AbcA::ArchiveReaderPtr ptr, WrapExistingFlag, ErrorHandler::Policy policy = ErrorHandler::kThrowPolicy);

    /// Name of the file; the names of all layers joined by commas.
    std::string getName() const;

    /// The top object. It has the throw policy, whatever the archive's.
    IObject getTop() const;

    AbcA::ReadArraySampleCachePtr getReadArraySampleCachePtr();
    void setReadArraySampleCachePtr(AbcA::ReadArraySampleCachePtr ptr);

    /// Null, and an error, when there is no such sampling.
    AbcA::TimeSamplingPtr getTimeSampling(uint32_t index);
    uint32_t getNumTimeSamplings();
    /// The greatest number of samples that any property on this sampling has; constant ones count 1.
    index_t getMaxNumSamplesForTimeSamplingIndex(uint32_t index);

    /// Of the writing library: 10000 major + 100 minor + patch.
    int32_t getArchiveVersion();

    AbcA::ArchiveReaderPtr getPtr() const { return archive_; }
    /// Lets the file go and empties the log; the policy stays.
    void reset();
    /// An archive is open and no error was logged.
    bool valid() const { return getErrorHandler().valid() && archive_; }

    ALEMBIC_OPERATOR_BOOL(valid());

private:
    AbcA::ArchiveReaderPtr archive_;
};

typedef std::shared_ptr<IArchive> IArchivePtr;

inline AbcA::ArchiveReaderPtr GetArchiveReaderPtr(IArchive& prp)
{
    return prp.getPtr();
}

} // namespace ALEMBIC_VERSION_NS
} // namespace Abc
} // namespace Alembic

#include <Alembic/Abc/IObject.h>
