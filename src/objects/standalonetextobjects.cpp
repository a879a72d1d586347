#include "objects/standalonetextobjects.h"

#include "rules/collectionrules.h"

#include <algorithm>

namespace ZebObjects {

namespace {
const QString kSource = QStringLiteral("ZebObjects.TextObjects");
}

StandaloneTextObject::StandaloneTextObject(QString key, QString text, bool selected)
    : m_key(std::move(key)), m_text(std::move(text)), m_selected(selected)
{ }

QString StandaloneTextObject::Key() const
{
    check("Key");
    return m_key;
}

QString StandaloneTextObject::Text() const
{
    check("Text");
    return m_text;
}

void StandaloneTextObject::setText(const QString& text)
{
    check("Text=");
    m_text = text;
}

bool StandaloneTextObject::Selected() const
{
    check("Selected");
    return m_selected;
}

void StandaloneTextObject::setSelected(bool selected)
{
    check("Selected=");
    m_selected = selected;
}

StandaloneTextObjects::StandaloneTextObjects(QObject* parent) : TextObjects(parent) { }

qint32 StandaloneTextObjects::TextObjectType() const
{
    check("TextObjectType");
    return m_type;
}

void StandaloneTextObjects::setTextObjectType(qint32 type)
{
    check("TextObjectType=");
    m_type = type;
}

bool StandaloneTextObjects::IsDirty() const
{
    check("IsDirty");
    return m_dirty;
}

void StandaloneTextObjects::missing(const QString& key) const
{
    throw CollectionRules::missingKey(kSource, QStringLiteral("text object"), key);
}

std::shared_ptr<TextObject> StandaloneTextObjects::Item(const QString& key) const
{
    check("Item");
    const auto it = m_byKey.constFind(key);
    if (it == m_byKey.constEnd())
        missing(key);
    return *it;
}

std::shared_ptr<TextObject> StandaloneTextObjects::Item(qint32 position) const
{
    check("Item");
    if (position < 1 || std::size_t(position) > m_items.size())
        throw CollectionRules::noPosition(kSource, QStringLiteral("text object"), position,
                                          qint64(m_items.size()));
    return m_items[std::size_t(position) - 1];
}

qint32 StandaloneTextObjects::Count() const
{
    check("Count");
    return qint32(m_items.size());
}

std::shared_ptr<StandaloneTextObject> StandaloneTextObjects::make(const QString& key,
                                                                  const QString& text,
                                                                  bool selected)
{
    if (m_byKey.contains(key))
        throw CollectionRules::duplicateKey(kSource, key);
    auto object = std::make_shared<StandaloneTextObject>(key, text, selected);
    m_byKey.insert(key, object);
    return object;
}

std::shared_ptr<TextObject> StandaloneTextObjects::Add(const QString& text, bool selected)
{
    check("Add");
    QString key;
    do {
        key = QString::number(m_nextKey++);
    } while (m_byKey.contains(key));
    auto object = make(key, text, selected);
    m_items.push_back(object);
    emit ItemAdded(key);
    emit Changed();
    return object;
}

std::shared_ptr<TextObject> StandaloneTextObjects::addWithKey(const QString& key,
                                                              const QString& text, bool selected)
{
    check("Add");
    auto object = make(key, text, selected);
    m_items.push_back(object);
    emit ItemAdded(key);
    emit Changed();
    return object;
}

std::shared_ptr<TextObject> StandaloneTextObjects::Insert(qint32 position, const QString& text,
                                                          bool selected)
{
    check("Insert");
    if (position < 1 || std::size_t(position) > m_items.size() + 1)
        throw Failure(ErrorNumber::SubscriptOutOfRange, kSource,
                      QStringLiteral("Subscript out of range: cannot insert at position %1 of %2")
                          .arg(position)
                          .arg(m_items.size()));
    QString key;
    do {
        key = QString::number(m_nextKey++);
    } while (m_byKey.contains(key));
    auto object = make(key, text, selected);
    m_items.insert(m_items.begin() + (position - 1), object);
    m_dirty = true;
    emit ItemInserted(key, position);
    emit Changed();
    return object;
}

qsizetype StandaloneTextObjects::indexOf(const QString& key) const
{
    const auto it = std::find_if(m_items.begin(), m_items.end(),
                                 [&](const auto& o) { return o->key() == key; });
    return it == m_items.end() ? -1 : qsizetype(it - m_items.begin());
}

void StandaloneTextObjects::Remove(const QString& key)
{
    check("Remove");
    if (!m_byKey.contains(key))
        missing(key);
    m_items.erase(m_items.begin() + indexOf(key));
    m_byKey.remove(key);
    emit ItemDeleted(key);
    emit Changed();
}

void StandaloneTextObjects::move(const QString& key, int step)
{
    if (!m_byKey.contains(key))
        missing(key);
    const qsizetype from = indexOf(key);
    const qsizetype to = from + step;
    // A move past either end is accepted and changes nothing.
    if (to < 0 || to >= qsizetype(m_items.size()))
        return;
    std::swap(m_items[std::size_t(from)], m_items[std::size_t(to)]);
    m_dirty = true;
    emit ItemMoved();
    emit Changed();
}

void StandaloneTextObjects::MoveDown(const QString& key)
{
    check("MoveDown");
    move(key, +1);
}

void StandaloneTextObjects::MoveUp(const QString& key)
{
    check("MoveUp");
    move(key, -1);
}

void StandaloneTextObjects::SaveOrder()
{
    check("SaveOrder");
    m_dirty = false;
    emit OrderSaved();
    emit Changed();
}

TextObjectList StandaloneTextObjects::Enumerate() const
{
    check("Enumerate");
    TextObjectList out;
    out.reserve(qsizetype(m_items.size()));
    for (const auto& o : m_items)
        out.append(o);
    return out;
}

std::shared_ptr<StandaloneTextObject> StandaloneTextObjects::object(const QString& key) const
{
    const auto it = m_byKey.constFind(key);
    if (it == m_byKey.constEnd())
        missing(key);
    return *it;
}

}  // namespace ZebObjects
