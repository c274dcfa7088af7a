/// Progress of a long task.
#pragma once

#include <cstdio>

#include "vo_core/core_string.h"
#include "vo_sys/sys_timer.h"

/// Draws a bar on one line of a terminal and stays silent in a pipe or a file. Used by one thread. Applications with
/// windows of their own override the virtual functions.
class VO_HOST_EXPORT AppProgressBar
{
public:
    /// `stream` must outlive the bar; null draws nothing.
    explicit AppProgressBar(const CoreString& title = "", std::FILE* stream = stderr);
    /// Wipes the line that was drawn.
    virtual ~AppProgressBar();
    AppProgressBar(const AppProgressBar&) = delete;
    AppProgressBar& operator=(const AppProgressBar&) = delete;

    /// 0 at the start, 1 when all is done.
    virtual float get_value() const { return value_; }
    /// Values outside 0 to 1 are brought to the nearer end; what is not a number is ignored.
    virtual void set_value(const float& value);
    /// Number of steps that `step` counts.
    virtual void set_step_count(const unsigned int& count) { step_count_ = count; }
    /// `done` steps are done: the value becomes done / step count. Ignored when the step count is 0.
    virtual void step(const unsigned int& done);

private:
    void draw();

    CoreString title_;
    std::FILE* stream_;
    bool is_terminal_;
    float value_ = 0.0f;
    unsigned int step_count_ = 0;
    int drawn_percent_ = -1; ///< -1 as long as nothing was drawn
    SysTimer since_drawn_;
};
