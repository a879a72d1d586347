// The line item viewer against what one writes by hand in plain Qt: a QScrollArea holding one
// QWidget per line, each with a QCheckBox and ten QLabels (number, quantity, type, brand, catalog
// number, group, made-to-order mark, "Desc:", description, comment picture) at the row's places,
// filled with the same texts and tool tips and striped the same way. The viewer is made the way a
// host makes it, by identifier through the control registry, and bound through its LineItems
// property by name. Both are shown offscreen at the same size and measured in the same iteration,
// posted events and the first paint included; each figure is the median of the iterations.
//
//   BM_Bind/N        binding N lines (100 and 744, the most the list's 16-bit height allows)
//   BM_Rebind/744    binding another 744 lines to a viewer that shows 744 (its rows destroyed and
//                    built again) against the hand-written stack given another 744 lines (its
//                    old rows destroyed too)
//   BM_ScrollStep    one scroll step of one row at 744 lines, repaint included
//   BM_RowMemory     resident set growth per row, beside the hand-written stack's
//   BM_TableView     binding 744 lines against a QTableView over a model filled before it is
//                    set (the idiomatic list)

#include "benchsupport.h"
#include "objects/standaloneservices.h"
#include "controls/lineitems/ctlsubline.h"
#include "controls/lineitems/ctlsublinedsp.h"
#include "controls/lineitems/ctlsublines.h"
#include "frame/controlregistry.h"
#include "frame/units.h"
#include "objects/standalonelineitems.h"
#include "platform/scrollbar.h"

#include <QApplication>
#include <QCheckBox>
#include <QFile>
#include <QHeaderView>
#include <QLabel>
#include <QScrollArea>
#include <QStandardItemModel>
#include <QTableView>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <malloc.h>
#include <time.h>
#include <unistd.h>

#include <chrono>
#include <map>
#include <memory>
#include <vector>

using namespace ZebSubCtl;
// Times are the main thread's processor time: the benchmarks run on shared machines, where
// wall time mostly measures the neighbours.
struct Clock {
    using time_point = std::chrono::duration<double>;
    static time_point now()
    {
        timespec t{};
        clock_gettime(CLOCK_THREAD_CPUTIME_ID, &t);
        return time_point(double(t.tv_sec) + double(t.tv_nsec) * 1e-9);
    }
};
using ZebObjects::StandaloneLineItem;
using ZebObjects::StandaloneLineItems;

using ZebBench::median;
using ZebBench::seconds;
using ZebBench::settle;

