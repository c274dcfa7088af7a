/// Stopwatch.
#include "vo_sys/sys_timer.h"

double SysTimer::get_elapsed_time() const
{
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start_).count();
}
