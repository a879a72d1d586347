#include "controls/textselect/ctltextselect.h"
#include "controls/textselect/frmedittext.h"
#include "frame/controlregistry.h"
#include "frame/propertybag.h"
#include "userinput.h"
#include "contracts/runtime.h"
#include "objects/standaloneapplicationservices.h"
#include "objects/standalonetextobjects.h"
#include "platform/checkbox.h"
#include "platform/keyedlistview.h"
#include "platform/lineshape.h"
#include "platform/multilinetextbox.h"
#include "platform/tooltipregistry.h"
#include "support/controltesting.h"
#include "support/testsupport.h"

#include <QAction>
#include <QHeaderView>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QStyle>
#include <QScrollBar>
#include <QTest>
#include <QToolTip>

#include <optional>
#include <tuple>

using namespace ZebSubCtl;
using ZebObjects::ErrorInfo;
using ZebObjects::Failure;
using ZebObjects::StandaloneApplicationServices;
using ZebObjects::StandaloneTextObjects;
using ZebTest::error;
using ZebTest::typeText;
using ZebTest::WhenModal;
using ZebTest::WhenPopup;
using Shown = ZebSubCtl::ScriptedMessageBoxService::Shown;

namespace {

const QString kEnter = QStringLiteral("Entering Method...");
const QString kExit = QStringLiteral("Exiting Method...");
using ZebTest::kCannot;
using ZebTest::plainBox;
const QString kNotSet = QStringLiteral("Object variable or With block variable not set");
const QString kAddReformatted = QStringLiteral(
    "Your text contains unsupported characters and will be reformatted.\r\n"
    "Please review the paragraph to be certain you are satisfied with the new format\r\n"
    "before selecting add again.");

const ErrorInfo kStoreDown = error(-2147217843, QStringLiteral("ZebObjects.TextObjects"),
                                   QStringLiteral("The text store is not available"));
const ErrorInfo kLogDown =
    error(70, QStringLiteral("ZebObjects.DiagnosticLog"), QStringLiteral("Permission denied"));

QString trace(const QString& label, const QString& message)
{
    return QStringLiteral("Trace|ctlTextSelect|%1|%2|0").arg(label, message);
}

QString logError(const QString& label, const ErrorInfo& e, const QString& module = {})
{
    return ZebTest::logLine("LogError", module.isEmpty() ? QStringLiteral("ctlTextSelect") : module,
                            label, e);
}

ErrorInfo notSet()
{
    return error(91, QStringLiteral("ZebSubCtl"), kNotSet);
}

ErrorInfo noKey(const QString& key)
{
    return error(
        9, QStringLiteral("ZebObjects.TextObjects"),
        QStringLiteral("Subscript out of range: no text object has the key \"%1\"").arg(key));
}

const ErrorInfo kNotFound =
    error(35601, QStringLiteral("ZebSubCtl.KeyedListView"), QStringLiteral("Element not found"));

// One control, shown, with its own log, message boxes, application services and collection.
struct Fixture {
    ZebTest::Harness h;
    std::shared_ptr<StandaloneApplicationServices> services =
        std::make_shared<StandaloneApplicationServices>();
    std::shared_ptr<StandaloneTextObjects> coll = std::make_shared<StandaloneTextObjects>();
    std::unique_ptr<ctlTextSelect> ctl;

    explicit Fixture(bool show = true)
    {
        ZebObjects::Runtime::setApplicationServices(services);
        ctl = std::make_unique<ctlTextSelect>();
        if (show) {
            ctl->show();
            if (!QTest::qWaitForWindowExposed(ctl.get()))
                qFatal("control not exposed");
        }
        h.log().clear();
    }

    KeyedListView* list() const
    {
        return ctl->findChild<KeyedListView*>(QStringLiteral("ListView"));
    }
    QWidget* viewport() const { return list()->viewport(); }
    MultiLineTextBox* entry() const
    {
        return ctl->findChild<MultiLineTextBox*>(QStringLiteral("txtNewComment"));
    }
    CheckBox* tick() const { return ctl->findChild<CheckBox*>(QStringLiteral("chkIsSelected")); }
    QPushButton* button(const char* name) const
    {
        return ctl->findChild<QPushButton*>(QLatin1String(name));
    }
    QAction* action(const char* name) const
    {
        return ctl->findChild<QAction*>(QLatin1String(name));
    }
    LineShape* line() const { return ctl->findChild<LineShape*>(QStringLiteral("Line1")); }
    QMenu* menu() const { return ctl->findChild<QMenu*>(QStringLiteral("mnu_RightClick")); }
    ToolTipRegistry* tips() const { return ctl->findChild<ToolTipRegistry*>(); }

    void paragraphs(std::initializer_list<std::tuple<const char*, const char*, bool>> items)
    {
        for (const auto& [key, text, selected] : items)
            coll->addWithKey(QLatin1String(key), QString::fromUtf8(text), selected);
    }
    // Binds the collection with the given paragraphs; the log starts empty afterwards.
    void bind(std::initializer_list<std::tuple<const char*, const char*, bool>> items)
    {
        paragraphs(items);
        ctl->setTextObjects(coll);
        h.log().clear();
    }
    void allowAll()
    {
        ctl->setAllowUpdate(true);
        ctl->setAllowReorder(true);
        ctl->setAllowSave(true);
        h.log().clear();
    }

    // A point on the item's text, away from its check box.
    QPoint textPoint(int row) const
    {
        return QPoint(list()->checkBoxRect(row).right() + 40, list()->itemRect(row).center().y());
    }
    void clickItem(int row) const
    {
        QTest::mouseClick(viewport(), Qt::LeftButton, {}, textPoint(row));
    }
    void doubleClickItem(int row) const
    {
        const QPoint at = textPoint(row);
        QTest::mousePress(viewport(), Qt::LeftButton, {}, at);
        QTest::mouseRelease(viewport(), Qt::LeftButton, {}, at);
        QTest::mouseDClick(viewport(), Qt::LeftButton, {}, at);
        QTest::mouseRelease(viewport(), Qt::LeftButton, {}, at);
    }
    void rightClickItem(int row) const
    {
        QTest::mouseClick(viewport(), Qt::RightButton, {}, textPoint(row));
    }
    void tickItem(int row) const
    {
        QTest::mouseClick(viewport(), Qt::LeftButton, {}, list()->checkBoxRect(row).center());
    }
    // Chooses a menu entry by its access key from a right click on the item.
    void chooseFromMenu(int row, Qt::Key accessKey) const
    {
        WhenPopup popup([accessKey](QMenu& m) { QTest::keyClick(&m, accessKey); });
        rightClickItem(row);
        QVERIFY(popup.answered());
    }

    QStringList texts() const
    {
        QStringList out;
        for (int i = 0; i < list()->count(); ++i)
            out << list()->text(i);
        return out;
    }
    QStringList keys() const
    {
        QStringList out;
        for (int i = 0; i < list()->count(); ++i)
            out << list()->key(i);
        return out;
    }
    QStringList tags() const
    {
        QStringList out;
        for (int i = 0; i < list()->count(); ++i)
            out << list()->tag(i);
        return out;
    }
    QList<bool> checks() const
    {
        QList<bool> out;
        for (int i = 0; i < list()->count(); ++i)
            out << list()->isChecked(i);
        return out;
    }
    QStringList collTexts() const
    {
        QStringList out;
        for (const auto& o : coll->Enumerate())
            out << o->Text();
        return out;
    }
    QStringList toolTexts() const
    {
        QStringList out;
        for (int i = 0; i < tips()->toolCount(viewport()); ++i)
            out << tips()->toolText(viewport(), i);
        return out;
    }
};

using ZebTest::FailingTraceLog;

// The failure a call to the control raised towards its caller.
using ZebTest::failureIfAny;

}  // namespace

class tst_ctlTextSelect : public QObject {
    Q_OBJECT
private slots:
    void everyCaptionFitsItsDesignPlace();
    void screenReaderFindsANameForEveryInteractiveElement();
    void cleanup();

    // Registration and design
    void isCreatedByItsIdentifier();
    void childWidgetsCarryTheirNamesCaptionsAndDesignPlaces();
    void listIsAReportWithCheckBoxesAndOneTextColumn();
    void entryBoxIsMultiLineWithAVerticalScrollBar();
    void popUpMenuHasItsEntriesSeparatorsAndAccessKeysInOrder();
    void freshControlStartsWithoutEntryAreaEditingReorderingOrSave();

    // Properties and persistence
    void freshControlReadsFalseFalseZeroZeroFalse();
    void propertiesAreReachableByName();
    void gettersAndSettersTraceEntryAndExit();
    void settersMarkTheirPropertyButAllowSaveMarksNothing();
    void allowUpdateShowsTheEntryAreaAndEnablesEditAndDelete();
    void allowUpdateFalseHidesTheEntryAreaGreysEditAndDeleteAndStartsTheListAt5();
    void allowReorderEnablesMoveButtonsAndMenuEntries();
    void allowSaveChangesNoWidget();
    void maxLengthIsTheEntryBoxsLimit();
    void textObjectTypeIsHandedToEachCollectionBoundLater();
    void propertiesWrittenAndReadBackKeepAllFiveValues();
    void freshControlWritesNothingButDefaults();
    void writingReadsEveryPropertyThroughItsGetterInKeyOrder();
    void restoringAppliesEveryKeyThroughItsSetterAndRunsTheLayout();
    void bagMissingAKeyRestoresThatPropertyToItsDefault();
    void maxLengthBeyondSixteenBitsReportsOverflowAndLeavesLaterKeys();
    void failingGetterWhileSavingIsLoggedTwiceAndReportedPlain();
    void failingPropertyProcedurePassesTheFailureToTheHost();
    void layoutFailureWhileSettingAllowUpdateIsLoggedTwiceAndPassedToTheHost();
    void tipRebuildFailureAfterDeleteShowsTheTextDeleteReport();

    // Binding and population
    void bindingFillsTheListInCollectionOrder();
    void lineBreaksShowAsTwoBlanksWhileTheToolTipKeepsThem();
    void bindingAnEmptyCollectionLeavesTheListEmpty();
    void bindingNothingClearsTheListAndLeavesTheToolTipsUntouched();
    void bindingTracesTheSetterAndPopulate();
    void rebindingDropsTheOldCollectionsEvents();
    void populateIsPublicAndRereadsTheCollection();
    void populateFailureIsLoggedTwiceAndPassedToTheHost();
    void failureReadingAParagraphKeepsTheItemsAddedBefore();
    void failingTypeWriteLeavesTheListAsItWas();

    // Tool tips
    void toolTipObjectIsSetUpWithDelayDisplayTimeAndActive();
    void everyItemHasAToolOverItsRectangleWithItsFullText();
    void rebindingReplacesToolsAndDropsThosePastTheLastItem();
    void mouseMoveOverTheListRefreshesEveryToolsRectangle();
    void pointerRestingOverAnItemShowsItsFullText();

    // Layout
    void layoutWithAllowUpdatePlacesEveryWidget();
    void layoutWithoutAllowUpdateStartsTheListAt5();
    void moveUpTouchesMoveDownWhichKeepsAGapOf15FromSave();
    void controlNarrowerThan105KeepsTheEntryBoxsLastWidth();
    void controlNarrowerThan10KeepsTheListsAndTheLinesWidth();
    void controlTooLowKeepsTheListsLastHeight();
    void resizeRunsHandleResize();
    void resizeFailureIsLoggedTwiceAndEndsAtTheLastResortHook();

    // Adding
    void emptyEntryBoxKeepsAddDisabledAndTypingEnablesIt();
    void addSendsTheTextAndTickToTheCollectionAndTheItemArrivesThroughItemAdded();
    void textTheFormatterRewritesIsNotAddedUntilAddIsPressedAgain();
    void realReformatMessageIsAnsweredByTheUser();
    void addWithoutACollectionReportsObjectNotSet();
    void addFailureReportsPlainAndKeepsTheEntry();
    void reformatFailureReportsPlain();
    void cancelClearsTheEntryUnticksAndFocusesTheEntryBox();

    // Saving and moving
    void saveShowsTheHourglassAroundSaveOrder();
    void savingTheOrderDisablesSaveChanges();
    void saveFailureReportsPlainAndRestoresThePointer();
    void movedParagraphStaysSelectedAndSaveIsEnabled();
    void moveUpFromTheMenuMovesTheParagraph();
    void moveDownFromTheMenuMovesTheParagraph();
    void moveWithoutAllowSaveLeavesSaveDisabled();
    void movePastTheEndIsLeftToTheCollection();
    void moveWithNoItemSelectedFailsWithObjectNotSet();
    void moveFailureIsLoggedByTheOperationAndTheHandlerAndShownOnce();
    void moveWhoseRebuildFailsIsReportedByBothHandlers();

