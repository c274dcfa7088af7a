/// Points: positions and velocities between samples, with and without an identity to follow.
#include <support/abc_archives.h>
#include <support/bytes_read.h>
#include <support/moving_samples.h>
#include <support/open_handle.h>

#include <abc_deformation_header.h>
#include <gmock/gmock.h>
#include <vo_gmath/gmath_time_sampling.h>

#include <numeric>

using namespace abc_archives;
using testing::ElementsAre;

namespace {

using Vec3 = GMathVec3<float>;
using Ids = std::vector<std::uint64_t>;

/// Points with a sample of ids for each sample of positions; one that is not given repeats the last.
AbcG::OPoints add_points(AbcG::OObject parent, const char* name, const AbcG::TimeSamplingPtr& sampling,
                         const Samples& samples, const std::vector<Ids>& ids, const Samples& velocities = {})
{
    AbcG::OPoints points(parent, name, sampling);
    for (std::size_t i = 0; i < samples.size(); ++i) {
        AbcG::OPointsSchema::Sample sample{AbcG::P3fArraySample(samples[i]),
                                           AbcG::UInt64ArraySample(ids[std::min(i, ids.size() - 1)])};
        if (i < velocities.size()) sample.setVelocities(AbcG::V3fArraySample(velocities[i]));
        points.getSchema().set(sample);
    }
    return points;
}

class PointReader : public StartedLibrary
{
protected:
    bool load(const char* object, double time, bool ignore_velocities = false)
    {
        OpenHandle handle(files_);
        return AbcInput::load_points(*handle, object, time, positions_, velocities_, ignore_velocities, names_,
                                     nullptr);
    }

    /// "/dust", with ids that never change.
    void write_dust(const MovingSamples& moving)
    {
        Ids ids(moving.samples[0].size());
        std::iota(ids.begin(), ids.end(), 5u);
        write_archive(file_.path(),
                      [&](AbcG::OObject top) { add_points(top, "dust", moving.sampling(), moving.samples, {ids}); });
    }

    const ScratchFile file_{"points.abc"};
    const AbcFileList files_{CoreString(file_.path())};
    const AbcG::TimeSamplingPtr seconds_ = std::make_shared<AbcG::TimeSampling>(1.0, 1.0); // 1.0, 2.0 ...
    CoreArray<Vec3> positions_, velocities_;
    CoreVector<CoreString> names_;
};

const Samples moved_by_4 = {{{0, 0, 0}}, {{4, 0, 0}}};

} // namespace

TEST_F(PointReader, StoredTimesGiveStoredPositionsAndBetweenThemTheFormulaHolds)
{
    const MovingSamples moving(32, 1001);
    write_dust(moving);
    OpenHandle handle(files_);
    AbcDeformationHeader header;
    ASSERT_TRUE(AbcInput::get_point_deformation_header(*handle, "/dust", header));
    moving.expect_stated_values([&](double time, CoreArray<Vec3>& positions, CoreArray<Vec3>& velocities) {
        return AbcInput::evaluate_point_deformation(*handle, time, positions, velocities, false);
    });
    moving.expect_stated_values([&](double time, CoreArray<Vec3>& positions, CoreArray<Vec3>& velocities) {
        return AbcInput::load_points(*handle, "/dust", time, positions, velocities, false, names_, nullptr);
    });
}

TEST_F(PointReader, ManyPointsAreBlendedByTheSameFormulaAndTheirIdsNotRead)
{
    constexpr std::size_t count = 180'000; // so many that samples are read in pieces
    const MovingSamples moving(33, count);
    write_dust(moving);
    OpenHandle handle(files_);
    AbcDeformationHeader header;
    ASSERT_TRUE(AbcInput::get_point_deformation_header(*handle, "/dust", header));
    const std::size_t before = bytes_read();
    ASSERT_TRUE(AbcInput::evaluate_point_deformation(*handle, 0.6, positions_, velocities_, false));
    const std::size_t read = bytes_read() - before;
    EXPECT_GE(read, 2 * count * 12) << "the counter counts";
    EXPECT_LE(read, 2 * count * 12 + 256 * 1024);
    moving.expect_stated_values([&](double time, CoreArray<Vec3>& positions, CoreArray<Vec3>& velocities) {
        return AbcInput::evaluate_point_deformation(*handle, time, positions, velocities, false);
    });
}

