#include "controls/lineitems/ctlsubline.h"
#include "controls/lineitems/ctlsublinedsp.h"
#include "controls/lineitems/ctlsublines.h"
#include "frame/controlregistry.h"
#include "frame/designfont.h"
#include "frame/units.h"
#include "lineitemtesting.h"
#include "platform/checkbox.h"
#include "platform/paintedlabel.h"
#include "platform/scrollbar.h"
#include "support/accessibleevents.h"
#include "support/testsupport.h"

#include <QFontDatabase>
#include <QFontInfo>
#include <QSignalSpy>
#include <QStyle>
#include <QStyleOptionSlider>
#include <QPushButton>
#include <QScopeGuard>
#include <QScreen>
#include <QTest>
#include <QVBoxLayout>
#include <QtTest/qtestspontaneevent.h>

using namespace ZebSubCtl;
using namespace ZebTest;
using ZebObjects::ErrorInfo;
using ZebObjects::Failure;
using ZebObjects::StandaloneLineItems;

namespace {

const QString kModule = QStringLiteral("ctlSubLineDsp");

QString logError(const QString& label, const ErrorInfo& e, const QString& module = kModule)
{
    return logLine("LogError", module, label, e);
}

ErrorInfo divisionByZero()
{
    return ErrorInfo{11, QStringLiteral("ZebSubCtl"), QStringLiteral("Division by zero")};
}

// One viewer, shown at its design size, with its own log and message boxes.
struct Fixture {
    Harness h;
    std::unique_ptr<ctlSubLineDsp> viewer = std::make_unique<ctlSubLineDsp>();

    explicit Fixture(QSize size = QSize())
    {
        if (size.isValid())
            viewer->resize(size);
        viewer->show();
        if (!QTest::qWaitForWindowExposed(viewer.get()))
            qFatal("viewer not exposed");
        h.log().clear();
    }

    template <class T = QWidget>
    T* child(const char* name) const
    {
        return viewer->findChild<T*>(QLatin1String(name));
    }
    QWidget* heading() const { return child("ControlHeading"); }
    QWidget* window() const { return child("DisplayWindow"); }
    ctlSubLines* list() const { return child<ctlSubLines>("ctlSubLines"); }
    ScrollBar* bar() const { return child<ScrollBar>("VScroll"); }
    ctlSubLine* row(int index) const { return list()->row(qint16(index)); }
    // The viewer's internal count of whole rows in view.
    qint16 viewable() const
    {
        qint16 lines = -1;
        QMetaObject::invokeMethod(&*viewer, "ViewableLines", Qt::DirectConnection,
                                  Q_RETURN_ARG(qint16, lines));
        return lines;
    }

    std::shared_ptr<StandaloneLineItems> bind(int count)
    {
        auto items = lines(count);
        viewer->setLineItems(items);
        return items;
    }

    QRect barPart(QStyle::SubControl control) const
    {
        ScrollBar* b = bar();
        QStyleOptionSlider opt;
        opt.initFrom(b);
        opt.subControls = QStyle::SC_All;
        opt.orientation = b->orientation();
        opt.minimum = b->minimum();
        opt.maximum = b->maximum();
        opt.sliderPosition = b->sliderPosition();
        opt.sliderValue = b->value();
        opt.singleStep = b->singleStep();
        opt.pageStep = b->pageStep();
        return b->style()->subControlRect(QStyle::CC_ScrollBar, &opt, control, b);
    }

