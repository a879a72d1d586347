#pragma once

#include "zebobjectscontracts_export.h"

#include <functional>
#include <memory>

namespace ZebObjects {

class ApplicationServices;
class DiagnosticLog;

// The two process-wide objects the controls use: the diagnostic log and the application
// services. A host puts its own in place, or a factory that makes them on first use; emptying a
// slot makes the next use go through the factory again.
//
// Without a log or a log factory the entries go to Qt's logging category "zeb.diagnostics".
// The services have no such stand-in: only the host knows its issuers and customers, so a use
// with none installed fails with 91 (ServicesSource, NoServicesDescription).
class ZEBOBJECTSCONTRACTS_EXPORT Runtime {
public:
    using LogFactory = std::function<std::shared_ptr<DiagnosticLog>()>;
    using ServicesFactory = std::function<std::shared_ptr<ApplicationServices>()>;

    static std::shared_ptr<DiagnosticLog> diagnosticLog();
    static bool hasDiagnosticLog();
    static void setDiagnosticLog(std::shared_ptr<DiagnosticLog> log);
    // An empty factory leaves the entries to Qt's logging.
    static void setDiagnosticLogFactory(LogFactory factory);

    static std::shared_ptr<ApplicationServices> applicationServices();
    static bool hasApplicationServices();
    static void setApplicationServices(std::shared_ptr<ApplicationServices> services);
    // An empty factory leaves the slot to setApplicationServices alone.
    static void setApplicationServicesFactory(ServicesFactory factory);

    // The failure a use of the services with none installed raises.
    static const char* const ServicesSource;
    static const char* const NoServicesDescription;
};

}  // namespace ZebObjects
