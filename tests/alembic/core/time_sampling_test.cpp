/// Time samplings: what is accepted, known look-ups, and what must hold for any look-up.
#include <Alembic/AbcCoreAbstract/TimeSampling.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <sstream>

using namespace Alembic::AbcCoreAbstract;

namespace {

constexpr double tolerance = 1e-5;

TimeSampling acyclic(const std::vector<chrono_t>& times)
{
    return TimeSampling(TimeSamplingType(TimeSamplingType::kAcyclic), times);
}

std::string thrown_text(const TimeSamplingType& type, const std::vector<chrono_t>& times)
{
    try {
        TimeSampling sampling(type, times);
    } catch (const Exception& error) {
        return error;
    }
    return "";
}

struct Known
{
    double time;
    index_t floor, ceiling, nearest;
};

void expect_known(const TimeSampling& sampling, index_t count, const std::vector<Known>& known)
{
    for (const Known& k : known) {
        EXPECT_EQ(sampling.getFloorIndex(k.time, count).first, k.floor) << "time " << k.time;
        EXPECT_EQ(sampling.getCeilIndex(k.time, count).first, k.ceiling) << "time " << k.time;
        EXPECT_EQ(sampling.getNearIndex(k.time, count).first, k.nearest) << "time " << k.time;
    }
}

// What must hold for every sampling, count and time; the samples themselves are the reference.
void expect_consistent(const TimeSampling& sampling, index_t count, double time, const std::string& where)
{
    SCOPED_TRACE(where + ", time " + std::to_string(time) + ", " + std::to_string(count) + " samples");
    const auto floor = sampling.getFloorIndex(time, count);
    const auto ceiling = sampling.getCeilIndex(time, count);
    const auto nearest = sampling.getNearIndex(time, count);
    for (const auto& found : {floor, ceiling, nearest}) {
        ASSERT_GE(found.first, 0);
        ASSERT_LT(found.first, count);
        ASSERT_EQ(found.second, sampling.getSampleTime(found.first));
    }
    EXPECT_TRUE(ceiling.first == floor.first || ceiling.first == floor.first + 1);
    EXPECT_TRUE(nearest.first == floor.first || nearest.first == floor.first + 1);

    index_t last_before = 0;
    for (index_t i = 0; i < count; ++i) {
        if (sampling.getSampleTime(i) <= time + tolerance) last_before = i;
        EXPECT_LE(std::fabs(nearest.second - time), std::fabs(sampling.getSampleTime(i) - time) + 2 * tolerance);
    }
    // The last sample up to the tolerance. Where a cycle begins that is a part of the cycle's length, not of a second.
    const TimeSamplingType type = sampling.getTimeSamplingType();
    const double scale = type.isCyclic() ? type.getTimePerCycle() : 1.0;
    if (floor.first != last_before) {
        const double distance = std::fabs(sampling.getSampleTime(std::max(last_before, floor.first)) - time);
        EXPECT_GE(distance, tolerance * std::min(scale, 1.0) - 1e-9);
        EXPECT_LE(distance, tolerance * std::max(scale, 1.0) + 1e-9);
    }
    if (time > sampling.getSampleTime(0) && time < sampling.getSampleTime(count - 1)) {
        EXPECT_LE(floor.second, time + tolerance * std::max(scale, 1.0) + 1e-9);
        EXPECT_GE(ceiling.second, time - tolerance);
    }
}

} // namespace

TEST(TimeSampling, FindsTheKnownSamples)
{
    expect_known(TimeSampling(1.0, 0.0), 5,
                 {{-1, 0, 0, 0},
                  {0.5, 0, 1, 0},
                  {0.9999899, 0, 1, 1},
                  {0.99999, 1, 1, 1},
                  {1.000005, 1, 1, 1},
                  {1.00002, 1, 2, 1},
                  {1.5, 1, 2, 1},
                  {10, 4, 4, 4}});
    expect_known(acyclic({0, 1, 2, 4, 8}), 5, {{3, 2, 3, 2}, {3.999995, 3, 3, 3}, {6, 3, 4, 3}, {4, 3, 3, 3}});
    expect_known(TimeSampling(TimeSamplingType(3, 1.0), {0, 0.25, 0.5}), 12,
                 {{0.6, 2, 3, 2}, {0.75, 2, 3, 2}, {0.999995, 3, 3, 3}, {2.3, 7, 8, 7}, {0.25, 1, 1, 1}});
}

TEST(TimeSampling, NothingIsFoundWithoutSamples)
{
    for (const TimeSampling& sampling : {TimeSampling(0.5, 3.0), acyclic({1, 2})}) {
        for (const double time : {-9.0, 0.0, 99.0}) {
            const std::pair<index_t, chrono_t> none(0, 0.0);
            EXPECT_EQ(sampling.getFloorIndex(time, 0), none);
            EXPECT_EQ(sampling.getCeilIndex(time, 0), none);
            EXPECT_EQ(sampling.getNearIndex(time, 0), none);
        }
    }
}

