#pragma once

#include "zebstore_export.h"

#include "contracts/applicationservices.h"
#include "contracts/customerfinder.h"

namespace ZebObjects {

class StoreConnection;

// Searches the customer directory of a store as it stands at the moment of the search, by the
// same rules as the stand-alone finder (one match settles, several go to the chooser when the
// search is interactive). The customer it answers is a StoreCustomer on no submittal yet, which
// the customers of a submittal of this store take in as it is.
class ZEBSTORE_EXPORT StoreCustomerFinder : public CustomerFinder {
public:
    explicit StoreCustomerFinder(std::shared_ptr<StoreConnection> db);

    std::shared_ptr<CustomerSearchResult> Search(
        bool includeInactive, bool interactive, bool exactName, bool matchAny,
        bool sortByAccountNumber, const QVariant& context, const QString& keyword,
        const QString& accountNumber, const QString& city, const QString& state, const QString& zip,
        const QString& phone, const QString& type, const QString& category,
        qint32 maximumResults) override;

private:
    std::shared_ptr<StoreConnection> m_db;
};

// The application object of an office in a store: issuers and search context from the file,
// the stand-alone reformatting rule.
class ZEBSTORE_EXPORT StoreApplicationServices : public ApplicationServices {
public:
    explicit StoreApplicationServices(std::shared_ptr<StoreConnection> db);

    bool ReformatText(QString& text) override;
    QStringList IssuedByNames() const override;
    std::shared_ptr<CustomerSearchContext> SearchContext() const override;
    std::shared_ptr<CustomerFinder> CreateCustomerFinder() override;

private:
    std::shared_ptr<StoreConnection> m_db;
};

}  // namespace ZebObjects
