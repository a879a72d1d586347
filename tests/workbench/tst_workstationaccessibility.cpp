#include "objects/runtime.h"
#include "officefile.h"
#include "platform/keyedlistview.h"
#include "store/store.h"
#include "support/accessibleevents.h"
#include "workstation.h"

#include <QAccessible>
#include <QAction>
#include <QApplication>
#include <QDockWidget>
#include <QPlainTextEdit>
#include <QScrollArea>
#include <QScrollBar>
#include <QTabBar>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>

using ZebObjects::Store;

// The workstation as a screen reader and a keyboard user meet it: page names, where the focus
// goes, the diagnostics pane, the page tabs and the names the host gives to the text lists.
class tst_WorkstationAccessibility : public QObject {
    Q_OBJECT
private slots:
    void initTestCase();
    void cleanup();

    void diagnosticsPaneStartsHiddenStaysOutOfTheTabChainAndNamesItsScrollBar();
    void everyPageIsNamedAndOpeningAPageFocusesItsFirstControl();
    void paragraphsAndRemarksPagesNameTheirControlsAfterWhatTheyHold();
    void theOpenPageTabIsSelectedAndFocusedOnlyWhileTheTabBarHasTheFocus();

private:
    std::unique_ptr<Workstation> openShown();

    QTemporaryDir m_home;
    std::shared_ptr<Store> m_store;
};

void tst_WorkstationAccessibility::initTestCase()
{
    QVERIFY(m_home.isValid());
    qputenv("XDG_DATA_HOME", m_home.filePath(QStringLiteral("data")).toUtf8());
    qputenv("XDG_CONFIG_HOME", m_home.filePath(QStringLiteral("config")).toUtf8());
    QCoreApplication::setOrganizationName(QStringLiteral("ZebSubmittalControls"));
    QCoreApplication::setApplicationName(QStringLiteral("zeb-workbench"));
}

void tst_WorkstationAccessibility::cleanup()
{
    ZebObjects::Runtime::setApplicationServices(nullptr);
    m_store.reset();
}

std::unique_ptr<Workstation> tst_WorkstationAccessibility::openShown()
{
    if (!m_store)
        m_store = OfficeFile::resetSample(m_home.filePath(QStringLiteral("office.sqlite")));
    ZebObjects::Runtime::setApplicationServices(m_store->applicationServices());
    Workstation::Options options;
    options.remember = false;
    auto window = std::make_unique<Workstation>(
        FormDescription::fromFile(QStringLiteral(":/forms/workbench.json")), m_store, options);
    if (const qint64 id = window->startingJob())
        window->openJob(id);
    window->show();
    window->activateWindow();
    if (!QTest::qWaitForWindowActive(window.get()))
        qFatal("workstation not active");
    return window;
}

void tst_WorkstationAccessibility::diagnosticsPaneStartsHiddenStaysOutOfTheTabChainAndNamesItsScrollBar()
{
    auto window = openShown();
    QVERIFY(!window->diagnosticsDock()->isVisible());
    window->findChild<QAction*>(QStringLiteral("actDiagnostics"))->trigger();
    QVERIFY(window->diagnosticsDock()->isVisible());
    QCOMPARE(QAccessible::queryAccessibleInterface(window->logView()->verticalScrollBar())
                 ->text(QAccessible::Name),
             QStringLiteral("Diagnostics scroll bar"));
    // Tab from the first control goes round the page and never stops in the log.
    window->showPage(0);
    QWidget* first = QApplication::focusWidget();
    QVERIFY(first);
    for (int i = 0; i < 60; ++i) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        QWidget* now = QApplication::focusWidget();
        QVERIFY2(!window->diagnosticsDock()->isAncestorOf(now), qPrintable(now->objectName()));
    }
}

void tst_WorkstationAccessibility::everyPageIsNamedAndOpeningAPageFocusesItsFirstControl()
{
    auto window = openShown();
    auto* tabs = window->findChild<QTabWidget*>(QStringLiteral("tabPages"));
    const QStringList titles = window->pageTitles();
    QCOMPARE(titles.size(), 8);
    ZebTest::AccessibleEvents events;
    for (int i = 0; i < titles.size(); ++i) {
        window->showPage(i);
        auto* page = qobject_cast<QScrollArea*>(tabs->widget(i));
        QVERIFY(page);
        QCOMPARE(QAccessible::queryAccessibleInterface(page)->text(QAccessible::Name),
                 titles.at(i) + QStringLiteral(" page"));
        QVERIFY(!(page->focusPolicy() & Qt::TabFocus));
        QWidget* focused = QApplication::focusWidget();
        QVERIFY2(focused && page->isAncestorOf(focused), qPrintable(titles.at(i)));
        QVERIFY(!QAccessible::queryAccessibleInterface(focused)->text(QAccessible::Name).isEmpty());
    }
    // Ctrl+Tab from inside a page lands on the next page's first control, which is announced.
    window->showPage(0);
    events.clear();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab, Qt::ControlModifier);
    QCOMPARE(tabs->currentIndex(), 1);
    QVERIFY(tabs->widget(1)->isAncestorOf(QApplication::focusWidget()));
    // Straight from the page it leaves: the focus does not pass through the tab bar.
    QCOMPARE(events.names(QAccessible::Focus), QStringList{QStringLiteral("Name or keyword")});
    window->showPage(0);
    events.clear();
    QAccessible::queryAccessibleInterface(tabs->tabBar())
        ->child(1)
        ->actionInterface()
        ->doAction(QAccessibleActionInterface::pressAction());
    QCOMPARE(events.names(QAccessible::Focus), QStringList{QStringLiteral("Name or keyword")});
    // The line items page starts at the rows' one Tab stop.
    window->showPage(7);
    QCOMPARE(QApplication::focusWidget()->objectName(), QStringLiteral("chkSelect"));
}

