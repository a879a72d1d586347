// The store on this machine's disk: one control write committed (call to event), filling the
// sample office, and opening the 744-line job with every member a page reads. Where a hand-made
// plain Qt SQL equivalent exists it runs in the same iteration, and the counters give both
// times and their ratio. Built and run in the Release tree:
//   BENCHES=bench_store bench/run.sh
#include "benchsupport.h"
#include "contracts/customers.h"
#include "contracts/labelfields.h"
#include "contracts/lineitemcomment.h"
#include "rules/textkind.h"
#include "sampleoffice/sampleoffice.h"
#include "store/store.h"
#include "store/storebom.h"
#include "store/storecustomers.h"
#include "store/storejob.h"
#include "store/storelabels.h"
#include "store/storelineitems.h"
#include "store/storesubmittal.h"
#include "store/storetextobjects.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <chrono>

using namespace ZebObjects;

using ZebBench::seconds;

namespace {

using Clock = std::chrono::steady_clock;

// The sample office in a scratch file, made once for the benchmarks that read or write it.
struct Office {
    QTemporaryDir dir;
    QString file;
    Office()
    {
        file = dir.filePath(QStringLiteral("office.zebdb"));
        const auto store = Store::open(file);
        SampleOffice::fill(*store);
    }
};

Office& office()
{
    static Office o;
    return o;
}

// A plain connection with the store's settings, as one would open it by hand.
class PlainConnection {
public:
    explicit PlainConnection(const QString& file)
    {
        auto db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("plain"));
        db.setDatabaseName(file);
        db.open();
        QSqlQuery q(db);
        q.exec(QStringLiteral("PRAGMA journal_mode = WAL"));
        q.exec(QStringLiteral("PRAGMA synchronous = NORMAL"));
    }
    ~PlainConnection() { QSqlDatabase::removeDatabase(QStringLiteral("plain")); }
    QSqlDatabase db() const { return QSqlDatabase::database(QStringLiteral("plain")); }
};

void BM_ControlWrite(benchmark::State& state)
{
    const auto store = Store::open(office().file);
    const qint64 id = store->jobs().at(1).id;
    const auto submittal = store->openJob(id)->submittal();
    Clock::time_point raised;
    qint64 events = 0;
    QObject::connect(submittal.get(), &Submittal::BOMChanged, [&] {
        raised = Clock::now();
        ++events;
    });
    PlainConnection plain(office().file);
    QSqlQuery update(plain.db());
    update.prepare(QStringLiteral("UPDATE submittals SET include_labels = ? WHERE id = ?"));
    double ours = 0;
    double theirs = 0;
    double worst = 0;
    bool flag = submittal->IncludeBOM();
    for (auto _ : state) {
        flag = !flag;
        const auto start = Clock::now();
        submittal->setIncludeBOM(flag);
        const double c = seconds(start, raised);
        const auto plainStart = Clock::now();
        update.bindValue(0, int(flag));
        update.bindValue(1, id);
        update.exec();
        const double b = seconds(plainStart, Clock::now());
        state.SetIterationTime(c);
        ours += c;
        theirs += b;
        worst = std::max(worst, c);
    }
    // Every write changed the flag, so every one must have ended in its event.
    if (events != qint64(state.iterations()))
        state.SkipWithError("a write raised no event");
    ZebBench::reportAgainstBaseline(state, ours, theirs);
    state.counters["worst_ms"] = worst * 1e3;
    state.counters["target_ms"] = 2.0;
}
BENCHMARK(BM_ControlWrite)->Iterations(200)->UseManualTime()->Unit(benchmark::kMillisecond);

void BM_FillSampleOffice(benchmark::State& state)
{
    double total = 0;
    for (auto _ : state) {
        QTemporaryDir dir;
        const auto start = Clock::now();
        {
            const auto store = Store::open(dir.filePath(QStringLiteral("office.zebdb")));
            SampleOffice::fill(*store);
        }
        const double c = seconds(start, Clock::now());
        state.SetIterationTime(c);
        total += c;
    }
    state.counters["control_ms"] = total / double(state.iterations()) * 1e3;
}
BENCHMARK(BM_FillSampleOffice)->Iterations(5)->UseManualTime()->Unit(benchmark::kMillisecond);

