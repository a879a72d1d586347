#include "controls/lineitems/ctlsubline.h"
#include "frame/controlregistry.h"
#include "frame/units.h"
#include "lineitemtesting.h"
#include "platform/checkbox.h"
#include "platform/imagebox.h"
#include "platform/lineshape.h"
#include "platform/paintedlabel.h"
#include "support/testsupport.h"

#include <QTest>

using namespace ZebSubCtl;
using namespace ZebTest;
using ZebObjects::ErrorInfo;
using ZebObjects::StandaloneLineItem;

namespace {

const QString kModule = QStringLiteral("ctlSubLine");

QString logError(const QString& label, const ErrorInfo& e)
{
    return logLine("LogError", kModule, label, e);
}

// One row, shown, with its own log and message boxes.
struct Fixture {
    Harness h;
    std::unique_ptr<ctlSubLine> row = std::make_unique<ctlSubLine>();

    Fixture()
    {
        row->show();
        if (!QTest::qWaitForWindowExposed(row.get()))
            qFatal("row not exposed");
        h.log().clear();
    }

    PaintedLabel* label(const char* name) const
    {
        return row->findChild<PaintedLabel*>(QLatin1String(name));
    }
    QString caption(const char* name) const { return label(name)->Caption(); }
    CheckBox* box() const { return row->findChild<CheckBox*>(QStringLiteral("chkSelect")); }
    ImageBox* picture() const { return row->findChild<ImageBox*>(QStringLiteral("imgComment")); }
    LineShape* line() const { return row->findChild<LineShape*>(QStringLiteral("Line1")); }
    void clickBox() const { QTest::mouseClick(box(), Qt::LeftButton); }

    std::shared_ptr<StandaloneLineItem> bind(const StandaloneLineItem::Data& data)
    {
        auto item = std::make_shared<StandaloneLineItem>(data);
        row->setLineItem(item);
        return item;
    }
    // The texts a bound line shows, in the order Populate fills them.
    QStringList shown() const
    {
        return {QString::number(box()->value()),
                caption("lblQuantity"),
                caption("lblType"),
                caption("lblBrand"),
                caption("lblCatNum"),
                caption("lblGroup"),
                label("lblMTO")->isVisible() ? QStringLiteral("MTO") : QStringLiteral("-"),
                caption("lblDescription"),
                picture()->isVisible() ? QStringLiteral("comment") : QStringLiteral("-")};
    }
};

// Reads Populate makes, in order, for a line that is not selected (no echo write).
const QStringList kReadOrder{
    QStringLiteral("Selected"),      QStringLiteral("Quantity"),    QStringLiteral("Type"),
    QStringLiteral("Type"),          QStringLiteral("Brand"),       QStringLiteral("CatalogNumber"),
    QStringLiteral("CatalogNumber"), QStringLiteral("Group"),       QStringLiteral("MTO"),
    QStringLiteral("Description"),   QStringLiteral("Description"), QStringLiteral("Comment")};

}  // namespace

class tst_ctlSubLine : public QObject {
    Q_OBJECT
private slots:
    void registeredUnderItsIdentifier();
    void childrenSitAtTheirDesignPlaces();
    void designTimeCaptionsArePlaceholders();
    void populateShowsEveryMemberWithToolTips();
    void populateReadsEachMemberAtItsUseInOrder();
    void bindingAnItemWhoseSelectedIsTrueShowsTheBoxCheckedAndLeavesSelectedTrue();
    void bindingAnUnselectedItemOverACheckedBoxWritesFalseBackOnce();
    void itemWithoutMtoAndWithoutCommentShowsNeitherMarkNorPicture();
    void anyCommentObjectEmptyOrNotShowsThePicture();
    void emptyTextMembersShowEmptyLabelsNotPlaceholders();
    void lineNumberSetTo12ReadsBack12FromTheLabel();
    void grayedSetsTheBackgroundToLightGreyOrWhite();
    void grayedReadsFalseAfterTheBackgroundIsSetToAnyOtherColour();
    void grayedLeavesTheCheckBoxUsable();
    void propertiesWorkByName();
    void settingTheItemToNoneKeepsTheFormerTexts();
    void clickingTheBoxWritesSelected();
    void spaceBarTicksTheBoxFromTheKeyboard();
    void clickingTheBoxOfAnUnboundRowReportsAndKeepsTheTick();
    void failingSelectedWriteOnClickReportsAndTheNextClickWorks();
    void failingEchoWriteDuringPopulateReportsAndTheRowIsFilled();
    void memberFailureEndsPopulateQuietlyWithTheRowFilledSoFar_data();
    void memberFailureEndsPopulateQuietlyWithTheRowFilledSoFar();
    void resizeStretchesTheLineToTheRowWidthAndMovesNothingElse();
    void resizeFailureIsLoggedAsANoticeAndTheRowCarriesOn();
    void everyCaptionFitsItsLabelAtTheDesignFont();
    void screenReadersFindANameForEveryElement();
};

