#pragma once

#include "base/Executor.h"

#include <chrono>
#include <condition_variable>
#include <deque>
#include <mutex>

namespace kavendra {

/// Runs each piece of work on a thread of its own, because any of them may block for ever. The threads are
/// detached and use this object, so it must exist until the process ends.
class ThreadExecutor final : public Executor {
public:
    /// Runs the work on the calling thread if no thread can be created.
    void run(std::function<void()> work) override;
    void post(std::function<void()> task) override;

    /// Sets the function that makes the window's thread call runPosted. It is called on any thread when a
    /// task was posted, and at once if there are tasks already.
    void setWake(std::function<void()> wake);

    /// Runs the tasks posted so far.
    void runPosted();

    /// Runs posted tasks until `isDone()` or until the deadline.
    void runPostedUntil(std::chrono::steady_clock::time_point deadline, const std::function<bool()>& isDone);

private:
    std::mutex m_mutex;
    std::condition_variable m_posted;
    std::deque<std::function<void()>> m_tasks;
    std::function<void()> m_wake = [] {};
};

} // namespace kavendra
