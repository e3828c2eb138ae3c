#include "platform/desktop/ActivationTokens.h"
#include "platform/desktop/SystemDesktop.h"

/// For a build without the libraries of display servers.
namespace kavendra {

struct ActivationTokens::Wayland {};

ActivationTokens::ActivationTokens(Executor& executor) : m_executor(executor) {}

ActivationTokens::~ActivationTokens() = default;

std::string ActivationTokens::next() {
    return {};
}

void endStartupNotification(const std::string&) {}

} // namespace kavendra
