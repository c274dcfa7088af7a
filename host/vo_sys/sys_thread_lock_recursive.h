/// Lock that its holder may take again.
#pragma once

#include <mutex>

#include "vo_sys/sys_thread_lock_base.h"

/// Taken as often as it is given back. A copy is a new lock that nobody holds, and an assignment leaves the lock as it
/// is: so records that hold a lock by value can be copied.
class VO_HOST_EXPORT SysThreadLockRecursive : public SysThreadLockBase
{
public:
    SysThreadLockRecursive();
    SysThreadLockRecursive(const SysThreadLockRecursive& other);
    SysThreadLockRecursive& operator=(const SysThreadLockRecursive& other);
    ~SysThreadLockRecursive() override;

    bool lock(const Duration& duration) override;
    void unlock() override;

private:
    std::recursive_mutex mutex_;
};
