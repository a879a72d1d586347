#include "controls/customers/ctlcustselect.h"
#include "frame/controlregistry.h"
#include "frame/propertybag.h"
#include "customerchooser.h"
#include "objects/customerdirectory.h"
#include "contracts/runtime.h"
#include "objects/sampledata.h"
#include "objects/standaloneapplicationservices.h"
#include "objects/standalonecustomer.h"
#include "objects/standalonecustomerfinder.h"
#include "objects/standalonecustomers.h"
#include "objects/standalonecustomersearchcontext.h"
#include "objects/standalonecustomersearchresult.h"
#include "platform/keyedlistview.h"
#include "support/controltesting.h"
#include "support/testsupport.h"
#include "userinput.h"

#include <QAccessible>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QStyle>
#include <QTest>
#include <QTreeWidget>

#include <optional>

using namespace ZebSubCtl;
using ZebObjects::CustomerDirectory;
using ZebObjects::ErrorInfo;
using ZebObjects::Failure;
using ZebObjects::StandaloneApplicationServices;
using ZebObjects::StandaloneCustomer;
using ZebObjects::StandaloneCustomers;
using ZebTest::error;
using ZebTest::typeText;
using ZebTest::WhenModal;
using Shown = ZebSubCtl::ScriptedMessageBoxService::Shown;

namespace {

const QString kEnter = QStringLiteral("Entering Method...");
const QString kExit = QStringLiteral("Exiting Method...");
const QString kDuplicateExit = QStringLiteral("Duplicate Customer, Exiting Method...");
const QString kSearchPrompt = QStringLiteral(
    "The requested operation could not be completed.  An error occurred whilde performing the "
    "search.");

const ErrorInfo kStoreDown = error(-2147217843, QStringLiteral("ZebObjects.Customers"),
                                   QStringLiteral("The customer store is not available"));
const ErrorInfo kDenied =
    error(70, QStringLiteral("ZebObjects.Customers"), QStringLiteral("Permission denied"));
const ErrorInfo kLogDown =
    error(70, QStringLiteral("ZebObjects.DiagnosticLog"), QStringLiteral("Permission denied"));
const ErrorInfo kNotSet = error(91, QStringLiteral("ZebSubCtl"),
                                QStringLiteral("Object variable or With block variable not set"));

QString trace(const QString& label, const QString& message)
{
    return QStringLiteral("Trace|ctlCustSelect|%1|%2|0").arg(label, message);
}

QStringList traced(const QString& label)
{
    return {trace(label, kEnter), trace(label, kExit)};
}

QString logError(const QString& label, const ErrorInfo& e)
{
    return ZebTest::logLine("LogError", QStringLiteral("ctlCustSelect"), label, e);
}

QString titled(const ErrorInfo& e)
{
    return QStringLiteral("Error: ") + QString::number(e.Number) + QStringLiteral(" - ")
           + e.Description;
}

StandaloneCustomer::Data record(const char* key, const char* name, const char* account,
                                const char* city, const char* state, const char* type,
                                const char* category, bool active = true)
{
    StandaloneCustomer::Data d;
    d.key = QLatin1String(key);
    d.name = QLatin1String(name);
    d.accountNumber = QLatin1String(account);
    d.city = QLatin1String(city);
    d.state = QLatin1String(state);
    d.type = QLatin1String(type);
    d.category = QLatin1String(category);
    d.displayText = d.name + QStringLiteral(" - ") + d.city + QStringLiteral(", ") + d.state;
    d.active = active;
    return d;
}

// What the panel's searches look in: one name with "Cedar", two open accounts with "Electric"
// (and one closed).
std::shared_ptr<CustomerDirectory> directory()
{
    auto d = std::make_shared<CustomerDirectory>();
    d->Add(record("K1", "Rose City Electric", "300", "Portland", "OR", "Contractor", "Electrical"));
    d->Add(record("K2", "Columbia Electric Supply", "100", "Vancouver", "WA", "Distributor",
                  "Wholesale"));
    d->Add(
        record("K3", "Cedar Ridge Architects", "400", "Portland", "OR", "Architect", "Specifier"));
    d->Add(record("K4", "Bridgetown Electric", "200", "Portland", "OR", "Contractor", "Electrical",
                  false));
    return d;
}

std::shared_ptr<StandaloneCustomer> customer(const char* key, const char* name,
                                             bool included = false)
{
    auto d = record(key, name, "9", "Salem", "OR", "Owner", "Education");
    d.included = included;
    return std::make_shared<StandaloneCustomer>(d);
}

// A finder whose result the test holds, so that its members can be made to fail too; it keeps
// what each search received.
class HeldResultFinder : public ZebObjects::CustomerFinder, public ZebObjects::FaultInjectable {
public:
    struct Call {
        QList<bool> options;
        QVariant context;
        QStringList criteria;
        qint32 maximumResults = -1;
    };

    std::shared_ptr<ZebObjects::CustomerSearchResult> Search(
        bool includeInactive, bool interactive, bool exactName, bool matchAny,
        bool sortByAccountNumber, const QVariant& context, const QString& keyword,
        const QString& accountNumber, const QString& city, const QString& state, const QString& zip,
        const QString& phone, const QString& type, const QString& category,
        qint32 maximumResults) override
    {
        check("Search");
        calls.append(Call{{includeInactive, interactive, exactName, matchAny, sortByAccountNumber},
                          context,
                          {keyword, accountNumber, city, state, zip, phone, type, category},
                          maximumResults});
        return result;
    }
    std::shared_ptr<ZebObjects::StandaloneCustomerSearchResult> result;
    QList<Call> calls;
};

class HeldFinderServices : public StandaloneApplicationServices {
public:
    std::shared_ptr<ZebObjects::CustomerFinder> CreateCustomerFinder() override
    {
        check("CreateCustomerFinder");
        return finder;
    }
    std::shared_ptr<HeldResultFinder> finder = std::make_shared<HeldResultFinder>();
};

using ZebTest::FailingTraceLog;

using ZebTest::failureIfAny;

// One panel, shown, with its own log, message boxes, application services (searching the
// small directory above) and customer collection.
struct Fixture {
    ZebTest::Harness h;
    std::shared_ptr<StandaloneApplicationServices> services;
    std::shared_ptr<StandaloneCustomers> coll = std::make_shared<StandaloneCustomers>();
    std::unique_ptr<ctlCustSelect> ctl;

    explicit Fixture(bool show = true,
                     std::shared_ptr<StandaloneApplicationServices> withServices = nullptr)
        : services(withServices ? std::move(withServices)
                                : std::make_shared<StandaloneApplicationServices>())
    {
        services->setCustomerDirectory(directory());
        ZebObjects::Runtime::setApplicationServices(services);
        ctl = std::make_unique<ctlCustSelect>();
        if (show) {
            ctl->show();
            ctl->activateWindow();
            if (!QTest::qWaitForWindowActive(ctl.get()))
                qFatal("panel not active");
        }
        h.log().clear();
    }

    // The workbench's setting: search, add, remove and tick.
    void allowAll()
    {
        ctl->setAllowAdd(true);
        ctl->setAllowDelete(true);
        ctl->setShowCheckboxes(true);
        h.log().clear();
    }
    // Binds the collection holding these customers; the log starts empty afterwards.
    void bind(std::initializer_list<std::shared_ptr<StandaloneCustomer>> customers)
    {
        for (const auto& c : customers)
            coll->Add(c->data().key, c);
        ctl->setCustomers(coll);
        h.log().clear();
    }
    void bindTwo()
    {
        bind({customer("A1", "Alder Creek Engineering", true),
              customer("B2", "Benton Consulting Engineers")});
    }

    KeyedListView* list() const
    {
        return ctl->findChild<KeyedListView*>(QStringLiteral("lsvCustomers"));
    }
    QPushButton* button(const char* name) const
    {
        return ctl->findChild<QPushButton*>(QLatin1String(name));
    }
    QLineEdit* keyword() const
    {
        return ctl->findChild<QLineEdit*>(QStringLiteral("txtNameKeyword"));
    }
    QLineEdit* account() const { return ctl->findChild<QLineEdit*>(QStringLiteral("txtAcctNum")); }
    QLabel* label(const char* name) const { return ctl->findChild<QLabel*>(QLatin1String(name)); }

    void click(const char* name) const { QTest::mouseClick(button(name), Qt::LeftButton); }
    QPoint textPoint(int row) const
    {
        return QPoint(list()->checkBoxRect(row).right() + 40, list()->itemRect(row).center().y());
    }
    void selectRow(int row) const
    {
        QTest::mouseClick(list()->viewport(), Qt::LeftButton, {}, textPoint(row));
    }
    void tickRow(int row) const
    {
        QTest::mouseClick(list()->viewport(), Qt::LeftButton, {},
                          list()->checkBoxRect(row).center());
    }
    // Types into the search boxes and clicks Search.
    void search(const QString& name, const QString& acct = {}) const
    {
        QTest::mouseClick(keyword(), Qt::LeftButton);
        keyword()->clear();
        typeText(keyword(), name);
        account()->clear();
        typeText(account(), acct);
        click("cmdSearch");
    }

    QStringList keys() const
    {
        QStringList out;
        for (int i = 0; i < list()->count(); ++i)
            out << list()->key(i);
        return out;
    }
    QStringList collKeys() const
    {
        QStringList out;
        for (qint16 i = 1; i <= coll->Count(); ++i)
            out << coll->keyAt(i);
        return out;
    }
    // Everything a row shows: key, text, tool tip, check and the six sub-items with their keys.
    QStringList row(int r) const
    {
        QStringList out{list()->key(r), list()->text(r), list()->itemToolTip(r),
                        list()->isChecked(r) ? QStringLiteral("checked")
                                             : QStringLiteral("unchecked")};
        for (int i = 1; i <= list()->subItemCount(r); ++i)
            out << list()->subItemKey(r, i) + QLatin1Char('=') + list()->subItemText(r, i);
        return out;
    }
};

QStringList expectedRow(const StandaloneCustomer& c, bool checked)
{
    const auto& d = c.data();
    return {d.key,
            d.displayText,
            d.displayText,
            checked ? QStringLiteral("checked") : QStringLiteral("unchecked"),
            QStringLiteral("name=") + d.name,
            QStringLiteral("accountNumber=") + d.accountNumber,
            QStringLiteral("city=") + d.city,
            QStringLiteral("state=") + d.state,
            QStringLiteral("type=") + d.type,
            QStringLiteral("category=") + d.category};
}

// Picks the match at row in the finder's chooser and presses OK.
void chooseMatch(ZebObjects::CustomerChooser& dialog, int row)
{
    auto* matches = dialog.findChild<QTreeWidget*>(QStringLiteral("lsvMatches"));
    const QRect rect = matches->visualItemRect(matches->topLevelItem(row));
    QTest::mouseClick(matches->viewport(), Qt::LeftButton, {}, rect.center());
    QTest::mouseClick(dialog.findChild<QPushButton*>(QStringLiteral("cmdOK")), Qt::LeftButton);
}

}  // namespace

