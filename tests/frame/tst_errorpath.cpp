#include "frame/errorpath.h"
#include "frame/procedurestack.h"
#include "objects/memorydiagnosticlog.h"
#include "contracts/runtime.h"
#include "support/testsupport.h"

#include <QObject>
#include <QTest>

#include <stdexcept>

using namespace ZebSubCtl;
using ZebObjects::ErrorInfo;
using ZebObjects::Failure;
using ZebTest::error;

namespace {
// A component whose class name is what untraced procedures log under.
class ctlProbe : public QObject {
    Q_OBJECT
};

const ErrorInfo kFailure =
    error(91, QStringLiteral("ZebObjects.TextObjects"), QStringLiteral("Object variable not set"));

[[noreturn]] void throwFailure(const ErrorInfo& e = kFailure)
{
    throw Failure(e);
}
}  // namespace

class tst_ErrorPath : public QObject {
    Q_OBJECT
private slots:
    void firstFailureInFreshProcessCreatesTheLogBeforeLoggingIt();
    void tracedProcedureTracesEntryAndExit();
    void tracedFailureLogsEntryAndErrorButNoExit();
    void untracedFailureLogsUnderComponentNameAndLabelAsGiven();
    void untracedWithLiteralModuleLogsThatModule();
    void reportShowsPlainBoxAndReturnsNormally();
    void negativeNumberKeepsItsMinusSignInTitle();
    void propagateRaisesTheSameFailureAgain();
    void logOnlySwallowsAndYieldsDefaultValue();
    void noticeEndingLogsThroughLogNotice();
    void failureInInternalOperationIsLoggedTwiceAndShownOnce();
    void thenRunsAfterTheBoxWithTheSavedFailure();
    void failingEntryTraceIsAnOrdinaryFailure();
    void failingLogErrorLeavesAPropagatingProcedureTowardsTheCaller();
    void failingLogErrorInAHandlerEndsAtTheLastResortHook();
    void searchNumberOutsideSixteenBitsEndsAtLastResortUnreported();
    void resumeNextLogsWarningAndRunsTheNextStep();
    void resumeNextLeavesWhenTheErrorPathFails();
    void guardEventLoopSendsFailuresToTheLastResortHook();
    void foreignExceptionsBecomeInternalErrors();
    void lineNumberIsZero();
    void componentNameIsTheBareClassName();
    void runOrThrowSendsAFailingLogOnlyErrorPathToTheCaller();
    void procedureStackIsEmptyWhenOff();
    void procedureStackListsTheRunningProceduresInnermostLast();
    void procedureStackIsLeftOnFailureAndInResumeSteps();
};

void tst_ErrorPath::firstFailureInFreshProcessCreatesTheLogBeforeLoggingIt()
{
    ZebTest::Harness harness;
    ZebObjects::Runtime::setDiagnosticLog(nullptr);
    int created = 0;
    auto fresh = std::make_shared<ZebObjects::MemoryDiagnosticLog>();
    ZebObjects::Runtime::setDiagnosticLogFactory([&] {
        ++created;
        return fresh;
    });
    QVERIFY(!ZebObjects::Runtime::hasDiagnosticLog());

    ErrorPath::run(
        Procedure::untraced(QStringLiteral("ctlProbe"), QStringLiteral("cmdAdd_Click()")),
        Ending::logOnly(), [] { throwFailure(); });

    QCOMPARE(created, 1);
    QVERIFY(ZebObjects::Runtime::hasDiagnosticLog());
    QCOMPARE(fresh->lines(), QStringList{QStringLiteral(
                                 "LogError|ctlProbe|cmdAdd_Click()|91|ZebObjects.TextObjects|"
                                 "Object variable not set|0")});
}

void tst_ErrorPath::tracedProcedureTracesEntryAndExit()
{
    ZebTest::Harness h;
    const int value = ErrorPath::run(
        Procedure::traced(QStringLiteral("ctlTextSelect"), QStringLiteral("Populate")),
        Ending::propagate(), [] { return 42; });
    QCOMPARE(value, 42);
    QCOMPARE(h.log().lines(),
             (QStringList{QStringLiteral("Trace|ctlTextSelect|Populate()|Entering Method...|0"),
                          QStringLiteral("Trace|ctlTextSelect|Populate()|Exiting Method...|0")}));
}

