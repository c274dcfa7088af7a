#include "frame_renderer.h"

#include "picture.h"
#include "shading.h"
#include "text.h"
#include "tool_library.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

constexpr std::size_t max_looked_at = 9; // pictures that the automatic view is made for
// Radii of the scene.
constexpr float min_width = 0.002f; // about a pixel
constexpr float max_point_width = 0.03f, max_curve_width = 0.012f;
constexpr float dense_width = 0.12f; // by the root of their number: many are small

/// Of one of `count` points or curves.
float find_width(std::size_t count, float max_width)
{
    return std::clamp(dense_width / std::sqrt(static_cast<float>(count)), min_width, max_width);
}

/// The first, the last, and what lies evenly between.
std::vector<double> choose_times(const std::vector<double>& times)
{
    const std::size_t count = std::min(times.size(), max_looked_at);
    std::vector<double> chosen;
    for (std::size_t i = 0; i < count; ++i)
        chosen.push_back(times[count > 1 ? i * (times.size() - 1) / (count - 1) : 0]);
    return chosen;
}

} // namespace

FrameRenderer::FrameRenderer(const ArchiveSession& session, const RenderOptions& options,
                             const std::vector<double>& times, const ImageSize& default_size,
                             const Progress& on_progress)
    : session_(session)
    , options_(options)
    , gatherer_(session, options.object, options.shade == Shade::VELOCITY)
    , size_(options.size)
{
    if (!options.camera.empty())
        make_camera_view(session, options.camera, {times.front(), 0.0}, size_); // sets the size
    if (!size_) size_ = default_size;
    find_view(times, on_progress);
}

void FrameRenderer::find_view(const std::vector<double>& times, const Progress& on_progress)
{
    AutomaticView view(options_.azimuth, options_.elevation, *size_);
    const std::vector<double> chosen = choose_times(times);
    for (std::size_t i = 0; i < chosen.size(); ++i) {
        WorldScene scene = gather(chosen[i]);
        find_default_widths(scene);
        view.add(scene, widths_);
        if (times.size() == 1) gathered_ = std::move(scene);
        on_progress(static_cast<double>(i + 1) / static_cast<double>(chosen.size()));
    }
    automatic_view_ = view.get_view();
}

void FrameRenderer::find_default_widths(const WorldScene& scene)
{
    const float radius = measure(scene).radius;
    std::size_t point_count = 1, curve_count = 1;
    for (const WorldPoints& points : scene.points)
        point_count += points.is_usable.size();
    for (const WorldCurves& object : scene.curves)
        curve_count += object.curves.vertex_counts.get_count();
    const auto choose = [](const std::optional<double>& asked, float found, float before) {
        return asked ? static_cast<float>(*asked) : std::max(found, before);
    };
    widths_.points = choose(options_.point_width, radius * find_width(point_count, max_point_width), widths_.points);
    widths_.curves = choose(options_.curve_width, radius * find_width(curve_count, max_curve_width), widths_.curves);
}

WorldScene FrameRenderer::gather(double time)
{
    WorldScene scene = gatherer_.gather({time, options_.shutter});
    if (gatherer_.has_only_failed()) throw session_.error("no mesh, curves or points can be read.");
    return scene;
}

Image FrameRenderer::render(double time, const Progress& on_progress)
{
    WorldScene scene = gathered_ ? *std::exchange(gathered_, std::nullopt) : gather(time);
    View view = *automatic_view_;
    if (!options_.camera.empty()) {
        std::optional<ImageSize> size = size_;
        view = make_camera_view(session_, options_.camera, {time, options_.shutter}, size);
    }
    const SceneMeasures measures = measure(scene);
    const auto pixel_width = [&](const Vec3& place) { return view.get_pixel_width(place, *size_); };
    const TraceScene traced(std::move(scene), widths_, pixel_width);
    if (traced.is_empty() && !std::exchange(has_warned_, true))
        ToolLog::write(session_.error("there is nothing to see at " + seconds(time) + ".").what());
    const Shading shading(traced, measures, options_.shade, view);
    return render_picture(traced, view, shading, *size_, options_, on_progress);
}
