#include "objects/standaloneservices.h"

#include "contracts/runtime.h"
#include "objects/defaultdiagnosticlog.h"
#include "objects/standaloneapplicationservices.h"

namespace ZebObjects {

void installStandaloneServices()
{
    Runtime::setDiagnosticLogFactory([] { return std::make_shared<DefaultDiagnosticLog>(); });
    Runtime::setApplicationServicesFactory(
        [] { return std::make_shared<StandaloneApplicationServices>(); });
}

}  // namespace ZebObjects
