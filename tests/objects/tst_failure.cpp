// The named failures the widgets and controls raise: number, source and text, exactly.
#include "contracts/failure.h"

#include <QTest>

using ZebObjects::ErrorInfo;
using ZebObjects::Failure;

class tst_Failure : public QObject {
    Q_OBJECT
private slots:
    void namesAreTheRunTimesNumbers();
    void invalidPropertyValueIs380();
    void controlArrayElementMissingIs340NamingTheIndex();
    void indexOutOfBoundsIs35600FromItsSource();
    void whatIsNumberAndDescription();
};

void tst_Failure::namesAreTheRunTimesNumbers()
{
    QCOMPARE(ZebObjects::ErrorNumber::ControlArrayElementMissing, 340);
    QCOMPARE(ZebObjects::ErrorNumber::InvalidPropertyValue, 380);
    QCOMPARE(ZebObjects::ErrorNumber::IndexOutOfBounds, 35600);
}

void tst_Failure::invalidPropertyValueIs380()
{
    QCOMPARE(
        Failure::invalidPropertyValue().info(),
        (ErrorInfo{380, QStringLiteral("ZebSubCtl"), QStringLiteral("Invalid property value")}));
    QCOMPARE(Failure::invalidPropertyValue(QStringLiteral("Host")).Source(),
             QStringLiteral("Host"));
}

void tst_Failure::controlArrayElementMissingIs340NamingTheIndex()
{
    QCOMPARE(Failure::controlArrayElementMissing(7).info(),
             (ErrorInfo{340, QStringLiteral("ZebSubCtl"),
                        QStringLiteral("Control array element '7' doesn't exist")}));
}

void tst_Failure::indexOutOfBoundsIs35600FromItsSource()
{
    QCOMPARE(Failure::indexOutOfBounds(QStringLiteral("ZebSubCtl.ListView")).info(),
             (ErrorInfo{35600, QStringLiteral("ZebSubCtl.ListView"),
                        QStringLiteral("Index out of bounds")}));
}

void tst_Failure::whatIsNumberAndDescription()
{
    QCOMPARE(QByteArray(Failure::invalidPropertyValue().what()),
             QByteArray("380 - Invalid property value"));
}

QTEST_GUILESS_MAIN(tst_Failure)
#include "tst_failure.moc"
