#include "logpane.h"

#include "objects/defaultdiagnosticlog.h"

#include <QPlainTextEdit>

#include <utility>

LogPane::LogPane(std::shared_ptr<ZebObjects::DefaultDiagnosticLog> inner)
    : m_inner(std::move(inner))
{ }

void LogPane::setView(QPlainTextEdit* view)
{
    m_view = view;
    if (m_view)
        for (const QString& line : std::exchange(m_pending, {}))
            m_view->appendPlainText(line);
}

void LogPane::show(const QString& line)
{
    if (m_view)
        m_view->appendPlainText(line);
    else if (m_pending.size() < 5000)
        m_pending.append(line);
}

void LogPane::LogError(const QString& module, const QString& label,
                       const ZebObjects::ErrorInfo& error, qint32 line)
{
    m_inner->LogError(module, label, error, line);
    show(ZebObjects::DefaultDiagnosticLog::formatFailure("ERROR", module, label, error, line));
}

void LogPane::LogNotice(const QString& module, const QString& label,
                        const ZebObjects::ErrorInfo& error, qint32 line)
{
    m_inner->LogNotice(module, label, error, line);
    show(ZebObjects::DefaultDiagnosticLog::formatFailure("NOTICE", module, label, error, line));
}

void LogPane::LogWarning(const QString& module, const QString& label,
                         const ZebObjects::ErrorInfo& error, qint32 line)
{
    m_inner->LogWarning(module, label, error, line);
    show(ZebObjects::DefaultDiagnosticLog::formatFailure("WARNING", module, label, error, line));
}

void LogPane::Trace(const QString& module, const QString& label, QString message, qint32 level)
{
    show(ZebObjects::DefaultDiagnosticLog::formatTrace(module, label, message, level));
    m_inner->Trace(module, label, std::move(message), level);
}
