#include "platform/tooltipregistry.h"

#include <QHelpEvent>
#include <QSignalSpy>
#include <QTest>
#include <QToolTip>
#include <QWidget>

using namespace ZebSubCtl;

namespace {

struct ShownWindow {
    QWidget window;
    ShownWindow()
    {
        window.resize(300, 200);
        window.setMouseTracking(true);
        window.show();
        if (!QTest::qWaitForWindowExposed(&window))
            qFatal("window not exposed");
    }
};

void hideTip()
{
    QToolTip::hideText();
    QTRY_VERIFY(!QToolTip::isVisible());
}

}  // namespace

class tst_ToolTipRegistry : public QObject {
    Q_OBJECT
private slots:
    void cleanup() { hideTip(); }
    void settingsAreKept();
    void registeredToolKeepsWindowNumberRectangleAndText();
    void registeringANumberAgainReplacesTheTool();
    void settingARectangleMovesOnlyThatTool();
    void settingTheRectangleOfAnUnknownToolIsIgnored();
    void removingToolsFromANumberDropsTheRest();
    void toolsOfOneWindowDoNotMeetAnotherWindowsTools();
    void toolUnderThePointerPrefersTheLowestNumber();
    void restingPointerShowsTheToolsTextWithItsLineBreaks();
    void noTipBeforeThePointerHasRested();
    void noTipWhereNoToolIs();
    void noTipWhenInactive();
    void tipFollowsTheMovedRectangle();
    void qtsOwnToolTipEventIsNotPassedOn();
    void destroyedWindowLeavesNoTools();
};

void tst_ToolTipRegistry::settingsAreKept()
{
    ToolTipRegistry registry;
    registry.setDelay(750);
    registry.setDisplayTime(2147483647);
    registry.setActive(true);
    QCOMPARE(registry.delay(), 750);
    QCOMPARE(registry.displayTime(), 2147483647);
    QVERIFY(registry.isActive());
    registry.setActive(false);
    QVERIFY(!registry.isActive());
}

void tst_ToolTipRegistry::registeredToolKeepsWindowNumberRectangleAndText()
{
    QWidget window;
    ToolTipRegistry registry;
    registry.addTool(&window, 3, QRect(0, 40, 100, 20), QStringLiteral("line one\r\nline two"));
    QVERIFY(registry.hasTool(&window, 3));
    QVERIFY(!registry.hasTool(&window, 2));
    QCOMPARE(registry.toolRect(&window, 3), QRect(0, 40, 100, 20));
    QCOMPARE(registry.toolText(&window, 3), QStringLiteral("line one\r\nline two"));
    QCOMPARE(registry.toolCount(&window), 1);
    registry.addTool(&window, -7, QRect(0, 0, 5, 5), QStringLiteral("negative"));
    registry.addTool(&window, 1 << 30, QRect(0, 0, 5, 5), QStringLiteral("large"));
    QCOMPARE(registry.toolText(&window, -7), QStringLiteral("negative"));
    QCOMPARE(registry.toolText(&window, 1 << 30), QStringLiteral("large"));
    QCOMPARE(registry.toolCount(&window), 3);
}

void tst_ToolTipRegistry::registeringANumberAgainReplacesTheTool()
{
    QWidget window;
    ToolTipRegistry registry;
    registry.addTool(&window, 0, QRect(0, 0, 100, 20), QStringLiteral("old"));
    registry.addTool(&window, 0, QRect(0, 20, 100, 20), QStringLiteral("new"));
    registry.addTool(&window, -1, QRect(0, 0, 1, 1), QStringLiteral("old"));
    registry.addTool(&window, -1, QRect(0, 0, 1, 1), QStringLiteral("new"));
    QCOMPARE(registry.toolCount(&window), 2);
    QCOMPARE(registry.toolText(&window, 0), QStringLiteral("new"));
    QCOMPARE(registry.toolRect(&window, 0), QRect(0, 20, 100, 20));
    QCOMPARE(registry.toolText(&window, -1), QStringLiteral("new"));
}

