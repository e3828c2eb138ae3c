#include "base/Parallel.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <exception>
#include <thread>

namespace kavendra {

namespace {

/// More threads than this wait for memory, and each may hold the memory of its work.
constexpr std::size_t maximumThreads = 8;

} // namespace

std::size_t parallelThreads() {
    return std::clamp<std::size_t>(std::thread::hardware_concurrency(), 1, maximumThreads);
}

void forEachInParallel(std::size_t count, const std::function<void(std::size_t)>& work) {
    std::atomic<std::size_t> next = 0;
    const auto workUntilDone = [&] {
        for (std::size_t index = next++; index < count; index = next++)
            work(index);
    };
    std::array<std::thread, maximumThreads> others; // std::jthread is missing in the C++ library of macOS
    try {
        for (std::size_t thread = 1; thread < std::min(count, parallelThreads()); ++thread)
            others[thread] = std::thread(workUntilDone);
    } catch (const std::exception&) { // no more threads or no memory for one
    }
    workUntilDone();
    for (std::thread& other : others)
        if (other.joinable())
            other.join();
}

} // namespace kavendra