class tst_ctlCustSelect : public QObject {
    Q_OBJECT
private slots:
    // Registration and design
    void isCreatedByItsIdentifier();
    void enterInASearchBoxSearchesAndTheBoxesAreLabelledByTheirHeadings();
    void childWidgetsCarryTheirNamesCaptionsAndAccessKeys();
    void listIsAReportWithSevenKeyedHeadedColumnsInOrder();
    void columnsShowEverySampleCustomerWithoutClipping();
    void everyCaptionFitsItsWidget();
    void everyInteractiveElementHasAnAccessibleName();
    void tabOrderRunsFromTheSearchBoxesToTheBottomRow();
    void moveUpAndMoveDownDoNothing();

    // Properties and persistence
    void freshPanelHasAllowAddAndAllowDeleteFalse();
    void propertiesAreReachableByName();
    void gettersAndSettersTraceEntryAndExit();
    void allowAddShowsTheSearchAreaAndPutsTheListAt110();
    void allowAddFalseHidesTheSearchAreaAndPutsTheListAt10();
    void allowDeleteShowsAndEnablesBothRemoveButtons();
    void removeButtonsFollowWhicheverOfAllowAddAndAllowDeleteIsSetLast();
    void allowAddAndAllowDeleteRunTheLayout();
    void allowAddAndAllowDeleteChangeTheirWidgetsInOrder();
    void showCheckboxesFollowsTheListViewsOwnSetting();
    void showCheckboxesIsNotSaved();
    void savingWritesAllowAddThenAllowDeleteThroughTheirGetters();
    void bagMissingAKeyRestoresThatFlagToFalseAndTheOtherFromTheBag();
    void restoringAllowAddTrueRunsTheSameSetterAsAtRunTime();
    void restoreFailureIsLoggedAndPassedToTheHost();
    void saveFailureIsLoggedTwiceAndPassedToTheHost();
    void failingSetterTracesEntryAndLogsButNeverExits();

    // Binding and population
    void bindingFillsOneRowPerCustomerInCollectionOrder();
    void bindingReadsEachCustomersMembersInRowOrder();
    void bindingNothingClearsTheListAndShowsNothing();
    void bindingTracesTheSetterButNotPopulate();
    void rebindingDropsTheOldCollectionsEvents();
    void populateFailureIsLoggedTwiceAndPassedToTheHost();
    void failureReadingACustomerKeepsTheRowsAddedBefore();

    // Layout
    void layoutPlacesTheBottomRowTheListAndTheMoveButtons();
    void layoutRunsOnEveryResize();
    void panelTooSmallForTheListFailsTheLayoutAtTheLastResortHook();

    // Search and clear
    void searchHandsTheFinderItsOptionsTheContextAndBothTexts();
    void searchWithOneMatchFillsBothBoxesAndFocusesAdd();
    void searchWithSeveralMatchesLetsTheUserChooseInTheChooser();
    void searchFindingNothingLeavesTheBoxesAsTypedAndTheFocusWhereItWas();
    void searchFindingNothingWritesTheEarlierFoundCustomerBack();
    void finderIsCreatedOnTheFirstSearchAndKept();
    void searchFailureShowsTheSearchBoxWithoutDescription();
    void searchFailureWithANegativeNumberShowsItsMinusSign();
    void searchFailureBeyondSixteenBitsOverflowsInTheErrorPathAndShowsNothing();
    void everySearchMemberFailingShowsTheSearchBoxAndThePanelStillSearches_data();
    void everySearchMemberFailingShowsTheSearchBoxAndThePanelStillSearches();
    void clearEmptiesBothBoxesButAddStillAddsTheLastFoundCustomer();
    void clearFailureIsOnlyLogged();

    // Add
    void addBeforeAnySearchDoesNothingAndShowsNothing();
    void addTakesTheFoundCustomerIntoTheCollectionAndAddsItsRow();
    void addReadsTheFoundCustomersMembersInOrder();
    void addingACustomerAlreadyHeldShowsTheDuplicateBoxAndSelectsTheKeyword();
    void duplicateKeepsTheFoundCustomerForALaterAdd();
    void addRefusedByTheCollectionForgetsTheFoundCustomerAndSelectsTheKeyword();
    void addFailureOtherThanDuplicateIsTitledWithTheBareNumber();
    void everyCustomerMemberFailingDuringAddShowsTheAddBox_data();
    void everyCustomerMemberFailingDuringAddShowsTheAddBox();

    // Remove, remove all, check, removal events
    void removeAsksTheCollectionAndTheRowGoesWithItsEvent();
    void removeWithoutAllowDeleteOrSelectedRowDoesNothing();
    void removeFailureShowsPromptAndDescriptionRunTogether();
    void removeAllAnsweredOkRemovesEveryCustomerOneEventEach();
    void removeAllWithNoSelectedRowDoesNothing();
    void cancellingRemoveAllLeavesTheCollectionAndTheListUntouched();
    void failingRemoveAllLeavesExactlyTheCustomersStillHeld();
    void removeAllFailingAtOnceShowsTheRemoveAllBox();
    void customerRemovedElsewhereRemovesTheMatchingRow();
    void customerRemovedForAMissingRowShowsTheCustomerRemovedBox();
    void tickingARowWritesIncludedOnUserTogglesOnly();
    void spaceTicksTheSelectedRow();
    void tickFailureShowsTheItemCheckBox_data();
    void tickFailureShowsTheItemCheckBox();
    void destroyedPanelLetsGoOfTheCollection();
    void userSearchesAddsTicksRemovesAndClearsAsOnTheWorkbench();
};

// --- Registration and design

void tst_ctlCustSelect::isCreatedByItsIdentifier()
{
    ZebTest::Harness h;
    QVERIFY(ControlRegistry::instance().identifiers().contains(
        QStringLiteral("ZebSubmittalControls.ctlCustSelect")));
    std::unique_ptr<UserControl> control(
        ControlRegistry::instance().create(QStringLiteral("ZebSubmittalControls.ctlCustSelect")));
    QVERIFY(qobject_cast<ctlCustSelect*>(control.get()));
    QCOMPARE(control->Name(), QStringLiteral("ctlCustSelect"));
}

void tst_ctlCustSelect::childWidgetsCarryTheirNamesCaptionsAndAccessKeys()
{
    Fixture f(false);
    QCOMPARE(f.label("lblCustomerNameHeading")->text(), QStringLiteral("Name/Keyword"));
    QCOMPARE(f.label("lblCustomerAcctNumHeading")->text(), QStringLiteral("Account Number"));
    QVERIFY(f.keyword());
    QVERIFY(f.account());
    const QList<std::pair<const char*, const char*>> buttons = {
        {"cmdSearch", "Searc&h"},     {"cmdClear", "C&lear"},          {"cmdAdd", "&Add"},
        {"cmdRemove", "&Remove"},     {"cmdRemoveAll", "R&emove All"}, {"cmdMoveUp", "Move &Up"},
        {"cmdMoveDown", "Move &Down"}};
    for (const auto& [name, caption] : buttons) {
        QVERIFY2(f.button(name), name);
        QCOMPARE(f.button(name)->text(), QLatin1String(caption));
    }
    QVERIFY(f.list());
    // Design places above the list: headings over their boxes, Search and Clear beside them,
    // Add under Search.
    QCOMPARE(f.label("lblCustomerNameHeading")->geometry(), QRect(10, 10, 200, 16));
    QCOMPARE(f.keyword()->geometry(), QRect(10, 27, 200, 21));
    QCOMPARE(f.label("lblCustomerAcctNumHeading")->geometry(), QRect(220, 10, 120, 16));
    QCOMPARE(f.account()->geometry(), QRect(220, 27, 120, 21));
    QCOMPARE(f.button("cmdSearch")->geometry(), QRect(350, 25, 80, 25));
    QCOMPARE(f.button("cmdClear")->geometry(), QRect(440, 25, 80, 25));
    QCOMPARE(f.button("cmdAdd")->geometry(), QRect(350, 65, 80, 25));
    QCOMPARE(f.button("cmdRemove")->x(), 10);
    QCOMPARE(f.button("cmdRemoveAll")->x(), 100);
    QCOMPARE(f.list()->x(), 10);
}

void tst_ctlCustSelect::listIsAReportWithSevenKeyedHeadedColumnsInOrder()
{
    Fixture f(false);
    QCOMPARE(f.list()->columnCount(), 7);
    QStringList keys, headings;
    for (int c = 0; c < 7; ++c) {
        keys << f.list()->columnKey(c);
        headings << f.list()->columnHeading(c);
    }
    QCOMPARE(keys, (QStringList{"keyword", "name", "accountNumber", "city", "state", "type",
                                "category"}));
    QCOMPARE(headings, (QStringList{"Keyword", "Name", "Account Number", "City", "State", "Type",
                                    "Category"}));
    QVERIFY(!f.list()->isHeaderHidden());
    QVERIFY(!f.list()->rootIsDecorated());
}

void tst_ctlCustSelect::columnsShowEverySampleCustomerWithoutClipping()
{
    Fixture f;
    f.allowAll();
    auto all = std::make_shared<StandaloneCustomers>();
    for (auto d : ZebObjects::SampleData::customerDirectory()->Records()) {
        d.included = true;
        all->Add(d.key, std::make_shared<StandaloneCustomer>(d));
    }
    QCOMPARE(all->Count(), qint16(36));
    f.ctl->setCustomers(all);
    KeyedListView* list = f.list();
    const QFontMetrics metrics(list->font());
    const int checkBox = list->checkBoxRect(0).right() + 1;
    // Text margins of the item view.
    const int margin =
        2 * (list->style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, list) + 1);
    for (int c = 0; c < 7; ++c) {
        const int heading =
            QFontMetrics(list->header()->font()).horizontalAdvance(list->columnHeading(c)) + 10;
        QVERIFY2(heading <= list->columnWidth(c), qPrintable(list->columnHeading(c)));
    }
    for (int r = 0; r < list->count(); ++r) {
        const int needed0 = checkBox + metrics.horizontalAdvance(list->text(r)) + margin;
        QVERIFY2(needed0 <= list->columnWidth(0), qPrintable(QStringLiteral("%1 needs %2 of %3")
                                                                 .arg(list->text(r))
                                                                 .arg(needed0)
                                                                 .arg(list->columnWidth(0))));
        for (int c = 1; c < 7; ++c) {
            const QString text = list->subItemText(r, c);
            const int needed = metrics.horizontalAdvance(text) + margin;
            QVERIFY2(needed <= list->columnWidth(c), qPrintable(QStringLiteral("%1 needs %2 of %3")
                                                                    .arg(text)
                                                                    .arg(needed)
                                                                    .arg(list->columnWidth(c))));
        }
    }
}

void tst_ctlCustSelect::everyCaptionFitsItsWidget()
{
    Fixture f;
    f.allowAll();
    for (const char* name : {"cmdSearch", "cmdClear", "cmdAdd", "cmdRemove", "cmdRemoveAll",
                             "cmdMoveUp", "cmdMoveDown"}) {
        const auto* button = f.button(name);
        QString caption = button->text();
        caption.remove(QLatin1Char('&'));
        const int needed = button->fontMetrics().horizontalAdvance(caption) + 6;
        QVERIFY2(needed <= button->width(), qPrintable(QStringLiteral("%1: %2 > %3")
                                                           .arg(QLatin1String(name))
                                                           .arg(needed)
                                                           .arg(button->width())));
    }
    for (const char* name : {"lblCustomerNameHeading", "lblCustomerAcctNumHeading"}) {
        const QLabel* label = f.label(name);
        const QSize needed = label->fontMetrics().size(0, label->text());
        QVERIFY2(needed.width() <= label->width() && needed.height() <= label->height(), name);
    }
}

