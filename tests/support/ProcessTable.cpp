#include "tests/support/ProcessTable.h"

#include <sys/wait.h>

#include <chrono>
#include <regex>
#include <thread>

namespace kavendra {

bool isDetached(const std::string& status) {
    static const std::regex pattern("NSpid:\t(.*)\nNSpgid:.*\nNSsid:\t\\1\n[^]*"
                                    "SigBlk:\t.{8}[08]0{7}\nSigIgn:\t.{8}[08]0{7}\n");
    return std::regex_search(status, pattern);
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
