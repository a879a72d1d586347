#pragma once

#include "zebstore_export.h"

#include "contracts/customers.h"
#include "rules/customerrecord.h"

#include <QHash>

#include <optional>

namespace ZebObjects {

class StoreConnection;

// A customer of a submittal in a store: what the directory said of it when it was added, and
// whether the submittal goes to it. A customer that a search of the store's directory found is on
// no submittal yet and holds its record itself; the submittal's collection that takes it in
// makes it that submittal's customer, so what is written through it afterwards (its Included
// first of all) is written to the submittal.
class ZEBSTORE_EXPORT StoreCustomer : public Customer {
public:
    // The customer in row id of the submittals' customers.
    StoreCustomer(std::shared_ptr<StoreConnection> db, qint64 id);
    // A directory customer on no submittal yet.
    StoreCustomer(std::shared_ptr<StoreConnection> db, CustomerRecord record);

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

    // Whether a submittal holds it (else it is a directory customer found by a search).
    bool onSubmittal() const { return !m_record; }

private:
    friend class StoreCustomers;

    // The submittal's row as read in the database's state, read again (in one statement) once
    // that state has passed.
    const CustomerRecord& row() const;
    QString text(const QString CustomerRecord::*field) const;
    // From now on the customer is the one in row id.
    void adopt(qint64 id);
    void seen(quint64 state, CustomerRecord row);

    std::shared_ptr<StoreConnection> m_db;
    qint64 m_id = 0;
    std::unique_ptr<CustomerRecord> m_record;
    mutable quint64 m_state = 0;
    mutable CustomerRecord m_row;
    // Gone from the file with a Remove All whose event for it has not come yet: it answers what
    // it showed until then.
    bool m_leaving = false;
};

// The customers of a submittal in a store, in collection order. Same rules as the stand-alone
// collection (none fails with 91, a key already held with 457). RemoveAll takes them all out in
// one statement and one commit, then announces each removal from the last customer to the first;
// while it does, the collection answers as it stands once the customers announced so far have
// left. Add takes in the very
// object it is given when the object is a customer this store's directory search found: Item
// hands out that object, and its writes reach the submittal. Any other customer (one made by
// another library, or already on a submittal) is copied into a new customer of this submittal.
// The customers and their values are read in one statement and kept for as long as the
// database's state stays the same; a position is found in that order, and a removal made here
// keeps it up to date.
class ZEBSTORE_EXPORT StoreCustomers : public Customers {
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
    // Answers the new customer's row.
    static qint64 append(StoreConnection& db, qint64 submittal, const QString& key,
                         const Customer& customer);

private:
    std::shared_ptr<StoreCustomer> customer(qint64 id) const;
    qint64 idAt(qint16 index) const;
    // Reads the customers again unless what is kept is still the database's; false when nothing
    // may be kept (inside a write on the server).
    bool kept() const;
    // Reads every customer in order into m_kept (see StoreConnection::keep for along and state).
    void read(const QString& along, quint64& state) const;

    std::shared_ptr<StoreConnection> m_db;
    qint64 m_id;
    // Customers handed out while nothing was kept, and those Add took in: one object per
    // customer, whichever way it was asked for.
    mutable QHash<qint64, std::shared_ptr<StoreCustomer>> m_customers;
    // The customers in collection order, read in state m_state.
    mutable quint64 m_state = 0;
    mutable QList<std::shared_ptr<StoreCustomer>> m_kept;
    // During a Remove All's events: the customers not announced yet.
    std::optional<QList<std::shared_ptr<StoreCustomer>>> m_leaving;
};

}  // namespace ZebObjects
