#include "contracts/bom.h"
#include "contracts/coverletter.h"
#include "contracts/customer.h"
#include "contracts/customers.h"
#include "contracts/labelfield.h"
#include "contracts/labelfields.h"
#include "contracts/labels.h"
#include "contracts/lineitem.h"
#include "contracts/lineitems.h"
#include "contracts/submittal.h"
#include "contracts/textobject.h"
#include "contracts/textobjects.h"
#include "formdescription.h"
#include "frame/usercontrol.h"
#include "joblistdialog.h"
#include "contracts/runtime.h"
#include "officefile.h"
#include "startupfailure.h"
#include "platform/dateedit.h"
#include "platform/keyedlistview.h"
#include "sampleoffice/sampleoffice.h"
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
#include <QAccessible>
#include <QAction>
#include <QDockWidget>
#include <QDialogButtonBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QLineEdit>
#include <QMenuBar>
#include <QMenu>
#include <QMessageBox>
#include <QProgressDialog>
#include <QRegularExpression>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTabBar>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QTest>

#include <cstdio>
#include <optional>

using ZebObjects::Store;
using ZebSubCtl::KeyedListView;

class tst_Workstation : public QObject {
    Q_OBJECT
private slots:
    void initTestCase();
    void init();
    void cleanup();

    void firstStartCreatesTheSampleOfficeInTheDataFolder();
    void resetSampleRecreatesTheOffice();
    void missingDbFileIsAClearMessageAndNothingIsCreated();
    void dbThatIsNotADatabaseIsAClearMessageAndTheFileStaysAsItWas();
    void dbWithANewerSchemaIsAClearMessage();
    void dbThatIsAFolderOrUnreadableIsAClearMessage();
    void unknownJobNumberIsAClearMessage();
    void startsOnTheSampleJobWithEveryPageInTheOrderOfWork();
    void aChangeOnEveryPageSurvivesClosingAndReopening();
    void aCustomerAddedOnTheCustomersPageIsStoredAsIncluded();
    void theRemarksPageAddsEditsDeletesAndSavesRemarks();
    void aDateConfirmedWithEnterThenQuitIsSaved();
    void aDateConfirmedWithEnterIsSavedWhenThePageChanges();
    void aDateConfirmedWithEnterIsSavedWhenTheWindowClosesInTheBackground();
    void aDateConfirmedWithEnterIsInTheExportedPackage();
    void everyPurposeOfTheSampleOfficeShowsWholeInTheOtherBox();
    void jobListShowsEveryJobAndOpensTheChosenOne();
    void menusCarryTheShortcutsAndTheDiagnosticsPaneCanBeHidden();
    void statusBarShowsTheJobAndTheSaveState();
    void pageControlFollowsTheWindowSize();
    void windowGeometryAndTheLastJobAreRememberedBetweenRuns();
    void unregisteredControlLeavesItsPageOut();
    void everyInteractiveElementOfTheWindowAndTheJobListHasAName();
    void exportWritesTheSamplePackageWithoutAWindow();
    void exportOfAJobChosenByNumber();
    void exportOfAJobTheOfficeLacksIsAClearMessage();
    void exportFromTheWindowWritesTheOpenJobsPackage();
    void exportFromTheWindowCanBeCancelledAndLeavesNoFile();
    void exportMenuAsksForTheFileWritesItAndOffersToOpenIt();
    void openingThePackageWithoutAPdfViewerSaysSoAndShowsTheFolder();
    void aStartupFailureShowsTheSameMessageInADialogWhenAsked();
    void withoutADisplayAStartupFailureIsOneLineAndNoDialog();

private:
    using Run = ZebTest::ProgramRun;
    static Run run(const QStringList& args) { return ZebTest::runWorkbench(args); }
    std::unique_ptr<Workstation> openWorkstation(bool remember = false);
    // Lets go of the store the windows shared and opens the office again, as the next start of
    // the workbench would.
    std::shared_ptr<Store> reopenedOffice();

    QTemporaryDir m_home;
    std::unique_ptr<QTemporaryDir> m_scratch;
    QString m_db;
    std::shared_ptr<Store> m_store;
};

namespace {
using ZebTest::control;
using ZebTest::defaultOffice;
using ZebTest::pdfText;
using ZebTest::shippedForm;

using ZebTest::clickCheckBox;

// Clicks the check box of a row of a list as a user would.
void clickRowCheck(KeyedListView* list, int row)
{
    list->scrollTo(list->model()->index(row, 0));
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->checkBoxRect(row).center());
}

// Interactive elements of the window's own making that have no accessible name; the controls on
// the pages are walked by their own tests.
void unnamed(QAccessibleInterface* node, QStringList& found)
{
    if (!node)
        return;
    if (qobject_cast<ZebSubCtl::UserControl*>(node->object()))
        return;
    static const QList<QAccessible::Role> interactive = {
        QAccessible::PushButton,  QAccessible::CheckBox,     QAccessible::RadioButton,
        QAccessible::ComboBox,    QAccessible::EditableText, QAccessible::List,
        QAccessible::Table,       QAccessible::Tree,         QAccessible::ScrollBar,
        QAccessible::PageTabList, QAccessible::MenuBar,      QAccessible::SpinBox,
        QAccessible::Slider};
    if (interactive.contains(node->role()) && node->text(QAccessible::Name).trimmed().isEmpty()
        && !node->state().invisible) {
        const QObject* o = node->object();
        found.append(QStringLiteral("%1 (%2, role %3)")
                         .arg(o ? o->objectName() : QString(),
                              o ? QString::fromLatin1(o->metaObject()->className()) : QString())
                         .arg(int(node->role())));
    }
    for (int i = 0; i < node->childCount(); ++i)
        unnamed(node->child(i), found);
}

QStringList textsOf(ZebObjects::TextObjects& texts)
{
    QStringList out;
    for (const auto& t : texts.Enumerate())
        out.append(t->Text());
    return out;
}

int selectedTexts(ZebObjects::TextObjects& texts)
{
    int n = 0;
    for (const auto& t : texts.Enumerate())
        n += t->Selected() ? 1 : 0;
    return n;
}

int includedCustomers(ZebObjects::Customers& customers)
{
    int n = 0;
    for (const auto& c : customers.Enumerate())
        n += c->Included() ? 1 : 0;
    return n;
}

int includedFields(ZebObjects::Labels& labels)
{
    int n = 0;
    for (const auto& f : labels.LabelFields()->Enumerate())
        n += f->Included() ? 1 : 0;
    return n;
}

