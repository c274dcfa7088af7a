/// The run over all readers.
#include "reader_run.h"

#include "support/captured_log.h"
#include "support/open_handle.h"
#include "support/scratch_file.h"

#include <Alembic/Abc/All.h>
#include <abc_animation_header.h>
#include <abc_camera_header.h>
#include <abc_curve_header.h>
#include <abc_deformation_header.h>
#include <abc_pivot_data.h>
#include <abc_visibility_header.h>

#include <algorithm>
#include <fstream>
#include <memory>
#include <numeric>

namespace vo_fuzz {

namespace {

using Vectors = CoreArray<GMathVec3<float>>;
using Numbers = CoreArray<unsigned int>;

constexpr std::size_t most_objects = 40;
constexpr int most_depth = 1200;

std::uint64_t sum_of(const Numbers& numbers)
{
    return std::accumulate(numbers.begin(), numbers.end(), std::uint64_t(0));
}

bool are_below(const Numbers& indices, std::uint64_t end)
{
    return std::all_of(indices.begin(), indices.end(), [end](unsigned int index) { return index < end; });
}

class ReaderRun
{
public:
    ReaderRun(const AbcFileList& files, const std::vector<double>& times, ReaderReport& report)
        : files_(files)
        , times_(times)
        , report_(report)
    {
    }

    void run()
    {
        AbcInput::is_archive_valid(files_);
        const OpenHandle handle(files_); // keeps the archive open while the readers come and go
        report_.opened = handle->is_archive_valid();
        std::vector<std::string> names = {"/", "", "/no/such/object", "//"};
        if (report_.opened)
            attempt([&] {
                auto* archive = static_cast<Alembic::Abc::IArchive*>(handle->get_archive());
                list_objects(archive->getTop(), names, 0);
            });
        CoreArray<CoreString> keys, all;
        for (const std::string& name : names) {
            all.resize(all.get_count() + 1);
            all[all.get_count() - 1] = CoreString(name.c_str());
        }
        keys.resize(all.get_count());
        attempt([&] { AbcInput::make_object_key(files_, keys, all, nullptr); });
        for (const CoreString& name : all) {
            ++report_.objects;
            run_headers(name);
            run_properties(name);
            for (const double time : times_) {
                run_meshes(name, time);
                run_curves(name, time);
            }
            run_with_handles(name);
        }
        if (report_.opened) AbcInput::log_statistics();
    }

private:
    template <class Act>
    void attempt(const Act& act)
    {
        try {
            act();
        } catch (const std::exception& error) {
            const std::string text = error.what();
            if (report_.errors.size() < 100) report_.errors.insert(text.substr(text.rfind('\n') + 1));
        }
    }

    void ok(bool result) { report_.successes += result; }

    void promise(bool kept, const std::string& what)
    {
        if (!kept) report_.broken.insert(what);
    }

    void list_objects(Alembic::Abc::IObject object, std::vector<std::string>& names, int depth)
    {
        for (std::size_t i = 0; i < object.getNumChildren() && names.size() < most_objects && depth < most_depth; ++i)
            attempt([&] {
                names.push_back(object.getFullName() + (depth == 0 ? "" : "/") + object.getChildHeader(i).getName());
                list_objects(object.getChild(i), names, depth + 1);
            });
    }

    void run_headers(const CoreString& name)
    {
        GMathTimeSampling sampling;
        AbcPivotData pivot;
        attempt([&] { ok(AbcInput::get_mesh_sampling(files_, name, 0.0, 1.0, sampling)); });
        attempt([&] { ok(AbcInput::get_curve_sampling(files_, name, 0.0, 1.0, sampling)); });
        attempt([&] { ok(AbcInput::get_camera_sampling(files_, name, 0.0, 1.0, sampling)); });
        attempt([&] {
            ok(AbcInput::get_pivot_data(files_, name, pivot));
            pivot.get_global_matrix();
        });
    }

    void check(const ResourceProperty& property)
    {
        promise(property.extent > 0, "a property's extent is 0");
        promise(are_below(property.indices, property.get_element_count()),
                "a property's index leads beyond its values");
    }

    void run_properties(const CoreString& name)
    {
        const OpenHandle handle(files_);
        if (!handle->is_archive_valid()) return;
        CoreVector<CoreString> names;
        attempt([&] { ok(AbcInput::get_property_names(*handle, name, names)); });
        for (unsigned int i = 0; i < std::min(names.get_count(), 20u); ++i)
            for (const double time : times_)
                attempt([&] {
                    ResourceProperty property;
                    ok(AbcInput::load_property(files_, name, names[i], time, property));
                    check(property);
                    property.get_values_as_text();
                });
    }

