/// vo_abc render: what must be seen is seen where geometry says, and nothing else.
#include "closed_curve.h"
#include "render_fixture.h"

#include <random>

using testing::HasSubstr;

namespace {

AbcG::OXform add_transform(AbcG::OObject parent, const std::string& name, const AbcG::M44d& matrix)
{
    AbcG::OXform xform(parent, name);
    AbcG::XformSample sample;
    sample.setMatrix(matrix);
    xform.getSchema().set(sample);
    return xform;
}

const Ints quad_indices = {0, 1, 2, 3}, quad_counts = {4};
const Points cube_points = {{-2, -2, -2}, {2, -2, -2}, {2, -2, 2}, {-2, -2, 2},
                            {-2, 2, -2},  {2, 2, -2},  {2, 2, 2},  {-2, 2, 2}};
const Ints cube_indices = {3, 2, 1, 0, 4, 5, 6, 7, 0, 1, 5, 4, 1, 2, 6, 5, 2, 3, 7, 6, 3, 0, 4, 7};
const Ints cube_counts(6, 4);

AbcG::OSubD add_cube(AbcG::OObject parent, const Ints& creases = {}, const Ints& lengths = {},
                     const std::vector<float>& sharpnesses = {})
{
    AbcG::OSubD cube(parent, "cube");
    AbcG::OSubDSchema::Sample sample(AbcG::P3fArraySample(cube_points), cube_indices, cube_counts);
    if (!creases.empty()) sample.setCreases(creases, lengths, sharpnesses);
    cube.getSchema().set(sample);
    return cube;
}

} // namespace

/// Random film backs, lenses, fits and pictures: a rectangle covers the pixels that projecting its sides by hand gives.
TEST_F(Render, ARectangleCoversThePixelsThatTheCameraProjectsItTo)
{
    for (unsigned int seed = 0; seed < 12; ++seed) {
        std::mt19937 random(seed);
        const auto number = [&](double low, double high) {
            return std::uniform_real_distribution<double>(low, high)(random);
        };
        const char* const fits[] = {"filmFitHorz", "filmFitVert", "filmFitFill", "filmFitOver"};
        TestCamera camera{number(2, 5),      number(2, 5),      number(25, 50),
                          number(-0.4, 0.4), number(-0.4, 0.4), seed % 3 == 0 ? 2.0 : 1.0,
                          fits[seed % 4]};
        const int width = 24 + static_cast<int>(seed % 5) * 10, height = 24 + static_cast<int>(seed % 3) * 20;
        const double left = number(-4, -0.5), right = number(0.5, 4), bottom = number(-4, -0.5), top = number(0.5, 4);
        write(
            [&](AbcG::OObject scene) {
                add_mesh(scene, "quad", rectangle(float(left), float(right), float(bottom), float(top)), {0, 1, 2, 3},
                         {4});
            },
            camera);
        const PngFile png = see({"--size", std::to_string(width) + "x" + std::to_string(height)});
        ASSERT_EQ(png.width, width);
        ASSERT_EQ(png.height, height);

        // Half sizes of what is seen at the rectangle, by the part of the film back that decides.
        const double film_width = camera.horizontal_aperture * camera.squeeze, aspect = double(width) / height;
        const bool is_fill = seed % 4 >= 2, is_vertical = seed % 4 == 1;
        const bool by_height = is_vertical || (is_fill && aspect < film_width / camera.vertical_aperture);
        const double scale = camera_distance * 10.0 / camera.focal_length;
        const double half_height = 0.5 * scale * (by_height ? camera.vertical_aperture : film_width / aspect);
        const double half_width = half_height * aspect;
        const double middle_x = scale * camera.horizontal_offset * camera.squeeze,
                     middle_y = scale * camera.vertical_offset;
        const auto column = [&](double x) { return (x - middle_x + half_width) / (2 * half_width) * width; };
        const auto row = [&](double y) { return (middle_y + half_height - y) / (2 * half_height) * height; };
        for (int y = 0; y < height; ++y)
            for (int x = 0; x < width; ++x) {
                const double inside = std::min(
                    {x + 0.5 - column(left), column(right) - x - 0.5, y + 0.5 - row(top), row(bottom) - y - 0.5});
                if (std::abs(inside) > 0.6) {
                    ASSERT_EQ(png.is_covered(x, y), inside > 0) << "seed " << seed << ", pixel " << x << ", " << y;
                }
            }
    }
}