namespace {

// The viewer's design size.
constexpr QSize kViewerSize(610, 355);
constexpr int kMostLines = 744;

std::shared_ptr<StandaloneLineItems> jobLines(int count, int variant = 0)
{
    auto items = std::make_shared<StandaloneLineItems>();
    for (int i = 1; i <= count; ++i) {
        StandaloneLineItem::Data d;
        d.quantity = 2 + (i * 7 + variant) % 60;
        d.type = QStringLiteral("%1%2").arg(QChar(u'A' + (i + variant) % 26)).arg(i % 10);
        d.brand = (i + variant) % 3 == 0 ? QStringLiteral("Quenza Architectural")
                                         : QStringLiteral("Varnholt");
        d.catalogNumber = QStringLiteral("VH-2X4-LP-%1L-35K-DIM").arg(20 + i % 40);
        d.description = QStringLiteral("Recessed LED troffer %1, 4000 lm, 3500K, 0-10V").arg(i);
        d.group = QStringLiteral("LVL%1").arg(1 + i % 4);
        d.mto = i % 5 == 0;
        if (i % 4 == 0)
            d.comment = QStringLiteral("Finish sample to be approved.");
        d.selected = i % 3 == 0;
        items->Add(d);
    }
    return items;
}

// --- the hand-written stack

QLabel* plainLabel(QWidget* row, const QString& text, QRect place)
{
    auto* label = new QLabel(text, row);
    label->setGeometry(place);
    return label;
}

// One QWidget per line with a QCheckBox and ten QLabels, stacked in a container that the
// scroll area takes once it is full.
QWidget* plainStack(const ZebObjects::LineItems& items, int width)
{
    static const QPixmap comment(QStringLiteral(":/lineitems/comment.xpm"));
    auto* container = new QWidget;
    const auto all = items.Enumerate();
    container->resize(width, int(all.size()) * 44);
    QPalette grey = container->palette();
    grey.setColor(QPalette::Window, QColor(0xE0, 0xE0, 0xE0));
    QPalette white = container->palette();
    white.setColor(QPalette::Window, Qt::white);
    int n = 0;
    for (const auto& item : all) {
        ++n;
        auto* row = new QWidget(container);
        row->setGeometry(0, (n - 1) * 44, width, 44);
        row->setAutoFillBackground(true);
        row->setPalette(n % 2 == 0 ? grey : white);
        plainLabel(row, QString::number(n), twipsRect(30, 60, 375, 240));
        auto* picture = plainLabel(row, QString(), twipsRect(660, 60, 240, 240));
        picture->setPixmap(comment);
        picture->setVisible(item->Comment() != nullptr);
        plainLabel(row, item->Quantity(), twipsRect(975, 60, 675, 240));
        plainLabel(row, item->Type(), twipsRect(1665, 60, 780, 240))->setToolTip(item->Type());
        plainLabel(row, item->Brand(), twipsRect(2460, 60, 1425, 240));
        plainLabel(row, item->CatalogNumber(), twipsRect(3900, 60, 4050, 240))
            ->setToolTip(item->CatalogNumber());
        plainLabel(row, item->Group(), twipsRect(7965, 60, 840, 240));
        auto* box = new QCheckBox(row);
        box->setGeometry(twipsRect(30, 345, 225, 225));
        box->setChecked(item->Selected());
        plainLabel(row, QStringLiteral("MTO"), twipsRect(330, 330, 630, 240))
            ->setVisible(item->MTO());
        plainLabel(row, QStringLiteral("Desc:"), twipsRect(1650, 330, 780, 240));
        plainLabel(row, item->Description(), twipsRect(2490, 330, 5445, 240))
            ->setToolTip(item->Description());
    }
    return container;
}

std::unique_ptr<QScrollArea> shownScrollArea()
{
    auto area = std::make_unique<QScrollArea>();
    area->setFrameShape(QFrame::NoFrame);
    area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    area->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    area->resize(kViewerSize);
    area->show();
    settle();
    return area;
}

// The stack given to the area; the area destroys the stack it held before.
double plainBind(QScrollArea& area, const ZebObjects::LineItems& items)
{
    const auto start = Clock::now();
    area.setWidget(plainStack(items, area.viewport()->width()));
    settle();
    return seconds(start, Clock::now());
}

// --- the viewer, as a host makes and binds it

std::unique_ptr<UserControl> shownViewer()
{
    std::unique_ptr<UserControl> viewer(ControlRegistry::instance().create(
        ControlRegistry::identifierFor(QStringLiteral("ctlSubLineDsp"))));
    viewer->resize(kViewerSize);
    viewer->show();
    settle();
    return viewer;
}

void bindByName(UserControl& viewer, const std::shared_ptr<StandaloneLineItems>& items)
{
    viewer.setProperty("LineItems",
                       QVariant::fromValue(std::shared_ptr<ZebObjects::LineItems>(items)));
}

double viewerBind(UserControl& viewer, const std::shared_ptr<StandaloneLineItems>& items)
{
    const auto start = Clock::now();
    bindByName(viewer, items);
    settle();
    return seconds(start, Clock::now());
}

// The medians of both sides' times in milliseconds and their ratio: the counters
// bench/check_targets.py reads.
void reportMedians(benchmark::State& state, const std::vector<double>& ours,
                   const std::vector<double>& theirs)
{
    const double control = median(ours);
    const double baseline = median(theirs);
    state.counters["control_ms"] = control * 1e3;
    state.counters["baseline_ms"] = baseline * 1e3;
    state.counters["ratio"] = control / baseline;
}

// Runs first, before other runs leave freed memory for the allocator to hand out again.
// Resident set size in KiB.
double residentKiB()
{
    QFile statm(QStringLiteral("/proc/self/statm"));
    if (!statm.open(QIODevice::ReadOnly))
        return 0;
    const QList<QByteArray> fields = statm.readAll().split(' ');
    return fields.size() > 1 ? fields[1].toDouble() * double(sysconf(_SC_PAGESIZE)) / 1024.0 : 0;
}

// Heap bytes in use, in KiB.
double heapKiB()
{
    return double(mallinfo2().uordblks) / 1024.0;
}

void BM_RowMemory(benchmark::State& state)
{
    const int count = int(state.range(0));
    const auto items = jobLines(count);
    double oursRss = 0, theirsRss = 0, oursHeap = 0, theirsHeap = 0;
    for (auto _ : state) {
        {
            // Memory freed before is handed back first, so that growth is not served from it.
            malloc_trim(0);
            auto area = shownScrollArea();
            const double rss = residentKiB();
            const double heap = heapKiB();
            area->setWidget(plainStack(*items, area->viewport()->width()));
            settle();
            theirsRss += residentKiB() - rss;
            theirsHeap += heapKiB() - heap;
        }
        settle();
        {
            malloc_trim(0);
            auto viewer = shownViewer();
            const double rss = residentKiB();
            const double heap = heapKiB();
            const auto start = Clock::now();
            bindByName(*viewer, items);
            settle();
            state.SetIterationTime(seconds(start, Clock::now()));
            oursRss += residentKiB() - rss;
            oursHeap += heapKiB() - heap;
        }
        settle();
    }
    const double n = double(state.iterations()) * count;
    state.counters["control_kib_per_row"] = oursRss / n;
    state.counters["baseline_kib_per_row"] = theirsRss / n;
    state.counters["control_heap_kib_per_row"] = oursHeap / n;
    state.counters["baseline_heap_kib_per_row"] = theirsHeap / n;
    state.counters["ratio"] = oursHeap / theirsHeap;
}
BENCHMARK(BM_RowMemory)
    ->Arg(kMostLines)
    ->Iterations(1)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

std::map<int, double>& bindSeconds()
{
    static std::map<int, double> s;
    return s;
}

std::map<int, double>& baselineBindSeconds()
{
    static std::map<int, double> s;
    return s;
}

void BM_Bind(benchmark::State& state)
{
    const int count = int(state.range(0));
    const auto items = jobLines(count);
    std::vector<double> ours;
    std::vector<double> theirs;
    bool plainFirst = true;
    for (auto _ : state) {
        // Each side in turn goes first, so neither always finds the other's freed memory.
        const auto plain = [&] {
            auto area = shownScrollArea();
            theirs.push_back(plainBind(*area, *items));
        };
        if (plainFirst)
            plain();
        {
            auto viewer = shownViewer();
            ours.push_back(viewerBind(*viewer, items));
            state.SetIterationTime(ours.back());
        }
        if (!plainFirst)
            plain();
        plainFirst = !plainFirst;
        settle();
    }
    reportMedians(state, ours, theirs);
    bindSeconds()[count] = median(ours);
    baselineBindSeconds()[count] = median(theirs);
    if (count == kMostLines && bindSeconds().count(100)) {
        state.counters["growth_744_over_100"] = bindSeconds()[kMostLines] / bindSeconds()[100];
        state.counters["baseline_growth_744_over_100"] =
            baselineBindSeconds()[kMostLines] / baselineBindSeconds()[100];
    }
}
// In this order: the 744 run reports its growth over the 100 run.
BENCHMARK(BM_Bind)->Arg(100)->Iterations(21)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Bind)->Arg(kMostLines)->Iterations(9)->UseManualTime()->Unit(benchmark::kMillisecond);

