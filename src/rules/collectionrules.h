#pragma once

#include "zebobjectsrules_export.h"

#include "contracts/failure.h"

#include <QString>

namespace ZebObjects {

class Customer;

// The failures every collection of the business objects raises alike, whatever holds it.
// what names one element in words ("text object", "customer").
class ZEBOBJECTSRULES_EXPORT CollectionRules {
public:
    // 457: the key is already held.
    static Failure duplicateKey(const QString& source, const QString& key);
    // 9: no element under the key.
    static Failure missingKey(const QString& source, const QString& what, const QString& key);
    // 9: no element at a 1-based position.
    static Failure noPosition(const QString& source, const QString& what, qint64 position,
                              qint64 count);
    // Fails with 6 when a collection of count elements counted in 16 bits cannot take one more.
    static void checkRoom(const QString& source, const QString& what, qint64 count);
    // What a customer collection checks before it takes a customer in: none fails with 91, a
    // key already held with 457, a 32,768th customer with 6.
    static void checkCustomerAdd(const QString& source, const Customer* customer,
                                 const QString& key, bool keyHeld, qint64 count);
};

}  // namespace ZebObjects
