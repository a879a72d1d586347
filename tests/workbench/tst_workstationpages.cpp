// Opening a job binds only the page the user sees; every other page is bound after its first
// paint while the user is idle, one page per pass of the event loop, or sooner when it is shown or
// something reads it (an export, the saved design, the editor, the history), and then shows the
// job's true values. Choices made on one page survive switching jobs before the other pages were
// shown.

#include "contracts/coverletter.h"
#include "contracts/customers.h"
#include "contracts/recipients.h"
#include "contracts/runtime.h"
#include "contracts/submittal.h"
#include "formdescription.h"
#include "frame/usercontrol.h"
#include "historypage.h"
#include "lineitemeditor.h"
#include "officefile.h"
#include "platform/keyedlistview.h"
#include "store/store.h"
#include "store/storecustomers.h"
#include "store/storehistory.h"
#include "store/storejob.h"
#include "store/storesubmittal.h"
#include "store/storelineitems.h"
#include "support/testsupport.h"
#include "workstation.h"

#include <QAbstractButton>
#include <QAction>
#include <QDockWidget>
#include <QLabel>
#include <QPointer>
#include <QScrollArea>
#include <QSignalSpy>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QTabWidget>
#include <QTableView>
#include <QTemporaryDir>
#include <QTest>
#include <QTreeWidget>

#include <functional>

using ZebObjects::Store;

namespace {

const QString kSampleJob = QStringLiteral("24-0131");
const QString kLargeJob = QStringLiteral("25-0009");
const QString kOtherJob = QStringLiteral("24-0117");

// Records how many pages were bound when the page the user sees painted for the first time.
class FirstPaintProbe : public QObject {
public:
    explicit FirstPaintProbe(Workstation& window) : m_window(window)
    {
        qApp->installEventFilter(this);
    }
    ~FirstPaintProbe() override { qApp->removeEventFilter(this); }
    bool painted() const { return m_boundAtPaint >= 0; }
    int boundAtPaint() const { return m_boundAtPaint; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() != QEvent::Paint || painted() || !watched->isWidgetType())
            return false;
        auto* tabs = m_window.findChild<QTabWidget*>(QStringLiteral("tabPages"));
        QWidget* page = tabs->currentWidget();
        auto* widget = static_cast<QWidget*>(watched);
        if (page && (page == widget || page->isAncestorOf(widget))) {
            m_boundAtPaint = 0;
            for (int i = 0; i < m_window.pageCount(); ++i)
                m_boundAtPaint += m_window.isPageBound(i) ? 1 : 0;
        }
        return false;
    }

private:
    Workstation& m_window;
    int m_boundAtPaint = -1;
};

int boundPages(const Workstation& window)
{
    int bound = 0;
    for (int i = 0; i < window.pageCount(); ++i)
        bound += window.isPageBound(i) ? 1 : 0;
    return bound;
}

// Runs the event loop one pass at a time until done() holds, for at most a number of passes
// (never a time): each pass binds at most one page.
bool runEventsUntil(const std::function<bool()>& done)
{
    for (int pass = 0; pass < 200 && !done(); ++pass)
        QCoreApplication::processEvents();
    return done();
}

bool runUntilIdle(Workstation& window)
{
    return runEventsUntil([&window] { return window.allPagesBound(); });
}

}  // namespace

class tst_WorkstationPages : public QObject {
    Q_OBJECT
private slots:
    void initTestCase();
    void init();
    void cleanup();