// Both sides bound once and then again to other lines: the second binding is timed, the old
// rows' destruction included on both sides.
void BM_Rebind(benchmark::State& state)
{
    const int count = int(state.range(0));
    const auto first = jobLines(count, 0);
    const auto second = jobLines(count, 1);
    std::vector<double> ours;
    std::vector<double> theirs;
    bool plainFirst = true;
    for (auto _ : state) {
        const auto plain = [&] {
            auto area = shownScrollArea();
            plainBind(*area, *first);
            theirs.push_back(plainBind(*area, *second));
        };
        if (plainFirst)
            plain();
        {
            auto viewer = shownViewer();
            viewerBind(*viewer, first);
            ours.push_back(viewerBind(*viewer, second));
            state.SetIterationTime(ours.back());
        }
        if (!plainFirst)
            plain();
        plainFirst = !plainFirst;
        settle();
    }
    reportMedians(state, ours, theirs);
}
BENCHMARK(BM_Rebind)
    ->Arg(kMostLines)
    ->Iterations(9)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

void BM_ScrollStep(benchmark::State& state)
{
    const int count = int(state.range(0));
    const auto items = jobLines(count);
    auto viewer = shownViewer();
    bindByName(*viewer, items);
    settle();
    auto* bar = viewer->findChild<ScrollBar*>(QStringLiteral("VScroll"));
    auto* list = viewer->findChild<ctlSubLines*>(QStringLiteral("ctlSubLines"));
    bar->setValueChecked(bar->Max() / 2);
    settle();

    auto area = shownScrollArea();
    area->setWidget(plainStack(*items, area->viewport()->width()));
    area->verticalScrollBar()->setSingleStep(44);
    area->verticalScrollBar()->setValue(area->verticalScrollBar()->maximum() / 2);
    settle();

    std::vector<double> ours;
    std::vector<double> theirs;
    bool down = true;
    for (auto _ : state) {
        const auto action =
            down ? QAbstractSlider::SliderSingleStepAdd : QAbstractSlider::SliderSingleStepSub;
        down = !down;
        auto start = Clock::now();
        area->verticalScrollBar()->triggerAction(action);
        settle();
        theirs.push_back(seconds(start, Clock::now()));
        const int before = list->y();
        start = Clock::now();
        bar->triggerAction(action);
        settle();
        const double c = seconds(start, Clock::now());
        if (qAbs(list->y() - before) != 44)
            state.SkipWithError("the list did not move by one row");
        ours.push_back(c);
        state.SetIterationTime(c);
    }
    reportMedians(state, ours, theirs);
    state.counters["target_ms"] = 2.0;
}
BENCHMARK(BM_ScrollStep)
    ->Arg(kMostLines)
    ->Iterations(200)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

