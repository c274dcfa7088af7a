/// Shading: the colour of what a ray hits.
#pragma once

#include "render_options.h"
#include "sampler.h"
#include "trace_scene.h"
#include "view.h"

/// What shading knows of a whole scene.
struct SceneMeasures
{
    float radius = 1.0f;    ///< half of the diagonal of its bounds, archive units; above 0
    float max_speed = 0.0f; ///< of its fastest point, archive units a second
};
SceneMeasures measure(const WorldScene& scene);

class Shading
{
public:
    /// The main light stands behind the view, above it and to its left.
    Shading(const TraceScene& scene, const SceneMeasures& measures, Shade shade, const View& view);

    /// Linear, from 0 on.
    Vec3 get_color(const Ray& ray, const Hit& hit, const Sampler& sampler) const;
    /// What stands behind everything; `height` from 0 at the bottom of the picture to 1.
    static Vec3 get_background(float height);

private:
    Vec3 find_light(const Ray& ray, const Hit& hit, const Vec3& normal, const Sampler& sampler) const;

    const TraceScene& scene_;
    const SceneMeasures measures_;
    const Shade shade_;
    Vec3 to_light_;
};
