#include "objects/memorydiagnosticlog.h"

namespace ZebObjects {

QString MemoryDiagnosticLog::Entry::toString() const
{
    if (kind == Kind::Trace)
        return QStringList{QStringLiteral("Trace"), module, label, message, QString::number(level)}
            .join(QLatin1Char('|'));
    const char* name = kind == Kind::Error    ? "LogError"
                       : kind == Kind::Notice ? "LogNotice"
                                              : "LogWarning";
    return QStringList{QLatin1String(name),           module,       label,
                       QString::number(error.Number), error.Source, error.Description,
                       QString::number(line)}
        .join(QLatin1Char('|'));
}

void MemoryDiagnosticLog::LogError(const QString& module, const QString& label,
                                   const ErrorInfo& error, qint32 line)
{
    check("LogError");
    m_entries.append(Entry{Kind::Error, module, label, {}, 0, error, line});
}

void MemoryDiagnosticLog::LogNotice(const QString& module, const QString& label,
                                    const ErrorInfo& error, qint32 line)
{
    check("LogNotice");
    m_entries.append(Entry{Kind::Notice, module, label, {}, 0, error, line});
}

void MemoryDiagnosticLog::LogWarning(const QString& module, const QString& label,
                                     const ErrorInfo& error, qint32 line)
{
    check("LogWarning");
    m_entries.append(Entry{Kind::Warning, module, label, {}, 0, error, line});
}

void MemoryDiagnosticLog::Trace(const QString& module, const QString& label, QString message,
                                qint32 level)
{
    check("Trace");
    m_entries.append(Entry{Kind::Trace, module, label, std::move(message), level, {}, 0});
}

QStringList MemoryDiagnosticLog::lines() const
{
    QStringList out;
    out.reserve(m_entries.size());
    for (const auto& e : m_entries)
        out.append(e.toString());
    return out;
}

QStringList MemoryDiagnosticLog::failureLines() const
{
    QStringList out;
    for (const auto& e : m_entries)
        if (e.kind != Kind::Trace)
            out.append(e.toString());
    return out;
}

}  // namespace ZebObjects
