#include "store/storeapplicationservices.h"

#include "objects/customerdirectory.h"
#include "objects/standalonecustomerfinder.h"
#include "objects/standalonecustomersearchcontext.h"
#include "objects/textformatter.h"
#include "store/storeconnection.h"
#include "store/storecustomers.h"
#include "store/storedirectory.h"

namespace ZebObjects {

StoreCustomerFinder::StoreCustomerFinder(std::shared_ptr<StoreConnection> db)
    : m_db(std::move(db))
{
}

std::shared_ptr<CustomerSearchResult> StoreCustomerFinder::Search(
    bool includeInactive, bool interactive, bool exactName, bool matchAny,
    bool sortByAccountNumber, const QVariant& /*context*/, const QString& keyword,
    const QString& accountNumber, const QString& city, const QString& state, const QString& zip,
    const QString& phone, const QString& type, const QString& category, qint32 maximumResults)
{
    const CustomerDirectory::Query query{includeInactive, exactName, matchAny,
                                         sortByAccountNumber, keyword, accountNumber,
                                         city, state, zip, phone, type, category,
                                         maximumResults};
    const auto matches = CustomerDirectory::match(StoreDirectory::records(*m_db), query);
    // The customer found is the store's own, so that the submittal it is added to takes in
    // this very object.
    return StandaloneCustomerFinder::settle(
        matches, interactive, [this](StandaloneCustomer::Data record) -> std::shared_ptr<Customer> {
            return std::make_shared<StoreCustomer>(m_db, std::move(record));
        });
}

StoreApplicationServices::StoreApplicationServices(std::shared_ptr<StoreConnection> db)
    : m_db(std::move(db))
{
}

bool StoreApplicationServices::ReformatText(QString& text)
{
    return TextFormatter::reformat(text);
}

QStringList StoreApplicationServices::IssuedByNames() const
{
    return StoreDirectory::issuedByNames(*m_db);
}

std::shared_ptr<CustomerSearchContext> StoreApplicationServices::SearchContext() const
{
    return std::make_shared<StandaloneCustomerSearchContext>(
        StoreDirectory::searchContextValue(*m_db));
}

std::shared_ptr<CustomerFinder> StoreApplicationServices::CreateCustomerFinder()
{
    return std::make_shared<StoreCustomerFinder>(m_db);
}

}  // namespace ZebObjects
