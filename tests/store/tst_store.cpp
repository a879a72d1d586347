// The store as a file: its schema and upgrades, the failures of the file, commits before
// events, and two connections on one file.
#include "contracts/applicationservices.h"
#include "contracts/customerfinder.h"
#include "contracts/customersearchresult.h"
#include "contracts/submittal.h"
#include "contracts/textobjects.h"
#include "rules/textkind.h"
#include "contracts/recipients.h"
#include "store/jobcontents.h"
#include "sampleoffice/sampleoffice.h"
#include "support/testsupport.h"
#include "versiononeschema.h"
#include "store/store.h"
#include "store/storeschema.h"
#include "store/storebom.h"
#include "store/storecustomers.h"
#include "store/storejob.h"
#include "store/storelabels.h"
#include "store/storelineitems.h"
#include "store/storesubmittal.h"
#include "store/storetextobjects.h"

#include <QFile>
#include <QImage>
#include <QSignalSpy>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QTest>

using namespace ZebObjects;

namespace {

JobContents simpleJob(const QString& number)
{
    JobContents c;
    c.number = number;
    c.name = QStringLiteral("Job ") + number;
    c.paragraphs = {{QStringLiteral("First"), true}, {QStringLiteral("Second"), false}};
    LineItemRecord l;
    l.quantity = 3;
    l.type = QStringLiteral("A");
    c.lines = {l, l};
    CustomerRecord d;
    d.key = QStringLiteral("C1");
    d.name = QStringLiteral("Customer One");
    c.customers = {d};
    return c;
}

using ZebTest::failureOf;

// A plain SQLite connection of the test's own, beside the store's.
class RawConnection {
public:
    explicit RawConnection(const QString& path, const QString& options = QString())
        : m_name(QStringLiteral("raw-%1").arg(++s_serial))
    {
        auto db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), m_name);
        db.setDatabaseName(path);
        db.setConnectOptions(options);
        QVERIFY(db.open());
    }
    ~RawConnection()
    {
        {
            auto db = QSqlDatabase::database(m_name);
            db.close();
        }
        QSqlDatabase::removeDatabase(m_name);
    }
    QVariant value(const QString& sql)
    {
        QSqlQuery q(QSqlDatabase::database(m_name));
        if (!q.exec(sql) || !q.next())
            return QVariant();
        return q.value(0);
    }
    bool exec(const QString& sql)
    {
        QSqlQuery q(QSqlDatabase::database(m_name));
        const bool ok = q.exec(sql);
        if (!ok)
            qWarning() << sql << q.lastError().text();
        return ok;
    }

private:
    static inline int s_serial = 0;
    QString m_name;
};

// A job of two lines and two paragraphs in the version 1 tables.
const char* const kVersion1Rows[] = {
    "INSERT INTO jobs VALUES (1, '23-0042', 'Old Library Annex')",
    "INSERT INTO submittals (id, job_id, issued_by, submittal_date, include_bom, purpose_index, "
    "purpose) "
    "VALUES (1, 1, 'Marta Halloran', '2023-05-02', 1, 1, 'Request For Approval')",
    "INSERT INTO cover_letters (submittal_id, include_logo) VALUES (1, 1)",
    "INSERT INTO text_collections (id, submittal_id, kind, text_type, next_key, dirty) VALUES (1, "
    "1, 1, 1, 4, 0)",
    "INSERT INTO text_collections (id, submittal_id, kind, text_type) VALUES (2, 1, 3, 3)",
    "INSERT INTO texts (collection_id, key, position, text, selected) VALUES (1, '1', 2, 'Second', "
    "0)",
    "INSERT INTO texts (collection_id, key, position, text, selected) VALUES (1, '3', 1, 'First', "
    "1)",
    "INSERT INTO boms (submittal_id, include_quantity, remarks_collection_id) VALUES (1, 1, 2)",
    "INSERT INTO labels (submittal_id) VALUES (1)",
    "INSERT INTO line_items (id, submittal_id, position, quantity, type, brand, catalog_number, "
    "description, group_code, mto, comment, selected) "
    "VALUES (10, 1, 1, 12, 'A', 'Varnholt', 'VH-1', 'Troffer', 'L1', 0, 'Verify ceiling', 1)",
    "INSERT INTO line_items (id, submittal_id, position, quantity, type, brand, catalog_number, "
    "description, group_code, mto, comment, selected) "
    "VALUES (11, 1, 2, 4, 'B', 'Quenza', 'QA-2', 'Downlight', 'L1', 1, '', 0)",
    "PRAGMA user_version = 1",
};

}  // namespace

class TestStore : public QObject {
    Q_OBJECT

    QString path(const QTemporaryDir& dir) const
    {
        return dir.filePath(QStringLiteral("office.zebdb"));
    }

private slots:
    void initTestCase()
    {
        // Nothing here may touch the user's own data folder.
        ZebTest::useScratchDataHome();
    }

