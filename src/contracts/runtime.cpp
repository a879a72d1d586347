#include "contracts/runtime.h"

#include "contracts/applicationservices.h"
#include "contracts/diagnosticlog.h"
#include "contracts/failure.h"

#include <QLoggingCategory>

namespace ZebObjects {

const char* const Runtime::ServicesSource = "ZebObjects.Runtime";
const char* const Runtime::NoServicesDescription =
    "Object variable or With block variable not set: the host has installed no application "
    "services";

namespace {

Q_LOGGING_CATEGORY(zebRuntimeLog, "zeb.diagnostics", QtInfoMsg)

// Where the entries go while the host has given no log: one line each through Qt's logging.
class QtLoggingLog : public DiagnosticLog {
public:
    void LogError(const QString& module, const QString& label, const ErrorInfo& error,
                  qint32 line) override
    {
        qCWarning(zebRuntimeLog).noquote() << entry("ERROR", module, label, error, line);
    }
    void LogNotice(const QString& module, const QString& label, const ErrorInfo& error,
                   qint32 line) override
    {
        qCInfo(zebRuntimeLog).noquote() << entry("NOTICE", module, label, error, line);
    }
    void LogWarning(const QString& module, const QString& label, const ErrorInfo& error,
                    qint32 line) override
    {
        qCWarning(zebRuntimeLog).noquote() << entry("WARNING", module, label, error, line);
    }
    void Trace(const QString& module, const QString& label, QString message,
               qint32 /*level*/) override
    {
        qCDebug(zebRuntimeLog).noquote()
            << QStringLiteral("TRACE %1 %2 %3").arg(module, label, message);
    }

private:
    static QString entry(const char* kind, const QString& module, const QString& label,
                         const ErrorInfo& error, qint32 line)
    {
        return QStringLiteral("%1 %2 %3 #%4 [%5] %6 (line %7)")
            .arg(QLatin1String(kind), module, label, QString::number(error.Number), error.Source,
                 error.Description, QString::number(line));
    }
};

// Everything runs on the user-interface thread: the lazy creation needs no lock.
struct RuntimeState {
    std::shared_ptr<DiagnosticLog> log;
    Runtime::LogFactory logFactory;
    std::shared_ptr<ApplicationServices> services;
    Runtime::ServicesFactory servicesFactory;
};

RuntimeState& state()
{
    static RuntimeState s;
    return s;
}
}  // namespace

std::shared_ptr<DiagnosticLog> Runtime::diagnosticLog()
{
    auto& s = state();
    if (!s.log)
        s.log = s.logFactory ? s.logFactory() : std::make_shared<QtLoggingLog>();
    return s.log;
}

bool Runtime::hasDiagnosticLog()
{
    return state().log != nullptr;
}

void Runtime::setDiagnosticLog(std::shared_ptr<DiagnosticLog> log)
{
    state().log = std::move(log);
}

void Runtime::setDiagnosticLogFactory(LogFactory factory)
{
    state().logFactory = std::move(factory);
}

std::shared_ptr<ApplicationServices> Runtime::applicationServices()
{
    auto& s = state();
    if (!s.services && s.servicesFactory)
        s.services = s.servicesFactory();
    if (!s.services)
        throw Failure(ErrorNumber::ObjectNotSet, QString::fromLatin1(ServicesSource),
                      QString::fromLatin1(NoServicesDescription));
    return s.services;
}

bool Runtime::hasApplicationServices()
{
    return state().services != nullptr;
}

void Runtime::setApplicationServices(std::shared_ptr<ApplicationServices> services)
{
    state().services = std::move(services);
}

void Runtime::setApplicationServicesFactory(ServicesFactory factory)
{
    state().servicesFactory = std::move(factory);
}

}  // namespace ZebObjects
