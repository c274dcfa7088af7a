/// What CoreArray and CoreVector share: contiguous storage, read through this interface.
#pragma once

#include <algorithm>
#include <cassert>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <memory>
#include <new>
#include <stdexcept>
#include <type_traits>
#include <utility>

#include "vo_core/core_memory.h"

/// Read interface of every contiguous container. Functions that only read take a `const CoreBasicArray<T>&`.
template <class T>
class CoreBasicArray
{
public:
    using value_type = T;

    unsigned int get_count() const { return count_; }
    bool is_empty() const { return count_ == 0; }
    /// Null as long as nothing was ever stored.
    const T* get_data() const { return data_; }
    const T& operator[](std::size_t index) const
    {
        assert(index < count_);
        return data_[index];
    }
    const T* begin() const { return data_; }
    const T* end() const { return data_ + count_; }

    bool contains(const T& value) const { return std::find(begin(), end(), value) != end(); }
    /// Bytes of this object and of its storage, reserved elements included; what elements own themselves is not seen.
    std::size_t get_memory_size() const { return sizeof(*this) + std::size_t(capacity_) * sizeof(T); }

    bool operator==(const CoreBasicArray& other) const
    {
        return count_ == other.count_ && std::equal(begin(), end(), other.begin());
    }
    bool operator!=(const CoreBasicArray& other) const { return !(*this == other); }

protected:
    CoreBasicArray() noexcept = default;
    CoreBasicArray(const T* source, std::size_t count) { append_copies(source, count); }
    CoreBasicArray(const CoreBasicArray& other)
        : CoreBasicArray(other.data_, other.count_)
    {
    }
    CoreBasicArray(CoreBasicArray&& other) noexcept { swap(other); }
    CoreBasicArray& operator=(const CoreBasicArray& other)
    {
        if (this != &other) assign(other.data_, other.count_);
        return *this;
    }
    CoreBasicArray& operator=(CoreBasicArray&& other) noexcept
    {
        if (this != &other) {
            free_storage();
            swap(other);
        }
        return *this;
    }
    ~CoreBasicArray() { free_storage(); }

    /// `source` must not lie in this container.
    void assign(const T* source, std::size_t count)
    {
        if constexpr (std::is_trivially_copyable_v<T>) {
            set_count(count, false);
            if (count != 0) std::memcpy(static_cast<void*>(data_), source, count * sizeof(T));
        } else {
            const std::size_t reused = std::min<std::size_t>(count, count_);
            if (count > capacity_) {
                CoreBasicArray copy(source, count); // all or nothing: a failing copy leaves the old elements
                swap(copy);
                return;
            }
            std::copy(source, source + reused, data_);
            if (count < count_) set_count(count, true);
            append_copies(source + reused, count - reused);
        }
    }

    /// New elements of a trivial type are not filled; others are default-constructed. With `keep_elements` false the
    /// storage is replaced without copying and all elements are unspecified. Throws std::length_error, std::bad_alloc.
    void set_count(std::uint64_t count, bool keep_elements)
    {
        if (count > capacity_) reallocate(count, keep_elements);
        if constexpr (is_plain) {
            count_ = static_cast<unsigned int>(count);
        } else {
            while (count_ > count)
                std::destroy_at(data_ + --count_);
            for (; count_ < count; ++count_)
                ::new (static_cast<void*>(data_ + count_)) T();
        }
    }

    void reallocate(std::uint64_t capacity, bool keep_elements)
    {
        if (capacity > max_count) throw std::length_error("a host array holds at most 4294967295 elements");
        if (!keep_elements) free_storage();
        T* const fresh = static_cast<T*>(CoreMemory::allocate(checked_bytes(capacity), alignof(T)));
        try {
            move_elements_to(fresh);
        } catch (...) {
            CoreMemory::release(fresh);
            throw;
        }
        std::destroy(data_, data_ + count_);
        CoreMemory::release(data_);
        data_ = fresh;
        capacity_ = static_cast<unsigned int>(capacity);
    }

    void free_storage() noexcept
    {
        std::destroy(data_, data_ + count_);
        CoreMemory::release(data_);
        data_ = nullptr;
        count_ = capacity_ = 0;
    }

    void swap(CoreBasicArray& other) noexcept
    {
        std::swap(data_, other.data_);
        std::swap(count_, other.count_);
        std::swap(capacity_, other.capacity_);
    }

    static constexpr std::uint64_t max_count = std::numeric_limits<unsigned int>::max();
    static constexpr bool is_plain =
        std::is_trivially_default_constructible_v<T> && std::is_trivially_destructible_v<T>;

    T* data_ = nullptr;
    unsigned int count_ = 0;
    unsigned int capacity_ = 0;

private:
    static std::size_t checked_bytes(std::uint64_t count)
    {
        if (count > std::numeric_limits<std::ptrdiff_t>::max() / sizeof(T)) throw std::bad_alloc();
        return static_cast<std::size_t>(count) * sizeof(T);
    }

    void append_copies(const T* source, std::size_t count)
    {
        if (count_ + std::uint64_t(count) > capacity_) reallocate(count_ + std::uint64_t(count), true);
        try {
            std::uninitialized_copy_n(source, count, data_ + count_);
        } catch (...) {
            if (count_ == 0) free_storage(); // a constructor that throws gets no destructor call
            throw;
        }
        count_ += static_cast<unsigned int>(count);
    }

    void move_elements_to(T* target)
    {
        if constexpr (std::is_trivially_copyable_v<T>) {
            if (count_ != 0) std::memcpy(static_cast<void*>(target), data_, count_ * sizeof(T));
        } else if constexpr (std::is_nothrow_move_constructible_v<T> || !std::is_copy_constructible_v<T>) {
            std::uninitialized_move_n(data_, count_, target);
        } else {
            std::uninitialized_copy_n(data_, count_, target);
        }
    }
};
