// The store under faults: each of SQLite's extended result codes has its own number and names
// the file or folder, a damaged file says so in one line, a reader never waits for a writer,
// and a list filled while another program deletes shows one state of the file.
#include "contracts/textobject.h"
#include "contracts/textobjects.h"
#include "controls/textselect/ctltextselect.h"
#include "contracts/runtime.h"
#include "platform/keyedlistview.h"
#include "store/jobcontents.h"
#include "store/store.h"
#include "store/storeconnection.h"
#include "contracts/labelfield.h"
#include "contracts/labelfields.h"
#include "store/storejob.h"
#include "store/storelabels.h"
#include "store/storesubmittal.h"
#include "store/storetextobjects.h"
#include "support/testsupport.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QTest>

#include <unistd.h>

using namespace ZebObjects;

namespace {

const QString kChild = QStringLiteral(ZEB_STORE_FAULT_CHILD);

JobContents jobWithParagraphs(int count)
{
    JobContents c;
    c.number = QStringLiteral("24-0131");
    c.name = QStringLiteral("Riverside Medical Office Building");
    for (int i = 1; i <= count; ++i)
        c.paragraphs.append({QStringLiteral("Paragraph %1").arg(i), i % 2 == 0});
    return c;
}

using ZebTest::failureOf;

// A plain SQLite connection of the test's own; answers every row's first column.
QStringList rawRows(const QString& file, const QString& sql)
{
    QStringList out;
    {
        auto db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("raw"));
        db.setDatabaseName(file);
        if (db.open()) {
            QSqlQuery q(db);
            if (q.exec(sql))
                while (q.next())
                    out.append(q.value(0).toString());
        }
        db.close();
    }
    QSqlDatabase::removeDatabase(QStringLiteral("raw"));
    return out;
}

// Runs the child as the unprivileged user, whom permission bits bind.
QString runAsNobody(const QStringList& args)
{
    ZebTest::ProgramOptions options;
    options.asNobody = geteuid() == 0;
    options.mergeChannels = true;
    options.timeoutMs = 60000;
    const ZebTest::ProgramRun r = ZebTest::runProgram(kChild, args, options);
    return r.timedOut ? QStringLiteral("(did not end)") : r.out.trimmed();
}

}  // namespace

class TestStoreFaults : public QObject {
    Q_OBJECT
private slots:
    void initTestCase()
    {
        ZebTest::useScratchDataHome();
        QVERIFY(QFile::exists(kChild));
    }

    void extendedResultCodesHaveTheirOwnNumbersAndNameTheFileOrFolder_data()
    {
        QTest::addColumn<int>("code");
        QTest::addColumn<int>("number");
        QTest::addColumn<QString>("description");
        const QString f = QStringLiteral("The database file \"/srv/office/office.sqlite\" ");
        QTest::newRow("read-only folder")
            << 1544 << 70
            << f
                   + QStringLiteral(
                       "cannot be changed: its folder \"/srv/office\" is read-only (cause)");
        QTest::newRow("read-only file")
            << 8 << 75 << f + QStringLiteral("is read-only: the change cannot be saved (cause)");
        QTest::newRow("moved while open")
            << 1032 << 75
            << f
                   + QStringLiteral("was moved or deleted while it was open: the change cannot be "
                                    "saved (cause)");
        QTest::newRow("shared memory read-only")
            << 1288 << 70
            << f
                   + QStringLiteral("cannot be changed: its shared-memory file "
                                    "\"/srv/office/office.sqlite-shm\" cannot be written (cause)");
        QTest::newRow("read error")
            << 266 << 57 << f + QStringLiteral("could not be read from the disk (cause)");
        QTest::newRow("short read")
            << 522 << 57 << f + QStringLiteral("could not be read from the disk (cause)");
        QTest::newRow("write error")
            << 778 << 57 << f + QStringLiteral("could not be written to the disk (cause)");
        QTest::newRow("fsync error")
            << 1034 << 57 << f + QStringLiteral("could not be written to the disk (cause)");
        QTest::newRow("folder fsync error")
            << 1290 << 57
            << f
                   + QStringLiteral(
                       "could not be made durable: its folder \"/srv/office\" could not be "
                       "written to the disk (cause)");
        QTest::newRow("shared memory error")
            << 4618 << 57
            << f
                   + QStringLiteral(
                       "could not be shared: its shared-memory file "
                       "\"/srv/office/office.sqlite-shm\" could not be opened or written (cause)");
        QTest::newRow("lock error")
            << 3850 << 70 << f + QStringLiteral("could not be locked (cause)");
        QTest::newRow("other I/O error")
            << 6154 << 57 << f + QStringLiteral("could not be read or written (cause)");
        QTest::newRow("full disk")
            << 13 << 61 << f + QStringLiteral("cannot grow: the disk is full (cause)");
        QTest::newRow("damaged") << 11 << 321 << f + QStringLiteral("is damaged (cause)");
        QTest::newRow("damaged index") << 779 << 321 << f + QStringLiteral("is damaged (cause)");
        QTest::newRow("busy") << 5 << 70
                              << f + QStringLiteral("is locked by another writer (cause)");
        QTest::newRow("busy snapshot")
            << 517 << 70 << f + QStringLiteral("is locked by another writer (cause)");
        QTest::newRow("folder given")
            << 526 << 75 << f + QStringLiteral("is a folder, not a file (cause)");
        QTest::newRow("not a database")
            << 26 << 321 << f + QStringLiteral("is not a database (cause)");
    }

