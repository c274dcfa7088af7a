/// load_mesh: topology in the host's winding, shading groups, normals, UV sets, and what it refuses.
#include <support/abc_archives.h>

#include <gmock/gmock.h>
#include <vo_app_base/app_progress_bar.h>
#include <vo_geometry/geometry_normal_map.h>
#include <vo_geometry/geometry_uv_map.h>

#include <algorithm>
#include <random>

using namespace abc_archives;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::HasSubstr;

namespace {

using Vec3 = GMathVec3<float>;
using Ints = std::vector<std::int32_t>;
using Indices = std::vector<std::uint32_t>;

/// Everything load_mesh delivers, with something in every array beforehand.
struct LoadedMesh
{
    CoreArray<Vec3> positions{Vec3(9, 9, 9)}, velocities{Vec3(9, 9, 9)};
    CoreArray<unsigned int> face_indices{9u}, face_counts{9u}, face_groups{9u};
    CoreArray<CoreString> group_names{CoreString("before")};
    CoreArray<GeometryUvMap> uv_maps;
    CoreArray<GeometryNormalMap> normal_maps;
    CoreVector<CoreString> property_names;

    bool load(const AbcFileList& files, const char* object, double time = 0.0, AppProgressBar* progress = nullptr)
    {
        return AbcInput::load_mesh(files, object, time, positions, velocities, face_indices, face_counts, face_groups,
                                   group_names, uv_maps, normal_maps, property_names, progress);
    }
};

/// A triangle over a quad that shares an edge with it: 5 points, 7 corners.
struct HousePart
{
    std::vector<AbcG::V3f> points = {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}, {0.5, 2, 0}};
    Ints indices = {0, 1, 2, 3, 3, 2, 4}, counts = {4, 3};

    AbcG::OPolyMeshSchema::Sample sample() const
    {
        return AbcG::OPolyMeshSchema::Sample(AbcG::P3fArraySample(points), indices, counts);
    }
};

const std::vector<unsigned int> house_in_host_winding = {3, 2, 1, 0, 4, 2, 3};

void add_face_set(AbcG::OPolyMesh& mesh, const char* name, const std::vector<Ints>& samples)
{
    AbcG::OFaceSet set = mesh.getSchema().createFaceSet(name);
    for (const Ints& faces : samples)
        set.getSchema().set(AbcG::OFaceSetSchema::Sample(faces));
}

class MeshLoading : public StartedLibrary
{
protected:
    const ScratchFile file_{"meshes.abc"};
    const AbcFileList files_{CoreString(file_.path())};
    LoadedMesh mesh_;
};

} // namespace

TEST_F(MeshLoading, PolygonsAreTurnedRoundAndProgressIsShown)
{
    const HousePart house;
    write_archive(file_.path(), [&](AbcG::OObject top) {
        AbcG::OPolyMeshSchema::Sample sample = house.sample();
        const std::vector<AbcG::V3f> velocities = {{1, 2, 3}, {4, 5, 6}}; // fewer than points: delivered as they are
        sample.setVelocities(velocities);
        AbcG::OPolyMesh(top, "house").getSchema().set(sample);
    });
    AppProgressBar progress;
    ASSERT_TRUE(mesh_.load(files_, "/house", 0.0, &progress));
    EXPECT_THAT(mesh_.face_counts, ElementsAre(4u, 3u));
    EXPECT_THAT(mesh_.face_indices, ElementsAreArray(house_in_host_winding));
    ASSERT_EQ(mesh_.positions.get_count(), 5u);
    EXPECT_EQ(mesh_.positions[4], Vec3(0.5f, 2, 0));
    EXPECT_THAT(mesh_.velocities, ElementsAre(Vec3(1, 2, 3), Vec3(4, 5, 6)));
    EXPECT_THAT(mesh_.face_groups, ElementsAre(0u, 0u));
    EXPECT_THAT(mesh_.group_names, ElementsAre(CoreString("default")));
    EXPECT_EQ(mesh_.uv_maps.get_count(), 0u);
    EXPECT_EQ(progress.get_value(), 1.0f);
}

