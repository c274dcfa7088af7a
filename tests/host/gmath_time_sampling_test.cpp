/// Time samplings against brute force.
#include "vo_gmath/gmath_time_sampling.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>
#include <vector>

#include <gtest/gtest.h>

namespace {

unsigned int nearest_by_brute_force(const GMathTimeSampling& sampling, double time)
{
    unsigned int best = 0;
    for (unsigned int i = 1; i < sampling.get_sample_count(); ++i) {
        const double distance = std::abs(sampling.get_sample_time(i) - time);
        const double best_distance = std::abs(sampling.get_sample_time(best) - time);
        if (distance < best_distance) best = i;
        if (distance == best_distance && sampling.get_sample_time(i) < sampling.get_sample_time(best)) best = i;
    }
    return best;
}

} // namespace

TEST(GMathTimeSampling, NearestSampleAgreesWithBruteForce)
{
    for (unsigned int seed = 0; seed < 300; ++seed) {
        std::mt19937 random(seed);
        const auto quarter = [&random] { return static_cast<int>(random() % 41) / 4.0 - 5.0; }; // ties are frequent
        const unsigned int count = 1 + random() % 9;
        GMathTimeSampling uniform, sorted, unsorted;
        uniform.init(count, quarter(), seed % 7 == 0 ? 1e6 / 3 : quarter());
        CoreArray<double> times(count);
        for (double& time : times)
            time = quarter();
        unsorted.init(times);
        std::sort(times.begin(), times.end());
        sorted.init(times);
        for (int i = 0; i < 60; ++i) {
            const double time = quarter() * (i % 3 == 0 ? 0.5 : 1.0);
            for (const GMathTimeSampling* sampling : {&uniform, &sorted, &unsorted})
                ASSERT_EQ(sampling->get_nearest_sample(time), nearest_by_brute_force(*sampling, time))
                    << "seed " << seed << ", time " << time << ", count " << count;
        }
    }
}

TEST(GMathTimeSampling, ALongUniformSamplingIsSearchedExactly)
{
    GMathTimeSampling sampling;
    sampling.init(100001, 0.0, 100000 / 24.0);
    EXPECT_EQ(sampling.get_end_time(), 100000 / 24.0);
    for (unsigned int i = 0; i <= 100000; i += 137) {
        EXPECT_EQ(sampling.get_nearest_sample(sampling.get_sample_time(i)), i);
        EXPECT_EQ(sampling.get_nearest_sample(sampling.get_sample_time(i) + 0.4 / 24.0), i);
    }
}

TEST(GMathTimeSampling, ACopyIsLaterByTheOffset)
{
    const GMathTimeSampling listed(CoreArray<double>{9.5, 10.0, 0.0, 0.5});
    GMathTimeSampling even, copy;
    even.init(5, 1.0, 2.0);
    for (const GMathTimeSampling* source : {&listed, const_cast<const GMathTimeSampling*>(&even)}) {
        copy.copy_from(*source, -1.25);
        ASSERT_EQ(copy.get_sample_count(), source->get_sample_count());
        EXPECT_EQ(copy.is_uniform(), source->is_uniform());
        for (unsigned int i = 0; i < copy.get_sample_count(); ++i)
            EXPECT_DOUBLE_EQ(copy.get_sample_time(i), source->get_sample_time(i) - 1.25);
    }
    copy.copy_from(copy, 1.25);
    EXPECT_EQ(copy, even);
}

TEST(GMathTimeSampling, EmptyAndOddInputIsHarmless)
{
    GMathTimeSampling sampling;
    EXPECT_EQ(sampling.get_nearest_sample(1.0), 0u);
    EXPECT_EQ(sampling.get_sample_time(3), 0.0);
    sampling.init(CoreArray<double>());
    EXPECT_EQ(sampling.get_sample_count(), 0u);
    sampling.init(3, 1.0, 1.0);
    EXPECT_EQ(sampling.get_nearest_sample(9.0), 0u) << "of equal times the first";
    EXPECT_EQ(sampling.get_sample_time(77), 1.0);
    sampling.init(2.5);
    EXPECT_EQ(sampling.get_sample_count(), 1u);
    EXPECT_EQ(sampling.get_start_time(), 2.5);
    EXPECT_EQ(sampling.get_end_time(), 2.5);
    EXPECT_EQ(sampling.get_nearest_sample(std::numeric_limits<double>::quiet_NaN()), 0u);
}
