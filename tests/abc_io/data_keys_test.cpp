/// Data keys: equal for equal geometry wherever it is stored, another for every datum that is changed, and cheap.
#include <support/abc_archives.h>
#include <support/open_handle.h>

#include <abc_input_archive_manager.h>
#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <numeric>

using namespace abc_archives;

namespace {

using Floats = std::vector<float>;
using Ints = std::vector<std::int32_t>;
using Vectors = std::vector<AbcG::V3f>;
using Uvs = std::vector<AbcG::V2f>;
using Indices = std::vector<std::uint32_t>;

/// Everything that counts in a mesh, a subdivision mesh, curves or points; tests change one datum at a time.
struct Geometry
{
    Vectors positions = square(1), velocities = square(2), normals = square(3);
    Ints counts = {4}, face_indices = {0, 1, 2, 3};
    Uvs uvs = {{0, 0}, {1, 0}, {1, 1}, {0, 1}}, more_uvs = {{0, 0}, {1, 0}, {1, 1}, {0, 2}};
    Indices uv_indices = {0, 1, 2, 3};
    AbcG::GeometryScope uv_scope = AbcG::kFacevaryingScope;
    std::string uv_name = "map1", scheme = "loop", face_set_name = "faces";
    Ints faces = {0}, crease_indices = {0, 1}, crease_lengths = {2}, corner_indices = {2}, holes = {0};
    Floats crease_sharpnesses = {3}, corner_sharpnesses = {4}, widths = {1, 2, 3, 4}, weights = {1, 1, 1, 2},
           knots = {0, 1, 2, 3};
    std::vector<std::uint8_t> orders = {4};
    std::vector<std::uint64_t> ids = {5, 6, 7, 8};
    int interpolate_boundary = 1, propagate_corners = 1, face_varying_boundary = 1;
    AbcG::CurveType curve_type = AbcG::kCubic;
    AbcG::CurvePeriodicity periodicity = AbcG::kPeriodic;
    AbcG::BasisType basis = AbcG::kBsplineBasis;
    double weight = 0.5;            ///< a geometry parameter
    std::wstring note = L"first";   ///< and one of wide text
    std::int32_t user_property = 1; ///< which does not count
    AbcG::Box3d bounds;             ///< which do not count either