    void newFileGetsTheCurrentSchemaWithForeignKeysAndWriteAheadLog()
    {
        QTemporaryDir dir;
        const auto store = Store::open(path(dir));
        QVERIFY(QFile::exists(path(dir)));
        QVERIFY(store->isEmpty());
        QCOMPARE(store->path(), path(dir));
        auto db = QSqlDatabase::database(store->connectionName());
        QSqlQuery q(db);
        QVERIFY(q.exec(QStringLiteral("PRAGMA user_version")) && q.next());
        QCOMPARE(q.value(0).toInt(), 7);
        QVERIFY(q.exec(QStringLiteral("PRAGMA foreign_keys")) && q.next());
        QCOMPARE(q.value(0).toInt(), 1);
        QVERIFY(q.exec(QStringLiteral("PRAGMA journal_mode")) && q.next());
        QCOMPARE(q.value(0).toString(), QStringLiteral("wal"));
        q.finish();
    }

    void createsTheFolderOfANewFile()
    {
        QTemporaryDir dir;
        const QString nested = dir.filePath(QStringLiteral("a/b/office.zebdb"));
        Store::open(nested);
        QVERIFY(QFile::exists(nested));
    }

    void versionOneFileIsUpgradedKeepingItsData()
    {
        QTemporaryDir dir;
        {
            RawConnection raw(path(dir));
            for (const char* sql : kVersion1Tables)
                QVERIFY(raw.exec(QString::fromLatin1(sql)));
            for (const char* sql : kVersion1Rows)
                QVERIFY(raw.exec(QString::fromLatin1(sql)));
        }
        const auto store = Store::open(path(dir));
        RawConnection check(path(dir));
        QCOMPARE(check.value(QStringLiteral("PRAGMA user_version")).toInt(), 7);
        QCOMPARE(check.value(QStringLiteral("PRAGMA integrity_check")).toString(),
                 QStringLiteral("ok"));
        QCOMPARE(check.value(QStringLiteral("PRAGMA foreign_key_check")), QVariant());

        QCOMPARE(store->jobs(), (QList<JobSummary>{{1,
                                                    QStringLiteral("23-0042"),
                                                    QStringLiteral("Old Library Annex"),
                                                    0,
                                                    2,
                                                    false,
                                                    {}}}));
        const auto job = store->openJob(1);
        QCOMPARE(job->submittal()->IssuedBy(), QStringLiteral("Marta Halloran"));
        QCOMPARE(job->submittal()->SelectPurpose(1), QStringLiteral("Request For Approval"));
        const auto texts = job->coverLetterParagraphs();
        QStringList order;
        for (const auto& t : texts->Enumerate())
            order << t->Key() + QLatin1Char(':') + t->Text();
        QCOMPARE(order, (QStringList{QStringLiteral("3:First"), QStringLiteral("1:Second")}));
        QVERIFY(!texts->IsDirty());
        // The saved order starts as the order the file held.
        texts->MoveDown(QStringLiteral("3"));
        texts->SaveOrder();
        QCOMPARE(check
                     .value(QStringLiteral("SELECT group_concat(key) FROM (SELECT key FROM texts "
                                           "WHERE collection_id = 1 ORDER BY saved_position)"))
                     .toString(),
                 QStringLiteral("1,3"));
        // A new key steers clear of the keys already held.
        QCOMPARE(texts->Add(QStringLiteral("Third"), false)->Key(), QStringLiteral("4"));
        const auto lines = job->lineItems();
        QCOMPARE(lines->Count(), qint16(2));
        QCOMPARE(lines->Item(1)->Comment()->Text(), QStringLiteral("Verify ceiling"));
        QVERIFY(lines->Item(2)->Comment() == nullptr);
        QCOMPARE(lines->Item(2)->MTO(), true);
        QCOMPARE(job->bom()->IncludeQuantity(), true);
        // What labels and letters print starts empty in an old file, and can be filled in.
        QCOMPARE(job->purchaseOrder(), QString());
        QCOMPARE(store->letterhead(), ZebPackage::Letterhead());
        for (const auto& d : store->directoryCustomers())
            QVERIFY(d.attention.isEmpty() && d.street.isEmpty() && d.street2.isEmpty()
                    && d.email.isEmpty());
        ZebPackage::Letterhead office;
        office.Name = QStringLiteral("Old Office");
        office.Logo = QByteArray("\x89PNG-ish", 9);
        store->setLetterhead(office);
        QCOMPARE(store->letterhead(), office);
    }