TEST_F(MeshLoading, LargeMeshesAreTurnedRoundFaceByFace)
{
    constexpr std::size_t corner_count = 700'000, point_count = 300'000;
    std::mt19937 random(7);
    Ints counts, indices, value_indices;
    std::size_t corners = 0;
    for (std::size_t face = 0; corners < corner_count; ++face) {
        // One face is longer than any piece that a large array is read in.
        std::size_t count = face == 1000 ? 70'000 : 3 + random() % 5;
        count = std::min(count, corner_count - corners);
        counts.push_back(std::int32_t(count));
        corners += count;
    }
    for (std::size_t i = 0; i < corner_count; ++i) {
        indices.push_back(std::int32_t(random() % point_count));
        value_indices.push_back(std::int32_t(random() % point_count));
    }
    std::vector<AbcG::V3f> points;
    std::vector<AbcG::V2f> uvs;
    for (std::size_t i = 0; i < point_count; ++i) {
        points.emplace_back(float(i), 1.0f, -float(i));
        uvs.emplace_back(float(i), -float(i));
    }
    const std::vector<std::uint32_t> map_indices(value_indices.begin(), value_indices.end());
    const auto write = [&](std::int32_t last_index) {
        indices.back() = last_index;
        write_archive(file_.path(), [&](AbcG::OObject top) {
            AbcG::OPolyMeshSchema::Sample sample(AbcG::P3fArraySample(points), indices, counts);
            sample.setNormals(AbcG::ON3fGeomParam::Sample(AbcG::N3fArraySample(points.data(), point_count), map_indices,
                                                          AbcG::kFacevaryingScope));
            sample.setUVs(AbcG::OV2fGeomParam::Sample(uvs, map_indices, AbcG::kFacevaryingScope));
            AbcG::OPolyMesh(top, "large").getSchema().set(sample);
        });
    };
    write(0);
    ASSERT_TRUE(mesh_.load(files_, "/large"));
    std::size_t first = 0;
    for (const std::int32_t count : counts) {
        for (Ints* const turned : {&indices, &value_indices})
            std::reverse(turned->data() + first, turned->data() + first + count);
        first += std::size_t(count);
    }
    EXPECT_TRUE(std::equal(indices.begin(), indices.end(), mesh_.face_indices.begin(), mesh_.face_indices.end()));
    ASSERT_EQ(mesh_.normal_maps.get_count(), 1u);
    ASSERT_EQ(mesh_.uv_maps.get_count(), 1u);
    for (const auto& map_indices_read : {mesh_.normal_maps[0].indices, mesh_.uv_maps[0].indices})
        EXPECT_TRUE(
            std::equal(value_indices.begin(), value_indices.end(), map_indices_read.begin(), map_indices_read.end()));
    for (std::size_t i = 0; i < point_count; ++i) {
        ASSERT_EQ(mesh_.positions[i], Vec3(float(i), 1.0f, -float(i)));
        ASSERT_EQ(mesh_.uv_maps[0].values[i], Vec3(float(i), -float(i), 0.0f));
    }

    write(std::int32_t(point_count) + 1); // only the last piece shows it
    EXPECT_FALSE(mesh_.load(files_, "/large"));
    EXPECT_THAT(log_.take(), ElementsAre(HasSubstr("is corrupted")));
}

TEST_F(MeshLoading, TheNearestSampleIsTakenAndFaceSetsFromTheirFirst)
{
    const HousePart house;
    write_archive(file_.path(), [&](AbcG::OObject top) {
        const auto sampling = std::make_shared<AbcG::TimeSampling>(1.0, 0.0);
        AbcG::OPolyMesh mesh(top, "house", sampling);
        mesh.getSchema().set(house.sample());
        const std::vector<AbcG::V3f> moved(5, AbcG::V3f(7, 7, 7));
        mesh.getSchema().set(AbcG::OPolyMeshSchema::Sample(AbcG::P3fArraySample(moved)));
        add_face_set(mesh, "b", {{1}, {0}});
        add_face_set(mesh, "a", {{0, 1}, {}});
    });
    ASSERT_TRUE(mesh_.load(files_, "/house", 0.8));
    EXPECT_EQ(mesh_.positions[0], Vec3(7, 7, 7));
    EXPECT_THAT(mesh_.group_names, ElementsAre(CoreString("a"), CoreString("b"))); // in order of their names
    EXPECT_THAT(mesh_.face_groups, ElementsAre(0u, 1u));                           // the later set wins
    ASSERT_TRUE(mesh_.load(files_, "/house", 0.2));
    EXPECT_EQ(mesh_.positions[0], Vec3(0, 0, 0));
}

