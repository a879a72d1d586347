#pragma once

#include "contracts/failure.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <array>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

class QWidget;

namespace ZebSweep {

// How a procedure's error path ends, as the controls are required to behave.
enum class End {
    Report,  // LogError and one box of the given variant; the failure goes no further
    Propagate,  // LogError, then on to the caller
    LogOnly,  // LogError; swallowed
    Notice,  // LogNotice; swallowed
    Warning,  // LogWarning; swallowed (the procedure goes on)
};

// The boxes an error path may show.
enum class Box {
    Plain,
    TextDelete,
    DialogOK,
    ItemCheck,
    CustomerRemoved,
    Remove,
    RemoveAll,
    Search,
    Add
};

struct Rule {
    End end = End::Report;
    Box box = Box::Plain;
};

// The ending of a procedure of a component, by the label it logs under; none for a label the
// components are not known to use.
std::optional<Rule> ruleFor(const QString& module, const QString& label);

struct ShownBox {
    QString prompt;
    int style = 0;
    QString title;
    friend bool operator==(const ShownBox&, const ShownBox&) = default;
};
// The box a failure shows in the given variant; none when the box itself cannot be formed (a
// search failure whose number does not fit 16 bits).
std::optional<ShownBox> expectedBox(Box box, const ZebObjects::ErrorInfo& error);

// What a scenario does. Every step is either a call by the host (a property, a method, the
// save and restore of the design): a failure that leaves it reaches the host; or something that
// comes through Qt's event delivery (a click, a key, a resize, a model event): a failure that
// leaves it must end at the last-resort hook.
class Script {
public:
    void host(const QString& what, const std::function<void()>& step);
    void user(const QString& what, const std::function<void()>& step);
    // A change made to a bound object by another of its holders: the change itself is not the
    // control's call; what the control does with the object's event is.
    void model(const QString& what, const std::function<void()>& step);

    // Whether a business-object call made now belongs to the control under test.
    bool countsCall() const;

    // Keeps an object alive for as long as the run lasts.
    template <class T>
    std::shared_ptr<T> keep(std::shared_ptr<T> object)
    {
        m_kept.push_back(object);
        return object;
    }

    // Counts of log entries, boxes and last-resort failures, taken at each step's start and end.
    using Counter = std::function<std::array<qsizetype, 3>()>;
    void setCounter(Counter counter) { m_counter = std::move(counter); }

    struct Outcome {
        QString step;
        bool host = false;
        bool threw = false;
        ZebObjects::ErrorInfo error;
        std::array<qsizetype, 3> begin{};
        std::array<qsizetype, 3> end{};
    };
    const QList<Outcome>& outcomes() const { return m_outcomes; }
    int currentStep() const { return int(m_outcomes.size()); }
    QString stepName(int index) const;

private:
    void runStep(const QString& what, bool host, const std::function<void()>& step);

    bool m_inStep = false;
    bool m_inModelStep = false;

    QList<Outcome> m_outcomes;
    Counter m_counter;
    std::vector<std::shared_ptr<void>> m_kept;
};

struct Scenario {
    QString control;
    QString name;
    // A new control, shown at its design size.
    std::function<std::unique_ptr<QWidget>()> make;
    // Binds the control to fresh objects and drives it; run again on the same control, it
    // rebinds to fresh objects.
    std::function<void(QWidget&, Script&)> run;
    // Replays only every n-th call (1 = all): for the longest scenarios, to stay in time.
    int sampleEvery = 1;
    // Puts in place what the control finds on creation (application services), each run;
    // fresh stand-alone services when empty.
    std::function<void(Script&)> prepare;
    // The control keeps its list rows across rebinds by design (it never empties them), so a
    // failure's leftovers stay: the rerun is then checked for clean handling only.
    bool rowsSurviveRebind = false;
};

struct Mismatch {
    QString scenario;
    qint64 call = 0;
    QString member;
    QString expected;
    QString seen;
};

struct ControlResult {
    QString control;
    qint64 recorded = 0;  // calls made by its scenarios
    qint64 swept = 0;  // calls replayed with a failure
    qint64 handled = 0;  // of those, handled as required
    QStringList sampled;  // scenarios replayed on a sample of their calls
    qint64 consequential = 0;  // replays where a later step of the same action failed too
    qint64 lasting = 0;  // failed creations: what initialisation missed stays missing
    qint64 loose = 0;  // reruns checked for clean handling only (rows kept by design)
    QList<Mismatch> mismatches;
};

// Runs every scenario of one control: a reference run, then one replay per call with that
// call failing, each checked as the controls are required to behave.
ControlResult sweep(const QString& control, const QList<Scenario>& scenarios);

// A picture of every named child's visible state, one line each.
QStringList snapshot(QWidget& root);

// The failure every replay injects.
ZebObjects::ErrorInfo injectedError();

QString formatTable(const QList<ControlResult>& results);

// Scenarios, per control.
QList<Scenario> textSelectScenarios();
QList<Scenario> generalInfoScenarios();
QList<Scenario> cvrLtrScenarios();
QList<Scenario> bomScenarios();
QList<Scenario> labelScenarios();
QList<Scenario> subLineScenarios();
QList<Scenario> subLinesScenarios();
QList<Scenario> subLineDspScenarios();
QList<Scenario> custSelectScenarios();

}  // namespace ZebSweep
