#pragma once

#include "zebobjects_export.h"

#include "contracts/diagnosticlog.h"
#include "objects/faultinjector.h"

#include <QList>
#include <QString>
#include <QStringList>

namespace ZebObjects {

// A log that keeps its entries in memory, for hosts that show them and for tests that compare
// them. Its members can be made to fail like any other object of this library.
class ZEBOBJECTS_EXPORT MemoryDiagnosticLog : public DiagnosticLog, public FaultInjectable {
public:
    enum class Kind { Trace, Error, Notice, Warning };
    struct Entry {
        Kind kind = Kind::Trace;
        QString module;
        QString label;
        QString message;  // traces only
        qint32 level = 0;  // traces only
        ErrorInfo error;  // failures only
        qint32 line = 0;  // failures only

        // "Trace|ctlTextSelect|Populate()|Entering Method...|0" or
        // "LogError|ctlTextSelect|cmdAdd_Click()|91|source|description|0"
        QString toString() const;
    };

    void LogError(const QString& module, const QString& label, const ErrorInfo& error,
                  qint32 line) override;
    void LogNotice(const QString& module, const QString& label, const ErrorInfo& error,
                   qint32 line) override;
    void LogWarning(const QString& module, const QString& label, const ErrorInfo& error,
                    qint32 line) override;
    void Trace(const QString& module, const QString& label, QString message, qint32 level) override;

    const QList<Entry>& entries() const { return m_entries; }
    // Every entry as toString(), in order.
    QStringList lines() const;
    // Only the failure entries (LogError, LogNotice, LogWarning), as toString().
    QStringList failureLines() const;
    void clear() { m_entries.clear(); }

private:
    QList<Entry> m_entries;
};

}  // namespace ZebObjects
