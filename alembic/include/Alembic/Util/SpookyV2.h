/// SpookyHash V2, 128 bits: the hash of properties and objects.
#pragma once

#include <Alembic/Util/Foundation.h>

namespace Alembic {
namespace Util {
inline namespace ALEMBIC_VERSION_NS {

/// Hash at once with the static functions, or piece by piece: Init(), any number of Update(), Final(). The pieces'
/// lengths do not matter: the result is that of the concatenation.
class ALEMBIC_EXPORT SpookyHash
{
public:
    /// `hash1` and `hash2` are the seeds on entry and the result on return.
    static void Hash128(const void* message, size_t length, uint64_t* hash1, uint64_t* hash2);
    static uint64_t Hash64(const void* message, size_t length, uint64_t seed);
    static uint32_t Hash32(const void* message, size_t length, uint32_t seed);

    void Init(uint64_t seed1, uint64_t seed2);
    void Update(const void* message, size_t length);
    /// Gives the hash of all that was added so far, and leaves the state as it is: more may be added.
    void Final(uint64_t* hash1, uint64_t* hash2) const;

    /// The steps that mix four words; ShortEnd also accumulates the digests of a property's samples.
    static void ShortMix(uint64_t& h0, uint64_t& h1, uint64_t& h2, uint64_t& h3);
    static void ShortEnd(uint64_t& h0, uint64_t& h1, uint64_t& h2, uint64_t& h3);

private:
    static constexpr size_t word_count = 12;
    static constexpr size_t block_bytes = word_count * 8;  // a step of the long form
    static constexpr size_t short_bytes = 2 * block_bytes; // below this the short form decides

    static void short_hash(const void* message, size_t length, uint64_t* hash1, uint64_t* hash2);
    static void start(uint64_t (&state)[word_count], uint64_t seed1, uint64_t seed2);
    static const uint8_t* mix_blocks(uint64_t (&state)[word_count], const uint8_t* bytes, size_t block_count);
    static void finish(uint64_t (&state)[word_count], const uint8_t* tail, size_t tail_bytes);

    // The first short_bytes are kept as they are: only then is it known which form applies. Afterwards the buffer holds
    // what does not fill a block yet.
    uint8_t buffer_[short_bytes];
    uint64_t state_[word_count] = {};
    uint64_t seed_[2] = {};
    size_t total_bytes_ = 0;
    size_t buffered_bytes_ = 0;
};

} // namespace ALEMBIC_VERSION_NS
} // namespace Util
} // namespace Alembic
