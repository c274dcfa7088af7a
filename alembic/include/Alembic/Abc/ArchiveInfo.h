/// Who wrote an archive, with what, when and why; and the time it spans.
#pragma once

#include <Alembic/Abc/IArchive.h>
#include <Alembic/Abc/OArchive.h>

#include <string>

namespace Alembic {
namespace Abc {
inline namespace ALEMBIC_VERSION_NS {

/// Keys in the metadata of an archive's top object.
inline constexpr const char* kApplicationNameKey = "_ai_Application";
inline constexpr const char* kDateWrittenKey = "_ai_DateWritten";
inline constexpr const char* kUserDescriptionKey = "_ai_Description";
inline constexpr const char* kDCCFPSKey = "_ai_DCC_FPS"; ///< frames a second in the writing application

/// The metadata of a new archive: the arguments', with application, description, now, and (unless null) frames a
/// second.
ALEMBIC_EXPORT AbcA::MetaData archive_info_metadata(const std::string& application, const std::string& description,
                                                    const double* fps, const Argument& arg0, const Argument& arg1);

/// Creates an archive that tells by whom and when it was written. Metadata and policy are the arguments that count.
template <class CTOR>
OArchive CreateArchiveWithInfo(CTOR ctor, const std::string& fileName, const std::string& application,
                               const std::string& description, const Argument& arg0 = Argument(),
                               const Argument& arg1 = Argument())
{
    const AbcA::MetaData meta_data = archive_info_metadata(application, description, nullptr, arg0, arg1);
    return OArchive(ctor, fileName, meta_data, GetErrorHandlerPolicyFromArgs(arg0, arg1));
}

/// The same, and at how many frames a second the application ran.
template <class CTOR>
OArchive CreateArchiveWithInfo(CTOR ctor, const std::string& fileName, double fps, const std::string& application,
                               const std::string& description, const Argument& arg0 = Argument(),
                               const Argument& arg1 = Argument())
{
    const AbcA::MetaData meta_data = archive_info_metadata(application, description, &fps, arg0, arg1);
    return OArchive(ctor, fileName, meta_data, GetErrorHandlerPolicyFromArgs(arg0, arg1));
}

/// Writing application, text of the writing library, its version as a number (10812), date, description. What is
/// absent is "". Everything is untouched when the archive is invalid.
ALEMBIC_EXPORT void GetArchiveInfo(IArchive& archive, std::string& applicationWriter, std::string& alembicVersion,
                                   uint32_t& alembicApiVersion, std::string& dateWritten, std::string& userDescription);
/// The same, and the frames a second; 0 when absent.
ALEMBIC_EXPORT void GetArchiveInfo(IArchive& archive, std::string& applicationWriter, std::string& alembicVersion,
                                   uint32_t& alembicApiVersion, std::string& dateWritten, std::string& userDescription,
                                   double& fps);

/// First and last time, in seconds, of all samplings but the default one that have more than one sample; else of those
/// with one; else of the default one. DBL_MAX and -DBL_MAX when there are no samples at all.
ALEMBIC_EXPORT void GetArchiveStartAndEndTime(IArchive& archive, double& startTime, double& endTime);

} // namespace ALEMBIC_VERSION_NS
} // namespace Abc
} // namespace Alembic
