/// What all locks of the host have in common.
#pragma once

#include "vo_core/export.h"

class VO_HOST_EXPORT SysThreadLockBase
{
public:
    enum Duration {
        DURATION_NONE = 0,     ///< try once, do not wait
        DURATION_INFINITE = 1, ///< wait until acquired
    };

    virtual ~SysThreadLockBase();
    /// True when the lock was acquired; always so for DURATION_INFINITE.
    virtual bool lock(const Duration& duration) = 0;
    /// By the thread that holds the lock.
    virtual void unlock() = 0;
};
