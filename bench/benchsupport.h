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
