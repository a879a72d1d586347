// The workstation on the office's store opening a job, as the user waits for it:
//  - BM_OpenJob: from choosing the job to the first paint of the page the user sees (the time
//    taken once that paint is done, since the other pages are bound in idle time after it), for
//    the 20-line sample job and the 744-line job, beside the same window binding every page at
//    the open (what opening cost when all eleven pages were bound at once). ready_ms: from the
//    open until the workstation is idle with every page bound.
//  - BM_SwitchPage: the first switch to each page after the open, once the workstation went
//    idle (the user looks at the opened page before clicking), until the page is painted; and
//    BM_SwitchBack: a later switch to the page.
//  - BM_SwitchAfterFirstPaint: the worst case, a tab clicked right after the first paint: the
//    switch waits for the page bound in idle time at that moment, then binds its own page if
//    the idle work did not reach it yet.
//  - BM_OpenJobOnPage: opening the 744-line job while the user has another page open (the page
//    stays open from job to job, so that page is the one bound at the open), to its first paint.
// Each figure is the median of the iterations, with the slowest beside it, and the median of the
// main thread's processor time over the same span (control_cpu_ms).
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

// Whether the page the user sees was painted since the last reset, and when that paint ended
// (the event that painted it handled, the window's content flushed): every figure runs to it.
class PaintWatch : public QObject {
public:
    explicit PaintWatch(QTabWidget* pages) : m_pages(pages) { qApp->installEventFilter(this); }
    ~PaintWatch() override { qApp->removeEventFilter(this); }
    void reset()
    {
        ++m_round;
        m_seen = false;
        m_painted = false;
    }
    bool painted() const { return m_painted; }
    Clock::time_point paintedAt() const { return m_at; }
    // This thread's processor time at that moment, in seconds.
    double paintedAtCpu() const { return m_cpu; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::Paint && !m_seen && watched->isWidgetType()) {
            QWidget* page = m_pages->currentWidget();
            auto* widget = static_cast<QWidget*>(watched);
            m_seen = page && (page == widget || page->isAncestorOf(widget));
            // Stamped right after the event that paints the page, before any later one.
            if (m_seen)
                QMetaObject::invokeMethod(
                    this,
                    [this, round = m_round] {
                        if (round != m_round)
                            return;
                        m_at = Clock::now();
                        m_cpu = ZebBench::threadSeconds();
                        m_painted = true;
                    },
                    Qt::QueuedConnection);
        }
        return false;
    }

private:
    QTabWidget* m_pages;
    int m_round = 0;
    bool m_seen = false;
    bool m_painted = false;
    Clock::time_point m_at;
    double m_cpu = 0;
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
    // Runs what, then lets Qt deliver the posted events and paint; answers the seconds until
    // the event that painted the page the user sees was handled, or a negative number when it
    // was not painted.
    double timeToPaint(const std::function<void()>& what)
    {
        watch->reset();
        const double cpuStart = ZebBench::threadSeconds();
        const auto start = Clock::now();
        what();
        settle();
        lastCpu = watch->paintedAtCpu() - cpuStart;
        return watch->painted() ? seconds(start, watch->paintedAt()) : -1;
    }
    // Runs the event loop until every page is bound (the idle work done) and nothing is left
    // to deliver; false when the pages were not all bound after many passes.
    bool runUntilIdle()
    {
        for (int pass = 0; pass < 1000 && !window->allPagesBound(); ++pass)
            QCoreApplication::processEvents();
        settle();
        return window->allPagesBound();
    }
    // Opens the job, waits for the idle work to end and shows the first page.
    bool openSettled(qint64 id, int page = 0)
    {
        window->openJob(id);
        window->showPage(page);
        return runUntilIdle();
    }

    QTemporaryDir dir;
    std::shared_ptr<ZebObjects::Store> store;
    std::unique_ptr<Workstation> window;
    QTabWidget* pages = nullptr;
    std::unique_ptr<PaintWatch> watch;
    qint64 other = 0;
    // The processor time of the last timeToPaint, in seconds: on a machine shared with other
    // work, the part of the wait that is the workstation's own.
    double lastCpu = 0;
};

struct Figures {
    std::vector<double> ms;
    void add(double seconds) { ms.push_back(seconds * 1e3); }
    double median() const { return ZebBench::median(ms); }
    double max() const { return ms.empty() ? 0 : *std::max_element(ms.begin(), ms.end()); }
};

