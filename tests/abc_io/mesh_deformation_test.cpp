/// Deforming meshes: positions, velocities and normals between samples against the stated formulas, bit for bit.
#include <support/abc_archives.h>
#include <support/bytes_read.h>

#include <abc_deformation_header.h>
#include <abc_input_archive_handle.h>
#include <gmock/gmock.h>
#include <vo_geometry/geometry_normal_map.h>
#include <vo_gmath/gmath_time_sampling.h>

#include <cmath>
#include <memory>
#include <random>

using namespace abc_archives;
using testing::Each;
using testing::ElementsAre;

namespace {

using Vec3 = GMathVec3<float>;
using Points = CoreArray<Vec3>;
using Samples = std::vector<std::vector<AbcG::V3f>>;

constexpr unsigned int seed = 20;

std::vector<AbcG::V3f> random_points(std::mt19937& random, std::size_t count)
{
    std::uniform_real_distribution<float> number(-1000.0f, 1000.0f);
    std::vector<AbcG::V3f> points(count);
    for (AbcG::V3f& point : points)
        point = AbcG::V3f(number(random), number(random), number(random));
    return points;
}

Vec3 host(const AbcG::V3f& v)
{
    return Vec3(v.x, v.y, v.z);
}

/// A mesh with the given samples of positions; faces name the first point only.
AbcG::OPolyMesh add_moving(AbcG::OObject parent, const char* name, const AbcG::TimeSamplingPtr& sampling,
                           const Samples& samples, const Samples& velocities = {})
{
    AbcG::OPolyMesh mesh(parent, name, sampling);
    const std::vector<std::int32_t> indices(3, 0), counts = {3};
    for (std::size_t i = 0; i < samples.size(); ++i) {
        AbcG::OPolyMeshSchema::Sample sample(AbcG::P3fArraySample(samples[i]), indices, counts);
        if (i < velocities.size()) sample.setVelocities(AbcG::V3fArraySample(velocities[i]));
        mesh.getSchema().set(sample);
    }
    return mesh;
}

class MeshDeformation : public StartedLibrary
{
protected:
    void open() { handle_.reset(AbcInput::get_archive(files_)); }
    void TearDown() override
    {
        if (handle_) AbcInput::release_archive(handle_.get());
        handle_.reset();
        StartedLibrary::TearDown();
    }
    bool bind(const char* object)
    {
        if (!handle_) open();
        return AbcInput::get_mesh_deformation_header(*handle_, object, header_);
    }
    void evaluate(double time, bool ignore_velocities = false)
    {
        ASSERT_TRUE(AbcInput::evaluate_mesh_deformation(*handle_, time, positions_, velocities_, ignore_velocities));
    }

    const ScratchFile file_{"moving.abc"};
    const AbcFileList files_{CoreString(file_.path())};
    const AbcG::TimeSamplingPtr seconds_ = std::make_shared<AbcG::TimeSampling>(1.0, 0.0);
    std::unique_ptr<AbcInputArchiveHandle> handle_;
    AbcDeformationHeader header_;
    Points positions_, velocities_;
};

/// The same for few points, and for so many that they are read and blended in pieces.
class MeshDeformationOfSize : public MeshDeformation, public testing::WithParamInterface<std::size_t>
{
};

} // namespace

