#pragma once

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <vector>

namespace kavendra {

/// Measures something beside its floor, turn by turn in one run, so that what slows the machine slows both.
/// The benchmark's time is the subject's; its counters are the medians of both in milliseconds and the median
/// of the pairs' ratios.
class Comparison {
public:
    explicit Comparison(benchmark::State& benchmarkState) : state(benchmarkState) {}

    ~Comparison() {
        state.counters["floor_ms"] = median(floors) * 1e3;
        state.counters["own_ms"] = median(subjects) * 1e3;
        state.counters["x_floor"] = median(ratios);
    }
    Comparison(const Comparison&) = delete;
    Comparison& operator=(const Comparison&) = delete;

    template <typename Floor, typename Subject>
    void measure(Floor&& floor, Subject&& subject) {
        floors.push_back(seconds(floor));
        subjects.push_back(seconds(subject));
        ratios.push_back(subjects.back() / floors.back());
        state.SetIterationTime(subjects.back());
    }

private:
    template <typename Work>
    static double seconds(Work& work) {
        const auto begin = std::chrono::steady_clock::now();
        work();
        return std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
    }

    static double median(std::vector<double>& values) {
        if (values.empty())
            return 0;
        const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
        std::ranges::nth_element(values, middle);
        return *middle;
    }

    benchmark::State& state;
    std::vector<double> floors, subjects, ratios;
};

} // namespace kavendra
