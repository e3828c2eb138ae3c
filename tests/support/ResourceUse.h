#pragma once

#include <cstddef>
#include <ctime>
#include <fstream>
#include <string>

/// What a piece of work costs this process.
namespace kavendra {

/// The resident memory of this process in bytes, by the name of a line of /proc/self/status; 0 where there is
/// none.
inline std::size_t residentMemory(const std::string& line) {
    std::ifstream status("/proc/self/status");
    std::string word;
    while (status >> word)
        if (word == line + ":") {
            std::size_t kibibytes = 0;
            status >> kibibytes;
            return kibibytes * 1024;
        }
    return 0;
}

struct ResourceUse {
    double seconds = 0;     ///< of the processor: how busy the machine is does not count
    std::size_t memory = 0; ///< the peak above what was resident before
};

template <typename Work>
ResourceUse measureResources(Work&& work) {
    std::ofstream("/proc/self/clear_refs") << "5"; // the peak starts again from here
    const std::size_t before = residentMemory("VmRSS");
    const std::clock_t begin = std::clock();
    work();
    const double seconds = static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC;
    const std::size_t peak = residentMemory("VmHWM");
    return {.seconds = seconds, .memory = peak > before ? peak - before : 0};
}

} // namespace kavendra
