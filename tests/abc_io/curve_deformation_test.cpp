/// Deforming curves: positions, velocities and normals between samples against the stated formulas, bit for bit.
#include <support/abc_archives.h>
#include <support/moving_samples.h>
#include <support/open_handle.h>

#include <abc_deformation_header.h>
#include <gmock/gmock.h>
#include <vo_gmath/gmath_time_sampling.h>

using namespace abc_archives;
using testing::Each;
using testing::ElementsAre;

namespace {

using Vec3 = GMathVec3<float>;

/// One curve through the points of each sample.
void add_moving(AbcG::OObject parent, const char* name, const AbcG::TimeSamplingPtr& sampling, const Samples& samples,
                const Samples& velocities = {})
{
    AbcG::OCurves curves(parent, name, sampling);
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const std::vector<std::int32_t> counts = {int(samples[i].size())};
        AbcG::OCurvesSchema::Sample sample{AbcG::P3fArraySample(samples[i]), AbcG::Int32ArraySample(counts)};
        if (i < velocities.size()) sample.setVelocities(AbcG::V3fArraySample(velocities[i]));
        curves.getSchema().set(sample);
    }
}

class CurveDeformation : public StartedLibrary
{
protected:
    bool load(const char* object, double time, bool ignore_velocities = false)
    {
        return AbcInput::load_curve_deformation(files_, object, time, positions_, velocities_, ignore_velocities);
    }

    const ScratchFile file_{"hair.abc"};
    const AbcFileList files_{CoreString(file_.path())};
    const AbcG::TimeSamplingPtr seconds_ = std::make_shared<AbcG::TimeSampling>(1.0, 0.0);
    CoreArray<Vec3> positions_, velocities_;
};

} // namespace

TEST_F(CurveDeformation, StoredTimesGiveStoredPositionsAndBetweenThemTheFormulaHolds)
{
    const MovingSamples moving(31, 1001);
    write_archive(file_.path(), [&](AbcG::OObject top) { add_moving(top, "hair", moving.sampling(), moving.samples); });
    OpenHandle handle(files_);
    AbcDeformationHeader header;
    ASSERT_TRUE(AbcInput::get_curve_deformation_header(*handle, "/hair", header));
    moving.expect_stated_values([&](double time, CoreArray<Vec3>& positions, CoreArray<Vec3>& velocities) {
        return AbcInput::evaluate_curve_deformation(*handle, time, positions, velocities, false);
    });
    // The file-list form is the same evaluation.
    CoreArray<Vec3> positions, velocities;
    ASSERT_TRUE(AbcInput::evaluate_curve_deformation(*handle, 0.6, positions, velocities, false));
    ASSERT_TRUE(load("/hair", 0.6));
    EXPECT_EQ(positions, positions_);
    EXPECT_EQ(velocities, velocities_);
}

TEST_F(CurveDeformation, StoredVelocitiesAreUsedWhenThereIsOneForEachPoint)
{
    const Samples positions = {{{0, 0, 0}, {1, 0, 0}}, {{2, 0, 0}, {3, 0, 0}}};
    write_archive(file_.path(), [&](AbcG::OObject top) {
        add_moving(top, "stored", seconds_, positions, {{{5, 0, 0}, {6, 0, 0}}, {{7, 0, 0}, {8, 0, 0}}});
        add_moving(top, "few", seconds_, positions, {{{5, 0, 0}}, {{7, 0, 0}}});
        add_moving(top, "many", seconds_, positions, {Samples::value_type(3), Samples::value_type(3)});
    });
    ASSERT_TRUE(load("/stored", 0.5));
    EXPECT_THAT(positions_, ElementsAre(Vec3(1, 0, 0), Vec3(2, 0, 0))) << "blended, not moved along";
    EXPECT_THAT(velocities_, ElementsAre(Vec3(5, 0, 0), Vec3(6, 0, 0))) << "of the earlier sample";
    ASSERT_TRUE(load("/stored", 1.0));
    EXPECT_THAT(velocities_, ElementsAre(Vec3(7, 0, 0), Vec3(8, 0, 0)));
    ASSERT_TRUE(load("/stored", 0.5, true));
    EXPECT_THAT(velocities_, Each(Vec3(2, 0, 0)));
    ASSERT_TRUE(load("/stored", 1.0, true));
    EXPECT_THAT(velocities_, Each(Vec3(0, 0, 0))) << "nothing follows the last sample";
    for (const char* object : {"/few", "/many"}) {
        ASSERT_TRUE(load(object, 0.5));
        EXPECT_THAT(velocities_, Each(Vec3(2, 0, 0))) << object;
    }
}

TEST_F(CurveDeformation, WhenPointsComeAndGoTheFloorSampleIsTakenAlongItsVelocities)
{
    const Samples positions = {{{0, 0, 0}, {1, 0, 0}}, {{9, 9, 9}}};
    write_archive(file_.path(), [&](AbcG::OObject top) {
        add_moving(top, "plain", seconds_, positions);
        add_moving(top, "moving", seconds_, positions, {{{4, 0, 0}, {0, 8, 0}}, {{0, 0, 0}}});
    });
    for (const double time : {0.0, 0.25}) {
        ASSERT_TRUE(load("/plain", time));
        EXPECT_THAT(positions_, ElementsAre(Vec3(0, 0, 0), Vec3(1, 0, 0)));
        EXPECT_THAT(velocities_, ElementsAre(Vec3(0, 0, 0), Vec3(0, 0, 0)));
    }
    ASSERT_TRUE(load("/moving", 0.25));
    EXPECT_THAT(positions_, ElementsAre(Vec3(1, 0, 0), Vec3(1, 2, 0)));
    EXPECT_THAT(velocities_, ElementsAre(Vec3(4, 0, 0), Vec3(0, 8, 0)));
}

