/// AbcOutputArchiveHandle: creates an Ogawa archive for writing.
#pragma once

#include "vo_abc_io_export.h"

#include <Alembic/Abc/OArchive.h>
#include <vo_core/core_string.h>

#include <cstdint>
#include <string>

class AppBase;

/// A new Alembic archive in the Ogawa format, stamped with the application's identity and with one uniform time
/// sampling for the export. What is written into it is the caller's business, through the OArchive the handle is.
/// Construction never throws: a failure goes to the host's log, to is_valid and to get_error_log. Copies share the open
/// archive; the file is finished when the last of them, and of the objects in it, goes.
class VO_ABC_IO_EXPORT AbcOutputArchiveHandle : public Alembic::Abc::OArchive
{
public:
    /// Creates or overwrites the file. `time_per_cycle` and `start_time` are seconds and make the uniform sampling.
    AbcOutputArchiveHandle(const CoreString& filename, const double& time_per_cycle, const double& start_time,
                           AppBase& application);
    AbcOutputArchiveHandle(const AbcOutputArchiveHandle& other) = default;
    AbcOutputArchiveHandle& operator=(const AbcOutputArchiveHandle& other) = default;

    /// True when the archive is open for writing and no error was recorded.
    bool is_valid() const;

    /// Alembic's error texts, each ending in a newline: those of the open archive, or those of a failed creation. Empty
    /// when nothing was recorded.
    CoreString get_error_log() const;

    /// Index of the export's sampling in the archive: 1 in a fresh archive, whose index 0 is the default sampling; 0
    /// when the given sampling equals that one, when creation failed, and after reset.
    unsigned int get_time_sampling_index() const;

    /// Lets go of the archive (the file is closed with its last user); the time sampling index becomes 0.
    void reset();

private:
    AbcOutputArchiveHandle() = default;

    void create(const double& time_per_cycle, const double& start_time, AppBase& application);
    void fail(const std::string& error_log);

    CoreString filename_;
    std::uint32_t time_sampling_index_ = 0;
    std::string creation_error_log_; ///< what Alembic recorded when the archive could not be created
};