TEST_F(PointReader, PointsWithoutConstantIdsAreMovedAlongTheirVelocitiesNotBlended)
{
    const Samples velocity_2 = {{{2, 0, 0}}, {{9, 0, 0}}}, two_velocities = {{{2, 0, 0}, {2, 0, 0}}, {{9, 0, 0}}};
    write_archive(file_.path(), [&](AbcG::OObject top) {
        add_points(top, "constant", seconds_, moved_by_4, {{1}});
        add_points(top, "constant stored", seconds_, moved_by_4, {{1}}, velocity_2);
        add_points(top, "changing", seconds_, moved_by_4, {{1}, {2}});
        add_points(top, "changing stored", seconds_, moved_by_4, {{1}, {2}}, velocity_2);
        add_points(top, "changing misfit", seconds_, moved_by_4, {{1}, {2}}, two_velocities);
    });
    struct Case
    {
        const char* object;
        double time;
        bool ignore_velocities;
        float x, velocity;
    };
    for (const Case& c : std::vector<Case>{{"/constant", 1.25, false, 1.0f, 4.0f},
                                           {"/constant", 1.0, false, 0.0f, 4.0f},
                                           {"/constant", 2.0, false, 4.0f, 0.0f},
                                           {"/constant stored", 1.25, false, 1.0f, 2.0f},
                                           {"/constant stored", 1.25, true, 1.0f, 4.0f},
                                           {"/constant stored", 2.0, false, 4.0f, 9.0f},
                                           {"/constant stored", 1.0, true, 0.0f, 4.0f},
                                           {"/constant stored", 2.0, true, 4.0f, 0.0f},
                                           {"/changing", 1.25, false, 0.0f, 0.0f},
                                           {"/changing", 1.0, false, 0.0f, 0.0f},
                                           {"/changing stored", 1.25, false, 0.5f, 2.0f},
                                           {"/changing stored", 1.25, true, 0.0f, 0.0f},
                                           {"/changing stored", 0.0, false, 0.0f, 2.0f}, // before all: not moved
                                           {"/changing misfit", 1.25, false, 0.0f, 0.0f}}) {
        ASSERT_TRUE(load(c.object, c.time, c.ignore_velocities));
        EXPECT_THAT(positions_, ElementsAre(Vec3(c.x, 0, 0))) << c.object << " at " << c.time;
        EXPECT_THAT(velocities_, ElementsAre(Vec3(c.velocity, 0, 0))) << c.object << " at " << c.time;
    }
    OpenHandle handle(files_);
    AbcDeformationHeader header;
    ASSERT_TRUE(AbcInput::get_point_deformation_header(*handle, "/constant stored", header));
    ASSERT_TRUE(AbcInput::evaluate_point_deformation(*handle, 1.25, positions_, velocities_, true));
    EXPECT_THAT(velocities_, ElementsAre(Vec3(2, 0, 0))) << "this entry never ignores what is stored";
}

TEST_F(PointReader, SamplesOfDifferentSizeAreNeverMixedWhateverTheIdsSay)
{
    const std::vector<AbcG::V3f> one = {{9, 9, 9}}, two = {{0, 0, 0}, {1, 0, 0}};
    const Samples velocities = {{{4, 0, 0}, {0, 4, 0}}, {{7, 7, 7}}};
    write_archive(file_.path(), [&](AbcG::OObject top) {
        add_points(top, "fewer", seconds_, {two, one}, {{1, 2}});
        add_points(top, "more", seconds_, {one, two}, {{1, 2}});
        add_points(top, "fewer stored", seconds_, {two, one}, {{1, 2}}, velocities);
    });
    for (const double time : {1.0, 1.25}) {
        ASSERT_TRUE(load("/fewer", time));
        EXPECT_THAT(positions_, ElementsAre(Vec3(0, 0, 0), Vec3(1, 0, 0)));
        EXPECT_THAT(velocities_, ElementsAre(Vec3(0, 0, 0), Vec3(0, 0, 0)));
        ASSERT_TRUE(load("/more", time));
        EXPECT_THAT(positions_, ElementsAre(Vec3(9, 9, 9)));
        EXPECT_THAT(velocities_, ElementsAre(Vec3(0, 0, 0)));
    }
    ASSERT_TRUE(load("/fewer stored", 1.25));
    EXPECT_THAT(positions_, ElementsAre(Vec3(1, 0, 0), Vec3(1, 1, 0)));
}

