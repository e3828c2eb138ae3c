#include "platform/ThreadExecutor.h"

#include <system_error>
#include <thread>

namespace kavendra {

void ThreadExecutor::run(std::function<void()> work) {
    try {
        std::thread(work).detach();
    } catch (const std::system_error&) {
        work();
    }
}

void ThreadExecutor::post(std::function<void()> task) {
    const std::scoped_lock lock(m_mutex);
    m_tasks.push_back(std::move(task));
    m_posted.notify_one();
    if (m_tasks.size() == 1)
        m_wake();
}

void ThreadExecutor::setWake(std::function<void()> wake) {
    const std::scoped_lock lock(m_mutex);
    m_wake = std::move(wake);
    if (!m_tasks.empty())
        m_wake();
}

void ThreadExecutor::runPosted() {
    std::deque<std::function<void()>> tasks;
    {
        const std::scoped_lock lock(m_mutex);
        tasks.swap(m_tasks);
    }
    for (const std::function<void()>& task : tasks)
        task();
}

void ThreadExecutor::runPostedUntil(std::chrono::steady_clock::time_point deadline,
                                    const std::function<bool()>& isDone) {
    while (!isDone()) {
        std::unique_lock lock(m_mutex);
        if (!m_posted.wait_until(lock, deadline, [this] { return !m_tasks.empty(); }))
            return;
        lock.unlock();
        runPosted();
    }
}

} // namespace kavendra
