#include "contracts/failure.h"
#include "platform/optionbutton.h"
#include "platform/optiongroup.h"

#include <QSignalSpy>
#include <QLineEdit>
#include <QTest>
#include <QVBoxLayout>
#include <QWidget>

#include <memory>

using namespace ZebSubCtl;

namespace {

// Eight purpose options in a column, as a panel lays them out.
struct EightOptions {
    QWidget form;
    OptionGroup group;
    QList<OptionButton*> buttons;

    EightOptions()
    {
        auto* layout = new QVBoxLayout(&form);
        for (int i = 0; i < 8; ++i) {
            auto* b = new OptionButton(QStringLiteral("Option %1").arg(i), &form);
            b->setObjectName(QStringLiteral("optSubmittalPurpose"));
            layout->addWidget(b);
            group.add(i, b);
            buttons.append(b);
        }
        form.resize(220, 260);
    }
    void show()
    {
        form.show();
        form.activateWindow();
        QVERIFY(QTest::qWaitForWindowExposed(&form));
    }
};

QPoint indicator(const OptionButton* b)
{
    return QPoint(8, b->height() / 2);
}

}  // namespace

class tst_OptionButton : public QObject {
    Q_OBJECT
private slots:
    void startsCleared();
    void selectingFromCodeRunsTheClickOnce();
    void selectingTheSelectedButtonRunsNothing();
    void clearingFromCodeRunsNoClickAndLeavesNoneSelected();
    void theButtonThatIsClearedRunsNoClick();
    void userClickSelectsAndRunsTheClickOnce();
    void userClickOnTheSelectedButtonRunsNothing();
    void groupIsExclusive();
    void groupReportsTheIndexOfTheSelectedButton();
    void groupReportsTheIndexForCodeAndUserAlike();
    void codeSelectsADisabledButtonAndRunsItsClick();
    void userCannotSelectADisabledButton();
    void downAndRightMoveToTheNextButton();
    void upAndLeftMoveToThePreviousButton();
    void arrowKeysWrapAtTheEnds();
    void arrowKeysSkipDisabledAndHiddenButtons();
    void arrowKeysStayInsideTheGroup();
    void siblingsOutsideAGroupAreExclusive();
    void indexUsedTwiceFailsWith360();
    void indexNotInTheGroupFailsWith340();
    void valueIsAPropertyByName();
    void groupGoneLeavesWorkingButtons();
    void tabEntersTheGroupAtTheSelectedButtonAndLeavesItWithTheNextTab();
    void tabEntersAGroupWithNoneSelectedAtItsFirstButton();
};

void tst_OptionButton::startsCleared()
{
    EightOptions o;
    QCOMPARE(o.group.count(), 8);
    QCOMPARE(o.group.selectedIndex(), -1);
    for (OptionButton* b : o.buttons)
        QVERIFY(!b->value());
    QCOMPARE(o.group.indices(), (QList<int>{0, 1, 2, 3, 4, 5, 6, 7}));
}

void tst_OptionButton::selectingFromCodeRunsTheClickOnce()
{
    EightOptions o;
    QSignalSpy clicks(o.buttons[3], &OptionButton::selected);
    QSignalSpy groupClicks(&o.group, &OptionGroup::optionClicked);
    o.buttons[3]->setValue(true);
    QCOMPARE(clicks.count(), 1);
    QCOMPARE(groupClicks.count(), 1);
    QCOMPARE(groupClicks.at(0).at(0).toInt(), 3);
    QVERIFY(o.buttons[3]->value());
}

void tst_OptionButton::selectingTheSelectedButtonRunsNothing()
{
    EightOptions o;
    o.buttons[2]->setValue(true);
    QSignalSpy clicks(o.buttons[2], &OptionButton::selected);
    QSignalSpy groupClicks(&o.group, &OptionGroup::optionClicked);
    o.buttons[2]->setValue(true);
    QCOMPARE(clicks.count(), 0);
    QCOMPARE(groupClicks.count(), 0);
}

void tst_OptionButton::clearingFromCodeRunsNoClickAndLeavesNoneSelected()
{
    EightOptions o;
    o.buttons[5]->setValue(true);
    QSignalSpy groupClicks(&o.group, &OptionGroup::optionClicked);
    QSignalSpy clicks(o.buttons[5], &OptionButton::selected);
    o.buttons[5]->setValue(false);
    QVERIFY(!o.buttons[5]->value());
    QCOMPARE(o.group.selectedIndex(), -1);
    QCOMPARE(clicks.count(), 0);
    QCOMPARE(groupClicks.count(), 0);
    // The group is still exclusive afterwards.
    o.buttons[1]->setValue(true);
    o.buttons[6]->setValue(true);
    QVERIFY(!o.buttons[1]->value());
    QCOMPARE(o.group.selectedIndex(), 6);
}