TEST_P(MeshDeformationOfSize, StoredTimesGiveStoredPositionsAndBetweenThemTheFormulaHolds)
{
    std::mt19937 random(seed);
    const std::vector<double> times = {-0.5, 0.25, 1.0, 4.0};
    Samples samples;
    for (std::size_t i = 0; i < times.size(); ++i)
        samples.push_back(random_points(random, GetParam()));
    write_archive(file_.path(), [&](AbcG::OObject top) {
        add_moving(
            top, "cloth",
            std::make_shared<AbcG::TimeSampling>(AbcG::TimeSamplingType(AbcG::TimeSamplingType::kAcyclic), times),
            samples);
    });
    ASSERT_TRUE(bind("/cloth"));
    EXPECT_EQ(header_.deformation_type, AbcDeformationHeader::DEFORMATION_TYPE_HOMOGENEOUS);
    EXPECT_EQ(header_.sample_count, 4);
    EXPECT_EQ(header_.start_time, -0.5);
    EXPECT_EQ(header_.end_time, 4.0);

    for (std::size_t s = 0; s < times.size(); ++s) {
        for (const double time : {times[s], times[s] + (s + 1 < times.size() ? 0.0009 : 1.0)}) {
            evaluate(time);
            for (std::size_t i = 0; i < samples[s].size(); ++i)
                ASSERT_EQ(positions_[i], host(samples[s][i])) << "time " << time;
        }
        if (s + 1 == times.size()) {
            EXPECT_THAT(velocities_, Each(Vec3(0, 0, 0))); // nothing follows the last sample
            continue;
        }
        const double span = times[s + 1] - times[s];
        for (const double part : {0.5, 0.1, 0.93}) {
            const double time = times[s] + part * span;
            evaluate(time);
            const double weight = (time - times[s]) * (1.0 / span);
            const float a = float(1.0 - weight), b = float(weight), rate = float(1.0 / span);
            for (std::size_t i = 0; i < samples[s].size(); ++i) {
                const AbcG::V3f from = samples[s][i], to = samples[s + 1][i];
                ASSERT_EQ(positions_[i], Vec3(a * from.x + b * to.x, a * from.y + b * to.y, a * from.z + b * to.z));
                ASSERT_EQ(velocities_[i], Vec3((to.x - from.x) * rate, (to.y - from.y) * rate, (to.z - from.z) * rate));
            }
        }
    }
    evaluate(-100.0);
    EXPECT_EQ(positions_[7], host(samples[0][7]));

    // The file-list form is the same evaluation.
    Points positions, velocities;
    ASSERT_TRUE(AbcInput::load_mesh_deformation(files_, "/cloth", 0.6, positions, velocities, false));
    evaluate(0.6);
    EXPECT_EQ(positions, positions_);
    EXPECT_EQ(velocities, velocities_);
}

INSTANTIATE_TEST_SUITE_P(FewAndMany, MeshDeformationOfSize, testing::Values(1001u, 200003u));

TEST_F(MeshDeformation, SamplesThatShareATimeGiveFiniteValues)
{
    write_archive(file_.path(), [&](AbcG::OObject top) {
        const std::vector<double> cycle = {0.0, 1.0}; // as long as the cycle: samples at 0, 1, 1 and 2 s
        add_moving(top, "loop", std::make_shared<AbcG::TimeSampling>(AbcG::TimeSamplingType(2, 1.0), cycle),
                   {{{0, 0, 0}}, {{1, 0, 0}}, {{5, 0, 0}}, {{6, 0, 0}}});
    });
    ASSERT_TRUE(bind("/loop"));
    EXPECT_EQ(header_.end_time, 2.0);
    for (const double time : {0.0, 0.5, 0.9995, 1.0, 1.0005, 1.5, 2.0}) {
        evaluate(time);
        ASSERT_EQ(velocities_.get_count(), 1u);
        EXPECT_TRUE(std::isfinite(positions_[0].x)) << "time " << time;
        EXPECT_TRUE(std::isfinite(velocities_[0].x) && std::isfinite(velocities_[0].y)) << "time " << time;
    }
    evaluate(0.9995);
    EXPECT_EQ(positions_[0], Vec3(1, 0, 0));
    EXPECT_EQ(velocities_[0], Vec3(0, 0, 0)) << "nothing moves in no time";
}

