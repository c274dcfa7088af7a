/// @file
/// Where the samples stand that an archive holds already.
#pragma once

#include <Alembic/Util/Config.h>
#include <Alembic/Util/Digest.h>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace Alembic {
namespace AbcCoreOgawa {
inline namespace ALEMBIC_VERSION_NS {

/// Samples of two classes are never taken for equal, those of all numeric types are by their bytes alone.
enum SampleClass : std::uint8_t {
    SAMPLE_CLASS_NUMBERS = 0,
    SAMPLE_CLASS_STRINGS = 1,
    SAMPLE_CLASS_WIDE_STRINGS = 2,
};

/// Identifies what a sample holds.
struct SampleKey
{
    Util::Digest digest;   ///< as stored before the sample's bytes; zero for a sample without elements
    Util::Digest contents; ///< what is compared: the digest, for wide strings together with their number
    SampleClass sample_class = SAMPLE_CLASS_NUMBERS;
};

inline bool operator==(const SampleKey& a, const SampleKey& b)
{
    return a.contents == b.contents && a.sample_class == b.sample_class;
}

inline bool operator!=(const SampleKey& a, const SampleKey& b)
{
    return !(a == b);
}

/// Finds the position of a stored sample by its contents. Does not grow with the number of samples: it remembers at
/// least the last `limit` different ones that were added or found, and at most twice as many. At 32 to 64 bytes each
/// that is 6 MiB for the 65,536 that are always remembered, and up to 512 bytes for each property.
class SampleTable
{
public:
    static constexpr std::size_t least_limit = 65536;
    static constexpr std::size_t limit_per_property = 4; ///< what a property of a scene at rest needs is one

    std::size_t limit() const { return limit_; }

    /// Remembers more from now on, because the archive has one property more.
    void make_room_for_property() { limit_ += limit_per_property; }

    /// Position of the data block with these contents; 0 when it is not known.
    std::uint64_t find(const SampleKey& key);

    /// Adds a sample that find() does not find. `position` is greater than 0 and below 2^62.
    void insert(const SampleKey& key, std::uint64_t position);

private:
    struct Slot
    {
        Util::Digest contents;
        std::uint64_t position_and_class = 0; ///< the class in the two high bits; 0: the slot is free
    };

    /// A hash table with open addressing, between three eighths and three quarters full.
    struct Generation
    {
        std::vector<Slot> slots; ///< a power of two of them, or none
        std::size_t used = 0;

        std::uint64_t find(const Util::Digest& contents, std::uint64_t class_bits) const;
        void insert(const Slot& slot);
        std::size_t slot_for(const Util::Digest& contents, std::uint64_t class_bits) const;
    };

    void insert_young(const Slot& slot);

    // What is found in the old generation moves to the young one. When that is full it becomes the old one, and what
    // was old and not asked for in all that time is forgotten.
    Generation young_;
    Generation old_;
    std::size_t limit_ = least_limit;
};

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreOgawa
} // namespace Alembic
