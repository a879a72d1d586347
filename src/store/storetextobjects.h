#pragma once

#include "zebstore_export.h"

#include "contracts/textobjects.h"
#include "store/storelastread.h"

#include <QHash>

#include <optional>

namespace ZebObjects {

class StoreConnection;

// One paragraph of a text collection in a store; reads and writes go to the file.
class ZEBSTORE_EXPORT StoreTextObject : public TextObject {
public:
    StoreTextObject(std::shared_ptr<StoreConnection> db, qint64 id, QString key);

    QString Key() const override;
    QString Text() const override;
    void setText(const QString& text) override;
    bool Selected() const override;
    void setSelected(bool selected) override;

    // What the collection read (or wrote) of this paragraph: answered while the connection's
    // snapshot holds, or while the database's state is still state.
    void seen(quint64 snapshot, quint64 state, const QString& text, bool selected);
    qint64 id() const { return m_id; }

private:
    QVariant column(const char* name) const;
    // Whether what was seen is still what the database holds; else it is read again.
    bool fresh() const;

    mutable quint64 m_snapshot = 0;
    mutable quint64 m_state = 0;
    mutable QString m_seenText;
    // Whether m_lastRead holds m_seenText as the text last shown.
    mutable bool m_textRemembered = false;
    mutable bool m_seenSelected = false;

    std::shared_ptr<StoreConnection> m_db;
    qint64 m_id;
    QString m_key;
    // A text edited here over another workstation's edit fails rather than replace it.
    mutable StoreLastRead m_lastRead;
};

// A text collection in a store: a submittal's paragraphs or remarks, or a library of the
// office. Keys are handed out in sequence ("1", "2", ...). The current order is committed with
// every move; SaveOrder makes it the saved order, and the collection is dirty while the two
// differ. Events are raised after the commit, as the stand-alone collection raises them.
// Enumerate reads every paragraph in one statement, and until the connection's snapshot ends
// the collection and its paragraphs answer from that read: a list filled from it shows one
// state of the file even while another program changes it. Past the snapshot, the count and the
// paragraphs by position or key come from that read for as long as the database's state stays
// the same, and are read again, all in one statement, once it has changed.
class ZEBSTORE_EXPORT StoreTextObjects : public TextObjects {
    Q_OBJECT
public:
    StoreTextObjects(std::shared_ptr<StoreConnection> db, qint64 id, QObject* parent = nullptr);
    ~StoreTextObjects() override;

    qint32 TextObjectType() const override;
    void setTextObjectType(qint32 type) override;
    bool IsDirty() const override;
    std::shared_ptr<TextObject> Item(const QString& key) const override;
    std::shared_ptr<TextObject> Item(qint32 position) const override;
    qint32 Count() const override;
    std::shared_ptr<TextObject> Add(const QString& text, bool selected) override;
    void Remove(const QString& key) override;
    void MoveDown(const QString& key) override;
    void MoveUp(const QString& key) override;
    void SaveOrder() override;
    TextObjectList Enumerate() const override;

    qint64 id() const { return m_id; }

    // Appends a paragraph inside the caller's transaction, without events (for filling).
    static void append(StoreConnection& db, qint64 collection, const QString& text, bool selected);

private:
    std::shared_ptr<StoreTextObject> object(qint64 id, const QString& key) const;
    bool inSnapshot() const;
    // Reads the paragraphs again unless what was read is still the database's; false when
    // nothing may be kept (inside a write on the server).
    bool kept() const;
    // Reads every paragraph in order into m_seen (see StoreConnection::keep for along and state).
    void read(const QString& along, quint64& state) const;
    void move(const QString& key, int step);
    qint64 idOf(const QString& key) const;

    std::shared_ptr<StoreConnection> m_db;
    qint64 m_id;
    // Paragraphs handed out while nothing was kept (the last read's are in m_seen): one object
    // per paragraph, whichever way it was asked for.
    mutable QHash<qint64, std::shared_ptr<StoreTextObject>> m_objects;
    std::optional<qint32> m_shownType;
    // Where each key is in m_seen, made when a key is first asked for.
    const QHash<QString, qsizetype>& seenAt() const;

    // The paragraphs of the last read, in order, and where each key is in it; read in the
    // connection's snapshot m_snapshot and the database's state m_state.
    mutable quint64 m_snapshot = 0;
    mutable quint64 m_state = 0;
    mutable QList<std::shared_ptr<StoreTextObject>> m_seen;
    mutable QHash<QString, qsizetype> m_seenAt;
    mutable bool m_seenIndexed = false;
};

}  // namespace ZebObjects