int selectedLines(ZebObjects::LineItems& lines)
{
    int n = 0;
    for (const auto& l : lines.Enumerate())
        n += l->Selected() ? 1 : 0;
    return n;
}

// What the test changes, read from a job.
struct Facts {
    bool coverLetter = false;
    int customers = 0;
    bool logo = false;
    int paragraphs = 0;
    int remarks = 0;
    bool brand = false;
    int fields = 0;
    int lines = 0;
};

Facts factsOf(ZebObjects::StoreJob& job)
{
    Facts f;
    f.coverLetter = job.submittal()->IncludeCoverLetter();
    f.customers = includedCustomers(*job.customers());
    f.logo = job.submittal()->CoverLetter()->IncludeLogo();
    f.paragraphs = selectedTexts(*job.coverLetterParagraphs());
    f.remarks = selectedTexts(*job.coverLetterRemarks());
    f.brand = job.bom()->IncludeBrand();
    f.fields = includedFields(*job.labels());
    f.lines = selectedLines(*job.lineItems());
    return f;
}
}  // namespace

void tst_Workstation::initTestCase()
{
    // Neither this program nor the workbench it starts may touch the user's own office.
    QVERIFY(m_home.isValid());
    ZebTest::useScratchHome(m_home, true);
}

void tst_Workstation::init()
{
    m_scratch = std::make_unique<QTemporaryDir>();
    m_db = m_scratch->filePath(QStringLiteral("office.sqlite"));
}

void tst_Workstation::cleanup()
{
    ZebObjects::Runtime::setApplicationServices(nullptr);
    m_store.reset();
    m_scratch.reset();
    QDir(m_home.filePath(QStringLiteral("data"))).removeRecursively();
    QDir(m_home.filePath(QStringLiteral("config"))).removeRecursively();
}

std::shared_ptr<Store> tst_Workstation::reopenedOffice()
{
    ZebObjects::Runtime::setApplicationServices(nullptr);
    m_store.reset();
    return Store::open(m_db, Store::OpenMode::OpenExisting);
}

std::unique_ptr<Workstation> tst_Workstation::openWorkstation(bool remember)
{
    if (!m_store)
        m_store =
            QFileInfo::exists(m_db) ? OfficeFile::open(m_db, false) : OfficeFile::resetSample(m_db);
    auto options = ZebTest::workstationOptions();
    options.remember = remember;
    auto window = ZebTest::openWorkstation(m_store, options);
    if (const qint64 id = window->startingJob())
        window->openJob(id);
    return window;
}

void tst_Workstation::firstStartCreatesTheSampleOfficeInTheDataFolder()
{
    QVERIFY(!QFileInfo::exists(defaultOffice()));
    const QString design = m_scratch->filePath(QStringLiteral("design.json"));
    Run r = run({QStringLiteral("--save-design"), design});
    QCOMPARE(r.code, 0);
    QVERIFY2(QFileInfo::exists(defaultOffice()), qPrintable(r.err));
    QVERIFY(!QFileInfo::exists(defaultOffice() + QStringLiteral(".new")));
    {
        auto store = Store::open(defaultOffice(), Store::OpenMode::OpenExisting);
        const QList<ZebObjects::JobSummary> jobs = store->jobs();
        QCOMPARE(jobs.size(), 4);
        bool riverside = false, large = false;
        for (const auto& job : jobs) {
            riverside |= job.name == QStringLiteral("Riverside Medical Office Building");
            large |= job.lineCount == ZebObjects::SampleOffice::LargeJobLineCount;
        }
        QVERIFY(riverside);
        QVERIFY(large);
        QVERIFY(store->directoryCount() >= 200);
        // A mark of the user's own: the next start must keep it.
        store->setIssuedByNames({QStringLiteral("Only Issuer")});
    }
    r = run({QStringLiteral("--save-design"), design});
    QCOMPARE(r.code, 0);
    auto store = Store::open(defaultOffice(), Store::OpenMode::OpenExisting);
    QCOMPARE(store->issuedByNames(), QStringList{QStringLiteral("Only Issuer")});
}

void tst_Workstation::resetSampleRecreatesTheOffice()
{
    {
        auto store = OfficeFile::resetSample(m_db);
        store->setIssuedByNames({QStringLiteral("Only Issuer")});
    }
    const Run r =
        run({QStringLiteral("--db"), m_db, QStringLiteral("--reset-sample"),
             QStringLiteral("--save-design"), m_scratch->filePath(QStringLiteral("d.json"))});
    QCOMPARE(r.code, 0);
    auto store = Store::open(m_db, Store::OpenMode::OpenExisting);
    QCOMPARE(store->issuedByNames(), ZebObjects::SampleOffice::issuedByNames());
    QCOMPARE(store->jobs().size(), 4);
}

void tst_Workstation::missingDbFileIsAClearMessageAndNothingIsCreated()
{
    const QString missing = m_scratch->filePath(QStringLiteral("none.sqlite"));
    const Run r = run({QStringLiteral("--db"), missing, QStringLiteral("--save-design"),
                       m_scratch->filePath(QStringLiteral("d.json"))});
    QCOMPARE(r.code, 1);
    QCOMPARE(r.err.trimmed(),
             QStringLiteral("zeb-workbench: Cannot open the office \"%1\": the file does not exist "
                            "(--reset-sample makes it with the sample office)")
                 .arg(missing));
    QVERIFY(!QFileInfo::exists(missing));
    QVERIFY(!QFileInfo::exists(m_scratch->filePath(QStringLiteral("d.json"))));
}

void tst_Workstation::dbThatIsNotADatabaseIsAClearMessageAndTheFileStaysAsItWas()
{
    const QString text = m_scratch->filePath(QStringLiteral("notes.txt"));
    {
        QFile f(text);
        QVERIFY(f.open(QIODevice::WriteOnly));
        f.write(QByteArray("Meeting notes, not an office.\n").repeated(200));
    }
    const Run r = run({QStringLiteral("--db"), text, QStringLiteral("--save-design"),
                       m_scratch->filePath(QStringLiteral("d.json"))});
    QCOMPARE(r.code, 1);
    QVERIFY2(r.err.startsWith(QStringLiteral("zeb-workbench: ")), qPrintable(r.err));
    QVERIFY2(r.err.contains(text), qPrintable(r.err));
    QVERIFY2(r.err.contains(QStringLiteral("not a database")), qPrintable(r.err));
    QFile f(text);
    QVERIFY(f.open(QIODevice::ReadOnly));
    QCOMPARE(f.readAll(), QByteArray("Meeting notes, not an office.\n").repeated(200));
}

