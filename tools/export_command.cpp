/// vo_abc export: geometry at a time, as OBJ or PLY files.
#include "archive_arguments.h"
#include "archive_session.h"
#include "argument_checks.h"
#include "command.h"
#include "frame_arguments.h"
#include "obj_writer.h"
#include "object_walk.h"
#include "ply_writer.h"
#include "scene_geometry.h"
#include "text.h"
#include "tool_library.h"
#include "world_matrices.h"

#include <fmt/format.h>
#include <vo_app_base/app_progress_bar.h>

#include <cctype>
#include <filesystem>
#include <memory>
#include <optional>

namespace {

struct ExportOptions
{
    std::vector<std::string> files;
    std::string output, object;
    std::optional<double> time;
    FrameArguments frames;
    bool is_local = false, is_visible_only = false, is_ascii = false, is_ply = false;
};

/// An object that the output's format can hold.
struct ExportItem
{
    std::string path;
    ObjectKind kind;
};

struct ExportList
{
    std::vector<ExportItem> items;
    std::size_t left_out_count = 0; ///< geometries that need the other format
};

bool is_wanted(ObjectKind kind, bool is_ply)
{
    return is_ply ? kind == ObjectKind::POINTS : is_mesh(kind) || kind == ObjectKind::CURVES;
}

ExportList list_items(const ArchiveSession& session, const ExportOptions& options)
{
    ExportList list;
    walk_objects(session, session.find(options.object), [&](const WalkedObject& walked) {
        if (is_wanted(walked.kind, options.is_ply)) list.items.push_back({walked.path, walked.kind});
        if (is_wanted(walked.kind, !options.is_ply)) ++list.left_out_count;
        return true;
    });
    if (!list.items.empty()) return list;
    const std::string what =
        options.is_ply ? "there are no points to export" : "there are no meshes or curves to export";
    const std::string hint = list.left_out_count == 0 ? ". 'vo_abc tree' lists all objects."
                             : options.is_ply         ? "; meshes and curves go to an .obj file."
                                                      : "; points go to a .ply file.";
    throw options.object.empty() ? session.error(what + hint) : session.error(options.object, what + hint);
}

/// Writes one file: what the list holds, at one time (seconds).
class Exporter
{
public:
    Exporter(const ArchiveSession& session, const ExportOptions& options, const ExportList& list)
        : session_(session)
        , options_(options)
        , list_(list)
        , total_count_(static_cast<double>(list.items.size()) *
                       static_cast<double>(options.frames.range ? options.frames.range->get_count() : 1))
    {
    }

    void write(const std::string& path, double time)
    {
        const std::string comment =
            fmt::format("vo_abc {}: {} at {}", VO_ABC_VERSION, session_.get_files().join().get_data(), seconds(time));
        OutputFile file(path);
        object_count_ = 0;
        WorldMatrices matrices(session_, time);
        const auto each_item = [&](auto&& use) {
            for (const ExportItem& item : list_.items) {
                if (!options_.is_visible_only || is_visible(session_, item.path, item.kind, time)) {
                    session_.on_object(item.path, [&] { use(item); });
                    ++object_count_;
                }
                progress_.set_value(static_cast<float>(++done_count_ / total_count_));
            }
        };
        if (options_.is_ply) {
            std::vector<PointsGeometry> objects;
            each_item([&](const ExportItem& item) { objects.push_back(load_points(item, time, matrices)); });
            warn_of_bad_numbers(path, write_ply(file, objects, comment, options_.is_ascii));
            summary_ = describe_points(objects);
        } else {
            ObjWriter writer(file);
            writer.add_comment(comment);
            each_item([&](const ExportItem& item) { write_item(item, time, matrices, writer); });
            summary_ = describe_obj(writer);
            warn(path, writer);
        }
        file.commit();
    }

    /// What the last file holds.
    std::string get_summary() const { return counted(object_count_, "object", "objects") + ", " + summary_; }

private:
    PointsGeometry load_points(const ExportItem& item, double time, WorldMatrices& matrices)
    {
        PointsGeometry points = load_points_geometry(session_, item.path, time);
        if (options_.is_local) return points;
        transform_positions(matrices.get(item.path), points.positions);
        transform_vectors(matrices.get(item.path), points.velocities);
        return points;
    }

    void write_item(const ExportItem& item, double time, WorldMatrices& matrices, ObjWriter& writer)
    {
        if (is_mesh(item.kind)) {
            MeshGeometry mesh = load_mesh_geometry(session_, item.path, time);
            check_face_indices(session_, item.path, mesh);
            if (!options_.is_local) transform_geometry(matrices.get(item.path), mesh);
            writer.add_mesh(item.path, mesh);
        } else {
            CurvesGeometry curves = load_curves_geometry(session_, item.path, time);
            if (!options_.is_local) transform_positions(matrices.get(item.path), curves.curves.positions);
            writer.add_curves(item.path, curves);
        }
    }

