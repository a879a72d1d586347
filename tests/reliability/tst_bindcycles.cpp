// Binds every registered control to fresh business objects and unbinds it again, many times over,
// the way a host switches jobs: afterwards the process holds no more QObjects and no more memory
// than before.

#include "bindcycleshooks.h"

#include "contracts/bom.h"
#include "contracts/customers.h"
#include "contracts/diagnosticlog.h"
#include "contracts/failure.h"
#include "contracts/labels.h"
#include "contracts/lineitem.h"
#include "contracts/lineitems.h"
#include "contracts/submittal.h"
#include "contracts/textobjects.h"
#include "controls/textselect/ctltextselect.h"
#include "frame/controlregistry.h"
#include "frame/usercontrol.h"
#include "contracts/runtime.h"
#include "objects/sampledata.h"
#include "objects/standaloneapplicationservices.h"
#include "objects/standalonebom.h"
#include "objects/standalonecustomer.h"
#include "objects/standalonecustomers.h"
#include "objects/standalonelabels.h"
#include "objects/standalonelineitems.h"
#include "objects/standalonesubmittal.h"
#include "objects/standalonetextobjects.h"
#include "support/testsupport.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEvent>
#include <QTest>

#include <functional>
#include <memory>

using namespace ZebSubCtl;
using namespace ZebObjects;

namespace {

// A log that keeps nothing, so that ten thousand cycles of traces do not count as growth.
class CountingLog : public DiagnosticLog {
public:
    void LogError(const QString&, const QString&, const ErrorInfo&, qint32) override { ++errors; }
    void LogNotice(const QString&, const QString&, const ErrorInfo&, qint32) override { ++errors; }
    void LogWarning(const QString&, const QString&, const ErrorInfo&, qint32) override { ++errors; }
    void Trace(const QString&, const QString&, QString, qint32) override { ++traces; }

