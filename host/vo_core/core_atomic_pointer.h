/// A pointer that one thread may replace while others use it.
#pragma once

#include <atomic>

/// Behaves as a `T*`. It guards the pointer, not what it points to: that must outlive its last use.
template <class T>
class CoreAtomicPointer
{
public:
    constexpr CoreAtomicPointer(T* pointer = nullptr) noexcept
        : pointer_(pointer)
    {
    }
    CoreAtomicPointer(const CoreAtomicPointer&) = delete;
    CoreAtomicPointer& operator=(const CoreAtomicPointer&) = delete;

    CoreAtomicPointer& operator=(T* pointer) noexcept
    {
        pointer_.store(pointer, std::memory_order_release);
        return *this;
    }
    operator T*() const noexcept { return pointer_.load(std::memory_order_acquire); }
    T* operator->() const noexcept { return *this; }
    /// Replaces the pointer and returns the one that was there.
    T* exchange(T* pointer) noexcept { return pointer_.exchange(pointer, std::memory_order_acq_rel); }

private:
    std::atomic<T*> pointer_;
};