    void onlyThePageTheUserSeesIsBoundWhenAJobOpens();
    void thePageOpenBeforeTheJobIsTheOneBound();
    void aPageShowsTheJobsValuesTheMomentItIsFirstShown();
    void readersBindThePageTheyRead();
    void theSavedDesignIsTheSameWhetherOrNotThePagesWereShown();
    void exportRightAfterOpeningGivesThePackageOfEveryPageVisited();
    void choicesSurviveSwitchingJobsBeforeOtherPagesWereShown();
    void aChoiceOnThePageBoundAtTheOpenReachesTheStore();
    void ctrlTabToAPageNotBoundYetLandsOnItsFirstControl();
    void aPageBoundLaterTellsItsProblems();
    void theCutSheetPanelIsMadeWhenItsDockShows();
    void everyPageIsBoundToTheOpenJobOnceTheUserIsIdle();
    void aJobOpenedDuringTheIdleWorkBindsOnlyItsOwnPages();
    void theIdleWorkWaitsWhileTheWindowIsClosed();
    void aPageFailingInIdleTimeIsReportedOnce();
    void ctrlTabDuringTheIdleWorkLandsOnTheNextPageBoundAndPainted();
    void theCutSheetsAreReadInIdleTimeAndAgainAfterTheLinesChange();
    void cutSheetsThatCannotBeReadInIdleTimeWaitForTheDock();

private:
    std::unique_ptr<Workstation> open(const QString& number, int page = 0);
    QTabWidget* tabsOf(Workstation& window) const
    {
        return window.findChild<QTabWidget*>(QStringLiteral("tabPages"));
    }
    int pageOf(Workstation& window, const QString& title) const
    {
        return int(window.pageTitles().indexOf(title));
    }
    qint64 job(const QString& number) const { return Workstation::jobByNumber(*m_store, number); }
    QString exportText(Workstation& window, const QString& name);

    QTemporaryDir m_home;
    std::unique_ptr<QTemporaryDir> m_scratch;
    std::shared_ptr<Store> m_store;
};

void tst_WorkstationPages::initTestCase()
{
    QVERIFY(m_home.isValid());
    qputenv("XDG_DATA_HOME", m_home.filePath(QStringLiteral("data")).toUtf8());
    qputenv("XDG_CONFIG_HOME", m_home.filePath(QStringLiteral("config")).toUtf8());
    QCoreApplication::setOrganizationName(QStringLiteral("ZebSubmittalControls"));
    QCoreApplication::setApplicationName(QStringLiteral("zeb-workbench"));
}

void tst_WorkstationPages::init()
{
    m_scratch = std::make_unique<QTemporaryDir>();
    QVERIFY(m_scratch->isValid());
    m_store = OfficeFile::resetSample(m_scratch->filePath(QStringLiteral("office.sqlite")));
    ZebObjects::Runtime::setApplicationServices(m_store->applicationServices());
}

void tst_WorkstationPages::cleanup()
{
    ZebObjects::Runtime::setApplicationServices(nullptr);
    m_store.reset();
    m_scratch.reset();
}

std::unique_ptr<Workstation> tst_WorkstationPages::open(const QString& number, int page)
{
    Workstation::Options options;
    options.remember = false;
    options.exportProgressDelayMs = 60000;
    auto window = std::make_unique<Workstation>(
        FormDescription::fromFile(QStringLiteral(":/forms/workbench.json")), m_store, options);
    window->resize(1100, 800);
    window->show();
    if (!QTest::qWaitForWindowExposed(window.get()))
        qFatal("workstation not shown");
    if (page != 0) {
        // The page stays open from job to job: a job opened first puts it there.
        window->openJob(job(kOtherJob));
        window->showPage(page);
    }
    window->openJob(job(number));
    return window;
}

QString tst_WorkstationPages::exportText(Workstation& window, const QString& name)
{
    const QString path = m_scratch->filePath(name);
    if (!window.exportPackage(path))
        return {};
    return ZebTest::pdfText(path);
}

