#include "objects/defaultdiagnosticlog.h"

#include <QDateTime>

Q_LOGGING_CATEGORY(zebDiagnostics, "zeb.diagnostics", QtInfoMsg)

namespace ZebObjects {

DefaultDiagnosticLog::DefaultDiagnosticLog() = default;
DefaultDiagnosticLog::~DefaultDiagnosticLog() = default;

void DefaultDiagnosticLog::setFile(const QString& path)
{
    check("File=");
    m_file.reset();
    if (path.isEmpty())
        return;
    auto file = std::make_unique<QFile>(path);
    if (!file->open(QIODevice::WriteOnly | QIODevice::Append | QIODevice::Text))
        throw Failure(ErrorNumber::PathFileAccessError, QStringLiteral("ZebObjects.DiagnosticLog"),
                      QStringLiteral("Path/File access error: cannot open the log file \"%1\": %2")
                          .arg(path, file->errorString()));
    m_file = std::move(file);
}

QString DefaultDiagnosticLog::file() const
{
    check("File");
    return m_file ? m_file->fileName() : QString();
}

QString DefaultDiagnosticLog::formatFailure(const char* kind, const QString& module,
                                            const QString& label, const ErrorInfo& error,
                                            qint32 line)
{
    return QStringLiteral("%1 %2 %3 #%4 [%5] %6 (line %7)")
        .arg(QLatin1String(kind), module, label, QString::number(error.Number), error.Source,
             error.Description, QString::number(line));
}

QString DefaultDiagnosticLog::formatTrace(const QString& module, const QString& label,
                                          const QString& message, qint32 level)
{
    QString text = QStringLiteral("TRACE %1 %2 %3").arg(module, label, message);
    if (level != 0)
        text += QStringLiteral(" (level %1)").arg(level);
    return text;
}

void DefaultDiagnosticLog::LogError(const QString& module, const QString& label,
                                    const ErrorInfo& error, qint32 line)
{
    check("LogError");
    write(QtCriticalMsg, formatFailure("ERROR", module, label, error, line));
}

void DefaultDiagnosticLog::LogNotice(const QString& module, const QString& label,
                                     const ErrorInfo& error, qint32 line)
{
    check("LogNotice");
    write(QtInfoMsg, formatFailure("NOTICE", module, label, error, line));
}

void DefaultDiagnosticLog::LogWarning(const QString& module, const QString& label,
                                      const ErrorInfo& error, qint32 line)
{
    check("LogWarning");
    write(QtWarningMsg, formatFailure("WARNING", module, label, error, line));
}

void DefaultDiagnosticLog::Trace(const QString& module, const QString& label, QString message,
                                 qint32 level)
{
    check("Trace");
    // Traces come by the thousand: skip the formatting when nobody reads them.
    if (!m_file && !zebDiagnostics().isDebugEnabled())
        return;
    write(QtDebugMsg, formatTrace(module, label, message, level));
}

void DefaultDiagnosticLog::write(QtMsgType type, const QString& text)
{
    const QString stamped =
        QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss.zzz ")) + text;
    switch (type) {
    case QtDebugMsg: qCDebug(zebDiagnostics).noquote() << stamped; break;
    case QtInfoMsg: qCInfo(zebDiagnostics).noquote() << stamped; break;
    case QtWarningMsg: qCWarning(zebDiagnostics).noquote() << stamped; break;
    default: qCCritical(zebDiagnostics).noquote() << stamped; break;
    }
    if (m_file) {
        m_file->write((stamped + QLatin1Char('\n')).toUtf8());
        m_file->flush();
    }
}

}  // namespace ZebObjects
