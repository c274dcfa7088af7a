/// Archives being read.
#include <Alembic/Abc/IArchive.h>
#include <Alembic/Abc/IObject.h>

namespace Alembic {
namespace Abc {
inline namespace ALEMBIC_VERSION_NS {

IArchive::IArchive(AbcA::ArchiveReaderPtr ptr, ErrorHandler::Policy policy)
    : Base(policy)
    , archive_(std::move(ptr))
{
}

IArchive::IArchive(AbcA::ArchiveReaderPtr ptr, WrapExistingFlag, ErrorHandler::Policy policy)
    : IArchive(std::move(ptr), policy)
{
}

std::string IArchive::getName() const
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("IArchive::getName()");
    if (archive_) return archive_->getName();
    ALEMBIC_ABC_SAFE_CALL_END();
    return std::string();
}

IObject IArchive::getTop() const
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("IArchive::getTop()");
    if (archive_) return IObject(archive_->getTop(), kWrapExisting);
    ALEMBIC_ABC_SAFE_CALL_END();
    return IObject();
}

AbcA::ReadArraySampleCachePtr IArchive::getReadArraySampleCachePtr()
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("IArchive::getReadArraySampleCachePtr");
    if (archive_) return archive_->getReadArraySampleCachePtr();
    ALEMBIC_ABC_SAFE_CALL_END();
    return AbcA::ReadArraySampleCachePtr();
}

void IArchive::setReadArraySampleCachePtr(AbcA::ReadArraySampleCachePtr ptr)
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("IArchive::setReadArraySampleCachePtr");
    if (archive_) archive_->setReadArraySampleCachePtr(std::move(ptr));
    ALEMBIC_ABC_SAFE_CALL_END();
}

AbcA::TimeSamplingPtr IArchive::getTimeSampling(uint32_t index)
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("IArchive:::getTimeSampling");
    if (archive_) return archive_->getTimeSampling(index);
    ALEMBIC_ABC_SAFE_CALL_END();
    return AbcA::TimeSamplingPtr();
}

uint32_t IArchive::getNumTimeSamplings()
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("IArchive:::getNumTimeSampling");
    if (archive_) return archive_->getNumTimeSamplings();
    ALEMBIC_ABC_SAFE_CALL_END();
    return 0;
}

index_t IArchive::getMaxNumSamplesForTimeSamplingIndex(uint32_t index)
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("IArchive::getMaxNumSamplesForTimeSamplingIndex");
    if (archive_) return archive_->getMaxNumSamplesForTimeSamplingIndex(index);
    ALEMBIC_ABC_SAFE_CALL_END();
    return 0;
}

int32_t IArchive::getArchiveVersion()
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("IArchive:::getArchiveVersion");
    if (archive_) return archive_->getArchiveVersion();
    ALEMBIC_ABC_SAFE_CALL_END();
    return 0;
}

void IArchive::reset()
{
    archive_.reset();
    getErrorHandler().clear();
}

} // namespace ALEMBIC_VERSION_NS
} // namespace Abc
} // namespace Alembic