    // Notches of the wheel (down when negative) at a point of the viewer, delivered as the
    // window system does: to the widget under the pointer, passed on to its parents.
    void wheel(QPoint at, int notches) const
    {
        QWidget* under = viewer->childAt(at);
        if (!under)
            under = viewer.get();
        const QPointF local = under->mapFrom(viewer.get(), at);
        QWheelEvent event(local, under->mapToGlobal(local), QPoint(), QPoint(0, 120 * notches),
                          Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QSpontaneKeyEvent::setSpontaneous(&event);
        QApplication::instance()->notify(under, &event);
    }
};

// What the window shows: its backing store, as the offscreen screen hands it out, once every
// queued update has been painted.
QImage shownPixels(QWidget* window)
{
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents();
    return window->screen()
        ->grabWindow(window->winId())
        .toImage()
        .convertToFormat(QImage::Format_RGB32);
}

// Whether the window shows the row's whole strip exactly as the row paints itself.
bool showsRow(QWidget* window, ctlSubLine* row)
{
    const QImage shown = shownPixels(window);
    const QRect place(row->mapTo(window, QPoint(0, 0)), row->size());
    if (!QRect(QPoint(0, 0), shown.size()).contains(place))
        return false;
    return shown.copy(place) == row->grab().toImage().convertToFormat(QImage::Format_RGB32);
}

}  // namespace

class tst_ctlSubLineDsp : public QObject {
    Q_OBJECT
private slots:
    // First, so that its rows are the first this process makes.
    void rowsMadeWhileAScreenReaderListensHaveTheirOwnReadings();
    void registeredUnderItsIdentifier();
    void childrenSitAtTheirDesignPlaces();
    void headingShowsItsFiveCaptionsInMsSansSerifOrTheDesignFont();
    void headingLinesUpWithTheRowColumns();
    void beforeBindingTheDesignRowShowsAndTheBarIsDisabled();
    void rowsOf44PixelsInA326PixelWindowGiveViewableLines7SmallChange44AndLargeChange264();
    void aListExactlyAsTallAsTheWindowDisablesTheScrollBarWithMaximum0();
    void scrollValue100PlacesTheListTopAtMinus100();
    void a600PixelWideComponentWithA17PixelScrollBarGivesA583PixelWindowAnd581PixelRows();
    void resizeSetsHeightsLeftAndWidthsButNotTheScrollRange();
    void downArrowScrollsOneRowAndTroughOnePageKeepingOneRow();
    void wheelOverTheRowsScrollsTheList();
    void pageAndEndKeysFromARowScrollTheList();
    void downArrowToARowOutOfViewScrollsItInAndTabLeavesTheList();
    void rowsMadeWhileTheHostIsHiddenAreStillOneTabStopInTheListsPlace();
    void rowsBelowTheWindowArePaintedWhenScrolledIntoView();
    void rowsBelowTheWindowArePaintedWhenTheViewerGrows();
    void aLoweredMaximumMovesTheListBackToTheTop();
    void bindingOneItemKeepsThePreviousRange();
    void lineItemsReadsTheListsCollectionAndWorksByName();
    void bindingMoreThanTheListHoldsFailsToTheCallerAndTheViewerStillWorks();
    void collectionFailureIsLoggedByListAndViewerAndReachesTheCaller();
    void heightChangedFailureReportsUnderItsLabelWithoutParentheses();
    void viewableLinesYields0AndLogsWhenTheLineHeightIs0();
    void scrollChangeFailureReportsAndResetsTheValueToTheMinimum();
    void scrollChangeWithoutTheListReportsAndResetsToTheMinimum();
    void resizeFailureLogsAWarningAndCarriesOnWithTheNextStep();
    void everyCaptionFitsAndScreenReadersFindEveryName();
    void rowsReadTheirLineAndTheirTextsAreLabelledByTheColumnHeadings();
    void rowsOutOfTheWindowAreNotShowingAndKeysMoveTheFocusFromRowToRow();
};

void tst_ctlSubLineDsp::registeredUnderItsIdentifier()
{
    std::unique_ptr<UserControl> c(
        ControlRegistry::instance().create(QStringLiteral("ZebSubmittalControls.ctlSubLineDsp")));
    QVERIFY(qobject_cast<ctlSubLineDsp*>(c.get()));
    QCOMPARE(c->Name(), QStringLiteral("ctlSubLineDsp"));
}

void tst_ctlSubLineDsp::childrenSitAtTheirDesignPlaces()
{
    Fixture f;
    QCOMPARE(f.viewer->size(), QSize(610, 355));
    QCOMPARE(f.heading()->geometry(), twipsRect(0, 0, 9150, 375));
    QCOMPARE(f.window()->geometry(), twipsRect(0, 375, 8895, 4920));
    QCOMPARE(f.bar()->geometry(), twipsRect(8895, 375, 255, 4920));
    QCOMPARE(f.list()->parentWidget(), f.window());
    QCOMPARE(f.list()->pos(), QPoint(0, 0));
    const QList<std::pair<const char*, QRect>> places{
        {"lblQty", twipsRect(1025, 38, 435, 225)},    {"lblType", twipsRect(1700, 38, 780, 225)},
        {"lblBrand", twipsRect(2450, 38, 1425, 225)}, {"lblCatNum", twipsRect(3840, 38, 3690, 225)},
        {"lblGroup", twipsRect(7980, 38, 705, 225)},
    };
    for (const auto& [name, place] : places) {
        auto* label = f.heading()->findChild<PaintedLabel*>(QLatin1String(name));
        QVERIFY2(label, name);
        QCOMPARE(label->geometry(), place);
    }
}

void tst_ctlSubLineDsp::headingShowsItsFiveCaptionsInMsSansSerifOrTheDesignFont()
{
    Fixture f;
    QStringList captions;
    for (const char* name : {"lblQty", "lblType", "lblBrand", "lblCatNum", "lblGroup"})
        captions << f.heading()->findChild<PaintedLabel*>(QLatin1String(name))->Caption();
    QCOMPARE(captions, (QStringList{"QTY", "Type", "Brand", "Catalog Number", "Group"}));
    const QFont used = f.heading()->findChild<PaintedLabel*>(QStringLiteral("lblQty"))->font();
    const QString face = QStringLiteral("MS Sans Serif");
    if (QFontDatabase::hasFamily(face))
        QCOMPARE(QFontInfo(used).family(), face);
    else
        QCOMPARE(QFontInfo(used).family(), QFontInfo(designFont(QFont())).family());
    QCOMPARE(used.pointSize(), 8);
}

void tst_ctlSubLineDsp::headingLinesUpWithTheRowColumns()
{
    Fixture f;
    f.bind(3);
    const QList<std::pair<const char*, const char*>> columns{{"lblQty", "lblQuantity"},
                                                             {"lblType", "lblType"},
                                                             {"lblBrand", "lblBrand"},
                                                             {"lblCatNum", "lblCatNum"},
                                                             {"lblGroup", "lblGroup"}};
    for (const auto& [head, cell] : columns) {
        auto* h = f.heading()->findChild<PaintedLabel*>(QLatin1String(head));
        auto* c = f.row(2)->findChild<PaintedLabel*>(QLatin1String(cell));
        const int hx = h->mapTo(f.viewer.get(), QPoint(0, 0)).x();
        const int cx = c->mapTo(f.viewer.get(), QPoint(0, 0)).x();
        QVERIFY2(qAbs(hx - cx) <= 4, head);
        QVERIFY(h->mapTo(f.viewer.get(), QPoint(0, h->height())).y()
                <= f.window()->mapTo(f.viewer.get(), QPoint(0, 0)).y());
    }
}

void tst_ctlSubLineDsp::beforeBindingTheDesignRowShowsAndTheBarIsDisabled()
{
    Fixture f;
    QVERIFY(f.row(1)->isVisible());
    QCOMPARE(f.list()->rowCount(), 1);
    QVERIFY(!f.bar()->isEnabled());
    QCOMPARE(f.bar()->Max(), 0);
    QVERIFY(!f.viewer->LineItems());
}

void tst_ctlSubLineDsp::
    rowsOf44PixelsInA326PixelWindowGiveViewableLines7SmallChange44AndLargeChange264()
{
    Fixture f(QSize(610, 326 + 27));
    QCOMPARE(f.window()->height(), 326);
    f.bind(20);
    QCOMPARE(f.list()->LineHeight(), qint16(44));
    QCOMPARE(f.viewable(), qint16(7));
    QCOMPARE(f.bar()->SmallChange(), 44);
    QCOMPARE(f.bar()->LargeChange(), 264);
    QCOMPARE(f.bar()->Min(), 0);
    QCOMPARE(f.bar()->Max(), 20 * 44 - 326);
    QVERIFY(f.bar()->isEnabled());
    QVERIFY(f.h.log().lines().isEmpty());
}

void tst_ctlSubLineDsp::aListExactlyAsTallAsTheWindowDisablesTheScrollBarWithMaximum0()
{
    Fixture f(QSize(610, 5 * 44 + 27));
    QCOMPARE(f.window()->height(), 220);
    f.bind(20);
    QVERIFY(f.bar()->isEnabled());
    f.bar()->setValueChecked(300);
    f.bind(5);
    QCOMPARE(f.list()->height(), f.window()->height());
    QCOMPARE(f.bar()->Max(), 0);
    QVERIFY(!f.bar()->isEnabled());
    QCOMPARE(f.bar()->Value(), 0);
    QCOMPARE(f.list()->y(), 0);
    f.bind(6);
    QVERIFY(f.bar()->isEnabled());
    QCOMPARE(f.bar()->Max(), 44);
}

void tst_ctlSubLineDsp::scrollValue100PlacesTheListTopAtMinus100()
{
    Fixture f;
    f.bind(20);
    f.bar()->setValueChecked(100);
    QCOMPARE(f.list()->y(), -100);
    QCOMPARE(f.list()->x(), 0);
    f.bar()->setValueChecked(0);
    QCOMPARE(f.list()->y(), 0);
    // The window clips the list: row 3 (tops 88..131) shows from window pixel -12.
    f.bar()->setValueChecked(100);
    QCOMPARE(f.row(3)->mapTo(f.window(), QPoint(0, 0)).y(), -12);
}

void tst_ctlSubLineDsp::
    a600PixelWideComponentWithA17PixelScrollBarGivesA583PixelWindowAnd581PixelRows()
{
    Fixture f;
    f.bind(4);
    QCOMPARE(f.bar()->width(), 17);
    f.viewer->resize(600, 355);
    QCOMPARE(f.window()->width(), 583);
    QCOMPARE(f.list()->width(), 581);
    for (int i = 1; i <= 4; ++i)
        QCOMPARE(f.row(i)->width(), 581);
    QCOMPARE(f.bar()->x(), 583);
    QCOMPARE(f.heading()->width(), 600);
}

void tst_ctlSubLineDsp::resizeSetsHeightsLeftAndWidthsButNotTheScrollRange()
{
    Fixture f;
    f.bind(20);
    const int max = f.bar()->Max();
    const int large = f.bar()->LargeChange();
    f.viewer->resize(700, 500);
    QCOMPARE(f.window()->geometry(), QRect(0, 25, 683, 473));
    QCOMPARE(f.bar()->geometry(), QRect(683, 25, 17, 473));
    QCOMPARE(f.heading()->width(), 700);
    QCOMPARE(f.list()->width(), 681);
    QCOMPARE(f.bar()->Max(), max);
    QCOMPARE(f.bar()->LargeChange(), large);
    QVERIFY(f.h.log().lines().isEmpty());
}

void tst_ctlSubLineDsp::downArrowScrollsOneRowAndTroughOnePageKeepingOneRow()
{
    Fixture f(QSize(610, 326 + 27));
    f.bind(20);
    QTest::mouseClick(f.bar(), Qt::LeftButton, {}, f.barPart(QStyle::SC_ScrollBarAddLine).center());
    QCOMPARE(f.list()->y(), -44);
    const QRect trough = f.barPart(QStyle::SC_ScrollBarAddPage);
    QTest::mouseClick(f.bar(), Qt::LeftButton, {},
                      QPoint(trough.center().x(), trough.bottom() - 1));
    QCOMPARE(f.list()->y(), -44 - 264);
    // Row 8 was the last whole row in view; after the page it is the first.
    QCOMPARE(f.row(8)->mapTo(f.window(), QPoint(0, 0)).y(), 0);
    QTest::mouseClick(f.bar(), Qt::LeftButton, {}, f.barPart(QStyle::SC_ScrollBarSubLine).center());
    QCOMPARE(f.list()->y(), -264);
}

void tst_ctlSubLineDsp::wheelOverTheRowsScrollsTheList()
{
    Fixture f;
    f.bind(20);
    const QPoint overRow = f.row(2)->mapTo(f.viewer.get(), QPoint(300, 20));
    f.wheel(overRow, -1);
    QCOMPARE(f.bar()->Value(), 3 * 44);
    QCOMPARE(f.list()->y(), -3 * 44);
    f.wheel(overRow, 1);
    QCOMPARE(f.list()->y(), 0);
    // Nothing to scroll: the wheel moves nothing.
    f.bind(3);
    f.wheel(overRow, -1);
    QCOMPARE(f.list()->y(), 0);
}

void tst_ctlSubLineDsp::pageAndEndKeysFromARowScrollTheList()
{
    Fixture f(QSize(610, 326 + 27));
    f.bind(20);
    f.viewer->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(f.viewer.get()));
    CheckBox* box = f.row(1)->findChild<CheckBox*>(QStringLiteral("chkSelect"));
    box->setFocus(Qt::TabFocusReason);
    QTest::keyClick(box, Qt::Key_PageDown);
    QCOMPARE(f.list()->y(), -264);
    QTest::keyClick(box, Qt::Key_End);
    QCOMPARE(f.list()->y(), -(20 * 44 - 326));
    QTest::keyClick(box, Qt::Key_Home);
    QCOMPARE(f.list()->y(), 0);
    // The bar itself takes the arrow keys when it has the focus.
    f.bar()->setFocus(Qt::TabFocusReason);
    QTest::keyClick(f.bar(), Qt::Key_Down);
    QCOMPARE(f.list()->y(), -44);
}