void tst_Workstation::dbWithANewerSchemaIsAClearMessage()
{
    OfficeFile::resetSample(m_db).reset();
    {
        auto db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("newer"));
        db.setDatabaseName(m_db);
        QVERIFY(db.open());
        QSqlQuery q(db);
        QVERIFY(q.exec(QStringLiteral("PRAGMA user_version = 999")));
        q.finish();
        db.close();
    }
    QSqlDatabase::removeDatabase(QStringLiteral("newer"));
    const Run r = run({QStringLiteral("--db"), m_db, QStringLiteral("--save-design"),
                       m_scratch->filePath(QStringLiteral("d.json"))});
    QCOMPARE(r.code, 1);
    QVERIFY2(r.err.contains(m_db), qPrintable(r.err));
    QVERIFY2(r.err.contains(QStringLiteral("newer")), qPrintable(r.err));
}

void tst_Workstation::dbThatIsAFolderOrUnreadableIsAClearMessage()
{
    const QString folder = m_scratch->filePath(QStringLiteral("folder.sqlite"));
    QVERIFY(QDir().mkpath(folder));
    Run r = run({QStringLiteral("--db"), folder, QStringLiteral("--save-design"),
                 m_scratch->filePath(QStringLiteral("d.json"))});
    QCOMPARE(r.code, 1);
    QCOMPARE(r.err.trimmed(),
             QStringLiteral("zeb-workbench: Cannot open the office \"%1\": it is a folder, not a "
                            "file")
                 .arg(folder));

    OfficeFile::resetSample(m_db).reset();
    QFile::setPermissions(m_db, QFileDevice::Permissions());
    if (QFileInfo(m_db).isReadable())
        return;  // the superuser reads everything; the folder case above stands for it
    r = run({QStringLiteral("--db"), m_db, QStringLiteral("--save-design"),
             m_scratch->filePath(QStringLiteral("d.json"))});
    QCOMPARE(r.code, 1);
    QCOMPARE(r.err.trimmed(),
             QStringLiteral("zeb-workbench: Cannot open the office \"%1\": the file cannot be read "
                            "(permission denied)")
                 .arg(m_db));
}

void tst_Workstation::unknownJobNumberIsAClearMessage()
{
    OfficeFile::resetSample(m_db).reset();
    const Run r =
        run({QStringLiteral("--db"), m_db, QStringLiteral("--job"), QStringLiteral("nope"),
             QStringLiteral("--save-design"), m_scratch->filePath(QStringLiteral("d.json"))});
    QCOMPARE(r.code, 1);
    QCOMPARE(r.err.trimmed(), QStringLiteral("zeb-workbench: the office \"%1\" has no job numbered "
                                             "\"nope\"")
                                  .arg(m_db));
}

void tst_Workstation::startsOnTheSampleJobWithEveryPageInTheOrderOfWork()
{
    auto window = openWorkstation();
    QVERIFY(window->job());
    QCOMPARE(window->job()->name(), QStringLiteral("Riverside Medical Office Building"));
    QCOMPARE(window->problems(), QStringList());
    QCOMPARE(window->pageTitles(),
             (QStringList{QStringLiteral("General Information"), QStringLiteral("Customers"),
                          QStringLiteral("Cover Letter Options"),
                          QStringLiteral("Cover Letter Paragraphs"),
                          QStringLiteral("Cover Letter Remarks"),
                          QStringLiteral("Bill of Materials"), QStringLiteral("Labels"),
                          QStringLiteral("Line Items"), QStringLiteral("Line Items Editor"),
                          QStringLiteral("Recipients"), QStringLiteral("History")}));
    // Bound to the open job's own objects.
    auto* lines = control<ZebSubCtl::UserControl>(*window, "ctlLineItems");
    QVERIFY(lines);
    QCOMPARE(int(lines->findChildren<QWidget*>(QStringLiteral("ctlSubLine")).size()),
             int(window->job()->lineItems()->Count()));
    auto* customers = control<ZebSubCtl::UserControl>(*window, "ctlCustomers");
    QCOMPARE(customers->findChild<KeyedListView*>(QStringLiteral("lsvCustomers"))->count(),
             int(window->job()->customers()->Count()));
}

void tst_Workstation::aChangeOnEveryPageSurvivesClosingAndReopening()
{
    Facts before;
    qint64 jobId = 0;
    {
        auto window = openWorkstation();
        jobId = window->job()->id();
        before = factsOf(*window->job());
        window->show();
        QVERIFY(QTest::qWaitForWindowExposed(window.get()));

        window->showPage(1);
        auto* customers = control<KeyedListView>(*window, "lsvCustomers");
        QVERIFY(customers->count() > 0);
        clickRowCheck(customers, 0);

        window->showPage(2);
        clickCheckBox(control<QAbstractButton>(*window, "chkIncludeLogo"));

        window->showPage(3);
        auto* paragraphs =
            control<ZebSubCtl::UserControl>(*window, "ctlParagraphs")->findChild<KeyedListView*>();
        QVERIFY(paragraphs->count() > 0);
        clickRowCheck(paragraphs, 0);

        window->showPage(4);
        auto* remarks =
            control<ZebSubCtl::UserControl>(*window, "ctlRemarks")->findChild<KeyedListView*>();
        QVERIFY(remarks->count() > 0);
        clickRowCheck(remarks, 0);

        window->showPage(5);
        clickCheckBox(control<QAbstractButton>(*window, "chkBrand"));

        window->showPage(6);
        auto* labels = control<ZebSubCtl::UserControl>(*window, "ctlLabels");
        auto* chosen = labels->findChild<KeyedListView*>(QStringLiteral("lsvSelectedItems"));
        QVERIFY(chosen->count() > 0);
        QTest::mouseClick(chosen->viewport(), Qt::LeftButton, {}, chosen->itemRect(0).center());
        QTest::mouseClick(labels->findChild<QAbstractButton*>(QStringLiteral("cmdRemove")),
                          Qt::LeftButton);

        window->showPage(7);
        auto* line = control<ZebSubCtl::UserControl>(*window, "ctlLineItems")
                         ->findChild<QWidget*>(QStringLiteral("ctlSubLine"));
        clickCheckBox(line->findChild<QAbstractButton*>(QStringLiteral("chkSelect")));

        // Last: leaving out the cover letter disables its options' page.
        window->showPage(0);
        clickCheckBox(control<QAbstractButton>(*window, "chkCoverLetter"));

        QCOMPARE(window->saveStatus(), QStringLiteral("All changes saved"));
        window->close();
    }
    auto store = reopenedOffice();
    const Facts after = factsOf(*store->openJob(jobId));
    QCOMPARE(after.coverLetter, !before.coverLetter);
    QCOMPARE(std::abs(after.customers - before.customers), 1);
    QCOMPARE(after.logo, !before.logo);
    QCOMPARE(std::abs(after.paragraphs - before.paragraphs), 1);
    QCOMPARE(std::abs(after.remarks - before.remarks), 1);
    QCOMPARE(after.brand, !before.brand);
    QCOMPARE(after.fields, before.fields - 1);
    QCOMPARE(std::abs(after.lines - before.lines), 1);
}

