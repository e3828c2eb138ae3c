#pragma once

#include "base/Executor.h"

#include <QCoreApplication>
#include <QThread>

#include <future>
#include <memory>

namespace kavendra {

/// Runs `function` on the window's thread and waits for its result. At once if this is that thread: the
/// executor works there when no other thread can be created.
template <typename Function>
auto onWindowThread(Executor& executor, Function function) {
    using Value = decltype(function());
    const QCoreApplication* const application = QCoreApplication::instance();
    if (application && application->thread() == QThread::currentThread())
        return function();
    const auto promise = std::make_shared<std::promise<Value>>();
    std::future<Value> result = promise->get_future();
    executor.post([promise, function = std::move(function)] { promise->set_value(function()); });
    return result.get();
}

} // namespace kavendra