    void check_maps(const CoreArray<GeometryUvMap>& maps, std::size_t corner_count)
    {
        for (const GeometryUvMap& map : maps) {
            promise(map.indices.get_count() == corner_count, "a map has not one index for each corner");
            // A map for each point has the mesh's own indices, of which one may equal the count.
            promise(are_below(map.indices, std::uint64_t(map.values.get_count()) + 1), "a map's index leads beyond it");
        }
    }

    void run_meshes(const CoreString& name, double time)
    {
        Vectors positions, velocities;
        Numbers indices, counts, groups;
        CoreArray<CoreString> group_names;
        CoreArray<GeometryUvMap> uv_maps;
        CoreArray<GeometryNormalMap> normal_maps;
        CoreVector<CoreString> property_names;
        attempt([&] {
            if (!AbcInput::load_mesh(files_, name, time, positions, velocities, indices, counts, groups, group_names,
                                     uv_maps, normal_maps, property_names, nullptr))
                return;
            ok(true);
            promise(sum_of(counts) == indices.get_count(), "face counts do not add up to the indices");
            promise(are_below(indices, std::uint64_t(positions.get_count()) + 1),
                    "a face index leads beyond the points");
            promise(groups.get_count() == counts.get_count(), "not one group for each face");
            promise(groups.get_count() == 0 || are_below(groups, group_names.get_count()), "a group without a name");
            check_maps(uv_maps, indices.get_count());
            for (const GeometryNormalMap& map : normal_maps)
                promise(are_below(map.indices, map.values.get_count()) &&
                            map.indices.get_count() == indices.get_count(),
                        "a normal map does not fit its mesh");
        });
        CoreArray<int> creases;
        CoreArray<float> sharpnesses;
        attempt([&] { ok(AbcInput::load_mesh_subdiv(files_, name, time, property_names, creases, sharpnesses)); });
        for (const bool ignore : {false, true})
            attempt([&] {
                ok(AbcInput::load_mesh_deformation(files_, name, time, positions, velocities, ignore));
                promise(positions.get_count() == velocities.get_count(), "not one velocity for each point of a mesh");
            });
        attempt([&] { ok(AbcInput::load_mesh_normals(files_, name, time, normal_maps)); });
        for (const GeometryNormalMap& map : normal_maps)
            promise(are_below(map.indices, map.values.get_count()), "an index of normals leads beyond them");
    }

    void run_curves(const CoreString& name, double time)
    {
        AbcCurveHeader curves;
        attempt([&] {
            if (!AbcInput::load_curve(files_, name, time, curves, nullptr)) return;
            ok(true);
            promise(sum_of(curves.vertex_counts) <= curves.positions.get_count(),
                    "curves ask for more points than given");
            promise(are_below(curves.radius_indices, curves.radii.get_count()), "an index of radii leads beyond them");
            for (const GeometryUvMap& map : curves.uv_maps)
                promise(are_below(map.indices, map.values.get_count()), "an index of curve uvs leads beyond them");
            for (const GeometryColorMap& map : curves.color_maps)
                promise(are_below(map.indices, map.values.get_count()), "an index of colours leads beyond them");
            for (const GeometryNormalMap& map : curves.normal_maps)
                promise(are_below(map.indices, map.values.get_count()), "an index of curve normals leads beyond them");
        });
        Vectors positions, velocities;
        CoreArray<GeometryNormalMap> normal_maps;
        for (const bool ignore : {false, true})
            attempt([&] {
                ok(AbcInput::load_curve_deformation(files_, name, time, positions, velocities, ignore));
                promise(positions.get_count() == velocities.get_count(), "not one velocity for each point of curves");
            });
        attempt([&] { ok(AbcInput::load_curve_normals(files_, name, time, normal_maps)); });
        for (const GeometryNormalMap& map : normal_maps)
            promise(are_below(map.indices, map.values.get_count()), "an index of curve normals leads beyond them");
    }

    void run_with_handles(const CoreString& name)
    {
        AbcDeformationHeader deformation;
        AbcAnimationHeader animation;
        Vectors positions, velocities;
        CoreVector<CoreString> names;
        const auto each = [&](const auto& bind) {
            const OpenHandle handle(files_);
            if (!handle->is_archive_valid()) return;
            bool bound = false;
            attempt([&] { ok(bound = bind(*handle)); });
            if (!bound) return;
            attempt([&] { AbcVisibilityHeader visibility(handle->get_object()); });
            for (const double time : times_)
                evaluate(*handle, time);
        };
        each([&](auto& handle) { return AbcInput::get_mesh_deformation_header(handle, name, deformation); });
        each([&](auto& handle) { return AbcInput::get_curve_deformation_header(handle, name, deformation); });
        each([&](auto& handle) { return AbcInput::get_point_deformation_header(handle, name, deformation); });
        each([&](auto& handle) { return AbcInput::get_animation_header(handle, name, animation); });
        each([&](auto& handle) { return AbcInput::get_camera_animation_header(handle, name, animation); });
        each([&](auto& handle) {
            const bool done = AbcInput::load_points(handle, name, 0.0, positions, velocities, false, names, nullptr);
            if (done) promise(positions.get_count() == velocities.get_count(), "not one velocity for each point");
            return done;
        });
    }