    // An office file of version 2 (before addresses) opens with its data and gains the new
    // columns empty.
    void versionTwoFileGainsTheAddressColumnsKeepingItsData()
    {
        QTemporaryDir dir;
        {
            const auto store = Store::open(path(dir));
            SampleOffice::fill(*store);
        }
        {
            // Back to version 2: the tables as they stood, the rows kept.
            RawConnection raw(path(dir));
            const char* const back[] = {
                "DROP TABLE cut_sheet_attachments",
                "DROP TABLE cut_sheets",
                "ALTER TABLE jobs DROP COLUMN site_address",
                "ALTER TABLE jobs DROP COLUMN architect",
                "ALTER TABLE jobs DROP COLUMN engineer",
                "ALTER TABLE jobs DROP COLUMN contractor",
                "ALTER TABLE jobs DROP COLUMN archived",
                "ALTER TABLE jobs DROP COLUMN purchase_order",
                "ALTER TABLE directory_customers DROP COLUMN attention",
                "ALTER TABLE directory_customers DROP COLUMN street",
                "ALTER TABLE directory_customers DROP COLUMN street2",
                "ALTER TABLE directory_customers DROP COLUMN email",
                "ALTER TABLE recipients DROP COLUMN street",
                "ALTER TABLE recipients DROP COLUMN street2",
                "ALTER TABLE recipients DROP COLUMN city",
                "ALTER TABLE recipients DROP COLUMN state",
                "ALTER TABLE recipients DROP COLUMN zip",
                "ALTER TABLE recipients DROP COLUMN phone",
                "ALTER TABLE recipients DROP COLUMN email",
                "DELETE FROM settings WHERE name LIKE 'office%'",
                "DROP TABLE issued_lines",
                "DROP TABLE issued_revisions",
                "DROP TABLE brands",
                "PRAGMA user_version = 2",
            };
            for (const char* sql : back)
                QVERIFY2(raw.exec(QString::fromLatin1(sql)), sql);
        }
        const auto store = Store::open(path(dir));
        RawConnection check(path(dir));
        QCOMPARE(check.value(QStringLiteral("PRAGMA user_version")).toInt(), 7);
        QCOMPARE(store->jobs().size(), 4);
        const auto job = store->openJob(store->jobs().first().id);
        QCOMPARE(job->submittal()->Recipients()->Count(), qint16(1));
        QCOMPARE(job->submittal()->Recipients()->Item(1)->Company(),
                 QStringLiteral("Evergreen School District"));
        QCOMPARE(job->purchaseOrder(), QString());
        QVERIFY(store->directoryCount() >= 200);
        QCOMPARE(store->letterhead(), ZebPackage::Letterhead());
    }

    // An office file of version 3 (before a job's site and people) opens with its jobs, which
    // gain the new fields empty and stay in the job list.
    void versionThreeFileGainsTheJobDetailsKeepingItsJobs()
    {
        QTemporaryDir dir;
        {
            const auto store = Store::open(path(dir));
            SampleOffice::fill(*store);
        }
        {
            RawConnection raw(path(dir));
            const char* const back[] = {
                "ALTER TABLE jobs DROP COLUMN site_address",
                "ALTER TABLE jobs DROP COLUMN architect",
                "ALTER TABLE jobs DROP COLUMN engineer",
                "ALTER TABLE jobs DROP COLUMN contractor",
                "ALTER TABLE jobs DROP COLUMN archived",
                "DROP TABLE cut_sheet_attachments",
                "DROP TABLE cut_sheets",
                "DROP TABLE issued_lines",
                "DROP TABLE issued_revisions",
                "DROP TABLE brands",
                "PRAGMA user_version = 3",
            };
            for (const char* sql : back)
                QVERIFY2(raw.exec(QString::fromLatin1(sql)), sql);
        }
        const auto store = Store::open(path(dir));
        RawConnection check(path(dir));
        QCOMPARE(check.value(QStringLiteral("PRAGMA user_version")).toInt(), 7);
        QCOMPARE(store->jobs().size(), 4);
        const qint64 id = store->jobs().first().id;
        const JobDetails details = store->jobDetails(id);
        QCOMPARE(details.number, store->jobs().first().number);
        QCOMPARE(details.siteAddress, QString());
        QCOMPARE(details.architect, QString());
        QVERIFY(!details.archived);
        JobDetails changed = details;
        changed.siteAddress = QStringLiteral("400 Main St, Salem OR");
        store->setJobDetails(id, changed);
        QCOMPARE(store->jobDetails(id).siteAddress, QStringLiteral("400 Main St, Salem OR"));
    }

