// The workstation on the office's store opening a job, as the user waits for it:
//  - BM_OpenJob: from choosing the job to the first paint of the page the user sees (posted
//    events included), for the 20-line sample job and the 744-line job, beside the same window
//    binding every page at the open (what opening cost when all eleven pages were bound at once).
//  - BM_SwitchPage: after the open, the first switch to each page (which binds it) until it is
//    painted; and BM_SwitchBack: a later switch to the page, bound already.
//  - BM_OpenJobOnPage: opening the 744-line job while the user has another page open (the page
//    stays open from job to job, so that page is the one bound at the open).
// Each figure is the median of the iterations, with the slowest beside it.
#include "benchsupport.h"
#include "contracts/runtime.h"
#include "formdescription.h"
#include "officefile.h"
#include "store/store.h"
#include "workstation.h"

#include <QApplication>
#include <QTabWidget>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <functional>
#include <map>
#include <memory>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;
using ZebBench::seconds;
using ZebBench::settle;

const QString kSampleJob = QStringLiteral("24-0131");  // 20 lines
const QString kLargeJob = QStringLiteral("25-0009");  // 744 lines
const QString kOtherJob = QStringLiteral("24-0117");

// The workstation's pages: the form's and its own.
const char* const kPages[] = {"General Information",
                              "Customers",
                              "Cover Letter Options",
                              "Cover Letter Paragraphs",
                              "Cover Letter Remarks",
                              "Bill of Materials",
                              "Labels",
                              "Line Items",
                              "Line Items Editor",
                              "Recipients",
                              "History"};

QString jobOf(int lines)
{
    return lines == 744 ? kLargeJob : kSampleJob;
}

// Whether the page the user sees was painted since the last reset: every figure runs to that paint.
class PaintWatch : public QObject {
public:
    explicit PaintWatch(QTabWidget* pages) : m_pages(pages) { qApp->installEventFilter(this); }
    ~PaintWatch() override { qApp->removeEventFilter(this); }
    void reset() { m_painted = false; }
    bool painted() const { return m_painted; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::Paint && !m_painted && watched->isWidgetType()) {
            QWidget* page = m_pages->currentWidget();
            auto* widget = static_cast<QWidget*>(watched);
            m_painted = page && (page == widget || page->isAncestorOf(widget));
        }
        return false;
    }

private:
    QTabWidget* m_pages;
    bool m_painted = false;
};

// A fresh sample office and its workstation, shown at a user's size.
struct Office {
    Office()
    {
        store = OfficeFile::resetSample(dir.filePath(QStringLiteral("office.sqlite")));
        ZebObjects::Runtime::setApplicationServices(store->applicationServices());
        Workstation::Options options;
        options.remember = false;
        window = std::make_unique<Workstation>(
            FormDescription::fromFile(QStringLiteral(":/forms/workbench.json")), store, options);
        window->resize(980, 720);
        window->show();
        pages = window->findChild<QTabWidget*>(QStringLiteral("tabPages"));
        watch = std::make_unique<PaintWatch>(pages);
        other = Workstation::jobByNumber(*store, kOtherJob);
        settle();
    }
    ~Office()
    {
        watch.reset();
        window.reset();
        ZebObjects::Runtime::setApplicationServices(nullptr);
    }
    int pageIndex(const QString& title) const { return int(window->pageTitles().indexOf(title)); }
    // Runs what, then lets Qt deliver the posted events and paint; answers the seconds taken,
    // or a negative number when the page the user sees was not painted.
    double time(const std::function<void()>& what)
    {
        watch->reset();
        const auto start = Clock::now();
        what();
        settle();
        const double s = seconds(start, Clock::now());
        return watch->painted() ? s : -1;
    }

    QTemporaryDir dir;
    std::shared_ptr<ZebObjects::Store> store;
    std::unique_ptr<Workstation> window;
    QTabWidget* pages = nullptr;
    std::unique_ptr<PaintWatch> watch;
    qint64 other = 0;
};

struct Figures {
    std::vector<double> ms;
    void add(double seconds) { ms.push_back(seconds * 1e3); }
    double median() const
    {
        std::vector<double> v = ms;
        std::sort(v.begin(), v.end());
        const size_t n = v.size();
        return n == 0 ? 0 : n % 2 ? v[n / 2] : (v[n / 2 - 1] + v[n / 2]) / 2;
    }
    double max() const { return ms.empty() ? 0 : *std::max_element(ms.begin(), ms.end()); }
};

bool notPainted(benchmark::State& state, double s)
{
    if (s >= 0)
        return false;
    state.SkipWithError("the page the user sees was not painted");
    return true;
}

