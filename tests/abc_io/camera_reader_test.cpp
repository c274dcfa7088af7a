/// Cameras: units, the blend between samples, fit modes, samplings, and files that are not what they say.
#include <support/abc_archives.h>
#include <support/open_handle.h>

#include <abc_animation_header.h>
#include <abc_camera_header.h>
#include <vo_gmath/gmath_time_sampling.h>

#include <cmath>
#include <random>

using namespace abc_archives;

namespace {

using Values = std::vector<double>; // in the order of the header's fields, stored units

const std::vector<double> sample_times = {1.0, 2.0, 7.0};

AbcG::CameraSample make_sample(const Values& v)
{
    AbcG::CameraSample sample;
    sample.setVerticalAperture(v[0]);
    sample.setHorizontalAperture(v[1]);
    sample.setFocalLength(v[2]);
    sample.setHorizontalFilmOffset(v[3]);
    sample.setVerticalFilmOffset(v[4]);
    sample.setFocusDistance(v[5]);
    sample.setFStop(v[6]);
    sample.setLensSqueezeRatio(v[7]);
    sample.setOverScanLeft(v[8]);
    sample.setOverScanRight(v[9]);
    sample.setOverScanTop(v[10]);
    sample.setOverScanBottom(v[11]);
    return sample;
}

Values fields(const AbcCameraHeader& h)
{
    return {h.vertical_aperture,    h.horizontal_aperture, h.focal_length, h.horizontal_film_offset,
            h.vertical_film_offset, h.focus_distance,      h.f_stop,       h.lens_squeeze_ratio,
            h.overscan_left,        h.overscan_right,      h.overscan_top, h.overscan_bottom};
}

Values in_host_units(Values values)
{
    const double factors[] = {0.01, 0.01, 0.001, 0.01, 0.01};
    for (std::size_t i = 0; i < 5; ++i)
        values[i] *= factors[i];
    return values;
}

Values random_values(std::mt19937& random)
{
    Values values(12);
    for (double& value : values)
        value = std::uniform_real_distribution<double>(0.1, 100.0)(random);
    return values;
}

void add_camera(AbcG::OObject parent, const char* name, const std::vector<AbcG::CameraSample>& samples)
{
    const AbcG::TimeSamplingType acyclic(AbcG::TimeSamplingType::kAcyclic);
    AbcG::OCamera camera(parent, name, std::make_shared<AbcG::TimeSampling>(acyclic, sample_times));
    for (const AbcG::CameraSample& sample : samples)
        camera.getSchema().set(sample);
}

class CameraReader : public StartedLibrary
{
protected:
    AbcCameraHeader evaluate(const OpenHandle& handle, double time)
    {
        AbcCameraHeader camera;
        EXPECT_TRUE(AbcInput::evaluate_camera_attributes(*handle, time, camera));
        return camera;
    }

    const ScratchFile file_{"cameras.abc"};
    const AbcFileList files_{CoreString(file_.path())};
    AbcAnimationHeader animation_;
};

} // namespace

TEST_F(CameraReader, SamplesAreBlendedByTheDistanceInSeconds)
{
    constexpr unsigned int seed = 540;
    std::mt19937 random(seed);
    const std::vector<Values> values = {random_values(random), random_values(random), random_values(random)};
    write_archive(file_.path(), [&](AbcG::OObject top) {
        add_camera(top, "camera", {make_sample(values[0]), make_sample(values[1]), make_sample(values[2])});
    });
    const OpenHandle handle(files_);
    ASSERT_TRUE(AbcInput::get_camera_animation_header(*handle, "/camera", animation_));
    const auto blended = [&](std::size_t ceil, double distance, std::size_t near) {
        Values result(12);
        for (std::size_t i = 0; i < 12; ++i)
            result[i] = (1.0 - distance) * values[ceil][i] + distance * values[near][i];
        return in_host_units(result);
    };
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_EQ(fields(evaluate(handle, sample_times[i])), in_host_units(values[i]));
        EXPECT_EQ(fields(evaluate(handle, sample_times[i] + 0.0009)), in_host_units(values[i]));
    }
    EXPECT_EQ(fields(evaluate(handle, 1.25)), blended(1, 0.25, 0));
    EXPECT_EQ(fields(evaluate(handle, 4.25)), blended(2, 2.25, 1)) << "weights beyond 1 are intended";
    EXPECT_EQ(fields(evaluate(handle, 1.5)), blended(1, 0.5, 0)) << "of two equally near, the earlier";
    // Before the nearest sample, and beyond the ends.
    EXPECT_EQ(fields(evaluate(handle, 1.75)), in_host_units(values[1]));
    EXPECT_EQ(fields(evaluate(handle, 5.0)), in_host_units(values[2]));
    for (const double far : {0.0, -1e300, -HUGE_VAL})
        EXPECT_EQ(fields(evaluate(handle, far)), in_host_units(values[0]));
    for (const double far : {9.0, 1e300, HUGE_VAL})
        EXPECT_EQ(fields(evaluate(handle, far)), in_host_units(values[2]));
    evaluate(handle, std::nan(""));
}

