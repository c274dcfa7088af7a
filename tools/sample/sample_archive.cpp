#include "sample_archive.h"

#include "grid_mesh.h"
#include "new_file.h"
#include "sample_parts.h"
#include "tool_error.h"
#include "tool_library.h"

#include <Alembic/AbcCoreOgawa/All.h>
#include <abc_output_archive_handle.h>

#include <cmath>

using namespace Alembic::AbcGeom;

namespace sample {

OXform add_place(const OObject& parent, const std::string& name, const V3d& translation)
{
    OXform xform(parent, name);
    XformSample sample;
    sample.addOp(XformOp(kTranslateOperation, kTranslateHint), translation);
    xform.getSchema().set(sample);
    return xform;
}

namespace {

/// A camera that goes round the island and zooms.
void add_camera(const OObject& scene, std::uint32_t sampling)
{
    const V3d target(0.3, 1.35, 0.0);
    OXform dolly(scene, "camera", sampling);
    OCamera camera(dolly, "cameraShape", sampling);
    for (int frame = 0; frame < frame_count; ++frame) {
        const double phase = static_cast<double>(phase_of(frame)), angle = 0.42 + 0.3 * phase;
        const double distance = 12.2 - 0.8 * phase;
        const V3d place = target + V3d(distance * std::sin(angle), 2.3, distance * std::cos(angle));
        XformSample sample;
        sample.addOp(XformOp(kTranslateOperation, kTranslateHint), place);
        sample.addOp(XformOp(kRotateYOperation, kRotateHint), angle * 180.0 / double{pi});
        sample.addOp(XformOp(kRotateXOperation, kRotateHint), -std::atan2(2.3, distance) * 180.0 / double{pi});
        dolly.getSchema().set(sample);
        CameraSample lens;
        lens.setFocalLength(40.0 + 4.0 * phase);
        lens.setHorizontalAperture(3.6);
        lens.setVerticalAperture(2.025);
        lens.setFocusDistance(distance);
        lens.setFStop(4.0);
        camera.getSchema().set(lens);
    }
}

void hide(OObject object)
{
    CreateVisibilityProperty(object, 0).set(static_cast<std::int8_t>(kVisibilityHidden));
}

void add_hidden_helper(const OObject& scene)
{
    const OXform helper = add_place(scene, "helper", V3d(0.0, 0.0, 0.0));
    hide(helper);
    const GridMesh grid({2, 2}, [](float u, float v) { return V3f(4.0f * u - 2.0f, 4.0f * v - 2.0f, 0.0f); });
    OPolyMesh(helper, "helperShape").getSchema().set(grid.make_sample());
}

void add_scene(const OObject& top, std::uint32_t sampling)
{
    const OXform scene(top, "scene");
    add_sea(scene, sampling);
    add_foam(scene, sampling);
    add_spray(scene, sampling);
    add_island(scene);
    add_grass(scene);
    add_lighthouse(scene, sampling);
    add_flag(scene, sampling);
    add_ring(scene, sampling);
    add_buoy(scene, "buoy", V3f(3.9f, 0.0f, 0.6f), sampling);
    add_camera(scene, sampling);
    add_hidden_helper(scene);
}

/// Only what differs: objects of the same names take the place of those below.
void add_changes(const OObject& top, std::uint32_t sampling)
{
    const OXform scene(top, "scene");
    add_place(OXform(scene, "flag"), "cloth", V3d(0.02, 0.35, 0.0));
    hide(OXform(scene, "ring_copy"));
    add_buoy(scene, "second_buoy", V3f(-1.2f, 0.0f, 4.2f), sampling);
}

template <class Add>
void write_archive(const std::string& path, Add&& add)
{
    NewFile file(path);
    {
        AbcOutputArchiveHandle archive(CoreString(file.get_temporary_path()), seconds_per_frame, 0.0,
                                       ToolLibrary::get_application());
        if (!archive.is_valid()) throw ToolError(path + ": cannot be written.");
        add(archive.getTop(), archive.get_time_sampling_index());
        const std::string errors = archive.get_error_log().get_data();
        if (!errors.empty()) throw ToolError(path + ": cannot be written: " + reason_in(errors));
    }
    try {
        Alembic::AbcCoreOgawa::ReadArchive()(file.get_temporary_path()); // one not written to its end does not open
    } catch (const std::exception&) {
        throw ToolError(path + ": cannot be written to its end. Is the disk full?");
    }
    file.commit();
}

} // namespace

} // namespace sample

void write_sample_archive(const std::string& path)
{
    sample::write_archive(path, sample::add_scene);
}

void write_sample_layer(const std::string& path)
{
    sample::write_archive(path, sample::add_changes);
}
