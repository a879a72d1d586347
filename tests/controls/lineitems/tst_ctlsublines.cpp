#include "controls/lineitems/ctlsubline.h"
#include "controls/lineitems/ctlsublines.h"
#include "frame/controlregistry.h"
#include "lineitemtesting.h"
#include "platform/paintedlabel.h"
#include "support/testsupport.h"

#include <QPointer>
#include <QSignalSpy>
#include <QTest>

using namespace ZebSubCtl;
using namespace ZebTest;
using ZebObjects::ErrorInfo;
using ZebObjects::Failure;
using ZebObjects::StandaloneLineItems;

namespace {

const QString kModule = QStringLiteral("ctlSubLines");

QString logError(const QString& label, const ErrorInfo& e, const QString& module = kModule)
{
    return logLine("LogError", module, label, e);
}

ErrorInfo missingRow(int index)
{
    return ErrorInfo{340, QStringLiteral("ZebSubCtl"),
                     QStringLiteral("Control array element '%1' doesn't exist").arg(index)};
}

// One list, shown, with its own log and message boxes and a spy on HeightChanged.
struct Fixture {
    Harness h;
    std::unique_ptr<ctlSubLines> list = std::make_unique<ctlSubLines>();
    QSignalSpy grew{list.get(), &ctlSubLines::HeightChanged};

    Fixture()
    {
        list->show();
        if (!QTest::qWaitForWindowExposed(list.get()))
            qFatal("list not exposed");
        h.log().clear();
    }

    // The rows as children of the list, in index order.
    QList<ctlSubLine*> rows() const
    {
        QList<ctlSubLine*> out = list->findChildren<ctlSubLine*>(QStringLiteral("ctlSubLine"),
                                                                 Qt::FindDirectChildrenOnly);
        std::sort(out.begin(), out.end(),
                  [](ctlSubLine* a, ctlSubLine* b) { return a->Index() < b->Index(); });
        return out;
    }
    static QString caption(ctlSubLine* row, const char* name)
    {
        return row->findChild<PaintedLabel*>(QLatin1String(name))->Caption();
    }
    std::shared_ptr<StandaloneLineItems> bind(int count)
    {
        auto items = lines(count);
        list->setLineItems(items);
        return items;
    }
};

// Row by row: index, place, size, number, shading, bound line and its texts; no gaps.
void checkStack(Fixture& f, const std::shared_ptr<StandaloneLineItems>& items, int count)
{
    const QList<ctlSubLine*> rows = f.rows();
    QCOMPARE(rows.size(), qMax(1, count));
    for (int i = 1; i <= count; ++i) {
        ctlSubLine* row = rows[i - 1];
        QCOMPARE(row->Index(), qint16(i));
        QCOMPARE(row->parentWidget(), f.list.get());
        QVERIFY(row->isVisible());
        QCOMPARE(row->x(), 0);
        QCOMPARE(row->y(), (i - 1) * 44);
        QCOMPARE(row->height(), 44);
        QCOMPARE(row->width(), f.list->width());
        QCOMPARE(row->LineNumber(), QString::number(i));
        QCOMPARE(row->Grayed(), i % 2 == 0);
        QCOMPARE(row->BackColor(), i % 2 == 0 ? QRgb(0xE0E0E0) : QRgb(0xFFFFFF));
        QCOMPARE(row->LineItem(), std::shared_ptr<ZebObjects::LineItem>(items->line(qint16(i))));
        QCOMPARE(Fixture::caption(row, "lblType"), QStringLiteral("T%1").arg(i));
        if (i > 1)
            QCOMPARE(row->y(), rows[i - 2]->y() + rows[i - 2]->height());
    }
}

}  // namespace

