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

#include "benchsupport.h"
#include "objects/standaloneservices.h"
#include "controls/customers/ctlcustselect.h"
#include "frame/messageboxes.h"
#include "objects/standalonecustomer.h"
#include "objects/standalonecustomers.h"
#include "platform/keyedlistview.h"

#include <QApplication>
#include <QPushButton>
#include <QTreeWidget>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <map>
#include <memory>
#include <vector>

using namespace ZebSubCtl;
using Clock = std::chrono::steady_clock;

using ZebBench::seconds;
using ZebBench::settle;

namespace {

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

// Every timed step starts with cold caches, as a user's click on data loaded long before does:
// otherwise 10,000 customers stay in the last-level cache and 32,767 do not, and the growth
// between them measures the cache, not the work.
void evictCaches()
{
    static std::vector<char> buffer(std::size_t(96) << 20);
    static char round = 0;
    ++round;
    for (std::size_t i = 0; i < buffer.size(); i += 64)
        buffer[i] = char(buffer[i] + round);
    benchmark::DoNotOptimize(buffer.data());
    benchmark::ClobberMemory();
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
        auto* item = new QTreeWidgetItem(QStringList{text, c->Name(), c->AccountNumber(), c->City(),
                                                     c->State(), c->Type(), c->Category()});
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

// Each size's median iteration, for the growth between sizes: runs of different sizes happen at
// different moments of a shared machine, and the median is the time its other load shifts least.
std::map<std::pair<std::string, int>, double>& medianSeconds()
{
    static std::map<std::pair<std::string, int>, double> s;
    return s;
}

double median(std::vector<double> times)
{
    std::sort(times.begin(), times.end());
    const std::size_t n = times.size();
    return n % 2 ? times[n / 2] : (times[n / 2 - 1] + times[n / 2]) / 2;
}

// Reports both mean times and their ratio, the median iteration, and for 32,767 the growth of
// the median over 10,000's.
void report(benchmark::State& state, const std::string& name, int count, double control,
            double baseline, const std::vector<double>& times)
{
    ZebBench::reportAgainstBaseline(state, control, baseline);
    const double mid = median(times);
    state.counters["control_median_ms"] = mid * 1e3;
    medianSeconds()[{name, count}] = mid;
    if (count == 32767 && medianSeconds().count({name, 10000}))
        state.counters["growth_32767_over_10k"] =
            medianSeconds()[{name, 32767}] / medianSeconds()[{name, 10000}];
}

void BM_Bind(benchmark::State& state)
{
    const int count = int(state.range(0));
    const auto coll = customers(count);
    auto panel = shownPanel();
    double control = 0;
    double baseline = 0;
    std::vector<double> times;
    for (auto _ : state) {
        {
            auto tree = plainTree();
            evictCaches();
            const auto start = Clock::now();
            fillPlainTree(*tree, *coll);
            settle();
            baseline += seconds(start, Clock::now());
        }
        evictCaches();
        const auto start = Clock::now();
        panel->setCustomers(coll);
        settle();
        const double c = seconds(start, Clock::now());
        control += c;
        times.push_back(c);
        state.SetIterationTime(c);
        if (panel->findChild<KeyedListView*>(QStringLiteral("lsvCustomers"))->count() != count)
            state.SkipWithError("the panel does not show every customer");
        panel->setCustomers(nullptr);
        settle();
    }
    report(state, "BM_Bind", count, control, baseline, times);
}
// In this order: the 32,767 run reports its growth over the 10,000 run.
BENCHMARK(BM_Bind)->Arg(1000)->Iterations(20)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Bind)->Arg(10000)->Iterations(12)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Bind)->Arg(32767)->Iterations(8)->UseManualTime()->Unit(benchmark::kMillisecond);

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
    std::vector<double> times;
    for (auto _ : state) {
        const auto coll = customers(count);
        {
            auto tree = plainTree();
            fillPlainTree(*tree, *coll);
            settle();
            evictCaches();
            const auto start = Clock::now();
            for (int row = tree->topLevelItemCount() - 1; row >= 0; --row)
                delete tree->takeTopLevelItem(row);
            settle();
            baseline += seconds(start, Clock::now());
        }
        panel->setCustomers(coll);
        list->setSelectedRow(0);
        // The customers outlive their removal, as they outlive the plain tree's rows: neither
        // side pays for destroying business objects.
        const ZebObjects::CustomerList held = coll->Enumerate();
        settle();
        evictCaches();
        const auto start = Clock::now();
        removeAll->click();
        settle();
        const double c = seconds(start, Clock::now());
        control += c;
        times.push_back(c);
        state.SetIterationTime(c);
        if (list->count() != 0 || coll->Count() != 0)
            state.SkipWithError("Remove All left customers behind");
        panel->setCustomers(nullptr);
    }
    MessageBoxes::setService(nullptr);
    report(state, "BM_RemoveAll", count, control, baseline, times);
}
BENCHMARK(BM_RemoveAll)->Arg(1000)->Iterations(20)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_RemoveAll)->Arg(10000)->Iterations(16)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_RemoveAll)->Arg(32767)->Iterations(12)->UseManualTime()->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv)
{
    ZebObjects::installStandaloneServices();
    return ZebBench::runBenchmarks<QApplication>(argc, argv);
}
