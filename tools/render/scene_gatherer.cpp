#include "scene_gatherer.h"

#include "tool_library.h"
#include "traced_geometry.h"
#include "world_matrices.h"

#include <abc_input.h>
#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace {

constexpr double transform_step =
    1.0 / 96.0; // seconds: half a frame's blur, over which a transform's velocity is taken
constexpr std::size_t max_corner_count = std::size_t{1} << 28; // of one object: what it needs stays in memory's reach

bool is_geometry(ObjectKind kind)
{
    return is_mesh(kind) || kind == ObjectKind::CURVES || kind == ObjectKind::POINTS;
}

bool are_all_zero(const CoreArray<Vec3>& vectors)
{
    return std::all_of(vectors.begin(), vectors.end(), [](const Vec3& vector) { return vector == Vec3{}; });
}

double find_scale(const Matrix& matrix)
{
    const GMathVec3<double> x = matrix.transform_vector({1, 0, 0}), y = matrix.transform_vector({0, 1, 0}),
                            z = matrix.transform_vector({0, 0, 1});
    return std::cbrt(std::abs(dot(cross(x, y), z)));
}

/// Points that cannot be drawn at one of the steps are moved out of the way and marked.
void mark_usable_points(WorldObject& object)
{
    const std::size_t count = object.positions.front().get_count();
    object.is_usable.assign(count, 1);
    for (const CoreArray<Vec3>& step : object.positions)
        for (std::size_t i = 0; i < count; ++i)
            if (!is_drawable(step[i])) object.is_usable[i] = 0;
    for (CoreArray<Vec3>& step : object.positions)
        for (std::size_t i = 0; i < count; ++i)
            if (!object.is_usable[i]) step[i] = {};
    for (Vec3& velocity : object.velocities)
        if (!is_drawable(velocity)) velocity = {};
}

} // namespace

/// Where objects stand at each step of the shutter, and just before and after its time.
class SceneGatherer::Motion
{
public:
    Motion(const ArchiveSession& session, const Shutter& shutter)
        : shutter_(shutter)
        , centre_(session, shutter.time)
        , before_(session, shutter.time - transform_step)
        , after_(session, shutter.time + transform_step)
    {
        for (int step = 0; step < shutter.get_step_count(); ++step)
            steps_.emplace_back(session, shutter.time + shutter.get_step_offset(step));
    }

    double get_time() const { return shutter_.time; }
    const Matrix& get_matrix(const std::string& path) { return centre_.get(path); }

    /// Moves points, and their velocities in units a second or none, into the world.
    void move(const std::string& path, const CoreArray<Vec3>& points, CoreArray<Vec3> velocities, bool wants_velocities,
              WorldObject& object)
    {
        const bool points_move = !velocities.is_empty() && !are_all_zero(velocities);
        const bool is_still = !points_move || shutter_.get_step_count() == 1;
        std::vector<int> steps = {0};
        if (does_transform_move(path))
            for (int step = 1; step < shutter_.get_step_count(); ++step)
                steps.push_back(step);
        else if (!is_still)
            steps.push_back(shutter_.get_step_count() - 1);
        for (const int step : steps) {
            const Matrix& matrix = steps_[static_cast<std::size_t>(step)].get(path);
            const auto offset = static_cast<float>(shutter_.get_step_offset(step));
            CoreArray<Vec3> moved(points.get_count());
            for (std::size_t i = 0; i < points.get_count(); ++i)
                moved[i] = transform_point(matrix, points_move ? points[i] + velocities[i] * offset : points[i]);
            object.positions.push_back(std::move(moved));
        }
        if (wants_velocities) object.velocities = find_velocities(path, points, velocities);
        mark_usable_points(object);
    }

private:
    bool does_transform_move(const std::string& path)
    {
        return std::any_of(steps_.begin(), steps_.end(),
                           [&](WorldMatrices& step) { return step.get(path) != steps_.front().get(path); });
    }

    CoreArray<Vec3> find_velocities(const std::string& path, const CoreArray<Vec3>& points,
                                    const CoreArray<Vec3>& velocities)
    {
        const Matrix &matrix = centre_.get(path), &before = before_.get(path), &after = after_.get(path);
        CoreArray<Vec3> moved(points.get_count());
        for (std::size_t i = 0; i < points.get_count(); ++i) {
            const Vec3 way = transform_point(after, points[i]) - transform_point(before, points[i]);
            moved[i] = way * static_cast<float>(0.5 / transform_step);
            if (!velocities.is_empty()) moved[i] = moved[i] + transform_vector(matrix, velocities[i]);
        }
        return moved;
    }

    const Shutter shutter_;
    WorldMatrices centre_, before_, after_;
    std::vector<WorldMatrices> steps_;
};

SceneGatherer::SceneGatherer(const ArchiveSession& session, const std::string& object_path, bool wants_velocities)
    : session_(session)
    , wants_velocities_(wants_velocities)
{
    const auto visit = [&](const WalkedObject& walked) {
        if (is_geometry(walked.kind)) items_.push_back({walked.path, walked.kind});
        return true;
    };
    const auto skip = [&](const SkippedObject& skipped) {
        ++unlisted_count_;
        warn(session.damage(skipped.path, skipped.reason).what());
    };
    walk_objects(session, session.find(object_path), visit, skip);
}

