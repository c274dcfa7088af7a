/// vo_abc export: what comes out is what was written, at the time asked for, and nothing when something is wrong.
#include "closed_curve.h"
#include "tool_runner.h"

#include <support/abc_archives.h>

#include <gmock/gmock.h>

#include <cmath>
#include <random>

using namespace abc_archives;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

using Ints = std::vector<std::int32_t>;

std::string folder_entry(const ScratchFile& file, const std::string& name)
{
    return file.folder() + "/" + name;
}

std::size_t file_count(const std::string& folder)
{
    const std::filesystem::directory_iterator entries(folder);
    return static_cast<std::size_t>(std::distance(begin(entries), end(entries)));
}

ToolRun export_to(const std::string& archive, const std::string& output, std::vector<std::string> options = {})
{
    options.insert(options.begin(), {"export", archive, "-o", output});
    return run_tool(options);
}

/// A mesh of random polygons with UVs and normals per corner and two shading groups, under two transforms.
struct RandomScene
{
    explicit RandomScene(unsigned int seed)
        : random_(seed)
    {
        const int point_count = pick(3, 20), face_count = pick(1, 12);
        for (int i = 0; i < point_count; ++i)
            points.emplace_back(number(), number(), number());
        for (int i = 0; i < pick(1, 9); ++i)
            uvs.emplace_back(number(), number());
        for (int i = 0; i < pick(1, 9); ++i)
            normals.push_back(AbcG::V3f(number(), number(), number() + 9).normalized());
        for (int face = 0; face < face_count; ++face) {
            counts.push_back(pick(3, 6));
            (pick(0, 1) ? second_group : first_group).push_back(face);
            for (int i = 0; i < counts.back(); ++i) {
                indices.push_back(pick(0, point_count - 1));
                uv_indices.push_back(static_cast<std::uint32_t>(pick(0, static_cast<int>(uvs.size()) - 1)));
                normal_indices.push_back(static_cast<std::uint32_t>(pick(0, static_cast<int>(normals.size()) - 1)));
            }
        }
    }

    void write(const std::string& path)
    {
        write_archive(path, [&](AbcG::OObject top) {
            AbcG::OXform outer(top, "outer"), inner(outer, "inner");
            add_transform(outer);
            add_transform(inner);
            AbcG::OPolyMesh mesh(inner, "shape");
            mesh.getSchema().set(AbcG::OPolyMeshSchema::Sample(
                AbcG::P3fArraySample(points), indices, counts,
                AbcG::OV2fGeomParam::Sample(AbcG::V2fArraySample(uvs), AbcG::UInt32ArraySample(uv_indices),
                                            AbcG::kFacevaryingScope),
                AbcG::ON3fGeomParam::Sample(AbcG::N3fArraySample(normals), AbcG::UInt32ArraySample(normal_indices),
                                            AbcG::kFacevaryingScope)));
            mesh.getSchema().createFaceSet("first").getSchema().set(AbcG::OFaceSetSchema::Sample(first_group));
            mesh.getSchema().createFaceSet("second").getSchema().set(AbcG::OFaceSetSchema::Sample(second_group));
        });
    }

    std::vector<AbcG::V3f> points, normals;
    std::vector<AbcG::V2f> uvs;
    Ints indices, counts, first_group, second_group;
    std::vector<std::uint32_t> uv_indices, normal_indices;
    AbcG::M44d world_matrix; ///< for row vectors

private:
    int pick(int low, int high) { return std::uniform_int_distribution<int>(low, high)(random_); }
    float number() { return std::uniform_real_distribution<float>(-5.0f, 5.0f)(random_); }

    void add_transform(AbcG::OXform& xform)
    {
        AbcG::XformSample sample;
        sample.setTranslation(AbcG::V3d(number(), number(), number()));
        sample.setRotation(AbcG::V3d(number(), number(), number() + 9).normalized(), 30.0 * number());
        sample.setScale(AbcG::V3d(number() > 0 ? 1.5 : -0.5, 2.0, 0.75)); // half of them mirror
        xform.getSchema().set(sample);
        world_matrix = sample.getMatrix() * world_matrix;
    }

