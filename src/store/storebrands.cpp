#include "store/storebrands.h"

#include "contracts/failure.h"
#include "store/storeconnection.h"

#include <QSet>

namespace ZebObjects {

namespace {
const QString kSource = QStringLiteral("ZebObjects.StoreBrands");

QString checkedName(const QString& name)
{
    const QString trimmed = name.trimmed();
    if (trimmed.isEmpty())
        throw Failure(ErrorNumber::InvalidProcedureCall, kSource,
                      QStringLiteral("A brand needs a name"));
    return trimmed;
}

Failure alreadyHeld(const QString& name)
{
    return Failure(ErrorNumber::KeyAlreadyInCollection, kSource,
                   QStringLiteral("This key is already associated with an element of this "
                                  "collection: the office already has the brand \"%1\"")
                       .arg(name));
}
}  // namespace

StoreBrands::StoreBrands(std::shared_ptr<StoreConnection> db) : m_db(std::move(db)) { }

QList<BrandRecord> StoreBrands::all() const
{
    QList<BrandRecord> out;
    for (const QVariantList& r :
         m_db->rows(QStringLiteral("SELECT name, manufacturer FROM brands ORDER BY name, id")))
        out.append({r[0].toString(), r[1].toString()});
    return out;
}

QHash<QString, QString> StoreBrands::manufacturers() const
{
    QHash<QString, QString> out;
    for (const BrandRecord& b : all())
        out.insert(b.name, b.manufacturer);
    return out;
}

qint32 StoreBrands::lineCount(const QString& name) const
{
    return m_db->value(QStringLiteral("SELECT COUNT(*) FROM line_items WHERE brand = ?"), {name})
        .toInt();
}

QHash<QString, qint32> StoreBrands::lineCounts() const
{
    QHash<QString, qint32> out;
    for (const QVariantList& r :
         m_db->rows(QStringLiteral("SELECT brand, COUNT(*) FROM line_items GROUP BY brand")))
        out.insert(r[0].toString(), r[1].toInt());
    return out;
}

void StoreBrands::requireHeld(const QString& name) const
{
    if (!m_db->value(QStringLiteral("SELECT 1 FROM brands WHERE name = ?"), {name}).isValid())
        throw Failure(
            ErrorNumber::ElementNotFound, kSource,
            QStringLiteral("Element not found: the office has no brand \"%1\"").arg(name));
}

void StoreBrands::add(const BrandRecord& brand)
{
    const QString name = checkedName(brand.name);
    m_db->write([&] {
        if (m_db->value(QStringLiteral("SELECT 1 FROM brands WHERE name = ?"), {name}).isValid())
            throw alreadyHeld(name);
        m_db->run(QStringLiteral("INSERT INTO brands (name, manufacturer) VALUES (?, ?)"),
                  {name, brand.manufacturer.trimmed()});
    });
}

void StoreBrands::rename(const QString& name, const QString& newName)
{
    const QString to = checkedName(newName);
    if (to == name)
        return;
    m_db->write([&] {
        requireHeld(name);
        if (m_db->value(QStringLiteral("SELECT 1 FROM brands WHERE name = ?"), {to}).isValid())
            throw alreadyHeld(to);
        m_db->run(QStringLiteral("UPDATE brands SET name = ? WHERE name = ?"), {to, name});
        m_db->run(QStringLiteral("UPDATE line_items SET brand = ? WHERE brand = ?"), {to, name});
    });
}

void StoreBrands::setManufacturer(const QString& name, const QString& manufacturer)
{
    m_db->write([&] {
        requireHeld(name);
        m_db->run(QStringLiteral("UPDATE brands SET manufacturer = ? WHERE name = ? AND "
                                 "manufacturer <> ?"),
                  {manufacturer.trimmed(), name, manufacturer.trimmed()});
    });
}

void StoreBrands::remove(const QString& name)
{
    m_db->write([&] {
        requireHeld(name);
        if (const qint32 lines = lineCount(name); lines > 0)
            throw Failure(ErrorNumber::InvalidProcedureCall, kSource,
                          lines == 1
                              ? QStringLiteral("The brand \"%1\" stays: 1 line of the office's "
                                               "jobs uses it. Give that line another brand first.")
                                    .arg(name)
                              : QStringLiteral("The brand \"%1\" stays: %2 lines of the office's "
                                               "jobs use it. Give those lines another brand first.")
                                    .arg(name)
                                    .arg(lines));
        m_db->run(QStringLiteral("DELETE FROM brands WHERE name = ?"), {name});
    });
}

qint32 StoreBrands::addMissing(const QList<BrandRecord>& brands)
{
    return m_db->write([&] {
        const QHash<QString, QString> held = manufacturers();
        QHash<QString, QString> added;
        QSet<QString> filled;
        QList<QString> order;
        for (const BrandRecord& b : brands) {
            const QString name = b.name.trimmed();
            const QString maker = b.manufacturer.trimmed();
            if (name.isEmpty())
                continue;
            if (!held.contains(name)) {
                if (!added.contains(name)) {
                    order.append(name);
                    added.insert(name, maker);
                } else if (added.value(name).isEmpty()) {
                    added.insert(name, maker);
                }
            } else if (held.value(name).isEmpty() && !maker.isEmpty() && !filled.contains(name)) {
                filled.insert(name);
                m_db->run(QStringLiteral("UPDATE brands SET manufacturer = ? WHERE name = ?"),
                          {maker, name});
            }
        }
        for (const QString& name : order)
            m_db->run(QStringLiteral("INSERT INTO brands (name, manufacturer) VALUES (?, ?)"),
                      {name, added.value(name)});
        return qint32(order.size());
    });
}

}  // namespace ZebObjects
