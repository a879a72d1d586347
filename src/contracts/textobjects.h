#pragma once

#include "zebobjectscontracts_export.h"

#include "contracts/textobject.h"

#include <QList>
#include <QObject>
#include <QString>

#include <memory>

namespace ZebObjects {

using TextObjectList = QList<std::shared_ptr<TextObject>>;

/// An ordered collection of text objects of one kind. Events are raised synchronously, after the
/// collection has changed.
class ZEBOBJECTSCONTRACTS_EXPORT TextObjects : public QObject {
    Q_OBJECT
public:
    /// Constructs the object with Qt's parent, as QObject does.
    using QObject::QObject;
    ~TextObjects() override = default;

    /// The kind of text held (paragraphs, remarks, ...), a number the host defines.
    virtual qint32 TextObjectType() const = 0;
    /// Sets the kind of text; ctlTextSelect hands its own TextObjectType on when bound.
    virtual void setTextObjectType(qint32 type) = 0;
    /// True while the order has changed and is not yet saved.
    virtual bool IsDirty() const = 0;
    /// Look-up by key; a key not in the collection fails.
    virtual std::shared_ptr<TextObject> Item(const QString& key) const = 0;
    /// Look-up by 1-based position; a position out of range fails.
    virtual std::shared_ptr<TextObject> Item(qint32 position) const = 0;
    /// The number of text objects held.
    virtual qint32 Count() const = 0;
    /// Appends a paragraph; raises ItemAdded.
    virtual std::shared_ptr<TextObject> Add(const QString& text, bool selected) = 0;
    /// Deletes a paragraph; raises ItemDeleted. A key not in the collection fails.
    virtual void Remove(const QString& key) = 0;
    /// One place towards the end; raises ItemMoved. At the end: no change, no error.
    virtual void MoveDown(const QString& key) = 0;
    /// One place towards the start; raises ItemMoved. At the start: no change, no error.
    virtual void MoveUp(const QString& key) = 0;
    /// Persists the current order; raises OrderSaved.
    virtual void SaveOrder() = 0;
    /// The objects in display order (a snapshot: the enumeration of the collection).
    virtual TextObjectList Enumerate() const = 0;

signals:
    /// Raised after every change of the collection, after the event that names it; IsDirty() may
    /// have changed with it.
    void Changed();
    /// Raised after the text object key was appended.
    void ItemAdded(const QString& key);
    /// Raised after the text object key was removed.
    void ItemDeleted(const QString& key);
    /// Raised after the text object key was inserted at 1-based position.
    void ItemInserted(const QString& key, qint32 position);
    /// Raised after a text object moved up or down.
    void ItemMoved();
    /// Raised after the order was saved; IsDirty() is then false.
    void OrderSaved();
};

}  // namespace ZebObjects
