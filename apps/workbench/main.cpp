// zeb-workbench: the submittal workstation on the office's store.
//
// The command line is read once into Options; main() then runs one mode. To add a mode: a field
// in Options, its QCommandLineOption in parseCommandLine(), its name in kCommandLineModes when it
// runs without a window, and one function called from main().
#include "cutsheetattach.h"
#include "formdescription.h"
#include "historycommands.h"
#include "hostmessageboxes.h"
#include "jobcommands.h"
#include "frame/controlregistry.h"
#include "frame/libraryinfo.h"
#include "logpane.h"
#include "customerchooser.h"
#include "customerdialog.h"
#include "objects/defaultdiagnosticlog.h"
#include "contracts/runtime.h"
#include "officefile.h"
#include "officesettingsdialog.h"
#include "packageexport.h"
#include "startupfailure.h"
#include "welcomedialog.h"
#include "store/store.h"
#include "store/storedialect.h"
#include "store/storejob.h"
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
#include <optional>

namespace {
// The modes that run without a window and end by themselves: without a screen they draw
// offscreen, and they never wait for a box.
constexpr const char* kCommandLineModes[] = {"--list",
                                             "--screenshot",
                                             "--save-design",
                                             "--export",
                                             "--attach-cut-sheet",
                                             "--issue-package",
                                             "--revision",
                                             "--history",
                                             "--new-job",
                                             "--import-lines",
                                             "--import-customers",
                                             "--help",
                                             "-h",
                                             "--help-all",
                                             "--version",
                                             "-v"};

// What the command line asks for. An unset option is an empty optional (or false).
struct Options {
    // Modes, tried in the order main() lists them; without any, the workstation window opens.
    bool list = false;  // --list
    std::optional<QString> exportPdf;  // --export
    std::optional<QString> saveDesign;  // --save-design
    std::optional<QString> screenshot;  // --screenshot
    QStringList attachCutSheets;  // --attach-cut-sheet TYPE=FILE, repeatable; before --export
    HistoryCommands::Request history;  // --issue-package, --revision (with --export), --history
    JobCommands::Request jobs;  // --new-job, --import-lines, --import-customers

    // Settings the modes share.
    std::optional<QString> form;  // --form
    std::optional<QString> log;  // --log
    std::optional<QString> db;  // --db
    bool resetSample = false;  // --reset-sample
    std::optional<QString> job;  // --job
    bool force = false;  // --force
    std::optional<QString> page;  // --page
    std::optional<QString> lineItems;  // --line-items

