/// vo_abc diff: the same archive is the same, and each change is found where it was made.
#include "tool_runner.h"

#include <support/abc_archives.h>

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

using namespace abc_archives;
using nlohmann::json;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

/// What one version of the scene has otherwise than the first.
struct Change
{
    float size = 1.0f;          ///< of the square's second sample
    double frame_rate = 24.0;   ///< of the square
    int sample_count = 3;       ///< of the square
    int level = 7;              ///< a user property
    std::string note = "first"; ///< another one
    bool has_extra = false;     ///< an object /extra with a child
    bool is_instance = true;    ///< /copy is an instance of the square, or a square
    bool is_double = false;     ///< type of the user property "weight"
};

void write_scene(const std::string& path, const Change& change)
{
    write_archive(path, [&](AbcG::OObject top) {
        const AbcG::OXform body(top, "body");
        const auto sampling = std::make_shared<AbcG::TimeSampling>(1.0 / change.frame_rate, 0.0);
        std::vector<float> sizes(static_cast<std::size_t>(change.sample_count), 2.0f);
        if (sizes.size() > 1) sizes[1] = change.size;
        AbcG::OPolyMesh shape = add_square(body, "shape", sizes, sampling);
        AbcG::OCompoundProperty properties = shape.getSchema().getUserProperties();
        AbcG::OInt32Property(properties, "level").set(change.level);
        AbcG::OStringProperty(properties, "note").set(change.note);
        if (change.is_double)
            AbcG::ODoubleProperty(properties, "weight").set(0.5);
        else
            AbcG::OFloatProperty(properties, "weight").set(0.5f);
        if (change.is_instance)
            top.addChildInstance(shape, "copy");
        else
            add_square(top, "copy");
        if (change.has_extra) add_square(AbcG::OXform(top, "extra"), "below");
    });
}

class Diff : public testing::Test
{
protected:
    /// The differences between the first version and a changed one, which must be seen both ways.
    json differences(const Change& change, std::vector<std::string> options = {})
    {
        write_scene(first_.path(), Change());
        write_scene(second_.path(), change);
        const json forward = run(first_.path(), second_.path(), options);
        EXPECT_EQ(forward.size(), run(second_.path(), first_.path(), options).size());
        return forward;
    }

    static json run(const std::string& a, const std::string& b, std::vector<std::string> options)
    {
        options.insert(options.begin(), {"diff", a, b, "--json"});
        const ToolRun run = run_tool(options);
        const json result = json::parse(run.output);
        EXPECT_EQ(run.status, result["differences"].empty() ? 0 : 1) << run.errors;
        EXPECT_EQ(result["same"], result["differences"].empty());
        return result["differences"];
    }

    /// The only difference, at that place.
    void expect_one(const Change& change, const std::string& object, const std::string& property,
                    const std::string& what)
    {
        const json found = differences(change);
        ASSERT_EQ(found.size(), 1u) << found;
        EXPECT_EQ(found[0]["object"], object);
        EXPECT_EQ(found[0].value("property", ""), property);
        EXPECT_THAT(found[0]["what"].get<std::string>(), HasSubstr(what));
    }

    ScratchFile first_{"first.abc"}, second_{"second.abc"};
};

} // namespace

TEST_F(Diff, AnArchiveWrittenTwiceIsTheSame)
{
    EXPECT_EQ(differences(Change()), json::array());
    const ToolRun run = run_tool({"diff", first_.path(), second_.path()});
    EXPECT_EQ(run.output + run.errors, "");
}

TEST_F(Diff, EachChangeIsFoundInItsPlace)
{
    Change change;
    change.level = 8;
    expect_one(change, "/body/shape", ".geom/.userProperties/level", "7 and 8");
    change = Change();
    change.note = "second";
    expect_one(change, "/body/shape", ".geom/.userProperties/note", "\"first\" and \"second\"");
    change = Change();
    change.has_extra = true;
    expect_one(change, "/extra", "", "only in " + second_.path());
    change = Change();
    change.is_double = true;
    expect_one(change, "/body/shape", ".geom/.userProperties/weight", "float32_t, and of type float64_t");
}

TEST_F(Diff, SamplesAreComparedWithinTheTolerance)
{
    Change change;
    change.size = 1.25f;
    const json found = differences(change);
    ASSERT_EQ(found.size(), 2u) << found; // positions and bounds
    const json& positions = found[0]["property"] == ".geom/P" ? found[0] : found[1];
    EXPECT_EQ(positions["property"], ".geom/P");
    EXPECT_EQ(positions["sample"], 1);
    EXPECT_NEAR(positions["time"], 1.0 / 24.0, 1e-9);
    EXPECT_EQ(positions["differing"], 3);
    EXPECT_EQ(positions["elements"], 4);
    EXPECT_EQ(positions["greatest_difference"], 0.25);
    EXPECT_EQ(differences(change, {"--tolerance", "0.25"}).size(), 0u);
    EXPECT_EQ(differences(change, {"--tolerance", "0.24"}).size(), 2u);
}

TEST_F(Diff, SamplingsAreCompared)
{
    Change change;
    change.frame_rate = 25.0;
    EXPECT_THAT(differences(change).dump(), HasSubstr("other times: sample 1 is at 0.0416666667 s and at 0.04 s"));
    change = Change();
    change.sample_count = 2;
    EXPECT_THAT(differences(change).dump(), HasSubstr("3 samples and 2 samples"));
}

TEST_F(Diff, AnInstanceIsNotWhatItStandsFor)
{
    Change change;
    change.is_instance = false;
    for (const json& difference : differences(change))
        EXPECT_EQ(difference["object"], "/copy") << difference;
}

TEST_F(Diff, TextNamesPlacesAndCountsThem)
{
    Change change;
    change.sample_count = 12;
    write_scene(first_.path(), change);
    change.size = 1.5f;
    change.level = 9;
    write_scene(second_.path(), change);
    const ToolRun run = run_tool({"diff", first_.path(), second_.path()});
    EXPECT_EQ(run.status, 1);
    EXPECT_THAT(run.output, StartsWith("/body/shape\n  .geom/"));
    EXPECT_THAT(run.output, HasSubstr("  .geom/P: sample 1 (0.0416667 s): 3 of 4 elements differ; element 1: (1, 0, 0) "
                                      "and (1.5, 0, 0), 0.5 apart\n"));
    EXPECT_THAT(run.errors, HasSubstr(" differ in 3 places"));
    EXPECT_EQ(run_tool({"diff", first_.path(), second_.path(), "--quiet"}).output, "");
}
