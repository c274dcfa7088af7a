/// Views through cameras of an archive.
#include "object_walk.h"
#include "view.h"
#include "world_matrices.h"

#include <abc_animation_header.h>
#include <abc_camera_header.h>
#include <abc_input.h>
#include <fmt/format.h>

#include <algorithm>
#include <cmath>

namespace {

constexpr int default_width = 1280, max_default_height = 8192; // pixels

/// The camera of that name, or the only one directly below it.
std::string find_camera(const ArchiveSession& session, const std::string& path)
{
    const Alembic::Abc::IObject object = session.find(path);
    std::string found;
    int count = 0;
    session.on_object(path, [&] {
        if (get_object_kind(object) == ObjectKind::CAMERA) {
            found = object.getFullName();
            count = 1;
            return;
        }
        for (std::size_t i = 0; i < object.getNumChildren(); ++i)
            if (const Alembic::Abc::IObject child = object.getChild(i); get_object_kind(child) == ObjectKind::CAMERA) {
                found = child.getFullName();
                ++count;
            }
    });
    if (count == 1) return found;
    throw session.error(path, count == 0 ? "is no camera. 'vo_abc tree' lists all objects."
                                         : "there are several cameras below it. Name one of them.");
}

AbcCameraHeader read_camera(const ArchiveSession& session, const std::string& path, double time)
{
    return session.on_object(path, [&] {
        AbcAnimationHeader header; // asked for its effect: it sets the camera on the handle
        AbcCameraHeader camera;
        if (!AbcInput::get_camera_animation_header(session.get_handle(), CoreString(path), header) ||
            !AbcInput::evaluate_camera_attributes(session.get_handle(), time, camera))
            throw session.error(path, "the camera cannot be read: it is damaged. Was the export interrupted?");
        return camera;
    });
}

/// What the whole film back sees.
ScreenWindow find_film_window(const AbcCameraHeader& camera)
{
    const double half_width = 0.5 * camera.horizontal_aperture * camera.lens_squeeze_ratio / camera.focal_length;
    const double half_height = 0.5 * camera.vertical_aperture / camera.focal_length;
    const double x = camera.horizontal_film_offset * camera.lens_squeeze_ratio / camera.focal_length;
    const double y = camera.vertical_film_offset / camera.focal_length;
    return {x - half_width * (1.0 + camera.overscan_left), x + half_width * (1.0 + camera.overscan_right),
            y - half_height * (1.0 + camera.overscan_bottom), y + half_height * (1.0 + camera.overscan_top)};
}

bool can_see(const ScreenWindow& window)
{
    const double width = window.right - window.left, height = window.top - window.bottom;
    return width > 0.0 && height > 0.0 && std::isfinite(width) && std::isfinite(height) && std::isfinite(window.left) &&
           std::isfinite(window.top);
}

/// The part of the film back, or more than it, that a picture of another aspect shows, about the same middle.
ScreenWindow fit_window(const ScreenWindow& film, AbcCameraHeader::FitMode mode, double aspect)
{
    const double width = film.right - film.left, height = film.top - film.bottom;
    const bool is_wider = aspect > film.get_aspect(); // the picture, than the film back
    const bool keeps_height =
        mode == AbcCameraHeader::FIT_MODE_VERTICAL || (mode == AbcCameraHeader::FIT_MODE_FILL && !is_wider);
    const double half_width = 0.5 * (keeps_height ? height * aspect : width);
    const double half_height = 0.5 * (keeps_height ? height : width / aspect);
    const double x = 0.5 * (film.left + film.right), y = 0.5 * (film.bottom + film.top);
    return {x - half_width, x + half_width, y - half_height, y + half_height};
}

std::vector<Matrix> find_world_matrices(const ArchiveSession& session, const std::string& path, const Shutter& shutter)
{
    std::vector<Matrix> matrices;
    for (int step = 0; step < shutter.get_step_count(); ++step)
        matrices.push_back(WorldMatrices(session, shutter.time + shutter.get_step_offset(step)).get(path));
    return matrices;
}

} // namespace

View make_camera_view(const ArchiveSession& session, const std::string& path, const Shutter& shutter,
                      std::optional<ImageSize>& size)
{
    const std::string camera_path = find_camera(session, path);
    const AbcCameraHeader camera = read_camera(session, camera_path, shutter.time);
    const ScreenWindow film = find_film_window(camera);
    if (!can_see(film))
        throw session.error(camera_path,
                            fmt::format("the camera sees nothing: film back {} x {} m, focal length {} m.",
                                        camera.horizontal_aperture, camera.vertical_aperture, camera.focal_length));
    if (!size) {
        const double height = std::clamp(default_width / film.get_aspect(), 1.0, double{max_default_height});
        size = ImageSize{default_width, static_cast<int>(std::lround(height))};
    }
    const double aspect = static_cast<double>(size->width) / size->height;
    return View(find_world_matrices(session, camera_path, shutter), fit_window(film, camera.fit_mode, aspect));
}