TEST_F(Render, WithoutASizeTheCameraShowsItsWholeFilmBack)
{
    TestCamera camera;
    camera.horizontal_aperture = 7.2;
    write([](AbcG::OObject) {}, camera);
    const ToolRun result = run({"--camera", "/camera/lens", "--samples", "1"}, picture_.path());
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.errors, HasSubstr("there is nothing to see"));
    const PngFile png(picture_.path());
    EXPECT_EQ(png.width, 1280);
    EXPECT_EQ(png.height, 640);
    EXPECT_EQ(run({"--camera", "/nobody"}, picture_.path()).status, 1);
}

TEST_F(Render, AMirroredMeshKeepsItsOutside)
{
    // Stored polygons are wound clockwise seen from outside: the outside of these is z- and z+.
    for (const double mirror : {1.0, -1.0})
        for (const bool is_front : {false, true}) {
            write([&](AbcG::OObject top) {
                const AbcG::OXform place = add_transform(top, "place", AbcG::M44d().setScale(AbcG::V3d(mirror, 1, 1)));
                add_mesh(place, "quad", rectangle(-4, 4, -4, 4), is_front ? Ints{3, 2, 1, 0} : Ints{0, 1, 2, 3}, {4});
            });
            const Color color = see({"--shade", "normal"}).at(side / 2, side / 2);
            EXPECT_EQ(int(color[2]), is_front ? 255 : 0) << mirror;
            EXPECT_NEAR(color[0], 128, 1);
        }
}

TEST_F(Render, GroupsAndObjectsHaveColoursOfTheirOwn)
{
    write([](AbcG::OObject top) {
        AbcG::OPolyMesh mesh =
            add_mesh(top, "mesh", {{-4, -1, 0}, {0, -1, 0}, {4, -1, 0}, {4, 1, 0}, {0, 1, 0}, {-4, 1, 0}},
                     {0, 1, 4, 5, 1, 2, 3, 4}, {4, 4});
        const Ints first = {0}, second = {1};
        mesh.getSchema().createFaceSet("red_paint").getSchema().set(AbcG::OFaceSetSchema::Sample(first));
        mesh.getSchema().createFaceSet("second").getSchema().set(AbcG::OFaceSetSchema::Sample(second));
        add_mesh(top, "other", rectangle(-4, 4, 2, 4), {0, 1, 2, 3}, {4});
    });
    const PngFile png = see({"--shade", "group"});
    const Color red = png.at(16, 32), second = png.at(48, 32), other = png.at(32, 12);
    EXPECT_GT(red[0], 2 * red[1]);
    EXPECT_NE(red, second);
    EXPECT_NE(other, second);
}

TEST_F(Render, UvsAndVelocitiesAreColours)
{
    write([](AbcG::OObject top) {
        const Points points = rectangle(-4, 4, -4, 4);
        const std::vector<AbcG::V2f> uvs = {{0, 0}, {1, 0}, {1, 1}, {0, 1}};
        const Points velocities(4, AbcG::V3f(0, 2, 0));
        AbcG::OPolyMesh mesh(top, "quad");
        AbcG::OPolyMeshSchema::Sample sample(
            AbcG::P3fArraySample(points), quad_indices, quad_counts,
            AbcG::OV2fGeomParam::Sample(AbcG::V2fArraySample(uvs), AbcG::kFacevaryingScope));
        sample.setVelocities(AbcG::V3fArraySample(velocities));
        mesh.getSchema().set(sample);
    });
    const PngFile uv = see({"--shade", "uv"});
    for (const int x : {14, 32, 50})
        EXPECT_NEAR(uv.at(x, 20)[0], 255.0 * (x + 0.5 - 6.4) / 51.2, 3.0) << x;
    EXPECT_GT(uv.at(32, 14)[1], uv.at(32, 50)[1] + 100);
    const Color velocity = see({"--shade", "velocity"}).at(32, 32);
    EXPECT_EQ(int(velocity[1]), 255); // the fastest, upwards
    EXPECT_NEAR(velocity[0], 128, 1);
}

