// The paragraph list against what one writes by hand in plain Qt: a QListView with uniform item
// sizes over a QStandardItemModel that is filled with the same checkable texts, each with its
// tool tip, in one batch before it is set on the view. Both widgets are shown, at the same size,
// and measured in the same iteration; the counters give both times and their ratio.
//
//   BM_Bind/N      binding N paragraphs (fill, every tool tip, the first paint) against the
//                  hand-written fill
//   BM_MouseMove   one pointer move over a list of 10,000 (every tool rectangle refreshed)
//   BM_ItemMoved   Move Down on a list of 10,000 (the list rebuilt) against the hand-written
//                  fill of 10,000

#include "benchsupport.h"
#include "objects/standaloneservices.h"
#include "controls/textselect/ctltextselect.h"
#include "objects/standalonetextobjects.h"
#include "platform/keyedlistview.h"

#include <QApplication>
#include <QListView>
#include <QMouseEvent>
#include <QPushButton>
#include <QStandardItemModel>

#include <benchmark/benchmark.h>

#include <chrono>
#include <map>
#include <memory>

using namespace ZebSubCtl;
using Clock = std::chrono::steady_clock;

using ZebBench::seconds;
using ZebBench::settle;

namespace {

constexpr QSize kControlSize(410, 352);
// The list inside the control at kControlSize without the entry area.
constexpr QSize kListSize(400, 302);

std::shared_ptr<ZebObjects::StandaloneTextObjects> paragraphs(int count)
{
    auto texts = std::make_shared<ZebObjects::StandaloneTextObjects>();
    for (int i = 0; i < count; ++i) {
        QString text = QStringLiteral("Paragraph %1: fixtures ship with lamps, ballasts and "
                                      "mounting hardware as scheduled.")
                           .arg(i);
        if (i % 10 == 0)
            text += QStringLiteral("\r\nSubmit samples for approval before release.");
        texts->Add(text, i % 3 == 0);
    }
    return texts;
}

// The hand-written list: a shown QListView with uniform item sizes.
std::unique_ptr<QListView> shownPlainList()
{
    auto list = std::make_unique<QListView>();
    list->setUniformItemSizes(true);
    list->resize(kListSize);
    list->show();
    return list;
}

// The hand-written fill: one checkable QStandardItem per paragraph with its tool tip, appended
// to the model in one batch, and the model set on the view once it is full.
std::unique_ptr<QStandardItemModel> fillPlainList(QListView& list,
                                                  const ZebObjects::TextObjects& texts)
{
    auto model = std::make_unique<QStandardItemModel>();
    QList<QStandardItem*> items;
    const auto objects = texts.Enumerate();
    items.reserve(qsizetype(objects.size()));
    for (const auto& object : objects) {
        const QString text = object->Text();
        auto* item =
            new QStandardItem(QString(text).replace(QStringLiteral("\r\n"), QStringLiteral("  ")));
        item->setEditable(false);
        item->setCheckable(true);
        item->setCheckState(object->Selected() ? Qt::Checked : Qt::Unchecked);
        item->setToolTip(text);
        items.append(item);
    }
    model->appendColumn(items);
    list.setModel(model.get());
    return model;
}

double baselineFill(const ZebObjects::TextObjects& texts)
{
    auto list = shownPlainList();
    settle();
    const auto start = Clock::now();
    const auto model = fillPlainList(*list, texts);
    settle();
    const double elapsed = seconds(start, Clock::now());
    list.reset();
    return elapsed;
}

std::unique_ptr<ctlTextSelect> shownControl()
{
    auto control = std::make_unique<ctlTextSelect>();
    control->resize(kControlSize);
    control->show();
    settle();
    return control;
}

double controlBind(const std::shared_ptr<ZebObjects::StandaloneTextObjects>& texts)
{
    auto control = shownControl();
    const auto start = Clock::now();
    control->setTextObjects(texts);
    settle();
    const double elapsed = seconds(start, Clock::now());
    control->setTextObjects(nullptr);
    return elapsed;
}

void sendMove(QWidget* viewport, QPoint pos)
{
    QMouseEvent move(QEvent::MouseMove, pos, viewport->mapToGlobal(pos), Qt::NoButton, Qt::NoButton,
                     Qt::NoModifier);
    QCoreApplication::sendEvent(viewport, &move);
}

std::map<int, double>& bindSeconds()
{
    static std::map<int, double> s;
    return s;
}

void BM_Bind(benchmark::State& state)
{
    const int count = int(state.range(0));
    const auto texts = paragraphs(count);
    double control = 0;
    double baseline = 0;
    for (auto _ : state) {
        const double b = baselineFill(*texts);
        const double c = controlBind(texts);
        baseline += b;
        control += c;
        state.SetIterationTime(c);
    }
    const double n = double(state.iterations());
    ZebBench::reportAgainstBaseline(state, control, baseline);
    bindSeconds()[count] = control / n;
    if (count == 100000 && bindSeconds().count(10000))
        state.counters["growth_100k_over_10k"] = bindSeconds()[100000] / bindSeconds()[10000];
}
// In this order: the 100,000 run reports its growth over the 10,000 run.
BENCHMARK(BM_Bind)->Arg(1000)->Iterations(20)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Bind)->Arg(10000)->Iterations(8)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Bind)->Arg(100000)->Iterations(3)->UseManualTime()->Unit(benchmark::kMillisecond);

