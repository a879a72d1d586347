// The paragraph list against what one writes by hand in plain Qt: a QListView with uniform item
// sizes over a QStandardItemModel that is filled with the same checkable texts, each with its
// tool tip, in one batch before it is set on the view. The control is made as a host makes it:
// by identifier through the control registry, bound by property name. Both widgets are shown at
// the same size and measured in the same iteration, in alternating order; each time runs until
// every posted event (deferred deletes included) is handled and the first paint is done. The
// counters are medians: both times and the median of the per-iteration ratios.
//
//   BM_Bind/N      binding N paragraphs (fill, every tool tip, the first paint) against the
//                  hand-written fill of a shown, empty QListView
//   BM_MouseMove   one pointer move over a list of 10,000 (every tool rectangle refreshed)
//   BM_ItemMoved   Move Down on a list of 10,000 (the list rebuilt, the old rows dropped)
//                  against the hand-written view given a new model of 10,000 (the old one
//                  deleted)

#include "benchsupport.h"
#include "contracts/textobjects.h"
#include "frame/controlregistry.h"
#include "frame/usercontrol.h"
#include "objects/standaloneservices.h"
#include "objects/standalonetextobjects.h"
#include "platform/keyedlistview.h"

#include <QApplication>
#include <QListView>
#include <QMouseEvent>
#include <QPushButton>
#include <QStandardItemModel>

#include <benchmark/benchmark.h>

#include <map>
#include <memory>

using namespace ZebSubCtl;

using ZebBench::settleAll;
using ZebBench::timeSettled;

namespace {

const QString kIdentifier = QStringLiteral("ZebSubmittalControls.ctlTextSelect");
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
    settleAll();
    return list;
}

// The hand-written fill: one checkable QStandardItem per paragraph (its flags set in one call,
// its line breaks replaced only where it has any) with its tool tip, appended
// to a new model in one batch, and the model set on the view once it is full. The view's earlier
// model, if any, is deleted once the view has let go of it.
QStandardItemModel* fillPlainList(QListView& list, const ZebObjects::TextObjects& texts)
{
    auto* model = new QStandardItemModel(&list);
    QList<QStandardItem*> items;
    const auto objects = texts.Enumerate();
    items.reserve(qsizetype(objects.size()));
    for (const auto& object : objects) {
        const QString text = object->Text();
        // Line breaks show as two blanks; texts without one are taken as they are.
        auto* item = new QStandardItem(text.contains(u'\r') ? QString(text).replace(
                                           QStringLiteral("\r\n"), QStringLiteral("  "))
                                                            : text);
        item->setFlags(Qt::ItemIsSelectable | Qt::ItemIsEnabled | Qt::ItemIsUserCheckable
                       | Qt::ItemNeverHasChildren);
        item->setCheckState(object->Selected() ? Qt::Checked : Qt::Unchecked);
        item->setToolTip(text);
        items.append(item);
    }
    model->appendColumn(items);
    QAbstractItemModel* old = list.model();
    list.setModel(model);
    if (old && old->parent() == &list)
        old->deleteLater();
    return model;
}

// The control as a host makes it: by identifier, at its size, shown.
std::unique_ptr<UserControl> shownControl()
{
    std::unique_ptr<UserControl> control(ControlRegistry::instance().create(kIdentifier));
    control->resize(kControlSize);
    control->show();
    settleAll();
    return control;
}

// The host's binding: the collection handed over by property name.
bool bind(UserControl& control, const std::shared_ptr<ZebObjects::TextObjects>& texts)
{
    return control.setProperty("TextObjects", QVariant::fromValue(texts));
}

KeyedListView* listOf(UserControl& control)
{
    return control.findChild<KeyedListView*>(QStringLiteral("ListView"));
}

// One iteration's hand-written bind; false when the view did not paint.
bool baselineBind(const ZebObjects::TextObjects& texts, ZebBench::Timing& elapsed)
{
    const auto list = shownPlainList();
    const ZebBench::PaintCounter painted(list->viewport());
    elapsed = timeSettled([&] { fillPlainList(*list, texts); });
    return painted.paints() > 0;
}

// One iteration's bind of a new control; an empty text when it went as it should.
QString controlBind(const std::shared_ptr<ZebObjects::TextObjects>& texts,
                    ZebBench::Timing& elapsed)
{
    const auto control = shownControl();
    const ZebBench::PaintCounter painted(listOf(*control)->viewport());
    bool bound = false;
    elapsed = timeSettled([&] { bound = bind(*control, texts); });
    if (!bound)
        return QStringLiteral("the control does not take TextObjects by name");
    if (listOf(*control)->count() != texts->Count())
        return QStringLiteral("the list does not show every paragraph");
    if (painted.paints() == 0)
        return QStringLiteral("the list did not paint");
    return {};
}

