// An office's own jobs: a new job made through File > New Job..., its properties, a copy of a
// job, archived jobs kept out of the job list, the job list's search, and --new-job.
#include "contracts/bom.h"
#include "contracts/customers.h"
#include "contracts/labelfields.h"
#include "contracts/labels.h"
#include "contracts/submittal.h"
#include "contracts/textobjects.h"
#include "formdescription.h"
#include "jobdialog.h"
#include "joblistdialog.h"
#include "contracts/runtime.h"
#include "officefile.h"
#include "sampleoffice/sampleoffice.h"
#include "store/jobcontents.h"
#include "store/store.h"
#include "store/storebom.h"
#include "store/storecustomers.h"
#include "store/storejob.h"
#include "store/storelabels.h"
#include "store/storelineitems.h"
#include "store/storesubmittal.h"
#include "store/storetextobjects.h"
#include "support/testsupport.h"
#include "support/workbenchtesting.h"
#include "userinput.h"
#include "workstation.h"

#include <QAbstractButton>
#include <QCheckBox>
#include <QDialogButtonBox>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QTest>

using ZebObjects::JobDetails;
using ZebObjects::Store;

namespace {
qint64 jobNumbered(const Store& store, const QString& number)
{
    for (const auto& j : store.jobs())
        if (j.number == number)
            return j.id;
    return 0;
}

QLineEdit* edit(QWidget& dialog, const char* name)
{
    return dialog.findChild<QLineEdit*>(QLatin1String(name));
}
}  // namespace

class tst_Jobs : public QObject {
    Q_OBJECT
private slots:
    void initTestCase()
    {
        QVERIFY(m_home.isValid());
        ZebTest::useScratchHome(m_home, true);
    }
    void init()
    {
        m_scratch = std::make_unique<QTemporaryDir>();
        m_db = m_scratch->filePath(QStringLiteral("office.sqlite"));
    }
    void cleanup()
    {
        ZebObjects::Runtime::setApplicationServices(nullptr);
        m_store.reset();
        m_scratch.reset();
    }

    void theJobNumberIsCheckedAsItIsTyped()
    {
        JobDialog dialog(JobDialog::Purpose::NewJob, {}, {QStringLiteral("24-0101")});
        auto* number = edit(dialog, "txtJobNumber");
        auto* name = edit(dialog, "txtJobName");
        auto* check = dialog.findChild<QLabel*>(QStringLiteral("lblNumberCheck"));
        auto* ok = dialog.findChild<QPushButton*>(QStringLiteral("cmdOK"));
        QVERIFY(number && name && check && ok);
        QCOMPARE(check->text(), QStringLiteral("Type the job's number."));
        QVERIFY(!ok->isEnabled());
        QTest::keyClicks(number, QStringLiteral("24-0101"));
        QCOMPARE(check->text(), QStringLiteral("The office already has a job numbered 24-0101."));
        QTest::keyClicks(name, QStringLiteral("Harbor Clinic"));
        QVERIFY(!ok->isEnabled());
        QTest::keyClick(number, Qt::Key_Backspace);
        QTest::keyClicks(number, QStringLiteral("2"));
        QCOMPARE(check->text(), QString());
        QVERIFY(ok->isEnabled());
        // Without a name there is no job to make.
        name->clear();
        QVERIFY(!ok->isEnabled());
    }