class tst_ctlSubLines : public QObject {
    Q_OBJECT
private slots:
    void registeredUnderItsIdentifier();
    void startsWithTheDesignTimeRowOnly();
    void populatingWithThreeItemsNumbersShadesStacksAndRaisesHeightChangedTwice();
    void twentyItemsStackRowByRowWithoutGaps();
    void aCollectionOfExactlyOneItemRaisesNoHeightChanged();
    void anEmptyCollectionRaisesNoHeightChangedAndKeepsTheHeight();
    void replacingWithAnEmptyCollectionLeavesOneUnboundRowShowingTheOldFirstItem();
    void unbindingWithNoneClearsDownToTheFirstRow();
    void lineHeightReadsRowOneEvenWhenOtherRowsExist();
    void theDesignTimeRowIsNeverDestroyed();
    void rebindingDestroysTheExtraRowsAndBuildsNewOnes();
    void newRowsTakeTheWidthOfTheListAfterItGrows();
    void enumeratesOnceAndReadsCountOncePerItem();
    void propertiesWorkByName();
    void binding744ItemsFillsTheListToItsLimit();
    void binding745ItemsFailsWithOverflowAfterTheRowsBuiltSoFar();
    void enumerationFailureReachesTheCallerAfterClearing();
    void countFailureLeavesTheRowsBuiltSoFar();
    void itemMemberFailureIsTheRowsOwnAndTheListCarriesOn();
    void lineHeightFailsWithoutRowOneAndTheListRecovers();
    void resizeWidensEveryRowAndLeavesTopsAndHeights();
    void resizeResumesAfterARowThatCannotBeWidened();
    void everyCaptionFitsAndScreenReadersFindEveryName();
};

void tst_ctlSubLines::registeredUnderItsIdentifier()
{
    std::unique_ptr<UserControl> c(
        ControlRegistry::instance().create(QStringLiteral("ZebSubmittalControls.ctlSubLines")));
    QVERIFY(qobject_cast<ctlSubLines*>(c.get()));
    QCOMPARE(c->Name(), QStringLiteral("ctlSubLines"));
}

void tst_ctlSubLines::startsWithTheDesignTimeRowOnly()
{
    Fixture f;
    QCOMPARE(f.list->size(), QSize(590, 44));
    const QList<ctlSubLine*> rows = f.rows();
    QCOMPARE(rows.size(), 1);
    QCOMPARE(rows[0]->Index(), qint16(1));
    QCOMPARE(rows[0]->geometry(), QRect(0, 0, 590, 44));
    QCOMPARE(f.list->row(1), rows[0]);
    QCOMPARE(f.list->LineHeight(), qint16(44));
    QVERIFY(!f.list->LineItems());
}

void tst_ctlSubLines::populatingWithThreeItemsNumbersShadesStacksAndRaisesHeightChangedTwice()
{
    Fixture f;
    auto items = f.bind(3);
    checkStack(f, items, 3);
    const QList<ctlSubLine*> rows = f.rows();
    QCOMPARE((QStringList{rows[0]->LineNumber(), rows[1]->LineNumber(), rows[2]->LineNumber()}),
             (QStringList{"1", "2", "3"}));
    QCOMPARE((QList<bool>{rows[0]->Grayed(), rows[1]->Grayed(), rows[2]->Grayed()}),
             (QList<bool>{false, true, false}));
    QCOMPARE(f.grew.count(), 2);
    QCOMPARE(f.list->height(), 3 * 44);
    QVERIFY(f.h.log().lines().isEmpty());
}

void tst_ctlSubLines::twentyItemsStackRowByRowWithoutGaps()
{
    Fixture f;
    auto items = f.bind(20);
    checkStack(f, items, 20);
    QCOMPARE(f.grew.count(), 19);
    QCOMPARE(f.list->height(), 20 * 44);
}

void tst_ctlSubLines::aCollectionOfExactlyOneItemRaisesNoHeightChanged()
{
    Fixture f;
    auto items = f.bind(1);
    checkStack(f, items, 1);
    QCOMPARE(f.grew.count(), 0);
    QCOMPARE(f.list->height(), 44);
}

void tst_ctlSubLines::anEmptyCollectionRaisesNoHeightChangedAndKeepsTheHeight()
{
    Fixture f;
    f.bind(0);
    QCOMPARE(f.grew.count(), 0);
    QCOMPARE(f.rows().size(), 1);
    QCOMPARE(f.list->height(), 44);
    QCOMPARE(f.rows()[0]->LineNumber(), QStringLiteral("0"));
}