void tst_Workstation::aCustomerAddedOnTheCustomersPageIsStoredAsIncluded()
{
    QString key;
    qint64 jobId = 0;
    {
        auto window = openWorkstation();
        jobId = window->job()->id();
        // A customer of the directory the job does not have yet, found by its account number.
        QStringList onJob;
        for (const auto& c : window->job()->customers()->Enumerate())
            onJob.append(c->Key());
        QString account;
        const auto directory = m_store->directoryCustomers();
        for (const auto& d : directory) {
            if (!d.active || onJob.contains(d.key) || d.accountNumber.isEmpty())
                continue;
            if (std::count_if(directory.begin(), directory.end(),
                              [&](const auto& o) { return o.accountNumber == d.accountNumber; })
                == 1) {
                key = d.key;
                account = d.accountNumber;
                break;
            }
        }
        QVERIFY(!key.isEmpty());
        window->show();
        QVERIFY(QTest::qWaitForWindowExposed(window.get()));
        window->showPage(1);
        auto* panel = control<ZebSubCtl::UserControl>(*window, "ctlCustomers");
        auto* accountBox = panel->findChild<QLineEdit*>(QStringLiteral("txtAcctNum"));
        QTest::mouseClick(accountBox, Qt::LeftButton);
        QTest::keyClicks(accountBox, account);
        QTest::mouseClick(panel->findChild<QAbstractButton*>(QStringLiteral("cmdSearch")),
                          Qt::LeftButton);
        QTest::mouseClick(panel->findChild<QAbstractButton*>(QStringLiteral("cmdAdd")),
                          Qt::LeftButton);
        auto* list = control<KeyedListView>(*window, "lsvCustomers");
        const int row = int(list->count()) - 1;
        QCOMPARE(list->key(row), key);
        QVERIFY(list->isChecked(row));
        const auto customers = window->job()->customers();
        QCOMPARE(customers->Item(customers->Count())->Key(), key);
        QCOMPARE(customers->Item(customers->Count())->Included(), true);
        window->close();
    }
    ZebObjects::Runtime::setApplicationServices(nullptr);
    m_store.reset();

    {
        const auto store = Store::open(m_db, Store::OpenMode::OpenExisting);
        const auto customers = store->openJob(jobId)->customers();
        QCOMPARE(customers->Item(customers->Count())->Key(), key);
        QCOMPARE(customers->Item(customers->Count())->Included(), true);
    }
    // The workstation started again shows the row ticked.
    auto window = openWorkstation();
    QCOMPARE(window->job()->id(), jobId);
    auto* list = control<KeyedListView>(*window, "lsvCustomers");
    const int row = int(list->count()) - 1;
    QCOMPARE(list->key(row), key);
    QVERIFY(list->isChecked(row));
}

void tst_Workstation::theRemarksPageAddsEditsDeletesAndSavesRemarks()
{
    qint64 jobId = 0;
    QStringList expected;
    {
        auto window = openWorkstation();
        jobId = window->job()->id();
        window->show();
        QVERIFY(QTest::qWaitForWindowExposed(window.get()));
        window->showPage(4);
        QCOMPARE(window->pageTitles().at(4), QStringLiteral("Cover Letter Remarks"));
        auto* remarks = control<ZebSubCtl::UserControl>(*window, "ctlRemarks");
        auto* list = remarks->findChild<KeyedListView*>(QStringLiteral("ListView"));
        const auto texts = window->job()->coverLetterRemarks();
        const int before = int(list->count());
        QVERIFY(before >= 2);
        for (const auto& t : texts->Enumerate())
            expected.append(t->Text());

        // Add: type the remark and press Add.
        auto* entry = remarks->findChild<QWidget*>(QStringLiteral("txtNewComment"));
        auto* add = remarks->findChild<QAbstractButton*>(QStringLiteral("cmdAdd"));
        QVERIFY(entry && entry->isVisible());
        QVERIFY(add && add->isVisible());
        auto* typing = entry->focusProxy() ? entry->focusProxy() : entry;
        QTest::mouseClick(typing, Qt::LeftButton);
        ZebTest::typeText(typing, QStringLiteral("Finishes to be confirmed by the architect."));
        QTest::mouseClick(add, Qt::LeftButton);
        QCOMPARE(int(list->count()), before + 1);
        expected.append(QStringLiteral("Finishes to be confirmed by the architect."));

        // Edit the first remark in the dialog a double click opens.
        ZebTest::WhenModal<QDialog> edit([](QDialog& dialog) {
            auto* box = dialog.findChild<QWidget*>(QStringLiteral("txtText"));
            QVERIFY(box);
            auto* typing = box->focusProxy() ? box->focusProxy() : box;
            QTest::keyClick(typing, Qt::Key_A, Qt::ControlModifier);
            ZebTest::typeText(typing, QStringLiteral("Lead times start at approval."));
            QTest::mouseClick(dialog.findChild<QAbstractButton*>(QStringLiteral("cmdOK")),
                              Qt::LeftButton);
        });
        const QPoint first = list->itemRect(0).center();
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, first);
        QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, first);
        QVERIFY(edit.answered());
        QVERIFY(!edit.leftOpen());
        expected[0] = QStringLiteral("Lead times start at approval.");

        // Delete the second remark through its menu.
        const QPoint second = list->itemRect(1).center();
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, second);
        ZebTest::WhenPopup menu([](QMenu& m) { QTest::keyClick(&m, Qt::Key_D); });
        QTest::mouseClick(list->viewport(), Qt::RightButton, {}, second);
        QVERIFY(menu.answered());
        expected.removeAt(1);
        QCOMPARE(int(list->count()), before);

        // Move the new remark up and keep that order with Save Changes.
        list->scrollTo(list->model()->index(int(list->count()) - 1, 0));
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {},
                          list->itemRect(int(list->count()) - 1).center());
        QTest::mouseClick(remarks->findChild<QAbstractButton*>(QStringLiteral("cmdMoveUp")),
                          Qt::LeftButton);
        expected.swapItemsAt(expected.size() - 1, expected.size() - 2);
        auto* save = remarks->findChild<QAbstractButton*>(QStringLiteral("cmdSave"));
        QVERIFY(save && save->isVisible() && save->isEnabled());
        QTest::mouseClick(save, Qt::LeftButton);
        QVERIFY(!save->isEnabled());
        QCOMPARE(textsOf(*texts), expected);
        window->close();
    }
    auto store = reopenedOffice();
    const auto remarks = store->openJob(jobId)->coverLetterRemarks();
    QCOMPARE(textsOf(*remarks), expected);
    QCOMPARE(remarks->IsDirty(), false);
}