void tst_ToolTipRegistry::settingARectangleMovesOnlyThatTool()
{
    QWidget window;
    ToolTipRegistry registry;
    registry.addTool(&window, 0, QRect(0, 0, 100, 20), QStringLiteral("a"));
    registry.addTool(&window, 1, QRect(0, 20, 100, 20), QStringLiteral("b"));
    registry.setToolRect(&window, 1, QRect(0, -20, 100, 20));
    QCOMPARE(registry.toolRect(&window, 1), QRect(0, -20, 100, 20));
    QCOMPARE(registry.toolRect(&window, 0), QRect(0, 0, 100, 20));
    QCOMPARE(registry.toolText(&window, 1), QStringLiteral("b"));
}

void tst_ToolTipRegistry::settingTheRectangleOfAnUnknownToolIsIgnored()
{
    QWidget window;
    QWidget other;
    ToolTipRegistry registry;
    registry.addTool(&window, 0, QRect(0, 0, 100, 20), QStringLiteral("a"));
    registry.setToolRect(&window, 5, QRect(1, 1, 1, 1));
    registry.setToolRect(&other, 0, QRect(1, 1, 1, 1));
    QCOMPARE(registry.toolCount(&window), 1);
    QVERIFY(!registry.hasTool(&window, 5));
    QCOMPARE(registry.toolCount(&other), 0);
}

void tst_ToolTipRegistry::removingToolsFromANumberDropsTheRest()
{
    QWidget window;
    ToolTipRegistry registry;
    for (int i = 0; i < 5; ++i)
        registry.addTool(&window, i, QRect(0, i * 20, 100, 20), QString::number(i));
    registry.addTool(&window, -2, QRect(), QStringLiteral("neg"));
    registry.removeToolsFrom(&window, 3);
    QCOMPARE(registry.toolCount(&window), 4);
    QVERIFY(registry.hasTool(&window, 2));
    QVERIFY(!registry.hasTool(&window, 3));
    QVERIFY(!registry.hasTool(&window, 4));
    QVERIFY(registry.hasTool(&window, -2));
    registry.removeTool(&window, 0);
    QCOMPARE(registry.toolCount(&window), 3);
    registry.removeAllTools(&window);
    QCOMPARE(registry.toolCount(&window), 0);
}

void tst_ToolTipRegistry::toolsOfOneWindowDoNotMeetAnotherWindowsTools()
{
    QWidget a;
    QWidget b;
    ToolTipRegistry registry;
    registry.addTool(&a, 0, QRect(0, 0, 10, 10), QStringLiteral("a"));
    registry.addTool(&b, 0, QRect(0, 0, 10, 10), QStringLiteral("b"));
    QCOMPARE(registry.toolText(&a, 0), QStringLiteral("a"));
    QCOMPARE(registry.toolText(&b, 0), QStringLiteral("b"));
}

void tst_ToolTipRegistry::toolUnderThePointerPrefersTheLowestNumber()
{
    QWidget window;
    ToolTipRegistry registry;
    registry.addTool(&window, 4, QRect(0, 0, 100, 100), QStringLiteral("big"));
    registry.addTool(&window, 2, QRect(10, 10, 10, 10), QStringLiteral("small"));
    QCOMPARE(registry.toolAt(&window, QPoint(15, 15)), std::optional<int>(2));
    QCOMPARE(registry.toolAt(&window, QPoint(50, 50)), std::optional<int>(4));
    QCOMPARE(registry.toolAt(&window, QPoint(150, 50)), std::nullopt);
    registry.addTool(&window, -3, QRect(40, 40, 20, 20), QStringLiteral("negative"));
    QCOMPARE(registry.toolAt(&window, QPoint(50, 50)), std::optional<int>(-3));
}

