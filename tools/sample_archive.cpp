#include "sample_archive.h"

#include "grid_mesh.h"
#include "tool_error.h"
#include "tool_library.h"

#include <Alembic/AbcGeom/All.h>
#include <abc_output_archive_handle.h>

#include <cmath>
#include <cstdint>
#include <vector>

using namespace Alembic::AbcGeom;

namespace {

constexpr int frame_count = 24;
constexpr double seconds_per_frame = 1.0 / 24.0;
constexpr float two_pi = 6.28318530718f;

/// Fraction of the second that has passed at a frame.
double phase_of(int frame)
{
    return static_cast<double>(frame) / frame_count;
}

/// Numbers from 0 to 1 that look random and are the same everywhere.
class Scatter
{
public:
    float next()
    {
        state_ = state_ * 1664525u + 1013904223u;
        return static_cast<float>(state_ >> 8) / 16777216.0f;
    }

private:
    std::uint32_t state_ = 1;
};

OXform add_transform(const OObject& parent, const std::string& name, const V3d& translation)
{
    OXform xform(parent, name);
    XformSample sample;
    sample.addOp(XformOp(kTranslateOperation, kTranslateHint), translation);
    xform.getSchema().set(sample);
    return xform;
}

void add_face_set(OPolyMeshSchema& mesh, const std::string& name, const std::vector<std::int32_t>& faces)
{
    mesh.createFaceSet(name).getSchema().set(OFaceSetSchema::Sample(faces));
}

V3f torus(float u, float v)
{
    constexpr float ring_radius = 1.0f, tube_radius = 0.35f;
    const float a = two_pi * u, b = two_pi * v;
    const float distance = ring_radius + tube_radius * std::cos(b);
    return V3f(distance * std::cos(a), tube_radius * std::sin(b), -distance * std::sin(a));
}

OPolyMesh add_torus(const OObject& parent)
{
    const GridMesh grid({32, 16, true, true}, torus);
    OPolyMesh mesh(parent, "torusShape");
    mesh.getSchema().set(grid.make_sample());
    const auto is_red = [](int column, int row) { return (column / 2 + row / 4) % 2 == 0; };
    add_face_set(mesh.getSchema(), "red_paint", grid.choose_faces(is_red));
    add_face_set(mesh.getSchema(), "white_paint",
                 grid.choose_faces([&](int column, int row) { return !is_red(column, row); }));
    return mesh;
}

/// The turntable with the torus, turning once in the second, and an instance of the torus beside it.
void add_turntable(const OObject& scene, std::uint32_t sampling)
{
    OXform turntable(scene, "turntable", sampling);
    for (int frame = 0; frame < frame_count; ++frame) {
        XformSample sample;
        sample.addOp(XformOp(kTranslateOperation, kTranslateHint), V3d(0.0, 1.2, 0.0));
        sample.addOp(XformOp(kRotateYOperation, kRotateHint), 360.0 * phase_of(frame));
        sample.addOp(XformOp(kRotateZOperation, kRotateHint), 20.0);
        sample.addOp(XformOp(kScaleOperation, kScaleHint), V3d(1.0, 1.0, 1.0));
        turntable.getSchema().set(sample);
    }
    OCompoundProperty properties = turntable.getSchema().getUserProperties();
    OStringProperty(properties, "asset").set("turntable");
    OInt32Property(properties, "revision").set(3);
    ODoubleProperty(properties, "turns_per_second").set(1.0);
    OV3fProperty(properties, "pivot_color").set(V3f(0.8f, 0.2f, 0.1f));

    const OPolyMesh torus_mesh = add_torus(OXform(turntable, "torus"));
    OXform copy = add_transform(scene, "torus_copy", V3d(3.0, 0.5, -1.0));
    copy.addChildInstance(torus_mesh, "torusInstance");
}

void add_floor(const OObject& scene)
{
    const GridMesh grid({8, 8}, [](float u, float v) { return V3f(8.0f * u - 4.0f, 0.0f, 4.0f - 8.0f * v); });
    OPolyMesh mesh(OXform(scene, "floor"), "floorShape");
    mesh.getSchema().set(grid.make_sample());
    const auto is_dark = [](int column, int row) { return (column + row) % 2 == 0; };
    add_face_set(mesh.getSchema(), "dark_tiles", grid.choose_faces(is_dark));
    add_face_set(mesh.getSchema(), "light_tiles",
                 grid.choose_faces([&](int column, int row) { return !is_dark(column, row); }));
}

/// A cube whose lower edges are creased.
void add_cushion(const OObject& scene)
{
    const std::vector<V3f> points = {{-1, 0, -1}, {1, 0, -1}, {1, 0, 1}, {-1, 0, 1},
                                     {-1, 1, -1}, {1, 1, -1}, {1, 1, 1}, {-1, 1, 1}};
    const std::vector<std::int32_t> indices = {3, 2, 1, 0, 4, 5, 6, 7, 0, 1, 5, 4, 1, 2, 6, 5, 2, 3, 7, 6, 3, 0, 4, 7};
    const std::vector<std::int32_t> outward(indices.rbegin(), indices.rend()); // clockwise seen from outside
    const std::vector<std::int32_t> counts(6, 4);
    const std::vector<std::int32_t> crease_indices = {0, 1, 2, 3, 0}, crease_lengths = {5};
    const std::vector<float> crease_sharpnesses = {4.0f};
    OSubD cushion(add_transform(scene, "cushion", V3d(-2.5, 0.0, 1.5)), "cushionShape");
    cushion.getSchema().set(OSubDSchema::Sample(P3fArraySample(points), outward, counts, crease_indices, crease_lengths,
                                                crease_sharpnesses));
}

void add_flag(const OObject& scene, std::uint32_t sampling)
{
    OPolyMesh flag(add_transform(scene, "flag", V3d(-3.0, 2.0, -2.0)), "flagShape", sampling);
    for (int frame = 0; frame < frame_count; ++frame) {
        const auto phase = static_cast<float>(phase_of(frame));
        const GridMesh grid({12, 8}, [phase](float u, float v) {
            return V3f(1.8f * u, 1.2f * v, 0.25f * u * std::sin(two_pi * (u - phase)));
        });
        flag.getSchema().set(grid.make_sample());
    }
}

void add_grass(const OObject& scene)
{
    constexpr int blade_count = 60, points_per_blade = 4;
    std::vector<V3f> points;
    std::vector<float> widths;
    Scatter scatter;
    for (int blade = 0; blade < blade_count; ++blade) {
        const float x = 2.0f * scatter.next(), z = 2.0f * scatter.next(), lean = 0.4f * (scatter.next() - 0.5f);
        const float height = 0.4f + 0.4f * scatter.next();
        for (int i = 0; i < points_per_blade; ++i) {
            const float t = static_cast<float>(i) / (points_per_blade - 1);
            points.emplace_back(x + lean * t * t, height * t, z);
            widths.push_back(0.03f * (1.0f - 0.9f * t));
        }
    }
    const std::vector<std::int32_t> counts(blade_count, points_per_blade);
    OCurves grass(add_transform(scene, "grass", V3d(1.5, 0.0, 1.5)), "grassShape");
    grass.getSchema().set(OCurvesSchema::Sample(P3fArraySample(points), counts, kCubic, kNonPeriodic,
                                                OFloatGeomParam::Sample(FloatArraySample(widths), kVertexScope),
                                                OV2fGeomParam::Sample(), ON3fGeomParam::Sample(), kCatmullromBasis));
}

/// Drops that are thrown up one after another and fall back, each with the velocity of its place.
void add_fountain(const OObject& scene, std::uint32_t sampling)
{
    constexpr int drop_count = 120;
    constexpr float gravity = 9.81f, start_speed = 5.0f;
    OPoints fountain(add_transform(scene, "fountain", V3d(2.0, 0.0, -2.5)), "fountainShape", sampling);
    for (int frame = 0; frame < frame_count; ++frame) {
        std::vector<V3f> positions, velocities;
        std::vector<std::uint64_t> ids;
        Scatter scatter;
        for (int drop = 0; drop < drop_count; ++drop) {
            const float direction = two_pi * scatter.next(), spread = 0.6f * scatter.next(), start = scatter.next();
            const float age = std::fmod(static_cast<float>(phase_of(frame)) + start, 1.0f);
            const V3f start_velocity(spread * std::cos(direction), start_speed, spread * std::sin(direction));
            positions.push_back(start_velocity * age - V3f(0.0f, 0.5f * gravity * age * age, 0.0f));
            velocities.push_back(start_velocity - V3f(0.0f, gravity * age, 0.0f));
            ids.push_back(static_cast<std::uint64_t>(drop));
        }
        fountain.getSchema().set(
            OPointsSchema::Sample(P3fArraySample(positions), UInt64ArraySample(ids), V3fArraySample(velocities)));
    }
}

/// A camera that drives in and zooms.
void add_camera(const OObject& scene, std::uint32_t sampling)
{
    OXform dolly(scene, "camera", sampling);
    OCamera camera(dolly, "cameraShape", sampling);
    for (int frame = 0; frame < frame_count; ++frame) {
        XformSample place;
        place.addOp(XformOp(kTranslateOperation, kTranslateHint), V3d(0.0, 3.0, 12.0 - 3.0 * phase_of(frame)));
        place.addOp(XformOp(kRotateXOperation, kRotateHint), -12.0);
        dolly.getSchema().set(place);
        CameraSample lens;
        lens.setFocalLength(35.0 + 15.0 * phase_of(frame));
        lens.setHorizontalAperture(3.6);
        lens.setVerticalAperture(2.4);
        lens.setFocusDistance(10.0);
        lens.setFStop(4.0);
        camera.getSchema().set(lens);
    }
}

void add_visibilities(const OObject& scene, std::uint32_t sampling)
{
    const GridMesh grid({2, 2}, [](float u, float v) { return V3f(u - 0.5f, v - 0.5f, 0.0f); });
    OPolyMesh lamp(add_transform(scene, "lamp", V3d(0.0, 4.0, 0.0)), "lampShape");
    lamp.getSchema().set(grid.make_sample());
    OVisibilityProperty blinking = CreateVisibilityProperty(lamp, sampling);
    for (int frame = 0; frame < frame_count; ++frame)
        blinking.set(static_cast<std::int8_t>(frame / 6 % 2 == 0 ? kVisibilityVisible : kVisibilityHidden));

    OXform helper = add_transform(scene, "helper", V3d(0.0, 0.0, 0.0));
    CreateVisibilityProperty(helper, 0).set(static_cast<std::int8_t>(kVisibilityHidden));
    OPolyMesh(helper, "helperShape").getSchema().set(grid.make_sample());
}

void add_scene(AbcOutputArchiveHandle& archive)
{
    const std::uint32_t sampling = archive.get_time_sampling_index();
    const OXform scene(archive.getTop(), "scene");
    add_turntable(scene, sampling);
    add_floor(scene);
    add_cushion(scene);
    add_flag(scene, sampling);
    add_grass(scene);
    add_fountain(scene, sampling);
    add_camera(scene, sampling);
    add_visibilities(scene, sampling);
}

} // namespace

void write_sample_archive(const std::string& path)
{
    AbcOutputArchiveHandle archive(CoreString(path), seconds_per_frame, 0.0, ToolLibrary::get_application());
    if (!archive.is_valid()) throw ToolError(path + ": cannot be written. Does its folder exist?");
    add_scene(archive);
    const std::string errors = archive.get_error_log().get_data();
    if (!errors.empty()) throw ToolError(path + ": cannot be written: " + errors);
}