    // A mode run from a terminal or a script, with nobody to answer a box.
    bool commandLineMode() const
    {
        return exportPdf || saveDesign || screenshot || !attachCutSheets.isEmpty()
               || history.wanted() || jobs.wanted();
    }
};

// What every mode but --list works on: set up by openOffice().
struct Session {
    std::shared_ptr<HostMessageBoxes> boxes;
    std::shared_ptr<LogPane> pane;
    FormDescription description;
    int generatedLines = -1;
    std::shared_ptr<ZebObjects::Store> store;
};

// Set once the command line is read: whether a failure also shows in a dialog.
bool g_failureDialog = false;

int fail(const QString& message)
{
    return StartupFailure::report(message, g_failureDialog);
}

// Listing and rendering need no screen: without one, draw offscreen. Runs before QApplication,
// which is what reads the platform.
void preferOffscreen(int argc, char** argv)
{
    const bool headless = qEnvironmentVariableIsEmpty("DISPLAY")
                          && qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY")
                          && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM");
    if (!headless)
        return;
    for (int i = 1; i < argc; ++i) {
        const QByteArray arg(argv[i]);
        for (const char* mode : kCommandLineModes)
            // "--export file" and "--export=file" alike.
            if (arg == mode || arg.startsWith(QByteArray(mode) + '=')) {
                qputenv("QT_QPA_PLATFORM", "offscreen");
                return;
            }
    }
}

Options parseCommandLine(const QApplication& app)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(ZebSubCtl::LibraryInfo::Description()
                                     + QStringLiteral(" workbench"));
    parser.addHelpOption();
    parser.addVersionOption();
    const QCommandLineOption list(
        QStringLiteral("list"),
        QStringLiteral("Print the registered control identifiers and exit."));
    const QCommandLineOption screenshot(QStringLiteral("screenshot"),
                                        QStringLiteral("Render the window to a PNG file and exit."),
                                        QStringLiteral("file"));
    const QCommandLineOption form(
        QStringLiteral("form"),
        QStringLiteral("Build the window from this form description (JSON)."),
        QStringLiteral("file"));
    const QCommandLineOption log(QStringLiteral("log"),
                                 QStringLiteral("Also write the diagnostic log to this file."),
                                 QStringLiteral("file"));
    const QCommandLineOption saveDesign(
        QStringLiteral("save-design"),
        QStringLiteral("Write the form with every control's saved design to this file and exit."),
        QStringLiteral("file"));
    const QCommandLineOption page(QStringLiteral("page"),
                                  QStringLiteral("Open this page (1-based) first."),
                                  QStringLiteral("number"));
    const QCommandLineOption lineItems(
        QStringLiteral("line-items"),
        QStringLiteral("Bind a generated job of this many lines as \"lineItems\" (more than the "
                       "viewer holds shows its failure in the log)."),
        QStringLiteral("count"));
    const QCommandLineOption db(
        QStringLiteral("db"),
        QStringLiteral("Open this office file, or the office's database on a PostgreSQL server "
                       "(postgresql://user@host:port/database), instead of the file in the user's "
                       "data folder."),
        QStringLiteral("file or location"));
    const QCommandLineOption resetSample(
        QStringLiteral("reset-sample"),
        QStringLiteral("Make the office file anew with the sample office (a server database gets "
                       "it only while empty)."));
    const QCommandLineOption job(QStringLiteral("job"),
                                 QStringLiteral("Open the job with this number first."),
                                 QStringLiteral("number"));
    const QCommandLineOption exportPdf(
        QStringLiteral("export"),
        QStringLiteral("Write the job's submittal package to this PDF file and exit."),
        QStringLiteral("file"));
    const QCommandLineOption force(
        QStringLiteral("force"),
        QStringLiteral("With --export: write the package even when it is incomplete."));
    const QCommandLineOption attachCutSheet(
        QStringLiteral("attach-cut-sheet"),
        QStringLiteral("Attach a cut sheet (PDF) to a fixture type of the job, TYPE=FILE.pdf; may "
                       "be given more than once. Exits unless --export is given too."),
        QStringLiteral("type=file"));
    parser.addOptions({list, screenshot, form, log, saveDesign, page, lineItems, db, resetSample,
                       job, exportPdf, force, attachCutSheet});
    HistoryCommands::addOptions(parser);
    JobCommands::addOptions(parser);
    parser.process(app);

    const auto value = [&parser](const QCommandLineOption& option) -> std::optional<QString> {
        if (!parser.isSet(option))
            return std::nullopt;
        return parser.value(option);
    };
    Options options;
    options.list = parser.isSet(list);
    options.exportPdf = value(exportPdf);
    options.attachCutSheets = parser.values(attachCutSheet);
    options.saveDesign = value(saveDesign);
    options.screenshot = value(screenshot);
    options.form = value(form);
    options.log = value(log);
    options.db = value(db);
    options.resetSample = parser.isSet(resetSample);
    options.job = value(job);
    options.force = parser.isSet(force);
    options.page = value(page);
    options.lineItems = value(lineItems);
    options.history = HistoryCommands::read(parser);
    options.history.exportPdf = options.exportPdf;
    options.history.force = options.force;
    options.jobs = JobCommands::read(parser);
    return options;
}

int listControls()
{
    for (const QString& id : ZebSubCtl::ControlRegistry::instance().identifiers())
        std::printf("%s\n", qPrintable(id));
    return 0;
}

// What openOffice() answers when the user chose to quit before any office was opened.
constexpr int kQuit = -1;

