#pragma once

#include "zebobjectscontracts_export.h"

#include "contracts/textobject.h"

#include <QList>
#include <QObject>
#include <QString>

#include <memory>

namespace ZebObjects {

using TextObjectList = QList<std::shared_ptr<TextObject>>;

// An ordered collection of text objects of one kind. Events are raised synchronously, after the
// collection has changed.
class ZEBOBJECTSCONTRACTS_EXPORT TextObjects : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;
    ~TextObjects() override = default;

    virtual qint32 TextObjectType() const = 0;
    virtual void setTextObjectType(qint32 type) = 0;
    // True while the order has changed and is not yet saved.
    virtual bool IsDirty() const = 0;
    // Look-up by key; a key not in the collection fails.
    virtual std::shared_ptr<TextObject> Item(const QString& key) const = 0;
    // Look-up by 1-based position; a position out of range fails.
    virtual std::shared_ptr<TextObject> Item(qint32 position) const = 0;
    virtual qint32 Count() const = 0;
    // Appends a paragraph; raises ItemAdded.
    virtual std::shared_ptr<TextObject> Add(const QString& text, bool selected) = 0;
    // Deletes a paragraph; raises ItemDeleted. A key not in the collection fails.
    virtual void Remove(const QString& key) = 0;
    // One place towards the end; raises ItemMoved. At the end: no change, no error.
    virtual void MoveDown(const QString& key) = 0;
    // One place towards the start; raises ItemMoved. At the start: no change, no error.
    virtual void MoveUp(const QString& key) = 0;
    // Persists the current order; raises OrderSaved.
    virtual void SaveOrder() = 0;
    // The objects in display order (a snapshot: the enumeration of the collection).
    virtual TextObjectList Enumerate() const = 0;

signals:
    void Changed();
    void ItemAdded(const QString& key);
    void ItemDeleted(const QString& key);
    void ItemInserted(const QString& key, qint32 position);
    void ItemMoved();
    void OrderSaved();
};

}  // namespace ZebObjects
