#pragma once

#include "zebsubctl_export.h"

#include "frame/usercontrol.h"

#include <QMetaObject>

#include <memory>

class QLabel;
class QLineEdit;
class QPushButton;

namespace ZebObjects {
class Customer;
class CustomerFinder;
class Customers;
}  // namespace ZebObjects

namespace ZebSubCtl {

class KeyedListView;

/// The customers a submittal goes to: one row per customer of the bound collection, a search by
/// name keyword or account number through the business library's customer finder, and, as the
/// host allows, adding the customer found, removing customers and ticking them. The collection
/// owns the data: rows leave only when the collection reports CustomerRemoved. Registered as
/// "ZebSubmittalControls.ctlCustSelect".
class ZEBSUBCTL_EXPORT ctlCustSelect : public UserControl {
    Q_OBJECT
    Q_CLASSINFO("ToolTip", "Searches customers and keeps the list of the submittal's customers.")
    Q_CLASSINFO("WhatsThis",
                "ctlCustSelect searches the customers and keeps the list of customers a submittal"
                " goes to. AllowAdd and AllowDelete offer adding and removing customers. Bind it "
                "to the customer list through its Customers property at run time.")
    Q_CLASSINFO("IncludeFile", "controls/customers/ctlcustselect.h")
    /// The bound customer collection; none until the host binds one.
    Q_PROPERTY(std::shared_ptr<ZebObjects::Customers> Customers READ Customers WRITE setCustomers
                   DESIGNABLE false)
    /// Whether the search area and Add show; false by default, saved with the design.
    Q_PROPERTY(bool AllowAdd READ AllowAdd WRITE setAllowAdd)
    /// Whether Remove and Remove All show; false by default, saved with the design.
    Q_PROPERTY(bool AllowDelete READ AllowDelete WRITE setAllowDelete)
    /// Whether each row has a check box that includes the customer; not saved with the design.
    Q_PROPERTY(bool ShowCheckboxes READ ShowCheckboxes WRITE setShowCheckboxes DESIGNABLE false)
public:
    /// Creates the panel, unbound, with adding and deleting off, as a child of parent.
    explicit ctlCustSelect(QWidget* parent = nullptr);
    ~ctlCustSelect() override;

    /// The bound collection, or none.
    std::shared_ptr<ZebObjects::Customers> Customers() const;
    /// Binds the collection (the old one's events are dropped) and fills the list from it.
    void setCustomers(std::shared_ptr<ZebObjects::Customers> customers);
    /// Shows the search area and Add; moves the list below it.
    bool AllowAdd() const;
    /// Sets AllowAdd and marks it for saving.
    void setAllowAdd(bool allow);
    /// Shows and enables Remove and Remove All.
    bool AllowDelete() const;
    /// Sets AllowDelete and marks it for saving.
    void setAllowDelete(bool allow);
    /// The list's own check-box setting; not saved with the design.
    bool ShowCheckboxes() const;
    /// Sets ShowCheckboxes.
    void setShowCheckboxes(bool show);

    void UserControl_WriteProperties(PropertyBag& bag) override;
    void UserControl_ReadProperties(const PropertyBag& bag) override;

protected:
    void UserControl_Resize() override;

private:
    void Populate();

    void cmdSearch_Click();
    void cmdClear_Click();
    void cmdAdd_Click();
    void cmdRemove_Click();
    void cmdRemoveAll_Click();
    void lsvCustomers_ItemCheck(int item);
    void mCustomers_CustomerRemoved(qint16 index);

    QLabel* lblCustomerNameHeading;
    QLineEdit* txtNameKeyword;
    QLabel* lblCustomerAcctNumHeading;
    QLineEdit* txtAcctNum;
    QPushButton* cmdSearch;
    QPushButton* cmdClear;
    QPushButton* cmdAdd;
    KeyedListView* lsvCustomers;
    QPushButton* cmdRemove;
    QPushButton* cmdRemoveAll;
    QPushButton* cmdMoveUp;
    QPushButton* cmdMoveDown;

    std::shared_ptr<ZebObjects::Customers> mCustomers;
    QMetaObject::Connection mCustomerRemoved;
    /// The customer the last search settled on, until Add takes it.
    std::shared_ptr<ZebObjects::Customer> mFoundCustomer;
    /// Created by the first search and kept.
    std::shared_ptr<ZebObjects::CustomerFinder> mFinder;
    bool mAllowAdd = false;
    bool mAllowDelete = false;
};

}  // namespace ZebSubCtl