// One wait per iteration, to the paint of the page the user sees: its median and slowest, and
// the main thread's processor time over it.
struct Waits {
    Figures wall, cpu;
    void add(benchmark::State& state, double seconds, double cpuSeconds)
    {
        wall.add(seconds);
        cpu.add(cpuSeconds);
        state.SetIterationTime(seconds);
    }
    void report(benchmark::State& state) const
    {
        state.counters["control_ms"] = wall.median();
        state.counters["control_max_ms"] = wall.max();
        state.counters["control_cpu_ms"] = cpu.median();
    }
};

bool notPainted(benchmark::State& state, double s)
{
    if (s >= 0)
        return false;
    state.SkipWithError("the page the user sees was not painted");
    return true;
}

bool notIdle(benchmark::State& state, bool idle)
{
    if (idle)
        return false;
    state.SkipWithError("the pages were not all bound in idle time");
    return true;
}

// The job opened while the first page is open, to the first paint of that page, and on until
// every other page is bound in idle time; against the same open with every page bound before the
// first paint.
void BM_OpenJob(benchmark::State& state)
{
    const int lines = int(state.range(0));
    Office office;
    const qint64 job = Workstation::jobByNumber(*office.store, jobOf(lines));
    Waits firstPaint;
    Figures ready, eager;
    for (auto _ : state) {
        if (notIdle(state, office.openSettled(office.other)))
            return;
        const auto start = Clock::now();
        const double c = office.timeToPaint([&] { office.window->openJob(job); });
        if (notPainted(state, c))
            return;
        const double cpu = office.lastCpu;
        if (notIdle(state, office.runUntilIdle()))
            return;
        const double r = seconds(start, Clock::now());
        if (notIdle(state, office.openSettled(office.other)))
            return;
        const double b = office.timeToPaint([&] {
            office.window->openJob(job);
            office.window->bindAllPages();
        });
        if (notPainted(state, b))
            return;
        firstPaint.add(state, c, cpu);
        ready.add(r);
        eager.add(b);
    }
    firstPaint.report(state);
    state.counters["ready_ms"] = ready.median();
    state.counters["ready_max_ms"] = ready.max();
    state.counters["baseline_ms"] = eager.median();
    state.counters["ratio"] = firstPaint.wall.median() / eager.median();
}

// The first switch to a page after the open, once the workstation went idle, and a later one.
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
    Waits waits;
    for (auto _ : state) {
        if (notIdle(state, office.openSettled(office.other))
            || notIdle(state, office.openSettled(job)))
            return;
        if (again) {
            office.window->showPage(index);
            settle();
            office.window->showPage(0);
            settle();
        }
        const double s = office.timeToPaint([&] { office.window->showPage(index); });
        if (notPainted(state, s))
            return;
        waits.add(state, s, office.lastCpu);
    }
    waits.report(state);
}

// A tab clicked right after the first paint of the opened job: the idle work has started on a
// page, which the click waits for, and the page clicked is bound then unless the idle work got
// to it first.
void BM_SwitchAfterFirstPaint(benchmark::State& state, const QString& title)
{
    Office office;
    const qint64 job = Workstation::jobByNumber(*office.store, kLargeJob);
    office.window->openJob(job);
    const int index = office.pageIndex(title);
    if (index <= 0) {
        state.SkipWithError("no such page after the first");
        return;
    }
    Waits waits;
    for (auto _ : state) {
        if (notIdle(state, office.openSettled(office.other)))
            return;
        // To the first paint and no further: the posted events only, no pass of the event loop.
        office.watch->reset();
        office.window->openJob(job);
        for (int round = 0; round < 4 && !office.watch->painted(); ++round)
            QCoreApplication::sendPostedEvents();
        if (notPainted(state, office.watch->painted() ? 0 : -1))
            return;
        const double cpuStart = ZebBench::threadSeconds();
        const auto start = Clock::now();
        // The click comes while the idle work binds its first page: one pass of the event loop.
        QCoreApplication::processEvents();
        office.watch->reset();
        office.window->showPage(index);
        settle();
        const double s = office.watch->painted() ? seconds(start, office.watch->paintedAt()) : -1;
        office.lastCpu = office.watch->paintedAtCpu() - cpuStart;
        if (notPainted(state, s))
            return;
        waits.add(state, s, office.lastCpu);
    }
    waits.report(state);
}

// The 744-line job opened while another page than the first is open, to its first paint.
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
    Waits waits;
    for (auto _ : state) {
        if (notIdle(state, office.openSettled(office.other, index)))
            return;
        const double s = office.timeToPaint([&] { office.window->openJob(job); });
        if (notPainted(state, s))
            return;
        waits.add(state, s, office.lastCpu);
    }
    waits.report(state);
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
            ("BM_SwitchAfterFirstPaint/744/" + nameOf(kPages[i])).c_str(),
            [title](benchmark::State& state) { BM_SwitchAfterFirstPaint(state, title); })
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
