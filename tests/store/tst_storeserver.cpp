// The store on a PostgreSQL server that several workstations share: the schema and its upgrade,
// the sample office, two writers at once, a write that meets another workstation's change, the
// server going away in the middle of work, and the announcement of other workstations' commits.
// The test starts its own server; without the server programs it fails, saying so.
#include "controls/criteria/ctlgeneralinfo.h"
#include "controls/textselect/ctltextselect.h"
#include "contracts/runtime.h"
#include "pgserver.h"
#include "platform/combobox.h"
#include "platform/keyedlistview.h"
#include "platform/multilinetextbox.h"
#include "rawdatabase.h"
#include "store/jobcontents.h"
#include "versiononeschema.h"
#include "sampleoffice/sampleoffice.h"
#include "store/store.h"
#include "store/storeschema.h"
#include "store/storebom.h"
#include "store/storedialect.h"
#include "store/storejob.h"
#include "store/storelineitems.h"
#include "store/storesubmittal.h"
#include "store/storetextobjects.h"
#include "support/testsupport.h"

#include <QElapsedTimer>
#include <QEventLoop>
#include <QTimer>
#include <QUrl>
#include <QLineEdit>
#include <QProcess>
#include <QPushButton>
#include <QRegularExpression>
#include <QSet>
#include <QSignalSpy>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QTest>

using namespace ZebObjects;
using Shown = ZebSubCtl::ScriptedMessageBoxService::Shown;

namespace {

using ZebTest::failureOf;

// A job of two lines and two paragraphs in the version 1 tables.
const char* const kVersion1Rows[] = {
    "INSERT INTO jobs (number, name) VALUES ('23-0042', 'Old Library Annex')",
    "INSERT INTO submittals (job_id, issued_by, submittal_date, include_bom, purpose_index, "
    "purpose) "
    "VALUES (1, 'Marta Halloran', '2023-05-02', 1, 1, 'Request For Approval')",
    "INSERT INTO cover_letters (submittal_id, include_logo) VALUES (1, 1)",
    "INSERT INTO text_collections (submittal_id, kind, text_type, next_key, dirty) VALUES (1, 1, "
    "1, 4, 0)",
    "INSERT INTO text_collections (submittal_id, kind, text_type) VALUES (1, 3, 3)",
    "INSERT INTO texts (collection_id, key, position, text, selected) VALUES (1, '1', 2, 'Second', "
    "0)",
    "INSERT INTO texts (collection_id, key, position, text, selected) VALUES (1, '3', 1, 'First', "
    "1)",
    "INSERT INTO boms (submittal_id, include_quantity, remarks_collection_id) VALUES (1, 1, 2)",
    "INSERT INTO labels (submittal_id) VALUES (1)",
    "INSERT INTO line_items (submittal_id, position, quantity, type, brand, catalog_number, "
    "description, group_code, mto, comment, selected) "
    "VALUES (1, 1, 12, 'A', 'Varnholt', 'VH-1', 'Troffer', 'L1', 0, 'Verify ceiling', 1)",
    "INSERT INTO line_items (submittal_id, position, quantity, type, brand, catalog_number, "
    "description, group_code, mto, comment, selected) "
    "VALUES (1, 2, 4, 'B', 'Quenza', 'QA-2', 'Downlight', 'L1', 1, '', 0)",
    "CREATE TABLE store_version (version BIGINT NOT NULL)",
    "INSERT INTO store_version VALUES (1)",
};

JobContents oneJob()
{
    JobContents c;
    c.number = QStringLiteral("24-0131");
    c.name = QStringLiteral("Riverside Medical Office Building");
    c.issuedBy = QStringLiteral("Marta Halloran");
    c.paragraphs = {{QStringLiteral("Enclosed please find our submittal."), true}};
    return c;
}

}  // namespace

class TestStoreServer : public QObject {
    Q_OBJECT

    std::unique_ptr<PgServer> m_server;