void tst_WorkstationPages::onlyThePageTheUserSeesIsBoundWhenAJobOpens()
{
    auto window = open(kLargeJob);
    FirstPaintProbe probe(*window);
    QCOMPARE(window->pageCount(), 11);
    QCOMPARE(tabsOf(*window)->currentIndex(), 0);
    QVERIFY(window->isPageBound(0));
    for (int i = 1; i < window->pageCount(); ++i)
        QVERIFY2(!window->isPageBound(i), qPrintable(window->pageTitles().at(i)));
    // No control of a page not shown exists yet: nothing can read one that is not bound.
    QVERIFY(window->findChild<ZebSubCtl::UserControl*>(QStringLiteral("ctlGeneralInfo")));
    QVERIFY(!window->findChild<ZebSubCtl::UserControl*>(QStringLiteral("ctlLineItems")));
    QVERIFY(!window->findChild<LineItemEditor*>());
    QVERIFY(!window->findChild<HistoryPage*>());
    QCOMPARE(window->controls().size(), 1);
    QCOMPARE(window->problems(), QStringList());
    // Every page is there to choose, named as before.
    QCOMPARE(window->pageTitles(),
             (QStringList{QStringLiteral("General Information"), QStringLiteral("Customers"),
                          QStringLiteral("Cover Letter Options"),
                          QStringLiteral("Cover Letter Paragraphs"),
                          QStringLiteral("Cover Letter Remarks"),
                          QStringLiteral("Bill of Materials"), QStringLiteral("Labels"),
                          QStringLiteral("Line Items"), QStringLiteral("Line Items Editor"),
                          QStringLiteral("Recipients"), QStringLiteral("History")}));
    auto* editorPage = qobject_cast<QScrollArea*>(tabsOf(*window)->widget(8));
    QVERIFY(editorPage);
    QCOMPARE(editorPage->objectName(), QStringLiteral("scrLineItemsEditor"));
    QCOMPARE(editorPage->accessibleName(), QStringLiteral("Line Items Editor page"));
    // The other pages wait for the first paint of the open one.
    QVERIFY(runEventsUntil([&probe] { return probe.painted(); }));
    QCOMPARE(probe.boundAtPaint(), 1);
}

void tst_WorkstationPages::thePageOpenBeforeTheJobIsTheOneBound()
{
    auto window = open(kLargeJob, 8);
    QCOMPARE(tabsOf(*window)->currentIndex(), 8);
    for (int i = 0; i < window->pageCount(); ++i)
        QCOMPARE(window->isPageBound(i), i == 8);
    auto* editor = window->findChild<LineItemEditor*>();
    QVERIFY(editor);
    QCOMPARE(editor->model()->rowCount(), 744);
    QVERIFY(!window->findChild<ZebSubCtl::UserControl*>(QStringLiteral("ctlGeneralInfo")));
}

void tst_WorkstationPages::aPageShowsTheJobsValuesTheMomentItIsFirstShown()
{
    auto window = open(kLargeJob);
    const auto job = window->job();

    // The customers page lists the job's customers.
    window->showPage(pageOf(*window, QStringLiteral("Customers")));
    QVERIFY(window->isPageBound(1));
    auto* customers = window->findChild<ZebSubCtl::KeyedListView*>(QStringLiteral("lsvCustomers"));
    QVERIFY(customers);
    QCOMPARE(customers->count(), int(job->customers()->Count()));
    QVERIFY(customers->count() > 0);

    // The cover letter options show the job's carbon copy choice.
    window->showPage(pageOf(*window, QStringLiteral("Cover Letter Options")));
    auto* copies = window->findChild<QAbstractButton*>(QStringLiteral("chkIncludeCC"));
    QVERIFY(copies);
    QCOMPARE(copies->isChecked(), job->submittal()->CoverLetter()->IncludeCarbonCopy());

    // The editor holds every line, the display page as many as it shows.
    window->showPage(pageOf(*window, QStringLiteral("Line Items Editor")));
    auto* editor = window->findChild<LineItemEditor*>();
    QVERIFY(editor);
    QCOMPARE(editor->model()->rowCount(), 744);
    QCOMPARE(editor->model()->index(743, 0).isValid(), true);
    window->showPage(pageOf(*window, QStringLiteral("Line Items")));
    QCOMPARE(window->findChildren<QWidget*>(QStringLiteral("ctlSubLine")).size(), 744);

    // The history lists what was issued.
    window->showPage(pageOf(*window, QStringLiteral("History")));
    auto* revisions = window->findChild<QTreeWidget*>(QStringLiteral("lsvRevisions"));
    QVERIFY(revisions);
    QCOMPARE(revisions->topLevelItemCount(), int(job->history()->revisions().size()));
    // The pages not shown are still waiting.
    for (const char* title : {"Cover Letter Paragraphs", "Cover Letter Remarks",
                              "Bill of Materials", "Labels", "Recipients"})
        QVERIFY2(!window->isPageBound(pageOf(*window, QLatin1String(title))), title);
}

