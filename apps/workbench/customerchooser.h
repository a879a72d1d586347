#pragma once

#include "rules/customerrecord.h"

#include <QDialog>
#include <QList>

#include <functional>
#include <optional>

class QTreeWidget;

namespace ZebObjects {

// The modal dialog in which the user picks one of several customers a search found: one row per
// customer (name, account number, city, state), the first one current; OK (or a double click,
// or Enter) takes the current row, Cancel (or Escape) takes none.
// Its widgets: "lblPrompt", "lsvMatches", "cmdOK", "cmdCancel"; the dialog is "frmChooseCustomer".
class CustomerChooser : public QDialog {
    Q_OBJECT
public:
    explicit CustomerChooser(const QList<CustomerRecord>& customers, QWidget* parent = nullptr);
    ~CustomerChooser() override;

    // Makes this dialog the process's customer chooser (CustomerChoice), and its box the word
    // that nothing matched.
    static void install();

    // Shows the dialog modally over the active window; answers the position of the chosen
    // customer in customers, or -1 when the user chose none.
    static qsizetype choose(const QList<CustomerRecord>& customers);

    // The position of the current row, or -1.
    qsizetype current() const;

    // Whether an interactive search that matches nobody says so, in a modal box "No customer
    // matches your search." titled "Customer Search" (object name "frmNoCustomer"). A host turns
    // it on for its users; it is off by default, so that a program driving the panel unattended is
    // never stopped by a box.
    static void setTellsWhenNothingFound(bool on);
    static bool tellsWhenNothingFound();
    // Shows that box when it is on and the process has a widget application.
    static void tellNothingFound();

    // The host's dialog for a new customer, given one with the typed name: answers the customer
    // as entered, or nothing when cancelled.
    using NewCustomerEditor =
        std::function<std::optional<CustomerRecord>(const CustomerRecord& named)>;
    // From now on, a search by name that matches nobody says so and offers the name as a new
    // customer (when the box above is on): "No customer matches "NAME".\nAdd a new customer named
    // "NAME"?" titled "Customer Search" (object name "frmNoCustomer"), Yes and No; Yes opens
    // editor, and the customer it answers joins the directory as the one found.
    static void installNewCustomerOffer(NewCustomerEditor editor);
    static std::optional<CustomerRecord> offerNewCustomer(const QString& typed,
                                                          const NewCustomerEditor& editor);

private:
    QTreeWidget* m_list;
};

}  // namespace ZebObjects
