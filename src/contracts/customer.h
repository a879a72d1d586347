#pragma once

#include "zebobjectscontracts_export.h"

#include <QString>

namespace ZebObjects {

// A customer that can receive a submittal.
class ZEBOBJECTSCONTRACTS_EXPORT Customer {
public:
    virtual ~Customer() = default;

    virtual QString Key() const = 0;
    virtual QString DisplayText() const = 0;
    virtual QString Name() const = 0;
    virtual QString AccountNumber() const = 0;
    virtual QString City() const = 0;
    virtual QString State() const = 0;
    virtual QString Type() const = 0;
    virtual QString Category() const = 0;
    // Whether the submittal goes to this customer.
    virtual bool Included() const = 0;
    virtual void setIncluded(bool included) = 0;
};

}  // namespace ZebObjects
