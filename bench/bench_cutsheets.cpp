// Exporting a package with its cut sheets: the 744-line job with every part on, its lines under
// 60 fixture types, each type with a 4-page cut sheet of its own (text, vector art and a picture
// on every page), merged after the labels with contents, bookmarks and stamps.
//
//   BM_ExportWithCutSheets   one whole export to a file: control_ms. Beside it, baseline_ms is
//                            qpdf's own command merging the package's drawn pages and the same
//                            60 files (qpdf --empty --pages ... -- out.pdf), the floor of the
//                            merge alone; ratio is ours over qpdf's.

#include "benchsupport.h"
#include "contracts/lineitems.h"
#include "objects/standalonebom.h"
#include "objects/standalonecoverletter.h"
#include "objects/standalonelineitem.h"
#include "objects/standalonelineitems.h"
#include "objects/standalonepackagesource.h"
#include "objects/standalonesubmittal.h"
#include "package/packagegenerator.h"

#include <QBuffer>
#include <QFile>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QPdfWriter>
#include <QProcess>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <chrono>

using namespace ZebObjects;
using Clock = std::chrono::steady_clock;
using ZebBench::seconds;

namespace {

constexpr int kTypes = 60;
constexpr int kSheetPages = 4;
constexpr qint16 kLines = 744;

QByteArray cutSheet(int type)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    {
        QPdfWriter writer(&buffer);
        writer.setPageSize(QPageSize(type % 3 == 0 ? QPageSize::A4 : QPageSize::Letter));
        writer.setResolution(72);
        QPainter p(&writer);
        QImage photo(240, 160, QImage::Format_RGB32);
        for (int y = 0; y < photo.height(); ++y)
            for (int x = 0; x < photo.width(); ++x)
                photo.setPixel(x, y, qRgb((x + type) % 256, (y * 3) % 256, (x * y + type) % 256));
        for (int page = 1; page <= kSheetPages; ++page) {
            if (page > 1)
                writer.newPage();
            p.setFont(QFont(QStringLiteral("DejaVu Sans"), 18, QFont::Bold));
            p.drawText(QPointF(54, 72),
                       QStringLiteral("Series %1 LED luminaire, page %2").arg(type).arg(page));
            p.setFont(QFont(QStringLiteral("DejaVu Sans"), 9));
            for (int row = 0; row < 30; ++row)
                p.drawText(QPointF(54, 300 + row * 14),
                           QStringLiteral("Option %1: %2 lm, %3K, 0-10V dimming, catalog VH-%4-%5")
                               .arg(row)
                               .arg(1000 + 100 * row)
                               .arg(3000 + 500 * (row % 3))
                               .arg(type)
                               .arg(row));
            p.drawImage(QRectF(54, 100, 240, 160), photo);
            for (int i = 0; i < 20; ++i)
                p.drawLine(QPointF(320, 100 + i * 8), QPointF(560, 260 - i * 8));
        }
    }
    return buffer.data();
}

std::shared_ptr<StandalonePackageSource> job(bool withSheets)
{
    auto job = StandalonePackageSource::sampleJob(kLines);
    auto& submittal = static_cast<StandaloneSubmittal&>(*job->Submittal());
    submittal.setIncludeCoverLetter(true);
    submittal.setIncludeBOM(true);
    submittal.setIncludeLabels(true);
    auto letter = submittal.standaloneCoverLetter();
    letter->setIncludeLogo(true);
    letter->setSeparateLetters(true);
    auto& bom = static_cast<StandaloneBOM&>(*job->BOM());
    bom.setIncludeQuantity(true);
    bom.setIncludeType(true);
    bom.setIncludeBrand(true);
    bom.setIncludeCatalogNumber(true);
    bom.setIncludeDescription(true);
    // The job's lines, ticked, under 60 types in runs.
    auto lines = std::make_shared<StandaloneLineItems>();
    const auto from = job->LineItems()->Enumerate();
    for (qsizetype i = 0; i < from.size(); ++i) {
        StandaloneLineItem::Data data;
        data.quantity = qint32(i % 40 + 1);
        data.type =
            QStringLiteral("T%1").arg(i * kTypes / from.size() + 1, 2, 10, QLatin1Char('0'));
        data.brand = from[i]->Brand();
        data.catalogNumber = from[i]->CatalogNumber();
        data.description = from[i]->Description();
        data.group = from[i]->Group();
        data.selected = true;
        lines->Add(data);
    }
    job->setLineItems(lines);
    if (withSheets) {
        QList<ZebPackage::CutSheet> sheets;
        for (int t = 1; t <= kTypes; ++t)
            sheets.append({QStringLiteral("T%1").arg(t, 2, 10, QLatin1Char('0')),
                           QStringLiteral("series-%1.pdf").arg(t), cutSheet(t), kSheetPages});
        job->setCutSheets(sheets);
    }
    return job;
}

void BM_ExportWithCutSheets(benchmark::State& state)
{
    const auto withSheets = job(true);
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("package.pdf"));

    // The baseline's input: the package's drawn pages and the same sheets as files.
    const auto drawnOnly = job(false);
    ZebPackage::PackageGenerator plain;
    plain.Generate(*drawnOnly, dir.filePath(QStringLiteral("drawn.pdf")));
    QStringList args{QStringLiteral("--empty"), QStringLiteral("--pages"),
                     dir.filePath(QStringLiteral("drawn.pdf"))};
    for (const auto& sheet : withSheets->CutSheets()) {
        QFile f(dir.filePath(sheet.FileName));
        f.open(QIODevice::WriteOnly);
        f.write(sheet.Pdf);
        args << f.fileName();
    }
    args << QStringLiteral("--") << dir.filePath(QStringLiteral("qpdf.pdf"));

    double ours = 0;
    double theirs = 0;
    qint32 pages = 0;
    for (auto _ : state) {
        ZebPackage::PackageGenerator generator;
        auto start = Clock::now();
        generator.Generate(*withSheets, path);
        auto end = Clock::now();
        ours += seconds(start, end);
        pages = generator.pageCount();
        state.SetIterationTime(seconds(start, end));

        QProcess qpdf;
        start = Clock::now();
        qpdf.start(QStringLiteral("qpdf"), args);
        qpdf.waitForFinished(60000);
        end = Clock::now();
        theirs += seconds(start, end);
        if (qpdf.exitCode() != 0)
            state.SkipWithError("qpdf failed to merge the files");
    }
    ZebBench::reportAgainstBaseline(state, ours, theirs);
    state.counters["pages"] = pages;
    state.counters["drawn_pages"] = plain.pageCount();
    state.counters["package_mb"] = double(QFile(path).size()) / (1024.0 * 1024.0);
}
BENCHMARK(BM_ExportWithCutSheets)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(5);

}  // namespace

int main(int argc, char** argv)
{
    return ZebBench::runBenchmarks<QGuiApplication>(argc, argv);
}
