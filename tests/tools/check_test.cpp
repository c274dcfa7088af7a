/// vo_abc check: every fault that is put into an archive is found where it is, and a sound archive has none.
#include "tool_runner.h"

#include <support/abc_archives.h>

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include <limits>

using namespace abc_archives;
using nlohmann::json;
using testing::HasSubstr;

namespace {

using Ints = std::vector<std::int32_t>;
using Points = std::vector<AbcG::V3f>;

const Ints square_indices = {0, 1, 2, 3}, square_counts = {4};
const Points corners = {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}};

AbcG::OPolyMeshSchema::Sample mesh_sample(const Points& points, const Ints& indices, const Ints& counts)
{
    return {AbcG::P3fArraySample(points), AbcG::Int32ArraySample(indices), AbcG::Int32ArraySample(counts)};
}

class Check : public testing::Test
{
protected:
    template <class Write>
    json check(Write&& write)
    {
        write_archive(file_.path(), write);
        const ToolRun run = run_tool({"check", file_.path(), "--json"});
        const json result = json::parse(run.output);
        EXPECT_EQ(run.status, result["errors"] == 0 ? 0 : 1) << run.errors;
        return result["findings"];
    }

    /// One finding, with these words, about that property.
    template <class Write>
    void expect_one(const char* severity, const std::string& property, const std::string& what, Write&& write)
    {
        const json found = check(write);
        ASSERT_EQ(found.size(), 1u) << what << "\n" << found;
        EXPECT_EQ(found[0]["severity"], severity) << what;
        EXPECT_EQ(found[0].value("property", ""), property) << what;
        EXPECT_THAT(found[0]["what"].get<std::string>(), HasSubstr(what));
    }

    ScratchFile file_{"checked.abc"};
};

} // namespace

TEST_F(Check, ASoundArchiveHasNothingSuspicious)
{
    const ToolRun run = run_tool({"check", std::string(VO_SAMPLES_DIR) + "/showcase.abc"});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.output, "nothing suspicious\n");
}

TEST_F(Check, WhatCannotBeOpenedIsAnErrorInJsonToo)
{
    write_file(file_.path(), "no archive");
    const ToolRun run = run_tool({"check", file_.path(), "--json"});
    const json result = json::parse(run.output);
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(result["errors"], 1);
    ASSERT_EQ(result["findings"].size(), 1u);
    EXPECT_EQ(result["findings"][0]["severity"], "error");
    EXPECT_THAT(result["findings"][0]["what"].get<std::string>(), HasSubstr(file_.path()));
}

TEST_F(Check, MeshesWhosePartsDoNotFit)
{
    const auto mesh = [](const Points& points, const Ints& indices, const Ints& counts) {
        return [=](AbcG::OObject top) {
            AbcG::OPolyMesh(top, "mesh").getSchema().set(mesh_sample(points, indices, counts));
        };
    };
    expect_one("error", ".geom/.faceIndices", "1 index is out of range: element 2 is 4, the object has 4 points",
               mesh(corners, {0, 1, 4, 3}, {4}));
    expect_one("error", ".geom/.faceIndices", "element 0 is -1", mesh(corners, {-1, 1, 2, 3}, {4}));
    expect_one("error", ".geom/.faceCounts", "5 points altogether, but .faceIndices has 4",
               mesh(corners, {0, 1, 2, 3}, {5}));
    expect_one("warning", ".geom/.faceCounts", "1 face has fewer than 3 points",
               mesh(corners, {0, 1, 2, 3, 0}, {3, 2}));
    const float nan = std::numeric_limits<float>::quiet_NaN();
    EXPECT_THAT(check(mesh({{0, 0, 0}, {1, nan, nan}, {1, 1, 0}}, {0, 1, 2}, {3})).dump(),
                HasSubstr("2 numbers are not finite, the first in element 1"));
}

TEST_F(Check, OneBadSampleIsNamed)
{
    expect_one("error", ".geom/.faceIndices", "element 3 is 9", [](AbcG::OObject top) {
        AbcG::OPolyMesh mesh(top, "mesh", std::make_shared<AbcG::TimeSampling>(0.5, 10.0));
        for (const int last : {3, 3, 9, 3})
            mesh.getSchema().set(mesh_sample(corners, {0, 1, 2, last}, {4}));
    });
    const json found = json::parse(run_tool({"check", file_.path(), "--json"}).output)["findings"][0];
    EXPECT_EQ(found["object"], "/mesh");
    EXPECT_EQ(found["sample"], 2);
    EXPECT_EQ(found["time"], 11.0);
}

