#include "controls/customers/ctlcustselect.h"

#include "contracts/applicationservices.h"
#include "contracts/customer.h"
#include "contracts/customerfinder.h"
#include "contracts/customers.h"
#include "contracts/customersearchcontext.h"
#include "contracts/customersearchresult.h"
#include "frame/controlregistry.h"
#include "frame/errorpath.h"
#include "frame/makechild.h"
#include "frame/messageboxes.h"
#include "frame/objectref.h"
#include "frame/propertybag.h"
#include "frame/reportmessage.h"
#include "frame/units.h"
#include "contracts/runtime.h"
#include "platform/keyedlistview.h"
#include "platform/listupdate.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace ZebSubCtl {

ZEB_REGISTER_CONTROL(ctlCustSelect)

namespace {

const QString kModule = QStringLiteral("ctlCustSelect");
const QString kDuplicateExit = QStringLiteral("Duplicate Customer, Exiting Method...");
const QString kRemoveAllPrompt =
    QStringLiteral("This will remove all customers from this submittal.");
const QString kRemoveAllTitle = QStringLiteral("Are you sure?");

// The list's top below the search area, and without it.
constexpr int kListTopWithSearch = 110;
constexpr int kListTopAlone = 10;
// Space between the list and the bottom row, and below the bottom row.
constexpr int kMargin = 10;

const TracedIn traced(kModule);

// A width or height below zero is refused, as the platform's widgets refuse it.
[[noreturn]] void invalidPropertyValue()
{
    throw Failure::invalidPropertyValue();
}

void setWidth(QWidget* widget, int width)
{
    if (width < 0)
        invalidPropertyValue();
    widget->resize(width, widget->height());
}

void setHeight(QWidget* widget, int height)
{
    if (height < 0)
        invalidPropertyValue();
    widget->resize(widget->width(), height);
}

void setLeft(QWidget* widget, int left)
{
    widget->move(left, widget->y());
}

void setTop(QWidget* widget, int top)
{
    widget->move(widget->x(), top);
}

// One row in the form every row has: key and text, the text again as tool tip, the check from
// Included, then the six keyed sub-items.
void addCustomerRow(KeyedListView* list, ZebObjects::Customer& customer)
{
    const QString key = customer.Key();
    const QString text = customer.DisplayText();
    const int row = list->addItem(key, text);
    list->setItemToolTip(row, text);
    list->setChecked(row, customer.Included());
    list->addSubItem(row, QStringLiteral("name"), customer.Name());
    list->addSubItem(row, QStringLiteral("accountNumber"), customer.AccountNumber());
    list->addSubItem(row, QStringLiteral("city"), customer.City());
    list->addSubItem(row, QStringLiteral("state"), customer.State());
    list->addSubItem(row, QStringLiteral("type"), customer.Type());
    list->addSubItem(row, QStringLiteral("category"), customer.Category());
}

}  // namespace

