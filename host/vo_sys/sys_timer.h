/// Stopwatch.
#pragma once

#include <chrono>

#include "vo_core/export.h"

/// Runs from its construction on; its clock never goes back.
class VO_HOST_EXPORT SysTimer
{
public:
    SysTimer() { reset(); }
    /// Milliseconds, with fractions, since construction or the last `reset`.
    double get_elapsed_time() const;
    void reset() { start_ = std::chrono::steady_clock::now(); }

private:
    std::chrono::steady_clock::time_point start_;
};