    std::mt19937 random_;
};

/// Whether the mesh comes back, `matrix` applied, with the corners of each face in the order `corner_of` tells.
void expect_same_mesh(const ObjFile& obj, const RandomScene& scene, const AbcG::M44d& matrix)
{
    const bool is_mirrored = matrix.determinant() < 0.0;
    AbcG::M44d normal_matrix = matrix.inverse().transposed();
    ASSERT_EQ(obj.faces.size(), scene.counts.size());
    std::size_t first = 0;
    for (std::size_t face = 0; face < scene.counts.size(); ++face) {
        const auto count = static_cast<std::size_t>(scene.counts[face]);
        const bool is_second = std::count(scene.second_group.begin(), scene.second_group.end(), face) > 0;
        ASSERT_EQ(obj.faces[face].corners.size(), count);
        EXPECT_EQ(obj.faces[face].group, is_second ? "second" : "first");
        EXPECT_EQ(obj.faces[face].material, obj.faces[face].group);
        for (std::size_t i = 0; i < count; ++i) {
            const std::size_t stored = first + (is_mirrored ? i : count - 1 - i); // the host's winding
            const ObjCorner& corner = obj.faces[face].corners[i];
            AbcG::V3d position, normal;
            matrix.multVecMatrix(AbcG::V3d(scene.points[static_cast<std::size_t>(scene.indices[stored])]), position);
            normal_matrix.multDirMatrix(AbcG::V3d(scene.normals[scene.normal_indices[stored]]), normal);
            normal.normalize();
            const AbcG::V2f uv = scene.uvs[scene.uv_indices[stored]];
            for (int axis = 0; axis < 3; ++axis) {
                const auto a = static_cast<std::size_t>(axis);
                EXPECT_NEAR(obj.positions.at(corner[0] - 1)[a], position[axis], 1e-4);
                EXPECT_NEAR(obj.normals.at(corner[2] - 1)[a], normal[axis], 1e-5);
            }
            EXPECT_EQ(float(obj.uvs.at(corner[1] - 1)[0]), uv.x);
            EXPECT_EQ(float(obj.uvs.at(corner[1] - 1)[1]), uv.y);
        }
        first += count;
    }
}

/// The largest x of the positions.
double width_of(const std::string& path)
{
    double width = 0.0;
    for (const auto& position : ObjFile(path).positions)
        width = std::max(width, position[0]);
    return width;
}

} // namespace

TEST(ExportObj, AMeshComesBackAsItWasWritten)
{
    for (unsigned int seed = 1; seed <= 12; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        const ScratchFile archive("scene.abc");
        const std::string world = folder_entry(archive, "world.obj"), local = folder_entry(archive, "local.obj");
        RandomScene scene(seed);
        scene.write(archive.path());
        ToolRun run = export_to(archive.path(), world);
        EXPECT_EQ(run.status, 0) << run.errors;
        expect_same_mesh(ObjFile(world), scene, scene.world_matrix);
        run = export_to(archive.path(), local, {"--local"});
        EXPECT_EQ(run.status, 0) << run.errors;
        expect_same_mesh(ObjFile(local), scene, AbcG::M44d());
    }
}