TEST_F(Render, HiddenObjectsAreAbsent)
{
    write([](AbcG::OObject top) {
        const AbcG::OXform parent(top, "parent");
        add_mesh(parent, "quad", rectangle(-4, 4, -4, 4), {0, 1, 2, 3}, {4});
        AbcG::OObject hidden = parent;
        AbcG::OVisibilityProperty visible =
            AbcG::CreateVisibilityProperty(hidden, top.getArchive().addTimeSampling(AbcG::TimeSampling(1.0, 0.0)));
        visible.set(AbcG::kVisibilityVisible);
        visible.set(AbcG::kVisibilityHidden);
    });
    EXPECT_GT(count_covered(see({"--time", "0"})), 1000);
    EXPECT_EQ(count_covered(see({"--time", "1"})), 0);
    EXPECT_THAT(errors_, HasSubstr("there is nothing to see at 1 s"));
}

/// A square of 2 units that moves 3 units a second to the right, by its transform or by its velocities.
TEST_F(Render, MotionBlurWidensWhatMoves)
{
    constexpr double pixels_a_unit = side / 10.0;
    for (const bool by_velocities : {false, true}) {
        write([&](AbcG::OObject top) {
            const std::uint32_t sampling = top.getArchive().addTimeSampling(AbcG::TimeSampling(1.0, -1.0));
            AbcG::OXform place(top, "place", sampling);
            for (const double x : {-3.0, 0.0, 3.0}) {
                AbcG::XformSample sample;
                sample.setTranslation(AbcG::V3d(by_velocities ? 0.0 : x, 0, 0));
                place.getSchema().set(sample);
            }
            const Points points = rectangle(-1, 1, -1, 1), velocities(4, AbcG::V3f(3, 0, 0));
            AbcG::OPolyMesh mesh(place, "quad");
            AbcG::OPolyMeshSchema::Sample sample(AbcG::P3fArraySample(points), quad_indices, quad_counts);
            if (by_velocities) sample.setVelocities(AbcG::V3fArraySample(velocities));
            mesh.getSchema().set(sample);
        });
        const Extent still = find_extent(see({"--time", "0", "--samples", "16"}));
        const Extent blurred = find_extent(see({"--time", "0", "--samples", "16", "--shutter", "1"}));
        EXPECT_NEAR(still.right - still.left, 2.0 * pixels_a_unit, 2.0);
        EXPECT_NEAR(blurred.left, still.left - 1.5 * pixels_a_unit, 2.0) << by_velocities;
        EXPECT_NEAR(blurred.right, still.right + 1.5 * pixels_a_unit, 2.0) << by_velocities;
        EXPECT_NEAR(blurred.top, still.top, 1.0);
    }
}

/// Faces that change from sample to sample are moved along by the velocities of the sample before.
TEST_F(Render, AChangingTopologyIsMovedByItsVelocities)
{
    write([](AbcG::OObject top) {
        const std::uint32_t sampling = top.getArchive().addTimeSampling(AbcG::TimeSampling(1.0, 0.0));
        AbcG::OPolyMesh mesh(top, "mesh", sampling);
        const Points points[] = {rectangle(-3, -1, -1, 1), {{3, 3, 0}, {4, 3, 0}, {4, 4, 0}}};
        for (const Points& sample_points : points) {
            const Points velocities(sample_points.size(), AbcG::V3f(4, 0, 0));
            const Ints indices = sample_points.size() == 4 ? Ints{0, 1, 2, 3} : Ints{0, 1, 2};
            const Ints counts = {static_cast<std::int32_t>(indices.size())};
            AbcG::OPolyMeshSchema::Sample sample(AbcG::P3fArraySample(sample_points), indices, counts);
            sample.setVelocities(AbcG::V3fArraySample(velocities));
            mesh.getSchema().set(sample);
        }
    });
    const Extent extent = find_extent(see({"--time", "0.75"}));
    EXPECT_NEAR(extent.left, side / 2, 1.0);
    EXPECT_NEAR(extent.right, side / 2 + 2 * side / 10.0, 1.0);
}