    static std::string describe_points(const std::vector<PointsGeometry>& objects)
    {
        std::size_t count = 0;
        for (const PointsGeometry& points : objects)
            count += points.positions.get_count();
        return counted(count, "point", "points");
    }

    static std::string describe_obj(const ObjWriter& writer)
    {
        std::string text = counted(writer.get_face_count(), "face", "faces");
        if (writer.get_line_count() > 0) text += ", " + counted(writer.get_line_count(), "line", "lines");
        return text;
    }

    static void warn(const std::string& path, const ObjWriter& writer)
    {
        if (writer.get_skipped_count() > 0)
            ToolLog::write(path + ": " + counted(writer.get_skipped_count(), "face or curve", "faces or curves") +
                           " of too few points left out");
        warn_of_bad_numbers(path, writer.get_bad_number_count());
    }

    static void warn_of_bad_numbers(const std::string& path, std::uint64_t count)
    {
        if (count == 0) return;
        ToolLog::write(path + ": " + counted(count, "coordinate is", "coordinates are") +
                       " no finite number, written as 0");
    }

    const ArchiveSession& session_;
    const ExportOptions& options_;
    const ExportList& list_;
    AppProgressBar progress_{"Exporting"};
    const double total_count_; ///< objects in all files
    double done_count_ = 0.0;
    std::size_t object_count_ = 0; ///< in the last file
    std::string summary_;
};

/// Writes one file, or one for each frame, and tells what is where. The progress bar is gone when this returns.
std::string write_files(const ArchiveSession& session, const ExportOptions& options, const ExportList& list)
{
    Exporter exporter(session, options, list);
    std::string where = options.output;
    if (options.frames.range) {
        const double fps = options.frames.get_frame_rate(session);
        const auto [first, last] = *options.frames.range;
        for (std::int64_t frame = first; frame <= last; ++frame)
            exporter.write(make_frame_path(options.output, frame), static_cast<double>(frame) / fps);
        where = make_frame_path(options.output, first);
        if (last > first) where += " to " + make_frame_path(options.output, last);
    } else {
        exporter.write(options.output, options.time.value_or(session.get_start_time()));
    }
    return where + ": " + exporter.get_summary();
}

void run_export(const ExportOptions& options)
{
    const ArchiveSession session(options.files);
    const ExportList list = list_items(session, options);
    fmt::print("{}\n", printable(write_files(session, options, list)));
    if (list.left_out_count > 0)
        fmt::print("{} left out: {}\n", counted(list.left_out_count, "object", "objects"),
                   options.is_ply ? "meshes and curves go to an .obj file" : "points go to a .ply file");
}

/// Checks what CLI11 cannot; a ParseError is wrong usage.
void check(ExportOptions& options)
{
    std::string extension = std::filesystem::path(options.output).extension().string();
    for (char& character : extension)
        character = static_cast<char>(std::tolower(static_cast<unsigned char>(character)));
    if (extension != ".obj" && extension != ".ply")
        throw CLI::ValidationError("--output", "the name must end in .obj (meshes and curves) or .ply (points)");
    options.is_ply = extension == ".ply";
}

} // namespace

void add_export_command(CLI::App& program, Action& action)
{
    const auto options = std::make_shared<ExportOptions>();
    CLI::App* const command = program.add_subcommand("export", "Meshes and curves as OBJ, points as PLY");
    add_files_argument(*command, options->files);
    command->add_option("-o,--output", options->output, "File to write: .obj for meshes and curves, .ply for points")
        ->required()
        ->type_name("OUT");
    command->add_option("--object", options->object, "Full name of an object: it alone, and what is below it")
        ->type_name("PATH");
    CLI::Option* const time =
        command->add_option("--time", options->time, "Seconds; without it the start of the archive")
            ->type_name("T")
            ->check(finite_number());
    time->excludes(add_frame_options(*command, options->frames, "One file for each frame, named OUT with its number"));
    command->add_flag("--local", options->is_local, "Leave the transforms of objects out");
    command->add_flag("--visible", options->is_visible_only, "Leave hidden objects out");
    command->add_flag("--ascii", options->is_ascii, "Write PLY as text");
    command->footer("OBJ files hold the first UV set, normals, and shading groups as groups and materials.\n"
                    "Examples:\n"
                    "  vo_abc export walk.abc -o walk.obj\n"
                    "  vo_abc export walk.abc --object /root/body --time 1.25 -o body.obj\n"
                    "  vo_abc export walk.abc --frames 1-24 --fps 24 -o frames/walk.obj   # frames/walk.0001.obj ...\n"
                    "  vo_abc export spray.abc -o spray.ply");
    command->callback([options, &action] {
        check(*options);
        action = [options] { run_export(*options); };
    });
}