    // A new office database on the server with one job in it.
    QString newOffice()
    {
        const QString location = m_server->location(m_server->newDatabaseName());
        const auto store = Store::open(location);
        store->createJob(oneJob());
        return location;
    }

private slots:
    void initTestCase()
    {
        ZebTest::useScratchDataHome();
        QElapsedTimer clock;
        clock.start();
        m_server = std::make_unique<PgServer>();
        // Never skipped: without a server this whole program fails, saying why.
        if (!m_server->isRunning())
            QFAIL(qPrintable(QStringLiteral("The store on PostgreSQL cannot be tested: ")
                             + m_server->error()));
        qInfo("PostgreSQL server started in %lld ms on port %d", clock.elapsed(), m_server->port());
    }

    void cleanupTestCase() { m_server.reset(); }

    void aMissingDatabaseIsCreatedWithTheCurrentSchema()
    {
        const QString name = m_server->newDatabaseName();
        const auto store = Store::open(m_server->location(name));
        QVERIFY(store->isServer());
        QCOMPARE(store->path(), m_server->location(name));
        QVERIFY(store->isEmpty());
        RawDatabase raw(m_server->port(), name);
        QVERIFY(raw.isOpen());
        QCOMPARE(raw.value(QStringLiteral("SELECT version FROM store_version")).toInt(), 7);
        // Ids number themselves on the server as well.
        const qint64 first = store->createJob(oneJob());
        JobContents second = oneJob();
        second.number = QStringLiteral("24-0132");
        QCOMPARE(store->createJob(second), first + 1);
    }

    void anOpenExistingDatabaseThatIsMissingFailsNamingIt()
    {
        const QString location = m_server->location(QStringLiteral("nosuchoffice"));
        const ErrorInfo e =
            failureOf([&] { Store::open(location, Store::OpenMode::OpenExisting); });
        QCOMPARE(e.Number, 68);
        QCOMPARE(e.Source, QStringLiteral("ZebObjects.Store"));
        QVERIFY2(e.Description.startsWith(QStringLiteral("The database server of \"%1\" cannot be "
                                                         "reached")
                                              .arg(location)),
                 qPrintable(e.Description));
        QVERIFY2(e.Description.contains(QStringLiteral("nosuchoffice\" does not exist")),
                 qPrintable(e.Description));
    }

    void aVersionOneDatabaseIsUpgradedKeepingItsData()
    {
        const QString name = m_server->newDatabaseName();
        {
            // The database itself, empty, made the way an administrator makes one.
            RawDatabase admin(m_server->port(), QStringLiteral("postgres"));
            QVERIFY(admin.exec(QStringLiteral("CREATE DATABASE ") + name));
        }
        {
            RawDatabase raw(m_server->port(), name);
            const StoreDialect dialect(StoreDialect::Kind::Postgres);
            for (const char* sql : kVersion1Tables)
                QVERIFY(raw.exec(dialect.table(QString::fromLatin1(sql))));
            for (const char* sql : kVersion1Rows)
                QVERIFY(raw.exec(QString::fromLatin1(sql)));
        }
        const auto store = Store::open(m_server->location(name));
        RawDatabase check(m_server->port(), name);
        QCOMPARE(check.value(QStringLiteral("SELECT version FROM store_version")).toInt(), 7);
        QCOMPARE(store->jobs(), (QList<JobSummary>{{1,
                                                    QStringLiteral("23-0042"),
                                                    QStringLiteral("Old Library Annex"),
                                                    0,
                                                    2,
                                                    false,
                                                    {}}}));
        const auto job = store->openJob(1);
        QCOMPARE(job->submittal()->IssuedBy(), QStringLiteral("Marta Halloran"));
        const auto texts = job->coverLetterParagraphs();
        QStringList order;
        for (const auto& t : texts->Enumerate())
            order << t->Key() + QLatin1Char(':') + t->Text();
        QCOMPARE(order, (QStringList{QStringLiteral("3:First"), QStringLiteral("1:Second")}));
        // Rows copied with their ids: new rows still get ids of their own.
        QCOMPARE(texts->Add(QStringLiteral("Third"), false)->Key(), QStringLiteral("4"));
        QCOMPARE(texts->Count(), 3);
        const auto lines = job->lineItems();
        QCOMPARE(lines->Count(), qint16(2));
        QCOMPARE(lines->Item(1)->Comment()->Text(), QStringLiteral("Verify ceiling"));
        QVERIFY(lines->Item(2)->Comment() == nullptr);
        QCOMPARE(job->bom()->IncludeQuantity(), true);
    }