void tst_ctlSubLineDsp::downArrowToARowOutOfViewScrollsItInAndTabLeavesTheList()
{
    Fixture f(QSize(610, 326 + 27));
    auto* before = new QPushButton(QStringLiteral("Before"));
    auto* after = new QPushButton(QStringLiteral("After"));
    QWidget host;
    auto* layout = new QVBoxLayout(&host);
    layout->addWidget(before);
    f.viewer->setParent(&host);
    const auto giveBack = qScopeGuard([&f] { f.viewer->setParent(nullptr); });
    layout->addWidget(f.viewer.get());
    layout->addWidget(after);
    f.viewer->setMinimumSize(610, 326 + 27);
    host.show();
    QVERIFY(QTest::qWaitForWindowExposed(&host));
    f.bind(20);
    host.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&host));
    CheckBox* seventh = f.row(7)->findChild<CheckBox*>(QStringLiteral("chkSelect"));
    seventh->setFocus(Qt::TabFocusReason);
    QCOMPARE(f.list()->y(), 0);  // row 7 (264..307) is in view
    QTest::keyClick(seventh, Qt::Key_Down);
    CheckBox* eighth = f.row(8)->findChild<CheckBox*>(QStringLiteral("chkSelect"));
    QVERIFY(eighth->hasFocus());
    // Row 8 (308..351) ends 25 pixels below the window.
    QCOMPARE(f.bar()->Value(), 8 * 44 - 326);
    QCOMPARE(f.list()->y(), -(8 * 44 - 326));
    QTest::keyClick(eighth, Qt::Key_Space);
    QVERIFY(f.list()->LineItems()->Item(8)->Selected());
    QTest::keyClick(eighth, Qt::Key_Up);
    QVERIFY(seventh->hasFocus());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Home);
    QCOMPARE(f.list()->y(), 0);
    // The rows are one Tab stop: Tab leaves the list at once, Shift+Tab comes back to the row
    // last focused.
    f.row(3)->findChild<CheckBox*>(QStringLiteral("chkSelect"))->setFocus(Qt::MouseFocusReason);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Down);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    QVERIFY(after->hasFocus());
    QTest::keyClick(after, Qt::Key_Backtab);
    QVERIFY(f.row(4)->findChild<CheckBox*>(QStringLiteral("chkSelect"))->hasFocus());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backtab);
    QVERIFY(before->hasFocus());
}