void tst_ctlSubLine::registeredUnderItsIdentifier()
{
    std::unique_ptr<UserControl> c(
        ControlRegistry::instance().create(QStringLiteral("ZebSubmittalControls.ctlSubLine")));
    QVERIFY(qobject_cast<ctlSubLine*>(c.get()));
    QCOMPARE(c->Name(), QStringLiteral("ctlSubLine"));
}

void tst_ctlSubLine::childrenSitAtTheirDesignPlaces()
{
    Fixture f;
    QCOMPARE(f.row->size(), QSize(8850 / 15, 660 / 15));
    QCOMPARE(f.row->height(), 44);
    const QList<std::pair<const char*, QRect>> places{
        {"lblNumber", twipsRect(30, 60, 375, 240)},
        {"lblQuantity", twipsRect(975, 60, 675, 240)},
        {"lblType", twipsRect(1665, 60, 780, 240)},
        {"lblBrand", twipsRect(2460, 60, 1425, 240)},
        {"lblCatNum", twipsRect(3900, 60, 4050, 240)},
        {"lblGroup", twipsRect(7965, 60, 840, 240)},
        {"chkSelect", twipsRect(30, 345, 225, 225)},
        {"lblMTO", twipsRect(330, 330, 630, 240)},
        {"lblDescHeading", twipsRect(1650, 330, 780, 240)},
        {"lblDescription", twipsRect(2490, 330, 5445, 240)},
    };
    for (const auto& [name, place] : places) {
        auto* w = f.row->findChild<QWidget*>(QLatin1String(name));
        QVERIFY2(w, name);
        QCOMPARE(w->geometry(), place);
    }
    QVERIFY(f.picture());
    QVERIFY(!f.picture()->Picture().isNull());
    QVERIFY(f.row->rect().contains(f.picture()->geometry()));
    QCOMPARE(f.line()->X1(), 0);
    QCOMPARE(f.line()->X2(), f.row->width());
    QCOMPARE(f.line()->Y1(), f.line()->Y2());
}

void tst_ctlSubLine::designTimeCaptionsArePlaceholders()
{
    Fixture f;
    QCOMPARE(f.caption("lblGroup"), QStringLiteral("Group"));
    QCOMPARE(f.caption("lblCatNum"), QStringLiteral("Catalog Number"));
    QCOMPARE(f.caption("lblBrand"), QStringLiteral("Brand"));
    QCOMPARE(f.caption("lblType"), QStringLiteral("Type"));
    QCOMPARE(f.caption("lblQuantity"), QStringLiteral("Qty"));
    QCOMPARE(f.caption("lblMTO"), QStringLiteral("MTO"));
    QCOMPARE(f.caption("lblNumber"), QStringLiteral("0"));
    QCOMPARE(f.caption("lblDescHeading"), QStringLiteral("Desc:"));
    QCOMPARE(f.caption("lblDescription"), QString());
    QCOMPARE(f.row->LineNumber(), QStringLiteral("0"));
    QVERIFY(!f.row->LineItem());
    QVERIFY(!f.row->Grayed());
}