    void theSampleOfficeLoadsIntoANewDatabase()
    {
        const auto store = Store::open(m_server->location(m_server->newDatabaseName()));
        QElapsedTimer clock;
        clock.start();
        SampleOffice::fill(*store);
        qInfo("sample office filled in %lld ms", clock.elapsed());
        QCOMPARE(store->jobs().size(), 4);
        QCOMPARE(store->directoryCount(), qint32(SampleOffice::directory().size()));
        qint32 largest = 0;
        for (const JobSummary& j : store->jobs())
            largest = qMax(largest, j.lineCount);
        QCOMPARE(largest, SampleOffice::LargeJobLineCount);
        QCOMPARE(store->issuedByNames(), SampleOffice::issuedByNames());
        // A second fill finds the office taken and leaves it as it was.
        const ErrorInfo e = failureOf([&] { SampleOffice::fill(*store); });
        QCOMPARE(e.Number, 457);
        QCOMPARE(store->jobs().size(), 4);
    }

    void twoWorkstationsWritingAtOnceLoseNothing()
    {
        const QString location = newOffice();
        constexpr int kEach = 300;
        QProcess one;
        QProcess two;
        for (auto [p, tag] : {std::pair{&one, "one"}, std::pair{&two, "two"}}) {
            p->start(QStringLiteral(ZEB_STORE_WRITER),
                     {QStringLiteral("add-texts"), location, QString::number(kEach),
                      QString::fromLatin1(tag)});
            QVERIFY(p->waitForReadyRead(30000));
            QCOMPARE(p->readLine().trimmed(), QByteArray("ready"));
        }
        QElapsedTimer clock;
        clock.start();
        one.write("go\n");
        two.write("go\n");
        QVERIFY(one.waitForFinished(120000));
        QVERIFY(two.waitForFinished(120000));
        const qint64 wall = clock.elapsed();
        QCOMPARE(one.exitCode(), 0);
        QCOMPARE(two.exitCode(), 0);
        const QString outOne = QString::fromLatin1(one.readAll()).trimmed();
        const QString outTwo = QString::fromLatin1(two.readAll()).trimmed();
        qInfo("two workstations: %d writes in %lld ms = %.0f writes/s (%s; %s)", 2 * kEach, wall,
              2000.0 * kEach / double(qMax<qint64>(wall, 1)), qPrintable(outOne),
              qPrintable(outTwo));

        const auto store = Store::open(location, Store::OpenMode::OpenExisting);
        const auto texts = store->openJob(store->jobs().first().id)->coverLetterParagraphs();
        QCOMPARE(texts->Count(), 1 + 2 * kEach);
        QSet<QString> keys;
        QStringList fromOne;
        for (const auto& t : texts->Enumerate()) {
            keys.insert(t->Key());
            if (t->Text().startsWith(QLatin1String("one ")))
                fromOne << t->Text();
        }
        // Every write has its own key, and each workstation's writes keep their order.
        QCOMPARE(keys.size(), 1 + 2 * kEach);
        QCOMPARE(fromOne.size(), kEach);
        QCOMPARE(fromOne.first(), QStringLiteral("one 1"));
        QCOMPARE(fromOne.last(), QStringLiteral("one %1").arg(kEach));
    }

    void aWriterWaitsForTheOfficesWriteLockAndFailsClearlyWhenItIsHeldTooLong()
    {
        const QString location = newOffice();
        Store::Options options;
        options.busyTimeoutMs = 300;
        const auto store = Store::open(location, Store::OpenMode::OpenExisting, options);
        const auto texts = store->openJob(store->jobs().first().id)->coverLetterParagraphs();
        RawDatabase other(m_server->port(), QUrl(location).path().mid(1));
        // Another workstation in the middle of a write holds the office's write lock.
        for (const QString& sql : StoreDialect(StoreDialect::Kind::Postgres).beginWrite())
            QVERIFY(other.exec(sql));
        QElapsedTimer clock;
        clock.start();
        const ErrorInfo e = failureOf([&] { texts->Add(QStringLiteral("Waited"), false); });
        QVERIFY(clock.elapsed() >= 250);
        QCOMPARE(e.Number, 70);
        QVERIFY2(
            e.Description.startsWith(
                QStringLiteral("The database \"%1\" is locked by another writer (").arg(location)),
            qPrintable(e.Description));
        QVERIFY(other.exec(QStringLiteral("ROLLBACK")));
        texts->Add(QStringLiteral("Once free"), false);
        QCOMPARE(texts->Count(), 2);
    }

