#pragma once
// Work timed against the plainest way to do the same amount of it, in the same run: each
// iteration runs the baseline, then the work, and the benchmark reports both times in ms (the
// counters NAME_ms) and the work's time over the baseline's as "ratio".

#include <benchmark/benchmark.h>

#include <chrono>
#include <string>

template <class Baseline, class Work>
void TimeAgainstBaseline(benchmark::State& state, const char* baselineName, Baseline baseline,
                         const char* workName, Work work) {
    using Clock = std::chrono::steady_clock;
    auto ms = [](Clock::duration d) {
        return std::chrono::duration<double, std::milli>(d).count();
    };
    double baselineMs = 0;
    double workMs = 0;
    for (auto _ : state) {
        const auto t0 = Clock::now();
        baseline();
        benchmark::ClobberMemory();
        const auto t1 = Clock::now();
        work();
        benchmark::ClobberMemory();
        const auto t2 = Clock::now();
        baselineMs += ms(t1 - t0);
        workMs += ms(t2 - t1);
    }
    const double n = static_cast<double>(state.iterations());
    state.counters[std::string(baselineName) + "_ms"] = baselineMs / n;
    state.counters[std::string(workName) + "_ms"] = workMs / n;
    state.counters["ratio"] = workMs / baselineMs;
}

// A painting against a plain fill of the same area.
template <class Fill, class Paint>
void TimeAgainstFill(benchmark::State& state, Fill fill, Paint paint) {
    TimeAgainstBaseline(state, "fill", fill, "paint", paint);
}
