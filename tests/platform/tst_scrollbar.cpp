#include "platform/scrollbar.h"

#include "contracts/failure.h"

#include <QAccessible>
#include <QSignalSpy>
#include <QStyle>
#include <QStyleOptionSlider>
#include <QTest>

using ZebSubCtl::ScrollBar;

namespace {

// A bar 17 x 300, range 0..1000, small change 44, large change 264, shown.
struct Bar {
    ScrollBar bar;
    QSignalSpy changes{&bar, &ScrollBar::changed};

    Bar()
    {
        bar.setGeometry(0, 0, 17, 300);
        bar.setMax(1000);
        bar.setSmallChange(44);
        bar.setLargeChange(264);
        bar.show();
        if (!QTest::qWaitForWindowExposed(&bar))
            qFatal("bar not exposed");
        changes.clear();
    }

    QRect part(QStyle::SubControl control) const
    {
        QStyleOptionSlider opt;
        opt.initFrom(&bar);
        opt.subControls = QStyle::SC_All;
        opt.activeSubControls = QStyle::SC_None;
        opt.orientation = bar.orientation();
        opt.minimum = bar.minimum();
        opt.maximum = bar.maximum();
        opt.sliderPosition = bar.sliderPosition();
        opt.sliderValue = bar.value();
        opt.singleStep = bar.singleStep();
        opt.pageStep = bar.pageStep();
        opt.upsideDown = bar.invertedAppearance();
        return bar.style()->subControlRect(QStyle::CC_ScrollBar, &opt, control, &bar);
    }

    QList<int> reported() const
    {
        QList<int> out;
        for (const auto& args : changes)
            out.append(args.at(0).toInt());
        return out;
    }
};

void expectFailure(const std::function<void()>& call, qint32 number)
{
    try {
        call();
        QFAIL("no failure");
    } catch (const ZebObjects::Failure& f) {
        QCOMPARE(f.Number(), number);
        QCOMPARE(f.Description(), QStringLiteral("Invalid property value"));
    }
}

}  // namespace

class tst_ScrollBar : public QObject {
    Q_OBJECT
private slots:
    void settingsReadBackAsSet();
    void valueOutsideTheRangeFailsAndKeepsTheValue();
    void changeStepsOutsideOneTo32767Fail();
    void rangeBeyond16BitsFails();
    void codeSettingAValueReportsOneChange();
    void settingTheSameValueReportsNothing();
    void loweringTheMaximumBelowTheValueClampsAndReportsIt();
    void loweringTheMaximumAboveTheValueReportsNothing();
    void downArrowMovesOneSmallChange();
    void upArrowAtTheTopMovesNothing();
    void troughBelowTheHandleMovesOneLargeChange();
    void troughAboveTheHandleMovesBackOneLargeChange();
    void lastPageStopsAtTheMaximum();
    void draggingTheHandleReportsEachMove();
    void wheelNotchDownMovesThreeSmallChanges();
    void keysMoveByStepPageAndToTheEnds();
    void disabledBarIgnoresClicksAndKeys();
    void screenReadersFindItsNameAndRole();
};

void tst_ScrollBar::settingsReadBackAsSet()
{
    Bar b;
    QCOMPARE(b.bar.Min(), 0);
    QCOMPARE(b.bar.Max(), 1000);
    QCOMPARE(b.bar.SmallChange(), 44);
    QCOMPARE(b.bar.LargeChange(), 264);
    QCOMPARE(b.bar.Value(), 0);
    QCOMPARE(b.bar.orientation(), Qt::Vertical);
    QVERIFY(b.bar.setProperty("Value", 300));
    QCOMPARE(b.bar.property("Value").toInt(), 300);
}

void tst_ScrollBar::valueOutsideTheRangeFailsAndKeepsTheValue()
{
    Bar b;
    b.bar.setValueChecked(10);
    b.changes.clear();
    expectFailure([&] { b.bar.setValueChecked(1001); }, 380);
    expectFailure([&] { b.bar.setValueChecked(-1); }, 380);
    QCOMPARE(b.bar.Value(), 10);
    QCOMPARE(b.changes.count(), 0);
}

