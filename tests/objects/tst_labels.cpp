#include "objects/standalonelabelfield.h"
#include "objects/standalonelabelfields.h"
#include "objects/standalonelabels.h"

#include <QTest>

using namespace ZebObjects;

namespace {

// Seven fields, none on the label.
std::shared_ptr<StandaloneLabelFields> sevenFields()
{
    auto fields = std::make_shared<StandaloneLabelFields>();
    for (int i = 1; i <= 7; ++i)
        fields->Add(QStringLiteral("F%1").arg(i), QStringLiteral("Field %1").arg(i));
    return fields;
}

QStringList order(const LabelFields& fields)
{
    QStringList out;
    for (const auto& f : fields.Enumerate())
        out << QStringLiteral("%1:%2").arg(f->Key()).arg(f->PrintOrder());
    return out;
}

bool setByName(QObject& object, qint32 value)
{
    return object.setProperty("PrintOrder", QVariant::fromValue<qint32>(value));
}

}  // namespace

class TestLabels : public QObject {
    Q_OBJECT
private slots:
    void labelsStartWithAnEmptyFieldCollection()
    {
        StandaloneLabels labels;
        QVERIFY(labels.LabelFields() != nullptr);
        QCOMPARE(labels.LabelFields()->Count(), qint16(0));
        QVERIFY(labels.LabelFields()->Enumerate().isEmpty());
        QCOMPARE(labels.standaloneFields(),
                 std::dynamic_pointer_cast<StandaloneLabelFields>(labels.LabelFields()));
    }

    void setLabelFieldsPutsTheCollectionInPlace()
    {
        StandaloneLabels labels;
        auto fields = sevenFields();
        labels.setLabelFields(fields);
        QCOMPARE(labels.LabelFields(), std::static_pointer_cast<LabelFields>(fields));
        QCOMPARE(labels.LabelFields()->Count(), qint16(7));
    }

    void fieldAnswersCaptionAndKey()
    {
        StandaloneLabelFields fields;
        fields.Add(QStringLiteral("COMPANY"), QStringLiteral("Company"));
        const auto f = fields.Item(QStringLiteral("COMPANY"));
        QCOMPARE(f->Key(), QStringLiteral("COMPANY"));
        QCOMPARE(f->Caption(), QStringLiteral("Company"));
        QCOMPARE(f->Included(), false);
        QCOMPARE(f->PrintOrder(), qint16(0));
    }

    void lookupOfAMissingKeyFailsInsteadOfAnsweringAnEmptyField()
    {
        auto fields = sevenFields();
        try {
            fields->Item(QStringLiteral("F8"));
            QFAIL("no failure");
        } catch (const Failure& f) {
            QCOMPARE(f.Number(), 9);
            QCOMPARE(f.Source(), QStringLiteral("ZebObjects.LabelFields"));
            QCOMPARE(f.Description(),
                     QStringLiteral("Subscript out of range: no label field has the key \"F8\""));
        }
        QVERIFY_THROWS_EXCEPTION(Failure, fields->Item(QString()));
        QVERIFY_THROWS_EXCEPTION(Failure, fields->Item(QStringLiteral("f1")));
    }

    void keysAreUniqueADuplicateFailsWith457()
    {
        auto fields = sevenFields();
        try {
            fields->Add(QStringLiteral("F3"), QStringLiteral("Again"));
            QFAIL("no failure");
        } catch (const Failure& f) {
            QCOMPARE(f.Number(), 457);
            QCOMPARE(f.Description(),
                     QStringLiteral("This key is already associated with an element of this "
                                    "collection: \"F3\""));
        }
        QCOMPARE(fields->Count(), qint16(7));
        QCOMPARE(fields->Item(QStringLiteral("F3"))->Caption(), QStringLiteral("Field 3"));
    }

    void includedIsTrueExactlyWhenPrintOrderIsNotZero()
    {
        auto fields = sevenFields();
        const auto f = fields->Item(QStringLiteral("F1"));
        f->setPrintOrder(3);
        QCOMPARE(f->Included(), true);
        QCOMPARE(f->PrintOrder(), qint16(3));
        f->setPrintOrder(1);
        QCOMPARE(f->Included(), true);
        f->setPrintOrder(0);
        QCOMPARE(f->Included(), false);
        QCOMPARE(f->PrintOrder(), qint16(0));
    }

    void printOrderZeroOnAFieldNotIncludedIsAccepted()
    {
        auto fields = sevenFields();
        const auto f = fields->Item(QStringLiteral("F2"));
        f->setPrintOrder(0);
        QCOMPARE(f->Included(), false);
        QVERIFY(setByName(*f, 0));
        QCOMPARE(f->Included(), false);
    }

