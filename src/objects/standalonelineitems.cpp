#include "objects/standalonelineitems.h"

#include "rules/collectionrules.h"

namespace ZebObjects {

namespace {
const QString kSource = QStringLiteral("ZebObjects.LineItems");
}

qint16 StandaloneLineItems::Count() const
{
    check("Count");
    return qint16(m_items.size());
}

std::shared_ptr<LineItem> StandaloneLineItems::Item(qint16 position) const
{
    check("Item");
    return line(position);
}

LineItemList StandaloneLineItems::Enumerate() const
{
    check("Enumerate");
    return LineItemList(m_items.begin(), m_items.end());
}

std::shared_ptr<StandaloneLineItem> StandaloneLineItems::Add(const StandaloneLineItem::Data& data)
{
    check("Add");
    CollectionRules::checkRoom(kSource, QStringLiteral("lines"), qint64(m_items.size()));
    auto item = std::make_shared<StandaloneLineItem>(data);
    m_items.push_back(item);
    return item;
}

void StandaloneLineItems::Clear()
{
    check("Clear");
    m_items.clear();
}

std::shared_ptr<StandaloneLineItem> StandaloneLineItems::line(qint16 position) const
{
    if (position < 1 || std::size_t(position) > m_items.size())
        throw CollectionRules::noPosition(kSource, QStringLiteral("line"), position,
                                          qint64(m_items.size()));
    return m_items[std::size_t(position) - 1];
}

}  // namespace ZebObjects