void tst_ctlSubLineDsp::rowsMadeWhileTheHostIsHiddenAreStillOneTabStopInTheListsPlace()
{
    Fixture f(QSize(610, 326 + 27));
    auto* before = new QPushButton(QStringLiteral("Before"));
    auto* after = new QPushButton(QStringLiteral("After"));
    QWidget host;
    auto* layout = new QVBoxLayout(&host);
    layout->addWidget(before);
    f.viewer->setParent(&host);
    const auto giveBack = qScopeGuard([&f] { f.viewer->setParent(nullptr); });
    layout->addWidget(f.viewer.get());
    layout->addWidget(after);
    f.viewer->setMinimumSize(610, 326 + 27);
    // The rows are made after every other widget of the window, and before it shows.
    f.bind(20);
    host.show();
    QVERIFY(QTest::qWaitForWindowExposed(&host));
    host.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&host));
    before->setFocus(Qt::TabFocusReason);
    QTest::keyClick(before, Qt::Key_Tab);
    QVERIFY(f.row(1)->selectBox()->hasFocus());
    f.row(5)->selectBox()->setFocus(Qt::MouseFocusReason);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Down);
    QVERIFY(f.row(6)->selectBox()->hasFocus());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    QVERIFY(after->hasFocus());
    QTest::keyClick(after, Qt::Key_Backtab);
    QVERIFY(f.row(6)->selectBox()->hasFocus());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backtab);
    QVERIFY(before->hasFocus());
}