void tst_ctlSubLine::populateShowsEveryMemberWithToolTips()
{
    Fixture f;
    f.bind(lineData(3, false, true, QStringLiteral("note")));
    QCOMPARE(f.shown(), (QStringList{"0", "13", "T3", "Brand 3", "CAT-3-35K", "G3", "MTO",
                                     "Fixture number 3, 3500K", "comment"}));
    QCOMPARE(f.label("lblType")->toolTip(), QStringLiteral("T3"));
    QCOMPARE(f.label("lblCatNum")->toolTip(), QStringLiteral("CAT-3-35K"));
    QCOMPARE(f.label("lblDescription")->toolTip(), QStringLiteral("Fixture number 3, 3500K"));
    QCOMPARE(f.label("lblBrand")->toolTip(), QString());
    QCOMPARE(f.caption("lblDescHeading"), QStringLiteral("Desc:"));
    QCOMPARE(f.caption("lblNumber"), QStringLiteral("0"));
    QVERIFY(f.h.log().lines().isEmpty());
}

void tst_ctlSubLine::populateReadsEachMemberAtItsUseInOrder()
{
    Fixture f;
    auto item = std::make_shared<StandaloneLineItem>(lineData(1));
    item->faults().setRecording(true);
    f.row->setLineItem(item);
    QCOMPARE(item->faults().calls(), kReadOrder);
}

void tst_ctlSubLine::bindingAnItemWhoseSelectedIsTrueShowsTheBoxCheckedAndLeavesSelectedTrue()
{
    Fixture f;
    auto item = std::make_shared<StandaloneLineItem>(lineData(1, true));
    item->faults().setRecording(true);
    f.row->setLineItem(item);
    item->faults().setRecording(false);
    QCOMPARE(f.box()->value(), 1);
    QVERIFY(item->Selected());
    // The box's click handler writes the value just read back, once.
    QStringList expected = kReadOrder;
    expected.insert(1, QStringLiteral("Selected="));
    QCOMPARE(item->faults().calls(), expected);
    QVERIFY(f.h.boxes().shown().isEmpty());
}

void tst_ctlSubLine::bindingAnUnselectedItemOverACheckedBoxWritesFalseBackOnce()
{
    Fixture f;
    f.bind(lineData(1, true));
    auto second = std::make_shared<StandaloneLineItem>(lineData(2, false));
    second->faults().setRecording(true);
    f.row->setLineItem(second);
    QCOMPARE(f.box()->value(), 0);
    QCOMPARE(second->faults().calls().count(QStringLiteral("Selected=")), 1);
    QVERIFY(!second->Selected());
}

void tst_ctlSubLine::itemWithoutMtoAndWithoutCommentShowsNeitherMarkNorPicture()
{
    Fixture f;
    f.bind(lineData(1, false, true, QStringLiteral("x")));
    QVERIFY(f.label("lblMTO")->isVisible());
    QVERIFY(f.picture()->isVisible());
    f.bind(lineData(2, false, false, std::nullopt));
    QVERIFY(!f.label("lblMTO")->isVisible());
    QVERIFY(!f.picture()->isVisible());
}

void tst_ctlSubLine::anyCommentObjectEmptyOrNotShowsThePicture()
{
    Fixture f;
    f.bind(lineData(1, false, false, QString()));
    QVERIFY(f.picture()->isVisible());
    f.bind(lineData(2, false, false, std::nullopt));
    QVERIFY(!f.picture()->isVisible());
    f.bind(lineData(3, false, false, QStringLiteral("Finish to be approved.")));
    QVERIFY(f.picture()->isVisible());
}

void tst_ctlSubLine::emptyTextMembersShowEmptyLabelsNotPlaceholders()
{
    Fixture f;
    StandaloneLineItem::Data d;
    d.quantity = 0;
    f.bind(d);
    QCOMPARE(f.caption("lblType"), QString());
    QCOMPARE(f.caption("lblBrand"), QString());
    QCOMPARE(f.caption("lblCatNum"), QString());
    QCOMPARE(f.caption("lblGroup"), QString());
    QCOMPARE(f.caption("lblDescription"), QString());
    QCOMPARE(f.label("lblType")->toolTip(), QString());
    QCOMPARE(f.caption("lblQuantity"), QStringLiteral("0"));
}

