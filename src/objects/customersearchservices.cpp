// The customer search members of the stand-alone application object.
#include "objects/standaloneapplicationservices.h"

#include "objects/customerdirectory.h"
#include "objects/sampledata.h"
#include "objects/standalonecustomerfinder.h"
#include "objects/standalonecustomersearchcontext.h"

namespace ZebObjects {

StandaloneApplicationServices::StandaloneApplicationServices()
    : m_issuedBy(SampleData::issuedByNames()),
      m_searchContext(
          std::make_shared<StandaloneCustomerSearchContext>(SampleData::searchContextValue())),
      m_directory(SampleData::customerDirectory())
{ }

std::shared_ptr<CustomerSearchContext> StandaloneApplicationServices::SearchContext() const
{
    check("SearchContext");
    return m_searchContext;
}

std::shared_ptr<CustomerFinder> StandaloneApplicationServices::CreateCustomerFinder()
{
    check("CreateCustomerFinder");
    return std::make_shared<StandaloneCustomerFinder>(m_directory);
}

void StandaloneApplicationServices::setSearchContext(std::shared_ptr<CustomerSearchContext> context)
{
    check("SearchContext=");
    m_searchContext = std::move(context);
}

std::shared_ptr<CustomerDirectory> StandaloneApplicationServices::customerDirectory() const
{
    return m_directory;
}

void StandaloneApplicationServices::setCustomerDirectory(
    std::shared_ptr<CustomerDirectory> directory)
{
    check("CustomerDirectory=");
    m_directory = std::move(directory);
}

}  // namespace ZebObjects
