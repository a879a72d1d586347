#include "hostobjects.h"

#include "contracts/failure.h"

#include <utility>

namespace HostForm {

using ZebObjects::Failure;
using ZebObjects::ErrorNumber::ElementNotFound;
using ZebObjects::ErrorNumber::KeyAlreadyInCollection;
using ZebObjects::ErrorNumber::SubscriptOutOfRange;

namespace {
const QString kSource = QStringLiteral("HostForm");
}

Paragraph::Paragraph(QString key, QString text, bool selected)
    : m_key(std::move(key)), m_text(std::move(text)), m_selected(selected)
{ }

qsizetype Paragraphs::indexOf(const QString& key) const
{
    for (qsizetype i = 0; i < m_items.size(); ++i)
        if (m_items.at(i)->Key() == key)
            return i;
    return -1;
}

std::shared_ptr<ZebObjects::TextObject> Paragraphs::Item(const QString& key) const
{
    const qsizetype i = indexOf(key);
    if (i < 0)
        throw Failure(ElementNotFound, kSource, QStringLiteral("Element not found"));
    return m_items.at(i);
}

std::shared_ptr<ZebObjects::TextObject> Paragraphs::Item(qint32 position) const
{
    if (position < 1 || position > m_items.size())
        throw Failure(SubscriptOutOfRange, kSource, QStringLiteral("Subscript out of range"));
    return m_items.at(position - 1);
}

std::shared_ptr<ZebObjects::TextObject> Paragraphs::Add(const QString& text, bool selected)
{
    auto paragraph = std::make_shared<Paragraph>(QString::number(m_nextKey++), text, selected);
    m_items.append(paragraph);
    emit ItemAdded(paragraph->Key());
    emit Changed();
    return paragraph;
}

void Paragraphs::Remove(const QString& key)
{
    const qsizetype i = indexOf(key);
    if (i < 0)
        throw Failure(ElementNotFound, kSource, QStringLiteral("Element not found"));
    m_items.removeAt(i);
    emit ItemDeleted(key);
    emit Changed();
}

void Paragraphs::move(const QString& key, int step)
{
    const qsizetype from = indexOf(key);
    if (from < 0)
        throw Failure(ElementNotFound, kSource, QStringLiteral("Element not found"));
    const qsizetype to = from + step;
    // Moving past either end changes nothing and raises nothing.
    if (to < 0 || to >= m_items.size())
        return;
    m_items.swapItemsAt(from, to);
    m_dirty = true;
    emit ItemMoved();
    emit Changed();
}

void Paragraphs::SaveOrder()
{
    m_dirty = false;
    emit OrderSaved();
    emit Changed();
}

ZebObjects::TextObjectList Paragraphs::Enumerate() const
{
    return {m_items.begin(), m_items.end()};
}

Client::Client(QString account, QString name, QString city, QString state)
    : m_account(std::move(account)), m_name(std::move(name)), m_city(std::move(city)),
      m_state(std::move(state))
{ }

bool Clients::Add(const QString& key, std::shared_ptr<ZebObjects::Customer> customer)
{
    for (const auto& held : std::as_const(m_items))
        if (held->Key() == key)
            throw Failure(KeyAlreadyInCollection, kSource,
                          QStringLiteral("This key is already associated with an element of "
                                         "this collection"));
    m_items.append(std::move(customer));
    return true;
}

void Clients::Remove(qint16 index)
{
    if (index < 1 || index > m_items.size())
        throw Failure(SubscriptOutOfRange, kSource, QStringLiteral("Subscript out of range"));
    m_items.removeAt(index - 1);
    emit CustomerRemoved(index);
}

void Clients::RemoveAll()
{
    // From the end, so that each event's index is the customer's place as it leaves.
    while (!m_items.isEmpty()) {
        const auto index = qint16(m_items.size());
        m_items.removeLast();
        emit CustomerRemoved(index);
    }
}

std::shared_ptr<ZebObjects::Customer> Clients::Item(qint16 index) const
{
    if (index < 1 || index > m_items.size())
        throw Failure(SubscriptOutOfRange, kSource, QStringLiteral("Subscript out of range"));
    return m_items.at(index - 1);
}

namespace {
class Found : public ZebObjects::CustomerSearchResult {
public:
    explicit Found(std::shared_ptr<ZebObjects::Customer> customer) : m_customer(std::move(customer))
    { }
    std::shared_ptr<ZebObjects::Customer> ChosenCustomer() const override { return m_customer; }

private:
    std::shared_ptr<ZebObjects::Customer> m_customer;
};
}  // namespace

ClientFinder::ClientFinder(QList<std::shared_ptr<Client>> book) : m_book(std::move(book)) { }

std::shared_ptr<ZebObjects::CustomerSearchResult> ClientFinder::Search(
    bool, bool, bool, bool, bool, const QVariant&, const QString& keyword,
    const QString& accountNumber, const QString&, const QString&, const QString&, const QString&,
    const QString&, const QString&, qint32 maximumResults)
{
    if (maximumResults < 0)
        throw Failure(ZebObjects::ErrorNumber::InvalidProcedureCall, kSource,
                      QStringLiteral("Invalid procedure call or argument"));
    if (keyword.isEmpty() && accountNumber.isEmpty())
        return nullptr;
    QList<std::shared_ptr<Client>> matches;
    for (const auto& client : std::as_const(m_book)) {
        const bool byName =
            keyword.isEmpty() || client->Name().contains(keyword, Qt::CaseInsensitive);
        const bool byAccount = accountNumber.isEmpty() || client->AccountNumber() == accountNumber;
        if (byName && byAccount)
            matches.append(client);
    }
    if (matches.size() != 1)
        return nullptr;
    return std::make_shared<Found>(matches.first());
}

}  // namespace HostForm
