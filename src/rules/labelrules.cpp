#include "rules/labelrules.h"

#include "contracts/failure.h"

namespace ZebObjects {

void LabelRules::checkPrintOrder(const QString& key, qint16 order)
{
    if (order < 0)
        throw Failure(ErrorNumber::InvalidProcedureCall, QStringLiteral("ZebObjects.LabelField"),
                      QStringLiteral("Invalid procedure call or argument: the print order of "
                                     "\"%1\" cannot be %2")
                          .arg(key)
                          .arg(order));
}

bool LabelRules::admits(qint16 current, qint16 wanted, qint16 includedCount, qint16 maximum)
{
    if (wanted > 0 && current == 0 && maximum >= 0)
        return includedCount < maximum;
    return true;
}

bool LabelRules::comesBefore(qint16 a, qint16 b)
{
    if ((a == 0) != (b == 0))
        return b == 0;
    return a != 0 && a < b;
}

}  // namespace ZebObjects
