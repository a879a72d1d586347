#include "store/storecustomers.h"

#include "rules/collectionrules.h"
#include "store/storeconnection.h"

#include <QScopeGuard>

#include <algorithm>

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

CustomerRecord customerRow(const StoreRow& r)
{
    CustomerRecord c;
    c.key = r.text(1);
    c.displayText = r.text(2);
    c.name = r.text(3);
    c.accountNumber = r.text(4);
    c.city = r.text(5);
    c.state = r.text(6);
    c.type = r.text(7);
    c.category = r.text(8);
    c.included = r.boolean(9);
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
    if (m_leaving)
        return m_row;
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
    m_row = customerRow(StoreValuesRow(r));
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
    if (!slot) {
        const auto held = std::find_if(m_kept.cbegin(), m_kept.cend(),
                                       [id](const auto& c) { return c->m_id == id; });
        slot = held != m_kept.cend() ? *held : std::make_shared<StoreCustomer>(m_db, id);
    }
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
    return m_db->keep(m_state,
                      [this](const QString& along, quint64& state) { read(along, state); });
}

void StoreCustomers::read(const QString& along, quint64& state) const
{
    // The customers handed out before stay the same objects.
    QHash<qint64, std::shared_ptr<StoreCustomer>> known;
    known.swap(m_customers);
    for (auto& c : m_kept)
        known.insert(c->m_id, std::move(c));
    m_kept.clear();
    m_kept.reserve(known.size());
    try {
        m_db->eachRow(QStringLiteral("SELECT %1%2 FROM submittal_customers WHERE submittal_id = "
                                     "? ORDER BY position")
                          .arg(kColumns, along),
                      {m_id}, [&](const StoreRow& r) {
                          if (state == 0 && !along.isEmpty())
                              state = m_db->stateRead({r.value(10), r.value(11)});
                          const qint64 id = r.integer(0);
                          std::shared_ptr<StoreCustomer> c =
                              known.isEmpty() ? nullptr : known.take(id);
                          if (!c)
                              c = std::make_shared<StoreCustomer>(m_db, id);
                          c->seen(state, customerRow(r));
                          m_kept.append(std::move(c));
                      });
    } catch (...) {
        // A read that failed part way keeps nothing, and every object stays the one it was.
        for (auto& c : m_kept)
            known.insert(c->m_id, std::move(c));
        m_kept.clear();
        m_customers.swap(known);
        throw;
    }
}

qint64 StoreCustomers::idAt(qint16 index) const
{
    QVariant id;
    if (index >= 1 && kept()) {
        if (index <= m_kept.size())
            id = m_kept[index - 1]->m_id;
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
            m_kept.removeAt(index - 1);
            m_state = m_db->stateAfterWrite();
        } else {
            m_state = 0;
        }
    });
    emit CustomerRemoved(index);
}

void StoreCustomers::RemoveAll()
{
    // From a handler of the events of a Remove All: every customer has left the file already,
    // and the rest of the events are on their way.
    if (m_leaving)
        return;
    QList<std::shared_ptr<StoreCustomer>> leaving;
    m_db->write([&] {
        // What leaves is what the file holds inside this write, each customer with its values.
        if (!kept()) {
            quint64 state = 0;
            read(QString(), state);
        }
        if (m_kept.isEmpty())
            return;
        m_db->run(QStringLiteral("DELETE FROM submittal_customers WHERE submittal_id = ?"), {m_id});
        leaving.swap(m_kept);
        m_state = 0;
    });
    for (const auto& c : std::as_const(leaving)) {
        c->m_leaving = true;
        m_customers.remove(c->m_id);
    }
    m_leaving = std::move(leaving);
    const auto ended = qScopeGuard([this] {
        // A handler that failed ends the events: the rest are gone all the same.
        for (const auto& c : std::as_const(*m_leaving))
            c->m_leaving = false;
        m_leaving.reset();
    });
    // The last one first, as one removal after another would announce them.
    while (!m_leaving->isEmpty()) {
        const std::shared_ptr<StoreCustomer> gone = m_leaving->takeLast();
        gone->m_leaving = false;
        emit CustomerRemoved(qint16(m_leaving->size() + 1));
    }
}

std::shared_ptr<Customer> StoreCustomers::Item(qint16 index) const
{
    if (m_leaving) {
        if (index < 1 || index > m_leaving->size())
            throw CollectionRules::noPosition(kSource, QStringLiteral("customer"), index,
                                              qint16(m_leaving->size()));
        return m_leaving->at(index - 1);
    }
    if (index >= 1 && kept()) {
        if (index > m_kept.size())
            throw CollectionRules::noPosition(kSource, QStringLiteral("customer"), index,
                                              qint16(m_kept.size()));
        return m_kept[index - 1];
    }
    return customer(idAt(index));
}

qint16 StoreCustomers::Count() const
{
    if (m_leaving)
        return qint16(m_leaving->size());
    if (kept())
        return qint16(m_kept.size());
    return qint16(m_db->value(QStringLiteral("SELECT COUNT(*) FROM submittal_customers WHERE "
                                             "submittal_id = ?"),
                              {m_id})
                      .toInt());
}

CustomerList StoreCustomers::Enumerate() const
{
    CustomerList out;
    if (m_leaving || kept()) {
        const auto& list = m_leaving ? *m_leaving : m_kept;
        out.reserve(list.size());
        for (const auto& c : list)
            out.append(c);
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
