// Issued revisions of a job and their reviews, on a file and on the office's server: numbers
// taken under the write lock, the package's bytes kept as sent, the review's verdict, and an
// office file of the previous schema opened and upgraded.
#include "contracts/lineitem.h"
#include "contracts/lineitems.h"
#include "pgserver.h"
#include "store/jobcontents.h"
#include "store/store.h"
#include "store/storehistory.h"
#include "store/storejob.h"
#include "store/storelineitems.h"
#include "support/testsupport.h"

#include <QCryptographicHash>
#include <QFile>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QTest>
#include <QTimeZone>

using namespace ZebObjects;
using ZebTest::failureOf;

namespace {

JobContents threeLineJob(const QString& number)
{
    JobContents c;
    c.number = number;
    c.name = QStringLiteral("Job ") + number;
    c.issuedBy = QStringLiteral("Marta Quill");
    c.includeBOM = true;
    c.includeType = true;
    c.includeQuantity = true;
    JobContents::Recipient to;
    to.name = QStringLiteral("Dana Ruiz");
    to.company = QStringLiteral("Ruiz Architects");
    c.recipients = {to};
    const char* const types[] = {"A1", "B2", "C3"};
    for (int i = 0; i < 3; ++i) {
        LineItemRecord l;
        l.quantity = 2 + i;
        l.type = QString::fromLatin1(types[i]);
        l.catalogNumber = QStringLiteral("CAT-%1").arg(100 + i);
        l.selected = true;
        c.lines << l;
    }
    return c;
}

QByteArray fakePdf(qint32 revision)
{
    return QByteArray("%PDF-1.7 revision ") + QByteArray::number(revision);
}

QString sha(const QByteArray& bytes)
{
    return QString::fromLatin1(QCryptographicHash::hash(bytes, QCryptographicHash::Sha256).toHex());
}

QDateTime at(int day)
{
    return QDateTime(QDate(2026, 11, day), QTime(15, 0), QTimeZone::utc());
}

}  // namespace

class TestStoreHistory : public QObject {
    Q_OBJECT

    QTemporaryDir m_dir;
    std::unique_ptr<PgServer> m_server;

    std::shared_ptr<Store> newStore(const QString& name)
    {
        return Store::open(m_dir.filePath(name));
    }

    // Both workstations issue the same job; the first makes its package while the second
    // issues and records its own.
    void twoWorkstationsIssuingAtOnce(const QString& location)
    {
        const auto a = Store::open(location);
        const qint64 jobId = a->createJob(threeLineJob(QStringLiteral("26-0001")));
        const auto b = Store::open(location);
        const auto historyA = a->openJob(jobId)->history();
        const auto historyB = b->openJob(jobId)->history();
        QList<qint32> madeFor;
        const IssuedRevision first = historyA->issue([&](qint32 n) {
            madeFor << n;
            if (madeFor.size() == 1) {
                const IssuedRevision other = historyB->issue(fakePdf);
                if (other.number != 0)
                    throw std::runtime_error("the other workstation did not get revision 0");
            }
            return fakePdf(n);
        });
        // The package is made again for the number that was still free.
        QCOMPARE(madeFor, (QList<qint32>{0, 1}));
        QCOMPARE(first.number, 1);
        QCOMPARE(first.sha256, sha(fakePdf(1)));
        QCOMPARE(historyB->revisions().size(), 2);
        QCOMPARE(historyB->pdf(0), fakePdf(0));
        QCOMPARE(historyB->pdf(1), fakePdf(1));
    }

private slots:
    void initTestCase() { QVERIFY(m_dir.isValid()); }

