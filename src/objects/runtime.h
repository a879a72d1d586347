#pragma once

#include <functional>
#include <memory>

namespace ZebObjects {

class ApplicationServices;
class DiagnosticLog;

/// The two process-wide objects of the business-object library. Each is created on first use
/// and kept for the life of the process; a host (or a test) may put its own in place, or empty
/// the slot so that the next use creates a fresh one through the factory.
class Runtime {
public:
    /// Makes the diagnostic log on first use.
    using LogFactory = std::function<std::shared_ptr<DiagnosticLog>()>;
    /// Makes the application services on first use.
    using ServicesFactory = std::function<std::shared_ptr<ApplicationServices>()>;

    /// The process-wide diagnostic log, made by the factory on first use.
    static std::shared_ptr<DiagnosticLog> diagnosticLog();
    /// True when the log slot holds a log (nothing is made).
    static bool hasDiagnosticLog();
    /// Puts log in the slot; every control traces and reports to it from then on. None empties the
    /// slot.
    static void setDiagnosticLog(std::shared_ptr<DiagnosticLog> log);
    /// An empty factory restores the default log.
    static void setDiagnosticLogFactory(LogFactory factory);

    /// The process-wide application services, made by the factory on first use.
    static std::shared_ptr<ApplicationServices> applicationServices();
    /// True when the services slot holds services (nothing is made).
    static bool hasApplicationServices();
    /// Puts services in the slot; None empties it.
    static void setApplicationServices(std::shared_ptr<ApplicationServices> services);
    /// An empty factory restores the stand-alone services.
    static void setApplicationServicesFactory(ServicesFactory factory);
};

}  // namespace ZebObjects
