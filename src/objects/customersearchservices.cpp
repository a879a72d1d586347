// Placeholder until the customer contracts land: the search members are not available yet.
#include "objects/standaloneapplicationservices.h"

namespace ZebObjects {

StandaloneApplicationServices::StandaloneApplicationServices() = default;

std::shared_ptr<ZebObjects::CustomerSearchContext> StandaloneApplicationServices::SearchContext() const
{
    check("SearchContext");
    throw Failure(ErrorNumber::CannotCreateObject, QStringLiteral("ZebObjects.ApplicationServices"),
                  QStringLiteral("Customer search is not available"));
}

std::shared_ptr<CustomerFinder> StandaloneApplicationServices::CreateCustomerFinder()
{
    check("CreateCustomerFinder");
    throw Failure(ErrorNumber::CannotCreateObject, QStringLiteral("ZebObjects.ApplicationServices"),
                  QStringLiteral("Customer search is not available"));
}

}  // namespace ZebObjects
