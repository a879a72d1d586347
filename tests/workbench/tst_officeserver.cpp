// The office's own jobs on its PostgreSQL server, which the test starts itself: new jobs and
// their copies, imports from the command line, and two workstations editing one job's lines.
#include "../store/pgserver.h"
#include "csvtable.h"
#include "jobcommands.h"
#include "lineitemeditor.h"
#include "officeimports.h"
#include "store/jobcontents.h"
#include "store/store.h"
#include "store/storejob.h"
#include "store/storelineitems.h"
#include "support/testsupport.h"
#include "support/workbenchtesting.h"

#include <QTemporaryDir>
#include <QTest>
#include <QUndoStack>

using ZebObjects::Store;

namespace {
QStringList catalogs(ZebObjects::StoreLineItems& lines)
{
    QStringList out;
    for (const auto& r : lines.rows())
        out.append(r.data.catalogNumber);
    return out;
}
}  // namespace

class tst_OfficeServer : public QObject {
    Q_OBJECT
private slots:
    void initTestCase()
    {
        QVERIFY(m_home.isValid());
        qputenv("XDG_DATA_HOME", m_home.filePath(QStringLiteral("data")).toUtf8());
        m_server = std::make_unique<PgServer>();
        QVERIFY2(m_server->isRunning(), qPrintable(m_server->error()));
    }
    void cleanupTestCase() { m_server.reset(); }

    void jobsAreMadeCopiedArchivedAndFoundOnTheServer()
    {
        const QString location = m_server->location(m_server->newDatabaseName());
        auto r = ZebTest::runWorkbench(
            {QStringLiteral("--db"), location, QStringLiteral("--new-job"),
             QStringLiteral("25-0500"), QStringLiteral("--job-name"),
             QStringLiteral("Pier Warehouse"), QStringLiteral("--import-lines"),
             QStringLiteral(ZEB_DATA_DIR "/lines-quoting-system.csv")});
        QCOMPARE(r.err, QString());
        QCOMPARE(r.code, 0);
        QCOMPARE(r.out.split(QLatin1Char('\n'), Qt::SkipEmptyParts).size(), 2);
        const auto store = Store::open(location);
        const qint64 id = store->jobs().first().id;
        QCOMPARE(store->openJob(id)->lineItems()->Count(), qint16(5));
        ZebObjects::JobDetails d = store->jobDetails(id);
        d.number = QStringLiteral("25-0501");
        d.contractor = QStringLiteral("Baywater Construction");
        const qint64 copy = store->duplicateJob(id, d, true);
        QCOMPARE(store->jobDetails(copy).contractor, QStringLiteral("Baywater Construction"));
        QCOMPARE(catalogs(*store->openJob(copy)->lineItems()),
                 catalogs(*store->openJob(id)->lineItems()));
        d = store->jobDetails(id);
        d.archived = true;
        store->setJobDetails(id, d);
        QVERIFY(store->jobs().first().archived);
        const auto e =
            ZebTest::failureOf([&] { store->duplicateJob(id, store->jobDetails(copy), false); });
        QCOMPARE(e.Number, 457);
        store->setSetting(OfficeImports::LineMappingSetting, QStringLiteral("Quantity=Qty"));
        QCOMPARE(store->setting(OfficeImports::LineMappingSetting), QStringLiteral("Quantity=Qty"));
    }

    void twoWorkstationsSeeEachOthersLinesAndAConflictIsReportedNotOverwritten()
    {
        const QString location = m_server->location(m_server->newDatabaseName());
        const auto first = Store::open(location);
        ZebObjects::JobContents c;
        c.number = QStringLiteral("25-0600");
        c.name = QStringLiteral("Shared");
        const qint64 id = first->createJob(c);
        const auto second = Store::open(location);
        const auto mine = first->openJob(id)->lineItems();
        const auto theirs = second->openJob(id)->lineItems();
        mine->importLines(
            {{2, QStringLiteral("A"), {}, QStringLiteral("CAT-A"), {}, {}, false, {}, false},
             {4, QStringLiteral("B"), {}, QStringLiteral("CAT-B"), {}, {}, false, {}, false}},
            false);
        QCOMPARE(catalogs(*theirs),
                 (QStringList{QStringLiteral("CAT-A"), QStringLiteral("CAT-B")}));

        // The other workstation's editor has the lines open when this one deletes line 2.
        QUndoStack undo;
        LineItemTableModel model(theirs, &undo);
        QString told;
        model.onFailure = [&](const QString& what, const QString& description) {
            told = what + QLatin1Char(':') + description;
        };
        mine->removeLines({mine->rows().at(1).id});
        QVERIFY(model.setData(model.index(1, LineItemTableModel::CatalogNumber),
                              QStringLiteral("CAT-B2"), Qt::EditRole));
        QCOMPARE(told.section(QLatin1Char(':'), 0, 0), QStringLiteral("Edit line 2"));
        QVERIFY2(told.contains(QStringLiteral("the line is no longer in the database")),
                 qPrintable(told));
        // Nothing came back to life, nothing was overwritten, the editor shows what is there.
        QCOMPARE(catalogs(*mine), QStringList{QStringLiteral("CAT-A")});
        QCOMPARE(model.rowCount(), 1);
        QVERIFY(!undo.canUndo());
    }

private:
    QTemporaryDir m_home;
    std::unique_ptr<PgServer> m_server;
};

QTEST_MAIN(tst_OfficeServer)
#include "tst_officeserver.moc"
