#pragma once

#include "zebobjectsrules_export.h"

#include <QString>

namespace ZebObjects {

// The rules of a label definition, whatever holds its fields: a field is on the label exactly
// while its print order is not 0, and at most a limited number of fields are on it at once.
class ZEBOBJECTSRULES_EXPORT LabelRules {
public:
    static constexpr qint16 DefaultMaximum = 5;

    // A negative print order fails with invalid procedure call (5).
    static void checkPrintOrder(const QString& key, qint16 order);
    // Whether a write of wanted to a field now at current takes effect: a field that is off the
    // label comes on only while fewer than maximum fields are on it. A field refused stays off,
    // without failing. A negative maximum means no limit.
    static bool admits(qint16 current, qint16 wanted, qint16 includedCount, qint16 maximum);
    // The enumeration order: fields on the label first, by print order, then the others; true
    // when a field at order a comes before one at order b (for a stable sort).
    static bool comesBefore(qint16 a, qint16 b);
};

}  // namespace ZebObjects
