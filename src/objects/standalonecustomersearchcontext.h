#pragma once

#include "zebobjects_export.h"

#include "contracts/customersearchcontext.h"
#include "objects/faultinjector.h"

namespace ZebObjects {

// Member names for fault injection: "Value".
class ZEBOBJECTS_EXPORT StandaloneCustomerSearchContext : public CustomerSearchContext,
                                                          public FaultInjectable {
public:
    explicit StandaloneCustomerSearchContext(QVariant value);

    QVariant Value() const override;

private:
    QVariant m_value;
};

}  // namespace ZebObjects