// The idiomatic list: a QTableView over a model filled before it is set, one row per line.
double tableBind(const ZebObjects::LineItems& items)
{
    QTableView view;
    view.resize(kViewerSize);
    view.verticalHeader()->setDefaultSectionSize(22);
    view.verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    view.show();
    settle();
    const auto start = Clock::now();
    auto* model = new QStandardItemModel(0, 9, &view);
    model->setHorizontalHeaderLabels(
        {QStringLiteral("#"), QStringLiteral("QTY"), QStringLiteral("Type"),
         QStringLiteral("Brand"), QStringLiteral("Catalog Number"), QStringLiteral("Group"),
         QStringLiteral("MTO"), QStringLiteral("Description"), QStringLiteral("Comment")});
    int n = 0;
    for (const auto& item : items.Enumerate()) {
        ++n;
        auto* number = new QStandardItem(QString::number(n));
        number->setCheckable(true);
        number->setCheckState(item->Selected() ? Qt::Checked : Qt::Unchecked);
        auto* type = new QStandardItem(item->Type());
        type->setToolTip(item->Type());
        auto* catalog = new QStandardItem(item->CatalogNumber());
        catalog->setToolTip(item->CatalogNumber());
        auto* description = new QStandardItem(item->Description());
        description->setToolTip(item->Description());
        model->appendRow(
            {number, new QStandardItem(item->Quantity()), type, new QStandardItem(item->Brand()),
             catalog, new QStandardItem(item->Group()),
             new QStandardItem(item->MTO() ? QStringLiteral("MTO") : QString()), description,
             new QStandardItem(item->Comment() ? QStringLiteral("*") : QString())});
    }
    view.setModel(model);
    settle();
    return seconds(start, Clock::now());
}

void BM_TableView(benchmark::State& state)
{
    const int count = int(state.range(0));
    const auto items = jobLines(count);
    std::vector<double> ours;
    std::vector<double> theirs;
    for (auto _ : state) {
        theirs.push_back(tableBind(*items));
        auto viewer = shownViewer();
        ours.push_back(viewerBind(*viewer, items));
        state.SetIterationTime(ours.back());
    }
    reportMedians(state, ours, theirs);
}
BENCHMARK(BM_TableView)
    ->Arg(kMostLines)
    ->Iterations(9)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv)
{
    ZebObjects::installStandaloneServices();
    return ZebBench::runBenchmarks<QApplication>(argc, argv);
}