TEST_F(MeshLoading, FaceSetsThatDoNotFitTheMesh)
{
    const HousePart house;
    write_archive(file_.path(), [&](AbcG::OObject top) {
        AbcG::OPolyMesh mesh(top, "house");
        mesh.getSchema().set(house.sample());
        add_face_set(mesh, "a", {});
        add_face_set(mesh, "large", {{1, 2, 100000, -1}});
    });
    ASSERT_TRUE(mesh_.load(files_, "/house"));
    EXPECT_THAT(mesh_.group_names, ElementsAre(CoreString("a"), CoreString("large")));
    EXPECT_THAT(mesh_.face_groups, ElementsAre(0u, 1u));
    EXPECT_THAT(log_.take(),
                ElementsAre("2 The object /house's shading group large has an incorrect face count: 4/2.\n"));
}

TEST_F(MeshLoading, AnIndexEqualToThePointCountIsAcceptedAGreaterOneIsNot)
{
    HousePart house;
    write_archive(file_.path(), [&](AbcG::OObject top) {
        house.indices[6] = 5;
        AbcG::OPolyMesh equal(top, "equal");
        equal.getSchema().set(house.sample());
        for (const std::size_t count : {5u, 6u}) { // one value per point, and one more, with an index for each point
            const std::vector<AbcG::V2f> values(count);
            const Indices indices = {0, 1, 2, 3, 4};
            AbcG::OV2fGeomParam uvs(equal.getSchema().getArbGeomParams(), std::to_string(count) + " values", true,
                                    AbcG::kVertexScope, 1);
            uvs.set(AbcG::OV2fGeomParam::Sample(AbcG::V2fArraySample(values), indices, AbcG::kVertexScope));
        }
        house.indices[6] = 6;
        AbcG::OPolyMesh(top, "greater").getSchema().set(house.sample());
        house.indices[6] = -1;
        AbcG::OPolyMesh(top, "negative").getSchema().set(house.sample());
        house.indices[6] = 4;
        house.counts = {4, 4};
        AbcG::OPolyMesh(top, "sum").getSchema().set(house.sample());
        house.counts = {8, -1};
        AbcG::OPolyMesh(top, "negative count").getSchema().set(house.sample());
    });
    ASSERT_TRUE(mesh_.load(files_, "/equal"));
    EXPECT_EQ(mesh_.face_indices[4], 5u);
    ASSERT_EQ(mesh_.uv_maps.get_count(), 1u) << "no index may lead out of the values";
    EXPECT_EQ(mesh_.uv_maps[0].name, "6 values");

    const std::string message = "2 The Alembic archive from file(s) '" + file_.path() + "' is corrupted\n";
    for (const char* object : {"/greater", "/negative", "/sum", "/negative count"}) {
        LoadedMesh corrupt;
        EXPECT_FALSE(corrupt.load(files_, object)) << object;
        EXPECT_THAT(log_.take(), ElementsAre(message)) << object;
        EXPECT_EQ(corrupt.positions.get_count(), 5u);
        EXPECT_THAT(corrupt.group_names, ElementsAre(CoreString("before"))) << "groups are untouched";
        EXPECT_THAT(corrupt.face_groups, ElementsAre(9u));
        for (const unsigned int index : corrupt.face_indices)
            EXPECT_LE(index, 9u); // nothing that leads out of the positions
    }
}

