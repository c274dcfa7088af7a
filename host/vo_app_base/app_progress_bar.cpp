/// Progress of a long task, on a terminal.
#include "vo_app_base/app_progress_bar.h"

#include <algorithm>
#include <cmath>
#include <string>

#include <unistd.h>

namespace {

constexpr int bar_width = 40;            ///< characters
constexpr double redraw_interval = 50.0; ///< milliseconds; drawing more often only costs time

} // namespace

AppProgressBar::AppProgressBar(const CoreString& title, std::FILE* stream)
    : title_(title)
    , stream_(stream)
    , is_terminal_(stream && isatty(fileno(stream)) == 1)
{
}

AppProgressBar::~AppProgressBar()
{
    if (drawn_percent_ < 0) return;
    std::fputs("\r\033[K", stream_);
    std::fflush(stream_);
}

void AppProgressBar::set_value(const float& value)
{
    if (std::isnan(value)) return;
    value_ = std::clamp(value, 0.0f, 1.0f);
    if (is_terminal_) draw();
}

void AppProgressBar::step(const unsigned int& done)
{
    if (step_count_ != 0) set_value(static_cast<float>(static_cast<double>(done) / step_count_));
}

void AppProgressBar::draw()
{
    const int percent = static_cast<int>(value_ * 100.0f);
    if (percent == drawn_percent_) return;
    const bool is_end = percent == 100 || drawn_percent_ < 0;
    if (!is_end && since_drawn_.get_elapsed_time() < redraw_interval) return;
    const int filled = static_cast<int>(value_ * bar_width);
    const std::string bar = std::string(filled, '#') + std::string(bar_width - filled, '.');
    const char* const gap = title_.is_empty() ? "" : " ";
    std::fprintf(stream_, "\r%s%s[%s] %3d%%", title_.get_data(), gap, bar.c_str(), percent);
    std::fflush(stream_);
    drawn_percent_ = percent;
    since_drawn_.reset();
}
