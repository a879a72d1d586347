#pragma once

#include "zebobjects_export.h"

#include "contracts/customers.h"
#include "objects/faultinjector.h"

#include <functional>
#include <utility>
#include <vector>

namespace ZebObjects {

// The customers of an in-memory submittal. The host may decline customers (Add answers false)
// and protect customers from removal (Remove fails with 70; RemoveAll takes out all the others,
// then fails with 70). RemoveAll takes the customers out from the last to the first, so each
// CustomerRemoved index is the customer's position at that moment and the positions of those
// still to go do not shift.
// Member names for fault injection: "Add", "Remove", "RemoveAll", "Item", "Count", "Enumerate".
class ZEBOBJECTS_EXPORT StandaloneCustomers : public Customers, public FaultInjectable {
    Q_OBJECT
public:
    // Answers whether the collection takes the customer in.
    using AddPolicy = std::function<bool(const QString& key, const Customer& customer)>;
    // Answers whether the customer may leave the collection.
    using RemovePolicy = std::function<bool(const Customer& customer)>;

    explicit StandaloneCustomers(QObject* parent = nullptr);
    ~StandaloneCustomers() override;

    // A customer that is none fails with 91; a key already held with 457; a 32,768th customer
    // with 6. A customer the add policy declines is not taken in: the answer is false.
    bool Add(const QString& key, std::shared_ptr<Customer> customer) override;
    void Remove(qint16 index) override;
    void RemoveAll() override;
    std::shared_ptr<Customer> Item(qint16 index) const override;
    qint16 Count() const override;
    CustomerList Enumerate() const override;

    // An empty policy takes every customer in / lets every customer go.
    void setAddPolicy(AddPolicy policy);
    void setRemovePolicy(RemovePolicy policy);
    // The key a customer was added under, by 1-based position; out of range fails.
    QString keyAt(qint16 index) const;

private:
    void checkIndex(qint16 index) const;
    [[noreturn]] void refused(const std::vector<QString>& keys) const;

    std::vector<std::pair<QString, std::shared_ptr<Customer>>> m_items;
    AddPolicy m_addPolicy;
    RemovePolicy m_removePolicy;
};

}  // namespace ZebObjects