TEST_F(Check, VelocitiesBoundsAndMissingSamples)
{
    expect_one("error", ".geom/.velocities", "3 values for 4 points", [](AbcG::OObject top) {
        auto sample = mesh_sample(corners, square_indices, square_counts);
        const Points velocities(3);
        sample.setVelocities(AbcG::V3fArraySample(velocities));
        AbcG::OPolyMesh(top, "mesh").getSchema().set(sample);
    });
    expect_one("warning", ".geom/.selfBnds", "2 of 4 points lie outside of the bounds", [](AbcG::OObject top) {
        auto sample = mesh_sample(corners, square_indices, square_counts);
        sample.setSelfBounds(AbcG::Box3d(AbcG::V3d(0), AbcG::V3d(0.5, 1, 1)));
        AbcG::OPolyMesh(top, "mesh").getSchema().set(sample);
    });
    expect_one("warning", ".geom/.selfBnds", "no bounds", [](AbcG::OObject top) {
        // As others may write it: the schema by hand, and without a box.
        AbcG::MetaData schema;
        schema.set("schema", "AbcGeom_PolyMesh_v1");
        schema.set("schemaObjTitle", "AbcGeom_PolyMesh_v1:.geom");
        AbcG::OObject mesh(top, "mesh", schema);
        AbcG::OCompoundProperty geometry(mesh.getProperties(), ".geom", schema);
        AbcG::OP3fArrayProperty(geometry, "P").set(AbcG::P3fArraySample(corners));
        AbcG::OInt32ArrayProperty(geometry, ".faceIndices").set(AbcG::Int32ArraySample(square_indices));
        AbcG::OInt32ArrayProperty(geometry, ".faceCounts").set(AbcG::Int32ArraySample(square_counts));
    });
    const json found = check([](AbcG::OObject top) {
        const std::uint32_t sampling = top.getArchive().addTimeSampling(AbcG::TimeSampling(1.0 / 24.0, 0.0));
        for (const int count : {5, 3}) {
            AbcG::OXform transform(top, count == 5 ? "whole" : "cut", sampling);
            for (int i = 0; i < count; ++i) {
                AbcG::XformSample sample;
                sample.setTranslation(AbcG::V3d(i, 0, 0));
                transform.getSchema().set(sample);
            }
        }
    });
    ASSERT_EQ(found.size(), 1u) << found;
    EXPECT_EQ(found[0]["object"], "/cut");
    EXPECT_THAT(found[0]["what"].get<std::string>(), HasSubstr("2 of 5 samples are missing at the end"));
}

TEST_F(Check, FaceSetsCreasesAndParameters)
{
    expect_one("error", ".faceset/.faces", "element 1 is 1, the mesh has 1 faces", [](AbcG::OObject top) {
        AbcG::OPolyMesh mesh = add_square(top, "mesh");
        const Ints faces = {0, 1};
        mesh.getSchema().createFaceSet("paint").getSchema().set(AbcG::OFaceSetSchema::Sample(faces));
    });
    expect_one("error", ".geom/.creaseIndices", "element 1 is 7", [](AbcG::OObject top) {
        const Ints indices = {0, 1, 2, 3}, counts = {4}, crease = {0, 7}, lengths = {2};
        const std::vector<float> sharpnesses = {1.0f};
        AbcG::OSubDSchema::Sample sample{AbcG::P3fArraySample(corners), indices, counts};
        sample.setCreases(crease, lengths, sharpnesses);
        AbcG::OSubD(top, "subd").getSchema().set(sample);
    });
    const auto with_uvs = [](std::size_t count, std::vector<std::uint32_t> indices) {
        return [=](AbcG::OObject top) {
            const std::vector<AbcG::V2f> uvs(count);
            auto sample = mesh_sample(corners, square_indices, square_counts);
            AbcG::OV2fGeomParam::Sample parameter(AbcG::V2fArraySample(uvs), AbcG::kFacevaryingScope);
            if (!indices.empty()) parameter.setIndices(indices);
            sample.setUVs(parameter);
            AbcG::OPolyMesh(top, "mesh").getSchema().set(sample);
        };
    };
    EXPECT_EQ(check(with_uvs(4, {})), json::array());
    EXPECT_EQ(check(with_uvs(1, {0, 0, 0, 0})), json::array());
    expect_one("error", ".geom/uv", "3 values, its scope \"fvr\" has 4", with_uvs(3, {}));
    expect_one("error", ".geom/uv/.indices", "an index is 2, there are 2 values", with_uvs(2, {0, 1, 2, 0}));
}

TEST_F(Check, CurvesPointsTransformsAndLenses)
{
    expect_one("error", ".geom/nVertices", "5 points altogether, but P has 4", [](AbcG::OObject top) {
        const Ints counts = {2, 3};
        AbcG::OCurves(top, "curves").getSchema().set(AbcG::OCurvesSchema::Sample(corners, counts, AbcG::kLinear));
    });
    expect_one("error", ".geom/.pointIds", "2 values for 4 points", [](AbcG::OObject top) {
        const std::vector<std::uint64_t> ids = {1, 2};
        AbcG::OPoints(top, "points").getSchema().set(AbcG::OPointsSchema::Sample(corners, ids));
    });
    expect_one("warning", ".xform", "no inverse", [](AbcG::OObject top) {
        AbcG::XformSample sample;
        sample.setScale(AbcG::V3d(1, 0, 1));
        AbcG::OXform(top, "flat").getSchema().set(sample);
    });
    expect_one("warning", ".geom", "focal length", [](AbcG::OObject top) {
        AbcG::CameraSample sample;
        sample.setFocalLength(0.0);
        AbcG::OCamera(top, "camera").getSchema().set(sample);
    });
}
