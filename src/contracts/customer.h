#pragma once

#include "zebobjectscontracts_export.h"

#include <QString>

namespace ZebObjects {

/// A customer that can receive a submittal; one row of ctlCustSelect.
class ZEBOBJECTSCONTRACTS_EXPORT Customer {
public:
    virtual ~Customer() = default;

    /// The customer's key, unique within a Customers collection.
    virtual QString Key() const = 0;
    /// The text a list shows for the customer.
    virtual QString DisplayText() const = 0;
    /// The customer's name.
    virtual QString Name() const = 0;
    /// The customer's account number.
    virtual QString AccountNumber() const = 0;
    /// The city of the customer's address.
    virtual QString City() const = 0;
    /// The state of the customer's address.
    virtual QString State() const = 0;
    /// The kind of customer (contractor, engineer, ...), as the office names it.
    virtual QString Type() const = 0;
    /// The office's category of the customer.
    virtual QString Category() const = 0;
    /// Whether the submittal goes to this customer.
    virtual bool Included() const = 0;
    /// Sets whether the submittal goes to this customer.
    virtual void setIncluded(bool included) = 0;
};

}  // namespace ZebObjects