    void aSixthFieldWithAPositivePrintOrderStaysOffWithoutError()
    {
        auto fields = sevenFields();
        for (qint16 i = 1; i <= 5; ++i)
            fields->Item(QStringLiteral("F%1").arg(i))->setPrintOrder(i);
        const auto sixth = fields->Item(QStringLiteral("F6"));
        sixth->setPrintOrder(6);
        QCOMPARE(sixth->Included(), false);
        QCOMPARE(sixth->PrintOrder(), qint16(0));
        QCOMPARE(fields->includedCount(), qint16(5));
        // By name alike.
        QVERIFY(setByName(*sixth, 6));
        QCOMPARE(sixth->Included(), false);
    }

    void aFieldCanComeOnOnceAnotherHasGoneOff()
    {
        auto fields = sevenFields();
        for (qint16 i = 1; i <= 5; ++i)
            fields->Item(QStringLiteral("F%1").arg(i))->setPrintOrder(i);
        fields->Item(QStringLiteral("F2"))->setPrintOrder(0);
        const auto sixth = fields->Item(QStringLiteral("F6"));
        sixth->setPrintOrder(5);
        QCOMPARE(sixth->Included(), true);
    }

    void aFullLabelStillRenumbersTheFieldsOnIt()
    {
        auto fields = sevenFields();
        for (qint16 i = 1; i <= 5; ++i)
            fields->Item(QStringLiteral("F%1").arg(i))->setPrintOrder(i);
        const auto fifth = fields->Item(QStringLiteral("F5"));
        fifth->setPrintOrder(2);
        QCOMPARE(fifth->PrintOrder(), qint16(2));
        QVERIFY(setByName(*fifth, 4));
        QCOMPARE(fifth->PrintOrder(), qint16(4));
    }

    void equalPrintOrdersInTheMiddleOfARenumberingAreAccepted()
    {
        auto fields = sevenFields();
        const auto a = fields->Item(QStringLiteral("F1"));
        const auto b = fields->Item(QStringLiteral("F2"));
        const auto c = fields->Item(QStringLiteral("F3"));
        a->setPrintOrder(1);
        b->setPrintOrder(2);
        c->setPrintOrder(3);
        // The panel takes F2 off and renumbers the rest one at a time.
        b->setPrintOrder(0);
        QVERIFY(setByName(*a, 1));
        QVERIFY(setByName(*c, 1));
        QCOMPARE(a->PrintOrder(), qint16(1));
        QCOMPARE(c->PrintOrder(), qint16(1));
        QCOMPARE(a->Included(), true);
        QCOMPARE(c->Included(), true);
        QVERIFY(setByName(*c, 2));
        QCOMPARE(order(*fields), (QStringList{QStringLiteral("F1:1"), QStringLiteral("F3:2"),
                                              QStringLiteral("F2:0"), QStringLiteral("F4:0"),
                                              QStringLiteral("F5:0"), QStringLiteral("F6:0"),
                                              QStringLiteral("F7:0")}));
    }

    void printOrderIsWritableByNameThroughTheMetaObject()
    {
        auto fields = sevenFields();
        std::shared_ptr<LabelField> f = fields->Item(QStringLiteral("F4"));
        QObject& object = *f;
        QVERIFY(object.setProperty("PrintOrder", QVariant(qint32(2))));
        QCOMPARE(f->PrintOrder(), qint16(2));
        QCOMPARE(object.property("PrintOrder").toInt(), 2);
        QCOMPARE(object.property("PrintOrder").metaType(), QMetaType::fromType<qint32>());
        QVERIFY(setByName(object, 32767));
        QCOMPARE(f->PrintOrder(), qint16(32767));
    }

    void printOrderByNameThatDoesNotFitSixteenBitsFailsWithOverflow_data()
    {
        QTest::addColumn<qint32>("value");
        QTest::newRow("32768") << qint32(32768);
        QTest::newRow("70000") << qint32(70000);
        QTest::newRow("-32769") << qint32(-32769);
        QTest::newRow("max") << std::numeric_limits<qint32>::max();
    }
    void printOrderByNameThatDoesNotFitSixteenBitsFailsWithOverflow()
    {
        QFETCH(qint32, value);
        auto fields = sevenFields();
        const auto f = fields->Item(QStringLiteral("F1"));
        f->setPrintOrder(2);
        try {
            setByName(*f, value);
            QFAIL("no failure");
        } catch (const Failure& e) {
            QCOMPARE(e.Number(), 6);
            QCOMPARE(e.Source(), QStringLiteral("ZebObjects.LabelField"));
            QCOMPARE(
                e.Description(),
                QStringLiteral("Overflow: a print order of %1 does not fit 16 bits").arg(value));
        }
        QCOMPARE(f->PrintOrder(), qint16(2));
        // The object is still usable by name afterwards.
        QVERIFY(setByName(*f, 3));
        QCOMPARE(f->PrintOrder(), qint16(3));
    }