void tst_ToolTipRegistry::restingPointerShowsTheToolsTextWithItsLineBreaks()
{
    ShownWindow shown;
    ToolTipRegistry registry;
    registry.setDelay(50);
    registry.setDisplayTime(2147483647);
    registry.addTool(&shown.window, 0, QRect(0, 0, 300, 20), QStringLiteral("first"));
    registry.addTool(&shown.window, 1, QRect(0, 20, 300, 20),
                     QStringLiteral("second line one\r\nsecond line two"));
    QTest::mouseMove(&shown.window, QPoint(50, 30));
    QTRY_VERIFY(QToolTip::isVisible());
    QCOMPARE(QToolTip::text(), QStringLiteral("second line one\r\nsecond line two"));
}

void tst_ToolTipRegistry::noTipBeforeThePointerHasRested()
{
    ShownWindow shown;
    ToolTipRegistry registry;
    registry.setDelay(60000);
    registry.addTool(&shown.window, 0, QRect(0, 0, 300, 20), QStringLiteral("first"));
    QTest::mouseMove(&shown.window, QPoint(50, 10));
    QTest::qWait(100);
    QVERIFY(!QToolTip::isVisible());
}

void tst_ToolTipRegistry::noTipWhereNoToolIs()
{
    ShownWindow shown;
    ToolTipRegistry registry;
    registry.setDelay(10);
    registry.addTool(&shown.window, 0, QRect(0, 0, 300, 20), QStringLiteral("first"));
    QTest::mouseMove(&shown.window, QPoint(50, 150));
    QTest::qWait(200);
    QVERIFY(!QToolTip::isVisible());
}

void tst_ToolTipRegistry::noTipWhenInactive()
{
    ShownWindow shown;
    ToolTipRegistry registry;
    registry.setDelay(10);
    registry.setActive(false);
    registry.addTool(&shown.window, 0, QRect(0, 0, 300, 20), QStringLiteral("first"));
    QTest::mouseMove(&shown.window, QPoint(50, 10));
    QTest::qWait(200);
    QVERIFY(!QToolTip::isVisible());
}

void tst_ToolTipRegistry::tipFollowsTheMovedRectangle()
{
    ShownWindow shown;
    ToolTipRegistry registry;
    registry.setDelay(10);
    registry.addTool(&shown.window, 0, QRect(0, 0, 300, 20), QStringLiteral("first"));
    registry.addTool(&shown.window, 1, QRect(0, 20, 300, 20), QStringLiteral("second"));
    // The content scrolled by one line: tool 1 now stands where tool 0 stood.
    registry.setToolRect(&shown.window, 0, QRect(0, -20, 300, 20));
    registry.setToolRect(&shown.window, 1, QRect(0, 0, 300, 20));
    QTest::mouseMove(&shown.window, QPoint(60, 10));
    QTRY_VERIFY(QToolTip::isVisible());
    QCOMPARE(QToolTip::text(), QStringLiteral("second"));
}

void tst_ToolTipRegistry::qtsOwnToolTipEventIsNotPassedOn()
{
    ShownWindow shown;
    shown.window.setToolTip(QStringLiteral("the widget's own tip"));
    ToolTipRegistry registry;
    registry.setDelay(60000);
    registry.addTool(&shown.window, 0, QRect(0, 0, 300, 20), QStringLiteral("first"));
    QHelpEvent event(QEvent::ToolTip, QPoint(5, 150), shown.window.mapToGlobal(QPoint(5, 150)));
    QApplication::sendEvent(&shown.window, &event);
    QTest::qWait(50);
    QVERIFY(!QToolTip::isVisible() || QToolTip::text() != shown.window.toolTip());
}

void tst_ToolTipRegistry::destroyedWindowLeavesNoTools()
{
    ToolTipRegistry registry;
    auto* window = new QWidget;
    registry.addTool(window, 0, QRect(0, 0, 10, 10), QStringLiteral("a"));
    QCOMPARE(registry.toolCount(window), 1);
    QWidget* const gone = window;
    delete window;
    // Only the address is looked up: the window's tools went with it.
    QCOMPARE(registry.toolCount(gone), 0);
}

QTEST_MAIN(tst_ToolTipRegistry)
#include "tst_tooltipregistry.moc"