void tst_ctlSubLine::lineNumberSetTo12ReadsBack12FromTheLabel()
{
    Fixture f;
    f.row->setLineNumber(QStringLiteral("12"));
    QCOMPARE(f.caption("lblNumber"), QStringLiteral("12"));
    QCOMPARE(f.row->LineNumber(), QStringLiteral("12"));
    // The label is the only store: changing it is changing the number.
    f.label("lblNumber")->setCaption(QStringLiteral("7"));
    QCOMPARE(f.row->LineNumber(), QStringLiteral("7"));
}

void tst_ctlSubLine::grayedSetsTheBackgroundToLightGreyOrWhite()
{
    Fixture f;
    const QPoint free(f.row->width() - 1, 20);
    f.row->setGrayed(true);
    QCOMPARE(f.row->BackColor(), QRgb(0xE0E0E0));
    QVERIFY(f.row->Grayed());
    QCOMPARE(f.row->grab().toImage().pixel(free) & 0xFFFFFF, QRgb(0xE0E0E0));
    f.row->setGrayed(false);
    QCOMPARE(f.row->BackColor(), QRgb(0xFFFFFF));
    QVERIFY(!f.row->Grayed());
    QCOMPARE(f.row->grab().toImage().pixel(free) & 0xFFFFFF, QRgb(0xFFFFFF));
}

void tst_ctlSubLine::grayedReadsFalseAfterTheBackgroundIsSetToAnyOtherColour()
{
    Fixture f;
    f.row->setGrayed(true);
    for (QRgb other : {QRgb(0xE0E0E1), QRgb(0xDFDFDF), QRgb(0xC0C0C0), QRgb(0x000000)}) {
        f.row->setBackColor(other);
        QVERIFY(!f.row->Grayed());
    }
    f.row->setBackColor(0xE0E0E0);
    QVERIFY(f.row->Grayed());
}

void tst_ctlSubLine::grayedLeavesTheCheckBoxUsable()
{
    Fixture f;
    auto item = f.bind(lineData(1));
    f.row->setGrayed(true);
    QVERIFY(f.box()->isEnabled());
    f.clickBox();
    QVERIFY(item->Selected());
}

void tst_ctlSubLine::propertiesWorkByName()
{
    Fixture f;
    auto item = std::make_shared<StandaloneLineItem>(lineData(5));
    QVERIFY(f.row->setProperty("LineItem",
                               QVariant::fromValue(std::shared_ptr<ZebObjects::LineItem>(item))));
    QVERIFY(f.row->setProperty("LineNumber", QStringLiteral("5")));
    QVERIFY(f.row->setProperty("Grayed", true));
    QCOMPARE(f.caption("lblType"), QStringLiteral("T5"));
    QCOMPARE(f.row->property("LineNumber").toString(), QStringLiteral("5"));
    QCOMPARE(f.row->property("Grayed").toBool(), true);
    QCOMPARE(f.row->property("LineItem").value<std::shared_ptr<ZebObjects::LineItem>>(),
             std::shared_ptr<ZebObjects::LineItem>(item));
}

void tst_ctlSubLine::settingTheItemToNoneKeepsTheFormerTexts()
{
    Fixture f;
    f.bind(lineData(4, true, true, QStringLiteral("c")));
    const QStringList before = f.shown();
    f.row->setLineItem(nullptr);
    QVERIFY(!f.row->LineItem());
    QCOMPARE(f.shown(), before);
    QVERIFY(f.h.log().lines().isEmpty());
}

void tst_ctlSubLine::clickingTheBoxWritesSelected()
{
    Fixture f;
    auto item = f.bind(lineData(1));
    item->faults().setRecording(true);
    f.clickBox();
    QCOMPARE(f.box()->value(), 1);
    f.clickBox();
    QCOMPARE(f.box()->value(), 0);
    item->faults().setRecording(false);
    QVERIFY(!item->Selected());
    QCOMPARE(item->faults().calls(),
             (QStringList{QStringLiteral("Selected="), QStringLiteral("Selected=")}));
    QVERIFY(f.h.boxes().shown().isEmpty());
}

void tst_ctlSubLine::spaceBarTicksTheBoxFromTheKeyboard()
{
    Fixture f;
    auto item = f.bind(lineData(1));
    f.row->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(f.row.get()));
    f.box()->setFocus(Qt::TabFocusReason);
    QTest::keyClick(f.box(), Qt::Key_Space);
    QVERIFY(item->Selected());
    QCOMPARE(f.box()->focusPolicy() & Qt::TabFocus, Qt::TabFocus);
}

