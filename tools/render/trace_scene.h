/// TraceScene: the objects of a picture, ready for rays.
#pragma once

#include "traced_geometry.h"

#include <limits>
#include <memory>
#include <vector>

/// A ray of unit direction at a time from 0 to 1 over the shutter.
struct Ray
{
    Vec3 origin, direction;
    float time = 0.0f;
    float far_end = std::numeric_limits<float>::infinity();
};

/// Where a ray ends.
struct Hit
{
    float distance = 0.0f;
    SurfacePoint surface;
};

/// Takes a scene's geometry over. Rays may be sent by any number of threads at once.
class TraceScene
{
public:
    /// `widths` stand in for those that the archive does not tell. Throws std::runtime_error when the ray tracer fails.
    TraceScene(WorldScene scene, const DefaultWidths& widths, const PixelWidth& pixel_width);

    /// Whether there is nothing to hit.
    bool is_empty() const { return geometries_.empty(); }
    /// The nearest hit; false, `hit` untouched, when there is none.
    bool find_hit(const Ray& ray, Hit& hit) const;
    bool is_blocked(const Ray& ray) const;

private:
    void add(std::unique_ptr<TracedGeometry> geometry);
    void check() const;

    struct ReleaseDevice
    {
        void operator()(RTCDevice device) const { rtcReleaseDevice(device); }
    };
    struct ReleaseScene
    {
        void operator()(RTCScene scene) const { rtcReleaseScene(scene); }
    };

    std::unique_ptr<RTCDeviceTy, ReleaseDevice> device_;
    std::unique_ptr<RTCSceneTy, ReleaseScene> scene_;
    std::vector<std::unique_ptr<TracedGeometry>> geometries_; ///< by the tracer's number
};
