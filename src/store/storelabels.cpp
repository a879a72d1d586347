#include "store/storelabels.h"

#include "rules/collectionrules.h"
#include "rules/labelrules.h"
#include "store/storeconnection.h"
#include "store/storelastread.h"

#include <algorithm>
#include <vector>

namespace ZebObjects {

namespace {
const QString kSource = QStringLiteral("ZebObjects.LabelFields");
const QString kWhat = QStringLiteral("label field");
}  // namespace

StoreLabelField::StoreLabelField(std::shared_ptr<StoreConnection> db, qint64 id, QString key,
                                 std::shared_ptr<QHash<qint64, qint16>> seen, QObject* parent)
    : LabelField(parent), m_db(std::move(db)), m_id(id), m_key(std::move(key)),
      m_seen(std::move(seen))
{ }

void StoreLabelField::seen(quint64 snapshot, const QString& caption, qint16 order)
{
    m_snapshot = snapshot;
    m_seenCaption = caption;
    m_seenOrder = order;
}

QVariantList StoreLabelField::fieldRow() const
{
    if (m_db->holds(m_snapshot))
        return {m_seenCaption, int(m_seenOrder)};
    const QVariantList r = m_db->row(
        QStringLiteral("SELECT caption, print_order, submittal_id FROM label_fields WHERE id = ?"),
        {m_id});
    if (r.isEmpty())
        throw CollectionRules::missingKey(kSource, kWhat, m_key);
    return r;
}

QString StoreLabelField::Caption() const
{
    return fieldRow()[0].toString();
}
QString StoreLabelField::Key() const
{
    return m_key;
}
qint16 StoreLabelField::seenOrder(const QVariantList& row) const
{
    const qint16 order = qint16(row[1].toInt());
    m_seen->insert(m_id, order);
    return order;
}

bool StoreLabelField::Included() const
{
    return seenOrder(fieldRow()) != 0;
}
qint16 StoreLabelField::PrintOrder() const
{
    return seenOrder(fieldRow());
}

void StoreLabelField::setPrintOrder(qint16 order)
{
    LabelRules::checkPrintOrder(m_key, order);
    QString caption;
    bool changedElsewhere = false;
    m_db->write([&] {
        const QVariantList r = fieldRow();
        caption = r[0].toString();
        const qint16 current = qint16(r[1].toInt());
        // The order of a field only means something beside the others: another workstation's
        // change to any field of this label since it was shown here makes this write a conflict,
        // unless it already did what this write asks.
        const auto orders = m_db->rows(
            QStringLiteral("SELECT id, print_order FROM label_fields WHERE submittal_id = ?"),
            {r[2]});
        if (current != order) {
            for (const QVariantList& f : orders) {
                const auto seen = m_seen->constFind(f[0].toLongLong());
                if (seen != m_seen->constEnd() && *seen != qint16(f[1].toInt())) {
                    changedElsewhere = true;
                    break;
                }
            }
        }
        if (changedElsewhere) {
            for (const QVariantList& f : orders)
                m_seen->insert(f[0].toLongLong(), qint16(f[1].toInt()));
            return;
        }
        m_seen->insert(m_id, current);
        if (current == order)
            return;
        const QVariantList label = m_db->row(
            QStringLiteral("SELECT (SELECT COUNT(*) FROM label_fields WHERE submittal_id = ? "
                           "AND print_order <> 0), COALESCE((SELECT maximum_included FROM labels "
                           "WHERE submittal_id = ?), ?)"),
            {r[2], r[2], LabelRules::DefaultMaximum});
        if (!LabelRules::admits(current, order, qint16(label[0].toInt()), qint16(label[1].toInt())))
            return;
        m_db->run(QStringLiteral("UPDATE label_fields SET print_order = ? WHERE id = ?"),
                  {int(order), m_id});
        m_seen->insert(m_id, order);
    });
    if (changedElsewhere)
        throw m_db->refused(
            Failure(StoreLastRead::ChangedElsewhere, kSource,
                    QStringLiteral("Another workstation changed the fields on the labels after "
                                   "they were shown here, so the print order %1 of \"%2\" was "
                                   "not saved. The other workstation's fields are shown once "
                                   "the job is refreshed; make the change again if it still "
                                   "applies.")
                        .arg(order)
                        .arg(caption)));
}

StoreLabelFields::StoreLabelFields(std::shared_ptr<StoreConnection> db, qint64 submittalId)
    : m_db(std::move(db)), m_id(submittalId)
{ }

StoreLabelFields::~StoreLabelFields() = default;

std::shared_ptr<StoreLabelField> StoreLabelFields::field(qint64 id, const QString& key) const
{
    auto& slot = m_fields[id];
    if (!slot)
        slot = std::make_shared<StoreLabelField>(m_db, id, key, m_seen);
    return slot;
}

std::shared_ptr<LabelField> StoreLabelFields::Item(const QString& key) const
{
    if (m_db->holds(m_snapshot)) {
        const auto found = m_seenByKey.constFind(key);
        if (found == m_seenByKey.constEnd())
            throw CollectionRules::missingKey(kSource, kWhat, key);
        return *found;
    }
    const QVariant id = m_db->value(
        QStringLiteral("SELECT id FROM label_fields WHERE submittal_id = ? AND key = ?"),
        {m_id, key});
    if (!id.isValid())
        throw CollectionRules::missingKey(kSource, kWhat, key);
    return field(id.toLongLong(), key);
}

qint16 StoreLabelFields::Count() const
{
    if (m_db->holds(m_snapshot))
        return qint16(m_seenByKey.size());
    return qint16(
        m_db->value(QStringLiteral("SELECT COUNT(*) FROM label_fields WHERE submittal_id = ?"),
                    {m_id})
            .toInt());
}

LabelFieldList StoreLabelFields::Enumerate() const
{
    struct Row {
        qint64 id;
        QString key;
        qint16 order;
        QString caption;
    };
    // One statement: one state of the file, whatever another program commits meanwhile.
    std::vector<Row> rows;
    for (const QVariantList& r :
         m_db->rows(QStringLiteral("SELECT id, key, print_order, caption "
                                   "FROM label_fields WHERE "
                                   "submittal_id = ? ORDER BY position, id"),
                    {m_id}))
        rows.push_back({r[0].toLongLong(), r[1].toString(), qint16(r[2].toInt()), r[3].toString()});
    m_snapshot = m_db->snapshot();
    m_seenByKey.clear();
    for (const Row& r : rows)
        m_seen->insert(r.id, r.order);
    std::stable_sort(rows.begin(), rows.end(), [](const Row& a, const Row& b) {
        return LabelRules::comesBefore(a.order, b.order);
    });
    LabelFieldList out;
    for (const Row& r : rows) {
        auto f = field(r.id, r.key);
        f->seen(m_snapshot, r.caption, r.order);
        m_seenByKey.insert(r.key, f);
        out.append(f);
    }
    return out;
}

qint16 StoreLabelFields::includedCount() const
{
    return qint16(m_db->value(QStringLiteral("SELECT COUNT(*) FROM label_fields WHERE "
                                             "submittal_id = ? AND print_order <> 0"),
                              {m_id})
                      .toInt());
}

StoreLabels::StoreLabels(std::shared_ptr<StoreConnection> db, qint64 submittalId)
    : m_fields(std::make_shared<StoreLabelFields>(std::move(db), submittalId))
{ }

StoreLabels::~StoreLabels() = default;

std::shared_ptr<LabelFields> StoreLabels::LabelFields() const
{
    return m_fields;
}

}  // namespace ZebObjects
