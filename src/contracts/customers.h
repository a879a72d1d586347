#pragma once

#include "zebobjectscontracts_export.h"

#include "contracts/customer.h"

#include <QList>
#include <QObject>
#include <QString>

#include <memory>

namespace ZebObjects {

using CustomerList = QList<std::shared_ptr<Customer>>;

/// The customers of a submittal, in collection order. Positions are 1-based. CustomerRemoved is
/// raised synchronously, once for each customer that leaves, after it has left; its index is the
/// customer's position at that moment, so a list that removes one row per event stays in step.
class ZEBOBJECTSCONTRACTS_EXPORT Customers : public QObject {
    Q_OBJECT
public:
    /// Constructs the object with Qt's parent, as QObject does.
    using QObject::QObject;
    ~Customers() override = default;

    /// True when the customer was taken in, false when the collection declined it. A key already
    /// held fails with 457.
    virtual bool Add(const QString& key, std::shared_ptr<Customer> customer) = 0;
    /// Removes the customer at 1-based position index and raises CustomerRemoved; a position out of
    /// range fails.
    virtual void Remove(qint16 index) = 0;
    /// Removes every customer, raising CustomerRemoved once for each.
    virtual void RemoveAll() = 0;
    /// The customer at 1-based position index; a position out of range fails.
    virtual std::shared_ptr<Customer> Item(qint16 index) const = 0;
    /// The number of customers held.
    virtual qint16 Count() const = 0;
    /// The customers in collection order (a snapshot).
    virtual CustomerList Enumerate() const = 0;

signals:
    /// Raised after the customer at 1-based position index has left the collection.
    void CustomerRemoved(qint16 index);
};

}  // namespace ZebObjects
