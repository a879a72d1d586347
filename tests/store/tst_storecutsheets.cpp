// The office's cut sheet library in the store, on an SQLite file and on a PostgreSQL server: each
// file kept once by its SHA-256, attached per job and type, and a file of the version before
// the library opening with it.

#include "contracts/failure.h"
#include "pgserver.h"
#include "rawdatabase.h"
#include "store/jobcontents.h"
#include "sampleoffice/sampleoffice.h"
#include "store/store.h"
#include "store/storecutsheets.h"
#include "store/storeschema.h"

#include <QCryptographicHash>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

using namespace ZebObjects;

namespace {

std::unique_ptr<PgServer>& server()
{
    static std::unique_ptr<PgServer> s;
    return s;
}

// Bytes that are all the store looks at; whether they are a good PDF is the caller's part.
QByteArray pdfBytes(const QString& marker)
{
    QByteArray out("%PDF-1.4\n% ");
    out += marker.toUtf8();
    // Every byte value, so a bytea or BLOB that mangles one shows.
    for (int i = 0; i < 256; ++i)
        out += char(i);
    return out;
}

JobContents jobNumbered(const QString& number)
{
    JobContents c = SampleOffice::smallJob();
    c.number = number;
    return c;
}

}  // namespace

class TestStoreCutSheets : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> m_dir;

    std::shared_ptr<Store> open()
    {
        QFETCH_GLOBAL(QString, backend);
        if (backend == QLatin1String("postgresql"))
            return Store::open(server()->location(server()->newDatabaseName()));
        return Store::open(m_dir->filePath(QStringLiteral("office.sqlite")));
    }

