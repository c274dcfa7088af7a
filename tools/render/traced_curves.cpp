/// Curves as round threads.
#include "curve_segments.h"
#include "group_colors.h"
#include "traced_geometry.h"

#include <algorithm>

namespace {

/// Radii of control points, from stored ones for each point, each curve, all curves, or each end of a segment; which it
/// is shows in their number. `fallback` where there are none that fit.
std::vector<float> find_point_radii(const AbcCurveHeader& curves, std::size_t point_count, float fallback)
{
    const CoreArray<float>& radii = curves.radii;
    const CoreArray<unsigned int>& indices = curves.radius_indices;
    const std::size_t count = indices.is_empty() ? radii.get_count() : indices.get_count();
    const auto radius = [&](std::size_t i) { return indices.is_empty() ? radii[i] : radii[indices[i]]; };
    std::vector<float> result(point_count, count == 1 ? radius(0) : fallback);
    if (count == point_count)
        for (std::size_t i = 0; i < point_count; ++i)
            result[i] = radius(i);
    if (count == point_count || count <= 1) return result;

    // Ends of segments: as many for a curve as its share of what there are, spread over its points.
    const std::size_t curve_count = curves.vertex_counts.get_count();
    const bool is_even = curve_count > 0 && count % curve_count == 0;
    const std::size_t per_curve = is_even ? count / curve_count : 0;
    std::size_t point = 0;
    for (std::size_t curve = 0; is_even && curve < curve_count; ++curve) {
        const unsigned int points = curves.vertex_counts[curve];
        for (unsigned int i = 0; i < points; ++i, ++point) {
            const float place = points > 1 ? static_cast<float>(i) / static_cast<float>(points - 1) : 0.0f;
            const float end = place * static_cast<float>(per_curve - 1);
            const std::size_t before = curve * per_curve + static_cast<std::size_t>(end);
            const std::size_t after = std::min(before + 1, (curve + 1) * per_curve - 1);
            const float weight = end - std::floor(end);
            result[point] = radius(before) * (1.0f - weight) + radius(after) * weight;
        }
    }
    return result;
}

/// Where a map's value for a point or a curve is: what its numbers of values and indices allow.
class CurveMap
{
public:
    template <class Map>
    CurveMap(const Map& map, std::size_t point_count, std::size_t curve_count)
        : indices_(map.indices)
        , value_count_(map.values.get_count())
        , count_(map.indices.is_empty() ? value_count_ : map.indices.get_count())
        , is_per_point_(count_ == point_count)
        , is_per_curve_(!is_per_point_ && count_ == curve_count)
    {
    }

    /// False when the map has no value there.
    bool find(std::size_t point, std::size_t curve, std::size_t& value) const
    {
        const std::size_t place = is_per_point_ ? point : is_per_curve_ ? curve : 0;
        if (count_ == 0 || (!is_per_point_ && !is_per_curve_ && count_ != 1)) return false;
        value = indices_.is_empty() ? place : indices_[place];
        return value < value_count_;
    }

private:
    const CoreArray<unsigned int>& indices_;
    std::size_t value_count_, count_;
    bool is_per_point_, is_per_curve_;
};

/// An end of a thread that no other segment joins.
struct ThreadEnd
{
    std::size_t segment;
    bool is_last; ///< the end where the segment ends
};

class TracedCurves : public TracedGeometry
{
public:
    TracedCurves(RTCDevice device, WorldCurves object, float default_radius, const PixelWidth& pixel_width)
        : object_(std::move(object))
        , parts_(find_curve_segments(object_.curves, object_.positions.front()))
        , color_(make_name_color(object_.path))
    {
        const std::size_t point_count = object_.is_usable.size();
        std::vector<float> radii = find_point_radii(object_.curves, point_count, default_radius / object_.radius_scale);
        for (float& radius : radii)
            radius = is_drawable({radius, 0, 0}) ? std::max(radius * object_.radius_scale, 0.0f) : 0.0f;
        drop_unusable(radii);
        if (parts_.segments.empty()) return;
        create(device, parts_.is_cubic ? RTC_GEOMETRY_TYPE_ROUND_BEZIER_CURVE : RTC_GEOMETRY_TYPE_ROUND_LINEAR_CURVE,
               object_.positions.size());
        for (unsigned int step = 0; step < object_.positions.size(); ++step)
            add_vertices(step, radii, pixel_width);
        auto* indices = add_buffer<unsigned int>(RTC_BUFFER_TYPE_INDEX, 0, RTC_FORMAT_UINT, parts_.segments.size());
        for (const CurveSegment& segment : parts_.segments)
            *indices++ = segment.first_vertex;
        rtcCommitGeometry(get());
        step_count_ = object_.positions.size();
        object_.positions.clear(); // the tracer has its own
        parts_.widths = {};
    }