    void theSampleOfficeHoldsWhatLabelsAndLettersPrint()
    {
        QTemporaryDir dir;
        const auto store = Store::open(path(dir));
        SampleOffice::fill(*store);
        const ZebPackage::Letterhead office = store->letterhead();
        QCOMPARE(office.Name, QStringLiteral("Northlight Lighting Sales"));
        QCOMPARE(office.Street, QStringLiteral("1120 NW Couch Street"));
        QCOMPARE(office.Zip, QStringLiteral("97209"));
        QVERIFY(QImage::fromData(office.Logo).width() > 0);
        // Every customer of the directory can be written to.
        for (const auto& d : store->directoryCustomers()) {
            QVERIFY2(!d.attention.isEmpty() && !d.street.isEmpty() && !d.city.isEmpty()
                         && !d.state.isEmpty() && !d.zip.isEmpty() && !d.phone.isEmpty()
                         && d.email.contains(QLatin1Char('@')),
                     qPrintable(d.key));
        }
        // Every job has its purchase order, every recipient an address.
        for (const auto& summary : store->jobs()) {
            const auto job = store->openJob(summary.id);
            QVERIFY2(!job->purchaseOrder().isEmpty(), qPrintable(summary.number));
            for (const auto& r : job->submittal()->Recipients()->Enumerate()) {
                const auto& d = static_cast<const ZebObjects::StoreRecipient&>(*r).data();
                QVERIFY2(!d.street.isEmpty() && !d.city.isEmpty() && !d.zip.isEmpty(),
                         qPrintable(d.name));
            }
        }
    }

    void aNewerSchemaFailsNamingTheFileAndBothVersions()
    {
        QTemporaryDir dir;
        Store::open(path(dir));
        {
            RawConnection raw(path(dir));
            QVERIFY(raw.exec(QStringLiteral("PRAGMA user_version = 8")));
        }
        const ErrorInfo e = failureOf([&] { Store::open(path(dir)); });
        QCOMPARE(e, (ErrorInfo{321, QStringLiteral("ZebObjects.Store"),
                               QStringLiteral("The database file \"%1\" was written by a newer "
                                              "version of the program (schema version 8; this "
                                              "program reads up to version 7)")
                                   .arg(path(dir))}));
    }

    void aFileThatIsNotADatabaseFails()
    {
        QTemporaryDir dir;
        QFile f(path(dir));
        QVERIFY(f.open(QIODevice::WriteOnly));
        f.write(QByteArray("Quantity,Type,Brand\n12,A,Varnholt\n").repeated(200));
        f.close();
        const ErrorInfo e = failureOf([&] { Store::open(path(dir)); });
        QCOMPARE(e.Number, 321);
        QCOMPARE(e.Description, QStringLiteral("The database file \"%1\" is not a database (file "
                                               "is not a database)")
                                    .arg(path(dir)));
    }

    void aDamagedFileFails()
    {
        QTemporaryDir dir;
        {
            const auto store = Store::open(path(dir));
            JobContents c = simpleJob(QStringLiteral("1"));
            for (int i = 0; i < 400; ++i)
                c.paragraphs.append({QStringLiteral("Paragraph %1 ").arg(i).repeated(20), false});
            store->createJob(c);
        }
        {
            RawConnection raw(path(dir));
            QVERIFY(raw.exec(QStringLiteral("PRAGMA wal_checkpoint(TRUNCATE)")));
        }
        QFile f(path(dir));
        QVERIFY(f.open(QIODevice::ReadWrite));
        QVERIFY(f.size() > 16 * 4096);
        // Scribble over the pages behind the schema.
        f.seek(4 * 4096);
        f.write(QByteArray(8 * 4096, '\xA5'));
        f.close();
        const ErrorInfo e = failureOf([&] {
            const auto store = Store::open(path(dir));
            store->openJob(1)->coverLetterParagraphs()->Enumerate();
        });
        QCOMPARE(e.Number, 321);
        QVERIFY2(e.Description.startsWith(
                     QStringLiteral("The database file \"%1\" is damaged (").arg(path(dir))),
                 qPrintable(e.Description));
    }

    void aDatabaseOfAnotherProgramFails()
    {
        QTemporaryDir dir;
        {
            RawConnection raw(path(dir));
            QVERIFY(raw.exec(QStringLiteral("CREATE TABLE invoices (id INTEGER PRIMARY KEY)")));
        }
        const ErrorInfo e = failureOf([&] { Store::open(path(dir)); });
        QCOMPARE(e.Description,
                 QStringLiteral("The database file \"%1\" is a database of another program")
                     .arg(path(dir)));
    }

    void aMissingFileFailsWhenItMustExist()
    {
        QTemporaryDir dir;
        const ErrorInfo e =
            failureOf([&] { Store::open(path(dir), Store::OpenMode::OpenExisting); });
        QCOMPARE(e, (ErrorInfo{
                        75, QStringLiteral("ZebObjects.Store"),
                        QStringLiteral("The database file \"%1\" does not exist").arg(path(dir))}));
        QVERIFY(!QFile::exists(path(dir)));
    }

