#pragma once

#include "zebobjects_export.h"

#include "contracts/diagnosticlog.h"
#include "objects/faultinjector.h"

#include <QFile>
#include <QLoggingCategory>
#include <QString>

#include <memory>

// The "zeb.diagnostics" category (Q_DECLARE_LOGGING_CATEGORY, exported).
ZEBOBJECTS_EXPORT const QLoggingCategory& zebDiagnostics();

namespace ZebObjects {

// The log a process gets when its host brings none: one readable line per entry, through the
// "zeb.diagnostics" logging category (traces at debug level, off unless enabled), and appended to
// a file when the host names one.
//   2026-11-21 14:20:01.123 TRACE ctlTextSelect Populate() Entering Method...
//   2026-11-21 14:20:01.125 ERROR ctlTextSelect cmdAdd_Click() #91 [ZebObjects.TextObjects] Object
//   variable not set (line 0)
// Member names for fault injection: "LogError", "LogNotice", "LogWarning", "Trace", "File",
// "File=".
class ZEBOBJECTS_EXPORT DefaultDiagnosticLog : public DiagnosticLog, public FaultInjectable {
public:
    DefaultDiagnosticLog();
    ~DefaultDiagnosticLog() override;

    // Also appends every line to this file; an empty path stops writing to a file.
    // Fails when the file cannot be opened.
    void setFile(const QString& path);
    QString file() const;

    void LogError(const QString& module, const QString& label, const ErrorInfo& error,
                  qint32 line) override;
    void LogNotice(const QString& module, const QString& label, const ErrorInfo& error,
                   qint32 line) override;
    void LogWarning(const QString& module, const QString& label, const ErrorInfo& error,
                    qint32 line) override;
    void Trace(const QString& module, const QString& label, QString message, qint32 level) override;

    // The line as written, without the time stamp.
    static QString formatFailure(const char* kind, const QString& module, const QString& label,
                                 const ErrorInfo& error, qint32 line);
    static QString formatTrace(const QString& module, const QString& label, const QString& message,
                               qint32 level);

private:
    void write(QtMsgType type, const QString& text);

    std::unique_ptr<QFile> m_file;
};

}  // namespace ZebObjects