TEST(TimeSampling, LookUpsAgreeWithTheSamplesTimes)
{
    const unsigned seed = 1234567;
    std::mt19937 random(seed);
    const auto uniform = [&](double low, double high) {
        return std::uniform_real_distribution<double>(low, high)(random);
    };
    for (int round = 0; round < 3000; ++round) {
        const index_t count = 1 + random() % 40;
        const double start = uniform(-5, 5);
        std::vector<chrono_t> times(1, start);
        TimeSamplingType type(uniform(0.01, 2));
        if (round % 3 == 1) {
            type = TimeSamplingType(TimeSamplingType::kAcyclic);
            while (times.size() < size_t(count) + random() % 3)
                times.push_back(times.back() + uniform(0.001, 1));
        } else if (round % 3 == 2) {
            for (size_t more = 1 + random() % 4; more > 0; --more)
                times.push_back(times.back() + uniform(0.001, 1));
            type = TimeSamplingType(uint32_t(times.size()), times.back() - start + uniform(0.001, 1));
        }
        const TimeSampling sampling(type, times);
        std::ostringstream where;
        where << "seed " << seed << ", round " << round << ", " << type;
        const double first = sampling.getSampleTime(0);
        const double last = sampling.getSampleTime(count - 1);
        for (int i = 0; i < 6; ++i) {
            expect_consistent(sampling, count, uniform(first - 1, last + 1), where.str());
            const double at_sample = sampling.getSampleTime(random() % count);
            expect_consistent(sampling, count, at_sample, where.str());
            expect_consistent(sampling, count, at_sample + uniform(-2e-5, 2e-5), where.str());
        }
    }
}

TEST(TimeSampling, ExtremeTimesStayInRange)
{
    const double infinity = std::numeric_limits<double>::infinity();
    const double largest = std::numeric_limits<double>::max();
    const TimeSampling samplings[] = {TimeSampling(1e-300, 0.0), TimeSampling(1e300, -1e308),
                                      TimeSampling(1.0, std::nan("")),
                                      TimeSampling(TimeSamplingType(2, 1e-300), {0.0, 1e-301}),
                                      TimeSampling(TimeSamplingType(2, 1e300), {-1e308, -1e307 * 9.9999999})};
    for (const TimeSampling& sampling : samplings) {
        for (const double time : {infinity, -infinity, std::nan(""), largest, -largest, 1.0}) {
            for (const index_t count : {index_t(1), index_t(7), index_t(0xFFFFFFFF)}) {
                for (const auto& found : {sampling.getFloorIndex(time, count), sampling.getCeilIndex(time, count),
                                          sampling.getNearIndex(time, count)}) {
                    EXPECT_GE(found.first, 0);
                    EXPECT_LT(found.first, count);
                }
            }
        }
    }
}

TEST(TimeSampling, TimesExtendToAnyIndexUnlessTheyAreAcyclic)
{
    const TimeSampling cyclic(TimeSamplingType(3, 1.0), {0, 0.25, 0.5});
    EXPECT_EQ(cyclic.getSampleTime(4), 1.25);
    EXPECT_EQ(cyclic.getSampleTime(-1), -0.5);
    EXPECT_EQ(cyclic.getSampleTime(-3), -1.0);
    EXPECT_EQ(TimeSampling(0.5, 1.0).getSampleTime(-4), -1.0);

    const TimeSampling stored = acyclic({1, 2, 4});
    EXPECT_EQ(stored.getSampleTime(2), 4.0);
    for (const index_t index : {index_t(3), index_t(-1)}) {
        try {
            stored.getSampleTime(index);
            ADD_FAILURE() << "index " << index;
        } catch (const Exception& error) {
            EXPECT_EQ(error, "Out-of-range acyclic index: " + std::to_string(index) + ", range [0-2]");
        }
    }
    EXPECT_THROW(stored.getFloorIndex(9.0, 5), Exception);
    EXPECT_EQ(stored.getFloorIndex(0.5, 5).first, 0);
}

TEST(TimeSampling, MalformedOnesAreRefused)
{
    EXPECT_EQ(thrown_text(TimeSamplingType(2, 1.0), {1.0}),
              "Incorrect number of time samples specified, expected 2, got: 1");
    EXPECT_EQ(thrown_text(TimeSamplingType(2, 1.0), {2.0, 1.0}),
              "Sample 1 value: 1 is not greater than the previous sample: 2");
    EXPECT_EQ(thrown_text(TimeSamplingType(2, 1.0), {0.0, 2.0}),
              "Cyclic samples provided are greater than the time per cycle. Expected: 1 Found: 2");
    EXPECT_EQ(thrown_text(TimeSamplingType(2, 1.0), {0.0, 1.0}), "");
    EXPECT_NE(thrown_text(TimeSamplingType(TimeSamplingType::kAcyclic), {}), "");
    EXPECT_NE(thrown_text(TimeSamplingType(TimeSamplingType::kAcyclic), {0.0, std::nan("")}), "");

    EXPECT_THROW(TimeSampling(0.0, 0.0), Exception);
    EXPECT_THROW(TimeSampling(-1.0, 0.0), Exception);
    EXPECT_THROW(TimeSampling(std::nan(""), 0.0), Exception);
    EXPECT_THROW(TimeSamplingType(0, 1.0), Exception);
    EXPECT_THROW(TimeSamplingType(TimeSamplingType::AcyclicNumSamples(), 1.0), Exception);
    EXPECT_THROW(TimeSamplingType(TimeSamplingType::AcyclicTimePerCycle()), Exception);
    EXPECT_TRUE(
        TimeSamplingType(TimeSamplingType::AcyclicNumSamples(), TimeSamplingType::AcyclicTimePerCycle()).isAcyclic());
}

TEST(TimeSampling, EqualityAllowsForTheRoundingOfThePeriodAlone)
{
    EXPECT_TRUE(TimeSampling() == TimeSampling(1.0, 0.0));
    EXPECT_TRUE(TimeSampling(1.0 + 5e-10, 0.0) == TimeSampling());
    EXPECT_FALSE(TimeSampling(1.0 + 2e-9, 0.0) == TimeSampling());
    EXPECT_FALSE(TimeSampling(1.0, 1e-15) == TimeSampling());
    EXPECT_FALSE(acyclic({0.0}) == TimeSampling());
}