void tst_ScrollBar::changeStepsOutsideOneTo32767Fail()
{
    Bar b;
    expectFailure([&] { b.bar.setSmallChange(0); }, 380);
    expectFailure([&] { b.bar.setLargeChange(-44); }, 380);
    expectFailure([&] { b.bar.setLargeChange(32768); }, 380);
    QCOMPARE(b.bar.SmallChange(), 44);
    QCOMPARE(b.bar.LargeChange(), 264);
    b.bar.setLargeChange(32767);
    QCOMPARE(b.bar.LargeChange(), 32767);
}

void tst_ScrollBar::rangeBeyond16BitsFails()
{
    Bar b;
    expectFailure([&] { b.bar.setMax(32768); }, 380);
    expectFailure([&] { b.bar.setMin(-32769); }, 380);
    b.bar.setMin(-32768);
    b.bar.setMax(32767);
    QCOMPARE(b.bar.Min(), -32768);
    QCOMPARE(b.bar.Max(), 32767);
}

void tst_ScrollBar::codeSettingAValueReportsOneChange()
{
    Bar b;
    b.bar.setValueChecked(100);
    QCOMPARE(b.reported(), QList<int>{100});
}

void tst_ScrollBar::settingTheSameValueReportsNothing()
{
    Bar b;
    b.bar.setValueChecked(100);
    b.changes.clear();
    b.bar.setValueChecked(100);
    QCOMPARE(b.changes.count(), 0);
}

void tst_ScrollBar::loweringTheMaximumBelowTheValueClampsAndReportsIt()
{
    Bar b;
    b.bar.setValueChecked(900);
    b.changes.clear();
    b.bar.setMax(500);
    QCOMPARE(b.bar.Value(), 500);
    QCOMPARE(b.reported(), QList<int>{500});
    b.bar.setMax(0);
    QCOMPARE(b.bar.Value(), 0);
    QCOMPARE(b.reported(), (QList<int>{500, 0}));
    QCOMPARE(b.bar.Min(), 0);
}

void tst_ScrollBar::loweringTheMaximumAboveTheValueReportsNothing()
{
    Bar b;
    b.bar.setValueChecked(100);
    b.changes.clear();
    b.bar.setMax(200);
    QCOMPARE(b.bar.Value(), 100);
    QCOMPARE(b.changes.count(), 0);
}

void tst_ScrollBar::downArrowMovesOneSmallChange()
{
    Bar b;
    const QRect arrow = b.part(QStyle::SC_ScrollBarAddLine);
    QVERIFY(!arrow.isEmpty());
    QTest::mouseClick(&b.bar, Qt::LeftButton, {}, arrow.center());
    QCOMPARE(b.bar.Value(), 44);
    QCOMPARE(b.reported(), QList<int>{44});
    QTest::mouseClick(&b.bar, Qt::LeftButton, {}, arrow.center());
    QCOMPARE(b.reported(), (QList<int>{44, 88}));
}

void tst_ScrollBar::upArrowAtTheTopMovesNothing()
{
    Bar b;
    const QRect arrow = b.part(QStyle::SC_ScrollBarSubLine);
    QTest::mouseClick(&b.bar, Qt::LeftButton, {}, arrow.center());
    QCOMPARE(b.bar.Value(), 0);
    QCOMPARE(b.changes.count(), 0);
    b.bar.setValueChecked(100);
    b.changes.clear();
    QTest::mouseClick(&b.bar, Qt::LeftButton, {}, arrow.center());
    QCOMPARE(b.reported(), QList<int>{56});
}

void tst_ScrollBar::troughBelowTheHandleMovesOneLargeChange()
{
    Bar b;
    const QRect trough = b.part(QStyle::SC_ScrollBarAddPage);
    QVERIFY(!trough.isEmpty());
    QTest::mouseClick(&b.bar, Qt::LeftButton, {}, QPoint(trough.center().x(), trough.bottom() - 2));
    QCOMPARE(b.reported(), QList<int>{264});
}