    void extendedResultCodesHaveTheirOwnNumbersAndNameTheFileOrFolder()
    {
        QFETCH(int, code);
        QFETCH(int, number);
        QFETCH(QString, description);
        const Failure f = StoreConnection::sqliteFailure(
            code, QStringLiteral("/srv/office/office.sqlite"), QStringLiteral("cause"));
        QCOMPARE(f.info(), (ErrorInfo{number, QStringLiteral("ZebObjects.Store"), description}));
    }

    void aWriteInAReadOnlyFolderNamesTheFolder()
    {
        QTemporaryDir dir;
        QVERIFY(QFile::setPermissions(
            dir.path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner | QFile::ReadOther
                            | QFile::ExeOther | QFile::ReadGroup | QFile::ExeGroup));
        const QString file = dir.filePath(QStringLiteral("office.sqlite"));
        Store::open(file)->createJob(jobWithParagraphs(1));
        // The file may be written by anyone; its folder only by its owner.
        QVERIFY(QFile::setPermissions(file, QFile::ReadOwner | QFile::WriteOwner | QFile::ReadOther
                                                | QFile::WriteOther | QFile::ReadGroup
                                                | QFile::WriteGroup));
        QCOMPARE(
            runAsNobody({QStringLiteral("write"), file}),
            QStringLiteral("70 The database file \"%1\" cannot be changed: its folder \"%2\" is "
                           "read-only (attempt to write a readonly database)")
                .arg(file, dir.path()));
        QCOMPARE(Store::open(file)->openJob(1)->submittal()->IssuedBy(), QString());
    }

    void aWriteToAFileWithoutWritePermissionFailsNamingTheFile()
    {
        QTemporaryDir dir;
        QVERIFY(QFile::setPermissions(dir.path(), QFileDevice::Permissions(0x7777)));
        const QString file = dir.filePath(QStringLiteral("office.sqlite"));
        Store::open(file)->createJob(jobWithParagraphs(1));
        QVERIFY(QFile::setPermissions(file, QFileDevice::Permissions(0x6444)));
        QCOMPARE(
            runAsNobody({QStringLiteral("write"), file}),
            QStringLiteral("75 The database file \"%1\" is read-only: the change cannot be saved "
                           "(attempt to write a readonly database)")
                .arg(file));
        QCOMPARE(Store::open(file, Store::OpenMode::ReadOnly)->openJob(1)->submittal()->IssuedBy(),
                 QString());
    }