TEST_F(PointReader, IdsMayHaveMoreSamplesThanPositionsAndTheTimesOfBoth)
{
    using namespace AbcG;
    const std::vector<V3f> still = {{1, 2, 3}};
    const auto write = [&](OObject top, const char* name, const TimeSamplingPtr& sampling) {
        MetaData object_data, schema_data;
        object_data.set("schema", IPoints::getSchemaTitle());
        object_data.set("schemaObjTitle", IPoints::getSchemaObjTitle());
        schema_data.set("schema", IPoints::getSchemaTitle());
        OObject object(top, name, object_data);
        OCompoundProperty schema(object.getProperties(), ".geom", schema_data);
        OBox3dProperty(schema, ".selfBnds", sampling).set(Box3d());
        OP3fArrayProperty(schema, "P", sampling).set(still);
        OUInt64ArrayProperty ids(schema, ".pointIds", seconds_);
        for (const std::uint64_t id : {1u, 2u, 3u})
            ids.set(Ids{id});
    };
    const std::vector<double> two_times = {0.0, 0.5};
    write_archive(file_.path(), [&](OObject top) {
        write(top, "uniform", seconds_);
        write(top, "acyclic", std::make_shared<TimeSampling>(TimeSamplingType(TimeSamplingType::kAcyclic), two_times));
    });
    OpenHandle handle(files_);
    AbcDeformationHeader header;
    GMathTimeSampling sampling;
    const auto expect = [&](const char* object, int count, double end) {
        ASSERT_TRUE(AbcInput::get_point_deformation_header(*handle, object, header));
        EXPECT_EQ(header.deformation_type, AbcDeformationHeader::DEFORMATION_TYPE_HETEROGENEOUS);
        EXPECT_EQ(header.sample_count, count) << object;
        EXPECT_EQ(header.end_time, end) << object;
        ASSERT_TRUE(AbcInput::get_point_sampling(*handle, -10.0, 10.0, sampling));
        EXPECT_EQ(sampling.get_sample_count(), unsigned(count));
        EXPECT_EQ(sampling.get_end_time(), end);
        ASSERT_TRUE(AbcInput::evaluate_point_deformation(*handle, 0.3, positions_, velocities_, false));
        EXPECT_THAT(positions_, ElementsAre(Vec3(1, 2, 3)));
        EXPECT_THAT(velocities_, ElementsAre(Vec3(0, 0, 0)));
    };
    expect("/uniform", 3, 3.0);
    expect("/acyclic", 2, 0.5); // there is no time for a third
}

TEST_F(PointReader, HeadersRefusalsAndWhatTheyLeaveOnTheHandle)
{
    write_archive(file_.path(), [&](AbcG::OObject top) {
        AbcG::OPoints points = add_points(top, "one", seconds_, {{{1, 2, 3}}}, {{1}});
        AbcG::OFloatProperty(points.getSchema().getUserProperties(), "mass").set(1.0f);
        add_points(top, "two", seconds_, moved_by_4, {{1}});
        AbcG::OPoints(top, "empty", seconds_);
        add_square(top, "mesh");
    });
    OpenHandle handle(files_);
    AbcDeformationHeader header;
    GMathTimeSampling sampling;
    ASSERT_TRUE(AbcInput::get_point_deformation_header(*handle, "/two", header));
    EXPECT_EQ(header.deformation_type, AbcDeformationHeader::DEFORMATION_TYPE_HETEROGENEOUS) << "never homogeneous";
    EXPECT_EQ(header.end_time, 2.0);
    ASSERT_TRUE(AbcInput::get_point_deformation_header(*handle, "/one", header));
    EXPECT_EQ(header.deformation_type, AbcDeformationHeader::DEFORMATION_TYPE_CONSTANT);

    positions_ = {Vec3(3, 3, 3)};
    for (const char* object : {"/mesh", "/absent"}) {
        EXPECT_FALSE(AbcInput::load_points(*handle, object, 1.0, positions_, velocities_, false, names_, nullptr));
        EXPECT_TRUE(handle->is_object_valid()) << "a load that fails leaves the handle's object";
    }
    EXPECT_THAT(positions_, ElementsAre(Vec3(3, 3, 3)));
    ASSERT_TRUE(load("/empty", 1.0));
    EXPECT_THAT(positions_, ElementsAre(Vec3(3, 3, 3)));
    ASSERT_TRUE(AbcInput::load_points(*handle, "/one", 7.0, positions_, velocities_, false, names_, nullptr));
    EXPECT_EQ(handle->get_object_type(), AbcInputArchiveHandle::OBJECT_TYPE_POINTS);
    EXPECT_THAT(positions_, ElementsAre(Vec3(1, 2, 3)));
    EXPECT_THAT(to_strings(names_), ElementsAre("mass"));

    EXPECT_FALSE(AbcInput::get_point_deformation_header(*handle, "/mesh", header));
    EXPECT_FALSE(handle->is_object_valid());
    EXPECT_FALSE(AbcInput::evaluate_point_deformation(*handle, 1.0, positions_, velocities_, false));
    EXPECT_FALSE(AbcInput::get_point_sampling(*handle, 0.0, 1.0, sampling));
}
