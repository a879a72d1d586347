#pragma once

#include "contracts/applicationservices.h"
#include "objects/faultinjector.h"

namespace ZebObjects {

// The application object of the stand-alone library. Member names for fault injection:
// "ReformatText", "IssuedByNames", "SearchContext", "CreateCustomerFinder".
class StandaloneApplicationServices : public ApplicationServices, public FaultInjectable {
public:
    StandaloneApplicationServices();
    ~StandaloneApplicationServices() override;

    bool ReformatText(QString& text) override;
    QStringList IssuedByNames() const override;
    std::shared_ptr<ZebObjects::CustomerSearchContext> SearchContext() const override;
    std::shared_ptr<CustomerFinder> CreateCustomerFinder() override;

    void setIssuedByNames(const QStringList& names);

private:
    QStringList m_issuedBy;
};

}  // namespace ZebObjects
