#include "objects/standalonerecipients.h"

#include "rules/collectionrules.h"

namespace ZebObjects {

namespace {
const QString kSource = QStringLiteral("ZebObjects.Recipients");
}

StandaloneRecipient::StandaloneRecipient(QString name, QString company)
    : m_name(std::move(name)), m_company(std::move(company))
{ }

QString StandaloneRecipient::Name() const
{
    check("Name");
    return m_name;
}

QString StandaloneRecipient::Company() const
{
    check("Company");
    return m_company;
}

qint16 StandaloneRecipients::Count() const
{
    check("Count");
    return qint16(m_items.size());
}

std::shared_ptr<Recipient> StandaloneRecipients::Item(qint16 position) const
{
    check("Item");
    if (position < 1 || std::size_t(position) > m_items.size())
        throw CollectionRules::noPosition(kSource, QStringLiteral("recipient"), position,
                                          qint64(m_items.size()));
    return m_items[std::size_t(position) - 1];
}

RecipientList StandaloneRecipients::Enumerate() const
{
    check("Enumerate");
    return RecipientList(m_items.begin(), m_items.end());
}

std::shared_ptr<StandaloneRecipient> StandaloneRecipients::Add(const QString& name,
                                                               const QString& company)
{
    check("Add");
    CollectionRules::checkRoom(kSource, QStringLiteral("recipients"), qint64(m_items.size()));
    auto recipient = std::make_shared<StandaloneRecipient>(name, company);
    m_items.push_back(recipient);
    return recipient;
}

void StandaloneRecipients::Remove(qint16 position)
{
    check("Remove");
    if (position < 1 || std::size_t(position) > m_items.size())
        throw CollectionRules::noPosition(kSource, QStringLiteral("recipient"), position,
                                          qint64(m_items.size()));
    m_items.erase(m_items.begin() + (position - 1));
}

}  // namespace ZebObjects