namespace {
// Types a date into the General Information page's date editor and confirms it with Enter, as a
// user does; the focus stays in the editor.
QLineEdit* typeDate(Workstation& window, const QString& typed)
{
    window.showPage(0);
    auto* date = control<ZebSubCtl::DateEdit>(window, "pvdIssueDate");
    if (!date)
        return nullptr;
    QTest::mouseClick(date->lineEdit(), Qt::LeftButton);
    QTest::keyClick(date->lineEdit(), Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(date->lineEdit(), typed);
    QTest::keyClick(date->lineEdit(), Qt::Key_Return);
    return date->lineEdit();
}
}  // namespace

void tst_Workstation::aDateConfirmedWithEnterThenQuitIsSaved()
{
    qint64 jobId = 0;
    {
        auto window = openWorkstation();
        jobId = window->job()->id();
        window->show();
        QVERIFY(QTest::qWaitForWindowExposed(window.get()));
        QVERIFY(QTest::qWaitForWindowActive(window.get()));
        QVERIFY(window->job()->submittal()->SubmittalDate() != QStringLiteral("2027-02-15"));
        QLineEdit* edit = typeDate(*window, QStringLiteral("02/15/2027"));
        QVERIFY(edit && edit->hasFocus());
        QCOMPARE(window->saveStatus(),
                 QStringLiteral("Not saved yet: Submittal Date is being edited"));
        QTest::keyClick(edit, Qt::Key_Q, Qt::ControlModifier);
        QVERIFY(!window->isVisible());
    }
    auto store = reopenedOffice();
    QCOMPARE(store->openJob(jobId)->submittal()->SubmittalDate(), QStringLiteral("2027-02-15"));
}

void tst_Workstation::aDateConfirmedWithEnterIsSavedWhenThePageChanges()
{
    auto window = openWorkstation();
    window->show();
    QVERIFY(QTest::qWaitForWindowExposed(window.get()));
    QVERIFY(QTest::qWaitForWindowActive(window.get()));
    QVERIFY(typeDate(*window, QStringLiteral("03/01/2027")));
    QCOMPARE(window->saveStatus(), QStringLiteral("Not saved yet: Submittal Date is being edited"));
    // A click on the next page's tab.
    auto* tabBar = window->findChild<QTabBar*>();
    QVERIFY(tabBar);
    QTest::mouseClick(tabBar, Qt::LeftButton, {}, tabBar->tabRect(1).center());
    QCOMPARE(tabBar->currentIndex(), 1);
    QCOMPARE(window->job()->submittal()->SubmittalDate(), QStringLiteral("2027-03-01"));
    QCOMPARE(window->saveStatus(), QStringLiteral("All changes saved"));

    // And by keyboard: Ctrl+Tab from the page back to the first.
    window->showPage(0);
    QLineEdit* edit = typeDate(*window, QStringLiteral("03/02/2027"));
    QVERIFY(edit);
    QTest::keyClick(edit, Qt::Key_Tab, Qt::ControlModifier);
    QCOMPARE(tabBar->currentIndex(), 1);
    QCOMPARE(window->job()->submittal()->SubmittalDate(), QStringLiteral("2027-03-02"));
    QCOMPARE(window->saveStatus(), QStringLiteral("All changes saved"));
}

void tst_Workstation::aDateConfirmedWithEnterIsSavedWhenTheWindowClosesInTheBackground()
{
    qint64 jobId = 0;
    {
        auto window = openWorkstation();
        jobId = window->job()->id();
        window->show();
        QVERIFY(QTest::qWaitForWindowExposed(window.get()));
        QVERIFY(QTest::qWaitForWindowActive(window.get()));
        QVERIFY(typeDate(*window, QStringLiteral("05/06/2027")));
        // Another window takes the activation; the workstation is closed from outside.
        QWidget other;
        other.resize(200, 100);
        other.show();
        other.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&other));
        QCOMPARE(window->saveStatus(),
                 QStringLiteral("Not saved yet: Submittal Date is being edited"));
        QVERIFY(window->close());
    }
    auto store = reopenedOffice();
    QCOMPARE(store->openJob(jobId)->submittal()->SubmittalDate(), QStringLiteral("2027-05-06"));
}

void tst_Workstation::aDateConfirmedWithEnterIsInTheExportedPackage()
{
    auto window = openWorkstation();
    window->show();
    QVERIFY(QTest::qWaitForWindowExposed(window.get()));
    QVERIFY(QTest::qWaitForWindowActive(window.get()));
    QVERIFY(typeDate(*window, QStringLiteral("04/30/2027")));
    const QString pdf = m_scratch->filePath(QStringLiteral("dated.pdf"));
    QVERIFY(window->exportPackage(pdf));
    QCOMPARE(window->job()->submittal()->SubmittalDate(), QStringLiteral("2027-04-30"));
    QCOMPARE(window->saveStatus(), QStringLiteral("All changes saved"));
    const QString text = pdfText(pdf);
    QVERIFY2(text.contains(QStringLiteral("April 30, 2027")), qPrintable(text.left(2000)));
}