// Everything the workstation's pages read when the job opens: the submittal and its cover
// letter, the texts, the BOM, the labels, every member of every line as a line row reads it,
// and the customers.
qint64 readJob(StoreJob& job)
{
    qint64 reads = 0;
    const auto s = job.submittal();
    reads += s->IssuedBy().size() + s->SubmittalDate().size() + s->SubmittalPurpose().size()
             + s->SubmittalPurposeIndex() + s->IncludeBOM() + s->IncludeLabels()
             + s->IncludeCoverLetter() + s->Recipients()->Count();
    const auto letter = s->CoverLetter();
    reads += letter->IncludeLogo() + letter->IncludeDefaultParagraphs() + letter->IncludeRemarks()
             + letter->SeparateLetters() + letter->IncludeCarbonCopy();
    for (const auto& texts : {std::static_pointer_cast<TextObjects>(job.coverLetterParagraphs()),
                              std::static_pointer_cast<TextObjects>(job.coverLetterRemarks()),
                              job.bom()->DefaultRemarks()})
        for (const auto& t : texts->Enumerate())
            reads += t->Key().size() + t->Text().size() + t->Selected();
    for (const auto& f : job.labels()->LabelFields()->Enumerate())
        reads += f->Included() + f->Key().size() + f->Caption().size();
    const auto lines = job.lineItems();
    for (const auto& l : lines->Enumerate()) {
        reads += lines->Count();
        reads += l->Selected() + l->Quantity().size() + l->Type().size() + l->Type().size()
                 + l->Brand().size() + l->CatalogNumber().size() + l->CatalogNumber().size()
                 + l->Group().size() + l->MTO() + l->Description().size() + l->Description().size()
                 + (l->Comment() ? 1 : 0);
    }
    for (const auto& c : job.customers()->Enumerate())
        reads += c->Key().size() + c->DisplayText().size() + c->Included() + c->Name().size()
                 + c->AccountNumber().size() + c->City().size() + c->State().size()
                 + c->Type().size() + c->Category().size();
    return reads;
}

void BM_OpenLargeJob(benchmark::State& state)
{
    double ours = 0;
    double theirs = 0;
    for (auto _ : state) {
        const auto start = Clock::now();
        {
            const auto store = Store::open(office().file, Store::OpenMode::OpenExisting);
            const auto job = store->openJob(store->jobs().last().id);
            benchmark::DoNotOptimize(readJob(*job));
        }
        const double c = seconds(start, Clock::now());
        // By hand: one connection, one query per table, every column read once.
        const auto plainStart = Clock::now();
        {
            PlainConnection plain(office().file);
            QSqlQuery q(plain.db());
            q.setForwardOnly(true);
            qint64 sum = 0;
            q.exec(QStringLiteral("SELECT l.selected, l.quantity, l.type, l.brand, "
                                  "l.catalog_number, l.group_code, l.mto, l.description, c.text "
                                  "FROM line_items l LEFT JOIN line_item_comments c ON "
                                  "c.line_item_id = l.id WHERE l.submittal_id = (SELECT MAX(id) "
                                  "FROM submittals) ORDER BY l.position"));
            while (q.next())
                for (int i = 0; i < 9; ++i)
                    sum += q.value(i).toString().size();
            q.exec(QStringLiteral("SELECT * FROM submittal_customers"));
            while (q.next())
                sum += q.value(5).toString().size();
            q.exec(QStringLiteral("SELECT * FROM texts"));
            while (q.next())
                sum += q.value(5).toString().size();
            q.finish();
            benchmark::DoNotOptimize(sum);
        }
        const double b = seconds(plainStart, Clock::now());
        state.SetIterationTime(c);
        ours += c;
        theirs += b;
    }
    ZebBench::reportAgainstBaseline(state, ours, theirs);
}
BENCHMARK(BM_OpenLargeJob)->Iterations(10)->UseManualTime()->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv)
{
    return ZebBench::runBenchmarks<QCoreApplication>(argc, argv);
}
