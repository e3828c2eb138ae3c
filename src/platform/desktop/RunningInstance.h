#pragma once

#include <functional>
#include <string>

namespace kavendra {

/// The one kavendra of a session.
class RunningInstance {
public:
    RunningInstance() = default;
    virtual ~RunningInstance() = default;
    RunningInstance(const RunningInstance&) = delete;
    RunningInstance& operator=(const RunningInstance&) = delete;

    /// Called on the main thread, once events are handled, each time that kavendra is started again. The
    /// token is what lets a window take the focus (XDG Activation); it is empty when the other start had
    /// none.
    std::function<void(const std::string& activationToken)> onActivate = [](const std::string&) {};
};

} // namespace kavendra