void tst_OptionButton::theButtonThatIsClearedRunsNoClick()
{
    EightOptions o;
    o.buttons[0]->setValue(true);
    QSignalSpy cleared(o.buttons[0], &OptionButton::selected);
    QSignalSpy chosen(o.buttons[4], &OptionButton::selected);
    QSignalSpy groupClicks(&o.group, &OptionGroup::optionClicked);
    o.buttons[4]->setValue(true);
    QVERIFY(!o.buttons[0]->value());
    QCOMPARE(cleared.count(), 0);
    QCOMPARE(chosen.count(), 1);
    QCOMPARE(groupClicks.count(), 1);
    QCOMPARE(groupClicks.at(0).at(0).toInt(), 4);
}

void tst_OptionButton::userClickSelectsAndRunsTheClickOnce()
{
    EightOptions o;
    o.show();
    QSignalSpy clicks(o.buttons[1], &OptionButton::selected);
    QSignalSpy groupClicks(&o.group, &OptionGroup::optionClicked);
    QTest::mouseClick(o.buttons[1], Qt::LeftButton, {}, indicator(o.buttons[1]));
    QVERIFY(o.buttons[1]->value());
    QCOMPARE(clicks.count(), 1);
    QCOMPARE(groupClicks.count(), 1);
    QCOMPARE(groupClicks.at(0).at(0).toInt(), 1);
}

void tst_OptionButton::userClickOnTheSelectedButtonRunsNothing()
{
    EightOptions o;
    o.show();
    o.buttons[1]->setValue(true);
    QSignalSpy groupClicks(&o.group, &OptionGroup::optionClicked);
    QTest::mouseClick(o.buttons[1], Qt::LeftButton, {}, indicator(o.buttons[1]));
    QVERIFY(o.buttons[1]->value());
    QCOMPARE(groupClicks.count(), 0);
}

void tst_OptionButton::groupIsExclusive()
{
    EightOptions o;
    o.show();
    o.buttons[0]->setValue(true);
    QTest::mouseClick(o.buttons[7], Qt::LeftButton, {}, indicator(o.buttons[7]));
    int selected = 0;
    for (OptionButton* b : o.buttons)
        selected += b->value() ? 1 : 0;
    QCOMPARE(selected, 1);
    QVERIFY(o.buttons[7]->value());
}

void tst_OptionButton::groupReportsTheIndexOfTheSelectedButton()
{
    EightOptions o;
    for (int i = 7; i >= 0; --i) {
        o.group.button(i)->setValue(true);
        QCOMPARE(o.group.selectedIndex(), i);
        QCOMPARE(o.group.indexOf(o.buttons[i]), i);
    }
    OptionButton stranger;
    QCOMPARE(o.group.indexOf(&stranger), -1);
    QCOMPARE(o.buttons[0]->group(), &o.group);
    QCOMPARE(stranger.group(), nullptr);
}

void tst_OptionButton::groupReportsTheIndexForCodeAndUserAlike()
{
    EightOptions o;
    o.show();
    QSignalSpy groupClicks(&o.group, &OptionGroup::optionClicked);
    o.buttons[6]->setValue(true);
    QTest::mouseClick(o.buttons[2], Qt::LeftButton, {}, indicator(o.buttons[2]));
    o.buttons[2]->setFocus();
    QTest::keyClick(o.buttons[2], Qt::Key_Down);
    QCOMPARE(groupClicks.count(), 3);
    QCOMPARE(groupClicks.at(0).at(0).toInt(), 6);
    QCOMPARE(groupClicks.at(1).at(0).toInt(), 2);
    QCOMPARE(groupClicks.at(2).at(0).toInt(), 3);
}

void tst_OptionButton::codeSelectsADisabledButtonAndRunsItsClick()
{
    EightOptions o;
    o.buttons[0]->setValue(true);
    o.buttons[3]->setEnabled(false);
    QSignalSpy clicks(o.buttons[3], &OptionButton::selected);
    QSignalSpy groupClicks(&o.group, &OptionGroup::optionClicked);
    o.buttons[3]->setValue(true);
    QVERIFY(o.buttons[3]->value());
    QVERIFY(!o.buttons[0]->value());
    QCOMPARE(clicks.count(), 1);
    QCOMPARE(groupClicks.count(), 1);
    QCOMPARE(groupClicks.at(0).at(0).toInt(), 3);
    QVERIFY(!o.buttons[3]->isEnabled());
}