    void describe(const RTCHit& hit, float, SurfacePoint& point) const override
    {
        describe(hit, hit.primID, hit.u, point);
    }

    /// The same of a hit at `place`, 0 to 1, along a segment.
    void describe(const RTCHit& hit, std::size_t segment_index, float place, SurfacePoint& point) const
    {
        const CurveSegment& segment = parts_.segments[segment_index];
        const BlendedPoint& start = parts_.vertices[segment.first_vertex];
        const BlendedPoint& end = parts_.vertices[segment.first_vertex + (parts_.is_cubic ? 3 : 1)];
        point.geometric_normal = normalize({hit.Ng_x, hit.Ng_y, hit.Ng_z}, {0, 1, 0});
        point.normal = point.geometric_normal;
        point.velocity = {};
        if (!object_.velocities.is_empty())
            point.velocity = mix(start.of(object_.velocities), end.of(object_.velocities), place);
        const std::size_t nearest = place < 0.5f ? nearest_point(start) : nearest_point(end);
        point.color = find_color(nearest, segment.curve);
        find_uv(nearest, segment.curve, point);
    }

    /// Of cubic threads, which the tracer leaves open at their ends. Straight ones have none.
    std::vector<ThreadEnd> find_open_ends() const
    {
        std::vector<ThreadEnd> ends;
        if (!parts_.is_cubic) return ends;
        const std::vector<CurveSegment>& segments = parts_.segments;
        // Whether the segment before `after` leads to it; the ends of a closed curve lead to each other.
        const auto are_joined = [&](std::size_t after) {
            if (after == 0 || after == segments.size() || segments[after - 1].curve != segments[after].curve)
                return parts_.is_closed;
            return segments[after - 1].first_vertex + 4 == segments[after].first_vertex;
        };
        for (std::size_t i = 0; i < segments.size(); ++i) {
            if (!are_joined(i)) ends.push_back({i, false});
            if (!are_joined(i + 1)) ends.push_back({i, true});
        }
        return ends;
    }

    /// Centre and radius at an end, at a step of the motion.
    const std::array<float, 4>& get_vertex(const ThreadEnd& end, unsigned int step) const
    {
        const void* const vertices = rtcGetGeometryBufferData(get(), RTC_BUFFER_TYPE_VERTEX, step);
        const unsigned int vertex = parts_.segments[end.segment].first_vertex + (end.is_last ? 3 : 0);
        return static_cast<const std::array<float, 4>*>(vertices)[vertex];
    }

    std::size_t get_step_count() const { return step_count_; }

private:
    static std::size_t nearest_point(const BlendedPoint& blend)
    {
        const auto heaviest = std::max_element(blend.weights.begin(), blend.weights.end());
        return blend.points[static_cast<std::size_t>(heaviest - blend.weights.begin())];
    }

    /// Drops segments with a point that cannot be drawn, or without any width.
    void drop_unusable(const std::vector<float>& radii)
    {
        const auto is_bad = [&](const CurveSegment& segment) {
            const BlendedPoint& blend = parts_.vertices[segment.first_vertex];
            const BlendedPoint& end = parts_.vertices[segment.first_vertex + (parts_.is_cubic ? 3 : 1)];
            bool has_width = false;
            for (std::size_t i = 0; i < 4; ++i) {
                if (!object_.is_usable[blend.points[i]] || !object_.is_usable[end.points[i]]) return true;
                has_width = has_width || radii[blend.points[i]] > 0.0f || radii[end.points[i]] > 0.0f;
            }
            return !has_width;
        };
        parts_.segments.erase(std::remove_if(parts_.segments.begin(), parts_.segments.end(), is_bad),
                              parts_.segments.end());
    }