TEST_F(Render, CreasesKeepASubdivisionMeshSharpHoweverTheyAreStored)
{
    const std::vector<float> one_each(12, 10.0f);
    const Ints pairs = {0, 1, 1, 2, 2, 3, 3, 0, 4, 5, 5, 6, 6, 7, 7, 4, 0, 4, 1, 5, 2, 6, 3, 7};
    // Two rings and four posts: the lengths differ, and no sharpness says which is which.
    const Ints chains = {0, 1, 2, 3, 0, 6, 7, 4, 5, 6, 0, 4, 1, 5, 2, 6, 3, 7};
    write([](AbcG::OObject top) { add_cube(top); });
    const PngFile smooth = see();
    write([&](AbcG::OObject top) { add_cube(top, pairs, Ints(12, 2), one_each); });
    const PngFile sharp = see();
    write([&](AbcG::OObject top) { add_cube(top, chains, {5, 5, 2, 2, 2, 2}, std::vector<float>(6, 10.0f)); });
    EXPECT_EQ(see().pixels, sharp.pixels);
    write([](AbcG::OObject top) { add_mesh(top, "cube", cube_points, cube_indices, cube_counts); });
    const PngFile cube = see();
    EXPECT_NEAR(count_covered(sharp), count_covered(cube), 8);
    EXPECT_LT(count_covered(smooth), 0.8 * count_covered(cube));
}

TEST_F(Render, CurvesAndPointsHaveTheirWidths)
{
    // The same straight line of width 2 in four bases, with round ends. What lies nearest to the camera looks up to a
    // ninth longer.
    const auto add_curve = [](AbcG::OObject top, AbcG::CurveType type, AbcG::BasisType basis) {
        const Points points = {{-3, 0, 0}, {-1, 0, 0}, {1, 0, 0}, {3, 0, 0}};
        const std::vector<float> widths = {2.0f};
        AbcG::OCurves(top, "curve")
            .getSchema()
            .set(AbcG::OCurvesSchema::Sample(
                AbcG::P3fArraySample(points), quad_counts, type, AbcG::kNonPeriodic,
                AbcG::OFloatGeomParam::Sample(AbcG::FloatArraySample(widths), AbcG::kConstantScope),
                AbcG::OV2fGeomParam::Sample(), AbcG::ON3fGeomParam::Sample(), basis));
    };
    struct Case
    {
        AbcG::CurveType type;
        AbcG::BasisType basis;
        double length;
    };
    std::vector<Color> linear;
    for (const Case& c :
         {Case{AbcG::kLinear, AbcG::kNoBasis, 8.0}, Case{AbcG::kCubic, AbcG::kBezierBasis, 8.0},
          Case{AbcG::kCubic, AbcG::kBsplineBasis, 4.0}, Case{AbcG::kCubic, AbcG::kCatmullromBasis, 4.0}}) {
        write([&](AbcG::OObject top) { add_curve(top, c.type, c.basis); });
        const PngFile png = see();
        const Extent extent = find_extent(png);
        EXPECT_NEAR((extent.bottom - extent.top) * 10.0 / side, 2.0, 0.4) << c.basis;
        EXPECT_NEAR((extent.right - extent.left) * 10.0 / side, c.length, 0.15 + c.length / 9) << c.basis;
        int different_count = 0; // with ends of the same shape the Bezier line is the linear one
        for (std::size_t i = 0; i < png.pixels.size(); ++i)
            different_count += i < linear.size() && (png.pixels[i][3] > 0) != (linear[i][3] > 0);
        if (c.basis == AbcG::kBezierBasis) {
            EXPECT_LE(different_count, 4);
        }
        if (linear.empty()) linear = png.pixels;
    }
    write([](AbcG::OObject top) {
        const std::vector<std::uint64_t> ids = {0, 1};
        const Points points = {{0, 0, 0}, {std::numeric_limits<float>::quiet_NaN(), 0, 0}};
        AbcG::OPoints(top, "points")
            .getSchema()
            .set(AbcG::OPointsSchema::Sample(AbcG::P3fArraySample(points), AbcG::UInt64ArraySample(ids)));
    });
    const double radius = 2.0 * side / 10.0;
    EXPECT_NEAR(count_covered(see({"--point-width", "4"})), 3.1416 * radius * radius, 0.08 * 3.1416 * radius * radius);
}

