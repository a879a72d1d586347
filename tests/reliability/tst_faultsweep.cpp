// Every registered control, driven through its scenarios once per business-object call with
// exactly that call failing: each failure must end as the procedure it happened in requires,
// and the control must work as before afterwards.
#include "frame/controlregistry.h"
#include "sweep/sweep.h"

#include <QElapsedTimer>
#include <QTest>

#include <cstdio>

using namespace ZebSweep;

class tst_FaultSweep : public QObject {
    Q_OBJECT
private slots:
    void initTestCase();
    void everyRegisteredControlHasScenarios();
    void ctlTextSelect() { check(QStringLiteral("ctlTextSelect"), textSelectScenarios()); }
    void ctlGeneralInfo() { check(QStringLiteral("ctlGeneralInfo"), generalInfoScenarios()); }
    void ctlCvrLtrCriteria() { check(QStringLiteral("ctlCvrLtrCriteria"), cvrLtrScenarios()); }
    void ctlBOMCriteria() { check(QStringLiteral("ctlBOMCriteria"), bomScenarios()); }
    void ctlLabelCriteria() { check(QStringLiteral("ctlLabelCriteria"), labelScenarios()); }
    void ctlSubLine() { check(QStringLiteral("ctlSubLine"), subLineScenarios()); }
    void ctlSubLines() { check(QStringLiteral("ctlSubLines"), subLinesScenarios()); }
    void ctlSubLineDsp() { check(QStringLiteral("ctlSubLineDsp"), subLineDspScenarios()); }
    void ctlCustSelect() { check(QStringLiteral("ctlCustSelect"), custSelectScenarios()); }
    void cleanupTestCase();

private:
    void check(const QString& control, const QList<Scenario>& scenarios);

    QList<ControlResult> m_results;
    QElapsedTimer m_clock;
};

void tst_FaultSweep::initTestCase()
{
    m_clock.start();
}

void tst_FaultSweep::everyRegisteredControlHasScenarios()
{
    const QStringList swept{QStringLiteral("ctlTextSelect"),     QStringLiteral("ctlGeneralInfo"),
                            QStringLiteral("ctlCvrLtrCriteria"), QStringLiteral("ctlBOMCriteria"),
                            QStringLiteral("ctlLabelCriteria"),  QStringLiteral("ctlSubLine"),
                            QStringLiteral("ctlSubLines"),       QStringLiteral("ctlSubLineDsp"),
                            QStringLiteral("ctlCustSelect")};
    for (const QString& id : ZebSubCtl::ControlRegistry::instance().identifiers()) {
        const QString name = id.section(QLatin1Char('.'), 1);
        QVERIFY2(swept.contains(name), qPrintable(QStringLiteral("no sweep for ") + id));
    }
    QCOMPARE(ZebSubCtl::ControlRegistry::instance().identifiers().size(), swept.size());
}

void tst_FaultSweep::check(const QString& control, const QList<Scenario>& scenarios)
{
    QElapsedTimer clock;
    clock.start();
    const ControlResult r = sweep(control, scenarios);
    m_results << r;
    std::printf("%s", qPrintable(formatTable({r})));
    std::printf("  (%s: %lld ms)\n", qPrintable(control), static_cast<long long>(clock.elapsed()));
    std::fflush(stdout);
    QVERIFY2(r.swept > 0, "no call swept");
    QVERIFY2(r.mismatches.isEmpty(),
             qPrintable(
                 QStringLiteral("%1 failure(s) not handled as required").arg(r.mismatches.size())));
}

void tst_FaultSweep::cleanupTestCase()
{
    std::printf("\nFault sweep, all controls (%lld ms):\n%s",
                static_cast<long long>(m_clock.elapsed()), qPrintable(formatTable(m_results)));
    std::fflush(stdout);
}

QTEST_MAIN(tst_FaultSweep)
#include "tst_faultsweep.moc"