void tst_ctlSubLineDsp::rowsBelowTheWindowArePaintedWhenScrolledIntoView()
{
    Fixture f(QSize(610, 326 + 27));
    f.bind(20);
    // Rows 1 to 7 fill the window; row 8 starts 18 pixels above its bottom.
    QVERIFY(showsRow(f.viewer.get(), f.row(1)));
    QVERIFY(showsRow(f.viewer.get(), f.row(7)));
    f.bar()->setValueChecked(44);
    QVERIFY(showsRow(f.viewer.get(), f.row(8)));
    f.bar()->setValueChecked(f.bar()->Max());
    QCOMPARE(f.list()->y(), -(20 * 44 - 326));
    QVERIFY(showsRow(f.viewer.get(), f.row(19)));
    QVERIFY(showsRow(f.viewer.get(), f.row(20)));
}

void tst_ctlSubLineDsp::rowsBelowTheWindowArePaintedWhenTheViewerGrows()
{
    Fixture f(QSize(610, 326 + 27));
    f.bind(20);
    QVERIFY(showsRow(f.viewer.get(), f.row(7)));
    f.viewer->resize(610, 12 * 44 + 27);
    QCOMPARE(f.window()->height(), 12 * 44);
    QVERIFY(showsRow(f.viewer.get(), f.row(10)));
    QVERIFY(showsRow(f.viewer.get(), f.row(12)));
}

void tst_ctlSubLineDsp::aLoweredMaximumMovesTheListBackToTheTop()
{
    Fixture f;
    f.bind(20);
    f.bar()->setValueChecked(500);
    QCOMPARE(f.list()->y(), -500);
    f.bind(3);
    QCOMPARE(f.bar()->Max(), 0);
    QCOMPARE(f.bar()->Value(), 0);
    QCOMPARE(f.list()->y(), 0);
    QVERIFY(!f.bar()->isEnabled());
}

void tst_ctlSubLineDsp::bindingOneItemKeepsThePreviousRange()
{
    Fixture f;
    f.bind(20);
    const int max = f.bar()->Max();
    f.bind(1);
    QCOMPARE(f.bar()->Max(), max);
    QVERIFY(f.bar()->isEnabled());
    QCOMPARE(f.list()->rowCount(), 1);
}

void tst_ctlSubLineDsp::lineItemsReadsTheListsCollectionAndWorksByName()
{
    Fixture f;
    auto items = lines(4);
    const auto asContract = std::shared_ptr<ZebObjects::LineItems>(items);
    QVERIFY(f.viewer->setProperty("LineItems", QVariant::fromValue(asContract)));
    QCOMPARE(f.viewer->LineItems(), asContract);
    QCOMPARE(f.list()->LineItems(), asContract);
    QCOMPARE(f.viewer->property("LineItems").value<std::shared_ptr<ZebObjects::LineItems>>(),
             asContract);
    QCOMPARE(f.list()->rowCount(), 4);
}

void tst_ctlSubLineDsp::bindingMoreThanTheListHoldsFailsToTheCallerAndTheViewerStillWorks()
{
    Fixture f;
    try {
        f.bind(800);
        QFAIL("no failure");
    } catch (const Failure& e) {
        QCOMPARE(e.info(), overflowError());
    }
    const QString list = QStringLiteral("ctlSubLines");
    QCOMPARE(
        f.h.log().lines(),
        (QStringList{logError(QStringLiteral("addNextLine()"), overflowError(), list),
                     logError(QStringLiteral("Populate()"), overflowError(), list),
                     logError(QStringLiteral("LineItems() - Property Set"), overflowError(), list),
                     logError(QStringLiteral("LineItems() - Property Set"), overflowError())}));
    QVERIFY(f.h.boxes().shown().isEmpty());
    QCOMPARE(f.list()->rowCount(), 745);
    QCOMPARE(f.bar()->Max(), 744 * 44 - 328);
    f.bar()->setValueChecked(f.bar()->Max());
    QCOMPARE(f.list()->y(), -(744 * 44 - 328));
    f.bind(20);
    QCOMPARE(f.list()->rowCount(), 20);
    QCOMPARE(f.bar()->Max(), 20 * 44 - 328);
    // While the list grew again from two rows, the maximum fell to 0 and took the list up.
    QCOMPARE(f.bar()->Value(), 0);
    QCOMPARE(f.list()->y(), 0);
}

