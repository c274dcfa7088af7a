/// HDF5 archives in the module: the lock that every reader holds, and the warning.
#include <support/abc_archives.h>
#include <support/hdf5_archive_copy.h>
#include <support/open_handle.h>

#include <abc_animation_header.h>
#include <abc_camera_header.h>
#include <abc_curve_header.h>
#include <abc_deformation_header.h>
#include <abc_pivot_data.h>
#include <abc_visibility_header.h>
#include <gmock/gmock.h>
#include <reader_scope.h>
#include <vo_geometry/geometry_normal_map.h>
#include <vo_geometry/geometry_uv_map.h>
#include <vo_gmath/gmath_time_sampling.h>
#include <vo_resource/resource_property.h>
#include <vo_sys/sys_thread_lock_recursive.h>

#include <dlfcn.h>

#include <atomic>
#include <chrono>
#include <filesystem>
#include <functional>
#include <future>
#include <thread>

using namespace abc_archives;
using testing::ElementsAre;

namespace {

/// Watches the calls of libhdf5 that one thread makes: at each of them it must hold the lock.
struct Watch
{
    SysThreadLockRecursive* lock = nullptr;
    std::atomic<int> calls{0}, calls_without_lock{0};

    void on_call()
    {
        ++calls;
        const auto others_can_take_it = std::async(std::launch::async, [this] {
            const bool taken = lock->lock(SysThreadLockBase::DURATION_NONE);
            if (taken) lock->unlock();
            return taken;
        });
        if (const_cast<std::future<bool>&>(others_can_take_it).get()) ++calls_without_lock;
    }
};

thread_local Watch* watch_of_thread = nullptr;

/// Calls the function of that name that stands behind ours.
template <class Function, class... Arguments>
auto call_through(const char* name, Arguments... arguments)
{
    if (watch_of_thread) watch_of_thread->on_call();
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name))(arguments...);
}

} // namespace

// Every sample, header and child is reached through one of these.
#define WATCHED extern "C" __attribute__((visibility("default")))

WATCHED htri_t H5Aexists(hid_t owner, const char* name)
{
    return call_through<decltype(H5Aexists)>("H5Aexists", owner, name);
}

WATCHED htri_t H5Lexists(hid_t group, const char* name, hid_t access)
{
    return call_through<decltype(H5Lexists)>("H5Lexists", group, name, access);
}

WATCHED hid_t H5Oopen_by_addr(hid_t file, haddr_t address)
{
    return call_through<decltype(H5Oopen_by_addr)>("H5Oopen_by_addr", file, address);
}