WorldScene SceneGatherer::gather(const Shutter& shutter)
{
    WorldScene scene;
    Motion motion(session_, shutter);
    for (const Item& item : items_) {
        bool is_read = false;
        const std::string log = ToolLibrary::get_log().collect(CoreLogHandler::LEVEL_WARNING, [&] {
            try {
                session_.on_object(item.path, [&] { gather_item(item, motion, scene); });
                is_read = true;
            } catch (const ToolError& error) {
                warn(std::string(error.what()) + " It is left out.");
            }
        });
        if (is_read)
            ++read_count_;
        else
            unreadable_.insert(item.path);
        if (is_read && !log.empty()) warn(log); // of a failure the error says more
    }
    return scene;
}

void SceneGatherer::gather_item(const Item& item, Motion& motion, WorldScene& scene)
{
    if (!is_visible(session_, item.path, item.kind, motion.get_time())) return;
    if (is_mesh(item.kind))
        scene.meshes.push_back(gather_mesh(item, motion));
    else if (item.kind == ObjectKind::CURVES)
        scene.curves.push_back(gather_curves(item, motion));
    else
        scene.points.push_back(gather_points(item, motion));
}

WorldMesh SceneGatherer::gather_mesh(const Item& item, Motion& motion)
{
    const double time = find_topology_time(session_, item.path, item.kind, motion.get_time());
    WorldMesh mesh;
    mesh.path = item.path;
    mesh.is_subdivision = item.kind == ObjectKind::SUBDIVISION_MESH;
    mesh.geometry = load_mesh_geometry(session_, item.path, time);
    if (mesh.geometry.face_indices.get_count() > max_corner_count)
        throw session_.error(item.path, "the mesh has more than 268 million corners.");
    if (mesh.is_subdivision) mesh.creases = read_creases(item.path, time, mesh.geometry);
    follow(mesh.geometry.velocities, motion.get_time() - time, mesh.geometry.positions);
    motion.move(item.path, mesh.geometry.positions, std::move(mesh.geometry.velocities), wants_velocities_, mesh);
    mesh.geometry.positions.clear();
    transform_geometry(motion.get_matrix(item.path), mesh.geometry);
    if (mesh.is_subdivision && !can_subdivide(mesh)) {
        warn(session_
                 .error(item.path, "a face has more than 15 corners, or a point more than 60 faces. The mesh is shown "
                                   "without being subdivided.")
                 .what());
        mesh.is_subdivision = false;
    }
    return mesh;
}

WorldCurves SceneGatherer::gather_curves(const Item& item, Motion& motion)
{
    const double time = find_topology_time(session_, item.path, item.kind, motion.get_time());
    CurvesGeometry geometry = load_curves_geometry(session_, item.path, time);
    if (geometry.curves.positions.get_count() > max_corner_count)
        throw session_.error(item.path, "the curves have more than 268 million points.");
    WorldCurves curves;
    curves.path = item.path;
    follow(geometry.velocities, motion.get_time() - time, geometry.curves.positions);
    motion.move(item.path, geometry.curves.positions, std::move(geometry.velocities), wants_velocities_, curves);
    curves.curves = std::move(geometry.curves);
    curves.curves.positions.clear();
    curves.radius_scale = static_cast<float>(find_scale(motion.get_matrix(item.path)));
    for (const float radius : curves.curves.radii)
        if (is_drawable({radius, 0, 0})) curves.max_radius = std::max(curves.max_radius, radius * curves.radius_scale);
    return curves;
}

WorldPoints SceneGatherer::gather_points(const Item& item, Motion& motion)
{
    PointsGeometry geometry = load_points_geometry(session_, item.path, motion.get_time());
    WorldPoints points;
    points.path = item.path;
    motion.move(item.path, geometry.positions, std::move(geometry.velocities), wants_velocities_, points);
    return points;
}

void SceneGatherer::follow(const CoreArray<Vec3>& velocities, double seconds, CoreArray<Vec3>& positions)
{
    if (seconds == 0.0 || velocities.is_empty()) return;
    for (std::size_t i = 0; i < positions.get_count(); ++i)
        positions[i] = positions[i] + velocities[i] * static_cast<float>(seconds);
}

std::vector<CreaseEdge> SceneGatherer::read_creases(const std::string& path, double time, const MeshGeometry& mesh)
{
    CoreVector<CoreString> property_names;
    CoreArray<int> indices;
    CoreArray<float> sharpnesses;
    std::vector<CreaseEdge> edges;
    if (AbcInput::load_mesh_subdiv(session_.get_files(), CoreString(path), time, property_names, indices,
                                   sharpnesses) &&
        !find_crease_edges(indices, sharpnesses, mesh.face_counts, mesh.face_indices, edges))
        warn(session_.error(path, "its creases do not fit its edges. It is shown without them.").what());
    return edges;
}

void SceneGatherer::warn(const std::string& what)
{
    if (warnings_.insert(what).second) ToolLog::write(what);
}
