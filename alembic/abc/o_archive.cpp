/// Archives being written.
#include <Alembic/Abc/OArchive.h>
#include <Alembic/Abc/OObject.h>

namespace Alembic {
namespace Abc {
inline namespace ALEMBIC_VERSION_NS {

namespace {

AbcA::ArchiveWriter& open_writer(const AbcA::ArchiveWriterPtr& archive)
{
    if (!archive) ABCA_THROW("The archive is not open for writing");
    return *archive;
}

} // namespace

OArchive::OArchive(AbcA::ArchiveWriterPtr ptr, ErrorHandler::Policy policy)
    : Base(policy)
    , archive_(std::move(ptr))
{
}

OArchive::OArchive(AbcA::ArchiveWriterPtr ptr, WrapExistingFlag, ErrorHandler::Policy policy)
    : OArchive(std::move(ptr), policy)
{
}

std::string OArchive::getName() const
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("OArchive::getName()");
    return open_writer(archive_).getName();
    ALEMBIC_ABC_SAFE_CALL_END();
    return std::string();
}

OObject OArchive::getTop() const
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("OArchive::getTop()");
    return OObject(open_writer(archive_).getTop(), kWrapExisting);
    ALEMBIC_ABC_SAFE_CALL_END();
    return OObject();
}

int8_t OArchive::getCompressionHint() const
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("OArchive::getCompressionHint");
    return open_writer(archive_).getCompressionHint();
    ALEMBIC_ABC_SAFE_CALL_END();
    return 0;
}

void OArchive::setCompressionHint(int8_t hint)
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("OArchive::setCompressionHint");
    open_writer(archive_).setCompressionHint(hint);
    ALEMBIC_ABC_SAFE_CALL_END();
}

uint32_t OArchive::addTimeSampling(const AbcA::TimeSampling& ts)
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("OArchive::addTimeSampling");
    return open_writer(archive_).addTimeSampling(ts);
    ALEMBIC_ABC_SAFE_CALL_END();
    return 0;
}

AbcA::TimeSamplingPtr OArchive::getTimeSampling(uint32_t index)
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("OArchive::getTimeSampling");
    return open_writer(archive_).getTimeSampling(index);
    ALEMBIC_ABC_SAFE_CALL_END();
    return AbcA::TimeSamplingPtr();
}

uint32_t OArchive::getNumTimeSamplings()
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("OArchive::getNumTimeSampling");
    return open_writer(archive_).getNumTimeSamplings();
    ALEMBIC_ABC_SAFE_CALL_END();
    return 0;
}

void OArchive::reset()
{
    archive_.reset();
    getErrorHandler().clear();
}

} // namespace ALEMBIC_VERSION_NS
} // namespace Abc
} // namespace Alembic
