#pragma once

#include "contracts/customers.h"

#include <QHash>

namespace ZebObjects {

class StoreConnection;

// A customer of a submittal in a store: what the directory said of it when it was added, and
// whether the submittal goes to it.
class StoreCustomer : public Customer {
public:
    StoreCustomer(std::shared_ptr<StoreConnection> db, qint64 id);

    QString Key() const override;
    QString DisplayText() const override;
    QString Name() const override;
    QString AccountNumber() const override;
    QString City() const override;
    QString State() const override;
    QString Type() const override;
    QString Category() const override;
    bool Included() const override;
    void setIncluded(bool included) override;

private:
    QVariant column(const char* name) const;

    std::shared_ptr<StoreConnection> m_db;
    qint64 m_id;
};

// The customers of a submittal in a store, in collection order. Same rules as the stand-alone
// collection (none fails with 91, a key already held with 457); RemoveAll takes them out from
// the last to the first, each removal committed and announced on its own.
class StoreCustomers : public Customers {
    Q_OBJECT
public:
    StoreCustomers(std::shared_ptr<StoreConnection> db, qint64 submittalId,
                   QObject* parent = nullptr);
    ~StoreCustomers() override;

    bool Add(const QString& key, std::shared_ptr<Customer> customer) override;
    void Remove(qint16 index) override;
    void RemoveAll() override;
    std::shared_ptr<Customer> Item(qint16 index) const override;
    qint16 Count() const override;
    CustomerList Enumerate() const override;

    // Adds inside the caller's transaction (for filling).
    static void append(StoreConnection& db, qint64 submittal, const QString& key,
                       const Customer& customer);

private:
    std::shared_ptr<Customer> customer(qint64 id) const;
    qint64 idAt(qint16 index) const;

    std::shared_ptr<StoreConnection> m_db;
    qint64 m_id;
    mutable QHash<qint64, std::shared_ptr<StoreCustomer>> m_customers;
};

}  // namespace ZebObjects