void tst_ctlSubLines::replacingWithAnEmptyCollectionLeavesOneUnboundRowShowingTheOldFirstItem()
{
    Fixture f;
    f.bind(3);
    f.grew.clear();
    f.bind(0);
    const QList<ctlSubLine*> rows = f.rows();
    QCOMPARE(rows.size(), 1);
    QVERIFY(!rows[0]->LineItem());
    QCOMPARE(Fixture::caption(rows[0], "lblType"), QStringLiteral("T1"));
    QCOMPARE(Fixture::caption(rows[0], "lblBrand"), QStringLiteral("Brand 1"));
    QCOMPARE(rows[0]->LineNumber(), QStringLiteral("1"));
    QVERIFY(!rows[0]->Grayed());
    // The list does not shrink, and nothing is announced.
    QCOMPARE(f.list->height(), 3 * 44);
    QCOMPARE(f.grew.count(), 0);
}

void tst_ctlSubLines::unbindingWithNoneClearsDownToTheFirstRow()
{
    Fixture f;
    f.bind(4);
    f.list->setLineItems(nullptr);
    QVERIFY(!f.list->LineItems());
    QCOMPARE(f.rows().size(), 1);
    QVERIFY(!f.rows()[0]->LineItem());
    QCOMPARE(Fixture::caption(f.rows()[0], "lblType"), QStringLiteral("T1"));
}

void tst_ctlSubLines::lineHeightReadsRowOneEvenWhenOtherRowsExist()
{
    Fixture f;
    f.bind(3);
    f.rows()[1]->resize(f.rows()[1]->width(), 60);
    f.rows()[2]->resize(f.rows()[2]->width(), 30);
    QCOMPARE(f.list->LineHeight(), qint16(44));
    f.rows()[0]->resize(f.rows()[0]->width(), 50);
    QCOMPARE(f.list->LineHeight(), qint16(50));
    QCOMPARE(f.list->property("LineHeight").toInt(), 50);
}

void tst_ctlSubLines::theDesignTimeRowIsNeverDestroyed()
{
    Fixture f;
    QPointer<ctlSubLine> first = f.rows()[0];
    f.bind(5);
    f.bind(0);
    f.bind(2);
    f.list->setLineItems(nullptr);
    QVERIFY(first);
    QCOMPARE(f.rows()[0], first.data());
}

void tst_ctlSubLines::rebindingDestroysTheExtraRowsAndBuildsNewOnes()
{
    Fixture f;
    f.bind(5);
    QPointer<ctlSubLine> fifth = f.rows()[4];
    QPointer<ctlSubLine> second = f.rows()[1];
    f.grew.clear();
    auto items = f.bind(2);
    QVERIFY(!fifth);
    QVERIFY(!second);
    checkStack(f, items, 2);
    QCOMPARE(f.grew.count(), 1);
    // Adding a row sets the height to the rows the group now holds.
    QCOMPARE(f.list->height(), 2 * 44);
}

void tst_ctlSubLines::newRowsTakeTheWidthOfTheListAfterItGrows()
{
    Fixture f;
    f.list->resize(700, 44);
    QCOMPARE(f.rows()[0]->width(), 700);
    f.bind(4);
    for (ctlSubLine* row : f.rows())
        QCOMPARE(row->width(), 700);
}

void tst_ctlSubLines::enumeratesOnceAndReadsCountOncePerItem()
{
    Fixture f;
    auto items = lines(4);
    items->faults().setRecording(true);
    f.list->setLineItems(items);
    items->faults().setRecording(false);
    QCOMPARE(items->faults().calls(),
             (QStringList{"Enumerate", "Count", "Count", "Count", "Count"}));
    QCOMPARE(f.list->LineItems(), std::shared_ptr<ZebObjects::LineItems>(items));
}

void tst_ctlSubLines::propertiesWorkByName()
{
    Fixture f;
    auto items = lines(3);
    QVERIFY(f.list->setProperty(
        "LineItems", QVariant::fromValue(std::shared_ptr<ZebObjects::LineItems>(items))));
    checkStack(f, items, 3);
    QCOMPARE(f.list->property("LineItems").value<std::shared_ptr<ZebObjects::LineItems>>(),
             std::shared_ptr<ZebObjects::LineItems>(items));
}

