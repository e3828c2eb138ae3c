#pragma once

#include "base/Executor.h"

#include <deque>

namespace kavendra {

/// Runs work and tasks at once, on the calling thread. With isHolding it keeps work back until a test
/// releases it.
class HoldingExecutor : public Executor {
public:
    void run(std::function<void()> work) override {
        if (isHolding)
            held.push_back(std::move(work));
        else
            work();
    }
    void post(std::function<void()> task) override { task(); }

    /// Runs the piece of work at that position, the oldest first.
    void release(std::size_t position = 0) {
        const auto work = std::move(held.at(position));
        held.erase(held.begin() + static_cast<std::ptrdiff_t>(position));
        work();
    }
    void releaseAll() {
        while (!held.empty())
            release();
    }

    bool isHolding = false;
    std::deque<std::function<void()>> held;
};

} // namespace kavendra
