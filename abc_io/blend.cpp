/// Blends and differences of float arrays, in loops that become vector code.
#include "blend.h"

#include <array>
#include <cstdint>
#include <cstring>

#if defined(__x86_64__) && defined(__GNUC__)
#define VO_HAS_WIDE_REGISTERS
#include <immintrin.h>
#endif

namespace {

// Loops over blocks of a fixed length: the compiler turns those into vector code at -O2 already.
constexpr std::size_t block = 16;

/// Where the results of an operation go: one array, or two.
template <std::size_t outputs>
using Outputs = std::array<float*, outputs>;

/// Puts `one(i)`, a result for each output, into the outputs for every i below `count`: full blocks with `store`, then
/// the rest. The outputs may be what `one` reads: block by block, all is read before anything is stored.
template <std::size_t outputs, class One, class Store>
inline void for_each_in_blocks(const Outputs<outputs>& to, std::size_t count, One one, Store store)
{
    std::size_t i = 0;
    for (; i + block <= count; i += block) {
        alignas(64) float results[outputs][block];
#pragma GCC ivdep
        for (std::size_t k = 0; k < block; ++k) {
            const std::array<float, outputs> result = one(i + k);
            for (std::size_t o = 0; o < outputs; ++o)
                results[o][k] = result[o];
        }
        for (std::size_t o = 0; o < outputs; ++o)
            store(to[o] + i, results[o]);
    }
    for (; i < count; ++i) {
        const std::array<float, outputs> result = one(i);
        for (std::size_t o = 0; o < outputs; ++o)
            to[o][i] = result[o];
    }
}

inline void store_block(float* to, const float* results)
{
    std::memcpy(to, results, sizeof(float) * block);
}

#ifdef VO_HAS_WIDE_REGISTERS
/// Past the cache: the lines that are overwritten need not be fetched first. `to` is aligned to 32 bytes.
[[gnu::target("avx")]] inline void stream_block(float* to, const float* results)
{
    for (std::size_t k = 0; k < block; k += 8)
        _mm256_stream_ps(to + k, _mm256_load_ps(results + k));
}

// The same code for processors with wider registers. Results are the same bit for bit: no sum is fused with a product.
template <std::size_t outputs, class One>
[[gnu::target("avx2")]] void for_each_with_avx2(const Outputs<outputs>& to, std::size_t count, bool streams, One one)
{
    if (!streams) return for_each_in_blocks(to, count, one, store_block);
    for_each_in_blocks(to, count, one, stream_block);
    _mm_sfence(); // other threads may be told next that the values are there
}
template <std::size_t outputs, class One>
[[gnu::target("avx512f,avx512vl,avx512dq,prefer-vector-width=512")]] void
for_each_with_avx512(const Outputs<outputs>& to, std::size_t count, bool streams, One one)
{
    if (!streams) return for_each_in_blocks(to, count, one, store_block);
    for_each_in_blocks(to, count, one, stream_block);
    _mm_sfence();
}

template <std::size_t outputs>
bool are_aligned(const Outputs<outputs>& to)
{
    for (const float* output : to)
        if (reinterpret_cast<std::uintptr_t>(output) % 32 != 0) return false;
    return true;
}
#endif

/// for_each_in_blocks on the widest registers there are; `streams`: past the cache, where the processor can.
template <std::size_t outputs, class One>
void for_each(const Outputs<outputs>& to, std::size_t count, bool streams, One one)
{
#ifdef VO_HAS_WIDE_REGISTERS
    static const bool has_avx512 = __builtin_cpu_supports("avx512vl") && __builtin_cpu_supports("avx512dq");
    static const bool has_avx2 = __builtin_cpu_supports("avx2");
    streams = streams && are_aligned(to);
    if (has_avx512) return for_each_with_avx512(to, count, streams, one);
    if (has_avx2) return for_each_with_avx2(to, count, streams, one);
#else
    static_cast<void>(streams);
#endif
    for_each_in_blocks(to, count, one, store_block);
}

inline float rounded(double product)
{
    return static_cast<float>(product);
}

} // namespace

void blend_with_velocities(const float* floor, const float* ceil, float* values, float* velocities, std::size_t count,
                           double weight, double per_second, BlendRounding rounding)
{
    const Outputs<2> to{values, velocities};
    const bool streams = values != floor && velocities != ceil;
    if (rounding == BlendRounding::FLOAT_PRODUCTS) {
        const float a = static_cast<float>(1.0 - weight), b = static_cast<float>(weight);
        const float rate = static_cast<float>(per_second);
        return for_each(to, count, streams, [=](std::size_t i) {
            return std::array<float, 2>{a * floor[i] + b * ceil[i], (ceil[i] - floor[i]) * rate};
        });
    }
    const double a = 1.0 - weight, b = weight;
    for_each(to, count, streams, [=](std::size_t i) {
        return std::array<float, 2>{rounded(floor[i] * a) + rounded(ceil[i] * b),
                                    rounded((ceil[i] - floor[i]) * per_second)};
    });
}

void blend(const float* floor, const float* ceil, float* values, std::size_t count, double weight,
           BlendRounding rounding)
{
    const bool streams = values != floor;
    if (rounding == BlendRounding::FLOAT_PRODUCTS) {
        const float a = static_cast<float>(1.0 - weight), b = static_cast<float>(weight);
        return for_each(Outputs<1>{values}, count, streams,
                        [=](std::size_t i) { return std::array<float, 1>{a * floor[i] + b * ceil[i]}; });
    }
    const double a = 1.0 - weight, b = weight;
    for_each(Outputs<1>{values}, count, streams,
             [=](std::size_t i) { return std::array<float, 1>{rounded(floor[i] * a) + rounded(ceil[i] * b)}; });
}

void extrapolate(float* values, const float* velocities, std::size_t count, double seconds, BlendRounding rounding)
{
    if (rounding == BlendRounding::FLOAT_PRODUCTS) {
        const float span = static_cast<float>(seconds);
        return for_each(Outputs<1>{values}, count, false,
                        [=](std::size_t i) { return std::array<float, 1>{values[i] + velocities[i] * span}; });
    }
    for_each(Outputs<1>{values}, count, false,
             [=](std::size_t i) { return std::array<float, 1>{values[i] + rounded(velocities[i] * seconds)}; });
}

void difference(const float* values, const float* next, float* velocities, std::size_t count, double per_second,
                BlendRounding rounding)
{
    const bool streams = velocities != next;
    if (rounding == BlendRounding::FLOAT_PRODUCTS) {
        const float rate = static_cast<float>(per_second);
        return for_each(Outputs<1>{velocities}, count, streams,
                        [=](std::size_t i) { return std::array<float, 1>{(next[i] - values[i]) * rate}; });
    }
    for_each(Outputs<1>{velocities}, count, streams,
             [=](std::size_t i) { return std::array<float, 1>{rounded((next[i] - values[i]) * per_second)}; });
}
