/// Numbers of a report as people read them.
#include "vo_sys/sys_statistic.h"

#include <cstdio>

CoreString SysStatistic::get_readable_size(const unsigned long long& bytes)
{
    static const char* const units[] = {"KiB", "MiB", "GiB", "TiB", "PiB", "EiB"};
    if (bytes < 1024) return CoreString(std::to_string(bytes) + " B");
    double size = static_cast<double>(bytes) / 1024.0;
    unsigned int unit = 0;
    // 1023.995 would be printed as 1024.00: it already belongs to the next unit.
    for (; size >= 1023.995 && unit < 5; ++unit)
        size /= 1024.0;
    char text[32];
    std::snprintf(text, sizeof(text), "%.2f %s", size, units[unit]);
    return text;
}
