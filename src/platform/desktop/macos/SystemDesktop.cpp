#include "platform/desktop/SystemDesktop.h"

#include "platform/desktop/MacDesktop.h"

namespace kavendra {

std::unique_ptr<Desktop> makeDesktop(Processes& processes) {
    return std::make_unique<MacDesktop>(processes);
}

} // namespace kavendra