    void add_vertices(unsigned int step, const std::vector<float>& radii, const PixelWidth& pixel_width)
    {
        auto* vertices =
            add_buffer<std::array<float, 4>>(RTC_BUFFER_TYPE_VERTEX, step, RTC_FORMAT_FLOAT4, parts_.vertices.size());
        for (std::size_t i = 0; i < parts_.vertices.size(); ++i) {
            const Vec3 position = parts_.vertices[i].of(object_.positions[step]);
            const float radius = std::max(parts_.widths[i].of(radii), 0.5f * pixel_width(position));
            vertices[i] = {position.x, position.y, position.z, radius};
        }
    }

    Vec3 find_color(std::size_t point, std::size_t curve) const
    {
        if (object_.curves.color_maps.is_empty()) return color_;
        const GeometryColorMap& map = object_.curves.color_maps[0];
        std::size_t value = 0;
        if (!CurveMap(map, object_.is_usable.size(), object_.curves.vertex_counts.get_count())
                 .find(point, curve, value))
            return color_;
        const GeometryColor& color = map.values[value];
        return {static_cast<float>(color.red) / 255.0f, static_cast<float>(color.green) / 255.0f,
                static_cast<float>(color.blue) / 255.0f};
    }

    void find_uv(std::size_t point, std::size_t curve, SurfacePoint& out) const
    {
        out.has_uv = false;
        if (object_.curves.uv_maps.is_empty()) return;
        const GeometryUvMap& map = object_.curves.uv_maps[0];
        std::size_t value = 0;
        out.has_uv =
            CurveMap(map, object_.is_usable.size(), object_.curves.vertex_counts.get_count()).find(point, curve, value);
        if (!out.has_uv) return;
        out.u = map.values[value].x;
        out.v = map.values[value].y;
    }

    WorldCurves object_;
    CurveSegments parts_;
    Vec3 color_;
    std::size_t step_count_ = 0;
};

/// Spheres that close the ends of cubic threads.
class TracedThreadEnds : public TracedGeometry
{
public:
    /// `threads` live as long as this.
    TracedThreadEnds(RTCDevice device, const TracedCurves& threads)
        : threads_(threads)
    {
        if (threads.get()) ends_ = threads.find_open_ends();
        if (ends_.empty()) return;
        create(device, RTC_GEOMETRY_TYPE_SPHERE_POINT, threads.get_step_count());
        for (unsigned int step = 0; step < threads.get_step_count(); ++step) {
            auto* spheres =
                add_buffer<std::array<float, 4>>(RTC_BUFFER_TYPE_VERTEX, step, RTC_FORMAT_FLOAT4, ends_.size());
            for (const ThreadEnd& end : ends_)
                *spheres++ = threads.get_vertex(end, step);
        }
        rtcCommitGeometry(get());
    }

    void describe(const RTCHit& hit, float, SurfacePoint& point) const override
    {
        const ThreadEnd& end = ends_[hit.primID];
        threads_.describe(hit, end.segment, end.is_last ? 1.0f : 0.0f, point);
    }

private:
    const TracedCurves& threads_;
    std::vector<ThreadEnd> ends_;
};

} // namespace

std::array<std::unique_ptr<TracedGeometry>, 2> trace_curves(RTCDevice device, WorldCurves curves,
                                                            const DefaultWidths& widths, const PixelWidth& pixel_width)
{
    auto threads = std::make_unique<TracedCurves>(device, std::move(curves), 0.5f * widths.curves, pixel_width);
    auto ends = std::make_unique<TracedThreadEnds>(device, *threads);
    return {std::move(threads), std::move(ends)};
}
