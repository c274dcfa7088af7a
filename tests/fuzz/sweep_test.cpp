/// A small archive damaged in every place: cut at every length, every bit turned over, runs of zeros and ones. Each
/// damage ends in an error or a sound part.
#include "support/archive_walk.h"
#include "support/processor_clock.h"
#include "support/reader_run.h"
#include "support/scenes.h"

#include <gtest/gtest.h>

#include <cstdlib>

using namespace vo_fuzz;

namespace {

const std::string& scene()
{
    static const std::string bytes = small_scene();
    return bytes;
}

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__) || !defined(__OPTIMIZE__)
constexpr double most_seconds = 5.0;
constexpr std::size_t usual_stride = 31;
#else
constexpr double most_seconds = 1.0;
constexpr std::size_t usual_stride = 5;
#endif

/// The readers, who take some milliseconds a damage, meet one damage in so many: at each byte or second byte another
/// bit. All of them with VO_FULL_SWEEP=1 in the environment.
const std::size_t stride = std::getenv("VO_FULL_SWEEP") ? 1 : usual_stride;

/// Calls `act(bytes)`, and expects it to take no longer than it may.
template <class Act>
auto timed(const Act& act, const std::string& bytes)
{
    const ProcessorClock clock;
    auto result = act(bytes);
    EXPECT_LT(clock.seconds(), most_seconds);
    return result;
}

void walk_damaged(const std::string& bytes)
{
    timed([](const std::string& damaged) { return walk_bytes(damaged); }, bytes);
}

ReaderReport run_damaged(const std::string& bytes)
{
    ReaderReport report =
        timed([](const std::string& damaged) { return run_readers_on_bytes(damaged, {0.02}); }, bytes);
    EXPECT_EQ(report.broken, std::set<std::string>());
    return report;
}

std::string with_bit(std::size_t bit)
{
    std::string damaged = scene();
    damaged[bit / 8] = static_cast<char>(damaged[bit / 8] ^ 1 << bit % 8);
    return damaged;
}

/// Runs of one byte of these lengths, at each place that is a multiple of a quarter of the length.
template <class Act>
void for_each_run(std::size_t step, const Act& act)
{
    std::size_t number = 0;
    for (const char value : {'\0', '\xff'})
        for (const std::size_t length : {4u, 8u, 16u, 64u, 256u})
            for (std::size_t at = 0; at + length <= scene().size(); at += length / 4)
                if (number++ % step == 0) {
                    std::string damaged = scene();
                    damaged.replace(at, length, length, value);
                    SCOPED_TRACE(std::to_string(length) + " bytes at " + std::to_string(at));
                    act(damaged);
                }
}

/// A quarter of all bits, so that the tests of a sweep run side by side.
class EveryBit : public testing::TestWithParam<std::size_t>
{
protected:
    template <class Act>
    void for_each_bit(std::size_t step, const Act& act)
    {
        for (std::size_t bit = GetParam() * step; bit < scene().size() * 8; bit += 4 * step) {
            SCOPED_TRACE("bit " + std::to_string(bit));
            act(with_bit(bit));
            if (HasFatalFailure()) return;
        }
    }
};

} // namespace

TEST(Cut, AtEveryLengthIsRefused)
{
    for (std::size_t size = 0; size < scene().size(); ++size) {
        const WalkReport report = walk_bytes(scene().substr(0, size));
        ASSERT_EQ(report.objects, 0u) << size;
        ASSERT_EQ(report.errors.size(), 1u) << size;
    }
    for (std::size_t size = 0; size < scene().size(); size += stride) {
        const ReaderReport report = run_damaged(scene().substr(0, size));
        ASSERT_FALSE(report.opened) << size;
        ASSERT_EQ(report.successes, 0u) << size;
        ASSERT_GT(report.messages.size(), 0u) << size;
    }
}

TEST(Runs, OfZerosAndOnesAtTheAlembicLayer)
{
    for_each_run(1, walk_damaged);
}

TEST(Runs, OfZerosAndOnesThroughEveryReader)
{
    for_each_run(stride, run_damaged);
}

TEST_P(EveryBit, AtTheAlembicLayer)
{
    for_each_bit(1, walk_damaged);
}

TEST_P(EveryBit, ThroughEveryReader)
{
    for_each_bit(stride, run_damaged);
}

INSTANTIATE_TEST_SUITE_P(Quarter, EveryBit, testing::Range<std::size_t>(0, 4));