    qint64 errors = 0;
    qint64 traces = 0;
};

// One fresh object for a control: the value its object property takes, and a watch on it.
struct Fresh {
    QVariant value;
    std::weak_ptr<void> watch;
};

template <class Contract, class Standalone>
Fresh fresh(std::shared_ptr<Standalone> object)
{
    std::shared_ptr<Contract> contract = std::move(object);
    Fresh out;
    out.watch = contract;
    out.value = QVariant::fromValue(contract);
    return out;
}

template <class Contract>
QVariant nothing()
{
    return QVariant::fromValue(std::shared_ptr<Contract>());
}

std::shared_ptr<StandaloneTextObjects> paragraphs()
{
    auto out = std::make_shared<StandaloneTextObjects>();
    out->Add(QStringLiteral("First paragraph"), true);
    out->Add(QStringLiteral("Second paragraph\r\nover two lines"), false);
    out->Add(QStringLiteral("Third paragraph"), true);
    return out;
}

std::shared_ptr<StandaloneLineItems> lines(int count)
{
    auto out = std::make_shared<StandaloneLineItems>();
    for (int i = 1; i <= count; ++i) {
        StandaloneLineItem::Data d;
        d.quantity = i;
        d.type = QStringLiteral("T%1").arg(i);
        d.brand = QStringLiteral("Brand");
        d.catalogNumber = QStringLiteral("CAT-%1").arg(i);
        d.description = QStringLiteral("Line %1").arg(i);
        d.group = QStringLiteral("G");
        d.mto = i % 2 == 0;
        if (i == 1)
            d.comment = QStringLiteral("A comment");
        d.selected = i % 2 == 1;
        out->Add(d);
    }
    return out;
}

// Two customers, made directly: the sample's own builds its whole directory first.
std::shared_ptr<StandaloneCustomers> customers()
{
    auto out = std::make_shared<StandaloneCustomers>();
    for (int i = 1; i <= 2; ++i) {
        StandaloneCustomer::Data d;
        d.key = QStringLiteral("C%1").arg(i);
        d.name = QStringLiteral("Customer %1").arg(i);
        d.displayText = d.name + QStringLiteral(" - Portland, OR");
        d.accountNumber = QStringLiteral("10%1").arg(i);
        d.city = QStringLiteral("Portland");
        d.state = QStringLiteral("OR");
        d.type = QStringLiteral("Contractor");
        d.category = QStringLiteral("Electrical");
        d.included = true;
        out->Add(d.key, std::make_shared<StandaloneCustomer>(d));
    }
    return out;
}

struct Case {
    const char* control;
    const char* property;
    std::function<Fresh()> make;
    QVariant none;
};

QList<Case> cases()
{
    return {
        {"ctlTextSelect", "TextObjects", [] { return fresh<TextObjects>(paragraphs()); },
         nothing<TextObjects>()},
        {"ctlGeneralInfo", "Criteria", [] { return fresh<Submittal>(SampleData::submittal()); },
         nothing<Submittal>()},
        {"ctlCvrLtrCriteria", "Submittal", [] { return fresh<Submittal>(SampleData::submittal()); },
         nothing<Submittal>()},
        {"ctlBOMCriteria", "BOM", [] { return fresh<BOM>(SampleData::bom()); }, nothing<BOM>()},
        {"ctlLabelCriteria", "Labels", [] { return fresh<Labels>(SampleData::labels()); },
         nothing<Labels>()},
        {"ctlSubLine", "LineItem",
         [] {
             auto item = lines(1)->line(1);
             return fresh<LineItem>(item);
         },
         nothing<LineItem>()},
        {"ctlSubLines", "LineItems", [] { return fresh<LineItems>(lines(2)); },
         nothing<LineItems>()},
        {"ctlSubLineDsp", "LineItems", [] { return fresh<LineItems>(lines(2)); },
         nothing<LineItems>()},
        {"ctlCustSelect", "Customers", [] { return fresh<Customers>(customers()); },
         nothing<Customers>()},
    };
}

int cycleCount()
{
    bool ok = false;
    const int n = qEnvironmentVariableIntValue("ZEB_BIND_CYCLES", &ok);
    return ok && n > 0 ? n : 10000;
}

// Lets deferred deletions run, as the host's event loop would between two jobs.
void settle()
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

// Writes the object property by name, as a host does. The cover letter panel passes the failure
// of showing no object on to its caller; that is the host's to log, so it is counted here.
bool write(UserControl* control, const char* property, const QVariant& value, int& failures)
{
    try {
        return control->setProperty(property, value);
    } catch (const Failure&) {
        ++failures;
        return true;
    }
}

constexpr std::size_t kHeapBound = 256 * 1024;
constexpr std::size_t kResidentBound = 4 * 1024 * 1024;

}  // namespace

class tst_BindCycles : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void everyRegisteredControlIsCovered();
    void bindAndUnbindManyTimes_data();
    void bindAndUnbindManyTimes();
};

void tst_BindCycles::initTestCase()
{
    ZebTest::LiveObjects::install();
    qInfo("bind cycles per control: %d; heap growth bound %zu bytes; resident growth bound %zu "
          "bytes%s",
          cycleCount(), kHeapBound, kResidentBound,
          ZebTest::underAddressSanitizer()
              ? " (not checked under AddressSanitizer: its quarantine keeps freed memory resident)"
              : "");
}

void tst_BindCycles::everyRegisteredControlIsCovered()
{
    QStringList covered;
    for (const Case& c : cases())
        covered.append(ControlRegistry::identifierFor(QLatin1String(c.control)));
    covered.sort();
    QCOMPARE(covered, ControlRegistry::instance().identifiers());
    QCOMPARE(covered.size(), 9);
}

void tst_BindCycles::bindAndUnbindManyTimes_data()
{
    QTest::addColumn<int>("index");
    const QList<Case> all = cases();
    for (int i = 0; i < all.size(); ++i)
        QTest::newRow(all.at(i).control) << i;
}

