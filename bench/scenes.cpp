#include "scenes.h"

#include <Alembic/AbcCoreOgawa/All.h>
#include <Alembic/AbcGeom/All.h>

#include <cmath>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <vector>

using namespace Alembic::AbcGeom;

namespace {

/// An archive with one uniform sampling of 24 samples a second, whose index is `sampling`.
OArchive make_archive(const std::string& path, uint32_t& sampling)
{
    OArchive archive(Alembic::AbcCoreOgawa::WriteArchive(), path, ErrorHandler::kThrowPolicy);
    sampling = archive.addTimeSampling(TimeSampling(1.0 / 24.0, 0.0));
    return archive;
}

} // namespace

SceneWriter make_mesh_scene()
{
    constexpr int side = 1000, points = side + 1, frames = 8;
    struct Frame
    {
        std::vector<V3f> positions = std::vector<V3f>(size_t(points) * points);
        std::vector<N3f> normals = std::vector<N3f>(size_t(points) * points);
    };
    struct Scene
    {
        std::vector<int32_t> counts = std::vector<int32_t>(size_t(side) * side, 4), indices;
        std::vector<uint32_t> value_indices;
        std::vector<V2f> uvs = std::vector<V2f>(size_t(points) * points);
        std::vector<Frame> frames;
    };
    const auto scene = std::make_shared<Scene>();
    for (int row = 0; row < side; ++row)
        for (int column = 0; column < side; ++column) {
            const int corner = row * points + column;
            scene->indices.insert(scene->indices.end(), {corner, corner + points, corner + points + 1, corner + 1});
        }
    scene->value_indices.assign(scene->indices.begin(), scene->indices.end());
    for (int row = 0; row < points; ++row)
        for (int column = 0; column < points; ++column)
            scene->uvs[size_t(row) * points + column] = V2f(float(column) / side, float(row) / side);
    scene->frames.resize(frames);
    for (int frame = 0; frame < frames; ++frame)
        for (int row = 0; row < points; ++row)
            for (int column = 0; column < points; ++column) {
                const float height = std::sin(column * 0.05f + frame * 0.3f) * std::cos(row * 0.05f);
                Frame& values = scene->frames[size_t(frame)];
                values.positions[size_t(row) * points + column] = V3f(float(column), height, float(row));
                values.normals[size_t(row) * points + column] = N3f(-height, 1.0f, height * 0.5f);
            }

    return [scene](const std::string& path) {
        uint32_t sampling = 0;
        OArchive archive = make_archive(path, sampling);
        OXform root(archive.getTop(), "root", sampling);
        OPolyMesh grid(root, "grid", sampling);
        for (const Frame& frame : scene->frames) {
            OPolyMeshSchema::Sample sample{V3fArraySample(frame.positions)};
            if (&frame == &scene->frames.front()) {
                sample.setFaceIndices(Int32ArraySample(scene->indices));
                sample.setFaceCounts(Int32ArraySample(scene->counts));
                sample.setUVs(OV2fGeomParam::Sample(V2fArraySample(scene->uvs), UInt32ArraySample(scene->value_indices),
                                                    kFacevaryingScope));
            }
            sample.setNormals(ON3fGeomParam::Sample(N3fArraySample(frame.normals),
                                                    UInt32ArraySample(scene->value_indices), kFacevaryingScope));
            grid.getSchema().set(sample);
        }
    };
}