namespace {

using Vec3 = GMathVec3<float>;

/// Something of everything that readers read, two samples each, as an Ogawa archive.
void write_scene(const std::string& path)
{
    const auto seconds = std::make_shared<AbcG::TimeSampling>(1.0, 0.0);
    write_archive(path, [&](AbcG::OObject top) {
        AbcG::OXform body(top, "body", seconds);
        auto visible = AbcG::CreateVisibilityProperty(body, seconds);
        AbcG::OPolyMesh mesh = add_square(body, "shape", {1, 2}, seconds);
        AbcG::OInt32Property(mesh.getSchema().getUserProperties(), "id").set(7);
        AbcG::OSubD subd(body, "subd", seconds);
        AbcG::OCurves curves(body, "curves", seconds);
        AbcG::OPoints points(body, "points", seconds);
        AbcG::OCamera camera(body, "camera", seconds);
        for (int i = 1; i <= 2; ++i) {
            const std::vector<AbcG::V3f> corners = square(float(i));
            const std::vector<AbcG::N3f> normals(4, AbcG::N3f(0, 0, float(i)));
            const std::vector<std::int32_t> indices = {0, 1, 2, 3}, counts = {4}, creases = {0, 1}, lengths = {2};
            const std::vector<std::uint64_t> ids = {1, 2, 3, 4};
            AbcG::XformSample transform;
            transform.setTranslation(AbcG::V3d(i, 0, 0));
            body.getSchema().set(transform);
            visible.set(std::int8_t(i - 1));
            AbcG::OSubDSchema::Sample subd_sample(AbcG::P3fArraySample(corners), indices, counts);
            subd_sample.setCreaseIndices(creases);
            subd_sample.setCreaseLengths(lengths);
            const std::vector<float> sharpnesses = {float(i)};
            subd_sample.setCreaseSharpnesses(sharpnesses);
            subd.getSchema().set(subd_sample);
            AbcG::OCurvesSchema::Sample curves_sample{AbcG::P3fArraySample(corners), AbcG::Int32ArraySample(counts)};
            curves_sample.setNormals(AbcG::ON3fGeomParam::Sample(AbcG::N3fArraySample(normals), AbcG::kVertexScope));
            curves.getSchema().set(curves_sample);
            points.getSchema().set(
                AbcG::OPointsSchema::Sample(AbcG::P3fArraySample(corners), AbcG::UInt64ArraySample(ids)));
            AbcG::CameraSample lens;
            lens.setFocalLength(30.0 + i);
            camera.getSchema().set(lens);
        }
    });
}

/// What a reader delivered, as bytes.
class Result
{
public:
    template <class Value>
    Result& add(const CoreArray<Value>& values)
    {
        text_ += std::to_string(values.get_count()) + ":";
        text_.append(reinterpret_cast<const char*>(values.get_data()), values.get_count() * sizeof(Value));
        return *this;
    }
    Result& add(double value)
    {
        text_ += std::to_string(value) + ";";
        return *this;
    }
    std::string text() const { return text_; }

private:
    std::string text_;
};

/// A reader: reads from the archive and returns what it found; an empty text when it failed.
struct Reader
{
    const char* name;
    std::function<std::string(const AbcFileList&)> read;
};

constexpr double time_between = 0.5;

/// A reader of positions: `read(files, positions, velocities)`.
template <class Read>
Reader position_reader(const char* name, const Read& read)
{
    return {name, [read](const AbcFileList& files) {
                CoreArray<Vec3> positions, velocities;
                return read(files, positions, velocities) ? Result().add(positions).add(velocities).text() : "";
            }};
}

/// A reader of an object's sampling: `read(files, sampling)`.
template <class Read>
Reader sampling_reader(const char* name, const Read& read)
{
    return {name, [read](const AbcFileList& files) {
                GMathTimeSampling sampling;
                return read(files, sampling) ? Result().add(double(sampling.get_sample_count())).text() : "";
            }};
}

using Positions = CoreArray<Vec3>&;

std::string read_deformation_header(const AbcFileList& files, const char* object,
                                    bool (*read)(AbcInputArchiveHandle&, const CoreString&, AbcDeformationHeader&))
{
    OpenHandle handle(files);
    AbcDeformationHeader header;
    return read(*handle, object, header) ? Result().add(double(header.deformation_type)).text() : "";
}

std::string read_animation_header(const AbcFileList& files, const char* object,
                                  bool (*read)(AbcInputArchiveHandle&, const CoreString&, AbcAnimationHeader&))
{
    OpenHandle handle(files);
    AbcAnimationHeader header;
    return read(*handle, object, header) ? Result().add(double(header.sample_count)).text() : "";
}

using BindDeformation = bool (*)(AbcInputArchiveHandle&, const CoreString&, AbcDeformationHeader&);

/// A reader of the positions of an object that the handle holds.
Reader deformation_reader(const char* name, const char* object, BindDeformation bind,
                          bool (*evaluate)(const AbcInputArchiveHandle&, const double&, Positions, Positions, bool))
{
    return position_reader(name, [=](const AbcFileList& files, Positions positions, Positions velocities) {
        OpenHandle handle(files);
        AbcDeformationHeader header;
        return bind(*handle, object, header) && evaluate(*handle, time_between, positions, velocities, false);
    });
}

std::string read_normals(const AbcFileList& files, const char* object, BindDeformation bind,
                         bool (*evaluate)(const AbcInputArchiveHandle&, const double&, CoreArray<GeometryNormalMap>&))
{
    OpenHandle handle(files);
    AbcDeformationHeader header;
    CoreArray<GeometryNormalMap> maps;
    const bool good = bind(*handle, object, header) && evaluate(*handle, time_between, maps);
    return good ? Result().add(double(maps.get_count())).text() : "";
}

std::vector<Reader> all_readers()
{
    return {
        {"load_mesh",
         [](const AbcFileList& files) {
             CoreArray<Vec3> positions, velocities;
             CoreArray<unsigned int> indices, counts, groups;
             CoreArray<CoreString> group_names;
             CoreArray<GeometryUvMap> uv_maps;
             CoreArray<GeometryNormalMap> normal_maps;
             CoreVector<CoreString> properties;
             const bool good = AbcInput::load_mesh(files, "/body/shape", time_between, positions, velocities, indices,
                                                   counts, groups, group_names, uv_maps, normal_maps, properties, {});
             return good ? Result().add(positions).add(indices).add(counts).add(groups).text() : "";
         }},
        position_reader("load_mesh_deformation",
                        [](const AbcFileList& files, Positions positions, Positions velocities) {
                            return AbcInput::load_mesh_deformation(files, "/body/shape", time_between, positions,
                                                                   velocities, false);
                        }),
        deformation_reader("evaluate_mesh_deformation", "/body/shape", AbcInput::get_mesh_deformation_header,
                           AbcInput::evaluate_mesh_deformation),
        position_reader("load_curve_deformation",
                        [](const AbcFileList& files, Positions positions, Positions velocities) {
                            return AbcInput::load_curve_deformation(files, "/body/curves", time_between, positions,
                                                                    velocities, false);
                        }),
        deformation_reader("evaluate_curve_deformation", "/body/curves", AbcInput::get_curve_deformation_header,
                           AbcInput::evaluate_curve_deformation),
        position_reader("load_points",
                        [](const AbcFileList& files, Positions positions, Positions velocities) {
                            OpenHandle handle(files);
                            CoreVector<CoreString> properties;
                            return AbcInput::load_points(*handle, "/body/points", time_between, positions, velocities,
                                                         false, properties, nullptr);
                        }),
        deformation_reader("evaluate_point_deformation", "/body/points", AbcInput::get_point_deformation_header,
                           AbcInput::evaluate_point_deformation),
        sampling_reader("get_mesh_sampling",
                        [](const AbcFileList& files, GMathTimeSampling& sampling) {
                            return AbcInput::get_mesh_sampling(files, "/body/shape", 0.0, 1.0, sampling);
                        }),
        sampling_reader("get_curve_sampling",
                        [](const AbcFileList& files, GMathTimeSampling& sampling) {
                            return AbcInput::get_curve_sampling(files, "/body/curves", 0.0, 1.0, sampling);
                        }),
        sampling_reader("get_camera_sampling",
                        [](const AbcFileList& files, GMathTimeSampling& sampling) {
                            return AbcInput::get_camera_sampling(files, "/body/camera", 0.0, 1.0, sampling);
                        }),
        sampling_reader("get_point_sampling",
                        [](const AbcFileList& files, GMathTimeSampling& sampling) {
                            OpenHandle handle(files);
                            AbcDeformationHeader header;
                            return AbcInput::get_point_deformation_header(*handle, "/body/points", header) &&
                                   AbcInput::get_point_sampling(*handle, 0.0, 1.0, sampling);
                        }),
        {"get_mesh_deformation_header",
         [](const AbcFileList& files) {
             return read_deformation_header(files, "/body/subd", AbcInput::get_mesh_deformation_header);
         }},
        {"get_curve_deformation_header",
         [](const AbcFileList& files) {
             return read_deformation_header(files, "/body/curves", AbcInput::get_curve_deformation_header);
         }},
        {"get_point_deformation_header",
         [](const AbcFileList& files) {
             return read_deformation_header(files, "/body/points", AbcInput::get_point_deformation_header);
         }},
        {"get_animation_header",
         [](const AbcFileList& files) {
             return read_animation_header(files, "/body", AbcInput::get_animation_header);
         }},
        {"get_camera_animation_header",
         [](const AbcFileList& files) {
             return read_animation_header(files, "/body/camera", AbcInput::get_camera_animation_header);
         }},
        {"load_mesh_subdiv",
         [](const AbcFileList& files) {
             CoreVector<CoreString> properties;
             CoreArray<int> indices;
             CoreArray<float> sharpnesses;
             const bool good = AbcInput::load_mesh_subdiv(files, "/body/subd", 1.0, properties, indices, sharpnesses);
             return good ? Result().add(indices).add(sharpnesses).text() : "";
         }},
        {"load_mesh_normals",
         [](const AbcFileList& files) {
             CoreArray<GeometryNormalMap> maps;
             const bool good = AbcInput::load_mesh_normals(files, "/body/shape", time_between, maps);
             return good ? Result().add(double(maps.get_count())).text() : "";
         }},
        {"load_curve",
         [](const AbcFileList& files) {
             AbcCurveHeader header;
             return AbcInput::load_curve(files, "/body/curves", time_between, header, nullptr) ? "good" : "";
         }},
        {"load_curve_normals",
         [](const AbcFileList& files) {
             CoreArray<GeometryNormalMap> maps;
             const bool good = AbcInput::load_curve_normals(files, "/body/curves", time_between, maps);
             return good ? Result().add(double(maps.get_count())).text() : "";
         }},
        {"evaluate_pivot_matrix",
         [](const AbcFileList& files) {
             OpenHandle handle(files);
             AbcAnimationHeader header;
             GMathMatrix4x4<double> matrix;
             const bool good = AbcInput::get_animation_header(*handle, "/body", header) &&
                               AbcInput::evaluate_pivot_matrix(*handle, time_between, matrix);
             return good ? Result().add(matrix[0][3]).text() : "";
         }},
        {"evaluate_pivot_data",
         [](const AbcFileList& files) {
             OpenHandle handle(files);
             AbcAnimationHeader header;
             AbcPivotData pivots;
             return AbcInput::get_animation_header(*handle, "/body", header) &&
                            AbcInput::evaluate_pivot_data(*handle, time_between, pivots)
                        ? "good"
                        : "";
         }},
        {"evaluate_mesh_normals",
         [](const AbcFileList& files) {
             return read_normals(files, "/body/shape", AbcInput::get_mesh_deformation_header,
                                 AbcInput::evaluate_mesh_normals);
         }},
        {"evaluate_curve_normals",
         [](const AbcFileList& files) {
             return read_normals(files, "/body/curves", AbcInput::get_curve_deformation_header,
                                 AbcInput::evaluate_curve_normals);
         }},
        {"get_pivot_data",
         [](const AbcFileList& files) {
             AbcPivotData pivots;
             return AbcInput::get_pivot_data(files, "/body", pivots) ? "good" : "";
         }},
        {"evaluate_camera_attributes",
         [](const AbcFileList& files) {
             OpenHandle handle(files);
             AbcAnimationHeader animation;
             AbcCameraHeader camera;
             const bool good = AbcInput::get_camera_animation_header(*handle, "/body/camera", animation) &&
                               AbcInput::evaluate_camera_attributes(*handle, time_between, camera);
             return good ? Result().add(camera.focal_length * 1000.0).text() : "";
         }},
        {"make_object_key",
         [](const AbcFileList& files) {
             CoreArray<CoreString> keys{CoreString()};
             AbcInput::make_object_key(files, keys, CoreArray<CoreString>{CoreString("/body/shape")}, nullptr);
             return std::string(keys[0].get_data());
         }},
        {"get_object_data_hash_key",
         [](const AbcFileList& files) {
             OpenHandle handle(files);
             AbcDeformationHeader header;
             AbcInput::get_mesh_deformation_header(*handle, "/body/shape", header);
             return std::string(AbcInput::get_object_data_hash_key(*handle, 1.0).get_data());
         }},
        {"evaluate_property",
         [](const AbcFileList& files) {
             OpenHandle handle(files);
             AbcDeformationHeader header;
             AbcInput::PropertyType type;
             ResourceProperty property;
             const bool good = AbcInput::get_mesh_deformation_header(*handle, "/body/shape", header) &&
                               AbcInput::get_property_type(*handle, "id", type) &&
                               AbcInput::evaluate_property(*handle, "id", time_between, property);
             return good ? Result().add(double(type.sample_count)).text() : "";
         }},
        {"load_property",
         [](const AbcFileList& files) {
             OpenHandle handle(files);
             ResourceProperty property;
             CoreVector<CoreString> names;
             const bool good = AbcInput::get_property_names(*handle, "/body/shape", names) &&
                               AbcInput::load_property(files, "/body/shape", "id", 0.0, property);
             return good ? Result().add(double(names.get_count())).text() : "";
         }},
    };
}

class Hdf5Archive : public StartedLibrary
{
protected:
    void SetUp() override
    {
        StartedLibrary::SetUp();
        write_scene(ogawa_file_.path());
        hdf5_archives::write_copy(*Alembic::AbcCoreOgawa::ReadArchive()(ogawa_file_.path()), hdf5_file_.path());
    }