ctlCustSelect::ctlCustSelect(QWidget* parent) : UserControl(parent)
{
    setAccessibleName(QStringLiteral("Customers"));
    setAccessibleDescription(
        QStringLiteral("The customers that receive the submittal, with a search to find more"));

    lblCustomerNameHeading =
        makeChild<QLabel>(this, "lblCustomerNameHeading", twipsRect(150, 150, 3000, 240),
                          QStringLiteral("Name/Keyword"));
    txtNameKeyword = makeChild<QLineEdit>(this, "txtNameKeyword", twipsRect(150, 405, 3000, 315));
    txtNameKeyword->setAccessibleName(QStringLiteral("Name or keyword"));
    txtNameKeyword->setAccessibleDescription(
        QStringLiteral("Part of the customer's name to search for"));
    lblCustomerAcctNumHeading =
        makeChild<QLabel>(this, "lblCustomerAcctNumHeading", twipsRect(3300, 150, 1800, 240),
                          QStringLiteral("Account Number"));
    txtAcctNum = makeChild<QLineEdit>(this, "txtAcctNum", twipsRect(3300, 405, 1800, 315));
    txtAcctNum->setAccessibleName(QStringLiteral("Account number"));
    txtAcctNum->setAccessibleDescription(
        QStringLiteral("The customer's whole account number to search for"));

    cmdSearch = makeChild<QPushButton>(this, "cmdSearch", twipsRect(5250, 375, 1200, 375),
                                       QStringLiteral("Searc&h"));
    // Enter in either search box searches, as Alt+H does.
    for (QLineEdit* box : {txtNameKeyword, txtAcctNum})
        connect(box, &QLineEdit::returnPressed, this, [this] {
            if (cmdSearch->isVisibleTo(this) && cmdSearch->isEnabled())
                cmdSearch->click();
        });
    lblCustomerNameHeading->setBuddy(txtNameKeyword);
    lblCustomerAcctNumHeading->setBuddy(txtAcctNum);
    cmdClear = makeChild<QPushButton>(this, "cmdClear", twipsRect(6600, 375, 1200, 375),
                                      QStringLiteral("C&lear"));
    cmdAdd = makeChild<QPushButton>(this, "cmdAdd", twipsRect(5250, 975, 1200, 375),
                                    QStringLiteral("&Add"));

    lsvCustomers = makeChild<KeyedListView>(
        this, "lsvCustomers",
        QRect(kMargin, kListTopAlone, twipsToPixels(8700), twipsToPixels(4500)));
    lsvCustomers->setAccessibleName(QStringLiteral("Submittal customers"));
    lsvCustomers->setAccessibleDescription(QStringLiteral(
        "One row per customer of the submittal; the check box says whether it receives it"));
    // Wide enough for the names, towns and account numbers of a sales office's customers.
    const struct {
        const char* key;
        const char* heading;
        int width;
    } columns[] = {
        {"keyword", "Keyword", 285},
        {"name", "Name", 195},
        {"accountNumber", "Account Number", 95},
        {"city", "City", 85},
        {"state", "State", 40},
        {"type", "Type", 70},
        {"category", "Category", 90},
    };
    for (const auto& c : columns)
        lsvCustomers->addColumn(QLatin1String(c.key), QLatin1String(c.heading));
    for (int i = 0; i < int(std::size(columns)); ++i)
        lsvCustomers->setColumnWidth(i, columns[i].width);

    cmdRemove = makeChild<QPushButton>(this, "cmdRemove", twipsRect(150, 5700, 1200, 375),
                                       QStringLiteral("&Remove"));
    cmdRemoveAll = makeChild<QPushButton>(this, "cmdRemoveAll", twipsRect(1500, 5700, 1200, 375),
                                          QStringLiteral("R&emove All"));
    cmdMoveUp = makeChild<QPushButton>(this, "cmdMoveUp", twipsRect(6300, 5700, 1200, 375),
                                       QStringLiteral("Move &Up"));
    cmdMoveDown = makeChild<QPushButton>(this, "cmdMoveDown", twipsRect(7500, 5700, 1200, 375),
                                         QStringLiteral("Move &Down"));

    // Enter in a search box searches: no button of the panel takes it as a default button.
    for (QPushButton* button :
         {cmdSearch, cmdClear, cmdAdd, cmdRemove, cmdRemoveAll, cmdMoveUp, cmdMoveDown})
        button->setAutoDefault(false);

    // The widgets start as the default properties have them: no search area and no removing.
    for (QWidget* w :
         {static_cast<QWidget*>(lblCustomerAcctNumHeading), static_cast<QWidget*>(txtAcctNum),
          static_cast<QWidget*>(lblCustomerNameHeading), static_cast<QWidget*>(txtNameKeyword),
          static_cast<QWidget*>(cmdAdd), static_cast<QWidget*>(cmdSearch),
          static_cast<QWidget*>(cmdClear), static_cast<QWidget*>(cmdRemove),
          static_cast<QWidget*>(cmdRemoveAll)})
        w->setVisible(false);
    cmdRemove->setEnabled(false);
    cmdRemoveAll->setEnabled(false);

    setTabOrder(txtNameKeyword, txtAcctNum);
    setTabOrder(txtAcctNum, cmdSearch);
    setTabOrder(cmdSearch, cmdClear);
    setTabOrder(cmdClear, cmdAdd);
    setTabOrder(cmdAdd, lsvCustomers);
    setTabOrder(lsvCustomers, cmdRemove);
    setTabOrder(cmdRemove, cmdRemoveAll);
    setTabOrder(cmdRemoveAll, cmdMoveUp);
    setTabOrder(cmdMoveUp, cmdMoveDown);

    resize(twipsToPixels(9000), twipsToPixels(6300));

    // Move Up and Move Down have no handlers.
    connect(cmdSearch, &QPushButton::clicked, this, [this] { cmdSearch_Click(); });
    connect(cmdClear, &QPushButton::clicked, this, [this] { cmdClear_Click(); });
    connect(cmdAdd, &QPushButton::clicked, this, [this] { cmdAdd_Click(); });
    connect(cmdRemove, &QPushButton::clicked, this, [this] { cmdRemove_Click(); });
    connect(cmdRemoveAll, &QPushButton::clicked, this, [this] { cmdRemoveAll_Click(); });
    connect(lsvCustomers, &KeyedListView::itemCheck, this,
            [this](int item) { lsvCustomers_ItemCheck(item); });
}

