// Importing a job's lines from a CSV file, as the user waits for it: the file parsed, every row
// checked under the mapping, the preview dialog filled, then every line committed in one
// transaction. The baseline is what a competent developer would write by hand: a plain prepared
// INSERT loop of the same rows in one transaction. Built and run in the Release tree:
//   BENCHES=bench_import bench/run.sh
#include "benchsupport.h"
#include "csvtable.h"
#include "importdialog.h"
#include "officeimports.h"
#include "store/jobcontents.h"
#include "store/store.h"
#include "store/storebrands.h"
#include "store/storejob.h"
#include "store/storelineitems.h"

#include <QApplication>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <chrono>
#include <ctime>

using namespace ZebObjects;
using ZebBench::seconds;

namespace {

using Clock = std::chrono::steady_clock;

// The processor time of this thread: on a machine others share, what the work itself costs,
// beside the time waited.
double cpuSeconds()
{
    timespec t{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &t);
    return double(t.tv_sec) + double(t.tv_nsec) * 1e-9;
}

QByteArray csvOf(int rows)
{
    QByteArray out("Type,Qty,Manufacturer,Catalog No.,Description,Area,MTO,Notes\n");
    for (int i = 1; i <= rows; ++i)
        out += QStringLiteral(
                   "T%1,%2,Varnholt,VH-%1-40K,\"Recessed troffer, 2x4, line %1\",LVL%3,N,%4\n")
                   .arg(i)
                   .arg(i % 40 + 1)
                   .arg(i % 7)
                   .arg(i % 5 == 0 ? QStringLiteral("\"Verify, line %1\"").arg(i) : QString())
                   .toUtf8();
    return out;
}

void BM_ImportLines(benchmark::State& state)
{
    const int rows = int(state.range(0));
    const QByteArray csv = csvOf(rows);
    double ours = 0;
    double theirs = 0;
    double oursCpu = 0;
    double theirsCpu = 0;
    for (auto _ : state) {
        QTemporaryDir dir;
        const QString file = dir.filePath(QStringLiteral("office.zebdb"));
        qint64 job = 0;
        double c = 0;
        {
            const auto store = Store::open(file);
            JobContents contents;
            contents.number = QStringLiteral("1");
            contents.name = QStringLiteral("Import");
            job = store->createJob(contents);
            const auto start = Clock::now();
            const double startCpu = cpuSeconds();
            TableImport import = OfficeImports::lineItems();
            import.setTable(CsvTable::parse(csv, QStringLiteral("bench")));
            OfficeImports::mapColumns(import, *store, OfficeImports::LineMappingSetting);
            ImportDialog preview(QStringLiteral("Import Line Items"), QStringLiteral("bench.csv"),
                                 import, true);
            preview.show();
            ZebBench::settle();
            if (!preview.import().problems().isEmpty())
                state.SkipWithError("the rows have problems");
            // As the workstation writes it: the lines and the brands new to the office together.
            const auto lines = store->openJob(job)->lineItems();
            store->writeAll([&] {
                lines->importLines(OfficeImports::lines(preview.import()), false);
                store->brands().addMissing(OfficeImports::brands(preview.import()));
            });
            c = seconds(start, Clock::now());
            ours += c;
            oursCpu += cpuSeconds() - startCpu;
        }
        // By hand: the same rows, already split, one prepared INSERT each in one transaction.
        {
            const TableImport parsed = [&] {
                TableImport t = OfficeImports::lineItems();
                t.setTable(CsvTable::parse(csv, QStringLiteral("bench")));
                t.guessMapping();
                t.check();
                return t;
            }();
            const auto lines = OfficeImports::lines(parsed);
            auto db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("plain"));
            db.setDatabaseName(file);
            db.open();
            {
                QSqlQuery q(db);
                q.exec(QStringLiteral("PRAGMA journal_mode = WAL"));
                q.exec(QStringLiteral("PRAGMA synchronous = NORMAL"));
                const qint64 submittal = [&] {
                    q.exec(QStringLiteral("SELECT id FROM submittals WHERE job_id = %1").arg(job));
                    q.next();
                    return q.value(0).toLongLong();
                }();
                const auto start = Clock::now();
                const double startCpu = cpuSeconds();
                db.transaction();
                QSqlQuery insert(db);
                insert.prepare(QStringLiteral(
                    "INSERT INTO line_items (submittal_id, position, quantity, type, brand, "
                    "catalog_number, description, group_code, mto, selected) "
                    "VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?)"));
                QSqlQuery comment(db);
                comment.prepare(QStringLiteral(
                    "INSERT INTO line_item_comments (line_item_id, text) VALUES (?, ?)"));
                for (qsizetype i = 0; i < lines.size(); ++i) {
                    const auto& l = lines[i];
                    insert.addBindValue(submittal);
                    insert.addBindValue(qint64(rows + i + 1));
                    insert.addBindValue(l.quantity);
                    insert.addBindValue(l.type);
                    insert.addBindValue(l.brand);
                    insert.addBindValue(l.catalogNumber);
                    insert.addBindValue(l.description);
                    insert.addBindValue(l.group);
                    insert.addBindValue(int(l.mto));
                    insert.addBindValue(int(l.selected));
                    insert.exec();
                    if (l.comment) {
                        comment.addBindValue(insert.lastInsertId());
                        comment.addBindValue(*l.comment);
                        comment.exec();
                    }
                }
                db.commit();
                theirs += seconds(start, Clock::now());
                theirsCpu += cpuSeconds() - startCpu;
            }
            db.close();
        }
        QSqlDatabase::removeDatabase(QStringLiteral("plain"));
        state.SetIterationTime(c);
    }
    ZebBench::reportAgainstBaseline(state, ours, theirs);
    state.counters["cpu_ratio"] = oursCpu / theirsCpu;
    state.counters["target_ratio"] = 2.0;
}
BENCHMARK(BM_ImportLines)
    ->Arg(1000)
    ->Arg(10000)
    ->Iterations(3)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv)
{
    return ZebBench::runBenchmarks<QApplication>(argc, argv);
}
