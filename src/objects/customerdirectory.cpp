#include "objects/customerdirectory.h"

#include "rules/collectionrules.h"

#include <algorithm>

namespace ZebObjects {

namespace {

const QString kSource = QStringLiteral("ZebObjects.CustomerDirectory");

}  // namespace

void CustomerDirectory::Add(const StandaloneCustomer::Data& record)
{
    check("Add");
    if (std::any_of(m_records.begin(), m_records.end(),
                    [&](const auto& r) { return r.key == record.key; }))
        throw CollectionRules::duplicateKey(kSource, record.key);
    m_records.append(record);
}

qint32 CustomerDirectory::Count() const
{
    check("Count");
    return qint32(m_records.size());
}

QList<StandaloneCustomer::Data> CustomerDirectory::Records() const
{
    check("Records");
    return m_records;
}

QList<StandaloneCustomer::Data> CustomerDirectory::Search(const Query& query) const
{
    check("Search");
    return match(m_records, query);
}

QList<StandaloneCustomer::Data> CustomerDirectory::match(
    const QList<StandaloneCustomer::Data>& records, const Query& query)
{
    return CustomerSearch::match(records, query);
}

}  // namespace ZebObjects
