#pragma once

#include "zebobjects_export.h"

#include "contracts/customer.h"
#include "objects/faultinjector.h"
#include "rules/customerrecord.h"

namespace ZebObjects {

// An in-memory customer. Besides the members a submittal uses it carries the postal code, phone
// number and account state that the customer directory searches by.
// Member names for fault injection: "Key", "DisplayText", "Name", "AccountNumber", "City",
// "State", "Type", "Category", "Included", "Included=".
class ZEBOBJECTS_EXPORT StandaloneCustomer : public Customer, public FaultInjectable {
public:
    using Data = CustomerRecord;

    explicit StandaloneCustomer(Data data);

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

    // Everything the customer holds, without going through the injector.
    const Data& data() const { return m_data; }

private:
    Data m_data;
};

}  // namespace ZebObjects
