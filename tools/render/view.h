/// View: where a picture is seen from.
#pragma once

#include "archive_session.h"
#include "render_options.h"
#include "shutter.h"
#include "trace_scene.h"
#include "vector_math.h"
#include "world_scene.h"

#include <array>
#include <limits>
#include <optional>
#include <string>
#include <vector>

/// What a camera sees at distance 1, along its own x and y.
struct ScreenWindow
{
    double left = -1.0, right = 1.0, bottom = -1.0, top = 1.0;

    double get_aspect() const { return (right - left) / (top - bottom); }
};

/// A camera over a shutter. It looks down -z of its own space, y is up.
class View
{
public:
    /// `world_from_camera` at each step of the shutter: one matrix, or as many as the shutter has steps.
    View(std::vector<Matrix> world_from_camera, const ScreenWindow& window)
        : world_from_camera_(std::move(world_from_camera))
        , window_(window)
    {
    }

    /// Through a place of the picture: x from 0 at the left to 1, y from 0 at the top to 1. `time` from 0 to 1.
    Ray make_ray(double x, double y, double time) const;

    /// How wide a pixel of a picture is at a place, archive units, in the middle of the shutter; 0 behind the camera.
    float get_pixel_width(const Vec3& place, const ImageSize& size) const;

private:
    std::vector<Matrix> world_from_camera_;
    ScreenWindow window_;
};

/// A camera of the archive, by its full name or that of the transform it alone stands under: film back, film offsets,
/// squeeze, overscan and fit at the time of the shutter. `size` is set where it was not: 1280 pixels wide, the whole
/// film back high. Throws ToolError when there is no such camera, or it cannot see.
View make_camera_view(const ArchiveSession& session, const std::string& path, const Shutter& shutter,
                      std::optional<ImageSize>& size);

/// Finds the place from which a camera that looks in a given direction sees everything.
class AutomaticView
{
public:
    /// Degrees; see RenderOptions.
    AutomaticView(double azimuth, double elevation, const ImageSize& size);

    /// Adds all that is in a scene; points and threads without a width get those.
    void add(const WorldScene& scene, const DefaultWidths& widths);

    View get_view() const;

private:
    Matrix world_from_view_; ///< rotation only
    Matrix view_from_world_;
    double half_width_ = 0.0, half_height_ = 0.0; ///< of the picture at distance 1
    enum Side { RIGHT, LEFT, TOP, BOTTOM, NEAR, FAR, side_count };
    /// How far out each side of the view's pyramid has to stand; minus infinity when there is nothing to see.
    std::array<double, side_count> sides_;
};
