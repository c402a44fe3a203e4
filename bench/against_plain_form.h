#pragma once

#include <benchmark/benchmark.h>

#include <ctime>

namespace varnolix::bench {

/// Wall-clock seconds, and processor seconds summed over all threads.
struct Spent {
    double seconds = 0;
    double processorSeconds = 0;
};

inline double clockSeconds(clockid_t clock) {
    timespec time{};
    clock_gettime(clock, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

/// Adds the time that the run takes. Returns its wall-clock seconds.
template <class Run>
double addTime(Spent& spent, Run run) {
    const double start = clockSeconds(CLOCK_MONOTONIC);
    const double processorStart = clockSeconds(CLOCK_PROCESS_CPUTIME_ID);
    run();
    const double seconds = clockSeconds(CLOCK_MONOTONIC) - start;
    spent.seconds += seconds;
    spent.processorSeconds += clockSeconds(CLOCK_PROCESS_CPUTIME_ID) - processorStart;
    return seconds;
}

/// Runs the program's code and the plain form alternately on the same work, so that the state of the machine is the
/// same for both. The reported time is that of the program's code. Counters: ns/item and plain_ns/item in processor
/// time, which other work on the machine disturbs least; cpu_ratio, the ratio of these two; ratio, that of the
/// wall-clock times.
/// @param itemsPerRun how many items one run of either handles
template <class Run, class PlainRun>
void againstPlainForm(benchmark::State& state, double itemsPerRun, Run run, PlainRun plainRun) {
    Spent own;
    Spent plain;
    for ([[maybe_unused]] auto _ : state) {
        state.SetIterationTime(addTime(own, run));
        addTime(plain, plainRun);
    }
    const double perItem = 1e9 / (itemsPerRun * static_cast<double>(state.iterations()));
    state.counters["ns/item"] = own.processorSeconds * perItem;
    state.counters["plain_ns/item"] = plain.processorSeconds * perItem;
    state.counters["cpu_ratio"] = plain.processorSeconds / own.processorSeconds;
    state.counters["ratio"] = plain.seconds / own.seconds;
}

}  // namespace varnolix::bench
