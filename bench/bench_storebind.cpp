// Binding from the SQLite store against binding the same data from the stand-alone objects, in
// the same run and iteration: the same control, created through the registry and bound by
// property name as the workstation does, at the same size, posted events and the first paint
// included. Each iteration binds a collection of a job opened afresh, so nothing read by an
// earlier iteration is kept; the connection stays open, as the workstation keeps it. The two
// sides alternate which goes first.
//
//   BM_LineItems/744       the 744-line job into the line item viewer
//   BM_Paragraphs/5000     5,000 paragraphs into the paragraph list
//   BM_Customers/32767     a job with 32,767 customers into the customer panel
//   BM_RemoveAll/N         Remove All of N customers through the panel (1,000 and 32,767): the
//                          store takes them out in one write, the panel follows the events
//
// Counters: control_ms (the store) and baseline_ms (stand-alone) are medians of wall time, ratio
// the median of the per-iteration ratios; the same in the main thread's processor time as
// control_cpu_ms, baseline_cpu_ms and ratio_cpu (the store runs its statements on the main thread,
// so its reading is in it). store_statements is what the store ran for one bind or one Remove
// All, store_statements_per_item the same per line, paragraph or customer. For the paragraphs and
// the customers, sqlite_read_ms is what SQLite alone takes to step through the same statement on
// its own connection and hand over every column (no string made, nothing bound), and ratio_floor
// is (baseline + sqlite_read) / baseline: the least any store that reads the rows at the bind can
// reach against objects that are in memory already.
//   BENCHES=bench_storebind bench/run.sh
#include "benchsupport.h"
#include "contracts/customers.h"
#include "contracts/lineitems.h"
#include "contracts/textobjects.h"
#include "frame/controlregistry.h"
#include "frame/messageboxes.h"
#include "frame/usercontrol.h"
#include "objects/standalonecustomer.h"
#include "objects/standalonecustomers.h"
#include "objects/standalonelineitems.h"
#include "objects/standaloneservices.h"
#include "objects/standalonetextobjects.h"
#include "platform/keyedlistview.h"
#include "store/jobcontents.h"
#include "store/store.h"
#include "store/storecustomers.h"
#include "store/storejob.h"
#include "store/storelineitems.h"
#include "store/storetextobjects.h"

#include <QApplication>
#include <QPushButton>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include <algorithm>
#include <chrono>
#include <memory>
#include <vector>

using namespace ZebObjects;

