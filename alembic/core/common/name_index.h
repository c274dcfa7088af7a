/// @file
/// Finds a record by its name: an open-addressing hash table of record numbers. The names stay with their owner.
#pragma once

#include "core/common/byte_hash.h"

#include <cstdint>
#include <memory>
#include <string_view>

namespace Alembic {
namespace AbcCoreCommon {
inline namespace ALEMBIC_VERSION_NS {

/// Filled once, then read by any number of threads. `NameOf` is a callable: record number to std::string_view.
class NameIndex
{
public:
    static constexpr std::uint32_t none = 0xffffffff;
    static constexpr std::uint32_t most_records = 0x7fffffff;

    /// Different names there are.
    std::uint32_t size() const { return size_; }

    /// Indexes records 0 to `count` - 1; of two with one name the last is found. `count` is at most `most_records`.
    template <class NameOf>
    void build(std::uint32_t count, const NameOf& name_of)
    {
        count_ = count;
        size_ = 0;
        if (count <= most_unindexed) {
            for (std::uint32_t record = 0; record < count; ++record)
                size_ += find(name_of(record), name_of) == record; // the last of its name
            return;
        }
        std::uint64_t slots = 4;
        while (slots < std::uint64_t(count) * 2)
            slots *= 2;
        slots_.reset(new Slot[slots]);
        mask_ = slots - 1;
        for (std::uint32_t record = 0; record < count; ++record) {
            const std::string_view name = name_of(record);
            const std::uint32_t tag = tag_of(name);
            Slot& slot = slot_of(name, tag, name_of);
            size_ += slot.record == none;
            slot = {record, tag};
        }
    }

    /// The record of that name, or `none`.
    template <class NameOf>
    std::uint32_t find(std::string_view name, const NameOf& name_of) const
    {
        if (slots_) return slot_of(name, tag_of(name), name_of).record;
        for (std::uint32_t record = count_; record-- > 0;)
            if (name_of(record) == name) return record;
        return none;
    }

private:
    /// So few names are compared one by one: most objects have a child or two.
    static constexpr std::uint32_t most_unindexed = 4;

    struct Slot
    {
        std::uint32_t record = none;
        std::uint32_t tag = 0; ///< part of the name's hash, compared before the name is
    };

    static std::uint32_t tag_of(std::string_view name)
    {
        return static_cast<std::uint32_t>(hash_bytes(name, process_seed()));
    }

    /// The slot that holds the name, or the free one where it belongs. There is always a free one.
    template <class NameOf>
    Slot& slot_of(std::string_view name, std::uint32_t wanted, const NameOf& name_of) const
    {
        for (std::uint64_t at = wanted & mask_;; at = (at + 1) & mask_) {
            Slot& slot = slots_[at];
            if (slot.record == none || (slot.tag == wanted && name_of(slot.record) == name)) return slot;
        }
    }

    std::unique_ptr<Slot[]> slots_;
    std::uint64_t mask_ = 0;
    std::uint32_t count_ = 0; ///< records
    std::uint32_t size_ = 0;  ///< different names
};

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreCommon
} // namespace Alembic
