#pragma once

#include "zebobjectscontracts_export.h"

#include <functional>
#include <memory>

namespace ZebObjects {

class ApplicationServices;
class DiagnosticLog;

/// The two process-wide objects the controls use: the diagnostic log and the application
/// services. A host puts its own in place, or a factory that makes them on first use; emptying a
/// slot makes the next use go through the factory again.
///
/// Without a log or a log factory the entries go to Qt's logging category "zeb.diagnostics".
/// The services have no such stand-in: only the host knows its issuers and customers, so a use
/// with none installed fails with 91 (ServicesSource, NoServicesDescription).
class ZEBOBJECTSCONTRACTS_EXPORT Runtime {
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
    /// An empty factory leaves the entries to Qt's logging.
    static void setDiagnosticLogFactory(LogFactory factory);

    /// The process-wide application services, made by the factory on first use.
    static std::shared_ptr<ApplicationServices> applicationServices();
    /// True when the services slot holds services (nothing is made).
    static bool hasApplicationServices();
    /// Puts services in the slot; None empties it.
    static void setApplicationServices(std::shared_ptr<ApplicationServices> services);
    /// An empty factory leaves the slot to setApplicationServices alone.
    static void setApplicationServicesFactory(ServicesFactory factory);

    /// The failure a use of the services with none installed raises (number 91).
    static const char* const ServicesSource;
    /// The description of that failure.
    static const char* const NoServicesDescription;
};

}  // namespace ZebObjects
