#include "objects/runtime.h"

#include "objects/defaultdiagnosticlog.h"
#include "objects/standaloneapplicationservices.h"

namespace ZebObjects {

namespace {
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
        s.log = s.logFactory ? s.logFactory() : std::make_shared<DefaultDiagnosticLog>();
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
    if (!s.services)
        s.services = s.servicesFactory ? s.servicesFactory()
                                       : std::make_shared<StandaloneApplicationServices>();
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
