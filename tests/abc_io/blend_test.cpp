/// Blends: in place or elsewhere, aligned or not, in blocks or beside them, every path gives the stated bits.
#include "blend.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <random>
#include <vector>

namespace {

constexpr double weight = 0.3, per_second = 24.7;

/// An array of floats that starts `offset` floats after a multiple of 64 bytes, with a guard behind its end.
class Floats
{
public:
    Floats(const std::vector<float>& values, std::size_t offset)
        : count_(values.size())
        , memory_(values.size() + 32 + offset, guard)
    {
        data_ = memory_.data();
        while (reinterpret_cast<std::uintptr_t>(data_) % 64 != 0)
            ++data_;
        data_ += offset;
        if (count_) std::memcpy(data_, values.data(), count_ * sizeof(float));
    }
    float* data() { return data_; }
    std::vector<float> values() const { return {data_, data_ + count_}; }
    bool is_guard_whole() const { return data_[count_] == guard; }

private:
    static constexpr float guard = 12345.0f;
    std::size_t count_;
    std::vector<float> memory_;
    float* data_ = nullptr;
};

std::vector<float> random_floats(std::size_t count, unsigned seed)
{
    std::mt19937 random(seed);
    std::uniform_real_distribution<float> any(-1000.0f, 1000.0f);
    std::vector<float> values(count);
    for (float& value : values)
        value = any(random);
    return values;
}

/// The stated arithmetic, one volatile step after the other.
float weighted_sum(float a, float b, BlendRounding rounding)
{
    if (rounding == BlendRounding::FLOAT_PRODUCTS) {
        volatile float left = float(1.0 - weight) * a, right = float(weight) * b;
        return left + right;
    }
    volatile float left = float((1.0 - weight) * a), right = float(weight * b);
    return left + right;
}
float moved(float from, float velocity, BlendRounding rounding)
{
    volatile float way =
        rounding == BlendRounding::FLOAT_PRODUCTS ? velocity * float(weight) : float(velocity * weight);
    return from + way;
}
float rate(float from, float to, BlendRounding rounding)
{
    volatile float change = to - from;
    return rounding == BlendRounding::FLOAT_PRODUCTS ? change * float(per_second) : float(change * per_second);
}

class BlendOfRounding : public testing::TestWithParam<BlendRounding>
{
};
INSTANTIATE_TEST_SUITE_P(Both, BlendOfRounding,
                         testing::Values(BlendRounding::FLOAT_PRODUCTS, BlendRounding::DOUBLE_PRODUCTS));

} // namespace

TEST_P(BlendOfRounding, EveryPathGivesTheSameBitsAndStaysInItsArray)
{
    for (const std::size_t count : {0u, 1u, 15u, 16u, 17u, 63u, 1000u})
        for (const std::size_t offset : {0u, 1u, 8u}) {
            const std::vector<float> from = random_floats(count, 1), to = random_floats(count, 2);
            std::vector<float> values(count), velocities(count), moved_along(count);
            for (std::size_t i = 0; i < count; ++i) {
                values[i] = weighted_sum(from[i], to[i], GetParam());
                velocities[i] = rate(from[i], to[i], GetParam());
                moved_along[i] = moved(from[i], to[i], GetParam());
            }
            const std::vector<float> zeros(count);
            Floats floor(from, offset), ceil(to, offset), blended(zeros, offset), rates(zeros, offset);
            blend_with_velocities(floor.data(), ceil.data(), blended.data(), rates.data(), count, weight, per_second,
                                  GetParam());
            EXPECT_EQ(blended.values(), values);
            EXPECT_EQ(rates.values(), velocities);
            EXPECT_EQ(floor.values(), from);

            Floats only_blended(zeros, offset), only_moved(zeros, offset);
            blend(floor.data(), ceil.data(), only_blended.data(), count, weight, GetParam());
            difference(floor.data(), ceil.data(), only_moved.data(), count, per_second, GetParam());
            EXPECT_EQ(only_blended.values(), values);
            EXPECT_EQ(only_moved.values(), velocities);

            Floats extrapolated(from, offset);
            extrapolate(extrapolated.data(), ceil.data(), count, weight, GetParam());
            EXPECT_EQ(extrapolated.values(), moved_along);

            Floats later(to, offset);
            difference(floor.data(), later.data(), later.data(), count, per_second, GetParam());
            EXPECT_EQ(later.values(), velocities);
            blend_with_velocities(floor.data(), ceil.data(), floor.data(), ceil.data(), count, weight, per_second,
                                  GetParam());
            EXPECT_EQ(floor.values(), values);
            EXPECT_EQ(ceil.values(), velocities);
            for (const Floats* array :
                 {&floor, &ceil, &blended, &rates, &extrapolated, &only_blended, &only_moved, &later})
                EXPECT_TRUE(array->is_guard_whole()) << count << " floats at " << offset;
        }
}