// Sets up the boxes, the log, the form and the office's store. Answers 0, kQuit, or the exit
// code of the failure it reported.
int openOffice(const Options& options, Session& session)
{
    // A command-line mode, or a run without a display, has nobody to answer a box: its boxes
    // become lines on standard error and the run ends with a failure.
    const bool console = options.commandLineMode()
                         || QGuiApplication::platformName() == QLatin1String("offscreen")
                         || QGuiApplication::platformName() == QLatin1String("minimal");
    session.boxes = std::make_shared<HostMessageBoxes>(console);
    ZebSubCtl::MessageBoxes::setService(session.boxes);

    auto defaultLog = std::make_shared<ZebObjects::DefaultDiagnosticLog>();
    try {
        if (options.log)
            defaultLog->setFile(*options.log);
    } catch (const ZebObjects::Failure& f) {
        return fail(f.Description());
    }
    session.pane = std::make_shared<LogPane>(defaultLog);
    ZebObjects::Runtime::setDiagnosticLog(session.pane);

    try {
        session.description = FormDescription::fromFile(
            options.form.value_or(QStringLiteral(":/forms/workbench.json")));
    } catch (const ZebObjects::Failure& f) {
        return fail(f.Description());
    }

    if (options.lineItems) {
        bool ok = false;
        session.generatedLines = options.lineItems->toInt(&ok);
        if (!ok)
            return fail(QStringLiteral("--line-items needs a whole number, not \"%1\"")
                            .arg(*options.lineItems));
        if (session.generatedLines < 0 || session.generatedLines > 32767)
            return fail(QStringLiteral("Overflow: a job has 0 to 32767 lines, not %1")
                            .arg(session.generatedLines));
    }

    // --db, else the office chosen in the Office Database dialog, else the user's own file.
    const QString chosen = options.db ? *options.db : OfficeSettingsDialog::savedLocation();
    const bool ownOffice = chosen.isEmpty();
    QString path = ownOffice ? OfficeFile::defaultPath() : chosen;
    // A user's first start without an office chooses how to begin.
    bool create = ownOffice;
    if (!console && ownOffice && !options.resetSample && !QFileInfo::exists(path)
        && !WelcomeDialog::firstStart(path, create))
        return kQuit;
    // An empty file named by the user becomes an office only when the user says so.
    bool newOffice = false;
    if (!console && !options.resetSample && !ownOffice && OfficeFile::isEmptyFile(path))
        newOffice = QMessageBox::question(
                        nullptr, QStringLiteral("Empty Office File"),
                        QStringLiteral("The file \"%1\" is empty (0 bytes): it holds no office.\n\n"
                                       "Make a new, empty office in it?")
                            .arg(path),
                        QMessageBox::Yes | QMessageBox::No, QMessageBox::No)
                    == QMessageBox::Yes;
    // A job made from a script into a file that does not exist yet starts an office of its own:
    // an empty one, never the sample.
    if (options.jobs.newJob && !options.resetSample
        && !ZebObjects::StoreDialect::isServerLocation(path) && !QFileInfo::exists(path)) {
        const QString folder = QFileInfo(path).absolutePath();
        if (!QFileInfo(folder).isDir())
            return fail(
                QStringLiteral("Cannot make the office \"%1\": the folder \"%2\" does not exist")
                    .arg(path, folder));
        try {
            ZebObjects::Store::open(path);
        } catch (const ZebObjects::Failure& f) {
            return fail(f.Description());
        }
        create = false;
    }
    try {
        session.store = options.resetSample ? OfficeFile::resetSample(path)
                                            : OfficeFile::open(path, create, newOffice);
    } catch (const ZebObjects::Failure& f) {
        return fail(f.Description());
    }
    // The status bar says once that nothing can be saved; no box repeats it for every write.
    if (session.store->isReadOnly())
        session.boxes->setQuiet(session.store->readOnlyFailure().Description());
    return 0;
}

// The job a command-line mode works on: --job's, else the office's default job; 0 when none.
qint64 chosenJob(const Options& options, ZebObjects::Store& store)
{
    return options.job ? Workstation::jobByNumber(store, *options.job)
                       : Workstation::defaultJob(store);
}

int noSuchJob(const Options& options, const ZebObjects::Store& store)
{
    return fail(options.job ? QStringLiteral("the office \"%1\" has no job numbered \"%2\"")
                                  .arg(store.path(), *options.job)
                            : QStringLiteral("the office \"%1\" has no job").arg(store.path()));
}

// --attach-cut-sheet: the sheets go to the job's types; a bad file is refused with its reason.
int attachCutSheets(const Options& options, ZebObjects::Store& store)
{
    const qint64 id = chosenJob(options, store);
    if (id == 0)
        return noSuchJob(options, store);
    return CutSheetAttach::fromCommandLine(store, id, options.attachCutSheets);
}

// --export: the job's package, written as the window's Export Package writes it.
int exportPackage(const Options& options, ZebObjects::Store& store)
{
    const qint64 id = chosenJob(options, store);
    if (id == 0)
        return noSuchJob(options, store);
    try {
        const auto job = store.openJob(id);
        // The list says what an incomplete package lacks; --force writes it anyway.
        const auto writeIncomplete = [&options, &job](const QStringList& gaps) {
            if (options.force)
                return true;
            std::fprintf(
                stderr,
                "zeb-workbench: the package of job %s is incomplete (--force writes it anyway):\n",
                qPrintable(job->number()));
            for (const QString& gap : gaps)
                std::fprintf(stderr, "  - %s\n", qPrintable(gap));
            return false;
        };
        const PackageExport::Result result =
            PackageExport::write(store, job, *options.exportPdf, writeIncomplete);
        if (result.outcome == PackageExport::Outcome::Declined)
            return 2;
        std::printf("%s: %d pages\n", qPrintable(*options.exportPdf), int(result.pages));
    } catch (const ZebObjects::Failure& f) {
        return fail(f.Description());
    }
    return 0;
}