    void aDamagedFileSaysSoInOneLineWithItsFirstProblemAndLogsTheRest()
    {
        ZebTest::Harness h;
        QTemporaryDir dir;
        const QString file = dir.filePath(QStringLiteral("office.sqlite"));
        {
            const auto store = Store::open(file);
            JobContents c = jobWithParagraphs(0);
            for (int i = 1; i <= 3000; ++i)
                c.paragraphs.append({QStringLiteral("Paragraph %1 ").arg(i).repeated(12), false});
            store->createJob(c);
        }
        QCOMPARE(rawRows(file, QStringLiteral("PRAGMA journal_mode = DELETE")),
                 QStringList{QStringLiteral("delete")});
        {
            // Pages of the paragraphs' index lose their cells: many problems, the schema intact.
            QFile f(file);
            QVERIFY(f.open(QIODevice::ReadWrite));
            QVERIFY(f.size() > 100 * 4096);
            for (qint64 page = 40; page < f.size() / 4096; page += 3) {
                f.seek(page * 4096 + 3);
                f.write(QByteArray(2, '\x7f'));
            }
        }
        QStringList problems;
        for (const QString& row : rawRows(file, QStringLiteral("PRAGMA quick_check")))
            for (const QString& line : row.split(QLatin1Char('\n'), Qt::SkipEmptyParts))
                if (!line.startsWith(QLatin1String("*** in database")))
                    problems.append(line.trimmed());
        QVERIFY2(problems.size() > 5, qPrintable(problems.join(QLatin1Char('|'))));

        const ErrorInfo e = failureOf([&] { Store::open(file); });
        QCOMPARE(
            e, (ErrorInfo{321, QStringLiteral("ZebObjects.Store"),
                          QStringLiteral("The database file \"%1\" is damaged (%2; %3 more in the "
                                         "diagnostic log)")
                              .arg(file, problems.first())
                              .arg(problems.size() - 1)}));
        const QStringList logged = h.log().failureLines();
        QStringList expected;
        for (qsizetype i = 1; i < problems.size(); ++i)
            expected.append(
                QStringLiteral("LogError|ZebObjects.Store|checkWhole|321|ZebObjects.Store|"
                               "The database file \"%1\" is damaged: %2|0")
                    .arg(file, problems[i]));
        QCOMPARE(logged, expected);
    }