TEST_F(MeshLoading, NormalsNeedOneIndexPerCorner)
{
    const HousePart house;
    const std::vector<AbcG::N3f> values = {{0, 0, 1}, {0, 1, 0}, {1, 0, 0}};
    const auto write = [&](AbcG::OObject top, const char* name, const Indices& indices, AbcG::GeometryScope scope) {
        AbcG::OPolyMeshSchema::Sample sample = house.sample();
        sample.setNormals(AbcG::ON3fGeomParam::Sample(AbcG::N3fArraySample(values), indices, scope));
        AbcG::OPolyMesh(top, name).getSchema().set(sample);
    };
    write_archive(file_.path(), [&](AbcG::OObject top) {
        write(top, "corners", {0, 1, 2, 0, 1, 2, 2}, AbcG::kFacevaryingScope);
        write(top, "points", {0, 1, 2, 0, 1}, AbcG::kVertexScope);
        write(top, "beyond", {0, 1, 2, 0, 1, 2, 3}, AbcG::kFacevaryingScope);
    });
    ASSERT_TRUE(mesh_.load(files_, "/corners"));
    ASSERT_EQ(mesh_.normal_maps.get_count(), 1u);
    EXPECT_EQ(mesh_.normal_maps[0].name, "N");
    EXPECT_THAT(mesh_.normal_maps[0].values, ElementsAre(Vec3(0, 0, 1), Vec3(0, 1, 0), Vec3(1, 0, 0)));
    EXPECT_THAT(mesh_.normal_maps[0].indices, ElementsAre(0u, 2u, 1u, 0u, 2u, 2u, 1u));
    LoadedMesh points;
    ASSERT_TRUE(points.load(files_, "/points"));
    EXPECT_EQ(points.normal_maps.get_count(), 0u);
    LoadedMesh beyond;
    ASSERT_TRUE(beyond.load(files_, "/beyond"));
    EXPECT_EQ(beyond.normal_maps.get_count(), 0u) << "no index may lead out of the values";
}

TEST_F(MeshLoading, UvSetsPerCornerAndPerPointWithTheirNames)
{
    const HousePart house;
    const std::vector<AbcG::V2f> corner_values = {{0.1f, 0.2f}, {0.3f, 0.4f}}, point_values(5, AbcG::V2f(0.5f, 0.25f));
    const Indices corner_indices = {0, 0, 0, 1, 1, 1, 1};
    write_archive(file_.path(), [&](AbcG::OObject top) {
        AbcG::OPolyMesh mesh(top, "house");
        mesh.getSchema().setUVSourceName("map1");
        AbcG::OPolyMeshSchema::Sample sample = house.sample();
        sample.setUVs(
            AbcG::OV2fGeomParam::Sample(AbcG::V2fArraySample(corner_values), corner_indices, AbcG::kFacevaryingScope));
        mesh.getSchema().set(sample);
        AbcG::OV2fGeomParam extra(mesh.getSchema().getArbGeomParams(), "extra", false, AbcG::kVertexScope, 1);
        extra.set(AbcG::OV2fGeomParam::Sample(AbcG::V2fArraySample(point_values), AbcG::kVertexScope));
        AbcG::OV2fGeomParam own(mesh.getSchema(), "own", false, AbcG::kVertexScope, 1);
        own.set(AbcG::OV2fGeomParam::Sample(AbcG::V2fArraySample(point_values), AbcG::kVertexScope));
        AbcG::OV2fGeomParam uniform(mesh.getSchema().getArbGeomParams(), "uniform", false, AbcG::kUniformScope, 1);
        uniform.set(AbcG::OV2fGeomParam::Sample(AbcG::V2fArraySample(corner_values), AbcG::kUniformScope));
    });
    for (int load = 0; load < 2; ++load) { // a second load into the same arrays gives the same maps
        ASSERT_TRUE(mesh_.load(files_, "/house"));
        ASSERT_EQ(mesh_.uv_maps.get_count(), 3u);
        EXPECT_EQ(mesh_.uv_maps[0].name, "map1");
        EXPECT_THAT(mesh_.uv_maps[0].values, ElementsAre(Vec3(0.1f, 0.2f, 0), Vec3(0.3f, 0.4f, 0)));
        EXPECT_THAT(mesh_.uv_maps[0].indices, ElementsAre(1u, 0u, 0u, 0u, 1u, 1u, 1u));
        EXPECT_EQ(mesh_.uv_maps[1].name, "extra");
        EXPECT_EQ(mesh_.uv_maps[2].name, "own");
        EXPECT_THAT(mesh_.uv_maps[2].values, testing::Each(Vec3(0.5f, 0.25f, 0)));
        EXPECT_THAT(mesh_.uv_maps[2].indices, ElementsAreArray(house_in_host_winding));
    }
    EXPECT_THAT(mesh_.property_names, testing::UnorderedElementsAre(CoreString("extra"), CoreString("uniform")));
}