    // Menu, editing, deleting, ticking
    void rightClickOpensTheMenuAtThePointer();
    void withoutAllowUpdateTheMenuOpensWithEditAndDeleteGreyed();
    void otherButtonsOpenNoMenu();
    void editFromTheMenuShowsTheParagraphAndOkWritesIt();
    void doubleClickEditsTheSelectedParagraph();
    void enterInTheListEditsTheSelectedParagraph();
    void otherKeysInTheListDoNothing();
    void withNoItemSelectedEditDeleteDoubleClickAndEnterDoNothing();
    void withoutAllowUpdateDoubleClickEnterAndDeleteDoNothing();
    void itemIsRefreshedFromTheObjectAfterCancelToo();
    void editTracesShowEditFormEntryOnlyAndRebuildsTheTips();
    void failureHandingTheObjectToTheDialogIsLoggedThreeTimesAndShownOnce();
    void editLookupFailureReportsPlain();
    void deleteRemovesTheParagraphThroughItemDeletedAndRebuildsTheTips();
    void deletingTheLastParagraphLeavesAnEmptyList();
    void deleteFailureShowsTheTextDeleteReport();
    void tickingAnItemWritesSelected();
    void tickFailureReportsPlain();
    void checksSetFromCodeNeverWriteSelected();

    // Collection events
    void changedEnablesSaveExactlyWhenDirtyIfAllowed();
    void changedDisablesSaveWhenSavingIsNotAllowed();
    void changedFailureReportsPlain();
    void itemAddedElsewhereAppendsTheItemWithTagCheckAndTip();
    void itemAddedFailureReportsPlain();
    void itemDeletedRemovesOnlyThatItemAndLeavesTheTips();
    void itemDeletedForAnItemNotInTheListReportsElementNotFound();
    void itemInsertedGoesToItsPlaceSelectedAndWithoutATag();
    void itemInsertedRebuildsEveryToolTip();
    void insertedItemsEmptyTagReachesTheCollectionAndItsErrorIsReported();
    void itemInsertedFailureIsLoggedByUpdateToolTipTextAndTheHandler();
    void itemMovedRebuildsTheListAndEnablesSaveWhenAllowed();
    void orderSavedDisablesSave();
    void itemMovedAloneEnablesSaveWhenAllowed();
    void destroyedControlLetsGoOfTheCollection();
};

void tst_ctlTextSelect::cleanup()
{
    QToolTip::hideText();
    if (QApplication::overrideCursor())
        QApplication::restoreOverrideCursor();
}

// --- Registration and design

void tst_ctlTextSelect::isCreatedByItsIdentifier()
{
    ZebTest::Harness h;
    std::unique_ptr<UserControl> control(
        ControlRegistry::instance().create(QStringLiteral("ZebSubmittalControls.ctlTextSelect")));
    QVERIFY(qobject_cast<ctlTextSelect*>(control.get()));
    QCOMPARE(control->Name(), QStringLiteral("ctlTextSelect"));
}

void tst_ctlTextSelect::childWidgetsCarryTheirNamesCaptionsAndDesignPlaces()
{
    Fixture f(false);
    QCOMPARE(f.entry()->geometry(), QRect(5, 5, 305, 80));
    QCOMPARE(f.tick()->text(), QStringLiteral("Selected"));
    QCOMPARE(f.tick()->geometry(), QRect(325, 5, 65, 15));
    QCOMPARE(f.button("cmdAdd")->text(), QStringLiteral("&Add"));
    QCOMPARE(f.button("cmdAdd")->geometry(), QRect(325, 25, 70, 25));
    QCOMPARE(f.button("cmdCancel")->text(), QStringLiteral("&Cancel"));
    QCOMPARE(f.button("cmdCancel")->geometry(), QRect(325, 60, 70, 25));
    QCOMPARE(f.line()->X1(), 5);
    QCOMPARE(f.line()->X2(), 405);
    QCOMPARE(f.line()->Y1(), 90);
    QCOMPARE(f.line()->Y2(), 90);
    QCOMPARE(f.list()->geometry(), QRect(5, 95, 400, 215));
    QCOMPARE(f.button("cmdMoveUp")->text(), QStringLiteral("Move &Up"));
    QCOMPARE(f.button("cmdMoveUp")->geometry(), QRect(150, 322, 80, 25));
    QCOMPARE(f.button("cmdMoveDown")->text(), QStringLiteral("Move &Down"));
    QCOMPARE(f.button("cmdMoveDown")->geometry(), QRect(230, 322, 80, 25));
    QCOMPARE(f.button("cmdSave")->text(), QStringLiteral("Save Changes"));
    QCOMPARE(f.button("cmdSave")->geometry(), QRect(325, 322, 80, 25));
    QCOMPARE(f.ctl->size(), QSize(410, 352));
}

void tst_ctlTextSelect::listIsAReportWithCheckBoxesAndOneTextColumn()
{
    Fixture f;
    QVERIFY(f.list()->checkBoxes());
    QCOMPARE(f.list()->columnCount(), 1);
    QCOMPARE(f.list()->columnHeading(0), QStringLiteral("Text"));
    QCOMPARE(f.list()->model()->headerData(0, Qt::Horizontal).toString(), QStringLiteral("Text"));
    QVERIFY(!f.list()->header()->isHidden());
    QVERIFY(f.list()->uniformRowHeights());
}

void tst_ctlTextSelect::entryBoxIsMultiLineWithAVerticalScrollBar()
{
    Fixture f;
    QCOMPARE(f.entry()->verticalScrollBarPolicy(), Qt::ScrollBarAlwaysOn);
    f.ctl->setAllowUpdate(true);
    QTest::keyClicks(f.entry(), QStringLiteral("one"));
    QTest::keyClick(f.entry(), Qt::Key_Return);
    QTest::keyClicks(f.entry(), QStringLiteral("two"));
    QCOMPARE(f.entry()->text(), QStringLiteral("one\r\ntwo"));
}

void tst_ctlTextSelect::popUpMenuHasItsEntriesSeparatorsAndAccessKeysInOrder()
{
    Fixture f;
    const QList<QAction*> entries = f.menu()->actions();
    QStringList names;
    QStringList captions;
    QList<bool> separators;
    for (QAction* a : entries) {
        names << a->objectName();
        captions << a->text();
        separators << a->isSeparator();
    }
    QCOMPARE(names, (QStringList{"mnu_Edit", "mnu_Sep1", "mnu_MoveUp", "mnu_MoveDown", "mnu_Sep2",
                                 "mnu_Delete"}));
    QCOMPARE(captions, (QStringList{"&Edit", "", "Move &Up", "Move Dow&n", "", "&Delete"}));
    QCOMPARE(separators, (QList<bool>{false, true, false, false, true, false}));
    QVERIFY(!f.menu()->isVisible());
}

void tst_ctlTextSelect::freshControlStartsWithoutEntryAreaEditingReorderingOrSave()
{
    Fixture f;
    for (const char* name : {"txtNewComment", "chkIsSelected", "cmdAdd", "cmdCancel", "Line1"})
        QVERIFY2(f.ctl->findChild<QWidget*>(QLatin1String(name))->isHidden(), name);
    QVERIFY(!f.action("mnu_Edit")->isEnabled());
    QVERIFY(!f.action("mnu_Delete")->isEnabled());
    QVERIFY(!f.action("mnu_MoveUp")->isEnabled());
    QVERIFY(!f.action("mnu_MoveDown")->isEnabled());
    QVERIFY(!f.button("cmdMoveUp")->isEnabled());
    QVERIFY(!f.button("cmdMoveDown")->isEnabled());
    QVERIFY(!f.button("cmdSave")->isEnabled());
    QVERIFY(!f.button("cmdAdd")->isEnabled());
    QCOMPARE(f.list()->y(), 5);
}

// --- Properties and persistence

void tst_ctlTextSelect::freshControlReadsFalseFalseZeroZeroFalse()
{
    Fixture f;
    QCOMPARE(f.ctl->AllowUpdate(), false);
    QCOMPARE(f.ctl->AllowReorder(), false);
    QCOMPARE(f.ctl->MaxLength(), qint16(0));
    QCOMPARE(f.ctl->TextObjectType(), qint32(0));
    QCOMPARE(f.ctl->AllowSave(), false);
    QVERIFY(!f.ctl->TextObjects());
}

void tst_ctlTextSelect::propertiesAreReachableByName()
{
    Fixture f;
    f.paragraphs({{"a", "Alpha", false}});
    QVERIFY(f.ctl->setProperty("AllowUpdate", true));
    QVERIFY(f.ctl->setProperty("AllowReorder", true));
    QVERIFY(f.ctl->setProperty("AllowSave", true));
    QVERIFY(f.ctl->setProperty("MaxLength", QVariant::fromValue(qint16(12))));
    QVERIFY(f.ctl->setProperty("TextObjectType", 4));
    QVERIFY(f.ctl->setProperty(
        "TextObjects", QVariant::fromValue(std::shared_ptr<ZebObjects::TextObjects>(f.coll))));
    QCOMPARE(f.ctl->property("AllowUpdate").toBool(), true);
    QCOMPARE(f.ctl->property("AllowReorder").toBool(), true);
    QCOMPARE(f.ctl->property("AllowSave").toBool(), true);
    QCOMPARE(f.ctl->property("MaxLength").toInt(), 12);
    QCOMPARE(f.ctl->property("TextObjectType").toInt(), 4);
    QCOMPARE(f.ctl->property("TextObjects").value<std::shared_ptr<ZebObjects::TextObjects>>(),
             std::shared_ptr<ZebObjects::TextObjects>(f.coll));
    QCOMPARE(f.list()->count(), 1);
}

void tst_ctlTextSelect::gettersAndSettersTraceEntryAndExit()
{
    Fixture f;
    const auto traced = [&](const QString& label, const std::function<void()>& call) {
        f.h.log().clear();
        call();
        return f.h.log().lines() == QStringList{trace(label, kEnter), trace(label, kExit)};
    };
    QVERIFY(traced("TextObjectType()", [&] { f.ctl->setTextObjectType(2); }));
    QVERIFY(traced("TextObjectType()", [&] { f.ctl->TextObjectType(); }));
    QVERIFY(traced("MaxLength()", [&] { f.ctl->setMaxLength(9); }));
    QVERIFY(traced("MaxLength()", [&] { f.ctl->MaxLength(); }));
    QVERIFY(traced("AllowUpdate()", [&] { f.ctl->AllowUpdate(); }));
    QVERIFY(traced("AllowReorder()", [&] { f.ctl->setAllowReorder(true); }));
    QVERIFY(traced("AllowReorder()", [&] { f.ctl->AllowReorder(); }));
    QVERIFY(traced("AllowSave()", [&] { f.ctl->setAllowSave(true); }));
    QVERIFY(traced("AllowSave()", [&] { f.ctl->AllowSave(); }));
    QVERIFY(traced("TextObjects()", [&] { f.ctl->TextObjects(); }));
    f.h.log().clear();
    f.ctl->setAllowUpdate(true);
    QCOMPARE(f.h.log().lines(),
             (QStringList{trace("AllowUpdate()", kEnter), trace("HandleResize()", kEnter),
                          trace("HandleResize()", kExit), trace("AllowUpdate()", kExit)}));
    f.h.log().clear();
    f.ctl->setTextObjects(nullptr);
    QCOMPARE(f.h.log().lines(),
             (QStringList{trace("TextObjects()", kEnter), trace("Populate()", kEnter),
                          trace("Populate()", kExit), trace("TextObjects()", kExit)}));
}

void tst_ctlTextSelect::settersMarkTheirPropertyButAllowSaveMarksNothing()
{
    Fixture f;
    f.ctl->clearPropertyChanged();
    f.ctl->setAllowSave(true);
    QCOMPARE(f.ctl->changedProperties(), QStringList());
    f.ctl->setAllowUpdate(true);
    f.ctl->setAllowReorder(true);
    f.ctl->setMaxLength(10);
    f.ctl->setTextObjectType(3);
    f.ctl->setTextObjects(f.coll);
    QCOMPARE(f.ctl->changedProperties(), (QStringList{"AllowReorder", "AllowUpdate", "MaxLength",
                                                      "TextObjectType", "TextObjects"}));
    f.ctl->clearPropertyChanged();
    f.ctl->setAllowSave(false);
    QVERIFY(!f.ctl->isPropertyChanged(QStringLiteral("AllowSave")));
}

void tst_ctlTextSelect::allowUpdateShowsTheEntryAreaAndEnablesEditAndDelete()
{
    Fixture f;
    f.ctl->setAllowUpdate(true);
    for (const char* name : {"txtNewComment", "chkIsSelected", "cmdAdd", "cmdCancel", "Line1"})
        QVERIFY2(f.ctl->findChild<QWidget*>(QLatin1String(name))->isVisible(), name);
    QVERIFY(f.action("mnu_Edit")->isEnabled());
    QVERIFY(f.action("mnu_Delete")->isEnabled());
    QCOMPARE(f.list()->y(), 95);
    QCOMPARE(f.list()->height(), 352 - 140);
    // Reordering is another property's business.
    QVERIFY(!f.action("mnu_MoveUp")->isEnabled());
}

