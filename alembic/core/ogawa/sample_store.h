/// @file
/// Stores the samples of a whole archive: equal ones once, whatever property they belong to.
#pragma once

#include "ogawa/file_writer.h"

#include <Alembic/AbcCoreAbstract/All.h>
#include <Alembic/Util/Digest.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace Alembic {
namespace AbcCoreOgawa {
inline namespace ALEMBIC_VERSION_NS {

namespace AbcA = ::Alembic::AbcCoreAbstract;

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

/// Finds the position of a stored sample by its contents. A hash table of 24 bytes a slot, between three eighths and
/// three quarters full: 32 to 64 bytes for each different sample.
class SampleTable
{
public:
    /// Position of the data block with these contents; 0 when there is none.
    std::uint64_t find(const SampleKey& key) const;

    /// Adds a sample that find() does not find. `position` is greater than 0 and below 2^62.
    void insert(const SampleKey& key, std::uint64_t position);

private:
    struct Slot
    {
        Util::Digest contents;
        std::uint64_t position_and_class = 0; ///< the class in the two high bits; 0: the slot is free
    };

    /// The slot that holds these contents, or the free one where they belong.
    static std::size_t slot_for(const std::vector<Slot>& slots, const Util::Digest& contents, std::uint64_t class_bits);
    void grow();

    std::vector<Slot> slots_; ///< a power of two of them, or none
    std::size_t used_ = 0;
};

/// Turns samples into stored bytes, and writes those that the archive does not hold yet.
class SampleStore
{
public:
    explicit SampleStore(Ogawa::FileWriter& file)
        : file_(file)
    {
    }

    /// The bytes that stand in an archive for `pod_count` values of type `pod` at `data`: numbers are the caller's own
    /// memory, strings are put into a buffer that the next call overwrites. Throws for a string with a zero character
    /// and for sizes that memory cannot hold; `property` names the property in the text.
    Ogawa::Bytes encode(const void* data, Util::PlainOldDataType pod, std::uint64_t pod_count,
                        const std::string& property);

    /// The key of encoded bytes. Reads all of them, once (wide strings: a quarter of them).
    static SampleKey key_of(const Ogawa::Bytes& encoded, Util::PlainOldDataType pod);

    /// The child entry of the data block that holds the sample: one that is there already, or a new one.
    std::uint64_t store(const SampleKey& key, const Ogawa::Bytes& encoded);

private:
    Ogawa::FileWriter& file_;
    SampleTable stored_;
    std::vector<char> encoded_strings_;
};

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreOgawa
} // namespace Alembic
