#pragma once

#include "contracts/customersearchcontext.h"
#include "objects/faultinjector.h"

namespace ZebObjects {

// Member names for fault injection: "Value".
class StandaloneCustomerSearchContext : public CustomerSearchContext, public FaultInjectable {
public:
    explicit StandaloneCustomerSearchContext(QVariant value);

    QVariant Value() const override;

private:
    QVariant m_value;
};

}  // namespace ZebObjects
