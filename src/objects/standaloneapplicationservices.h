#pragma once

#include "zebobjects_export.h"

#include "contracts/applicationservices.h"
#include "objects/faultinjector.h"

namespace ZebObjects {

class CustomerDirectory;

// The application object of the stand-alone library: the sample issuers, the sample customer
// directory and a search context of the sample sales office, until the host puts others in place.
// Member names for fault injection: "ReformatText", "IssuedByNames", "IssuedByNames=",
// "SearchContext", "SearchContext=", "CreateCustomerFinder", "CustomerDirectory=".
class ZEBOBJECTS_EXPORT StandaloneApplicationServices : public ApplicationServices,
                                                        public FaultInjectable {
public:
    StandaloneApplicationServices();
    ~StandaloneApplicationServices() override;

    bool ReformatText(QString& text) override;
    QStringList IssuedByNames() const override;
    std::shared_ptr<CustomerSearchContext> SearchContext() const override;
    // Each finder searches the directory in place at the time it was created.
    std::shared_ptr<CustomerFinder> CreateCustomerFinder() override;

    void setIssuedByNames(const QStringList& names);
    void setSearchContext(std::shared_ptr<CustomerSearchContext> context);
    std::shared_ptr<CustomerDirectory> customerDirectory() const;
    void setCustomerDirectory(std::shared_ptr<CustomerDirectory> directory);

private:
    QStringList m_issuedBy;
    std::shared_ptr<CustomerSearchContext> m_searchContext;
    std::shared_ptr<CustomerDirectory> m_directory;
};

}  // namespace ZebObjects
