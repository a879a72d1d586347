// The customer panel against what one writes by hand in plain Qt: a QTreeWidget with uniform row
// heights and the same seven columns, check boxes and tool tips. Both widgets are shown, at the
// same size, and measured in the same iteration; the counters give both times and their ratio.
//
//   BM_Bind/N        binding N customers (fill and the first paint) against the hand-written
//                    fill: every item built, then added in one batch (addTopLevelItems)
//   BM_RemoveAll/N   Remove All answered OK: the collection's RemoveAll raises one
//                    CustomerRemoved per customer and the panel drops one row each time, against
//                    the hand-written tree emptied row by row from the end
//
// N runs to 32,767, the most a collection with 16-bit positions holds.

#include "controls/customers/ctlcustselect.h"
#include "frame/messageboxes.h"
#include "objects/standalonecustomer.h"
#include "objects/standalonecustomers.h"
#include "platform/keyedlistview.h"

#include <QApplication>
#include <QPushButton>
#include <QTreeWidget>

#include <benchmark/benchmark.h>

#include <chrono>
#include <map>
#include <memory>

using namespace ZebSubCtl;
using Clock = std::chrono::steady_clock;

namespace {

constexpr QSize kControlSize(940, 420);
// The list inside the panel at kControlSize with the search area.
constexpr QSize kListSize(920, 265);

const QStringList kHeadings = {QStringLiteral("Keyword"), QStringLiteral("Name"),
                               QStringLiteral("Account Number"), QStringLiteral("City"),
                               QStringLiteral("State"), QStringLiteral("Type"),
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

// Layout and the first paint, as the user would see the result.
void settle()
{
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents();
}

double seconds(Clock::time_point from, Clock::time_point to)
{
    return std::chrono::duration<double>(to - from).count();
}

std::unique_ptr<QTreeWidget> plainTree()
{
    auto tree = std::make_unique<QTreeWidget>();
    tree->setUniformRowHeights(true);
    tree->setRootIsDecorated(false);
    tree->setColumnCount(7);
    tree->setHeaderLabels(kHeadings);
    tree->resize(kListSize);
    tree->show();
    settle();
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
        auto* item = new QTreeWidgetItem(QStringList{text, c->Name(), c->AccountNumber(),
                                                     c->City(), c->State(), c->Type(),
                                                     c->Category()});
        item->setCheckState(0, c->Included() ? Qt::Checked : Qt::Unchecked);
        item->setToolTip(0, text);
        items.append(item);
    }
    tree.addTopLevelItems(items);
}

std::unique_ptr<ctlCustSelect> shownPanel()
{
    auto panel = std::make_unique<ctlCustSelect>();
    panel->setAllowAdd(true);
    panel->setAllowDelete(true);
    panel->setShowCheckboxes(true);
    panel->resize(kControlSize);
    panel->show();
    settle();
    return panel;
}

std::map<std::pair<std::string, int>, double>& meanSeconds()
{
    static std::map<std::pair<std::string, int>, double> s;
    return s;
}

// Reports both times and their ratio, and for 32,767 the growth over 10,000.
void report(benchmark::State& state, const std::string& name, int count, double control,
            double baseline)
{
    const double n = double(state.iterations());
    state.counters["control_ms"] = control / n * 1e3;
    state.counters["baseline_ms"] = baseline / n * 1e3;
    state.counters["ratio"] = control / baseline;
    meanSeconds()[{name, count}] = control / n;
    if (count == 32767 && meanSeconds().count({name, 10000}))
        state.counters["growth_32767_over_10k"] =
            meanSeconds()[{name, 32767}] / meanSeconds()[{name, 10000}];
}

void BM_Bind(benchmark::State& state)
{
    const int count = int(state.range(0));
    const auto coll = customers(count);
    auto panel = shownPanel();
    double control = 0;
    double baseline = 0;
    for (auto _ : state) {
        {
            auto tree = plainTree();
            const auto start = Clock::now();
            fillPlainTree(*tree, *coll);
            settle();
            baseline += seconds(start, Clock::now());
        }
        const auto start = Clock::now();
        panel->setCustomers(coll);
        settle();
        const double c = seconds(start, Clock::now());
        control += c;
        state.SetIterationTime(c);
        if (panel->findChild<KeyedListView*>(QStringLiteral("lsvCustomers"))->count() != count)
            state.SkipWithError("the panel does not show every customer");
        panel->setCustomers(nullptr);
        settle();
    }
    report(state, "BM_Bind", count, control, baseline);
}
// In this order: the 32,767 run reports its growth over the 10,000 run.
BENCHMARK(BM_Bind)->Arg(1000)->Iterations(20)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Bind)->Arg(10000)->Iterations(8)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Bind)->Arg(32767)->Iterations(4)->UseManualTime()->Unit(benchmark::kMillisecond);

// Answers the confirmation with OK.
class AnswerOK : public MessageBoxService {
public:
    int MsgBox(const QString&, int, const QString&) override { return MsgBoxAnswer::OK; }
};

void BM_RemoveAll(benchmark::State& state)
{
    const int count = int(state.range(0));
    MessageBoxes::setService(std::make_shared<AnswerOK>());
    auto panel = shownPanel();
    auto* list = panel->findChild<KeyedListView*>(QStringLiteral("lsvCustomers"));
    auto* removeAll = panel->findChild<QPushButton*>(QStringLiteral("cmdRemoveAll"));
    double control = 0;
    double baseline = 0;
    for (auto _ : state) {
        const auto coll = customers(count);
        {
            auto tree = plainTree();
            fillPlainTree(*tree, *coll);
            settle();
            const auto start = Clock::now();
            for (int row = tree->topLevelItemCount() - 1; row >= 0; --row)
                delete tree->takeTopLevelItem(row);
            settle();
            baseline += seconds(start, Clock::now());
        }
        panel->setCustomers(coll);
        list->setSelectedRow(0);
        settle();
        const auto start = Clock::now();
        removeAll->click();
        settle();
        const double c = seconds(start, Clock::now());
        control += c;
        state.SetIterationTime(c);
        if (list->count() != 0 || coll->Count() != 0)
            state.SkipWithError("Remove All left customers behind");
        panel->setCustomers(nullptr);
    }
    MessageBoxes::setService(nullptr);
    report(state, "BM_RemoveAll", count, control, baseline);
}
BENCHMARK(BM_RemoveAll)->Arg(1000)->Iterations(20)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_RemoveAll)->Arg(10000)->Iterations(8)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_RemoveAll)->Arg(32767)->Iterations(4)->UseManualTime()->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
