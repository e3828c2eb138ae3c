#pragma once

#include "base/Executor.h"

#include <future>
#include <memory>

namespace kavendra {

/// Runs `function` on the window's thread and waits for its result. Must not be called on that thread.
template <typename Function>
auto onWindowThread(Executor& executor, Function function) {
    using Value = decltype(function());
    const auto promise = std::make_shared<std::promise<Value>>();
    std::future<Value> result = promise->get_future();
    executor.post([promise, function = std::move(function)] { promise->set_value(function()); });
    return result.get();
}

} // namespace kavendra
