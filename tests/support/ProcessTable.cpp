#include "tests/support/ProcessTable.h"

#include <unistd.h>

#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <thread>

namespace kavendra {

ProcessStatus parseProcessStatus(const std::string& text) {
    // The second field is the program's name in parentheses, and may hold anything.
    std::istringstream fields(text.substr(text.rfind(')') + 1));
    ProcessStatus status;
    int processGroup = 0;
    fields >> status.state >> status.parent >> processGroup >> status.session;
    return status;
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
    std::error_code failed;
    for (const auto& entry : std::filesystem::directory_iterator("/proc", failed)) {
        if (std::atoi(entry.path().filename().c_str()) == 0)
            continue; // not a process
        std::ifstream file(entry.path() / "stat");
        const std::string text{std::istreambuf_iterator<char>(file), {}};
        const ProcessStatus status = parseProcessStatus(text);
        if (!text.empty() && status.parent == getpid() && status.state == 'Z')
            return true;
    }
    return false;
}

bool eventually(const std::function<bool()>& condition) {
    using namespace std::chrono_literals;
    const auto deadline = std::chrono::steady_clock::now() + 5s;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > deadline)
            return false;
        std::this_thread::sleep_for(5ms);
    }
    return true;
}

} // namespace kavendra
