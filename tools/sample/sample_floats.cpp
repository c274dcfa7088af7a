/// What floats: rings and buoys.
#include "grid_mesh.h"
#include "sample_parts.h"

#include <cmath>

using namespace Alembic::AbcGeom;

namespace sample {

namespace {

constexpr float radians_to_degrees = 180.0f / pi;

/// Where a thing floats and how it leans: on the water between four places round its own.
struct Floating
{
    Floating(const V3f& place, float phase)
    {
        constexpr float reach = 0.35f;
        centre = sea_point(place.x, place.z, phase);
        const V3f along_x = sea_point(place.x + reach, place.z, phase) - sea_point(place.x - reach, place.z, phase);
        const V3f along_z = sea_point(place.x, place.z + reach, phase) - sea_point(place.x, place.z - reach, phase);
        roll = std::atan2(along_x.y, along_x.x) * radians_to_degrees;
        pitch = -std::atan2(along_z.y, along_z.z) * radians_to_degrees;
    }

    V3f centre;
    float roll, pitch; ///< degrees about z and x
};

V3f torus(float u, float v)
{
    constexpr float ring_radius = 0.42f, tube_radius = 0.13f;
    const float a = two_pi * u, b = two_pi * v;
    const float distance = ring_radius + tube_radius * std::cos(b);
    return V3f(distance * std::cos(a), tube_radius * std::sin(b), -distance * std::sin(a));
}

} // namespace

/// A life ring on the waves, and an instance of it at the tower.
void add_ring(const OObject& scene, std::uint32_t sampling)
{
    const V3f place(2.6f, 0.0f, 2.5f);
    OXform ring(scene, "ring", sampling);
    for (int frame = 0; frame < frame_count; ++frame) {
        const Floating floating(place, phase_of(frame));
        XformSample sample;
        sample.addOp(XformOp(kTranslateOperation, kTranslateHint), V3d(floating.centre));
        sample.addOp(XformOp(kRotateZOperation, kRotateHint), floating.roll);
        sample.addOp(XformOp(kRotateYOperation, kRotateHint), 30.0 + 20.0 * std::sin(two_pi * phase_of(frame)));
        sample.addOp(XformOp(kRotateXOperation, kRotateHint), floating.pitch);
        ring.getSchema().set(sample);
    }
    const GridMesh grid({32, 16, true, true}, torus);
    OPolyMesh mesh(ring, "ringShape");
    mesh.getSchema().set(grid.make_sample());
    const auto is_red = [](int column, int) { return column / 4 % 2 == 0; };
    add_group(mesh.getSchema(), "red_paint", grid.choose_faces(is_red));
    add_group(mesh.getSchema(), "white_paint",
              grid.choose_faces([&](int column, int row) { return !is_red(column, row); }));

    XformSample hung;
    hung.addOp(XformOp(kTranslateOperation, kTranslateHint), V3d(0.12, 1.9, 0.46));
    hung.addOp(XformOp(kRotateXOperation, kRotateHint), 84.0);
    hung.addOp(XformOp(kScaleOperation, kScaleHint), V3d(0.55, 0.55, 0.55));
    OXform copy(scene, "ring_copy");
    copy.getSchema().set(hung);
    copy.addChildInstance(mesh, "ringInstance");
}

/// A cube whose upper and lower edges are creased, rocking about a pivot below it.
void add_buoy(const OObject& scene, const std::string& name, const V3f& place, std::uint32_t sampling)
{
    const std::vector<V3f> points = {{-1, -1, -1}, {1, -1, -1}, {1, -1, 1}, {-1, -1, 1},
                                     {-1, 1, -1},  {1, 1, -1},  {1, 1, 1},  {-1, 1, 1}};
    // Clockwise seen from outside.
    const std::vector<std::int32_t> indices = {3, 2, 1, 0, 4, 5, 6, 7, 0, 1, 5, 4, 1, 2, 6, 5, 2, 3, 7, 6, 3, 0, 4, 7};
    const std::vector<std::int32_t> counts(6, 4);
    const std::vector<std::int32_t> crease_indices = {0, 1, 2, 3, 0, 4, 5, 6, 7, 4}, crease_lengths = {5, 5};
    const std::vector<float> crease_sharpnesses = {1.5f, 3.0f};

    OXform buoy(scene, name, sampling);
    for (int frame = 0; frame < frame_count; ++frame) {
        const Floating floating(place, phase_of(frame));
        const V3d rotate_pivot(0.0, -0.4, 0.0), scale_pivot(0.0, 0.4, 0.0);
        const double breath = 0.02 * std::sin(two_pi * phase_of(frame));
        XformSample sample;
        sample.addOp(XformOp(kTranslateOperation, kTranslateHint), V3d(floating.centre));
        sample.addOp(XformOp(kTranslateOperation, kRotatePivotPointHint), rotate_pivot);
        sample.addOp(XformOp(kRotateZOperation, kRotateHint), 2.0 * floating.roll);
        sample.addOp(XformOp(kRotateYOperation, kRotateHint), 25.0);
        sample.addOp(XformOp(kRotateXOperation, kRotateHint), 2.0 * floating.pitch);
        sample.addOp(XformOp(kTranslateOperation, kRotatePivotPointHint), -rotate_pivot);
        sample.addOp(XformOp(kTranslateOperation, kScalePivotPointHint), scale_pivot);
        sample.addOp(XformOp(kScaleOperation, kScaleHint), V3d(0.42, 0.5 + breath, 0.42));
        sample.addOp(XformOp(kTranslateOperation, kScalePivotPointHint), -scale_pivot);
        buoy.getSchema().set(sample);
    }
    OSubD cage(buoy, "yellow_buoyShape");
    cage.getSchema().set(OSubDSchema::Sample(P3fArraySample(points), indices, counts, crease_indices, crease_lengths,
                                             crease_sharpnesses));
}

} // namespace sample
