/// AbcHandleRoster: entries come and go in constant time, but for the search.
#include "handle_roster.h"

#include <algorithm>

void AbcHandleRoster::add(AbcInputArchiveHandle* handle)
{
    const std::lock_guard<std::mutex> guard(mutex_);
    handles_.push_back(handle);
}

void AbcHandleRoster::remove(AbcInputArchiveHandle* handle)
{
    const std::lock_guard<std::mutex> guard(mutex_);
    const auto found = std::find(handles_.begin(), handles_.end(), handle);
    if (found == handles_.end()) return;
    *found = handles_.back();
    handles_.pop_back();
}

void AbcHandleRoster::replace(AbcInputArchiveHandle* handle, AbcInputArchiveHandle* successor)
{
    const std::lock_guard<std::mutex> guard(mutex_);
    std::replace(handles_.begin(), handles_.end(), handle, successor);
}

AbcInputArchiveHandle* AbcHandleRoster::take_first()
{
    const std::lock_guard<std::mutex> guard(mutex_);
    if (handles_.empty()) return nullptr;
    AbcInputArchiveHandle* const first = handles_.front();
    handles_.erase(handles_.begin());
    return first;
}

std::size_t AbcHandleRoster::get_memory_size() const
{
    const std::lock_guard<std::mutex> guard(mutex_);
    return sizeof(handles_) + handles_.capacity() * sizeof(AbcInputArchiveHandle*);
}
