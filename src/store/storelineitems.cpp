#include "store/storelineitems.h"

#include "rules/collectionrules.h"
#include "store/storeconnection.h"

namespace ZebObjects {

namespace {

const QString kSource = QStringLiteral("ZebObjects.LineItems");

Failure gone(const StoreConnection& db)
{
    return Failure(ErrorNumber::ElementNotFound, kSource,
                   QStringLiteral("Element not found: the line is no longer in the database "
                                  "file \"%1\"")
                       .arg(db.path()));
}

}  // namespace

StoreLineItemComment::StoreLineItemComment(std::shared_ptr<StoreConnection> db, qint64 lineId)
    : m_db(std::move(db)), m_id(lineId)
{ }

QString StoreLineItemComment::Text() const
{
    return m_db
        ->value(QStringLiteral("SELECT text FROM line_item_comments WHERE line_item_id = ?"),
                {m_id})
        .toString();
}

StoreLineItem::StoreLineItem(std::shared_ptr<StoreConnection> db, qint64 id)
    : m_db(std::move(db)), m_id(id)
{ }

QVariant StoreLineItem::column(const char* name) const
{
    const QVariant v = m_db->value(
        QStringLiteral("SELECT %1 FROM line_items WHERE id = ?").arg(QLatin1String(name)), {m_id});
    if (!v.isValid())
        throw gone(*m_db);
    return v;
}

bool StoreLineItem::Selected() const
{
    return column("selected").toBool();
}

void StoreLineItem::setSelected(bool selected)
{
    m_db->setColumn(QStringLiteral("line_items"), QStringLiteral("selected"), QStringLiteral("id"),
                    m_id, int(selected), int(column("selected").toBool()));
}

QString StoreLineItem::Quantity() const
{
    return QString::number(column("quantity").toLongLong());
}

QString StoreLineItem::Type() const
{
    return column("type").toString();
}
QString StoreLineItem::Brand() const
{
    return column("brand").toString();
}
QString StoreLineItem::CatalogNumber() const
{
    return column("catalog_number").toString();
}
QString StoreLineItem::Description() const
{
    return column("description").toString();
}
QString StoreLineItem::Group() const
{
    return column("group_code").toString();
}
bool StoreLineItem::MTO() const
{
    return column("mto").toBool();
}

std::shared_ptr<LineItemComment> StoreLineItem::Comment() const
{
    const QVariant has = m_db->value(
        QStringLiteral("SELECT 1 FROM line_item_comments WHERE line_item_id = ?"), {m_id});
    if (!has.isValid())
        return nullptr;
    if (!m_comment)
        m_comment = std::make_shared<StoreLineItemComment>(m_db, m_id);
    return m_comment;
}

StoreLineItems::StoreLineItems(std::shared_ptr<StoreConnection> db, qint64 submittalId)
    : m_db(std::move(db)), m_id(submittalId)
{ }

StoreLineItems::~StoreLineItems() = default;

std::shared_ptr<LineItem> StoreLineItems::line(qint64 id) const
{
    auto& slot = m_lines[id];
    if (!slot)
        slot = std::make_shared<StoreLineItem>(m_db, id);
    return slot;
}

qint16 StoreLineItems::Count() const
{
    return qint16(
        m_db->value(QStringLiteral("SELECT COUNT(*) FROM line_items WHERE submittal_id = ?"),
                    {m_id})
            .toInt());
}

std::shared_ptr<LineItem> StoreLineItems::Item(qint16 position) const
{
    const QVariant id =
        position < 1 ? QVariant()
                     : m_db->value(QStringLiteral("SELECT id FROM line_items WHERE submittal_id "
                                                  "= ? ORDER BY position, id LIMIT 1 OFFSET ?"),
                                   {m_id, int(position) - 1});
    if (!id.isValid())
        throw CollectionRules::noPosition(kSource, QStringLiteral("line"), position, Count());
    return line(id.toLongLong());
}

LineItemList StoreLineItems::Enumerate() const
{
    LineItemList out;
    for (const QVariantList& r : m_db->rows(QStringLiteral("SELECT id FROM line_items WHERE "
                                                           "submittal_id = ? ORDER BY position, "
                                                           "id"),
                                            {m_id}))
        out.append(line(r[0].toLongLong()));
    return out;
}

}  // namespace ZebObjects

