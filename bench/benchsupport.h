#pragma once

// What every benchmark program shares: time arithmetic, letting Qt lay out and paint, medians of
// the control against its baseline, and main.

#include <QCoreApplication>
#include <QEvent>
#include <QObject>
#include <QPointer>
#include <QWidget>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <ctime>
#include <utility>
#include <vector>

namespace ZebBench {

using Clock = std::chrono::steady_clock;

// Seconds between two points of any std::chrono-style clock.
template <class TimePoint>
double seconds(TimePoint from, TimePoint to)
{
    return std::chrono::duration<double>(to - from).count();
}

// Layout and the first paint, as the user would see the result. Objects deleted later (an old
// model, old items) stay alive: see settleAll() for what the user waits for in full.
inline void settle()
{
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents();
}

// Everything the user waits for after an operation: every posted event, the deferred deletes
// among them (QCoreApplication::sendPostedEvents() with no type leaves those for the event
// loop, which a benchmark never returns to), layout and the first paint.
inline void settleAll()
{
    for (int round = 0; round < 2; ++round) {
        QCoreApplication::sendPostedEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCoreApplication::processEvents();
    }
}

// The processor time this thread has used, in seconds: on a machine shared with other work, the
// part of a wall time that is this benchmark's own.
inline double threadSeconds()
{
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return double(now.tv_sec) + double(now.tv_nsec) * 1e-9;
}

// One timed step: the time the user waits and the processor time spent on it.
struct Timing {
    double wall = 0;
    double cpu = 0;
};

// Runs operation alone (nothing settled after it); returns the time it took.
template <class Operation>
Timing timeStep(Operation&& operation)
{
    const double cpuStart = threadSeconds();
    const auto start = Clock::now();
    std::forward<Operation>(operation)();
    return {seconds(start, Clock::now()), threadSeconds() - cpuStart};
}

// Runs operation and settles everything after it; returns the time both took.
template <class Operation>
Timing timeSettled(Operation&& operation)
{
    const double cpuStart = threadSeconds();
    const auto start = Clock::now();
    std::forward<Operation>(operation)();
    settleAll();
    return {seconds(start, Clock::now()), threadSeconds() - cpuStart};
}

// Counts the paint events a widget receives, so that a benchmark can make sure the operation it
// timed really ended in a paint.
class PaintCounter : public QObject {
public:
    explicit PaintCounter(QWidget* widget) : m_widget(widget) { widget->installEventFilter(this); }
    ~PaintCounter() override
    {
        if (m_widget)
            m_widget->removeEventFilter(this);
    }
    PaintCounter(const PaintCounter&) = delete;
    PaintCounter& operator=(const PaintCounter&) = delete;

    int paints() const { return m_paints; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::Paint)
            ++m_paints;
        return QObject::eventFilter(watched, event);
    }

private:
    QPointer<QWidget> m_widget;
    int m_paints = 0;
};

// Writes a buffer larger than the last-level cache, so that the next step starts cold, as a
// user's click on data loaded long before does.
inline void evictCaches()
{
    static std::vector<char> buffer(std::size_t(96) << 20);
    static char round = 0;
    ++round;
    for (std::size_t i = 0; i < buffer.size(); i += 64)
        buffer[i] = char(buffer[i] + round);
    benchmark::DoNotOptimize(buffer.data());
    benchmark::ClobberMemory();
}

// The middle value; the mean of the two middle ones for an even count; 0 for none.
inline double median(std::vector<double> values)
{
    if (values.empty())
        return 0;
    std::sort(values.begin(), values.end());
    const std::size_t n = values.size();
    return n % 2 ? values[n / 2] : (values[n / 2 - 1] + values[n / 2]) / 2;
}

// The times of one benchmark, the control and its baseline measured in the same iteration.
class Samples {
public:
    void add(Timing control, Timing baseline)
    {
        m_wall.add(control.wall, baseline.wall);
        m_cpu.add(control.cpu, baseline.cpu);
    }
    // Whether this iteration runs the baseline first. Alternating the order keeps either side
    // from always finding the caches as the other left them.
    bool baselineFirst() const { return m_wall.control.size() % 2 == 0; }
    // Runs one iteration's two sides in the order baselineFirst says.
    template <class Control, class Baseline>
    void inTurn(Control&& control, Baseline&& baseline) const
    {
        if (baselineFirst()) {
            baseline();
            control();
        } else {
            control();
            baseline();
        }
    }

    double controlMedian() const { return median(m_wall.control); }
    double baselineMedian() const { return median(m_wall.baseline); }
    double ratioMedian() const { return median(m_wall.ratios); }
    double controlCpuMedian() const { return median(m_cpu.control); }
    double baselineCpuMedian() const { return median(m_cpu.baseline); }
    double ratioCpuMedian() const { return median(m_cpu.ratios); }
    std::size_t size() const { return m_wall.control.size(); }

private:
    struct Series {
        std::vector<double> control;
        std::vector<double> baseline;
        std::vector<double> ratios;
        void add(double c, double b)
        {
            control.push_back(c);
            baseline.push_back(b);
            if (b > 0)
                ratios.push_back(c / b);
        }
    };
    Series m_wall;
    Series m_cpu;
};

// Reports the medians: control_ms and baseline_ms are each side's median wall time, ratio the
// median of the per-iteration ratios (the counters bench/check_targets.py reads); the same in
// processor time as control_cpu_ms, baseline_cpu_ms and ratio_cpu. A busy shared machine
// stretches some iterations of either side; the medians are what it shifts least.
inline void reportMedians(benchmark::State& state, const Samples& samples)
{
    state.counters["control_ms"] = samples.controlMedian() * 1e3;
    state.counters["baseline_ms"] = samples.baselineMedian() * 1e3;
    state.counters["ratio"] = samples.ratioMedian();
    state.counters["control_cpu_ms"] = samples.controlCpuMedian() * 1e3;
    state.counters["baseline_cpu_ms"] = samples.baselineCpuMedian() * 1e3;
    state.counters["ratio_cpu"] = samples.ratioCpuMedian();
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
