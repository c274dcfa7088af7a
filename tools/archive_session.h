/// ArchiveSession: one open archive, and the words for what is wrong with it.
#pragma once

#include "tool_error.h"

#include <Alembic/Abc/IArchive.h>
#include <Alembic/Abc/IObject.h>
#include <abc_input_archive_handle.h>

#include <exception>
#include <memory>
#include <new>
#include <string>
#include <vector>

/// The archive of some files, open from construction to destruction. The tool has one thread: it reads the objects that
/// it finds here without taking the archive's lock.
class ArchiveSession
{
public:
    /// Throws ToolError when the files are not an archive.
    explicit ArchiveSession(const std::vector<std::string>& files);

    AbcInputArchiveHandle& get_handle() const { return *handle_; }
    const AbcFileList& get_files() const { return handle_->get_filenames(); }
    Alembic::Abc::IArchive get_archive() const;
    /// The object of a full name; "" and "/" are the top. Throws ToolError when there is none.
    Alembic::Abc::IObject find(const std::string& object_path) const;

    /// False when the archive holds no samples at all; times are in seconds.
    bool get_time_range(double& start, double& end) const;
    /// The time at which the archive starts, seconds; 0 for an archive without samples.
    double get_start_time() const;

    /// An error of the archive, or of one of its objects.
    ToolError error(const std::string& what) const;
    ToolError error(const std::string& object_path, const std::string& what) const;
    /// The error of an object that is damaged: `reason` is what noticed it, a library or a reader, has to say.
    ToolError damage(const std::string& object_path, const std::string& reason) const;

    /// What `read()` returns; whatever it throws but ToolError becomes the damage of that object.
    template <class Read>
    auto on_object(const std::string& object_path, Read&& read) const
    {
        try {
            return read();
        } catch (const ToolError&) {
            throw;
        } catch (const std::bad_alloc&) {
            throw error(object_path, "there is not enough memory to read it.");
        } catch (const std::exception& exception) {
            throw damage(object_path, reason_in(exception.what()));
        }
    }

private:
    struct Release
    {
        void operator()(AbcInputArchiveHandle* handle) const;
    };

    std::string file_names_;
    std::unique_ptr<AbcInputArchiveHandle, Release> handle_;
};

/// "Ogawa" or "HDF5", by the first bytes of a file that was opened.
std::string find_storage(const std::string& file);
