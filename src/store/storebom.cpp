#include "store/storebom.h"

#include "rules/textkind.h"
#include "store/storeconnection.h"
#include "store/storetextobjects.h"

namespace ZebObjects {

StoreBOM::StoreBOM(std::shared_ptr<StoreConnection> db, qint64 submittalId, QObject* parent)
    : BOM(parent), m_db(std::move(db)), m_id(submittalId)
{ }

StoreBOM::~StoreBOM() = default;

QVariant StoreBOM::column(const char* name) const
{
    const QVariant v = m_db->value(
        QStringLiteral("SELECT %1 FROM boms WHERE submittal_id = ?").arg(QLatin1String(name)),
        {m_id});
    if (!v.isValid())
        throw Failure(ErrorNumber::ElementNotFound, QStringLiteral("ZebObjects.BOM"),
                      QStringLiteral("Element not found: the bill of materials is no longer in "
                                     "the database file \"%1\"")
                          .arg(m_db->path()));
    return v;
}

void StoreBOM::setFlag(const char* name, bool value)
{
    m_db->setColumn(QStringLiteral("boms"), QLatin1String(name), QStringLiteral("submittal_id"),
                    m_id, int(value), int(column(name).toBool()));
}

bool StoreBOM::IncludeQuantity() const
{
    return column("include_quantity").toBool();
}
void StoreBOM::setIncludeQuantity(bool include)
{
    setFlag("include_quantity", include);
}
bool StoreBOM::IncludeType() const
{
    return column("include_type").toBool();
}
void StoreBOM::setIncludeType(bool include)
{
    setFlag("include_type", include);
}
bool StoreBOM::IncludeDefaultRemarks() const
{
    return column("include_default_remarks").toBool();
}
void StoreBOM::setIncludeDefaultRemarks(bool include)
{
    setFlag("include_default_remarks", include);
}
bool StoreBOM::IncludeBrand() const
{
    return column("include_brand").toBool();
}
void StoreBOM::setIncludeBrand(bool include)
{
    setFlag("include_brand", include);
}
bool StoreBOM::IncludeManufacturer() const
{
    return column("include_manufacturer").toBool();
}
void StoreBOM::setIncludeManufacturer(bool include)
{
    setFlag("include_manufacturer", include);
}
bool StoreBOM::IncludeCatalogNumber() const
{
    return column("include_catalog_number").toBool();
}
void StoreBOM::setIncludeCatalogNumber(bool include)
{
    setFlag("include_catalog_number", include);
}
bool StoreBOM::IncludeDescription() const
{
    return column("include_description").toBool();
}
void StoreBOM::setIncludeDescription(bool include)
{
    setFlag("include_description", include);
}
bool StoreBOM::IncludeLineComments() const
{
    return column("include_line_comments").toBool();
}
void StoreBOM::setIncludeLineComments(bool include)
{
    setFlag("include_line_comments", include);
}
bool StoreBOM::IncludeMTO() const
{
    return column("include_mto").toBool();
}
void StoreBOM::setIncludeMTO(bool include)
{
    setFlag("include_mto", include);
}
bool StoreBOM::IncludeGroupCodes() const
{
    return column("include_group_codes").toBool();
}
void StoreBOM::setIncludeGroupCodes(bool include)
{
    setFlag("include_group_codes", include);
}

std::shared_ptr<TextObjects> StoreBOM::DefaultRemarks() const
{
    const qint64 id = column("remarks_collection_id").toLongLong();
    if (!m_remarks || m_remarks->id() != id)
        m_remarks = std::make_shared<StoreTextObjects>(m_db, id);
    return m_remarks;
}

std::shared_ptr<TextObjects> StoreBOM::PopulateRemarks(const QStringList& texts)
{
    m_db->write([&] {
        const qint64 old = column("remarks_collection_id").toLongLong();
        const qint64 id = m_db->insert(
            QStringLiteral("INSERT INTO text_collections (submittal_id, kind, text_type) VALUES "
                           "(?, ?, ?)"),
            {m_id, TextKind::BOMRemark, TextKind::BOMRemark});
        for (const QString& text : texts)
            StoreTextObjects::append(*m_db, id, text, false);
        m_db->run(QStringLiteral("UPDATE boms SET remarks_collection_id = ? WHERE "
                                 "submittal_id = ?"),
                  {id, m_id});
        m_db->run(QStringLiteral("DELETE FROM text_collections WHERE id = ?"), {old});
    });
    auto remarks = DefaultRemarks();
    emit RemarksPopulated();
    return remarks;
}

}  // namespace ZebObjects
