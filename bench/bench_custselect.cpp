// The customer panel against what one writes by hand in plain Qt: a QTreeWidget with uniform row
// heights and the same seven columns, check boxes and tool tips. The panel is made as a host
// makes it: by identifier through the control registry, its design properties and its
// collection set by property name. Both widgets are shown at the same size and measured in the
// same iteration, in alternating order; each time runs until every posted event (deferred
// deletes included) is handled and the first paint is done. The counters are medians: both
// times and the median of the per-iteration ratios.
//
//   BM_Bind/N        binding N customers (fill and the first paint) against the hand-written
//                    fill: every item built, then added in one batch (addTopLevelItems)
//   BM_RemoveAll/N   Remove All answered OK: the collection's RemoveAll raises one
//                    CustomerRemoved per customer and the panel drops one row each time, against
//                    the hand-written tree emptied row by row from the end (takeTopLevelItem,
//                    each item deleted)
//
// N runs to 32,767, the most a collection with 16-bit positions holds.

#include "benchsupport.h"
#include "objects/standaloneservices.h"
#include "contracts/customers.h"
#include "frame/controlregistry.h"
#include "frame/messageboxes.h"
#include "frame/usercontrol.h"
#include "objects/standalonecustomer.h"
#include "objects/standalonecustomers.h"
#include "platform/keyedlistview.h"

#include <QApplication>
#include <QPushButton>
#include <QTreeWidget>

#include <benchmark/benchmark.h>

#include <map>
#include <memory>
#include <vector>

using namespace ZebSubCtl;

using ZebBench::evictCaches;
using ZebBench::settleAll;
using ZebBench::timeSettled;

namespace {

const QString kIdentifier = QStringLiteral("ZebSubmittalControls.ctlCustSelect");
constexpr QSize kControlSize(940, 420);
// The list inside the panel at kControlSize with the search area.
constexpr QSize kListSize(920, 265);

const QStringList kHeadings = {QStringLiteral("Keyword"),        QStringLiteral("Name"),
                               QStringLiteral("Account Number"), QStringLiteral("City"),
                               QStringLiteral("State"),          QStringLiteral("Type"),
                               QStringLiteral("Category")};

std::shared_ptr<ZebObjects::StandaloneCustomers> customers(int count)
{
    static const char* const cities[] = {"Portland", "Seattle", "Boise", "Eugene", "Spokane"};
    static const char* const states[] = {"OR", "WA", "ID", "OR", "WA"};
    auto out = std::make_shared<ZebObjects::StandaloneCustomers>();
    for (int i = 0; i < count; ++i) {
        ZebObjects::StandaloneCustomer::Data d;
        d.key = QStringLiteral("C%1").arg(i, 5, 10, QLatin1Char('0'));
        d.name = QStringLiteral("Customer %1 Electric Supply").arg(i);
        d.accountNumber = QString::number(100000 + i);
        d.city = QLatin1String(cities[i % 5]);
        d.state = QLatin1String(states[i % 5]);
        d.type = QStringLiteral("Contractor");
        d.category = QStringLiteral("Electrical");
        d.displayText = d.name + QStringLiteral(" - ") + d.city + QStringLiteral(", ") + d.state;
        d.included = i % 3 != 0;
        out->Add(d.key, std::make_shared<ZebObjects::StandaloneCustomer>(d));
    }
    return out;
}

// Every timed step starts with cold caches (evictCaches()), as a user's click on data loaded
// long before does: otherwise 10,000 customers stay in the last-level cache and 32,767 do not,
// and the growth between them measures the cache, not the work.

std::unique_ptr<QTreeWidget> plainTree()
{
    auto tree = std::make_unique<QTreeWidget>();
    tree->setUniformRowHeights(true);
    tree->setRootIsDecorated(false);
    tree->setColumnCount(7);
    tree->setHeaderLabels(kHeadings);
    tree->resize(kListSize);
    tree->show();
    settleAll();
    return tree;
}

// The hand-written fill: one item per customer with its seven texts, check box and tool tip,
// added in one batch.
void fillPlainTree(QTreeWidget& tree, const ZebObjects::Customers& coll)
{
    QList<QTreeWidgetItem*> items;
    const ZebObjects::CustomerList all = coll.Enumerate();
    items.reserve(all.size());
    for (const auto& c : all) {
        const QString text = c->DisplayText();
        auto* item = new QTreeWidgetItem(QStringList{text, c->Name(), c->AccountNumber(), c->City(),
                                                     c->State(), c->Type(), c->Category()});
        item->setCheckState(0, c->Included() ? Qt::Checked : Qt::Unchecked);
        item->setToolTip(0, text);
        items.append(item);
    }
    tree.addTopLevelItems(items);
}

// The panel as a host makes it: by identifier, its design properties set by name, shown.
std::unique_ptr<UserControl> shownPanel()
{
    std::unique_ptr<UserControl> panel(ControlRegistry::instance().create(kIdentifier));
    panel->setProperty("AllowAdd", true);
    panel->setProperty("AllowDelete", true);
    panel->setProperty("ShowCheckboxes", true);
    panel->resize(kControlSize);
    panel->show();
    settleAll();
    return panel;
}

// The host's binding: the collection handed over by property name.
bool bind(UserControl& panel, const std::shared_ptr<ZebObjects::Customers>& customers)
{
    return panel.setProperty("Customers", QVariant::fromValue(customers));
}

KeyedListView* listOf(UserControl& panel)
{
    return panel.findChild<KeyedListView*>(QStringLiteral("lsvCustomers"));
}

// Each size's median processor time, for the growth between sizes: runs of different sizes
// happen at different moments of a shared machine, which stretches their wall times unevenly.
std::map<std::pair<std::string, int>, double>& medianSeconds()
{
    static std::map<std::pair<std::string, int>, double> s;
    return s;
}

// Reports the medians and, for 32,767, the growth of the median over 10,000's.
void report(benchmark::State& state, const std::string& name, int count,
            const ZebBench::Samples& samples)
{
    ZebBench::reportMedians(state, samples);
    medianSeconds()[{name, count}] = samples.controlCpuMedian();
    if (count == 32767 && medianSeconds().count({name, 10000}))
        state.counters["growth_32767_over_10k"] =
            medianSeconds()[{name, 32767}] / medianSeconds()[{name, 10000}];
}

void BM_Bind(benchmark::State& state)
{
    const int count = int(state.range(0));
    const std::shared_ptr<ZebObjects::Customers> coll = customers(count);
    ZebBench::Samples samples;
    for (auto _ : state) {
        ZebBench::Timing control;
        ZebBench::Timing baseline;
        QString problem;
        const auto plain = [&] {
            const auto tree = plainTree();
            const ZebBench::PaintCounter painted(tree->viewport());
            evictCaches();
            baseline = timeSettled([&] { fillPlainTree(*tree, *coll); });
            if (painted.paints() == 0)
                problem = QStringLiteral("the plain tree did not paint");
        };
        const auto ours = [&] {
            const auto panel = shownPanel();
            const ZebBench::PaintCounter painted(listOf(*panel)->viewport());
            evictCaches();
            bool bound = false;
            control = timeSettled([&] { bound = bind(*panel, coll); });
            if (!bound)
                problem = QStringLiteral("the panel does not take Customers by name");
            else if (listOf(*panel)->count() != count)
                problem = QStringLiteral("the panel does not show every customer");
            else if (painted.paints() == 0)
                problem = QStringLiteral("the panel did not paint");
        };
        samples.inTurn(ours, plain);
        settleAll();
        if (!problem.isEmpty()) {
            state.SkipWithError(qPrintable(problem));
            return;
        }
        samples.add(control, baseline);
        state.SetIterationTime(control.wall);
    }
    report(state, "BM_Bind", count, samples);
}
// In this order: the 32,767 run reports its growth over the 10,000 run.
BENCHMARK(BM_Bind)->Arg(1000)->Iterations(21)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Bind)->Arg(10000)->Iterations(13)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Bind)->Arg(32767)->Iterations(9)->UseManualTime()->Unit(benchmark::kMillisecond);

