/// Memory that runs out at any point, and the most that any archive may cost.
#include "counted_memory.h"
#include "support/archive_walk.h"
#include "support/captured_log.h"
#include "support/open_handle.h"
#include "support/reader_run.h"
#include "support/scenes.h"
#include "support/scratch_file.h"
#include "support/shapes.h"

#include <Alembic/AbcCoreOgawa/All.h>
#include <abc_animation_header.h>
#include <abc_camera_header.h>
#include <abc_curve_header.h>
#include <abc_deformation_header.h>
#include <abc_pivot_data.h>
#include <gtest/gtest.h>

#include <fstream>
#include <functional>
#include <sstream>
#include <thread>

using namespace vo_fuzz;
using namespace counted_memory;

namespace {

constexpr std::size_t allowance = std::size_t(64) << 20;

/// Lets each allocation of `act()` fail in turn, alone and with all that follow. Only std::exception may come out, and
/// what was taken is given back. `step`: every so many allocations.
void fail_everywhere(const std::string& what, std::size_t step, const std::function<void()>& act)
{
    act(); // what is made once for the process is there from now on
    act();
    for (const bool for_good : {false, true})
        for (std::size_t number = 0;; number += step) {
            const std::size_t before = blocks_in_use();
            const std::size_t first = allocation_count();
            fail_after(number, for_good);
            try {
                act();
            } catch (const std::exception&) {
            }
            const std::size_t made = allocation_count() - first;
            never_fail();
            act(); // also shows that nothing is left broken, and settles what is kept from one call to the next
            ASSERT_EQ(blocks_in_use(), before) << what << ": allocation " << number << " failed";
            if (made <= number) break; // all went well: there was nothing left to fail
        }
}

class Files
{
public:
    Files()
        : file_("scene.abc")
    {
        std::ofstream(file_.path(), std::ios::binary) << full_scene();
        files_ = AbcFileList(CoreString(file_.path().c_str()));
    }
    const AbcFileList& operator*() const { return files_; }

private:
    ScratchFile file_;
    AbcFileList files_;
};

/// The library, started for the length of a test.
class FailingReaders : public testing::Test
{
protected:
    void SetUp() override { AbcInput::init(nullptr); }
    void TearDown() override { AbcInput::destroy(); }

    /// Calls `read(name, time)` on objects of the scene while memory runs out, with nobody else using the archive.
    template <class Read>
    void expect_safe(const char* name, const Read& read)
    {
        const CoreString object(name);
        fail_everywhere(name, 1, [&] { read(object, 0.02); });
    }

    /// The same with a handle that `bind(handle, name)` has set.
    template <class Bind, class Evaluate>
    void expect_safe_with_handle(const char* name, const Bind& bind, const Evaluate& evaluate)
    {
        expect_safe(name, [&](const CoreString& object, double time) {
            const std::unique_ptr<AbcInputArchiveHandle> handle(AbcInput::get_archive(*files_));
            const struct Release
            {
                AbcInputArchiveHandle* handle;
                ~Release() { AbcInput::release_archive(handle); }
            } release{handle.get()};
            if (handle->is_archive_valid() && bind(*handle, object)) evaluate(*handle, time);
        });
    }

    Files files_;
    struct SilentLog : CoreLogHandler
    {
        SilentLog()
            : CoreLogHandler(LEVEL_NONE)
            , previous(s_main_log_handler.exchange(this))
        {
        }
        ~SilentLog() override { s_main_log_handler = previous; }
        CoreLogHandler* previous;
    } silence_;
};

/// The most bytes that `act()` has in use at once.
template <class Act>
std::size_t peak_of(const Act& act)
{
    const std::size_t before = bytes_in_use();
    reset_peak();
    act();
    return peak() - before;
}

} // namespace

TEST(Allocation, MayFailAnywhereWhileAnArchiveIsOpenedAndRead)
{
    const std::string scene = small_scene();
    fail_everywhere("core", 1, [&] {
        std::istringstream stream(scene);
        walk_core(Alembic::AbcCoreOgawa::ReadArchive({&stream})("bytes"));
    });
}

TEST(Allocation, MayFailWhereAThreadReadsForTheFirstTime)
{
    // Too large to be kept whole: each thread has a buffer of its own, and reads without when there is none.
    const std::string scene = small_scene() + std::string(std::size_t(1) << 20, '\0');
    fail_everywhere("thread", 1, [&] {
        std::thread([&] {
            try {
                std::istringstream stream(scene);
                Alembic::AbcCoreOgawa::ReadArchive({&stream})("bytes")->getTop()->getNumChildren();
            } catch (const std::exception&) {
            }
        }).join();
    });
}

TEST(Allocation, MayFailAnywhereInTypedLayers)
{
    const std::string scene = small_scene();
    for (const auto policy : {Alembic::Abc::ErrorHandler::kThrowPolicy, Alembic::Abc::ErrorHandler::kQuietNoopPolicy})
        fail_everywhere("typed", 3, [&] {
            std::istringstream stream(scene);
            walk_typed(Alembic::AbcCoreOgawa::ReadArchive({&stream})("bytes"), policy);
        });
}