namespace {

using ZebBench::median;
using ZebBench::settle;
using ZebBench::Timing;

// The design sizes of the three controls.
constexpr QSize kViewerSize(610, 355);
constexpr QSize kListSize(400, 300);
constexpr QSize kPanelSize(940, 420);

constexpr int kLines = 744;
constexpr int kParagraphs = 5000;
constexpr int kCustomers = 32767;

LineItemRecord lineRecord(int i)
{
    LineItemRecord d;
    d.quantity = 2 + (i * 7) % 60;
    d.type = QStringLiteral("%1%2").arg(QChar(u'A' + i % 26)).arg(i % 10);
    d.brand = i % 3 == 0 ? QStringLiteral("Quenza Architectural") : QStringLiteral("Varnholt");
    d.catalogNumber = QStringLiteral("VH-2X4-LP-%1L-35K-DIM").arg(20 + i % 40);
    d.description = QStringLiteral("Recessed LED troffer %1, 4000 lm, 3500K, 0-10V").arg(i);
    d.group = QStringLiteral("LVL%1").arg(1 + i % 4);
    d.mto = i % 5 == 0;
    if (i % 4 == 0)
        d.comment = QStringLiteral("Finish sample to be approved.");
    d.selected = i % 3 == 0;
    return d;
}

QString paragraphText(int i)
{
    return QStringLiteral("Paragraph %1: fixtures are furnished as scheduled; substitutions are "
                          "submitted for review with their cut sheets.")
        .arg(i);
}

CustomerRecord customerRecord(int i)
{
    static const char* const cities[] = {"Portland", "Seattle", "Boise", "Eugene", "Spokane"};
    static const char* const states[] = {"OR", "WA", "ID", "OR", "WA"};
    CustomerRecord c;
    c.key = QStringLiteral("C%1").arg(i, 5, 10, QLatin1Char('0'));
    c.name = QStringLiteral("Customer %1 Electric Supply").arg(i);
    c.accountNumber = QString::number(100000 + i);
    c.city = QLatin1String(cities[i % 5]);
    c.state = QLatin1String(states[i % 5]);
    c.type = QStringLiteral("Contractor");
    c.category = QStringLiteral("Electrical");
    c.displayText = c.name + QStringLiteral(" - ") + c.city + QStringLiteral(", ") + c.state;
    c.included = i % 3 != 0;
    return c;
}

JobContents job(const QString& number, int lines, int paragraphs, int customers)
{
    JobContents c;
    c.number = number;
    c.name = QStringLiteral("Riverside Medical Pavilion");
    for (int i = 1; i <= lines; ++i)
        c.lines.append(lineRecord(i));
    for (int i = 1; i <= paragraphs; ++i)
        c.paragraphs.append({paragraphText(i), i % 2 == 0});
    for (int i = 0; i < customers; ++i)
        c.customers.append(customerRecord(i));
    return c;
}

// The office in a scratch file: one job with the 744 lines, the 5,000 paragraphs and the 32,767
// customers, made once.
struct Office {
    QTemporaryDir dir;
    std::shared_ptr<Store> store;
    qint64 job = 0;
    Office()
    {
        store = Store::open(dir.filePath(QStringLiteral("office.zebdb")));
        job = store->createJob(::job(QStringLiteral("24-0117"), kLines, kParagraphs, kCustomers));
    }
};

Office& office()
{
    static Office o;
    return o;
}

std::shared_ptr<StandaloneLineItems> standaloneLines()
{
    auto items = std::make_shared<StandaloneLineItems>();
    for (int i = 1; i <= kLines; ++i)
        items->Add(lineRecord(i));
    return items;
}

std::shared_ptr<StandaloneTextObjects> standaloneParagraphs()
{
    auto texts = std::make_shared<StandaloneTextObjects>();
    for (int i = 1; i <= kParagraphs; ++i)
        texts->Add(paragraphText(i), i % 2 == 0);
    return texts;
}

std::shared_ptr<StandaloneCustomers> standaloneCustomers(int count)
{
    auto out = std::make_shared<StandaloneCustomers>();
    for (int i = 0; i < count; ++i) {
        const CustomerRecord r = customerRecord(i);
        out->Add(r.key, std::make_shared<StandaloneCustomer>(r));
    }
    return out;
}

// A control made by identifier, shown at its size, as the workstation makes it.
std::unique_ptr<ZebSubCtl::UserControl> shownControl(const char* name, QSize size)
{
    std::unique_ptr<ZebSubCtl::UserControl> control(ZebSubCtl::ControlRegistry::instance().create(
        ZebSubCtl::ControlRegistry::identifierFor(QLatin1String(name))));
    control->resize(size);
    control->show();
    settle();
    return control;
}

template <class Collection>
Timing bind(ZebSubCtl::UserControl& control, const char* property,
            const std::shared_ptr<Collection>& collection)
{
    const auto start = std::chrono::steady_clock::now();
    const double cpu = ZebBench::threadSeconds();
    control.setProperty(property, QVariant::fromValue(collection));
    settle();
    return {ZebBench::seconds(start, std::chrono::steady_clock::now()),
            ZebBench::threadSeconds() - cpu};
}

template <class Collection>
void unbind(ZebSubCtl::UserControl& control, const char* property)
{
    control.setProperty(property, QVariant::fromValue(std::shared_ptr<Collection>()));
    settle();
}

// What SQLite alone takes to step through sql with args on a connection of its own to the
// office file and hand over every column (numbers as numbers, texts as the file holds them),
// nothing made of the values: the floor under any
// store that reads these rows at the bind. The median of a few runs, in seconds.
double sqliteRead(const char* sql, qint64 arg)
{
    sqlite3* db = nullptr;
    sqlite3_open_v2(office().store->path().toUtf8().constData(), &db, SQLITE_OPEN_READONLY,
                    nullptr);
    sqlite3_stmt* s = nullptr;
    sqlite3_prepare_v2(db, sql, -1, &s, nullptr);
    std::vector<double> times;
    std::size_t bytes = 0;
    for (int i = 0; i < 9; ++i) {
        const double start = ZebBench::threadSeconds();
        sqlite3_bind_int64(s, 1, arg);
        while (sqlite3_step(s) == SQLITE_ROW)
            for (int c = 0, n = sqlite3_column_count(s); c < n; ++c) {
                if (sqlite3_column_type(s, c) == SQLITE_INTEGER) {
                    bytes += std::size_t(sqlite3_column_int64(s, c));
                    continue;
                }
                benchmark::DoNotOptimize(sqlite3_column_text(s, c));
                bytes += std::size_t(sqlite3_column_bytes(s, c));
            }
        sqlite3_reset(s);
        times.push_back(ZebBench::threadSeconds() - start);
    }
    benchmark::DoNotOptimize(bytes);
    sqlite3_finalize(s);
    sqlite3_close(db);
    return median(times);
}

// One side's id in the office file, found with plain SQL.
qint64 officeId(const char* sql)
{
    sqlite3* db = nullptr;
    sqlite3_open_v2(office().store->path().toUtf8().constData(), &db, SQLITE_OPEN_READONLY,
                    nullptr);
    sqlite3_stmt* s = nullptr;
    sqlite3_prepare_v2(db, sql, -1, &s, nullptr);
    sqlite3_bind_int64(s, 1, office().job);
    const qint64 id = sqlite3_step(s) == SQLITE_ROW ? sqlite3_column_int64(s, 0) : 0;
    sqlite3_finalize(s);
    sqlite3_close(db);
    return id;
}

// Reports the medians of both sides, their ratio, and the store's statements per bind.
void report(benchmark::State& state, const ZebBench::Samples& samples, quint64 statements,
            int items)
{
    ZebBench::reportMedians(state, samples);
    state.counters["store_statements"] = double(statements);
    state.counters["store_statements_per_item"] = double(statements) / double(items);
}

void reportFloor(benchmark::State& state, const ZebBench::Samples& samples, double sqlite)
{
    state.counters["sqlite_read_ms"] = sqlite * 1e3;
    state.counters["ratio_floor"] =
        (samples.baselineCpuMedian() + sqlite) / samples.baselineCpuMedian();
}

// Binds the store's collection and the stand-alone one in turn; open answers the store's
// collection of a job opened afresh, count tells how many rows the control shows.
template <class Collection, class Open, class Shown>
ZebBench::Samples compareBinds(benchmark::State& state, const char* control, QSize size,
                               const char* property, const std::shared_ptr<Collection>& standalone,
                               Open open, Shown shown, int items)
{
    Office& o = office();
    auto ctl = shownControl(control, size);
    ZebBench::Samples samples;
    quint64 statements = 0;
    for (auto _ : state) {
        const std::shared_ptr<Collection> stored = open(*o.store->openJob(o.job));
        const auto fromStore = [&] {
            const quint64 before = o.store->statementCount();
            const Timing t = bind(*ctl, property, stored);
            statements = o.store->statementCount() - before;
            if (shown(*ctl) != items)
                state.SkipWithError("the control does not show every item from the store");
            unbind<Collection>(*ctl, property);
            return t;
        };
        const auto fromMemory = [&] {
            const Timing t = bind(*ctl, property, standalone);
            if (shown(*ctl) != items)
                state.SkipWithError("the control does not show every stand-alone item");
            unbind<Collection>(*ctl, property);
            return t;
        };
        Timing c, b;
        samples.inTurn([&] { c = fromStore(); }, [&] { b = fromMemory(); });
        samples.add(c, b);
        state.SetIterationTime(c.wall);
    }
    report(state, samples, statements, items);
    return samples;
}

int rows(const ZebSubCtl::UserControl& control, const char* list)
{
    return control.findChild<ZebSubCtl::KeyedListView*>(QLatin1String(list))->count();
}

void BM_LineItems(benchmark::State& state)
{
    const std::shared_ptr<LineItems> alone = standaloneLines();
    compareBinds<LineItems>(
        state, "ctlSubLineDsp", kViewerSize, "LineItems", alone,
        [](StoreJob& job) { return std::shared_ptr<LineItems>(job.lineItems()); },
        [](const ZebSubCtl::UserControl& c) {
            return int(
                c.findChildren<ZebSubCtl::UserControl*>(QStringLiteral("ctlSubLine")).size());
        },
        kLines);
}
BENCHMARK(BM_LineItems)->Arg(kLines)->Iterations(9)->UseManualTime()->Unit(benchmark::kMillisecond);

void BM_Paragraphs(benchmark::State& state)
{
    const std::shared_ptr<TextObjects> alone = standaloneParagraphs();
    const ZebBench::Samples samples = compareBinds<TextObjects>(
        state, "ctlTextSelect", kListSize, "TextObjects", alone,
        [](StoreJob& job) { return std::shared_ptr<TextObjects>(job.coverLetterParagraphs()); },
        [](const ZebSubCtl::UserControl& c) { return rows(c, "ListView"); }, kParagraphs);
    const qint64 collection = office().store->openJob(office().job)->coverLetterParagraphs()->id();
    reportFloor(state, samples,
                sqliteRead("SELECT id, key, text, selected FROM texts WHERE collection_id = ? "
                           "ORDER BY position",
                           collection));
}
BENCHMARK(BM_Paragraphs)
    ->Arg(kParagraphs)
    ->Iterations(9)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

void BM_Customers(benchmark::State& state)
{
    const std::shared_ptr<Customers> alone = standaloneCustomers(kCustomers);
    const ZebBench::Samples samples = compareBinds<Customers>(
        state, "ctlCustSelect", kPanelSize, "Customers", alone,
        [](StoreJob& job) { return std::shared_ptr<Customers>(job.customers()); },
        [](const ZebSubCtl::UserControl& c) { return rows(c, "lsvCustomers"); }, kCustomers);
    const qint64 submittal = officeId("SELECT id FROM submittals WHERE job_id = ?");
    reportFloor(state, samples,
                sqliteRead("SELECT id, customer_key, display_text, name, account_number, city, "
                           "state, type, category, included FROM submittal_customers WHERE "
                           "submittal_id = ? ORDER BY position",
                           submittal));
}
BENCHMARK(BM_Customers)
    ->Arg(kCustomers)
    ->Iterations(7)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

// Answers the confirmation with OK.
class AnswerOK : public ZebSubCtl::MessageBoxService {
public:
    int MsgBox(const QString&, int, const QString&) override { return ZebSubCtl::MsgBoxAnswer::OK; }
};

// Remove All clicked in the panel, the first row selected, until the panel is empty.
Timing removeAll(ZebSubCtl::UserControl& panel, const std::shared_ptr<Customers>& customers)
{
    auto* list = panel.findChild<ZebSubCtl::KeyedListView*>(QStringLiteral("lsvCustomers"));
    panel.setProperty("Customers", QVariant::fromValue(customers));
    list->setSelectedRow(0);
    // The customers outlive their removal on both sides: neither pays for destroying them.
    const CustomerList held = customers->Enumerate();
    settle();
    const auto start = std::chrono::steady_clock::now();
    const double cpu = ZebBench::threadSeconds();
    panel.findChild<QPushButton*>(QStringLiteral("cmdRemoveAll"))->click();
    settle();
    const Timing took{ZebBench::seconds(start, std::chrono::steady_clock::now()),
                      ZebBench::threadSeconds() - cpu};
    panel.setProperty("Customers", QVariant::fromValue(std::shared_ptr<Customers>()));
    settle();
    return took;
}

void BM_RemoveAll(benchmark::State& state)
{
    const int count = int(state.range(0));
    Office& o = office();
    ZebSubCtl::MessageBoxes::setService(std::make_shared<AnswerOK>());
    auto panel = shownControl("ctlCustSelect", kPanelSize);
    panel->setProperty("AllowDelete", true);
    ZebBench::Samples samples;
    quint64 statements = 0;
    int serial = 0;
    for (auto _ : state) {
        const auto fromStore = [&] {
            const qint64 id = o.store->createJob(
                job(QStringLiteral("R-%1-%2").arg(count).arg(++serial), 0, 0, count));
            const std::shared_ptr<Customers> stored = o.store->openJob(id)->customers();
            const quint64 before = o.store->statementCount();
            const Timing t = removeAll(*panel, stored);
            statements = o.store->statementCount() - before;
            if (o.store->openJob(id)->customers()->Count() != 0)
                state.SkipWithError("Remove All left customers in the store");
            o.store->deleteJob(id);
            return t;
        };
        const auto fromMemory = [&] {
            const std::shared_ptr<Customers> standalone = standaloneCustomers(count);
            const Timing t = removeAll(*panel, standalone);
            if (standalone->Count() != 0)
                state.SkipWithError("Remove All left stand-alone customers");
            return t;
        };
        Timing c, b;
        samples.inTurn([&] { c = fromStore(); }, [&] { b = fromMemory(); });
        samples.add(c, b);
        state.SetIterationTime(c.wall);
    }
    ZebSubCtl::MessageBoxes::setService(nullptr);
    report(state, samples, statements, count);
}
BENCHMARK(BM_RemoveAll)->Arg(1000)->Iterations(5)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_RemoveAll)
    ->Arg(kCustomers)
    ->Iterations(3)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv)
{
    installStandaloneServices();
    return ZebBench::runBenchmarks<QApplication>(argc, argv);
}