void tst_ctlTextSelect::allowUpdateFalseHidesTheEntryAreaGreysEditAndDeleteAndStartsTheListAt5()
{
    Fixture f;
    f.ctl->setAllowUpdate(true);
    f.ctl->setAllowUpdate(false);
    for (const char* name : {"txtNewComment", "chkIsSelected", "cmdAdd", "cmdCancel", "Line1"})
        QVERIFY2(!f.ctl->findChild<QWidget*>(QLatin1String(name))->isVisible(), name);
    QVERIFY(!f.action("mnu_Edit")->isEnabled());
    QVERIFY(!f.action("mnu_Delete")->isEnabled());
    QCOMPARE(f.list()->y(), 5);
    QCOMPARE(f.list()->height(), 352 - 50);
}

void tst_ctlTextSelect::allowReorderEnablesMoveButtonsAndMenuEntries()
{
    Fixture f;
    f.ctl->setAllowReorder(true);
    QVERIFY(f.button("cmdMoveUp")->isEnabled());
    QVERIFY(f.button("cmdMoveDown")->isEnabled());
    QVERIFY(f.action("mnu_MoveUp")->isEnabled());
    QVERIFY(f.action("mnu_MoveDown")->isEnabled());
    QVERIFY(!f.action("mnu_Edit")->isEnabled());
    f.ctl->setAllowReorder(false);
    QVERIFY(!f.button("cmdMoveUp")->isEnabled());
    QVERIFY(!f.button("cmdMoveDown")->isEnabled());
    QVERIFY(!f.action("mnu_MoveUp")->isEnabled());
    QVERIFY(!f.action("mnu_MoveDown")->isEnabled());
}

void tst_ctlTextSelect::allowSaveChangesNoWidget()
{
    Fixture f;
    QList<bool> before;
    for (auto* w : f.ctl->findChildren<QWidget*>())
        before << w->isEnabled() << w->isVisible();
    f.ctl->setAllowSave(true);
    QList<bool> after;
    for (auto* w : f.ctl->findChildren<QWidget*>())
        after << w->isEnabled() << w->isVisible();
    QCOMPARE(after, before);
    QVERIFY(!f.button("cmdSave")->isEnabled());
    QVERIFY(f.ctl->AllowSave());
}

void tst_ctlTextSelect::maxLengthIsTheEntryBoxsLimit()
{
    Fixture f;
    f.ctl->setAllowUpdate(true);
    f.ctl->setMaxLength(5);
    QCOMPARE(f.entry()->maxLength(), 5);
    QCOMPARE(f.ctl->MaxLength(), qint16(5));
    QTest::keyClicks(f.entry(), QStringLiteral("paragraph"));
    QCOMPARE(f.entry()->text(), QStringLiteral("parag"));
    // The getter reads the box itself.
    f.entry()->setMaxLength(77);
    QCOMPARE(f.ctl->MaxLength(), qint16(77));
    f.ctl->setMaxLength(0);
    QTest::keyClicks(f.entry(), QStringLiteral("raph"));
    QCOMPARE(f.entry()->text(), QStringLiteral("paragraph"));
}

void tst_ctlTextSelect::textObjectTypeIsHandedToEachCollectionBoundLater()
{
    Fixture f;
    f.ctl->setTextObjects(f.coll);
    f.ctl->setTextObjectType(7);
    QCOMPARE(f.coll->TextObjectType(), 0);
    auto other = std::make_shared<StandaloneTextObjects>();
    f.ctl->setTextObjects(other);
    QCOMPARE(other->TextObjectType(), 7);
    QCOMPARE(f.ctl->TextObjectType(), 7);
}

void tst_ctlTextSelect::propertiesWrittenAndReadBackKeepAllFiveValues()
{
    Fixture f;
    f.ctl->setAllowUpdate(true);
    f.ctl->setAllowReorder(true);
    f.ctl->setMaxLength(300);
    f.ctl->setTextObjectType(3);
    f.ctl->setAllowSave(true);
    PropertyBag bag;
    f.ctl->UserControl_WriteProperties(bag);
    QCOMPARE(bag.keys(), (QStringList{"AllowUpdate", "AllowReorder", "MaxLength", "TextObjectType",
                                      "AllowSave"}));
    QCOMPARE(bag.ReadProperty(QStringLiteral("MaxLength"), qint32(0)).typeId(),
             int(QMetaType::Int));
    QCOMPARE(bag.ReadProperty(QStringLiteral("MaxLength"), qint32(0)).toInt(), 300);

    const PropertyBag saved = PropertyBag::fromJson(bag.toJson());
    ctlTextSelect restored;
    restored.UserControl_ReadProperties(saved);
    QCOMPARE(restored.AllowUpdate(), true);
    QCOMPARE(restored.AllowReorder(), true);
    QCOMPARE(restored.MaxLength(), qint16(300));
    QCOMPARE(restored.TextObjectType(), qint32(3));
    QCOMPARE(restored.AllowSave(), true);
    QVERIFY(f.h.boxes().shown().isEmpty());
}

void tst_ctlTextSelect::freshControlWritesNothingButDefaults()
{
    Fixture f;
    PropertyBag bag;
    f.ctl->UserControl_WriteProperties(bag);
    QVERIFY(bag.isEmpty());
}

void tst_ctlTextSelect::writingReadsEveryPropertyThroughItsGetterInKeyOrder()
{
    Fixture f;
    PropertyBag bag;
    f.ctl->UserControl_WriteProperties(bag);
    QStringList expected;
    for (const char* p :
         {"AllowUpdate()", "AllowReorder()", "MaxLength()", "TextObjectType()", "AllowSave()"})
        expected << trace(QLatin1String(p), kEnter) << trace(QLatin1String(p), kExit);
    QCOMPARE(f.h.log().lines(), expected);
}

void tst_ctlTextSelect::restoringAppliesEveryKeyThroughItsSetterAndRunsTheLayout()
{
    Fixture f;
    PropertyBag bag;
    bag.WriteProperty(QStringLiteral("AllowUpdate"), true, false);
    bag.WriteProperty(QStringLiteral("AllowReorder"), true, false);
    f.ctl->UserControl_ReadProperties(bag);
    QStringList expected{trace("AllowUpdate()", kEnter), trace("HandleResize()", kEnter),
                         trace("HandleResize()", kExit), trace("AllowUpdate()", kExit)};
    for (const char* p : {"AllowReorder()", "MaxLength()", "TextObjectType()", "AllowSave()"})
        expected << trace(QLatin1String(p), kEnter) << trace(QLatin1String(p), kExit);
    QCOMPARE(f.h.log().lines(), expected);
    // The setters' effects ran: the entry area shows, the list moved down, Move Up is enabled.
    QVERIFY(f.entry()->isVisible());
    QCOMPARE(f.list()->y(), 95);
    QVERIFY(f.button("cmdMoveUp")->isEnabled());
}

void tst_ctlTextSelect::bagMissingAKeyRestoresThatPropertyToItsDefault()
{
    Fixture f;
    f.ctl->setAllowReorder(true);
    f.ctl->setMaxLength(40);
    PropertyBag bag;
    bag.WriteProperty(QStringLiteral("AllowUpdate"), true, false);
    bag.WriteProperty(QStringLiteral("TextObjectType"), qint32(6), qint32(0));
    f.ctl->UserControl_ReadProperties(bag);
    QCOMPARE(f.ctl->AllowUpdate(), true);
    QCOMPARE(f.ctl->AllowReorder(), false);
    QCOMPARE(f.ctl->MaxLength(), qint16(0));
    QCOMPARE(f.ctl->TextObjectType(), qint32(6));
    QCOMPARE(f.ctl->AllowSave(), false);
}

void tst_ctlTextSelect::maxLengthBeyondSixteenBitsReportsOverflowAndLeavesLaterKeys()
{
    Fixture f;
    PropertyBag bag;
    bag.WriteProperty(QStringLiteral("AllowUpdate"), true, false);
    bag.WriteProperty(QStringLiteral("MaxLength"), qint32(40000), qint32(0));
    bag.WriteProperty(QStringLiteral("TextObjectType"), qint32(5), qint32(0));
    bag.WriteProperty(QStringLiteral("AllowSave"), true, false);
    f.ctl->UserControl_ReadProperties(bag);
    const ErrorInfo overflow = error(6, QStringLiteral("ZebSubCtl"), QStringLiteral("Overflow"));
    QCOMPARE(f.h.boxes().shown(), QList<Shown>{plainBox(overflow)});
    QCOMPARE(f.h.log().failureLines(),
             QStringList{logError("UserControl_ReadProperties()", overflow)});
    QCOMPARE(f.ctl->AllowUpdate(), true);
    QCOMPARE(f.ctl->MaxLength(), qint16(0));
    QCOMPARE(f.ctl->TextObjectType(), qint32(0));
    QCOMPARE(f.ctl->AllowSave(), false);
}

void tst_ctlTextSelect::failingGetterWhileSavingIsLoggedTwiceAndReportedPlain()
{
    Fixture f;
    f.ctl->setAllowUpdate(true);
    f.ctl->setAllowReorder(true);
    f.h.log().clear();
    PropertyBag bag;
    // The entry trace of AllowUpdate() fails.
    f.h.log().faults().failNext(QStringLiteral("Trace"), kLogDown);
    f.ctl->UserControl_WriteProperties(bag);
    QCOMPARE(f.h.log().lines(), (QStringList{logError("AllowUpdate", kLogDown),
                                             logError("UserControl_WriteProperties()", kLogDown)}));
    QCOMPARE(f.h.boxes().shown(), QList<Shown>{plainBox(kLogDown)});
    // Keys not reached stay unwritten.
    QVERIFY(bag.isEmpty());
}

void tst_ctlTextSelect::failingPropertyProcedurePassesTheFailureToTheHost()
{
    Fixture f;
    f.h.log().faults().failNext(QStringLiteral("Trace"), kLogDown);
    QCOMPARE(failureIfAny([&] { f.ctl->setAllowReorder(true); }), std::optional(kLogDown));
    QCOMPARE(f.h.log().lines(), QStringList{logError("AllowReorder", kLogDown)});
    QVERIFY(!f.button("cmdMoveUp")->isEnabled());
    QVERIFY(f.h.boxes().shown().isEmpty());
    f.h.log().clear();
    f.h.log().faults().failNext(QStringLiteral("Trace"), kLogDown);
    QCOMPARE(failureIfAny([&] { f.ctl->TextObjects(); }), std::optional(kLogDown));
    QCOMPARE(f.h.log().lines(), QStringList{logError("TextObjects", kLogDown)});
}

void tst_ctlTextSelect::layoutFailureWhileSettingAllowUpdateIsLoggedTwiceAndPassedToTheHost()
{
    Fixture f;
    // The second trace is the entry of HandleResize().
    ZebObjects::Runtime::setDiagnosticLog(
        std::make_shared<FailingTraceLog>(f.h.logPtr(), 2, kLogDown));
    QCOMPARE(failureIfAny([&] { f.ctl->setAllowUpdate(true); }), std::optional(kLogDown));
    QCOMPARE(f.h.log().lines(),
             (QStringList{trace("AllowUpdate()", kEnter), logError("HandleResize", kLogDown),
                          logError("AllowUpdate", kLogDown)}));
    QVERIFY(f.h.boxes().shown().isEmpty());
    // What the setter did before the layout stays done.
    QVERIFY(f.ctl->AllowUpdate());
    QVERIFY(f.entry()->isVisible());
    QCOMPARE(f.list()->y(), 5);
}

void tst_ctlTextSelect::tipRebuildFailureAfterDeleteShowsTheTextDeleteReport()
{
    Fixture f;
    f.allowAll();
    f.bind({{"a", "Alpha", false}, {"b", "Bravo", false}});
    // The second trace is the entry of UpdateToolTipText(), after the paragraph has gone.
    ZebObjects::Runtime::setDiagnosticLog(
        std::make_shared<FailingTraceLog>(f.h.logPtr(), 2, kLogDown));
    f.chooseFromMenu(0, Qt::Key_D);
    QCOMPARE(f.h.log().lines(), (QStringList{trace("mnu_Delete_Click()", kEnter),
                                             logError("UpdateToolTipText", kLogDown),
                                             logError("mnu_Delete_Click", kLogDown)}));
    QCOMPARE(f.h.boxes().shown(),
             (QList<Shown>{Shown{QStringLiteral("The requested operation cannot be completed.  "
                                                "Permission denied"),
                                 48, QStringLiteral("Error: 70 - Permission denied")}}));
    QCOMPARE(f.texts(), QStringList{"Bravo"});
}

// --- Binding and population

void tst_ctlTextSelect::bindingFillsTheListInCollectionOrder()
{
    Fixture f;
    f.bind({{"a", "Alpha", false}, {"b", "Bravo", true}, {"c", "Charlie", false}});
    QCOMPARE(f.keys(), (QStringList{"TEXTOBJECTa", "TEXTOBJECTb", "TEXTOBJECTc"}));
    QCOMPARE(f.tags(), (QStringList{"a", "b", "c"}));
    QCOMPARE(f.texts(), (QStringList{"Alpha", "Bravo", "Charlie"}));
    QCOMPARE(f.checks(), (QList<bool>{false, true, false}));
    QCOMPARE(f.ctl->TextObjects(), std::shared_ptr<ZebObjects::TextObjects>(f.coll));
    QCOMPARE(f.list()->selectedRow(), -1);
}

