#include "contracts/failure.h"
#include "platform/checkbox.h"

#include <QSignalSpy>
#include <QTest>

using namespace ZebSubCtl;

class tst_CheckBox : public QObject {
    Q_OBJECT
private slots:
    void startsUnticked();
    void valueSetFromCodeRunsTheClickNotificationWhenItChanges();
    void valueSetToWhatItIsRunsNothing();
    void userClickTicksAndUnticksLikeCode();
    void userClickOnAGreyBoxTicksIt();
    void valueOutsideZeroToTwoFailsWith380();
    void valueIsAPropertyByName();
};

void tst_CheckBox::startsUnticked()
{
    CheckBox box(QStringLiteral("Selected"));
    QCOMPARE(box.value(), 0);
    QCOMPARE(box.text(), QStringLiteral("Selected"));
}

void tst_CheckBox::valueSetFromCodeRunsTheClickNotificationWhenItChanges()
{
    CheckBox box;
    QSignalSpy spy(&box, &CheckBox::valueChanged);
    box.setValue(1);
    QCOMPARE(spy.count(), 1);
    QCOMPARE(spy.at(0).at(0).toInt(), 1);
    box.setValue(2);
    QCOMPARE(box.value(), 2);
    box.setValue(0);
    QCOMPARE(spy.count(), 3);
    QCOMPARE(spy.at(2).at(0).toInt(), 0);
}

void tst_CheckBox::valueSetToWhatItIsRunsNothing()
{
    CheckBox box;
    QSignalSpy spy(&box, &CheckBox::valueChanged);
    box.setValue(0);
    QCOMPARE(spy.count(), 0);
    box.setValue(1);
    box.setValue(1);
    QCOMPARE(spy.count(), 1);
}

void tst_CheckBox::userClickTicksAndUnticksLikeCode()
{
    CheckBox box(QStringLiteral("Selected"));
    box.resize(120, 24);
    box.show();
    QVERIFY(QTest::qWaitForWindowExposed(&box));
    QSignalSpy spy(&box, &CheckBox::valueChanged);
    QTest::mouseClick(&box, Qt::LeftButton, {}, QPoint(8, 12));
    QCOMPARE(box.value(), 1);
    QCOMPARE(spy.count(), 1);
    QTest::mouseClick(&box, Qt::LeftButton, {}, QPoint(8, 12));
    QCOMPARE(box.value(), 0);
    QCOMPARE(spy.count(), 2);
}

void tst_CheckBox::userClickOnAGreyBoxTicksIt()
{
    CheckBox box(QStringLiteral("Selected"));
    box.resize(120, 24);
    box.show();
    QVERIFY(QTest::qWaitForWindowExposed(&box));
    box.setValue(2);
    QTest::mouseClick(&box, Qt::LeftButton, {}, QPoint(8, 12));
    QCOMPARE(box.value(), 1);
    QTest::mouseClick(&box, Qt::LeftButton, {}, QPoint(8, 12));
    QCOMPARE(box.value(), 0);
}

void tst_CheckBox::valueOutsideZeroToTwoFailsWith380()
{
    CheckBox box;
    box.setValue(1);
    try {
        box.setValue(3);
        QFAIL("no failure");
    } catch (const ZebObjects::Failure& f) {
        QCOMPARE(f.Number(), 380);
        QCOMPARE(f.Description(), QStringLiteral("Invalid property value"));
    }
    QCOMPARE(box.value(), 1);
}

void tst_CheckBox::valueIsAPropertyByName()
{
    CheckBox box;
    QVERIFY(box.setProperty("Value", 1));
    QCOMPARE(box.value(), 1);
    QCOMPARE(box.property("Value").toInt(), 1);
}

QTEST_MAIN(tst_CheckBox)
#include "tst_checkbox.moc"