void tst_OptionButton::userCannotSelectADisabledButton()
{
    EightOptions o;
    o.show();
    o.buttons[0]->setValue(true);
    o.buttons[3]->setEnabled(false);
    QSignalSpy groupClicks(&o.group, &OptionGroup::optionClicked);
    QTest::mouseClick(o.buttons[3], Qt::LeftButton, {}, indicator(o.buttons[3]));
    QVERIFY(!o.buttons[3]->value());
    QVERIFY(o.buttons[0]->value());
    QCOMPARE(groupClicks.count(), 0);
    o.buttons[3]->setEnabled(true);
    QTest::mouseClick(o.buttons[3], Qt::LeftButton, {}, indicator(o.buttons[3]));
    QVERIFY(o.buttons[3]->value());
    QCOMPARE(groupClicks.count(), 1);
}

void tst_OptionButton::downAndRightMoveToTheNextButton()
{
    EightOptions o;
    o.show();
    o.buttons[2]->setValue(true);
    o.buttons[2]->setFocus();
    QSignalSpy groupClicks(&o.group, &OptionGroup::optionClicked);
    QTest::keyClick(o.buttons[2], Qt::Key_Down);
    QCOMPARE(o.group.selectedIndex(), 3);
    QVERIFY(o.buttons[3]->hasFocus());
    QTest::keyClick(o.buttons[3], Qt::Key_Right);
    QCOMPARE(o.group.selectedIndex(), 4);
    QVERIFY(o.buttons[4]->hasFocus());
    QCOMPARE(groupClicks.count(), 2);
    QCOMPARE(groupClicks.at(1).at(0).toInt(), 4);
}

void tst_OptionButton::upAndLeftMoveToThePreviousButton()
{
    EightOptions o;
    o.show();
    o.buttons[5]->setValue(true);
    o.buttons[5]->setFocus();
    QTest::keyClick(o.buttons[5], Qt::Key_Up);
    QCOMPARE(o.group.selectedIndex(), 4);
    QTest::keyClick(o.buttons[4], Qt::Key_Left);
    QCOMPARE(o.group.selectedIndex(), 3);
    QVERIFY(o.buttons[3]->hasFocus());
}

void tst_OptionButton::arrowKeysWrapAtTheEnds()
{
    EightOptions o;
    o.show();
    o.buttons[7]->setValue(true);
    o.buttons[7]->setFocus();
    QTest::keyClick(o.buttons[7], Qt::Key_Down);
    QCOMPARE(o.group.selectedIndex(), 0);
    QTest::keyClick(o.buttons[0], Qt::Key_Up);
    QCOMPARE(o.group.selectedIndex(), 7);
}

void tst_OptionButton::arrowKeysSkipDisabledAndHiddenButtons()
{
    EightOptions o;
    o.show();
    o.buttons[3]->setEnabled(false);
    o.buttons[4]->hide();
    o.buttons[2]->setValue(true);
    o.buttons[2]->setFocus();
    QTest::keyClick(o.buttons[2], Qt::Key_Down);
    QCOMPARE(o.group.selectedIndex(), 5);
    QTest::keyClick(o.buttons[5], Qt::Key_Up);
    QCOMPARE(o.group.selectedIndex(), 2);
}

void tst_OptionButton::arrowKeysStayInsideTheGroup()
{
    EightOptions o;
    auto* outsider = new OptionButton(QStringLiteral("Outside"), &o.form);
    o.form.layout()->addWidget(outsider);
    o.show();
    o.buttons[7]->setValue(true);
    o.buttons[7]->setFocus();
    QTest::keyClick(o.buttons[7], Qt::Key_Down);
    QVERIFY(!outsider->value());
    QVERIFY(!outsider->hasFocus());
    QCOMPARE(o.group.selectedIndex(), 0);
}