    void newJobByKeyboardIsMadeOpenedAndFoundAfterARestart()
    {
        auto window = openWorkstation();
        ZebTest::WhenModal<JobDialog> answer([](JobDialog& dialog) {
            QCOMPARE(dialog.windowTitle(), QStringLiteral("New Job"));
            QVERIFY(QTest::qWaitForWindowActive(&dialog));
            // The number box has the focus when the dialog opens.
            QTRY_VERIFY(dialog.findChild<QLineEdit*>(QStringLiteral("txtJobNumber"))->hasFocus());
            // The keyboard alone: the number box has the focus, Tab goes on to the name.
            QTest::keyClicks(dialog.focusWidget(), QStringLiteral("25-0007"));
            QTest::keyClick(dialog.focusWidget(), Qt::Key_Tab);
            QTest::keyClicks(dialog.focusWidget(), QStringLiteral("Harbor Clinic"));
            QTest::keyClick(dialog.focusWidget(), Qt::Key_Tab);
            QTest::keyClicks(dialog.focusWidget(), QStringLiteral("12 Pier Road, Astoria OR"));
            QTest::keyClick(dialog.focusWidget(), Qt::Key_Tab);
            QTest::keyClicks(dialog.focusWidget(), QStringLiteral("Lindqvist Architects"));
            QTest::keyClick(dialog.focusWidget(), Qt::Key_Return);
        });
        window->show();
        QVERIFY(QTest::qWaitForWindowExposed(window.get()));
        QTest::keyClick(window.get(), Qt::Key_N, Qt::ControlModifier);
        QVERIFY(answer.answered());
        QVERIFY(!answer.leftOpen());
        QCOMPARE(window->job()->number(), QStringLiteral("25-0007"));
        QCOMPARE(window->jobStatus(), QStringLiteral("Job 25-0007 Harbor Clinic"));
        window.reset();
        const auto store = reopenedOffice();
        const qint64 id = jobNumbered(*store, QStringLiteral("25-0007"));
        QVERIFY(id != 0);
        const JobDetails d = store->jobDetails(id);
        QCOMPARE(d.name, QStringLiteral("Harbor Clinic"));
        QCOMPARE(d.siteAddress, QStringLiteral("12 Pier Road, Astoria OR"));
        QCOMPARE(d.architect, QStringLiteral("Lindqvist Architects"));
        // A new job starts with the office's usual columns and label fields, and no lines.
        const auto job = store->openJob(id);
        QCOMPARE(job->lineItems()->Count(), qint16(0));
        QCOMPARE(job->labels()->LabelFields()->Count(), qint32(10));
        QCOMPARE(job->submittal()->IncludeBOM(), true);
    }

    void jobPropertiesEditTheOpenJobAndANumberTakenIsRefused()
    {
        auto window = openWorkstation();
        const qint64 id = window->job()->id();
        const QString other = m_store->jobs().last().number;
        bool refused = false;
        ZebTest::WhenModal<JobDialog> answer([&](JobDialog& dialog) {
            QCOMPARE(dialog.windowTitle(), QStringLiteral("Job Properties"));
            auto* number = edit(dialog, "txtJobNumber");
            const QString own = number->text();
            number->selectAll();
            QTest::keyClicks(number, other);
            refused =
                !dialog.findChild<QPushButton*>(QStringLiteral("cmdOK"))->isEnabled()
                && dialog.numberProblem()
                       == QStringLiteral("The office already has a job numbered %1.").arg(other);
            number->selectAll();
            QTest::keyClicks(number, own);
            auto* engineer = edit(dialog, "txtEngineer");
            engineer->setFocus();
            QTest::keyClicks(engineer, QStringLiteral("Baird Engineering"));
            QTest::mouseClick(dialog.findChild<QPushButton*>(QStringLiteral("cmdOK")),
                              Qt::LeftButton);
        });
        window->chooseJobProperties();
        QVERIFY(answer.answered());
        QVERIFY(refused);
        QCOMPARE(m_store->jobDetails(id).engineer, QStringLiteral("Baird Engineering"));
    }

    void aDuplicateTakesSettingsTextsLabelFieldsAndCustomersButNotLinesUnlessAsked()
    {
        m_store = OfficeFile::resetSample(m_db);
        const auto& jobs = m_store->jobs();
        qint64 from = 0;
        for (const auto& j : jobs)
            if (j.lineCount > 0 && j.customerCount > 0 && j.lineCount < 100)
                from = j.id;
        QVERIFY(from != 0);
        const auto source = m_store->openJob(from);
        JobDetails details;
        details.number = QStringLiteral("25-0100");
        details.name = QStringLiteral("Like the last one");
        const qint64 without = m_store->duplicateJob(from, details, false);
        details.number = QStringLiteral("25-0101");
        const qint64 with = m_store->duplicateJob(from, details, true);
        for (const qint64 id : {without, with}) {
            const auto copy = m_store->openJob(id);
            QCOMPARE(copy->submittal()->IssuedBy(), source->submittal()->IssuedBy());
            QCOMPARE(copy->submittal()->SubmittalPurpose(),
                     source->submittal()->SubmittalPurpose());
            QCOMPARE(copy->coverLetterParagraphs()->Count(),
                     source->coverLetterParagraphs()->Count());
            QCOMPARE(copy->bom()->IncludeBrand(), source->bom()->IncludeBrand());
            QCOMPARE(copy->labels()->LabelFields()->Count(),
                     source->labels()->LabelFields()->Count());
            QCOMPARE(copy->customers()->Count(), source->customers()->Count());
            // A change to the copy leaves the job it came from alone.
            copy->coverLetterParagraphs()->Add(QStringLiteral("Only in the copy"), true);
        }
        QCOMPARE(m_store->openJob(without)->lineItems()->Count(), qint16(0));
        QCOMPARE(m_store->openJob(with)->lineItems()->Count(), source->lineItems()->Count());
        QCOMPARE(m_store->openJob(with)->lineItems()->rows().first().data.catalogNumber,
                 source->lineItems()->rows().first().data.catalogNumber);
        QCOMPARE(source->coverLetterParagraphs()->Count() + 1,
                 m_store->openJob(with)->coverLetterParagraphs()->Count());
        const auto e = ZebTest::failureOf([&] { m_store->duplicateJob(from, details, false); });
        QCOMPARE(e.Number, 457);
    }