void tst_ctlSubLineDsp::collectionFailureIsLoggedByListAndViewerAndReachesTheCaller()
{
    Fixture f;
    auto items = lines(3);
    items->faults().failNext(QStringLiteral("Enumerate"), kStoreDown);
    QVERIFY_THROWS_EXCEPTION(Failure, f.viewer->setLineItems(items));
    const QString list = QStringLiteral("ctlSubLines");
    QCOMPARE(f.h.log().lines(),
             (QStringList{logError(QStringLiteral("Populate()"), kStoreDown, list),
                          logError(QStringLiteral("LineItems() - Property Set"), kStoreDown, list),
                          logError(QStringLiteral("LineItems() - Property Set"), kStoreDown)}));
    f.viewer->setLineItems(items);
    QCOMPARE(f.list()->rowCount(), 3);
}

void tst_ctlSubLineDsp::heightChangedFailureReportsUnderItsLabelWithoutParentheses()
{
    // A window shorter than one row: no whole row in view, so a page less one row is negative.
    Fixture f(QSize(610, 30 + 27));
    f.bind(3);
    const QString label = QStringLiteral("ctlSubLines_HeightChanged");
    QCOMPARE(f.h.log().lines(),
             (QStringList{logError(label, invalidValue()), logError(label, invalidValue())}));
    QCOMPARE(f.h.boxes().shown(),
             (QList<Shown>{plainBox(invalidValue()), plainBox(invalidValue())}));
    // The steps before the failure stand.
    QCOMPARE(f.bar()->Max(), 3 * 44 - 30);
    QCOMPARE(f.bar()->SmallChange(), 44);
    // Still usable: a taller viewer gets its range with the next binding.
    f.h.log().clear();
    f.viewer->resize(610, 326 + 27);
    f.bind(20);
    QCOMPARE(f.bar()->LargeChange(), 264);
    QVERIFY(f.bar()->isEnabled());
    QVERIFY(f.h.log().lines().isEmpty());
}

void tst_ctlSubLineDsp::viewableLinesYields0AndLogsWhenTheLineHeightIs0()
{
    Fixture f;
    f.row(1)->resize(f.row(1)->width(), 0);
    QCOMPARE(f.viewable(), qint16(0));
    QCOMPARE(f.h.log().lines(),
             QStringList{logError(QStringLiteral("ViewableLines()"), divisionByZero())});
    QVERIFY(f.h.boxes().shown().isEmpty());
    f.row(1)->resize(f.row(1)->width(), 44);
    QCOMPARE(f.viewable(), qint16(328 / 44));
}

void tst_ctlSubLineDsp::scrollChangeFailureReportsAndResetsTheValueToTheMinimum()
{
    Fixture f;
    f.bind(20);
    f.bar()->setMin(-32768);
    f.bar()->setValueChecked(-32768);  // its negation does not fit in 16 bits
    QCOMPARE(f.h.log().lines(),
             QStringList{logError(QStringLiteral("VScroll_Change()"), overflowError())});
    QCOMPARE(f.h.boxes().shown(), QList<Shown>{plainBox(overflowError())});
    QCOMPARE(f.bar()->Value(), -32768);
    // Back in range, the viewer scrolls again.
    f.bar()->setMin(0);
    QCOMPARE(f.bar()->Value(), 0);
    QCOMPARE(f.list()->y(), 0);
    QTest::mouseClick(f.bar(), Qt::LeftButton, {}, f.barPart(QStyle::SC_ScrollBarAddLine).center());
    QCOMPARE(f.list()->y(), -44);
    QCOMPARE(f.h.boxes().shown().size(), 1);
}

void tst_ctlSubLineDsp::scrollChangeWithoutTheListReportsAndResetsToTheMinimum()
{
    Fixture f;
    f.bind(20);
    delete f.list();
    QTest::mouseClick(f.bar(), Qt::LeftButton, {}, f.barPart(QStyle::SC_ScrollBarAddLine).center());
    // The reset to the minimum is a change too, and fails the same way once more.
    QCOMPARE(f.bar()->Value(), 0);
    QCOMPARE(f.h.log().lines(),
             (QStringList{logError(QStringLiteral("VScroll_Change()"), notSet()),
                          logError(QStringLiteral("VScroll_Change()"), notSet())}));
    QCOMPARE(f.h.boxes().shown(), (QList<Shown>{plainBox(notSet()), plainBox(notSet())}));
    QVERIFY(f.h.lastResort().isEmpty());
}