void tst_WorkstationPages::readersBindThePageTheyRead()
{
    auto window = open(kLargeJob);
    const int editorPage = pageOf(*window, QStringLiteral("Line Items Editor"));
    const int historyPage = pageOf(*window, QStringLiteral("History"));
    QVERIFY(!window->isPageBound(editorPage));
    LineItemEditor* editor = window->lineItemEditor();
    QVERIFY(editor);
    QVERIFY(window->isPageBound(editorPage));
    QCOMPARE(editor->model()->rowCount(), 744);
    QVERIFY(!window->isPageBound(historyPage));
    QVERIFY(window->historyPage());
    QVERIFY(window->isPageBound(historyPage));
    // The page the user sees stays the one open.
    QCOMPARE(tabsOf(*window)->currentIndex(), 0);
    window->bindAllPages();
    for (int i = 0; i < window->pageCount(); ++i)
        QVERIFY(window->isPageBound(i));
    QCOMPARE(window->controls().size(), 8);
    QCOMPARE(tabsOf(*window)->currentIndex(), 0);
}

void tst_WorkstationPages::theSavedDesignIsTheSameWhetherOrNotThePagesWereShown()
{
    auto window = open(kSampleJob);
    QVERIFY(!window->isPageBound(3));
    const QByteArray unseen = window->currentDesignJson();
    // Reading the design bound every page, as reading any control does.
    for (int i = 0; i < window->pageCount(); ++i)
        QVERIFY(window->isPageBound(i));
    auto shown = open(kSampleJob);
    for (int i = 0; i < shown->pageCount(); ++i)
        shown->showPage(i);
    QCOMPARE(unseen, shown->currentDesignJson());
    QVERIFY(unseen.contains("\"txtNewComment\": \"New remark\""));
}

void tst_WorkstationPages::exportRightAfterOpeningGivesThePackageOfEveryPageVisited()
{
    auto window = open(kSampleJob);
    // Before the idle work has bound any other page.
    QCOMPARE(boundPages(*window), 1);
    const QString first = exportText(*window, QStringLiteral("first.pdf"));
    QVERIFY(first.contains(QStringLiteral("Job 24-0131")));
    // Showing every page writes nothing: the package stays the same.
    for (int i = 0; i < window->pageCount(); ++i) {
        window->showPage(i);
        QApplication::processEvents();
    }
    QCOMPARE(exportText(*window, QStringLiteral("visited.pdf")), first);
    // So does a window whose pages were all shown before its first export.
    auto other = open(kSampleJob);
    for (int i = 0; i < other->pageCount(); ++i)
        other->showPage(i);
    QCOMPARE(exportText(*other, QStringLiteral("other.pdf")), first);
}

void tst_WorkstationPages::choicesSurviveSwitchingJobsBeforeOtherPagesWereShown()
{
    auto window = open(kSampleJob);
    const QString before = exportText(*window, QStringLiteral("before.pdf"));
    QVERIFY(!before.isEmpty());
    const qsizetype letters = before.count(QStringLiteral("Sincerely,"));
    QCOMPARE(letters, 1);
    // One letter per recipient, on the cover letter options, then another job before any
    // other page is shown.
    const int options = pageOf(*window, QStringLiteral("Cover Letter Options"));
    window->showPage(options);
    auto* each = window->findChild<QAbstractButton*>(QStringLiteral("optMultipleCoverLetters"));
    QVERIFY(each);
    QVERIFY(!each->isChecked());
    QTest::mouseClick(each, Qt::LeftButton, {}, QPoint(8, each->height() / 2));
    QVERIFY(each->isChecked());
    // And the bill of materials off, on the first page.
    window->showPage(0);
    auto* bom = window->findChild<QAbstractButton*>(QStringLiteral("chkBOM"));
    QVERIFY(bom);
    QVERIFY(bom->isChecked());
    ZebTest::clickCheckBox(bom);
    QVERIFY(!bom->isChecked());

    window->openJob(job(kOtherJob));
    window->openJob(job(kSampleJob));
    QVERIFY(!window->isPageBound(options));
    // What the package prints, without showing the pages again: a letter for each recipient,
    // no bill of materials.
    const QString after = exportText(*window, QStringLiteral("after.pdf"));
    QVERIFY(!after.isEmpty());
    QCOMPARE(after.count(QStringLiteral("Sincerely,")),
             qsizetype(window->job()->submittal()->Recipients()->Count()));
    QVERIFY(after.count(QStringLiteral("Sincerely,")) > letters);
    QVERIFY(before.contains(QStringLiteral("BILL OF MATERIALS"), Qt::CaseInsensitive));
    QVERIFY(!after.contains(QStringLiteral("BILL OF MATERIALS"), Qt::CaseInsensitive));
    // And what the pages show once they are shown.
    window->showPage(options);
    QVERIFY(window->findChild<QAbstractButton*>(QStringLiteral("optMultipleCoverLetters"))
                ->isChecked());
    window->showPage(0);
    QVERIFY(!window->findChild<QAbstractButton*>(QStringLiteral("chkBOM"))->isChecked());
}

