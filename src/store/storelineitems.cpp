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
{
}

QString StoreLineItemComment::Text() const
{
    return m_db->value(QStringLiteral("SELECT text FROM line_item_comments WHERE line_item_id = ?"),
                       {m_id})
        .toString();
}

StoreLineItem::StoreLineItem(std::shared_ptr<StoreConnection> db, qint64 id)
    : m_db(std::move(db)), m_id(id)
{
}

QVariant StoreLineItem::column(const char* name) const
{
    const QVariant v = m_db->value(
        QStringLiteral("SELECT %1 FROM line_items WHERE id = ?").arg(QLatin1String(name)), {m_id});
    if (!v.isValid())
        throw gone(*m_db);
    return v;
}

bool StoreLineItem::Selected() const { return column("selected").toBool(); }

void StoreLineItem::setSelected(bool selected)
{
    m_db->setColumn(QStringLiteral("line_items"), QStringLiteral("selected"), QStringLiteral("id"),
                    m_id, int(selected), int(column("selected").toBool()));
}

QString StoreLineItem::Quantity() const
{
    return QString::number(column("quantity").toLongLong());
}

QString StoreLineItem::Type() const { return column("type").toString(); }
QString StoreLineItem::Brand() const { return column("brand").toString(); }
QString StoreLineItem::CatalogNumber() const { return column("catalog_number").toString(); }
QString StoreLineItem::Description() const { return column("description").toString(); }
QString StoreLineItem::Group() const { return column("group_code").toString(); }
bool StoreLineItem::MTO() const { return column("mto").toBool(); }

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
{
}

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
