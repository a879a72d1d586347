#include "contracts/runtime.h"
#include "officefile.h"
#include "platform/dateedit.h"
#include "platform/keyedlistview.h"
#include "store/store.h"
#include "support/accessibleevents.h"
#include "support/workbenchtesting.h"
#include "userinput.h"
#include "workstation.h"

#include <QAccessible>
#include <QAction>
#include <QApplication>
#include <QDialogButtonBox>
#include <QDockWidget>
#include <QPushButton>
#include <QLineEdit>
#include <QMessageBox>
#include <QFileInfo>
#include <QFileDialog>
#include <QPlainTextEdit>
#include <QScrollArea>
#include <QScrollBar>
#include <QTabBar>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QWindow>

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
    void aKeyboardAndScreenReaderUserOpensAJobTicksSetsTheDateAndExports();

private:
    std::unique_ptr<Workstation> openShown();

    QTemporaryDir m_home;
    std::shared_ptr<Store> m_store;
};

void tst_WorkstationAccessibility::initTestCase()
{
    QVERIFY(m_home.isValid());
    ZebTest::useScratchHome(m_home, true);
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
    auto window = ZebTest::openWorkstation(m_store);
    if (const qint64 id = window->startingJob())
        window->openJob(id);
    window->show();
    window->activateWindow();
    if (!QTest::qWaitForWindowActive(window.get()))
        qFatal("workstation not active");
    return window;
}

void tst_WorkstationAccessibility::
    diagnosticsPaneStartsHiddenStaysOutOfTheTabChainAndNamesItsScrollBar()
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
    // The form's eight pages, then the workstation's Line Items Editor, Recipients and History.
    QCOMPARE(titles.size(), 11);
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
    window->bindAllPages();
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
    QAccessibleInterface* row =
        QAccessible::queryAccessibleInterface(customers)->tableInterface()->cellAt(0, 0);
    QVERIFY(row->state().focused);
    bar->setFocus(Qt::TabFocusReason);
    QVERIFY(!row->state().focused);
    QVERIFY(row->state().selected);
}

QTEST_MAIN(tst_WorkstationAccessibility)
#include "tst_workstationaccessibility.moc"

namespace {

// What a screen reader says the focus is on, in the active window or in a given one.
QString focusNameIn(QWidget* window)
{
    QWidget* w = window ? window->focusWidget() : QApplication::focusWidget();
    if (!w)
        return QString();
    QAccessibleInterface* iface = QAccessible::queryAccessibleInterface(w);
    if (QAccessibleInterface* f = iface->focusChild())
        iface = f;
    return iface->text(QAccessible::Name);
}

QString focusName()
{
    return focusNameIn(nullptr);
}

// A key as the user presses it: to the active window, which hands it to its focus (or to its
// shortcuts). Nothing is pressed when no window is active; what follows then fails.
void press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    if (QWindow* active = QGuiApplication::focusWindow())
        QTest::keyClick(active, Qt::Key(key), modifiers);
}

}  // namespace