void tst_ErrorPath::tracedFailureLogsEntryAndErrorButNoExit()
{
    ZebTest::Harness h;
    ErrorPath::run(
        Procedure::traced(QStringLiteral("ctlCustSelect"), QStringLiteral("cmdSearch_Click")),
        Ending::logOnly(), [] { throwFailure(); });
    QCOMPARE(h.log().lines(),
             (QStringList{
                 QStringLiteral("Trace|ctlCustSelect|cmdSearch_Click()|Entering Method...|0"),
                 QStringLiteral("LogError|ctlCustSelect|cmdSearch_Click|91|ZebObjects.TextObjects|"
                                "Object variable not set|0")}));
}

void tst_ErrorPath::untracedFailureLogsUnderComponentNameAndLabelAsGiven()
{
    ZebTest::Harness h;
    ctlProbe probe;
    ErrorPath::run(Procedure::untraced(&probe, QStringLiteral("Criteria() - Property Set")),
                   Ending::logOnly(), [] { throwFailure(); });
    QCOMPARE(h.log().lines(),
             QStringList{QStringLiteral("LogError|ctlProbe|Criteria() - Property Set|91|"
                                        "ZebObjects.TextObjects|Object variable not set|0")});
}

void tst_ErrorPath::untracedWithLiteralModuleLogsThatModule()
{
    ZebTest::Harness h;
    ErrorPath::run(Procedure::untraced(QStringLiteral("ctlGeneralInfo"),
                                       QStringLiteral("pvdIssueDate_Validate")),
                   Ending::report(), [] { throwFailure(); });
    QCOMPARE(h.log().failureLines(),
             QStringList{QStringLiteral("LogError|ctlGeneralInfo|pvdIssueDate_Validate|91|"
                                        "ZebObjects.TextObjects|Object variable not set|0")});
    QCOMPARE(h.boxes().shown().size(), 1);
}

void tst_ErrorPath::reportShowsPlainBoxAndReturnsNormally()
{
    ZebTest::Harness h;
    ctlProbe probe;
    bool after = false;
    ErrorPath::run(Procedure::untraced(&probe, QStringLiteral("chkBOM_Click()")), Ending::report(),
                   [&] {
                       throwFailure();
                       after = true;
                   });
    QVERIFY(!after);
    QCOMPARE(h.boxes().shown(), (QList<ScriptedMessageBoxService::Shown>{
                                    {QStringLiteral("The requested operation cannot be completed."),
                                     48, QStringLiteral("91 - Object variable not set")}}));
    QVERIFY(h.lastResort().isEmpty());
}

void tst_ErrorPath::negativeNumberKeepsItsMinusSignInTitle()
{
    ZebTest::Harness h;
    ErrorPath::run(
        Procedure::untraced(QStringLiteral("ctlProbe"), QStringLiteral("x()")), Ending::report(),
        [] {
            throwFailure(error(-2147217900, QStringLiteral("db"), QStringLiteral("Syntax error")));
        });
    QCOMPARE(h.boxes().shown().at(0).title, QStringLiteral("-2147217900 - Syntax error"));
    QCOMPARE(h.log().failureLines(),
             QStringList{QStringLiteral("LogError|ctlProbe|x()|-2147217900|db|Syntax error|0")});
}

void tst_ErrorPath::propagateRaisesTheSameFailureAgain()
{
    ZebTest::Harness h;
    try {
        ErrorPath::run(
            Procedure::traced(QStringLiteral("ctlTextSelect"), QStringLiteral("AllowUpdate")),
            Ending::propagate(), [] { throwFailure(); });
        QFAIL("the failure did not reach the caller");
    } catch (const Failure& f) {
        QCOMPARE(f.info(), kFailure);
    }
    QCOMPARE(h.log().failureLines(),
             QStringList{QStringLiteral("LogError|ctlTextSelect|AllowUpdate|91|"
                                        "ZebObjects.TextObjects|Object variable not set|0")});
    QVERIFY(h.boxes().shown().isEmpty());
}

void tst_ErrorPath::logOnlySwallowsAndYieldsDefaultValue()
{
    ZebTest::Harness h;
    const qint16 lines = ErrorPath::run(
        Procedure::untraced(QStringLiteral("ctlSubLineDsp"), QStringLiteral("ViewableLines")),
        Ending::logOnly(), []() -> qint16 {
            throwFailure(
                error(11, QStringLiteral("ZebSubCtl"), QStringLiteral("Division by zero")));
        });
    QCOMPARE(lines, qint16(0));
    QVERIFY(h.boxes().shown().isEmpty());
    QCOMPARE(h.log().failureLines().size(), 1);
}

