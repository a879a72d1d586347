#pragma once

#include "zebobjects_export.h"

#include "contracts/labelfield.h"
#include "objects/faultinjector.h"

#include <functional>

namespace ZebObjects {

// One field of an in-memory label definition. It is on the label exactly while its print order
// is not 0. Whether a field that is off the label may come on is asked of its collection, which
// keeps the label's limit; a field of no collection always may.
// Member names for fault injection: "Caption", "Key", "Included", "PrintOrder", "PrintOrder="
// (the typed write and the write by name alike).
class ZEBOBJECTS_EXPORT StandaloneLabelField : public LabelField, public FaultInjectable {
    Q_OBJECT
public:
    // Answers whether one more field fits on the label.
    using Room = std::function<bool()>;

    StandaloneLabelField(QString key, QString caption, QObject* parent = nullptr);

    QString Caption() const override;
    QString Key() const override;
    bool Included() const override;
    qint16 PrintOrder() const override;
    // 0 takes the field off (also when it is not on the label). A positive order moves a field
    // that is on the label, and brings one that is off onto it only when there is room; when
    // there is none the field stays off, without failing. Two fields may hold the same order for
    // a while: a label is renumbered one field at a time. A negative order fails with 5.
    void setPrintOrder(qint16 order) override;

    void setRoom(Room room);
    // The print order without going through the injector, for the collection's bookkeeping.
    qint16 printOrder() const { return m_order; }
    const QString& key() const { return m_key; }

private:
    QString m_key;
    QString m_caption;
    qint16 m_order = 0;
    Room m_room;
};

}  // namespace ZebObjects
