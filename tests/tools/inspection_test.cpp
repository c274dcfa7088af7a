/// vo_abc info, tree and dump: they tell what was written.
#include "tool_runner.h"

#include <support/abc_archives.h>

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <cctype>

using namespace abc_archives;
using nlohmann::json;
using testing::HasSubstr;

namespace {

json run_json(std::vector<std::string> arguments)
{
    arguments.push_back("--json");
    const ToolRun run = run_tool(arguments);
    EXPECT_EQ(run.status, 0) << run.errors;
    EXPECT_EQ(run.errors, "");
    return json::parse(run.output);
}

/// A body that moves and deforms, a hidden branch, an instance, a camera and a light that blinks.
void write_scene(const std::string& path)
{
    AbcG::OArchive archive = AbcG::CreateArchiveWithInfo(Alembic::AbcCoreOgawa::WriteArchive(), path, 25.0, "inspector",
                                                         "a scene, of tests");
    const auto sampling = std::make_shared<AbcG::TimeSampling>(1.0 / 25.0, 2.0);
    AbcG::OObject top = archive.getTop();
    AbcG::OXform body(top, "body", sampling);
    for (int i = 0; i < 3; ++i) {
        AbcG::XformSample sample;
        sample.setTranslation(AbcG::V3d(i, 0, 0));
        body.getSchema().set(sample);
    }
    const AbcG::OPolyMesh shape = add_square(body, "shape", {1, 2}, sampling);
    AbcG::OInt32Property(body.getSchema().getUserProperties(), "level").set(7);
    AbcG::OStringProperty(body.getSchema().getUserProperties(), "note").set("two\nlines");

    AbcG::OXform hidden(top, "hidden");
    AbcG::CreateVisibilityProperty(hidden, 0).set(std::int8_t(AbcG::kVisibilityHidden));
    add_square(hidden, "below");
    AbcG::OXform(top, "copies").addChildInstance(shape, "copy");

    AbcG::OCamera camera(top, "camera");
    AbcG::CameraSample lens;
    lens.setFocalLength(50);
    camera.getSchema().set(lens);
    AbcG::OVisibilityProperty blinking = AbcG::CreateVisibilityProperty(camera, sampling);
    for (const int value : {1, 0})
        blinking.set(static_cast<std::int8_t>(value));
}

class Inspection : public testing::Test
{
protected:
    Inspection() { write_scene(archive_.path()); }

    ScratchFile archive_{"scene.abc"};
};

/// Node of a tree by its path; null when it is not there.
json find_node(const json& node, const std::string& path)
{
    if (node["path"] == path) return node;
    for (const json& child : node["children"])
        if (const json found = find_node(child, path); !found.is_null()) return found;
    return json();
}

} // namespace

TEST_F(Inspection, InfoTellsMetadataTimesAndCounts)
{
    const json info = run_json({"info", archive_.path()});
    EXPECT_EQ(info["files"], json({archive_.path()}));
    EXPECT_EQ(info["storage"], json({"Ogawa"}));
    EXPECT_EQ(info["application"], "inspector");
    EXPECT_EQ(info["description"], "a scene, of tests");
    EXPECT_EQ(info["frames_per_second"], 25.0);
    EXPECT_EQ(info["start_time"], 2.0);
    EXPECT_NEAR(info["end_time"].get<double>(), 2.0 + 2.0 / 25.0, 1e-12);
    ASSERT_EQ(info["time_samplings"].size(), 2u);
    const json& sampling = info["time_samplings"][1];
    EXPECT_EQ(sampling["kind"], "uniform");
    EXPECT_EQ(sampling["max_samples"], 3);
    EXPECT_EQ(sampling["frames_per_second"], 25.0);
    EXPECT_EQ(sampling["stored_times"], json({2.0}));
    const json& objects = info["objects"];
    EXPECT_EQ(objects["transforms"], 3);
    EXPECT_EQ(objects["polygon_meshes"], 2);
    EXPECT_EQ(objects["cameras"], 1);
    EXPECT_EQ(objects["instances"], 1);
    EXPECT_EQ(objects["curves"], 0);

    const ToolRun run = run_tool({"info", archive_.path(), "--stats"});
    EXPECT_THAT(run.output, HasSubstr("looks like 25 a second"));
    EXPECT_THAT(run.output, HasSubstr("Open file(s): 1"));
    EXPECT_EQ(run.errors, "");
}

TEST(Inspecting, TheFrameRateIsThatOfSeveralSamplesElseAUsualOneOfASampling)
{
    // Times of samples on three samplings: the first rate is unusual, the second usual, the third of what moves.
    const auto find_rate = [](const std::vector<float>& moving_sizes, double still_step) {
        const ScratchFile file("rates.abc");
        write_archive(file.path(), [&](AbcG::OObject top) {
            const auto sampling = [](double step) { return std::make_shared<AbcG::TimeSampling>(step, 1.0); };
            add_square(top, "odd", {1}, sampling(1.0 / 7.0));
            add_square(top, "still", {1}, sampling(still_step));
            add_square(top, "moving", moving_sizes, sampling(1.0 / 30.0));
        });
        return run_json({"info", file.path()})["apparent_frames_per_second"];
    };
    EXPECT_EQ(find_rate({1, 2}, 1.0 / 24.0), 30.0);
    EXPECT_EQ(find_rate({1}, 1.0 / 24.0), 24.0);
    EXPECT_EQ(find_rate({1}, 1.0 / 7.0), 30.0);
}

