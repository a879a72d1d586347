#include "contracts/labelfield.h"

#include "contracts/failure.h"

#include <limits>

namespace ZebObjects {

void LabelField::writePrintOrder(qint32 order)
{
    if (order < std::numeric_limits<qint16>::min() || order > std::numeric_limits<qint16>::max())
        throw Failure(
            ErrorNumber::Overflow, QStringLiteral("ZebObjects.LabelField"),
            QStringLiteral("Overflow: a print order of %1 does not fit 16 bits").arg(order));
    setPrintOrder(qint16(order));
}

}  // namespace ZebObjects