TEST_F(CurveDeformation, HeadersSamplingsAndRefusals)
{
    write_archive(file_.path(), [&](AbcG::OObject top) {
        add_moving(top, "still", {}, {{{1, 2, 3}}});
        add_moving(top, "moving", seconds_, {{{1, 2, 3}}, {{4, 5, 6}}, {{7, 8, 9}}});
        add_moving(top, "changing", seconds_, {{{1, 2, 3}}, {{4, 5, 6}, {7, 8, 9}}});
        AbcG::OCurves(top, "empty", seconds_);
        AbcG::OXform(top, "transform");
    });
    OpenHandle handle(files_);
    AbcDeformationHeader header;
    GMathTimeSampling sampling;
    const auto type_of = [&](const char* object) {
        EXPECT_TRUE(AbcInput::get_curve_deformation_header(*handle, object, header)) << object;
        EXPECT_EQ(handle->get_object_type(), AbcInputArchiveHandle::OBJECT_TYPE_CURVES);
        return header.deformation_type;
    };
    EXPECT_EQ(type_of("/still"), AbcDeformationHeader::DEFORMATION_TYPE_CONSTANT);
    EXPECT_EQ(type_of("/changing"), AbcDeformationHeader::DEFORMATION_TYPE_HETEROGENEOUS);
    EXPECT_EQ(type_of("/moving"), AbcDeformationHeader::DEFORMATION_TYPE_HOMOGENEOUS);
    EXPECT_EQ(header.sample_count, 3);
    EXPECT_EQ(header.end_time, 2.0);
    ASSERT_TRUE(AbcInput::get_curve_sampling(*handle, 0.5, 1.5, sampling));
    EXPECT_EQ(sampling.get_sample_count(), 3u);
    ASSERT_TRUE(AbcInput::get_curve_sampling(files_, "/moving", 1.2, 1.3, sampling));
    EXPECT_EQ(sampling.get_start_time(), 1.0);
    EXPECT_EQ(sampling.get_end_time(), 2.0);

    positions_ = {Vec3(3, 3, 3)};
    ASSERT_TRUE(load("/empty", 0.5));
    EXPECT_FALSE(load("/transform", 0.5));
    EXPECT_FALSE(load("/absent", 0.5));
    EXPECT_THAT(positions_, ElementsAre(Vec3(3, 3, 3)));
    EXPECT_FALSE(AbcInput::get_curve_sampling(files_, "/transform", 0.0, 1.0, sampling));
    EXPECT_FALSE(AbcInput::get_curve_deformation_header(*handle, "/transform", header));
    EXPECT_FALSE(handle->is_object_valid());
    EXPECT_FALSE(AbcInput::evaluate_curve_deformation(*handle, 0.5, positions_, velocities_, false));
    EXPECT_FALSE(AbcInput::get_curve_sampling(*handle, 0.0, 1.0, sampling));
}

TEST_F(CurveDeformation, NormalsAreBlendedWhereThereIsOneForEachPoint)
{
    using Normals = std::vector<AbcG::N3f>;
    const std::vector<AbcG::V3f> points(2);
    const std::vector<std::int32_t> counts = {2};
    const auto write = [&](AbcG::OObject top, const char* name, const std::vector<Normals>& samples) {
        AbcG::OCurves curves(top, name, seconds_);
        for (const Normals& normals : samples) {
            AbcG::OCurvesSchema::Sample sample{AbcG::P3fArraySample(points), AbcG::Int32ArraySample(counts)};
            sample.setNormals(AbcG::ON3fGeomParam::Sample(normals, AbcG::kVertexScope));
            curves.getSchema().set(sample);
        }
    };
    const Normals up(2, AbcG::N3f(0, 0, 1)), right(2, AbcG::N3f(1, 0, 0));
    write_archive(file_.path(), [&](AbcG::OObject top) {
        write(top, "turning", {up, right});
        write(top, "changing", {Normals(2, AbcG::N3f(1, 2, 3)), Normals(1)});
        write(top, "per curve", {Normals(1), Normals(1, AbcG::N3f(1, 1, 1))});
        add_moving(top, "plain", seconds_, {points, points});
    });
    CoreArray<GeometryNormalMap> maps;
    ASSERT_TRUE(AbcInput::load_curve_normals(files_, "/turning", 0.25, maps));
    ASSERT_EQ(maps.get_count(), 1u);
    EXPECT_EQ(maps[0].name, CoreString("N"));
    EXPECT_THAT(maps[0].values, Each(Vec3(0.25f, 0, 0.75f)));
    EXPECT_THAT(maps[0].indices, ElementsAre(0u, 1u));
    ASSERT_TRUE(AbcInput::load_curve_normals(files_, "/turning", 0.9995, maps));
    EXPECT_THAT(maps[0].values, Each(Vec3(1, 0, 0)));
    ASSERT_TRUE(AbcInput::load_curve_normals(files_, "/changing", 0.5, maps));
    EXPECT_THAT(maps[0].values, Each(Vec3(1, 2, 3))) << "the earlier sample where the two differ in size";

    OpenHandle handle(files_);
    AbcDeformationHeader header;
    for (const char* object : {"/per curve", "/plain"}) {
        CoreArray<GeometryNormalMap> untouched;
        ASSERT_TRUE(AbcInput::get_curve_deformation_header(*handle, object, header));
        EXPECT_TRUE(AbcInput::evaluate_curve_normals(*handle, 0.5, untouched));
        EXPECT_EQ(untouched.get_count(), 0u) << object;
    }
    handle->delete_object();
    EXPECT_FALSE(AbcInput::evaluate_curve_normals(*handle, 0.5, maps));
}
