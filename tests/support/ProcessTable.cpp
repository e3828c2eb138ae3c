#include "tests/support/ProcessTable.h"

#include <sys/wait.h>

#include <chrono>
#include <cstdint>
#include <sstream>
#include <thread>

namespace kavendra {

int sessionOfProcess(const std::string& text) {
    // The second field is the program's name in parentheses, which may contain any character.
    std::istringstream fields(text.substr(text.rfind(')') + 1));
    char state = '?';
    int parent = 0, processGroup = 0, session = 0;
    fields >> state >> parent >> processGroup >> session;
    return session;
}

bool handlesSignalsByDefault(const std::string& text) {
    constexpr std::uint64_t standardSignals = (std::uint64_t{1} << 31U) - 1;
    for (const std::string field : {"SigBlk:", "SigIgn:"}) {
        const std::size_t position = text.find(field);
        if (position == std::string::npos ||
            std::stoull(text.substr(position + field.size()), nullptr, 16) & standardSignals)
            return false;
    }
    return true;
}

bool hasZombieChild() {
    siginfo_t child{};
    return waitid(P_ALL, 0, &child, WEXITED | WNOHANG | WNOWAIT) == 0 && child.si_pid != 0;
}

bool eventually(const std::function<bool()>& condition) {
    using namespace std::chrono_literals;
    const auto deadline = std::chrono::steady_clock::now() + 30s;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > deadline)
            return false;
        std::this_thread::sleep_for(5ms);
    }
    return true;
}

} // namespace kavendra
