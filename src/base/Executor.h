#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <future>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace kavendra {

/// Runs work that may block, such as calls of a file system that has lost its server, away from the window's
/// thread.
class Executor {
public:
    Executor() = default;
    virtual ~Executor() = default;
    Executor(const Executor&) = delete;
    Executor& operator=(const Executor&) = delete;

    /// Runs `work`, which must not throw, on a thread of its own.
    virtual void run(std::function<void()> work) = 0;

    /// Runs `task` on the window's thread, from its event loop, after the tasks posted before. May be called
    /// on any thread.
    virtual void post(std::function<void()> task) = 0;
};

/// Runs `work()` on another thread, then `finish(result)` on the window's thread.
template <typename Work, typename Finish>
void runThen(Executor& executor, Work work, Finish finish) {
    executor.run([&executor, work = std::move(work), finish = std::move(finish)]() mutable {
        auto result = std::make_shared<decltype(work())>(work());
        executor.post([result, finish = std::move(finish)]() mutable { finish(std::move(*result)); });
    });
}

/// Runs `work()` on another thread, then `finish(result)` on the window's thread: at once if the result is
/// there within `patience`, for which this waits; otherwise later, as runThen does.
template <typename Work, typename Finish>
void runBriefly(Executor& executor, std::chrono::milliseconds patience, Work work, Finish finish) {
    const auto promise = std::make_shared<std::promise<decltype(work())>>();
    const auto result = promise->get_future().share();
    executor.run([promise, work = std::move(work)]() mutable { promise->set_value(work()); });
    if (result.wait_for(patience) == std::future_status::ready)
        finish(result.get());
    else
        runThen(executor, [result] { return result.get(); }, std::move(finish));
}

/// Asks all questions at the same time and waits for the answers, together for at most `patience`. Returns
/// them in the order of the questions; an answer that has not come by then is missing.
std::vector<std::optional<bool>> askAll(Executor& executor,
                                        const std::vector<std::function<bool()>>& questions,
                                        std::chrono::milliseconds patience);

/// Runs requests of one kind of which only the newest result is wanted. At most four requests run at the same
/// time. One that comes then waits until another has ended, and replaces one that waits already. Use it on
/// the window's thread.
class NewestRequest {
public:
    /// `executor` must outlive this; this must outlive the tasks that `executor` posts.
    explicit NewestRequest(Executor& executor) : m_executor(executor) {}

    /// Runs `work()` on another thread, then `finish(result)` on the window's thread unless a newer request
    /// was started or drop() was called.
    template <typename Work, typename Finish>
    void start(Work work, Finish finish) {
        drop();
        m_isPending = true;
        m_next = [this, generation = m_generation, work = std::move(work), finish = std::move(finish)] {
            runThen(m_executor, work, [this, generation, finish](auto result) {
                --m_running;
                if (generation == m_generation) {
                    m_isPending = false;
                    finish(std::move(result));
                }
                runNext();
            });
        };
        runNext();
    }

    /// Ignores the results of all requests so far.
    void drop();

    /// Whether the result of the newest request is still to come.
    bool isPending() const { return m_isPending; }

private:
    void runNext();

    static constexpr int maximumRunning = 4;

    Executor& m_executor;
    std::uint64_t m_generation = 0;
    int m_running = 0;
    bool m_isPending = false;
    std::function<void()> m_next; ///< starts the request that waits; empty if there is none
};

} // namespace kavendra
