#include "frame/propertybag.h"

#include "contracts/failure.h"

#include <QJsonDocument>
#include <QJsonValue>

#include <cmath>
#include <limits>

namespace ZebSubCtl {

namespace {
const QString kSource = QStringLiteral("ZebSubCtl.PropertyBag");
constexpr qint32 kInvalidPropertyValue = ZebObjects::ErrorNumber::InvalidPropertyValue;

QString typeName(const QVariant& v)
{
    switch (v.typeId()) {
    case QMetaType::Bool: return QStringLiteral("a flag");
    case QMetaType::QString: return QStringLiteral("a text");
    case QMetaType::Double: return QStringLiteral("a number");
    case QMetaType::Int:
    case QMetaType::Short:
    case QMetaType::LongLong: return QStringLiteral("a whole number");
    default: return QStringLiteral("a value of type ") + QString::fromLatin1(v.typeName());
    }
}

[[noreturn]] void mismatch(const QString& key, const QVariant& stored, const QVariant& wanted)
{
    throw ZebObjects::Failure(ZebObjects::ErrorNumber::TypeMismatch, kSource,
                              QStringLiteral("Type mismatch: saved property \"%1\" holds %2 where "
                                             "%3 is expected")
                                  .arg(key, typeName(stored), typeName(wanted)));
}

bool isNumber(const QVariant& v)
{
    switch (v.typeId()) {
    case QMetaType::Int:
    case QMetaType::Short:
    case QMetaType::LongLong:
    case QMetaType::Double: return true;
    default: return false;
    }
}

QVariant toWholeNumber(const QString& key, const QVariant& stored, const QVariant& wanted)
{
    if (!isNumber(stored))
        mismatch(key, stored, wanted);
    const double d = stored.toDouble();
    if (std::floor(d) != d)
        mismatch(key, stored, wanted);
    double low = std::numeric_limits<qint32>::min();
    double high = std::numeric_limits<qint32>::max();
    if (wanted.typeId() == QMetaType::Short) {
        low = std::numeric_limits<qint16>::min();
        high = std::numeric_limits<qint16>::max();
    }
    if (d < low || d > high)
        throw ZebObjects::Failure(ZebObjects::ErrorNumber::Overflow, kSource,
                                  QStringLiteral("Overflow: saved property \"%1\" holds %2, "
                                                 "which does not fit %3")
                                      .arg(key, QString::number(d, 'g', 17), typeName(wanted)));
    if (wanted.typeId() == QMetaType::Short)
        return QVariant::fromValue(qint16(d));
    return QVariant::fromValue(qint32(d));
}
}  // namespace

void PropertyBag::WriteProperty(const QString& key, const QVariant& value,
                                const QVariant& defaultValue)
{
    auto it = std::find_if(m_values.begin(), m_values.end(),
                           [&](const auto& p) { return p.first == key; });
    if (value == defaultValue) {
        if (it != m_values.end())
            m_values.erase(it);
        return;
    }
    if (it != m_values.end())
        it->second = value;
    else
        m_values.append({key, value});
}

QVariant PropertyBag::ReadProperty(const QString& key, const QVariant& defaultValue) const
{
    auto it = std::find_if(m_values.begin(), m_values.end(),
                           [&](const auto& p) { return p.first == key; });
    if (it == m_values.end())
        return defaultValue;
    const QVariant& stored = it->second;
    switch (defaultValue.typeId()) {
    case QMetaType::Bool:
        if (stored.typeId() != QMetaType::Bool)
            mismatch(key, stored, defaultValue);
        return stored;
    case QMetaType::Int:
    case QMetaType::Short:
    case QMetaType::LongLong: return toWholeNumber(key, stored, defaultValue);
    case QMetaType::QString:
        if (stored.typeId() != QMetaType::QString)
            mismatch(key, stored, defaultValue);
        return stored;
    default: return stored;
    }
}

bool PropertyBag::contains(const QString& key) const
{
    return std::any_of(m_values.begin(), m_values.end(),
                       [&](const auto& p) { return p.first == key; });
}

QStringList PropertyBag::keys() const
{
    QStringList out;
    for (const auto& p : m_values)
        out.append(p.first);
    return out;
}

QJsonObject PropertyBag::toJsonObject() const
{
    QJsonObject o;
    for (const auto& [key, value] : m_values)
        o.insert(key, QJsonValue::fromVariant(value));
    return o;
}

QByteArray PropertyBag::toJson() const
{
    return QJsonDocument(toJsonObject()).toJson(QJsonDocument::Indented);
}

PropertyBag PropertyBag::fromJsonObject(const QJsonObject& object)
{
    PropertyBag bag;
    for (auto it = object.begin(); it != object.end(); ++it) {
        const QJsonValue v = it.value();
        QVariant value;
        switch (v.type()) {
        case QJsonValue::Bool: value = v.toBool(); break;
        case QJsonValue::String: value = v.toString(); break;
        case QJsonValue::Double: {
            const double d = v.toDouble();
            if (std::floor(d) == d && d >= std::numeric_limits<qint32>::min()
                && d <= std::numeric_limits<qint32>::max())
                value = qint32(d);
            else
                value = d;
            break;
        }
        default:
            throw ZebObjects::Failure(kInvalidPropertyValue, kSource,
                                      QStringLiteral("Invalid property value: saved property "
                                                     "\"%1\" is neither a flag, a number nor a "
                                                     "text")
                                          .arg(it.key()));
        }
        bag.m_values.append({it.key(), value});
    }
    return bag;
}

PropertyBag PropertyBag::fromJson(const QByteArray& json)
{
    QJsonParseError error{};
    const QJsonDocument doc = QJsonDocument::fromJson(json, &error);
    if (error.error != QJsonParseError::NoError)
        throw ZebObjects::Failure(kInvalidPropertyValue, kSource,
                                  QStringLiteral("Invalid property value: the saved design is "
                                                 "not valid JSON (%1 at offset %2)")
                                      .arg(error.errorString())
                                      .arg(error.offset));
    if (!doc.isObject())
        throw ZebObjects::Failure(kInvalidPropertyValue, kSource,
                                  QStringLiteral("Invalid property value: the saved design is "
                                                 "not a JSON object"));
    return fromJsonObject(doc.object());
}

}  // namespace ZebSubCtl