void tst_ctlTextSelect::lineBreaksShowAsTwoBlanksWhileTheToolTipKeepsThem()
{
    Fixture f;
    f.bind({{"a", "First line\r\nsecond line\r\n\r\nlast", false}});
    QCOMPARE(f.list()->text(0), QStringLiteral("First line  second line    last"));
    QCOMPARE(f.tips()->toolText(f.viewport(), 0),
             QStringLiteral("First line\r\nsecond line\r\n\r\nlast"));
}

void tst_ctlTextSelect::bindingAnEmptyCollectionLeavesTheListEmpty()
{
    Fixture f;
    f.bind({{"a", "Alpha", false}, {"b", "Bravo", false}});
    f.ctl->setTextObjects(std::make_shared<StandaloneTextObjects>());
    QCOMPARE(f.list()->count(), 0);
    QCOMPARE(f.tips()->toolCount(f.viewport()), 0);
}

void tst_ctlTextSelect::bindingNothingClearsTheListAndLeavesTheToolTipsUntouched()
{
    Fixture f;
    f.bind({{"a", "Alpha", false}, {"b", "Bravo", true}});
    const QRect first = f.tips()->toolRect(f.viewport(), 0);
    f.ctl->setTextObjects(nullptr);
    QCOMPARE(f.list()->count(), 0);
    QVERIFY(!f.ctl->TextObjects());
    QCOMPARE(f.toolTexts(), (QStringList{"Alpha", "Bravo"}));
    QCOMPARE(f.tips()->toolRect(f.viewport(), 0), first);
}

void tst_ctlTextSelect::bindingTracesTheSetterAndPopulate()
{
    Fixture f;
    f.paragraphs({{"a", "Alpha", false}});
    f.ctl->setTextObjects(f.coll);
    QCOMPARE(f.h.log().lines(),
             (QStringList{trace("TextObjects()", kEnter), trace("Populate()", kEnter),
                          trace("Populate()", kExit), trace("TextObjects()", kExit)}));
}

void tst_ctlTextSelect::rebindingDropsTheOldCollectionsEvents()
{
    Fixture f;
    f.bind({{"a", "Alpha", false}});
    auto other = std::make_shared<StandaloneTextObjects>();
    other->addWithKey(QStringLiteral("x"), QStringLiteral("X-ray"), true);
    f.ctl->setTextObjects(other);
    f.coll->Add(QStringLiteral("Old collection"), false);
    f.coll->Remove(QStringLiteral("a"));
    QCOMPARE(f.texts(), QStringList{"X-ray"});
    other->Add(QStringLiteral("Yankee"), false);
    QCOMPARE(f.texts(), (QStringList{"X-ray", "Yankee"}));
    QVERIFY(f.h.boxes().shown().isEmpty());
}

void tst_ctlTextSelect::populateIsPublicAndRereadsTheCollection()
{
    Fixture f;
    f.bind({{"a", "Alpha", false}, {"b", "Bravo", false}});
    f.coll->object(QStringLiteral("b"))->setText(QStringLiteral("Bravo\r\nchanged"));
    f.coll->object(QStringLiteral("a"))->setSelected(true);
    QVERIFY(QMetaObject::invokeMethod(f.ctl.get(), "Populate"));
    QCOMPARE(f.texts(), (QStringList{"Alpha", "Bravo  changed"}));
    QCOMPARE(f.checks(), (QList<bool>{true, false}));
    QCOMPARE(f.toolTexts(), (QStringList{"Alpha", "Bravo\r\nchanged"}));
    QCOMPARE(f.h.log().lines(),
             (QStringList{trace("Populate()", kEnter), trace("Populate()", kExit)}));
}

void tst_ctlTextSelect::populateFailureIsLoggedTwiceAndPassedToTheHost()
{
    Fixture f;
    f.paragraphs({{"a", "Alpha", false}});
    f.coll->faults().failNext(QStringLiteral("Enumerate"), kStoreDown);
    QCOMPARE(failureIfAny([&] { f.ctl->setTextObjects(f.coll); }), std::optional(kStoreDown));
    QCOMPARE(f.h.log().lines(),
             (QStringList{trace("TextObjects()", kEnter), trace("Populate()", kEnter),
                          logError("Populate", kStoreDown), logError("TextObjects", kStoreDown)}));
    QVERIFY(f.h.boxes().shown().isEmpty());
    QCOMPARE(f.list()->count(), 0);
    // The collection is kept all the same.
    QCOMPARE(f.ctl->TextObjects(), std::shared_ptr<ZebObjects::TextObjects>(f.coll));
}

void tst_ctlTextSelect::failureReadingAParagraphKeepsTheItemsAddedBefore()
{
    Fixture f;
    f.paragraphs({{"a", "Alpha", true},
                  {"b", "Bravo", false},
                  {"c", "Charlie", true},
                  {"d", "Delta", false}});
    f.coll->object(QStringLiteral("c"))->faults().failNext(QStringLiteral("Selected"), kStoreDown);
    QCOMPARE(failureIfAny([&] { f.ctl->setTextObjects(f.coll); }), std::optional(kStoreDown));
    QCOMPARE(f.keys(), (QStringList{"TEXTOBJECTa", "TEXTOBJECTb", "TEXTOBJECTc"}));
    QCOMPARE(f.tags(), (QStringList{"a", "b", ""}));
    QCOMPARE(f.checks(), (QList<bool>{true, false, false}));
    QCOMPARE(f.tips()->toolCount(f.viewport()), 0);
}

void tst_ctlTextSelect::failingTypeWriteLeavesTheListAsItWas()
{
    Fixture f;
    f.bind({{"a", "Alpha", false}});
    auto other = std::make_shared<StandaloneTextObjects>();
    other->addWithKey(QStringLiteral("x"), QStringLiteral("X-ray"), true);
    other->faults().failNext(QStringLiteral("TextObjectType="), kStoreDown);
    QCOMPARE(failureIfAny([&] { f.ctl->setTextObjects(other); }), std::optional(kStoreDown));
    QCOMPARE(f.h.log().lines(),
             (QStringList{trace("TextObjects()", kEnter), logError("TextObjects", kStoreDown)}));
    QCOMPARE(f.texts(), QStringList{"Alpha"});
    // The new collection is held and its events are followed.
    QCOMPARE(f.ctl->TextObjects(), std::shared_ptr<ZebObjects::TextObjects>(other));
    other->Add(QStringLiteral("Yankee"), false);
    QCOMPARE(f.texts(), (QStringList{"Alpha", "Yankee"}));
}

// --- Tool tips

void tst_ctlTextSelect::toolTipObjectIsSetUpWithDelayDisplayTimeAndActive()
{
    Fixture f;
    QVERIFY(f.tips());
    QCOMPARE(f.tips()->delay(), 750);
    QCOMPARE(f.tips()->displayTime(), 2147483647);
    QVERIFY(f.tips()->isActive());
}

void tst_ctlTextSelect::everyItemHasAToolOverItsRectangleWithItsFullText()
{
    Fixture f;
    f.bind({{"a", "Alpha", false}, {"b", "Bravo\r\ntwo lines", true}, {"c", "Charlie", false}});
    QCOMPARE(f.tips()->toolCount(f.viewport()), 3);
    for (int i = 0; i < 3; ++i)
        QCOMPARE(f.tips()->toolRect(f.viewport(), i), f.list()->itemRect(i));
    QCOMPARE(f.toolTexts(), (QStringList{"Alpha", "Bravo\r\ntwo lines", "Charlie"}));
    QVERIFY(f.list()->itemRect(1).top() > f.list()->itemRect(0).top());
}

void tst_ctlTextSelect::rebindingReplacesToolsAndDropsThosePastTheLastItem()
{
    Fixture f;
    f.bind({{"a", "Alpha", false}, {"b", "Bravo", false}, {"c", "Charlie", false}});
    auto other = std::make_shared<StandaloneTextObjects>();
    other->addWithKey(QStringLiteral("x"), QStringLiteral("X-ray"), true);
    f.ctl->setTextObjects(other);
    QCOMPARE(f.toolTexts(), QStringList{"X-ray"});
    QVERIFY(!f.tips()->hasTool(f.viewport(), 1));
}

void tst_ctlTextSelect::mouseMoveOverTheListRefreshesEveryToolsRectangle()
{
    Fixture f;
    for (int i = 0; i < 60; ++i)
        f.coll->Add(QStringLiteral("Paragraph %1").arg(i), false);
    f.ctl->setTextObjects(f.coll);
    QCoreApplication::processEvents();
    const QRect before = f.tips()->toolRect(f.viewport(), 20);
    f.list()->verticalScrollBar()->setValue(10);
    // Scrolling alone does not move the tools ...
    QCOMPARE(f.tips()->toolRect(f.viewport(), 20), before);
    QTest::mouseMove(f.viewport(), QPoint(50, 30));
    // ... the next move of the pointer does, for every item.
    for (int i = 0; i < 60; ++i)
        QCOMPARE(f.tips()->toolRect(f.viewport(), i), f.list()->itemRect(i));
    QVERIFY(f.tips()->toolRect(f.viewport(), 20) != before);
    QVERIFY(f.h.log().failureLines().isEmpty());
}

void tst_ctlTextSelect::pointerRestingOverAnItemShowsItsFullText()
{
    Fixture f;
    f.bind({{"a", "Alpha", false}, {"b", "Bravo line one\r\nBravo line two", true}});
    QTest::mouseMove(f.viewport(), f.textPoint(1));
    QVERIFY(!QToolTip::isVisible());
    QTRY_VERIFY(QToolTip::isVisible());
    QCOMPARE(QToolTip::text(), QStringLiteral("Bravo line one\r\nBravo line two"));
}

// --- Layout

void tst_ctlTextSelect::layoutWithAllowUpdatePlacesEveryWidget()
{
    Fixture f;
    f.ctl->setAllowUpdate(true);
    f.ctl->resize(500, 400);
    QCOMPARE(f.line()->X2(), 490);
    QCOMPARE(f.line()->X1(), 5);
    QCOMPARE(f.list()->geometry(), QRect(5, 95, 490, 260));
    QCOMPARE(f.entry()->geometry(), QRect(5, 5, 395, 80));
    QCOMPARE(f.button("cmdAdd")->pos(), QPoint(420, 25));
    QCOMPARE(f.button("cmdCancel")->pos(), QPoint(420, 60));
    QCOMPARE(f.tick()->pos(), QPoint(420, 5));
    QCOMPARE(f.button("cmdSave")->pos(), QPoint(415, 365));
    QCOMPARE(f.button("cmdMoveDown")->pos(), QPoint(320, 365));
    QCOMPARE(f.button("cmdMoveUp")->pos(), QPoint(240, 365));
    QCOMPARE(f.list()->columnWidth(0), 485);
}

void tst_ctlTextSelect::layoutWithoutAllowUpdateStartsTheListAt5()
{
    Fixture f;
    f.ctl->resize(500, 400);
    QCOMPARE(f.list()->geometry(), QRect(5, 5, 490, 350));
    QCOMPARE(f.button("cmdSave")->pos(), QPoint(415, 365));
    QCOMPARE(f.button("cmdMoveDown")->y(), 365);
    QCOMPARE(f.button("cmdMoveUp")->y(), 365);
}

void tst_ctlTextSelect::moveUpTouchesMoveDownWhichKeepsAGapOf15FromSave()
{
    Fixture f;
    f.ctl->resize(620, 300);
    const QRect up = f.button("cmdMoveUp")->geometry();
    const QRect down = f.button("cmdMoveDown")->geometry();
    const QRect save = f.button("cmdSave")->geometry();
    QCOMPARE(save.left() + save.width(), 620 - 5);
    QCOMPARE(save.left() - (down.left() + down.width()), 15);
    QCOMPARE(down.left() - (up.left() + up.width()), 0);
}

void tst_ctlTextSelect::controlNarrowerThan105KeepsTheEntryBoxsLastWidth()
{
    Fixture f;
    f.ctl->setAllowUpdate(true);
    f.ctl->resize(300, 352);
    QCOMPARE(f.entry()->width(), 195);
    f.ctl->resize(105, 352);
    QCOMPARE(f.entry()->width(), 195);
    QCOMPARE(f.button("cmdAdd")->x(), 5 + 195 + 20);
    // The list still follows: it only needs more than 10.
    QCOMPARE(f.list()->width(), 95);
    f.ctl->resize(106, 352);
    QCOMPARE(f.entry()->width(), 1);
}

void tst_ctlTextSelect::controlNarrowerThan10KeepsTheListsAndTheLinesWidth()
{
    Fixture f;
    f.ctl->setAllowUpdate(true);
    f.ctl->resize(200, 352);
    QCOMPARE(f.list()->width(), 190);
    QCOMPARE(f.line()->X2(), 190);
    QCOMPARE(f.list()->columnWidth(0), 185);
    f.ctl->resize(10, 352);
    QCOMPARE(f.list()->width(), 190);
    QCOMPARE(f.line()->X2(), 190);
    QCOMPARE(f.list()->columnWidth(0), 185);
    // Save Changes keeps its place too: 10 - (80 + 5) is not above 0.
    QCOMPARE(f.button("cmdSave")->x(), 200 - 85);
}