void tst_ErrorPath::noticeEndingLogsThroughLogNotice()
{
    ZebTest::Harness h;
    ErrorPath::run(
        Procedure::untraced(QStringLiteral("ctlSubLine"), QStringLiteral("UserControl_Resize()")),
        Ending::notice(), [] { throwFailure(); });
    QCOMPARE(h.log().lines(),
             QStringList{QStringLiteral("LogNotice|ctlSubLine|UserControl_Resize()|91|"
                                        "ZebObjects.TextObjects|Object variable not set|0")});
    QVERIFY(h.boxes().shown().isEmpty());
}

void tst_ErrorPath::failureInInternalOperationIsLoggedTwiceAndShownOnce()
{
    ZebTest::Harness h;
    auto moveItemUp = [] {
        ErrorPath::run(
            Procedure::traced(QStringLiteral("ctlTextSelect"), QStringLiteral("moveItemUp")),
            Ending::propagate(), [] { throwFailure(); });
    };
    ErrorPath::run(
        Procedure::untraced(QStringLiteral("ctlTextSelect"), QStringLiteral("cmdMoveUp_Click()")),
        Ending::report(), moveItemUp);
    QCOMPARE(
        h.log().lines(),
        (QStringList{QStringLiteral("Trace|ctlTextSelect|moveItemUp()|Entering Method...|0"),
                     QStringLiteral("LogError|ctlTextSelect|moveItemUp|91|ZebObjects.TextObjects|"
                                    "Object variable not set|0"),
                     QStringLiteral("LogError|ctlTextSelect|cmdMoveUp_Click()|91|"
                                    "ZebObjects.TextObjects|Object variable not set|0")}));
    QCOMPARE(h.boxes().shown().size(), 1);
}

void tst_ErrorPath::thenRunsAfterTheBoxWithTheSavedFailure()
{
    ZebTest::Harness h;
    QStringList order;
    h.log().faults().setRecording(true);
    ErrorInfo seen;
    ErrorPath::run(
        Procedure::traced(QStringLiteral("ctlCustSelect"), QStringLiteral("cmdAdd_Click")),
        Ending::report(ReportVariant::Add).then([&](const ErrorInfo& e) {
            seen = e;
            order = h.log().faults().calls();
            order.append(QString::number(h.boxes().shown().size()));
        }),
        [] { throwFailure(error(457, QStringLiteral("Customers"), QStringLiteral("dup"))); });
    QCOMPARE(seen.Number, 457);
    QCOMPARE(order, (QStringList{QStringLiteral("Trace"), QStringLiteral("LogError"),
                                 QStringLiteral("1")}));
    QCOMPARE(h.boxes().shown().at(0).title, QStringLiteral("Duplicate Customer"));
}

void tst_ErrorPath::failingEntryTraceIsAnOrdinaryFailure()
{
    ZebTest::Harness h;
    h.log().faults().failNext(QStringLiteral("Trace"),
                              error(5, QStringLiteral("Log"), QStringLiteral("Log is full")));
    bool ran = false;
    ErrorPath::run(
        Procedure::traced(QStringLiteral("ctlTextSelect"), QStringLiteral("mnu_Delete_Click")),
        Ending::report(ReportVariant::TextDelete), [&] { ran = true; });
    QVERIFY(!ran);
    QCOMPARE(h.log().lines(), QStringList{QStringLiteral(
                                  "LogError|ctlTextSelect|mnu_Delete_Click|5|Log|Log is full|0")});
    QCOMPARE(h.boxes().shown().at(0).title, QStringLiteral("Error: 5 - Log is full"));
}

void tst_ErrorPath::failingLogErrorLeavesAPropagatingProcedureTowardsTheCaller()
{
    ZebTest::Harness h;
    h.log().faults().failNext(QStringLiteral("LogError"),
                              error(75, QStringLiteral("Log"), QStringLiteral("Disk full")));
    try {
        ErrorPath::run(
            Procedure::traced(QStringLiteral("ctlCustSelect"), QStringLiteral("Customers")),
            Ending::propagate(), [] { throwFailure(); });
        QFAIL("nothing reached the caller");
    } catch (const Failure& f) {
        QCOMPARE(f.Number(), 75);
        QCOMPARE(f.Description(), QStringLiteral("Disk full"));
    }
    QVERIFY(h.lastResort().isEmpty());
}