// The workstation window; --save-design and --screenshot build it, write their file and end.
int runWorkstation(const Options& options, Session& session)
{
    const auto finish = [&session](int code) {
        return code == 0 && session.boxes->consoleLines() > 0 ? 1 : code;
    };

    Workstation::Options windowOptions;
    // A rendering has the form's own size, whatever the window was left at.
    windowOptions.remember = !options.screenshot && !options.saveDesign;
    windowOptions.generatedLineItems = session.generatedLines;
    Workstation window(session.description, session.store, windowOptions);
    // A user searching for a customer chooses among several matches and hears when nobody matches.
    ZebObjects::CustomerChooser::install();
    ZebObjects::CustomerChooser::setTellsWhenNothingFound(true);
    // ... and may add the customer it typed there and then.
    ZebObjects::CustomerChooser::installNewCustomerOffer(&CustomerDialog::askNew);
    qint64 first = window.startingJob();
    if (options.job) {
        first = window.jobByNumber(*options.job);
        if (first == 0)
            return fail(QStringLiteral("the office \"%1\" has no job numbered \"%2\"")
                            .arg(session.store->path(), *options.job));
    }
    session.pane->setView(window.logView());
    // A page is built when it is first shown or in idle time: its problems are told then. What
    // reached the host is shown beside what the controls logged.
    QObject::connect(
        &window, &WorkbenchWindow::problemsFound, &window, [&window](const QStringList& problems) {
            for (const QString& problem : problems) {
                std::fprintf(stderr, "zeb-workbench: %s\n", qPrintable(problem));
                window.logView()->appendPlainText(QStringLiteral("zeb-workbench: ") + problem);
            }
        });
    try {
        if (first != 0)
            window.openJob(first);
    } catch (const ZebObjects::Failure& f) {
        session.pane->setView(nullptr);
        return fail(f.Description());
    }
    if (options.page)
        window.showPage(options.page->toInt() - 1);

    if (options.saveDesign) {
        QFile out(*options.saveDesign);
        if (!out.open(QIODevice::WriteOnly) || out.write(window.currentDesignJson()) < 0)
            return fail(
                QStringLiteral("cannot write \"%1\": %2").arg(out.fileName(), out.errorString()));
        return finish(0);
    }

    window.show();
    // The keys go to the workstation from the start, also where no window manager hands them on.
    window.activateWindow();
    if (options.screenshot) {
        const QString file = *options.screenshot;
        QTimer::singleShot(0, &window, [&window, file] {
            const QPixmap shot = window.grab();
            QApplication::exit(
                shot.save(file, "PNG") ? 0 : fail(QStringLiteral("cannot write \"%1\"").arg(file)));
        });
    }
    return finish(QApplication::exec());
}
}  // namespace

int main(int argc, char** argv)
{
    preferOffscreen(argc, argv);
    QApplication app(argc, argv);
    QApplication::setOrganizationName(QStringLiteral("ZebSubmittalControls"));
    QApplication::setApplicationName(QStringLiteral("zeb-workbench"));
    QApplication::setApplicationVersion(ZebSubCtl::LibraryInfo::Version());

    const Options options = parseCommandLine(app);
    // Started from an icon there is no terminal to read a failure on; a command-line mode never
    // waits for a box.
    g_failureDialog = StartupFailure::hasDisplay() && !options.list && !options.commandLineMode();

    if (options.list)
        return listControls();

    Session session;
    if (const int code = openOffice(options, session); code != 0)
        return code == kQuit ? 0 : code;
    ZebObjects::Runtime::setApplicationServices(session.store->applicationServices());
    // The services hold the store's connection, which must close before Qt SQL goes away.
    struct ServicesRelease {
        ~ServicesRelease() { ZebObjects::Runtime::setApplicationServices(nullptr); }
    } servicesRelease;

    if (options.jobs.wanted())
        return JobCommands::run(*session.store, options.jobs);
    if (!options.attachCutSheets.isEmpty()) {
        if (const int code = attachCutSheets(options, *session.store);
            code != 0 || !options.exportPdf)
            return code;
    }
    if (options.history.wanted()) {
        return HistoryCommands::run(options.history, session.store,
                                    chosenJob(options, *session.store),
                                    options.job.value_or(QString()));
    }
    if (options.exportPdf)
        return exportPackage(options, *session.store);
    return runWorkstation(options, session);
}
