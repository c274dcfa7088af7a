#include "scenes.h"

#include <Alembic/AbcCoreOgawa/All.h>
#include <Alembic/AbcGeom/All.h>

#include <cmath>
#include <cstdint>
#include <filesystem>
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

void write_mesh_scene(const std::string& path)
{
    constexpr int side = 1000, points = side + 1, frames = 8;
    uint32_t sampling = 0;
    OArchive archive = make_archive(path, sampling);
    OXform root(archive.getTop(), "root", sampling);
    OPolyMesh grid(root, "grid", sampling);

    const std::vector<int32_t> counts(size_t(side) * side, 4);
    std::vector<int32_t> indices;
    indices.reserve(counts.size() * 4);
    for (int row = 0; row < side; ++row)
        for (int column = 0; column < side; ++column) {
            const int corner = row * points + column;
            indices.insert(indices.end(), {corner, corner + points, corner + points + 1, corner + 1});
        }
    const std::vector<uint32_t> value_indices(indices.begin(), indices.end());
    std::vector<V2f> uvs(size_t(points) * points);
    for (int row = 0; row < points; ++row)
        for (int column = 0; column < points; ++column)
            uvs[size_t(row) * points + column] = V2f(float(column) / side, float(row) / side);

    std::vector<V3f> positions(uvs.size());
    std::vector<N3f> normals(uvs.size());
    for (int frame = 0; frame < frames; ++frame) {
        for (int row = 0; row < points; ++row)
            for (int column = 0; column < points; ++column) {
                const float height = std::sin(column * 0.05f + frame * 0.3f) * std::cos(row * 0.05f);
                positions[size_t(row) * points + column] = V3f(float(column), height, float(row));
                normals[size_t(row) * points + column] = N3f(-height, 1.0f, height * 0.5f);
            }
        OPolyMeshSchema::Sample sample{V3fArraySample(positions)};
        if (frame == 0) {
            sample.setFaceIndices(Int32ArraySample(indices));
            sample.setFaceCounts(Int32ArraySample(counts));
            sample.setUVs(
                OV2fGeomParam::Sample(V2fArraySample(uvs), UInt32ArraySample(value_indices), kFacevaryingScope));
        }
        sample.setNormals(
            ON3fGeomParam::Sample(N3fArraySample(normals), UInt32ArraySample(value_indices), kFacevaryingScope));
        grid.getSchema().set(sample);
    }
}

void write_points_scene(const std::string& path)
{
    constexpr size_t count = 2'000'000;
    uint32_t sampling = 0;
    OArchive archive = make_archive(path, sampling);
    OPoints cloud(archive.getTop(), "cloud", sampling);
    std::vector<V3f> positions(count);
    const std::vector<V3f> velocities(count, V3f(0, 24, 0));
    std::vector<uint64_t> ids(count);
    for (size_t i = 0; i < count; ++i)
        ids[i] = i;
    for (int frame = 0; frame < 4; ++frame) {
        for (size_t i = 0; i < count; ++i)
            positions[i] = V3f(float(i % 1000), float(frame) + float(i % 7), float(i / 1000));
        cloud.getSchema().set(
            OPointsSchema::Sample(P3fArraySample(positions), UInt64ArraySample(ids), V3fArraySample(velocities)));
    }
}

void write_curves_scene(const std::string& path)
{
    constexpr size_t count = 200'000, points = 8;
    uint32_t sampling = 0;
    OArchive archive = make_archive(path, sampling);
    OCurves hair(archive.getTop(), "hair", sampling);
    std::vector<V3f> positions(count * points);
    const std::vector<int32_t> counts(count, int32_t(points));
    const std::vector<float> widths(count * points, 0.02f);
    for (int frame = 0; frame < 4; ++frame) {
        for (size_t i = 0; i < count; ++i)
            for (size_t k = 0; k < points; ++k)
                positions[i * points + k] = V3f(float(i % 500), float(k), float(i / 500) + 0.1f * float(frame));
        hair.getSchema().set(OCurvesSchema::Sample(P3fArraySample(positions), Int32ArraySample(counts), kCubic,
                                                   kNonPeriodic,
                                                   OFloatGeomParam::Sample(FloatArraySample(widths), kVertexScope),
                                                   OV2fGeomParam::Sample(), ON3fGeomParam::Sample(), kBsplineBasis));
    }
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
    if (missing("mesh.abc")) write_mesh_scene(folder + "/mesh.abc");
    if (missing("points.abc")) write_points_scene(folder + "/points.abc");
    if (missing("curves.abc")) write_curves_scene(folder + "/curves.abc");
    if (missing("hierarchy.abc")) write_hierarchy_scene(folder + "/hierarchy.abc", 200, 250);
    if (missing("hierarchy_small.abc")) write_hierarchy_scene(folder + "/hierarchy_small.abc", 4, 250);
}