    void writePrintOrderNarrowsLikeTheWriteByName()
    {
        StandaloneLabelField f(QStringLiteral("K"), QStringLiteral("C"));
        f.writePrintOrder(7);
        QCOMPARE(f.PrintOrder(), qint16(7));
        QVERIFY_THROWS_EXCEPTION(Failure, f.writePrintOrder(40000));
        QCOMPARE(f.PrintOrder(), qint16(7));
    }

    void aNegativePrintOrderFailsWithInvalidArgument()
    {
        auto fields = sevenFields();
        const auto f = fields->Item(QStringLiteral("F1"));
        try {
            f->setPrintOrder(-1);
            QFAIL("no failure");
        } catch (const Failure& e) {
            QCOMPARE(e.Number(), 5);
            QCOMPARE(
                e.Description(),
                QStringLiteral(
                    "Invalid procedure call or argument: the print order of \"F1\" cannot be -1"));
        }
        QCOMPARE(f->Included(), false);
    }

    void enumerationGivesIncludedFieldsInPrintOrderThenTheOthersAsAdded()
    {
        auto fields = sevenFields();
        fields->Item(QStringLiteral("F6"))->setPrintOrder(1);
        fields->Item(QStringLiteral("F2"))->setPrintOrder(3);
        fields->Item(QStringLiteral("F4"))->setPrintOrder(2);
        const QStringList expected{QStringLiteral("F6:1"), QStringLiteral("F4:2"),
                                   QStringLiteral("F2:3"), QStringLiteral("F1:0"),
                                   QStringLiteral("F3:0"), QStringLiteral("F5:0"),
                                   QStringLiteral("F7:0")};
        QCOMPARE(order(*fields), expected);
        // Stable while nothing changes.
        QCOMPARE(order(*fields), expected);
        QCOMPARE(qsizetype(fields->Count()), fields->Enumerate().size());
    }

    void removingTheSecondOfThreeAndRenumberingLeavesOneTwoAndZero()
    {
        auto fields = sevenFields();
        fields->Item(QStringLiteral("F1"))->setPrintOrder(1);
        fields->Item(QStringLiteral("F2"))->setPrintOrder(2);
        fields->Item(QStringLiteral("F3"))->setPrintOrder(3);
        fields->Item(QStringLiteral("F2"))->setPrintOrder(0);
        const QStringList selected{QStringLiteral("F1"), QStringLiteral("F3")};
        for (int i = 0; i < selected.size(); ++i)
            QVERIFY(setByName(*fields->Item(selected[i]), i + 1));
        QCOMPARE(fields->Item(QStringLiteral("F1"))->PrintOrder(), qint16(1));
        QCOMPARE(fields->Item(QStringLiteral("F3"))->PrintOrder(), qint16(2));
        QCOMPARE(fields->Item(QStringLiteral("F2"))->PrintOrder(), qint16(0));
    }

    void addWithAPrintOrderPutsTheFieldOnTheLabelWithinTheLimit()
    {
        StandaloneLabelFields fields;
        for (qint16 i = 1; i <= 6; ++i)
            fields.Add(QStringLiteral("F%1").arg(i), QStringLiteral("Field %1").arg(i), i);
        QCOMPARE(fields.includedCount(), qint16(5));
        QCOMPARE(fields.Item(QStringLiteral("F5"))->Included(), true);
        QCOMPARE(fields.Item(QStringLiteral("F6"))->Included(), false);
    }

    void theLimitCanBeChanged()
    {
        auto fields = sevenFields();
        QCOMPARE(fields->maximumIncluded(), qint16(5));
        fields->setMaximumIncluded(2);
        fields->Item(QStringLiteral("F1"))->setPrintOrder(1);
        fields->Item(QStringLiteral("F2"))->setPrintOrder(2);
        fields->Item(QStringLiteral("F3"))->setPrintOrder(3);
        QCOMPARE(fields->Item(QStringLiteral("F3"))->Included(), false);
        fields->setMaximumIncluded(1);
        // Already on: they stay.
        QCOMPARE(fields->includedCount(), qint16(2));
    }

    void aFieldThatOutlivesItsCollectionHasNoLimit()
    {
        std::shared_ptr<StandaloneLabelField> kept;
        {
            auto fields = sevenFields();
            for (qint16 i = 1; i <= 5; ++i)
                fields->Item(QStringLiteral("F%1").arg(i))->setPrintOrder(i);
            kept = fields->field(QStringLiteral("F6"));
        }
        kept->setPrintOrder(6);
        QCOMPARE(kept->Included(), true);
    }

    void fieldGivesTheConcreteFieldAndFailsForAMissingKey()
    {
        auto fields = sevenFields();
        QCOMPARE(std::static_pointer_cast<LabelField>(fields->field(QStringLiteral("F1"))),
                 fields->Item(QStringLiteral("F1")));
        QVERIFY_THROWS_EXCEPTION(Failure, fields->field(QStringLiteral("nope")));
    }
};

QTEST_GUILESS_MAIN(TestLabels)
#include "tst_labels.moc"
