/// @file
/// Two generations of stored samples.
#include "sample_table.h"

#include <utility>

namespace Alembic {
namespace AbcCoreOgawa {
inline namespace ALEMBIC_VERSION_NS {

namespace {

constexpr int class_shift = 62; // positions in a file are signed 64-bit numbers, the container's take 63 bits
constexpr std::uint64_t position_bits = (std::uint64_t(1) << class_shift) - 1;
constexpr std::size_t least_slots = 16;

std::uint64_t class_bits_of(const SampleKey& key)
{
    return std::uint64_t(key.sample_class) << class_shift;
}

} // namespace

/// The slot that holds these contents, or the free one where they belong.
std::size_t SampleTable::Generation::slot_for(const Util::Digest& contents, std::uint64_t class_bits) const
{
    const std::size_t mask = slots.size() - 1;
    std::size_t i = std::size_t(contents.words[0]) & mask;
    while (slots[i].position_and_class != 0 &&
           !(slots[i].contents == contents && (slots[i].position_and_class & ~position_bits) == class_bits))
        i = (i + 1) & mask;
    return i;
}

std::uint64_t SampleTable::Generation::find(const Util::Digest& contents, std::uint64_t class_bits) const
{
    return slots.empty() ? 0 : slots[slot_for(contents, class_bits)].position_and_class & position_bits;
}

void SampleTable::Generation::insert(const Slot& slot)
{
    if ((used + 1) * 4 > slots.size() * 3) {
        Generation larger;
        larger.slots.resize(slots.empty() ? least_slots : slots.size() * 2);
        for (const Slot& kept : slots)
            if (kept.position_and_class != 0) larger.insert(kept);
        *this = std::move(larger);
    }
    slots[slot_for(slot.contents, slot.position_and_class & ~position_bits)] = slot;
    ++used;
}

std::uint64_t SampleTable::find(const SampleKey& key)
{
    const std::uint64_t class_bits = class_bits_of(key);
    std::uint64_t position = young_.find(key.contents, class_bits);
    if (position != 0) return position;
    position = old_.find(key.contents, class_bits);
    if (position != 0) insert_young({key.contents, class_bits | position});
    return position;
}

void SampleTable::insert(const SampleKey& key, std::uint64_t position)
{
    insert_young({key.contents, class_bits_of(key) | position});
}

void SampleTable::insert_young(const Slot& slot)
{
    if (young_.used >= limit_) old_ = std::exchange(young_, Generation());
    young_.insert(slot);
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreOgawa
} // namespace Alembic