    void duplicateJobFromTheMenuOpensTheCopy()
    {
        auto window = openWorkstation();
        const qint64 from = window->job()->id();
        const qint16 lines = window->job()->lineItems()->Count();
        ZebTest::WhenModal<JobDialog> answer([](JobDialog& dialog) {
            QCOMPARE(dialog.windowTitle(), QStringLiteral("Duplicate Job"));
            QCOMPARE(edit(dialog, "txtJobNumber")->text(), QString());
            QTest::keyClicks(edit(dialog, "txtJobNumber"), QStringLiteral("25-0200"));
            ZebTest::clickCheckBox(dialog.findChild<QCheckBox*>(QStringLiteral("chkCopyLines")));
            QTest::mouseClick(dialog.findChild<QPushButton*>(QStringLiteral("cmdOK")),
                              Qt::LeftButton);
        });
        window->chooseDuplicateJob();
        QVERIFY(answer.answered());
        QVERIFY(window->job()->id() != from);
        QCOMPARE(window->job()->number(), QStringLiteral("25-0200"));
        QCOMPARE(window->job()->lineItems()->Count(), lines);
    }

    void anArchivedJobLeavesTheJobListAndStaysInTheOffice()
    {
        m_store = OfficeFile::resetSample(m_db);
        const auto first = m_store->jobs().first();
        JobDetails d = m_store->jobDetails(first.id);
        d.archived = true;
        m_store->setJobDetails(first.id, d);
        QVERIFY(m_store->jobs().first().archived);
        JobListDialog dialog(m_store->jobs());
        QVERIFY(!dialog.shownNumbers().contains(first.number));
        QCOMPARE(dialog.shownNumbers().size(), m_store->jobs().size() - 1);
        ZebTest::clickCheckBox(dialog.findChild<QCheckBox*>(QStringLiteral("chkShowArchived")));
        QVERIFY(dialog.shownNumbers().contains(first.number));
        QCOMPARE(m_store->openJob(first.id)->number(), first.number);
    }

    void theJobListFindsAJobByNumberNameOrCustomer()
    {
        m_store = OfficeFile::resetSample(m_db);
        const auto jobs = m_store->jobs();
        JobListDialog dialog(jobs);
        auto* find = dialog.findChild<QLineEdit*>(QStringLiteral("txtFindJob"));
        QVERIFY(find);
        QTest::keyClicks(find, jobs.at(1).number);
        QCOMPARE(dialog.shownNumbers(), QStringList{jobs.at(1).number});
        find->clear();
        QTest::keyClicks(find, jobs.at(2).name.left(8).toLower());
        QVERIFY(dialog.shownNumbers().contains(jobs.at(2).number));
        // A customer only one job has finds that job.
        QString customer;
        for (const QString& c : jobs.at(0).customerNames) {
            int holders = 0;
            for (const auto& j : jobs)
                holders += j.customerNames.contains(c) ? 1 : 0;
            if (holders == 1)
                customer = c;
        }
        QVERIFY(!customer.isEmpty());
        find->clear();
        QTest::keyClicks(find, customer);
        QCOMPARE(dialog.shownNumbers(), QStringList{jobs.at(0).number});
        QCOMPARE(dialog.selectedJobId(), jobs.at(0).id);
        find->clear();
        QTest::keyClicks(find, QStringLiteral("no such job zz"));
        QCOMPARE(dialog.shownNumbers(), QStringList());
        QCOMPARE(dialog.findChild<QLabel*>(QStringLiteral("lblNothingFound"))->text(),
                 QStringLiteral("No job's number, name or customer holds \"no such job zz\"."));
        QCOMPARE(dialog.selectedJobId(), 0);
    }

