#pragma once

#include "contracts/diagnosticlog.h"
#include "contracts/failure.h"
#include "frame/messageboxes.h"
#include "objects/memorydiagnosticlog.h"

#include <QString>

#include <functional>
#include <memory>
#include <optional>

// What the control tests compare against: the box a control shows for a failure it reports, the
// test log's lines, and a log that fails on a chosen trace.
namespace ZebTest {

// The first line of the box a control shows for a failure it reports.
inline const QString kCannot = QStringLiteral("The requested operation cannot be completed.");

// The box a control shows for a failure it reports: kCannot, an exclamation mark (48), and
// "number - description" as its title.
ZebSubCtl::ScriptedMessageBoxService::Shown plainBox(const ZebObjects::ErrorInfo& e);

// The test log's line for an error, "LogError|module|label|number|source|description|0", and
// for its notice and warning kin (kind "LogNotice", "LogWarning").
QString logLine(const char* kind, const QString& module, const QString& label,
                const ZebObjects::ErrorInfo& e);

// What call threw, or nothing when it returned.
std::optional<ZebObjects::ErrorInfo> failureIfAny(const std::function<void()>& call);

// A log whose n-th trace (1-based) fails with error; everything else goes to inner.
class FailingTraceLog : public ZebObjects::DiagnosticLog {
public:
    FailingTraceLog(std::shared_ptr<ZebObjects::MemoryDiagnosticLog> inner, int failAt,
                    ZebObjects::ErrorInfo error);
    void LogError(const QString& m, const QString& l, const ZebObjects::ErrorInfo& e,
                  qint32 n) override;
    void LogNotice(const QString& m, const QString& l, const ZebObjects::ErrorInfo& e,
                   qint32 n) override;
    void LogWarning(const QString& m, const QString& l, const ZebObjects::ErrorInfo& e,
                    qint32 n) override;
    void Trace(const QString& m, const QString& l, QString message, qint32 level) override;

private:
    std::shared_ptr<ZebObjects::MemoryDiagnosticLog> m_inner;
    int m_failAt;
    ZebObjects::ErrorInfo m_error;
    int m_traces = 0;
};

}  // namespace ZebTest