    void aWriteOverAnotherWorkstationsChangeFailsAndTheWinnerIsShown()
    {
        const QString location = newOffice();
        const auto here = Store::open(location, Store::OpenMode::OpenExisting);
        const auto there = Store::open(location, Store::OpenMode::OpenExisting);
        const qint64 id = here->jobs().first().id;
        const auto mine = here->openJob(id)->submittal();
        const auto theirs = there->openJob(id)->submittal();
        QCOMPARE(mine->IssuedBy(), QStringLiteral("Marta Halloran"));

        theirs->setIssuedBy(QStringLiteral("Jon Ekberg"));
        QStringList seen;
        connect(mine.get(), &Submittal::IssuedByChanged, this, [&] { seen << mine->IssuedBy(); });
        const ErrorInfo e = failureOf([&] { mine->setIssuedBy(QStringLiteral("Dana Whitcomb")); });
        QCOMPARE(e, (ErrorInfo{3197, QStringLiteral("ZebObjects.Submittal"),
                               QStringLiteral("Another workstation changed the issuer to \"Jon "
                                              "Ekberg\" after it was shown here, so \"Dana "
                                              "Whitcomb\" was not saved. The other "
                                              "workstation's value is shown now; make the change "
                                              "again if it still applies.")}));
        // The object raised its event with the value that won, which the server still holds.
        QCOMPARE(seen, QStringList{QStringLiteral("Jon Ekberg")});
        QCOMPARE(theirs->IssuedBy(), QStringLiteral("Jon Ekberg"));

        // Made again, now that this workstation has seen the other's value, the write is saved.
        mine->setIssuedBy(QStringLiteral("Dana Whitcomb"));
        QCOMPARE(theirs->IssuedBy(), QStringLiteral("Dana Whitcomb"));
        QCOMPARE(seen.size(), 2);
    }

    void aTextEditedOverAnotherWorkstationsEditFailsAndKeepsTheirs()
    {
        const QString location = newOffice();
        const auto here = Store::open(location, Store::OpenMode::OpenExisting);
        const auto there = Store::open(location, Store::OpenMode::OpenExisting);
        const qint64 id = here->jobs().first().id;
        const auto mine = here->openJob(id)->coverLetterParagraphs()->Item(1);
        const auto theirs = there->openJob(id)->coverLetterParagraphs()->Item(1);
        QCOMPARE(mine->Text(), QStringLiteral("Enclosed please find our submittal."));
        theirs->setText(QStringLiteral("Enclosed please find our revised submittal."));
        const ErrorInfo e =
            failureOf([&] { mine->setText(QStringLiteral("Enclosed: submittal.")); });
        QCOMPARE(e.Number, 3197);
        QCOMPARE(e.Source, QStringLiteral("ZebObjects.TextObjects"));
        QCOMPARE(e.Description,
                 QStringLiteral("Another workstation changed the text 1 to \"Enclosed please find "
                                "our revised submittal.\" after it was shown here, so \"Enclosed: "
                                "submittal.\" was not saved. The other workstation's value is "
                                "shown now; make the change again if it still applies."));
        QCOMPARE(theirs->Text(), QStringLiteral("Enclosed please find our revised submittal."));
        mine->setText(QStringLiteral("Enclosed: submittal."));
        QCOMPARE(theirs->Text(), QStringLiteral("Enclosed: submittal."));
    }