void tst_WorkstationAccessibility::aKeyboardAndScreenReaderUserOpensAJobTicksSetsTheDateAndExports()
{
    auto window = openShown();
    auto* tabs = window->findChild<QTabWidget*>(QStringLiteral("tabPages"));
    ZebTest::AccessibleEvents events;

    // Keys for a dialog go to its window, as the window system sends them there: the offscreen
    // platform activates a dialog late or not at all.

    // Ctrl+O: the job list, read row by row; Enter opens the job on the row.
    QStringList heard;
    ZebTest::WhenModal<QDialog> jobs([&](QDialog& dialog) {
        // The reader speaks once the dialog has the focus, which a loaded machine gives late.
        static_cast<void>(
            QTest::qWaitFor([&dialog] { return dialog.focusWidget() != nullptr; }, 5000));
        heard << dialog.windowTitle() << focusNameIn(&dialog);
        QTest::keyClick(dialog.windowHandle(), Qt::Key_Down);
        heard << focusNameIn(&dialog);
        QTest::keyClick(dialog.windowHandle(), Qt::Key_Up);
        heard << focusNameIn(&dialog);
        QTest::keyClick(dialog.windowHandle(), Qt::Key_Return);
    });
    press(Qt::Key_O, Qt::ControlModifier);
    QVERIFY(jobs.answered());
    QVERIFY(!jobs.leftOpen());
    QCOMPARE(heard, (QStringList{QStringLiteral("Open Job"), QStringLiteral("24-0131"),
                                 QStringLiteral("24-0152"), QStringLiteral("24-0131")}));
    // The offscreen platform has no window manager to give the window back its activation.
    window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(window.get()));
    // The user goes on from the first control of the page, not from nowhere.
    QCOMPARE(focusName(), QStringLiteral("Cover Letter"));

    // Line items: Ctrl+Tab to the page, Space ticks, the arrows move from line to line.
    for (int i = 0; i < 7; ++i)
        press(Qt::Key_Tab, Qt::ControlModifier);
    QCOMPARE(tabs->currentIndex(), 7);
    const QString line1 = focusName();
    QVERIFY2(line1.startsWith(QStringLiteral("Select line 1: ")), qPrintable(line1));
    QAccessibleInterface* box = QAccessible::queryAccessibleInterface(QApplication::focusWidget());
    const bool wasTicked = box->state().checked;
    events.clear();
    press(Qt::Key_Space);
    QCOMPARE(bool(box->state().checked), !wasTicked);
    QCOMPARE(events.checkChanges(), QStringList{line1});
    press(Qt::Key_Down);
    const QString line2 = focusName();
    QVERIFY2(line2.startsWith(QStringLiteral("Select line 2: ")), qPrintable(line2));
    QVERIFY(events.names(QAccessible::Focus).contains(line2));
    events.clear();
    press(Qt::Key_Space);
    press(Qt::Key_Space);
    QCOMPARE(events.checkChanges(), (QStringList{line2, line2}));
    press(Qt::Key_Up);
    QCOMPARE(focusName(), line1);
    events.clear();
    press(Qt::Key_Space);
    QCOMPARE(
        bool(QAccessible::queryAccessibleInterface(QApplication::focusWidget())->state().checked),
        wasTicked);
    QCOMPARE(events.checkChanges(), QStringList{line1});

    // Customers: Ctrl+Tab on past the Line Items Editor, Recipients and History, round to the
    // page, Tab to the submittal's customers, Space ticks a row.
    for (int i = 0; i < 5; ++i)
        press(Qt::Key_Tab, Qt::ControlModifier);
    QCOMPARE(tabs->currentIndex(), 1);
    QCOMPARE(focusName(), QStringLiteral("Name or keyword"));
    auto* customers = window->findChild<ZebSubCtl::KeyedListView*>(QStringLiteral("lsvCustomers"));
    for (int i = 0; i < 10 && QApplication::focusWidget() != customers; ++i)
        press(Qt::Key_Tab);
    QCOMPARE(QApplication::focusWidget(), customers);
    // The reader names the list's current row, not the list.
    QAccessibleInterface* list = QAccessible::queryAccessibleInterface(customers);
    QAccessibleInterface* row = list->focusChild();
    QVERIFY(row && row != list);
    const QString customer = row->text(QAccessible::Name);
    QCOMPARE(customer, customers->text(customers->currentIndex().row()));
    QCOMPARE(focusName(), customer);
    QVERIFY(row->state().checkable && row->state().focused);
    const bool customerTicked = row->state().checked;
    events.clear();
    press(Qt::Key_Space);
    QCOMPARE(bool(row->state().checked), !customerTicked);
    QCOMPARE(events.checkChanges(), QStringList{customer});
    press(Qt::Key_Space);
    QCOMPARE(bool(row->state().checked), customerTicked);
    QCOMPARE(events.checkChanges(), (QStringList{customer, customer}));
    // Down moves to the next customer, which the reader is told about.
    const int at = customers->currentIndex().row();
    QVERIFY(at + 1 < customers->count());
    events.clear();
    press(Qt::Key_Down);
    const QString nextCustomer = customers->text(at + 1);
    QCOMPARE(focusName(), nextCustomer);
    QVERIFY(events.names(QAccessible::Focus).contains(nextCustomer));

    // The date: back to the first page, Tab to the date, Alt+Down opens the calendar.
    press(Qt::Key_Tab, Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(tabs->currentIndex(), 0);
    auto* date = window->findChild<ZebSubCtl::DateEdit*>(QStringLiteral("pvdIssueDate"));
    for (int i = 0; i < 10 && QApplication::focusWidget() != date->lineEdit(); ++i)
        press(Qt::Key_Tab);
    QCOMPARE(QApplication::focusWidget(), date->lineEdit());
    QCOMPARE(focusName(), QStringLiteral("Submittal Date"));
    QAccessibleInterface* field = QAccessible::queryAccessibleInterface(date);
    const QDate before = date->date();
    QVERIFY(before.isValid());
    events.clear();
    press(Qt::Key_Down, Qt::AltModifier);
    QVERIFY(date->isCalendarOpen());
    QVERIFY(QAccessible::queryAccessibleInterface(date->calendarPopup())->parent() == field);
    const QLocale english(QLocale::English, QLocale::UnitedStates);
    const QString dayFormat = QStringLiteral("dddd, MMMM d, yyyy");
    QCOMPARE(focusName(), english.toString(before, dayFormat));
    press(Qt::Key_Right);
    const QString next = english.toString(before.addDays(1), dayFormat);
    QCOMPARE(focusName(), next);
    QVERIFY(events.names(QAccessible::Focus).contains(next));
    press(Qt::Key_Return);
    QVERIFY(!date->isCalendarOpen());
    QCOMPARE(QApplication::focusWidget(), date->lineEdit());
    QCOMPARE(date->date(), before.addDays(1));
    QCOMPARE(field->text(QAccessible::Value), next);

    // Ctrl+E: the file name typed into the save dialog (Qt's own, on this platform), Enter;
    // Escape declines opening the package.
    QTemporaryDir out;
    const QString pdf = out.filePath(QStringLiteral("keyboard.pdf"));
    QString fileBox;
    ZebTest::WhenModal<QFileDialog> file([&](QFileDialog& dialog) {
        // The keys reach the dialog's window as a window system sends them: to the control that
        // has the focus in it, through the dialog's own handling of Enter.
        QWindow* keys = dialog.windowHandle();
        QVERIFY(keys && dialog.focusWidget());
        fileBox =
            QAccessible::queryAccessibleInterface(dialog.focusWidget())->text(QAccessible::Name);
        QTest::keyClick(keys, Qt::Key_A, Qt::ControlModifier);
        for (const QChar c : pdf)
            QTest::keyClick(keys, c.toLatin1());
        QTest::keyClick(keys, Qt::Key_Return);
    });
    QString offer;
    QString questionName;
    ZebTest::WhenModal<QMessageBox> question([&](QMessageBox& box) {
        offer = box.text();
        questionName = QAccessible::queryAccessibleInterface(&box)->text(QAccessible::Name);
        QTest::keyClick(box.windowHandle(), Qt::Key_Escape);
    });
    press(Qt::Key_E, Qt::ControlModifier);
    QVERIFY(file.answered());
    QVERIFY(!file.leftOpen());
    QVERIFY(question.answered());
    QVERIFY(!question.leftOpen());
    QCOMPARE(fileBox, QStringLiteral("File name:"));
    QCOMPARE(questionName, QStringLiteral("Export Package"));
    QCOMPARE(offer, QStringLiteral("The package is written to %1.\nOpen it now?").arg(pdf));
    QVERIFY(QFileInfo(pdf).size() > 0);
    // The date set through the calendar went with the export.
    QVERIFY(!date->isEditPending());
}