TEST(ExportObj, FramesNameTheirFilesAndFallBetweenSamples)
{
    const ScratchFile archive("scene.abc");
    write_archive(archive.path(), [](AbcG::OObject top) {
        add_square(top, "shape", {1, 3}, std::make_shared<AbcG::TimeSampling>(1.0, 0.0));
    });
    const std::string output = folder_entry(archive, "walk.obj");
    const ToolRun run = export_to(archive.path(), output, {"--frames=-1-2", "--fps", "2"});
    ASSERT_EQ(run.status, 0) << run.errors;
    EXPECT_DOUBLE_EQ(width_of(folder_entry(archive, "walk.-0001.obj")), 1.0);
    EXPECT_DOUBLE_EQ(width_of(folder_entry(archive, "walk.0000.obj")), 1.0);
    EXPECT_DOUBLE_EQ(width_of(folder_entry(archive, "walk.0001.obj")), 2.0);
    EXPECT_DOUBLE_EQ(width_of(folder_entry(archive, "walk.0002.obj")), 3.0);
    EXPECT_EQ(file_count(archive.folder()), 5u);

    // Without --fps as the samples are: one a second.
    ASSERT_EQ(export_to(archive.path(), output, {"--frames", "1"}).status, 0);
    EXPECT_DOUBLE_EQ(width_of(folder_entry(archive, "walk.0001.obj")), 3.0);
    ASSERT_EQ(export_to(archive.path(), output, {"--time", "0.25"}).status, 0);
    EXPECT_DOUBLE_EQ(width_of(output), 1.5);
}

TEST(ExportObj, OneObjectOrAllInstancesToo)
{
    const ScratchFile archive("scene.abc");
    write_archive(archive.path(), [](AbcG::OObject top) {
        AbcG::OXform left(top, "left"), right(top, "right");
        AbcG::XformSample moved;
        moved.setTranslation(AbcG::V3d(10, 0, 0));
        right.getSchema().set(moved);
        const AbcG::OPolyMesh square = add_square(left, "a square", {1});
        right.addChildInstance(square, "copy");
        AbcG::CreateVisibilityProperty(left, 0).set(std::int8_t(AbcG::kVisibilityHidden));
    });
    const std::string output = folder_entry(archive, "all.obj");
    ASSERT_EQ(export_to(archive.path(), output).status, 0);
    const ObjFile all(output);
    EXPECT_THAT(all.objects, ElementsAre("/left/a_square", "/right/copy")); // a name is one word
    ASSERT_EQ(all.faces.size(), 2u);
    EXPECT_EQ(all.faces[1].corners[0][0], 8u); // indices count over the whole file
    EXPECT_DOUBLE_EQ(all.positions[4][0], 10.0);

    ASSERT_EQ(export_to(archive.path(), output, {"--object", "/right"}).status, 0);
    EXPECT_THAT(ObjFile(output).objects, ElementsAre("/right/copy"));
    ASSERT_EQ(export_to(archive.path(), output, {"--visible"}).status, 0);
    EXPECT_THAT(ObjFile(output).objects, ElementsAre("/right/copy"));
}

TEST(ExportObj, CurvesAreLinesAndClosedOnesReturn)
{
    const ScratchFile archive("curves.abc");
    write_archive(archive.path(), [](AbcG::OObject top) {
        const std::vector<AbcG::V3f> points = {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {5, 5, 5}, {6, 5, 5}};
        const Ints counts = {3, 2};
        AbcG::OCurves(top, "open")
            .getSchema()
            .set(AbcG::OCurvesSchema::Sample(AbcG::P3fArraySample(points), counts, AbcG::kLinear, AbcG::kNonPeriodic));
        AbcG::OCurves(top, "shut")
            .getSchema()
            .set(AbcG::OCurvesSchema::Sample(AbcG::P3fArraySample(points), counts, AbcG::kLinear, AbcG::kPeriodic));
    });
    const std::string output = folder_entry(archive, "curves.obj");
    ASSERT_EQ(export_to(archive.path(), output).status, 0);
    const ObjFile obj(output);
    EXPECT_EQ(obj.positions.size(), 10u);
    EXPECT_THAT(obj.lines,
                ElementsAre(ElementsAre(1, 2, 3), ElementsAre(4, 5), ElementsAre(6, 7, 8, 6), ElementsAre(9, 10, 9)));
}