    void bothWorkstationsWritingTheSameValueIsNoConflict()
    {
        const QString location = newOffice();
        const auto here = Store::open(location, Store::OpenMode::OpenExisting);
        const auto there = Store::open(location, Store::OpenMode::OpenExisting);
        const qint64 id = here->jobs().first().id;
        const auto mine = here->openJob(id)->submittal();
        const auto theirs = there->openJob(id)->submittal();
        QCOMPARE(mine->IncludeBOM(), false);
        QCOMPARE(mine->SubmittalDate(), QString());
        theirs->setIncludeBOM(true);
        theirs->setSubmittalDate(QStringLiteral("2024-06-03"));
        // What the user wanted is what the server holds already: nothing to tell.
        QSignalSpy bom(mine.get(), &Submittal::BOMChanged);
        mine->setIncludeBOM(true);
        mine->setSubmittalDate(QStringLiteral("2024-06-03"));
        QCOMPARE(bom.count(), 0);
        // A value this workstation never read is written as it comes.
        const auto fresh = here->openJob(id)->submittal();
        theirs->setSubmittalDate(QStringLiteral("2024-06-04"));
        fresh->setSubmittalDate(QStringLiteral("2024-06-05"));
        QCOMPARE(theirs->SubmittalDate(), QStringLiteral("2024-06-05"));
    }

    void aConflictEndsInTheControlsBoxAndTheControlShowsTheWinner()
    {
        ZebTest::Harness h;
        const QString location = newOffice();
        const auto here = Store::open(location, Store::OpenMode::OpenExisting);
        const auto there = Store::open(location, Store::OpenMode::OpenExisting);
        const qint64 id = here->jobs().first().id;
        Runtime::setApplicationServices(here->applicationServices());
        const auto job = here->openJob(id);
        {
            ZebSubCtl::ctlGeneralInfo panel;
            panel.setCriteria(job->submittal());
            panel.show();
            QVERIFY(QTest::qWaitForWindowExposed(&panel));
            auto* issuer = panel.findChild<ZebSubCtl::ComboBox*>(QStringLiteral("cmbIssuedBy"));
            QVERIFY(issuer);
            QCOMPARE(issuer->text(), QStringLiteral("Marta Halloran"));

            there->openJob(id)->submittal()->setIssuedBy(QStringLiteral("Jon Ekberg"));
            h.log().clear();
            issuer->lineEdit()->setFocus();
            issuer->lineEdit()->end(false);
            QTest::keyClick(issuer->lineEdit(), Qt::Key_S);
            const QString description =
                QStringLiteral("Another workstation changed the issuer to \"Jon Ekberg\" after it "
                               "was shown here, so \"Marta Hallorans\" was not saved. The other "
                               "workstation's value is shown now; make the change again if it "
                               "still applies.");
            QCOMPARE(h.boxes().shown(),
                     (QList<Shown>{Shown{QStringLiteral("The requested operation cannot be "
                                                        "completed."),
                                         48, QStringLiteral("3197 - ") + description}}));
            QCOMPARE(h.log().lines(),
                     QStringList{QStringLiteral("LogError|ctlGeneralInfo|cmbIssuedBy_Change()|3197|"
                                                "ZebObjects.Submittal|%1|0")
                                     .arg(description)});
            // The control shows the value that won, and the server kept it.
            QCOMPARE(issuer->text(), QStringLiteral("Jon Ekberg"));
            QCOMPARE(there->openJob(id)->submittal()->IssuedBy(), QStringLiteral("Jon Ekberg"));

            // The control goes on working: the next keystroke is saved.
            h.boxes().clear();
            issuer->lineEdit()->end(false);
            QTest::keyClick(issuer->lineEdit(), Qt::Key_S);
            QVERIFY(h.boxes().shown().isEmpty());
            QCOMPARE(there->openJob(id)->submittal()->IssuedBy(), QStringLiteral("Jon Ekbergs"));
        }
        Runtime::setApplicationServices(nullptr);
    }