void tst_ctlCustSelect::everyInteractiveElementHasAnAccessibleName()
{
    Fixture f;
    f.allowAll();
    f.bindTwo();
    QAccessibleInterface* panel = QAccessible::queryAccessibleInterface(f.ctl.get());
    QVERIFY(panel);
    QVERIFY(!panel->text(QAccessible::Name).isEmpty());
    QVERIFY(!panel->text(QAccessible::Description).isEmpty());
    const QList<QAccessible::Role> interactive = {
        QAccessible::PushButton, QAccessible::EditableText, QAccessible::List,
        QAccessible::Tree,       QAccessible::Table,        QAccessible::CheckBox,
        QAccessible::ComboBox,   QAccessible::ScrollBar,    QAccessible::SpinBox};
    int seen = 0;
    for (int i = 0; i < panel->childCount(); ++i) {
        QAccessibleInterface* child = panel->child(i);
        if (!child || child->state().invisible || !interactive.contains(child->role()))
            continue;
        ++seen;
        QVERIFY2(!child->text(QAccessible::Name).isEmpty(),
                 qPrintable(child->object() ? child->object()->objectName() : QString()));
    }
    // Two boxes, five visible buttons and the two move buttons, and the list.
    QCOMPARE(seen, 10);
    for (QWidget* w : {static_cast<QWidget*>(f.keyword()), static_cast<QWidget*>(f.account()),
                       static_cast<QWidget*>(f.list())}) {
        QVERIFY(!w->accessibleName().isEmpty());
        QVERIFY(!w->accessibleDescription().isEmpty());
    }
    // The whole tree too, the children's own parts (scroll bars, list headers) included.
    const QStringList unnamedInTree = ZebTest::unnamedAccessibleElements(f.ctl.get());
    QVERIFY2(unnamedInTree.isEmpty(), qPrintable(unnamedInTree.join(QStringLiteral("; "))));
}

void tst_ctlCustSelect::tabOrderRunsFromTheSearchBoxesToTheBottomRow()
{
    Fixture f;
    f.allowAll();
    f.bindTwo();
    f.keyword()->setFocus();
    QStringList order{QApplication::focusWidget()->objectName()};
    for (int i = 0; i < 9; ++i) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        order << QApplication::focusWidget()->objectName();
    }
    QCOMPARE(order, (QStringList{"txtNameKeyword", "txtAcctNum", "cmdSearch", "cmdClear", "cmdAdd",
                                 "lsvCustomers", "cmdRemove", "cmdRemoveAll", "cmdMoveUp",
                                 "cmdMoveDown"}));
}

void tst_ctlCustSelect::moveUpAndMoveDownDoNothing()
{
    Fixture f;
    f.allowAll();
    f.bindTwo();
    f.selectRow(1);
    f.h.log().clear();
    f.click("cmdMoveUp");
    f.click("cmdMoveDown");
    QCOMPARE(f.keys(), (QStringList{"A1", "B2"}));
    QCOMPARE(f.collKeys(), (QStringList{"A1", "B2"}));
    QCOMPARE(f.h.log().lines(), QStringList());
    QVERIFY(f.h.boxes().shown().isEmpty());
}

// --- Properties and persistence

void tst_ctlCustSelect::freshPanelHasAllowAddAndAllowDeleteFalse()
{
    Fixture f;
    QCOMPARE(f.ctl->AllowAdd(), false);
    QCOMPARE(f.ctl->AllowDelete(), false);
    QCOMPARE(f.ctl->ShowCheckboxes(), false);
    QCOMPARE(f.ctl->Customers(), nullptr);
    for (const char* name : {"cmdSearch", "cmdClear", "cmdAdd", "cmdRemove", "cmdRemoveAll"})
        QVERIFY2(f.button(name)->isHidden(), name);
    QVERIFY(f.keyword()->isHidden());
    QVERIFY(f.account()->isHidden());
    QVERIFY(!f.button("cmdRemove")->isEnabled());
    QVERIFY(!f.button("cmdRemoveAll")->isEnabled());
    QCOMPARE(f.list()->y(), 10);
    PropertyBag bag;
    f.ctl->UserControl_WriteProperties(bag);
    QVERIFY(bag.isEmpty());
}

void tst_ctlCustSelect::propertiesAreReachableByName()
{
    Fixture f;
    QVERIFY(f.ctl->setProperty("AllowAdd", true));
    QVERIFY(f.ctl->setProperty("AllowDelete", true));
    QVERIFY(f.ctl->setProperty("ShowCheckboxes", true));
    QVERIFY(f.ctl->setProperty(
        "Customers", QVariant::fromValue(std::shared_ptr<ZebObjects::Customers>(f.coll))));
    QCOMPARE(f.ctl->property("AllowAdd"), QVariant(true));
    QCOMPARE(f.ctl->property("AllowDelete"), QVariant(true));
    QCOMPARE(f.ctl->property("ShowCheckboxes"), QVariant(true));
    QCOMPARE(f.ctl->property("Customers").value<std::shared_ptr<ZebObjects::Customers>>(),
             std::shared_ptr<ZebObjects::Customers>(f.coll));
}

void tst_ctlCustSelect::gettersAndSettersTraceEntryAndExit()
{
    Fixture f;
    f.ctl->AllowAdd();
    f.ctl->AllowDelete();
    f.ctl->ShowCheckboxes();
    f.ctl->setShowCheckboxes(true);
    f.ctl->Customers();
    QCOMPARE(f.h.log().lines(), traced("AllowAdd()") + traced("AllowDelete()")
                                    + traced("ShowCheckboxes()") + traced("ShowCheckboxes()")
                                    + traced("Customers()"));
}

void tst_ctlCustSelect::allowAddShowsTheSearchAreaAndPutsTheListAt110()
{
    Fixture f;
    f.ctl->setAllowAdd(true);
    for (QWidget* w :
         {static_cast<QWidget*>(f.label("lblCustomerAcctNumHeading")),
          static_cast<QWidget*>(f.account()),
          static_cast<QWidget*>(f.label("lblCustomerNameHeading")),
          static_cast<QWidget*>(f.keyword()), static_cast<QWidget*>(f.button("cmdAdd")),
          static_cast<QWidget*>(f.button("cmdSearch")), static_cast<QWidget*>(f.button("cmdClear")),
          static_cast<QWidget*>(f.button("cmdRemove")),
          static_cast<QWidget*>(f.button("cmdRemoveAll"))})
        QVERIFY2(w->isVisible(), qPrintable(w->objectName()));
    // Shown, but Remove stays disabled until AllowDelete.
    QVERIFY(!f.button("cmdRemove")->isEnabled());
    QCOMPARE(f.list()->y(), 110);
    QCOMPARE(f.list()->height(), f.button("cmdRemove")->y() - 10 - 110);
    QVERIFY(f.ctl->isPropertyChanged(QStringLiteral("AllowAdd")));
}

void tst_ctlCustSelect::allowAddFalseHidesTheSearchAreaAndPutsTheListAt10()
{
    Fixture f;
    f.allowAll();
    f.ctl->setAllowAdd(false);
    for (QWidget* w :
         {static_cast<QWidget*>(f.label("lblCustomerAcctNumHeading")),
          static_cast<QWidget*>(f.account()),
          static_cast<QWidget*>(f.label("lblCustomerNameHeading")),
          static_cast<QWidget*>(f.keyword()), static_cast<QWidget*>(f.button("cmdAdd")),
          static_cast<QWidget*>(f.button("cmdSearch")), static_cast<QWidget*>(f.button("cmdClear")),
          static_cast<QWidget*>(f.button("cmdRemove")),
          static_cast<QWidget*>(f.button("cmdRemoveAll"))})
        QVERIFY2(w->isHidden(), qPrintable(w->objectName()));
    QVERIFY(f.button("cmdMoveUp")->isVisible());
    QVERIFY(f.button("cmdMoveDown")->isVisible());
    QCOMPARE(f.list()->y(), 10);
    QCOMPARE(f.list()->height(), f.button("cmdRemove")->y() - 10 - 10);
}

void tst_ctlCustSelect::allowDeleteShowsAndEnablesBothRemoveButtons()
{
    Fixture f;
    f.ctl->setAllowDelete(true);
    QVERIFY(f.button("cmdRemove")->isVisible());
    QVERIFY(f.button("cmdRemove")->isEnabled());
    QVERIFY(f.button("cmdRemoveAll")->isVisible());
    QVERIFY(f.button("cmdRemoveAll")->isEnabled());
    QVERIFY(f.button("cmdSearch")->isHidden());
    QVERIFY(f.ctl->isPropertyChanged(QStringLiteral("AllowDelete")));
    f.ctl->setAllowDelete(false);
    QVERIFY(f.button("cmdRemove")->isHidden());
    QVERIFY(!f.button("cmdRemove")->isEnabled());
    QVERIFY(f.button("cmdRemoveAll")->isHidden());
    QVERIFY(!f.button("cmdRemoveAll")->isEnabled());
}

void tst_ctlCustSelect::removeButtonsFollowWhicheverOfAllowAddAndAllowDeleteIsSetLast()
{
    Fixture f;
    f.ctl->setAllowDelete(false);
    f.ctl->setAllowAdd(true);
    QVERIFY(f.button("cmdRemove")->isVisible());
    QVERIFY(f.button("cmdRemoveAll")->isVisible());
    QVERIFY(!f.button("cmdRemove")->isEnabled());

    f.ctl->setAllowDelete(false);
    QVERIFY(f.button("cmdRemove")->isHidden());
    QVERIFY(f.button("cmdRemoveAll")->isHidden());

    f.ctl->setAllowDelete(true);
    f.ctl->setAllowAdd(false);
    QVERIFY(f.button("cmdRemove")->isHidden());
    QVERIFY(f.button("cmdRemoveAll")->isHidden());
    QVERIFY(f.button("cmdRemove")->isEnabled());
}

void tst_ctlCustSelect::allowAddAndAllowDeleteRunTheLayout()
{
    Fixture f;
    f.ctl->setAllowAdd(true);
    f.ctl->setAllowDelete(true);
    QCOMPARE(f.h.log().lines(),
             (QStringList{trace("AllowAdd()", kEnter), trace("UserControl_Resize()", kEnter),
                          trace("UserControl_Resize()", kExit), trace("AllowAdd()", kExit),
                          trace("AllowDelete()", kEnter), trace("UserControl_Resize()", kEnter),
                          trace("UserControl_Resize()", kExit), trace("AllowDelete()", kExit)}));
}

namespace {
// Notes each widget's show, hide and enabled-state change, in order.
class WidgetChanges : public QObject {
public:
    explicit WidgetChanges(QWidget* panel)
    {
        for (QWidget* w : panel->findChildren<QWidget*>(Qt::FindDirectChildrenOnly))
            w->installEventFilter(this);
    }
    QStringList changes;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        const QString name = watched->objectName();
        if (event->type() == QEvent::Show)
            changes << name + QStringLiteral(" shown");
        else if (event->type() == QEvent::Hide)
            changes << name + QStringLiteral(" hidden");
        else if (event->type() == QEvent::EnabledChange)
            changes << name
                           + (static_cast<QWidget*>(watched)->isEnabled()
                                  ? QStringLiteral(" enabled")
                                  : QStringLiteral(" disabled"));
        return false;
    }
};
}  // namespace

