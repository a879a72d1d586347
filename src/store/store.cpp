#include "store/store.h"

#include "rules/collectionrules.h"
#include "rules/customerrecord.h"
#include "rules/textkind.h"
#include "store/jobcontents.h"
#include "store/storeapplicationservices.h"
#include "store/storebrands.h"
#include "store/storeconnection.h"
#include "store/storecustomers.h"
#include "store/storecutsheets.h"
#include "store/storedirectory.h"
#include "store/storejob.h"
#include "store/storetextobjects.h"

#include <QHash>

namespace ZebObjects {

namespace {

const QString kSource = QStringLiteral("ZebObjects.Store");

StoreConnection::Mode connectionMode(Store::OpenMode mode)
{
    switch (mode) {
    case Store::OpenMode::OpenOrCreate: return StoreConnection::Mode::OpenOrCreate;
    case Store::OpenMode::OpenExisting: return StoreConnection::Mode::OpenExisting;
    case Store::OpenMode::ReadOnly: return StoreConnection::Mode::ReadOnly;
    }
    return StoreConnection::Mode::OpenOrCreate;
}

Failure noJob(qint64 id)
{
    return Failure(ErrorNumber::ElementNotFound, kSource,
                   QStringLiteral("Element not found: there is no job %1").arg(id));
}

qint64 newCollection(StoreConnection& db, const QVariant& submittal, qint32 kind,
                     const QList<JobContents::Text>& texts)
{
    const qint64 id = db.insert(QStringLiteral("INSERT INTO text_collections (submittal_id, kind, "
                                               "text_type) VALUES (?, ?, ?)"),
                                {submittal, kind, kind});
    for (const auto& t : texts)
        StoreTextObjects::append(db, id, t.text, t.selected);
    return id;
}

}  // namespace

Store::Store(std::shared_ptr<StoreConnection> db)
    : m_db(std::move(db)), m_services(std::make_shared<StoreApplicationServices>(m_db))
{ }

Store::~Store() = default;

std::shared_ptr<Store> Store::open(const QString& path, OpenMode mode)
{
    return open(path, mode, Options());
}

std::shared_ptr<Store> Store::open(const QString& path, OpenMode mode, const Options& options)
{
    StoreConnection::Timeouts timeouts;
    timeouts.lockMs = options.busyTimeoutMs;
    timeouts.answerMs = options.answerTimeoutMs;
    timeouts.idleInTransactionMs = options.idleInTransactionTimeoutMs;
    timeouts.connectSeconds = options.connectTimeoutSeconds;
    return std::shared_ptr<Store>(
        new Store(StoreConnection::open(path, connectionMode(mode), timeouts)));
}

QString Store::path() const
{
    return m_db->path();
}

StoreCutSheets Store::cutSheets() const
{
    return StoreCutSheets(m_db);
}

StoreBrands Store::brands() const
{
    return StoreBrands(m_db);
}
bool Store::isServer() const
{
    return m_db->dialect().isServer();
}

bool Store::watchOtherWorkstations(std::function<void()> onCommit)
{
    return m_db->watchCommits(std::move(onCommit));
}
QString Store::connectionName() const
{
    return m_db->connectionName();
}
quint64 Store::commitCount() const
{
    return m_db->commitCount();
}
quint64 Store::statementCount() const
{
    return m_db->statementCount();
}

void Store::watchWrites(std::function<void(const Failure*)> onWrite)
{
    m_db->watchWrites(std::move(onWrite));
}

bool Store::isReadOnly() const
{
    return m_db->isReadOnly();
}
Failure Store::readOnlyFailure() const
{
    return m_db->readOnlyFailure();
}

QList<JobSummary> Store::jobs() const
{
    QList<JobSummary> out;
    for (const QVariantList& r : m_db->rows(QStringLiteral(
             "SELECT j.id, j.number, j.name, "
             "(SELECT COUNT(*) FROM submittal_customers c WHERE c.submittal_id = s.id), "
             "(SELECT COUNT(*) FROM line_items l WHERE l.submittal_id = s.id), j.archived "
             "FROM jobs j JOIN submittals s ON s.job_id = j.id ORDER BY j.number")))
        out.append({r[0].toLongLong(),
                    r[1].toString(),
                    r[2].toString(),
                    r[3].toInt(),
                    r[4].toInt(),
                    r[5].toBool(),
                    {}});
    // Every job's customers in one statement, not one per job.
    QHash<qint64, qsizetype> at;
    for (qsizetype i = 0; i < out.size(); ++i)
        at.insert(out[i].id, i);
    for (const QVariantList& r : m_db->rows(QStringLiteral(
             "SELECT s.job_id, c.name FROM submittal_customers c JOIN submittals s ON "
             "s.id = c.submittal_id ORDER BY s.job_id, c.position")))
        if (const auto it = at.constFind(r[0].toLongLong()); it != at.cend())
            out[*it].customerNames.append(r[1].toString());
    return out;
}

std::shared_ptr<StoreJob> Store::openJob(qint64 id) const
{
    const QVariant submittal =
        m_db->value(QStringLiteral("SELECT id FROM submittals WHERE job_id = ?"), {id});
    if (!submittal.isValid())
        throw noJob(id);
    return std::make_shared<StoreJob>(m_db, id, submittal.toLongLong());
}

qint64 Store::createJob(const JobContents& c)
{
    SubmittalRules::checkDate(c.submittalDate);
    return m_db->write([&] {
        StoreConnection& db = *m_db;
        if (db.value(QStringLiteral("SELECT 1 FROM jobs WHERE number = ?"), {c.number}).isValid())
            throw CollectionRules::duplicateKey(kSource, c.number);
        const qint64 job = db.insert(
            QStringLiteral("INSERT INTO jobs (number, name, purchase_order, site_address, "
                           "architect, engineer, contractor) VALUES (?, ?, ?, ?, ?, ?, ?)"),
            {c.number, c.name, c.purchaseOrder, c.siteAddress, c.architect, c.engineer,
             c.contractor});
        const qint64 s = db.insert(
            QStringLiteral("INSERT INTO submittals (job_id, issued_by, submittal_date, "
                           "include_cover_letter, include_bom, include_labels, purpose_index, "
                           "purpose, other_purpose) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?)"),
            {job, c.issuedBy, c.submittalDate, int(c.includeCoverLetter), int(c.includeBOM),
             int(c.includeLabels), int(c.purpose.index), c.purpose.text, c.purpose.otherText});
        db.run(QStringLiteral("INSERT INTO cover_letters (submittal_id, include_logo, "
                              "include_default_paragraphs, include_remarks, separate_letters, "
                              "include_carbon_copy) VALUES (?, ?, ?, ?, ?, ?)"),
               {s, int(c.includeLogo), int(c.includeDefaultParagraphs), int(c.includeRemarks),
                int(c.separateLetters), int(c.includeCarbonCopy)});
        for (qsizetype i = 0; i < c.recipients.size(); ++i) {
            const JobContents::Recipient& r = c.recipients[i];
            db.run(QStringLiteral("INSERT INTO recipients (submittal_id, position, name, company, "
                                  "street, street2, city, state, zip, phone, email) "
                                  "VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)"),
                   {s, qint64(i + 1), r.name, r.company, r.street, r.street2, r.city, r.state,
                    r.zip, r.phone, r.email});
        }
        newCollection(db, s, TextKind::CoverLetterParagraph, c.paragraphs);
        newCollection(db, s, TextKind::CoverLetterRemark, c.remarks);
        const qint64 remarks = newCollection(db, s, TextKind::BOMRemark, c.bomRemarks);
        db.run(QStringLiteral("INSERT INTO boms (submittal_id, include_quantity, include_type, "
                              "include_default_remarks, include_brand, include_manufacturer, "
                              "include_catalog_number, include_description, "
                              "include_line_comments, include_mto, include_group_codes, "
                              "remarks_collection_id) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)"),
               {s, int(c.includeQuantity), int(c.includeType), int(c.includeDefaultRemarks),
                int(c.includeBrand), int(c.includeManufacturer), int(c.includeCatalogNumber),
                int(c.includeDescription), int(c.includeLineComments), int(c.includeMTO),
                int(c.includeGroupCodes), remarks});
        db.run(QStringLiteral("INSERT INTO labels (submittal_id, maximum_included) VALUES (?, ?)"),
               {s, int(c.labelLimit)});
        qint16 onLabel = 0;
        for (qsizetype i = 0; i < c.labelFields.size(); ++i) {
            const auto& f = c.labelFields[i];
            LabelRules::checkPrintOrder(f.key, f.printOrder);
            if (db.value(QStringLiteral("SELECT 1 FROM label_fields WHERE submittal_id = ? AND "
                                        "key = ?"),
                         {s, f.key})
                    .isValid())
                throw CollectionRules::duplicateKey(QStringLiteral("ZebObjects.LabelFields"),
                                                    f.key);
            const qint16 order = LabelRules::admits(0, f.printOrder, onLabel, c.labelLimit)
                                     ? f.printOrder
                                     : qint16(0);
            if (order != 0)
                ++onLabel;
            db.run(QStringLiteral("INSERT INTO label_fields (submittal_id, position, key, "
                                  "caption, print_order) VALUES (?, ?, ?, ?, ?)"),
                   {s, qint64(i + 1), f.key, f.caption, int(order)});
        }
        CollectionRules::checkRoom(QStringLiteral("ZebObjects.LineItems"), QStringLiteral("lines"),
                                   c.lines.size() - 1);
        for (qsizetype i = 0; i < c.lines.size(); ++i) {
            const auto& l = c.lines[i];
            const qint64 line = db.insert(
                QStringLiteral("INSERT INTO line_items (submittal_id, position, quantity, type, "
                               "brand, catalog_number, description, group_code, mto, selected) "
                               "VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?)"),
                {s, qint64(i + 1), l.quantity, l.type, l.brand, l.catalogNumber, l.description,
                 l.group, int(l.mto), int(l.selected)});
            if (l.comment)
                db.run(QStringLiteral("INSERT INTO line_item_comments (line_item_id, text) VALUES "
                                      "(?, ?)"),
                       {line, *l.comment});
        }
        for (const auto& d : c.customers) {
            if (db.value(QStringLiteral("SELECT 1 FROM submittal_customers WHERE submittal_id = "
                                        "? AND key = ?"),
                         {s, d.key})
                    .isValid())
                throw CollectionRules::duplicateKey(QStringLiteral("ZebObjects.Customers"), d.key);
            StoreCustomers::append(db, s, d.key, StoreCustomer(m_db, d));
        }
        return job;
    });
}

void Store::deleteJob(qint64 id)
{
    m_db->write([&] {
        const QVariant submittal =
            m_db->value(QStringLiteral("SELECT id FROM submittals WHERE job_id = ?"), {id});
        if (!submittal.isValid())
            throw noJob(id);
        // The remarks collection is referenced by the BOM, which goes first.
        m_db->run(QStringLiteral("DELETE FROM boms WHERE submittal_id = ?"), {submittal});
        m_db->run(QStringLiteral("DELETE FROM jobs WHERE id = ?"), {id});
    });
}

std::shared_ptr<TextObjects> Store::library(qint32 kind)
{
    const QString find = QStringLiteral("SELECT id FROM text_collections WHERE submittal_id IS "
                                        "NULL AND kind = ? ORDER BY id LIMIT 1");
    // A library that is there is only read: a reader never waits for another writer.
    QVariant found = m_db->value(find, {kind});
    const qint64 id = found.isValid() ? found.toLongLong() : m_db->write([&] {
        // Asked again under the write lock: another program may have made it meanwhile.
        found = m_db->value(find, {kind});
        if (found.isValid())
            return found.toLongLong();
        return m_db->insert(QStringLiteral("INSERT INTO text_collections (submittal_id, kind, "
                                           "text_type) VALUES (NULL, ?, ?)"),
                            {kind, kind});
    });
    return std::make_shared<StoreTextObjects>(m_db, id);
}

std::shared_ptr<ApplicationServices> Store::applicationServices() const
{
    return m_services;
}

QStringList Store::issuedByNames() const
{
    return StoreDirectory::issuedByNames(*m_db);
}

void Store::setIssuedByNames(const QStringList& names)
{
    if (issuedByNames() == names)
        return;
    m_db->write([&] {
        if (StoreDirectory::issuedByNames(*m_db) != names)
            StoreDirectory::setIssuedByNames(*m_db, names);
    });
}

namespace {
// The letterhead's settings, each under its own name.
struct LetterheadSetting {
    const char* name;
    QString ZebPackage::Letterhead::*field;
};
const LetterheadSetting kLetterhead[] = {
    {"office_name", &ZebPackage::Letterhead::Name},
    {"office_street", &ZebPackage::Letterhead::Street},
    {"office_street2", &ZebPackage::Letterhead::Street2},
    {"office_city", &ZebPackage::Letterhead::City},
    {"office_state", &ZebPackage::Letterhead::State},
    {"office_zip", &ZebPackage::Letterhead::Zip},
    {"office_phone", &ZebPackage::Letterhead::Phone},
    {"office_email", &ZebPackage::Letterhead::Email},
};
}  // namespace

ZebPackage::Letterhead Store::letterhead() const
{
    ZebPackage::Letterhead out;
    for (const QVariantList& r :
         m_db->rows(QStringLiteral("SELECT name, value FROM settings WHERE name LIKE 'office%'"))) {
        const QString name = r[0].toString();
        if (name == QLatin1String("office_logo")) {
            out.Logo = QByteArray::fromBase64(r[1].toString().toLatin1());
            continue;
        }
        for (const LetterheadSetting& s : kLetterhead) {
            if (name == QLatin1String(s.name))
                out.*s.field = r[1].toString();
        }
    }
    return out;
}

void Store::setLetterhead(const ZebPackage::Letterhead& letterhead)
{
    m_db->write([&] {
        const auto put = [&](const QString& name, const QString& value) {
            m_db->run(QStringLiteral("INSERT INTO settings (name, value) VALUES (?, ?) ON "
                                     "CONFLICT (name) DO UPDATE SET value = excluded.value"),
                      {name, value});
        };
        for (const LetterheadSetting& s : kLetterhead)
            put(QString::fromLatin1(s.name), letterhead.*s.field);
        put(QStringLiteral("office_logo"), QString::fromLatin1(letterhead.Logo.toBase64()));
    });
}

QVariant Store::searchContextValue() const
{
    return StoreDirectory::searchContextValue(*m_db);
}

void Store::setSearchContextValue(const QVariant& value)
{
    const auto holds = [&] {
        const QVariant now = StoreDirectory::searchContextValue(*m_db);
        return now.isValid() && now.toString() == value.toString();
    };
    if (holds())
        return;
    m_db->write([&] {
        if (!holds())
            StoreDirectory::setSearchContextValue(*m_db, value);
    });
}

void Store::addDirectoryCustomers(const QList<CustomerRecord>& customers)
{
    m_db->write([&] {
        for (const auto& d : customers)
            StoreDirectory::add(*m_db, d);
    });
}

QList<CustomerRecord> Store::directoryCustomers() const
{
    return StoreDirectory::records(*m_db);
}

qint32 Store::directoryCount() const
{
    return StoreDirectory::count(*m_db);
}

void Store::writeAll(const std::function<void()>& body)
{
    m_db->write(body);
}

bool Store::isEmpty() const
{
    return m_db->value(QStringLiteral("SELECT (SELECT COUNT(*) FROM jobs) + (SELECT COUNT(*) FROM "
                                      "issuers) + (SELECT COUNT(*) FROM directory_customers)"))
               .toInt()
           == 0;
}

void Store::seal()
{
    m_db->seal();
}

bool Store::settle(const QString& path)
{
    return StoreConnection::settle(path);
}

}  // namespace ZebObjects
