#include "rules/collectionrules.h"

#include <limits>

namespace ZebObjects {

Failure CollectionRules::duplicateKey(const QString& source, const QString& key)
{
    return Failure(ErrorNumber::KeyAlreadyInCollection, source,
                   QStringLiteral("This key is already associated with an element of this "
                                  "collection: \"%1\"")
                       .arg(key));
}

Failure CollectionRules::missingKey(const QString& source, const QString& what, const QString& key)
{
    return Failure(
        ErrorNumber::SubscriptOutOfRange, source,
        QStringLiteral("Subscript out of range: no %1 has the key \"%2\"").arg(what, key));
}

Failure CollectionRules::noPosition(const QString& source, const QString& what, qint64 position,
                                    qint64 count)
{
    return Failure(ErrorNumber::SubscriptOutOfRange, source,
                   QStringLiteral("Subscript out of range: no %1 at position %2 of %3")
                       .arg(what)
                       .arg(position)
                       .arg(count));
}

void CollectionRules::checkRoom(const QString& source, const QString& what, qint64 count)
{
    if (count >= std::numeric_limits<qint16>::max())
        throw Failure(ErrorNumber::Overflow, source,
                      QStringLiteral("Overflow: a submittal has at most 32767 %1").arg(what));
}

void CollectionRules::checkCustomerAdd(const QString& source, const Customer* customer,
                                       const QString& key, bool keyHeld, qint64 count)
{
    if (!customer)
        throw Failure(ErrorNumber::ObjectNotSet, source,
                      QStringLiteral("Object variable or With block variable not set: no "
                                     "customer to add"));
    if (keyHeld)
        throw duplicateKey(source, key);
    checkRoom(source, QStringLiteral("customers"), count);
}

}  // namespace ZebObjects