    AbcG::OV2fGeomParam::Sample uv_sample() const
    {
        return AbcG::OV2fGeomParam::Sample(AbcG::V2fArraySample(uvs), AbcG::UInt32ArraySample(uv_indices), uv_scope);
    }
};

template <class Schema>
void add_parameters(Schema& schema, const Geometry& geometry)
{
    AbcG::OCompoundProperty parameters = schema.getArbGeomParams();
    AbcG::OV2fGeomParam(parameters, "map2", false, AbcG::kVertexScope, 1)
        .set(AbcG::OV2fGeomParam::Sample(AbcG::V2fArraySample(geometry.more_uvs), AbcG::kVertexScope));
    AbcG::ODoubleProperty(parameters, "weight").set(geometry.weight);
    const std::vector<std::wstring> notes = {geometry.note};
    AbcG::OWstringArrayProperty(parameters, "note").set(AbcG::WstringArraySample(notes));
    AbcG::OInt32Property(schema.getUserProperties(), "user").set(geometry.user_property);
}

template <class Schema>
void add_face_set(Schema& schema, const Geometry& geometry)
{
    AbcG::OFaceSet face_set = schema.createFaceSet(geometry.face_set_name);
    face_set.getSchema().set(AbcG::OFaceSetSchema::Sample(geometry.faces));
}

void add_mesh(AbcG::OObject parent, const std::string& name, const Geometry& geometry)
{
    AbcG::OPolyMesh mesh(parent, name);
    mesh.getSchema().setUVSourceName(geometry.uv_name);
    AbcG::OPolyMeshSchema::Sample sample(AbcG::P3fArraySample(geometry.positions), geometry.face_indices,
                                         geometry.counts, geometry.uv_sample());
    sample.setVelocities(AbcG::V3fArraySample(geometry.velocities));
    sample.setNormals(AbcG::ON3fGeomParam::Sample(AbcG::N3fArraySample(geometry.normals), AbcG::kFacevaryingScope));
    sample.setSelfBounds(geometry.bounds);
    mesh.getSchema().set(sample);
    add_parameters(mesh.getSchema(), geometry);
    add_face_set(mesh.getSchema(), geometry);
}

void add_subd(AbcG::OObject parent, const std::string& name, const Geometry& geometry)
{
    AbcG::OSubD mesh(parent, name);
    AbcG::OSubDSchema::Sample sample(AbcG::P3fArraySample(geometry.positions), geometry.face_indices, geometry.counts);
    sample.setCreases(geometry.crease_indices, geometry.crease_lengths, geometry.crease_sharpnesses);
    sample.setCorners(geometry.corner_indices, geometry.corner_sharpnesses);
    sample.setHoles(geometry.holes);
    sample.setSubdivisionScheme(geometry.scheme);
    sample.setInterpolateBoundary(geometry.interpolate_boundary);
    sample.setFaceVaryingPropagateCorners(geometry.propagate_corners);
    sample.setFaceVaryingInterpolateBoundary(geometry.face_varying_boundary);
    mesh.getSchema().set(sample);
    add_face_set(mesh.getSchema(), geometry);
}

void add_curves(AbcG::OObject parent, const std::string& name, const Geometry& geometry)
{
    AbcG::OCurves curves(parent, name);
    AbcG::OCurvesSchema::Sample sample(
        AbcG::P3fArraySample(geometry.positions), geometry.counts, geometry.curve_type, geometry.periodicity,
        AbcG::OFloatGeomParam::Sample(AbcG::FloatArraySample(geometry.widths), AbcG::kVertexScope),
        geometry.uv_sample(), AbcG::ON3fGeomParam::Sample(AbcG::N3fArraySample(geometry.normals), AbcG::kVertexScope),
        geometry.basis, AbcG::FloatArraySample(geometry.weights), AbcG::UcharArraySample(geometry.orders),
        AbcG::FloatArraySample(geometry.knots));
    curves.getSchema().set(sample);
}

void add_points(AbcG::OObject parent, const std::string& name, const Geometry& geometry)
{
    AbcG::OPoints points(parent, name);
    points.getSchema().set(AbcG::OPointsSchema::Sample(
        AbcG::P3fArraySample(geometry.positions), AbcG::UInt64ArraySample(geometry.ids),
        AbcG::V3fArraySample(geometry.velocities),
        AbcG::OFloatGeomParam::Sample(AbcG::FloatArraySample(geometry.widths), AbcG::kVertexScope)));
}

using Add = void (*)(AbcG::OObject, const std::string&, const Geometry&);
using Change = std::function<void(Geometry&)>;

class DataKeys : public StartedLibrary
{
protected:
    std::vector<std::string> read_keys(const std::vector<std::string>& names)
    {
        CoreArray<CoreString> keys(names.size()), core_names(names.size());
        for (std::size_t i = 0; i < names.size(); ++i)
            core_names[i] = CoreString(names[i]);
        AbcInput::make_object_key(files_, keys, core_names, nullptr);
        return to_strings(keys);
    }

    /// Writes the geometry and one object for each change of it, and expects a key of its own for each.
    void expect_every_change_seen(Add add, const std::string& prefix, const std::map<std::string, Change>& changes)
    {
        std::vector<std::string> names = {"/plain"};
        write_archive(file_.path(), [&](AbcG::OObject top) {
            add(top, "plain", Geometry());
            for (const auto& [name, change] : changes) {
                Geometry geometry;
                change(geometry);
                add(top, name, geometry);
                names.push_back("/" + name);
            }
        });
        std::map<std::string, std::string> owners;
        const std::vector<std::string> keys = read_keys(names);
        for (std::size_t i = 0; i < keys.size(); ++i) {
            EXPECT_THAT(keys[i], testing::StartsWith("v1:" + prefix + ":"));
            const auto [owner, is_new] = owners.emplace(keys[i], names[i]);
            EXPECT_TRUE(is_new) << names[i] << " has the key of " << owner->second;
        }
    }

    const ScratchFile file_{"keys.abc"};
    const AbcFileList files_{CoreString(file_.path())};
};

/// Bytes that this process has asked the system for so far.
unsigned long long bytes_read()
{
    std::ifstream io("/proc/self/io");
    std::string name;
    unsigned long long count = 0;
    while (io >> name >> count)
        if (name == "rchar:") return count;
    return 0;
}

} // namespace

TEST_F(DataKeys, EveryDatumOfAMeshCounts)
{
    expect_every_change_seen(add_mesh, "mesh",
                             {{"position", [](Geometry& g) { g.positions[1].x = 7; }},
                              {"more_positions", [](Geometry& g) { g.positions.emplace_back(0, 0, 0); }},
                              {"index", [](Geometry& g) { std::swap(g.face_indices[0], g.face_indices[1]); }},
                              {"counts",
                               [](Geometry& g) {
                                   g.counts = {3, 1};
                               }},
                              {"velocity", [](Geometry& g) { g.velocities[3].y = 7; }},
                              {"normal", [](Geometry& g) { g.normals[0].z = 7; }},
                              {"uv", [](Geometry& g) { g.uvs[2].x = 7; }},
                              {"uv_index", [](Geometry& g) { g.uv_indices[2] = 0; }},
                              {"uv_scope", [](Geometry& g) { g.uv_scope = AbcG::kVertexScope; }},
                              {"uv_name", [](Geometry& g) { g.uv_name = "map3"; }},
                              {"second_uv", [](Geometry& g) { g.more_uvs[0].x = 7; }},
                              {"face_set",
                               [](Geometry& g) {
                                   g.faces = {0, 0};
                               }},
                              {"face_set_name", [](Geometry& g) { g.face_set_name = "others"; }},
                              {"parameter", [](Geometry& g) { g.weight = 0.25; }},
                              {"wide_text", [](Geometry& g) { g.note.front() = L'F'; }}});
}

