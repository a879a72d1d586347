#include "store/storecustomers.h"

#include "rules/collectionrules.h"
#include "store/storeconnection.h"

namespace ZebObjects {

namespace {
const QString kSource = QStringLiteral("ZebObjects.Customers");
}

StoreCustomer::StoreCustomer(std::shared_ptr<StoreConnection> db, qint64 id)
    : m_db(std::move(db)), m_id(id)
{ }

StoreCustomer::StoreCustomer(std::shared_ptr<StoreConnection> db, CustomerRecord record)
    : m_db(std::move(db)), m_record(std::move(record))
{ }

void StoreCustomer::adopt(qint64 id)
{
    m_id = id;
    m_record.reset();
}

QVariant StoreCustomer::column(const char* name) const
{
    const QVariant v = m_db->value(
        QStringLiteral("SELECT %1 FROM submittal_customers WHERE id = ?").arg(QLatin1String(name)),
        {m_id});
    if (!v.isValid())
        throw Failure(ErrorNumber::ElementNotFound, kSource,
                      QStringLiteral("Element not found: the customer is no longer on the "
                                     "submittal in the database file \"%1\"")
                          .arg(m_db->path()));
    return v;
}

QString StoreCustomer::text(const char* name, const QString CustomerRecord::*field) const
{
    return m_record ? (*m_record).*field : column(name).toString();
}

QString StoreCustomer::Key() const
{
    return text("customer_key", &CustomerRecord::key);
}
QString StoreCustomer::DisplayText() const
{
    return text("display_text", &CustomerRecord::displayText);
}
QString StoreCustomer::Name() const
{
    return text("name", &CustomerRecord::name);
}
QString StoreCustomer::AccountNumber() const
{
    return text("account_number", &CustomerRecord::accountNumber);
}
QString StoreCustomer::City() const
{
    return text("city", &CustomerRecord::city);
}
QString StoreCustomer::State() const
{
    return text("state", &CustomerRecord::state);
}
QString StoreCustomer::Type() const
{
    return text("type", &CustomerRecord::type);
}
QString StoreCustomer::Category() const
{
    return text("category", &CustomerRecord::category);
}
bool StoreCustomer::Included() const
{
    return m_record ? m_record->included : column("included").toBool();
}

void StoreCustomer::setIncluded(bool included)
{
    if (m_record) {
        m_record->included = included;
        return;
    }
    m_db->setColumn(QStringLiteral("submittal_customers"), QStringLiteral("included"),
                    QStringLiteral("id"), m_id, int(included), int(column("included").toBool()));
}

StoreCustomers::StoreCustomers(std::shared_ptr<StoreConnection> db, qint64 submittalId,
                               QObject* parent)
    : Customers(parent), m_db(std::move(db)), m_id(submittalId)
{ }

StoreCustomers::~StoreCustomers() = default;

std::shared_ptr<Customer> StoreCustomers::customer(qint64 id) const
{
    auto& slot = m_customers[id];
    if (!slot)
        slot = std::make_shared<StoreCustomer>(m_db, id);
    return slot;
}

qint64 StoreCustomers::append(StoreConnection& db, qint64 submittal, const QString& key,
                              const Customer& c)
{
    return db.insert(
        QStringLiteral("INSERT INTO submittal_customers (submittal_id, position, key, "
                       "customer_key, display_text, name, account_number, city, state, type, "
                       "category, included) SELECT ?, COALESCE(MAX(position), 0) + 1, ?, ?, "
                       "?, ?, ?, ?, ?, ?, ?, ? FROM submittal_customers WHERE "
                       "submittal_id = ?"),
        {submittal, key, c.Key(), c.DisplayText(), c.Name(), c.AccountNumber(), c.City(), c.State(),
         c.Type(), c.Category(), int(c.Included()), submittal});
}

bool StoreCustomers::Add(const QString& key, std::shared_ptr<Customer> c)
{
    const qint64 id = m_db->write([&] {
        const bool held = m_db->value(QStringLiteral("SELECT 1 FROM submittal_customers WHERE "
                                                     "submittal_id = ? AND key = ?"),
                                      {m_id, key})
                              .isValid();
        CollectionRules::checkCustomerAdd(kSource, c.get(), key, held, Count());
        return append(*m_db, m_id, key, *c);
    });
    // A found customer of this store becomes this submittal's: the caller's later writes
    // through it (ticking it, first of all) land in the row just added.
    auto found = std::dynamic_pointer_cast<StoreCustomer>(c);
    if (found && found->m_db == m_db && !found->onSubmittal()) {
        found->adopt(id);
        m_customers.insert(id, std::move(found));
    }
    return true;
}

qint64 StoreCustomers::idAt(qint16 index) const
{
    const QVariant id =
        index < 1 ? QVariant()
                  : m_db->value(QStringLiteral("SELECT id FROM submittal_customers WHERE "
                                               "submittal_id = ? ORDER BY position LIMIT 1 "
                                               "OFFSET ?"),
                                {m_id, int(index) - 1});
    if (!id.isValid())
        throw CollectionRules::noPosition(kSource, QStringLiteral("customer"), index, Count());
    return id.toLongLong();
}

void StoreCustomers::Remove(qint16 index)
{
    m_db->write([&] {
        const qint64 id = idAt(index);
        m_db->run(QStringLiteral("DELETE FROM submittal_customers WHERE id = ?"), {id});
        m_customers.remove(id);
    });
    emit CustomerRemoved(index);
}

void StoreCustomers::RemoveAll()
{
    // Always the last one: a handler of CustomerRemoved that changes the collection does not
    // throw the walk off.
    for (;;) {
        const qint16 count = Count();
        if (count < 1)
            break;
        Remove(count);
    }
}

std::shared_ptr<Customer> StoreCustomers::Item(qint16 index) const
{
    return customer(idAt(index));
}

qint16 StoreCustomers::Count() const
{
    return qint16(m_db->value(QStringLiteral("SELECT COUNT(*) FROM submittal_customers WHERE "
                                             "submittal_id = ?"),
                              {m_id})
                      .toInt());
}

CustomerList StoreCustomers::Enumerate() const
{
    CustomerList out;
    for (const QVariantList& r : m_db->rows(QStringLiteral("SELECT id FROM submittal_customers "
                                                           "WHERE submittal_id = ? ORDER BY "
                                                           "position"),
                                            {m_id}))
        out.append(customer(r[0].toLongLong()));
    return out;
}

}  // namespace ZebObjects
