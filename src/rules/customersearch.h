#pragma once

#include "zebobjectsrules_export.h"

#include "rules/customerrecord.h"

#include <QList>

namespace ZebObjects {

// One search of a customer directory, as CustomerFinder::Search describes its options and
// criteria.
struct CustomerQuery {
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

    friend bool operator==(const CustomerQuery&, const CustomerQuery&) = default;
};

// How a customer directory is searched, wherever its records are held.
class ZEBOBJECTSRULES_EXPORT CustomerSearch {
public:
    // The matches, in the query's order. Criteria are compared without their surrounding blanks;
    // a query without criteria matches nothing; a negative maximum fails with 5.
    static QList<CustomerRecord> match(const QList<CustomerRecord>& records,
                                       const CustomerQuery& query);
};

}  // namespace ZebObjects