TEST_F(DataKeys, EveryDatumOfASubdivisionMeshCounts)
{
    expect_every_change_seen(add_subd, "subd",
                             {{"position", [](Geometry& g) { g.positions[1].x = 7; }},
                              {"crease_index", [](Geometry& g) { g.crease_indices[0] = 3; }},
                              {"crease_length",
                               [](Geometry& g) {
                                   g.crease_lengths = {1, 1};
                               }},
                              {"crease_sharpness", [](Geometry& g) { g.crease_sharpnesses[0] = 7; }},
                              {"corner", [](Geometry& g) { g.corner_indices[0] = 3; }},
                              {"corner_sharpness", [](Geometry& g) { g.corner_sharpnesses[0] = 7; }},
                              {"hole", [](Geometry& g) { g.holes = {1}; }},
                              {"scheme", [](Geometry& g) { g.scheme = "bilinear"; }},
                              {"boundary", [](Geometry& g) { g.interpolate_boundary = 2; }},
                              {"corners", [](Geometry& g) { g.propagate_corners = 2; }},
                              {"face_varying_boundary", [](Geometry& g) { g.face_varying_boundary = 2; }},
                              {"face_set", [](Geometry& g) { g.faces = {}; }}});
}

TEST_F(DataKeys, EveryDatumOfCurvesAndPointsCounts)
{
    const std::map<std::string, Change> both = {{"position", [](Geometry& g) { g.positions[1].x = 7; }},
                                                {"width", [](Geometry& g) { g.widths[3] = 7; }}};
    std::map<std::string, Change> curves = {{"counts",
                                             [](Geometry& g) {
                                                 g.counts = {2, 2};
                                             }},
                                            {"uv", [](Geometry& g) { g.uvs[2].x = 7; }},
                                            {"normal", [](Geometry& g) { g.normals[0].z = 7; }},
                                            {"type", [](Geometry& g) { g.curve_type = AbcG::kLinear; }},
                                            {"wrap", [](Geometry& g) { g.periodicity = AbcG::kNonPeriodic; }},
                                            {"basis", [](Geometry& g) { g.basis = AbcG::kCatmullromBasis; }},
                                            {"weight", [](Geometry& g) { g.weights[0] = 7; }},
                                            {"order", [](Geometry& g) { g.orders[0] = 3; }},
                                            {"knot", [](Geometry& g) { g.knots[3] = 7; }}};
    std::map<std::string, Change> points = {{"id", [](Geometry& g) { g.ids[0] = 9; }},
                                            {"velocity", [](Geometry& g) { g.velocities[3].y = 7; }}};
    curves.insert(both.begin(), both.end());
    points.insert(both.begin(), both.end());
    expect_every_change_seen(add_curves, "curves", curves);
    expect_every_change_seen(add_points, "points", points);
}

TEST_F(DataKeys, EqualGeometryHasEqualKeysInOtherArchivesPlacesAndOrder)
{
    const Add kinds[] = {add_mesh, add_subd, add_curves, add_points};
    write_archive(file_.path(), [&](AbcG::OObject top) {
        for (int kind = 0; kind < 4; ++kind)
            kinds[kind](top, "object" + std::to_string(kind), Geometry());
    });
    const std::vector<std::string> names = {"/object0", "/object1", "/object2", "/object3"};
    const std::vector<std::string> keys = read_keys(names);

    Geometry same;
    same.user_property = 2;
    same.bounds = AbcG::Box3d(AbcG::V3d(-9), AbcG::V3d(9));
    write_archive(file_.path(), [&](AbcG::OObject top) {
        AbcG::OXform group(top, "group");
        for (int kind = 3; kind >= 0; --kind)
            kinds[kind](group, "other" + std::to_string(kind), same);
    });
    EXPECT_EQ(read_keys({"/group/other0", "/group/other1", "/group/other2", "/group/other3"}), keys);
}