TEST_F(Render, AClosedCurveThatRepeatsItsFirstPointsIsClosedOnce)
{
    const auto see_circle = [&](int repeated_count) {
        write([&](AbcG::OObject top) {
            const Points points = make_closed_curve_points(8, repeated_count);
            const Ints counts = {static_cast<std::int32_t>(points.size())};
            const std::vector<float> widths = {0.5f};
            AbcG::OCurves(top, "circle")
                .getSchema()
                .set(AbcG::OCurvesSchema::Sample(
                    AbcG::P3fArraySample(points), counts, AbcG::kCubic, AbcG::kPeriodic,
                    AbcG::OFloatGeomParam::Sample(AbcG::FloatArraySample(widths), AbcG::kConstantScope),
                    AbcG::OV2fGeomParam::Sample(), AbcG::ON3fGeomParam::Sample(), AbcG::kBsplineBasis));
        });
        return see({"--shutter", "0.1"}).pixels;
    };
    const auto circle = see_circle(0);
    EXPECT_EQ(see_circle(3), circle);
    EXPECT_NE(see_circle(2), circle); // two are a detour
}

TEST_F(Render, ThreadsFinerThanAPixelAreSeenWhereverTheyAre)
{
    // Two long threads, the second twice as far away, and one behind the camera. A pixel is 10 / 64 units at the first.
    const auto find_cover = [&](float width) {
        write([&](AbcG::OObject top) {
            const Points points = {{-4, 1, 0}, {4, 1, 0}, {-4, -1, -10}, {4, -1, -10}, {-4, 0, 20}, {4, 0, 20}};
            const std::vector<float> widths = {width};
            const Ints counts = {2, 2, 2};
            AbcG::OCurves(top, "curves")
                .getSchema()
                .set(AbcG::OCurvesSchema::Sample(
                    AbcG::P3fArraySample(points), counts, AbcG::kLinear, AbcG::kNonPeriodic,
                    AbcG::OFloatGeomParam::Sample(AbcG::FloatArraySample(widths), AbcG::kConstantScope)));
        });
        const PngFile picture = see({"--samples", "64"});
        double cover = 0.0;
        for (const Color& pixel : picture.pixels)
            cover += pixel[3] / 255.0;
        return cover;
    };
    const double one_pixel = 8.0 / 10.0 * side + 4.0 / 10.0 * side; // of each length, a pixel wide
    EXPECT_NEAR(find_cover(1e-6f), one_pixel, 0.1 * one_pixel);
    EXPECT_NEAR(find_cover(5.0f * 10.0f / side), (5.0 * 0.8 + 2.5 * 0.4) * side, 0.1 * 5.0 * side);
    EXPECT_EQ(find_cover(0.0f), 0.0); // no width is no thread
}

TEST_F(Render, SheetsAndFramesHaveTheSizesAskedFor)
{
    const ScratchFile output("walk.png");
    write([](AbcG::OObject top) {
        add_square(top, "square", {1, 2, 3}, AbcG::TimeSamplingPtr(new AbcG::TimeSampling(0.5, 0.0)));
    });
    ASSERT_EQ(run({"--sheet", "5", "--size", "20x16", "--samples", "1"}, output.path()).status, 0);
    const PngFile sheet(output.path());
    EXPECT_EQ(sheet.width, 3 * (20 + 8) + 8);       // three pictures and the space around them
    EXPECT_EQ(sheet.height, 2 * (16 + 16 + 8) + 8); // two rows with their times
    const std::string first = output.bytes();
    ASSERT_EQ(run({"--sheet", "5", "--size", "20x16", "--samples", "1"}, output.path()).status, 0);
    EXPECT_EQ(output.bytes(), first) << "the same picture twice";

    ASSERT_EQ(run({"--frames", "1-2", "--fps", "2", "--size", "8x8", "--samples", "2"}, output.path()).status, 0);
    EXPECT_EQ(PngFile(output.folder() + "/walk.0002.png").width, 8);
    EXPECT_FALSE(std::filesystem::exists(output.folder() + "/walk.0003.png"));
    for (const std::vector<std::string>& wrong : std::vector<std::vector<std::string>>{{"--size", "0x5"},
                                                                                       {"--size", "8"},
                                                                                       {"--size", "8x8x8"},
                                                                                       {"--shade", "gold"},
                                                                                       {"--samples", "0"},
                                                                                       {"--shutter", "-1"},
                                                                                       {"--frames", "2-1"},
                                                                                       {"--sheet", "0"},
                                                                                       {"--sheet", "2", "--time", "1"}})
        EXPECT_EQ(run(wrong, output.path()).status, 2) << wrong[0] << wrong[1];
}