    void aFileLockedByAnotherWriterFailsTheWriteAndRaisesNothing()
    {
        QTemporaryDir dir;
        Store::Options options;
        options.busyTimeoutMs = 50;
        const auto store = Store::open(path(dir), Store::OpenMode::OpenOrCreate, options);
        const auto job = store->openJob(store->createJob(simpleJob(QStringLiteral("1"))));
        const auto submittal = job->submittal();
        QSignalSpy changed(submittal.get(), &Submittal::IssuedByChanged);
        {
            RawConnection other(path(dir));
            QVERIFY(other.exec(QStringLiteral("BEGIN IMMEDIATE")));
            const ErrorInfo e =
                failureOf([&] { submittal->setIssuedBy(QStringLiteral("Jens Okonkwo")); });
            QCOMPARE(e, (ErrorInfo{70, QStringLiteral("ZebObjects.Store"),
                                   QStringLiteral("The database file \"%1\" is locked by another "
                                                  "writer (database is locked)")
                                       .arg(path(dir))}));
            QCOMPARE(changed.count(), 0);
            // Reads go on while the other writer holds its lock.
            QCOMPARE(submittal->IssuedBy(), QString());
            QVERIFY(other.exec(QStringLiteral("ROLLBACK")));
        }
        submittal->setIssuedBy(QStringLiteral("Jens Okonkwo"));
        QCOMPARE(changed.count(), 1);
    }

    void aStoreOpenedReadOnlyFailsEveryWriteNamingTheFile()
    {
        QTemporaryDir dir;
        {
            const auto store = Store::open(path(dir));
            store->createJob(simpleJob(QStringLiteral("1")));
        }
        const auto store = Store::open(path(dir), Store::OpenMode::ReadOnly);
        const auto job = store->openJob(1);
        QCOMPARE(job->coverLetterParagraphs()->Count(), 2);
        QSignalSpy added(job->coverLetterParagraphs().get(), &TextObjects::ItemAdded);
        const ErrorInfo e =
            failureOf([&] { job->coverLetterParagraphs()->Add(QStringLiteral("x"), false); });
        QCOMPARE(e.Number, 75);
        QCOMPARE(e.Source, QStringLiteral("ZebObjects.Store"));
        QVERIFY2(
            e.Description.startsWith(QStringLiteral("The database file \"%1\" is read-only: the "
                                                    "change cannot be saved (")
                                         .arg(path(dir))),
            qPrintable(e.Description));
        QCOMPARE(added.count(), 0);
        QCOMPARE(job->coverLetterParagraphs()->Count(), 2);
    }

    void aFullDiskFailsTheWriteAndKeepsWhatWasCommitted()
    {
        QTemporaryDir dir;
        const auto store = Store::open(path(dir));
        const auto job = store->openJob(store->createJob(simpleJob(QStringLiteral("1"))));
        const auto texts = job->coverLetterParagraphs();
        {
            // The file may not grow beyond the pages it has now.
            QSqlQuery q(QSqlDatabase::database(store->connectionName()));
            QVERIFY(q.exec(QStringLiteral("PRAGMA page_count")) && q.next());
            const int pages = q.value(0).toInt();
            QVERIFY(q.exec(QStringLiteral("PRAGMA max_page_count = %1").arg(pages)));
            q.finish();
        }
        QSignalSpy added(texts.get(), &TextObjects::ItemAdded);
        const ErrorInfo e =
            failureOf([&] { texts->Add(QStringLiteral("Long text ").repeated(20000), false); });
        QCOMPARE(e.Number, 61);
        QVERIFY2(e.Description.startsWith(
                     QStringLiteral("The database file \"%1\" cannot grow: the disk is full (")
                         .arg(path(dir))),
                 qPrintable(e.Description));
        QCOMPARE(added.count(), 0);
        QCOMPARE(texts->Count(), 2);
        QCOMPARE(texts->Item(1)->Text(), QStringLiteral("First"));
        // Small changes still fit.
        texts->Item(1)->setSelected(false);
        QCOMPARE(texts->Item(1)->Selected(), false);
    }

    void everyWriteIsCommittedBeforeItsEvent()
    {
        QTemporaryDir dir;
        const auto store = Store::open(path(dir));
        const auto job = store->openJob(store->createJob(simpleJob(QStringLiteral("1"))));
        const auto other = Store::open(path(dir));
        const auto submittal = job->submittal();
        const auto otherSubmittal = other->openJob(job->id())->submittal();
        QStringList seen;
        connect(submittal.get(), &Submittal::IssuedByChanged, this,
                [&] { seen << QStringLiteral("IssuedBy:") + otherSubmittal->IssuedBy(); });
        connect(submittal.get(), &Submittal::SubmittalPurposeChanged, this, [&](qint16 index) {
            seen << QStringLiteral("Purpose:%1:%2")
                        .arg(index)
                        .arg(otherSubmittal->SubmittalPurposeIndex());
        });
        const auto texts = job->coverLetterParagraphs();
        const auto otherTexts = other->openJob(job->id())->coverLetterParagraphs();
        connect(texts.get(), &TextObjects::ItemAdded, this, [&](const QString& key) {
            seen << QStringLiteral("Added:") + otherTexts->Item(key)->Text();
        });
        const quint64 before = store->commitCount();
        submittal->setIssuedBy(QStringLiteral("Keiko Brandt"));
        QCOMPARE(store->commitCount(), before + 1);
        submittal->SelectPurpose(6);
        texts->Add(QStringLiteral("Third"), true);
        QCOMPARE(seen, (QStringList{QStringLiteral("IssuedBy:Keiko Brandt"),
                                    QStringLiteral("Purpose:6:6"), QStringLiteral("Added:Third")}));
    }

