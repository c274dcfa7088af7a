/// Array that grows.
#pragma once

#include <initializer_list>

#include "vo_core/core_basic_array.h"

/// Contiguous elements, appended one at a time. When full, the storage doubles (1 when empty). Moving hands the storage
/// over and leaves the source empty.
template <class T>
class CoreVector : public CoreBasicArray<T>
{
    using Base = CoreBasicArray<T>;

public:
    CoreVector() noexcept = default;
    CoreVector(std::initializer_list<T> values)
        : Base(values.begin(), values.size())
    {
    }
    explicit CoreVector(const Base& other)
        : Base(other)
    {
    }

    CoreVector& operator=(const Base& other)
    {
        Base::operator=(other);
        return *this;
    }
    CoreVector& operator=(std::initializer_list<T> values)
    {
        Base::assign(values.begin(), values.size());
        return *this;
    }

    using Base::begin;
    using Base::end;
    using Base::get_data;
    using Base::operator[];
    T* get_data() { return this->data_; }
    T& operator[](std::size_t index)
    {
        assert(index < this->count_);
        return this->data_[index];
    }
    T* begin() { return this->data_; }
    T* end() { return this->data_ + this->count_; }

    /// Appends; `value` may be an element of this vector.
    void add(T value)
    {
        if (this->count_ == this->capacity_) {
            const std::uint64_t doubled = std::min(std::uint64_t(this->count_) * 2, Base::max_count);
            // A vector that is full at the largest count asks for one more and is refused there.
            Base::reallocate(std::max(doubled, std::uint64_t(this->count_) + 1), true);
        }
        ::new (static_cast<void*>(this->data_ + this->count_)) T(std::move(value));
        ++this->count_;
    }
    /// Removes one element; those behind it move up.
    void remove(std::size_t index)
    {
        assert(index < this->count_);
        std::move(begin() + index + 1, end(), begin() + index);
        Base::set_count(this->count_ - 1, true);
    }
    /// Removes one element; the last one takes its place.
    void remove_unordered(std::size_t index)
    {
        assert(index < this->count_);
        if (index + 1 < this->count_) this->data_[index] = std::move(this->data_[this->count_ - 1]);
        Base::set_count(this->count_ - 1, true);
    }
    /// Empties the vector; its storage stays.
    void remove_all() { Base::set_count(0, true); }
    /// Makes room for `count` elements in all.
    void reserve(std::size_t count)
    {
        if (count > this->capacity_) Base::reallocate(count, true);
    }
    /// As CoreArray::resize.
    void resize(std::size_t count) { Base::set_count(count, true); }
};
