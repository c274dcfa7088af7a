/// Numbers of a report as people read them.
#pragma once

#include "vo_core/core_string.h"

class VO_HOST_EXPORT SysStatistic
{
public:
    /// A byte count as text: "0 B", "1023 B", "1.50 KiB", "23.40 MiB", ... up to EiB.
    static CoreString get_readable_size(const unsigned long long& bytes);
};