void tst_BindCycles::bindAndUnbindManyTimes()
{
    QFETCH(int, index);
    const Case c = cases().at(index);
    const int cycles = cycleCount();

    ZebTest::Harness h;
    auto log = std::make_shared<CountingLog>();
    Runtime::setDiagnosticLog(log);
    Runtime::setApplicationServices(std::make_shared<StandaloneApplicationServices>());

    std::unique_ptr<UserControl> control(ControlRegistry::instance().create(
        ControlRegistry::identifierFor(QLatin1String(c.control))));
    QVERIFY(control);
    control->resize(640, 480);
    control->show();
    QVERIFY(QTest::qWaitForWindowExposed(control.get()));

    int failures = 0;
    int stillHeld = 0;
    const auto cycle = [&] {
        Fresh object = c.make();
        if (!write(control.get(), c.property, object.value, failures))
            qFatal("%s does not take %s", c.control, c.property);
        object.value = QVariant();
        if (object.watch.expired())
            qFatal("%s let go of its object while bound", c.control);
        write(control.get(), c.property, c.none, failures);
        if (!object.watch.expired())
            ++stillHeld;
    };

    // Warm up: first-use objects (tool tips, caches, the application services) come to life here.
    for (int i = 0; i < 200; ++i)
        cycle();
    settle();
    QCOMPARE(stillHeld, 0);
    failures = 0;
    const qint64 errorsBefore = log->errors;
    const qint64 liveBefore = ZebTest::LiveObjects::count();
    ZebTest::LiveObjects::track();
    const std::size_t heapBefore = ZebTest::heapInUse();
    const std::size_t residentBefore = ZebTest::residentBytes();

    QElapsedTimer timer;
    timer.start();
    for (int i = 1; i <= cycles; ++i) {
        cycle();
        if (i % 250 == 0)
            settle();
    }
    settle();
    const qint64 elapsed = timer.elapsed();

    const qint64 liveAfter = ZebTest::LiveObjects::count();
    // The remarks list of the bill of materials panel keeps showing the last remarks when the
    // panel is given no object (its widgets keep their state): that collection replaces the one
    // it showed before, it is not an addition.
    QList<const QObject*> expected;
    if (auto* remarks = control->findChild<ctlTextSelect*>(QStringLiteral("ctlTextSelect")))
        expected.append(remarks->TextObjects().get());
    QStringList survivors = ZebTest::LiveObjects::trackedSurvivors(expected);
    // Qt's gesture manager swaps its cached pan gestures for new ones as scroll areas come and
    // go; it keeps no more than before.
    survivors.removeIf(
        [](const QString& s) { return s.endsWith(QLatin1String("(parent QGestureManager)")); });
    const std::size_t heapAfter = ZebTest::heapInUse();
    const std::size_t residentAfter = ZebTest::residentBytes();
    const auto growth = [](std::size_t before, std::size_t after) {
        return qint64(after) - qint64(before);
    };
    qInfo("%-18s %d cycles in %lld ms: live QObjects %lld -> %lld; heap %zu -> %zu (%+lld); "
          "resident %zu -> %zu (%+lld); errors logged %lld, failures passed on %d",
          c.control, cycles, elapsed, liveBefore, liveAfter, heapBefore, heapAfter,
          growth(heapBefore, heapAfter), residentBefore, residentAfter,
          growth(residentBefore, residentAfter), log->errors - errorsBefore, failures);

    QCOMPARE(stillHeld, 0);
    // Nothing made during the cycles is left, and no more QObjects live than before (the count
    // may drop when Qt lets go of a cache of its own).
    QVERIFY2(survivors.isEmpty(), qPrintable(survivors.join(QLatin1Char('\n'))));
    QVERIFY2(liveAfter <= liveBefore,
             qPrintable(QStringLiteral("%1 more QObjects").arg(liveAfter - liveBefore)));
    QVERIFY2(
        growth(heapBefore, heapAfter) < qint64(kHeapBound),
        qPrintable(QStringLiteral("heap grew by %1 bytes").arg(growth(heapBefore, heapAfter))));
    if (!ZebTest::underAddressSanitizer())
        QVERIFY2(growth(residentBefore, residentAfter) < qint64(kResidentBound),
                 qPrintable(QStringLiteral("resident memory grew by %1 bytes")
                                .arg(growth(residentBefore, residentAfter))));
}

QTEST_MAIN(tst_BindCycles)
#include "tst_bindcycles.moc"
