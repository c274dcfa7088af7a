/// @file
/// Bob Jenkins's lookup3.
#include "core/hdf5/checksum.h"

#include <cstring>

namespace Alembic {
namespace AbcCoreHDF5 {
inline namespace ALEMBIC_VERSION_NS {

namespace {

constexpr std::size_t block_size = 12;

std::uint32_t rotated(std::uint32_t number, int bits)
{
    return number << bits | number >> (32 - bits);
}

struct State
{
    std::uint32_t a, b, c;

    /// Adds up to twelve bytes; missing ones count as zeros.
    void add(std::string_view bytes)
    {
        std::uint32_t words[3] = {};
        std::memcpy(words, bytes.data(), bytes.size());
        a += words[0];
        b += words[1];
        c += words[2];
    }

    void mix()
    {
        a = (a - c) ^ rotated(c, 4), c += b;
        b = (b - a) ^ rotated(a, 6), a += c;
        c = (c - b) ^ rotated(b, 8), b += a;
        a = (a - c) ^ rotated(c, 16), c += b;
        b = (b - a) ^ rotated(a, 19), a += c;
        c = (c - b) ^ rotated(b, 4), b += a;
    }

    void finish()
    {
        c = (c ^ b) - rotated(b, 14);
        a = (a ^ c) - rotated(c, 11);
        b = (b ^ a) - rotated(a, 25);
        c = (c ^ b) - rotated(b, 16);
        a = (a ^ c) - rotated(c, 4);
        b = (b ^ a) - rotated(a, 14);
        c = (c ^ b) - rotated(b, 24);
    }
};

} // namespace

std::uint32_t checksum(std::string_view bytes)
{
    const std::uint32_t start = 0xdeadbeef + static_cast<std::uint32_t>(bytes.size());
    State state = {start, start, start};
    for (; bytes.size() > block_size; bytes.remove_prefix(block_size)) {
        state.add(bytes.substr(0, block_size));
        state.mix();
    }
    if (bytes.empty()) return state.c;
    state.add(bytes);
    state.finish();
    return state.c;
}

bool ends_in_checksum(std::string_view bytes)
{
    std::uint32_t stored = 0;
    if (bytes.size() < sizeof stored) return false;
    const std::size_t size = bytes.size() - sizeof stored;
    std::memcpy(&stored, bytes.data() + size, sizeof stored);
    return checksum(bytes.substr(0, size)) == stored;
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreHDF5
} // namespace Alembic