void tst_ScrollBar::troughAboveTheHandleMovesBackOneLargeChange()
{
    Bar b;
    b.bar.setValueChecked(1000);
    b.changes.clear();
    const QRect trough = b.part(QStyle::SC_ScrollBarSubPage);
    QVERIFY(!trough.isEmpty());
    QTest::mouseClick(&b.bar, Qt::LeftButton, {}, QPoint(trough.center().x(), trough.top() + 2));
    QCOMPARE(b.reported(), QList<int>{736});
}

void tst_ScrollBar::lastPageStopsAtTheMaximum()
{
    Bar b;
    b.bar.setValueChecked(900);
    b.changes.clear();
    const QRect trough = b.part(QStyle::SC_ScrollBarAddPage);
    QTest::mouseClick(&b.bar, Qt::LeftButton, {}, QPoint(trough.center().x(), trough.bottom() - 1));
    QCOMPARE(b.reported(), QList<int>{1000});
}

void tst_ScrollBar::draggingTheHandleReportsEachMove()
{
    Bar b;
    const QRect handle = b.part(QStyle::SC_ScrollBarSlider);
    const QRect groove = b.part(QStyle::SC_ScrollBarGroove);
    QPoint at = handle.center();
    QTest::mousePress(&b.bar, Qt::LeftButton, {}, at);
    for (int i = 0; i < 3; ++i) {
        at += QPoint(0, 20);
        QMouseEvent move(QEvent::MouseMove, at, b.bar.mapToGlobal(at), Qt::NoButton, Qt::LeftButton,
                         Qt::NoModifier);
        QCoreApplication::sendEvent(&b.bar, &move);
    }
    QTest::mouseRelease(&b.bar, Qt::LeftButton, {}, at);
    QCOMPARE(b.changes.count(), 3);
    const QList<int> values = b.reported();
    QVERIFY(values[0] > 0 && values[0] < values[1] && values[1] < values[2]);
    // 60 pixels of a groove less its handle stand for the whole range.
    const int travel = groove.height() - handle.height();
    QVERIFY(qAbs(values[2] - 60 * 1000 / travel) <= 1000 / travel + 1);
}

void tst_ScrollBar::wheelNotchDownMovesThreeSmallChanges()
{
    Bar b;
    const QPoint at(8, 150);
    QWheelEvent wheel(at, b.bar.mapToGlobal(at), QPoint(), QPoint(0, -120), Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&b.bar, &wheel);
    QCOMPARE(b.reported(), QList<int>{132});
}

void tst_ScrollBar::keysMoveByStepPageAndToTheEnds()
{
    Bar b;
    b.bar.setFocus();
    QTest::keyClick(&b.bar, Qt::Key_Down);
    QTest::keyClick(&b.bar, Qt::Key_PageDown);
    QTest::keyClick(&b.bar, Qt::Key_End);
    QTest::keyClick(&b.bar, Qt::Key_Up);
    QTest::keyClick(&b.bar, Qt::Key_PageUp);
    QTest::keyClick(&b.bar, Qt::Key_Home);
    QCOMPARE(b.reported(), (QList<int>{44, 308, 1000, 956, 692, 0}));
    QCOMPARE(b.bar.focusPolicy(), Qt::StrongFocus);
}

void tst_ScrollBar::disabledBarIgnoresClicksAndKeys()
{
    Bar b;
    b.bar.setEnabled(false);
    QTest::mouseClick(&b.bar, Qt::LeftButton, {}, b.part(QStyle::SC_ScrollBarAddLine).center());
    QTest::mouseClick(&b.bar, Qt::LeftButton, {}, b.part(QStyle::SC_ScrollBarAddPage).center());
    QTest::keyClick(&b.bar, Qt::Key_Down);
    QCOMPARE(b.bar.Value(), 0);
    QCOMPARE(b.changes.count(), 0);
}

void tst_ScrollBar::screenReadersFindItsNameAndRole()
{
    Bar b;
    b.bar.setAccessibleName(QStringLiteral("Lines"));
    QAccessibleInterface* iface = QAccessible::queryAccessibleInterface(&b.bar);
    QVERIFY(iface);
    QCOMPARE(iface->role(), QAccessible::ScrollBar);
    QCOMPARE(iface->text(QAccessible::Name), QStringLiteral("Lines"));
}

QTEST_MAIN(tst_ScrollBar)
#include "tst_scrollbar.moc"