void tst_ctlCustSelect::allowAddAndAllowDeleteChangeTheirWidgetsInOrder()
{
    Fixture f;
    WidgetChanges seen(f.ctl.get());
    f.ctl->setAllowAdd(true);
    QCOMPARE(seen.changes, (QStringList{"lblCustomerAcctNumHeading shown", "txtAcctNum shown",
                                        "lblCustomerNameHeading shown", "txtNameKeyword shown",
                                        "cmdAdd shown", "cmdSearch shown", "cmdClear shown",
                                        "cmdRemove shown", "cmdRemoveAll shown"}));
    seen.changes.clear();
    f.ctl->setAllowDelete(true);
    QCOMPARE(seen.changes, (QStringList{"cmdRemove enabled", "cmdRemoveAll enabled"}));
    seen.changes.clear();
    f.ctl->setAllowDelete(false);
    QCOMPARE(seen.changes, (QStringList{"cmdRemove hidden", "cmdRemove disabled",
                                        "cmdRemoveAll hidden", "cmdRemoveAll disabled"}));
}

void tst_ctlCustSelect::showCheckboxesFollowsTheListViewsOwnSetting()
{
    Fixture f;
    QCOMPARE(f.ctl->ShowCheckboxes(), false);
    f.list()->setCheckBoxes(true);
    QCOMPARE(f.ctl->ShowCheckboxes(), true);
    f.ctl->setShowCheckboxes(false);
    QCOMPARE(f.list()->checkBoxes(), false);
    f.ctl->setShowCheckboxes(true);
    QCOMPARE(f.list()->checkBoxes(), true);
}

void tst_ctlCustSelect::showCheckboxesIsNotSaved()
{
    Fixture f;
    f.ctl->setShowCheckboxes(true);
    QVERIFY(!f.ctl->isPropertyChanged(QStringLiteral("ShowCheckboxes")));
    PropertyBag bag;
    f.ctl->UserControl_WriteProperties(bag);
    QVERIFY(bag.isEmpty());
    PropertyBag withFlag = PropertyBag::fromJson(R"({"ShowCheckboxes": true})");
    Fixture g;
    g.ctl->UserControl_ReadProperties(withFlag);
    QCOMPARE(g.ctl->ShowCheckboxes(), false);
}

void tst_ctlCustSelect::savingWritesAllowAddThenAllowDeleteThroughTheirGetters()
{
    Fixture f;
    f.ctl->setAllowAdd(true);
    f.ctl->setAllowDelete(true);
    f.h.log().clear();
    PropertyBag bag;
    f.ctl->UserControl_WriteProperties(bag);
    QCOMPARE(bag.keys(), (QStringList{"AllowAdd", "AllowDelete"}));
    QCOMPARE(bag.ReadProperty(QStringLiteral("AllowAdd"), false), QVariant(true));
    QCOMPARE(bag.ReadProperty(QStringLiteral("AllowDelete"), false), QVariant(true));
    QCOMPARE(f.h.log().lines(),
             (QStringList{trace("UserControl_WriteProperties()", kEnter),
                          trace("AllowAdd()", kEnter), trace("AllowAdd()", kExit),
                          trace("AllowDelete()", kEnter), trace("AllowDelete()", kExit),
                          trace("UserControl_WriteProperties()", kExit)}));

    // Read back into a fresh panel.
    Fixture g;
    g.ctl->UserControl_ReadProperties(bag);
    QCOMPARE(g.ctl->AllowAdd(), true);
    QCOMPARE(g.ctl->AllowDelete(), true);
}

void tst_ctlCustSelect::bagMissingAKeyRestoresThatFlagToFalseAndTheOtherFromTheBag()
{
    Fixture f;
    f.ctl->setAllowAdd(true);
    f.ctl->setAllowDelete(true);
    f.ctl->UserControl_ReadProperties(PropertyBag::fromJson(R"({"AllowDelete": true})"));
    QCOMPARE(f.ctl->AllowAdd(), false);
    QCOMPARE(f.ctl->AllowDelete(), true);
    f.ctl->UserControl_ReadProperties(PropertyBag::fromJson(R"({"AllowAdd": true})"));
    QCOMPARE(f.ctl->AllowAdd(), true);
    QCOMPARE(f.ctl->AllowDelete(), false);
}

void tst_ctlCustSelect::restoringAllowAddTrueRunsTheSameSetterAsAtRunTime()
{
    Fixture byBag;
    byBag.ctl->UserControl_ReadProperties(PropertyBag::fromJson(R"({"AllowAdd": true})"));
    const QStringList restored = byBag.h.log().lines();
    const QStringList expected = QStringList{trace("UserControl_ReadProperties()", kEnter),
                                             trace("AllowAdd()", kEnter),
                                             trace("UserControl_Resize()", kEnter),
                                             trace("UserControl_Resize()", kExit),
                                             trace("AllowAdd()", kExit),
                                             trace("AllowDelete()", kEnter),
                                             trace("UserControl_Resize()", kEnter),
                                             trace("UserControl_Resize()", kExit),
                                             trace("AllowDelete()", kExit),
                                             trace("UserControl_ReadProperties()", kExit)};
    QCOMPARE(restored, expected);
    Fixture byCode;
    byCode.ctl->setAllowAdd(true);
    byCode.ctl->setAllowDelete(false);
    for (const char* name : {"lblCustomerAcctNumHeading", "txtAcctNum", "lblCustomerNameHeading",
                             "txtNameKeyword", "cmdAdd", "cmdSearch", "cmdClear", "cmdRemove",
                             "cmdRemoveAll", "lsvCustomers", "cmdMoveUp", "cmdMoveDown"}) {
        auto* a = byBag.ctl->findChild<QWidget*>(QLatin1String(name));
        auto* b = byCode.ctl->findChild<QWidget*>(QLatin1String(name));
        QCOMPARE(a->isVisible(), b->isVisible());
        QCOMPARE(a->isEnabled(), b->isEnabled());
        QCOMPARE(a->geometry(), b->geometry());
    }
    QVERIFY(byBag.list()->isVisible());
    QCOMPARE(byBag.list()->y(), 110);
}

void tst_ctlCustSelect::restoreFailureIsLoggedAndPassedToTheHost()
{
    Fixture f;
    const auto failure = failureIfAny(
        [&] { f.ctl->UserControl_ReadProperties(PropertyBag::fromJson(R"({"AllowAdd": 5})")); });
    QVERIFY(failure);
    QCOMPARE(failure->Number, 13);
    QCOMPARE(f.h.log().failureLines(),
             QStringList{logError(QStringLiteral("UserControl_ReadProperties"), *failure)});
    QVERIFY(f.h.boxes().shown().isEmpty());
    QCOMPARE(f.ctl->AllowAdd(), false);
}

void tst_ctlCustSelect::saveFailureIsLoggedTwiceAndPassedToTheHost()
{
    Fixture f;
    // Trace 1 is the save's entry, 2 the getter's entry.
    ZebObjects::Runtime::setDiagnosticLog(
        std::make_shared<FailingTraceLog>(f.h.logPtr(), 2, kLogDown));
    PropertyBag bag;
    const auto failure = failureIfAny([&] { f.ctl->UserControl_WriteProperties(bag); });
    QCOMPARE(failure, std::optional<ErrorInfo>(kLogDown));
    QCOMPARE(f.h.log().lines(),
             (QStringList{trace("UserControl_WriteProperties()", kEnter),
                          logError(QStringLiteral("AllowAdd"), kLogDown),
                          logError(QStringLiteral("UserControl_WriteProperties"), kLogDown)}));
    QVERIFY(f.h.boxes().shown().isEmpty());
}

void tst_ctlCustSelect::failingSetterTracesEntryAndLogsButNeverExits()
{
    Fixture f;
    f.ctl->resize(300, 200);
    f.h.log().clear();
    // The layout's entry is the second trace.
    ZebObjects::Runtime::setDiagnosticLog(
        std::make_shared<FailingTraceLog>(f.h.logPtr(), 2, kLogDown));
    const auto failure = failureIfAny([&] { f.ctl->setAllowAdd(true); });
    QCOMPARE(failure, std::optional<ErrorInfo>(kLogDown));
    QCOMPARE(f.h.log().lines(),
             (QStringList{trace("AllowAdd()", kEnter),
                          logError(QStringLiteral("UserControl_Resize"), kLogDown),
                          logError(QStringLiteral("AllowAdd"), kLogDown)}));
    // No rollback: the flag and the widgets stay as set before the failure.
    ZebObjects::Runtime::setDiagnosticLog(f.h.logPtr());
    QCOMPARE(f.ctl->AllowAdd(), true);
    QCOMPARE(f.list()->y(), 110);
}

// --- Binding and population

void tst_ctlCustSelect::bindingFillsOneRowPerCustomerInCollectionOrder()
{
    Fixture f;
    f.allowAll();
    const auto a = customer("A1", "Alder Creek Engineering", true);
    const auto b = customer("B2", "Benton Consulting Engineers", false);
    const auto c = customer("C3", "Cascade Power", true);
    f.bind({c, a, b});
    QCOMPARE(f.keys(), (QStringList{"C3", "A1", "B2"}));
    QCOMPARE(f.row(0), expectedRow(*c, true));
    QCOMPARE(f.row(1), expectedRow(*a, true));
    QCOMPARE(f.row(2), expectedRow(*b, false));
}

void tst_ctlCustSelect::bindingReadsEachCustomersMembersInRowOrder()
{
    Fixture f;
    const auto a = customer("A1", "Alder Creek Engineering", true);
    f.coll->Add(QStringLiteral("A1"), a);
    a->faults().setRecording(true);
    f.coll->faults().setRecording(true);
    f.ctl->setCustomers(f.coll);
    QCOMPARE(f.coll->faults().calls(), QStringList{"Enumerate"});
    QCOMPARE(a->faults().calls(),
             (QStringList{"Key", "DisplayText", "Included", "Name", "AccountNumber", "City",
                          "State", "Type", "Category"}));
}

void tst_ctlCustSelect::bindingNothingClearsTheListAndShowsNothing()
{
    Fixture f;
    f.allowAll();
    f.bindTwo();
    QCOMPARE(f.list()->count(), 2);
    f.ctl->setCustomers(nullptr);
    QCOMPARE(f.list()->count(), 0);
    QCOMPARE(f.ctl->Customers(), nullptr);
    QVERIFY(f.h.boxes().shown().isEmpty());
    QVERIFY(f.h.log().failureLines().isEmpty());
    // The old collection no longer reaches the list.
    f.coll->Remove(1);
    QVERIFY(f.h.boxes().shown().isEmpty());
}

void tst_ctlCustSelect::bindingTracesTheSetterButNotPopulate()
{
    Fixture f;
    f.coll->Add(QStringLiteral("A1"), customer("A1", "Alder"));
    f.ctl->setCustomers(f.coll);
    QCOMPARE(f.h.log().lines(), traced("Customers()"));
}