TEST_F(MeshDeformation, ManyPointsWithStoredVelocitiesAreBlendedAndKeepThem)
{
    std::mt19937 random(seed);
    constexpr std::size_t count = 200'003;
    const Samples samples = {random_points(random, count), random_points(random, count)};
    const std::vector<AbcG::V3f> velocities = random_points(random, count);
    write_archive(file_.path(), [&](AbcG::OObject top) {
        add_moving(top, "stored", seconds_, samples, {velocities, velocities});
    });
    ASSERT_TRUE(bind("/stored"));
    evaluate(0.25);
    ASSERT_EQ(velocities_.get_count(), count);
    for (std::size_t i = 0; i < count; ++i) {
        const AbcG::V3f from = samples[0][i], to = samples[1][i];
        ASSERT_EQ(positions_[i],
                  Vec3(0.75f * from.x + 0.25f * to.x, 0.75f * from.y + 0.25f * to.y, 0.75f * from.z + 0.25f * to.z));
        ASSERT_EQ(velocities_[i], host(velocities[i]));
    }
}

TEST_F(MeshDeformation, StoredVelocitiesAreTheFloorSamplesAndCanBeIgnored)
{
    const Samples positions = {{{0, 0, 0}, {1, 0, 0}}, {{2, 0, 0}, {3, 0, 0}}};
    write_archive(file_.path(), [&](AbcG::OObject top) {
        add_moving(top, "stored", seconds_, positions, {{{5, 0, 0}, {6, 0, 0}}, {{7, 0, 0}, {8, 0, 0}}});
        add_moving(top, "short", seconds_, positions, {{{5, 0, 0}}, {{7, 0, 0}}});
    });
    ASSERT_TRUE(bind("/stored"));
    evaluate(0.5);
    EXPECT_THAT(positions_, ElementsAre(Vec3(1, 0, 0), Vec3(2, 0, 0)));
    EXPECT_THAT(velocities_, ElementsAre(Vec3(5, 0, 0), Vec3(6, 0, 0)));
    evaluate(1.0);
    EXPECT_THAT(velocities_, ElementsAre(Vec3(7, 0, 0), Vec3(8, 0, 0)));
    evaluate(0.5, true);
    EXPECT_THAT(velocities_, Each(Vec3(2, 0, 0)));
    ASSERT_TRUE(bind("/short"));
    evaluate(0.5);
    EXPECT_THAT(velocities_, Each(Vec3(2, 0, 0))) << "fewer velocities than positions are as good as none";
}

TEST_F(MeshDeformation, WhenPointsComeAndGoTheFloorSampleIsTakenAlongItsVelocities)
{
    const Samples positions = {{{0, 0, 0}, {1, 0, 0}}, {{9, 9, 9}}};
    write_archive(file_.path(), [&](AbcG::OObject top) {
        add_moving(top, "plain", seconds_, positions);
        add_moving(top, "moving", seconds_, positions, {{{4, 0, 0}, {0, 8, 0}}, {{0, 0, 0}}});
    });
    ASSERT_TRUE(bind("/plain"));
    evaluate(0.25);
    EXPECT_THAT(positions_, ElementsAre(Vec3(0, 0, 0), Vec3(1, 0, 0)));
    EXPECT_THAT(velocities_, Each(Vec3(0, 0, 0)));
    evaluate(0.0);
    EXPECT_THAT(velocities_, Each(Vec3(0, 0, 0))) << "no difference to a sample with other points";
    ASSERT_TRUE(bind("/moving"));
    evaluate(0.25);
    EXPECT_THAT(positions_, ElementsAre(Vec3(1, 0, 0), Vec3(1, 2, 0)));
    EXPECT_THAT(velocities_, ElementsAre(Vec3(4, 0, 0), Vec3(0, 8, 0)));
}

