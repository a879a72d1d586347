#include "store/storedirectory.h"

#include "rules/collectionrules.h"
#include "store/storeconnection.h"

#include <QSet>

namespace ZebObjects {

QList<CustomerRecord> StoreDirectory::records(StoreConnection& db)
{
    QList<CustomerRecord> out;
    for (const QVariantList& r : db.rows(QStringLiteral(
             "SELECT key, display_text, name, account_number, city, state, type, category, zip, "
             "phone, active, attention, street, street2, email FROM directory_customers "
             "ORDER BY id"))) {
        CustomerRecord d;
        d.key = r[0].toString();
        d.displayText = r[1].toString();
        d.name = r[2].toString();
        d.accountNumber = r[3].toString();
        d.city = r[4].toString();
        d.state = r[5].toString();
        d.type = r[6].toString();
        d.category = r[7].toString();
        d.zip = r[8].toString();
        d.phone = r[9].toString();
        d.active = r[10].toBool();
        d.attention = r[11].toString();
        d.street = r[12].toString();
        d.street2 = r[13].toString();
        d.email = r[14].toString();
        out.append(d);
    }
    return out;
}

qint32 StoreDirectory::count(StoreConnection& db)
{
    return db.value(QStringLiteral("SELECT COUNT(*) FROM directory_customers")).toInt();
}

void StoreDirectory::add(StoreConnection& db, const CustomerRecord& d)
{
    if (db.value(QStringLiteral("SELECT 1 FROM directory_customers WHERE key = ?"), {d.key})
            .isValid())
        throw CollectionRules::duplicateKey(QStringLiteral("ZebObjects.CustomerDirectory"), d.key);
    db.run(QStringLiteral("INSERT INTO directory_customers (key, display_text, name, "
                          "account_number, city, state, type, category, zip, phone, active, "
                          "attention, street, street2, email) "
                          "VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)"),
           {d.key, d.displayText, d.name, d.accountNumber, d.city, d.state, d.type, d.category,
            d.zip, d.phone, int(d.active), d.attention, d.street, d.street2, d.email});
}

QString StoreDirectory::nextKey(StoreConnection& db)
{
    QSet<QString> keys;
    for (const QVariantList& r : db.rows(QStringLiteral("SELECT key FROM directory_customers")))
        keys.insert(r[0].toString());
    int n = 1;
    while (keys.contains(QStringLiteral("C%1").arg(n)))
        ++n;
    return QStringLiteral("C%1").arg(n);
}

QStringList StoreDirectory::issuedByNames(StoreConnection& db)
{
    QStringList out;
    for (const QVariantList& r :
         db.rows(QStringLiteral("SELECT name FROM issuers ORDER BY position, id")))
        out.append(r[0].toString());
    return out;
}

void StoreDirectory::setIssuedByNames(StoreConnection& db, const QStringList& names)
{
    db.run(QStringLiteral("DELETE FROM issuers"));
    for (qsizetype i = 0; i < names.size(); ++i)
        db.run(QStringLiteral("INSERT INTO issuers (position, name) VALUES (?, ?)"),
               {qint64(i + 1), names[i]});
}

QVariant StoreDirectory::searchContextValue(StoreConnection& db)
{
    return db.value(QStringLiteral("SELECT value FROM settings WHERE name = 'search_context'"));
}

void StoreDirectory::setSearchContextValue(StoreConnection& db, const QVariant& value)
{
    db.run(QStringLiteral("INSERT INTO settings (name, value) VALUES ('search_context', ?) ON "
                          "CONFLICT (name) DO UPDATE SET value = excluded.value"),
           {value.toString()});
}

}  // namespace ZebObjects
