#pragma once

#include "zebobjects_export.h"

#include "contracts/customersearchresult.h"
#include "objects/faultinjector.h"

#include <QtGlobal>

namespace ZebObjects {

// Member names for fault injection: "ChosenCustomer".
class ZEBOBJECTS_EXPORT StandaloneCustomerSearchResult : public CustomerSearchResult,
                                                         public FaultInjectable {
public:
    StandaloneCustomerSearchResult(std::shared_ptr<Customer> chosen, qint32 matchCount);

    std::shared_ptr<Customer> ChosenCustomer() const override;
    // How many customers the search offered.
    qint32 matchCount() const { return m_matchCount; }

private:
    std::shared_ptr<Customer> m_chosen;
    qint32 m_matchCount;
};

}  // namespace ZebObjects
