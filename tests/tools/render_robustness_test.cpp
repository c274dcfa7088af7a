/// vo_abc render: whatever an archive holds, a picture or a message.
#include "render_fixture.h"

#include <random>

using testing::HasSubstr;

/// By the readers' design an index equal to the number of points arrives: that polygon is left out, the others stay.
TEST_F(Render, WhatCannotBeDrawnIsLeftOut)
{
    const float nan = std::numeric_limits<float>::quiet_NaN(), huge = 3e38f;
    write([&](AbcG::OObject top) {
        Points points = rectangle(-4, -1, -1, 1);
        points.insert(points.end(), {{nan, 0, 0}, {huge, 0, 0}, {1, 1, 0}});
        add_mesh(top, "mesh", points, {0, 1, 2, 3, 0, 1, 7, 0, 1, 4, 2, 3, 5, 1, 2, 6, 6}, {4, 3, 3, 3, 2, 2});
        add_mesh(top, "corrupt", rectangle(0, 1, 0, 1), {0, 1, 2, 90}, {4});
    });
    const Extent extent = find_extent(see({}, 1));
    EXPECT_NEAR(extent.right, 4.0 * side / 10.0, 1.0);
    EXPECT_THAT(errors_, HasSubstr("/corrupt: the mesh cannot be read"));
    EXPECT_THAT(errors_, HasSubstr(": 1 object left out: "));
    see({"--object", "/mesh"}); // polygons that are left out are no failure
    const ToolRun frames = run({"--frames", "1-2", "--fps", "24", "--size", "8x8"}, picture_.path());
    EXPECT_EQ(frames.status, 1);
    EXPECT_THAT(frames.errors, HasSubstr(": 1 object left out: ")) << "however many pictures miss it";
    EXPECT_TRUE(std::filesystem::exists(picture_.folder() + "/picture.0002.png"));
    EXPECT_EQ(run({"--sheet", "2", "--size", "8x8"}, picture_.path()).status, 1);
    EXPECT_EQ(run({"--object", "/corrupt"}, picture_.path() + ".none.png").status, 1);
    EXPECT_FALSE(std::filesystem::exists(picture_.path() + ".none.png"));
}

/// Faces of random points, as surfaces and as subdivision surfaces with random creases: whatever they are, a picture.
TEST_F(Render, RandomTopologyNeverCrashes)
{
    for (unsigned int seed = 0; seed < 25; ++seed) {
        std::mt19937 random(seed);
        const auto pick = [&](int low, int high) { return std::uniform_int_distribution<int>(low, high)(random); };
        const int point_count = pick(3, seed % 2 ? 9 : 80);
        Points points;
        for (int i = 0; i < point_count; ++i)
            points.emplace_back(float(pick(-40, 40)) / 10, float(pick(-40, 40)) / 10, float(pick(-40, 40)) / 10);
        Ints counts, indices, creases;
        for (int face = pick(1, 150); face > 0; --face) {
            counts.push_back(pick(1, seed % 5 ? 5 : 17));
            for (int i = 0; i < counts.back(); ++i)
                indices.push_back(pick(0, point_count - (pick(0, 200) ? 1 : 0)));
        }
        for (int i = 2 * pick(0, 9); i > 0; --i)
            creases.push_back(pick(-2, point_count + 2));
        const std::vector<float> sharpnesses(creases.size() / 2, float(pick(-1, 12)));
        write([&](AbcG::OObject top) {
            AbcG::OSubD subdivision(top, "subdivision");
            AbcG::OSubDSchema::Sample sample(AbcG::P3fArraySample(points), indices, counts);
            const Ints lengths(creases.size() / 2, 2);
            if (!creases.empty()) sample.setCreases(creases, lengths, sharpnesses);
            subdivision.getSchema().set(sample);
            add_mesh(top, "mesh", points, indices, counts);
        });
        const ToolRun result = run({"--size", "16x16", "--samples", "2"}, picture_.path());
        EXPECT_EQ(result.status, 0) << "seed " << seed << ": " << result.errors;
    }
}

/// Threads of any basis, through points that may lie on one another or be no numbers, of any width.
TEST_F(Render, RandomCurvesNeverCrash)
{
    const AbcG::BasisType bases[] = {AbcG::kNoBasis,         AbcG::kBezierBasis,  AbcG::kBsplineBasis,
                                     AbcG::kCatmullromBasis, AbcG::kHermiteBasis, AbcG::kPowerBasis};
    const float oddities[] = {0.0f, -1.0f, 1e-30f, 1e14f, 1e30f, std::numeric_limits<float>::quiet_NaN()};
    for (unsigned int seed = 0; seed < 24; ++seed) {
        std::mt19937 random(seed);
        const auto pick = [&](int low, int high) { return std::uniform_int_distribution<int>(low, high)(random); };
        const auto number = [&] { return pick(0, 60) ? float(pick(-2, 2)) : oddities[pick(0, 5)]; };
        Ints counts;
        Points points;
        for (int curve = pick(1, 12); curve > 0; --curve)
            counts.push_back(pick(0, 9));
        std::vector<std::uint8_t> orders;
        for (const int count : counts) {
            for (int i = 0; i < count; ++i)
                points.emplace_back(number(), number(), number());
            orders.push_back(static_cast<std::uint8_t>(seed % 2 ? 4 : pick(0, 9)));
        }
        std::vector<float> widths;
        const std::size_t width_counts[] = {0, 1, counts.size(), points.size(), 2 * counts.size()};
        for (std::size_t i = width_counts[pick(0, 4)]; i > 0; --i)
            widths.push_back(pick(0, 5) ? 0.5f : oddities[pick(0, 5)]);
        const auto type = static_cast<AbcG::CurveType>(pick(0, 2));
        write([&](AbcG::OObject top) {
            AbcG::OCurvesSchema::Sample sample(
                AbcG::P3fArraySample(points), counts, type, pick(0, 1) ? AbcG::kPeriodic : AbcG::kNonPeriodic,
                AbcG::OFloatGeomParam::Sample(AbcG::FloatArraySample(widths), AbcG::kVertexScope),
                AbcG::OV2fGeomParam::Sample(), AbcG::ON3fGeomParam::Sample(), bases[pick(0, 5)]);
            if (type == AbcG::kVariableOrder) sample.setOrders(AbcG::UcharArraySample(orders));
            AbcG::OCurves(top, "curves").getSchema().set(sample);
        });
        const ToolRun result = run({"--size", "16x16", "--samples", "2", "--shutter", "0.1"}, picture_.path());
        EXPECT_EQ(result.status, 0) << "seed " << seed << ": " << result.errors;
    }
}
