#include "support/controltesting.h"

#include <QStringList>

namespace ZebTest {

ZebSubCtl::ScriptedMessageBoxService::Shown plainBox(const ZebObjects::ErrorInfo& e)
{
    return {kCannot, 48, QString::number(e.Number) + QStringLiteral(" - ") + e.Description};
}

QString logLine(const char* kind, const QString& module, const QString& label,
                const ZebObjects::ErrorInfo& e)
{
    return QStringList{QLatin1String(kind),       module,   label,
                       QString::number(e.Number), e.Source, e.Description,
                       QStringLiteral("0")}
        .join(QLatin1Char('|'));
}

std::optional<ZebObjects::ErrorInfo> failureIfAny(const std::function<void()>& call)
{
    try {
        call();
    } catch (const ZebObjects::Failure& f) {
        return f.info();
    }
    return std::nullopt;
}

FailingTraceLog::FailingTraceLog(std::shared_ptr<ZebObjects::MemoryDiagnosticLog> inner, int failAt,
                                 ZebObjects::ErrorInfo error)
    : m_inner(std::move(inner)), m_failAt(failAt), m_error(std::move(error))
{ }

void FailingTraceLog::LogError(const QString& m, const QString& l, const ZebObjects::ErrorInfo& e,
                               qint32 n)
{
    m_inner->LogError(m, l, e, n);
}

void FailingTraceLog::LogNotice(const QString& m, const QString& l, const ZebObjects::ErrorInfo& e,
                                qint32 n)
{
    m_inner->LogNotice(m, l, e, n);
}

void FailingTraceLog::LogWarning(const QString& m, const QString& l, const ZebObjects::ErrorInfo& e,
                                 qint32 n)
{
    m_inner->LogWarning(m, l, e, n);
}

void FailingTraceLog::Trace(const QString& m, const QString& l, QString message, qint32 level)
{
    if (++m_traces == m_failAt)
        throw ZebObjects::Failure(m_error);
    m_inner->Trace(m, l, std::move(message), level);
}

}  // namespace ZebTest