TEST_F(MeshDeformation, HeadersAndSamplingsOfEveryKindOfObject)
{
    write_archive(file_.path(), [&](AbcG::OObject top) {
        add_square(top, "static", {1});
        AbcG::OPolyMesh(top, "empty", seconds_);
        AbcG::OXform(top, "transform");
        AbcG::OPolyMesh changing(top, "changing", seconds_);
        const std::vector<AbcG::V3f> points(4);
        const std::vector<std::int32_t> indices = {0, 1, 2, 3}, quad = {4}, two = {2, 2};
        changing.getSchema().set(AbcG::OPolyMeshSchema::Sample(AbcG::P3fArraySample(points), indices, quad));
        changing.getSchema().set(AbcG::OPolyMeshSchema::Sample(AbcG::P3fArraySample(points), indices, two));
    });
    GMathTimeSampling sampling;
    ASSERT_TRUE(bind("/static"));
    EXPECT_EQ(header_.deformation_type, AbcDeformationHeader::DEFORMATION_TYPE_CONSTANT);
    EXPECT_EQ(header_.sample_count, 1);
    EXPECT_EQ(header_.start_time, header_.end_time);
    ASSERT_TRUE(bind("/changing"));
    EXPECT_EQ(header_.deformation_type, AbcDeformationHeader::DEFORMATION_TYPE_HETEROGENEOUS);
    ASSERT_TRUE(AbcInput::get_mesh_sampling(*handle_, -1.0, 9.0, sampling));
    EXPECT_EQ(sampling.get_sample_count(), 2u);
    EXPECT_EQ(sampling.get_end_time(), 1.0);

    ASSERT_TRUE(bind("/empty"));
    EXPECT_EQ(header_.sample_count, 0);
    EXPECT_EQ(header_.end_time, 0.0);
    ASSERT_TRUE(AbcInput::get_mesh_sampling(files_, "/empty", 0.0, 1.0, sampling));
    EXPECT_EQ(sampling.get_sample_count(), 1u);
    EXPECT_EQ(sampling.get_start_time(), 0.0);
    positions_ = {Vec3(3, 3, 3)};
    evaluate(0.5);
    EXPECT_THAT(positions_, ElementsAre(Vec3(3, 3, 3))) << "untouched without samples";

    EXPECT_FALSE(bind("/transform"));
    EXPECT_FALSE(handle_->is_object_valid());
    EXPECT_FALSE(AbcInput::evaluate_mesh_deformation(*handle_, 0.0, positions_, velocities_, false));
    EXPECT_FALSE(AbcInput::get_mesh_sampling(*handle_, 0.0, 1.0, sampling));
    EXPECT_STREQ(AbcDeformationHeader::get_deformation_type_name(AbcDeformationHeader::DEFORMATION_TYPE_COUNT),
                 "DEFORMATION_TYPE_COUNT");
    EXPECT_STREQ(AbcDeformationHeader::get_deformation_type_name(AbcDeformationHeader::DeformationType(7)),
                 "DEFORMATION_TYPE_UNKNOWN");
}

TEST_F(MeshDeformation, OnlyPositionsAreReadAndUnchangingOnesOnce)
{
    constexpr std::size_t count = 200'000; // so many that moving positions are read in pieces
    std::mt19937 random(seed);
    const std::vector<AbcG::V3f> first = random_points(random, count), second = random_points(random, count);
    const std::vector<std::int32_t> indices(count * 3, 1), counts(count, 3);
    write_archive(file_.path(), [&](AbcG::OObject top) {
        AbcG::OPolyMesh moving(top, "moving", seconds_), still(top, "still", seconds_), kept(top, "kept", seconds_);
        moving.getSchema().set(AbcG::OPolyMeshSchema::Sample(AbcG::P3fArraySample(first), indices, counts));
        moving.getSchema().set(AbcG::OPolyMeshSchema::Sample(AbcG::P3fArraySample(second)));
        still.getSchema().set(AbcG::OPolyMeshSchema::Sample(AbcG::P3fArraySample(second), indices, counts));
        for (int i = 0; i < 3; ++i) // several samples, all the same
            kept.getSchema().set(AbcG::OPolyMeshSchema::Sample(AbcG::P3fArraySample(second), indices, counts));
    });
    constexpr std::size_t position_bytes = count * 12, overhead = 256 * 1024;
    ASSERT_TRUE(bind("/moving"));
    std::size_t before = bytes_read();
    evaluate(0.5);
    EXPECT_LE(bytes_read() - before, 2 * position_bytes + overhead);
    EXPECT_GE(bytes_read() - before, 2 * position_bytes) << "the counter counts";

    for (const char* const object : {"/still", "/kept"}) {
        ASSERT_TRUE(bind(object));
        evaluate(0.5);
        before = bytes_read();
        const std::size_t counting_itself = bytes_read() - before;
        before = bytes_read();
        evaluate(0.25);
        EXPECT_LE(bytes_read() - before, 2 * counting_itself + 64) << object << " evaluated again reads nothing";
        EXPECT_EQ(positions_[count - 1], host(second[count - 1]));
    }
}