TEST_F(CameraReader, TheFirstFilmFitHintOfTheNearestSampleDecides)
{
    const std::pair<std::vector<const char*>, AbcCameraHeader::FitMode> cases[] = {
        {{}, AbcCameraHeader::FIT_MODE_UNDEFINED},
        {{"filmFitHorz"}, AbcCameraHeader::FIT_MODE_HORIZONTAL},
        {{"filmFitVert"}, AbcCameraHeader::FIT_MODE_VERTICAL},
        {{"filmFitFill"}, AbcCameraHeader::FIT_MODE_FILL},
        {{"filmFitOver"}, AbcCameraHeader::FIT_MODE_FILL},
        {{"filmFitOffs", "filmFit", "filmFitHorzontal", "FilmFitVert"}, AbcCameraHeader::FIT_MODE_UNDEFINED},
        {{"", "preScale", "filmFitOffs", "filmFitVert", "filmFitHorz"}, AbcCameraHeader::FIT_MODE_VERTICAL},
    };
    write_archive(file_.path(), [&](AbcG::OObject top) {
        for (const auto& [hints, mode] : cases) {
            AbcG::CameraSample sample;
            for (const char* hint : hints)
                sample.addOp(AbcG::FilmBackXformOp(AbcG::kScaleFilmBackOperation, hint));
            add_camera(top, ("camera" + std::to_string(&hints - &cases[0].first)).c_str(), {sample, sample});
        }
    });
    const OpenHandle handle(files_);
    for (const auto& [hints, mode] : cases) {
        const std::string name = "/camera" + std::to_string(&hints - &cases[0].first);
        ASSERT_TRUE(AbcInput::get_camera_animation_header(*handle, CoreString(name), animation_)) << name;
        for (const double time : {1.0, 1.4})
            EXPECT_STREQ(AbcCameraHeader::get_fit_mode_name(evaluate(handle, time).fit_mode),
                         AbcCameraHeader::get_fit_mode_name(mode))
                << name;
    }
    EXPECT_STREQ(AbcCameraHeader::get_fit_mode_name(AbcCameraHeader::FIT_MODE_REMAP), "FIT_MODE_REMAP");
    EXPECT_STREQ(AbcCameraHeader::get_fit_mode_name(static_cast<AbcCameraHeader::FitMode>(7)), "FIT_MODE_UNKNOWN");
}

