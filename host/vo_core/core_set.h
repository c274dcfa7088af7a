/// Set of values.
#pragma once

#include "vo_core/core_hash_table.h"

/// Each value once; walked as CoreHashTable is.
template <class T, class Traits = CoreHashTraits<T>>
class CoreSet
{
    struct Nothing
    {
    };
    using Table = CoreHashTable<T, Nothing, Traits>;

public:
    class const_iterator
    {
    public:
        explicit const_iterator(typename Table::const_iterator at)
            : at_(at)
        {
        }
        const T& operator*() const { return at_->get_key(); }
        const_iterator& operator++()
        {
            ++at_;
            return *this;
        }
        bool operator==(const const_iterator& other) const { return at_ == other.at_; }
        bool operator!=(const const_iterator& other) const { return at_ != other.at_; }

    private:
        typename Table::const_iterator at_;
    };

    /// True when `value` was new.
    bool insert(T value) { return table_.insert(std::move(value), Nothing()); }
    /// `value` is a T or whatever the traits hash and compare with one.
    template <class Query>
    bool contains(const Query& value) const
    {
        return table_.contains(value);
    }
    /// True when it was there.
    template <class Query>
    bool remove(const Query& value)
    {
        return table_.remove(value);
    }
    void remove_all() { table_.remove_all(); }
    unsigned int get_count() const { return table_.get_count(); }
    bool is_empty() const { return table_.is_empty(); }
    std::size_t get_memory_size() const { return table_.get_memory_size(); }
    const_iterator begin() const { return const_iterator(table_.begin()); }
    const_iterator end() const { return const_iterator(table_.end()); }

private:
    Table table_;
};