void tst_ErrorPath::failingLogErrorInAHandlerEndsAtTheLastResortHook()
{
    ZebTest::Harness h;
    h.log().faults().failNext(QStringLiteral("LogError"),
                              error(75, QStringLiteral("Log"), QStringLiteral("Disk full")));
    ErrorPath::run(
        Procedure::untraced(QStringLiteral("ctlTextSelect"), QStringLiteral("cmdAdd_Click()")),
        Ending::report(), [] { throwFailure(); });
    QVERIFY(h.boxes().shown().isEmpty());
    QCOMPARE(h.lastResort().size(), 1);
    QCOMPARE(h.lastResort().at(0).Number, 75);
}

void tst_ErrorPath::searchNumberOutsideSixteenBitsEndsAtLastResortUnreported()
{
    ZebTest::Harness h;
    ErrorPath::run(
        Procedure::traced(QStringLiteral("ctlCustSelect"), QStringLiteral("cmdSearch_Click")),
        Ending::report(ReportVariant::Search),
        [] { throwFailure(error(32768, QStringLiteral("Finder"), QStringLiteral("Busy"))); });
    QVERIFY(h.boxes().shown().isEmpty());
    QCOMPARE(
        h.log().failureLines(),
        QStringList{QStringLiteral("LogError|ctlCustSelect|cmdSearch_Click|32768|Finder|Busy|0")});
    QCOMPARE(h.lastResort().size(), 1);
    QCOMPARE(h.lastResort().at(0).Number, 6);
    QCOMPARE(h.lastResort().at(0).Description, QStringLiteral("Overflow"));
}

void tst_ErrorPath::resumeNextLogsWarningAndRunsTheNextStep()
{
    ZebTest::Harness h;
    QStringList ran;
    ResumeNext steps(
        Procedure::untraced(QStringLiteral("ctlSubLines"), QStringLiteral("UserControl_Resize()")),
        Ending::warning());
    steps([&] { ran << QStringLiteral("1"); })([&] { throwFailure(); })(
        [&] { ran << QStringLiteral("3"); });
    QCOMPARE(ran, (QStringList{QStringLiteral("1"), QStringLiteral("3")}));
    QCOMPARE(h.log().lines(),
             QStringList{QStringLiteral("LogWarning|ctlSubLines|UserControl_Resize()|91|"
                                        "ZebObjects.TextObjects|Object variable not set|0")});
}

void tst_ErrorPath::resumeNextLeavesWhenTheErrorPathFails()
{
    ZebTest::Harness h;
    h.log().faults().failNext(QStringLiteral("LogWarning"),
                              error(75, QStringLiteral("Log"), QStringLiteral("Disk full")));
    QStringList ran;
    ErrorPath::guardEventLoop([&] {
        ResumeNext steps(Procedure::untraced(QStringLiteral("ctlSubLineDsp"),
                                             QStringLiteral("UserControl_Resize()")),
                         Ending::warning());
        steps([&] { throwFailure(); })([&] { ran << QStringLiteral("2"); });
    });
    QVERIFY(ran.isEmpty());
    QCOMPARE(h.lastResort().size(), 1);
    QCOMPARE(h.lastResort().at(0).Number, 75);
}

void tst_ErrorPath::guardEventLoopSendsFailuresToTheLastResortHook()
{
    ZebTest::Harness h;
    ErrorPath::guardEventLoop([] { throwFailure(); });
    QCOMPARE(h.lastResort(), QList<ErrorInfo>{kFailure});
}

void tst_ErrorPath::foreignExceptionsBecomeInternalErrors()
{
    ZebTest::Harness h;
    ErrorPath::run(Procedure::untraced(QStringLiteral("m"), QStringLiteral("p()")),
                   Ending::logOnly(), [] { throw std::runtime_error("boom"); });
    QCOMPARE(h.log().failureLines(),
             QStringList{QStringLiteral("LogError|m|p()|51|ZebSubCtl|Internal error: boom|0")});
}

