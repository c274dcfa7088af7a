/// Writing schemas: bounds, face sets, time samplings, errors under each policy, copies.
#include "sample_series.h"

#include <algorithm>
#include <set>

using namespace sample_series;

namespace {

const ErrorHandler::Policy quiet = ErrorHandler::kQuietNoopPolicy;

struct Square
{
    std::vector<V3f> points = {V3f(0, 0, 0), V3f(1, 0, 0), V3f(1, 1, 0), V3f(0, 1, 0)};
    std::vector<int32_t> indices = {0, 1, 2, 3};
    std::vector<int32_t> counts = {4};
    OPolyMeshSchema::Sample sample() const { return OPolyMeshSchema::Sample(points, indices, counts); }
};

OArchive new_archive(const ScratchFile& file)
{
    return OArchive(Alembic::AbcCoreOgawa::WriteArchive(), file.path());
}

template <class F>
std::string thrown(F f)
{
    try {
        f();
    } catch (const std::exception& error) {
        return error.what();
    }
    return "";
}

/// Indices of the archive's samplings by the full path of each property below a compound.
void list_samplings(ICompoundProperty compound, const std::string& prefix, std::map<std::string, double>& starts)
{
    for (size_t i = 0; i < compound.getNumProperties(); ++i) {
        const AbcA::PropertyHeader& header = compound.getPropertyHeader(i);
        if (header.isCompound())
            list_samplings(ICompoundProperty(compound, header.getName()), prefix + header.getName() + "/", starts);
        else
            starts[prefix + header.getName()] = header.getTimeSampling()->getSampleTime(0);
    }
}

} // namespace

TEST(OSchemas, BoundsAreGivenComputedOrRepeated)
{
    const Box3d volume(V3d(-9, -9, -9), V3d(9, 9, 9)), flat(V3d(-2, -2, 0), V3d(2, 2, 0)), none;
    const Box3d square(V3d(0, 0, 0), V3d(1, 1, 0));
    const struct
    {
        Box3d first, later;
        bool later_has_positions;
        Box3d expected_first, expected_later;
    } cases[] = {
        {none, none, true, square, square},
        {flat, flat, true, flat, square}, // a flat box is taken in the first sample alone
        {flat, flat, false, flat, flat},
        {volume, volume, false, volume, volume},
        {none, volume, true, square, volume},
        {volume, none, false, volume, volume},
        {volume, none, true, volume, square},
    };
    for (const auto& c : cases) {
        ScratchFile file("bounds.abc");
        const Square mesh;
        {
            OArchive archive = new_archive(file);
            OPolyMesh object(archive.getTop(), "m");
            OPolyMeshSchema::Sample first = mesh.sample(), later;
            first.setSelfBounds(c.first);
            later.setSelfBounds(c.later);
            if (c.later_has_positions) later.setPositions(mesh.points);
            object.getSchema().set(first);
            object.getSchema().set(later);
        }
        const IBox3dProperty bounds = IPolyMesh(open_archive(file).getTop(), "m").getSchema().getSelfBoundsProperty();
        ASSERT_EQ(bounds.getNumSamples(), 2u);
        EXPECT_EQ(bounds.getValue(0), c.expected_first) << "case " << &c - cases;
        EXPECT_EQ(bounds.getValue(1), c.expected_later) << "case " << &c - cases;
    }
}

TEST(OSchemas, EveryPropertyFollowsTheSchemaToAnotherTimeSampling)
{
    ScratchFile file("time.abc");
    const Square mesh;
    {
        OArchive archive = new_archive(file);
        const uint32_t before = archive.addTimeSampling(TimeSampling(1.0, 10.0));
        const uint32_t after = archive.addTimeSampling(TimeSampling(1.0, 20.0));
        const std::vector<V2f> uvs(4, V2f(0.5f, 0.25f));
        const std::vector<uint32_t> uv_indices = {0, 1, 2, 3};

        OPolyMesh m(archive.getTop(), "m", before);
        m.getSchema().getChildBoundsProperty().set(Box3d());
        m.getSchema().set(mesh.sample());
        m.getSchema().setTimeSampling(after);
        OPolyMeshSchema::Sample late = mesh.sample();
        late.setUVs(OV2fGeomParam::Sample(V2fArraySample(uvs), UInt32ArraySample(uv_indices), kVertexScope));
        m.getSchema().set(late);
        m.getSchema().setTimeSampling(TimeSamplingPtr()); // nothing changes
        EXPECT_EQ(m.getSchema().getTimeSampling()->getSampleTime(0), 20.0);
        EXPECT_NE(thrown([&] { m.getSchema().setTimeSampling(77); }), "");
        EXPECT_EQ(m.getSchema().getTimeSampling()->getSampleTime(0), 20.0);

        OXform x(archive.getTop(), "x", before);
        x.getSchema().setTimeSampling(TimeSamplingPtr(new TimeSampling(1.0, 20.0))); // before any property exists
        XformSample sample;
        sample.addOp(XformOp(kTranslateOperation), V3d(1, 2, 3));
        x.getSchema().set(sample);
        x.getSchema().getChildBoundsProperty();

        OCamera c(archive.getTop(), "c", before);
        CameraSample camera;
        camera.addOp(FilmBackXformOp(kScaleFilmBackOperation, "fit"));
        c.getSchema().set(camera);
        c.getSchema().setTimeSampling(after);
        OLight l(archive.getTop(), "l", before);
        l.getSchema().setCameraSample(CameraSample());
        l.getSchema().setTimeSampling(after);
        EXPECT_EQ(archive.getNumTimeSamplings(), 3u);
    }
    const IObject top = open_archive(file).getTop();
    const std::set<std::string> in_sampling_0 = {".xform/.ops", ".xform/isNotConstantIdentity", ".geom/.filmBackOps",
                                                 ".geom/.filmBackChannels"};
    for (const char* name : {"m", "x", "c", "l"}) {
        std::map<std::string, double> starts;
        list_samplings(top.getChild(name).getProperties(), "", starts);
        EXPECT_GT(starts.size(), 0u);
        for (const auto& start : starts)
            EXPECT_EQ(start.second, in_sampling_0.count(start.first) ? 0.0 : 20.0) << name << ": " << start.first;
    }
}

