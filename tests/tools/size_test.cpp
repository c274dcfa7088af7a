/// vo_abc size: what is counted adds up to the file, and what is stored once is counted once.
#include "tool_runner.h"

#include <support/abc_archives.h>

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include <numeric>

using namespace abc_archives;
using nlohmann::json;
using testing::HasSubstr;
using testing::Not;

namespace {

json run_size(std::vector<std::string> arguments)
{
    arguments.insert(arguments.begin(), "size");
    arguments.push_back("--json");
    const ToolRun run = run_tool(arguments);
    EXPECT_EQ(run.status, 0) << run.errors;
    return json::parse(run.output);
}

std::uint64_t sum(const json& size, const char* member)
{
    return std::accumulate(
        size["entries"].begin(), size["entries"].end(), std::uint64_t(0),
        [&](std::uint64_t total, const json& entry) { return total + entry[member].get<std::uint64_t>(); });
}

json find_entry(const json& size, const std::string& object, const std::string& property)
{
    for (const json& entry : size["entries"])
        if (entry["object"] == object && entry.value("property", "") == property) return entry;
    return json();
}

} // namespace

TEST(Size, AllWaysOfCountingAgreeAndFitTheFile)
{
    const std::string sample = std::string(VO_SAMPLES_DIR) + "/showcase.abc";
    const json by_property = run_size({sample}), by_object = run_size({sample, "--by", "object"}),
               by_sample = run_size({sample, "--by", "sample"});
    const std::uint64_t bytes = by_property["sample_bytes"];
    EXPECT_EQ(by_property["file_bytes"], std::filesystem::file_size(sample));
    EXPECT_LT(bytes, by_property["file_bytes"]);
    EXPECT_EQ(by_property["other_bytes"], by_property["file_bytes"].get<std::uint64_t>() - bytes);
    for (const json& size : {by_property, by_object, by_sample}) {
        EXPECT_EQ(sum(size, "bytes"), bytes);
        EXPECT_EQ(sum(size, "shared_bytes"), by_property["shared_bytes"]);
    }
}

TEST(Size, EqualSamplesAreCountedOnce)
{
    const ScratchFile file("equal.abc");
    write_archive(file.path(), [](AbcG::OObject top) {
        add_square(top, "first", {1, 2, 1, 2});
        add_square(top, "second", {1, 1, 1, 3});
    });
    const json size = run_size({file.path()});
    const json first = find_entry(size, "/first", ".geom/P"), second = find_entry(size, "/second", ".geom/P");
    EXPECT_EQ(first["samples"], 4);
    EXPECT_EQ(first["stored_samples"], 2);
    EXPECT_EQ(first["bytes"], 2 * 4 * sizeof(AbcG::V3f));
    EXPECT_EQ(second["stored_samples"], 1); // the size of 3; the others are those of the first
    EXPECT_EQ(second["shared_bytes"], 3 * 4 * sizeof(AbcG::V3f));
}

TEST(Size, WhatWouldShrinkIsNamed)
{
    const ScratchFile file("wasteful.abc");
    write_archive(file.path(), [](AbcG::OObject top) {
        AbcG::OPolyMesh mesh = add_square(top, "mesh");
        AbcG::OCompoundProperty parameters = mesh.getSchema().getArbGeomParams();
        std::vector<double> doubles(4000);
        std::iota(doubles.begin(), doubles.end(), 0.5);
        AbcG::ODoubleArrayProperty(parameters, "doubles").set(AbcG::DoubleArraySample(doubles));
        const std::vector<AbcG::V3f> same(4000, AbcG::V3f(1, 2, 3));
        AbcG::OV3fGeomParam color(parameters, "color", false, AbcG::kFacevaryingScope, 1);
        color.set(AbcG::OV3fGeomParam::Sample(AbcG::V3fArraySample(same), AbcG::kFacevaryingScope));
    });
    const json size = run_size({file.path()});
    ASSERT_EQ(size["hints"].size(), 2u) << size["hints"];
    EXPECT_EQ(size["hints"][0]["property"], ".geom/.arbGeomParams/doubles");
    EXPECT_EQ(size["hints"][0]["saved_bytes"], 4000 * 4);
    EXPECT_EQ(size["hints"][1]["property"], ".geom/.arbGeomParams/color");
    EXPECT_EQ(size["hints"][1]["saved_bytes"], 4000 * 12 - (4000 * 4 + 12)); // an index for each corner, one value
    const ToolRun run = run_tool({"size", file.path(), "--limit", "1"});
    EXPECT_THAT(run.output, HasSubstr("/mesh .geom/.arbGeomParams/color"));
    EXPECT_THAT(run.output, HasSubstr("in smaller places\n"));
    EXPECT_THAT(run.output, HasSubstr("What would shrink:\n"));
    EXPECT_THAT(run_tool({"size", std::string(VO_SAMPLES_DIR) + "/showcase.abc"}).output, Not(HasSubstr("doubles")));
}