SceneWriter make_points_scene()
{
    constexpr size_t count = 2'000'000;
    struct Scene
    {
        std::vector<std::vector<V3f>> positions = std::vector<std::vector<V3f>>(4, std::vector<V3f>(count));
        std::vector<V3f> velocities = std::vector<V3f>(count, V3f(0, 24, 0));
        std::vector<uint64_t> ids = std::vector<uint64_t>(count);
    };
    const auto scene = std::make_shared<Scene>();
    for (size_t i = 0; i < count; ++i)
        scene->ids[i] = i;
    for (size_t frame = 0; frame < scene->positions.size(); ++frame)
        for (size_t i = 0; i < count; ++i)
            scene->positions[frame][i] = V3f(float(i % 1000), float(frame) + float(i % 7), float(i / 1000));

    return [scene](const std::string& path) {
        uint32_t sampling = 0;
        OArchive archive = make_archive(path, sampling);
        OPoints cloud(archive.getTop(), "cloud", sampling);
        for (const std::vector<V3f>& positions : scene->positions)
            cloud.getSchema().set(OPointsSchema::Sample(P3fArraySample(positions), UInt64ArraySample(scene->ids),
                                                        V3fArraySample(scene->velocities)));
    };
}

SceneWriter make_curves_scene()
{
    constexpr size_t count = 200'000, points = 8;
    struct Scene
    {
        std::vector<std::vector<V3f>> positions = std::vector<std::vector<V3f>>(4, std::vector<V3f>(count* points));
        std::vector<int32_t> counts = std::vector<int32_t>(count, int32_t(points));
        std::vector<float> widths = std::vector<float>(count * points, 0.02f);
    };
    const auto scene = std::make_shared<Scene>();
    for (size_t frame = 0; frame < scene->positions.size(); ++frame)
        for (size_t i = 0; i < count; ++i)
            for (size_t k = 0; k < points; ++k)
                scene->positions[frame][i * points + k] =
                    V3f(float(i % 500), float(k), float(i / 500) + 0.1f * float(frame));

    return [scene](const std::string& path) {
        uint32_t sampling = 0;
        OArchive archive = make_archive(path, sampling);
        OCurves hair(archive.getTop(), "hair", sampling);
        for (const std::vector<V3f>& positions : scene->positions)
            hair.getSchema().set(
                OCurvesSchema::Sample(P3fArraySample(positions), Int32ArraySample(scene->counts), kCubic, kNonPeriodic,
                                      OFloatGeomParam::Sample(FloatArraySample(scene->widths), kVertexScope),
                                      OV2fGeomParam::Sample(), ON3fGeomParam::Sample(), kBsplineBasis));
    };
}

void write_hierarchy_scene(const std::string& path, int groups, int props)
{
    uint32_t sampling = 0;
    OArchive archive = make_archive(path, sampling);
    std::vector<V3f> positions = {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}};
    const std::vector<int32_t> indices = {0, 3, 2, 1}, counts = {4};
    for (int g = 0; g < groups; ++g) {
        OXform group(archive.getTop(), "group" + std::to_string(g), sampling);
        XformSample place;
        place.setTranslation(V3d(g, 0, 0));
        group.getSchema().set(place);
        for (int p = 0; p < props; ++p) {
            OXform prop(group, "prop" + std::to_string(p), sampling);
            for (int frame = 0; frame < 3; ++frame) {
                XformSample motion;
                motion.setTranslation(V3d(p, frame * 0.1, 0));
                motion.setYRotation(frame * 10.0);
                prop.getSchema().set(motion);
            }
            OPolyMesh shape(prop, "shape", sampling);
            for (V3f& point : positions)
                point.z = float(p) * 0.001f + float(g);
            shape.getSchema().set(OPolyMeshSchema::Sample(V3fArraySample(positions), Int32ArraySample(indices),
                                                          Int32ArraySample(counts)));
        }
    }
}

void write_missing_scenes(const std::string& folder)
{
    std::filesystem::create_directories(folder);
    const auto missing = [&](const char* name) { return !std::filesystem::exists(folder + "/" + name); };
    if (missing("mesh.abc")) make_mesh_scene()(folder + "/mesh.abc");
    if (missing("points.abc")) make_points_scene()(folder + "/points.abc");
    if (missing("curves.abc")) make_curves_scene()(folder + "/curves.abc");
    if (missing("hierarchy.abc")) write_hierarchy_scene(folder + "/hierarchy.abc", 200, 250);
    if (missing("hierarchy_small.abc")) write_hierarchy_scene(folder + "/hierarchy_small.abc", 4, 250);
}
