/// Array of a fixed size: it changes only when told to.
#pragma once

#include <initializer_list>

#include "vo_core/core_basic_array.h"

/// Contiguous elements whose number is set by `resize`. Moving hands the storage over and leaves the source empty.
/// Beware of braces: `CoreArray<int>(3)` has three elements, `CoreArray<int>{3}` has one, of value 3.
template <class T>
class CoreArray : public CoreBasicArray<T>
{
    using Base = CoreBasicArray<T>;

public:
    CoreArray() noexcept = default;
    explicit CoreArray(std::size_t count) { resize(count); }
    CoreArray(std::initializer_list<T> values)
        : Base(values.begin(), values.size())
    {
    }
    CoreArray(const T* values, std::size_t count)
        : Base(values, count)
    {
    }
    explicit CoreArray(const Base& other)
        : Base(other)
    {
    }

    CoreArray& operator=(const Base& other)
    {
        Base::operator=(other);
        return *this;
    }
    CoreArray& operator=(std::initializer_list<T> values)
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

    /// The first elements keep their values, also when storage has to grow; new elements of a trivial type are not
    /// filled, others are default-constructed. Storage is kept when `count` fits. At most 4294967295 elements (else
    /// std::length_error); std::bad_alloc when memory is short: the array is then as it was.
    void resize(std::size_t count) { Base::set_count(count, true); }
    /// As `resize` for an array that is about to be filled: old elements are not carried over, their memory is given
    /// back before new memory is taken. After std::bad_alloc the array is empty.
    void resize_for_overwrite(std::size_t count) { Base::set_count(count, false); }
    /// Sets every element.
    void fill(const T& value) { std::fill(begin(), end(), value); }
    /// Empties the array and gives its storage back.
    void clear() { Base::free_storage(); }
};
