#include "objects/standalonecustomers.h"

#include "rules/collectionrules.h"

#include <QStringList>

#include <algorithm>

namespace ZebObjects {

namespace {
const QString kSource = QStringLiteral("ZebObjects.Customers");
}

StandaloneCustomers::StandaloneCustomers(QObject* parent) : Customers(parent) { }

StandaloneCustomers::~StandaloneCustomers() = default;

bool StandaloneCustomers::Add(const QString& key, std::shared_ptr<Customer> customer)
{
    check("Add");
    const bool held =
        std::any_of(m_items.begin(), m_items.end(), [&](const auto& i) { return i.first == key; });
    CollectionRules::checkCustomerAdd(kSource, customer.get(), key, held, qint64(m_items.size()));
    if (m_addPolicy && !m_addPolicy(key, *customer))
        return false;
    m_items.emplace_back(key, std::move(customer));
    return true;
}

void StandaloneCustomers::checkIndex(qint16 index) const
{
    if (index < 1 || std::size_t(index) > m_items.size())
        throw CollectionRules::noPosition(kSource, QStringLiteral("customer"), index,
                                          qint64(m_items.size()));
}

void StandaloneCustomers::refused(const std::vector<QString>& keys) const
{
    QStringList quoted;
    for (const QString& key : keys)
        quoted.append(QLatin1Char('"') + key + QLatin1Char('"'));
    throw Failure(ErrorNumber::PermissionDenied, kSource,
                  QStringLiteral("Permission denied: the submittal must keep %1")
                      .arg(quoted.join(QStringLiteral(", "))));
}

void StandaloneCustomers::Remove(qint16 index)
{
    check("Remove");
    checkIndex(index);
    auto& item = m_items[std::size_t(index) - 1];
    if (m_removePolicy && !m_removePolicy(*item.second))
        refused({item.first});
    m_items.erase(m_items.begin() + (index - 1));
    emit CustomerRemoved(index);
}

void StandaloneCustomers::RemoveAll()
{
    check("RemoveAll");
    std::vector<const Customer*> kept;
    std::vector<QString> keptKeys;
    // Always the last customer not yet refused: refused customers gather at the end, and a
    // handler of CustomerRemoved that changes the collection does not throw the walk off.
    for (;;) {
        std::size_t position = m_items.size();
        while (position >= 1
               && std::find(kept.begin(), kept.end(), m_items[position - 1].second.get())
                      != kept.end())
            --position;
        if (position < 1)
            break;
        const auto& item = m_items[position - 1];
        if (m_removePolicy && !m_removePolicy(*item.second)) {
            kept.push_back(item.second.get());
            keptKeys.insert(keptKeys.begin(), item.first);
            continue;
        }
        m_items.erase(m_items.begin() + qsizetype(position - 1));
        emit CustomerRemoved(qint16(position));
    }
    if (!keptKeys.empty())
        refused(keptKeys);
}

std::shared_ptr<Customer> StandaloneCustomers::Item(qint16 index) const
{
    check("Item");
    checkIndex(index);
    return m_items[std::size_t(index) - 1].second;
}

qint16 StandaloneCustomers::Count() const
{
    check("Count");
    return qint16(m_items.size());
}

CustomerList StandaloneCustomers::Enumerate() const
{
    check("Enumerate");
    CustomerList out;
    out.reserve(qsizetype(m_items.size()));
    for (const auto& item : m_items)
        out.append(item.second);
    return out;
}

void StandaloneCustomers::setAddPolicy(AddPolicy policy)
{
    m_addPolicy = std::move(policy);
}

void StandaloneCustomers::setRemovePolicy(RemovePolicy policy)
{
    m_removePolicy = std::move(policy);
}

QString StandaloneCustomers::keyAt(qint16 index) const
{
    checkIndex(index);
    return m_items[std::size_t(index) - 1].first;
}

}  // namespace ZebObjects