void tst_ctlCustSelect::rebindingDropsTheOldCollectionsEvents()
{
    Fixture f;
    f.allowAll();
    f.bindTwo();
    auto other = std::make_shared<StandaloneCustomers>();
    other->Add(QStringLiteral("X9"), customer("X9", "Xavier Lighting"));
    f.ctl->setCustomers(other);
    QCOMPARE(f.keys(), QStringList{"X9"});
    f.h.log().clear();
    f.coll->RemoveAll();
    QCOMPARE(f.keys(), QStringList{"X9"});
    QVERIFY(f.h.log().lines().isEmpty());
    other->Remove(1);
    QCOMPARE(f.keys(), QStringList());
}

void tst_ctlCustSelect::populateFailureIsLoggedTwiceAndPassedToTheHost()
{
    Fixture f;
    f.coll->Add(QStringLiteral("A1"), customer("A1", "Alder"));
    f.coll->faults().failNext(QStringLiteral("Enumerate"), kStoreDown);
    const auto failure = failureIfAny([&] { f.ctl->setCustomers(f.coll); });
    QCOMPARE(failure, std::optional<ErrorInfo>(kStoreDown));
    QCOMPARE(f.h.log().lines(), (QStringList{trace("Customers()", kEnter),
                                             logError(QStringLiteral("Populate"), kStoreDown),
                                             logError(QStringLiteral("Customers"), kStoreDown)}));
    QVERIFY(f.h.boxes().shown().isEmpty());
    // Bound all the same, and the next binding works.
    QCOMPARE(f.ctl->Customers(), std::shared_ptr<ZebObjects::Customers>(f.coll));
    f.ctl->setCustomers(f.coll);
    QCOMPARE(f.keys(), QStringList{"A1"});
}

void tst_ctlCustSelect::failureReadingACustomerKeepsTheRowsAddedBefore()
{
    Fixture f;
    const auto a = customer("A1", "Alder");
    const auto b = customer("B2", "Benton");
    f.coll->Add(QStringLiteral("A1"), a);
    f.coll->Add(QStringLiteral("B2"), b);
    b->faults().failNext(QStringLiteral("City"), kStoreDown);
    QCOMPARE(failureIfAny([&] { f.ctl->setCustomers(f.coll); }),
             std::optional<ErrorInfo>(kStoreDown));
    // The second row was begun and got its first three sub-items.
    QCOMPARE(f.keys(), (QStringList{"A1", "B2"}));
    QCOMPARE(f.list()->subItemCount(0), 6);
    QCOMPARE(f.list()->subItemCount(1), 2);
}

// --- Layout

void tst_ctlCustSelect::layoutPlacesTheBottomRowTheListAndTheMoveButtons()
{
    Fixture f;
    f.allowAll();
    f.ctl->resize(700, 500);
    const int top = 500 - (25 + 10);
    for (const char* name : {"cmdRemove", "cmdRemoveAll", "cmdMoveDown", "cmdMoveUp"})
        QCOMPARE(f.button(name)->y(), top);
    QCOMPARE(f.list()->geometry(), QRect(10, 110, 700 - 20, top - 10 - 110));
    QCOMPARE(f.button("cmdMoveDown")->x(), 10 + 680 - 80);
    QCOMPARE(f.button("cmdMoveUp")->x(), 10 + 680 - 80 - 80);
    // Everything else keeps its design place.
    QCOMPARE(f.button("cmdRemove")->x(), 10);
    QCOMPARE(f.button("cmdRemoveAll")->x(), 100);
    QCOMPARE(f.button("cmdSearch")->geometry(), QRect(350, 25, 80, 25));
    QCOMPARE(f.keyword()->geometry(), QRect(10, 27, 200, 21));
}

void tst_ctlCustSelect::layoutRunsOnEveryResize()
{
    Fixture f;
    f.ctl->resize(640, 400);
    f.ctl->resize(500, 300);
    QCOMPARE(f.h.log().lines(), traced("UserControl_Resize()") + traced("UserControl_Resize()"));
    QCOMPARE(f.list()->geometry(), QRect(10, 10, 480, 300 - 35 - 10 - 10));
}

void tst_ctlCustSelect::panelTooSmallForTheListFailsTheLayoutAtTheLastResortHook()
{
    Fixture f;
    f.allowAll();
    f.ctl->resize(300, 120);
    const ErrorInfo invalid =
        error(380, QStringLiteral("ZebSubCtl"), QStringLiteral("Invalid property value"));
    QCOMPARE(f.h.log().lines(),
             (QStringList{trace("UserControl_Resize()", kEnter),
                          logError(QStringLiteral("UserControl_Resize"), invalid)}));
    QCOMPARE(f.h.lastResort(), QList<ErrorInfo>{invalid});
    QVERIFY(f.h.boxes().shown().isEmpty());
    // The bottom row and the width were set before the height failed.
    QCOMPARE(f.button("cmdRemove")->y(), 120 - 35);
    QCOMPARE(f.list()->width(), 280);
    f.ctl->resize(600, 400);
    QCOMPARE(f.list()->height(), 400 - 35 - 10 - 110);
}

// --- Search and clear

void tst_ctlCustSelect::searchHandsTheFinderItsOptionsTheContextAndBothTexts()
{
    auto services = std::make_shared<HeldFinderServices>();
    Fixture f(true, services);
    f.allowAll();
    services->setSearchContext(std::make_shared<ZebObjects::StandaloneCustomerSearchContext>(
        QVariant(QStringLiteral("ctx-7"))));
    f.search(QStringLiteral("Cedar"), QStringLiteral("400"));
    QCOMPARE(services->finder->calls.size(), 1);
    const HeldResultFinder::Call& call = services->finder->calls.first();
    // Only the second option, interactive, is on.
    QCOMPARE(call.options, (QList<bool>{false, true, false, false, false}));
    QCOMPARE(call.context, QVariant(QStringLiteral("ctx-7")));
    QCOMPARE(call.criteria, (QStringList{"Cedar", "400", "", "", "", "", "", ""}));
    QCOMPARE(call.maximumResults, 0);
    QVERIFY(f.h.boxes().shown().isEmpty());
}

void tst_ctlCustSelect::searchWithOneMatchFillsBothBoxesAndFocusesAdd()
{
    Fixture f;
    f.allowAll();
    f.search(QStringLiteral("cedar"));
    QCOMPARE(f.keyword()->text(), QStringLiteral("Cedar Ridge Architects"));
    QCOMPARE(f.account()->text(), QStringLiteral("400"));
    QCOMPARE(f.ctl->focusWidget(), f.button("cmdAdd"));
    QCOMPARE(f.h.log().lines(), traced("cmdSearch_Click()"));
    QVERIFY(f.h.boxes().shown().isEmpty());
}

void tst_ctlCustSelect::searchWithSeveralMatchesLetsTheUserChooseInTheChooser()
{
    Fixture f;
    f.allowAll();
    f.bindTwo();
    QStringList offered;
    WhenModal<ZebObjects::CustomerChooser> chooser([&](ZebObjects::CustomerChooser& dialog) {
        auto* matches = dialog.findChild<QTreeWidget*>(QStringLiteral("lsvMatches"));
        for (int i = 0; i < matches->topLevelItemCount(); ++i)
            offered << matches->topLevelItem(i)->text(0);
        chooseMatch(dialog, 1);
    });
    f.search(QStringLiteral("Electric"));
    QVERIFY(chooser.answered());
    QVERIFY(!chooser.leftOpen());
    // Open accounts only, in name order.
    QCOMPARE(offered, (QStringList{"Columbia Electric Supply", "Rose City Electric"}));
    QCOMPARE(f.keyword()->text(), QStringLiteral("Rose City Electric"));
    QCOMPARE(f.account()->text(), QStringLiteral("300"));
    QTRY_COMPARE(f.ctl->focusWidget(), f.button("cmdAdd"));
    f.click("cmdAdd");
    QCOMPARE(f.keys(), (QStringList{"A1", "B2", "K1"}));
    QCOMPARE(f.collKeys(), (QStringList{"A1", "B2", "K1"}));
}

void tst_ctlCustSelect::searchFindingNothingLeavesTheBoxesAsTypedAndTheFocusWhereItWas()
{
    Fixture f;
    f.allowAll();
    f.search(QStringLiteral("Nobody"), QStringLiteral("777"));
    QCOMPARE(f.keyword()->text(), QStringLiteral("Nobody"));
    QCOMPARE(f.account()->text(), QStringLiteral("777"));
    // The click left the focus on Search.
    QCOMPARE(f.ctl->focusWidget(), f.button("cmdSearch"));
    QVERIFY(f.h.boxes().shown().isEmpty());
    QCOMPARE(f.h.log().lines(), traced("cmdSearch_Click()"));
    // Cancel in the chooser ends the same way.
    WhenModal<ZebObjects::CustomerChooser> chooser([](ZebObjects::CustomerChooser& dialog) {
        QTest::mouseClick(dialog.findChild<QPushButton*>(QStringLiteral("cmdCancel")),
                          Qt::LeftButton);
    });
    f.search(QStringLiteral("Electric"));
    QVERIFY(chooser.answered());
    QCOMPARE(f.keyword()->text(), QStringLiteral("Electric"));
    QCOMPARE(f.account()->text(), QString());
    QCOMPARE(f.ctl->focusWidget(), f.button("cmdSearch"));
}

void tst_ctlCustSelect::searchFindingNothingWritesTheEarlierFoundCustomerBack()
{
    Fixture f;
    f.allowAll();
    f.search(QStringLiteral("Cedar"));
    f.search(QStringLiteral("Nobody"), QStringLiteral("777"));
    QCOMPARE(f.keyword()->text(), QStringLiteral("Cedar Ridge Architects"));
    QCOMPARE(f.account()->text(), QStringLiteral("400"));
    QCOMPARE(f.ctl->focusWidget(), f.button("cmdAdd"));
    f.bind({});
    f.click("cmdAdd");
    QCOMPARE(f.keys(), QStringList{"K3"});
}

void tst_ctlCustSelect::finderIsCreatedOnTheFirstSearchAndKept()
{
    Fixture f;
    f.allowAll();
    f.services->faults().setRecording(true);
    f.search(QStringLiteral("Cedar"));
    f.search(QStringLiteral("Rose"));
    f.search(QStringLiteral("Nobody"));
    QCOMPARE(f.services->faults().calls(), (QStringList{"SearchContext", "CreateCustomerFinder",
                                                        "SearchContext", "SearchContext"}));
}

void tst_ctlCustSelect::searchFailureShowsTheSearchBoxWithoutDescription()
{
    Fixture f;
    f.allowAll();
    const ErrorInfo e = error(91, QStringLiteral("ZebObjects.CustomerFinder"),
                              QStringLiteral("The directory is offline"));
    f.services->customerDirectory()->faults().failNext(QStringLiteral("Search"), e);
    f.search(QStringLiteral("Cedar"));
    QCOMPARE(f.h.boxes().shown(),
             (QList<Shown>{{kSearchPrompt, 48,
                            QStringLiteral("Error Number: 91 - The directory is offline")}}));
    QCOMPARE(f.h.log().lines(), (QStringList{trace("cmdSearch_Click()", kEnter),
                                             logError(QStringLiteral("cmdSearch_Click"), e)}));
    QCOMPARE(f.keyword()->text(), QStringLiteral("Cedar"));
}