TEST(ExportObj, AClosedCurveThatRepeatsItsFirstPointsReturnsOnce)
{
    const ScratchFile archive("curves.abc");
    write_archive(archive.path(), [](AbcG::OObject top) {
        // The second curve comes near to its start, but does not repeat it.
        std::vector<AbcG::V3f> points = make_closed_curve_points(8, 3);
        for (const AbcG::V3f& point : make_closed_curve_points(8, 3))
            points.push_back(point);
        points.back().x += 0.01f;
        const Ints counts = {11, 11};
        for (const auto& [name, periodicity] : {std::pair("shut", AbcG::kPeriodic), {"open", AbcG::kNonPeriodic}})
            AbcG::OCurves(top, name).getSchema().set(AbcG::OCurvesSchema::Sample(
                AbcG::P3fArraySample(points), counts, AbcG::kCubic, periodicity, AbcG::OFloatGeomParam::Sample(),
                AbcG::OV2fGeomParam::Sample(), AbcG::ON3fGeomParam::Sample(), AbcG::kBsplineBasis));
    });
    const std::string output = folder_entry(archive, "curves.obj");
    ASSERT_EQ(export_to(archive.path(), output).status, 0);
    const ObjFile obj(output);
    EXPECT_EQ(obj.positions.size(), 44u);
    EXPECT_THAT(obj.lines, ElementsAre(ElementsAre(1, 2, 3, 4, 5, 6, 7, 8, 1),
                                       ElementsAre(12, 13, 14, 15, 16, 17, 18, 19, 20, 21, 22, 12),
                                       ElementsAre(23, 24, 25, 26, 27, 28, 29, 30, 31, 32, 33),
                                       ElementsAre(34, 35, 36, 37, 38, 39, 40, 41, 42, 43, 44)));
}

TEST(ExportPly, TextAndBinaryHoldTheSamePoints)
{
    const ScratchFile archive("points.abc");
    const std::vector<AbcG::V3f> positions = {{1.5f, -2, 0.1f}, {3, 4, 5}}, velocities = {{1, 0, 0}, {0, 0.5f, 0}};
    write_archive(archive.path(), [&](AbcG::OObject top) {
        AbcG::OXform moved(top, "moved");
        AbcG::XformSample sample;
        sample.setTranslation(AbcG::V3d(10, 0, 0));
        moved.getSchema().set(sample);
        const std::vector<std::uint64_t> ids = {1, 2};
        AbcG::OPoints(moved, "drops")
            .getSchema()
            .set(AbcG::OPointsSchema::Sample(AbcG::P3fArraySample(positions), AbcG::UInt64ArraySample(ids),
                                             AbcG::V3fArraySample(velocities)));
    });
    const std::string output = folder_entry(archive, "points.ply");
    ASSERT_EQ(export_to(archive.path(), output, {"--ascii"}).status, 0);
    const std::string text = read_file(output);
    EXPECT_THAT(text, HasSubstr("format ascii 1.0\n"));
    EXPECT_THAT(text, HasSubstr("element vertex 2\n"));
    EXPECT_THAT(text, HasSubstr("end_header\n11.5 -2 0.1 1 0 0\n13 4 5 0 0.5 0\n"));

    ASSERT_EQ(export_to(archive.path(), output, {"--local"}).status, 0);
    const std::string bytes = read_file(output);
    EXPECT_THAT(bytes, HasSubstr("format binary_little_endian 1.0\n"));
    const std::size_t start = bytes.find("end_header\n") + 11;
    ASSERT_EQ(bytes.size() - start, 2u * 6u * 4u);
    float numbers[12];
    std::memcpy(numbers, bytes.data() + start, sizeof numbers);
    EXPECT_THAT(numbers, ElementsAre(1.5f, -2, 0.1f, 1, 0, 0, 3, 4, 5, 0, 0.5f, 0));
}

