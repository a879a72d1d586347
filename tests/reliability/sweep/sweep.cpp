#include "sweep/sweep.h"

#include "frame/errorpath.h"
#include "frame/procedurestack.h"
#include "objects/faultinjector.h"
#include "objects/memorydiagnosticlog.h"
#include "contracts/runtime.h"
#include "objects/standaloneapplicationservices.h"
#include "support/testsupport.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSlider>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QElapsedTimer>
#include <QLabel>
#include <QLineEdit>
#include <QMetaProperty>
#include <QPlainTextEdit>
#include <QWidget>

#include <algorithm>
#include <cstdio>
#include <exception>

namespace ZebSweep {

using ZebObjects::CallSequence;
using ZebObjects::ErrorInfo;
using ZebObjects::MemoryDiagnosticLog;
using ZebSubCtl::ProcedureStack;

ErrorInfo injectedError()
{
    return ErrorInfo{5, QStringLiteral("ZebObjects.Sweep"),
                     QStringLiteral("Invalid procedure call or argument")};
}

// --- script

QString Script::stepName(int index) const
{
    return index >= 0 && index < m_outcomes.size() ? m_outcomes.at(index).step : QString();
}

void Script::host(const QString& what, const std::function<void()>& step)
{
    runStep(what, true, step);
}

void Script::user(const QString& what, const std::function<void()>& step)
{
    runStep(what, false, step);
}

void Script::model(const QString& what, const std::function<void()>& step)
{
    m_inModelStep = true;
    runStep(what, false, step);
    m_inModelStep = false;
}

bool Script::countsCall() const
{
    return m_inStep && (!m_inModelStep || ProcedureStack::depth() > 0);
}

void Script::runStep(const QString& what, bool host, const std::function<void()>& step)
{
    Outcome outcome;
    outcome.step = what;
    outcome.host = host;
    if (m_counter)
        outcome.begin = m_counter();
    m_outcomes.append(outcome);
    const qsizetype index = m_outcomes.size() - 1;
    m_inStep = true;
    try {
        step();
        m_inStep = false;
    } catch (...) {
        m_inStep = false;
        m_outcomes[index].threw = true;
        m_outcomes[index].error = ZebSubCtl::ErrorPath::currentError();
    }
    if (m_counter)
        m_outcomes[index].end = m_counter();
}

// --- snapshot

namespace {

QString rectText(const QRect& r)
{
    return QStringLiteral("%1,%2 %3x%4").arg(r.x()).arg(r.y()).arg(r.width()).arg(r.height());
}

QString modelText(const QAbstractItemModel* model, const QModelIndex& parent, int depth = 0)
{
    if (!model || depth > 2)
        return {};
    QStringList rows;
    for (int r = 0; r < model->rowCount(parent); ++r) {
        QStringList cells;
        for (int c = 0; c < model->columnCount(parent); ++c) {
            const QModelIndex i = model->index(r, c, parent);
            QString cell = i.data(Qt::DisplayRole).toString();
            const QVariant check = i.data(Qt::CheckStateRole);
            if (check.isValid())
                cell += QStringLiteral("[%1]").arg(check.toInt());
            cells << cell;
        }
        rows << cells.join(QLatin1Char('|'));
        const QModelIndex first = model->index(r, 0, parent);
        if (model->hasChildren(first))
            rows << QStringLiteral("{") + modelText(model, first, depth + 1) + QStringLiteral("}");
    }
    return rows.join(QLatin1Char(';'));
}

QString widgetState(QWidget* w)
{
    QStringList parts;
    parts << QString::fromLatin1(w->metaObject()->className()) << w->objectName()
          << (w->isVisible() ? QStringLiteral("shown") : QStringLiteral("hidden"))
          << (w->isEnabled() ? QStringLiteral("enabled") : QStringLiteral("disabled"))
          << rectText(w->geometry());
    if (auto* b = qobject_cast<QAbstractButton*>(w))
        parts << b->text() << QString::number(b->isChecked());
    if (auto* c = qobject_cast<QComboBox*>(w)) {
        QStringList items;
        for (int i = 0; i < c->count(); ++i)
            items << c->itemText(i);
        parts << c->currentText() << items.join(QLatin1Char(','));
    } else if (auto* e = qobject_cast<QLineEdit*>(w)) {
        parts << e->text();
    } else if (auto* t = qobject_cast<QPlainTextEdit*>(w)) {
        parts << t->toPlainText();
    } else if (auto* l = qobject_cast<QLabel*>(w)) {
        parts << l->text();
    } else if (auto* s = qobject_cast<QAbstractSlider*>(w)) {
        parts << QStringLiteral("%1 in %2..%3 page %4")
                     .arg(s->value())
                     .arg(s->minimum())
                     .arg(s->maximum())
                     .arg(s->pageStep());
    } else if (auto* v = qobject_cast<QAbstractItemView*>(w)) {
        parts << modelText(v->model(), QModelIndex());
        QStringList selected;
        if (v->selectionModel())
            for (const QModelIndex& i : v->selectionModel()->selectedRows())
                selected << QString::number(i.row());
        parts << QStringLiteral("selected ") + selected.join(QLatin1Char(','));
    } else {
        // Widgets of our own show their state through their user property, if any.
        const QMetaProperty user = w->metaObject()->userProperty();
        if (user.isValid())
            parts << user.read(w).toString();
    }
    // And through the properties the controls set by name.
    for (const char* name : {"Caption", "Value"}) {
        const int index = w->metaObject()->indexOfProperty(name);
        if (index >= 0)
            parts << QLatin1String(name) + QLatin1Char('=')
                         + w->metaObject()->property(index).read(w).toString();
    }
    if (!w->toolTip().isEmpty())
        parts << QStringLiteral("tip ") + w->toolTip();
    return parts.join(QLatin1Char(' '));
}

}  // namespace

QStringList snapshot(QWidget& root)
{
    QStringList lines;
    lines << widgetState(&root);
    for (QWidget* w : root.findChildren<QWidget*>()) {
        if (w->objectName().isEmpty() || w->objectName().startsWith(QLatin1String("qt_")))
            continue;
        lines << widgetState(w);
    }
    for (QAction* a : root.findChildren<QAction*>()) {
        if (a->objectName().isEmpty() || a->objectName().startsWith(QLatin1String("qt_")))
            continue;
        lines << QStringLiteral("QAction %1 %2 %3 %4")
                     .arg(a->objectName(), a->text(),
                          a->isEnabled() ? QStringLiteral("enabled") : QStringLiteral("disabled"),
                          a->isVisible() ? QStringLiteral("shown") : QStringLiteral("hidden"));
    }
    return lines;
}

// --- one run

namespace {

// The calls that change a business object.
bool isWrite(const QString& member)
{
    static const QStringList methods{QStringLiteral("Add"),       QStringLiteral("Clear"),
                                     QStringLiteral("Insert"),    QStringLiteral("MoveDown"),
                                     QStringLiteral("MoveUp"),    QStringLiteral("PopulateRemarks"),
                                     QStringLiteral("Remove"),    QStringLiteral("RemoveAll"),
                                     QStringLiteral("SaveOrder"), QStringLiteral("SelectPurpose")};
    return member.endsWith(QLatin1Char('=')) || methods.contains(member);
}

QStringList writesOf(const QStringList& calls)
{
    QStringList out;
    for (const QString& c : calls)
        if (isWrite(c))
            out << c;
    return out;
}

QString entryText(const MemoryDiagnosticLog::Entry& e)
{
    return e.toString();
}

QString errorEntry(const char* kind, const QString& module, const QString& label,
                   const ErrorInfo& e)
{
    return QStringList{QLatin1String(kind),       module,   label,
                       QString::number(e.Number), e.Source, e.Description,
                       QStringLiteral("0")}
        .join(QLatin1Char('|'));
}

QString boxText(const ShownBox& b)
{
    QString prompt = b.prompt;
    prompt.replace(QStringLiteral("\r\n"), QStringLiteral("<CRLF>"));
    return QStringLiteral("box[%1|%2|%3]").arg(prompt).arg(b.style).arg(b.title);
}

// What a replay saw from the failing call on, during the step it happened in.
struct Seen {
    QStringList log;
    QStringList boxes;
    QStringList lastResort;
    bool thrownToHost = false;
    bool escapedEventLoop = false;
};

// What the endings table says should happen when the failing call is made with this stack.
struct Expected {
    QStringList log;
    QStringList boxes;
    QStringList lastResort;
    bool thrownToHost = false;
    QString problem;  // a procedure the table does not know, or no procedure at all
};

Expected expectedFor(const QList<ProcedureStack::Frame>& stack, bool hostStep,
                     const ErrorInfo& error)
{
    Expected x;
    if (stack.isEmpty()) {
        x.problem = QStringLiteral("call made outside any procedure");
        return x;
    }
    for (qsizetype i = stack.size() - 1; i >= 0; --i) {
        const auto& frame = stack.at(i);
        const std::optional<Rule> rule = ruleFor(frame.module, frame.label);
        if (!rule) {
            x.problem = QStringLiteral("unknown procedure %1 %2").arg(frame.module, frame.label);
            return x;
        }
        switch (rule->end) {
        case End::Report: {
            x.log << errorEntry("LogError", frame.module, frame.label, error);
            const std::optional<ShownBox> box = expectedBox(rule->box, error);
            if (box)
                x.boxes << boxText(*box);
            else
                x.lastResort << QStringLiteral("6");
            return x;
        }
        case End::LogOnly:
            x.log << errorEntry("LogError", frame.module, frame.label, error);
            return x;
        case End::Notice:
            x.log << errorEntry("LogNotice", frame.module, frame.label, error);
            return x;
        case End::Warning:
            x.log << errorEntry("LogWarning", frame.module, frame.label, error);
            return x;
        case End::Propagate:
            x.log << errorEntry("LogError", frame.module, frame.label, error);
            break;
        }
    }
    // Propagated out of the outermost procedure: the host gets it, or, from an event, the
    // last-resort hook.
    if (hostStep)
        x.thrownToHost = true;
    else
        x.lastResort << QString::number(error.Number);
    return x;
}

struct RunRecord {
    QStringList calls;
    QStringList callSteps;  // the step each call was made in
    QStringList snapshot;
    QStringList failures;  // failure log lines of a clean run (should be none)
    QStringList lastResort;
    QStringList escaped;
};

// Runs the scenario on the control without any failure, recording the calls.
// Prepares, creates the control if there is none yet (as a step of its own: creation calls
// objects too), and runs the scenario on it.
void runScenario(const Scenario& scenario, std::unique_ptr<QWidget>& control, Script& script)
{
    if (scenario.prepare) {
        scenario.prepare(script);
    } else {
        ZebObjects::Runtime::setApplicationServices(
            script.keep(std::make_shared<ZebObjects::StandaloneApplicationServices>()));
    }
    if (!control)
        script.host(QStringLiteral("create"), [&] { control = scenario.make(); });
    if (control)
        scenario.run(*control, script);
}

RunRecord cleanRun(const Scenario& scenario, std::unique_ptr<QWidget>& control,
                   ZebTest::Harness& harness)
{
    RunRecord r;
    const qsizetype logBefore = harness.log().entries().size();
    const qsizetype lastBefore = harness.lastResort().size();
    CallSequence sequence;
    Script script;
    sequence.setFilter([&script](const QString&) { return script.countsCall(); });
    sequence.setObserver(
        [&](qint64, const QString&) { r.callSteps << script.stepName(script.currentStep() - 1); });
    sequence.start();
    runScenario(scenario, control, script);
    QApplication::processEvents();
    sequence.stop();
    r.calls = sequence.calls();
    if (control)
        r.snapshot = snapshot(*control);
    const auto& entries = harness.log().entries();
    for (qsizetype i = logBefore; i < entries.size(); ++i)
        if (entries.at(i).kind != MemoryDiagnosticLog::Kind::Trace)
            r.failures << entryText(entries.at(i));
    for (qsizetype i = lastBefore; i < harness.lastResort().size(); ++i)
        r.lastResort << QString::number(harness.lastResort().at(i).Number);
    for (const auto& o : script.outcomes())
        if (o.threw)
            r.escaped << QStringLiteral("%1 threw %2").arg(o.step).arg(o.error.Number);
    return r;
}

std::unique_ptr<ZebTest::Harness> freshHarness()
{
    auto h = std::make_unique<ZebTest::Harness>();
    h->log().faults().setInSequence(false);
    return h;
}

QString diffText(const QStringList& expected, const QStringList& seen)
{
    for (qsizetype i = 0; i < qMax(expected.size(), seen.size()); ++i) {
        const QString e = i < expected.size() ? expected.at(i) : QStringLiteral("(nothing)");
        const QString s = i < seen.size() ? seen.at(i) : QStringLiteral("(nothing)");
        if (e != s)
            return QStringLiteral("line %1: %2 || %3").arg(i).arg(e, s);
    }
    return {};
}

}  // namespace

ControlResult sweep(const QString& control, const QList<Scenario>& scenarios)
{
    ControlResult result;
    result.control = control;
    ProcedureStack::setEnabled(true);
    for (const Scenario& scenario : scenarios) {
        const QString name = scenario.name;
        // Reference: the scenario twice on one control, never failing.
        RunRecord first;
        RunRecord again;
        RunRecord third;
        {
            auto harness = freshHarness();
            std::unique_ptr<QWidget> reference;
            first = cleanRun(scenario, reference, *harness);
            again = cleanRun(scenario, reference, *harness);
            third = cleanRun(scenario, reference, *harness);
            // Without faults nothing may reach the host or the last resort; a logged failure
            // is allowed only where the control is required to log one on its own (a list
            // that is filled again without being emptied).
            const bool clean = first.lastResort.isEmpty() && first.escaped.isEmpty()
                               && again.lastResort.isEmpty() && again.escaped.isEmpty()
                               && (scenario.rowsSurviveRebind
                                   || (first.failures.isEmpty() && again.failures.isEmpty()));
            if (!clean) {
                result.mismatches << Mismatch{
                    name, 0, QString(), QStringLiteral("a clean run"),
                    (first.failures + first.lastResort + first.escaped + again.failures)
                        .join(QStringLiteral("; "))};
            }
        }
        const qint64 total = first.calls.size();
        if (qEnvironmentVariableIsSet("ZEB_SWEEP_CALLS"))
            for (qint64 i = 0; i < total; ++i)
                std::printf("%s call %lld: %s in '%s'\n", qPrintable(name),
                            static_cast<long long>(i + 1), qPrintable(first.calls.at(i)),
                            qPrintable(first.callSteps.at(i)));
        result.recorded += total;
        // ZEB_SWEEP_FULL=1 replays every call of every scenario.
        const int every =
            qEnvironmentVariableIsSet("ZEB_SWEEP_FULL") ? 1 : qMax(1, scenario.sampleEvery);
        if (every > 1)
            result.sampled << QStringLiteral("%1 (one call in %2 of its %3 calls)")
                                  .arg(name)
                                  .arg(every)
                                  .arg(total);

        for (qint64 n = 1; n <= total; n += every) {
            ++result.swept;
            const QString member = first.calls.at(n - 1) + QStringLiteral(" in '")
                                   + first.callSteps.at(n - 1) + QLatin1Char('\'');
            auto harness = freshHarness();
            std::unique_ptr<QWidget> widget;

            QList<ProcedureStack::Frame> stack;
            std::array<qsizetype, 3> at{};
            int stepAt = -1;
            Script script;
            script.setCounter([&h = *harness] {
                return std::array<qsizetype, 3>{h.log().entries().size(), h.boxes().shown().size(),
                                                h.lastResort().size()};
            });
            CallSequence sequence;
            sequence.failAt(n, injectedError());
            sequence.setFilter([&script](const QString&) { return script.countsCall(); });
            sequence.setObserver([&](qint64 number, const QString&) {
                if (number != n)
                    return;
                stack = ProcedureStack::current();
                at = {harness->log().entries().size(), harness->boxes().shown().size(),
                      harness->lastResort().size()};
                stepAt = script.currentStep() - 1;
            });
            sequence.start();
            runScenario(scenario, widget, script);
            QApplication::processEvents();
            sequence.stop();

            QStringList problems;
            if (!sequence.failed() || stepAt < 0) {
                problems << QStringLiteral("the replay made no call %1").arg(n);
            } else {
                const Script::Outcome& step = script.outcomes().at(stepAt);
                // What the failure did: from the failing call to the end of its step. Later
                // steps run on the control as the failure left it.
                Seen seen;
                const auto& entries = harness->log().entries();
                for (qsizetype i = at[0]; i < step.end[0]; ++i)
                    if (entries.at(i).kind != MemoryDiagnosticLog::Kind::Trace)
                        seen.log << entryText(entries.at(i));
                const auto& shown = harness->boxes().shown();
                for (qsizetype i = at[1]; i < step.end[1]; ++i)
                    seen.boxes << boxText(
                        ShownBox{shown.at(i).prompt, shown.at(i).style, shown.at(i).title});
                for (qsizetype i = at[2]; i < step.end[2]; ++i)
                    seen.lastResort << QString::number(harness->lastResort().at(i).Number);
                seen.thrownToHost = step.threw && step.host;
                seen.escapedEventLoop = step.threw && !step.host;

                const Expected x = expectedFor(stack, step.host, injectedError());
                QStringList frames;
                for (const auto& f : stack)
                    frames << f.module + QLatin1Char('.') + f.label;
                const QString where = QStringLiteral("step '%1' in %2: ")
                                          .arg(step.step, frames.join(QStringLiteral(" > ")));
                if (!x.problem.isEmpty())
                    problems << where + x.problem;
                if (seen.escapedEventLoop)
                    problems << where
                                    + QStringLiteral("failure %1 left an event handler")
                                          .arg(step.error.Number);
                if (x.problem.isEmpty()) {
                    // A later statement of the same action may fail in turn because of what the
                    // first failure left (a list not rebuilt); such a failure carries its own
                    // number and runs its own error path. It is counted, not judged here.
                    const QString injected = QLatin1Char('|')
                                             + QString::number(injectedError().Number)
                                             + QLatin1Char('|');
                    bool later = false;
                    if (seen.log.size() > x.log.size() && seen.log.mid(0, x.log.size()) == x.log) {
                        const QStringList extra = seen.log.mid(x.log.size());
                        if (std::none_of(extra.begin(), extra.end(),
                                         [&](const QString& e) { return e.contains(injected); })) {
                            later = true;
                            seen.log = x.log;
                            if (seen.boxes.size() > x.boxes.size()
                                && seen.boxes.mid(0, x.boxes.size()) == x.boxes)
                                seen.boxes = x.boxes;
                        }
                    }
                    if (later)
                        ++result.consequential;
                    if (x.log != seen.log)
                        problems << where
                                        + QStringLiteral("log [%1] || seen [%2]")
                                              .arg(x.log.join(QStringLiteral("; ")),
                                                   seen.log.join(QStringLiteral("; ")));
                    if (x.boxes != seen.boxes)
                        problems << where
                                        + QStringLiteral("boxes [%1] || seen [%2]")
                                              .arg(x.boxes.join(QStringLiteral("; ")),
                                                   seen.boxes.join(QStringLiteral("; ")));
                    if (x.lastResort != seen.lastResort)
                        problems << where
                                        + QStringLiteral("last resort [%1] || seen [%2]")
                                              .arg(x.lastResort.join(QLatin1Char(',')),
                                                   seen.lastResort.join(QLatin1Char(',')));
                    if (x.thrownToHost != seen.thrownToHost)
                        problems << where
                                        + QStringLiteral("host gets the failure: %1 || %2")
                                              .arg(x.thrownToHost ? "yes" : "no",
                                                   seen.thrownToHost ? "yes" : "no");
                }
            }

            // Still works: the same control, rebound to fresh objects, runs the scenario as a
            // control that never failed does.
            if (!widget) {
                problems << QStringLiteral("no control after the replay");
                result.mismatches << Mismatch{name, n, member, QString(),
                                              problems.join(QStringLiteral("; "))};
                continue;
            }
            // A clean pass must match the never-failed control's second pass. Where it does not,
            // the pass may have written back what the failure left different (a widget set from
            // the model writes its value back only when it changes): then the next pass must
            // match the never-failed control's third.
            const bool created = stepAt >= 0 && script.stepName(stepAt) == QLatin1String("create");
            const auto unclean = [&](const RunRecord& r) {
                QStringList unexpected;
                for (const QString& f : r.failures)
                    if (!(scenario.rowsSurviveRebind && f.contains(QLatin1String("|35602|"))))
                        unexpected << f;
                unexpected << r.lastResort << r.escaped;
                return unexpected;
            };
            const auto differences = [&](const RunRecord& r, const RunRecord& reference) {
                QStringList out;
                if (r.snapshot != reference.snapshot)
                    out << QStringLiteral("rerun widgets differ: ")
                               + diffText(reference.snapshot, r.snapshot);
                if (writesOf(r.calls) != writesOf(reference.calls))
                    out << QStringLiteral("rerun writes differ: ")
                               + diffText(writesOf(reference.calls), writesOf(r.calls));
                return out;
            };
            const RunRecord rerun1 = cleanRun(scenario, widget, *harness);
            QStringList dirty = unclean(rerun1);
            QStringList differ;
            if (!created && !scenario.rowsSurviveRebind) {
                differ = differences(rerun1, again);
                if (!differ.isEmpty()) {
                    const RunRecord rerun2 = cleanRun(scenario, widget, *harness);
                    dirty << unclean(rerun2);
                    differ = differences(rerun2, third);
                }
            }
            if (!dirty.isEmpty())
                problems << QStringLiteral("rerun not clean: ") + dirty.join(QStringLiteral("; "));
            problems << differ;
            if (created) {
                // A failed creation leaves what initialisation read missing for the life of
                // the control (the control reads it once, and only logs the failure).
                ++result.lasting;
            } else if (scenario.rowsSurviveRebind) {
                ++result.loose;
            }

            if (problems.isEmpty())
                ++result.handled;
            else
                for (const QString& p : problems)
                    result.mismatches << Mismatch{name, n, member, QString(), p};
        }
    }
    ProcedureStack::setEnabled(false);
    return result;
}

}  // namespace ZebSweep