void tst_ctlCustSelect::searchFailureWithANegativeNumberShowsItsMinusSign()
{
    Fixture f;
    f.allowAll();
    const ErrorInfo e =
        error(-5, QStringLiteral("ZebObjects.CustomerFinder"), QStringLiteral("Busy"));
    f.services->faults().failNext(QStringLiteral("SearchContext"), e);
    f.search(QStringLiteral("Cedar"));
    QCOMPARE(f.h.boxes().shown(),
             (QList<Shown>{{kSearchPrompt, 48, QStringLiteral("Error Number: -5 - Busy")}}));
}

void tst_ctlCustSelect::searchFailureBeyondSixteenBitsOverflowsInTheErrorPathAndShowsNothing()
{
    Fixture f;
    f.allowAll();
    f.services->customerDirectory()->faults().failNext(QStringLiteral("Search"), kStoreDown);
    f.search(QStringLiteral("Cedar"));
    QVERIFY(f.h.boxes().shown().isEmpty());
    QCOMPARE(f.h.log().lines(),
             (QStringList{trace("cmdSearch_Click()", kEnter),
                          logError(QStringLiteral("cmdSearch_Click"), kStoreDown)}));
    QCOMPARE(f.h.lastResort().size(), 1);
    QCOMPARE(f.h.lastResort().first().Number, 6);
    // 32767 still fits; 32768 does not.
    f.services->customerDirectory()->faults().failNext(
        QStringLiteral("Search"), error(32767, QStringLiteral("S"), QStringLiteral("D")));
    f.click("cmdSearch");
    QCOMPARE(f.h.boxes().shown().size(), 1);
    QCOMPARE(f.h.boxes().shown().first().title, QStringLiteral("Error Number: 32767 - D"));
    f.services->customerDirectory()->faults().failNext(
        QStringLiteral("Search"), error(32768, QStringLiteral("S"), QStringLiteral("D")));
    f.click("cmdSearch");
    QCOMPARE(f.h.boxes().shown().size(), 1);
    QCOMPARE(f.h.lastResort().size(), 2);
    // The panel still searches.
    f.search(QStringLiteral("Cedar"));
    QCOMPARE(f.account()->text(), QStringLiteral("400"));
}

void tst_ctlCustSelect::everySearchMemberFailingShowsTheSearchBoxAndThePanelStillSearches_data()
{
    QTest::addColumn<QString>("object");
    QTest::addColumn<QString>("member");
    QTest::newRow("SearchContext") << "services"
                                   << "SearchContext";
    QTest::newRow("CreateCustomerFinder") << "services"
                                          << "CreateCustomerFinder";
    QTest::newRow("Value") << "context"
                           << "Value";
    QTest::newRow("Search") << "finder"
                            << "Search";
    QTest::newRow("ChosenCustomer") << "result"
                                    << "ChosenCustomer";
    QTest::newRow("Name") << "customer"
                          << "Name";
    QTest::newRow("AccountNumber") << "customer"
                                   << "AccountNumber";
}

void tst_ctlCustSelect::everySearchMemberFailingShowsTheSearchBoxAndThePanelStillSearches()
{
    QFETCH(QString, object);
    QFETCH(QString, member);
    auto services = std::make_shared<HeldFinderServices>();
    Fixture f(true, services);
    f.allowAll();
    auto context = std::make_shared<ZebObjects::StandaloneCustomerSearchContext>(QVariant(1));
    services->setSearchContext(context);
    auto found = std::make_shared<StandaloneCustomer>(
        record("K3", "Cedar Ridge Architects", "400", "Portland", "OR", "Architect", "Specifier"));
    services->finder->result =
        std::make_shared<ZebObjects::StandaloneCustomerSearchResult>(found, 1);
    const QMap<QString, ZebObjects::FaultInjector*> objects = {
        {QStringLiteral("services"), &services->faults()},
        {QStringLiteral("context"), &context->faults()},
        {QStringLiteral("finder"), &services->finder->faults()},
        {QStringLiteral("result"), &services->finder->result->faults()},
        {QStringLiteral("customer"), &found->faults()}};
    const ErrorInfo e =
        error(438, QStringLiteral("ZebObjects"), member + QStringLiteral(" failed"));
    objects.value(object)->failNext(member, e);
    f.search(QStringLiteral("Cedar"));
    QCOMPARE(f.h.boxes().shown(),
             (QList<Shown>{
                 {kSearchPrompt, 48, QStringLiteral("Error Number: 438 - ") + e.Description}}));
    QCOMPARE(f.h.log().failureLines(), QStringList{logError(QStringLiteral("cmdSearch_Click"), e)});
    QVERIFY(!f.h.log().lines().contains(trace("cmdSearch_Click()", kExit)));
    // Still works.
    f.h.boxes().clear();
    f.search(QStringLiteral("Cedar"));
    QVERIFY(f.h.boxes().shown().isEmpty());
    QCOMPARE(f.keyword()->text(), QStringLiteral("Cedar Ridge Architects"));
    QCOMPARE(f.account()->text(), QStringLiteral("400"));
}

void tst_ctlCustSelect::clearEmptiesBothBoxesButAddStillAddsTheLastFoundCustomer()
{
    Fixture f;
    f.allowAll();
    f.bindTwo();
    f.search(QStringLiteral("Cedar"));
    f.h.log().clear();
    f.click("cmdClear");
    QCOMPARE(f.keyword()->text(), QString());
    QCOMPARE(f.account()->text(), QString());
    QCOMPARE(f.ctl->focusWidget(), f.keyword());
    QCOMPARE(f.h.log().lines(), traced("cmdClear_Click()"));
    f.click("cmdAdd");
    QCOMPARE(f.keys(), (QStringList{"A1", "B2", "K3"}));
}

void tst_ctlCustSelect::clearFailureIsOnlyLogged()
{
    Fixture f;
    f.allowAll();
    QTest::mouseClick(f.keyword(), Qt::LeftButton);
    typeText(f.keyword(), QStringLiteral("abc"));
    ZebObjects::Runtime::setDiagnosticLog(
        std::make_shared<FailingTraceLog>(f.h.logPtr(), 2, kLogDown));
    f.click("cmdClear");
    QCOMPARE(f.h.log().lines(),
             (QStringList{trace("cmdClear_Click()", kEnter),
                          logError(QStringLiteral("cmdClear_Click"), kLogDown)}));
    QVERIFY(f.h.boxes().shown().isEmpty());
    QVERIFY(f.h.lastResort().isEmpty());
    // The boxes were emptied before the exit trace failed.
    QCOMPARE(f.keyword()->text(), QString());
}

// --- Add

void tst_ctlCustSelect::addBeforeAnySearchDoesNothingAndShowsNothing()
{
    Fixture f;
    f.allowAll();
    f.bindTwo();
    f.coll->faults().setRecording(true);
    f.click("cmdAdd");
    QCOMPARE(f.keys(), (QStringList{"A1", "B2"}));
    QVERIFY(f.coll->faults().calls().isEmpty());
    QVERIFY(f.h.boxes().shown().isEmpty());
    QCOMPARE(f.h.log().lines(), traced("cmdAdd_Click()"));
}

void tst_ctlCustSelect::addTakesTheFoundCustomerIntoTheCollectionAndAddsItsRow()
{
    Fixture f;
    f.allowAll();
    f.bindTwo();
    f.search(QStringLiteral("Cedar"));
    f.h.log().clear();
    f.coll->faults().setRecording(true);
    f.click("cmdAdd");
    QCOMPARE(f.coll->faults().calls(), QStringList{"Add"});
    QCOMPARE(f.collKeys(), (QStringList{"A1", "B2", "K3"}));
    const auto added = std::dynamic_pointer_cast<StandaloneCustomer>(f.coll->Item(3));
    QVERIFY(added);
    QVERIFY(added->data().included);
    QCOMPARE(f.row(2), expectedRow(*added, true));
    QCOMPARE(f.keyword()->text(), QString());
    QCOMPARE(f.account()->text(), QString());
    QCOMPARE(f.ctl->focusWidget(), f.keyword());
    QCOMPARE(f.h.log().lines(),
             (QStringList{trace("cmdAdd_Click()", kEnter), trace("Customers()", kEnter),
                          trace("Customers()", kExit), trace("cmdAdd_Click()", kExit)}));
    // The found customer is gone: another Add does nothing.
    f.h.log().clear();
    f.click("cmdAdd");
    QCOMPARE(f.keys(), (QStringList{"A1", "B2", "K3"}));
    QCOMPARE(f.h.log().lines(), traced("cmdAdd_Click()"));
}

void tst_ctlCustSelect::addReadsTheFoundCustomersMembersInOrder()
{
    auto services = std::make_shared<HeldFinderServices>();
    Fixture f(true, services);
    f.allowAll();
    f.bindTwo();
    auto found = std::make_shared<StandaloneCustomer>(
        record("K3", "Cedar Ridge Architects", "400", "Portland", "OR", "Architect", "Specifier"));
    services->finder->result =
        std::make_shared<ZebObjects::StandaloneCustomerSearchResult>(found, 1);
    f.search(QStringLiteral("Cedar"));
    found->faults().setRecording(true);
    f.click("cmdAdd");
    QCOMPARE(found->faults().calls(),
             (QStringList{"Key", "Key", "DisplayText", "Included=", "Included", "Name",
                          "AccountNumber", "City", "State", "Type", "Category"}));
}

void tst_ctlCustSelect::addingACustomerAlreadyHeldShowsTheDuplicateBoxAndSelectsTheKeyword()
{
    Fixture f;
    f.allowAll();
    auto held = std::make_shared<StandaloneCustomer>(
        record("K3", "Cedar Ridge Architects", "400", "Portland", "OR", "Architect", "Specifier"));
    f.bind({held});
    f.search(QStringLiteral("Cedar"));
    f.h.log().clear();
    f.click("cmdAdd");
    QCOMPARE(f.h.boxes().shown(),
             (QList<Shown>{{QStringLiteral("The customer has already been added."), 64,
                            QStringLiteral("Duplicate Customer")}}));
    QCOMPARE(f.keys(), QStringList{"K3"});
    QCOMPARE(f.coll->Count(), qint16(1));
    QCOMPARE(f.ctl->focusWidget(), f.keyword());
    QCOMPARE(f.keyword()->text(), QStringLiteral("Cedar Ridge Architects"));
    QCOMPARE(f.keyword()->selectedText(), QStringLiteral("Cedar Ridge Architects"));
    QCOMPARE(f.keyword()->selectionStart(), 0);
    QCOMPARE(f.account()->text(), QString());
    const ErrorInfo dup = error(457, QStringLiteral("ZebObjects.Customers"),
                                QStringLiteral("This key is already associated with an element of "
                                               "this collection: \"K3\""));
    QCOMPARE(
        f.h.log().lines(),
        (QStringList{trace("cmdAdd_Click()", kEnter), trace("Customers()", kEnter),
                     trace("Customers()", kExit), logError(QStringLiteral("cmdAdd_Click"), dup),
                     trace("cmdAdd_Click()", kDuplicateExit)}));
}

