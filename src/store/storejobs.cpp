// A job's own details, its copy as the start of a new job, and the office's settings by name.
#include "store/store.h"

#include "rules/textkind.h"
#include "store/storeconnection.h"

#include <optional>

namespace ZebObjects {

namespace {

const QString kSource = QStringLiteral("ZebObjects.Store");

Failure numberTaken(const QString& number)
{
    return Failure(ErrorNumber::KeyAlreadyInCollection, kSource,
                   QStringLiteral("This key is already associated with an element of this "
                                  "collection: the office already has a job numbered \"%1\"")
                       .arg(number));
}

void checkDetails(const JobDetails& d)
{
    if (d.number.trimmed().isEmpty())
        throw Failure(ErrorNumber::InvalidProcedureCall, kSource,
                      QStringLiteral("Invalid procedure call or argument: a job needs a number"));
    if (d.name.trimmed().isEmpty())
        throw Failure(ErrorNumber::InvalidProcedureCall, kSource,
                      QStringLiteral("Invalid procedure call or argument: a job needs a name"));
}

Failure noJob(qint64 id)
{
    return Failure(ErrorNumber::ElementNotFound, kSource,
                   QStringLiteral("Element not found: there is no job %1").arg(id));
}

}  // namespace

JobDetails Store::jobDetails(qint64 id) const
{
    const QVariantList r = m_db->row(QStringLiteral("SELECT number, name, site_address, "
                                                    "architect, engineer, contractor, archived "
                                                    "FROM jobs WHERE id = ?"),
                                     {id});
    if (r.isEmpty())
        throw noJob(id);
    return {r[0].toString(), r[1].toString(), r[2].toString(), r[3].toString(),
            r[4].toString(), r[5].toString(), r[6].toBool()};
}

void Store::setJobDetails(qint64 id, const JobDetails& d)
{
    checkDetails(d);
    if (jobDetails(id) == d)
        return;
    m_db->write([&] {
        if (m_db->value(QStringLiteral("SELECT 1 FROM jobs WHERE number = ? AND id <> ?"),
                        {d.number, id})
                .isValid())
            throw numberTaken(d.number);
        if (!m_db->value(QStringLiteral("SELECT 1 FROM jobs WHERE id = ?"), {id}).isValid())
            throw noJob(id);
        m_db->run(QStringLiteral("UPDATE jobs SET number = ?, name = ?, site_address = ?, "
                                 "architect = ?, engineer = ?, contractor = ?, archived = ? "
                                 "WHERE id = ?"),
                  {d.number, d.name, d.siteAddress, d.architect, d.engineer, d.contractor,
                   int(d.archived), id});
    });
}

qint64 Store::duplicateJob(qint64 id, const JobDetails& d, bool withLines)
{
    checkDetails(d);
    return m_db->write([&] {
        StoreConnection& db = *m_db;
        const QVariant from =
            db.value(QStringLiteral("SELECT id FROM submittals WHERE job_id = ?"), {id});
        if (!from.isValid())
            throw noJob(id);
        if (db.value(QStringLiteral("SELECT 1 FROM jobs WHERE number = ?"), {d.number}).isValid())
            throw numberTaken(d.number);
        const qint64 job = db.insert(
            QStringLiteral("INSERT INTO jobs (number, name, purchase_order, site_address, "
                           "architect, engineer, contractor, archived) SELECT ?, ?, "
                           "purchase_order, ?, ?, ?, ?, 0 FROM jobs WHERE id = ?"),
            {d.number, d.name, d.siteAddress, d.architect, d.engineer, d.contractor, id});
        const qint64 s = db.insert(
            QStringLiteral("INSERT INTO submittals (job_id, issued_by, submittal_date, "
                           "include_cover_letter, include_bom, include_labels, purpose_index, "
                           "purpose, other_purpose) SELECT ?, issued_by, submittal_date, "
                           "include_cover_letter, include_bom, include_labels, purpose_index, "
                           "purpose, other_purpose FROM submittals WHERE id = ?"),
            {job, from});
        db.run(QStringLiteral("INSERT INTO cover_letters (submittal_id, include_logo, "
                              "include_default_paragraphs, include_remarks, separate_letters, "
                              "include_carbon_copy) SELECT ?, include_logo, "
                              "include_default_paragraphs, include_remarks, separate_letters, "
                              "include_carbon_copy FROM cover_letters WHERE submittal_id = ?"),
               {s, from});
        db.run(QStringLiteral("INSERT INTO recipients (submittal_id, position, name, company, "
                              "street, street2, city, state, zip, phone, email) SELECT ?, "
                              "position, name, company, street, street2, city, state, zip, "
                              "phone, email FROM recipients WHERE submittal_id = ?"),
               {s, from});
        // Each text collection anew, with its texts; the BOM points at its own remarks.
        QVariant bomRemarks;
        for (const QVariantList& c : db.rows(QStringLiteral("SELECT id, kind, text_type, next_key, "
                                                            "dirty FROM text_collections WHERE "
                                                            "submittal_id = ? ORDER BY id"),
                                             {from})) {
            const qint64 copy = db.insert(QStringLiteral("INSERT INTO text_collections "
                                                         "(submittal_id, kind, text_type, "
                                                         "next_key, dirty) VALUES (?, ?, ?, ?, ?)"),
                                          {s, c[1], c[2], c[3], c[4]});
            db.run(QStringLiteral("INSERT INTO texts (collection_id, key, position, "
                                  "saved_position, text, selected) SELECT ?, key, position, "
                                  "saved_position, text, selected FROM texts WHERE "
                                  "collection_id = ?"),
                   {copy, c[0]});
            if (c[1].toInt() == TextKind::BOMRemark && !bomRemarks.isValid())
                bomRemarks = copy;
        }
        if (!bomRemarks.isValid())
            bomRemarks = db.insert(QStringLiteral("INSERT INTO text_collections (submittal_id, "
                                                  "kind, text_type) VALUES (?, ?, ?)"),
                                   {s, TextKind::BOMRemark, TextKind::BOMRemark});
        db.run(QStringLiteral("INSERT INTO boms (submittal_id, include_quantity, include_type, "
                              "include_default_remarks, include_brand, include_manufacturer, "
                              "include_catalog_number, include_description, "
                              "include_line_comments, include_mto, include_group_codes, "
                              "remarks_collection_id) SELECT ?, include_quantity, include_type, "
                              "include_default_remarks, include_brand, include_manufacturer, "
                              "include_catalog_number, include_description, "
                              "include_line_comments, include_mto, include_group_codes, ? FROM "
                              "boms WHERE submittal_id = ?"),
               {s, bomRemarks, from});
        db.run(QStringLiteral("INSERT INTO labels (submittal_id, maximum_included) SELECT ?, "
                              "maximum_included FROM labels WHERE submittal_id = ?"),
               {s, from});
        db.run(QStringLiteral("INSERT INTO label_fields (submittal_id, position, key, caption, "
                              "print_order) SELECT ?, position, key, caption, print_order FROM "
                              "label_fields WHERE submittal_id = ?"),
               {s, from});
        db.run(QStringLiteral("INSERT INTO submittal_customers (submittal_id, position, key, "
                              "customer_key, display_text, name, account_number, city, state, "
                              "type, category, included) SELECT ?, position, key, customer_key, "
                              "display_text, name, account_number, city, state, type, category, "
                              "included FROM submittal_customers WHERE submittal_id = ?"),
               {s, from});
        if (withLines) {
            for (const QVariantList& l : db.rows(QStringLiteral("SELECT l.id, c.text FROM "
                                                                "line_items l LEFT JOIN "
                                                                "line_item_comments c ON "
                                                                "c.line_item_id = l.id WHERE "
                                                                "l.submittal_id = ? ORDER BY "
                                                                "l.position, l.id"),
                                                 {from})) {
                const qint64 line = db.insert(
                    QStringLiteral("INSERT INTO line_items (submittal_id, position, quantity, "
                                   "type, brand, catalog_number, description, group_code, mto, "
                                   "selected) SELECT ?, position, quantity, type, brand, "
                                   "catalog_number, description, group_code, mto, selected FROM "
                                   "line_items WHERE id = ?"),
                    {s, l[0]});
                if (!l[1].isNull())
                    db.run(QStringLiteral("INSERT INTO line_item_comments (line_item_id, text) "
                                          "VALUES (?, ?)"),
                           {line, l[1]});
            }
        }
        return job;
    });
}

namespace {
Failure noCustomer(const QString& key)
{
    return Failure(
        ErrorNumber::ElementNotFound, QStringLiteral("ZebObjects.CustomerDirectory"),
        QStringLiteral("Element not found: the directory has no customer \"%1\"").arg(key));
}

void writeCustomer(StoreConnection& db, const CustomerRecord& d)
{
    db.run(QStringLiteral("UPDATE directory_customers SET display_text = ?, name = ?, "
                          "account_number = ?, city = ?, state = ?, type = ?, category = ?, "
                          "zip = ?, phone = ?, active = ?, attention = ?, street = ?, "
                          "street2 = ?, email = ? WHERE key = ?"),
           {d.displayText, d.name, d.accountNumber, d.city, d.state, d.type, d.category, d.zip,
            d.phone, int(d.active), d.attention, d.street, d.street2, d.email, d.key});
}
}  // namespace

void Store::updateDirectoryCustomer(const CustomerRecord& customer)
{
    m_db->write([&] {
        if (!m_db->value(QStringLiteral("SELECT 1 FROM directory_customers WHERE key = ?"),
                         {customer.key})
                 .isValid())
            throw noCustomer(customer.key);
        writeCustomer(*m_db, customer);
    });
}

void Store::mergeDirectoryCustomers(const QString& keep, const QString& drop)
{
    m_db->write([&] {
        std::optional<CustomerRecord> kept;
        std::optional<CustomerRecord> dropped;
        for (const auto& d : directoryCustomers()) {
            if (d.key == keep)
                kept = d;
            if (d.key == drop)
                dropped = d;
        }
        if (!kept)
            throw noCustomer(keep);
        if (!dropped)
            throw noCustomer(drop);
        if (keep == drop)
            return;
        QString CustomerRecord::*const fields[] = {
            &CustomerRecord::name,   &CustomerRecord::accountNumber, &CustomerRecord::city,
            &CustomerRecord::state,  &CustomerRecord::type,          &CustomerRecord::category,
            &CustomerRecord::zip,    &CustomerRecord::phone,         &CustomerRecord::attention,
            &CustomerRecord::street, &CustomerRecord::street2,       &CustomerRecord::email};
        for (const auto field : fields)
            if (((*kept).*field).isEmpty())
                (*kept).*field = (*dropped).*field;
        writeCustomer(*m_db, *kept);
        m_db->run(QStringLiteral("UPDATE submittal_customers SET customer_key = ? WHERE "
                                 "customer_key = ?"),
                  {keep, drop});
        m_db->run(QStringLiteral("DELETE FROM directory_customers WHERE key = ?"), {drop});
    });
}

QString Store::setting(const QString& name) const
{
    return m_db->value(QStringLiteral("SELECT value FROM settings WHERE name = ?"), {name})
        .toString();
}

void Store::setSetting(const QString& name, const QString& value)
{
    if (setting(name) == value
        && m_db->value(QStringLiteral("SELECT 1 FROM settings WHERE name = ?"), {name}).isValid())
        return;
    m_db->write([&] {
        m_db->run(QStringLiteral("INSERT INTO settings (name, value) VALUES (?, ?) ON CONFLICT "
                                 "(name) DO UPDATE SET value = excluded.value"),
                  {name, value});
    });
}

}  // namespace ZebObjects