TEST_F(MeshLoading, UvSetsWithoutADefaultOneAreAppended)
{
    const HousePart house;
    const std::vector<AbcG::V2f> values(5, AbcG::V2f(0.5f, 0.25f));
    write_archive(file_.path(), [&](AbcG::OObject top) {
        AbcG::OPolyMesh mesh(top, "house");
        mesh.getSchema().set(house.sample());
        AbcG::OV2fGeomParam extra(mesh.getSchema().getArbGeomParams(), "extra", false, AbcG::kVertexScope, 1);
        extra.set(AbcG::OV2fGeomParam::Sample(AbcG::V2fArraySample(values), AbcG::kVertexScope));
    });
    mesh_.uv_maps.resize(1);
    mesh_.uv_maps[0].name = "mine";
    ASSERT_TRUE(mesh_.load(files_, "/house"));
    ASSERT_EQ(mesh_.uv_maps.get_count(), 2u);
    EXPECT_EQ(mesh_.uv_maps[0].name, "mine");
    EXPECT_EQ(mesh_.uv_maps[1].name, "extra");
}

TEST_F(MeshLoading, MeshesWithoutSamplesAndOtherObjects)
{
    write_archive(file_.path(), [&](AbcG::OObject top) {
        AbcG::OPolyMesh(top, "empty");
        AbcG::OSubD(top, "empty subd");
        AbcG::OXform(top, "transform");
    });
    for (const char* object : {"/empty", "/empty subd"}) {
        LoadedMesh untouched;
        EXPECT_TRUE(untouched.load(files_, object));
        EXPECT_THAT(untouched.positions, ElementsAre(Vec3(9, 9, 9)));
        EXPECT_THAT(untouched.group_names, ElementsAre(CoreString("before")));
    }
    EXPECT_FALSE(mesh_.load(files_, "/transform"));
    EXPECT_FALSE(mesh_.load(files_, "/nobody"));
    EXPECT_FALSE(mesh_.load(AbcFileList(CoreString(file_.path() + ".gone.abc")), "/empty"));
    EXPECT_THAT(log_.take(), ElementsAre(HasSubstr("2 Invalid Alembic file list: [")));
}

TEST_F(MeshLoading, SubdivisionMeshesAndTheirCreases)
{
    const HousePart house;
    const Ints crease_indices = {0, 1, 2, 3}, crease_lengths = {2, 2};
    const std::vector<float> sharpnesses = {1.5f, 10.0f};
    write_archive(file_.path(), [&](AbcG::OObject top) {
        AbcG::OSubDSchema::Sample sample(AbcG::P3fArraySample(house.points), house.indices, house.counts);
        AbcG::OSubD smooth(top, "smooth");
        smooth.getSchema().set(sample);
        AbcG::OInt32ArrayProperty(smooth.getSchema().getUserProperties(), "mine");
        sample.setCreases(crease_indices, crease_lengths, sharpnesses);
        AbcG::OSubD(top, "creased").getSchema().set(sample);
        AbcG::OSubD(top, "empty");
    });
    ASSERT_TRUE(mesh_.load(files_, "/creased"));
    EXPECT_THAT(mesh_.face_indices, ElementsAreArray(house_in_host_winding));

    CoreVector<CoreString> names;
    CoreArray<int> indices{7};
    CoreArray<float> values{7.0f};
    EXPECT_FALSE(AbcInput::load_mesh_subdiv(files_, "/smooth", 0.0, names, indices, values)) << "no creases";
    EXPECT_THAT(names, ElementsAre(CoreString("mine"))) << "names are filled all the same";
    EXPECT_THAT(indices, ElementsAre(7));
    EXPECT_TRUE(AbcInput::load_mesh_subdiv(files_, "/empty", 0.0, names, indices, values)) << "no samples";
    EXPECT_THAT(values, ElementsAre(7.0f));
    EXPECT_TRUE(AbcInput::load_mesh_subdiv(files_, "/creased", 0.0, names, indices, values));
    EXPECT_THAT(indices, ElementsAreArray(crease_indices));
    EXPECT_THAT(values, ElementsAreArray(sharpnesses));
}