    std::string warning() const
    {
        return "2 The Alembic HDF5 format is deprecated. For improved performance, please convert the file(s) \"" +
               hdf5_file_.path() + "\" to the Alembic Ogawa format using \"abcconvert\".\n";
    }

    const ScratchFile ogawa_file_{"scene.abc"}, hdf5_file_{"scene.abc"};
    const AbcFileList ogawa_{CoreString(ogawa_file_.path())}, hdf5_{CoreString(hdf5_file_.path())};
};

} // namespace

TEST_F(Hdf5Archive, IsDeprecatedOncePerOpening)
{
    {
        const OpenHandle first(hdf5_), second(hdf5_);
        EXPECT_THAT(log_.take(), ElementsAre(warning()));
    }
    const OpenHandle again(hdf5_);
    EXPECT_THAT(log_.take(), ElementsAre(warning()));
    const OpenHandle other(ogawa_);
}

TEST_F(Hdf5Archive, HasOneLockForAllItsHandlesAndOthersHaveNone)
{
    const OpenHandle first(hdf5_), second(hdf5_), ogawa(ogawa_);
    EXPECT_THAT(log_.take(), ElementsAre(warning()));
    EXPECT_NE(first->share_lock(), nullptr);
    EXPECT_EQ(first->share_lock(), second->share_lock());
    EXPECT_EQ(ogawa->share_lock(), nullptr);

    CoreArray<CoreString> names(2u);
    names[0] = CoreString(hdf5_file_.path());
    names[1] = CoreString(ogawa_file_.path());
    const OpenHandle layers{AbcFileList(names)};
    ASSERT_TRUE(layers->is_archive_valid());
    EXPECT_EQ(layers->share_lock(), nullptr) << "layers are read without a lock";
}