void tst_ctlSubLines::binding744ItemsFillsTheListToItsLimit()
{
    Fixture f;
    auto items = f.bind(744);
    QCOMPARE(f.rows().size(), 744);
    QCOMPARE(f.list->height(), 744 * 44);
    QCOMPARE(f.list->height(), 32736);
    QCOMPARE(f.grew.count(), 743);
    QCOMPARE(f.rows().last()->LineNumber(), QStringLiteral("744"));
    QCOMPARE(f.rows().last()->y(), 743 * 44);
    QVERIFY(f.h.log().lines().isEmpty());
}

void tst_ctlSubLines::binding745ItemsFailsWithOverflowAfterTheRowsBuiltSoFar()
{
    Fixture f;
    auto items = lines(745);
    try {
        f.list->setLineItems(items);
        QFAIL("no failure");
    } catch (const Failure& e) {
        QCOMPARE(e.info(), overflowError());
    }
    QCOMPARE(
        f.h.log().lines(),
        (QStringList{logError(QStringLiteral("addNextLine()"), overflowError()),
                     logError(QStringLiteral("Populate()"), overflowError()),
                     logError(QStringLiteral("LineItems() - Property Set"), overflowError())}));
    QVERIFY(f.h.boxes().shown().isEmpty());
    // Rows 1 to 744 are bound; row 745 was created below them before the height overflowed.
    const QList<ctlSubLine*> rows = f.rows();
    QCOMPARE(rows.size(), 745);
    QCOMPARE(rows[743]->LineNumber(), QStringLiteral("744"));
    QCOMPARE(rows[744]->LineNumber(), QStringLiteral("0"));
    QVERIFY(!rows[744]->LineItem());
    QCOMPARE(rows[744]->y(), 744 * 44);
    QCOMPARE(f.grew.count(), 743);
    QCOMPARE(f.list->height(), 744 * 44);
    QCOMPARE(f.list->LineItems(), std::shared_ptr<ZebObjects::LineItems>(items));
    // The list stays usable.
    f.grew.clear();
    auto three = f.bind(3);
    checkStack(f, three, 3);
    QCOMPARE(f.grew.count(), 2);
}

void tst_ctlSubLines::enumerationFailureReachesTheCallerAfterClearing()
{
    Fixture f;
    f.bind(3);
    auto items = lines(2);
    items->faults().failNext(QStringLiteral("Enumerate"), kStoreDown);
    f.h.log().clear();
    try {
        f.list->setLineItems(items);
        QFAIL("no failure");
    } catch (const Failure& e) {
        QCOMPARE(e.info(), kStoreDown);
    }
    QCOMPARE(f.h.log().lines(),
             (QStringList{logError(QStringLiteral("Populate()"), kStoreDown),
                          logError(QStringLiteral("LineItems() - Property Set"), kStoreDown)}));
    QCOMPARE(f.rows().size(), 1);
    QVERIFY(!f.rows()[0]->LineItem());
    f.list->setLineItems(items);
    checkStack(f, items, 2);
}

void tst_ctlSubLines::countFailureLeavesTheRowsBuiltSoFar()
{
    Fixture f;
    auto items = lines(3);
    items->faults().failNext(QStringLiteral("Count"), kStoreDown);
    QVERIFY_THROWS_EXCEPTION(Failure, f.list->setLineItems(items));
    QCOMPARE(f.h.log().lines(),
             (QStringList{logError(QStringLiteral("Populate()"), kStoreDown),
                          logError(QStringLiteral("LineItems() - Property Set"), kStoreDown)}));
    const QList<ctlSubLine*> rows = f.rows();
    QCOMPARE(rows.size(), 1);
    QCOMPARE(rows[0]->LineNumber(), QStringLiteral("1"));
    QCOMPARE(rows[0]->LineItem(), std::shared_ptr<ZebObjects::LineItem>(items->line(1)));
    QCOMPARE(f.grew.count(), 0);
}

