#include "base/Parallel.h"

#include <gtest/gtest.h>

#include <atomic>
#include <latch>
#include <vector>

namespace kavendra {

TEST(Parallel, callsTheWorkOnceForEachIndex) {
    for (const std::size_t count : {0U, 1U, 2U, 3U, 1000U}) {
        std::vector<std::atomic<int>> calls(count);
        forEachInParallel(count, [&](std::size_t index) { ++calls[index]; });
        for (const auto& each : calls)
            EXPECT_EQ(each, 1);
    }
}

TEST(Parallel, runsAsManyCallsAtATimeAsThereAreThreads) {
    std::latch allBegun(static_cast<std::ptrdiff_t>(parallelThreads()));
    forEachInParallel(parallelThreads(), [&](std::size_t) { allBegun.arrive_and_wait(); });
    EXPECT_TRUE(allBegun.try_wait());
}

} // namespace kavendra
