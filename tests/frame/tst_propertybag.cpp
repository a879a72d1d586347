#include "contracts/failure.h"
#include "frame/propertybag.h"

#include <QJsonDocument>
#include <QTest>

using namespace ZebSubCtl;
using ZebObjects::Failure;

class tst_PropertyBag : public QObject {
    Q_OBJECT
private slots:
    void valuesEqualToTheirDefaultsAreNotStored();
    void writingTheDefaultAgainForgetsAStoredValue();
    void absentKeyReadsAsTheDefault();
    void jsonRoundTripKeepsEveryValue();
    void jsonOfOnlyDefaultsIsEmpty();
    void malformedJsonFailsClearly();
    void jsonThatIsNotAnObjectFails();
    void nestedValueFailsNamingTheKey();
    void wronglyTypedFlagFailsNamingTheKey();
    void fractionalNumberForAWholeNumberFailsNamingTheKey();
    void numberTooLargeForSixteenBitsOverflowsNamingTheKey();
    void numberTooLargeForThirtyTwoBitsOverflows();
    void keysKeepTheirWriteOrder();
};

void tst_PropertyBag::valuesEqualToTheirDefaultsAreNotStored()
{
    PropertyBag bag;
    bag.WriteProperty(QStringLiteral("AllowUpdate"), false, false);
    bag.WriteProperty(QStringLiteral("MaxLength"), qint32(0), qint32(0));
    bag.WriteProperty(QStringLiteral("AllowReorder"), true, false);
    QCOMPARE(bag.keys(), QStringList{QStringLiteral("AllowReorder")});
}

void tst_PropertyBag::writingTheDefaultAgainForgetsAStoredValue()
{
    PropertyBag bag;
    bag.WriteProperty(QStringLiteral("AllowAdd"), true, false);
    bag.WriteProperty(QStringLiteral("AllowAdd"), false, false);
    QVERIFY(bag.isEmpty());
}

void tst_PropertyBag::absentKeyReadsAsTheDefault()
{
    PropertyBag bag;
    QCOMPARE(bag.ReadProperty(QStringLiteral("AllowSave"), false), QVariant(false));
    QCOMPARE(bag.ReadProperty(QStringLiteral("TextObjectType"), qint32(7)), QVariant(qint32(7)));
}

void tst_PropertyBag::jsonRoundTripKeepsEveryValue()
{
    PropertyBag bag;
    bag.WriteProperty(QStringLiteral("AllowUpdate"), true, false);
    bag.WriteProperty(QStringLiteral("MaxLength"), qint32(255), qint32(0));
    bag.WriteProperty(QStringLiteral("TextObjectType"), qint32(-3), qint32(0));
    bag.WriteProperty(QStringLiteral("Caption"), QStringLiteral("Remarks"), QString());
    const PropertyBag back = PropertyBag::fromJson(bag.toJson());
    QCOMPARE(back.ReadProperty(QStringLiteral("AllowUpdate"), false), QVariant(true));
    QCOMPARE(back.ReadProperty(QStringLiteral("MaxLength"), qint32(0)), QVariant(qint32(255)));
    QCOMPARE(back.ReadProperty(QStringLiteral("TextObjectType"), qint32(0)), QVariant(qint32(-3)));
    QCOMPARE(back.ReadProperty(QStringLiteral("Caption"), QString()),
             QVariant(QStringLiteral("Remarks")));
    QCOMPARE(back.keys().size(), 4);
}

void tst_PropertyBag::jsonOfOnlyDefaultsIsEmpty()
{
    PropertyBag bag;
    bag.WriteProperty(QStringLiteral("AllowUpdate"), false, false);
    QCOMPARE(QJsonDocument::fromJson(bag.toJson()).object().size(), 0);
}

void tst_PropertyBag::malformedJsonFailsClearly()
{
    try {
        PropertyBag::fromJson("{\"AllowUpdate\": tru");
        QFAIL("accepted");
    } catch (const Failure& f) {
        QCOMPARE(f.Number(), 380);
        QVERIFY2(f.Description().startsWith(
                     QStringLiteral("Invalid property value: the saved design is not valid JSON")),
                 qPrintable(f.Description()));
    }
}

void tst_PropertyBag::jsonThatIsNotAnObjectFails()
{
    QVERIFY_THROWS_EXCEPTION(Failure, PropertyBag::fromJson("[true, false]"));
}

void tst_PropertyBag::nestedValueFailsNamingTheKey()
{
    try {
        PropertyBag::fromJson("{\"AllowAdd\": {\"x\": 1}}");
        QFAIL("accepted");
    } catch (const Failure& f) {
        QCOMPARE(f.Number(), 380);
        QCOMPARE(f.Description(), QStringLiteral("Invalid property value: saved property "
                                                 "\"AllowAdd\" is neither a flag, a number nor a "
                                                 "text"));
    }
}

void tst_PropertyBag::wronglyTypedFlagFailsNamingTheKey()
{
    const PropertyBag bag = PropertyBag::fromJson("{\"AllowUpdate\": \"yes\"}");
    try {
        bag.ReadProperty(QStringLiteral("AllowUpdate"), false);
        QFAIL("accepted");
    } catch (const Failure& f) {
        QCOMPARE(f.Number(), 13);
        QCOMPARE(f.Description(), QStringLiteral("Type mismatch: saved property \"AllowUpdate\" "
                                                 "holds a text where a flag is expected"));
    }
}

void tst_PropertyBag::fractionalNumberForAWholeNumberFailsNamingTheKey()
{
    const PropertyBag bag = PropertyBag::fromJson("{\"MaxLength\": 2.5}");
    try {
        bag.ReadProperty(QStringLiteral("MaxLength"), qint32(0));
        QFAIL("accepted");
    } catch (const Failure& f) {
        QCOMPARE(f.Number(), 13);
        QVERIFY(f.Description().contains(QStringLiteral("\"MaxLength\"")));
    }
}

void tst_PropertyBag::numberTooLargeForSixteenBitsOverflowsNamingTheKey()
{
    const PropertyBag bag = PropertyBag::fromJson("{\"MaxLength\": 40000}");
    QCOMPARE(bag.ReadProperty(QStringLiteral("MaxLength"), qint32(0)), QVariant(qint32(40000)));
    try {
        bag.ReadProperty(QStringLiteral("MaxLength"), QVariant::fromValue(qint16(0)));
        QFAIL("accepted");
    } catch (const Failure& f) {
        QCOMPARE(f.Number(), 6);
        QVERIFY(f.Description().contains(QStringLiteral("\"MaxLength\"")));
    }
}

void tst_PropertyBag::numberTooLargeForThirtyTwoBitsOverflows()
{
    const PropertyBag bag = PropertyBag::fromJson("{\"TextObjectType\": 3000000000}");
    try {
        bag.ReadProperty(QStringLiteral("TextObjectType"), qint32(0));
        QFAIL("accepted");
    } catch (const Failure& f) {
        QCOMPARE(f.Number(), 6);
    }
}

void tst_PropertyBag::keysKeepTheirWriteOrder()
{
    PropertyBag bag;
    bag.WriteProperty(QStringLiteral("b"), true, false);
    bag.WriteProperty(QStringLiteral("a"), true, false);
    QCOMPARE(bag.keys(), (QStringList{QStringLiteral("b"), QStringLiteral("a")}));
}

QTEST_APPLESS_MAIN(tst_PropertyBag)
#include "tst_propertybag.moc"