// The job opened while the first page is open: only that page is bound, against the same open
// with every page bound before the first paint.
void BM_OpenJob(benchmark::State& state)
{
    const int lines = int(state.range(0));
    Office office;
    const qint64 job = Workstation::jobByNumber(*office.store, jobOf(lines));
    Figures lazy, eager;
    for (auto _ : state) {
        office.window->openJob(office.other);
        office.window->showPage(0);
        settle();
        const double c = office.time([&] { office.window->openJob(job); });
        if (notPainted(state, c))
            return;
        office.window->openJob(office.other);
        settle();
        const double b = office.time([&] {
            office.window->openJob(job);
            office.window->bindAllPages();
        });
        if (notPainted(state, b))
            return;
        lazy.add(c);
        eager.add(b);
        state.SetIterationTime(c);
    }
    state.counters["control_ms"] = lazy.median();
    state.counters["control_max_ms"] = lazy.max();
    state.counters["baseline_ms"] = eager.median();
    state.counters["ratio"] = lazy.median() / eager.median();
}

// The first switch to a page after the open (the page is bound then), and a later one.
void BM_SwitchPage(benchmark::State& state, int lines, const QString& title, bool again)
{
    Office office;
    const qint64 job = Workstation::jobByNumber(*office.store, jobOf(lines));
    office.window->openJob(job);
    const int index = office.pageIndex(title);
    if (index <= 0) {
        state.SkipWithError("no such page after the first");
        return;
    }
    Figures figures;
    for (auto _ : state) {
        office.window->openJob(office.other);
        office.window->showPage(0);
        office.window->openJob(job);
        settle();
        if (again) {
            office.window->showPage(index);
            settle();
            office.window->showPage(0);
            settle();
        }
        const double s = office.time([&] { office.window->showPage(index); });
        if (notPainted(state, s))
            return;
        figures.add(s);
        state.SetIterationTime(s);
    }
    state.counters["control_ms"] = figures.median();
    state.counters["control_max_ms"] = figures.max();
}

// The 744-line job opened while another page than the first is open.
void BM_OpenJobOnPage(benchmark::State& state, const QString& title)
{
    Office office;
    const qint64 job = Workstation::jobByNumber(*office.store, kLargeJob);
    office.window->openJob(office.other);
    const int index = office.pageIndex(title);
    if (index <= 0) {
        state.SkipWithError("no such page after the first");
        return;
    }
    Figures figures;
    for (auto _ : state) {
        office.window->openJob(office.other);
        office.window->showPage(index);
        settle();
        const double s = office.time([&] { office.window->openJob(job); });
        if (notPainted(state, s))
            return;
        figures.add(s);
        state.SetIterationTime(s);
    }
    state.counters["control_ms"] = figures.median();
    state.counters["control_max_ms"] = figures.max();
}

// Benchmark names without spaces: "Line Items Editor" -> "LineItemsEditor".
std::string nameOf(const char* title)
{
    return QString::fromLatin1(title).remove(QLatin1Char(' ')).toStdString();
}

void registerBenchmarks()
{
    benchmark::RegisterBenchmark("BM_OpenJob", BM_OpenJob)
        ->Arg(20)
        ->Arg(744)
        ->Iterations(7)
        ->UseManualTime()
        ->Unit(benchmark::kMillisecond);
    for (const bool again : {false, true})
        for (const int lines : {20, 744})
            for (size_t i = 1; i < std::size(kPages); ++i) {
                const QString title = QString::fromLatin1(kPages[i]);
                benchmark::RegisterBenchmark(
                    (std::string(again ? "BM_SwitchBack/" : "BM_SwitchPage/")
                     + std::to_string(lines) + "/" + nameOf(kPages[i]))
                        .c_str(),
                    [lines, title, again](benchmark::State& state) {
                        BM_SwitchPage(state, lines, title, again);
                    })
                    ->Iterations(5)
                    ->UseManualTime()
                    ->Unit(benchmark::kMillisecond);
            }
    for (size_t i = 1; i < std::size(kPages); ++i) {
        const QString title = QString::fromLatin1(kPages[i]);
        benchmark::RegisterBenchmark(
            ("BM_OpenJobOnPage/744/" + nameOf(kPages[i])).c_str(),
            [title](benchmark::State& state) { BM_OpenJobOnPage(state, title); })
            ->Iterations(5)
            ->UseManualTime()
            ->Unit(benchmark::kMillisecond);
    }
}

}  // namespace

int main(int argc, char** argv)
{
    registerBenchmarks();
    return ZebBench::runBenchmarks<QApplication>(argc, argv);
}
