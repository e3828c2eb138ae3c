#include "platform/desktop/SystemDesktop.h"

#include "platform/desktop/BusInstance.h"
#include "platform/desktop/FreedesktopDesktop.h"

namespace kavendra {

std::unique_ptr<Desktop> makeDesktop(Processes& processes) {
    return std::make_unique<FreedesktopDesktop>(processes);
}

std::unique_ptr<RunningInstance> becomeRunningInstance() {
    return becomeInstanceOnBus();
}

} // namespace kavendra
