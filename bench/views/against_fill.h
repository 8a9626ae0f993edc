#pragma once
// A painting timed against the plainest painting of the same area: each iteration fills the
// area, then paints it, and the benchmark reports both times and their ratio.

#include <benchmark/benchmark.h>

#include <chrono>

template <class Fill, class Paint>
void TimeAgainstFill(benchmark::State& state, Fill fill, Paint paint) {
    using Clock = std::chrono::steady_clock;
    auto ms = [](Clock::duration d) {
        return std::chrono::duration<double, std::milli>(d).count();
    };
    double fillMs = 0;
    double paintMs = 0;
    for (auto _ : state) {
        const auto t0 = Clock::now();
        fill();
        benchmark::ClobberMemory();
        const auto t1 = Clock::now();
        paint();
        benchmark::ClobberMemory();
        const auto t2 = Clock::now();
        fillMs += ms(t1 - t0);
        paintMs += ms(t2 - t1);
    }
    const double n = static_cast<double>(state.iterations());
    state.counters["fill_ms"] = fillMs / n;
    state.counters["paint_ms"] = paintMs / n;
    state.counters["ratio"] = paintMs / fillMs;
}