void BM_MouseMove(benchmark::State& state)
{
    const int count = int(state.range(0));
    const auto texts = paragraphs(count);
    auto control = shownControl();
    control->setTextObjects(texts);
    settle();
    QWidget* viewport = control->findChild<KeyedListView*>(QStringLiteral("ListView"))->viewport();

    auto plain = shownPlainList();
    plain->setMouseTracking(true);
    const auto plainModel = fillPlainList(*plain, *texts);
    settle();

    double ours = 0;
    double theirs = 0;
    int step = 0;
    for (auto _ : state) {
        const QPoint at(40 + step % 7, 20 + (step * 13) % 200);
        ++step;
        auto start = Clock::now();
        sendMove(plain->viewport(), at);
        theirs += seconds(start, Clock::now());
        start = Clock::now();
        sendMove(viewport, at);
        const double c = seconds(start, Clock::now());
        ours += c;
        state.SetIterationTime(c);
    }
    ZebBench::reportAgainstBaseline(state, ours, theirs);
    state.counters["target_ms"] = 2.0;
}
BENCHMARK(BM_MouseMove)
    ->Arg(10000)
    ->Iterations(200)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

void BM_ItemMoved(benchmark::State& state)
{
    const int count = int(state.range(0));
    const auto texts = paragraphs(count);
    auto control = shownControl();
    control->setAllowReorder(true);
    control->setAllowSave(true);
    control->setTextObjects(texts);
    settle();
    auto* list = control->findChild<KeyedListView*>(QStringLiteral("ListView"));
    auto* moveDown = control->findChild<QPushButton*>(QStringLiteral("cmdMoveDown"));
    auto* moveUp = control->findChild<QPushButton*>(QStringLiteral("cmdMoveUp"));
    list->setSelectedRow(count / 2);

    double ours = 0;
    double baseline = 0;
    bool down = true;
    for (auto _ : state) {
        baseline += baselineFill(*texts);
        const auto start = Clock::now();
        (down ? moveDown : moveUp)->click();
        settle();
        const double c = seconds(start, Clock::now());
        down = !down;
        ours += c;
        state.SetIterationTime(c);
    }
    if (list->selectedRow() < 0)
        state.SkipWithError("the moved paragraph lost its selection");
    ZebBench::reportAgainstBaseline(state, ours, baseline);
}
BENCHMARK(BM_ItemMoved)->Arg(10000)->Iterations(10)->UseManualTime()->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv)
{
    ZebObjects::installStandaloneServices();
    return ZebBench::runBenchmarks<QApplication>(argc, argv);
}
