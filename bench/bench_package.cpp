// Exporting the submittal package of a job with every part on: cover letters (one per
// recipient, with carbon copies, logo, paragraphs and remarks), a bill of materials with every
// column, comment and default remark, and the labels.
//
//   BM_Export/N   one export of the job with N lines: wall time, pages written
//   BM_Growth     the 100-line and the 744-line export in the same iteration; growth is the
//                 ratio of their times (linear growth would be 7.44)

#include "benchsupport.h"
#include "objects/standalonebom.h"
#include "objects/standalonecoverletter.h"
#include "objects/standalonepackagesource.h"
#include "objects/standalonesubmittal.h"
#include "contracts/textobjects.h"
#include "package/packagegenerator.h"

#include <QGuiApplication>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <chrono>

using namespace ZebObjects;
using Clock = std::chrono::steady_clock;
using ZebBench::seconds;

namespace {

std::shared_ptr<StandalonePackageSource> fullJob(qint16 lines)
{
    auto job = StandalonePackageSource::sampleJob(lines);
    auto& submittal = static_cast<StandaloneSubmittal&>(*job->Submittal());
    submittal.setIncludeCoverLetter(true);
    submittal.setIncludeBOM(true);
    submittal.setIncludeLabels(true);
    auto letter = submittal.standaloneCoverLetter();
    letter->setIncludeLogo(true);
    letter->setIncludeDefaultParagraphs(true);
    letter->setIncludeRemarks(true);
    letter->setSeparateLetters(true);
    letter->setIncludeCarbonCopy(true);
    auto& bom = static_cast<StandaloneBOM&>(*job->BOM());
    bom.setIncludeQuantity(true);
    bom.setIncludeType(true);
    bom.setIncludeBrand(true);
    bom.setIncludeManufacturer(true);
    bom.setIncludeCatalogNumber(true);
    bom.setIncludeDescription(true);
    bom.setIncludeLineComments(true);
    bom.setIncludeMTO(true);
    bom.setIncludeGroupCodes(true);
    bom.setIncludeDefaultRemarks(true);
    for (const auto& remark : bom.DefaultRemarks()->Enumerate())
        remark->setSelected(true);
    return job;
}

double exportSeconds(const StandalonePackageSource& job, const QString& path, qint32* pages)
{
    ZebPackage::PackageGenerator generator;
    const auto start = Clock::now();
    generator.Generate(job, path);
    const auto end = Clock::now();
    *pages = generator.pageCount();
    return seconds(start, end);
}

void BM_Export(benchmark::State& state)
{
    const auto job = fullJob(qint16(state.range(0)));
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("package.pdf"));
    qint32 pages = 0;
    double total = 0;
    for (auto _ : state) {
        const double seconds = exportSeconds(*job, path, &pages);
        total += seconds;
        state.SetIterationTime(seconds);
    }
    state.counters["pages"] = pages;
    state.counters["export_ms"] = 1000.0 * total / double(state.iterations());
}
BENCHMARK(BM_Export)
    ->Arg(100)
    ->Arg(744)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond)
    ->MinTime(2.0);

void BM_Growth(benchmark::State& state)
{
    const auto small = fullJob(100);
    const auto large = fullJob(744);
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("package.pdf"));
    double smallTotal = 0;
    double largeTotal = 0;
    qint32 smallPages = 0;
    qint32 largePages = 0;
    for (auto _ : state) {
        const double a = exportSeconds(*small, path, &smallPages);
        const double b = exportSeconds(*large, path, &largePages);
        smallTotal += a;
        largeTotal += b;
        state.SetIterationTime(a + b);
    }
    const double n = double(state.iterations());
    state.counters["ms_100"] = 1000.0 * smallTotal / n;
    state.counters["ms_744"] = 1000.0 * largeTotal / n;
    state.counters["pages_100"] = smallPages;
    state.counters["pages_744"] = largePages;
    state.counters["growth_744_over_100"] = largeTotal / smallTotal;
}
BENCHMARK(BM_Growth)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(10);

}  // namespace

int main(int argc, char** argv)
{
    return ZebBench::runBenchmarks<QGuiApplication>(argc, argv);
}
