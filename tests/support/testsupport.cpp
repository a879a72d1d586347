#include "support/testsupport.h"

#include "contracts/runtime.h"
#include "customerchooser.h"
#include "objects/standaloneservices.h"
#include "rules/customerchoice.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QAccessibleInterface>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>
#include <QWidget>

#include <functional>

namespace ZebTest {

Harness::Harness()
    : m_log(std::make_shared<ZebObjects::MemoryDiagnosticLog>()),
      m_boxes(std::make_shared<ZebSubCtl::ScriptedMessageBoxService>())
{
    // The tests play a host that uses the stand-alone objects and the chooser dialog.
    ZebObjects::installStandaloneServices();
    ZebObjects::CustomerChooser::install();
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
    ZebObjects::CustomerChoice::setChooser({});
    ZebObjects::CustomerChoice::setNothingFound({});
    ZebSubCtl::MessageBoxes::setService(nullptr);
    ZebSubCtl::ErrorPath::setLastResortHook({});
}

namespace {

bool isInteractive(QAccessible::Role role)
{
    switch (role) {
    case QAccessible::PushButton:
    case QAccessible::CheckBox:
    case QAccessible::RadioButton:
    case QAccessible::EditableText:
    case QAccessible::ComboBox:
    case QAccessible::List:
    case QAccessible::Table:
    case QAccessible::Tree:
    case QAccessible::ScrollBar:
    case QAccessible::SpinBox:
    case QAccessible::Slider:
    case QAccessible::PageTabList:
    case QAccessible::ButtonMenu:
    case QAccessible::ButtonDropDown: return true;
    default: return false;
    }
}

QString describe(QAccessibleInterface* node)
{
    QString name;
    if (QObject* o = node->object())
        name = o->objectName();
    return QStringLiteral("%1 %2").arg(int(node->role())).arg(name);
}

}  // namespace

QStringList unnamedAccessibleElements(QWidget* root)
{
    QStringList missing;
    QAccessibleInterface* top = QAccessible::queryAccessibleInterface(root);
    if (!top)
        return {QStringLiteral("no accessible interface for %1").arg(root->objectName())};
    if (top->text(QAccessible::Name).isEmpty())
        missing.append(QStringLiteral("control without a name: ") + describe(top));
    if (top->text(QAccessible::Description).isEmpty())
        missing.append(QStringLiteral("control without a description: ") + describe(top));
    std::function<void(QAccessibleInterface*)> walk = [&](QAccessibleInterface* node) {
        for (int i = 0; i < node->childCount(); ++i) {
            QAccessibleInterface* child = node->child(i);
            if (!child || child->state().invisible)
                continue;
            if (isInteractive(child->role()) && child->text(QAccessible::Name).trimmed().isEmpty())
                missing.append(describe(child));
            // The rows and cells of a list are named by their own text.
            if (child->role() != QAccessible::Table && child->role() != QAccessible::Tree
                && child->role() != QAccessible::List)
                walk(child);
        }
    };
    walk(top);
    return missing;
}

ProgramRun runProgram(const QString& program, const QStringList& args,
                      const ProgramOptions& options)
{
    QProcess p;
    if (!options.environment.isEmpty()) {
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        for (const QString& setting : options.environment) {
            const qsizetype at = setting.indexOf(QLatin1Char('='));
            env.insert(setting.left(at), setting.mid(at + 1));
        }
        p.setProcessEnvironment(env);
    }
    if (options.mergeChannels)
        p.setProcessChannelMode(QProcess::MergedChannels);
    if (options.asNobody)
        p.start(QStringLiteral("setpriv"),
                QStringList{QStringLiteral("--reuid=nobody"), QStringLiteral("--regid=nogroup"),
                            QStringLiteral("--clear-groups"), program}
                    + args);
    else
        p.start(program, args);
    ProgramRun r;
    if (!p.waitForFinished(options.timeoutMs)) {
        p.kill();
        p.waitForFinished();
        r.timedOut = true;
        return r;
    }
    r.code = p.exitStatus() == QProcess::NormalExit ? p.exitCode() : -1;
    r.out = QString::fromUtf8(p.readAllStandardOutput());
    if (options.mergeChannels)
        return r;
    QStringList lines;
    for (const QString& line :
         QString::fromUtf8(p.readAllStandardError()).split(QLatin1Char('\n'), Qt::SkipEmptyParts)) {
        if (line.startsWith(QLatin1String("QStandardPaths:")))
            continue;
        if (options.ownLinesOnly
            && (line.startsWith(QLatin1String("zeb.diagnostics:"))
                || line == QLatin1String("This plugin does not support propagateSizeHints()")))
            continue;
        lines.append(line);
    }
    r.err = lines.join(QLatin1Char('\n'));
    return r;
}

QString pdfText(const QString& pdf)
{
    QProcess p;
    p.start(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), QStringLiteral("-enc"),
                                          QStringLiteral("UTF-8"), pdf, QStringLiteral("-")});
    if (!p.waitForFinished(60000) || p.exitCode() != 0)
        return {};
    return QString::fromUtf8(p.readAllStandardOutput());
}

void clickCheckBox(QAbstractButton* box)
{
    QVERIFY(box);
    QTest::mouseClick(box, Qt::LeftButton, {}, QPoint(7, box->height() / 2));
}

void useScratchDataHome()
{
    static QTemporaryDir data;
    qputenv("XDG_DATA_HOME", data.path().toUtf8());
}

}  // namespace ZebTest
