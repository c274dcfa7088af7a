/// vo_abc render: what must be seen is seen where geometry says, and nothing else.
#include "png_file.h"
#include "tool_runner.h"

#include <support/abc_archives.h>

#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>

using namespace abc_archives;
using testing::HasSubstr;

namespace {

using Ints = std::vector<std::int32_t>;
using Points = std::vector<AbcG::V3f>;
using Color = std::array<std::uint8_t, 4>;

constexpr double camera_distance = 10.0;
constexpr int side = 64; // pixels; the camera sees 10 units

/// A camera at (0, 0, 10) that looks down -z, by default at the square from -5 to 5.
struct TestCamera
{
    double horizontal_aperture = 3.6, vertical_aperture = 3.6;            // centimetres
    double focal_length = 36.0;                                           // millimetres
    double horizontal_offset = 0.0, vertical_offset = 0.0, squeeze = 1.0; // centimetres; a ratio
    std::string fit = "filmFitHorz";

    void add_to(AbcG::OObject top) const
    {
        AbcG::OXform place(top, "camera");
        AbcG::XformSample sample;
        sample.setTranslation(AbcG::V3d(0, 0, camera_distance));
        place.getSchema().set(sample);
        AbcG::CameraSample lens;
        lens.setHorizontalAperture(horizontal_aperture);
        lens.setVerticalAperture(vertical_aperture);
        lens.setFocalLength(focal_length);
        lens.setHorizontalFilmOffset(horizontal_offset);
        lens.setVerticalFilmOffset(vertical_offset);
        lens.setLensSqueezeRatio(squeeze);
        lens.addOp(AbcG::FilmBackXformOp(AbcG::kScaleFilmBackOperation, fit));
        AbcG::OCamera(place, "lens").getSchema().set(lens);
    }
};

/// Where something lies in a picture, in pixels.
struct Extent
{
    double left, right, top, bottom;
};

Extent find_extent(const PngFile& png)
{
    Extent extent{1e9, -1e9, 1e9, -1e9};
    for (int y = 0; y < png.height; ++y)
        for (int x = 0; x < png.width; ++x)
            if (png.is_covered(x, y)) {
                extent.left = std::min(extent.left, double(x));
                extent.right = std::max(extent.right, x + 1.0);
                extent.top = std::min(extent.top, double(y));
                extent.bottom = std::max(extent.bottom, y + 1.0);
            }
    return extent;
}

int count_covered(const PngFile& png)
{
    return static_cast<int>(
        std::count_if(png.pixels.begin(), png.pixels.end(), [](const Color& c) { return c[3] > 0; }));
}

class Render : public testing::Test
{
protected:
    /// Writes an archive of the camera and what `add(top)` adds.
    template <class Add>
    void write(Add&& add, const TestCamera& camera = {})
    {
        write_archive(archive_.path(), [&](AbcG::OObject top) {
            camera.add_to(top);
            add(top);
        });
    }

    ToolRun run(const std::vector<std::string>& options, const std::string& output)
    {
        std::vector<std::string> arguments = {"render", archive_.path(), "-o", output};
        arguments.insert(arguments.end(), options.begin(), options.end());
        return run_tool(arguments);
    }

    /// The picture that the camera sees, transparent where there is nothing, one sample in the middle of each pixel.
    PngFile see(std::vector<std::string> options = {})
    {
        options.insert(options.begin(), {"--camera", "/camera", "--transparent"});
        if (std::find(options.begin(), options.end(), "--size") == options.end())
            options.insert(options.end(), {"--size", "64x64"});
        if (std::find(options.begin(), options.end(), "--samples") == options.end())
            options.insert(options.end(), {"--samples", "1"});
        const ToolRun result = run(options, picture_.path());
        EXPECT_EQ(result.status, 0) << result.errors;
        errors_ = result.errors;
        return PngFile(picture_.path());
    }

    ScratchFile archive_{"scene.abc"}, picture_{"picture.png"};
    std::string errors_;
};

AbcG::OPolyMesh add_mesh(AbcG::OObject parent, const std::string& name, const Points& points, const Ints& indices,
                         const Ints& counts)
{
    AbcG::OPolyMesh mesh(parent, name);
    mesh.getSchema().set(AbcG::OPolyMeshSchema::Sample(AbcG::P3fArraySample(points), indices, counts));
    return mesh;
}

Points rectangle(float left, float right, float bottom, float top, float z = 0)
{
    return {{left, bottom, z}, {right, bottom, z}, {right, top, z}, {left, top, z}};
}

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
    // The same straight line of width 2 in four bases. What lies nearest to the camera looks up to a ninth longer.
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
    for (const Case& c :
         {Case{AbcG::kLinear, AbcG::kNoBasis, 8.0}, Case{AbcG::kCubic, AbcG::kBezierBasis, 6.0},
          Case{AbcG::kCubic, AbcG::kBsplineBasis, 2.0}, Case{AbcG::kCubic, AbcG::kCatmullromBasis, 2.0}}) {
        write([&](AbcG::OObject top) { add_curve(top, c.type, c.basis); });
        const Extent extent = find_extent(see());
        EXPECT_NEAR((extent.bottom - extent.top) * 10.0 / side, 2.0, 0.4) << c.basis;
        EXPECT_NEAR((extent.right - extent.left) * 10.0 / side, c.length, 0.15 + c.length / 9) << c.basis;
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
    const Extent extent = find_extent(see());
    EXPECT_NEAR(extent.right, 4.0 * side / 10.0, 1.0);
    EXPECT_THAT(errors_, HasSubstr("/corrupt: the mesh cannot be read"));
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
