#include "frame/errorpath.h"

#include "contracts/diagnosticlog.h"
#include "frame/messageboxes.h"
#include "frame/procedurestack.h"
#include "contracts/runtime.h"

#include <QLoggingCategory>

#include <new>

Q_LOGGING_CATEGORY(zebFrame, "zeb.frame")

namespace ZebSubCtl {

namespace {
const QString kEntering = QStringLiteral("Entering Method...");
const QString kExiting = QStringLiteral("Exiting Method...");
// The library has no numbered lines.
constexpr qint32 kLine = 0;

QList<ProcedureStack::Frame>& frames()
{
    static QList<ProcedureStack::Frame> stack;
    return stack;
}

bool g_recording = false;

ErrorPath::LastResortHook& hookSlot()
{
    static ErrorPath::LastResortHook hook;
    return hook;
}
}  // namespace

QString componentName(const QObject* component)
{
    if (!component)
        return {};
    const QString name = QString::fromLatin1(component->metaObject()->className());
    const qsizetype colon = name.lastIndexOf(QLatin1Char(':'));
    return colon < 0 ? name : name.mid(colon + 1);
}

void ProcedureStack::setEnabled(bool on)
{
    g_recording = on;
    frames().clear();
}

bool ProcedureStack::enabled()
{
    return g_recording;
}

QList<ProcedureStack::Frame> ProcedureStack::current()
{
    return frames();
}

qsizetype ProcedureStack::depth()
{
    return frames().size();
}

void ProcedureStack::push(const Procedure& procedure)
{
    frames().append(Frame{procedure.module(), procedure.label()});
}

void ProcedureStack::pop()
{
    if (!frames().isEmpty())
        frames().removeLast();
}

ProcedureScope::ProcedureScope(const Procedure& procedure)
{
    if (g_recording) {
        ProcedureStack::push(procedure);
        m_entered = true;
    }
}

ProcedureScope::~ProcedureScope()
{
    if (m_entered)
        ProcedureStack::pop();
}

Procedure::Procedure(const QObject* component, QString module, QString label, QString traceLabel)
    : m_component(component), m_module(std::move(module)), m_label(std::move(label)),
      m_traceLabel(std::move(traceLabel))
{ }

Procedure Procedure::traced(QString module, QString name)
{
    QString traceLabel = name + QStringLiteral("()");
    return Procedure(nullptr, std::move(module), std::move(name), std::move(traceLabel));
}

Procedure Procedure::untraced(const QObject* component, QString label)
{
    return Procedure(component, QString(), std::move(label), QString());
}

Procedure Procedure::untraced(QString module, QString label)
{
    return Procedure(nullptr, std::move(module), std::move(label), QString());
}

QString Procedure::module() const
{
    return m_component ? componentName(m_component) : m_module;
}

Ending::Ending(Kind kind, ReportVariant variant) : m_kind(kind), m_variant(variant) { }

Ending Ending::report(ReportVariant variant)
{
    return Ending(Kind::Report, variant);
}

Ending Ending::propagate()
{
    return Ending(Kind::Propagate);
}

Ending Ending::logOnly()
{
    return Ending(Kind::LogOnly);
}

Ending Ending::notice()
{
    return Ending(Kind::Notice);
}

Ending Ending::warning()
{
    return Ending(Kind::Warning);
}

Ending Ending::then(std::function<void(const ErrorInfo&)> next) const
{
    Ending e = *this;
    e.m_next = std::move(next);
    return e;
}

void ErrorPath::trace(const QString& module, const QString& label, const QString& message)
{
    ZebObjects::Runtime::diagnosticLog()->Trace(module, label, message, 0);
}

void ErrorPath::traceEntry(const Procedure& procedure)
{
    trace(procedure.module(), procedure.traceLabel(), kEntering);
}

void ErrorPath::traceExit(const Procedure& procedure)
{
    trace(procedure.module(), procedure.traceLabel(), kExiting);
}

ErrorInfo ErrorPath::currentError()
{
    try {
        throw;
    } catch (const Failure& failure) {
        return failure.info();
    } catch (const std::bad_alloc&) {
        return {ZebObjects::ErrorNumber::OutOfMemory, QStringLiteral("ZebSubCtl"),
                QStringLiteral("Out of memory")};
    } catch (const std::exception& e) {
        return {ZebObjects::ErrorNumber::InternalError, QStringLiteral("ZebSubCtl"),
                QStringLiteral("Internal error: ") + QString::fromLocal8Bit(e.what())};
    } catch (...) {
        return {ZebObjects::ErrorNumber::InternalError, QStringLiteral("ZebSubCtl"),
                QStringLiteral("Internal error")};
    }
}

void ErrorPath::failOrThrow(const Procedure& procedure, const Ending& ending,
                            const ErrorInfo& error)
{
    // The failure's fields are copied before anything else can replace them.
    const ErrorInfo saved = error;
    const auto log = ZebObjects::Runtime::diagnosticLog();
    const QString module = procedure.module();
    switch (ending.kind()) {
    case Ending::Kind::Notice: log->LogNotice(module, procedure.label(), saved, kLine); break;
    case Ending::Kind::Warning: log->LogWarning(module, procedure.label(), saved, kLine); break;
    default: log->LogError(module, procedure.label(), saved, kLine); break;
    }
    switch (ending.kind()) {
    case Ending::Kind::Propagate: throw Failure(saved);
    case Ending::Kind::Report: {
        const ReportMessage box = ReportMessage::forFailure(ending.variant(), saved);
        MessageBoxes::MsgBox(box.prompt, box.style, box.title);
        break;
    }
    default: break;
    }
    if (ending.next())
        ending.next()(saved);
}

void ErrorPath::fail(const Procedure& procedure, const Ending& ending, const ErrorInfo& error)
{
    if (ending.kind() == Ending::Kind::Propagate) {
        failOrThrow(procedure, ending, error);
        return;
    }
    try {
        failOrThrow(procedure, ending, error);
    } catch (...) {
        lastResort(currentError());
    }
}

void ErrorPath::setLastResortHook(LastResortHook hook)
{
    hookSlot() = std::move(hook);
}

void ErrorPath::lastResort(const ErrorInfo& error) noexcept
{
    try {
        if (const auto& hook = hookSlot()) {
            hook(error);
            return;
        }
        qCCritical(zebFrame).noquote()
            << QStringLiteral("Unhandled failure %1 [%2] %3")
                   .arg(QString::number(error.Number), error.Source, error.Description);
    } catch (...) {
        qCCritical(zebFrame) << "Unhandled failure in the last-resort hook";
    }
}

}  // namespace ZebSubCtl