void tst_WorkstationPages::aChoiceOnThePageBoundAtTheOpenReachesTheStore()
{
    // The cover letter options open with the job: the workstation keeps the carbon copy choice
    // of the page bound at the open as of one bound later.
    const int options = 2;
    auto window = open(kSampleJob, options);
    QCOMPARE(window->pageTitles().at(options), QStringLiteral("Cover Letter Options"));
    QVERIFY(window->isPageBound(options));
    auto* copies = window->findChild<QAbstractButton*>(QStringLiteral("chkIncludeCC"));
    QVERIFY(copies);
    const bool was = copies->isChecked();
    ZebTest::clickCheckBox(copies);
    QCOMPARE(m_store->openJob(job(kSampleJob))->submittal()->CoverLetter()->IncludeCarbonCopy(),
             !was);
}

void tst_WorkstationPages::ctrlTabToAPageNotBoundYetLandsOnItsFirstControl()
{
    auto window = open(kSampleJob);
    window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(window.get()));
    window->focusPage();
    QWidget* first = QApplication::focusWidget();
    QVERIFY(first && tabsOf(*window)->widget(0)->isAncestorOf(first));
    QVERIFY(!window->isPageBound(1));
    QTest::keyClick(first, Qt::Key_Tab, Qt::ControlModifier);
    QCOMPARE(tabsOf(*window)->currentIndex(), 1);
    QVERIFY(window->isPageBound(1));
    QWidget* focused = QApplication::focusWidget();
    QVERIFY(focused);
    QVERIFY(tabsOf(*window)->widget(1)->isAncestorOf(focused));
    QCOMPARE(focused->accessibleName(), QStringLiteral("Name or keyword"));
}

void tst_WorkstationPages::aPageBoundLaterTellsItsProblems()
{
    const FormDescription form = FormDescription::fromJson(R"({
        "title": "T", "width": 600, "height": 400,
        "pages": [
            {"title": "Bill of Materials", "controls": [{"identifier": "ZebSubmittalControls.ctlBOMCriteria",
             "name": "ctlBOMCriteria", "left": 150, "top": 150, "width": 7200, "height": 6540,
             "bind": {"BOM": "bom"}}]},
            {"title": "Labels", "controls": [{"identifier": "ZebSubmittalControls.ctlLabelCriteria",
             "name": "ctlLabels", "left": 150, "top": 150, "width": 7200, "height": 6540,
             "bind": {"Labels": "noSuchObject"}}]}]})");
    Workstation::Options options;
    options.remember = false;
    Workstation window(form, m_store, options);
    QSignalSpy told(&window, &WorkbenchWindow::problemsFound);
    window.openJob(window.startingJob());
    QCOMPARE(window.problems(), QStringList());
    QCOMPARE(told.count(), 0);
    window.showPage(1);
    const QStringList expected{
        QStringLiteral("ctlLabels.Labels: There is no sample object named \"noSuchObject\"")};
    QCOMPARE(window.problems(), expected);
    QCOMPARE(told.count(), 1);
    QCOMPARE(told.at(0).at(0).toStringList(), expected);
    // The page is there with its control, unbound as the form asked.
    QVERIFY(window.findChild<ZebSubCtl::UserControl*>(QStringLiteral("ctlLabels")));
}

