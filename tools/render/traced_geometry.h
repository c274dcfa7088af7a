/// TracedGeometry: one object as the ray tracer has it, and what it knows of its surface.
#pragma once

#include "vector_math.h"
#include "world_scene.h"

#include <embree3/rtcore.h>

#include <array>
#include <functional>
#include <memory>
#include <new>
#include <string>

/// What shading asks of a point of a surface.
struct SurfacePoint
{
    Vec3 normal;           ///< on the outside, length 1: stored or smooth where there is such
    Vec3 geometric_normal; ///< of the surface that was hit, length 1
    Vec3 color;            ///< of its group or object, or stored; linear, 0 to 1
    Vec3 velocity;         ///< archive units a second; 0 unless the scene was made with velocities
    float u = 0.0f, v = 0.0f;
    bool has_uv = false;
};

/// Sizes that the archive does not tell, archive units.
struct DefaultWidths
{
    float points = 0.0f, curves = 0.0f;
};

/// How wide a pixel is at a place in the world, archive units; 0 behind the view.
using PixelWidth = std::function<float(const Vec3& place)>;

class TracedGeometry
{
public:
    virtual ~TracedGeometry() = default;

    /// Null when there is nothing to hit.
    RTCGeometry get() const { return geometry_.get(); }
    /// Fills all fields at a hit on this geometry; `time` from 0 to 1 over the shutter. Called by many threads.
    virtual void describe(const RTCHit& hit, float time, SurfacePoint& point) const = 0;

protected:
    struct Release
    {
        void operator()(RTCGeometry geometry) const { rtcReleaseGeometry(geometry); }
    };

    void create(RTCDevice device, RTCGeometryType type, std::size_t step_count)
    {
        geometry_.reset(rtcNewGeometry(device, type));
        rtcSetGeometryTimeStepCount(geometry_.get(), static_cast<unsigned int>(step_count));
    }

    /// Three numbers in the space of four: the tracer reads four at once, and wants none of them to be no number.
    struct alignas(16) PaddedVec3
    {
        float x, y, z, padding;
    };
    void add_vectors(RTCBufferType type, unsigned int slot, const CoreArray<Vec3>& vectors)
    {
        auto* out = add_buffer<PaddedVec3>(type, slot, RTC_FORMAT_FLOAT3, vectors.get_count());
        for (const Vec3& vector : vectors)
            *out++ = {vector.x, vector.y, vector.z, 0.0f};
    }

    /// A buffer of the tracer's own, to be filled; padded as the tracer wants it. Throws std::bad_alloc.
    template <class T>
    T* add_buffer(RTCBufferType type, unsigned int slot, RTCFormat format, std::size_t count)
    {
        void* const buffer = rtcSetNewGeometryBuffer(geometry_.get(), type, slot, format, sizeof(T), count);
        if (!buffer) throw std::bad_alloc();
        return static_cast<T*>(buffer);
    }

    std::unique_ptr<RTCGeometryTy, Release> geometry_;
};

/// Whether the ray tracer can subdivide a mesh: faces have at most 15 corners, points at most 60 faces.
bool can_subdivide(const WorldMesh& mesh);

/// Each makes the geometry of one object. Throws std::bad_alloc.
std::unique_ptr<TracedGeometry> trace_polygons(RTCDevice device, WorldMesh mesh);
std::unique_ptr<TracedGeometry> trace_subdivision(RTCDevice device, WorldMesh mesh);
/// Threads are at least a pixel wide wherever they have a width at all: finer ones would be lost between the rays.
/// The second geometry closes the ends of the first, and needs it as long as it lives itself.
std::array<std::unique_ptr<TracedGeometry>, 2> trace_curves(RTCDevice device, WorldCurves curves,
                                                            const DefaultWidths& widths, const PixelWidth& pixel_width);
std::unique_ptr<TracedGeometry> trace_points(RTCDevice device, WorldPoints points, const DefaultWidths& widths);
