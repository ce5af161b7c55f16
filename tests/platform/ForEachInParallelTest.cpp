#include "platform/ForEachInParallel.h"

#include <gtest/gtest.h>

#include <atomic>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace vardenix {
namespace {

TEST(ForEachInParallel, WorksOnEveryItemOnceOnAnyNumberOfThreads) {
    for (const unsigned threads : {0U, 1U, 2U, 7U}) {
        std::vector<std::atomic<int>> times(1000);
        EXPECT_TRUE(ForEachInParallel(
            times.size(), [&times](size_t item) { ++times[item]; }, {}, threads));
        for (size_t item = 0; item < times.size(); ++item)
            ASSERT_EQ(times[item], 1) << item << " on " << threads;
    }
}

TEST(ForEachInParallel, NoItemsAreDoneAtOnce) {
    EXPECT_TRUE(ForEachInParallel(0, [](size_t) { FAIL(); }));
}

TEST(ForEachInParallel, ThrowsTheErrorOfTheLowestItem) {
    for (const unsigned threads : {1U, 2U, 7U}) {
        std::string told;
        try {
            // All items of the threads wait for one another, so that several fail at
            // once.
            std::atomic<unsigned> begun = 0;
            ForEachInParallel(
                threads,
                [&](size_t item) {
                    ++begun;
                    while (begun < threads)
                        std::this_thread::yield();
                    throw std::runtime_error(std::to_string(item));
                },
                {}, threads);
        } catch (const std::runtime_error& error) {
            told = error.what();
        }
        EXPECT_EQ(told, "0") << threads;
    }
}

TEST(ForEachInParallel, BeginsNothingAfterAnError) {
    std::atomic<int> begun = 0;
    EXPECT_THROW(ForEachInParallel(
                     1000,
                     [&begun](size_t) {
                         ++begun;
                         throw std::runtime_error("broken");
                     },
                     {}, 1),
                 std::runtime_error);
    EXPECT_EQ(begun, 1);
}

// The lowest item fails last: it has begun, and is waited for, when a higher one fails.
TEST(ForEachInParallel, WaitsForALowerItemThatMayFailToo) {
    for (int round = 0; round < 200; ++round) {
        std::atomic<bool> higherFailed = false;
        std::string told;
        try {
            ForEachInParallel(
                2,
                [&](size_t item) {
                    if (item == 1)
                        higherFailed = true;
                    while (!higherFailed)
                        std::this_thread::yield();
                    throw std::runtime_error(std::to_string(item));
                },
                {}, 2);
        } catch (const std::runtime_error& error) {
            told = error.what();
        }
        ASSERT_EQ(told, "0");
    }
}

TEST(ForEachInParallel, AllThreadsHaveEndedWhenStopThrows) {
    std::atomic<int> atWork = 0;
    std::atomic<int> begun = 0;
    const auto work = [&](size_t) {
        ++atWork;
        ++begun;
        std::this_thread::yield();
        --atWork;
    };
    const auto stop = [&]() -> bool {
        while (begun < 5)
            std::this_thread::yield();
        throw std::runtime_error("asked to end");
    };
    EXPECT_THROW(ForEachInParallel(100000, work, stop, 3), std::runtime_error);
    EXPECT_EQ(atWork, 0);
    EXPECT_LT(begun, 100000);
}

TEST(ForEachInParallel, StopsWhenItIsToldTo) {
    int done = 0;
    const auto caller = std::this_thread::get_id();
    EXPECT_FALSE(ForEachInParallel(
        10, [&done](size_t) { ++done; },
        [&] {
            EXPECT_EQ(std::this_thread::get_id(), caller);
            return done == 3;
        },
        1));
    EXPECT_EQ(done, 3);
}

} // namespace
} // namespace vardenix
