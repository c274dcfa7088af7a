#include "archive_session.h"

#include "text.h"
#include "tool_library.h"

#include <Alembic/Abc/ArchiveInfo.h>
#include <abc_input.h>
#include <abc_internal.h>

#include <array>
#include <fstream>
#include <string_view>

using Alembic::Abc::IArchive;
using Alembic::Abc::IObject;

namespace {

AbcFileList to_file_list(const std::vector<std::string>& files)
{
    CoreArray<CoreString> names(files.size());
    for (std::size_t i = 0; i < files.size(); ++i)
        names[i] = CoreString(files[i]);
    return AbcFileList(names);
}

void remove_all(const std::string& part, std::string& text)
{
    for (std::size_t at = text.find(part); at != text.npos; at = text.find(part, at))
        text.erase(at, part.size());
}

/// Why the archive could not be opened, out of what the module logged: what follows the line that announces it. The
/// files' names are left out: the message begins with them.
std::string opening_error(const std::string& log, const std::vector<std::string>& files)
{
    constexpr std::string_view announcement = "Alembic error log:\n";
    const std::size_t start = log.find(announcement);
    if (start == log.npos) return "";
    std::string reason = reason_in(log.substr(start + announcement.size()));
    for (const std::string& file : files) {
        remove_all(file + ": ", reason);
        remove_all(": " + file, reason);
    }
    return " (" + reason + ")";
}

} // namespace

void ArchiveSession::Release::operator()(AbcInputArchiveHandle* handle) const
{
    AbcInput::release_archive(handle);
    delete handle;
}

ArchiveSession::ArchiveSession(const std::vector<std::string>& files)
{
    // A layer that cannot be opened would be left out of the archive without a word: each is opened by itself first.
    if (files.size() > 1)
        for (const std::string& file : files)
            const ArchiveSession layer({file});

    const AbcFileList list = to_file_list(files);
    file_names_ = list.join().get_data();
    const std::string problems = list.get_errors('\n').get_data();
    if (!problems.empty()) throw ToolError(problems);

    const std::string log = ToolLibrary::get_log().collect(CoreLogHandler::LEVEL_WARNING,
                                                           [&] { handle_.reset(AbcInput::get_archive(list)); });
    if (handle_->is_archive_valid()) {
        ToolLog::write(log); // warnings of an archive that opened
        return;
    }
    throw error("is no Alembic archive, or a damaged one. Was it written to its end?" + opening_error(log, files));
}

IArchive ArchiveSession::get_archive() const
{
    const std::shared_ptr<void> archive = handle_->share_archive();
    if (!archive) throw error("changed while it was being read. Try again.");
    return *static_cast<IArchive*>(archive.get());
}

IObject ArchiveSession::find(const std::string& object_path) const
{
    IObject object;
    if (!AbcInternal::get_object_by_full_name(get_archive().getTop(), CoreString(object_path), object))
        throw error(object_path, "there is no such object, or it is damaged. 'vo_abc tree' lists all.");
    return object;
}

bool ArchiveSession::get_time_range(double& start, double& end) const
{
    IArchive archive = get_archive();
    Alembic::Abc::GetArchiveStartAndEndTime(archive, start, end);
    return start <= end;
}

double ArchiveSession::get_start_time() const
{
    double start = 0.0, end = 0.0;
    return get_time_range(start, end) ? start : 0.0;
}

ToolError ArchiveSession::error(const std::string& what) const
{
    return ToolError(file_names_ + ": " + what);
}

ToolError ArchiveSession::error(const std::string& object_path, const std::string& what) const
{
    // The top object of layers has no name.
    return ToolError(file_names_ + ": " + (object_path.empty() ? "/" : object_path) + ": " + what);
}

ToolError ArchiveSession::damage(const std::string& object_path, const std::string& reason) const
{
    const std::size_t end = reason.find_last_not_of(". ");
    return error(object_path, "is damaged here (" + reason.substr(0, end + 1) + "). 'vo_abc check' lists all damage.");
}

std::string find_storage(const std::string& file)
{
    std::array<char, 5> start{};
    std::ifstream(file, std::ios::binary).read(start.data(), start.size());
    return std::string(start.data(), start.size()) == "Ogawa" ? "Ogawa" : "HDF5";
}
