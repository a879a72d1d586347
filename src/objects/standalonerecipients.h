#pragma once

#include "zebobjects_export.h"

#include "contracts/recipients.h"
#include "objects/faultinjector.h"

#include <vector>

namespace ZebObjects {

// Member names for fault injection: "Name", "Company".
class ZEBOBJECTS_EXPORT StandaloneRecipient : public Recipient, public FaultInjectable {
public:
    StandaloneRecipient(QString name, QString company);

    QString Name() const override;
    QString Company() const override;

private:
    QString m_name;
    QString m_company;
};

// In-memory recipients in the order they were added. Member names for fault injection: "Count",
// "Item", "Enumerate", "Add", "Remove".
class ZEBOBJECTS_EXPORT StandaloneRecipients : public Recipients, public FaultInjectable {
public:
    qint16 Count() const override;
    std::shared_ptr<Recipient> Item(qint16 position) const override;
    RecipientList Enumerate() const override;

    // Appends a recipient; more than 32,767 fail with overflow.
    std::shared_ptr<StandaloneRecipient> Add(const QString& name, const QString& company);
    // Removes the recipient at a 1-based position; a position out of range fails.
    void Remove(qint16 position);

private:
    std::vector<std::shared_ptr<StandaloneRecipient>> m_items;
};

}  // namespace ZebObjects