TEST_F(DataKeys, TheWholeOfAWideTextCounts)
{
    std::vector<std::string> keys;
    for (const wchar_t* const note : {L"first", L"firsT", L"first"}) { // archives hash the first quarter only
        Geometry geometry;
        geometry.note = note;
        write_archive(file_.path(), [&](AbcG::OObject top) { add_mesh(top, "mesh", geometry); });
        keys.push_back(read_keys({"/mesh"})[0]);
    }
    EXPECT_NE(keys[1], keys[0]);
    EXPECT_EQ(keys[2], keys[0]);
}

TEST_F(DataKeys, WhatIsNotThereIsWhatIsEmpty)
{
    write_archive(file_.path(), [](AbcG::OObject top) {
        add_square(top, "bare");
        AbcG::OPolyMesh empty = add_square(top, "empty");
        empty.getSchema().getArbGeomParams();
        const Floats nothing;
        AbcG::OFloatArrayProperty(empty.getSchema().getArbGeomParams(), "none").set(AbcG::FloatArraySample(nothing));
        // Texture coordinates that only the second sample has.
        AbcG::OPolyMesh late = add_square(top, "late");
        const Geometry geometry;
        late.getSchema().set(AbcG::OPolyMeshSchema::Sample(
            AbcG::P3fArraySample(geometry.positions), geometry.face_indices, geometry.counts, geometry.uv_sample()));
        for (const char* const scheme : {"catmull-clark", "loop", "catmull-clark"}) {
            AbcG::OSubD mesh(top, std::string(scheme) + std::to_string(top.getNumChildren()));
            AbcG::OSubDSchema::Sample sample(AbcG::P3fArraySample(geometry.positions), geometry.face_indices,
                                             geometry.counts);
            sample.setSubdivisionScheme(scheme);
            if (top.getNumChildren() == 6) sample.setInterpolateBoundary(0); // which is the default
            mesh.getSchema().set(sample);
        }
    });
    const std::vector<std::string> keys =
        read_keys({"/bare", "/empty", "/late", "/catmull-clark3", "/loop4", "/catmull-clark5"});
    EXPECT_EQ(keys[1], keys[0]);
    EXPECT_EQ(keys[2], keys[0]);
    EXPECT_NE(keys[4], keys[3]);
    EXPECT_EQ(keys[5], keys[3]);
}

TEST_F(DataKeys, TheNearestSampleIsTheOneThatCounts)
{
    write_archive(file_.path(), [](AbcG::OObject top) {
        const auto sampling = std::make_shared<AbcG::TimeSampling>(0.5, 1.0);
        add_square(top, "moving", {1, 2, 3}, sampling);
        for (const float size : {1.0f, 2.0f, 3.0f})
            add_square(top, "still" + std::to_string(int(size)), {size});
    });
    const std::vector<std::string> still = read_keys({"/still1", "/still2", "/still3"});
    const OpenHandle handle(files_);
    const AbcG::IObject top = static_cast<AbcG::IArchive*>(handle->get_archive())->getTop();
    const AbcG::IPolyMesh moving(top, "moving");
    const std::pair<double, int> expected[] = {{-5, 0}, {1.0, 0}, {1.24, 0}, {1.26, 1}, {1.5, 1}, {1.76, 2}, {9, 2}};
    for (const auto& [time, sample] : expected)
        EXPECT_EQ(AbcInputArchiveManager::get_mesh_data_hash_key(moving, time).get_data(), still[sample]) << time;
}

TEST_F(DataKeys, NoSampleDataIsRead)
{
    constexpr std::size_t count = 500000; // 6 MB of positions, and as much of everything else
    write_archive(file_.path(), [](AbcG::OObject top) {
        Geometry large;
        large.positions.resize(count);
        for (std::size_t i = 0; i < count; ++i)
            large.positions[i] = AbcG::V3f(float(i), 1, 2);
        large.velocities = large.positions;
        large.velocities.back().x = 5;
        large.face_indices.resize(count);
        std::iota(large.face_indices.begin(), large.face_indices.end(), 0);
        large.counts.assign(count / 4, 4);
        large.faces.assign(large.face_indices.begin(), large.face_indices.begin() + count / 4);
        add_mesh(top, "large", large);
    });
    const unsigned long long before = bytes_read();
    if (before == 0) GTEST_SKIP() << "the system does not count what a process reads";
    const std::vector<std::string> keys = read_keys({"/large"});
    const unsigned long long read = bytes_read() - before;
    EXPECT_THAT(keys[0], testing::StartsWith("v1:mesh:"));
    EXPECT_LT(read, 2u << 20) << "of an archive of " << std::filesystem::file_size(file_.path()) << " bytes";
    EXPECT_GT(std::filesystem::file_size(file_.path()), 12u << 20);
}
