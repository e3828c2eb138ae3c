#include "base/Executor.h"

#include <condition_variable>
#include <mutex>

namespace kavendra {

namespace {

/// Shared with the threads that answer, which may outlast the wait.
struct Answers {
    std::mutex mutex;
    std::condition_variable changed;
    std::vector<std::optional<bool>> values;
    std::size_t missing = 0;
};

} // namespace

std::vector<std::optional<bool>> askAll(Executor& executor,
                                        const std::vector<std::function<bool()>>& questions,
                                        std::chrono::milliseconds patience) {
    const auto answers = std::make_shared<Answers>();
    answers->values.resize(questions.size());
    answers->missing = questions.size();
    for (std::size_t index = 0; index < questions.size(); ++index)
        executor.run([answers, index, question = questions[index]] {
            const bool answer = question();
            const std::scoped_lock lock(answers->mutex);
            answers->values[index] = answer;
            --answers->missing;
            answers->changed.notify_one();
        });
    std::unique_lock lock(answers->mutex);
    answers->changed.wait_for(lock, patience, [&] { return answers->missing == 0; });
    return answers->values;
}

void NewestRequest::drop() {
    ++m_generation;
    m_isPending = false;
    m_next = nullptr;
}

void NewestRequest::runNext() {
    if (!m_next || m_running == maximumRunning)
        return;
    ++m_running;
    std::exchange(m_next, nullptr)();
}

} // namespace kavendra
