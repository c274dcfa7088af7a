#include "shading.h"

#include "group_colors.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr float two_pi = 6.28318530718f;
constexpr Vec3 clay = {0.62f, 0.58f, 0.53f};
constexpr Vec3 light_color = {1.0f, 0.94f, 0.84f};
constexpr Vec3 sky = {0.78f, 0.86f, 1.0f}, ground = {0.30f, 0.27f, 0.24f};
constexpr Vec3 shadow_light = {0.10f, 0.11f, 0.13f}; // what gets into every corner
constexpr float light_size = 0.12f;                  // of the main light, at distance 1
constexpr float dome_reach = 0.5f;                   // radii of the scene: what is further away does not darken a place
constexpr float grid_lines = 10.0f, line_width = 0.04f; // of UVs

/// A value that is written to the picture as it is.
Vec3 decode(const Vec3& color)
{
    return {decode_srgb(std::clamp(color.x, 0.0f, 1.0f)), decode_srgb(std::clamp(color.y, 0.0f, 1.0f)),
            decode_srgb(std::clamp(color.z, 0.0f, 1.0f))};
}

/// Any unit vector across another one.
Vec3 find_tangent(const Vec3& normal)
{
    return normalize(std::abs(normal.x) > 0.7f ? cross(normal, {0, 1, 0}) : cross(normal, {1, 0, 0}), {0, 0, 1});
}

Vec3 scatter_round(const Vec3& axis, float x, float y, float along)
{
    const Vec3 tangent = find_tangent(axis);
    return normalize(tangent * x + cross(axis, tangent) * y + axis * along, axis);
}

Vec3 color_uv(const SurfacePoint& surface)
{
    if (!surface.has_uv || !std::isfinite(surface.u) || !std::isfinite(surface.v)) return decode({0.5f, 0.5f, 0.5f});
    const auto part = [](float value) { return value - std::floor(value); };
    const bool is_line = part(surface.u * grid_lines) < line_width || part(surface.v * grid_lines) < line_width;
    return decode(Vec3{part(surface.u), part(surface.v), 0.25f} * (is_line ? 0.6f : 1.0f));
}

Vec3 color_velocity(const Vec3& velocity, float max_speed)
{
    const float speed = velocity.get_length();
    if (!(speed > 0.0f) || !(max_speed > 0.0f)) return decode({0.5f, 0.5f, 0.5f});
    // The root shows slow motion, too.
    const Vec3 way = velocity * (0.5f * std::sqrt(std::min(speed / max_speed, 1.0f)) / speed);
    return decode(Vec3{0.5f, 0.5f, 0.5f} + way);
}

} // namespace

SceneMeasures measure(const WorldScene& scene)
{
    Vec3 low{1e30f, 1e30f, 1e30f}, high{-1e30f, -1e30f, -1e30f};
    SceneMeasures measures;
    scene.for_each_object([&](const WorldObject& object) {
        for (const CoreArray<Vec3>& step : object.positions)
            for (std::size_t i = 0; i < step.get_count(); ++i)
                for (std::size_t axis = 0; axis < 3 && object.is_usable[i]; ++axis) {
                    low[axis] = std::min(low[axis], step[i][axis]);
                    high[axis] = std::max(high[axis], step[i][axis]);
                }
        for (const Vec3& velocity : object.velocities)
            measures.max_speed = std::max(measures.max_speed, velocity.get_length());
    });
    const float radius = 0.5f * (high - low).get_length();
    if (low.x <= high.x && radius > 0.0f) measures.radius = radius;
    return measures;
}

Shading::Shading(const TraceScene& scene, const SceneMeasures& measures, Shade shade, const View& view)
    : scene_(scene)
    , measures_(measures)
    , shade_(shade)
{
    const Vec3 forward = view.make_ray(0.5, 0.5, 0.5).direction;
    const Vec3 right =
        normalize(view.make_ray(1.0, 0.5, 0.5).direction - view.make_ray(0.0, 0.5, 0.5).direction, {1, 0, 0});
    const Vec3 up = cross(right, forward);
    to_light_ = normalize(up * 0.85f - forward * 0.6f - right * 0.6f, {0, 1, 0});
}

Vec3 Shading::get_background(float height)
{
    return mix({0.52f, 0.54f, 0.57f}, {0.80f, 0.84f, 0.89f}, height);
}

Vec3 Shading::get_color(const Ray& ray, const Hit& hit, const Sampler& sampler) const
{
    const SurfacePoint& surface = hit.surface;
    switch (shade_) {
    case Shade::NORMAL:
        return decode((surface.normal + Vec3{1, 1, 1}) * 0.5f);
    case Shade::UV:
        return color_uv(surface);
    case Shade::VELOCITY:
        return color_velocity(surface.velocity, measures_.max_speed);
    case Shade::CLAY:
    case Shade::GROUP:
        break;
    }
    // Surfaces are lit on the side that is seen.
    const Vec3 normal = dot(surface.normal, ray.direction) > 0.0f ? -surface.normal : surface.normal;
    return scale(shade_ == Shade::GROUP ? surface.color : clay, find_light(ray, hit, normal, sampler));
}

Vec3 Shading::find_light(const Ray& ray, const Hit& hit, const Vec3& normal, const Sampler& sampler) const
{
    const Vec3& facet = hit.surface.geometric_normal;
    const Vec3 outside = dot(facet, ray.direction) > 0.0f ? -facet : facet;
    Ray onward;
    onward.time = ray.time;
    onward.origin = ray.origin + ray.direction * hit.distance;
    // Far enough off the surface not to hit it again.
    const float size = std::max({std::abs(onward.origin.x), std::abs(onward.origin.y), std::abs(onward.origin.z)});
    onward.origin = onward.origin + outside * (3e-5f * measures_.radius + 1e-6f * size);

    const SamplePair light = sampler.get_light(), dome = sampler.get_dome();
    const float light_distance = light_size * std::sqrt(light.a), light_angle = two_pi * light.b;
    onward.direction =
        scatter_round(to_light_, light_distance * std::cos(light_angle), light_distance * std::sin(light_angle), 1.0f);
    const float slant = dot(normal, onward.direction);
    Vec3 sum = shadow_light;
    if (slant > 0.0f && dot(outside, onward.direction) > 0.0f && !scene_.is_blocked(onward))
        sum = sum + light_color * slant;

    const float dome_distance = std::sqrt(dome.a), dome_angle = two_pi * dome.b;
    onward.direction = scatter_round(normal, dome_distance * std::cos(dome_angle), dome_distance * std::sin(dome_angle),
                                     std::sqrt(1.0f - dome.a));
    onward.far_end = dome_reach * measures_.radius;
    if (dot(outside, onward.direction) > 0.0f && !scene_.is_blocked(onward))
        sum = sum + mix(ground, sky, 0.5f + 0.5f * onward.direction.y) * 0.5f;
    return sum;
}
