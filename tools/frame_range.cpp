#include "frame_range.h"

#include <fmt/format.h>

#include <charconv>
#include <cstdlib>
#include <filesystem>

namespace {

constexpr std::int64_t max_frame = 1000000000; // also keeps differences far from overflow
constexpr std::int64_t max_frame_count = 1000000;

/// Reads a number from the front of the text; null when there is none.
const char* parse_frame(const char* begin, const char* end, std::int64_t& frame)
{
    const auto [stop, error] = std::from_chars(begin, end, frame);
    return error == std::errc() && std::abs(frame) <= max_frame ? stop : nullptr;
}

} // namespace

bool FrameRange::parse(const std::string& text, FrameRange& range)
{
    const char* const end = text.data() + text.size();
    FrameRange parsed;
    const char* stop = parse_frame(text.data(), end, parsed.first);
    if (!stop) return false;
    parsed.last = parsed.first;
    if (stop != end) {
        if (*stop != '-') return false;
        stop = parse_frame(stop + 1, end, parsed.last);
    }
    if (stop != end || parsed.last < parsed.first || parsed.get_count() > max_frame_count) return false;
    range = parsed;
    return true;
}

std::string make_frame_path(const std::string& path, std::int64_t frame)
{
    const std::filesystem::path whole(path);
    const std::string digits = fmt::format("{}{:04}", frame < 0 ? "-" : "", std::abs(frame));
    const std::string name = whole.stem().string() + "." + digits + whole.extension().string();
    return (whole.parent_path() / name).string();
}