TEST_F(CameraReader, SamplingsCoverTheInterval)
{
    write_archive(file_.path(), [](AbcG::OObject top) {
        add_camera(top, "camera", std::vector<AbcG::CameraSample>(3));
        AbcG::OXform(top, "xform");
    });
    GMathTimeSampling sampling, expected;
    expected.init(CoreArray<double>{1.0, 2.0, 7.0});
    ASSERT_TRUE(AbcInput::get_camera_sampling(files_, "/camera", 1.5, 6.0, sampling));
    EXPECT_EQ(sampling, expected);
    const OpenHandle handle(files_);
    EXPECT_FALSE(AbcInput::get_camera_sampling(*handle, 1.5, 1.75, sampling));
    EXPECT_FALSE(AbcInput::get_camera_sampling(files_, "/xform", 1.5, 1.75, sampling));
    EXPECT_FALSE(AbcInput::get_camera_sampling(files_, "/nothing", 1.5, 1.75, sampling));
    EXPECT_EQ(sampling, expected);
    ASSERT_TRUE(AbcInput::get_camera_animation_header(*handle, "/camera", animation_));
    ASSERT_TRUE(AbcInput::get_camera_sampling(*handle, 1.5, 1.75, sampling));
    EXPECT_EQ(sampling.get_sample_count(), 2u);
    EXPECT_FALSE(AbcInput::get_camera_sampling(AbcFileList(CoreString(file_.folder() + "/none.abc")), "/camera", 0, 1,
                                               sampling));
    EXPECT_EQ(log_.take().size(), 1u);

    AbcCameraHeader camera;
    ASSERT_TRUE(AbcInput::get_animation_header(*handle, "/xform", animation_));
    EXPECT_FALSE(AbcInput::evaluate_camera_attributes(*handle, 1.0, camera)) << "a transform is no camera";
    handle->delete_object();
    EXPECT_FALSE(AbcInput::evaluate_camera_attributes(*handle, 1.0, camera));
}

TEST_F(CameraReader, ACameraWithoutSamplesLeavesTheHeaderAlone)
{
    write_archive(file_.path(), [](AbcG::OObject top) {
        AbcG::MetaData schema;
        schema.set("schema", "AbcGeom_Camera_v1");
        const auto add = [&](const char* name, Alembic::Util::PlainOldDataType pod, int extent) {
            AbcG::OObject object(top, name, schema);
            AbcG::OCompoundProperty compound(object.getProperties(), ".geom", schema);
            return AbcG::OScalarProperty(compound, ".core", AbcG::DataType(pod, std::uint8_t(extent)));
        };
        const std::vector<double> values(40, 1.0);
        add("empty", Alembic::Util::kFloat64POD, 16);
        add("short", Alembic::Util::kFloat64POD, 3).set(values.data());
        add("long", Alembic::Util::kFloat64POD, 40).set(values.data());
        add("floats", Alembic::Util::kFloat32POD, 16).set(values.data());
        AbcG::OScalarProperty core = add("few_channels", Alembic::Util::kFloat64POD, 16);
        core.set(values.data());
        AbcG::OCompoundProperty compound = core.getParent();
        const std::string operations[] = {"mfirst", "tfilmFitVert", "?filmFitHorz", ""};
        AbcG::OScalarProperty(compound, ".filmBackOps", AbcG::DataType(Alembic::Util::kStringPOD, 4)).set(operations);
        AbcG::OScalarProperty(compound, ".filmBackChannels", AbcG::DataType(Alembic::Util::kFloat64POD, 2))
            .set(values.data());
    });
    const OpenHandle handle(files_);
    AbcCameraHeader camera;
    camera.f_stop = 77.0;
    GMathTimeSampling sampling;
    ASSERT_TRUE(AbcInput::get_camera_animation_header(*handle, "/empty", animation_));
    EXPECT_EQ(animation_.sample_count, 0);
    EXPECT_EQ(animation_.end_time, animation_.start_time);
    EXPECT_TRUE(AbcInput::evaluate_camera_attributes(*handle, 0.0, camera));
    EXPECT_EQ(camera.f_stop, 77.0);
    EXPECT_TRUE(AbcInput::get_camera_sampling(*handle, 0.0, 1.0, sampling));
    EXPECT_EQ(sampling.get_sample_count(), 1u);
    for (const char* name : {"/short", "/long", "/floats"}) {
        EXPECT_FALSE(AbcInput::get_camera_animation_header(*handle, name, animation_)) << name;
        EXPECT_FALSE(AbcInput::get_camera_sampling(files_, name, 0.0, 1.0, sampling)) << name;
    }
    ASSERT_TRUE(AbcInput::get_camera_animation_header(*handle, "/few_channels", animation_));
    EXPECT_EQ(evaluate(handle, 0.0).focal_length, 0.001);
}
