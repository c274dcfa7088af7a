/// Table from keys to values.
#pragma once

#include <cstddef>
#include <utility>
#include <vector>

#include "vo_core/core_hash_traits.h"

/// Entries lie side by side, found through a table of slots (open addressing, at most half full). They are walked in
/// the order of insertion, as long as nothing is removed: a removal puts the last entry into the gap. Pointers to
/// values and iterators hold until the next insertion or removal. Not locked: several threads may read at once.
template <class Key, class Value, class Traits = CoreHashTraits<Key>>
class CoreHashTable
{
public:
    class Entry
    {
    public:
        const Key& get_key() const { return key_; }
        Value& get_value() { return value_; }
        const Value& get_value() const { return value_; }

    private:
        friend class CoreHashTable;
        Entry(unsigned int hash, Key key, Value value)
            : hash_(hash)
            , key_(std::move(key))
            , value_(std::move(value))
        {
        }
        unsigned int hash_;
        Key key_;
        Value value_;
    };
    using iterator = typename std::vector<Entry>::iterator;
    using const_iterator = typename std::vector<Entry>::const_iterator;

    unsigned int get_count() const { return static_cast<unsigned int>(entries_.size()); }
    bool is_empty() const { return entries_.empty(); }
    iterator begin() { return entries_.begin(); }
    iterator end() { return entries_.end(); }
    const_iterator begin() const { return entries_.begin(); }
    const_iterator end() const { return entries_.end(); }

    /// The key's value, or null. `key` is a Key or whatever the traits hash and compare with one.
    template <class Query>
    const Value* find(const Query& key) const
    {
        const std::size_t slot = find_slot(key, Traits::hash(key));
        return slot == no_slot ? nullptr : &entries_[slots_[slot] - 1].value_;
    }
    template <class Query>
    Value* find(const Query& key)
    {
        return const_cast<Value*>(std::as_const(*this).find(key));
    }
    template <class Query>
    bool contains(const Query& key) const
    {
        return find(key) != nullptr;
    }

    /// True when `key` was new; the value of a key that is there already is replaced.
    bool insert(Key key, Value value)
    {
        const unsigned int hash = Traits::hash(key);
        const std::size_t found = find_slot(key, hash);
        if (found != no_slot) {
            entries_[slots_[found] - 1].value_ = std::move(value);
            return false;
        }
        if ((entries_.size() + 1) * 2 > slots_.size()) grow_slots();
        entries_.push_back(Entry(hash, std::move(key), std::move(value)));
        take_slot(hash, static_cast<unsigned int>(entries_.size()));
        return true;
    }

    /// True when there was such a key.
    template <class Query>
    bool remove(const Query& key)
    {
        const std::size_t slot = find_slot(key, Traits::hash(key));
        if (slot == no_slot) return false;
        const unsigned int number = slots_[slot], last_number = get_count();
        if (number != last_number) {
            slots_[slot_of_number(entries_.back().hash_, last_number)] = number;
            std::swap(entries_[number - 1], entries_.back());
        }
        free_slot(slot);
        entries_.pop_back();
        return true;
    }

    void remove_all()
    {
        entries_.clear();
        slots_.clear();
    }

    /// Bytes of the table and its storage, slots of keys and values included; what keys and values own is not seen.
    std::size_t get_memory_size() const
    {
        return sizeof(*this) + entries_.capacity() * sizeof(Entry) + slots_.capacity() * sizeof(unsigned int);
    }

private:
    static constexpr std::size_t no_slot = ~std::size_t(0);

    std::size_t next(std::size_t slot) const { return (slot + 1) & (slots_.size() - 1); }
    std::size_t home(unsigned int hash) const { return hash & (slots_.size() - 1); }

    template <class Query>
    std::size_t find_slot(const Query& key, unsigned int hash) const
    {
        if (slots_.empty()) return no_slot;
        for (std::size_t slot = home(hash); slots_[slot] != 0; slot = next(slot)) {
            const Entry& entry = entries_[slots_[slot] - 1];
            if (entry.hash_ == hash && Traits::equal(entry.key_, key)) return slot;
        }
        return no_slot;
    }

    std::size_t slot_of_number(unsigned int hash, unsigned int number) const
    {
        std::size_t slot = home(hash);
        while (slots_[slot] != number)
            slot = next(slot);
        return slot;
    }

    void take_slot(unsigned int hash, unsigned int number)
    {
        std::size_t slot = home(hash);
        while (slots_[slot] != 0)
            slot = next(slot);
        slots_[slot] = number;
    }

    // Closes the gap: entries behind it that may stand nearer to their home slot move up, so no marker is left.
    void free_slot(std::size_t gap)
    {
        for (std::size_t slot = next(gap); slots_[slot] != 0; slot = next(slot)) {
            const std::size_t wanted = home(entries_[slots_[slot] - 1].hash_), mask = slots_.size() - 1;
            if (((slot - wanted) & mask) < ((slot - gap) & mask)) continue;
            slots_[gap] = slots_[slot];
            gap = slot;
        }
        slots_[gap] = 0;
    }

    void grow_slots()
    {
        slots_.assign(slots_.empty() ? 16 : slots_.size() * 2, 0);
        for (std::size_t i = 0; i < entries_.size(); ++i)
            take_slot(entries_[i].hash_, static_cast<unsigned int>(i + 1));
    }

    std::vector<Entry> entries_;
    std::vector<unsigned int> slots_; // a power of two; entry index + 1, 0 where free
};