    void twoConnectionsSeeEachOthersCommittedChangesOnTheirNextRead()
    {
        QTemporaryDir dir;
        const auto one = Store::open(path(dir));
        const qint64 id = one->createJob(simpleJob(QStringLiteral("1")));
        const auto two = Store::open(path(dir));
        const auto a = one->openJob(id);
        const auto b = two->openJob(id);
        QCOMPARE(b->lineItems()->Item(1)->Selected(), false);
        a->lineItems()->Item(1)->setSelected(true);
        QCOMPARE(b->lineItems()->Item(1)->Selected(), true);
        b->customers()->Item(1)->setIncluded(true);
        QCOMPARE(a->customers()->Item(1)->Included(), true);
        b->coverLetterParagraphs()->MoveUp(QStringLiteral("2"));
        QCOMPARE(a->coverLetterParagraphs()->Item(1)->Text(), QStringLiteral("Second"));
        QVERIFY(a->coverLetterParagraphs()->IsDirty());
        two->createJob(simpleJob(QStringLiteral("2")));
        QCOMPARE(one->jobs().size(), 2);
    }

    void aLabelFieldAddedOverAnotherWorkstationsChangeFailsAndNothingIsWritten()
    {
        QTemporaryDir dir;
        JobContents c = simpleJob(QStringLiteral("1"));
        c.labelFields = {{QStringLiteral("NAME"), QStringLiteral("Name"), 1},
                         {QStringLiteral("CITY"), QStringLiteral("City"), 0},
                         {QStringLiteral("ZIP"), QStringLiteral("Zip"), 0}};
        const auto one = Store::open(path(dir));
        const qint64 id = one->createJob(c);
        const auto two = Store::open(path(dir));
        const auto mine = one->openJob(id)->labels()->LabelFields();
        const auto theirs = two->openJob(id)->labels()->LabelFields();
        QCOMPARE(mine->Enumerate().size(), 3);
        QCOMPARE(theirs->Enumerate().size(), 3);

        // The other workstation puts Zip second; this one, not knowing, puts City second.
        theirs->Item(QStringLiteral("ZIP"))->setPrintOrder(2);
        const ErrorInfo e =
            failureOf([&] { mine->Item(QStringLiteral("CITY"))->setPrintOrder(2); });
        QCOMPARE(e, (ErrorInfo{3197, QStringLiteral("ZebObjects.LabelFields"),
                               QStringLiteral("Another workstation changed the fields on the "
                                              "labels after they were shown here, so the print "
                                              "order 2 of \"City\" was not saved. The other "
                                              "workstation's fields are shown once the job is "
                                              "refreshed; make the change again if it still "
                                              "applies.")}));
        QCOMPARE(theirs->Item(QStringLiteral("CITY"))->PrintOrder(), qint16(0));
        QCOMPARE(theirs->Item(QStringLiteral("ZIP"))->PrintOrder(), qint16(2));

        // Made again now that this workstation knows the other's order, the write is saved.
        mine->Item(QStringLiteral("CITY"))->setPrintOrder(3);
        QCOMPARE(theirs->Item(QStringLiteral("CITY"))->PrintOrder(), qint16(3));
        // Its own writes never conflict with themselves: taking City off and renumbering.
        mine->Item(QStringLiteral("ZIP"))->setPrintOrder(0);
        mine->Item(QStringLiteral("CITY"))->setPrintOrder(2);
        QCOMPARE(theirs->Item(QStringLiteral("CITY"))->PrintOrder(), qint16(2));
        QCOMPARE(theirs->Item(QStringLiteral("ZIP"))->PrintOrder(), qint16(0));
    }

    void aLabelFieldWriteThatAnotherWorkstationAlreadyMadeIsNoConflict()
    {
        QTemporaryDir dir;
        JobContents c = simpleJob(QStringLiteral("1"));
        c.labelFields = {{QStringLiteral("NAME"), QStringLiteral("Name"), 1},
                         {QStringLiteral("CITY"), QStringLiteral("City"), 0}};
        const auto one = Store::open(path(dir));
        const qint64 id = one->createJob(c);
        const auto two = Store::open(path(dir));
        const auto mine = one->openJob(id)->labels()->LabelFields();
        const auto theirs = two->openJob(id)->labels()->LabelFields();
        QCOMPARE(mine->Enumerate().size(), 2);
        theirs->Item(QStringLiteral("CITY"))->setPrintOrder(2);
        mine->Item(QStringLiteral("CITY"))->setPrintOrder(2);
        QCOMPARE(theirs->Item(QStringLiteral("CITY"))->PrintOrder(), qint16(2));
    }

