#include "contracts/failure.h"

namespace ZebObjects {

Failure::Failure(qint32 number, QString source, QString description)
    : Failure(ErrorInfo{number, std::move(source), std::move(description)})
{ }

Failure::Failure(ErrorInfo info)
    : m_info(std::move(info)),
      m_what((QString::number(m_info.Number) + QStringLiteral(" - ") + m_info.Description).toUtf8())
{ }

Failure Failure::invalidPropertyValue(QString source)
{
    return Failure(ErrorNumber::InvalidPropertyValue, std::move(source),
                   QStringLiteral("Invalid property value"));
}

Failure Failure::controlArrayElementMissing(qint32 index, QString source)
{
    return Failure(ErrorNumber::ControlArrayElementMissing, std::move(source),
                   QStringLiteral("Control array element '%1' doesn't exist").arg(index));
}

Failure Failure::indexOutOfBounds(QString source)
{
    return Failure(ErrorNumber::IndexOutOfBounds, std::move(source),
                   QStringLiteral("Index out of bounds"));
}

const char* Failure::what() const noexcept
{
    return m_what.constData();
}

}  // namespace ZebObjects
