/// A handle of an archive that is being written.
#pragma once

#include <Alembic/Abc/Argument.h>
#include <Alembic/Abc/Base.h>
#include <Alembic/Abc/Foundation.h>

#include <string>

namespace Alembic {
namespace Abc {
inline namespace ALEMBIC_VERSION_NS {

class OObject;

/// Copies share one file, which is finished when the last handle into it goes: archive, object or property. Members of
/// an invalid handle report an error.
class ALEMBIC_EXPORT OArchive : public Base
{
public:
    typedef OArchive this_type;

    /// Invalid.
    OArchive() = default;

    /// Creates `fileName` by `ctor(fileName, metadata)`, e.g. with `AbcCoreOgawa::WriteArchive()`. Metadata and policy
    /// are the arguments that count.
    template <class CTOR>
    OArchive(CTOR ctor, const std::string& fileName, const Argument& arg0 = Argument(),
             const Argument& arg1 = Argument())
        : Base(GetErrorHandlerPolicyFromArgs(arg0, arg1))
    {
        ALEMBIC_ABC_SAFE_CALL_BEGIN("OArchive::OArchive( iFileName )");
        archive_ = ctor(fileName, GetMetaData(arg0, arg1));
        ALEMBIC_ABC_SAFE_CALL_END_RESET();
    }

    /// Takes over a writer.
    OArchive(AbcA::ArchiveWriterPtr ptr, ErrorHandler::Policy policy = ErrorHandler::kThrowPolicy);
    OArchive(AbcA::ArchiveWriterPtr ptr, WrapExistingFlag, ErrorHandler::Policy policy = ErrorHandler::kThrowPolicy);

    std::string getName() const;
    /// The top object. It has the throw policy, whatever the archive's.
    OObject getTop() const;

    /// -1 for none, else 0 to 9. A hint that back ends may ignore.
    int8_t getCompressionHint() const;
    void setCompressionHint(int8_t hint);

    /// Index of an equal sampling, or of a new one. 0 is there from the start: one sample a second from 0.
    uint32_t addTimeSampling(const AbcA::TimeSampling& ts);
    /// Null, and an error, when there is no such sampling.
    AbcA::TimeSamplingPtr getTimeSampling(uint32_t index);
    uint32_t getNumTimeSamplings();

    AbcA::ArchiveWriterPtr getPtr() const { return archive_; }
    /// Lets the file go and empties the log; the policy stays.
    void reset();
    bool valid() const { return getErrorHandler().valid() && archive_; }

    ALEMBIC_OPERATOR_BOOL(valid());

private:
    AbcA::ArchiveWriterPtr archive_;
};

typedef std::shared_ptr<OArchive> OArchivePtr;

inline AbcA::ArchiveWriterPtr GetArchiveWriterPtr(OArchive& arch)
{
    return arch.getPtr();
}

} // namespace ALEMBIC_VERSION_NS
} // namespace Abc
} // namespace Alembic

#include <Alembic/Abc/OObject.h>