    void aWriteWhileTheServerIsDownFailsClearlyAndWorkGoesOnWhenItIsBack()
    {
        const QString location = newOffice();
        const auto store = Store::open(location, Store::OpenMode::OpenExisting);
        const auto job = store->openJob(store->jobs().first().id);
        const auto texts = job->coverLetterParagraphs();
        QCOMPARE(texts->Count(), 1);

        QVERIFY2(m_server->stop(), qPrintable(m_server->error()));
        const ErrorInfo e = failureOf([&] { texts->Add(QStringLiteral("While down"), false); });
        const QString start = QStringLiteral("The database server of \"%1\" cannot be reached, "
                                             "so nothing was read or saved; work goes on once "
                                             "the server answers again (")
                                  .arg(location);
        QCOMPARE(e.Number, 68);
        QCOMPARE(e.Source, QStringLiteral("ZebObjects.Store"));
        QVERIFY2(e.Description.startsWith(start), qPrintable(e.Description));
        // Reads fail the same way, and so does a second write.
        QCOMPARE(failureOf([&] { texts->Count(); }).Number, 68);
        QCOMPARE(failureOf([&] { job->submittal()->setIncludeBOM(true); }).Number, 68);

        QVERIFY2(m_server->start(), qPrintable(m_server->error()));
        // The same store goes on, without being opened again.
        texts->Add(QStringLiteral("After restart"), false);
        QCOMPARE(texts->Count(), 2);
        QCOMPARE(texts->Item(2)->Text(), QStringLiteral("After restart"));
        job->submittal()->setIncludeBOM(true);
        QCOMPARE(Store::open(location, Store::OpenMode::OpenExisting)
                     ->openJob(job->id())
                     ->submittal()
                     ->IncludeBOM(),
                 true);
    }

    void aServerDownEndsTheAddInTheControlsBoxAndTheNextAddWorksOnceItIsBack()
    {
        ZebTest::Harness h;
        const QString location = newOffice();
        const auto store = Store::open(location, Store::OpenMode::OpenExisting);
        const auto job = store->openJob(store->jobs().first().id);
        Runtime::setApplicationServices(store->applicationServices());
        {
            ZebSubCtl::ctlTextSelect ctl;
            ctl.setAllowUpdate(true);
            ctl.setTextObjects(job->coverLetterParagraphs());
            ctl.show();
            QVERIFY(QTest::qWaitForWindowExposed(&ctl));
            auto* list = ctl.findChild<ZebSubCtl::KeyedListView*>(QStringLiteral("ListView"));
            auto* entry =
                ctl.findChild<ZebSubCtl::MultiLineTextBox*>(QStringLiteral("txtNewComment"));
            auto* add = ctl.findChild<QPushButton*>(QStringLiteral("cmdAdd"));
            QVERIFY(list && entry && add);
            QCOMPARE(list->count(), 1);

            QVERIFY(m_server->stop());
            h.log().clear();
            QTest::keyClicks(entry, QStringLiteral("Lead times start at approval."));
            QTest::mouseClick(add, Qt::LeftButton);
            QCOMPARE(h.boxes().shown().size(), 1);
            const Shown box = h.boxes().shown().first();
            QCOMPARE(box.prompt, QStringLiteral("The requested operation cannot be completed."));
            QCOMPARE(box.style, 48);
            const QString title = QStringLiteral("68 - The database server of \"%1\" cannot be "
                                                 "reached, so nothing was read or saved; work "
                                                 "goes on once the server answers again (")
                                      .arg(location);
            QVERIFY2(box.title.startsWith(title), qPrintable(box.title));
            QCOMPARE(h.log().lines().size(), 1);
            QVERIFY2(h.log().lines().first().startsWith(QStringLiteral(
                         "LogError|ctlTextSelect|cmdAdd_Click()|68|ZebObjects.Store|")),
                     qPrintable(h.log().lines().first()));
            QCOMPARE(list->count(), 1);

            QVERIFY(m_server->start());
            h.boxes().clear();
            QTest::mouseClick(add, Qt::LeftButton);
            QVERIFY(h.boxes().shown().isEmpty());
            QCOMPARE(list->count(), 2);
            QCOMPARE(Store::open(location, Store::OpenMode::OpenExisting)
                         ->openJob(job->id())
                         ->coverLetterParagraphs()
                         ->Count(),
                     2);
        }
        Runtime::setApplicationServices(nullptr);
    }

