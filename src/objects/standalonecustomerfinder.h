#pragma once

#include "zebobjects_export.h"

#include "contracts/customerfinder.h"
#include "objects/customerdirectory.h"
#include "objects/faultinjector.h"

#include <functional>
#include <optional>

namespace ZebObjects {

// Searches a customer directory. One match settles on that customer; several are offered to the
// host's chooser when the search is interactive (and settle on nobody otherwise); no match, or
// none chosen, answers nothing (CustomerChoice). The customer it answers is a new object with the
// directory's data, not included in anything yet. Member names for fault injection: "Search".
class ZEBOBJECTS_EXPORT StandaloneCustomerFinder : public CustomerFinder, public FaultInjectable {
public:
    // A search as the finder received it.
    struct Call {
        bool interactive = false;
        QVariant context;
        CustomerDirectory::Query query;
    };

    explicit StandaloneCustomerFinder(std::shared_ptr<CustomerDirectory> directory);
    ~StandaloneCustomerFinder() override;

    std::shared_ptr<CustomerSearchResult> Search(
        bool includeInactive, bool interactive, bool exactName, bool matchAny,
        bool sortByAccountNumber, const QVariant& context, const QString& keyword,
        const QString& accountNumber, const QString& city, const QString& state, const QString& zip,
        const QString& phone, const QString& type, const QString& category,
        qint32 maximumResults) override;

    // Makes the customer a search answers from its directory record (not included yet).
    using Maker = std::function<std::shared_ptr<Customer>(StandaloneCustomer::Data)>;

    // What a search ends with, given its matches (CustomerChoice::settle). Without a maker the
    // customer is a stand-alone one.
    static std::shared_ptr<CustomerSearchResult> settle(
        const QList<StandaloneCustomer::Data>& matches, bool interactive, const Maker& make = {});

    std::shared_ptr<CustomerDirectory> directory() const { return m_directory; }
    // The last search received, if any (kept even when it failed).
    const std::optional<Call>& lastCall() const { return m_lastCall; }

private:
    std::shared_ptr<CustomerDirectory> m_directory;
    std::optional<Call> m_lastCall;
};

}  // namespace ZebObjects
