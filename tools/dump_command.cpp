/// vo_abc dump: all about one object at a time.
#include "archive_arguments.h"
#include "archive_session.h"
#include "argument_checks.h"
#include "command.h"
#include "object_description.h"
#include "object_walk.h"
#include "property_values.h"
#include "scene_geometry.h"
#include "text.h"
#include "world_matrices.h"

#include <abc_animation_header.h>
#include <abc_camera_header.h>
#include <abc_curve_header.h>
#include <abc_input.h>
#include <abc_pivot_data.h>
#include <fmt/format.h>

#include <memory>
#include <optional>

namespace {

struct DumpOptions
{
    std::vector<std::string> arguments; ///< FILES and, last, OBJECT
    std::optional<double> time;
    bool is_json = false;
};

Json to_json(const GMathVec3<double>& vector)
{
    return {vector.x, vector.y, vector.z};
}

/// Four rows, for column vectors.
Json to_json(const GMathMatrix4x4<double>& matrix)
{
    Json json = Json::array();
    for (int row = 0; row < 4; ++row)
        json.push_back({matrix[row][0], matrix[row][1], matrix[row][2], matrix[row][3]});
    return json;
}

const char* get_order_name(unsigned int order)
{
    switch (order) {
    case GMathRotation::ORDER_XZY:
        return "XZY";
    case GMathRotation::ORDER_YZX:
        return "YZX";
    case GMathRotation::ORDER_YXZ:
        return "YXZ";
    case GMathRotation::ORDER_ZXY:
        return "ZXY";
    case GMathRotation::ORDER_ZYX:
        return "ZYX";
    default:
        return "XYZ";
    }
}

Json to_json(const GMathTransform& transform)
{
    return {{"translation", to_json(transform.get_translation())},
            {"rotation", to_json(transform.get_rotation())},
            {"rotation_order", get_order_name(transform.get_rotation_order())},
            {"scale", to_json(transform.get_scale())},
            {"shear", to_json(transform.get_shear())},
            {"rotate_orientation", to_json(transform.get_rotate_orientation())},
            {"rotate_pivot", to_json(transform.get_rotate_pivot())},
            {"rotate_pivot_translation", to_json(transform.get_rotate_pivot_translation())},
            {"scale_pivot", to_json(transform.get_scale_pivot())},
            {"scale_pivot_translation", to_json(transform.get_scale_pivot_translation())}};
}

/// One object at one time (seconds).
class Dump
{
public:
    Dump(const ArchiveSession& session, const std::string& path, double time)
        : session_(session)
        , object_(session.find(path))
        , path_(object_.getFullName())
        , name_(path_)
        , time_(time)
    {
    }

    Json read()
    {
        return session_.on_object(path_, [&] {
            Json json;
            json["path"] = path_;
            const ObjectKind kind = get_object_kind(object_);
            describe(kind, json);
            json["time"] = time_;
            add_kind(kind, json);
            json["world_matrix"] = to_json(WorldMatrices(session_, time_).get(path_));
            json["properties"] = read_property_values(session_, path_, time_);
            return json;
        });
    }

private:
    void describe(ObjectKind kind, Json& json)
    {
        WalkedObject walked{object_, path_, 0, kind, ""};
        if (object_.isInstanceRoot()) walked.instance_source = object_.instanceSourcePath();
        const auto parent = object_.getParent();
        const ObjectDescription description = describe_object(
            session_, walked, parent.valid() ? read_inherited_visibility(parent) : AbcVisibilityHeader());
        if (!description.problem.empty()) throw session_.damage(path_, description.problem);
        description.add_to(json);
        // The description has set the handle on the object, if it is of a kind that handles hold.
        if (description.has_samples) json["visible"] = AbcInput::is_object_visible_at(session_.get_handle(), time_);
    }

    void add_kind(ObjectKind kind, Json& json)
    {
        if (kind == ObjectKind::TRANSFORM) json["transform"] = read_transform();
        if (kind == ObjectKind::CAMERA) json["camera"] = read_camera();
        if (is_mesh(kind)) json["mesh"] = read_mesh();
        if (kind == ObjectKind::SUBDIVISION_MESH) json["creases"] = read_creases();
        if (kind == ObjectKind::CURVES) json["curves"] = read_curves();
        if (kind == ObjectKind::POINTS) json["points"] = read_points();
    }

    ToolError damaged() const { return session_.error(path_, "cannot be read: it is damaged"); }

    Json read_transform()
    {
        AbcPivotData pivot_data;
        GMathMatrix4x4<double> matrix;
        if (!AbcInput::evaluate_pivot_data(session_.get_handle(), time_, pivot_data) ||
            !AbcInput::evaluate_pivot_matrix(session_.get_handle(), time_, matrix))
            throw damaged();
        Json json;
        json["inherits"] = pivot_data.inherits_transform;
        // Operations in an order that the components have no place for leave only the matrix.
        if (!pivot_data.use_matrix) json["components"] = to_json(pivot_data.transform);
        json["matrix"] = to_json(matrix);
        return json;
    }

