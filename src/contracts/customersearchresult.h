#pragma once

#include "zebobjectscontracts_export.h"

#include <memory>

namespace ZebObjects {

class Customer;

/// What a customer search ended with.
class ZEBOBJECTSCONTRACTS_EXPORT CustomerSearchResult {
public:
    virtual ~CustomerSearchResult() = default;

    /// The customer the search settled on (the only match, or the user's choice).
    virtual std::shared_ptr<Customer> ChosenCustomer() const = 0;
};

}  // namespace ZebObjects
