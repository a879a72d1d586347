#pragma once

// What every benchmark program shares: time arithmetic, letting Qt lay out and paint, and main.

#include <QCoreApplication>

#include <benchmark/benchmark.h>

#include <chrono>

namespace ZebBench {

// Seconds between two points of any std::chrono-style clock.
template <class TimePoint>
double seconds(TimePoint from, TimePoint to)
{
    return std::chrono::duration<double>(to - from).count();
}

// Layout and the first paint, as the user would see the result.
inline void settle()
{
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents();
}

// Reports the control's and the baseline's mean times over the benchmark's iterations and their
// ratio: the counters bench/check_targets.py reads.
inline void reportAgainstBaseline(benchmark::State& state, double controlSeconds,
                                  double baselineSeconds)
{
    const double n = double(state.iterations());
    state.counters["control_ms"] = controlSeconds / n * 1e3;
    state.counters["baseline_ms"] = baselineSeconds / n * 1e3;
    state.counters["ratio"] = controlSeconds / baselineSeconds;
}

// Runs the registered benchmarks inside an Application (QApplication for widgets), on the
// offscreen platform unless another one is asked for.
template <class Application>
int runBenchmarks(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    Application app(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}

}  // namespace ZebBench
