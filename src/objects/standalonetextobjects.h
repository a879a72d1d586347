#pragma once

#include "zebobjects_export.h"

#include "contracts/textobjects.h"
#include "objects/faultinjector.h"

#include <QHash>

#include <vector>

namespace ZebObjects {

class ZEBOBJECTS_EXPORT StandaloneTextObject : public TextObject, public FaultInjectable {
public:
    StandaloneTextObject(QString key, QString text, bool selected);

    QString Key() const override;
    QString Text() const override;
    void setText(const QString& text) override;
    bool Selected() const override;
    void setSelected(bool selected) override;

    // The key without going through the injector, for the collection's own bookkeeping.
    const QString& key() const { return m_key; }

private:
    QString m_key;
    QString m_text;
    bool m_selected;
};

// An in-memory text collection. Keys are handed out in sequence ("1", "2", ...) unless a caller
// names its own with addWithKey. Member names for fault injection: "TextObjectType",
// "TextObjectType=", "IsDirty", "Item", "Count", "Add", "Remove", "MoveDown", "MoveUp",
// "SaveOrder", "Enumerate", "Insert".
class ZEBOBJECTS_EXPORT StandaloneTextObjects : public TextObjects, public FaultInjectable {
    Q_OBJECT
public:
    explicit StandaloneTextObjects(QObject* parent = nullptr);

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

    // Puts a new paragraph at a 1-based position (1 to Count + 1); raises ItemInserted and
    // leaves the order unsaved.
    std::shared_ptr<TextObject> Insert(qint32 position, const QString& text, bool selected);
    // Appends a paragraph under a key of the caller's; a key already held fails with 457.
    // Raises ItemAdded like Add.
    std::shared_ptr<TextObject> addWithKey(const QString& key, const QString& text, bool selected);
    // The concrete object behind a key (for fault injection on one paragraph).
    std::shared_ptr<StandaloneTextObject> object(const QString& key) const;

private:
    qsizetype indexOf(const QString& key) const;
    std::shared_ptr<StandaloneTextObject> make(const QString& key, const QString& text,
                                               bool selected);
    [[noreturn]] void missing(const QString& key) const;
    void move(const QString& key, int step);

    std::vector<std::shared_ptr<StandaloneTextObject>> m_items;
    QHash<QString, std::shared_ptr<StandaloneTextObject>> m_byKey;
    qint32 m_type = 0;
    bool m_dirty = false;
    quint64 m_nextKey = 1;
};

}  // namespace ZebObjects