TEST_F(Hdf5Archive, EveryReaderHoldsTheLockWhileItReads)
{
    const OpenHandle open(hdf5_);
    log_.take();
    const auto lock = open->share_lock();
    ASSERT_NE(lock, nullptr);
    for (const Reader& reader : all_readers()) {
        // This thread has the lock: the reader's cannot get past it.
        lock->lock(SysThreadLockBase::DURATION_INFINITE);
        std::atomic<bool> done{false};
        std::string result;
        Watch watch;
        watch.lock = lock.get();
        std::thread thread([&] {
            watch_of_thread = &watch;
            result = reader.read(hdf5_);
            watch_of_thread = nullptr;
            done = true;
        });
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
        EXPECT_FALSE(done) << reader.name << " did not wait";
        EXPECT_EQ(watch.calls, 0) << reader.name << " read without waiting";
        lock->unlock();
        thread.join();

        EXPECT_NE(result, "") << reader.name << " failed";
        EXPECT_EQ(result, reader.read(ogawa_)) << reader.name << " reads something else from an Ogawa archive";
        EXPECT_GT(watch.calls, 0) << reader.name << " read nothing";
        EXPECT_EQ(watch.calls_without_lock, 0) << reader.name << ", of " << watch.calls << " calls";
    }
}

TEST_F(Hdf5Archive, ReadersOfManyThreadsTakeTurns)
{
    const OpenHandle open(hdf5_), ogawa(ogawa_);
    log_.take();
    const std::vector<Reader> readers = all_readers();
    std::vector<std::string> expected;
    for (const Reader& reader : readers)
        expected.push_back(reader.read(ogawa_));
    std::atomic<int> wrong{0};
    std::vector<std::thread> threads;
    for (std::size_t i = 0; i < 4; ++i) {
        threads.emplace_back([&, i] {
            for (std::size_t k = 0; k < 2 * readers.size(); ++k) {
                const std::size_t which = (k + i * 5) % readers.size();
                if (readers[which].read(hdf5_) != expected[which]) ++wrong;
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(wrong, 0);
}
