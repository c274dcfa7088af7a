/// Lock that its holder may take again.
#include "vo_sys/sys_thread_lock_recursive.h"

SysThreadLockBase::~SysThreadLockBase() = default;

SysThreadLockRecursive::SysThreadLockRecursive() = default;
SysThreadLockRecursive::SysThreadLockRecursive(const SysThreadLockRecursive& other)
    : SysThreadLockBase(other)
{
}
SysThreadLockRecursive& SysThreadLockRecursive::operator=(const SysThreadLockRecursive&)
{
    return *this;
}
SysThreadLockRecursive::~SysThreadLockRecursive() = default;

bool SysThreadLockRecursive::lock(const Duration& duration)
{
    if (duration == DURATION_NONE) return mutex_.try_lock();
    mutex_.lock();
    return true;
}

void SysThreadLockRecursive::unlock()
{
    mutex_.unlock();
}
