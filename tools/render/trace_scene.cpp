#include "trace_scene.h"

#include <fmt/format.h>

#include <stdexcept>

namespace {

void set_ray(const Ray& ray, RTCRay& out)
{
    out.org_x = ray.origin.x;
    out.org_y = ray.origin.y;
    out.org_z = ray.origin.z;
    out.dir_x = ray.direction.x;
    out.dir_y = ray.direction.y;
    out.dir_z = ray.direction.z;
    out.tnear = 0.0f;
    out.tfar = ray.far_end;
    out.time = ray.time;
    out.mask = ~0u;
    out.id = 0;
    out.flags = 0;
}

} // namespace

TraceScene::TraceScene(WorldScene scene, const DefaultWidths& widths, const PixelWidth& pixel_width)
    : device_(rtcNewDevice(nullptr))
{
    if (!device_) check();
    scene_.reset(rtcNewScene(device_.get()));
    rtcSetSceneFlags(scene_.get(), RTC_SCENE_FLAG_ROBUST);
    for (WorldMesh& mesh : scene.meshes)
        add(mesh.is_subdivision ? trace_subdivision(device_.get(), std::move(mesh))
                                : trace_polygons(device_.get(), std::move(mesh)));
    for (WorldCurves& curves : scene.curves)
        for (std::unique_ptr<TracedGeometry>& geometry :
             trace_curves(device_.get(), std::move(curves), widths, pixel_width))
            add(std::move(geometry));
    for (WorldPoints& points : scene.points)
        add(trace_points(device_.get(), std::move(points), widths));
    rtcCommitScene(scene_.get());
    check();
}

void TraceScene::add(std::unique_ptr<TracedGeometry> geometry)
{
    if (!geometry->get()) return;
    rtcAttachGeometryByID(scene_.get(), geometry->get(), static_cast<unsigned int>(geometries_.size()));
    geometries_.push_back(std::move(geometry));
    check();
}

void TraceScene::check() const
{
    const RTCError error = rtcGetDeviceError(device_.get());
    if (error == RTC_ERROR_OUT_OF_MEMORY) throw std::bad_alloc();
    if (error != RTC_ERROR_NONE)
        throw std::runtime_error(fmt::format("the ray tracer fails with error {}", static_cast<int>(error)));
}

bool TraceScene::find_hit(const Ray& ray, Hit& hit) const
{
    RTCIntersectContext context;
    rtcInitIntersectContext(&context);
    RTCRayHit traced;
    set_ray(ray, traced.ray);
    traced.hit.geomID = RTC_INVALID_GEOMETRY_ID;
    traced.hit.primID = RTC_INVALID_GEOMETRY_ID;
    traced.hit.instID[0] = RTC_INVALID_GEOMETRY_ID;
    rtcIntersect1(scene_.get(), &context, &traced);
    if (traced.hit.geomID == RTC_INVALID_GEOMETRY_ID) return false;
    hit.distance = traced.ray.tfar;
    geometries_[traced.hit.geomID]->describe(traced.hit, ray.time, hit.surface);
    return true;
}

bool TraceScene::is_blocked(const Ray& ray) const
{
    RTCIntersectContext context;
    rtcInitIntersectContext(&context);
    RTCRay traced;
    set_ray(ray, traced);
    rtcOccluded1(scene_.get(), &context, &traced);
    return traced.tfar < 0.0f; // what blocks sets it to minus infinity
}
