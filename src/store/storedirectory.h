#pragma once

#include "zebstore_export.h"

#include "rules/customerrecord.h"

#include <QList>
#include <QStringList>
#include <QVariant>

namespace ZebObjects {

class StoreConnection;

// The office-wide records of a store: the customer directory, the issuers and the search
// context of its user.
class ZEBSTORE_EXPORT StoreDirectory {
public:
    static QList<CustomerRecord> records(StoreConnection& db);
    static qint32 count(StoreConnection& db);
    // Inside the caller's transaction; a key already held fails with 457.
    static void add(StoreConnection& db, const CustomerRecord& record);
    // The first "C" number no customer has as its key.
    static QString nextKey(StoreConnection& db);

    static QStringList issuedByNames(StoreConnection& db);
    // Replaces the issuers, inside the caller's transaction.
    static void setIssuedByNames(StoreConnection& db, const QStringList& names);

    static QVariant searchContextValue(StoreConnection& db);
    static void setSearchContextValue(StoreConnection& db, const QVariant& value);
};

}  // namespace ZebObjects
