#pragma once

#include "zebobjects_export.h"

#include "objects/faultinjector.h"
#include "objects/standalonecustomer.h"
#include "rules/customersearch.h"

#include <QList>

namespace ZebObjects {

// Every customer a sales office may send submittals to: what the customer finder searches.
// Member names for fault injection: "Add", "Count", "Records", "Search".
class ZEBOBJECTS_EXPORT CustomerDirectory : public FaultInjectable {
public:
    using Query = CustomerQuery;

    // A key already held fails with 457.
    void Add(const StandaloneCustomer::Data& record);
    qint32 Count() const;
    QList<StandaloneCustomer::Data> Records() const;
    // The matches, in the query's order (CustomerSearch::match).
    QList<StandaloneCustomer::Data> Search(const Query& query) const;
    // The search itself, over any set of records (a directory held elsewhere searches alike).
    static QList<StandaloneCustomer::Data> match(const QList<StandaloneCustomer::Data>& records,
                                                 const Query& query);

private:
    QList<StandaloneCustomer::Data> m_records;
};

}  // namespace ZebObjects