ctlCustSelect::~ctlCustSelect()
{
    disconnect(mCustomerRemoved);
}

// --- properties

std::shared_ptr<ZebObjects::Customers> ctlCustSelect::Customers() const
{
    return ErrorPath::run(traced("Customers"), Ending::propagate(), [&] { return mCustomers; });
}

void ctlCustSelect::setCustomers(std::shared_ptr<ZebObjects::Customers> customers)
{
    ErrorPath::run(traced("Customers"), Ending::propagate(), [&] {
        disconnect(mCustomerRemoved);
        mCustomerRemoved = {};
        mCustomers = std::move(customers);
        if (auto* c = mCustomers.get())
            mCustomerRemoved = connect(c, &ZebObjects::Customers::CustomerRemoved, this,
                                       [this](qint16 index) { mCustomers_CustomerRemoved(index); });
        Populate();
    });
}

bool ctlCustSelect::AllowAdd() const
{
    return ErrorPath::run(traced("AllowAdd"), Ending::propagate(), [&] { return mAllowAdd; });
}

void ctlCustSelect::setAllowAdd(bool allow)
{
    ErrorPath::run(traced("AllowAdd"), Ending::propagate(), [&] {
        mAllowAdd = allow;
        PropertyChanged(QStringLiteral("AllowAdd"));
        lblCustomerAcctNumHeading->setVisible(allow);
        txtAcctNum->setVisible(allow);
        lblCustomerNameHeading->setVisible(allow);
        txtNameKeyword->setVisible(allow);
        cmdAdd->setVisible(allow);
        cmdSearch->setVisible(allow);
        cmdClear->setVisible(allow);
        // The remove buttons follow AllowAdd too: whichever of the two is set last decides.
        cmdRemove->setVisible(allow);
        cmdRemoveAll->setVisible(allow);
        setTop(lsvCustomers, allow ? kListTopWithSearch : kListTopAlone);
        UserControl_Resize();
    });
}

bool ctlCustSelect::AllowDelete() const
{
    return ErrorPath::run(traced("AllowDelete"), Ending::propagate(), [&] { return mAllowDelete; });
}

void ctlCustSelect::setAllowDelete(bool allow)
{
    ErrorPath::run(traced("AllowDelete"), Ending::propagate(), [&] {
        mAllowDelete = allow;
        PropertyChanged(QStringLiteral("AllowDelete"));
        cmdRemove->setVisible(allow);
        cmdRemove->setEnabled(allow);
        cmdRemoveAll->setVisible(allow);
        cmdRemoveAll->setEnabled(allow);
        UserControl_Resize();
    });
}

bool ctlCustSelect::ShowCheckboxes() const
{
    return ErrorPath::run(traced("ShowCheckboxes"), Ending::propagate(),
                          [&] { return lsvCustomers->checkBoxes(); });
}

