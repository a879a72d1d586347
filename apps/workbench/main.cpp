// zeb-workbench: the submittal workstation on the office's store.
#include "formdescription.h"
#include "hostmessageboxes.h"
#include "jobcommands.h"
#include "frame/controlregistry.h"
#include "frame/libraryinfo.h"
#include "logpane.h"
#include "objects/customerchooser.h"
#include "objects/defaultdiagnosticlog.h"
#include "objects/runtime.h"
#include "officefile.h"
#include "officesettingsdialog.h"
#include "startupfailure.h"
#include "welcomedialog.h"
#include "package/packagegenerator.h"
#include "storepackagesource.h"
#include "store/store.h"
#include "workbenchdata.h"
#include "workstation.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QFile>
#include <QFileInfo>
#include <QMessageBox>
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

// Set once the command line is read: whether a failure also shows in a dialog.
bool g_failureDialog = false;

int fail(const QString& message)
{
    return StartupFailure::report(message, g_failureDialog);
}
}  // namespace

int main(int argc, char** argv)
{
    // Listing and rendering need no screen: without one, draw offscreen.
    const bool headless = qEnvironmentVariableIsEmpty("DISPLAY")
                          && qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY")
                          && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM");
    if (headless && (wantsOption(argc, argv, "--screenshot") || wantsOption(argc, argv, "--list")
                     || wantsOption(argc, argv, "--save-design") || wantsOption(argc, argv, "--export")
                     || JobCommands::wanted(argc, argv)))
        qputenv("QT_QPA_PLATFORM", "offscreen");

    QApplication app(argc, argv);
    QApplication::setOrganizationName(QStringLiteral("ZebSubmittalControls"));
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
    const QCommandLineOption db(QStringLiteral("db"), QStringLiteral("Open this office file, or the office's database on a PostgreSQL server (postgresql://user@host:port/database), instead of the file in the user's data folder."), QStringLiteral("file or location"));
    const QCommandLineOption resetSample(QStringLiteral("reset-sample"), QStringLiteral("Make the office file anew with the sample office (a server database gets it only while empty)."));
    const QCommandLineOption job(QStringLiteral("job"), QStringLiteral("Open the job with this number first."), QStringLiteral("number"));
    const QCommandLineOption exportPdf(QStringLiteral("export"), QStringLiteral("Write the job's submittal package to this PDF file and exit."), QStringLiteral("file"));
    const QCommandLineOption force(QStringLiteral("force"), QStringLiteral("With --export: write the package even when it is incomplete."));
    parser.addOptions({db, resetSample, job, exportPdf, force});
    JobCommands::addOptions(parser);
    parser.process(app);
    // Started from an icon there is no terminal to read a failure on; a command-line mode never
    // waits for a box.
    g_failureDialog = StartupFailure::hasDisplay() && !parser.isSet(list) && !parser.isSet(screenshot)
                      && !parser.isSet(saveDesign) && !parser.isSet(exportPdf) && !JobCommands::wanted(parser);

    if (parser.isSet(list)) {
        for (const QString& id : ZebSubCtl::ControlRegistry::instance().identifiers())
            std::printf("%s\n", qPrintable(id));
        return 0;
    }

    // A command-line mode, or a run without a display, has nobody to answer a box: its boxes
    // become lines on standard error and the run ends with a failure.
    const bool console = parser.isSet(screenshot) || parser.isSet(saveDesign) || parser.isSet(exportPdf) || JobCommands::wanted(parser)
                         || QGuiApplication::platformName() == QLatin1String("offscreen")
                         || QGuiApplication::platformName() == QLatin1String("minimal");
    auto boxes = std::make_shared<HostMessageBoxes>(console);
    ZebSubCtl::MessageBoxes::setService(boxes);
    const auto finish = [&boxes](int code) { return code == 0 && boxes->consoleLines() > 0 ? 1 : code; };

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

    int generated = -1;
    if (parser.isSet(lineItems)) {
        bool ok = false;
        generated = parser.value(lineItems).toInt(&ok);
        if (!ok)
            return fail(QStringLiteral("--line-items needs a whole number, not \"%1\"").arg(parser.value(lineItems)));
        if (generated < 0 || generated > 32767)
            return fail(QStringLiteral("Overflow: a job has 0 to 32767 lines, not %1").arg(generated));
    }

    // --db, else the office chosen in the Office Database dialog, else the user's own file.
    const QString chosen = parser.isSet(db) ? parser.value(db) : OfficeSettingsDialog::savedLocation();
    const bool ownOffice = chosen.isEmpty();
    QString path = ownOffice ? OfficeFile::defaultPath() : chosen;
    // A user's first start without an office chooses how to begin.
    bool create = ownOffice;
    if (!console && ownOffice && !parser.isSet(resetSample) && !QFileInfo::exists(path) && !WelcomeDialog::firstStart(path, create))
        return 0;
    // An empty file named by the user becomes an office only when the user says so.
    bool newOffice = false;
    if (!console && !parser.isSet(resetSample) && !ownOffice && OfficeFile::isEmptyFile(path))
        newOffice = QMessageBox::question(nullptr, QStringLiteral("Empty Office File"),
                                          QStringLiteral("The file \"%1\" is empty (0 bytes): it holds no office.\n\n"
                                                         "Make a new, empty office in it?").arg(path),
                                          QMessageBox::Yes | QMessageBox::No, QMessageBox::No)
                    == QMessageBox::Yes;
    std::shared_ptr<ZebObjects::Store> store;
    try {
        store = parser.isSet(resetSample) ? OfficeFile::resetSample(path) : OfficeFile::open(path, create, newOffice);
    } catch (const ZebObjects::Failure& f) {
        return fail(f.Description());
    }
    // The status bar says once that nothing can be saved; no box repeats it for every write.
    if (store->isReadOnly())
        boxes->setQuiet(store->readOnlyFailure().Description());
    ZebObjects::Runtime::setApplicationServices(store->applicationServices());
    // The services hold the store's connection, which must close before Qt SQL goes away.
    struct ServicesRelease {
        ~ServicesRelease() { ZebObjects::Runtime::setApplicationServices(nullptr); }
    } servicesRelease;

    if (JobCommands::wanted(parser))
        return JobCommands::run(*store, parser);
    if (parser.isSet(exportPdf)) {
        const qint64 id = parser.isSet(job) ? Workstation::jobByNumber(*store, parser.value(job))
                                            : Workstation::defaultJob(*store);
        if (id == 0)
            return fail(parser.isSet(job) ? QStringLiteral("the office \"%1\" has no job numbered \"%2\"").arg(store->path(), parser.value(job))
                                          : QStringLiteral("the office \"%1\" has no job").arg(store->path()));
        try {
            const StorePackageSource source(*store, store->openJob(id));
            // An incomplete package goes out only when forced; the list says what it lacks.
            const QStringList gaps = ZebPackage::PackageGenerator::Check(source);
            if (!gaps.isEmpty() && !parser.isSet(force)) {
                std::fprintf(stderr, "zeb-workbench: the package of job %s is incomplete (--force writes it anyway):\n",
                             qPrintable(source.JobNumber()));
                for (const QString& gap : gaps)
                    std::fprintf(stderr, "  - %s\n", qPrintable(gap));
                return 2;
            }
            ZebPackage::PackageGenerator generator;
            generator.Generate(source, parser.value(exportPdf));
            std::printf("%s: %d pages\n", qPrintable(parser.value(exportPdf)), int(generator.pageCount()));
        } catch (const ZebObjects::Failure& f) {
            return fail(f.Description());
        }
        return 0;
    }

    Workstation::Options options;
    // A rendering has the form's own size, whatever the window was left at.
    options.remember = !parser.isSet(screenshot) && !parser.isSet(saveDesign);
    options.generatedLineItems = generated;
    Workstation window(description, store, options);
    // A user searching for a customer hears when nobody matches.
    ZebObjects::CustomerChooser::setTellsWhenNothingFound(true);
    qint64 first = window.startingJob();
    if (parser.isSet(job)) {
        first = window.jobByNumber(parser.value(job));
        if (first == 0)
            return fail(QStringLiteral("the office \"%1\" has no job numbered \"%2\"").arg(store->path(), parser.value(job)));
    }
    try {
        if (first != 0)
            window.openJob(first);
    } catch (const ZebObjects::Failure& f) {
        return fail(f.Description());
    }
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
        return finish(0);
    }

    window.show();
    // The keys go to the workstation from the start, also where no window manager hands them on.
    window.activateWindow();
    if (parser.isSet(screenshot)) {
        const QString file = parser.value(screenshot);
        QTimer::singleShot(0, &window, [&] {
            const QPixmap shot = window.grab();
            QApplication::exit(shot.save(file, "PNG") ? 0 : fail(QStringLiteral("cannot write \"%1\"").arg(file)));
        });
    }
    return finish(QApplication::exec());
}