void tst_ctlTextSelect::controlTooLowKeepsTheListsLastHeight()
{
    Fixture f;
    f.ctl->setAllowUpdate(true);
    f.ctl->resize(410, 300);
    QCOMPARE(f.list()->height(), 160);
    f.ctl->resize(410, 140);
    QCOMPARE(f.list()->height(), 160);
    QCOMPARE(f.button("cmdSave")->y(), 95 + 160 + 10);
}

void tst_ctlTextSelect::resizeRunsHandleResize()
{
    Fixture f;
    f.ctl->resize(420, 360);
    QCOMPARE(f.h.log().lines(),
             (QStringList{trace("HandleResize()", kEnter), trace("HandleResize()", kExit)}));
}

void tst_ctlTextSelect::resizeFailureIsLoggedTwiceAndEndsAtTheLastResortHook()
{
    Fixture f;
    f.h.log().faults().failNext(QStringLiteral("Trace"), kLogDown);
    f.ctl->resize(430, 370);
    QCOMPARE(f.h.log().lines(), (QStringList{logError("HandleResize", kLogDown),
                                             logError("UserControl_Resize()", kLogDown)}));
    QCOMPARE(f.h.lastResort(), QList<ErrorInfo>{kLogDown});
    QVERIFY(f.h.boxes().shown().isEmpty());
    // The layout did not run.
    QCOMPARE(f.list()->width(), 400);
}

// --- Adding

void tst_ctlTextSelect::emptyEntryBoxKeepsAddDisabledAndTypingEnablesIt()
{
    Fixture f;
    f.ctl->setAllowUpdate(true);
    f.h.log().clear();
    QVERIFY(!f.button("cmdAdd")->isEnabled());
    QTest::keyClicks(f.entry(), QStringLiteral("x"));
    QVERIFY(f.button("cmdAdd")->isEnabled());
    QTest::keyClick(f.entry(), Qt::Key_Backspace);
    QVERIFY(!f.button("cmdAdd")->isEnabled());
    QVERIFY(f.h.log().lines().isEmpty());
}

void tst_ctlTextSelect::addSendsTheTextAndTickToTheCollectionAndTheItemArrivesThroughItemAdded()
{
    Fixture f;
    f.allowAll();
    f.bind({{"a", "Alpha", false}});
    QTest::keyClicks(f.entry(), QStringLiteral("New remark"));
    QTest::keyClick(f.entry(), Qt::Key_Return);
    QTest::keyClicks(f.entry(), QStringLiteral("second line"));
    QTest::mouseClick(f.tick(), Qt::LeftButton, {}, QPoint(6, f.tick()->height() / 2));
    QCOMPARE(f.tick()->value(), 1);
    QTest::mouseClick(f.button("cmdAdd"), Qt::LeftButton);

    QCOMPARE(f.coll->Count(), 2);
    const auto added = f.coll->Item(qint32(2));
    QCOMPARE(added->Text(), QStringLiteral("New remark\r\nsecond line"));
    QCOMPARE(added->Selected(), true);
    QCOMPARE(f.keys(), (QStringList{"TEXTOBJECTa", "TEXTOBJECT" + added->Key()}));
    QCOMPARE(f.tags(), (QStringList{"a", added->Key()}));
    QCOMPARE(f.texts(), (QStringList{"Alpha", "New remark  second line"}));
    QCOMPARE(f.checks(), (QList<bool>{false, true}));
    QCOMPARE(f.tips()->toolText(f.viewport(), 1), QStringLiteral("New remark\r\nsecond line"));
    QCOMPARE(f.tips()->toolRect(f.viewport(), 1), f.list()->itemRect(1));
    QCOMPARE(f.entry()->text(), QString());
    QCOMPARE(f.tick()->value(), 0);
    QVERIFY(!f.button("cmdAdd")->isEnabled());
    QVERIFY(f.h.boxes().shown().isEmpty());
    QVERIFY(f.h.log().lines().isEmpty());
}

void tst_ctlTextSelect::textTheFormatterRewritesIsNotAddedUntilAddIsPressedAgain()
{
    Fixture f;
    f.allowAll();
    f.bind({});
    typeText(f.entry(), QStringLiteral("It\u2019s \u201cbright\u201d"));
    QTest::mouseClick(f.button("cmdAdd"), Qt::LeftButton);
    QCOMPARE(f.h.boxes().shown(),
             (QList<Shown>{Shown{kAddReformatted, 64, QStringLiteral("Text Format")}}));
    QCOMPARE(f.coll->Count(), 0);
    QCOMPARE(f.list()->count(), 0);
    QCOMPARE(f.entry()->text(), QStringLiteral("It's \"bright\""));
    QTest::mouseClick(f.button("cmdAdd"), Qt::LeftButton);
    QCOMPARE(f.collTexts(), QStringList{"It's \"bright\""});
    QCOMPARE(f.texts(), QStringList{"It's \"bright\""});
    QCOMPARE(f.h.boxes().shown().size(), 1);
}

void tst_ctlTextSelect::realReformatMessageIsAnsweredByTheUser()
{
    Fixture f;
    MessageBoxes::setService(std::make_shared<QtMessageBoxService>());
    f.allowAll();
    f.bind({});
    typeText(f.entry(), QStringLiteral("5\u2013watt"));
    QString title;
    QString prompt;
    QMessageBox::Icon icon = QMessageBox::NoIcon;
    WhenModal<QMessageBox> user([&](QMessageBox& box) {
        title = box.windowTitle();
        prompt = box.text();
        icon = box.icon();
        QTest::mouseClick(box.button(QMessageBox::Ok), Qt::LeftButton);
    });
    QTest::mouseClick(f.button("cmdAdd"), Qt::LeftButton);
    QVERIFY(user.answered());
    QVERIFY(!user.leftOpen());
    QCOMPARE(title, QStringLiteral("Text Format"));
    QCOMPARE(prompt, kAddReformatted);
    QCOMPARE(icon, QMessageBox::Information);
    QCOMPARE(f.entry()->text(), QStringLiteral("5-watt"));
    QCOMPARE(f.coll->Count(), 0);
}

void tst_ctlTextSelect::addWithoutACollectionReportsObjectNotSet()
{
    Fixture f;
    f.ctl->setAllowUpdate(true);
    f.h.log().clear();
    QTest::keyClicks(f.entry(), QStringLiteral("Orphan"));
    QTest::mouseClick(f.button("cmdAdd"), Qt::LeftButton);
    QCOMPARE(f.h.boxes().shown(), QList<Shown>{plainBox(notSet())});
    QCOMPARE(f.h.log().lines(), QStringList{logError("cmdAdd_Click()", notSet())});
    QCOMPARE(f.entry()->text(), QStringLiteral("Orphan"));
}

void tst_ctlTextSelect::addFailureReportsPlainAndKeepsTheEntry()
{
    Fixture f;
    f.allowAll();
    f.bind({{"a", "Alpha", false}});
    QTest::keyClicks(f.entry(), QStringLiteral("Bravo"));
    f.tick()->setValue(1);
    f.coll->faults().failNext(QStringLiteral("Add"), kStoreDown);
    QTest::mouseClick(f.button("cmdAdd"), Qt::LeftButton);
    QCOMPARE(f.h.boxes().shown(), QList<Shown>{plainBox(kStoreDown)});
    QCOMPARE(f.h.boxes().shown().first().title,
             QStringLiteral("-2147217843 - The text store is not available"));
    QCOMPARE(f.h.log().lines(), QStringList{logError("cmdAdd_Click()", kStoreDown)});
    QCOMPARE(f.entry()->text(), QStringLiteral("Bravo"));
    QCOMPARE(f.tick()->value(), 1);
    QCOMPARE(f.texts(), QStringList{"Alpha"});
    // Still usable: the next Add goes through.
    QTest::mouseClick(f.button("cmdAdd"), Qt::LeftButton);
    QCOMPARE(f.texts(), (QStringList{"Alpha", "Bravo"}));
}

void tst_ctlTextSelect::reformatFailureReportsPlain()
{
    Fixture f;
    f.allowAll();
    f.bind({});
    QTest::keyClicks(f.entry(), QStringLiteral("Bravo"));
    const ErrorInfo e = error(5, QStringLiteral("ZebObjects.ApplicationServices"),
                              QStringLiteral("Invalid procedure call or argument"));
    f.services->faults().failNext(QStringLiteral("ReformatText"), e);
    QTest::mouseClick(f.button("cmdAdd"), Qt::LeftButton);
    QCOMPARE(f.h.boxes().shown(), QList<Shown>{plainBox(e)});
    QCOMPARE(f.h.log().lines(), QStringList{logError("cmdAdd_Click()", e)});
    QCOMPARE(f.coll->Count(), 0);
}

void tst_ctlTextSelect::cancelClearsTheEntryUnticksAndFocusesTheEntryBox()
{
    Fixture f;
    f.ctl->setAllowUpdate(true);
    f.ctl->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(f.ctl.get()));
    QTest::keyClicks(f.entry(), QStringLiteral("Draft"));
    f.tick()->setValue(1);
    f.button("cmdCancel")->setFocus();
    QTest::mouseClick(f.button("cmdCancel"), Qt::LeftButton);
    QCOMPARE(f.entry()->text(), QString());
    QCOMPARE(f.tick()->value(), 0);
    QCOMPARE(QApplication::focusWidget(), static_cast<QWidget*>(f.entry()));
    QVERIFY(!f.button("cmdAdd")->isEnabled());
}

// --- Saving and moving

void tst_ctlTextSelect::saveShowsTheHourglassAroundSaveOrder()
{
    Fixture f;
    f.allowAll();
    f.bind({{"a", "Alpha", false}, {"b", "Bravo", false}});
    f.coll->MoveDown(QStringLiteral("a"));
    std::optional<Qt::CursorShape> during;
    QObject::connect(f.coll.get(), &ZebObjects::TextObjects::OrderSaved, f.ctl.get(), [&] {
        if (const QCursor* c = QApplication::overrideCursor())
            during = c->shape();
    });
    QVERIFY(!QApplication::overrideCursor());
    QTest::mouseClick(f.button("cmdSave"), Qt::LeftButton);
    QCOMPARE(during, std::optional(Qt::WaitCursor));
    QVERIFY(!QApplication::overrideCursor());
    QVERIFY(!f.coll->IsDirty());
}

void tst_ctlTextSelect::savingTheOrderDisablesSaveChanges()
{
    Fixture f;
    f.allowAll();
    f.bind({{"a", "Alpha", false}, {"b", "Bravo", false}});
    f.coll->MoveDown(QStringLiteral("a"));
    QVERIFY(f.button("cmdSave")->isEnabled());
    QTest::mouseClick(f.button("cmdSave"), Qt::LeftButton);
    QVERIFY(!f.button("cmdSave")->isEnabled());
    QVERIFY(f.h.boxes().shown().isEmpty());
}

void tst_ctlTextSelect::saveFailureReportsPlainAndRestoresThePointer()
{
    Fixture f;
    f.allowAll();
    f.bind({{"a", "Alpha", false}, {"b", "Bravo", false}});
    f.coll->MoveDown(QStringLiteral("a"));
    f.h.log().clear();
    f.coll->faults().failNext(QStringLiteral("SaveOrder"), kStoreDown);
    QTest::mouseClick(f.button("cmdSave"), Qt::LeftButton);
    QCOMPARE(f.h.boxes().shown(), QList<Shown>{plainBox(kStoreDown)});
    QCOMPARE(f.h.log().lines(), QStringList{logError("cmdSave_Click()", kStoreDown)});
    QVERIFY(!QApplication::overrideCursor());
    QVERIFY(f.button("cmdSave")->isEnabled());
    QVERIFY(f.coll->IsDirty());
}

void tst_ctlTextSelect::movedParagraphStaysSelectedAndSaveIsEnabled()
{
    Fixture f;
    f.allowAll();
    f.bind({{"a", "Alpha", false}, {"b", "Bravo", true}, {"c", "Charlie", false}});
    f.clickItem(0);
    QCOMPARE(f.list()->selectedRow(), 0);
    QTest::mouseClick(f.button("cmdMoveDown"), Qt::LeftButton);
    QCOMPARE(f.collTexts(), (QStringList{"Bravo", "Alpha", "Charlie"}));
    QCOMPARE(f.texts(), (QStringList{"Bravo", "Alpha", "Charlie"}));
    QCOMPARE(f.checks(), (QList<bool>{true, false, false}));
    QCOMPARE(f.list()->selectedRow(), 1);
    QCOMPARE(f.list()->key(1), QStringLiteral("TEXTOBJECTa"));
    QVERIFY(f.button("cmdSave")->isEnabled());
    QCOMPARE(f.h.log().lines(),
             (QStringList{trace("moveItemDown()", kEnter), trace("Populate()", kEnter),
                          trace("Populate()", kExit), trace("moveItemDown()", kExit)}));
    QTest::mouseClick(f.button("cmdMoveUp"), Qt::LeftButton);
    QCOMPARE(f.texts(), (QStringList{"Alpha", "Bravo", "Charlie"}));
    QCOMPARE(f.list()->selectedRow(), 0);
    QCOMPARE(f.toolTexts(), (QStringList{"Alpha", "Bravo", "Charlie"}));
}