TEST_F(Inspection, TreeTellsKindsSamplesAndInheritedVisibility)
{
    const json tree = run_json({"tree", archive_.path()});
    const json body = find_node(tree, "/body");
    EXPECT_EQ(body["kind"], "transform");
    EXPECT_EQ(body["samples"], 3);
    EXPECT_EQ(body["start_time"], 2.0);
    EXPECT_EQ(body["visibility"], "undefined");
    const json shape = find_node(tree, "/body/shape");
    EXPECT_EQ(shape["kind"], "polygon mesh");
    EXPECT_EQ(shape["deformation"], "homogeneous");
    EXPECT_EQ(shape["samples"], 2);
    EXPECT_NEAR(shape["end_time"].get<double>(), 2.04, 1e-12);
    EXPECT_EQ(find_node(tree, "/hidden/below")["visibility"], "hidden");
    EXPECT_EQ(find_node(tree, "/copies/copy")["instance_of"], "/body/shape");
    EXPECT_EQ(find_node(tree, "/camera")["visibility"], "animated");
    // Folding in an ancestor without visibility pulls the range towards 0.
    EXPECT_EQ(find_node(tree, "/camera")["visibility_time_range"][0], 0.0);
    EXPECT_NEAR(find_node(tree, "/camera")["visibility_time_range"][1].get<double>(), 2.04, 1e-12);

    EXPECT_TRUE(run_json({"tree", archive_.path(), "--depth", "0"})["children"].empty());
    const json branch = run_json({"tree", archive_.path(), "--object", "/hidden/below"});
    EXPECT_EQ(branch["visibility"], "hidden"); // ancestors count also when they are not shown
    const ToolRun run = run_tool({"tree", archive_.path()});
    EXPECT_THAT(run.output, HasSubstr("├── hidden  [transform: "));
    EXPECT_THAT(run.output, HasSubstr("│   └── below  [polygon mesh: constant, 1 sample, hidden]"));
}

TEST_F(Inspection, DumpTellsWhereAnObjectStandsAtATime)
{
    const json body = run_json({"dump", archive_.path(), "/body", "--time", "2.06"});
    EXPECT_NEAR(body["transform"]["components"]["translation"][0].get<double>(), 1.5, 1e-9);
    EXPECT_NEAR(body["transform"]["matrix"][0][3].get<double>(), 1.5, 1e-9);
    EXPECT_EQ(body["properties"]["level"], 7);
    EXPECT_EQ(body["properties"]["note"], "two\nlines");

    const json shape = run_json({"dump", archive_.path(), "/body/shape", "--time", "2.08"});
    EXPECT_EQ(shape["world_matrix"][0], json({1.0, 0.0, 0.0, 2.0}));
    EXPECT_EQ(shape["mesh"]["points"], 4);
    EXPECT_EQ(shape["mesh"]["groups"], json({{"default", 1}}));
    EXPECT_EQ(shape["visible"], true);

    EXPECT_EQ(run_json({"dump", archive_.path(), "/hidden/below"})["visible"], false);
    const json camera = run_json({"dump", archive_.path(), "/camera", "--time", "2.04"});
    EXPECT_NEAR(camera["camera"]["focal_length"].get<double>(), 0.05, 1e-12); // metres
    EXPECT_EQ(camera["visible"], false);
    EXPECT_THAT(run_tool({"dump", archive_.path(), "/camera"}).output, HasSubstr("camera.focal_length:"));
}

TEST_F(Inspection, LayersAreOneArchiveTheLastOneTheStrongest)
{
    const ScratchFile layer("layer.abc");
    write_archive(layer.path(), [](AbcG::OObject top) { add_square(AbcG::OXform(top, "body"), "shape", {1, 2, 3}); });
    EXPECT_EQ(find_node(run_json({"tree", archive_.path(), layer.path()}), "/body/shape")["samples"], 3);
    EXPECT_EQ(find_node(run_json({"tree", layer.path(), archive_.path()}), "/body/shape")["samples"], 2);
    EXPECT_EQ(run_json({"info", archive_.path(), layer.path()})["storage"].size(), 2u);
}

