#pragma once

#include "zebobjectscontracts_export.h"

#include <QObject>
#include <QString>

namespace ZebObjects {

/// One field that can print on a mailing label. PrintOrder is also a property by name, so a
/// caller with only the object's meta-object can renumber it: setProperty("PrintOrder", n) with
/// a 32-bit n. A value that does not fit 16 bits fails there with overflow (6).
/// Bound to a row of ctlLabelCriteria.
class ZEBOBJECTSCONTRACTS_EXPORT LabelField : public QObject {
    Q_OBJECT
    /// The field's place on the label by name (see PrintOrder() and writePrintOrder()).
    Q_PROPERTY(qint32 PrintOrder READ PrintOrder WRITE writePrintOrder)
public:
    /// Constructs the object with Qt's parent, as QObject does.
    using QObject::QObject;
    ~LabelField() override = default;

    /// The field's name as the label criteria show it.
    virtual QString Caption() const = 0;
    /// Unique within its collection.
    virtual QString Key() const = 0;
    /// True exactly when the print order is not 0.
    virtual bool Included() const = 0;
    /// The field's 1-based place on the label; 0 when it does not print.
    virtual qint16 PrintOrder() const = 0;
    /// 1-based place on the label; 0 takes the field off. The object may refuse to include the
    /// field (Included stays false) without failing.
    virtual void setPrintOrder(qint16 order) = 0;

    /// The by-name write: narrows to 16 bits, then setPrintOrder.
    void writePrintOrder(qint32 order);
};

}  // namespace ZebObjects