TEST(OSchemas, ErrorsNameTheMemberAndFollowThePolicy)
{
    ScratchFile file("errors.abc");
    OArchive archive = new_archive(file);
    OObject top = archive.getTop();
    const Square mesh;

    OPolyMesh strict(top, "strict"), lenient(top, "lenient", quiet);
    const std::string no_sample = "OPolyMeshSchema::setFromPrevious\nERROR: EXCEPTION:\n"
                                  "Can't set from previous sample before any samples have been written";
    EXPECT_EQ(thrown([&] { strict.getSchema().setFromPrevious(); }), no_sample);
    EXPECT_EQ(thrown([&] { lenient.getSchema().setFromPrevious(); }), "");
    EXPECT_EQ(lenient.getSchema().getErrorHandler().getErrorLog(), no_sample + "\n");
    EXPECT_FALSE(lenient.getSchema().valid());
    lenient.getSchema().getErrorHandler().clear();
    EXPECT_TRUE(lenient.getSchema().valid());

    const std::string incomplete = thrown([&] { strict.getSchema().set(OPolyMeshSchema::Sample(mesh.points)); });
    EXPECT_EQ(incomplete,
              "OPolyMeshSchema::set()\nERROR: EXCEPTION:\nSample 0 must have valid data for all mesh components");
    OPolyMeshSchema::Sample only_velocities;
    only_velocities.setVelocities(mesh.points);
    EXPECT_NE(thrown([&] { strict.getSchema().set(only_velocities); }).find("OPolyMeshSchema::selectiveSet()"),
              std::string::npos);
    EXPECT_EQ(strict.getSchema().getNumSamples(), 0u);

    OPointsSchema points = OPoints(top, "points").getSchema();
    EXPECT_NE(thrown([&] { points.set(OPointsSchema::Sample()); }).find("Can't set from previous sample"),
              std::string::npos);
    OCurvesSchema curves = OCurves(top, "curves").getSchema();
    EXPECT_NE(thrown([&] { curves.set(OCurvesSchema::Sample()); }), "");
    ONuPatchSchema patch = ONuPatch(top, "patch").getSchema();
    EXPECT_NE(thrown([&] { patch.set(ONuPatchSchema::Sample()); }), "");
    OFaceSetSchema faces = OFaceSet(strict, "faces").getSchema();
    EXPECT_NE(thrown([&] { faces.set(OFaceSetSchema::Sample()); }), "");
    OLightSchema light = OLight(top, "light").getSchema();
    EXPECT_NE(thrown([&] { light.setFromPrevious(); }), "");
    EXPECT_EQ(light.getNumSamples(), 0u);

    // An invalid schema says so; what only asks is answered quietly.
    OPolyMeshSchema nothing;
    EXPECT_NE(thrown([&] { nothing.set(mesh.sample()); }).find("not valid"), std::string::npos);
    EXPECT_EQ(nothing.getNumSamples(), 0u);
    EXPECT_FALSE(nothing.getTimeSampling());
    EXPECT_FALSE(nothing.valid());
    OPolyMesh twice(top, "strict", quiet);
    EXPECT_FALSE(twice.valid());
    EXPECT_NE(thrown([&] { OPolyMesh(top, "bad sampling", 77u); }), "");
}

TEST(OSchemas, CopiesWriteTheSameSchema)
{
    ScratchFile file("copies.abc");
    const Square mesh;
    {
        OArchive archive = new_archive(file);
        OPolyMesh object(archive.getTop(), "m");
        OPolyMeshSchema first = object.getSchema(), second = first;
        first.set(mesh.sample());
        OPolyMeshSchema::Sample with_velocities = mesh.sample();
        with_velocities.setVelocities(mesh.points);
        second.set(with_velocities);
        first.set(mesh.sample());
        EXPECT_EQ(object.getSchema().getNumSamples(), 3u);
        OFaceSet& created = first.createFaceSet("a");
        EXPECT_TRUE(second.hasFaceSet("a"));
        EXPECT_EQ(second.getFaceSet("a").getPtr(), created.getPtr());
    }
    const IPolyMeshSchema schema = IPolyMesh(open_archive(file).getTop(), "m").getSchema();
    EXPECT_EQ(schema.getVelocitiesProperty().getNumSamples(), 3u);
    EXPECT_EQ(schema.getValue(2).getVelocities()->size(), 4u);
}