    void newJobOnTheCommandLineSaysWhatItDidAndRefusesANumberHeld()
    {
        const QString db = m_db;
        // An empty office of the user's making.
        Store::open(db);
        auto r =
            run({QStringLiteral("--db"), db, QStringLiteral("--new-job"), QStringLiteral("25-0300"),
                 QStringLiteral("--job-name"), QStringLiteral("Cannery Lofts")});
        QCOMPARE(r.code, 0);
        QCOMPARE(r.out, QStringLiteral("Made job 25-0300 \"Cannery Lofts\" in %1\n").arg(db));
        r = run({QStringLiteral("--db"), db, QStringLiteral("--new-job"), QStringLiteral("25-0300"),
                 QStringLiteral("--job-name"), QStringLiteral("Again")});
        QCOMPARE(r.code, 1);
        QCOMPARE(r.out, QString());
        QCOMPARE(r.err, QStringLiteral(
                            "zeb-workbench: This key is already associated with an element of "
                            "this collection: the office already has a job numbered \"25-0300\""));
        const auto store = Store::open(db, Store::OpenMode::OpenExisting);
        QCOMPARE(store->jobs().size(), 1);
        QCOMPARE(store->jobs().first().name, QStringLiteral("Cannery Lofts"));
    }

    void newJobIntoAFileNotThereYetMakesAnEmptyOfficeOfItsOwn()
    {
        const QString db = m_db;
        QVERIFY(!QFileInfo::exists(db));
        auto r =
            run({QStringLiteral("--db"), db, QStringLiteral("--new-job"), QStringLiteral("26-0001"),
                 QStringLiteral("--job-name"), QStringLiteral("Quarry Hall")});
        QCOMPARE(r.code, 0);
        QCOMPARE(r.out, QStringLiteral("Made job 26-0001 \"Quarry Hall\" in %1\n").arg(db));
        // The office holds the one job made, nothing of the sample.
        const auto store = Store::open(db, Store::OpenMode::OpenExisting);
        QCOMPARE(store->jobs().size(), 1);
        QCOMPARE(store->jobs().first().number, QStringLiteral("26-0001"));

        // A folder that is not there is not made on the way.
        const QString nowhere =
            QFileInfo(db).absolutePath() + QStringLiteral("/no folder/o.sqlite");
        r = run({QStringLiteral("--db"), nowhere, QStringLiteral("--new-job"),
                 QStringLiteral("26-0002"), QStringLiteral("--job-name"), QStringLiteral("X")});
        QCOMPARE(r.code, 1);
        QCOMPARE(r.err, QStringLiteral("zeb-workbench: Cannot make the office \"%1\": the folder "
                                       "\"%2\" does not exist")
                            .arg(nowhere, QFileInfo(nowhere).absolutePath()));
        QVERIFY(!QFileInfo::exists(QFileInfo(nowhere).absolutePath()));
    }

private:
    std::unique_ptr<Workstation> openWorkstation()
    {
        if (!m_store)
            m_store = OfficeFile::resetSample(m_db);
        auto window = ZebTest::openWorkstation(m_store);
        if (const qint64 id = window->startingJob())
            window->openJob(id);
        return window;
    }
    std::shared_ptr<Store> reopenedOffice()
    {
        ZebObjects::Runtime::setApplicationServices(nullptr);
        m_store.reset();
        return Store::open(m_db, Store::OpenMode::OpenExisting);
    }
    static ZebTest::ProgramRun run(const QStringList& args) { return ZebTest::runWorkbench(args); }

    QTemporaryDir m_home;
    std::unique_ptr<QTemporaryDir> m_scratch;
    QString m_db;
    std::shared_ptr<Store> m_store;
};

QTEST_MAIN(tst_Jobs)
#include "tst_jobs.moc"