    /// Everything that takes a handle with an object, whatever kind it holds.
    void evaluate(AbcInputArchiveHandle& handle, double time)
    {
        Vectors positions, velocities;
        CoreArray<GeometryNormalMap> normal_maps;
        GMathTimeSampling sampling;
        GMathMatrix4x4<double> matrix;
        AbcPivotData pivot;
        AbcCameraHeader camera;
        attempt([&] { AbcInput::get_object_data_hash_key(handle, time); });
        attempt([&] { ok(AbcInput::is_object_visible_at(handle, time)); });
        attempt([&] { ok(AbcInput::get_mesh_sampling(handle, time, time + 1.0, sampling)); });
        attempt([&] { ok(AbcInput::get_curve_sampling(handle, time, time + 1.0, sampling)); });
        attempt([&] { ok(AbcInput::get_point_sampling(handle, time, time + 1.0, sampling)); });
        attempt([&] { ok(AbcInput::get_camera_sampling(handle, time, time + 1.0, sampling)); });
        attempt([&] { ok(AbcInput::evaluate_mesh_deformation(handle, time, positions, velocities, false)); });
        attempt([&] { ok(AbcInput::evaluate_curve_deformation(handle, time, positions, velocities, false)); });
        attempt([&] { ok(AbcInput::evaluate_point_deformation(handle, time, positions, velocities, false)); });
        attempt([&] { ok(AbcInput::evaluate_mesh_normals(handle, time, normal_maps)); });
        for (const GeometryNormalMap& map : normal_maps)
            promise(are_below(map.indices, map.values.get_count()), "an index of normals leads beyond them");
        attempt([&] { ok(AbcInput::evaluate_curve_normals(handle, time, normal_maps)); });
        attempt([&] { ok(AbcInput::evaluate_pivot_matrix(handle, time, matrix)); });
        attempt([&] { ok(AbcInput::evaluate_pivot_data(handle, time, pivot)); });
        attempt([&] { ok(AbcInput::evaluate_camera_attributes(handle, time, camera)); });
        evaluate_properties(handle, time);
    }

    void evaluate_properties(AbcInputArchiveHandle& handle, double time)
    {
        CoreVector<CoreString> names;
        attempt([&] { AbcInput::get_property_names(handle, handle.get_object_name(), names); });
        for (unsigned int i = 0; i < std::min(names.get_count(), 10u); ++i)
            attempt([&] {
                AbcInput::PropertyType type;
                ResourceProperty property;
                ok(AbcInput::get_property_type(handle, names[i], type));
                ok(AbcInput::evaluate_property(handle, names[i], time, property));
                check(property);
            });
    }

    const AbcFileList& files_;
    const std::vector<double>& times_;
    ReaderReport& report_;
};

/// The library, started for the rest of the process.
void start_library()
{
    static const bool started = [] {
        AbcInput::init(nullptr);
        return true;
    }();
    (void)started;
}

void write_file(const std::string& path, const std::string& bytes)
{
    std::ofstream(path, std::ios::binary | std::ios::trunc) << bytes;
}

/// The scratch files of this process, reused: making one for each of thousands of inputs would take longer than all
/// else.
const std::string& scratch_path(std::size_t layer)
{
    static const ScratchFile files[] = {ScratchFile("weakest.abc"), ScratchFile("middle.abc"),
                                        ScratchFile("strong.abc")};
    return files[layer].path();
}

} // namespace

ReaderReport run_readers(const AbcFileList& files, const std::vector<double>& times)
{
    ReaderReport report;
    CapturedLog log;
    ReaderRun(files, times, report).run();
    for (const std::string& message : log.take())
        if (message[0] < '0' + CoreLogHandler::LEVEL_INFO) report.messages.push_back(message);
    return report;
}

ReaderReport run_readers_on_bytes(const std::string& bytes, const std::vector<double>& times)
{
    return run_readers_on_layers({bytes}, times);
}

ReaderReport run_readers_on_layers(const std::vector<std::string>& layers, const std::vector<double>& times)
{
    start_library();
    CoreArray<CoreString> names;
    names.resize(static_cast<unsigned int>(layers.size()));
    for (std::size_t i = 0; i < layers.size(); ++i) {
        write_file(scratch_path(i), layers[i]);
        names[static_cast<unsigned int>(i)] = CoreString(scratch_path(i).c_str());
    }
    return run_readers(AbcFileList(names), times);
}

} // namespace vo_fuzz
