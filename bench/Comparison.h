#pragma once

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstddef>
#include <ctime>
#include <vector>

namespace kavendra {

/// Processor time of the process, or the time that passes. Work on several threads needs the latter, which is
/// true only while no other work runs on the machine.
enum class Clock { processor = CLOCK_PROCESS_CPUTIME_ID, wall = CLOCK_MONOTONIC };

/// Returns the seconds that `work()` takes.
double seconds(Clock clock, auto&& work) {
    const auto now = [clock] {
        timespec time{};
        clock_gettime(static_cast<clockid_t>(clock), &time);
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
    };
    const double begin = now();
    work();
    return now() - begin;
}

/// Measures our implementation beside a floor, a plain version or both. They take turns in one run, so that
/// other work on the machine slows all of them. The benchmark's time is ours. Counters: the medians in
/// milliseconds, and the medians of each turn's ratios: x_floor is ours / floor, x_plain is plain / ours
/// (above 1 when ours is faster).
class Comparison {
public:
    explicit Comparison(benchmark::State& state, Clock clock = Clock::processor)
        : m_state(state), m_clock(clock) {}

    ~Comparison() {
        report("own_ms", m_own, 1e3);
        report("floor_ms", m_floor, 1e3);
        report("x_floor", m_timesFloor, 1);
        report("plain_ms", m_plain, 1e3);
        report("x_plain", m_timesPlain, 1);
    }
    Comparison(const Comparison&) = delete;
    Comparison& operator=(const Comparison&) = delete;

    /// One turn beside a floor: work that our implementation cannot avoid.
    void measureFloor(auto&& floor, auto&& own) {
        m_floor.push_back(seconds(m_clock, floor));
        measureOwn(own);
        m_timesFloor.push_back(m_own.back() / m_floor.back());
    }

    /// One turn beside a plain version: the same result in the obvious way.
    void measurePlain(auto&& plain, auto&& own) {
        m_plain.push_back(seconds(m_clock, plain));
        measureOwn(own);
        m_timesPlain.push_back(m_plain.back() / m_own.back());
    }

    /// One turn beside both.
    void measure(auto&& floor, auto&& plain, auto&& own) {
        m_plain.push_back(seconds(m_clock, plain));
        measureFloor(floor, own);
        m_timesPlain.push_back(m_plain.back() / m_own.back());
    }

private:
    void measureOwn(auto& own) {
        m_own.push_back(seconds(m_clock, own));
        m_state.SetIterationTime(m_own.back());
    }

    void report(const char* counter, std::vector<double>& values, double factor) {
        if (values.empty())
            return;
        const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
        std::ranges::nth_element(values, middle);
        m_state.counters[counter] = *middle * factor;
    }

    benchmark::State& m_state;
    Clock m_clock;
    std::vector<double> m_own, m_floor, m_plain, m_timesFloor, m_timesPlain;
};

} // namespace kavendra