    void aVersionThreeOfficeFileOpensAndCanIssue()
    {
        const QString path = m_dir.filePath(QStringLiteral("office-v3.sqlite"));
        QVERIFY(QFile::copy(QStringLiteral(ZEB_FIXTURES "/office-v3.sqlite"), path));
        QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner);
        {
            const auto store = Store::open(path, Store::OpenMode::OpenExisting);
            const QList<JobSummary> jobs = store->jobs();
            QCOMPARE(jobs.size(), 2);
            QCOMPARE(jobs[1].number, QStringLiteral("24-0131"));
            QCOMPARE(jobs[1].name, QStringLiteral("Riverside Medical Office Building"));
            const auto history = store->openJob(jobs[1].id)->history();
            QCOMPARE(history->revisions().size(), 0);
            QCOMPARE(history->nextRevision(), 0);
            QCOMPARE(history->issue(fakePdf).number, 0);
        }
        {
            auto db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("check"));
            db.setDatabaseName(path);
            QVERIFY(db.open());
            QSqlQuery q(db);
            QVERIFY(q.exec(QStringLiteral("PRAGMA user_version")) && q.next());
            QCOMPARE(q.value(0).toInt(), 7);
            QVERIFY(q.exec(QStringLiteral("SELECT COUNT(*) FROM issued_lines")) && q.next());
            QVERIFY(q.value(0).toInt() > 0);
        }
        QSqlDatabase::removeDatabase(QStringLiteral("check"));
    }

    void issuingNumbersFromZeroAndKeepsWhatWasSent()
    {
        const auto store = newStore(QStringLiteral("issue.sqlite"));
        const auto job = store->openJob(store->createJob(threeLineJob(QStringLiteral("26-0002"))));
        const auto history = job->history();
        const IssuedRevision r0 = history->issue(fakePdf, at(2));
        QCOMPARE(r0.number, 0);
        QCOMPARE(r0.issuedAt, at(2));
        QCOMPARE(r0.issuedBy, QStringLiteral("Marta Quill"));
        QCOMPARE(r0.purpose, QStringLiteral("Request For Prior Approval"));
        QCOMPARE(r0.recipients, QStringList{QStringLiteral("Dana Ruiz, Ruiz Architects")});
        QCOMPARE(r0.sha256, sha(fakePdf(0)));
        QCOMPARE(r0.pdfSize, qint64(fakePdf(0).size()));
        QCOMPARE(r0.status, IssuedRevision::Status::Sent);
        QCOMPARE(r0.lineCount, 3);
        QVERIFY(r0.settings.contains("\"includeBOM\":1")
                || r0.settings.contains("\"includeBOM\":true"));
        const QList<IssuedLine> printed = history->lines(0);
        QCOMPARE(printed.size(), 3);
        QCOMPARE(printed[1].number, 2);
        QCOMPARE(printed[1].type, QStringLiteral("B2"));
        QCOMPARE(printed[1].quantity, QStringLiteral("3"));
        QCOMPARE(printed[1].catalogNumber, QStringLiteral("CAT-101"));
        QCOMPARE(history->issue(fakePdf, at(3)).number, 1);
        QCOMPARE(history->pdf(0), fakePdf(0));
        QCOMPARE(failureOf([&] { history->pdf(7); }),
                 ZebTest::error(35601, QStringLiteral("ZebObjects.History"),
                                QStringLiteral("Element not found: the job has no revision 7")));
    }

    void twoWorkstationsIssuingAtOnceOnAFileGetNAndNPlusOne()
    {
        twoWorkstationsIssuingAtOnce(m_dir.filePath(QStringLiteral("race.sqlite")));
    }

    void twoWorkstationsIssuingAtOnceOnTheServerGetNAndNPlusOne()
    {
        m_server = std::make_unique<PgServer>();
        if (!m_server->isRunning())
            QFAIL(qPrintable(QStringLiteral("The store on PostgreSQL cannot be tested: ")
                             + m_server->error()));
        twoWorkstationsIssuingAtOnce(m_server->location(m_server->newDatabaseName()));
    }

    void thePackageBytesComeBackWholeFromTheServer()
    {
        QVERIFY(m_server && m_server->isRunning());
        const auto store = Store::open(m_server->location(m_server->newDatabaseName()));
        const auto history =
            store->openJob(store->createJob(threeLineJob(QStringLiteral("26-0003"))))->history();
        QByteArray bytes;
        for (int i = 0; i < 256; ++i)
            bytes.append(char(i));
        QCOMPARE(history->issue([&](qint32) { return bytes; }).sha256, sha(bytes));
        QCOMPARE(history->pdf(0), bytes);
    }

    void theSameRevisionNumberTwiceIsRefusedByTheFile()
    {
        const QString path = m_dir.filePath(QStringLiteral("unique.sqlite"));
        {
            const auto store = Store::open(path);
            store->openJob(store->createJob(threeLineJob(QStringLiteral("26-0004"))))
                ->history()
                ->issue(fakePdf);
        }
        auto db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("dup"));
        db.setDatabaseName(path);
        QVERIFY(db.open());
        {
            QSqlQuery q(db);
            QVERIFY(!q.exec(QStringLiteral(
                "INSERT INTO issued_revisions (job_id, revision, issued_at, issued_by, purpose, "
                "recipients, settings, pdf, sha256, pdf_size) SELECT job_id, revision, issued_at, "
                "issued_by, purpose, recipients, settings, pdf, sha256, pdf_size FROM "
                "issued_revisions")));
            QVERIFY(q.lastError().text().contains(QStringLiteral("UNIQUE")));
        }
        db.close();
        db = QSqlDatabase();
        QSqlDatabase::removeDatabase(QStringLiteral("dup"));
    }

    void oneReviseAndResubmitLineMakesTheVerdictReviseAndResubmit()
    {
        const auto store = newStore(QStringLiteral("review.sqlite"));
        const auto history =
            store->openJob(store->createJob(threeLineJob(QStringLiteral("26-0005"))))->history();
        history->issue(fakePdf, at(2));
        history->recordReview(
            0,
            {{1, ReviewAction::Approved, QString()},
             {2, ReviewAction::ReviseAndResubmit, QStringLiteral("Provide 3500K")},
             {3, ReviewAction::ApprovedAsNoted, QString()}},
            QDate(2026, 11, 12), QStringLiteral("See marked cut sheets"));
        const IssuedRevision r = history->revision(0);
        QCOMPARE(r.status, IssuedRevision::Status::Returned);
        QCOMPARE(r.verdict, QStringLiteral("Revise And Resubmit"));
        QCOMPARE(r.returned, QDate(2026, 11, 12));
        QCOMPARE(r.reviewDays(), qint64(10));
        QCOMPARE(r.reviewNote, QStringLiteral("See marked cut sheets"));
        QCOMPARE(history->lines(0)[1].note, QStringLiteral("Provide 3500K"));
        QCOMPARE(history->lines(0)[1].action, QStringLiteral("Revise And Resubmit"));
    }

    void theVerdictFollowsTheLines()
    {
        using namespace ReviewAction;
        QCOMPARE(overall({Approved, Rejected}), ReviseAndResubmit);
        QCOMPARE(overall({Approved, ApprovedAsNoted}), ApprovedAsNoted);
        QCOMPARE(overall({Approved, Approved}), Approved);
        QCOMPARE(overall({Approved, NotReviewed}), Approved);
        QCOMPARE(overall({NotReviewed, QString()}), NotReviewed);
    }

    void aReviewWithAnUnknownActionOrLineChangesNothing()
    {
        const auto store = newStore(QStringLiteral("badreview.sqlite"));
        const auto history =
            store->openJob(store->createJob(threeLineJob(QStringLiteral("26-0006"))))->history();
        history->issue(fakePdf);
        QCOMPARE(failureOf([&] {
                     history->recordReview(0, {{1, QStringLiteral("Fine"), QString()}},
                                           QDate(2026, 11, 5), {});
                 }),
                 ZebTest::error(
                     5, QStringLiteral("ZebObjects.History"),
                     QStringLiteral(
                         "Invalid procedure call or argument: \"Fine\" is not a review action")));
        QCOMPARE(failureOf([&] {
                     history->recordReview(0,
                                           {{1, ReviewAction::Approved, QString()},
                                            {9, ReviewAction::Rejected, QString()}},
                                           QDate(2026, 11, 5), {});
                 }),
                 ZebTest::error(35601, QStringLiteral("ZebObjects.History"),
                                QStringLiteral("Element not found: revision 0 printed no line 9")));
        QCOMPARE(history->revision(0).status, IssuedRevision::Status::Sent);
        QCOMPARE(history->lines(0)[0].action, QString());
    }

    void aResubmittalTicksTheLinesToReviseAndUnticksTheApprovedOnes()
    {
        const auto store = newStore(QStringLiteral("resubmit.sqlite"));
        const auto job = store->openJob(store->createJob(threeLineJob(QStringLiteral("26-0007"))));
        const auto history = job->history();
        history->issue(fakePdf);
        history->recordReview(0,
                              {{1, ReviewAction::Approved, QString()},
                               {2, ReviewAction::Rejected, QString()},
                               {3, ReviewAction::NotReviewed, QString()}},
                              QDate(2026, 11, 5), {});
        QCOMPARE(history->tickForResubmittal(0), 2);
        const auto lines = job->lineItems()->Enumerate();
        QCOMPARE(lines[0]->Selected(), false);
        QCOMPARE(lines[1]->Selected(), true);
        QCOMPARE(lines[2]->Selected(), true);
        // Issuing the next revision closes the one that came back.
        QCOMPARE(history->issue(fakePdf).number, 1);
        QCOMPARE(history->revision(0).status, IssuedRevision::Status::Closed);
        QCOMPARE(history->revision(1).status, IssuedRevision::Status::Sent);
        QCOMPARE(history->lines(1).size(), 2);
    }

    void changesSinceARevisionMarkChangedAndAddedLinesAndListRemovedOnes()
    {
        const QString path = m_dir.filePath(QStringLiteral("changes.sqlite"));
        const auto store = Store::open(path);
        const auto job = store->openJob(store->createJob(threeLineJob(QStringLiteral("26-0008"))));
        const auto history = job->history();
        history->issue(fakePdf);
        QCOMPARE(history->changesSince(0).changedLines, QSet<qint32>{});
        {
            auto db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("edit"));
            db.setDatabaseName(path);
            QVERIFY(db.open());
            QSqlQuery q(db);
            QVERIFY(q.exec(QStringLiteral(
                "UPDATE line_items SET catalog_number = 'CAT-999' WHERE type = 'B2'")));
            QVERIFY(q.exec(QStringLiteral("DELETE FROM line_items WHERE type = 'A1'")));
            QVERIFY(q.exec(QStringLiteral(
                "INSERT INTO line_items (submittal_id, position, quantity, type, brand, "
                "catalog_number, description, group_code, selected) SELECT submittal_id, 9, "
                "1, 'D4', '', 'CAT-400', '', '', 1 FROM line_items LIMIT 1")));
            db.close();
        }
        QSqlDatabase::removeDatabase(QStringLiteral("edit"));
        const RevisionChanges changes = history->changesSince(0);
        QCOMPARE(changes.since, 0);
        // B2 is now line 1, C3 line 2, D4 line 3.
        QCOMPARE(changes.changedLines, (QSet<qint32>{1, 3}));
        QCOMPARE(changes.removedLines, QStringList{QStringLiteral("Line 1: Type A1, 2 x CAT-100")});
        QCOMPARE(history->changesSince(5).since, -1);
    }

    void theLogExportsAsCsvWithAHeaderLine()
    {
        const auto store = newStore(QStringLiteral("csv.sqlite"));
        const auto history =
            store->openJob(store->createJob(threeLineJob(QStringLiteral("26-0009"))))->history();
        history->issue(fakePdf, at(2));
        history->recordReview(0, {{2, ReviewAction::Rejected, QStringLiteral("no")}},
                              QDate(2026, 11, 9), {});
        const QList<QByteArray> lines = history->csv().split('\n');
        QCOMPARE(lines.size(), 3);
        QCOMPARE(
            lines[0],
            QByteArray("\"Revision\",\"Sent\",\"Issued By\",\"Purpose\",\"Recipients\",\"Lines\","
                       "\"Status\",\"Returned\",\"Review Days\",\"Verdict\",\"SHA-256\"\r"));
        QCOMPARE(lines[1], QByteArray("\"0\",\"")
                               + at(2).toLocalTime().date().toString(Qt::ISODate).toLatin1()
                               + "\",\"Marta Quill\",\"Request For Prior Approval\",\"Dana Ruiz, "
                                 "Ruiz Architects\",\"3\","
                                 "\"Returned\",\"2026-11-09\",\"7\",\"Revise And Resubmit\",\""
                               + sha(fakePdf(0)).toLatin1() + "\"\r");
        QCOMPARE(lines[2], QByteArray());
    }
};

QTEST_GUILESS_MAIN(TestStoreHistory)
#include "tst_storehistory.moc"
