/// The island and what stands on it.
#include "grid_mesh.h"
#include "sample_parts.h"

#include <cmath>

using namespace Alembic::AbcGeom;

namespace sample {

namespace {

constexpr float island_radius = 3.0f, grass_from = 0.32f; // the second is a height

/// A cone's coat round the y axis, from its lower edge to its upper one.
struct Coat
{
    float lower_radius, lower_y, upper_radius, upper_y;
};

GridMesh make_coat(const Coat& coat, int rows)
{
    return GridMesh({24, rows, true, false}, [&coat](float u, float v) {
        const float radius = coat.lower_radius + (coat.upper_radius - coat.lower_radius) * v, angle = two_pi * u;
        return V3f(radius * std::cos(angle), coat.lower_y + (coat.upper_y - coat.lower_y) * v,
                   -radius * std::sin(angle));
    });
}

void add_coat(const OObject& parent, const std::string& name, const Coat& coat)
{
    OPolyMesh(parent, name).getSchema().set(make_coat(coat, 1).make_sample());
}

} // namespace

float island_height(float x, float z)
{
    const float distance = std::sqrt(x * x + z * z) / island_radius;
    const float lumps = 0.10f * std::sin(2.1f * x + 0.7f) * std::cos(1.7f * z) + 0.05f * std::sin(4.3f * z + x);
    return 1.0f - 1.7f * distance * distance + lumps;
}

void add_island(const OObject& scene)
{
    constexpr GridSize size = {48, 20, true, false};
    constexpr int meadow_rows = 12;
    const auto ground = [](float u, float v) {
        const float angle = two_pi * u, radius = 0.1f + island_radius * v;
        const float x = radius * std::cos(angle), z = radius * std::sin(angle);
        return V3f(x, island_height(x, z), z);
    };
    const GridMesh grid(size, ground);
    OPolyMesh island(OXform(scene, "island"), "islandShape");
    island.getSchema().set(grid.make_sample());
    const auto is_grass = [](int, int row) { return row < meadow_rows; };
    add_group(island.getSchema(), "green_meadow", grid.choose_faces(is_grass));
    add_group(island.getSchema(), "beige_sand",
              grid.choose_faces([&](int column, int row) { return !is_grass(column, row); }));
}

void add_grass(const OObject& scene)
{
    constexpr int blade_count = 420, points_per_blade = 5;
    std::vector<V3f> points;
    std::vector<float> widths;
    Scatter scatter;
    for (int blade = 0; blade < blade_count;) {
        const float angle = two_pi * scatter.next(), radius = 0.6f + 1.4f * scatter.next();
        const float x = radius * std::cos(angle), z = radius * std::sin(angle);
        const float height = 0.14f + 0.2f * scatter.next(), lean = 0.24f * (scatter.next() - 0.5f), wind = 0.08f;
        if (island_height(x, z) < grass_from + 0.06f) continue;
        for (int i = 0; i < points_per_blade; ++i) {
            const float t = static_cast<float>(i) / (points_per_blade - 1);
            points.emplace_back(x + (lean + wind) * t * t, island_height(x, z) - 0.05f + height * t, z + lean * t * t);
            widths.push_back(0.022f * (1.0f - 0.9f * t));
        }
        ++blade;
    }
    const std::vector<std::int32_t> counts(blade_count, points_per_blade);
    OCurves grass(OXform(scene, "grass"), "green_grassShape");
    grass.getSchema().set(OCurvesSchema::Sample(P3fArraySample(points), counts, kCubic, kNonPeriodic,
                                                OFloatGeomParam::Sample(FloatArraySample(widths), kVertexScope),
                                                OV2fGeomParam::Sample(), ON3fGeomParam::Sample(), kBsplineBasis));
}

/// The tower, and a lamp in its top that turns and blinks.
void add_lighthouse(const OObject& scene, std::uint32_t sampling)
{
    constexpr int stripes = 5, rows_per_stripe = 2;
    OXform lighthouse = add_place(scene, "lighthouse", V3d(0.0, 0.8, 0.0));
    OCompoundProperty properties = lighthouse.getSchema().getUserProperties();
    OStringProperty(properties, "asset").set("lighthouse");
    OInt32Property(properties, "revision").set(3);
    ODoubleProperty(properties, "turns_per_second").set(1.0);
    OV3fProperty(properties, "lamp_color").set(V3f(1.0f, 0.85f, 0.4f));

    const GridMesh tower = make_coat({0.45f, 0.0f, 0.27f, 2.3f}, stripes * rows_per_stripe);
    OPolyMesh mesh(lighthouse, "towerShape");
    mesh.getSchema().set(tower.make_sample());
    const auto is_red = [](int, int row) { return row / rows_per_stripe % 2 == 0; };
    add_group(mesh.getSchema(), "red_paint", tower.choose_faces(is_red));
    add_group(mesh.getSchema(), "white_paint",
              tower.choose_faces([&](int column, int row) { return !is_red(column, row); }));
    add_coat(lighthouse, "grey_galleryFloorShape", {0.40f, 2.38f, 0.0f, 2.38f});
    add_coat(lighthouse, "grey_galleryRimShape", {0.30f, 2.26f, 0.40f, 2.38f});
    add_coat(lighthouse, "white_lanternShape", {0.2f, 2.38f, 0.2f, 2.52f});
    add_coat(lighthouse, "red_roofShape", {0.3f, 2.74f, 0.0f, 3.02f});
    for (int i = 0; i < 6; ++i) {
        const double angle = i * 2.0 * pi / 6.0;
        const OXform post = add_place(lighthouse, "post" + std::to_string(i + 1),
                                      V3d(0.2 * std::cos(angle), 0.0, 0.2 * std::sin(angle)));
        add_coat(post, "grey_postShape", {0.02f, 2.5f, 0.02f, 2.76f});
    }

    OXform turning(lighthouse, "turning", sampling);
    OXform lamp(turning, "lamp");
    const GridMesh reflector({4, 4}, [](float u, float v) {
        return V3f(0.22f * (u - 0.5f), 2.54f + 0.2f * v, 0.04f - 0.3f * (u - 0.5f) * (u - 0.5f));
    });
    OPolyMesh yellow(lamp, "yellow_lampShape");
    yellow.getSchema().set(reflector.make_sample());
    OVisibilityProperty blinking = CreateVisibilityProperty(yellow, sampling);
    for (int frame = 0; frame < frame_count; ++frame) {
        XformSample turn;
        turn.addOp(XformOp(kRotateYOperation, kRotateHint), 360.0 * static_cast<double>(phase_of(frame)));
        turning.getSchema().set(turn);
        blinking.set(static_cast<std::int8_t>(frame / 6 % 2 == 0 ? kVisibilityVisible : kVisibilityHidden));
    }
}

/// A flag on a pole beside the tower.
void add_flag(const OObject& scene, std::uint32_t sampling)
{
    const OXform place = add_place(scene, "flag", V3d(1.15, 0.6, 0.75));
    add_coat(place, "white_poleShape", {0.025f, -0.2f, 0.02f, 1.75f});
    OPolyMesh flag(add_place(place, "cloth", V3d(0.02, 1.2, 0.0)), "orange_clothShape", sampling);
    for (int frame = 0; frame < frame_count; ++frame) {
        const GridMesh grid({12, 8}, [phase = phase_of(frame)](float u, float v) {
            return V3f(0.8f * u, 0.5f * v - 0.06f * u * u, 0.11f * u * std::sin(two_pi * (u - phase) + v));
        });
        flag.getSchema().set(grid.make_sample());
    }
}

} // namespace sample
