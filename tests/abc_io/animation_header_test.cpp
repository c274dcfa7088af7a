/// Animation headers of transforms and cameras: counts, times, and what the handle holds afterwards.
#include <support/abc_archives.h>
#include <support/open_handle.h>

#include <abc_animation_header.h>

#include <initializer_list>

using namespace abc_archives;

namespace {

AbcG::TimeSamplingPtr uniform(double step, double start)
{
    return std::make_shared<AbcG::TimeSampling>(step, start);
}

void add_xform(AbcG::OObject parent, const char* name, AbcG::TimeSamplingPtr sampling, std::initializer_list<double> xs)
{
    AbcG::OXform xform(parent, name, sampling);
    for (const double x : xs) {
        AbcG::XformSample sample;
        sample.addOp(AbcG::XformOp(AbcG::kTranslateOperation), AbcG::V3d(x, 0, 0));
        xform.getSchema().set(sample);
    }
}

class AnimationHeader : public StartedLibrary
{
protected:
    void SetUp() override
    {
        StartedLibrary::SetUp();
        write_archive(file_.path(), [](AbcG::OObject top) {
            add_xform(top, "moving", uniform(0.5, 2.0), {1, 2, 3});
            add_xform(top, "still", uniform(0.5, 2.0), {1, 1, 1});
            add_xform(top, "single", uniform(0.5, 1.0), {1});
            add_xform(top, "never_set", uniform(0.5, 1.0), {});
            AbcG::OCamera still(top, "camera", uniform(0.5, 2.0)), never_set(top, "unset_camera", uniform(0.5, 4.0));
            for (int i = 0; i < 3; ++i)
                still.getSchema().set(AbcG::CameraSample());
        });
    }

    void expect(const char* name, int count, double start_time, double end_time, bool camera = false)
    {
        const OpenHandle handle(files_);
        AbcAnimationHeader header;
        header.host_data = 42;
        const auto read = camera ? AbcInput::get_camera_animation_header : AbcInput::get_animation_header;
        ASSERT_TRUE(read(*handle, name, header)) << name;
        EXPECT_EQ(header.sample_count, count) << name;
        EXPECT_EQ(header.start_time, start_time) << name;
        EXPECT_EQ(header.end_time, end_time) << name;
        EXPECT_EQ(header.is_animated(), count > 1) << name;
        EXPECT_EQ(header.host_data, 42) << name;
        EXPECT_EQ(handle->get_object_type(),
                  camera ? AbcInputArchiveHandle::OBJECT_TYPE_CAMERA : AbcInputArchiveHandle::OBJECT_TYPE_XFORM);
        EXPECT_EQ(handle->get_object_name(), name);
    }

    const ScratchFile file_{"animation.abc"};
    const AbcFileList files_{CoreString(file_.path())};
};

} // namespace

TEST_F(AnimationHeader, OfTransforms)
{
    expect("/moving", 3, 2.0, 3.0);
    expect("/still", 1, 2.0, 2.0);
    expect("/single", 1, 1.0, 1.0);
    expect("/never_set", 1, 0.0, 0.0); // an unset transform stores no sampling: that of number 0 counts
}

TEST_F(AnimationHeader, OfCamerasThatNeverChangeHasAllSamples)
{
    expect("/camera", 3, 2.0, 3.0, true);
}

TEST_F(AnimationHeader, AFailureLeavesTheHeaderAloneAndTheHandleWithoutAnObject)
{
    const OpenHandle handle(files_);
    AbcAnimationHeader header;
    for (const bool camera : {false, true}) {
        const auto read = camera ? AbcInput::get_camera_animation_header : AbcInput::get_animation_header;
        for (const char* name : {"/nothing", camera ? "/moving" : "/camera", "/"}) {
            ASSERT_TRUE(AbcInput::get_animation_header(*handle, "/moving", header));
            EXPECT_FALSE(read(*handle, name, header)) << name;
            EXPECT_EQ(header.sample_count, 3);
            EXPECT_FALSE(handle->is_object_valid());
            EXPECT_EQ(handle->get_object_type(), AbcInputArchiveHandle::OBJECT_TYPE_NONE);
        }
    }
    AbcInputArchiveHandle empty;
    EXPECT_FALSE(AbcInput::get_animation_header(empty, "/moving", header));
    EXPECT_FALSE(AbcInput::get_camera_animation_header(empty, "/camera", header));
}