void tst_ErrorPath::lineNumberIsZero()
{
    ZebTest::Harness h;
    ErrorPath::run(Procedure::untraced(QStringLiteral("m"), QStringLiteral("p()")),
                   Ending::logOnly(), [] { throwFailure(); });
    QCOMPARE(h.log().entries().at(0).line, 0);
}

void tst_ErrorPath::componentNameIsTheBareClassName()
{
    ctlProbe probe;
    QCOMPARE(componentName(&probe), QStringLiteral("ctlProbe"));
    QCOMPARE(componentName(nullptr), QString());
}

void tst_ErrorPath::runOrThrowSendsAFailingLogOnlyErrorPathToTheCaller()
{
    ZebTest::Harness h;
    h.log().faults().failNext(QStringLiteral("LogError"),
                              error(75, QStringLiteral("Log"), QStringLiteral("Disk full")));
    try {
        ErrorPath::runOrThrow(
            Procedure::untraced(QStringLiteral("ctlLabelCriteria"), QStringLiteral("addField()")),
            Ending::logOnly(), [] { throwFailure(); });
        QFAIL("no failure");
    } catch (const Failure& e) {
        QCOMPARE(e.info().Number, 75);
    }
    QVERIFY(h.lastResort().isEmpty());
    // Without a failing log it swallows like run().
    ErrorPath::runOrThrow(
        Procedure::untraced(QStringLiteral("ctlLabelCriteria"), QStringLiteral("addField()")),
        Ending::logOnly(), [] { throwFailure(); });
    QCOMPARE(h.log().failureLines().size(), 1);
}

void tst_ErrorPath::procedureStackIsEmptyWhenOff()
{
    ZebTest::Harness h;
    ProcedureStack::setEnabled(false);
    int seen = -1;
    ErrorPath::run(Procedure::untraced(QStringLiteral("ctlA"), QStringLiteral("a()")),
                   Ending::logOnly(), [&] { seen = int(ProcedureStack::current().size()); });
    QCOMPARE(seen, 0);
}

void tst_ErrorPath::procedureStackListsTheRunningProceduresInnermostLast()
{
    ZebTest::Harness h;
    ctlProbe probe;
    ProcedureStack::setEnabled(true);
    QList<ProcedureStack::Frame> inner;
    ErrorPath::run(
        Procedure::untraced(&probe, QStringLiteral("cmdAdd_Click()")), Ending::report(), [&] {
            ErrorPath::run(
                Procedure::traced(QStringLiteral("ctlProbe"), QStringLiteral("Populate")),
                Ending::propagate(), [&] { inner = ProcedureStack::current(); });
        });
    QCOMPARE(inner.size(), 2);
    QCOMPARE(ProcedureStack::depth(), 0);
    QCOMPARE(inner.at(0).module, QStringLiteral("ctlProbe"));
    QCOMPARE(inner.at(0).label, QStringLiteral("cmdAdd_Click()"));
    QCOMPARE(inner.at(1).label, QStringLiteral("Populate"));
    QVERIFY(ProcedureStack::current().isEmpty());
    ProcedureStack::setEnabled(false);
}

void tst_ErrorPath::procedureStackIsLeftOnFailureAndInResumeSteps()
{
    ZebTest::Harness h;
    ProcedureStack::setEnabled(true);
    QList<ProcedureStack::Frame> inStep;
    ErrorPath::run(
        Procedure::untraced(QStringLiteral("ctlA"), QStringLiteral("a()")), Ending::report(), [&] {
            ErrorPath::run(Procedure::untraced(QStringLiteral("ctlA"), QStringLiteral("b()")),
                           Ending::propagate(), [] { throwFailure(); });
        });
    QVERIFY(ProcedureStack::current().isEmpty());
    ResumeNext steps(
        Procedure::untraced(QStringLiteral("ctlSubLines"), QStringLiteral("UserControl_Resize()")),
        Ending::warning());
    steps([&] { throwFailure(); })([&] { inStep = ProcedureStack::current(); });
    QCOMPARE(inStep.size(), 1);
    QCOMPARE(inStep.at(0).label, QStringLiteral("UserControl_Resize()"));
    QVERIFY(ProcedureStack::current().isEmpty());
    ProcedureStack::setEnabled(false);
}

QTEST_MAIN(tst_ErrorPath)
#include "tst_errorpath.moc"
