#pragma once

#include "zebstore_export.h"

#include "contracts/labelfield.h"
#include "contracts/labelfields.h"
#include "contracts/labels.h"

#include <QHash>

namespace ZebObjects {

class StoreConnection;

// One field of a label definition in a store. A field off the label comes on only while there
// is room under the label's limit; a field refused stays off without failing.
class ZEBSTORE_EXPORT StoreLabelField : public LabelField {
    Q_OBJECT
public:
    // seen: the print orders of the label's fields as this workstation last read or wrote them,
    // shared by the fields of one label.
    StoreLabelField(std::shared_ptr<StoreConnection> db, qint64 id, QString key,
                    std::shared_ptr<QHash<qint64, qint16>> seen, QObject* parent = nullptr);

    QString Caption() const override;
    QString Key() const override;
    bool Included() const override;
    qint16 PrintOrder() const override;
    void setPrintOrder(qint16 order) override;

    // What the collection read of this field for the snapshot; answered while it holds.
    void seen(quint64 snapshot, const QString& caption, qint16 order);

private:
    QVariantList fieldRow() const;
    qint16 seenOrder(const QVariantList& row) const;

    std::shared_ptr<StoreConnection> m_db;
    qint64 m_id;
    QString m_key;
    std::shared_ptr<QHash<qint64, qint16>> m_seen;
    quint64 m_snapshot = 0;
    QString m_seenCaption;
    qint16 m_seenOrder = 0;
};

// The fields of a label definition in a store, enumerated with the fields on the label first,
// in print order. Enumerate reads every field in one statement, and until the connection's
// snapshot ends the collection and its fields answer from that read.
class ZEBSTORE_EXPORT StoreLabelFields : public LabelFields {
public:
    StoreLabelFields(std::shared_ptr<StoreConnection> db, qint64 submittalId);
    ~StoreLabelFields() override;

    std::shared_ptr<LabelField> Item(const QString& key) const override;
    qint16 Count() const override;
    LabelFieldList Enumerate() const override;

    qint16 includedCount() const;

private:
    std::shared_ptr<StoreLabelField> field(qint64 id, const QString& key) const;

    std::shared_ptr<StoreConnection> m_db;
    qint64 m_id;
    mutable QHash<qint64, std::shared_ptr<StoreLabelField>> m_fields;
    mutable quint64 m_snapshot = 0;
    mutable QHash<QString, std::shared_ptr<StoreLabelField>> m_seenByKey;
    std::shared_ptr<QHash<qint64, qint16>> m_seen = std::make_shared<QHash<qint64, qint16>>();
};

class ZEBSTORE_EXPORT StoreLabels : public Labels {
public:
    StoreLabels(std::shared_ptr<StoreConnection> db, qint64 submittalId);
    ~StoreLabels() override;

    std::shared_ptr<ZebObjects::LabelFields> LabelFields() const override;

private:
    std::shared_ptr<StoreLabelFields> m_fields;
};

}  // namespace ZebObjects