void tst_Workstation::everyPurposeOfTheSampleOfficeShowsWholeInTheOtherBox()
{
    auto window = openWorkstation();
    window->show();
    QVERIFY(QTest::qWaitForWindowExposed(window.get()));
    int shown = 0;
    for (const auto& job : m_store->jobs()) {
        window->openJob(job.id);
        window->showPage(0);
        const auto submittal = window->job()->submittal();
        auto* other = control<QLineEdit>(*window, "txtPurposeOther");
        QVERIFY(other);
        if (submittal->SubmittalPurposeIndex() != 7) {
            QVERIFY(!other->isVisible());
            continue;
        }
        ++shown;
        QVERIFY(other->isVisible());
        QCOMPARE(other->text(), submittal->SubmittalPurpose());
        // With the cursor at the end, the first character still shows at the left edge: the
        // box does not scroll, the whole text fits.
        other->setFocus();
        other->end(false);
        // The box scrolls its text as it paints.
        other->repaint();
        QVERIFY2(other->cursorPositionAt(QPoint(other->contentsRect().left(), other->height() / 2))
                     == 0,
                 qPrintable(QStringLiteral("\"%1\" is cut: %2 pixels wide, the box %3")
                                .arg(other->text())
                                .arg(other->fontMetrics().horizontalAdvance(other->text()))
                                .arg(other->width())));
    }
    QVERIFY(shown > 0);
}

void tst_Workstation::jobListShowsEveryJobAndOpensTheChosenOne()
{
    auto window = openWorkstation();
    const QList<ZebObjects::JobSummary> jobs = m_store->jobs();
    int largeRow = -1;
    for (int i = 0; i < jobs.size(); ++i)
        if (jobs.at(i).lineCount == ZebObjects::SampleOffice::LargeJobLineCount)
            largeRow = i;
    QVERIFY(largeRow >= 0);

    bool shown = false;
    ZebTest::WhenModal<JobListDialog> answer([&](JobListDialog& dialog) {
        QTableWidget* table = dialog.table();
        shown =
            table->rowCount() == jobs.size()
            && table->item(largeRow, 0)->text() == jobs.at(largeRow).number
            && table->item(largeRow, 1)->text() == jobs.at(largeRow).name
            && table->item(largeRow, 2)->text() == QString::number(jobs.at(largeRow).customerCount)
            && table->item(largeRow, 3)->text() == QStringLiteral("744");
        const QRect cell = table->visualItemRect(table->item(largeRow, 1));
        QTest::mouseClick(table->viewport(), Qt::LeftButton, {}, cell.center());
        QTest::mouseClick(dialog.findChild<QAbstractButton*>(QStringLiteral("cmdOpen")),
                          Qt::LeftButton);
    });
    window->show();
    QVERIFY(QTest::qWaitForWindowExposed(window.get()));
    QTest::keyClick(window.get(), Qt::Key_O, Qt::ControlModifier);
    QVERIFY(answer.answered());
    QVERIFY(!answer.leftOpen());
    QVERIFY(shown);
    QCOMPARE(window->job()->id(), jobs.at(largeRow).id);
    auto* lines = control<ZebSubCtl::UserControl>(*window, "ctlLineItems");
    QCOMPARE(int(lines->findChildren<QWidget*>(QStringLiteral("ctlSubLine")).size()), 744);
    QCOMPARE(window->problems(), QStringList());
}

void tst_Workstation::menusCarryTheShortcutsAndTheDiagnosticsPaneCanBeHidden()
{
    auto window = openWorkstation();
    auto* open = window->findChild<QAction*>(QStringLiteral("actOpenJob"));
    auto* quit = window->findChild<QAction*>(QStringLiteral("actQuit"));
    QVERIFY(open && quit);
    QCOMPARE(open->text(), QStringLiteral("&Open Job..."));
    QCOMPARE(open->shortcut(), QKeySequence(Qt::CTRL | Qt::Key_O));
    QCOMPARE(quit->text(), QStringLiteral("&Quit"));
    QCOMPARE(quit->shortcut(), QKeySequence(Qt::CTRL | Qt::Key_Q));

    window->show();
    QVERIFY(QTest::qWaitForWindowExposed(window.get()));
    // A user starts without the diagnostics; View > Diagnostics shows and hides them.
    QVERIFY(!window->diagnosticsDock()->isVisible());
    auto* diagnostics = window->findChild<QAction*>(QStringLiteral("actDiagnostics"));
    QVERIFY(diagnostics->isCheckable());
    diagnostics->trigger();
    QVERIFY(window->diagnosticsDock()->isVisible());
    diagnostics->trigger();
    QVERIFY(!window->diagnosticsDock()->isVisible());
    diagnostics->trigger();
    QVERIFY(window->diagnosticsDock()->isVisible());

    QTest::keyClick(window.get(), Qt::Key_Q, Qt::ControlModifier);
    QVERIFY(!window->isVisible());
}

void tst_Workstation::statusBarShowsTheJobAndTheSaveState()
{
    auto window = openWorkstation();
    const QString job =
        QStringLiteral("Job %1 %2").arg(window->job()->number(), window->job()->name());
    QCOMPARE(window->jobStatus(), job);
    QCOMPARE(window->saveStatus(), QStringLiteral("All changes saved"));
    QCOMPARE(window->windowTitle(), QStringLiteral("Submittal Workbench - ") + job);
}

void tst_Workstation::pageControlFollowsTheWindowSize()
{
    auto window = openWorkstation();
    window->resize(900, 700);
    window->show();
    QVERIFY(QTest::qWaitForWindowExposed(window.get()));
    window->showPage(3);
    auto* paragraphs = control<ZebSubCtl::UserControl>(*window, "ctlParagraphs");
    const QWidget* page = paragraphs->parentWidget();
    QCOMPARE(paragraphs->geometry(), page->rect().adjusted(10, 10, -10, -10));
    const int width = paragraphs->width();
    window->resize(1200, 800);
    QTRY_VERIFY(paragraphs->width() > width);
    QCOMPARE(paragraphs->geometry(), page->rect().adjusted(10, 10, -10, -10));
}

void tst_Workstation::windowGeometryAndTheLastJobAreRememberedBetweenRuns()
{
    {
        auto window = openWorkstation(true);
        QCOMPARE(window->job()->name(), QStringLiteral("Riverside Medical Office Building"));
        window->show();
        QVERIFY(QTest::qWaitForWindowExposed(window.get()));
        window->resize(777, 555);
        QTRY_COMPARE(window->size(), QSize(777, 555));
        for (const auto& job : m_store->jobs())
            if (job.lineCount == ZebObjects::SampleOffice::LargeJobLineCount)
                window->openJob(job.id);
        window->close();
    }
    auto window = openWorkstation(true);
    QCOMPARE(window->size(), QSize(777, 555));
    QCOMPARE(window->job()->lineItems()->Count(), ZebObjects::SampleOffice::LargeJobLineCount);
}