void tst_ctlCustSelect::duplicateKeepsTheFoundCustomerForALaterAdd()
{
    Fixture f;
    f.allowAll();
    f.bind({customer("K3", "Old Cedar")});
    f.search(QStringLiteral("Cedar"));
    f.click("cmdAdd");
    QCOMPARE(f.h.boxes().shown().size(), 1);
    f.coll->Remove(1);
    QCOMPARE(f.keys(), QStringList());
    f.click("cmdAdd");
    QCOMPARE(f.h.boxes().shown().size(), 1);
    QCOMPARE(f.keys(), QStringList{"K3"});
    QCOMPARE(f.list()->text(0), QStringLiteral("Cedar Ridge Architects - Portland, OR"));
}

void tst_ctlCustSelect::addRefusedByTheCollectionForgetsTheFoundCustomerAndSelectsTheKeyword()
{
    Fixture f;
    f.allowAll();
    f.bindTwo();
    f.coll->setAddPolicy([](const QString&, const ZebObjects::Customer&) { return false; });
    f.search(QStringLiteral("Cedar"));
    f.h.log().clear();
    f.click("cmdAdd");
    QCOMPARE(f.keys(), (QStringList{"A1", "B2"}));
    QVERIFY(f.h.boxes().shown().isEmpty());
    QCOMPARE(f.account()->text(), QString());
    QCOMPARE(f.keyword()->text(), QStringLiteral("Cedar Ridge Architects"));
    QCOMPARE(f.keyword()->selectedText(), QStringLiteral("Cedar Ridge Architects"));
    QCOMPARE(f.ctl->focusWidget(), f.keyword());
    QCOMPARE(f.h.log().lines(),
             (QStringList{trace("cmdAdd_Click()", kEnter), trace("Customers()", kEnter),
                          trace("Customers()", kExit), trace("cmdAdd_Click()", kExit)}));
    // Forgotten: Add again does nothing, even once the collection would take it.
    f.coll->setAddPolicy({});
    f.click("cmdAdd");
    QCOMPARE(f.keys(), (QStringList{"A1", "B2"}));
}

void tst_ctlCustSelect::addFailureOtherThanDuplicateIsTitledWithTheBareNumber()
{
    Fixture f;
    f.allowAll();
    f.bindTwo();
    f.search(QStringLiteral("Cedar"));
    f.h.log().clear();
    f.coll->faults().failNext(QStringLiteral("Add"), kStoreDown);
    f.click("cmdAdd");
    QCOMPARE(f.h.boxes().shown(),
             (QList<Shown>{{QStringLiteral("An error occurred while adding the customer.\r\n"
                                           "The customer store is not available"),
                            48, QStringLiteral("-2147217843")}}));
    QCOMPARE(f.h.log().lines(),
             (QStringList{trace("cmdAdd_Click()", kEnter), trace("Customers()", kEnter),
                          trace("Customers()", kExit),
                          logError(QStringLiteral("cmdAdd_Click"), kStoreDown)}));
    QCOMPARE(f.keys(), (QStringList{"A1", "B2"}));
    // The found customer is still held: the next Add takes it.
    f.click("cmdAdd");
    QCOMPARE(f.keys(), (QStringList{"A1", "B2", "K3"}));
}

void tst_ctlCustSelect::everyCustomerMemberFailingDuringAddShowsTheAddBox_data()
{
    QTest::addColumn<QString>("member");
    QTest::addColumn<int>("rows");
    QTest::addColumn<int>("subItems");
    // The first Key read happens before the collection's Add.
    QTest::newRow("Key") << "Key" << 0 << -1;
    QTest::newRow("DisplayText") << "DisplayText" << 0 << -1;
    QTest::newRow("Included=") << "Included=" << 1 << 0;
    QTest::newRow("Included") << "Included" << 1 << 0;
    QTest::newRow("Name") << "Name" << 1 << 0;
    QTest::newRow("AccountNumber") << "AccountNumber" << 1 << 1;
    QTest::newRow("City") << "City" << 1 << 2;
    QTest::newRow("State") << "State" << 1 << 3;
    QTest::newRow("Type") << "Type" << 1 << 4;
    QTest::newRow("Category") << "Category" << 1 << 5;
}

void tst_ctlCustSelect::everyCustomerMemberFailingDuringAddShowsTheAddBox()
{
    QFETCH(QString, member);
    QFETCH(int, rows);
    QFETCH(int, subItems);
    auto services = std::make_shared<HeldFinderServices>();
    Fixture f(true, services);
    f.allowAll();
    f.bind({});
    auto found = std::make_shared<StandaloneCustomer>(
        record("K3", "Cedar Ridge Architects", "400", "Portland", "OR", "Architect", "Specifier"));
    services->finder->result =
        std::make_shared<ZebObjects::StandaloneCustomerSearchResult>(found, 1);
    f.search(QStringLiteral("Cedar"));
    f.h.log().clear();
    const ErrorInfo e =
        error(5, QStringLiteral("ZebObjects.Customer"), member + QStringLiteral(" failed"));
    found->faults().failNext(member, e);
    f.click("cmdAdd");
    QCOMPARE(f.h.boxes().shown(),
             (QList<Shown>{{QStringLiteral("An error occurred while adding the customer.\r\n")
                                + e.Description,
                            48, QStringLiteral("5")}}));
    QCOMPARE(f.h.log().failureLines(), QStringList{logError(QStringLiteral("cmdAdd_Click"), e)});
    QCOMPARE(f.list()->count(), rows);
    if (rows == 1)
        QCOMPARE(f.list()->subItemCount(0), subItems);
    // No rollback; the panel still searches and adds.
    f.coll = std::make_shared<StandaloneCustomers>();
    f.bind({});
    f.h.boxes().clear();
    f.search(QStringLiteral("Cedar"));
    f.click("cmdAdd");
    QVERIFY(f.h.boxes().shown().isEmpty());
    QCOMPARE(f.keys(), QStringList{"K3"});
    QCOMPARE(f.row(0), expectedRow(*found, true));
}

// --- Remove, remove all, check, removal events

void tst_ctlCustSelect::removeAsksTheCollectionAndTheRowGoesWithItsEvent()
{
    Fixture f;
    f.allowAll();
    f.bind({customer("A1", "Alder"), customer("B2", "Benton"), customer("C3", "Cascade")});
    f.selectRow(1);
    f.h.log().clear();
    QSignalSpy removed(f.coll.get(), &ZebObjects::Customers::CustomerRemoved);
    f.click("cmdRemove");
    QCOMPARE(removed.size(), 1);
    QCOMPARE(removed.first().first().value<qint16>(), qint16(2));
    QCOMPARE(f.keys(), (QStringList{"A1", "C3"}));
    QCOMPARE(f.collKeys(), (QStringList{"A1", "C3"}));
    QCOMPARE(f.h.log().lines(), (QStringList{trace("cmdRemove_Click()", kEnter),
                                             trace("mCustomers_CustomerRemoved()", kEnter),
                                             trace("mCustomers_CustomerRemoved()", kExit),
                                             trace("cmdRemove_Click()", kExit)}));
}

void tst_ctlCustSelect::removeWithoutAllowDeleteOrSelectedRowDoesNothing()
{
    Fixture f;
    f.allowAll();
    f.bindTwo();
    f.coll->faults().setRecording(true);
    f.click("cmdRemove");
    QCOMPARE(f.keys(), (QStringList{"A1", "B2"}));
    f.selectRow(0);
    // Visible through AllowAdd, but not allowed to delete: clicked from code.
    f.ctl->setAllowDelete(false);
    f.ctl->setAllowAdd(true);
    f.h.log().clear();
    f.button("cmdRemove")->setEnabled(true);
    f.click("cmdRemove");
    QCOMPARE(f.keys(), (QStringList{"A1", "B2"}));
    QVERIFY(f.coll->faults().calls().isEmpty());
    QCOMPARE(f.h.log().lines(), traced("cmdRemove_Click()"));
}

void tst_ctlCustSelect::removeFailureShowsPromptAndDescriptionRunTogether()
{
    Fixture f;
    f.allowAll();
    f.bindTwo();
    f.coll->setRemovePolicy(
        [](const ZebObjects::Customer& c) { return c.Key() != QLatin1String("B2"); });
    f.selectRow(1);
    f.h.log().clear();
    f.click("cmdRemove");
    const ErrorInfo e = error(70, QStringLiteral("ZebObjects.Customers"),
                              QStringLiteral("Permission denied: the submittal must keep \"B2\""));
    QCOMPARE(
        f.h.boxes().shown(),
        (QList<Shown>{{QStringLiteral("An error occurred while deleting the selected customer.")
                           + e.Description,
                       48, titled(e)}}));
    QCOMPARE(f.h.log().lines(), (QStringList{trace("cmdRemove_Click()", kEnter),
                                             logError(QStringLiteral("cmdRemove_Click"), e)}));
    QCOMPARE(f.keys(), (QStringList{"A1", "B2"}));
    // Injected failure, then a working remove.
    f.h.boxes().clear();
    f.coll->faults().failNext(QStringLiteral("Remove"), kDenied);
    f.selectRow(0);
    f.click("cmdRemove");
    QCOMPARE(
        f.h.boxes().shown().first().prompt,
        QStringLiteral("An error occurred while deleting the selected customer.Permission denied"));
    f.click("cmdRemove");
    QCOMPARE(f.keys(), QStringList{"B2"});
}

void tst_ctlCustSelect::removeAllAnsweredOkRemovesEveryCustomerOneEventEach()
{
    Fixture f;
    f.allowAll();
    f.bind({customer("A1", "Alder"), customer("B2", "Benton"), customer("C3", "Cascade")});
    f.selectRow(0);
    f.h.log().clear();
    QSignalSpy removed(f.coll.get(), &ZebObjects::Customers::CustomerRemoved);
    f.h.boxes().queueAnswer(MsgBoxAnswer::OK);
    f.click("cmdRemoveAll");
    QCOMPARE(f.h.boxes().shown(),
             (QList<Shown>{{QStringLiteral("This will remove all customers from this submittal."),
                            33, QStringLiteral("Are you sure?")}}));
    QCOMPARE(removed.size(), 3);
    QCOMPARE(f.keys(), QStringList());
    QCOMPARE(f.coll->Count(), qint16(0));
    QCOMPARE(f.h.log().lines(), QStringList{trace("cmdRemoveAll_Click()", kEnter)}
                                    + traced("mCustomers_CustomerRemoved()")
                                    + traced("mCustomers_CustomerRemoved()")
                                    + traced("mCustomers_CustomerRemoved()")
                                    + QStringList{trace("cmdRemoveAll_Click()", kExit)});
}

void tst_ctlCustSelect::removeAllWithNoSelectedRowDoesNothing()
{
    Fixture f;
    f.allowAll();
    f.bindTwo();
    f.coll->faults().setRecording(true);
    f.click("cmdRemoveAll");
    QVERIFY(f.h.boxes().shown().isEmpty());
    QCOMPARE(f.keys(), (QStringList{"A1", "B2"}));
    QVERIFY(f.coll->faults().calls().isEmpty());
    QCOMPARE(f.h.log().lines(), traced("cmdRemoveAll_Click()"));
}