void tst_ctlSubLines::itemMemberFailureIsTheRowsOwnAndTheListCarriesOn()
{
    Fixture f;
    auto items = lines(3);
    items->line(2)->faults().failNext(QStringLiteral("Brand"), kStoreDown);
    f.list->setLineItems(items);
    QCOMPARE(f.h.log().lines(), QStringList{logError(QStringLiteral("Populate()"), kStoreDown,
                                                     QStringLiteral("ctlSubLine"))});
    QCOMPARE(f.rows().size(), 3);
    QCOMPARE(Fixture::caption(f.rows()[1], "lblType"), QStringLiteral("T2"));
    QCOMPARE(Fixture::caption(f.rows()[1], "lblBrand"), QStringLiteral("Brand"));
    QCOMPARE(f.rows()[1]->LineNumber(), QStringLiteral("2"));
    QCOMPARE(Fixture::caption(f.rows()[2], "lblBrand"), QStringLiteral("Brand 3"));
}

void tst_ctlSubLines::lineHeightFailsWithoutRowOneAndTheListRecovers()
{
    Fixture f;
    f.bind(2);
    delete f.rows()[0];
    try {
        (void)f.list->LineHeight();
        QFAIL("no failure");
    } catch (const Failure& e) {
        QCOMPARE(e.info(), missingRow(1));
    }
    QCOMPARE(f.h.log().lines(),
             QStringList{logError(QStringLiteral("LineHeight() - Property Get"), missingRow(1))});
    f.h.log().clear();
    QVERIFY_THROWS_EXCEPTION(Failure, f.list->setLineItems(lines(2)));
    QCOMPARE(f.h.log().lines(),
             (QStringList{logError(QStringLiteral("Clear()"), missingRow(1)),
                          logError(QStringLiteral("Populate()"), missingRow(1)),
                          logError(QStringLiteral("LineItems() - Property Set"), missingRow(1))}));
}

void tst_ctlSubLines::resizeWidensEveryRowAndLeavesTopsAndHeights()
{
    Fixture f;
    auto items = f.bind(5);
    f.list->resize(720, f.list->height());
    for (ctlSubLine* row : f.rows()) {
        QCOMPARE(row->width(), 720);
        QCOMPARE(row->height(), 44);
        QCOMPARE(row->y(), (row->Index() - 1) * 44);
    }
    f.list->resize(500, f.list->height());
    checkStack(f, items, 5);
    QCOMPARE(f.rows()[4]->width(), 500);
    QVERIFY(f.h.log().lines().isEmpty());
}

void tst_ctlSubLines::resizeResumesAfterARowThatCannotBeWidened()
{
    Fixture f;
    f.bind(3);
    ctlSubLine* first = f.rows()[0];
    ctlSubLine* third = f.rows()[2];
    delete f.rows()[1];
    f.list->resize(650, f.list->height());
    QCOMPARE(f.h.log().lines(),
             QStringList{logLine("LogWarning", kModule, QStringLiteral("UserControl_Resize()"),
                                 missingRow(2))});
    QVERIFY(f.h.boxes().shown().isEmpty());
    QVERIFY(f.h.lastResort().isEmpty());
    QCOMPARE(first->width(), 650);
    QCOMPARE(third->width(), 650);
    // A new binding rebuilds the group.
    f.h.log().clear();
    auto items = f.bind(3);
    checkStack(f, items, 3);
    QVERIFY(f.h.log().lines().isEmpty());
}

void tst_ctlSubLines::everyCaptionFitsAndScreenReadersFindEveryName()
{
    Fixture f;
    f.bind(3);
    QCOMPARE(captionsThatDoNotFit(f.list.get()), QStringList());
    const QStringList unnamed = ZebTest::unnamedAccessibleElements(f.list.get());
    QVERIFY2(unnamed.isEmpty(), qPrintable(unnamed.join(QStringLiteral("; "))));
    QCOMPARE(unnamedWidgetsShownOrHidden(f.list.get()), QStringList());
}

QTEST_MAIN(tst_ctlSubLines)
#include "tst_ctlsublines.moc"