void tst_Workstation::unregisteredControlLeavesItsPageOut()
{
    m_store = OfficeFile::resetSample(m_db);
    ZebObjects::Runtime::setApplicationServices(m_store->applicationServices());
    const FormDescription form = FormDescription::fromJson(R"({
        "title": "T", "width": 600, "height": 400,
        "pages": [
            {"title": "Later", "controls": [{"identifier": "ZebSubmittalControls.ctlNotYet",
             "name": "later", "left": 150, "top": 150, "width": 3000, "height": 3000}]},
            {"title": "Bill of Materials", "controls": [{"identifier": "ZebSubmittalControls.ctlBOMCriteria",
             "name": "ctlBOMCriteria", "left": 150, "top": 150, "width": 7200, "height": 6540,
             "bind": {"BOM": "bom"}}]}]})");
    Workstation::Options options;
    options.remember = false;
    Workstation window(form, m_store, options);
    window.openJob(window.startingJob());
    // The workstation's own pages follow the form's.
    QCOMPARE(window.pageTitles(),
             (QStringList{QStringLiteral("Bill of Materials"), QStringLiteral("Line Items Editor"),
                          QStringLiteral("Recipients"), QStringLiteral("History")}));
    QCOMPARE(window.problems(),
             QStringList{QStringLiteral("later: Cannot create control: no control is registered as "
                                        "\"ZebSubmittalControls.ctlNotYet\"")});
}

void tst_Workstation::everyInteractiveElementOfTheWindowAndTheJobListHasAName()
{
    auto window = openWorkstation();
    // Every page, not only the one shown at the open.
    window->bindAllPages();
    window->show();
    QVERIFY(QTest::qWaitForWindowExposed(window.get()));
    QStringList found;
    unnamed(QAccessible::queryAccessibleInterface(window.get()), found);
    QVERIFY2(found.isEmpty(), qPrintable(found.join(QLatin1Char('\n'))));

    JobListDialog dialog(m_store->jobs());
    dialog.show();
    QVERIFY(QTest::qWaitForWindowExposed(&dialog));
    unnamed(QAccessible::queryAccessibleInterface(&dialog), found);
    QVERIFY2(found.isEmpty(), qPrintable(found.join(QLatin1Char('\n'))));
}

void tst_Workstation::exportWritesTheSamplePackageWithoutAWindow()
{
    const QString pdf = m_scratch->filePath(QStringLiteral("out.pdf"));
    const Run r = run({QStringLiteral("--export"), pdf});
    QCOMPARE(r.code, 0);
    QVERIFY2(QFileInfo::exists(defaultOffice()), qPrintable(r.err));
    QVERIFY2(QFileInfo(pdf).size() > 0, qPrintable(r.err));
    const QString text = pdfText(pdf);
    QVERIFY2(text.contains(QStringLiteral("Riverside Medical Office Building")), qPrintable(text));
    QVERIFY(r.out.startsWith(pdf + QStringLiteral(": ")));
}

void tst_Workstation::exportOfAJobChosenByNumber()
{
    auto store = OfficeFile::resetSample(m_db);
    ZebObjects::JobSummary small;
    for (const auto& job : store->jobs())
        if (small.id == 0 || job.lineCount < small.lineCount)
            small = job;
    store.reset();
    const QString pdf = m_scratch->filePath(QStringLiteral("small.pdf"));
    const Run r = run({QStringLiteral("--db"), m_db, QStringLiteral("--job"), small.number,
                       QStringLiteral("--export"), pdf});
    QCOMPARE(r.code, 0);
    const QString text = pdfText(pdf);
    QVERIFY2(text.contains(small.name), qPrintable(text));
    QVERIFY(!text.contains(QStringLiteral("Riverside Medical Office Building")));
}

void tst_Workstation::exportOfAJobTheOfficeLacksIsAClearMessage()
{
    OfficeFile::resetSample(m_db).reset();
    const QString pdf = m_scratch->filePath(QStringLiteral("none.pdf"));
    const Run r = run({QStringLiteral("--db"), m_db, QStringLiteral("--job"),
                       QStringLiteral("0000"), QStringLiteral("--export"), pdf});
    QCOMPARE(r.code, 1);
    QCOMPARE(r.err.trimmed(), QStringLiteral("zeb-workbench: the office \"%1\" has no job numbered "
                                             "\"0000\"")
                                  .arg(m_db));
    QVERIFY(!QFileInfo::exists(pdf));
}

void tst_Workstation::exportFromTheWindowWritesTheOpenJobsPackage()
{
    auto window = openWorkstation();
    auto* action = window->findChild<QAction*>(QStringLiteral("actExportPackage"));
    QVERIFY(action);
    QCOMPARE(action->text(), QStringLiteral("&Export Package..."));
    const QString pdf = m_scratch->filePath(QStringLiteral("window.pdf"));
    QVERIFY(window->exportPackage(pdf));
    QVERIFY(pdfText(pdf).contains(window->job()->name()));
}

void tst_Workstation::exportFromTheWindowCanBeCancelledAndLeavesNoFile()
{
    m_store = OfficeFile::resetSample(m_db);
    auto options = ZebTest::workstationOptions();
    options.exportProgressDelayMs = 0;
    const auto owned = ZebTest::openWorkstation(m_store, options);
    Workstation& window = *owned;
    qint64 large = 0;
    for (const auto& job : m_store->jobs())
        if (job.lineCount == ZebObjects::SampleOffice::LargeJobLineCount)
            large = job.id;
    window.openJob(large);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    ZebTest::WhenModal<QProgressDialog> answer([](QProgressDialog& dialog) {
        QTest::mouseClick(dialog.findChild<QAbstractButton*>(), Qt::LeftButton);
    });
    const QString pdf = m_scratch->filePath(QStringLiteral("cancelled.pdf"));
    QVERIFY(!window.exportPackage(pdf));
    QVERIFY(answer.answered());
    QVERIFY(!QFileInfo::exists(pdf));
    QCOMPARE(QDir(m_scratch->path()).entryList({QStringLiteral("*.pdf*")}, QDir::Files),
             QStringList());
}