    void aServerRestartBetweenWritesIsNotNoticed()
    {
        const QString location = newOffice();
        const auto store = Store::open(location, Store::OpenMode::OpenExisting);
        const auto submittal = store->openJob(store->jobs().first().id)->submittal();
        submittal->setIncludeLabels(true);
        QVERIFY(m_server->stop());
        QVERIFY(m_server->start());
        // The connection the restart cut is made again before the write begins.
        submittal->setIncludeLabels(false);
        QCOMPARE(submittal->IncludeLabels(), false);
    }

    void aWriteCutOffByTheServerLeavesNothingHalfWritten()
    {
        const QString location = newOffice();
        const auto store = Store::open(location, Store::OpenMode::OpenExisting);
        const auto job = store->openJob(store->jobs().first().id);
        const auto texts = job->coverLetterParagraphs();
        const ErrorInfo e = failureOf([&] {
            store->writeAll([&] {
                texts->Add(QStringLiteral("First half"), false);
                job->submittal()->setIncludeCoverLetter(true);
                QVERIFY(m_server->stop());
                texts->Add(QStringLiteral("Second half"), false);
            });
        });
        QCOMPARE(e.Number, 68);
        QVERIFY(m_server->start());
        QCOMPARE(texts->Count(), 1);
        QCOMPARE(job->submittal()->IncludeCoverLetter(), false);
        // And the store writes again.
        texts->Add(QStringLiteral("Whole"), false);
        QCOMPARE(texts->Count(), 2);
    }

    void anotherWorkstationsCommitIsAnnouncedAndOwnCommitsAreNot()
    {
        const QString location = newOffice();
        const auto here = Store::open(location, Store::OpenMode::OpenExisting);
        const auto there = Store::open(location, Store::OpenMode::OpenExisting);
        const qint64 id = here->jobs().first().id;
        int announced = 0;
        QElapsedTimer clock;
        qint64 latencyUs = -1;
        QEventLoop waiting;
        QVERIFY(here->watchOtherWorkstations([&] {
            ++announced;
            latencyUs = clock.nsecsElapsed() / 1000;
            waiting.quit();
        }));
        const auto mine = here->openJob(id)->submittal();
        mine->setIncludeBOM(true);
        QTest::qWait(200);
        QCOMPARE(announced, 0);

        const auto theirs = there->openJob(id)->submittal();
        QList<qint64> latencies;
        QList<qint64> writes;
        for (int i = 0; i < 20; ++i) {
            const int before = announced;
            QElapsedTimer write;
            write.start();
            theirs->setIssuedBy(QStringLiteral("Writer %1").arg(i));
            writes << write.nsecsElapsed() / 1000;
            // From the commit's return to the announcement, in the event loop as a workstation
            // has it.
            clock.start();
            QTimer::singleShot(5000, &waiting, &QEventLoop::quit);
            if (announced == before)
                waiting.exec();
            QCOMPARE(announced, before + 1);
            latencies << latencyUs;
            // What the announcement brings is there to read.
            QCOMPARE(mine->IssuedBy(), QStringLiteral("Writer %1").arg(i));
        }
        std::sort(latencies.begin(), latencies.end());
        std::sort(writes.begin(), writes.end());
        qInfo("write on one workstation: median %lld us; its commit announced on the other after "
              "median %lld us, worst %lld us",
              writes[writes.size() / 2], latencies[latencies.size() / 2], latencies.last());

        // The watch outlives a restart of the server: the connection made again listens again,
        // and announces once that commits may have gone by meanwhile.
        QVERIFY(m_server->stop());
        QVERIFY(m_server->start());
        const int beforeRead = announced;
        mine->IssuedBy();
        QTRY_COMPARE_WITH_TIMEOUT(announced, beforeRead + 1, 5000);
        const int before = announced;
        theirs->setIssuedBy(QStringLiteral("After restart"));
        QTRY_COMPARE_WITH_TIMEOUT(announced, before + 1, 5000);
    }

    void aFileDoesNotAnnounceCommits()
    {
        QTemporaryDir dir;
        const auto store = Store::open(dir.filePath(QStringLiteral("office.zebdb")));
        QVERIFY(!store->isServer());
        QVERIFY(!store->watchOtherWorkstations([] {}));
    }
};

QTEST_MAIN(TestStoreServer)
#include "tst_storeserver.moc"