void tst_WorkstationPages::theCutSheetPanelIsMadeWhenItsDockShows()
{
    auto window = open(kSampleJob);
    auto* dock = window->findChild<QDockWidget*>(QStringLiteral("dockCutSheets"));
    QVERIFY(dock);
    QVERIFY(!dock->isVisible());
    QVERIFY(!dock->findChild<QTreeWidget*>(QStringLiteral("tvwCutSheets")));
    // From View > Cut Sheets on any page, for the open job.
    window->findChild<QAction*>(QStringLiteral("actCutSheets"))->trigger();
    QVERIFY(dock->isVisible());
    auto* tree = dock->findChild<QTreeWidget*>(QStringLiteral("tvwCutSheets"));
    QVERIFY(tree);
    QVERIFY(tree->topLevelItemCount() > 0);
    QVERIFY(tree->topLevelItem(0)->text(0).startsWith(QStringLiteral("Type ")));
    // Another job while the dock shows gets its own panel at once.
    window->openJob(job(kLargeJob));
    window->showPage(pageOf(*window, QStringLiteral("Line Items")));
    QVERIFY(dock->isVisible());
    QVERIFY(dock->findChild<QTreeWidget*>(QStringLiteral("tvwCutSheets")));
    // And one opened on another page waits until the dock shows beside the Line Items page.
    window->showPage(0);
    window->openJob(job(kSampleJob));
    QVERIFY(!dock->isVisible());
    QVERIFY(!dock->findChild<QTreeWidget*>(QStringLiteral("tvwCutSheets")));
    window->showPage(pageOf(*window, QStringLiteral("Line Items")));
    QVERIFY(dock->isVisible());
    QVERIFY(dock->findChild<QTreeWidget*>(QStringLiteral("tvwCutSheets")));
}

void tst_WorkstationPages::everyPageIsBoundToTheOpenJobOnceTheUserIsIdle()
{
    auto window = open(kLargeJob);
    QSignalSpy ready(window.get(), &WorkbenchWindow::pagesReady);
    QCOMPARE(boundPages(*window), 1);
    QVERIFY(runUntilIdle(*window));
    for (int i = 0; i < window->pageCount(); ++i)
        QVERIFY2(window->isPageBound(i), qPrintable(window->pageTitles().at(i)));
    QCOMPARE(ready.count(), 1);
    // Each page once, every control of the form and the workstation's own pages.
    QCOMPARE(window->controls().size(), 8);
    QCOMPARE(window->problems(), QStringList());
    // Bound to the job that is open, without being shown: the Line Items page has its lines,
    // the editor every line, the customers and the history the job's own.
    const auto job = window->job();
    QCOMPARE(job->number(), kLargeJob);
    QCOMPARE(window->findChildren<QWidget*>(QStringLiteral("ctlSubLine")).size(), 744);
    auto* editor = window->findChild<LineItemEditor*>();
    QVERIFY(editor);
    QCOMPARE(editor->model()->rowCount(), 744);
    auto* customers = window->findChild<ZebSubCtl::KeyedListView*>(QStringLiteral("lsvCustomers"));
    QVERIFY(customers);
    QCOMPARE(customers->count(), int(job->customers()->Count()));
    auto* revisions = window->findChild<QTreeWidget*>(QStringLiteral("lsvRevisions"));
    QVERIFY(revisions);
    QCOMPARE(revisions->topLevelItemCount(), int(job->history()->revisions().size()));
    // The user still sees the page the job opened on.
    QCOMPARE(tabsOf(*window)->currentIndex(), 0);
    // Nothing more to do: more passes of the event loop bind nothing again.
    for (int pass = 0; pass < 10; ++pass)
        QCoreApplication::processEvents();
    QCOMPARE(ready.count(), 1);
    QCOMPARE(window->controls().size(), 8);
}

