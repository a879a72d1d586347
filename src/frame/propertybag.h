#pragma once

#include "zebsubctl_export.h"

#include <QByteArray>
#include <QJsonObject>
#include <QList>
#include <QString>
#include <QStringList>
#include <QVariant>

namespace ZebSubCtl {

/// The host's saved design of one control: the values of its persisted properties.
/// Like a host's saved form, it keeps only values that differ from their defaults.
class ZEBSUBCTL_EXPORT PropertyBag {
public:
    /// Stores value under key, or forgets the key when value equals defaultValue.
    void WriteProperty(const QString& key, const QVariant& value, const QVariant& defaultValue);
    /// The stored value, or defaultValue when the key is absent. A stored value of another type
    /// than the default's fails with type mismatch (13) naming the key; a number that does not
    /// fit the default's type fails with overflow (6).
    QVariant ReadProperty(const QString& key, const QVariant& defaultValue) const;

    /// True when a value is stored under key.
    bool contains(const QString& key) const;
    /// Stored keys, in the order they were first written.
    QStringList keys() const;
    /// True when no value is stored (every property at its default).
    bool isEmpty() const { return m_values.isEmpty(); }

    /// The stored values as a JSON object (which orders its keys by name).
    QJsonObject toJsonObject() const;
    /// The stored values as indented JSON text.
    QByteArray toJson() const;
    /// A saved design that is not a JSON object of flags, numbers and texts fails with invalid
    /// property value (380) naming the problem.
    static PropertyBag fromJsonObject(const QJsonObject& object);
    /// The bag saved as JSON text; fails with 380 like fromJsonObject().
    static PropertyBag fromJson(const QByteArray& json);

private:
    QList<std::pair<QString, QVariant>> m_values;
};

}  // namespace ZebSubCtl