std::map<int, double>& bindMedians()
{
    static std::map<int, double> s;
    return s;
}

void BM_Bind(benchmark::State& state)
{
    const int count = int(state.range(0));
    const std::shared_ptr<ZebObjects::TextObjects> texts = paragraphs(count);
    ZebBench::Samples samples;
    for (auto _ : state) {
        ZebBench::Timing control;
        ZebBench::Timing baseline;
        bool plainPainted = true;
        QString problem;
        samples.inTurn([&] { problem = controlBind(texts, control); },
                       [&] { plainPainted = baselineBind(*texts, baseline); });
        settleAll();
        if (!problem.isEmpty() || !plainPainted) {
            state.SkipWithError(problem.isEmpty() ? "the plain list did not paint"
                                                  : qPrintable(problem));
            return;
        }
        samples.add(control, baseline);
        state.SetIterationTime(control.wall);
    }
    ZebBench::reportMedians(state, samples);
    // The growth compares processor times: a shared machine stretches wall times of runs made at
    // different moments unevenly.
    bindMedians()[count] = samples.controlCpuMedian();
    if (count == 100000 && bindMedians().count(10000))
        state.counters["growth_100k_over_10k"] = bindMedians()[100000] / bindMedians()[10000];
}
// In this order: the 100,000 run reports its growth over the 10,000 run.
BENCHMARK(BM_Bind)->Arg(1000)->Iterations(31)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Bind)->Arg(10000)->Iterations(15)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Bind)->Arg(100000)->Iterations(7)->UseManualTime()->Unit(benchmark::kMillisecond);

void sendMove(QWidget* viewport, QPoint pos)
{
    QMouseEvent move(QEvent::MouseMove, pos, viewport->mapToGlobal(pos), Qt::NoButton, Qt::NoButton,
                     Qt::NoModifier);
    QCoreApplication::sendEvent(viewport, &move);
}

void BM_MouseMove(benchmark::State& state)
{
    const int count = int(state.range(0));
    const std::shared_ptr<ZebObjects::TextObjects> texts = paragraphs(count);
    const auto control = shownControl();
    if (!bind(*control, texts)) {
        state.SkipWithError("the control does not take TextObjects by name");
        return;
    }
    settleAll();
    QWidget* viewport = listOf(*control)->viewport();

    const auto plain = shownPlainList();
    plain->setMouseTracking(true);
    fillPlainList(*plain, *texts);
    settleAll();

    ZebBench::Samples samples;
    int step = 0;
    for (auto _ : state) {
        const QPoint at(40 + step % 7, 20 + (step * 13) % 200);
        ++step;
        const ZebBench::Timing b = ZebBench::timeStep([&] { sendMove(plain->viewport(), at); });
        const ZebBench::Timing c = ZebBench::timeStep([&] { sendMove(viewport, at); });
        samples.add(c, b);
        state.SetIterationTime(c.wall);
    }
    ZebBench::reportMedians(state, samples);
    state.counters["target_ms"] = 2.0;
}
BENCHMARK(BM_MouseMove)
    ->Arg(10000)
    ->Iterations(201)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

void BM_ItemMoved(benchmark::State& state)
{
    const int count = int(state.range(0));
    const std::shared_ptr<ZebObjects::TextObjects> texts = paragraphs(count);
    const auto control = shownControl();
    control->setProperty("AllowReorder", true);
    control->setProperty("AllowSave", true);
    if (!bind(*control, texts)) {
        state.SkipWithError("the control does not take TextObjects by name");
        return;
    }
    settleAll();
    KeyedListView* list = listOf(*control);
    auto* moveDown = control->findChild<QPushButton*>(QStringLiteral("cmdMoveDown"));
    auto* moveUp = control->findChild<QPushButton*>(QStringLiteral("cmdMoveUp"));
    list->setSelectedRow(count / 2);

    const auto plain = shownPlainList();
    fillPlainList(*plain, *texts);
    settleAll();

    ZebBench::Samples samples;
    bool down = true;
    for (auto _ : state) {
        ZebBench::Timing c;
        ZebBench::Timing b;
        const auto move = [&] {
            c = timeSettled([&] { (down ? moveDown : moveUp)->click(); });
            down = !down;
        };
        const auto refill = [&] { b = timeSettled([&] { fillPlainList(*plain, *texts); }); };
        samples.inTurn(move, refill);
        samples.add(c, b);
        state.SetIterationTime(c.wall);
    }
    if (list->selectedRow() < 0)
        state.SkipWithError("the moved paragraph lost its selection");
    ZebBench::reportMedians(state, samples);
}
BENCHMARK(BM_ItemMoved)->Arg(10000)->Iterations(11)->UseManualTime()->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv)
{
    ZebObjects::installStandaloneServices();
    return ZebBench::runBenchmarks<QApplication>(argc, argv);
}
