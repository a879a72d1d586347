#include "store/storeapplicationservices.h"

#include "contracts/customersearchcontext.h"
#include "contracts/customersearchresult.h"
#include "rules/customerchoice.h"
#include "rules/customersearch.h"
#include "rules/textformatter.h"
#include "store/storeconnection.h"
#include "store/storecustomers.h"
#include "store/storedirectory.h"

namespace ZebObjects {

namespace {

// The search context of the office's users, as the file holds it.
class StoreSearchContext : public CustomerSearchContext {
public:
    explicit StoreSearchContext(QVariant value) : m_value(std::move(value)) { }
    QVariant Value() const override { return m_value; }

private:
    QVariant m_value;
};

class StoreSearchResult : public CustomerSearchResult {
public:
    explicit StoreSearchResult(std::shared_ptr<Customer> chosen) : m_chosen(std::move(chosen)) { }
    std::shared_ptr<Customer> ChosenCustomer() const override { return m_chosen; }

private:
    std::shared_ptr<Customer> m_chosen;
};

}  // namespace

StoreCustomerFinder::StoreCustomerFinder(std::shared_ptr<StoreConnection> db) : m_db(std::move(db))
{ }

std::shared_ptr<CustomerSearchResult> StoreCustomerFinder::Search(
    bool includeInactive, bool interactive, bool exactName, bool matchAny, bool sortByAccountNumber,
    const QVariant& /*context*/, const QString& keyword, const QString& accountNumber,
    const QString& city, const QString& state, const QString& zip, const QString& phone,
    const QString& type, const QString& category, qint32 maximumResults)
{
    const CustomerQuery query{includeInactive,
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
    const auto matches = CustomerSearch::match(StoreDirectory::records(*m_db), query);
    const QString typed = keyword.trimmed();
    if (matches.isEmpty() && interactive && !typed.isEmpty()
        && CustomerChoice::offersNewCustomer()) {
        // Nobody by that name: the user may make the customer there and then; it joins the
        // directory and is the one found.
        std::optional<CustomerRecord> added = CustomerChoice::offerNewCustomer(typed);
        if (!added)
            return nullptr;
        m_db->write([&] {
            if (added->key.isEmpty())
                added->key = StoreDirectory::nextKey(*m_db);
            StoreDirectory::add(*m_db, *added);
        });
        added->included = false;
        return std::make_shared<StoreSearchResult>(
            std::make_shared<StoreCustomer>(m_db, std::move(*added)));
    }
    const qsizetype chosen = CustomerChoice::settle(matches, interactive);
    if (chosen < 0)
        return nullptr;
    // The customer found is the store's own, so that the submittal it is added to takes in
    // this very object.
    CustomerRecord record = matches[chosen];
    record.included = false;
    return std::make_shared<StoreSearchResult>(
        std::make_shared<StoreCustomer>(m_db, std::move(record)));
}

StoreApplicationServices::StoreApplicationServices(std::shared_ptr<StoreConnection> db)
    : m_db(std::move(db))
{ }

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
    return std::make_shared<StoreSearchContext>(StoreDirectory::searchContextValue(*m_db));
}

std::shared_ptr<CustomerFinder> StoreApplicationServices::CreateCustomerFinder()
{
    return std::make_shared<StoreCustomerFinder>(m_db);
}

}  // namespace ZebObjects
