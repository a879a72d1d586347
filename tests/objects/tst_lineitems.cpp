#include "objects/standalonelineitems.h"

#include <QTest>

using namespace ZebObjects;

namespace {

StandaloneLineItem::Data line(qint32 quantity, const char* type)
{
    StandaloneLineItem::Data d;
    d.quantity = quantity;
    d.type = QString::fromLatin1(type);
    return d;
}

}  // namespace

class TestLineItems : public QObject {
    Q_OBJECT
private slots:
    void emptyCollectionEnumeratesNothingAndCountsZero()
    {
        StandaloneLineItems items;
        QVERIFY(items.Enumerate().isEmpty());
        QCOMPARE(items.Count(), qint16(0));
    }

    void countEqualsWhatTheEnumerationYields()
    {
        StandaloneLineItems items;
        for (int n = 1; n <= 5; ++n) {
            items.Add(line(n, "A"));
            QCOMPARE(qsizetype(items.Count()), items.Enumerate().size());
        }
        items.Clear();
        QCOMPARE(items.Count(), qint16(0));
        QVERIFY(items.Enumerate().isEmpty());
    }

    void itemPositionOutOfRangeFails()
    {
        StandaloneLineItems items;
        items.Add(line(1, "A"));
        for (qint16 p : {qint16(0), qint16(2), qint16(-3)}) {
            try {
                items.Item(p);
                QFAIL("no failure");
            } catch (const Failure& f) {
                QCOMPARE(f.Number(), 9);
                QCOMPARE(f.Source(), QStringLiteral("ZebObjects.LineItems"));
                QCOMPARE(
                    f.Description(),
                    QStringLiteral("Subscript out of range: no line at position %1 of 1").arg(p));
            }
        }
    }

    void membersAnswerWhatTheLineHolds()
    {
        StandaloneLineItem::Data d;
        d.quantity = 24;
        d.type = QStringLiteral("A1");
        d.brand = QStringLiteral("Varnholt");
        d.catalogNumber = QStringLiteral("VH-2X2-LP");
        d.description = QStringLiteral("2x2 troffer");
        d.group = QStringLiteral("LVL1");
        d.mto = true;
        d.comment = QStringLiteral("See note 4.");
        d.selected = true;
        StandaloneLineItem item(d);
        QCOMPARE(item.Selected(), true);
        QCOMPARE(item.Quantity(), QStringLiteral("24"));
        QCOMPARE(item.Type(), QStringLiteral("A1"));
        QCOMPARE(item.Brand(), QStringLiteral("Varnholt"));
        QCOMPARE(item.CatalogNumber(), QStringLiteral("VH-2X2-LP"));
        QCOMPARE(item.Description(), QStringLiteral("2x2 troffer"));
        QCOMPARE(item.Group(), QStringLiteral("LVL1"));
        QCOMPARE(item.MTO(), true);
        QVERIFY(item.Comment() != nullptr);
        QCOMPARE(item.Comment()->Text(), QStringLiteral("See note 4."));
        QCOMPARE(item.quantity(), 24);
    }

    void quantityIsFormattedAsPlainDecimal_data()
    {
        QTest::addColumn<qint32>("quantity");
        QTest::addColumn<QString>("text");
        QTest::newRow("0") << 0 << QStringLiteral("0");
        QTest::newRow("1200") << 1200 << QStringLiteral("1200");
        QTest::newRow("-2") << -2 << QStringLiteral("-2");
    }
    void quantityIsFormattedAsPlainDecimal()
    {
        QFETCH(qint32, quantity);
        QFETCH(QString, text);
        QCOMPARE(StandaloneLineItem(line(quantity, "A")).Quantity(), text);
    }

    void commentMayBeNone()
    {
        StandaloneLineItem item(line(1, "A"));
        QVERIFY(item.Comment() == nullptr);
        QCOMPARE(item.MTO(), false);
    }

    void anEmptyCommentIsStillAComment()
    {
        auto d = line(1, "A");
        d.comment = QString();
        StandaloneLineItem item(d);
        QVERIFY(item.Comment() != nullptr);
        QCOMPARE(item.Comment()->Text(), QString());
    }

    void textMembersMayBeEmpty()
    {
        StandaloneLineItem item{StandaloneLineItem::Data{}};
        QCOMPARE(item.Type(), QString());
        QCOMPARE(item.Brand(), QString());
        QCOMPARE(item.CatalogNumber(), QString());
        QCOMPARE(item.Description(), QString());
        QCOMPARE(item.Group(), QString());
        QCOMPARE(item.Quantity(), QStringLiteral("0"));
    }

    void writingSelectedWithItsCurrentValueIsAccepted()
    {
        StandaloneLineItem item(line(1, "A"));
        item.setSelected(false);
        QCOMPARE(item.Selected(), false);
        item.setSelected(true);
        item.setSelected(true);
        QCOMPARE(item.Selected(), true);
        item.setSelected(false);
        QCOMPARE(item.Selected(), false);
    }

    void readsAreFreeOfSideEffects()
    {
        auto d = line(3, "B");
        d.comment = QStringLiteral("c");
        StandaloneLineItem item(d);
        item.faults().setRecording(true);
        const auto comment = item.Comment();
        for (int i = 0; i < 3; ++i) {
            QCOMPARE(item.Type(), QStringLiteral("B"));
            QCOMPARE(item.Quantity(), QStringLiteral("3"));
            QCOMPARE(item.Selected(), false);
            QCOMPARE(item.Comment(), comment);
        }
        // Nothing but reads was called, and only the calls made.
        QCOMPARE(item.faults().calls().size(), 1 + 3 * 4);
        QVERIFY(!item.faults().calls().contains(QStringLiteral("Selected=")));
    }

    void aLineIsTheSameObjectEveryTime()
    {
        StandaloneLineItems items;
        items.Add(line(1, "A"));
        QCOMPARE(items.Item(1), items.Enumerate().first());
        QCOMPARE(items.Item(1), items.Item(1));
        QCOMPARE(std::static_pointer_cast<LineItem>(items.line(1)), items.Item(1));
        items.Item(1)->setSelected(true);
        QCOMPARE(items.Enumerate().first()->Selected(), true);
    }
};

QTEST_GUILESS_MAIN(TestLineItems)
#include "tst_lineitems.moc"