namespace ZebSweep {

QString formatTable(const QList<ControlResult>& results)
{
    QString out;
    out += QStringLiteral("%1 %2 %3 %4 %5   (later: a later statement of the action failed too; "
                          "lasting: failed creation; loose: rows kept across rebind)\n")
               .arg(QStringLiteral("control"), -18)
               .arg(QStringLiteral("calls"), 7)
               .arg(QStringLiteral("swept"), 7)
               .arg(QStringLiteral("handled"), 8)
               .arg(QStringLiteral("not"), 5);
    qint64 calls = 0, swept = 0, handled = 0;
    for (const auto& r : results) {
        out += QStringLiteral("%1 %2 %3 %4 %5   later %6, lasting %7, loose %8\n")
                   .arg(r.control, -18)
                   .arg(r.recorded, 7)
                   .arg(r.swept, 7)
                   .arg(r.handled, 8)
                   .arg(r.swept - r.handled, 5)
                   .arg(r.consequential)
                   .arg(r.lasting)
                   .arg(r.loose);
        calls += r.recorded;
        swept += r.swept;
        handled += r.handled;
    }
    out += QStringLiteral("%1 %2 %3 %4 %5\n")
               .arg(QStringLiteral("all"), -18)
               .arg(calls, 7)
               .arg(swept, 7)
               .arg(handled, 8)
               .arg(swept - handled, 5);
    for (const auto& r : results) {
        for (const QString& s : r.sampled)
            out += QStringLiteral("  sampled: %1 %2\n").arg(r.control, s);
        for (const auto& m : r.mismatches)
            out += QStringLiteral("  NOT AS REQUIRED %1 / %2 call %3 (%4): %5\n")
                       .arg(r.control, m.scenario)
                       .arg(m.call)
                       .arg(m.member, m.seen);
    }
    return out;
}

}  // namespace ZebSweep
