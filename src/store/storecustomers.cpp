#include "store/storecustomers.h"

#include "rules/collectionrules.h"
#include "store/storeconnection.h"

#include <QSqlQuery>

namespace ZebObjects {

namespace {
const QString kSource = QStringLiteral("ZebObjects.Customers");
}

StoreCustomer::StoreCustomer(std::shared_ptr<StoreConnection> db, qint64 id)
    : m_db(std::move(db)), m_id(id)
{ }

StoreCustomer::StoreCustomer(std::shared_ptr<StoreConnection> db, CustomerRecord record)
    : m_db(std::move(db)), m_record(std::make_unique<CustomerRecord>(std::move(record)))
{ }

void StoreCustomer::adopt(qint64 id)
{
    m_id = id;
    m_record.reset();
    m_state = 0;
}

namespace {

const QString kColumns = QStringLiteral("id, customer_key, display_text, name, account_number, "
                                        "city, state, type, category, included");

// Row is a QVariantList or a QSqlQuery on the row.
template <class Row>
CustomerRecord customerRow(const Row& r)
{
    CustomerRecord c;
    c.key = r.value(1).toString();
    c.displayText = r.value(2).toString();
    c.name = r.value(3).toString();
    c.accountNumber = r.value(4).toString();
    c.city = r.value(5).toString();
    c.state = r.value(6).toString();
    c.type = r.value(7).toString();
    c.category = r.value(8).toString();
    c.included = r.value(9).toBool();
    return c;
}

}  // namespace

void StoreCustomer::seen(quint64 state, CustomerRecord row)
{
    m_state = state;
    m_row = std::move(row);
}

const CustomerRecord& StoreCustomer::row() const
{
    // The state is taken before the read: a change that comes between shows at the next use.
    const quint64 state = m_db->state();
    if (state != 0 && state == m_state)
        return m_row;
    const QVariantList r = m_db->row(
        QStringLiteral("SELECT %1 FROM submittal_customers WHERE id = ?").arg(kColumns), {m_id});
    if (r.isEmpty())
        throw Failure(ErrorNumber::ElementNotFound, kSource,
                      QStringLiteral("Element not found: the customer is no longer on the "
                                     "submittal in the database file \"%1\"")
                          .arg(m_db->path()));
    m_row = customerRow(r);
    m_state = state;
    return m_row;
}

QString StoreCustomer::text(const QString CustomerRecord::*field) const
{
    return m_record ? (*m_record).*field : row().*field;
}

QString StoreCustomer::Key() const
{
    return text(&CustomerRecord::key);
}
QString StoreCustomer::DisplayText() const
{
    return text(&CustomerRecord::displayText);
}
QString StoreCustomer::Name() const
{
    return text(&CustomerRecord::name);
}
QString StoreCustomer::AccountNumber() const
{
    return text(&CustomerRecord::accountNumber);
}
QString StoreCustomer::City() const
{
    return text(&CustomerRecord::city);
}
QString StoreCustomer::State() const
{
    return text(&CustomerRecord::state);
}
QString StoreCustomer::Type() const
{
    return text(&CustomerRecord::type);
}
QString StoreCustomer::Category() const
{
    return text(&CustomerRecord::category);
}
bool StoreCustomer::Included() const
{
    return m_record ? m_record->included : row().included;
}

void StoreCustomer::setIncluded(bool included)
{
    if (m_record) {
        m_record->included = included;
        return;
    }
    m_db->setColumn(QStringLiteral("submittal_customers"), QStringLiteral("included"),
                    QStringLiteral("id"), m_id, int(included), int(row().included));
}

StoreCustomers::StoreCustomers(std::shared_ptr<StoreConnection> db, qint64 submittalId,
                               QObject* parent)
    : Customers(parent), m_db(std::move(db)), m_id(submittalId)
{ }

StoreCustomers::~StoreCustomers() = default;

std::shared_ptr<StoreCustomer> StoreCustomers::customer(qint64 id) const
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

bool StoreCustomers::kept() const
{
    // Nothing kept yet: the state comes along with the first read.
    const QString along = m_state == 0 ? m_db->stateAlong() : QString();
    quint64 state = along.isEmpty() ? m_db->state() : 0;
    if (along.isEmpty()) {
        if (state == 0)
            return false;
        if (state == m_state)
            return true;
    }
    m_state = 0;
    m_ids.clear();
    m_db->eachRow(QStringLiteral("SELECT %1%2 FROM submittal_customers WHERE submittal_id = ? "
                                 "ORDER BY position")
                      .arg(kColumns, along),
                  {m_id}, [&](const QSqlQuery& r) {
                      if (state == 0)
                          state = m_db->stateRead({r.value(10), r.value(11)});
                      const qint64 id = r.value(0).toLongLong();
                      customer(id)->seen(state, customerRow(r));
                      m_ids.append(id);
                  });
    m_state = state != 0 ? state : m_db->state();
    return m_state != 0;
}

qint64 StoreCustomers::idAt(qint16 index) const
{
    QVariant id;
    if (index >= 1 && kept()) {
        if (index <= m_ids.size())
            id = m_ids[index - 1];
    } else if (index >= 1) {
        id = m_db->value(QStringLiteral("SELECT id FROM submittal_customers WHERE submittal_id "
                                        "= ? ORDER BY position LIMIT 1 OFFSET ?"),
                         {m_id, int(index) - 1});
    }
    if (!id.isValid())
        throw CollectionRules::noPosition(kSource, QStringLiteral("customer"), index, Count());
    return id.toLongLong();
}

void StoreCustomers::Remove(qint16 index)
{
    m_db->write([&] {
        const qint64 id = idAt(index);
        // Whether the order read before is still the file's, right before the change.
        const bool wasKept = m_state != 0 && m_state == m_db->state();
        m_db->run(QStringLiteral("DELETE FROM submittal_customers WHERE id = ?"), {id});
        m_customers.remove(id);
        if (wasKept) {
            m_ids.removeAt(index - 1);
            m_state = m_db->stateAfterWrite();
        } else {
            m_state = 0;
        }
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
    if (kept())
        return qint16(m_ids.size());
    return qint16(m_db->value(QStringLiteral("SELECT COUNT(*) FROM submittal_customers WHERE "
                                             "submittal_id = ?"),
                              {m_id})
                      .toInt());
}

CustomerList StoreCustomers::Enumerate() const
{
    CustomerList out;
    if (kept()) {
        out.reserve(m_ids.size());
        for (const qint64 id : std::as_const(m_ids))
            out.append(customer(id));
        return out;
    }
    for (const QVariantList& r : m_db->rows(QStringLiteral("SELECT id FROM submittal_customers "
                                                           "WHERE submittal_id = ? ORDER BY "
                                                           "position"),
                                            {m_id}))
        out.append(customer(r[0].toLongLong()));
    return out;
}

}  // namespace ZebObjects
