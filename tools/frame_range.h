/// FrameRange: the frames that --frames names, and their files.
#pragma once

#include <cstdint>
#include <string>

/// Frames first to last, both included.
struct FrameRange
{
    std::int64_t first = 0, last = 0;

    /// Reads "12" or "1-24"; a number may be negative. False, `range` untouched, for anything else, for a range that
    /// ends before it starts, and for more than a million frames.
    static bool parse(const std::string& text, FrameRange& range);

    std::int64_t get_count() const { return last - first + 1; }
};

/// "walk.obj" and frame 7 give "walk.0007.obj".
std::string make_frame_path(const std::string& path, std::int64_t frame);
