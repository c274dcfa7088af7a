/// AbcHandleRoster: the handles handed out on one open archive and not yet released.
#pragma once

#include <cstddef>
#include <mutex>
#include <vector>

class AbcInputArchiveHandle;

/// Never holds a dangling pointer: a handle that is destroyed strikes itself off, one that is moved enters the handle
/// it was moved to in its place. Only pointers are kept and no handle is touched, so its own mutex is held briefly.
class AbcHandleRoster
{
public:
    void add(AbcInputArchiveHandle* handle);
    /// The last entry takes the place of the removed one.
    void remove(AbcInputArchiveHandle* handle);
    void replace(AbcInputArchiveHandle* handle, AbcInputArchiveHandle* successor);
    /// Removes and returns the first entry; null when there is none.
    AbcInputArchiveHandle* take_first();
    /// Bytes of the array and its storage.
    std::size_t get_memory_size() const;

private:
    mutable std::mutex mutex_;
    std::vector<AbcInputArchiveHandle*> handles_;
};