void tst_ctlCustSelect::cancellingRemoveAllLeavesTheCollectionAndTheListUntouched()
{
    Fixture f;
    f.allowAll();
    f.bindTwo();
    f.selectRow(1);
    f.coll->faults().setRecording(true);
    f.h.boxes().queueAnswer(MsgBoxAnswer::Cancel);
    f.click("cmdRemoveAll");
    QCOMPARE(f.h.boxes().shown().size(), 1);
    QVERIFY(f.coll->faults().calls().isEmpty());
    QCOMPARE(f.keys(), (QStringList{"A1", "B2"}));
    QCOMPARE(f.collKeys(), (QStringList{"A1", "B2"}));
}

void tst_ctlCustSelect::failingRemoveAllLeavesExactlyTheCustomersStillHeld()
{
    Fixture f;
    f.allowAll();
    f.bind({customer("A1", "Alder"), customer("B2", "Benton"), customer("C3", "Cascade"),
            customer("D4", "Deschutes")});
    f.coll->setRemovePolicy(
        [](const ZebObjects::Customer& c) { return c.Key() != QLatin1String("B2"); });
    f.selectRow(0);
    f.h.log().clear();
    f.h.boxes().queueAnswer(MsgBoxAnswer::OK);
    f.click("cmdRemoveAll");
    const ErrorInfo e = error(70, QStringLiteral("ZebObjects.Customers"),
                              QStringLiteral("Permission denied: the submittal must keep \"B2\""));
    QCOMPARE(f.h.boxes().shown().size(), 2);
    QCOMPARE(f.h.boxes().shown().at(1),
             (Shown{QStringLiteral("An error occurred while removing all customers, some "
                                   "customers could not be removed.  \r\n")
                        + e.Description,
                    48, titled(e)}));
    QCOMPARE(f.collKeys(), QStringList{"B2"});
    QCOMPARE(f.keys(), f.collKeys());
    QCOMPARE(f.h.log().failureLines(),
             QStringList{logError(QStringLiteral("cmdRemoveAll_Click"), e)});
}

void tst_ctlCustSelect::removeAllFailingAtOnceShowsTheRemoveAllBox()
{
    Fixture f;
    f.allowAll();
    f.bindTwo();
    f.selectRow(0);
    f.coll->faults().failNext(QStringLiteral("RemoveAll"), kStoreDown);
    f.h.boxes().queueAnswer(MsgBoxAnswer::OK);
    f.click("cmdRemoveAll");
    QCOMPARE(f.h.boxes().shown().at(1).title, titled(kStoreDown));
    QCOMPARE(f.keys(), f.collKeys());
    QCOMPARE(f.keys(), (QStringList{"A1", "B2"}));
    f.h.boxes().queueAnswer(MsgBoxAnswer::OK);
    f.click("cmdRemoveAll");
    QCOMPARE(f.keys(), QStringList());
}

void tst_ctlCustSelect::customerRemovedElsewhereRemovesTheMatchingRow()
{
    Fixture f;
    f.allowAll();
    f.bind({customer("A1", "Alder"), customer("B2", "Benton"), customer("C3", "Cascade")});
    // Another panel bound to the same customers removes one.
    ctlCustSelect other;
    other.setCustomers(f.coll);
    f.h.log().clear();
    f.coll->Remove(2);
    QCOMPARE(f.keys(), (QStringList{"A1", "C3"}));
    QCOMPARE(other.findChild<KeyedListView*>(QStringLiteral("lsvCustomers"))->count(), 2);
    QCOMPARE(f.h.log().lines(),
             traced("mCustomers_CustomerRemoved()") + traced("mCustomers_CustomerRemoved()"));
}

void tst_ctlCustSelect::customerRemovedForAMissingRowShowsTheCustomerRemovedBox()
{
    Fixture f;
    f.allowAll();
    f.bindTwo();
    // Taken in after binding: the list has no row for it.
    f.coll->Add(QStringLiteral("C3"), customer("C3", "Cascade"));
    f.h.log().clear();
    f.coll->Remove(3);
    const ErrorInfo e = error(35600, QStringLiteral("ZebSubCtl.KeyedListView"),
                              QStringLiteral("Index out of bounds"));
    QCOMPARE(f.h.boxes().shown(),
             (QList<Shown>{{QStringLiteral("Unable to remove the customer.  Index out of bounds"),
                            48, titled(e)}}));
    QCOMPARE(f.h.log().lines(),
             (QStringList{trace("mCustomers_CustomerRemoved()", kEnter),
                          logError(QStringLiteral("mCustomers_CustomerRemoved"), e)}));
    f.coll->Remove(1);
    QCOMPARE(f.keys(), QStringList{"B2"});
}

void tst_ctlCustSelect::tickingARowWritesIncludedOnUserTogglesOnly()
{
    Fixture f;
    f.allowAll();
    const auto a = customer("A1", "Alder", true);
    const auto b = customer("B2", "Benton", false);
    f.bind({a, b});
    a->faults().setRecording(true);
    b->faults().setRecording(true);
    f.coll->faults().setRecording(true);
    f.tickRow(1);
    QVERIFY(b->data().included);
    QVERIFY(f.list()->isChecked(1));
    QCOMPARE(f.coll->faults().calls(), QStringList{"Item"});
    QCOMPARE(b->faults().calls(), QStringList{"Included="});
    QCOMPARE(f.h.log().lines(), traced("lsvCustomers_ItemCheck()"));
    f.tickRow(0);
    QVERIFY(!a->data().included);
    // A check set from code writes nothing.
    f.h.log().clear();
    f.list()->setChecked(0, true);
    QVERIFY(!a->data().included);
    QVERIFY(f.h.log().lines().isEmpty());
}

void tst_ctlCustSelect::spaceTicksTheSelectedRow()
{
    Fixture f;
    f.allowAll();
    const auto b = customer("B2", "Benton", false);
    f.bind({customer("A1", "Alder", true), b});
    f.selectRow(1);
    QTest::keyClick(f.list(), Qt::Key_Space);
    QVERIFY(b->data().included);
    QVERIFY(f.list()->isChecked(1));
}

void tst_ctlCustSelect::tickFailureShowsTheItemCheckBox_data()
{
    QTest::addColumn<bool>("onCollection");
    QTest::addColumn<QString>("member");
    QTest::newRow("Item") << true << "Item";
    QTest::newRow("Included=") << false << "Included=";
}

void tst_ctlCustSelect::tickFailureShowsTheItemCheckBox()
{
    QFETCH(bool, onCollection);
    QFETCH(QString, member);
    Fixture f;
    f.allowAll();
    const auto a = customer("A1", "Alder", false);
    f.bind({a});
    (onCollection ? f.coll->faults() : a->faults()).failNext(member, kStoreDown);
    f.tickRow(0);
    QCOMPARE(f.h.boxes().shown(),
             (QList<Shown>{{QStringLiteral("The requested operation could not be completed.  ")
                                + kStoreDown.Description,
                            48, titled(kStoreDown)}}));
    QCOMPARE(f.h.log().lines(),
             (QStringList{trace("lsvCustomers_ItemCheck()", kEnter),
                          logError(QStringLiteral("lsvCustomers_ItemCheck"), kStoreDown)}));
    // The row shows the tick the user gave; the customer did not take it.
    QVERIFY(f.list()->isChecked(0));
    QVERIFY(!a->data().included);
    f.tickRow(0);
    f.tickRow(0);
    QVERIFY(a->data().included);
}

void tst_ctlCustSelect::destroyedPanelLetsGoOfTheCollection()
{
    Fixture f;
    f.bindTwo();
    std::weak_ptr<StandaloneCustomers> weak = f.coll;
    QCOMPARE(f.coll.use_count(), 2);
    f.ctl.reset();
    QCOMPARE(f.coll.use_count(), 1);
    f.coll->RemoveAll();
    f.coll.reset();
    QVERIFY(weak.expired());
}

void tst_ctlCustSelect::userSearchesAddsTicksRemovesAndClearsAsOnTheWorkbench()
{
    Fixture f;
    f.allowAll();
    f.bindTwo();
    // Keyboard only: type, Alt+H to search, Enter on Add (focused by the search).
    QTest::mouseClick(f.keyword(), Qt::LeftButton);
    typeText(f.keyword(), QStringLiteral("Rose"));
    QTest::keyClick(f.keyword(), Qt::Key_Tab);
    typeText(f.account(), QStringLiteral("300"));
    // An access key presses its button the way a click does, a moment later.
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_H, Qt::AltModifier);
    QTRY_COMPARE(f.ctl->focusWidget(), f.button("cmdAdd"));
    QTest::keyClick(f.button("cmdAdd"), Qt::Key_Space);
    QCOMPARE(f.keys(), (QStringList{"A1", "B2", "K1"}));
    QVERIFY(f.list()->isChecked(2));
    // Untick it, select the first row and remove it with Alt+R.
    f.tickRow(2);
    QVERIFY(!f.coll->Item(3)->Included());
    f.selectRow(0);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_R, Qt::AltModifier);
    QTRY_COMPARE(f.keys(), (QStringList{"B2", "K1"}));
    // Clear with Alt+L, then Remove All (Alt+E) answered OK.
    typeText(f.keyword(), QStringLiteral("x"));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_L, Qt::AltModifier);
    QTRY_COMPARE(f.keyword()->text(), QString());
    f.selectRow(0);
    f.h.boxes().queueAnswer(MsgBoxAnswer::OK);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_E, Qt::AltModifier);
    QTRY_COMPARE(f.keys(), QStringList());
    QCOMPARE(f.coll->Count(), qint16(0));
    QCOMPARE(f.h.boxes().shown().size(), 1);
    QVERIFY(f.h.log().failureLines().isEmpty());
}

void tst_ctlCustSelect::enterInASearchBoxSearchesAndTheBoxesAreLabelledByTheirHeadings()
{
    auto services = std::make_shared<HeldFinderServices>();
    Fixture f(true, services);
    f.allowAll();
    f.bindTwo();
    services->finder->result = std::make_shared<ZebObjects::StandaloneCustomerSearchResult>(
        customer("K9", "Hollis Lighting"), 1);
    QTest::mouseClick(f.keyword(), Qt::LeftButton);
    typeText(f.keyword(), QStringLiteral("Hollis"));
    QTest::keyClick(f.keyword(), Qt::Key_Return);
    QCOMPARE(services->finder->calls.size(), 1);
    QCOMPARE(services->finder->calls.at(0).criteria.at(0), QStringLiteral("Hollis"));
    QCOMPARE(f.keyword()->text(), QStringLiteral("Hollis Lighting"));
    QTest::mouseClick(f.account(), Qt::LeftButton);
    QTest::keyClick(f.account(), Qt::Key_Enter);
    QCOMPARE(services->finder->calls.size(), 2);

    const std::pair<QLineEdit*, const char*> boxes[] = {{f.keyword(), "Name/Keyword"},
                                                        {f.account(), "Account Number"}};
    for (const auto& [box, heading] : boxes) {
        const auto labelled =
            QAccessible::queryAccessibleInterface(box)->relations(QAccessible::Label);
        QCOMPARE(labelled.size(), 1);
        QCOMPARE(labelled.front().first->text(QAccessible::Name), QLatin1String(heading));
    }
    // Without the search area Enter searches nothing.
    f.ctl->setAllowAdd(false);
    QTest::keyClick(f.account(), Qt::Key_Return);
    QCOMPARE(services->finder->calls.size(), 2);
}

QTEST_MAIN(tst_ctlCustSelect)
#include "tst_ctlcustselect.moc"
