#pragma once

#include <benchmark/benchmark.h>

#include <algorithm>
#include <ctime>

namespace ZEP {

/// Seconds that the processor spends on a call, in the system too; what else runs beside it on a
/// busy machine does not count.
template <class Run>
double SecondsOf(Run run) {
    const std::clock_t start = std::clock();
    run();
    return static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
}

/// The best of a few runs of this very process.
template <class Run>
double BestSecondsOf(Run run) {
    double best = SecondsOf(run);
    for (int i = 0; i < 4; ++i) best = std::min(best, SecondsOf(run));
    return best;
}

/// The same as the time of one iteration.
template <class Run>
double Timed(benchmark::State& state, Run run) {
    const double seconds = SecondsOf(run);
    state.SetIterationTime(seconds);
    return seconds;
}

/// Items a second, and how many times the yardstick a reading takes.
inline void ReportReading(benchmark::State& state, double seconds, double yardstick, int items) {
    state.SetItemsProcessed(state.iterations() * items);
    state.counters["yardsticks"] = seconds / static_cast<double>(state.iterations()) / yardstick;
}

} // namespace ZEP
