#include "platform/desktop/SystemDesktop.h"

#include "platform/desktop/MacDesktop.h"

namespace kavendra {

std::unique_ptr<Desktop> makeDesktop(Processes& processes, Executor&) {
    return std::make_unique<MacDesktop>(processes);
}

std::unique_ptr<RunningInstance> becomeRunningInstance() {
    return std::make_unique<RunningInstance>(); // the system itself starts an application only once
}

void endStartupNotification(const std::string&) {}

} // namespace kavendra
