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

void StoreLineItem::seen(quint64 state, const LineItemRecord& data)
{
    m_state = state;
    m_data = data;
}

const LineItemRecord& StoreLineItem::data() const
{
    // The state is taken before the read: a change that comes between shows at the next use.
    const quint64 state = m_db->state();
    if (state != 0 && state == m_state)
        return m_data;
    const QList<QVariantList> r =
        m_db->rows(StoreLineItems::rowsQuery(QStringLiteral("l.id = ?")), {m_id});
    if (r.isEmpty())
        throw gone(*m_db);
    m_data = StoreLineItems::record(StoreValuesRow(r.first()), 1);
    m_state = state;
    return m_data;
}

bool StoreLineItem::Selected() const
{
    return data().selected;
}

void StoreLineItem::setSelected(bool selected)
{
    m_db->setColumn(QStringLiteral("line_items"), QStringLiteral("selected"), QStringLiteral("id"),
                    m_id, int(selected), int(data().selected));
}

QString StoreLineItem::Quantity() const
{
    return QString::number(data().quantity);
}

QString StoreLineItem::Type() const
{
    return data().type;
}
QString StoreLineItem::Brand() const
{
    return data().brand;
}
QString StoreLineItem::CatalogNumber() const
{
    return data().catalogNumber;
}
QString StoreLineItem::Description() const
{
    return data().description;
}
QString StoreLineItem::Group() const
{
    return data().group;
}
bool StoreLineItem::MTO() const
{
    return data().mto;
}

std::shared_ptr<LineItemComment> StoreLineItem::Comment() const
{
    if (!data().comment)
        return nullptr;
    if (!m_comment)
        m_comment = std::make_shared<StoreLineItemComment>(m_db, m_id);
    return m_comment;
}

StoreLineItems::StoreLineItems(std::shared_ptr<StoreConnection> db, qint64 submittalId)
    : m_db(std::move(db)), m_id(submittalId)
{ }

StoreLineItems::~StoreLineItems() = default;

std::shared_ptr<StoreLineItem> StoreLineItems::line(qint64 id) const
{
    auto& slot = m_lines[id];
    if (!slot)
        slot = std::make_shared<StoreLineItem>(m_db, id);
    return slot;
}

QString StoreLineItems::rowsQuery(const QString& where, const QString& along)
{
    return QStringLiteral("SELECT l.id, l.quantity, l.type, l.brand, l.catalog_number, "
                          "l.description, l.group_code, l.mto, l.selected, c.text, "
                          "c.line_item_id%1 FROM line_items l LEFT JOIN line_item_comments c ON "
                          "c.line_item_id = l.id WHERE %2 ORDER BY l.position, l.id")
        .arg(along, where);
}

LineItemRecord StoreLineItems::record(const StoreRow& r, int first)
{
    LineItemRecord data;
    data.quantity = int(r.integer(first));
    data.type = r.text(first + 1);
    data.brand = r.text(first + 2);
    data.catalogNumber = r.text(first + 3);
    data.description = r.text(first + 4);
    data.group = r.text(first + 5);
    data.mto = r.boolean(first + 6);
    data.selected = r.boolean(first + 7);
    if (!r.isNull(first + 9))
        data.comment = r.text(first + 8);
    return data;
}

bool StoreLineItems::kept() const
{
    return m_db->keep(m_state, [this](const QString& along, quint64& state) {
        m_ids.clear();
        m_db->eachRow(rowsQuery(QStringLiteral("l.submittal_id = ?"), along), {m_id},
                      [&](const StoreRow& r) {
                          if (state == 0)
                              state = m_db->stateRead({r.value(11), r.value(12)});
                          const qint64 id = r.integer(0);
                          line(id)->seen(state, record(r, 1));
                          m_ids.append(id);
                      });
    });
}

qint16 StoreLineItems::Count() const
{
    if (kept())
        return qint16(m_ids.size());
    return qint16(
        m_db->value(QStringLiteral("SELECT COUNT(*) FROM line_items WHERE submittal_id = ?"),
                    {m_id})
            .toInt());
}

std::shared_ptr<LineItem> StoreLineItems::Item(qint16 position) const
{
    QVariant id;
    if (position >= 1 && kept()) {
        if (position <= m_ids.size())
            id = m_ids[position - 1];
    } else if (position >= 1) {
        id = m_db->value(QStringLiteral("SELECT id FROM line_items WHERE submittal_id = ? ORDER "
                                        "BY position, id LIMIT 1 OFFSET ?"),
                         {m_id, int(position) - 1});
    }
    if (!id.isValid())
        throw CollectionRules::noPosition(kSource, QStringLiteral("line"), position, Count());
    return line(id.toLongLong());
}

LineItemList StoreLineItems::Enumerate() const
{
    LineItemList out;
    if (kept()) {
        out.reserve(m_ids.size());
        for (const qint64 id : std::as_const(m_ids))
            out.append(line(id));
        return out;
    }
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
    m_db->eachRow(rowsQuery(QStringLiteral("l.submittal_id = ?")), {m_id}, [&](const StoreRow& r) {
        out.append({r.integer(0), record(r, 1)});
    });
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