TEST_F(MeshDeformation, NormalsAreBlendedNotRenormalisedAndExchangedWhereTheyCannotBe)
{
    using Normals = std::vector<AbcG::N3f>;
    const std::vector<std::uint32_t> corners = {0, 1, 2, 3};
    const auto write = [&](AbcG::OObject top, const char* name, const Normals& first, const Normals& second,
                           const std::vector<std::uint32_t>& later_indices, AbcG::GeometryScope scope) {
        AbcG::OPolyMesh mesh(top, name, seconds_);
        const std::vector<AbcG::V3f> points = square(1);
        const std::vector<std::int32_t> indices = {0, 1, 2, 3}, counts = {4};
        AbcG::OPolyMeshSchema::Sample sample(AbcG::P3fArraySample(points), indices, counts);
        sample.setNormals(AbcG::ON3fGeomParam::Sample(AbcG::N3fArraySample(first), corners, scope));
        mesh.getSchema().set(sample);
        sample.setNormals(AbcG::ON3fGeomParam::Sample(AbcG::N3fArraySample(second), later_indices, scope));
        mesh.getSchema().set(sample);
    };
    write_archive(file_.path(), [&](AbcG::OObject top) {
        const Normals up(4, AbcG::N3f(0, 0, 1)), right(4, AbcG::N3f(1, 0, 0)), one = {{1, 2, 3}};
        write(top, "turning", up, right, corners, AbcG::kFacevaryingScope);
        write(top, "changing", Normals(4, AbcG::N3f(1, 2, 3)), one, {0, 0, 0, 0}, AbcG::kFacevaryingScope);
        add_square(top, "plain", {1, 2}, seconds_);
        AbcG::OSubD(top, "subd");
    });
    CoreArray<GeometryNormalMap> maps;
    ASSERT_TRUE(bind("/turning"));
    ASSERT_TRUE(AbcInput::evaluate_mesh_normals(*handle_, 0.5, maps));
    ASSERT_EQ(maps.get_count(), 1u);
    EXPECT_THAT(maps[0].values, Each(Vec3(0.5f, 0, 0.5f)));
    EXPECT_THAT(maps[0].indices, ElementsAre(3u, 2u, 1u, 0u));
    ASSERT_TRUE(AbcInput::evaluate_mesh_normals(*handle_, 0.0005, maps));
    EXPECT_THAT(maps[0].values, Each(Vec3(0, 0, 1))) << "near a sample its normals are taken as they are";
    ASSERT_TRUE(AbcInput::load_mesh_normals(files_, "/changing", 0.5, maps));
    EXPECT_THAT(maps[0].values, Each(Vec3(1, 3, 2))) << "y and z are exchanged where samples differ in size";
    ASSERT_TRUE(AbcInput::load_mesh_normals(files_, "/changing", 1.0, maps));
    EXPECT_THAT(maps[0].values, ElementsAre(Vec3(1, 2, 3)));

    CoreArray<GeometryNormalMap> untouched;
    EXPECT_TRUE(AbcInput::load_mesh_normals(files_, "/plain", 0.5, untouched));
    EXPECT_EQ(untouched.get_count(), 0u);
    EXPECT_FALSE(AbcInput::load_mesh_normals(files_, "/subd", 0.5, untouched));
    handle_->delete_object();
    EXPECT_FALSE(AbcInput::evaluate_mesh_normals(*handle_, 0.5, untouched));
}