void tst_WorkstationAccessibility::paragraphsAndRemarksPagesNameTheirControlsAfterWhatTheyHold()
{
    auto window = openShown();
    auto name = [&](const char* control, const char* part) {
        QWidget* c = window->findChild<QWidget*>(QLatin1String(control));
        QWidget* w = part ? c->findChild<QWidget*>(QLatin1String(part)) : c;
        return QAccessible::queryAccessibleInterface(w)->text(QAccessible::Name);
    };
    QCOMPARE(name("ctlParagraphs", nullptr), QStringLiteral("Cover letter paragraphs"));
    QCOMPARE(name("ctlParagraphs", "ListView"), QStringLiteral("Cover letter paragraphs list"));
    QCOMPARE(name("ctlParagraphs", "txtNewComment"), QStringLiteral("New paragraph"));
    QCOMPARE(name("ctlParagraphs", "chkIsSelected"), QStringLiteral("Use the new paragraph"));
    QCOMPARE(name("ctlRemarks", nullptr), QStringLiteral("Cover letter remarks"));
    QCOMPARE(name("ctlRemarks", "ListView"), QStringLiteral("Cover letter remarks list"));
    QCOMPARE(name("ctlRemarks", "txtNewComment"), QStringLiteral("New remark"));
    QCOMPARE(name("ctlRemarks", "chkIsSelected"), QStringLiteral("Use the new remark"));
    QCOMPARE(window->problems(), QStringList());
    // The names go with the form's saved design.
    QVERIFY(window->currentDesignJson().contains("\"txtNewComment\": \"New remark\""));
}

void tst_WorkstationAccessibility::theOpenPageTabIsSelectedAndFocusedOnlyWhileTheTabBarHasTheFocus()
{
    auto window = openShown();
    auto* tabs = window->findChild<QTabWidget*>(QStringLiteral("tabPages"));
    QTabBar* bar = tabs->tabBar();
    QAccessibleInterface* list = QAccessible::queryAccessibleInterface(bar);
    QCOMPARE(list->role(), QAccessible::PageTabList);
    QCOMPARE(list->text(QAccessible::Name), QStringLiteral("Page tabs"));
    window->showPage(2);
    QAccessibleInterface* third = list->child(2);
    QCOMPARE(third->role(), QAccessible::PageTab);
    QCOMPARE(third->text(QAccessible::Name), QStringLiteral("Cover Letter Options"));
    QCOMPARE(list->indexOfChild(third), 2);
    QVERIFY(third->state().selected);
    QVERIFY(!list->child(1)->state().selected);
    // The focus is in the page: the tab is selected, not focused.
    QVERIFY(!bar->hasFocus());
    QVERIFY(!third->state().focused);
    bar->setFocus(Qt::TabFocusReason);
    QVERIFY(third->state().focused);
    ZebTest::AccessibleEvents events;
    QTest::keyClick(bar, Qt::Key_Right);
    QCOMPARE(tabs->currentIndex(), 3);
    QVERIFY(list->child(3)->state().selected && list->child(3)->state().focused);
    QVERIFY(!third->state().selected);
    QVERIFY(events.names(QAccessible::Focus).contains(QStringLiteral("Cover Letter Paragraphs")));
    // The reader's press opens a page.
    list->child(1)->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    QCOMPARE(tabs->currentIndex(), 1);

    // A customer row is focused only while its list has the focus.
    window->showPage(1);
    auto* customers = window->findChild<ZebSubCtl::KeyedListView*>(QStringLiteral("lsvCustomers"));
    QVERIFY(customers->count() > 0);
    customers->setFocus(Qt::TabFocusReason);
    customers->setSelectedRow(0);
    QAccessibleInterface* row = QAccessible::queryAccessibleInterface(customers)
                                    ->tableInterface()
                                    ->cellAt(0, 0);
    QVERIFY(row->state().focused);
    bar->setFocus(Qt::TabFocusReason);
    QVERIFY(!row->state().focused);
    QVERIFY(row->state().selected);
}

QTEST_MAIN(tst_WorkstationAccessibility)
#include "tst_workstationaccessibility.moc"
