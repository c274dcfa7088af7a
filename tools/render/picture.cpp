#include "picture.h"

#include <algorithm>
#include <atomic>
#include <cmath>
#include <system_error>
#include <thread>

namespace {

constexpr int tile_size = 16; // pixels

std::uint8_t encode(float linear)
{
    if (!(linear > 0.0f)) return 0; // what is no number, too
    const float value = linear <= 0.0031308f ? 12.92f * linear : 1.055f * std::pow(linear, 1.0f / 2.4f) - 0.055f;
    return static_cast<std::uint8_t>(std::lround(std::min(value, 1.0f) * 255.0f));
}

class PictureRenderer
{
public:
    PictureRenderer(const TraceScene& scene, const View& view, const Shading& shading, const ImageSize& size,
                    const RenderOptions& options)
        : scene_(scene)
        , view_(view)
        , shading_(shading)
        , options_(options)
        , image_(size.width, size.height)
        , columns_((size.width + tile_size - 1) / tile_size)
        , tile_count_(columns_ * ((size.height + tile_size - 1) / tile_size))
    {
    }

    Image render(const std::function<void(double)>& on_progress)
    {
        std::vector<std::thread> helpers;
        const unsigned int core_count = std::max(std::thread::hardware_concurrency(), 1u);
        try {
            while (helpers.size() + 1 < core_count)
                helpers.emplace_back([this] { work({}); });
        } catch (const std::system_error&) {
            // Fewer threads do the same.
        }
        work(on_progress);
        for (std::thread& helper : helpers)
            helper.join();
        return std::move(image_);
    }

private:
    /// Renders tiles until none is left.
    void work(const std::function<void(double)>& on_progress)
    {
        for (int tile = next_tile_++; tile < tile_count_; tile = next_tile_++) {
            const int left = tile % columns_ * tile_size, top = tile / columns_ * tile_size;
            for (int y = top; y < std::min(top + tile_size, image_.get_height()); ++y)
                for (int x = left; x < std::min(left + tile_size, image_.get_width()); ++x)
                    image_.at(x, y) = render_pixel(x, y);
            if (on_progress) on_progress(static_cast<double>(tile + 1) / tile_count_);
        }
    }

    Pixel render_pixel(int x, int y) const
    {
        Vec3 sum{};
        unsigned int hit_count = 0;
        for (unsigned int i = 0; i < options_.sample_count; ++i) {
            const Sampler sampler(x, y, i);
            const SamplePair place = sampler.get_place();
            const Ray ray = view_.make_ray((x + place.a) / image_.get_width(), (y + place.b) / image_.get_height(),
                                           sampler.get_time());
            Hit hit;
            if (!scene_.find_hit(ray, hit)) continue;
            sum = sum + shading_.get_color(ray, hit, sampler);
            ++hit_count;
        }
        const auto sample_count = static_cast<float>(options_.sample_count);
        const float cover = static_cast<float>(hit_count) / sample_count;
        if (options_.is_transparent) {
            if (hit_count == 0) return {0, 0, 0, 0};
            sum = sum * (1.0f / static_cast<float>(hit_count));
            return {encode(sum.x), encode(sum.y), encode(sum.z),
                    static_cast<std::uint8_t>(std::lround(cover * 255.0f))};
        }
        const float height = 1.0f - (static_cast<float>(y) + 0.5f) / static_cast<float>(image_.get_height());
        sum = sum * (1.0f / sample_count) + Shading::get_background(height) * (1.0f - cover);
        return {encode(sum.x), encode(sum.y), encode(sum.z), 255};
    }

    const TraceScene& scene_;
    const View& view_;
    const Shading& shading_;
    const RenderOptions& options_;
    Image image_;
    const int columns_, tile_count_;
    std::atomic<int> next_tile_{0};
};

} // namespace

Image render_picture(const TraceScene& scene, const View& view, const Shading& shading, const ImageSize& size,
                     const RenderOptions& options, const std::function<void(double)>& on_progress)
{
    return PictureRenderer(scene, view, shading, size, options).render(on_progress);
}
