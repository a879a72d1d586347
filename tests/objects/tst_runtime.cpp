#include "objects/defaultdiagnosticlog.h"
#include "objects/memorydiagnosticlog.h"
#include "contracts/runtime.h"
#include "objects/sampledata.h"
#include "objects/standaloneapplicationservices.h"
#include "objects/standaloneservices.h"

#include "contracts/customersearchcontext.h"

#include <QTest>

using namespace ZebObjects;

class TestRuntime : public QObject {
    Q_OBJECT
private slots:
    void cleanup()
    {
        Runtime::setDiagnosticLog(nullptr);
        Runtime::setDiagnosticLogFactory({});
        Runtime::setApplicationServices(nullptr);
        Runtime::setApplicationServicesFactory({});
    }

    // Runs first, in a process where nothing has used the runtime yet.
    void theDiagnosticLogIsCreatedOnFirstUseAndKept()
    {
        QVERIFY(!Runtime::hasDiagnosticLog());
        const auto log = Runtime::diagnosticLog();
        QVERIFY(log != nullptr);
        QVERIFY(Runtime::hasDiagnosticLog());
        QCOMPARE(Runtime::diagnosticLog(), log);
    }

    void theStandaloneServicesAreCreatedOnFirstUseOnceInstalled()
    {
        ZebObjects::installStandaloneServices();
        QVERIFY(!Runtime::hasApplicationServices());
        const auto services = Runtime::applicationServices();
        QVERIFY(Runtime::hasApplicationServices());
        QVERIFY(std::dynamic_pointer_cast<StandaloneApplicationServices>(services) != nullptr);
        QCOMPARE(Runtime::applicationServices(), services);
    }

    void theStandaloneServicesNameTheSampleIssuersAndSearchContext()
    {
        ZebObjects::installStandaloneServices();
        const auto services = Runtime::applicationServices();
        QCOMPARE(services->IssuedByNames(), SampleData::issuedByNames());
        QCOMPARE(services->SearchContext()->Value(), SampleData::searchContextValue());
        QVERIFY(services->CreateCustomerFinder() != nullptr);
    }

    void aHostCanPutItsOwnLogInPlace()
    {
        auto mine = std::make_shared<MemoryDiagnosticLog>();
        Runtime::setDiagnosticLog(mine);
        QVERIFY(Runtime::hasDiagnosticLog());
        QCOMPARE(Runtime::diagnosticLog(), std::static_pointer_cast<DiagnosticLog>(mine));
        Runtime::diagnosticLog()->Trace(QStringLiteral("m"), QStringLiteral("l()"),
                                        QStringLiteral("x"), 0);
        QCOMPARE(mine->lines(), QStringList{QStringLiteral("Trace|m|l()|x|0")});
    }

    void anEmptiedSlotIsFilledAgainThroughTheFactory()
    {
        auto made = std::make_shared<MemoryDiagnosticLog>();
        int calls = 0;
        Runtime::setDiagnosticLogFactory([&] {
            ++calls;
            return made;
        });
        Runtime::setDiagnosticLog(nullptr);
        QVERIFY(!Runtime::hasDiagnosticLog());
        QCOMPARE(Runtime::diagnosticLog(), std::static_pointer_cast<DiagnosticLog>(made));
        QCOMPARE(Runtime::diagnosticLog(), std::static_pointer_cast<DiagnosticLog>(made));
        QCOMPARE(calls, 1);
    }

    void anEmptyFactoryLeavesTheLogToQtLogging()
    {
        ZebObjects::installStandaloneServices();
        Runtime::setDiagnosticLogFactory({});
        Runtime::setDiagnosticLog(nullptr);
        const auto log = Runtime::diagnosticLog();
        QVERIFY(log != nullptr);
        QVERIFY(std::dynamic_pointer_cast<DefaultDiagnosticLog>(log) == nullptr);
        QVERIFY(std::dynamic_pointer_cast<MemoryDiagnosticLog>(log) == nullptr);
    }

    void aHostCanPutItsOwnServicesInPlaceOrMakeThemThroughAFactory()
    {
        auto mine = std::make_shared<StandaloneApplicationServices>();
        mine->setIssuedByNames({QStringLiteral("Only Me")});
        Runtime::setApplicationServices(mine);
        QCOMPARE(Runtime::applicationServices()->IssuedByNames(),
                 QStringList{QStringLiteral("Only Me")});

        int calls = 0;
        Runtime::setApplicationServicesFactory([&] {
            ++calls;
            auto s = std::make_shared<StandaloneApplicationServices>();
            s->setIssuedByNames({QStringLiteral("Made")});
            return s;
        });
        // The one in place stays until the slot is emptied.
        QCOMPARE(Runtime::applicationServices(),
                 std::static_pointer_cast<ApplicationServices>(mine));
        Runtime::setApplicationServices(nullptr);
        QCOMPARE(Runtime::applicationServices()->IssuedByNames(),
                 QStringList{QStringLiteral("Made")});
        Runtime::applicationServices();
        QCOMPARE(calls, 1);

        // Without a factory an emptied slot stays empty: the next use fails with 91.
        Runtime::setApplicationServicesFactory({});
        Runtime::setApplicationServices(nullptr);
        try {
            Runtime::applicationServices();
            QFAIL("the empty services slot answered");
        } catch (const Failure& f) {
            QCOMPARE(f.info(), (ErrorInfo{91, QStringLiteral("ZebObjects.Runtime"),
                                          QStringLiteral("Object variable or With block variable "
                                                         "not set: the host has installed no "
                                                         "application services")}));
        }
    }
};

QTEST_GUILESS_MAIN(TestRuntime)
#include "tst_runtime.moc"