private slots:
    void initTestCase_data()
    {
        QTest::addColumn<QString>("backend");
        QTest::newRow("sqlite") << QStringLiteral("sqlite");
        QTest::newRow("postgresql") << QStringLiteral("postgresql");
    }

    // Without a server the PostgreSQL half fails, saying why; it is never skipped.
    void init()
    {
        m_dir = std::make_unique<QTemporaryDir>();
        QVERIFY(m_dir->isValid());
        QFETCH_GLOBAL(QString, backend);
        if (backend != QLatin1String("postgresql"))
            return;
        if (!server())
            server() = std::make_unique<PgServer>();
        if (!server()->isRunning())
            QFAIL(qPrintable(QStringLiteral("The store on PostgreSQL cannot be tested: ")
                             + server()->error()));
    }

    void cleanup() { m_dir.reset(); }
    void cleanupTestCase() { server().reset(); }

    void sameFileIsStoredOnceWithItsFacts()
    {
        const auto store = open();
        StoreCutSheets sheets = store->cutSheets();
        const QByteArray pdf = pdfBytes(QStringLiteral("alpha"));
        const QDateTime before = QDateTime::currentDateTimeUtc().addSecs(-1);
        const qint64 first =
            sheets.add(QStringLiteral("alpha.pdf"), pdf, 4, QStringLiteral("marta"));
        const qint64 again =
            sheets.add(QStringLiteral("alpha copy.pdf"), pdf, 4, QStringLiteral("tom"));
        QCOMPARE(again, first);
        const qint64 other =
            sheets.add(QStringLiteral("bravo.pdf"), pdfBytes(QStringLiteral("bravo")), 2,
                       QStringLiteral("tom"));
        QVERIFY(other != first);

        const QList<StoreCutSheets::Sheet> library = sheets.library();
        QCOMPARE(library.size(), 2);
        const StoreCutSheets::Sheet& alpha = library[0];
        QCOMPARE(alpha.id, first);
        QCOMPARE(alpha.fileName, QStringLiteral("alpha.pdf"));
        QCOMPARE(alpha.pageCount, 4);
        QCOMPARE(alpha.size, qint64(pdf.size()));
        QCOMPARE(
            alpha.sha256,
            QString::fromLatin1(QCryptographicHash::hash(pdf, QCryptographicHash::Sha256).toHex()));
        QCOMPARE(alpha.addedBy, QStringLiteral("marta"));
        QVERIFY(alpha.addedAt >= before
                && alpha.addedAt <= QDateTime::currentDateTimeUtc().addSecs(1));
        QCOMPARE(sheets.bytes(first), pdf);
    }

    void attachmentsGroupByTypeInTheOrderAttachedAndSurviveReopening()
    {
        auto store = open();
        const QString location = store->path();
        const qint64 job = store->createJob(jobNumbered(QStringLiteral("CS-1")));
        const qint64 otherJob = store->createJob(jobNumbered(QStringLiteral("CS-2")));
        StoreCutSheets sheets = store->cutSheets();
        const QByteArray alphaPdf = pdfBytes(QStringLiteral("alpha"));
        const qint64 alpha = sheets.add(QStringLiteral("alpha.pdf"), alphaPdf, 2, {});
        const qint64 bravo =
            sheets.add(QStringLiteral("bravo.pdf"), pdfBytes(QStringLiteral("bravo")), 1, {});
        sheets.attach(job, QStringLiteral("B"), bravo);
        sheets.attach(job, QStringLiteral("A"), alpha);
        sheets.attach(job, QStringLiteral("B"), alpha);
        // The same sheet to the same type again changes nothing.
        sheets.attach(job, QStringLiteral("B"), bravo);
        sheets.attach(otherJob, QStringLiteral("A"), bravo);

        const auto summary = [](const QList<StoreCutSheets::Attachment>& list) {
            QStringList out;
            for (const auto& a : list)
                out << a.type + QLatin1Char('=') + a.sheet.fileName;
            return out;
        };
        QCOMPARE(summary(sheets.attachments(job)),
                 (QStringList{QStringLiteral("B=bravo.pdf"), QStringLiteral("B=alpha.pdf"),
                              QStringLiteral("A=alpha.pdf")}));
        QCOMPARE(summary(sheets.attachments(otherJob)), QStringList{QStringLiteral("A=bravo.pdf")});
        // Both types print the shared sheet, from the one copy the library holds.
        const QList<ZebPackage::CutSheet> printed = sheets.sheetsOf(job);
        QCOMPARE(printed.size(), 3);
        QCOMPARE(printed[1], (ZebPackage::CutSheet{QStringLiteral("B"), QStringLiteral("alpha.pdf"),
                                                   alphaPdf, 2}));
        QCOMPARE(printed[2], (ZebPackage::CutSheet{QStringLiteral("A"), QStringLiteral("alpha.pdf"),
                                                   alphaPdf, 2}));
        QCOMPARE(sheets.library().size(), 2);

        sheets.detach(job, QStringLiteral("B"), alpha);
        QCOMPARE(summary(sheets.attachments(job)),
                 (QStringList{QStringLiteral("B=bravo.pdf"), QStringLiteral("A=alpha.pdf")}));

        // Another workstation opening the office sees the same.
        store.reset();
        const auto again = Store::open(location, Store::OpenMode::OpenExisting);
        QCOMPARE(summary(again->cutSheets().attachments(job)),
                 (QStringList{QStringLiteral("B=bravo.pdf"), QStringLiteral("A=alpha.pdf")}));
        QCOMPARE(again->cutSheets().bytes(alpha), alphaPdf);
        // A deleted job takes its attachments with it; the library keeps the sheets.
        again->deleteJob(job);
        QCOMPARE(again->cutSheets().attachments(job).size(), 0);
        QCOMPARE(again->cutSheets().library().size(), 2);
    }

    void attachingToAJobOrSheetNotInTheStoreFailsWithElementNotFound()
    {
        const auto store = open();
        const qint64 job = store->createJob(jobNumbered(QStringLiteral("CS-3")));
        StoreCutSheets sheets = store->cutSheets();
        const qint64 sheet =
            sheets.add(QStringLiteral("alpha.pdf"), pdfBytes(QStringLiteral("alpha")), 1, {});
        try {
            sheets.attach(job + 1000, QStringLiteral("A"), sheet);
            QFAIL("attached to a job that is not there");
        } catch (const Failure& f) {
            QCOMPARE(f.Number(), ErrorNumber::ElementNotFound);
            QCOMPARE(f.Description(), QStringLiteral("Element not found: job %1").arg(job + 1000));
        }
        try {
            sheets.attach(job, QStringLiteral("A"), sheet + 1000);
            QFAIL("attached a sheet that is not there");
        } catch (const Failure& f) {
            QCOMPARE(f.Number(), ErrorNumber::ElementNotFound);
            QCOMPARE(f.Description(),
                     QStringLiteral("Element not found: cut sheet %1").arg(sheet + 1000));
        }
        QCOMPARE(sheets.attachments(job).size(), 0);
    }

    // An office made before the library opens, keeps its jobs and gets the library.
    void officeOfVersionThreeOpensWithTheLibrary()
    {
        QFETCH_GLOBAL(QString, backend);
        const bool onServer = backend == QLatin1String("postgresql");
        const QString name = onServer ? server()->newDatabaseName() : QString();
        const QString location =
            onServer ? server()->location(name) : m_dir->filePath(QStringLiteral("old.sqlite"));
        const auto raw = [&] {
            return onServer ? std::make_unique<RawDatabase>(server()->port(), name)
                            : std::make_unique<RawDatabase>(location);
        };
        {
            const auto store = Store::open(location);
            store->createJob(jobNumbered(QStringLiteral("OLD-1")));
        }
        {
            // The office as version 3 wrote it: without the library's tables.
            const auto old = raw();
            QVERIFY(old->exec(QStringLiteral("DROP TABLE cut_sheet_attachments")));
            QVERIFY(old->exec(QStringLiteral("DROP TABLE cut_sheets")));
            // Nor what versions 4, 6 and 7 add: the jobs' details, the issued revisions, the
            // brands.
            for (const char* column :
                 {"site_address", "architect", "engineer", "contractor", "archived"})
                QVERIFY(old->exec(
                    QStringLiteral("ALTER TABLE jobs DROP COLUMN %1").arg(QLatin1String(column))));
            QVERIFY(old->exec(QStringLiteral("DROP TABLE issued_lines")));
            QVERIFY(old->exec(QStringLiteral("DROP TABLE issued_revisions")));
            QVERIFY(old->exec(QStringLiteral("DROP TABLE brands")));
            QVERIFY(old->exec(onServer ? QStringLiteral("UPDATE store_version SET version = 3")
                                       : QStringLiteral("PRAGMA user_version = 3")));
        }
        const auto store = Store::open(location, Store::OpenMode::OpenExisting);
        QCOMPARE(store->jobs().size(), 1);
        QCOMPARE(store->jobs()[0].number, QStringLiteral("OLD-1"));
        StoreCutSheets sheets = store->cutSheets();
        const qint64 sheet =
            sheets.add(QStringLiteral("alpha.pdf"), pdfBytes(QStringLiteral("alpha")), 1, {});
        sheets.attach(store->jobs()[0].id, QStringLiteral("A"), sheet);
        QCOMPARE(sheets.attachments(store->jobs()[0].id).size(), 1);
        QCOMPARE(raw()
                     ->value(onServer ? QStringLiteral("SELECT version FROM store_version")
                                      : QStringLiteral("PRAGMA user_version"))
                     .toInt(),
                 StoreSchema::CurrentVersion);
    }
};

QTEST_GUILESS_MAIN(TestStoreCutSheets)
#include "tst_storecutsheets.moc"