TEST(Inspecting, NamesFromAFileDoNotCommandTheTerminal)
{
    const ScratchFile archive("names.abc");
    write_archive(archive.path(), [](AbcG::OObject top) {
        const AbcG::OXform xform(top, "evil\x1b[2J\rname");
        add_square(xform, "new\nline");
        AbcG::OStringProperty(AbcG::OXform(xform).getSchema().getUserProperties(), "bell").set("\a");
    });
    const std::string output = archive.folder() + "/out.obj";
    const std::vector<std::vector<std::string>> commands = {
        {"info", archive.path(), "--stats"},  {"tree", archive.path()},
        {"tree", archive.path(), "--json"},   {"dump", archive.path(), "/evil\x1b[2J\rname"},
        {"dump", archive.path(), "/\x1b[2J"}, {"export", archive.path(), "-o", output}};
    for (const auto& command : commands) {
        const ToolRun run = run_tool(command);
        for (const char character : run.output + run.errors)
            ASSERT_TRUE(character == '\n' || !std::iscntrl(static_cast<unsigned char>(character)))
                << command[0] << " wrote byte " << int(character);
    }
    EXPECT_EQ(ObjFile(output).faces.size(), 1u);
}

TEST(Inspecting, BlanksAroundNamesAreSeenInTheTree)
{
    const ScratchFile archive("blanks.abc");
    write_archive(archive.path(), [](AbcG::OObject top) {
        for (const char* const name : {"behind ", " before", "in the middle"})
            AbcG::OXform(top, name);
    });
    const std::string tree = run_tool({"tree", archive.path()}).output;
    for (const char* const line : {"── \"behind \"  [", "── \" before\"  [", "── in the middle  ["})
        EXPECT_THAT(tree, HasSubstr(line));
}

TEST(Inspecting, AnInstanceOfAnInstanceTreeEnds)
{
    const ScratchFile archive("instances.abc");
    write_archive(archive.path(), [](AbcG::OObject top) {
        AbcG::OXform source(top, "source");
        const AbcG::OPolyMesh mesh = add_square(source, "shape");
        AbcG::OXform first(top, "first");
        first.addChildInstance(source, "a");
        first.addChildInstance(source, "b");
        AbcG::OXform second(top, "second");
        second.addChildInstance(first, "c");
        second.addChildInstance(first, "d");
    });
    const std::string output = archive.folder() + "/out.obj";
    ASSERT_EQ(run_tool({"export", archive.path(), "-o", output}).status, 0);
    EXPECT_EQ(ObjFile(output).faces.size(), 1u + 2u + 4u);
    EXPECT_EQ(run_json({"info", archive.path()})["objects"]["instances"], 4);
}

TEST(Sample, EachOfItsObjectsCanBeDumped)
{
    const std::string archive = std::string(VO_SAMPLES_DIR) + "/showcase.abc";
    std::vector<json> waiting = {run_json({"tree", archive})};
    int bare_count = 0; // subdivision meshes without creases
    while (!waiting.empty()) {
        const json node = waiting.back();
        waiting.pop_back();
        for (const json& child : node["children"])
            waiting.push_back(child);
        if (node["path"] == "/") continue;
        const json dump = run_json({"dump", archive, node["path"].get<std::string>()});
        EXPECT_EQ(dump["path"], node["path"]);
        EXPECT_EQ(dump["kind"], node["kind"]);
        EXPECT_EQ(dump.contains("creases"), node["kind"] == "subdivision mesh") << node["path"];
        if (dump.contains("creases") && dump["creases"]["creases"] == 0) ++bare_count;
    }
    EXPECT_GT(bare_count, 0);
}

TEST(Sample, EverySubcommandCanShowIt)
{
    const ScratchFile archive("showcase.abc");
    ASSERT_EQ(run_tool({"sample", "-o", archive.path()}).status, 0);
    EXPECT_LT(std::filesystem::file_size(archive.path()), 1500000u);
    const json objects = run_json({"info", archive.path()})["objects"];
    for (const char* const kind : {"polygon_meshes", "subdivision_meshes", "curves", "points", "cameras", "instances"})
        EXPECT_GT(objects[kind].get<int>(), 0) << kind;
    EXPECT_EQ(run_tool({"tree", archive.path()}).output,
              run_tool({"tree", std::string(VO_SAMPLES_DIR) + "/showcase.abc"}).output);
    const std::string output = archive.folder() + "/out";
    EXPECT_EQ(run_tool({"export", archive.path(), "-o", output + ".obj", "--time", "0.5"}).status, 0);
    EXPECT_EQ(run_tool({"export", archive.path(), "-o", output + ".ply", "--time", "0.5"}).status, 0);
    EXPECT_GT(ObjFile(output + ".obj").faces.size(), 1000u);

    std::filesystem::create_directory(archive.folder() + "/folder.abc");
    for (const char* const name : {"/no/such/folder.abc", "/folder.abc"}) {
        const ToolRun run = run_tool({"sample", "-o", archive.folder() + name});
        EXPECT_EQ(run.status, 1);
        EXPECT_THAT(run.errors, testing::StartsWith("vo_abc: " + archive.folder() + name + ": cannot be written: "));
        EXPECT_EQ(std::count(run.errors.begin(), run.errors.end(), '\n'), 1) << run.errors;
    }
}