void ctlCustSelect::setShowCheckboxes(bool show)
{
    ErrorPath::run(traced("ShowCheckboxes"), Ending::propagate(),
                   [&] { lsvCustomers->setCheckBoxes(show); });
}

// --- persistence

void ctlCustSelect::UserControl_WriteProperties(PropertyBag& bag)
{
    ErrorPath::run(traced("UserControl_WriteProperties"), Ending::propagate(), [&] {
        bag.WriteProperty(QStringLiteral("AllowAdd"), AllowAdd(), false);
        bag.WriteProperty(QStringLiteral("AllowDelete"), AllowDelete(), false);
    });
}

void ctlCustSelect::UserControl_ReadProperties(const PropertyBag& bag)
{
    ErrorPath::run(traced("UserControl_ReadProperties"), Ending::propagate(), [&] {
        setAllowAdd(bag.ReadProperty(QStringLiteral("AllowAdd"), false).toBool());
        setAllowDelete(bag.ReadProperty(QStringLiteral("AllowDelete"), false).toBool());
    });
}

// --- population and layout

void ctlCustSelect::Populate()
{
    ErrorPath::run(Procedure::untraced(kModule, QStringLiteral("Populate")), Ending::propagate(),
                   [&] {
                       ListUpdate batch(lsvCustomers);
                       lsvCustomers->clear();
                       if (!mCustomers)
                           return;
                       const ZebObjects::CustomerList customers = mCustomers->Enumerate();
                       lsvCustomers->reserve(int(customers.size()));
                       for (const auto& customer : customers)
                           addCustomerRow(lsvCustomers, objectRef(customer));
                   });
}

void ctlCustSelect::UserControl_Resize()
{
    ErrorPath::run(traced("UserControl_Resize"), Ending::propagate(), [&] {
        // The bottom row sits 10 above the lower edge.
        const int bottomRow = ScaleHeight() - (cmdRemove->height() + kMargin);
        setTop(cmdRemove, bottomRow);
        setTop(cmdRemoveAll, bottomRow);
        setTop(cmdMoveDown, bottomRow);
        setTop(cmdMoveUp, bottomRow);
        // The list keeps the same margin on both sides, and 10 above the bottom row.
        setWidth(lsvCustomers, ScaleWidth() - 2 * lsvCustomers->x());
        setHeight(lsvCustomers, cmdRemove->y() - kMargin - lsvCustomers->y());
        // Move Down ends where the list ends; Move Up touches it on the left.
        setLeft(cmdMoveDown, lsvCustomers->x() + lsvCustomers->width() - cmdMoveDown->width());
        setLeft(cmdMoveUp, cmdMoveDown->x() - cmdMoveUp->width());
    });
}

// --- search

void ctlCustSelect::cmdSearch_Click()
{
    ErrorPath::run(traced("cmdSearch_Click"), Ending::report(ReportVariant::Search), [&] {
        const QString keyword = txtNameKeyword->text();
        const QString accountNumber = txtAcctNum->text();
        const auto services = ZebObjects::Runtime::applicationServices();
        const QVariant context = objectRef(objectRef(services).SearchContext()).Value();
        if (!mFinder)
            mFinder = services->CreateCustomerFinder();
        // Interactive only: with several matches the user chooses in the finder's dialog.
        const auto result = objectRef(mFinder).Search(
            false, true, false, false, false, context, keyword, accountNumber, QString(), QString(),
            QString(), QString(), QString(), QString(), 0);
        // Nothing chosen keeps the customer an earlier search found.
        if (result)
            mFoundCustomer = result->ChosenCustomer();
        if (mFoundCustomer) {
            txtNameKeyword->setText(mFoundCustomer->Name());
            txtAcctNum->setText(mFoundCustomer->AccountNumber());
            cmdAdd->setFocus();
        }
    });
}

void ctlCustSelect::cmdClear_Click()
{
    // The found customer stays: Add still takes it.
    ErrorPath::run(traced("cmdClear_Click"), Ending::logOnly(), [&] {
        txtNameKeyword->setText(QString());
        txtAcctNum->setText(QString());
        txtNameKeyword->setFocus();
    });
}