TEST_F(FailingReaders, OfMeshes)
{
    CoreArray<GMathVec3<float>> positions, velocities;
    for (const char* name : {"/root/mesh", "/root/subd"}) {
        expect_safe(name, [&](const CoreString& object, double time) {
            CoreArray<unsigned int> indices, counts, groups;
            CoreArray<CoreString> group_names;
            CoreArray<GeometryUvMap> uv_maps;
            CoreArray<GeometryNormalMap> normal_maps;
            CoreArray<GMathVec3<float>> points, moving;
            CoreVector<CoreString> names;
            AbcInput::load_mesh(*files_, object, time, points, moving, indices, counts, groups, group_names, uv_maps,
                                normal_maps, names, nullptr);
        });
        expect_safe(name, [&](const CoreString& object, double time) {
            CoreArray<GMathVec3<float>> points, moving;
            CoreArray<int> creases;
            CoreArray<float> sharpnesses;
            CoreArray<GeometryNormalMap> maps;
            CoreVector<CoreString> names;
            AbcInput::load_mesh_deformation(*files_, object, time, points, moving, false);
            AbcInput::load_mesh_subdiv(*files_, object, time, names, creases, sharpnesses);
            AbcInput::load_mesh_normals(*files_, object, time, maps);
        });
        expect_safe_with_handle(
            name,
            [](AbcInputArchiveHandle& handle, const CoreString& object) {
                AbcDeformationHeader header;
                return AbcInput::get_mesh_deformation_header(handle, object, header);
            },
            [](AbcInputArchiveHandle& handle, double time) {
                CoreArray<GMathVec3<float>> points, moving;
                AbcInput::evaluate_mesh_deformation(handle, time, points, moving, false);
                AbcInput::get_object_data_hash_key(handle, time);
                AbcInput::is_object_visible_at(handle, time);
            });
    }
}

TEST_F(FailingReaders, OfCurvesAndPoints)
{
    expect_safe("/root/curves", [&](const CoreString& object, double time) {
        AbcCurveHeader curves;
        AbcInput::load_curve(*files_, object, time, curves, nullptr);
    });
    expect_safe("/root/curves", [&](const CoreString& object, double time) {
        CoreArray<GMathVec3<float>> points, moving;
        CoreArray<GeometryNormalMap> maps;
        AbcInput::load_curve_deformation(*files_, object, time, points, moving, false);
        AbcInput::load_curve_normals(*files_, object, time, maps);
    });
    expect_safe_with_handle(
        "/root/points",
        [](AbcInputArchiveHandle& handle, const CoreString& object) {
            CoreArray<GMathVec3<float>> points, moving;
            CoreVector<CoreString> names;
            return AbcInput::load_points(handle, object, 0.0, points, moving, false, names, nullptr);
        },
        [](AbcInputArchiveHandle& handle, double time) {
            CoreArray<GMathVec3<float>> points, moving;
            GMathTimeSampling sampling;
            AbcInput::evaluate_point_deformation(handle, time, points, moving, false);
            AbcInput::get_point_sampling(handle, 0.0, 1.0, sampling);
        });
}

TEST_F(FailingReaders, OfTransformsCamerasAndProperties)
{
    expect_safe("/root", [&](const CoreString& object, double time) {
        AbcPivotData pivot;
        AbcInput::get_pivot_data(*files_, object, pivot);
        ResourceProperty property;
        for (const char* name : {"wide", "words", "wides", "colour", "inner.innermost.byte"})
            AbcInput::load_property(*files_, object, CoreString(name), time, property);
    });
    expect_safe_with_handle(
        "/root",
        [](AbcInputArchiveHandle& handle, const CoreString& object) {
            AbcAnimationHeader header;
            return AbcInput::get_animation_header(handle, object, header);
        },
        [](AbcInputArchiveHandle& handle, double time) {
            GMathMatrix4x4<double> matrix;
            AbcPivotData pivot;
            CoreVector<CoreString> names;
            AbcInput::evaluate_pivot_matrix(handle, time, matrix);
            AbcInput::evaluate_pivot_data(handle, time, pivot);
            AbcInput::get_property_names(handle, CoreString("/root"), names);
        });
    expect_safe_with_handle(
        "/root/camera",
        [](AbcInputArchiveHandle& handle, const CoreString& object) {
            AbcAnimationHeader header;
            return AbcInput::get_camera_animation_header(handle, object, header);
        },
        [](AbcInputArchiveHandle& handle, double time) {
            AbcCameraHeader camera;
            AbcInput::evaluate_camera_attributes(handle, time, camera);
        });
    expect_safe("/root/mesh", [&](const CoreString& object, double) {
        CoreArray<CoreString> keys, names;
        keys.resize(1);
        names.resize(1);
        names[0] = object;
        AbcInput::make_object_key(*files_, keys, names, nullptr);
        AbcInput::is_archive_valid(*files_);
    });
}

TEST(Memory, NoHostileArchiveCostsMuchMoreThanItsSize)
{
    for (const Shape& shape : all_shapes()) {
        // The stream is a copy, and a walk converts samples to wider numbers.
        EXPECT_LT(peak_of([&] { walk_bytes(shape.bytes, true); }), shape.bytes.size() + allowance) << shape.name;
        EXPECT_LT(peak_of([&] { run_readers_on_bytes(shape.bytes, {0.0}); }), shape.bytes.size() + allowance)
            << shape.name;
    }
}
