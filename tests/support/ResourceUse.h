#pragma once

#include <cstddef>
#include <ctime>
#include <fstream>
#include <string>

/// Measures the resources that this process uses for a piece of work.
namespace kavendra {

/// Returns the memory in a line of /proc/self/status ("VmRSS", "VmHWM") in bytes, 0 if there is no such line.
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
    double seconds = 0;     ///< processor time
    std::size_t memory = 0; ///< peak of resident memory, minus that before
};

/// Measures no memory under the thread sanitizer, which multiplies it.
template <typename Work>
ResourceUse measureResources(Work&& work) {
    std::ofstream("/proc/self/clear_refs") << "5"; // resets the peak
    const std::size_t before = residentMemory("VmRSS");
    const std::clock_t begin = std::clock();
    work();
    const double seconds = static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC;
#ifdef __SANITIZE_THREAD__
    const std::size_t peak = 0;
#else
    const std::size_t peak = residentMemory("VmHWM");
#endif
    return {.seconds = seconds, .memory = peak > before ? peak - before : 0};
}

} // namespace kavendra