void tst_ctlTextSelect::moveUpFromTheMenuMovesTheParagraph()
{
    Fixture f;
    f.allowAll();
    f.bind({{"a", "Alpha", false}, {"b", "Bravo", false}, {"c", "Charlie", false}});
    f.chooseFromMenu(2, Qt::Key_U);
    QCOMPARE(f.texts(), (QStringList{"Alpha", "Charlie", "Bravo"}));
    QCOMPARE(f.list()->selectedRow(), 1);
    QCOMPARE(f.list()->key(1), QStringLiteral("TEXTOBJECTc"));
}

void tst_ctlTextSelect::moveDownFromTheMenuMovesTheParagraph()
{
    Fixture f;
    f.allowAll();
    f.bind({{"a", "Alpha", false}, {"b", "Bravo", false}, {"c", "Charlie", false}});
    // "n" is the menu's access key for Move Down ("D" belongs to Delete).
    f.chooseFromMenu(0, Qt::Key_N);
    QCOMPARE(f.texts(), (QStringList{"Bravo", "Alpha", "Charlie"}));
    QCOMPARE(f.list()->key(f.list()->selectedRow()), QStringLiteral("TEXTOBJECTa"));
    QCOMPARE(f.coll->Count(), 3);
}

void tst_ctlTextSelect::moveWithoutAllowSaveLeavesSaveDisabled()
{
    Fixture f;
    f.ctl->setAllowReorder(true);
    f.bind({{"a", "Alpha", false}, {"b", "Bravo", false}});
    f.clickItem(0);
    QTest::mouseClick(f.button("cmdMoveDown"), Qt::LeftButton);
    QCOMPARE(f.texts(), (QStringList{"Bravo", "Alpha"}));
    QVERIFY(!f.button("cmdSave")->isEnabled());
}

void tst_ctlTextSelect::movePastTheEndIsLeftToTheCollection()
{
    Fixture f;
    f.allowAll();
    f.bind({{"a", "Alpha", false}, {"b", "Bravo", false}});
    f.clickItem(0);
    QTest::mouseClick(f.button("cmdMoveUp"), Qt::LeftButton);
    QCOMPARE(f.texts(), (QStringList{"Alpha", "Bravo"}));
    QCOMPARE(f.list()->selectedRow(), 0);
    f.clickItem(1);
    QTest::mouseClick(f.button("cmdMoveDown"), Qt::LeftButton);
    QCOMPARE(f.texts(), (QStringList{"Alpha", "Bravo"}));
    QCOMPARE(f.list()->selectedRow(), 1);
    QVERIFY(f.h.boxes().shown().isEmpty());
    QVERIFY(f.h.log().failureLines().isEmpty());
}

void tst_ctlTextSelect::moveWithNoItemSelectedFailsWithObjectNotSet()
{
    Fixture f;
    f.allowAll();
    f.bind({{"a", "Alpha", false}});
    QTest::mouseClick(f.button("cmdMoveUp"), Qt::LeftButton);
    QCOMPARE(f.h.log().lines(),
             (QStringList{trace("moveItemUp()", kEnter), logError("moveItemUp", notSet()),
                          logError("cmdMoveUp_Click()", notSet())}));
    QCOMPARE(f.h.boxes().shown(), QList<Shown>{plainBox(notSet())});
}

void tst_ctlTextSelect::moveFailureIsLoggedByTheOperationAndTheHandlerAndShownOnce()
{
    Fixture f;
    f.allowAll();
    f.bind({{"a", "Alpha", false}, {"b", "Bravo", false}});
    f.clickItem(1);
    f.coll->faults().failNext(QStringLiteral("MoveUp"), kStoreDown);
    QTest::mouseClick(f.button("cmdMoveUp"), Qt::LeftButton);
    QCOMPARE(f.h.log().lines(),
             (QStringList{trace("moveItemUp()", kEnter), logError("moveItemUp", kStoreDown),
                          logError("cmdMoveUp_Click()", kStoreDown)}));
    QCOMPARE(f.h.boxes().shown(), QList<Shown>{plainBox(kStoreDown)});
    QCOMPARE(f.texts(), (QStringList{"Alpha", "Bravo"}));
    QCOMPARE(f.list()->selectedRow(), 1);

    f.h.log().clear();
    f.h.boxes().clear();
    f.coll->faults().failNext(QStringLiteral("MoveDown"), kStoreDown);
    f.chooseFromMenu(0, Qt::Key_N);
    QCOMPARE(f.h.log().lines(),
             (QStringList{trace("moveItemDown()", kEnter), logError("moveItemDown", kStoreDown),
                          logError("mnu_MoveDown_Click()", kStoreDown)}));
    QCOMPARE(f.h.boxes().shown(), QList<Shown>{plainBox(kStoreDown)});

    f.h.log().clear();
    f.h.boxes().clear();
    f.coll->faults().failNext(QStringLiteral("MoveUp"), kStoreDown);
    f.chooseFromMenu(1, Qt::Key_U);
    QCOMPARE(f.h.log().failureLines(), (QStringList{logError("moveItemUp", kStoreDown),
                                                    logError("mnu_MoveUp_Click()", kStoreDown)}));

    f.h.log().clear();
    f.coll->faults().failNext(QStringLiteral("MoveDown"), kStoreDown);
    f.clickItem(0);
    QTest::mouseClick(f.button("cmdMoveDown"), Qt::LeftButton);
    QCOMPARE(f.h.log().failureLines(), (QStringList{logError("moveItemDown", kStoreDown),
                                                    logError("cmdMoveDown_Click()", kStoreDown)}));
}

void tst_ctlTextSelect::moveWhoseRebuildFailsIsReportedByBothHandlers()
{
    Fixture f;
    f.allowAll();
    f.bind({{"a", "Alpha", false}, {"b", "Bravo", false}});
    f.clickItem(0);
    f.coll->faults().failNext(QStringLiteral("Enumerate"), kStoreDown);
    QTest::mouseClick(f.button("cmdMoveDown"), Qt::LeftButton);
    QCOMPARE(f.h.log().lines(),
             (QStringList{
                 trace("moveItemDown()", kEnter), trace("Populate()", kEnter),
                 logError("Populate", kStoreDown), logError("mTextObjects_ItemMoved()", kStoreDown),
                 logError("moveItemDown", kNotFound), logError("cmdMoveDown_Click()", kNotFound)}));
    QCOMPARE(f.h.boxes().shown(), (QList<Shown>{plainBox(kStoreDown), plainBox(kNotFound)}));
    QCOMPARE(f.list()->count(), 0);
    QCOMPARE(f.collTexts(), (QStringList{"Bravo", "Alpha"}));
}

// --- Menu, editing, deleting, ticking

void tst_ctlTextSelect::rightClickOpensTheMenuAtThePointer()
{
    Fixture f;
    f.allowAll();
    f.bind({{"a", "Alpha", false}, {"b", "Bravo", false}});
    QPoint shownAt;
    QStringList enabled;
    WhenPopup popup([&](QMenu& m) {
        shownAt = m.pos();
        for (QAction* a : m.actions())
            if (!a->isSeparator() && a->isEnabled())
                enabled << a->objectName();
        QTest::keyClick(&m, Qt::Key_Escape);
    });
    f.rightClickItem(1);
    QVERIFY(popup.answered());
    QCOMPARE(shownAt, f.viewport()->mapToGlobal(f.textPoint(1)));
    QCOMPARE(enabled, (QStringList{"mnu_Edit", "mnu_MoveUp", "mnu_MoveDown", "mnu_Delete"}));
    QCOMPARE(f.list()->selectedRow(), 1);
    QVERIFY(f.h.log().lines().isEmpty());
}

void tst_ctlTextSelect::withoutAllowUpdateTheMenuOpensWithEditAndDeleteGreyed()
{
    Fixture f;
    f.ctl->setAllowReorder(true);
    f.bind({{"a", "Alpha", false}});
    QList<bool> enabled;
    WhenPopup popup([&](QMenu& m) {
        for (QAction* a : m.actions())
            if (!a->isSeparator())
                enabled << a->isEnabled();
        // The greyed entries cannot be chosen.
        QTest::keyClick(&m, Qt::Key_D);
        QTest::keyClick(&m, Qt::Key_E);
        if (m.isVisible())
            QTest::keyClick(&m, Qt::Key_Escape);
    });
    f.rightClickItem(0);
    QVERIFY(popup.answered());
    QCOMPARE(enabled, (QList<bool>{false, true, true, false}));
    QCOMPARE(f.coll->Count(), 1);
    QVERIFY(f.h.log().lines().isEmpty());
}

void tst_ctlTextSelect::otherButtonsOpenNoMenu()
{
    Fixture f;
    f.allowAll();
    f.bind({{"a", "Alpha", false}});
    bool opened = false;
    WhenPopup watch([&](QMenu& m) {
        opened = true;
        m.close();
    });
    f.clickItem(0);
    QTest::mouseClick(f.viewport(), Qt::MiddleButton, {}, f.textPoint(0));
    QTest::mouseClick(f.viewport(), Qt::LeftButton, Qt::ShiftModifier, f.textPoint(0));
    QVERIFY(!opened);
}

void tst_ctlTextSelect::editFromTheMenuShowsTheParagraphAndOkWritesIt()
{
    Fixture f;
    f.allowAll();
    f.bind({{"a", "Alpha", false}, {"b", "Bravo", true}});
    QString caption;
    QString shownText;
    WhenModal<frmEditText> user([&](frmEditText& dialog) {
        caption = dialog.windowTitle();
        auto* box = dialog.findChild<MultiLineTextBox*>(QStringLiteral("txtText"));
        shownText = box->text();
        box->selectAll();
        QTest::keyClicks(box, QStringLiteral("Bravo"));
        QTest::keyClick(box, Qt::Key_Return);
        QTest::keyClicks(box, QStringLiteral("edited"));
        QTest::mouseClick(dialog.findChild<QPushButton*>(QStringLiteral("cmdOK")), Qt::LeftButton);
    });
    f.chooseFromMenu(1, Qt::Key_E);
    QVERIFY(user.answered());
    QVERIFY(!user.leftOpen());
    QCOMPARE(caption, QStringLiteral("Quenza"));
    QCOMPARE(shownText, QStringLiteral("Bravo"));
    QCOMPARE(f.coll->Item(QStringLiteral("b"))->Text(), QStringLiteral("Bravo\r\nedited"));
    QCOMPARE(f.texts(), (QStringList{"Alpha", "Bravo  edited"}));
    QCOMPARE(f.checks(), (QList<bool>{false, true}));
    QVERIFY(f.h.boxes().shown().isEmpty());
}

void tst_ctlTextSelect::doubleClickEditsTheSelectedParagraph()
{
    Fixture f;
    f.allowAll();
    f.bind({{"a", "Alpha", false}, {"b", "Bravo", false}});
    WhenModal<frmEditText> user([](frmEditText& dialog) {
        auto* box = dialog.findChild<MultiLineTextBox*>(QStringLiteral("txtText"));
        box->moveCursor(QTextCursor::End);
        QTest::keyClicks(box, QStringLiteral(" one"));
        QTest::mouseClick(dialog.findChild<QPushButton*>(QStringLiteral("cmdOK")), Qt::LeftButton);
    });
    f.doubleClickItem(0);
    QVERIFY(user.answered());
    QCOMPARE(f.coll->Item(QStringLiteral("a"))->Text(), QStringLiteral("Alpha one"));
    QCOMPARE(f.texts(), (QStringList{"Alpha one", "Bravo"}));
}

void tst_ctlTextSelect::enterInTheListEditsTheSelectedParagraph()
{
    Fixture f;
    f.allowAll();
    f.bind({{"a", "Alpha", false}, {"b", "Bravo", false}});
    f.clickItem(1);
    WhenModal<frmEditText> user([](frmEditText& dialog) {
        auto* box = dialog.findChild<MultiLineTextBox*>(QStringLiteral("txtText"));
        box->selectAll();
        QTest::keyClicks(box, QStringLiteral("Bravo two"));
        QTest::mouseClick(dialog.findChild<QPushButton*>(QStringLiteral("cmdOK")), Qt::LeftButton);
    });
    QTest::keyClick(f.list(), Qt::Key_Return);
    QVERIFY(user.answered());
    QCOMPARE(f.texts(), (QStringList{"Alpha", "Bravo two"}));
}

void tst_ctlTextSelect::otherKeysInTheListDoNothing()
{
    Fixture f;
    f.allowAll();
    f.bind({{"a", "Alpha", false}, {"b", "Bravo", false}});
    f.clickItem(0);
    WhenModal<frmEditText> user([](frmEditText&) {});
    for (Qt::Key key : {Qt::Key_F2, Qt::Key_E, Qt::Key_Delete, Qt::Key_Escape, Qt::Key_Tab})
        QTest::keyClick(f.list(), key);
    QTest::qWait(50);
    QVERIFY(!user.answered());
    QCOMPARE(f.coll->Count(), 2);
    QVERIFY(f.h.log().lines().isEmpty());
}

