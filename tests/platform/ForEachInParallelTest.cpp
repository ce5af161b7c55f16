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
