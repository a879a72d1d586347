#pragma once

#include <functional>
#include <memory>

namespace ZebObjects {

class ApplicationServices;
class DiagnosticLog;

// The two process-wide objects of the business-object library. Each is created on first use
// and kept for the life of the process; a host (or a test) may put its own in place, or empty
// the slot so that the next use creates a fresh one through the factory.
class Runtime {
public:
    using LogFactory = std::function<std::shared_ptr<DiagnosticLog>()>;
    using ServicesFactory = std::function<std::shared_ptr<ApplicationServices>()>;

    static std::shared_ptr<DiagnosticLog> diagnosticLog();
    static bool hasDiagnosticLog();
    static void setDiagnosticLog(std::shared_ptr<DiagnosticLog> log);
    // An empty factory restores the default log.
    static void setDiagnosticLogFactory(LogFactory factory);

    static std::shared_ptr<ApplicationServices> applicationServices();
    static bool hasApplicationServices();
    static void setApplicationServices(std::shared_ptr<ApplicationServices> services);
    // An empty factory restores the stand-alone services.
    static void setApplicationServicesFactory(ServicesFactory factory);
};

}  // namespace ZebObjects