TEST(Export, NumbersThatAreNotFiniteAreCountedAndWrittenAsZero)
{
    const ScratchFile archive("points.abc");
    const float nan = std::numeric_limits<float>::quiet_NaN(), infinity = std::numeric_limits<float>::infinity();
    const std::vector<AbcG::V3f> positions = {{1, nan, 2}}, velocities = {{-infinity, 3, 4}};
    write_archive(archive.path(), [&](AbcG::OObject top) {
        const std::vector<std::uint64_t> ids = {1};
        AbcG::OPoints(top, "drops")
            .getSchema()
            .set(AbcG::OPointsSchema::Sample(AbcG::P3fArraySample(positions), AbcG::UInt64ArraySample(ids),
                                             AbcG::V3fArraySample(velocities)));
        const Ints counts = {2};
        const std::vector<AbcG::V3f> line = {{nan, 0, 5}, {6, 7, 8}};
        AbcG::OCurves(top, "line")
            .getSchema()
            .set(AbcG::OCurvesSchema::Sample(AbcG::P3fArraySample(line), AbcG::Int32ArraySample(counts)));
    });
    const std::string ply = folder_entry(archive, "points.ply"), obj = folder_entry(archive, "line.obj");
    const ToolRun points = export_to(archive.path(), ply, {"--ascii", "--local"}),
                  lines = export_to(archive.path(), obj, {"--local"});
    EXPECT_EQ(points.status, 0);
    EXPECT_THAT(points.errors, HasSubstr("2 coordinates are no finite number, written as 0"));
    EXPECT_THAT(read_file(ply), HasSubstr("end_header\n1 0 2 0 3 4\n"));
    EXPECT_THAT(lines.errors, HasSubstr("1 coordinate is no finite number, written as 0"));
    EXPECT_THAT(read_file(obj), HasSubstr("v 0 0 5\n"));
}

TEST(Export, WhatFailsLeavesTheOldFileAndNothingElse)
{
    const ScratchFile archive("corrupt.abc");
    write_archive(archive.path(), [](AbcG::OObject top) {
        add_square(top, "good");
        const auto corners = square(1);
        const Ints counts = {4}, too_high = {0, 1, 2, 7}, just_too_high = {0, 1, 2, 4};
        AbcG::OPolyMesh(top, "bad")
            .getSchema()
            .set(AbcG::OPolyMeshSchema::Sample(AbcG::P3fArraySample(corners), too_high, counts));
        AbcG::OPolyMesh(top, "edge")
            .getSchema()
            .set(AbcG::OPolyMeshSchema::Sample(AbcG::P3fArraySample(corners), just_too_high, counts));
    });
    const std::string output = folder_entry(archive, "out.obj");
    write_file(output, "before");
    const ToolRun run = export_to(archive.path(), output);
    EXPECT_EQ(run.status, 1);
    EXPECT_THAT(run.errors, HasSubstr(archive.path() + ": /bad: "));
    EXPECT_EQ(read_file(output), "before");
    EXPECT_EQ(file_count(archive.folder()), 2u);

    // An index that is one too high passes the reader, but not into a file for others.
    const ToolRun edge = export_to(archive.path(), output, {"--object", "/edge"});
    EXPECT_EQ(edge.status, 1);
    EXPECT_THAT(edge.errors, HasSubstr("a face index is 4, the mesh has 4 points"));
    EXPECT_EQ(export_to(archive.path(), output, {"--object", "/good"}).status, 0);
}

TEST(Export, OutputsThatCannotBeWrittenSayWhy)
{
    const ScratchFile archive("scene.abc");
    write_square_archive(archive.path());
    const ToolRun missing = export_to(archive.path(), folder_entry(archive, "no/such/out.obj"));
    EXPECT_EQ(missing.status, 1);
    EXPECT_THAT(missing.errors, HasSubstr("out.obj: cannot be written: "));
    std::filesystem::create_directory(folder_entry(archive, "folder.obj"));
    EXPECT_EQ(export_to(archive.path(), folder_entry(archive, "folder.obj")).status, 1);
    EXPECT_EQ(export_to("/dev/null/x.abc", folder_entry(archive, "out.obj")).status, 1);
    EXPECT_EQ(file_count(archive.folder()), 2u);
}

TEST(Export, NothingToExportSaysWhereItWouldGo)
{
    const ScratchFile archive("scene.abc");
    write_square_archive(archive.path());
    const ToolRun run = export_to(archive.path(), folder_entry(archive, "out.ply"));
    EXPECT_EQ(run.status, 1);
    EXPECT_THAT(run.errors, HasSubstr("there are no points to export; meshes and curves go to an .obj file"));
}
