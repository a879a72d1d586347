// The workstation on the office's store: opening a job and binding every page's control to it,
// first paint included, for the sample job and for the 744-line job. The growth between them
// shows what the job's size costs. There is no plain-Qt counterpart: the figure is the time a
// user waits after choosing a job.
#include "benchsupport.h"
#include "formdescription.h"
#include "contracts/runtime.h"
#include "officefile.h"
#include "store/store.h"
#include "workstation.h"

#include <QApplication>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <chrono>
#include <map>

namespace {

using Clock = std::chrono::steady_clock;
using ZebBench::seconds;
using ZebBench::settle;

std::map<QString, double>& openSeconds()
{
    static std::map<QString, double> s;
    return s;
}

void BM_OpenJob(benchmark::State& state, const QString& number, const QString& other)
{
    QTemporaryDir dir;
    auto store = OfficeFile::resetSample(dir.filePath(QStringLiteral("office.sqlite")));
    ZebObjects::Runtime::setApplicationServices(store->applicationServices());
    Workstation::Options options;
    options.remember = false;
    {
        Workstation window(FormDescription::fromFile(QStringLiteral(":/forms/workbench.json")),
                           store, options);
        window.resize(980, 720);
        window.show();
        const qint64 job = Workstation::jobByNumber(*store, number);
        const qint64 away = Workstation::jobByNumber(*store, other);
        double total = 0;
        for (auto _ : state) {
            window.openJob(away);
            settle();
            const auto start = Clock::now();
            window.openJob(job);
            settle();
            const double c = seconds(start, Clock::now());
            total += c;
            state.SetIterationTime(c);
        }
        const double mean = total / double(state.iterations());
        state.counters["control_ms"] = mean * 1e3;
        openSeconds()[number] = mean;
        if (openSeconds().count(QStringLiteral("24-0131")) && number == QStringLiteral("25-0009"))
            state.counters["growth_744_over_20"] = mean / openSeconds()[QStringLiteral("24-0131")];
    }
    ZebObjects::Runtime::setApplicationServices(nullptr);
}

// The sample job (20 lines) first, so that the 744-line job can report its growth.
BENCHMARK_CAPTURE(BM_OpenJob, sample_20_lines, QStringLiteral("24-0131"), QStringLiteral("24-0117"))
    ->Iterations(5)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_OpenJob, large_744_lines, QStringLiteral("25-0009"), QStringLiteral("24-0117"))
    ->Iterations(5)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv)
{
    return ZebBench::runBenchmarks<QApplication>(argc, argv);
}