TEST(OSchemas, FaceSetsAreListedByNameAndKeepTheirPlace)
{
    ScratchFile file("faces.abc");
    const Square mesh;
    const std::vector<int32_t> faces = {0};
    {
        OArchive archive = new_archive(file);
        OPolyMesh m(archive.getTop(), "m", quiet);
        OSubD s(archive.getTop(), "s");
        m.getSchema().set(mesh.sample());
        OFaceSet& first = m.getSchema().createFaceSet("name 0");
        for (int i = 1; i < 200; ++i)
            m.getSchema().createFaceSet("name " + std::to_string(i));
        first.getSchema().setFaceExclusivity(kFaceSetExclusive); // the reference is still good
        first.getSchema().set(OFaceSetSchema::Sample(Int32ArraySample(faces)));
        first.getSchema().set(OFaceSetSchema::Sample(Int32ArraySample(faces)));
        EXPECT_EQ(m.getSchema().getFaceSet("name 0").getSchema().getFaceExclusivity(), kFaceSetExclusive);

        std::vector<std::string> names = {"kept"};
        m.getSchema().getFaceSetNames(names);
        ASSERT_EQ(names.size(), 201u);
        EXPECT_EQ(names[0], "kept");
        EXPECT_TRUE(std::is_sorted(names.begin() + 1, names.end()));

        EXPECT_FALSE(m.getSchema().createFaceSet("name 0").valid()); // quiet: logged
        EXPECT_NE(m.getSchema().getErrorHandler().getErrorLog().find("faceSet has already been created in polymesh."),
                  std::string::npos);
        EXPECT_FALSE(m.getSchema().getFaceSet("no such set").valid());
        s.getSchema().createFaceSet("x");
        EXPECT_NE(thrown([&] { s.getSchema().createFaceSet("x"); }).find("OSubDSchema::createFaceSet ()"),
                  std::string::npos);
    }
    IPolyMesh m(open_archive(file).getTop(), "m");
    std::vector<std::string> names;
    m.getSchema().getFaceSetNames(names);
    EXPECT_EQ(names.size(), 200u);
    IFaceSetSchema set = m.getSchema().getFaceSet("name 0").getSchema();
    EXPECT_EQ(set.getFaceExclusivity(), kFaceSetExclusive);
    EXPECT_EQ(set.getNumSamples(), 2u); // exclusivity set first adds no sample of its own
}

TEST(OSchemas, BoundsOfFacesLeaveOutWhatTheMeshHasNot)
{
    const std::vector<V3f> points = {V3f(0, 0, 0), V3f(1, 0, 0), V3f(0, 1, 0), V3f(5, 5, 5)};
    const std::vector<int32_t> counts = {3, -1, 3}, indices = {0, 1, 2, 1, 3, 99};
    const std::vector<int32_t> first = {0, 7, -1}, last = {2};
    EXPECT_EQ(computeBoundsFromPositionsByFaces(first, counts, indices, points), Box3d(V3d(0, 0, 0), V3d(1, 1, 0)));
    EXPECT_EQ(computeBoundsFromPositionsByFaces(last, counts, indices, points), Box3d(V3d(1, 0, 0), V3d(5, 5, 5)));
}

TEST(OSchemas, SubdivisionNumbersAndSchemesComeLateWithDefaults)
{
    ScratchFile file("subd.abc");
    const Square mesh;
    {
        OArchive archive = new_archive(file);
        OSubD object(archive.getTop(), "s");
        OSubDSchema::Sample sample(mesh.points, mesh.indices, mesh.counts);
        object.getSchema().set(sample);
        object.getSchema().set(sample);
        sample.setInterpolateBoundary(3);
        sample.setSubdivisionScheme("loop");
        object.getSchema().set(sample);
        object.getSchema().setFromPrevious();
    }
    const ISubDSchema schema = ISubD(open_archive(file).getTop(), "s").getSchema();
    ASSERT_EQ(schema.getInterpolateBoundaryProperty().getNumSamples(), 4u);
    EXPECT_FALSE(schema.getFaceVaryingInterpolateBoundaryProperty().valid());
    const struct
    {
        int number;
        const char* scheme;
    } expected[] = {{0, "catmull-clark"}, {0, "catmull-clark"}, {3, "loop"}, {3, "loop"}};
    for (size_t i = 0; i < 4; ++i) {
        EXPECT_EQ(schema.getValue(i).getInterpolateBoundary(), expected[i].number) << i;
        EXPECT_EQ(schema.getValue(i).getSubdivisionScheme(), expected[i].scheme) << i;
    }
}