void tst_WorkstationPages::aJobOpenedDuringTheIdleWorkBindsOnlyItsOwnPages()
{
    auto window = open(kLargeJob);
    QSignalSpy ready(window.get(), &WorkbenchWindow::pagesReady);
    // Part of the pages bound in idle time, not all.
    QVERIFY(runEventsUntil([&window] { return boundPages(*window) >= 4; }));
    QVERIFY(!window->allPagesBound());
    window->openJob(job(kSampleJob));
    QCOMPARE(boundPages(*window), 1);
    QVERIFY(runUntilIdle(*window));
    QCOMPARE(ready.count(), 1);
    // Every page once, for the job open now: nothing of the 744 lines remains.
    QCOMPARE(window->controls().size(), 8);
    const qsizetype lines = window->job()->lineItems()->Count();
    QVERIFY(lines > 0 && lines < 744);
    QCOMPARE(window->findChildren<QWidget*>(QStringLiteral("ctlSubLine")).size(), lines);
    auto* editor = window->findChild<LineItemEditor*>();
    QVERIFY(editor);
    QCOMPARE(editor->model()->rowCount(), lines);
    QCOMPARE(window->findChildren<LineItemEditor*>().size(), 1);
    QCOMPARE(window->findChildren<HistoryPage*>().size(), 1);
    // Refresh while the idle work runs: the same, once more.
    window->openJob(job(kLargeJob));
    QVERIFY(runEventsUntil([&window] { return boundPages(*window) >= 3; }));
    QVERIFY(window->refresh());
    QCOMPARE(boundPages(*window), 1);
    QVERIFY(runUntilIdle(*window));
    QCOMPARE(window->controls().size(), 8);
    QCOMPARE(window->findChildren<QWidget*>(QStringLiteral("ctlSubLine")).size(), 744);
}

void tst_WorkstationPages::theIdleWorkWaitsWhileTheWindowIsClosed()
{
    auto window = open(kLargeJob);
    QVERIFY(runEventsUntil([&window] { return boundPages(*window) >= 2; }));
    window->close();
    const int bound = boundPages(*window);
    for (int pass = 0; pass < 20; ++pass)
        QCoreApplication::processEvents();
    QCOMPARE(boundPages(*window), bound);
    // Shown again, it goes on where it stopped.
    window->show();
    QVERIFY(QTest::qWaitForWindowExposed(window.get()));
    QVERIFY(runUntilIdle(*window));
    QCOMPARE(window->controls().size(), 8);
}

void tst_WorkstationPages::aPageFailingInIdleTimeIsReportedOnce()
{
    const FormDescription form = FormDescription::fromJson(R"({
        "title": "T", "width": 600, "height": 400,
        "pages": [
            {"title": "Bill of Materials", "controls": [{"identifier": "ZebSubmittalControls.ctlBOMCriteria",
             "name": "ctlBOMCriteria", "left": 150, "top": 150, "width": 7200, "height": 6540,
             "bind": {"BOM": "bom"}}]},
            {"title": "Labels", "controls": [{"identifier": "ZebSubmittalControls.ctlLabelCriteria",
             "name": "ctlLabels", "left": 150, "top": 150, "width": 7200, "height": 6540,
             "bind": {"Labels": "noSuchObject"}}]}]})");
    Workstation::Options options;
    options.remember = false;
    Workstation window(form, m_store, options);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QSignalSpy told(&window, &WorkbenchWindow::problemsFound);
    window.openJob(window.startingJob());
    QCOMPARE(told.count(), 0);
    QVERIFY(runUntilIdle(window));
    const QStringList expected{
        QStringLiteral("ctlLabels.Labels: There is no sample object named \"noSuchObject\"")};
    QCOMPARE(window.problems(), expected);
    QCOMPARE(told.count(), 1);
    QCOMPARE(told.at(0).at(0).toStringList(), expected);
    // Showing the page, reading every page and more idle passes tell nothing again.
    window.showPage(1);
    window.bindAllPages();
    for (int pass = 0; pass < 10; ++pass)
        QCoreApplication::processEvents();
    QCOMPARE(told.count(), 1);
    QCOMPARE(window.problems(), expected);
}