void tst_OptionButton::siblingsOutsideAGroupAreExclusive()
{
    QWidget form;
    auto* same = new OptionButton(QStringLiteral("Same Letter"), &form);
    auto* separate = new OptionButton(QStringLiteral("Separate"), &form);
    QSignalSpy sameClicks(same, &OptionButton::selected);
    QSignalSpy separateClicks(separate, &OptionButton::selected);
    same->setValue(true);
    separate->setValue(true);
    QVERIFY(!same->value());
    QVERIFY(separate->value());
    QCOMPARE(sameClicks.count(), 1);
    QCOMPARE(separateClicks.count(), 1);
    separate->setValue(false);
    QVERIFY(!separate->value());
    QVERIFY(!same->value());
    QCOMPARE(separateClicks.count(), 1);
    same->setValue(true);
    QCOMPARE(sameClicks.count(), 2);
}

void tst_OptionButton::indexUsedTwiceFailsWith360()
{
    EightOptions o;
    OptionButton extra(&o.form);
    try {
        o.group.add(2, &extra);
        QFAIL("no failure");
    } catch (const ZebObjects::Failure& f) {
        QCOMPARE(f.Number(), 360);
    }
    QCOMPARE(o.group.count(), 8);
    QCOMPARE(o.group.button(2), o.buttons[2]);
}

void tst_OptionButton::indexNotInTheGroupFailsWith340()
{
    EightOptions o;
    try {
        o.group.button(8);
        QFAIL("no failure");
    } catch (const ZebObjects::Failure& f) {
        QCOMPARE(f.Number(), 340);
    }
}

void tst_OptionButton::valueIsAPropertyByName()
{
    EightOptions o;
    QSignalSpy groupClicks(&o.group, &OptionGroup::optionClicked);
    QVERIFY(o.buttons[1]->setProperty("Value", true));
    QCOMPARE(o.buttons[1]->property("Value").toBool(), true);
    QCOMPARE(groupClicks.count(), 1);
}

void tst_OptionButton::groupGoneLeavesWorkingButtons()
{
    QWidget form;
    auto* a = new OptionButton(QStringLiteral("A"), &form);
    auto* b = new OptionButton(QStringLiteral("B"), &form);
    {
        OptionGroup group;
        group.add(0, a);
        group.add(1, b);
        a->setValue(true);
    }
    QCOMPARE(a->group(), nullptr);
    QSignalSpy clicks(b, &OptionButton::selected);
    b->setValue(true);
    QCOMPARE(clicks.count(), 1);
    QVERIFY(!a->value());
}

namespace {

// A box before and a box after the eight options, in tab order.
struct Surrounded {
    EightOptions o;
    QLineEdit* before = new QLineEdit(&o.form);
    QLineEdit* after = new QLineEdit(&o.form);
    Surrounded()
    {
        auto* layout = static_cast<QVBoxLayout*>(o.form.layout());
        layout->insertWidget(0, before);
        layout->addWidget(after);
        QWidget::setTabOrder(before, o.buttons[0]);
        QWidget::setTabOrder(o.buttons[7], after);
        o.form.resize(220, 320);
        o.show();
    }
};

}  // namespace

void tst_OptionButton::tabEntersTheGroupAtTheSelectedButtonAndLeavesItWithTheNextTab()
{
    Surrounded s;
    s.o.buttons[5]->setValue(true);
    s.before->setFocus();
    QTest::keyClick(s.before, Qt::Key_Tab);
    QVERIFY(s.o.buttons[5]->hasFocus());
    QTest::keyClick(s.o.buttons[5], Qt::Key_Tab);
    QVERIFY(s.after->hasFocus());
    QTest::keyClick(s.after, Qt::Key_Backtab, Qt::ShiftModifier);
    QVERIFY(s.o.buttons[5]->hasFocus());
    // After an arrow key the new selection is the group's tab stop.
    QTest::keyClick(s.o.buttons[5], Qt::Key_Down);
    QTest::keyClick(s.o.buttons[6], Qt::Key_Backtab, Qt::ShiftModifier);
    QVERIFY(s.before->hasFocus());
    QTest::keyClick(s.before, Qt::Key_Tab);
    QVERIFY(s.o.buttons[6]->hasFocus());
}

void tst_OptionButton::tabEntersAGroupWithNoneSelectedAtItsFirstButton()
{
    Surrounded s;
    s.before->setFocus();
    QTest::keyClick(s.before, Qt::Key_Tab);
    QVERIFY(s.o.buttons[0]->hasFocus());
    QCOMPARE(s.o.group.selectedIndex(), -1);
    QTest::keyClick(s.o.buttons[0], Qt::Key_Tab);
    QVERIFY(s.after->hasFocus());
}

QTEST_MAIN(tst_OptionButton)
#include "tst_optionbutton.moc"
