#include "store/storetextobjects.h"

#include "rules/collectionrules.h"
#include "store/storeconnection.h"

namespace ZebObjects {

namespace {

const QString kSource = QStringLiteral("ZebObjects.TextObjects");
const QString kWhat = QStringLiteral("text object");

}  // namespace

StoreTextObject::StoreTextObject(std::shared_ptr<StoreConnection> db, qint64 id, QString key)
    : m_db(std::move(db)), m_id(id), m_key(std::move(key))
{ }

QVariant StoreTextObject::column(const char* name) const
{
    const QVariant v = m_db->value(
        QStringLiteral("SELECT %1 FROM texts WHERE id = ?").arg(QLatin1String(name)), {m_id});
    if (!v.isValid())
        throw CollectionRules::missingKey(kSource, kWhat, m_key);
    return v;
}

QString StoreTextObject::Key() const
{
    return m_key;
}
bool StoreTextObject::fresh() const
{
    if (m_db->holds(m_snapshot))
        return true;
    // The state is taken before the read: a change that comes between shows at the next use.
    const quint64 state = m_db->state();
    if (state != 0 && state == m_state)
        return true;
    const QVariantList r =
        m_db->row(QStringLiteral("SELECT text, selected FROM texts WHERE id = ?"), {m_id});
    if (r.isEmpty())
        throw CollectionRules::missingKey(kSource, kWhat, m_key);
    m_snapshot = 0;
    m_state = state;
    m_seenText = r[0].toString();
    m_textRemembered = false;
    m_seenSelected = r[1].toBool();
    return true;
}

QString StoreTextObject::Text() const
{
    fresh();
    // A list shows each text once and asks again on every paint: what it shows is remembered
    // once for each time it is read.
    if (!m_textRemembered) {
        m_lastRead.remember(QStringLiteral("text"), m_seenText);
        m_textRemembered = true;
    }
    return m_seenText;
}

void StoreTextObject::seen(quint64 snapshot, quint64 state, const QString& text, bool selected)
{
    m_snapshot = snapshot;
    m_state = state;
    m_seenText = text;
    m_textRemembered = false;
    m_seenSelected = selected;
}

void StoreTextObject::setText(const QString& text)
{
    QVariant now = column("text");
    // Writing what is stored changes nothing (no conflict either: the values agree).
    if (now == text) {
        m_lastRead.remember(QStringLiteral("text"), now);
        m_textRemembered = false;
        return;
    }
    const bool conflict = m_db->write([&] {
        now = column("text");
        if (m_lastRead.conflicts(QStringLiteral("text"), now, text))
            return true;
        if (now != text)
            m_db->run(QStringLiteral("UPDATE texts SET text = ? WHERE id = ?"), {text, m_id});
        now = text;
        return false;
    });
    m_lastRead.remember(QStringLiteral("text"), now);
    m_textRemembered = false;
    if (conflict)
        throw m_db->refused(
            StoreLastRead::conflict(kSource, QStringLiteral("the text %1").arg(m_key), now, text));
}

bool StoreTextObject::Selected() const
{
    fresh();
    return m_seenSelected;
}

void StoreTextObject::setSelected(bool selected)
{
    m_db->setColumn(QStringLiteral("texts"), QStringLiteral("selected"), QStringLiteral("id"), m_id,
                    int(selected), int(column("selected").toBool()));
}

StoreTextObjects::StoreTextObjects(std::shared_ptr<StoreConnection> db, qint64 id, QObject* parent)
    : TextObjects(parent), m_db(std::move(db)), m_id(id)
{ }

StoreTextObjects::~StoreTextObjects() = default;

qint32 StoreTextObjects::TextObjectType() const
{
    if (m_shownType)
        return *m_shownType;
    return m_db
        ->value(QStringLiteral("SELECT text_type FROM text_collections WHERE id = ?"), {m_id})
        .toInt();
}

void StoreTextObjects::setTextObjectType(qint32 type)
{
    const qint32 current = TextObjectType();
    if (current == type)
        return;
    // A list bound to a read-only file still says which kind of text it shows; the file cannot
    // take it, so the collection keeps it for as long as it lives.
    if (m_db->isReadOnly() && !m_db->dialect().isServer()) {
        m_shownType = type;
        return;
    }
    m_db->setColumn(QStringLiteral("text_collections"), QStringLiteral("text_type"),
                    QStringLiteral("id"), m_id, type, current);
}

bool StoreTextObjects::IsDirty() const
{
    return m_db->value(QStringLiteral("SELECT dirty FROM text_collections WHERE id = ?"), {m_id})
        .toBool();
}

bool StoreTextObjects::inSnapshot() const
{
    return m_db->holds(m_snapshot);
}

bool StoreTextObjects::kept() const
{
    if (inSnapshot())
        return true;
    return m_db->keep(m_state,
                      [this](const QString& along, quint64& state) { read(along, state); });
}

std::shared_ptr<StoreTextObject> StoreTextObjects::object(qint64 id, const QString& key) const
{
    auto& slot = m_objects[id];
    if (!slot) {
        // A row id the file gave again after a removal is another paragraph: the key tells.
        const auto seen = std::find_if(m_seen.cbegin(), m_seen.cend(), [&](const auto& o) {
            return o->id() == id && o->Key() == key;
        });
        slot = seen != m_seen.cend() ? *seen : std::make_shared<StoreTextObject>(m_db, id, key);
    }
    return slot;
}

const QHash<QString, qsizetype>& StoreTextObjects::seenAt() const
{
    if (!m_seenIndexed) {
        m_seenAt.clear();
        m_seenAt.reserve(m_seen.size());
        for (qsizetype i = 0; i < m_seen.size(); ++i)
            m_seenAt.insert(m_seen[i]->Key(), i);
        m_seenIndexed = true;
    }
    return m_seenAt;
}

qint64 StoreTextObjects::idOf(const QString& key) const
{
    const QVariant id = m_db->value(
        QStringLiteral("SELECT id FROM texts WHERE collection_id = ? AND key = ?"), {m_id, key});
    if (!id.isValid())
        throw CollectionRules::missingKey(kSource, kWhat, key);
    return id.toLongLong();
}

std::shared_ptr<TextObject> StoreTextObjects::Item(const QString& key) const
{
    if (kept()) {
        const QHash<QString, qsizetype>& index = seenAt();
        const auto at = index.constFind(key);
        if (at == index.constEnd())
            throw CollectionRules::missingKey(kSource, kWhat, key);
        return m_seen[*at];
    }
    return object(idOf(key), key);
}

std::shared_ptr<TextObject> StoreTextObjects::Item(qint32 position) const
{
    if (kept()) {
        if (position < 1 || position > m_seen.size())
            throw CollectionRules::noPosition(kSource, kWhat, position, qint32(m_seen.size()));
        return m_seen[position - 1];
    }
    const QVariantList r =
        position < 1 ? QVariantList()
                     : m_db->row(QStringLiteral("SELECT id, key FROM texts WHERE collection_id = "
                                                "? ORDER BY position LIMIT 1 OFFSET ?"),
                                 {m_id, position - 1});
    if (r.isEmpty())
        throw CollectionRules::noPosition(kSource, kWhat, position, Count());
    return object(r[0].toLongLong(), r[1].toString());
}

qint32 StoreTextObjects::Count() const
{
    if (kept())
        return qint32(m_seen.size());
    return m_db->value(QStringLiteral("SELECT COUNT(*) FROM texts WHERE collection_id = ?"), {m_id})
        .toInt();
}

void StoreTextObjects::append(StoreConnection& db, qint64 collection, const QString& text,
                              bool selected)
{
    // Keys are never handed out twice, not even after a removal.
    qint64 next =
        db.value(QStringLiteral("SELECT next_key FROM text_collections WHERE id = ?"), {collection})
            .toLongLong();
    while (db.value(QStringLiteral("SELECT 1 FROM texts WHERE collection_id = ? AND key = ?"),
                    {collection, QString::number(next)})
               .isValid())
        ++next;
    const QString key = QString::number(next);
    db.run(QStringLiteral("UPDATE text_collections SET next_key = ? WHERE id = ?"),
           {next + 1, collection});
    // A new paragraph goes last in the current order and in the saved one alike.
    db.run(QStringLiteral("INSERT INTO texts (collection_id, key, position, saved_position, "
                          "text, selected) SELECT ?, ?, COALESCE(MAX(position), 0) + 1, "
                          "COALESCE(MAX(position), 0) + 1, ?, ? FROM texts WHERE "
                          "collection_id = ?"),
           {collection, key, text, int(selected), collection});
}

std::shared_ptr<TextObject> StoreTextObjects::Add(const QString& text, bool selected)
{
    // The file keeps a null text as an empty one.
    const QString stored = text.isNull() ? QStringLiteral("") : text;
    std::shared_ptr<StoreTextObject> o;
    const QString key = m_db->write([&] {
        // What was read before is brought up to date only when it is still the file's.
        const quint64 before = m_db->state();
        const bool wasKept = before != 0 && before == m_state;
        append(*m_db, m_id, stored, selected);
        const QVariantList added =
            m_db->row(QStringLiteral("SELECT id, key FROM texts WHERE collection_id = ? "
                                     "ORDER BY position DESC LIMIT 1"),
                      {m_id});
        o = object(added[0].toLongLong(), added[1].toString());
        // The new paragraph is what was just written: it is not read back.
        const quint64 after = m_db->stateAfterWrite();
        o->seen(0, after, stored, selected);
        if (wasKept && after != 0) {
            if (m_seenIndexed)
                m_seenAt.insert(o->Key(), m_seen.size());
            m_seen.append(o);
            m_state = after;
        } else {
            m_state = 0;
        }
        return added[1].toString();
    });
    emit ItemAdded(key);
    emit Changed();
    return o;
}

void StoreTextObjects::Remove(const QString& key)
{
    m_db->write([&] {
        const qint64 id = idOf(key);
        m_db->run(QStringLiteral("DELETE FROM texts WHERE id = ?"), {id});
        m_objects.remove(id);
    });
    emit ItemDeleted(key);
    emit Changed();
}

void StoreTextObjects::move(const QString& key, int step)
{
    const bool moved = m_db->write([&] {
        const qint64 id = idOf(key);
        const qint64 position =
            m_db->value(QStringLiteral("SELECT position FROM texts WHERE id = ?"), {id})
                .toLongLong();
        const QVariantList neighbour = m_db->row(
            step < 0 ? QStringLiteral("SELECT id, position FROM texts WHERE collection_id = ? "
                                      "AND position < ? ORDER BY position DESC LIMIT 1")
                     : QStringLiteral("SELECT id, position FROM texts WHERE collection_id = ? "
                                      "AND position > ? ORDER BY position LIMIT 1"),
            {m_id, position});
        // A move past either end is accepted and changes nothing.
        if (neighbour.isEmpty())
            return false;
        m_db->run(QStringLiteral("UPDATE texts SET position = ? WHERE id = ?"), {neighbour[1], id});
        m_db->run(QStringLiteral("UPDATE texts SET position = ? WHERE id = ?"),
                  {position, neighbour[0]});
        m_db->run(QStringLiteral("UPDATE text_collections SET dirty = 1 WHERE id = ?"), {m_id});
        return true;
    });
    if (!moved)
        return;
    emit ItemMoved();
    emit Changed();
}

void StoreTextObjects::MoveDown(const QString& key)
{
    move(key, +1);
}
void StoreTextObjects::MoveUp(const QString& key)
{
    move(key, -1);
}

void StoreTextObjects::SaveOrder()
{
    m_db->write([&] {
        // An order that is saved already is left as it is: nothing to commit.
        m_db->run(QStringLiteral("UPDATE texts SET saved_position = position WHERE "
                                 "collection_id = ? AND saved_position <> position"),
                  {m_id});
        m_db->run(QStringLiteral("UPDATE text_collections SET dirty = 0 WHERE id = ? AND "
                                 "dirty <> 0"),
                  {m_id});
    });
    emit OrderSaved();
    emit Changed();
}

void StoreTextObjects::read(const QString& along, quint64& state) const
{
    // One statement: it reads one state of the file, whatever another program commits
    // meanwhile.
    m_snapshot = 0;
    // The paragraphs handed out before stay the same objects; one handed out since the last
    // read is the newer of two with one id.
    QHash<qint64, std::shared_ptr<StoreTextObject>> known;
    known.reserve(m_seen.size() + m_objects.size());
    for (auto& o : m_seen)
        known.insert(o->id(), std::move(o));
    for (auto it = m_objects.begin(); it != m_objects.end(); ++it)
        known.insert(it.key(), std::move(it.value()));
    m_objects.clear();
    m_seen.clear();
    m_seen.reserve(known.size());
    m_seenAt.clear();
    m_seenIndexed = false;
    const quint64 snapshot = m_db->snapshot();
    try {
        m_db->eachRow(QStringLiteral("SELECT id, key, text, selected%1 FROM texts WHERE "
                                     "collection_id = ? ORDER BY position")
                          .arg(along),
                      {m_id}, [&](const StoreRow& r) {
                          if (state == 0 && !along.isEmpty())
                              state = m_db->stateRead({r.value(4), r.value(5)});
                          const qint64 id = r.integer(0);
                          const QString key = r.text(1);
                          std::shared_ptr<StoreTextObject> o =
                              known.isEmpty() ? nullptr : known.take(id);
                          // A row id the file gave again after a removal is another paragraph.
                          if (!o || o->Key() != key)
                              o = std::make_shared<StoreTextObject>(m_db, id, key);
                          o->seen(snapshot, state, r.text(2), r.boolean(3));
                          m_seen.append(std::move(o));
                      });
    } catch (...) {
        // A read that failed part way keeps nothing, and every object stays the one it was.
        for (auto& o : m_seen)
            known.insert(o->id(), std::move(o));
        m_seen.clear();
        m_objects.swap(known);
        throw;
    }
    m_snapshot = snapshot;
}

TextObjectList StoreTextObjects::Enumerate() const
{
    if (!kept()) {
        // Inside a write on the server: read now, kept for nothing after.
        quint64 none = 0;
        read(QString(), none);
        m_state = 0;
    }
    TextObjectList out;
    out.reserve(m_seen.size());
    for (const auto& o : std::as_const(m_seen))
        out.append(o);
    return out;
}

}  // namespace ZebObjects
