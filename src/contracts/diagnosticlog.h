#pragma once

#include "zebobjectscontracts_export.h"

#include "contracts/failure.h"

#include <QString>

namespace ZebObjects {

/// The process-wide diagnostic log the controls trace to and report failures to.
/// A member that cannot do its work throws Failure; the calling procedure treats that as its own
/// failure.
class ZEBOBJECTSCONTRACTS_EXPORT DiagnosticLog {
public:
    virtual ~DiagnosticLog() = default;

    /// Records a failure that ended an operation: module (the control's bare name), label (the
    /// procedure), the failure and a line (0 for the controls).
    virtual void LogError(const QString& module, const QString& label, const ErrorInfo& error,
                          qint32 line) = 0;
    /// Records a failure that was expected and handled, with the same fields as LogError.
    virtual void LogNotice(const QString& module, const QString& label, const ErrorInfo& error,
                           qint32 line) = 0;
    /// Records a failure that a procedure logged and went on after, with the same fields as
    /// LogError.
    virtual void LogWarning(const QString& module, const QString& label, const ErrorInfo& error,
                            qint32 line) = 0;
    /// Records a traced procedure's entry and exit ("Entering Method...", "Exiting Method...") at
    /// the given level.
    virtual void Trace(const QString& module, const QString& label, QString message,
                       qint32 level) = 0;
};

}  // namespace ZebObjects