void tst_ctlSubLineDsp::resizeFailureLogsAWarningAndCarriesOnWithTheNextStep()
{
    Fixture f;
    f.bind(3);
    f.viewer->resize(600, 20);
    const QString label = QStringLiteral("UserControl_Resize()");
    QCOMPARE(f.h.log().lines(), QStringList{logLine("LogWarning", kModule, label, invalidValue())});
    QVERIFY(f.h.boxes().shown().isEmpty());
    // The window keeps its height; every later step ran.
    QCOMPARE(f.window()->height(), 328);
    QCOMPARE(f.bar()->height(), 328);
    QCOMPARE(f.bar()->x(), 583);
    QCOMPARE(f.heading()->width(), 600);
    QCOMPARE(f.window()->width(), 583);
    QCOMPARE(f.list()->width(), 581);
    f.h.log().clear();
    f.viewer->resize(10, 400);
    QCOMPARE(f.h.log().lines(), QStringList{logLine("LogWarning", kModule, label, invalidValue())});
    QCOMPARE(f.window()->height(), 373);
    QCOMPARE(f.heading()->width(), 10);
    QCOMPARE(f.window()->width(), 583);
    QCOMPARE(f.list()->width(), 581);
    f.h.log().clear();
    f.viewer->resize(610, 355);
    QVERIFY(f.h.log().lines().isEmpty());
    QCOMPARE(f.window()->geometry(), QRect(0, 25, 593, 328));
}

void tst_ctlSubLineDsp::everyCaptionFitsAndScreenReadersFindEveryName()
{
    Fixture f;
    f.bind(3);
    QCOMPARE(captionsThatDoNotFit(f.viewer.get()), QStringList());
    const QStringList unnamed = ZebTest::unnamedAccessibleElements(f.viewer.get());
    QVERIFY2(unnamed.isEmpty(), qPrintable(unnamed.join(QStringLiteral("; "))));
    QCOMPARE(unnamedWidgetsShownOrHidden(f.viewer.get()), QStringList());
    QVERIFY(!f.bar()->accessibleDescription().isEmpty());
}

void tst_ctlSubLineDsp::rowsReadTheirLineAndTheirTextsAreLabelledByTheColumnHeadings()
{
    Fixture f;
    auto items = std::make_shared<StandaloneLineItems>();
    auto first = lineData(1, false, true, QStringLiteral("Check the ceiling"));
    first.quantity = 24;
    first.type = QStringLiteral("A");
    first.brand = QStringLiteral("Varnholt");
    first.catalogNumber = QStringLiteral("VH-2X4-LP-40L-35K-DIM");
    first.group = QStringLiteral("LVL1");
    items->Add(first);
    auto second = lineData(2);
    second.group.clear();
    items->Add(second);
    f.viewer->setLineItems(items);

    QAccessibleInterface* row = QAccessible::queryAccessibleInterface(f.row(1));
    QCOMPARE(row->text(QAccessible::Name), QStringLiteral("Line 1"));
    QCOMPARE(row->text(QAccessible::Description),
             QStringLiteral("Line 1: 24 of type A, Varnholt VH-2X4-LP-40L-35K-DIM, group LVL1, "
                            "made to order, has a comment"));
    QCOMPARE(QAccessible::queryAccessibleInterface(f.row(2))->text(QAccessible::Description),
             QStringLiteral("Line 2: 12 of type T2, Brand 2 CAT-2-35K"));

    // The check box says which line it selects.
    auto* box = f.row(1)->findChild<CheckBox*>(QStringLiteral("chkSelect"));
    QAccessibleInterface* check = QAccessible::queryAccessibleInterface(box);
    QCOMPARE(check->role(), QAccessible::CheckBox);
    QCOMPARE(check->text(QAccessible::Name),
             QStringLiteral("Select line 1: 24 of type A, Varnholt VH-2X4-LP-40L-35K-DIM"));
    QVERIFY(check->state().checkable);
    QVERIFY(!check->state().checked);
    {
        ZebTest::AccessibleEvents events;
        check->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
        QVERIFY(items->Item(1)->Selected());
        QVERIFY(check->state().checked);
        QVERIFY(events.checkChanges().contains(check->text(QAccessible::Name)));
    }

    // Each text is labelled by its heading; the letters of the band read as words.
    const std::pair<const char*, const char*> cells[] = {{"lblQuantity", "Quantity"},
                                                         {"lblType", "Type"},
                                                         {"lblBrand", "Brand"},
                                                         {"lblCatNum", "Catalog Number"},
                                                         {"lblGroup", "Group"}};
    for (const auto& [cell, heading] : cells) {
        auto* label = f.row(1)->findChild<QWidget*>(QLatin1String(cell));
        QAccessibleInterface* text = QAccessible::queryAccessibleInterface(label);
        // The heading is the text's label (Qt's Label, labelled-by to a screen reader).
        const auto labelled = text->relations(QAccessible::Label);
        QVERIFY2(labelled.size() == 1, cell);
        QCOMPARE(labelled.front().first->text(QAccessible::Name), QLatin1String(heading));
        QCOMPARE(labelled.front().first->object(),
                 static_cast<QObject*>(f.heading()->findChild<QWidget*>(
                     QString::fromLatin1(cell) == QLatin1String("lblQuantity")
                         ? QStringLiteral("lblQty")
                         : QString::fromLatin1(cell))));
    }
    QCOMPARE(QAccessible::queryAccessibleInterface(
                 f.row(1)->findChild<QWidget*>(QStringLiteral("lblQuantity")))
                 ->text(QAccessible::Name),
             QStringLiteral("24"));
    QCOMPARE(QAccessible::queryAccessibleInterface(
                 f.row(1)->findChild<QWidget*>(QStringLiteral("lblMTO")))
                 ->text(QAccessible::Name),
             QStringLiteral("Made to order"));
}

