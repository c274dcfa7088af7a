/// FrameRenderer: pictures of an archive at any time.
#pragma once

#include "archive_session.h"
#include "image.h"
#include "render_options.h"
#include "scene_gatherer.h"
#include "view.h"

#include <functional>
#include <optional>
#include <vector>

/// Renders pictures that belong together: all are seen from the same place, unless a camera moves, and points and
/// threads without widths have the same.
class FrameRenderer
{
public:
    using Progress = std::function<void(double)>; ///< called with what is done, 0 to 1

    /// Looks at up to nine of the times (seconds) to find the view. `default_size` is taken where neither the options
    /// nor a camera tell another. Throws ToolError when there is no such camera or object.
    FrameRenderer(const ArchiveSession& session, const RenderOptions& options, const std::vector<double>& times,
                  const ImageSize& default_size, const Progress& on_progress);

    /// The picture at a time. Throws ToolError when there is something to see and none of it can be read.
    Image render(double time, const Progress& on_progress);

    const ImageSize& get_size() const { return *size_; }
    /// Objects that could not be read at one of the times so far.
    std::size_t get_left_out_count() const { return gatherer_.get_left_out_count(); }

private:
    void find_view(const std::vector<double>& times, const Progress& on_progress);
    void find_default_widths(const WorldScene& scene);
    WorldScene gather(double time);

    const ArchiveSession& session_;
    const RenderOptions& options_;
    SceneGatherer gatherer_;
    std::optional<ImageSize> size_;
    std::optional<View> automatic_view_;
    DefaultWidths widths_;
    std::optional<WorldScene> gathered_; ///< of the only time
    bool has_warned_ = false;            ///< that there is nothing to see
};