    void aChangeSurvivesClosingAndReopening()
    {
        QTemporaryDir dir;
        qint64 id = 0;
        {
            const auto store = Store::open(path(dir));
            id = store->createJob(simpleJob(QStringLiteral("1")));
            const auto job = store->openJob(id);
            job->submittal()->setSubmittalDate(QStringLiteral("2026-12-24"));
            job->submittal()->setSubmittalPurpose(job->submittal()->SelectPurpose(7));
            job->submittal()->setSubmittalPurpose(QStringLiteral("Budget review"));
            job->labels()->LabelFields();
            job->bom()->setIncludeMTO(true);
        }
        const auto store = Store::open(path(dir), Store::OpenMode::OpenExisting);
        const auto job = store->openJob(id);
        QCOMPARE(job->submittal()->SubmittalDate(), QStringLiteral("2026-12-24"));
        QCOMPARE(job->submittal()->SubmittalPurposeIndex(), qint16(7));
        QCOMPARE(job->submittal()->SelectPurpose(2),
                 QStringLiteral("Request For Approval As Submitted"));
        QCOMPARE(job->submittal()->SelectPurpose(7), QStringLiteral("Budget review"));
        QCOMPARE(job->bom()->IncludeMTO(), true);
    }

    void aFoundCustomerTickedAfterItWasAddedIsStillTickedAfterReopening()
    {
        QTemporaryDir dir;
        qint64 id = 0;
        {
            const auto store = Store::open(path(dir));
            CustomerRecord d;
            d.key = QStringLiteral("K1");
            d.displayText = QStringLiteral("Keystone Electric (Salem)");
            d.name = QStringLiteral("Keystone Electric");
            d.accountNumber = QStringLiteral("40017");
            store->addDirectoryCustomers({d});
            id = store->createJob(simpleJob(QStringLiteral("1")));
            const auto job = store->openJob(id);
            const auto services = store->applicationServices();
            const auto found =
                services->CreateCustomerFinder()
                    ->Search(false, false, false, false, false, QVariant(), QString(),
                             QStringLiteral("40017"), QString(), QString(), QString(), QString(),
                             QString(), QString(), 0)
                    ->ChosenCustomer();
            QCOMPARE(found->Included(), false);
            QVERIFY(job->customers()->Add(found->Key(), found));
            found->setIncluded(true);
            // Ticking a found customer in the directory changes nothing there.
            QCOMPARE(store->directoryCustomers().first().included, false);
        }
        const auto store = Store::open(path(dir), Store::OpenMode::OpenExisting);
        const auto customers = store->openJob(id)->customers();
        const auto added = customers->Item(customers->Count());
        QCOMPARE(added->Key(), QStringLiteral("K1"));
        QCOMPARE(added->DisplayText(), QStringLiteral("Keystone Electric (Salem)"));
        QCOMPARE(added->Included(), true);
    }

    void jobsListNumberNameCustomersAndLinesInNumberOrder()
    {
        QTemporaryDir dir;
        const auto store = Store::open(path(dir));
        JobContents big = simpleJob(QStringLiteral("2"));
        big.lines.append(big.lines);
        const qint64 second = store->createJob(big);
        const qint64 first = store->createJob(simpleJob(QStringLiteral("1")));
        const QStringList one{QStringLiteral("Customer One")};
        QCOMPARE(store->jobs(),
                 (QList<JobSummary>{
                     {first, QStringLiteral("1"), QStringLiteral("Job 1"), 1, 2, false, one},
                     {second, QStringLiteral("2"), QStringLiteral("Job 2"), 1, 4, false, one}}));
        const ErrorInfo e = failureOf([&] { store->createJob(simpleJob(QStringLiteral("1"))); });
        QCOMPARE(e.Number, 457);
        QCOMPARE(store->jobs().size(), 2);
    }

    void anOpenJobHandsOutTheSameObjectsEveryTime()
    {
        QTemporaryDir dir;
        const auto store = Store::open(path(dir));
        const auto job = store->openJob(store->createJob(simpleJob(QStringLiteral("1"))));
        QCOMPARE(job->number(), QStringLiteral("1"));
        QCOMPARE(job->name(), QStringLiteral("Job 1"));
        QCOMPARE(job->submittal(), job->submittal());
        QCOMPARE(job->coverLetterParagraphs(), job->coverLetterParagraphs());
        QVERIFY(job->coverLetterParagraphs() != job->coverLetterRemarks());
        QCOMPARE(job->coverLetterRemarks()->TextObjectType(), TextKind::CoverLetterRemark);
        QCOMPARE(job->bom(), job->bom());
        QCOMPARE(job->bom()->DefaultRemarks(), job->bom()->DefaultRemarks());
        QCOMPARE(job->labels(), job->labels());
        QCOMPARE(job->lineItems(), job->lineItems());
        QCOMPARE(job->customers(), job->customers());
        QCOMPARE(job->customerFinder(), job->customerFinder());
    }

