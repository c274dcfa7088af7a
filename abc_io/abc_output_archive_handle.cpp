/// AbcOutputArchiveHandle: creation of an Ogawa archive, and what is said when it fails.
#include "abc_output_archive_handle.h"

#include "log_message.h"

#include <Alembic/Abc/All.h>
#include <Alembic/AbcCoreOgawa/All.h>
#include <vo_app_base/app_base.h>

#include <exception>

using Alembic::Abc::OArchive;

AbcOutputArchiveHandle::AbcOutputArchiveHandle(const CoreString& filename, const double& time_per_cycle,
                                               const double& start_time, AppBase& application)
    : filename_(filename)
{
    if (filename.is_empty()) {
        log_message(log_level_error, [](CoreLogStream& stream) {
            stream << "Failed to create the Alembic output file: filename is empty.\n";
        });
        return;
    }
    try {
        create(time_per_cycle, start_time, application);
    } catch (const std::exception& exception) {
        fail(std::string(exception.what()) + "\n"); // for example, a sampling of zero or negative time per cycle
    }
}

void AbcOutputArchiveHandle::create(const double& time_per_cycle, const double& start_time, AppBase& application)
{
    // Before the file: a bad time per cycle must not cost an existing archive its contents.
    const Alembic::Abc::TimeSampling sampling(time_per_cycle, start_time);

    CoreString application_name = "Quendrake Venmoral ";
    application_name += application.get_version_name();
    OArchive::operator=(Alembic::Abc::CreateArchiveWithInfo(Alembic::AbcCoreOgawa::WriteArchive(), filename_.get_data(),
                                                            application_name.get_data(), std::string(),
                                                            Alembic::Abc::ErrorHandler::kQuietNoopPolicy));
    if (is_valid()) time_sampling_index_ = addTimeSampling(sampling);
    if (!is_valid()) fail(getErrorHandler().getErrorLog());
}

void AbcOutputArchiveHandle::fail(const std::string& error_log)
{
    log_message(log_level_error, [&](CoreLogStream& stream) {
        stream << "Failed to create the output Alembic file '" << filename_ << "'.\n";
    });
    if (!error_log.empty())
        log_message(log_level_error, [&](CoreLogStream& stream) { stream << "Alembic error log:\n" << error_log; });
    reset();
    creation_error_log_ = error_log; // for get_error_log: resetting the archive empties its own
}

bool AbcOutputArchiveHandle::is_valid() const
{
    return OArchive::valid();
}

CoreString AbcOutputArchiveHandle::get_error_log() const
{
    const std::string error_log = getErrorHandler().getErrorLog();
    return CoreString(error_log.empty() ? creation_error_log_ : error_log);
}

unsigned int AbcOutputArchiveHandle::get_time_sampling_index() const
{
    return time_sampling_index_;
}

void AbcOutputArchiveHandle::reset()
{
    OArchive::reset();
    time_sampling_index_ = 0;
}