void tst_ctlTextSelect::withNoItemSelectedEditDeleteDoubleClickAndEnterDoNothing()
{
    Fixture f;
    f.allowAll();
    f.bind({{"a", "Alpha", false}});
    QCOMPARE(f.list()->selectedRow(), -1);
    WhenModal<frmEditText> user([](frmEditText&) {});
    f.action("mnu_Edit")->trigger();
    f.action("mnu_Delete")->trigger();
    QTest::keyClick(f.list(), Qt::Key_Return);
    // A double click below the last item selects nothing.
    const QPoint below(60, f.list()->itemRect(0).bottom() + 40);
    QTest::mousePress(f.viewport(), Qt::LeftButton, {}, below);
    QTest::mouseRelease(f.viewport(), Qt::LeftButton, {}, below);
    QTest::mouseDClick(f.viewport(), Qt::LeftButton, {}, below);
    QTest::mouseRelease(f.viewport(), Qt::LeftButton, {}, below);
    QTest::qWait(50);
    QVERIFY(!user.answered());
    QCOMPARE(f.coll->Count(), 1);
    // Delete traces its entry and exit all the same.
    QCOMPARE(f.h.log().lines(), (QStringList{trace("mnu_Delete_Click()", kEnter),
                                             trace("mnu_Delete_Click()", kExit)}));
    QVERIFY(f.h.boxes().shown().isEmpty());
}

void tst_ctlTextSelect::withoutAllowUpdateDoubleClickEnterAndDeleteDoNothing()
{
    Fixture f;
    f.ctl->setAllowReorder(true);
    f.bind({{"a", "Alpha", false}});
    f.clickItem(0);
    WhenModal<frmEditText> user([](frmEditText&) {});
    f.doubleClickItem(0);
    QTest::keyClick(f.list(), Qt::Key_Return);
    // The greyed menu entries, if reached at all, do nothing either.
    f.action("mnu_Delete")->setEnabled(true);
    f.action("mnu_Delete")->trigger();
    f.action("mnu_Edit")->setEnabled(true);
    f.action("mnu_Edit")->trigger();
    QTest::qWait(50);
    QVERIFY(!user.answered());
    QCOMPARE(f.coll->Count(), 1);
    QVERIFY(f.h.boxes().shown().isEmpty());
}

void tst_ctlTextSelect::itemIsRefreshedFromTheObjectAfterCancelToo()
{
    Fixture f;
    f.allowAll();
    f.bind({{"a", "Alpha", false}, {"b", "Bravo", false}});
    WhenModal<frmEditText> user([&](frmEditText& dialog) {
        auto* box = dialog.findChild<MultiLineTextBox*>(QStringLiteral("txtText"));
        QTest::keyClicks(box, QStringLiteral("typed but cancelled"));
        // Meanwhile the object changed elsewhere.
        f.coll->object(QStringLiteral("b"))->setText(QStringLiteral("Bravo\r\nfrom elsewhere"));
        f.coll->object(QStringLiteral("b"))->setSelected(true);
        QTest::mouseClick(dialog.findChild<QPushButton*>(QStringLiteral("cmdCancel")),
                          Qt::LeftButton);
    });
    f.chooseFromMenu(1, Qt::Key_E);
    QVERIFY(user.answered());
    QVERIFY(!user.leftOpen());
    QCOMPARE(f.coll->Item(QStringLiteral("b"))->Text(), QStringLiteral("Bravo\r\nfrom elsewhere"));
    QCOMPARE(f.texts(), (QStringList{"Alpha", "Bravo  from elsewhere"}));
    QCOMPARE(f.checks(), (QList<bool>{false, true}));
}

void tst_ctlTextSelect::editTracesShowEditFormEntryOnlyAndRebuildsTheTips()
{
    Fixture f;
    f.allowAll();
    f.bind({{"a", "Alpha", false}, {"b", "Bravo", false}});
    f.clickItem(0);
    WhenModal<frmEditText> user([](frmEditText& dialog) {
        auto* box = dialog.findChild<MultiLineTextBox*>(QStringLiteral("txtText"));
        box->selectAll();
        QTest::keyClicks(box, QStringLiteral("Alpha new"));
        QTest::mouseClick(dialog.findChild<QPushButton*>(QStringLiteral("cmdOK")), Qt::LeftButton);
    });
    QTest::keyClick(f.list(), Qt::Key_Enter);
    QVERIFY(user.answered());
    QCOMPARE(
        f.h.log().lines(),
        (QStringList{trace("showEditForm()", kEnter),
                     QStringLiteral("Trace|frmEditText|cmdOK_Click()|Entering Method...|0"),
                     QStringLiteral("Trace|frmEditText|cmdOK_Click()|Exiting Method...|0"),
                     trace("UpdateToolTipText()", kEnter), trace("UpdateToolTipText()", kExit)}));
    QCOMPARE(f.toolTexts(), (QStringList{"Alpha new", "Bravo"}));
}

void tst_ctlTextSelect::failureHandingTheObjectToTheDialogIsLoggedThreeTimesAndShownOnce()
{
    Fixture f;
    f.allowAll();
    f.bind({{"a", "Alpha", false}});
    f.coll->object(QStringLiteral("a"))->faults().failNext(QStringLiteral("Text"), kStoreDown);
    WhenModal<frmEditText> user([](frmEditText&) {});
    f.doubleClickItem(0);
    QTest::qWait(30);
    QVERIFY(!user.answered());
    QCOMPARE(f.h.log().lines(), (QStringList{trace("showEditForm()", kEnter),
                                             logError("TextObject() - Property Set", kStoreDown,
                                                      QStringLiteral("frmEditText")),
                                             logError("showEditForm", kStoreDown),
                                             logError("ListView_DblClick()", kStoreDown)}));
    QCOMPARE(f.h.boxes().shown(), QList<Shown>{plainBox(kStoreDown)});
    QCOMPARE(f.texts(), QStringList{"Alpha"});

    // The same from the menu and from Enter, under their own labels.
    f.h.log().clear();
    f.coll->object(QStringLiteral("a"))->faults().failNext(QStringLiteral("Text"), kStoreDown);
    f.chooseFromMenu(0, Qt::Key_E);
    QCOMPARE(f.h.log().failureLines().last(), logError("mnu_Edit_Click()", kStoreDown));
    f.h.log().clear();
    f.coll->object(QStringLiteral("a"))->faults().failNext(QStringLiteral("Text"), kStoreDown);
    QTest::keyClick(f.list(), Qt::Key_Return);
    QCOMPARE(f.h.log().failureLines().last(), logError("ListView_KeyUp()", kStoreDown));
}

void tst_ctlTextSelect::editLookupFailureReportsPlain()
{
    Fixture f;
    f.allowAll();
    f.bind({{"a", "Alpha", false}});
    f.coll->faults().failNext(QStringLiteral("Item"), kStoreDown);
    f.chooseFromMenu(0, Qt::Key_E);
    QCOMPARE(f.h.log().lines(), QStringList{logError("mnu_Edit_Click()", kStoreDown)});
    QCOMPARE(f.h.boxes().shown(), QList<Shown>{plainBox(kStoreDown)});
}

void tst_ctlTextSelect::deleteRemovesTheParagraphThroughItemDeletedAndRebuildsTheTips()
{
    Fixture f;
    f.allowAll();
    f.bind({{"a", "Alpha", false}, {"b", "Bravo", false}, {"c", "Charlie", false}});
    f.chooseFromMenu(1, Qt::Key_D);
    QCOMPARE(f.collTexts(), (QStringList{"Alpha", "Charlie"}));
    QCOMPARE(f.keys(), (QStringList{"TEXTOBJECTa", "TEXTOBJECTc"}));
    QCOMPARE(f.toolTexts(), (QStringList{"Alpha", "Charlie"}));
    QVERIFY(!f.tips()->hasTool(f.viewport(), 2));
    QCOMPARE(f.tips()->toolRect(f.viewport(), 1), f.list()->itemRect(1));
    QCOMPARE(
        f.h.log().lines(),
        (QStringList{trace("mnu_Delete_Click()", kEnter), trace("UpdateToolTipText()", kEnter),
                     trace("UpdateToolTipText()", kExit), trace("mnu_Delete_Click()", kExit)}));
}

void tst_ctlTextSelect::deletingTheLastParagraphLeavesAnEmptyList()
{
    Fixture f;
    f.allowAll();
    f.bind({{"a", "Alpha", false}});
    f.chooseFromMenu(0, Qt::Key_D);
    QCOMPARE(f.list()->count(), 0);
    QCOMPARE(f.coll->Count(), 0);
    QCOMPARE(f.list()->selectedRow(), -1);
    QVERIFY(f.h.boxes().shown().isEmpty());
}

void tst_ctlTextSelect::deleteFailureShowsTheTextDeleteReport()
{
    Fixture f;
    f.allowAll();
    f.bind({{"a", "Alpha", false}});
    f.coll->faults().failNext(QStringLiteral("Remove"), kStoreDown);
    f.chooseFromMenu(0, Qt::Key_D);
    QCOMPARE(f.h.boxes().shown(),
             (QList<Shown>{Shown{
                 QStringLiteral("The requested operation cannot be completed.  "
                                "The text store is not available"),
                 48, QStringLiteral("Error: -2147217843 - The text store is not available")}}));
    QCOMPARE(f.h.log().lines(), (QStringList{trace("mnu_Delete_Click()", kEnter),
                                             logError("mnu_Delete_Click", kStoreDown)}));
    QCOMPARE(f.texts(), QStringList{"Alpha"});
}

void tst_ctlTextSelect::tickingAnItemWritesSelected()
{
    Fixture f;
    f.bind({{"a", "Alpha", false}, {"b", "Bravo", true}});
    f.tickItem(0);
    QCOMPARE(f.coll->Item(QStringLiteral("a"))->Selected(), true);
    f.tickItem(1);
    QCOMPARE(f.coll->Item(QStringLiteral("b"))->Selected(), false);
    QCOMPARE(f.checks(), (QList<bool>{true, false}));
    QVERIFY(f.h.boxes().shown().isEmpty());
    QVERIFY(f.h.log().lines().isEmpty());
}

void tst_ctlTextSelect::tickFailureReportsPlain()
{
    Fixture f;
    f.bind({{"a", "Alpha", false}});
    f.coll->object(QStringLiteral("a"))->faults().failNext(QStringLiteral("Selected="), kStoreDown);
    f.tickItem(0);
    QCOMPARE(f.h.boxes().shown(), QList<Shown>{plainBox(kStoreDown)});
    QCOMPARE(f.h.log().lines(), QStringList{logError("ListView_ItemCheck()", kStoreDown)});
    QCOMPARE(f.coll->Item(QStringLiteral("a"))->Selected(), false);
    // The list keeps the user's tick: it stays as it was when the call failed.
    QVERIFY(f.list()->isChecked(0));
}

void tst_ctlTextSelect::checksSetFromCodeNeverWriteSelected()
{
    Fixture f;
    f.allowAll();
    f.paragraphs({{"a", "Alpha", true}, {"b", "Bravo", false}});
    const auto a = f.coll->object(QStringLiteral("a"));
    a->faults().setRecording(true);
    f.ctl->setTextObjects(f.coll);
    f.clickItem(0);
    QTest::mouseClick(f.button("cmdMoveDown"), Qt::LeftButton);
    WhenModal<frmEditText> user([](frmEditText& dialog) {
        QTest::mouseClick(dialog.findChild<QPushButton*>(QStringLiteral("cmdCancel")),
                          Qt::LeftButton);
    });
    QTest::keyClick(f.list(), Qt::Key_Return);
    QVERIFY(user.answered());
    QVERIFY(!a->faults().calls().contains(QStringLiteral("Selected=")));
    QVERIFY(a->faults().calls().contains(QStringLiteral("Selected")));
    QCOMPARE(f.checks(), (QList<bool>{false, true}));
}

// --- Collection events

void tst_ctlTextSelect::changedEnablesSaveExactlyWhenDirtyIfAllowed()
{
    Fixture f;
    f.ctl->setAllowSave(true);
    f.bind({{"a", "Alpha", false}, {"b", "Bravo", false}});
    f.coll->Add(QStringLiteral("Charlie"), false);
    QVERIFY(!f.button("cmdSave")->isEnabled());
    f.coll->Insert(1, QStringLiteral("Zulu"), false);
    QVERIFY(f.button("cmdSave")->isEnabled());
    f.coll->SaveOrder();
    QVERIFY(!f.button("cmdSave")->isEnabled());
}

void tst_ctlTextSelect::changedDisablesSaveWhenSavingIsNotAllowed()
{
    Fixture f;
    f.ctl->setAllowSave(true);
    f.bind({{"a", "Alpha", false}, {"b", "Bravo", false}});
    f.coll->Insert(1, QStringLiteral("Zulu"), false);
    QVERIFY(f.button("cmdSave")->isEnabled());
    f.ctl->setAllowSave(false);
    f.coll->Add(QStringLiteral("Charlie"), false);
    QVERIFY(f.coll->IsDirty());
    QVERIFY(!f.button("cmdSave")->isEnabled());
}

