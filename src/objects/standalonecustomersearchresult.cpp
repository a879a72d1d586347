#include "objects/standalonecustomersearchresult.h"

namespace ZebObjects {

StandaloneCustomerSearchResult::StandaloneCustomerSearchResult(std::shared_ptr<Customer> chosen,
                                                               qint32 matchCount)
    : m_chosen(std::move(chosen)), m_matchCount(matchCount)
{ }

std::shared_ptr<Customer> StandaloneCustomerSearchResult::ChosenCustomer() const
{
    check("ChosenCustomer");
    return m_chosen;
}

}  // namespace ZebObjects