void tst_Workstation::exportMenuAsksForTheFileWritesItAndOffersToOpenIt()
{
    auto window = openWorkstation();
    window->show();
    QVERIFY(QTest::qWaitForWindowExposed(window.get()));
    const QString pdf = m_scratch->filePath(QStringLiteral("menu.pdf"));
    QString offer;
    ZebTest::WhenModal<QFileDialog> file([&](QFileDialog& dialog) {
        // The folder is chosen in the dialog, the name typed into its name box.
        dialog.setDirectory(m_scratch->path());
        auto* name = dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
        QVERIFY(name);
        name->selectAll();
        QTest::keyClicks(name, QStringLiteral("menu.pdf"));
        auto* buttons = dialog.findChild<QDialogButtonBox*>(QStringLiteral("buttonBox"));
        QVERIFY(buttons);
        QTest::mouseClick(buttons->button(QDialogButtonBox::Save), Qt::LeftButton);
    });
    ZebTest::WhenModal<QMessageBox> question([&](QMessageBox& box) {
        offer = box.text();
        // No viewer is started from a test.
        QTest::mouseClick(box.button(QMessageBox::No), Qt::LeftButton);
    });
    QTest::keyClick(window.get(), Qt::Key_E, Qt::ControlModifier);
    QVERIFY(file.answered());
    QVERIFY(!file.leftOpen());
    QVERIFY(question.answered());
    QCOMPARE(offer, QStringLiteral("The package is written to %1.\nOpen it now?").arg(pdf));
    QVERIFY(pdfText(pdf).contains(QStringLiteral("Riverside Medical Office Building")));
}

void tst_Workstation::openingThePackageWithoutAPdfViewerSaysSoAndShowsTheFolder()
{
    m_store = OfficeFile::resetSample(m_db);
    QStringList opened;
    auto options = ZebTest::workstationOptions();
    // A machine without a PDF viewer or a file manager.
    options.openFile = [&](const QString& path) {
        opened.append(path);
        return false;
    };
    const auto owned = ZebTest::openWorkstation(m_store, options);
    Workstation& window = *owned;
    window.openJob(window.startingJob());
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    const QString pdf = m_scratch->filePath(QStringLiteral("viewer.pdf"));
    ZebTest::WhenModal<QFileDialog> file([&](QFileDialog& dialog) {
        dialog.setDirectory(m_scratch->path());
        auto* name = dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
        QVERIFY(name);
        name->selectAll();
        QTest::keyClicks(name, QStringLiteral("viewer.pdf"));
        auto* buttons = dialog.findChild<QDialogButtonBox*>(QStringLiteral("buttonBox"));
        QTest::mouseClick(buttons->button(QDialogButtonBox::Save), Qt::LeftButton);
    });
    QString told;
    QString title;
    QMessageBox::Icon icon = QMessageBox::NoIcon;
    // Yes to the question; the note that follows is answered once it is up.
    std::optional<ZebTest::WhenModal<QMessageBox>> note;
    ZebTest::WhenModal<QMessageBox> question([&](QMessageBox& box) {
        QCOMPARE(box.text(),
                 QStringLiteral("The package is written to %1.\nOpen it now?").arg(pdf));
        note.emplace([&](QMessageBox& b) {
            told = b.text();
            title = b.windowTitle();
            icon = b.icon();
            QTest::mouseClick(b.button(QMessageBox::Ok), Qt::LeftButton);
        });
        QTest::mouseClick(box.button(QMessageBox::Yes), Qt::LeftButton);
    });
    QTest::keyClick(&window, Qt::Key_E, Qt::ControlModifier);
    QVERIFY(file.answered());
    QVERIFY(question.answered());
    QVERIFY(note && note->answered());
    QCOMPARE(told, QStringLiteral("There is no program on this computer that shows PDF files.\n"
                                  "The package is in the folder %1.")
                       .arg(QDir::toNativeSeparators(m_scratch->path())));
    QCOMPARE(title, QStringLiteral("Export Package"));
    QCOMPARE(icon, QMessageBox::Information);
    QCOMPARE(opened, (QStringList{pdf, QDir::toNativeSeparators(m_scratch->path())}));
    QVERIFY(QFileInfo::exists(pdf));
}

void tst_Workstation::aStartupFailureShowsTheSameMessageInADialogWhenAsked()
{
    const QString message =
        QStringLiteral("The database file \"/nowhere/office.sqlite\" does not exist");
    QString text, title;
    QMessageBox::Icon icon = QMessageBox::NoIcon;
    ZebTest::WhenModal<QMessageBox> box([&](QMessageBox& b) {
        text = b.text();
        title = b.windowTitle();
        icon = b.icon();
        QTest::mouseClick(b.button(QMessageBox::Ok), Qt::LeftButton);
    });
    std::FILE* terminal = std::tmpfile();
    QVERIFY(terminal);
    QCOMPARE(StartupFailure::report(message, true, terminal), 1);
    QVERIFY(box.answered());
    QVERIFY(!box.leftOpen());
    QCOMPARE(text, message);
    QCOMPARE(title, QStringLiteral("Submittal Workbench"));
    QCOMPARE(icon, QMessageBox::Critical);
    std::rewind(terminal);
    char line[512] = {};
    QVERIFY(std::fgets(line, sizeof line, terminal));
    std::fclose(terminal);
    QCOMPARE(QString::fromUtf8(line),
             QStringLiteral("zeb-workbench: ") + message + QLatin1Char('\n'));
}

void tst_Workstation::withoutADisplayAStartupFailureIsOneLineAndNoDialog()
{
    // The tests run offscreen: no user could see a window.
    QVERIFY(!StartupFailure::hasDisplay());
    std::FILE* terminal = std::tmpfile();
    QVERIFY(terminal);
    QCOMPARE(StartupFailure::report(QStringLiteral("cannot write \"x.png\""), false, terminal), 1);
    QVERIFY(!QApplication::activeModalWidget());
    std::rewind(terminal);
    char text[512] = {};
    const size_t n = std::fread(text, 1, sizeof text - 1, terminal);
    std::fclose(terminal);
    QCOMPARE(QString::fromUtf8(text, qsizetype(n)),
             QStringLiteral("zeb-workbench: cannot write \"x.png\"\n"));
    // The workbench itself, offscreen with a missing office, exits at once with that one line.
    const Run r =
        run({QStringLiteral("--db"), m_scratch->filePath(QStringLiteral("missing.sqlite"))});
    QCOMPARE(r.code, 1);
    QCOMPARE(r.err.count(QLatin1Char('\n')), 0);
    QVERIFY(r.err.startsWith(QStringLiteral("zeb-workbench: ")));
}

QTEST_MAIN(tst_Workstation)
#include "tst_workstation.moc"
