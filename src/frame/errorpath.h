#pragma once

#include "zebsubctl_export.h"

#include "frame/reportmessage.h"

#include <QObject>
#include <QString>

#include <QList>

#include <functional>
#include <type_traits>
#include <utility>

namespace ZebSubCtl {

/// Who a procedure is to the diagnostic log.
class ZEBSUBCTL_EXPORT Procedure {
public:
    /// Traces "name()" at entry and exit; a failure is logged under "name".
    static Procedure traced(QString module, QString name);
    /// Does not trace; a failure is logged under label as given (most labels end in "()"),
    /// with the module name read from the component when the failure happens.
    static Procedure untraced(const QObject* component, QString label);
    /// Does not trace; the module name is a literal.
    static Procedure untraced(QString module, QString label);

    /// True when the procedure traces entry and exit.
    bool isTraced() const { return !m_traceLabel.isEmpty(); }
    /// The module name the log entries carry (the component's bare name or the literal).
    QString module() const;
    /// The label a failure is logged under.
    const QString& label() const { return m_label; }
    /// The label entry and exit are traced under; empty when untraced.
    const QString& traceLabel() const { return m_traceLabel; }

private:
    Procedure(const QObject* component, QString module, QString label, QString traceLabel);

    const QObject* m_component = nullptr;
    QString m_module;
    QString m_label;
    QString m_traceLabel;
};

/// The traced procedures of one module by name, so that a component states its module once:
/// `const TracedIn traced(kModule);` then `traced("cmdAdd_Click")`.
class TracedIn {
public:
    /// Procedures of module (a component's bare name).
    explicit TracedIn(QString module) : m_module(std::move(module)) { }
    /// The traced procedure name of the module (see Procedure::traced()).
    Procedure operator()(const char* name) const
    {
        return Procedure::traced(m_module, QLatin1String(name));
    }

private:
    QString m_module;
};

/// How an error path ends, after it has read the failure and logged it.
class ZEBSUBCTL_EXPORT Ending {
public:
    /// What the error path does once the failure is logged.
    enum class Kind {
        Report,  ///< LogError, then one message box; the caller never sees the failure
        Propagate,  ///< LogError, then the same failure raised again to the caller
        LogOnly,  ///< LogError; the failure is swallowed
        Notice,  ///< LogNotice instead of LogError; swallowed
        Warning,  ///< LogWarning instead of LogError; swallowed (log-and-resume steps)
    };

    /// LogError, then the message box of variant.
    static Ending report(ReportVariant variant = ReportVariant::Plain);
    /// LogError, then the failure raised again to the caller.
    static Ending propagate();
    /// LogError; the failure is swallowed.
    static Ending logOnly();
    /// LogNotice; the failure is swallowed.
    static Ending notice();
    /// LogWarning; the failure is swallowed.
    static Ending warning();

    /// Further statements of this procedure's error path, run after the box (or the log).
    Ending then(std::function<void(const ErrorInfo&)> next) const;

    /// The kind of ending.
    Kind kind() const { return m_kind; }
    /// The message box a report shows.
    ReportVariant variant() const { return m_variant; }
    /// The further statements set by then(); may be empty.
    const std::function<void(const ErrorInfo&)>& next() const { return m_next; }

private:
    explicit Ending(Kind kind, ReportVariant variant = ReportVariant::Plain);

    Kind m_kind = Kind::Report;
    ReportVariant m_variant = ReportVariant::Plain;
    std::function<void(const ErrorInfo&)> m_next;
};

/// Enters the procedure in the record of running procedures that some tests keep, for the life
/// of the scope; nothing while that record is off.
class ZEBSUBCTL_EXPORT ProcedureScope {
public:
    /// Enters procedure while the record is on.
    explicit ProcedureScope(const Procedure& procedure);
    /// Leaves it again.
    ~ProcedureScope();
    ProcedureScope(const ProcedureScope&) = delete;
    ProcedureScope& operator=(const ProcedureScope&) = delete;

private:
    bool m_entered = false;
};

/// The error path every procedure runs in. The body is the procedure's work; the helper traces
/// entry and normal exit for traced procedures, and on any failure reads it, logs it (line 0)
/// and ends as the Ending says. A failure raised by the error path itself leaves the procedure:
/// for a propagating procedure it reaches the caller; for any other it ends at the last-resort
/// hook, never in Qt's event loop. A swallowed failure makes a value-returning body yield a
/// value-initialised result.
class ZEBSUBCTL_EXPORT ErrorPath {
public:
    /// Receives a failure that nothing else may handle.
    using LastResortHook = std::function<void(const ErrorInfo&)>;

