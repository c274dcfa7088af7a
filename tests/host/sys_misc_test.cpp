/// Locks, the timer, readable sizes.
#include "vo_sys/sys_statistic.h"
#include "vo_sys/sys_thread_lock_recursive.h"
#include "vo_sys/sys_timer.h"

#include <chrono>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

TEST(SysThreadLockRecursive, LetsItsHolderInAgainAndKeepsOthersOut)
{
    SysThreadLockRecursive lock;
    int counter = 0;
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 4; ++thread)
        threads.emplace_back([&] {
            for (int i = 0; i < 500; ++i) {
                lock.lock(SysThreadLockBase::Duration(1));
                lock.lock(SysThreadLockBase::DURATION_INFINITE);
                ++counter;
                lock.unlock();
                lock.unlock();
            }
        });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(counter, 2000);

    lock.lock(SysThreadLockBase::DURATION_INFINITE);
    SysThreadLockRecursive copy(lock);
    bool got_original = true, got_copy = false;
    std::thread([&] {
        got_original = lock.lock(SysThreadLockBase::DURATION_NONE);
        got_copy = copy.lock(SysThreadLockBase::DURATION_NONE);
        if (got_copy) copy.unlock();
    }).join();
    lock.unlock();
    EXPECT_FALSE(got_original);
    EXPECT_TRUE(got_copy) << "a copy is a lock of its own, free";
}

TEST(SysTimer, CountsMilliseconds)
{
    SysTimer timer;
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    const double elapsed = timer.get_elapsed_time();
    EXPECT_GE(elapsed, 20.0);
    timer.reset();
    EXPECT_LT(timer.get_elapsed_time(), elapsed);
}

TEST(SysStatistic, ChoosesTheUnit)
{
    const auto text = [](unsigned long long bytes) { return SysStatistic::get_readable_size(bytes); };
    EXPECT_EQ(text(0), "0 B");
    EXPECT_EQ(text(1023), "1023 B");
    EXPECT_EQ(text(1536), "1.50 KiB");
    EXPECT_EQ(text((1ull << 20) - 1), "1.00 MiB") << "never 1024.00 KiB";
    EXPECT_EQ(text(~0ull), "16.00 EiB");
}
