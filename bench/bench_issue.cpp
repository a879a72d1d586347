// Issuing a package: the export a user would make anyway, plus the record of the issued
// revision in the office's store (the PDF's bytes and SHA-256, the lines as printed, the
// settings) in one transaction with the file.
//
//   BM_Issue/744   the 744-line job of the sample office, every line ticked: one issue
//                  (control) beside one plain export of the same job (baseline) in each
//                  iteration; ratio = issue / export (target 1.5)

#include "benchsupport.h"
#include "contracts/lineitem.h"
#include "contracts/lineitems.h"
#include "officefile.h"
#include "package/packagegenerator.h"
#include "packageissuer.h"
#include "store/store.h"
#include "store/storejob.h"
#include "store/storelineitems.h"
#include "storepackagesource.h"

#include <QGuiApplication>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <chrono>

using Clock = std::chrono::steady_clock;
using ZebBench::seconds;

namespace {

void BM_Issue(benchmark::State& state)
{
    QTemporaryDir dir;
    const auto store = OfficeFile::resetSample(dir.filePath(QStringLiteral("office.sqlite")));
    std::shared_ptr<ZebObjects::StoreJob> job;
    for (const auto& summary : store->jobs())
        if (summary.lineCount == state.range(0))
            job = store->openJob(summary.id);
    if (!job) {
        state.SkipWithError("the sample office has no job of that many lines");
        return;
    }
    store->writeAll([&] {
        for (const auto& line : job->lineItems()->Enumerate())
            line->setSelected(true);
    });
    const QString exported = dir.filePath(QStringLiteral("export.pdf"));
    const QString issued = dir.filePath(QStringLiteral("issue.pdf"));
    double issueTotal = 0;
    double exportTotal = 0;
    for (auto _ : state) {
        auto start = Clock::now();
        ZebPackage::PackageGenerator generator;
        generator.Generate(StorePackageSource(*store, job), exported);
        const double exportSeconds = seconds(start, Clock::now());
        start = Clock::now();
        PackageIssuer issuer(store, job);
        issuer.issue(issued);
        const double issueSeconds = seconds(start, Clock::now());
        exportTotal += exportSeconds;
        issueTotal += issueSeconds;
        state.SetIterationTime(issueSeconds);
    }
    const double n = double(state.iterations());
    state.counters["control_ms"] = 1000.0 * issueTotal / n;
    state.counters["baseline_ms"] = 1000.0 * exportTotal / n;
    state.counters["ratio"] = issueTotal / exportTotal;
}
BENCHMARK(BM_Issue)->Arg(744)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(8);

}  // namespace

int main(int argc, char** argv)
{
    return ZebBench::runBenchmarks<QGuiApplication>(argc, argv);
}