void tst_WorkstationPages::ctrlTabDuringTheIdleWorkLandsOnTheNextPageBoundAndPainted()
{
    auto window = open(kLargeJob);
    window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(window.get()));
    // The job's first paint, and the idle work under way.
    QVERIFY(runEventsUntil([&window] { return boundPages(*window) >= 2; }));
    QVERIFY(!window->allPagesBound());
    window->focusPage();
    QWidget* first = QApplication::focusWidget();
    QVERIFY(first && tabsOf(*window)->widget(0)->isAncestorOf(first));
    for (const int next : {1, 2}) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab, Qt::ControlModifier);
        QCOMPARE(tabsOf(*window)->currentIndex(), next);
        QVERIFY(window->isPageBound(next));
        QWidget* focused = QApplication::focusWidget();
        QVERIFY(focused);
        QVERIFY(tabsOf(*window)->widget(next)->isAncestorOf(focused));
        if (next == 1)
            QCOMPARE(focused->accessibleName(), QStringLiteral("Name or keyword"));
        FirstPaintProbe probe(*window);
        QVERIFY(runEventsUntil([&probe] { return probe.painted(); }));
    }
    QVERIFY(runUntilIdle(*window));
    QCOMPARE(tabsOf(*window)->currentIndex(), 2);
    QCOMPARE(window->controls().size(), 8);
}

void tst_WorkstationPages::theCutSheetsAreReadInIdleTimeAndAgainAfterTheLinesChange()
{
    auto window = open(kSampleJob);
    auto* dock = window->findChild<QDockWidget*>(QStringLiteral("dockCutSheets"));
    QVERIFY(dock);
    QVERIFY(!dock->findChild<QTreeWidget*>(QStringLiteral("tvwCutSheets")));
    QVERIFY(runUntilIdle(*window));
    // Made with the pages, while the dock does not show.
    QVERIFY(!dock->isVisible());
    QPointer<QTreeWidget> tree = dock->findChild<QTreeWidget*>(QStringLiteral("tvwCutSheets"));
    QVERIFY(tree);
    QVERIFY(tree->topLevelItemCount() > 0);
    // Shown beside the Line Items page as it is.
    const int lines = pageOf(*window, QStringLiteral("Line Items"));
    window->showPage(lines);
    QVERIFY(dock->isVisible());
    QCOMPARE(dock->findChild<QTreeWidget*>(QStringLiteral("tvwCutSheets")), tree.data());
    // A line added in the editor: the dock shows the cut sheets read again.
    window->showPage(0);
    LineItemEditor* editor = window->lineItemEditor();
    QVERIFY(editor);
    editor->addLine();
    window->showPage(lines);
    QVERIFY(dock->isVisible());
    QVERIFY(tree.isNull());
    QVERIFY(dock->findChild<QTreeWidget*>(QStringLiteral("tvwCutSheets")));
}

void tst_WorkstationPages::cutSheetsThatCannotBeReadInIdleTimeWaitForTheDock()
{
    auto window = open(kSampleJob);
    // Another program holds the office's attachments away while the pages are bound.
    const auto rename = [this](const char* from, const char* to) {
        {
            auto db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("other"));
            db.setDatabaseName(m_scratch->filePath(QStringLiteral("office.sqlite")));
            QVERIFY(db.open());
            QSqlQuery q(db);
            QVERIFY2(q.exec(QStringLiteral("ALTER TABLE %1 RENAME TO %2")
                                .arg(QLatin1String(from), QLatin1String(to))),
                     qPrintable(q.lastError().text()));
            q.finish();
            db.close();
        }
        QSqlDatabase::removeDatabase(QStringLiteral("other"));
    };
    rename("cut_sheet_attachments", "held_attachments");
    QVERIFY(runUntilIdle(*window));
    auto* dock = window->findChild<QDockWidget*>(QStringLiteral("dockCutSheets"));
    QVERIFY(dock);
    QVERIFY(!dock->findChild<QTreeWidget*>(QStringLiteral("tvwCutSheets")));
    QCOMPARE(window->controls().size(), 8);
    // Back in place: the dock beside the Line Items page reads them then.
    rename("held_attachments", "cut_sheet_attachments");
    window->showPage(pageOf(*window, QStringLiteral("Line Items")));
    QVERIFY(dock->isVisible());
    auto* tree = dock->findChild<QTreeWidget*>(QStringLiteral("tvwCutSheets"));
    QVERIFY(tree);
    QVERIFY(tree->topLevelItemCount() > 0);
}

QTEST_MAIN(tst_WorkstationPages)
#include "tst_workstationpages.moc"