namespace ZebObjects {

QList<StoreLineItems::Row> StoreLineItems::rows() const
{
    QList<Row> out;
    for (const QVariantList& r : m_db->rows(
             QStringLiteral("SELECT l.id, l.quantity, l.type, l.brand, l.catalog_number, "
                            "l.description, l.group_code, l.mto, l.selected, c.text, "
                            "c.line_item_id FROM line_items l LEFT JOIN line_item_comments c ON "
                            "c.line_item_id = l.id WHERE l.submittal_id = ? ORDER BY l.position, "
                            "l.id"),
             {m_id})) {
        Row row;
        row.id = r[0].toLongLong();
        row.data.quantity = r[1].toInt();
        row.data.type = r[2].toString();
        row.data.brand = r[3].toString();
        row.data.catalogNumber = r[4].toString();
        row.data.description = r[5].toString();
        row.data.group = r[6].toString();
        row.data.mto = r[7].toBool();
        row.data.selected = r[8].toBool();
        if (!r[10].isNull())
            row.data.comment = r[9].toString();
        out.append(row);
    }
    return out;
}

QList<qint64> StoreLineItems::importLines(const QList<LineItemRecord>& lines, bool replace)
{
    return m_db->write([&] {
        if (replace)
            m_db->run(QStringLiteral("DELETE FROM line_items WHERE submittal_id = ?"), {m_id});
        return insertLines(Count() + 1, lines);
    });
}

QList<qint64> StoreLineItems::insertLines(qint32 position, const QList<LineItemRecord>& lines)
{
    return m_db->write([&] {
        const qint32 count = Count();
        if (position < 1 || position > count + 1)
            throw CollectionRules::noPosition(kSource, QStringLiteral("line"), qint16(position),
                                              qint16(count));
        CollectionRules::checkRoom(kSource, QStringLiteral("lines"), count + lines.size() - 1);
        // Positions are kept 1..n: the lines from the position on make room first.
        m_db->run(QStringLiteral("UPDATE line_items SET position = position + ? WHERE "
                                 "submittal_id = ? AND position >= ?"),
                  {qint64(lines.size()), m_id, position});
        QList<qint64> ids;
        ids.reserve(lines.size());
        for (qsizetype i = 0; i < lines.size(); ++i) {
            const auto& l = lines[i];
            const qint64 id = m_db->insert(
                QStringLiteral("INSERT INTO line_items (submittal_id, position, quantity, type, "
                               "brand, catalog_number, description, group_code, mto, selected) "
                               "VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?)"),
                {m_id, qint64(position + i), l.quantity, l.type, l.brand, l.catalogNumber,
                 l.description, l.group, int(l.mto), int(l.selected)});
            if (l.comment)
                m_db->run(QStringLiteral("INSERT INTO line_item_comments (line_item_id, text) "
                                         "VALUES (?, ?)"),
                          {id, *l.comment});
            ids.append(id);
        }
        return ids;
    });
}

void StoreLineItems::putBack(const QList<qint32>& positions, const QList<LineItemRecord>& lines)
{
    m_db->write([&] {
        for (qsizetype i = 0; i < positions.size() && i < lines.size(); ++i)
            insertLines(positions[i], {lines[i]});
    });
}

void StoreLineItems::removeLines(const QList<qint64>& ids)
{
    m_db->write([&] {
        for (const qint64 id : ids) {
            const QVariant at = m_db->value(QStringLiteral("SELECT position FROM line_items WHERE "
                                                           "id = ? AND submittal_id = ?"),
                                            {id, m_id});
            if (!at.isValid())
                throw gone(*m_db);
            m_db->run(QStringLiteral("DELETE FROM line_items WHERE id = ?"), {id});
            m_db->run(QStringLiteral("UPDATE line_items SET position = position - 1 WHERE "
                                     "submittal_id = ? AND position > ?"),
                      {m_id, at});
            m_lines.remove(id);
        }
    });
}

void StoreLineItems::writeLine(qint64 id, const LineItemRecord& l)
{
    if (!m_db->value(QStringLiteral("SELECT 1 FROM line_items WHERE id = ? AND submittal_id = ?"),
                     {id, m_id})
             .isValid())
        throw gone(*m_db);
    m_db->run(QStringLiteral("UPDATE line_items SET quantity = ?, type = ?, brand = ?, "
                             "catalog_number = ?, description = ?, group_code = ?, mto = ?, "
                             "selected = ? WHERE id = ?"),
              {l.quantity, l.type, l.brand, l.catalogNumber, l.description, l.group, int(l.mto),
               int(l.selected), id});
    m_db->run(QStringLiteral("DELETE FROM line_item_comments WHERE line_item_id = ?"), {id});
    if (l.comment)
        m_db->run(QStringLiteral("INSERT INTO line_item_comments (line_item_id, text) VALUES "
                                 "(?, ?)"),
                  {id, *l.comment});
}

void StoreLineItems::updateLine(qint64 id, const LineItemRecord& data)
{
    m_db->write([&] { writeLine(id, data); });
}

void StoreLineItems::reorder(const QList<qint64>& ids)
{
    m_db->write([&] {
        for (qsizetype i = 0; i < ids.size(); ++i)
            m_db->run(QStringLiteral("UPDATE line_items SET position = ? WHERE id = ? AND "
                                     "submittal_id = ?"),
                      {qint64(i + 1), ids[i], m_id});
    });
}

}  // namespace ZebObjects