// --- add, remove, check

void ctlCustSelect::cmdAdd_Click()
{
    // A key the collection already holds (457): the found customer stays for another try, and
    // the keyword is ready to be typed over.
    const auto duplicate = [this](const ErrorInfo& error) {
        if (error.Number != ZebObjects::ErrorNumber::KeyAlreadyInCollection)
            return;
        txtAcctNum->setText(QString());
        txtNameKeyword->setFocus();
        txtNameKeyword->setSelection(0, int(txtNameKeyword->text().size()));
        ErrorPath::trace(kModule, QStringLiteral("cmdAdd_Click()"), kDuplicateExit);
    };
    ErrorPath::run(traced("cmdAdd_Click"), Ending::report(ReportVariant::Add).then(duplicate), [&] {
        if (!mFoundCustomer)
            return;
        const auto held = mFoundCustomer;
        ZebObjects::Customer& found = *held;
        const QString key = found.Key();
        // Duplicates are the collection's to detect, by key.
        if (!objectRef(Customers()).Add(key, held)) {
            mFoundCustomer.reset();
            txtAcctNum->setText(QString());
            txtNameKeyword->setFocus();
            txtNameKeyword->selectAll();
            return;
        }
        const QString rowKey = found.Key();
        const QString text = found.DisplayText();
        const int row = lsvCustomers->addItem(rowKey, text);
        lsvCustomers->setItemToolTip(row, text);
        // The row shows what the customer now holds.
        found.setIncluded(true);
        lsvCustomers->setChecked(row, found.Included());
        lsvCustomers->addSubItem(row, QStringLiteral("name"), found.Name());
        lsvCustomers->addSubItem(row, QStringLiteral("accountNumber"), found.AccountNumber());
        lsvCustomers->addSubItem(row, QStringLiteral("city"), found.City());
        lsvCustomers->addSubItem(row, QStringLiteral("state"), found.State());
        lsvCustomers->addSubItem(row, QStringLiteral("type"), found.Type());
        lsvCustomers->addSubItem(row, QStringLiteral("category"), found.Category());
        mFoundCustomer.reset();
        txtNameKeyword->setText(QString());
        txtAcctNum->setText(QString());
        txtNameKeyword->setFocus();
    });
}

void ctlCustSelect::cmdRemove_Click()
{
    ErrorPath::run(traced("cmdRemove_Click"), Ending::report(ReportVariant::Remove), [&] {
        const int row = lsvCustomers->selectedRow();
        // The row goes when the collection reports the removal.
        if (mAllowDelete && row >= 0)
            objectRef(mCustomers).Remove(qint16(row + 1));
    });
}

void ctlCustSelect::cmdRemoveAll_Click()
{
    ErrorPath::run(traced("cmdRemoveAll_Click"), Ending::report(ReportVariant::RemoveAll), [&] {
        // The same guard as Remove: without a selected row nothing happens.
        if (!mAllowDelete || lsvCustomers->selectedRow() < 0)
            return;
        if (MessageBoxes::MsgBox(kRemoveAllPrompt, MsgBoxStyle::Question_OKCancel, kRemoveAllTitle)
            == MsgBoxAnswer::OK)
            objectRef(mCustomers).RemoveAll();
    });
}

void ctlCustSelect::lsvCustomers_ItemCheck(int item)
{
    ErrorPath::run(traced("lsvCustomers_ItemCheck"), Ending::report(ReportVariant::ItemCheck), [&] {
        const auto customer = objectRef(mCustomers).Item(qint16(item + 1));
        objectRef(customer).setIncluded(lsvCustomers->isChecked(item));
    });
}

void ctlCustSelect::mCustomers_CustomerRemoved(qint16 index)
{
    // Runs once per customer when the collection empties: its labels are made once.
    static const Procedure procedure = traced("mCustomers_CustomerRemoved");
    static const Ending ending = Ending::report(ReportVariant::CustomerRemoved);
    ErrorPath::run(procedure, ending, [&] { lsvCustomers->removeItem(int(index) - 1); });
}

}  // namespace ZebSubCtl
