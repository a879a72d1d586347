#include "objects/standalonecustomerfinder.h"

#include "rules/customerchoice.h"
#include "objects/standalonecustomersearchresult.h"

namespace ZebObjects {

StandaloneCustomerFinder::StandaloneCustomerFinder(std::shared_ptr<CustomerDirectory> directory)
    : m_directory(std::move(directory))
{ }

StandaloneCustomerFinder::~StandaloneCustomerFinder() = default;

std::shared_ptr<CustomerSearchResult> StandaloneCustomerFinder::Search(
    bool includeInactive, bool interactive, bool exactName, bool matchAny, bool sortByAccountNumber,
    const QVariant& context, const QString& keyword, const QString& accountNumber,
    const QString& city, const QString& state, const QString& zip, const QString& phone,
    const QString& type, const QString& category, qint32 maximumResults)
{
    check("Search");
    const CustomerDirectory::Query query{includeInactive,
                                         exactName,
                                         matchAny,
                                         sortByAccountNumber,
                                         keyword,
                                         accountNumber,
                                         city,
                                         state,
                                         zip,
                                         phone,
                                         type,
                                         category,
                                         maximumResults};
    m_lastCall = Call{interactive, context, query};
    if (!m_directory)
        throw Failure(ErrorNumber::ObjectNotSet, QStringLiteral("ZebObjects.CustomerFinder"),
                      QStringLiteral("Object variable or With block variable not set: the finder "
                                     "has no customer directory"));

    return settle(m_directory->Search(query), interactive);
}

std::shared_ptr<CustomerSearchResult> StandaloneCustomerFinder::settle(
    const QList<StandaloneCustomer::Data>& matches, bool interactive, const Maker& make)
{
    const qsizetype chosen = CustomerChoice::settle(matches, interactive);
    if (chosen < 0)
        return nullptr;

    StandaloneCustomer::Data data = matches[chosen];
    data.included = false;
    std::shared_ptr<Customer> customer =
        make ? make(std::move(data)) : std::make_shared<StandaloneCustomer>(std::move(data));
    return std::make_shared<StandaloneCustomerSearchResult>(std::move(customer),
                                                            qint32(matches.size()));
}

}  // namespace ZebObjects
