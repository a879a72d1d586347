#include "support/testsupport.h"

#include "objects/runtime.h"

namespace ZebTest {

Harness::Harness()
    : m_log(std::make_shared<ZebObjects::MemoryDiagnosticLog>())
    , m_boxes(std::make_shared<ZebSubCtl::ScriptedMessageBoxService>())
{
    ZebObjects::Runtime::setDiagnosticLog(m_log);
    ZebSubCtl::MessageBoxes::setService(m_boxes);
    ZebSubCtl::ErrorPath::setLastResortHook(
        [this](const ZebObjects::ErrorInfo& e) { m_lastResort.append(e); });
}

Harness::~Harness()
{
    ZebObjects::Runtime::setDiagnosticLog(nullptr);
    ZebObjects::Runtime::setDiagnosticLogFactory({});
    ZebObjects::Runtime::setApplicationServices(nullptr);
    ZebObjects::Runtime::setApplicationServicesFactory({});
    ZebSubCtl::MessageBoxes::setService(nullptr);
    ZebSubCtl::ErrorPath::setLastResortHook({});
}

}  // namespace ZebTest
