#include "contracts/failure.h"

namespace ZebObjects {

Failure::Failure(qint32 number, QString source, QString description)
    : Failure(ErrorInfo{number, std::move(source), std::move(description)})
{
}

Failure::Failure(ErrorInfo info)
    : m_info(std::move(info))
    , m_what((QString::number(m_info.Number) + QStringLiteral(" - ") + m_info.Description).toUtf8())
{
}

const char* Failure::what() const noexcept
{
    return m_what.constData();
}

}  // namespace ZebObjects
