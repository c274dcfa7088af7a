/// vo_abc info: what an archive says about itself.
#include "archive_arguments.h"
#include "archive_session.h"
#include "command.h"
#include "frame_rate.h"
#include "object_walk.h"
#include "text.h"
#include "time_sampling_info.h"
#include "tool_library.h"

#include <Alembic/Abc/ArchiveInfo.h>
#include <abc_input.h>
#include <fmt/format.h>

#include <array>
#include <cstdint>
#include <memory>

using Alembic::Abc::IArchive;

namespace {

struct InfoOptions
{
    std::vector<std::string> files;
    bool is_json = false;
    bool with_statistics = false;
};

struct ArchiveInfo
{
    std::vector<std::string> files, storages;
    std::string application, library_version, date, description;
    std::uint32_t library_version_number = 0; ///< 10000 major + 100 minor + patch
    double fps = 0.0;                         ///< as stored by the application; 0: it did not
    double apparent_fps = 0.0;                ///< as the samplings look like; 0: no telling
    std::vector<std::pair<std::string, std::string>> other_metadata;
    std::vector<TimeSamplingInfo> samplings;
    bool has_times = false;
    double start_time = 0.0, end_time = 0.0; ///< seconds; meaningless unless has_times
    std::array<std::size_t, object_kind_count> object_counts{};
    std::size_t instance_count = 0;
    std::vector<SkippedObject> unreadable;
};

void read_metadata(IArchive& archive, ArchiveInfo& info)
{
    using namespace Alembic::Abc;
    GetArchiveInfo(archive, info.application, info.library_version, info.library_version_number, info.date,
                   info.description, info.fps);
    for (const auto& [key, value] : archive.getTop().getMetaData())
        if (key != kApplicationNameKey && key != kDateWrittenKey && key != kUserDescriptionKey && key != kDCCFPSKey &&
            key != "_ai_AlembicVersion")
            info.other_metadata.emplace_back(key, value);
}

/// Counts every stored object once: an instance counts as one, and what it shows was counted where it is stored.
void count_objects(const ArchiveSession& session, ArchiveInfo& info)
{
    const auto count = [&](const WalkedObject& walked) {
        const bool is_instance = !walked.instance_source.empty();
        if (is_instance)
            ++info.instance_count;
        else if (walked.kind != ObjectKind::TOP)
            ++info.object_counts[static_cast<std::size_t>(walked.kind)];
        return !is_instance;
    };
    walk_objects(session, session.get_archive().getTop(), count,
                 [&](const SkippedObject& skipped) { info.unreadable.push_back(skipped); });
}

ArchiveInfo read_info(const ArchiveSession& session, const std::vector<std::string>& files)
{
    ArchiveInfo info;
    info.files = files;
    for (const std::string& file : files)
        info.storages.push_back(find_storage(file));
    IArchive archive = session.get_archive();
    read_metadata(archive, info);
    for (std::uint32_t i = 0; i < archive.getNumTimeSamplings(); ++i)
        info.samplings.emplace_back(archive, i);
    info.apparent_fps = find_apparent_frame_rate(archive);
    info.has_times = session.get_time_range(info.start_time, info.end_time);
    count_objects(session, info);
    return info;
}

std::string describe_counts(const ArchiveInfo& info)
{
    std::string text;
    const auto add = [&](std::size_t count, const char* one, const char* many) {
        if (count > 0) text += (text.empty() ? "" : ", ") + counted(count, one, many);
    };
    for (int i = 0; i < object_kind_count; ++i) {
        const auto kind = static_cast<ObjectKind>(i);
        const bool is_plural = kind == ObjectKind::CURVES || kind == ObjectKind::POINTS;
        const std::string objects = std::string(get_kind_name(kind)) + (is_plural ? " object" : "");
        const std::string plural = is_plural ? objects + "s" : get_kind_plural(kind);
        add(info.object_counts[static_cast<std::size_t>(i)], objects.c_str(), plural.c_str());
    }
    add(info.instance_count, "instance", "instances");
    return text.empty() ? "none" : text;
}

std::string describe_frame_rate(const ArchiveInfo& info)
{
    if (info.fps > 0.0) return fmt::format("{:.6g} a second", info.fps);
    if (info.apparent_fps > 0.0)
        return fmt::format("not stored; the samplings look like {:.6g} a second", info.apparent_fps);
    return "not stored, and no sampling tells it";
}

std::string describe(const SkippedObject& skipped)
{
    return skipped.path + ": " + (skipped.was_visited ? "objects below are lost: " : "") + skipped.reason;
}

void print_info(const ArchiveInfo& info)
{
    std::vector<std::pair<std::string, std::string>> rows;
    for (std::size_t i = 0; i < info.files.size(); ++i)
        rows.emplace_back(info.files.size() > 1 ? fmt::format("layer {}", i + 1) : "archive",
                          info.files[i] + " (" + info.storages[i] + ")");
    rows.emplace_back("application", info.application);
    rows.emplace_back("library", info.library_version);
    rows.emplace_back("written", info.date);
    rows.emplace_back("description", info.description);
    rows.emplace_back("frame rate", describe_frame_rate(info));
    for (const auto& [key, value] : info.other_metadata)
        rows.emplace_back(key, value);
    rows.emplace_back("time", info.has_times ? time_range(info.start_time, info.end_time) : "no samples");
    std::string samplings;
    for (const TimeSamplingInfo& sampling : info.samplings)
        samplings += sampling.describe() + "\n";
    rows.emplace_back("samplings", samplings);
    rows.emplace_back("objects", describe_counts(info));
    std::string unreadable;
    for (const SkippedObject& skipped : info.unreadable)
        unreadable += printable(describe(skipped)) + "\n";
    rows.emplace_back("unreadable", unreadable);
    print_table(rows);
}

/// Keys of JSON are the plural names, with "_" between words.
std::string json_key(const char* name)
{
    std::string key = name;
    for (char& character : key)
        if (character == ' ') character = '_';
    return key;
}

Json to_json(const ArchiveInfo& info)
{
    Json json;
    json["files"] = info.files;
    json["storage"] = info.storages;
    json["application"] = info.application;
    json["library_version"] = info.library_version;
    json["library_version_number"] = info.library_version_number;
    json["date_written"] = info.date;
    json["description"] = info.description;
    json["frames_per_second"] = info.fps > 0.0 ? Json(info.fps) : Json();
    json["apparent_frames_per_second"] = info.apparent_fps > 0.0 ? Json(info.apparent_fps) : Json();
    json["metadata"] = Json::object();
    for (const auto& [key, value] : info.other_metadata)
        json["metadata"][key] = value;
    json["start_time"] = info.has_times ? Json(info.start_time) : Json();
    json["end_time"] = info.has_times ? Json(info.end_time) : Json();
    json["time_samplings"] = Json::array();
    for (const TimeSamplingInfo& sampling : info.samplings)
        json["time_samplings"].push_back(sampling.to_json());
    for (int i = static_cast<int>(ObjectKind::TRANSFORM); i < object_kind_count; ++i)
        json["objects"][json_key(get_kind_plural(static_cast<ObjectKind>(i)))] =
            info.object_counts[static_cast<std::size_t>(i)];
    json["objects"]["instances"] = info.instance_count;
    json["unreadable"] = Json::array();
    for (const SkippedObject& skipped : info.unreadable)
        json["unreadable"].push_back(
            {{"path", skipped.path}, {"only_below", skipped.was_visited}, {"problem", skipped.reason}});
    return json;
}

void print(const ArchiveInfo& info, const InfoOptions& options)
{
    std::string statistics;
    if (options.with_statistics)
        statistics = ToolLibrary::get_log().collect(CoreLogHandler::LEVEL_INFO, [] { AbcInput::log_statistics(); });
    if (!options.is_json) {
        print_info(info);
        fmt::print("{}{}", statistics.empty() ? "" : "\n", printable_lines(statistics));
        return;
    }
    Json json = to_json(info);
    if (options.with_statistics) json["statistics"] = split_lines(statistics);
    print_json(json);
}

void run_info(const InfoOptions& options)
{
    const ArchiveSession session(options.files);
    const ArchiveInfo info = read_info(session, options.files);
    print(info, options);
    if (!info.unreadable.empty())
        throw session.error(counted(info.unreadable.size(), "object", "objects") +
                            " cannot be read. 'vo_abc check' lists all damage.");
}

} // namespace

void add_info_command(CLI::App& program, Action& action)
{
    const auto options = std::make_shared<InfoOptions>();
    CLI::App* const command = program.add_subcommand("info", "Who wrote an archive, its times, and what is in it");
    add_files_argument(*command, options->files);
    add_json_option(*command, options->is_json);
    command->add_flag("--stats", options->with_statistics, "Add the report on open archives and their memory");
    command->footer("Examples:\n"
                    "  vo_abc info walk.abc\n"
                    "  vo_abc info shot.abc corrections.abc --stats\n"
                    "  vo_abc info walk.abc --json | jq .objects.polygon_meshes");
    command->callback([options, &action] { action = [options] { run_info(*options); }; });
}
