/// SpookyHash V2: a short form for messages below 192 bytes, a long form that mixes blocks of 96.
#include <Alembic/Util/SpookyV2.h>

#include "core/util/little_endian.h"

#include <algorithm>
#include <cstring>

namespace Alembic {
namespace Util {
inline namespace ALEMBIC_VERSION_NS {

namespace {

constexpr uint64_t filler = 0xDEADBEEFDEADBEEF;

constexpr int short_mix_turns[12] = {50, 52, 30, 41, 54, 48, 38, 37, 62, 34, 5, 36};
constexpr int short_end_turns[11] = {15, 52, 26, 51, 28, 9, 47, 54, 32, 25, 63};
constexpr int mix_turns[12] = {11, 32, 43, 31, 17, 28, 39, 57, 55, 54, 22, 46};
constexpr int end_turns[12] = {44, 15, 34, 21, 38, 33, 10, 13, 38, 53, 42, 54};

} // namespace

void SpookyHash::ShortMix(uint64_t& h0, uint64_t& h1, uint64_t& h2, uint64_t& h3)
{
    uint64_t h[4] = {h0, h1, h2, h3};
    for (int k = 0; k < 12; ++k) {
        const int i = (k + 2) % 4;
        h[i] = rotate_left(h[i], short_mix_turns[k]);
        h[i] += h[(i + 1) % 4];
        h[(i + 2) % 4] ^= h[i];
    }
    h0 = h[0];
    h1 = h[1];
    h2 = h[2];
    h3 = h[3];
}

void SpookyHash::ShortEnd(uint64_t& h0, uint64_t& h1, uint64_t& h2, uint64_t& h3)
{
    uint64_t h[4] = {h0, h1, h2, h3};
    for (int k = 0; k < 11; ++k) {
        const int i = (k + 3) % 4;
        const int j = (k + 2) % 4;
        h[i] ^= h[j];
        h[j] = rotate_left(h[j], short_end_turns[k]);
        h[i] += h[j];
    }
    h0 = h[0];
    h1 = h[1];
    h2 = h[2];
    h3 = h[3];
}

void SpookyHash::short_hash(const void* message, size_t length, uint64_t* hash1, uint64_t* hash2)
{
    const uint8_t* bytes = static_cast<const uint8_t*>(message);
    size_t left = length;
    uint64_t a = *hash1;
    uint64_t b = *hash2;
    uint64_t c = filler;
    uint64_t d = filler;
    const auto take_16 = [&] {
        c += load_word(bytes);
        d += load_word(bytes + 8);
        ShortMix(a, b, c, d);
        bytes += 16;
        left -= 16;
    };
    while (left >= 32) {
        take_16();
        a += load_word(bytes);
        b += load_word(bytes + 8);
        bytes += 16;
        left -= 16;
    }
    if (left >= 16) take_16();

    d += static_cast<uint64_t>(length) << 56;
    if (left == 0) {
        c += filler;
        d += filler;
    } else {
        uint8_t tail[16] = {};
        std::memcpy(tail, bytes, left);
        c += load_word(tail);
        d += load_word(tail + 8);
    }
    ShortEnd(a, b, c, d);
    *hash1 = a;
    *hash2 = b;
}

void SpookyHash::start(uint64_t (&state)[word_count], uint64_t seed1, uint64_t seed2)
{
    for (size_t i = 0; i < word_count; i += 3) {
        state[i] = seed1;
        state[i + 1] = seed2;
        state[i + 2] = filler;
    }
}

const uint8_t* SpookyHash::mix_blocks(uint64_t (&state)[word_count], const uint8_t* bytes, size_t block_count)
{
    uint64_t h[word_count];
    std::copy_n(state, word_count, h);
    for (; block_count > 0; --block_count, bytes += block_bytes) {
        for (size_t i = 0; i < word_count; ++i) {
            const size_t before = (i + 11) % word_count;
            h[i] += load_word(bytes + 8 * i);
            h[(i + 2) % word_count] ^= h[(i + 10) % word_count];
            h[before] ^= h[i];
            h[i] = rotate_left(h[i], mix_turns[i]);
            h[before] += h[(i + 1) % word_count];
        }
    }
    std::copy_n(h, word_count, state);
    return bytes;
}

void SpookyHash::finish(uint64_t (&state)[word_count], const uint8_t* tail, size_t tail_bytes)
{
    uint8_t last[block_bytes] = {};
    std::copy_n(tail, tail_bytes, last);
    last[block_bytes - 1] = static_cast<uint8_t>(tail_bytes);
    for (size_t i = 0; i < word_count; ++i)
        state[i] += load_word(last + 8 * i);
    for (int round = 0; round < 3; ++round) {
        for (size_t i = 0; i < word_count; ++i) {
            const size_t before = (i + 11) % word_count;
            const size_t after = (i + 1) % word_count;
            state[before] += state[after];
            state[(i + 2) % word_count] ^= state[before];
            state[after] = rotate_left(state[after], end_turns[i]);
        }
    }
}

void SpookyHash::Hash128(const void* message, size_t length, uint64_t* hash1, uint64_t* hash2)
{
    if (length < short_bytes) return short_hash(message, length, hash1, hash2);
    uint64_t state[word_count];
    start(state, *hash1, *hash2);
    const uint8_t* const tail = mix_blocks(state, static_cast<const uint8_t*>(message), length / block_bytes);
    finish(state, tail, length % block_bytes);
    *hash1 = state[0];
    *hash2 = state[1];
}

uint64_t SpookyHash::Hash64(const void* message, size_t length, uint64_t seed)
{
    uint64_t hash1 = seed;
    uint64_t hash2 = seed;
    Hash128(message, length, &hash1, &hash2);
    return hash1;
}

uint32_t SpookyHash::Hash32(const void* message, size_t length, uint32_t seed)
{
    return static_cast<uint32_t>(Hash64(message, length, seed));
}

void SpookyHash::Init(uint64_t seed1, uint64_t seed2)
{
    seed_[0] = seed1;
    seed_[1] = seed2;
    total_bytes_ = 0;
    buffered_bytes_ = 0;
}

void SpookyHash::Update(const void* message, size_t length)
{
    if (length == 0) return;
    const uint8_t* bytes = static_cast<const uint8_t*>(message);
    const bool was_short = total_bytes_ < short_bytes;
    total_bytes_ += length;
    if (buffered_bytes_ + length < (was_short ? short_bytes : block_bytes)) {
        std::memcpy(buffer_ + buffered_bytes_, bytes, length);
        buffered_bytes_ += length;
        return;
    }

    // Fill the buffer to whole blocks, mix those, then the blocks that lie complete in the message.
    if (was_short) start(state_, seed_[0], seed_[1]);
    if (buffered_bytes_ > 0) {
        const size_t whole = (buffered_bytes_ + block_bytes - 1) / block_bytes * block_bytes;
        const size_t taken = whole - buffered_bytes_;
        std::memcpy(buffer_ + buffered_bytes_, bytes, taken);
        bytes += taken;
        length -= taken;
        mix_blocks(state_, buffer_, whole / block_bytes);
    }
    bytes = mix_blocks(state_, bytes, length / block_bytes);
    buffered_bytes_ = length % block_bytes;
    std::memcpy(buffer_, bytes, buffered_bytes_);
}

void SpookyHash::Final(uint64_t* hash1, uint64_t* hash2) const
{
    *hash1 = seed_[0];
    *hash2 = seed_[1];
    if (total_bytes_ < short_bytes) return short_hash(buffer_, total_bytes_, hash1, hash2);
    uint64_t state[word_count];
    std::copy_n(state_, word_count, state);
    finish(state, buffer_, buffered_bytes_);
    *hash1 = state[0];
    *hash2 = state[1];
}

} // namespace ALEMBIC_VERSION_NS
} // namespace Util
} // namespace Alembic
