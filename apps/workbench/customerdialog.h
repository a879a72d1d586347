#pragma once

#include "rules/customerrecord.h"

#include <QDialog>

#include <optional>

class QLineEdit;
class QPushButton;

// One customer of the office's directory with everything letters and labels print: company,
// contact, street lines, city, state, ZIP, phone, e-mail, account number, type and category.
class CustomerDialog : public QDialog {
    Q_OBJECT
public:
    CustomerDialog(const QString& title, const ZebObjects::CustomerRecord& customer,
                   QWidget* parent = nullptr);

    // The fields as typed; the key is kept, the display text follows the company and city.
    ZebObjects::CustomerRecord customer() const;

    // Shows the dialog titled "New Customer" over the active window, filled with named; answers
    // the customer as entered, or nothing when cancelled.
    static std::optional<ZebObjects::CustomerRecord> askNew(
        const ZebObjects::CustomerRecord& named);

private:
    ZebObjects::CustomerRecord m_customer;
    QList<QLineEdit*> m_edits;
    QPushButton* m_ok = nullptr;
};
