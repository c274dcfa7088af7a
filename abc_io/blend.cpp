/// Blends and differences of float arrays, in loops that become vector code.
#include "blend.h"

namespace {

// Loops over blocks of a fixed length: the compiler turns those into vector code at -O2 already.
constexpr std::size_t block = 16;

/// Calls `one(i)` for every i below `count`, full blocks first, then the rest.
template <class One>
inline void for_each_in_blocks(std::size_t count, One one)
{
    std::size_t i = 0;
    for (; i + block <= count; i += block) {
#pragma GCC ivdep
        for (std::size_t k = 0; k < block; ++k)
            one(i + k);
    }
    for (; i < count; ++i)
        one(i);
}

#if defined(__x86_64__) && defined(__GNUC__)
/// The same code for processors with wider registers. Results are the same bit for bit: no sum is fused with a product.
template <class One>
[[gnu::target("avx2")]] void for_each_with_avx2(std::size_t count, One one)
{
    for_each_in_blocks(count, one);
}
template <class One>
[[gnu::target("avx512f,avx512vl,avx512dq,prefer-vector-width=512")]] void for_each_with_avx512(std::size_t count,
                                                                                               One one)
{
    for_each_in_blocks(count, one);
}

/// Loops in double, which are bound by arithmetic rather than by memory.
template <class One>
void for_each_in_double(std::size_t count, One one)
{
    static const bool has_avx512 = __builtin_cpu_supports("avx512vl") && __builtin_cpu_supports("avx512dq");
    static const bool has_avx2 = __builtin_cpu_supports("avx2");
    if (has_avx512) return for_each_with_avx512(count, one);
    if (has_avx2) return for_each_with_avx2(count, one);
    for_each_in_blocks(count, one);
}
#else
template <class One>
void for_each_in_double(std::size_t count, One one)
{
    for_each_in_blocks(count, one);
}
#endif

inline float rounded(double product)
{
    return static_cast<float>(product);
}

} // namespace

void blend_with_velocities(float* __restrict floor, float* __restrict ceil, std::size_t count, double weight,
                           double per_second, BlendRounding rounding)
{
    if (rounding == BlendRounding::FLOAT_PRODUCTS) {
        const float a = static_cast<float>(1.0 - weight), b = static_cast<float>(weight);
        const float rate = static_cast<float>(per_second);
        for_each_in_blocks(count, [=](std::size_t i) {
            const float from = floor[i], to = ceil[i];
            floor[i] = a * from + b * to;
            ceil[i] = (to - from) * rate;
        });
        return;
    }
    const double a = 1.0 - weight, b = weight;
    for_each_in_double(count, [=](std::size_t i) {
        const float from = floor[i], to = ceil[i];
        floor[i] = rounded(from * a) + rounded(to * b);
        ceil[i] = rounded((to - from) * per_second);
    });
}

void blend(float* __restrict floor, const float* __restrict ceil, std::size_t count, double weight,
           BlendRounding rounding)
{
    if (rounding == BlendRounding::FLOAT_PRODUCTS) {
        const float a = static_cast<float>(1.0 - weight), b = static_cast<float>(weight);
        for_each_in_blocks(count, [=](std::size_t i) { floor[i] = a * floor[i] + b * ceil[i]; });
        return;
    }
    const double a = 1.0 - weight, b = weight;
    for_each_in_double(count, [=](std::size_t i) { floor[i] = rounded(floor[i] * a) + rounded(ceil[i] * b); });
}

void extrapolate(float* __restrict values, const float* __restrict velocities, std::size_t count, double seconds,
                 BlendRounding rounding)
{
    if (rounding == BlendRounding::FLOAT_PRODUCTS) {
        const float span = static_cast<float>(seconds);
        for_each_in_blocks(count, [=](std::size_t i) { values[i] += velocities[i] * span; });
        return;
    }
    for_each_in_double(count, [=](std::size_t i) { values[i] += rounded(velocities[i] * seconds); });
}

void difference(const float* __restrict values, float* __restrict next, std::size_t count, double per_second,
                BlendRounding rounding)
{
    if (rounding == BlendRounding::FLOAT_PRODUCTS) {
        const float rate = static_cast<float>(per_second);
        for_each_in_blocks(count, [=](std::size_t i) { next[i] = (next[i] - values[i]) * rate; });
        return;
    }
    for_each_in_double(count, [=](std::size_t i) { next[i] = rounded((next[i] - values[i]) * per_second); });
}