    template <class Body>
    /// Runs body as procedure: traced entry and exit when it traces; any failure is logged and ends
    /// as ending says. Returns what body returns, or a value-initialised result after a swallowed
    /// failure.
    static auto run(const Procedure& procedure, const Ending& ending, Body&& body)
        -> std::invoke_result_t<Body&>
    {
        return runWith(procedure, ending, body, &ErrorPath::fail);
    }

    /// The same, but a failure of the error path itself is thrown to the caller whatever the
    /// ending: for the controls' own operations, whose callers run an error path of their own.
    template <class Body>
    static auto runOrThrow(const Procedure& procedure, const Ending& ending, Body&& body)
        -> std::invoke_result_t<Body&>
    {
        return runWith(procedure, ending, body, &ErrorPath::failOrThrow);
    }

    /// For Qt's event handlers that call a propagating procedure (a resize handler, say): a
    /// failure that comes out ends at the last-resort hook.
    template <class Body>
    static void guardEventLoop(Body&& body) noexcept
    {
        try {
            body();
        } catch (...) {
            lastResort(currentError());
        }
    }

    /// Traces "Exiting Method..." (or a procedure's own exit text) for a procedure that leaves
    /// early on purpose.
    static void trace(const QString& module, const QString& label, const QString& message);
    /// Traces "Entering Method..." for a traced procedure.
    static void traceEntry(const Procedure& procedure);
    /// Traces "Exiting Method..." for a traced procedure.
    static void traceExit(const Procedure& procedure);

    /// The failure now being handled, whatever was thrown.
    static ErrorInfo currentError();

    /// Runs the error path for a failure already caught. A failure of the error path itself
    /// goes to the last-resort hook, unless the ending propagates.
    static void fail(const Procedure& procedure, const Ending& ending, const ErrorInfo& error);
    /// The same, but a failure of the error path itself is thrown to the caller.
    static void failOrThrow(const Procedure& procedure, const Ending& ending,
                            const ErrorInfo& error);

    /// Replaces the last-resort hook; an empty hook restores the default, which writes the failure
    /// to Qt's critical log.
    static void setLastResortHook(LastResortHook hook);
    /// Hands error to the last-resort hook; never throws.
    static void lastResort(const ErrorInfo& error) noexcept;

private:
    using FailFunction = void (*)(const Procedure&, const Ending&, const ErrorInfo&);

    template <class Body>
    static auto runWith(const Procedure& procedure, const Ending& ending, Body& body,
                        FailFunction failWith) -> std::invoke_result_t<Body&>
    {
        using Result = std::invoke_result_t<Body&>;
        ErrorInfo error;
        {
            const ProcedureScope scope(procedure);
            try {
                if (procedure.isTraced())
                    traceEntry(procedure);
                if constexpr (std::is_void_v<Result>) {
                    body();
                    if (procedure.isTraced())
                        traceExit(procedure);
                    return;
                } else {
                    Result result = body();
                    if (procedure.isTraced())
                        traceExit(procedure);
                    return result;
                }
            } catch (...) {
                error = currentError();
            }
        }
        failWith(procedure, ending, error);
        if constexpr (!std::is_void_v<Result>)
            return Result{};
    }
};

/// "Resume with the next statement": each step runs guarded; a failed step runs the error path
/// (LogWarning for the resize handlers) and the next step runs all the same. A failure of the
/// error path itself leaves the procedure (throws out of the step call). The ending must not
/// propagate.
class ZEBSUBCTL_EXPORT ResumeNext {
public:
    /// Steps that run as procedure, each failure ending as ending says.
    ResumeNext(Procedure procedure, Ending ending)
        : m_procedure(std::move(procedure)), m_ending(std::move(ending))
    { }

    template <class Step>
    /// Runs one step guarded and returns this helper for the next step.
    ResumeNext& operator()(Step&& step)
    {
        ErrorInfo error;
        try {
            const ProcedureScope scope(m_procedure);
            step();
            return *this;
        } catch (...) {
            error = ErrorPath::currentError();
        }
        ErrorPath::failOrThrow(m_procedure, m_ending, error);
        return *this;
    }

private:
    Procedure m_procedure;
    Ending m_ending;
};

/// The bare class name of a component ("ctlTextSelect"), the module name untraced procedures
/// log under.
ZEBSUBCTL_EXPORT QString componentName(const QObject* component);

}  // namespace ZebSubCtl