    void aJobThatIsNotInTheFileFails()
    {
        QTemporaryDir dir;
        const auto store = Store::open(path(dir));
        const qint64 id = store->createJob(simpleJob(QStringLiteral("1")));
        const auto job = store->openJob(id);
        QCOMPARE(failureOf([&] { store->openJob(id + 1); }),
                 (ErrorInfo{35601, QStringLiteral("ZebObjects.Store"),
                            QStringLiteral("Element not found: there is no job %1").arg(id + 1)}));
        store->deleteJob(id);
        QVERIFY(store->jobs().isEmpty());
        // Objects of a deleted job fail on use instead of answering empty values.
        QCOMPARE(failureOf([&] { job->submittal()->IssuedBy(); }).Number, 35601);
        QCOMPARE(failureOf([&] { store->deleteJob(id); }).Number, 35601);
    }

    void objectsKeepTheFileOpenAfterTheStoreIsGone()
    {
        QTemporaryDir dir;
        std::shared_ptr<Submittal> submittal;
        {
            const auto store = Store::open(path(dir));
            submittal =
                store->openJob(store->createJob(simpleJob(QStringLiteral("1"))))->submittal();
        }
        submittal->setIncludeLabels(true);
        QCOMPARE(submittal->IncludeLabels(), true);
    }

    void officeLibrariesAreMadeOnFirstUseAndKept()
    {
        QTemporaryDir dir;
        const auto store = Store::open(path(dir));
        const auto library = store->library(TextKind::CoverLetterParagraph);
        QCOMPARE(library->Count(), 0);
        library->Add(QStringLiteral("Library paragraph"), false);
        QCOMPARE(store->library(TextKind::CoverLetterParagraph)->Count(), 1);
        QCOMPARE(store->library(TextKind::CoverLetterRemark)->Count(), 0);
        QVERIFY(!store->isEmpty() || store->jobs().isEmpty());
    }

    void directoryIssuersAndSearchContextAreKept()
    {
        QTemporaryDir dir;
        const auto store = Store::open(path(dir));
        store->setIssuedByNames({QStringLiteral("B"), QStringLiteral("A")});
        QCOMPARE(store->issuedByNames(), (QStringList{QStringLiteral("B"), QStringLiteral("A")}));
        store->setSearchContextValue(QStringLiteral("PDX/me"));
        QCOMPARE(store->searchContextValue().toString(), QStringLiteral("PDX/me"));
        CustomerRecord d;
        d.key = QStringLiteral("K1");
        d.name = QStringLiteral("Keystone Electric");
        store->addDirectoryCustomers({d});
        QCOMPARE(store->directoryCount(), 1);
        QCOMPARE(failureOf([&] { store->addDirectoryCustomers({d}); }).Number, 457);
        QCOMPARE(store->directoryCustomers().first().name, QStringLiteral("Keystone Electric"));
        QVERIFY(!store->isEmpty());
    }

    void recipientsAddedAndRemovedAreCommitted()
    {
        QTemporaryDir dir;
        const auto store = Store::open(path(dir));
        const auto job = store->openJob(store->createJob(simpleJob(QStringLiteral("1"))));
        const auto recipients = job->submittal()->storeRecipients();
        recipients->Add(QStringLiteral("Dana Whitcomb"), QStringLiteral("Halvorsen Electric Co."));
        recipients->Add(QStringLiteral("Priya Raman"), QStringLiteral("Cedar Ridge Architects"));
        const auto other = Store::open(path(dir))->openJob(job->id())->submittal()->Recipients();
        QCOMPARE(other->Count(), qint16(2));
        recipients->Remove(1);
        QCOMPARE(other->Count(), qint16(1));
        QCOMPARE(other->Item(1)->Company(), QStringLiteral("Cedar Ridge Architects"));
        QCOMPARE(failureOf([&] { recipients->Remove(2); }).Description,
                 QStringLiteral("Subscript out of range: no recipient at position 2 of 1"));
    }

    void writeAllCommitsTogetherOrNotAtAll()
    {
        QTemporaryDir dir;
        const auto store = Store::open(path(dir));
        const ErrorInfo e = failureOf([&] {
            store->writeAll([&] {
                store->createJob(simpleJob(QStringLiteral("1")));
                store->createJob(simpleJob(QStringLiteral("1")));
            });
        });
        QCOMPARE(e.Number, 457);
        QVERIFY(store->jobs().isEmpty());
        const quint64 before = store->commitCount();
        store->writeAll([&] {
            store->createJob(simpleJob(QStringLiteral("1")));
            store->createJob(simpleJob(QStringLiteral("2")));
        });
        QCOMPARE(store->commitCount(), before + 1);
        QCOMPARE(store->jobs().size(), 2);
    }
};

QTEST_GUILESS_MAIN(TestStore)
#include "tst_store.moc"
