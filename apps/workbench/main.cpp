// zeb-workbench: shows the library's controls at work on sample submittal data.
#include "formdescription.h"
#include "frame/controlregistry.h"
#include "frame/libraryinfo.h"
#include "logpane.h"
#include "objects/defaultdiagnosticlog.h"
#include "objects/runtime.h"
#include "workbenchdata.h"
#include "workbenchwindow.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QFile>
#include <QPixmap>
#include <QPlainTextEdit>
#include <QTimer>

#include <cstdio>

namespace {
bool wantsOption(int argc, char** argv, const char* option)
{
    for (int i = 1; i < argc; ++i)
        if (qstrcmp(argv[i], option) == 0)
            return true;
    return false;
}

int fail(const QString& message)
{
    std::fprintf(stderr, "zeb-workbench: %s\n", qPrintable(message));
    return 1;
}
}  // namespace

int main(int argc, char** argv)
{
    // Listing and rendering need no screen: without one, draw offscreen.
    const bool headless = qEnvironmentVariableIsEmpty("DISPLAY")
                          && qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY")
                          && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM");
    if (headless && (wantsOption(argc, argv, "--screenshot") || wantsOption(argc, argv, "--list")
                     || wantsOption(argc, argv, "--save-design")))
        qputenv("QT_QPA_PLATFORM", "offscreen");

    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("zeb-workbench"));
    QApplication::setApplicationVersion(ZebSubCtl::LibraryInfo::Version());

    QCommandLineParser parser;
    parser.setApplicationDescription(ZebSubCtl::LibraryInfo::Description() + QStringLiteral(" workbench"));
    parser.addHelpOption();
    parser.addVersionOption();
    const QCommandLineOption list(QStringLiteral("list"), QStringLiteral("Print the registered control identifiers and exit."));
    const QCommandLineOption screenshot(QStringLiteral("screenshot"), QStringLiteral("Render the window to a PNG file and exit."), QStringLiteral("file"));
    const QCommandLineOption form(QStringLiteral("form"), QStringLiteral("Build the window from this form description (JSON)."), QStringLiteral("file"));
    const QCommandLineOption log(QStringLiteral("log"), QStringLiteral("Also write the diagnostic log to this file."), QStringLiteral("file"));
    const QCommandLineOption saveDesign(QStringLiteral("save-design"), QStringLiteral("Write the form with every control's saved design to this file and exit."), QStringLiteral("file"));
    const QCommandLineOption page(QStringLiteral("page"), QStringLiteral("Open this page (1-based) first."), QStringLiteral("number"));
    const QCommandLineOption lineItems(QStringLiteral("line-items"), QStringLiteral("Bind a generated job of this many lines as \"lineItems\" (more than the viewer holds shows its failure in the log)."), QStringLiteral("count"));
    parser.addOptions({list, screenshot, form, log, saveDesign, page});
    parser.addOption(lineItems);
    parser.process(app);

    if (parser.isSet(list)) {
        for (const QString& id : ZebSubCtl::ControlRegistry::instance().identifiers())
            std::printf("%s\n", qPrintable(id));
        return 0;
    }

    auto defaultLog = std::make_shared<ZebObjects::DefaultDiagnosticLog>();
    try {
        if (parser.isSet(log))
            defaultLog->setFile(parser.value(log));
    } catch (const ZebObjects::Failure& f) {
        return fail(f.Description());
    }
    auto pane = std::make_shared<LogPane>(defaultLog);
    ZebObjects::Runtime::setDiagnosticLog(pane);

    FormDescription description;
    try {
        description = parser.isSet(form) ? FormDescription::fromFile(parser.value(form))
                                         : FormDescription::fromFile(QStringLiteral(":/forms/workbench.json"));
    } catch (const ZebObjects::Failure& f) {
        return fail(f.Description());
    }

    WorkbenchData data;
    if (parser.isSet(lineItems)) {
        bool ok = false;
        const int count = parser.value(lineItems).toInt(&ok);
        if (!ok)
            return fail(QStringLiteral("--line-items needs a whole number, not \"%1\"").arg(parser.value(lineItems)));
        try {
            data.generateLineItems(count);
        } catch (const ZebObjects::Failure& f) {
            return fail(f.Description());
        }
    }
    WorkbenchWindow window(description, data);
    pane->setView(window.logView());
    for (const QString& problem : window.problems())
        std::fprintf(stderr, "zeb-workbench: %s\n", qPrintable(problem));
    // What reached the host is shown beside what the controls logged.
    for (const QString& problem : window.problems())
        window.logView()->appendPlainText(QStringLiteral("zeb-workbench: ") + problem);
    if (parser.isSet(page))
        window.showPage(parser.value(page).toInt() - 1);

    if (parser.isSet(saveDesign)) {
        QFile out(parser.value(saveDesign));
        if (!out.open(QIODevice::WriteOnly) || out.write(window.currentDesignJson()) < 0)
            return fail(QStringLiteral("cannot write \"%1\": %2").arg(out.fileName(), out.errorString()));
        return 0;
    }

    window.show();
    if (parser.isSet(screenshot)) {
        const QString file = parser.value(screenshot);
        QTimer::singleShot(0, &window, [&] {
            const QPixmap shot = window.grab();
            QApplication::exit(shot.save(file, "PNG") ? 0 : fail(QStringLiteral("cannot write \"%1\"").arg(file)));
        });
    }
    return QApplication::exec();
}
