#include "view.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double half_field = 0.32;  // of the picture's longer side at distance 1: about 35 degrees in all
constexpr double margin = 1.08;      // free space round everything
constexpr double min_distance = 0.6; // of the depth of everything: what is near must not hide the rest
constexpr double radians_per_degree = 0.017453292519943295;

} // namespace

Ray View::make_ray(double x, double y, double time) const
{
    const std::size_t last = world_from_camera_.size() - 1;
    const double place = time * static_cast<double>(last);
    const std::size_t before = std::min(static_cast<std::size_t>(place), last), after = std::min(before + 1, last);
    const double weight = place - static_cast<double>(before);
    const GMathVec3<double> direction = {window_.left + (window_.right - window_.left) * x,
                                         window_.top + (window_.bottom - window_.top) * y, -1.0};
    const auto blend = [&](auto&& transform) {
        const GMathVec3<double> a = transform(world_from_camera_[before]), b = transform(world_from_camera_[after]);
        return a * (1.0 - weight) + b * weight;
    };
    const GMathVec3<double> origin = blend([](const Matrix& m) { return m.transform_point({0, 0, 0}); });
    GMathVec3<double> along = blend([&](const Matrix& m) { return m.transform_vector(direction); });
    const double length = along.get_length();
    if (length > 0.0) along = along * (1.0 / length);
    Ray ray;
    ray.origin = {static_cast<float>(origin.x), static_cast<float>(origin.y), static_cast<float>(origin.z)};
    ray.direction = {static_cast<float>(along.x), static_cast<float>(along.y), static_cast<float>(along.z)};
    ray.time = static_cast<float>(time);
    return ray;
}

float View::get_pixel_width(const Vec3& place, const ImageSize& size) const
{
    const Matrix& matrix = world_from_camera_[world_from_camera_.size() / 2];
    const GMathVec3<double> back = matrix.transform_vector({0, 0, 1}), right = matrix.transform_vector({1, 0, 0});
    const GMathVec3<double> origin = matrix.transform_point({0, 0, 0});
    const double depth = dot(origin - GMathVec3<double>{place.x, place.y, place.z}, back) / dot(back, back);
    const double width = depth * right.get_length() * (window_.right - window_.left) / size.width;
    return std::isfinite(width) ? static_cast<float>(std::max(width, 0.0)) : 0.0f;
}

AutomaticView::AutomaticView(double azimuth, double elevation, const ImageSize& size)
{
    const double a = azimuth * radians_per_degree, e = elevation * radians_per_degree;
    const GMathVec3<double> back = {std::sin(a) * std::cos(e), std::sin(e), std::cos(a) * std::cos(e)};
    const GMathVec3<double> right = {std::cos(a), 0.0, -std::sin(a)};
    const GMathVec3<double> up = cross(back, right);
    for (std::size_t axis = 0; axis < 3; ++axis) {
        world_from_view_[axis][0] = right[axis];
        world_from_view_[axis][1] = up[axis];
        world_from_view_[axis][2] = back[axis];
    }
    view_from_world_ = world_from_view_.get_transpose();
    const double longer = std::max(size.width, size.height);
    half_width_ = half_field * size.width / longer;
    half_height_ = half_field * size.height / longer;
    sides_.fill(-std::numeric_limits<double>::infinity());
}

void AutomaticView::add(const WorldScene& scene, const DefaultWidths& widths)
{
    // Seen from (x, y, d) a point is inside when |point.x - x| <= half width * (d - point.z): each side asks for the
    // largest of one sum over all points, and so does the bottom of the view.
    const double wide = half_width_ / margin, high = half_height_ / margin;
    const double default_radius = 0.5 * std::max(widths.points, widths.curves);
    scene.for_each_object([&](const WorldObject& object) {
        const double radius = object.max_radius > 0.0f ? object.max_radius : default_radius;
        for (const CoreArray<Vec3>& step : object.positions)
            for (std::size_t i = 0; i < step.get_count(); ++i) {
                if (!object.is_usable[i]) continue;
                const GMathVec3<double> p = view_from_world_.transform_vector({step[i].x, step[i].y, step[i].z});
                const double values[side_count] = {
                    p.x + wide * p.z, -p.x + wide * p.z, p.y + high * p.z, -p.y + high * p.z, p.z, -p.z};
                for (int side = 0; side < side_count; ++side)
                    sides_[side] = std::max(sides_[side], values[side] + radius);
            }
    });
}

View AutomaticView::get_view() const
{
    const ScreenWindow window = {-half_width_, half_width_, -half_height_, half_height_};
    const double wide = half_width_ / margin, high = half_height_ / margin;
    if (!std::isfinite(sides_[NEAR])) return View({world_from_view_}, window); // nothing to see, from anywhere
    const double depth = sides_[NEAR] + sides_[FAR];
    double distance =
        std::max((sides_[RIGHT] + sides_[LEFT]) / (2.0 * wide), (sides_[TOP] + sides_[BOTTOM]) / (2.0 * high));
    distance = std::max(distance, sides_[NEAR] + min_distance * depth);
    if (!(distance > sides_[NEAR])) distance = sides_[NEAR] + 1.0; // a single point
    const GMathVec3<double> place = {(sides_[RIGHT] - sides_[LEFT]) / 2.0, (sides_[TOP] - sides_[BOTTOM]) / 2.0,
                                     distance};
    Matrix world_from_camera = world_from_view_;
    const GMathVec3<double> world_place = world_from_view_.transform_vector(place);
    for (std::size_t axis = 0; axis < 3; ++axis)
        world_from_camera[axis][3] = world_place[axis];
    return View({world_from_camera}, window);
}