void tst_ctlTextSelect::changedFailureReportsPlain()
{
    Fixture f;
    f.ctl->setAllowSave(true);
    f.bind({{"a", "Alpha", false}});
    f.coll->faults().failNext(QStringLiteral("IsDirty"), kStoreDown);
    f.coll->Add(QStringLiteral("Bravo"), false);
    QCOMPARE(f.h.boxes().shown(), QList<Shown>{plainBox(kStoreDown)});
    QCOMPARE(f.h.log().lines(), QStringList{logError("mTextObjects_Changed()", kStoreDown)});
    QCOMPARE(f.texts(), (QStringList{"Alpha", "Bravo"}));
}

void tst_ctlTextSelect::itemAddedElsewhereAppendsTheItemWithTagCheckAndTip()
{
    Fixture f;
    f.bind({{"a", "Alpha", false}});
    f.coll->addWithKey(QStringLiteral("n"), QStringLiteral("November\r\nline"), true);
    QCOMPARE(f.keys(), (QStringList{"TEXTOBJECTa", "TEXTOBJECTn"}));
    QCOMPARE(f.tags(), (QStringList{"a", "n"}));
    QCOMPARE(f.texts(), (QStringList{"Alpha", "November  line"}));
    QCOMPARE(f.checks(), (QList<bool>{false, true}));
    QCOMPARE(f.tips()->toolText(f.viewport(), 1), QStringLiteral("November\r\nline"));
    QCOMPARE(f.tips()->toolRect(f.viewport(), 1), f.list()->itemRect(1));
    QVERIFY(f.h.log().lines().isEmpty());
}

void tst_ctlTextSelect::itemAddedFailureReportsPlain()
{
    Fixture f;
    f.bind({{"a", "Alpha", false}});
    f.coll->faults().failNext(QStringLiteral("Item"), kStoreDown);
    f.coll->addWithKey(QStringLiteral("n"), QStringLiteral("November"), true);
    QCOMPARE(f.h.boxes().shown(), QList<Shown>{plainBox(kStoreDown)});
    QCOMPARE(f.h.log().lines(), QStringList{logError("mTextObjects_ItemAdded()", kStoreDown)});
    QCOMPARE(f.texts(), QStringList{"Alpha"});
}

void tst_ctlTextSelect::itemDeletedRemovesOnlyThatItemAndLeavesTheTips()
{
    Fixture f;
    f.bind({{"a", "Alpha", false}, {"b", "Bravo", false}, {"c", "Charlie", false}});
    const QRect rect2 = f.tips()->toolRect(f.viewport(), 2);
    f.coll->Remove(QStringLiteral("a"));
    QCOMPARE(f.keys(), (QStringList{"TEXTOBJECTb", "TEXTOBJECTc"}));
    QCOMPARE(f.toolTexts(), (QStringList{"Alpha", "Bravo", "Charlie"}));
    QCOMPARE(f.tips()->toolRect(f.viewport(), 2), rect2);
    QVERIFY(f.h.log().lines().isEmpty());
}

void tst_ctlTextSelect::itemDeletedForAnItemNotInTheListReportsElementNotFound()
{
    Fixture f;
    f.paragraphs({{"a", "Alpha", false}, {"b", "Bravo", false}});
    f.coll->faults().failNext(QStringLiteral("Enumerate"), kStoreDown);
    QVERIFY(failureIfAny([&] { f.ctl->setTextObjects(f.coll); }));
    f.h.log().clear();
    f.coll->Remove(QStringLiteral("b"));
    QCOMPARE(f.h.boxes().shown(), QList<Shown>{plainBox(kNotFound)});
    QCOMPARE(f.h.log().lines(), QStringList{logError("mTextObjects_ItemDeleted()", kNotFound)});
}

void tst_ctlTextSelect::itemInsertedGoesToItsPlaceSelectedAndWithoutATag()
{
    Fixture f;
    f.bind({{"a", "Alpha", false}, {"b", "Bravo", false}});
    const auto inserted = f.coll->Insert(2, QStringLiteral("Inserted\r\ntext"), true);
    QCOMPARE(f.keys(), (QStringList{"TEXTOBJECTa", "TEXTOBJECT" + inserted->Key(), "TEXTOBJECTb"}));
    QCOMPARE(f.texts(), (QStringList{"Alpha", "Inserted  text", "Bravo"}));
    QCOMPARE(f.tags(), (QStringList{"a", "", "b"}));
    QCOMPARE(f.checks(), (QList<bool>{false, true, false}));
    QCOMPARE(f.list()->selectedRow(), 1);
    // The next rebuild gives it its tag.
    f.ctl->Populate();
    QCOMPARE(f.tags(), (QStringList{"a", inserted->Key(), "b"}));
}

void tst_ctlTextSelect::itemInsertedRebuildsEveryToolTip()
{
    Fixture f;
    f.bind({{"a", "Alpha", false}, {"b", "Bravo", false}});
    f.coll->Insert(1, QStringLiteral("Zulu"), false);
    QCOMPARE(f.toolTexts(), (QStringList{"Zulu", "Alpha", "Bravo"}));
    for (int i = 0; i < 3; ++i)
        QCOMPARE(f.tips()->toolRect(f.viewport(), i), f.list()->itemRect(i));
    QCOMPARE(f.h.log().lines(), (QStringList{trace("UpdateToolTipText()", kEnter),
                                             trace("UpdateToolTipText()", kExit)}));
}

void tst_ctlTextSelect::insertedItemsEmptyTagReachesTheCollectionAndItsErrorIsReported()
{
    Fixture f;
    f.allowAll();
    f.bind({{"a", "Alpha", false}});
    f.coll->Insert(1, QStringLiteral("Zulu"), false);
    f.h.log().clear();
    const ErrorInfo none = noKey(QString());

    f.tickItem(0);
    QCOMPARE(f.h.log().lines(), QStringList{logError("ListView_ItemCheck()", none)});
    QCOMPARE(f.h.boxes().shown(), QList<Shown>{plainBox(none)});

    f.h.log().clear();
    f.h.boxes().clear();
    f.clickItem(0);
    QTest::mouseClick(f.button("cmdMoveDown"), Qt::LeftButton);
    QCOMPARE(f.h.log().failureLines(),
             (QStringList{logError("moveItemDown", none), logError("cmdMoveDown_Click()", none)}));

    f.h.log().clear();
    f.chooseFromMenu(0, Qt::Key_E);
    QCOMPARE(f.h.log().failureLines(), QStringList{logError("mnu_Edit_Click()", none)});

    f.h.log().clear();
    f.h.boxes().clear();
    f.chooseFromMenu(0, Qt::Key_D);
    QCOMPARE(f.h.log().failureLines(), QStringList{logError("mnu_Delete_Click", none)});
    QCOMPARE(f.h.boxes().shown().first().title,
             QStringLiteral("Error: 9 - Subscript out of range: no text object has the key \"\""));
    QCOMPARE(f.coll->Count(), 2);
}

void tst_ctlTextSelect::itemInsertedFailureIsLoggedByUpdateToolTipTextAndTheHandler()
{
    Fixture f;
    f.bind({{"a", "Alpha", false}});
    // The look-up of the inserted paragraph fails.
    f.coll->faults().failNext(QStringLiteral("Item"), kStoreDown);
    const auto zulu = f.coll->Insert(1, QStringLiteral("Zulu"), false);
    QCOMPARE(f.h.log().lines(), QStringList{logError("mTextObjects_ItemInserted()", kStoreDown)});
    QCOMPARE(f.h.boxes().shown(), QList<Shown>{plainBox(kStoreDown)});
    QCOMPARE(f.texts(), QStringList{"Alpha"});

    // A failure while the tips are rebuilt: logged by UpdateToolTipText, then by the handler.
    // The collection now holds Yankee, Zulu, Alpha and the list Yankee, Alpha: the tips take
    // the objects by position, so the second tip reads Zulu's text.
    f.h.log().clear();
    f.h.boxes().clear();
    f.coll->object(zulu->Key())->faults().failNext(QStringLiteral("Text"), kStoreDown);
    f.coll->Insert(1, QStringLiteral("Yankee"), false);
    QCOMPARE(f.h.log().lines(), (QStringList{trace("UpdateToolTipText()", kEnter),
                                             logError("UpdateToolTipText", kStoreDown),
                                             logError("mTextObjects_ItemInserted()", kStoreDown)}));
    QCOMPARE(f.h.boxes().shown(), QList<Shown>{plainBox(kStoreDown)});
    QCOMPARE(f.texts().size(), 2);
}

void tst_ctlTextSelect::itemMovedRebuildsTheListAndEnablesSaveWhenAllowed()
{
    Fixture f;
    f.ctl->setAllowSave(true);
    f.bind({{"a", "Alpha", false}, {"b", "Bravo", false}});
    f.coll->MoveDown(QStringLiteral("a"));
    QCOMPARE(f.keys(), (QStringList{"TEXTOBJECTb", "TEXTOBJECTa"}));
    QCOMPARE(f.toolTexts(), (QStringList{"Bravo", "Alpha"}));
    QVERIFY(f.button("cmdSave")->isEnabled());
    QCOMPARE(f.h.log().lines(),
             (QStringList{trace("Populate()", kEnter), trace("Populate()", kExit)}));
}

void tst_ctlTextSelect::orderSavedDisablesSave()
{
    Fixture f;
    f.ctl->setAllowSave(true);
    f.bind({{"a", "Alpha", false}, {"b", "Bravo", false}});
    f.coll->MoveDown(QStringLiteral("a"));
    QVERIFY(f.button("cmdSave")->isEnabled());
    f.h.log().clear();
    // A collection that reports the saved order without a Changed after it.
    emit f.coll->OrderSaved();
    QVERIFY(!f.button("cmdSave")->isEnabled());
    QVERIFY(f.h.log().lines().isEmpty());
}

void tst_ctlTextSelect::itemMovedAloneEnablesSaveWhenAllowed()
{
    Fixture f;
    f.ctl->setAllowSave(true);
    f.bind({{"a", "Alpha", false}, {"b", "Bravo", false}});
    QVERIFY(!f.button("cmdSave")->isEnabled());
    // A collection that reports the move without a Changed after it.
    emit f.coll->ItemMoved();
    QVERIFY(f.button("cmdSave")->isEnabled());
    f.coll->SaveOrder();
    f.ctl->setAllowSave(false);
    emit f.coll->ItemMoved();
    QVERIFY(!f.button("cmdSave")->isEnabled());
}

void tst_ctlTextSelect::destroyedControlLetsGoOfTheCollection()
{
    Fixture f;
    f.bind({{"a", "Alpha", false}});
    const std::weak_ptr<StandaloneTextObjects> weak = f.coll;
    QCOMPARE(f.coll.use_count(), 2);
    f.ctl.reset();
    QCOMPARE(f.coll.use_count(), 1);
    f.coll->Add(QStringLiteral("After"), false);
    QVERIFY(f.h.boxes().shown().isEmpty());
}

void tst_ctlTextSelect::everyCaptionFitsItsDesignPlace()
{
    Fixture f;
    f.ctl->setAllowUpdate(true);
    const auto* check = f.ctl->findChild<QCheckBox*>(QStringLiteral("chkIsSelected"));
    const int checkNeeds =
        check->style()->pixelMetric(QStyle::PM_IndicatorWidth, nullptr, check)
        + check->style()->pixelMetric(QStyle::PM_CheckBoxLabelSpacing, nullptr, check)
        + check->fontMetrics().horizontalAdvance(check->text());
    QVERIFY2(checkNeeds <= check->width(),
             qPrintable(QStringLiteral("%1 > %2").arg(checkNeeds).arg(check->width())));
    for (const char* name : {"cmdAdd", "cmdCancel", "cmdMoveUp", "cmdMoveDown", "cmdSave"}) {
        const auto* button = f.ctl->findChild<QPushButton*>(QLatin1String(name));
        QString caption = button->text();
        caption.remove(QLatin1Char('&'));
        const int needed = button->fontMetrics().horizontalAdvance(caption) + 6;
        QVERIFY2(needed <= button->width(), qPrintable(QStringLiteral("%1: %2 > %3")
                                                           .arg(QLatin1String(name))
                                                           .arg(needed)
                                                           .arg(button->width())));
    }
}

void tst_ctlTextSelect::screenReaderFindsANameForEveryInteractiveElement()
{
    Fixture f;
    f.ctl->setAllowUpdate(true);
    f.ctl->setAllowReorder(true);
    f.ctl->show();
    QVERIFY(QTest::qWaitForWindowExposed(f.ctl.get()));
    const QStringList unnamed = ZebTest::unnamedAccessibleElements(f.ctl.get());
    QVERIFY2(unnamed.isEmpty(), qPrintable(unnamed.join(QStringLiteral("; "))));
    QCOMPARE(f.ctl->findChild<QWidget*>(QStringLiteral("txtNewComment"))->accessibleName(),
             QStringLiteral("New text"));
    QCOMPARE(f.ctl->findChild<QWidget*>(QStringLiteral("ListView"))->accessibleName(),
             QStringLiteral("Texts"));
}

QTEST_MAIN(tst_ctlTextSelect)
#include "tst_ctltextselect.moc"