void tst_ctlSubLineDsp::rowsOutOfTheWindowAreNotShowingAndKeysMoveTheFocusFromRowToRow()
{
    Fixture f(QSize(610, 326 + 27));
    f.bind(744);
    f.viewer->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(f.viewer.get()));
    auto showing = [&](int index) {
        return !QAccessible::queryAccessibleInterface(f.row(index))->state().invisible;
    };
    auto box = [&](int index) {
        return f.row(index)->findChild<CheckBox*>(QStringLiteral("chkSelect"));
    };
    QVERIFY(showing(1));
    QVERIFY(showing(8));  // partly in the window
    QVERIFY(!showing(9));
    QVERIFY(!showing(744));
    QVERIFY(QAccessible::queryAccessibleInterface(box(9))->state().invisible);
    // Only one row's box is a Tab stop.
    int tabStops = 0;
    for (int i = 1; i <= 744; ++i)
        if (box(i)->focusPolicy() & Qt::TabFocus)
            ++tabStops;
    QCOMPARE(tabStops, 1);

    // The scroll bar reads in lines.
    QAccessibleInterface* bar = QAccessible::queryAccessibleInterface(f.bar());
    QCOMPARE(bar->text(QAccessible::Value), QStringLiteral("line 1 of 744"));
    QCOMPARE(bar->valueInterface()->maximumValue().toInt(), 744);

    ZebTest::AccessibleEvents events;
    box(1)->setFocus(Qt::TabFocusReason);
    events.clear();
    // Page Down scrolls by the bar's large change as before, and the focus follows a page.
    QTest::keyClick(box(1), Qt::Key_PageDown);
    QCOMPARE(f.list()->y(), -264);
    QVERIFY(box(7)->hasFocus());
    QVERIFY(!showing(1));
    QVERIFY(showing(7));
    QCOMPARE(bar->text(QAccessible::Value), QStringLiteral("line 7 of 744"));
    QCOMPARE(bar->valueInterface()->currentValue().toInt(), 7);
    QCOMPARE(events.names(QAccessible::Focus),
             QStringList{QStringLiteral("Select line 7: 17 of type T7, Brand 7 CAT-7-35K")});
    events.clear();
    QTest::keyClick(box(7), Qt::Key_End);
    QVERIFY(box(744)->hasFocus());
    QCOMPARE(f.list()->y(), -(744 * 44 - 326));
    QVERIFY(showing(744));
    QCOMPARE(events.names(QAccessible::Focus).size(), 1);
    QCOMPARE(bar->text(QAccessible::Value),
             QStringLiteral("line %1 of 744").arg((744 * 44 - 326) / 44 + 1));
    QTest::keyClick(box(744), Qt::Key_Up);
    QVERIFY(box(743)->hasFocus());
    QTest::keyClick(box(743), Qt::Key_PageUp);
    QVERIFY(box(737)->hasFocus());
    QTest::keyClick(box(737), Qt::Key_Home);
    QVERIFY(box(1)->hasFocus());
    QCOMPARE(f.list()->y(), 0);
    // The reader may set the bar by lines.
    bar->valueInterface()->setCurrentValue(12);
    QCOMPARE(f.bar()->Value(), 11 * 44);
    QCOMPARE(f.list()->y(), -11 * 44);
    QVERIFY(showing(12));
    QVERIFY(!showing(11));
}

void tst_ctlSubLineDsp::rowsMadeWhileAScreenReaderListensHaveTheirOwnReadings()
{
    // A listening reader asks for a row's parts as they are made and named.
    ZebTest::AccessibleEvents events;
    Fixture f;
    f.bind(3);
    auto* box = f.row(1)->findChild<CheckBox*>(QStringLiteral("chkSelect"));
    QCOMPARE(QAccessible::queryAccessibleInterface(box)->text(QAccessible::Name),
             QStringLiteral("Select line 1: 11 of type T1, Brand 1 CAT-1-35K"));
    QCOMPARE(QAccessible::queryAccessibleInterface(f.row(1))->text(QAccessible::Name),
             QStringLiteral("Line 1"));
    const auto labelled = QAccessible::queryAccessibleInterface(
                              f.row(1)->findChild<QWidget*>(QStringLiteral("lblQuantity")))
                              ->relations(QAccessible::Label);
    QCOMPARE(labelled.size(), 1);
    QCOMPARE(QAccessible::queryAccessibleInterface(f.bar())->text(QAccessible::Value),
             QStringLiteral("line 1 of 3"));
}

QTEST_MAIN(tst_ctlSubLineDsp)
#include "tst_ctlsublinedsp.moc"
