/// Pictures of scenes.
#pragma once

#include "image.h"
#include "shading.h"

#include <functional>

/// Renders on all cores. `on_progress` is called by the calling thread with what is done, 0 to 1; it may be empty. The
/// same arguments give the same picture.
Image render_picture(const TraceScene& scene, const View& view, const Shading& shading, const ImageSize& size,
                     const RenderOptions& options, const std::function<void(double)>& on_progress);