void tst_ctlSubLine::clickingTheBoxOfAnUnboundRowReportsAndKeepsTheTick()
{
    Fixture f;
    f.clickBox();
    QCOMPARE(f.h.log().lines(),
             QStringList{logError(QStringLiteral("chkSelect_Click()"), notSet())});
    QCOMPARE(f.h.boxes().shown(), QList<Shown>{plainBox(notSet())});
    QCOMPARE(f.box()->value(), 1);
}

void tst_ctlSubLine::failingSelectedWriteOnClickReportsAndTheNextClickWorks()
{
    Fixture f;
    auto item = f.bind(lineData(1));
    item->faults().failNext(QStringLiteral("Selected="), kStoreDown);
    f.clickBox();
    QCOMPARE(f.h.log().lines(),
             QStringList{logError(QStringLiteral("chkSelect_Click()"), kStoreDown)});
    QCOMPARE(f.h.boxes().shown(), QList<Shown>{plainBox(kStoreDown)});
    QVERIFY(!item->Selected());
    QCOMPARE(f.box()->value(), 1);
    f.clickBox();
    f.clickBox();
    QVERIFY(item->Selected());
    QCOMPARE(f.h.boxes().shown().size(), 1);
}

void tst_ctlSubLine::failingEchoWriteDuringPopulateReportsAndTheRowIsFilled()
{
    Fixture f;
    auto item = std::make_shared<StandaloneLineItem>(lineData(2, true));
    item->faults().failNext(QStringLiteral("Selected="), kStoreDown);
    f.row->setLineItem(item);
    QCOMPARE(f.h.log().lines(),
             QStringList{logError(QStringLiteral("chkSelect_Click()"), kStoreDown)});
    QCOMPARE(f.h.boxes().shown(), QList<Shown>{plainBox(kStoreDown)});
    QCOMPARE(f.shown(), (QStringList{"1", "12", "T2", "Brand 2", "CAT-2-35K", "G2", "-",
                                     "Fixture number 2, 3500K", "-"}));
}

void tst_ctlSubLine::memberFailureEndsPopulateQuietlyWithTheRowFilledSoFar_data()
{
    QTest::addColumn<QString>("member");
    QTest::addColumn<QStringList>("shown");
    // The row first shows line 1 in full; line 2 fails at the member.
    const QString m1 = QStringLiteral("MTO");
    const QString c1 = QStringLiteral("comment");
    QTest::newRow("Selected") << "Selected"
                              << QStringList{"1",         "11", "T1", "Brand 1",
                                             "CAT-1-35K", "G1", m1,   "Fixture number 1, 3500K",
                                             c1};
    QTest::newRow("Quantity") << "Quantity"
                              << QStringList{"0",         "11", "T1", "Brand 1",
                                             "CAT-1-35K", "G1", m1,   "Fixture number 1, 3500K",
                                             c1};
    QTest::newRow("Type") << "Type"
                          << QStringList{"0",         "12", "T1", "Brand 1",
                                         "CAT-1-35K", "G1", m1,   "Fixture number 1, 3500K",
                                         c1};
    QTest::newRow("Brand") << "Brand"
                           << QStringList{"0",         "12", "T2", "Brand 1",
                                          "CAT-1-35K", "G1", m1,   "Fixture number 1, 3500K",
                                          c1};
    QTest::newRow("CatalogNumber")
        << "CatalogNumber"
        << QStringList{"0", "12", "T2", "Brand 2", "CAT-1-35K", "G1", m1, "Fixture number 1, 3500K",
                       c1};
    QTest::newRow("Group") << "Group"
                           << QStringList{"0",         "12", "T2", "Brand 2",
                                          "CAT-2-35K", "G1", m1,   "Fixture number 1, 3500K",
                                          c1};
    QTest::newRow("MTO") << "MTO" << QStringList{"0",         "12", "T2", "Brand 2",
                                                 "CAT-2-35K", "G2", m1,   "Fixture number 1, 3500K",
                                                 c1};
    QTest::newRow("Description") << "Description"
                                 << QStringList{"0",         "12", "T2", "Brand 2",
                                                "CAT-2-35K", "G2", "-",  "Fixture number 1, 3500K",
                                                c1};
    QTest::newRow("Comment") << "Comment"
                             << QStringList{"0",         "12", "T2", "Brand 2",
                                            "CAT-2-35K", "G2", "-",  "Fixture number 2, 3500K",
                                            c1};
}

