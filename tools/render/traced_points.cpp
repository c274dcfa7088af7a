/// Points as spheres.
#include "group_colors.h"
#include "traced_geometry.h"

#include <array>

namespace {

class TracedPoints : public TracedGeometry
{
public:
    TracedPoints(RTCDevice device, WorldPoints points, float radius)
        : velocities_(std::move(points.velocities))
        , color_(make_name_color(points.path))
    {
        for (unsigned int i = 0; i < points.is_usable.size(); ++i)
            if (points.is_usable[i]) points_.push_back(i);
        if (points_.empty() || !(radius > 0.0f)) return;
        create(device, RTC_GEOMETRY_TYPE_SPHERE_POINT, points.positions.size());
        for (unsigned int step = 0; step < points.positions.size(); ++step) {
            auto* spheres =
                add_buffer<std::array<float, 4>>(RTC_BUFFER_TYPE_VERTEX, step, RTC_FORMAT_FLOAT4, points_.size());
            for (const unsigned int point : points_) {
                const Vec3& position = points.positions[step][point];
                *spheres++ = {position.x, position.y, position.z, radius};
            }
        }
        rtcCommitGeometry(get());
    }

    void describe(const RTCHit& hit, float, SurfacePoint& point) const override
    {
        point.geometric_normal = normalize({hit.Ng_x, hit.Ng_y, hit.Ng_z}, {0, 1, 0});
        point.normal = point.geometric_normal;
        point.color = color_;
        point.velocity = velocities_.is_empty() ? Vec3{} : velocities_[points_[hit.primID]];
        point.has_uv = false;
    }

private:
    std::vector<unsigned int> points_; ///< those that are drawn
    CoreArray<Vec3> velocities_;
    Vec3 color_;
};

} // namespace

std::unique_ptr<TracedGeometry> trace_points(RTCDevice device, WorldPoints points, const DefaultWidths& widths)
{
    return std::make_unique<TracedPoints>(device, std::move(points), 0.5f * widths.points);
}
