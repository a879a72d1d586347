#pragma once

#include "zebobjectscontracts_export.h"

#include "contracts/failure.h"

#include <QString>

namespace ZebObjects {

// The process-wide diagnostic log the controls trace to and report failures to.
// A member that cannot do its work throws Failure; the calling procedure treats that as its own
// failure.
class ZEBOBJECTSCONTRACTS_EXPORT DiagnosticLog {
public:
    virtual ~DiagnosticLog() = default;

    virtual void LogError(const QString& module, const QString& label, const ErrorInfo& error,
                          qint32 line) = 0;
    virtual void LogNotice(const QString& module, const QString& label, const ErrorInfo& error,
                           qint32 line) = 0;
    virtual void LogWarning(const QString& module, const QString& label, const ErrorInfo& error,
                            qint32 line) = 0;
    virtual void Trace(const QString& module, const QString& label, QString message,
                       qint32 level) = 0;
};

}  // namespace ZebObjects