void tst_ctlSubLine::memberFailureEndsPopulateQuietlyWithTheRowFilledSoFar()
{
    QFETCH(QString, member);
    QFETCH(QStringList, shown);
    Fixture f;
    f.bind(lineData(1, true, true, QStringLiteral("c")));
    auto second = std::make_shared<StandaloneLineItem>(lineData(2, false, false));
    second->faults().failNext(member, kStoreDown);
    f.row->setLineItem(second);  // does not throw: Populate swallows
    QCOMPARE(f.h.log().lines(), QStringList{logError(QStringLiteral("Populate()"), kStoreDown)});
    QVERIFY(f.h.boxes().shown().isEmpty());
    QCOMPARE(f.shown(), shown);
    QCOMPARE(f.row->LineItem(), std::shared_ptr<ZebObjects::LineItem>(second));
    // The next binding shows the line in full.
    f.row->setLineItem(second);
    QCOMPARE(f.shown(), (QStringList{"0", "12", "T2", "Brand 2", "CAT-2-35K", "G2", "-",
                                     "Fixture number 2, 3500K", "-"}));
}

void tst_ctlSubLine::resizeStretchesTheLineToTheRowWidthAndMovesNothingElse()
{
    Fixture f;
    QList<QRect> before;
    for (auto* w : f.row->findChildren<QWidget*>())
        if (w != f.line())
            before.append(w->geometry());
    f.row->resize(700, 44);
    QCOMPARE(f.line()->X2(), 700);
    QCOMPARE(f.line()->X1(), 0);
    QList<QRect> after;
    for (auto* w : f.row->findChildren<QWidget*>())
        if (w != f.line())
            after.append(w->geometry());
    QCOMPARE(after, before);
    f.row->resize(400, 44);
    QCOMPARE(f.line()->X2(), 400);
    QVERIFY(f.h.log().lines().isEmpty());
}

void tst_ctlSubLine::resizeFailureIsLoggedAsANoticeAndTheRowCarriesOn()
{
    Fixture f;
    auto item = f.bind(lineData(1));
    delete f.line();
    f.row->resize(650, 44);
    QCOMPARE(f.h.log().lines(),
             QStringList{
                 logLine("LogNotice", kModule, QStringLiteral("UserControl_Resize()"), notSet())});
    QVERIFY(f.h.boxes().shown().isEmpty());
    QVERIFY(f.h.lastResort().isEmpty());
    QCOMPARE(f.row->width(), 650);
    f.clickBox();
    QVERIFY(item->Selected());
}

void tst_ctlSubLine::everyCaptionFitsItsLabelAtTheDesignFont()
{
    Fixture f;
    QCOMPARE(captionsThatDoNotFit(f.row.get()), QStringList());
    QCOMPARE(f.row->font().pointSize(), 8);
}

void tst_ctlSubLine::screenReadersFindANameForEveryElement()
{
    Fixture f;
    f.bind(lineData(1, false, true, QStringLiteral("c")));
    f.row->setLineNumber(QStringLiteral("3"));
    const QStringList unnamed = ZebTest::unnamedAccessibleElements(f.row.get());
    QVERIFY2(unnamed.isEmpty(), qPrintable(unnamed.join(QStringLiteral("; "))));
    QCOMPARE(unnamedWidgetsShownOrHidden(f.row.get()), QStringList());
    QCOMPARE(f.box()->accessibleName(), QStringLiteral("Select line 3"));
    QVERIFY(!f.box()->accessibleDescription().isEmpty());
    QVERIFY(!f.picture()->accessibleDescription().isEmpty());
}

QTEST_MAIN(tst_ctlSubLine)
#include "tst_ctlsubline.moc"