    Json read_camera()
    {
        AbcCameraHeader camera;
        if (!AbcInput::evaluate_camera_attributes(session_.get_handle(), time_, camera)) throw damaged();
        return {{"focal_length", camera.focal_length},
                {"horizontal_aperture", camera.horizontal_aperture},
                {"vertical_aperture", camera.vertical_aperture},
                {"horizontal_film_offset", camera.horizontal_film_offset},
                {"vertical_film_offset", camera.vertical_film_offset},
                {"lens_squeeze_ratio", camera.lens_squeeze_ratio},
                {"focus_distance", camera.focus_distance},
                {"f_stop", camera.f_stop},
                {"overscan_left", camera.overscan_left},
                {"overscan_right", camera.overscan_right},
                {"overscan_top", camera.overscan_top},
                {"overscan_bottom", camera.overscan_bottom},
                {"fit_mode", AbcCameraHeader::get_fit_mode_name(camera.fit_mode)}};
    }

    Json read_mesh()
    {
        const MeshGeometry mesh = load_mesh_geometry(session_, path_, time_);
        Json json{{"points", mesh.positions.get_count()},
                  {"faces", mesh.face_counts.get_count()},
                  {"corners", mesh.face_indices.get_count()}};
        std::vector<std::size_t> face_counts(mesh.group_names.get_count());
        for (const unsigned int group : mesh.face_groups)
            ++face_counts[group];
        json["groups"] = Json::object();
        for (unsigned int i = 0; i < mesh.group_names.get_count(); ++i)
            json["groups"][mesh.group_names[i].get_data()] = face_counts[i];
        json["uv_sets"] = Json::array();
        for (const GeometryUvMap& map : mesh.uv_maps)
            json["uv_sets"].push_back(map.name.get_data());
        json["has_normals"] = !mesh.normal_maps.is_empty();
        return json;
    }

    Json read_creases()
    {
        CoreVector<CoreString> property_names;
        CoreArray<int> indices;
        CoreArray<float> sharpnesses;
        // False is a mesh without creases: what is damaged throws, or was refused with the mesh.
        static_cast<void>(
            AbcInput::load_mesh_subdiv(session_.get_files(), name_, time_, property_names, indices, sharpnesses));
        return {{"indices", indices.get_count()}, {"creases", sharpnesses.get_count()}};
    }

    Json read_curves()
    {
        AbcCurveHeader curves;
        if (!AbcInput::load_curve(session_.get_files(), name_, time_, curves, nullptr)) throw damaged();
        return {{"curves", curves.vertex_counts.get_count()},
                {"points", curves.positions.get_count()},
                {"type", AbcCurveHeader::get_curve_type_name(curves.curve_type)},
                {"basis", AbcCurveHeader::get_basis_type_name(curves.basis_type)},
                {"periodicity", AbcCurveHeader::get_periodicity_type_name(curves.periodicity_type)},
                {"radii", curves.radii.get_count()},
                {"has_normals", !curves.normal_maps.is_empty()},
                {"has_uvs", !curves.uv_maps.is_empty()},
                {"has_colors", !curves.color_maps.is_empty()}};
    }

    Json read_points()
    {
        const PointsGeometry points = load_points_geometry(session_, path_, time_);
        return {{"points", points.positions.get_count()}, {"has_velocities", !points.velocities.is_empty()}};
    }

    const ArchiveSession& session_;
    const Alembic::Abc::IObject object_;
    const std::string path_;
    const CoreString name_;
    const double time_;
};

/// Rows of a table for a JSON value; a matrix takes a line a row, an object a row a member.
void add_rows(const std::string& key, const Json& json, std::vector<std::pair<std::string, std::string>>& rows)
{
    if (json.is_object()) {
        for (const auto& [name, value] : json.items())
            add_rows(key.empty() ? name : key + "." + name, value, rows);
        return;
    }
    std::string text =
        json.is_string() ? json.get<std::string>() : json.dump(-1, ' ', false, Json::error_handler_t::replace);
    if (json.is_array() && !json.empty() && json[0].is_array()) {
        text.clear();
        for (const Json& row : json)
            text += row.dump() + "\n";
    }
    rows.emplace_back(key, text);
}

void run_dump(const DumpOptions& options)
{
    const std::vector<std::string> files(options.arguments.begin(), options.arguments.end() - 1);
    const ArchiveSession session(files);
    const double time = options.time.value_or(session.get_start_time());
    const Json json = Dump(session, options.arguments.back(), time).read();
    if (options.is_json) return print_json(json);
    std::vector<std::pair<std::string, std::string>> rows;
    add_rows("", json, rows);
    print_table(rows);
}

} // namespace

void add_dump_command(CLI::App& program, Action& action)
{
    const auto options = std::make_shared<DumpOptions>();
    CLI::App* const command = program.add_subcommand("dump", "All about one object at a time");
    command->add_option("FILES", options->arguments, "The archive's files, then the full name of the object")
        ->required()
        ->expected(2, CLI::detail::expected_max_vector_size)
        ->type_name("OBJECT");
    command->add_option("--time", options->time, "Seconds; without it the start of the archive")
        ->type_name("T")
        ->check(finite_number());
    add_json_option(*command, options->is_json);
    command->footer("Matrices are for column vectors: the translation is the last column. Angles are degrees; focal\n"
                    "length, apertures and film offsets of cameras are metres, all else is as stored.\n"
                    "Examples:\n"
                    "  vo_abc dump walk.abc /root/body\n"
                    "  vo_abc dump walk.abc /root/camera/cameraShape --time 1.25 --json | jq .camera.focal_length");
    command->callback([options, &action] { action = [options] { run_dump(*options); }; });
}
