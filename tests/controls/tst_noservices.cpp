// A host that put no application services in place: the controls say what is missing through
// their error paths instead of falling back on the stand-alone library's sample services.
#include "contracts/runtime.h"
#include "controls/criteria/ctlgeneralinfo.h"
#include "controls/textselect/ctltextselect.h"
#include "objects/defaultdiagnosticlog.h"
#include "objects/standaloneapplicationservices.h"
#include "objects/standaloneservices.h"
#include "objects/standalonetextobjects.h"
#include "platform/combobox.h"
#include "platform/multilinetextbox.h"
#include "support/testsupport.h"

#include <QPushButton>
#include <QTest>

using namespace ZebSubCtl;
using ZebObjects::Runtime;
using Shown = ZebSubCtl::ScriptedMessageBoxService::Shown;

namespace {

const QString kMissing = QStringLiteral(
    "Object variable or With block variable not set: the host has installed no application "
    "services");
const ZebObjects::ErrorInfo kNoServices{91, QStringLiteral("ZebObjects.Runtime"), kMissing};

// A test's harness, then the services slot emptied as a host that installed none leaves it.
struct NoServices {
    NoServices()
    {
        Runtime::setApplicationServicesFactory({});
        Runtime::setApplicationServices(nullptr);
    }
    ZebTest::Harness h;
};

}  // namespace

class tst_NoServices : public QObject {
    Q_OBJECT
private slots:
    // Runs first, in a process where nobody has installed anything.
    void nothingIsInstalledUntilTheHostAsks();
    void theServicesFailWith91NamingWhatIsMissing();
    void issuedByListWithoutServicesLogsTheMissingServices();
    void addWithoutServicesReportsTheMissingServices();
    void installingTheStandaloneServicesFillsBothSlots();
};

void tst_NoServices::nothingIsInstalledUntilTheHostAsks()
{
    QVERIFY(!Runtime::hasApplicationServices());
    QCOMPARE(ZebTest::failureOf([] { Runtime::applicationServices(); }), kNoServices);
    QVERIFY(!Runtime::hasApplicationServices());
    // The log has a plain stand-in, not the stand-alone library's.
    QVERIFY(Runtime::diagnosticLog() != nullptr);
    QVERIFY(!std::dynamic_pointer_cast<ZebObjects::DefaultDiagnosticLog>(Runtime::diagnosticLog()));
    Runtime::setDiagnosticLog(nullptr);
}

void tst_NoServices::theServicesFailWith91NamingWhatIsMissing()
{
    NoServices f;
    const ZebObjects::ErrorInfo e = ZebTest::failureOf([] { Runtime::applicationServices(); });
    QCOMPARE(e.Number, 91);
    QCOMPARE(e.Source, QStringLiteral("ZebObjects.Runtime"));
    QCOMPARE(e.Description, kMissing);
    QCOMPARE(QString::fromLatin1(Runtime::NoServicesDescription), kMissing);
}

void tst_NoServices::issuedByListWithoutServicesLogsTheMissingServices()
{
    NoServices f;
    ctlGeneralInfo ctl;
    QCOMPARE(f.h.log().failureLines(),
             QStringList{QStringLiteral("LogError|ctlGeneralInfo|UserControl_Initialize()|91|"
                                        "ZebObjects.Runtime|")
                         + kMissing + QStringLiteral("|0")});
    QCOMPARE(ctl.findChild<ComboBox*>(QStringLiteral("cmbIssuedBy"))->count(), 0);
    QVERIFY(f.h.boxes().shown().isEmpty());
    QVERIFY(f.h.lastResort().isEmpty());
}

void tst_NoServices::addWithoutServicesReportsTheMissingServices()
{
    NoServices f;
    auto texts = std::make_shared<ZebObjects::StandaloneTextObjects>();
    ctlTextSelect ctl;
    ctl.setAllowUpdate(true);
    ctl.setTextObjects(texts);
    ctl.show();
    QVERIFY(QTest::qWaitForWindowExposed(&ctl));
    f.h.log().clear();

    QTest::keyClicks(ctl.findChild<MultiLineTextBox*>(QStringLiteral("txtNewComment")),
                     QStringLiteral("Thank you"));
    QTest::mouseClick(ctl.findChild<QPushButton*>(QStringLiteral("cmdAdd")), Qt::LeftButton);

    QCOMPARE(f.h.boxes().shown(),
             (QList<Shown>{{QStringLiteral("The requested operation cannot be completed."), 48,
                            QStringLiteral("91 - ") + kMissing}}));
    QCOMPARE(f.h.log().failureLines(),
             QStringList{QStringLiteral("LogError|ctlTextSelect|cmdAdd_Click()|91|"
                                        "ZebObjects.Runtime|")
                         + kMissing + QStringLiteral("|0")});
    QCOMPARE(texts->Count(), 0);
}

void tst_NoServices::installingTheStandaloneServicesFillsBothSlots()
{
    NoServices f;
    Runtime::setDiagnosticLog(nullptr);
    ZebObjects::installStandaloneServices();
    QVERIFY(std::dynamic_pointer_cast<ZebObjects::StandaloneApplicationServices>(
        Runtime::applicationServices()));
    QVERIFY(std::dynamic_pointer_cast<ZebObjects::DefaultDiagnosticLog>(Runtime::diagnosticLog()));
}

QTEST_MAIN(tst_NoServices)
#include "tst_noservices.moc"