    void readingAJobNeverWaitsForAnotherWriter()
    {
        QTemporaryDir dir;
        const QString file = dir.filePath(QStringLiteral("office.sqlite"));
        qint64 id = 0;
        {
            const auto store = Store::open(file);
            id = store->createJob(jobWithParagraphs(3));
            store->library(1)->Add(QStringLiteral("Library paragraph"), false);
        }
        Store::Options options;
        options.busyTimeoutMs = 50;
        const auto store = Store::open(file, Store::OpenMode::OpenExisting, options);
        auto other = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("writer"));
        other.setDatabaseName(file);
        QVERIFY(other.open());
        {
            QSqlQuery q(other);
            QVERIFY(q.exec(QStringLiteral("BEGIN IMMEDIATE")));
            QVERIFY(q.exec(QStringLiteral("UPDATE jobs SET name = name")));
            const auto job = store->openJob(id);
            QCOMPARE(job->coverLetterParagraphs()->Count(), 3);
            QCOMPARE(job->coverLetterParagraphs()->Item(1)->Text(), QStringLiteral("Paragraph 1"));
            QCOMPARE(job->coverLetterRemarks()->Count(), 0);
            QCOMPARE(store->library(1)->Count(), 1);
            QVERIFY(q.exec(QStringLiteral("ROLLBACK")));
        }
        other.close();
        other = QSqlDatabase();
        QSqlDatabase::removeDatabase(QStringLiteral("writer"));
    }

    void aParagraphListIsReadInOneStatement()
    {
        ZebTest::Harness h;
        QTemporaryDir dir;
        const auto store = Store::open(dir.filePath(QStringLiteral("office.sqlite")));
        const auto small = store->openJob(store->createJob(jobWithParagraphs(2)));
        JobContents large = jobWithParagraphs(5000);
        large.number = QStringLiteral("24-0132");
        const auto job = store->openJob(store->createJob(large));
        const auto texts = job->coverLetterParagraphs();
        // Binding a list of two and a list of 5,000 runs the same statements: the list with
        // its texts, check marks and tool tips comes from one read.
        ZebSubCtl::ctlTextSelect ctl;
        const auto two = small->coverLetterParagraphs();
        quint64 before = store->statementCount();
        ctl.setTextObjects(two);
        const quint64 forTwo = store->statementCount() - before;
        ctl.setTextObjects(nullptr);
        QTest::qWait(1);
        before = store->statementCount();
        ctl.setTextObjects(texts);
        auto* list = ctl.findChild<ZebSubCtl::KeyedListView*>(QStringLiteral("ListView"));
        QCOMPARE(list->count(), 5000);
        QCOMPARE(list->text(4999), QStringLiteral("Paragraph 5000"));
        QCOMPARE(list->isChecked(4999), true);
        QCOMPARE(store->statementCount() - before, forTwo);
        QVERIFY(forTwo <= 5);
        // Once the event loop has run, the objects read the file again.
        QTest::qWait(1);
        QSqlQuery q(QSqlDatabase::database(store->connectionName()));
        QVERIFY(q.exec(QStringLiteral("UPDATE texts SET text = 'Changed' WHERE key = '1'")));
        QCOMPARE(texts->Item(1)->Text(), QStringLiteral("Changed"));
    }

    void theFieldsOfALabelAreReadInOneStatement()
    {
        QTemporaryDir dir;
        const auto store = Store::open(dir.filePath(QStringLiteral("office.sqlite")));
        JobContents c = jobWithParagraphs(1);
        for (int i = 1; i <= 40; ++i)
            c.labelFields.append({QStringLiteral("F%1").arg(i), QStringLiteral("Field %1").arg(i),
                                  qint16(i <= 5 ? i : 0)});
        const auto fields = store->openJob(store->createJob(c))->labels()->LabelFields();
        const quint64 before = store->statementCount();
        QStringList shown;
        for (const auto& f : fields->Enumerate())
            shown.append(
                QStringLiteral("%1:%2:%3").arg(f->Key(), f->Caption()).arg(f->PrintOrder()));
        QCOMPARE(fields->Item(QStringLiteral("F40"))->Caption(), QStringLiteral("Field 40"));
        QCOMPARE(fields->Count(), qint16(40));
        QCOMPARE(store->statementCount() - before, quint64(1));
        QCOMPARE(shown.first(), QStringLiteral("F1:Field 1:1"));
        QCOMPARE(shown.last(), QStringLiteral("F40:Field 40:0"));
        // A write ends the snapshot: what follows is read from the file.
        const quint64 writes = store->commitCount();
        fields->Item(QStringLiteral("F5"))->setPrintOrder(0);
        QCOMPARE(store->commitCount(), writes + 1);
        QCOMPARE(fields->Item(QStringLiteral("F5"))->PrintOrder(), qint16(0));
        QVERIFY(store->statementCount() - before > 2);
    }

    void aListFilledWhileAnotherProgramDeletesShowsOneStateOfTheFile()
    {
        ZebTest::Harness h;
        QTemporaryDir dir;
        const QString file = dir.filePath(QStringLiteral("office.sqlite"));
        constexpr int kCount = 4000;
        const auto store = Store::open(file);
        const auto job = store->openJob(store->createJob(jobWithParagraphs(kCount)));
        Runtime::setApplicationServices(store->applicationServices());
        QProcess deleter;
        deleter.start(kChild, {QStringLiteral("delete-texts"), file});
        QVERIFY(deleter.waitForReadyRead(30000));
        QCOMPARE(deleter.readLine().trimmed(), QByteArray("ready"));
        deleter.write("\n");
        deleter.closeWriteChannel();

        ZebSubCtl::ctlTextSelect ctl;
        auto* list = ctl.findChild<ZebSubCtl::KeyedListView*>(QStringLiteral("ListView"));
        int fills = 0;
        int last = kCount + 1;
        // Each fill while the other program deletes: the paragraphs from some first one to the
        // last, none missing in between, and never more than the fill before found.
        while (deleter.state() != QProcess::NotRunning && fills < 200) {
            ctl.setTextObjects(job->coverLetterParagraphs());
            const int shown = list->count();
            QVERIFY2(shown <= last, qPrintable(QStringLiteral("%1 after %2").arg(shown).arg(last)));
            for (int i = 0; i < shown; ++i) {
                const int n = kCount - shown + 1 + i;
                if (list->text(i) != QStringLiteral("Paragraph %1").arg(n))
                    QFAIL(qPrintable(QStringLiteral("fill %1: item %2 of %3 is \"%4\"")
                                         .arg(fills)
                                         .arg(i)
                                         .arg(shown)
                                         .arg(list->text(i))));
            }
            last = shown;
            ++fills;
            ctl.setTextObjects(nullptr);
            QCoreApplication::processEvents();
        }
        deleter.kill();
        deleter.waitForFinished();
        QVERIFY(fills > 0);
        qInfo("%d fills of %d paragraphs while another program deleted them, %d left at the last",
              fills, kCount, last);
        QCOMPARE(h.log().failureLines(), QStringList());
        QCOMPARE(h.boxes().shown().size(), 0);
        Runtime::setApplicationServices(nullptr);
    }
};

QTEST_MAIN(TestStoreFaults)
#include "tst_storefaults.moc"
