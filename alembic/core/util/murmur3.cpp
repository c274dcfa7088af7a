/// MurmurHash3 x64 128.
#include <Alembic/Util/Murmur3.h>
#include <Alembic/Util/Prefetch.h>

#include "core/util/little_endian.h"

#include <algorithm>
#include <cstring>
#include <vector>

namespace Alembic {
namespace Util {
inline namespace ALEMBIC_VERSION_NS {

namespace {

constexpr uint64_t c1 = 0x87C37B91114253D5;
constexpr uint64_t c2 = 0x4CF5AD432745937F;

uint64_t scramble_first(uint64_t k)
{
    return rotate_left(k * c1, 31) * c2;
}

uint64_t scramble_second(uint64_t k)
{
    return rotate_left(k * c2, 33) * c1;
}

uint64_t final_mix(uint64_t x)
{
    x = (x ^ (x >> 33)) * 0xFF51AFD7ED558CCD;
    x = (x ^ (x >> 33)) * 0xC4CEB9FE1A85EC53;
    return x ^ (x >> 33);
}

void hash_bytes(const uint8_t* bytes, size_t len, void* out)
{
    uint64_t h1 = 0;
    uint64_t h2 = 0;
    const auto mix_block = [&] {
        h1 = (rotate_left(h1 ^ scramble_first(load_word(bytes)), 27) + h2) * 5 + 0x52DCE729;
        h2 = (rotate_left(h2 ^ scramble_second(load_word(bytes + 8)), 31) + h1) * 5 + 0x38495AB5;
        bytes += 16;
    };
    for (size_t lines = len / cache_line_size; lines > 0; --lines) {
        prefetch_ahead(bytes);
        mix_block();
        mix_block();
        mix_block();
        mix_block();
    }
    for (size_t blocks = len % cache_line_size / 16; blocks > 0; --blocks)
        mix_block();

    const size_t tail_bytes = len % 16;
    uint8_t tail[16] = {};
    if (tail_bytes > 0) std::memcpy(tail, bytes, tail_bytes);
    if (tail_bytes > 8) h2 ^= scramble_second(load_word(tail + 8));
    if (tail_bytes > 0) h1 ^= scramble_first(load_word(tail));

    h1 ^= len;
    h2 ^= len;
    h1 += h2;
    h2 += h1;
    h1 = final_mix(h1);
    h2 = final_mix(h2);
    h1 += h2;
    h2 += h1;
    const uint64_t result[2] = {h1, h2};
    std::memcpy(out, result, sizeof(result));
}

} // namespace

void MurmurHash3_x64_128(const void* key, size_t len, size_t podSize, void* out)
{
    const uint8_t* const bytes = static_cast<const uint8_t*>(key);
    if (!host_is_big_endian || podSize < 2 || len == 0) return hash_bytes(bytes, len, out);
    std::vector<uint8_t> swapped(bytes, bytes + len);
    for (size_t i = 0; i + podSize <= len; i += podSize)
        std::reverse(swapped.begin() + i, swapped.begin() + i + podSize);
    hash_bytes(swapped.data(), len, out);
}

} // namespace ALEMBIC_VERSION_NS
} // namespace Util
} // namespace Alembic
