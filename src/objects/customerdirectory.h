#pragma once

#include "objects/faultinjector.h"
#include "objects/standalonecustomer.h"

#include <QList>

namespace ZebObjects {

// Every customer a sales office may send submittals to: what the customer finder searches.
// Member names for fault injection: "Add", "Count", "Records", "Search".
class CustomerDirectory : public FaultInjectable {
public:
    // One search, as CustomerFinder::Search describes its options and criteria.
    struct Query {
        bool includeInactive = false;
        bool exactName = false;
        bool matchAny = false;
        bool sortByAccountNumber = false;
        QString keyword;
        QString accountNumber;
        QString city;
        QString state;
        QString zip;
        QString phone;
        QString type;
        QString category;
        qint32 maximumResults = 0;

        friend bool operator==(const Query&, const Query&) = default;
    };

    // A key already held fails with 457.
    void Add(const StandaloneCustomer::Data& record);
    qint32 Count() const;
    QList<StandaloneCustomer::Data> Records() const;
    // The matches, in the query's order. Criteria are compared without their surrounding blanks;
    // a query without criteria matches nothing; a negative maximum fails with 5.
    QList<StandaloneCustomer::Data> Search(const Query& query) const;
    // The search itself, over any set of records (a directory held elsewhere searches alike).
    static QList<StandaloneCustomer::Data> match(const QList<StandaloneCustomer::Data>& records,
                                                 const Query& query);

private:
    QList<StandaloneCustomer::Data> m_records;
};

}  // namespace ZebObjects