// Answers the confirmation with OK.
class AnswerOK : public MessageBoxService {
public:
    int MsgBox(const QString&, int, const QString&) override { return MsgBoxAnswer::OK; }
};

void BM_RemoveAll(benchmark::State& state)
{
    const int count = int(state.range(0));
    MessageBoxes::setService(std::make_shared<AnswerOK>());
    const auto panel = shownPanel();
    KeyedListView* list = listOf(*panel);
    auto* removeAll = panel->findChild<QPushButton*>(QStringLiteral("cmdRemoveAll"));
    ZebBench::Samples samples;
    for (auto _ : state) {
        const std::shared_ptr<ZebObjects::Customers> coll = customers(count);
        // The customers outlive their removal, as they outlive the plain tree's rows: neither
        // side pays for destroying business objects.
        const ZebObjects::CustomerList held = coll->Enumerate();
        ZebBench::Timing control;
        ZebBench::Timing baseline;
        QString problem;
        const auto plain = [&] {
            const auto tree = plainTree();
            fillPlainTree(*tree, *coll);
            settleAll();
            const ZebBench::PaintCounter painted(tree->viewport());
            evictCaches();
            baseline = timeSettled([&] {
                for (int row = tree->topLevelItemCount() - 1; row >= 0; --row)
                    delete tree->takeTopLevelItem(row);
            });
            if (painted.paints() == 0)
                problem = QStringLiteral("the plain tree did not paint");
        };
        const auto ours = [&] {
            if (!bind(*panel, coll)) {
                problem = QStringLiteral("the panel does not take Customers by name");
                return;
            }
            list->setSelectedRow(0);
            settleAll();
            const ZebBench::PaintCounter painted(list->viewport());
            evictCaches();
            control = timeSettled([&] { removeAll->click(); });
            if (list->count() != 0 || coll->Count() != 0)
                problem = QStringLiteral("Remove All left customers behind");
            else if (painted.paints() == 0)
                problem = QStringLiteral("the panel did not paint");
        };
        // The plain tree goes first in every iteration: a tree shown right after the panel's
        // Remove All did not paint its rows in this benchmark until the panel was bound again.
        // Each timed step starts with cold caches, so the order favours neither side.
        plain();
        ours();
        bind(*panel, nullptr);
        settleAll();
        if (!problem.isEmpty()) {
            state.SkipWithError(qPrintable(problem));
            break;
        }
        samples.add(control, baseline);
        state.SetIterationTime(control.wall);
    }
    MessageBoxes::setService(nullptr);
    report(state, "BM_RemoveAll", count, samples);
}
BENCHMARK(BM_RemoveAll)->Arg(1000)->Iterations(21)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_RemoveAll)->Arg(10000)->Iterations(15)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_RemoveAll)->Arg(32767)->Iterations(11)->UseManualTime()->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv)
{
    ZebObjects::installStandaloneServices();
    return ZebBench::runBenchmarks<QApplication>(argc, argv);
}
