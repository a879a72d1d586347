#include "workstation.h"

#include "contracts/failure.h"
#include "cutsheetdock.h"
#include "exportcheckdialog.h"
#include "packageexport.h"
#include "historypage.h"
#include "desktopopener.h"
#include "joblistdialog.h"
#include "letterheaddialog.h"
#include "officesettingsdialog.h"
#include "package/packagegenerator.h"
#include "platform/accessiblenames.h"
#include "platform/dateedit.h"
#include "store/store.h"
#include "store/storejob.h"
#include "store/storesubmittal.h"
#include "workbenchdata.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QDir>
#include <QFileInfo>
#include <QFileDialog>
#include <QDockWidget>
#include <QLabel>
#include <QMenuBar>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QProgressDialog>
#include <QScrollArea>
#include <QSettings>
#include <QStatusBar>
#include <QTabBar>
#include <QTabWidget>
#include <QTime>
#include <QTimer>

namespace {
const QString kGeometryKey = QStringLiteral("workstation/geometry");
const QString kStateKey = QStringLiteral("workstation/state");
const QString kLastJobKey = QStringLiteral("workstation/lastJob");
// The job the office's sample is shown with first.
const QString kSampleJobName = QStringLiteral("Riverside Medical Office Building");
const QString kHistoryPage = QStringLiteral("History");

// The save state in the status bar: its whole text where it fits, else shortened in the middle,
// so that the start ("Not saved") and the end of the cause stay; the whole text is its tool tip.
class SaveStateLabel : public QLabel {
public:
    using QLabel::QLabel;
    void setFullText(const QString& text)
    {
        m_full = text;
        setToolTip(text);
        updateGeometry();
        fit();
    }
    QSize sizeHint() const override
    {
        const QMargins m = contentsMargins();
        return {fontMetrics().horizontalAdvance(m_full) + m.left() + m.right() + 2 * margin(),
                QLabel::sizeHint().height()};
    }
    QSize minimumSizeHint() const override
    {
        return {fontMetrics().averageCharWidth() * 16, QLabel::minimumSizeHint().height()};
    }

protected:
    void resizeEvent(QResizeEvent* event) override
    {
        QLabel::resizeEvent(event);
        fit();
    }

private:
    void fit()
    {
        setText(fontMetrics().elidedText(m_full, Qt::ElideMiddle, contentsRect().width()));
    }

    QString m_full;
};
}  // namespace

Workstation::Workstation(const FormDescription& form, std::shared_ptr<ZebObjects::Store> store,
                         const Options& options, QWidget* parent)
    : WorkbenchWindow(form, parent), m_store(std::move(store)), m_options(options),
      m_baseTitle(form.title)
{
    setObjectName(QStringLiteral("frmWorkstation"));
    // Opening a job costs the page the user sees; the others are bound after its first paint,
    // one per pass of the event loop, or when first shown.
    setBindPagesWhenShown(true);

    menuBar()->setObjectName(QStringLiteral("mnuMain"));
    menuBar()->setAccessibleName(QStringLiteral("Menu"));
    menuBar()->setAccessibleDescription(QStringLiteral("Opening a job, exporting its package, "
                                                       "showing the diagnostics and quitting"));
    QMenu* file = menuBar()->addMenu(QStringLiteral("&File"));
    file->setObjectName(QStringLiteral("mnuFile"));
    QAction* newJob =
        file->addAction(QStringLiteral("&New Job..."), this, [this] { chooseNewJob(); });
    newJob->setObjectName(QStringLiteral("actNewJob"));
    newJob->setShortcut(QKeySequence::New);
    QAction* open = file->addAction(QStringLiteral("&Open Job..."), this, [this] { chooseJob(); });
    open->setObjectName(QStringLiteral("actOpenJob"));
    open->setShortcut(QKeySequence::Open);
    QAction* duplicate = file->addAction(QStringLiteral("&Duplicate Job..."), this,
                                         [this] { chooseDuplicateJob(); });
    duplicate->setObjectName(QStringLiteral("actDuplicateJob"));
    QAction* properties = file->addAction(QStringLiteral("Job &Properties..."), this,
                                          [this] { chooseJobProperties(); });
    properties->setObjectName(QStringLiteral("actJobProperties"));
    file->addSeparator();
    QAction* importLines = file->addAction(QStringLiteral("&Import Line Items..."), this,
                                           [this] { chooseImportLines(); });
    importLines->setObjectName(QStringLiteral("actImportLines"));
    importLines->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_I));
    QAction* pasteLines = file->addAction(QStringLiteral("Import Line Items from C&lipboard"), this,
                                          [this] { this->pasteLines(); });
    pasteLines->setObjectName(QStringLiteral("actPasteLines"));
    QAction* importCustomers = file->addAction(QStringLiteral("Import &Customers..."), this,
                                               [this] { chooseImportCustomers(); });
    importCustomers->setObjectName(QStringLiteral("actImportCustomers"));
    QAction* directory = file->addAction(QStringLiteral("Customer Di&rectory..."), this,
                                         [this] { chooseDirectory(); });
    directory->setObjectName(QStringLiteral("actCustomerDirectory"));
    QAction* brands = file->addAction(QStringLiteral("Brands and &Manufacturers..."), this,
                                      [this] { chooseBrands(); });
    brands->setObjectName(QStringLiteral("actBrands"));
    QAction* issuers =
        file->addAction(QStringLiteral("Issued &By..."), this, [this] { chooseIssuers(); });
    issuers->setObjectName(QStringLiteral("actIssuers"));
    file->addSeparator();
    QAction* exportPackage =
        file->addAction(QStringLiteral("&Export Package..."), this, [this] { chooseExport(); });
    exportPackage->setObjectName(QStringLiteral("actExportPackage"));
    exportPackage->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_E));
    QAction* issuePackage = file->addAction(QStringLiteral("&Issue Package..."), this, [this] {
        if (HistoryPage* history = historyPage())
            history->chooseIssue();
    });
    issuePackage->setObjectName(QStringLiteral("actIssuePackage"));
    issuePackage->setShortcut(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_I));
    QAction* office =
        file->addAction(QStringLiteral("Office &Database..."), this, [this] { chooseOffice(); });
    office->setObjectName(QStringLiteral("actOfficeDatabase"));
    QAction* letterhead = file->addAction(QStringLiteral("Office &Letterhead..."), this,
                                          [this] { chooseLetterhead(); });
    letterhead->setObjectName(QStringLiteral("actOfficeLetterhead"));
    file->addSeparator();
    QAction* quit = file->addAction(QStringLiteral("&Quit"), this, [this] { close(); });
    quit->setObjectName(QStringLiteral("actQuit"));
    quit->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Q));

    QMenu* view = menuBar()->addMenu(QStringLiteral("&View"));
    view->setObjectName(QStringLiteral("mnuView"));
    QAction* refreshJob = view->addAction(QStringLiteral("&Refresh"), this, [this] { refresh(); });
    refreshJob->setObjectName(QStringLiteral("actRefresh"));
    refreshJob->setShortcut(QKeySequence::Refresh);
    view->addSeparator();
    QAction* diagnostics = diagnosticsDock()->toggleViewAction();
    diagnostics->setObjectName(QStringLiteral("actDiagnostics"));
    diagnostics->setText(QStringLiteral("&Diagnostics"));
    view->addAction(diagnostics);
    addHelpMenu();

    CutSheetDock::install(*this);
    // The cut sheets beside the Line Items page are read in idle time too, after the pages.
    connect(this, &WorkbenchWindow::pagesReady, this, [this] { CutSheetDock::prepare(*this); });

    m_jobLabel = new QLabel(this);
    m_jobLabel->setObjectName(QStringLiteral("lblJob"));
    m_saveLabel = new SaveStateLabel(this);
    m_saveLabel->setObjectName(QStringLiteral("lblSaveState"));
    m_saveLabel->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    statusBar()->addWidget(m_jobLabel);
    statusBar()->addPermanentWidget(m_saveLabel, 1);

    if (m_options.remember) {
        QSettings settings;
        restoreGeometry(settings.value(kGeometryKey).toByteArray());
        restoreState(settings.value(kStateKey).toByteArray());
    }
    m_store->watchOtherWorkstations([this] {
        ++m_automaticRefreshes;
        refreshSoon();
    });
    m_saveState.setOffice(m_store->isServer() ? m_store->path() : QString(), m_store->isReadOnly());
    m_store->watchWrites([this](const ZebObjects::Failure* failure) {
        if (failure)
            m_saveState.writeFailed(failure->Description());
        else
            m_saveState.writeSaved();
        updateSaveStatus();
    });
    updateStatus();
}

Workstation::~Workstation()
{
    m_store->watchWrites(nullptr);
    // The pages' controls are bound to the job's objects: they go first.
    clearPages();
}

void Workstation::openJob(qint64 id)
{
    // The pages go: what is being edited on them is written first.
    finishEdit();
    auto job = m_store->openJob(id);
    WorkbenchData data(*job);
    if (m_options.generatedLineItems >= 0)
        data.generateLineItems(m_options.generatedLineItems);
    const int page = tabs()->currentIndex();
    // Only the page the user sees is bound now; the others in idle time after its first paint,
    // or sooner when they are shown or something reads them.
    holdBinding(true);
    try {
        clearPages();
        m_job = std::move(job);
        // From here the pages show what the office holds; a write while binding them tells again.
        m_saveState.shownFromOffice();
        m_saveState.setPendingEdit(QString());
        setData(data);
        CutSheetDock::bind(*this);
        addHostPages();
        addHistoryPage();
        if (page >= 0 && page < pageCount())
            showPage(page);
    } catch (...) {
        holdBinding(false);
        throw;
    }
    holdBinding(false);
    if (m_options.remember)
        QSettings().setValue(kLastJobKey, m_job->number());
    updateStatus();
}

void Workstation::addHistoryPage()
{
    // A page like the form's: not a stop of its own, scrolled when the window is small.
    auto* scroll = new QScrollArea;
    scroll->setObjectName(QStringLiteral("scrHistory"));
    addPage(-1, scroll, kHistoryPage, [this]() -> QWidget* {
        HistoryPage::Hooks hooks;
        hooks.openFile = m_options.openFile ? m_options.openFile : DesktopOpener::open;
        hooks.saveFile = m_options.saveFile;
        hooks.finishEdit = [this] { finishEdit(); };
        hooks.tell = [this](const QString& text) { statusBar()->showMessage(text, 10000); };
        m_historyPage = new HistoryPage(m_store, m_job, hooks);
        connect(m_historyPage, &QObject::destroyed, this, [this] { m_historyPage = nullptr; });
        // A resubmittal changes the job's purpose and ticks: every page shows them.
        connect(m_historyPage, &HistoryPage::jobChanged, this, [this] { refreshSoon(); });
        return m_historyPage;
    });
}

HistoryPage* Workstation::historyPage()
{
    if (!m_job)
        return nullptr;
    bindPage(tabs()->indexOf(pageNamed(kHistoryPage)));
    return m_historyPage;
}

void Workstation::keepCarbonCopyChoice(QWidget* page)
{
    // The cover letter panel shows "Print Carbon Copy Information" but never writes it; the
    // workstation writes the user's click, so the choice reaches the letters.
    auto* box = page ? page->findChild<QAbstractButton*>(QStringLiteral("chkIncludeCC")) : nullptr;
    if (!box || !m_job)
        return;
    const std::weak_ptr<ZebObjects::StoreJob> job = m_job;
    connect(box, &QAbstractButton::clicked, this, [this, job](bool checked) {
        const auto open = job.lock();
        if (!open || open != m_job)
            return;
        try {
            auto letter = std::dynamic_pointer_cast<ZebObjects::StoreCoverLetter>(
                open->submittal()->CoverLetter());
            if (letter)
                letter->setIncludeCarbonCopy(checked);
            updateStatus();
        } catch (const ZebObjects::Failure& f) {
            logView()->appendPlainText(QStringLiteral("zeb-workbench: ") + f.Description());
            QMessageBox::warning(this, QStringLiteral("Cover Letter Options"), f.Description());
        }
    });
}

qint64 Workstation::startingJob() const
{
    if (m_options.remember)
        if (const qint64 last = jobByNumber(QSettings().value(kLastJobKey).toString()))
            return last;
    return defaultJob(*m_store);
}

qint64 Workstation::defaultJob(const ZebObjects::Store& store)
{
    const QList<ZebObjects::JobSummary> jobs = store.jobs();
    if (jobs.isEmpty())
        return 0;
    for (const ZebObjects::JobSummary& job : jobs)
        if (job.name == kSampleJobName)
            return job.id;
    return jobs.front().id;
}

qint64 Workstation::jobByNumber(const QString& number) const
{
    return jobByNumber(*m_store, number);
}

qint64 Workstation::jobByNumber(const ZebObjects::Store& store, const QString& number)
{
    if (number.isEmpty())
        return 0;
    for (const ZebObjects::JobSummary& job : store.jobs())
        if (job.number == number)
            return job.id;
    return 0;
}

void Workstation::chooseJob()
{
    try {
        JobListDialog dialog(m_store->jobs(), m_job ? m_job->id() : 0, this);
        if (dialog.exec() != QDialog::Accepted || dialog.selectedJobId() == 0)
            return;
        openJob(dialog.selectedJobId());
    } catch (const ZebObjects::Failure& f) {
        logView()->appendPlainText(QStringLiteral("zeb-workbench: ") + f.Description());
        QMessageBox::warning(this, QStringLiteral("Open Job"), f.Description());
    }
}

bool Workstation::refresh()
{
    m_refreshPending = false;
    if (!m_job)
        return false;
    try {
        openJob(m_job->id());
        statusBar()->showMessage(
            QStringLiteral("Refreshed at %1").arg(QTime::currentTime().toString(Qt::ISODate)),
            5000);
        return true;
    } catch (const ZebObjects::Failure& f) {
        logView()->appendPlainText(QStringLiteral("zeb-workbench: ") + f.Description());
        QMessageBox::warning(this, QStringLiteral("Refresh"), f.Description());
        return false;
    }
}

void Workstation::refreshSoon()
{
    if (m_refreshPending)
        return;
    m_refreshPending = true;
    // The pages are rebound only from the main loop: a control whose handler (or whose message
    // box) is running must not lose its objects under it.
    QTimer::singleShot(0, this, [this] {
        if (!m_refreshPending)
            return;
        if (QApplication::activeModalWidget() || QApplication::activePopupWidget()) {
            m_refreshPending = false;
            QTimer::singleShot(250, this, [this] { refreshSoon(); });
            return;
        }
        refresh();
    });
}

bool Workstation::exportPackage(const QString& path)
{
    if (!m_job)
        return false;
    finishEdit();
    // The progress dialog comes with the writing, after any question about what the package lacks.
    std::unique_ptr<QProgressDialog> progress;
    const auto showProgress = [this, &progress](qint32 done, qint32 total) {
        if (!progress) {
            progress = std::make_unique<QProgressDialog>(
                QStringLiteral("Writing the package of job %1...").arg(m_job->number()),
                QStringLiteral("Cancel"), 0, 1, this);
            progress->setObjectName(QStringLiteral("dlgExportProgress"));
            progress->setWindowTitle(QStringLiteral("Export Package"));
            progress->setWindowModality(Qt::WindowModal);
            // Short exports finish before the dialog would be worth showing.
            progress->setMinimumDuration(m_options.exportProgressDelayMs);
        }
        progress->setMaximum(std::max(total, 1));
        progress->setValue(std::min(done, std::max(total, 1)));
        QApplication::processEvents();
        return !progress->wasCanceled();
    };
    // A package that lacks something goes out only when the user says so.
    const auto askIncomplete = [this](const QStringList& gaps) {
        ExportCheckDialog check(m_job->number(), gaps, this);
        return check.exec() == QDialog::Accepted;
    };
    try {
        const PackageExport::Result result =
            PackageExport::write(*m_store, m_job, path, askIncomplete, showProgress);
        if (progress)
            progress->reset();
        const bool written = result.outcome == PackageExport::Outcome::Written;
        statusBar()->showMessage(written ? QStringLiteral("Package written to %1").arg(path)
                                         : QStringLiteral("Export cancelled"),
                                 5000);
        return written;
    } catch (const ZebObjects::Failure& f) {
        if (progress)
            progress->reset();
        logView()->appendPlainText(QStringLiteral("zeb-workbench: ") + f.Description());
        QMessageBox::warning(this, QStringLiteral("Export Package"), f.Description());
        return false;
    }
}

void Workstation::chooseExport()
{
    if (!m_job)
        return;
    // The package shows what the pages show: an edit in progress is written before the file
    // dialog takes the focus.
    finishEdit();
    const QString suggested =
        QDir::home().filePath(QStringLiteral("%1 Submittal.pdf").arg(m_job->number()));
    const QString path = QFileDialog::getSaveFileName(this, QStringLiteral("Export Package"),
                                                      suggested, QStringLiteral("PDF (*.pdf)"));
    if (path.isEmpty() || !exportPackage(path))
        return;
    if (QMessageBox::question(
            this, QStringLiteral("Export Package"),
            QStringLiteral("The package is written to %1.\nOpen it now?").arg(path))
        != QMessageBox::Yes)
        return;
    const std::function<bool(const QString&)> open =
        m_options.openFile ? m_options.openFile : DesktopOpener::open;
    if (open(path))
        return;
    const QString folder = QDir::toNativeSeparators(QFileInfo(path).absolutePath());
    QMessageBox::information(this, QStringLiteral("Export Package"),
                             QStringLiteral("There is no program on this computer that shows PDF "
                                            "files.\nThe package is in the folder %1.")
                                 .arg(folder));
    open(folder);
}

void Workstation::chooseLetterhead()
{
    try {
        LetterheadDialog dialog(m_store->letterhead(), this);
        if (dialog.exec() != QDialog::Accepted)
            return;
        m_store->setLetterhead(dialog.letterhead());
        updateStatus();
    } catch (const ZebObjects::Failure& f) {
        logView()->appendPlainText(QStringLiteral("zeb-workbench: ") + f.Description());
        QMessageBox::warning(this, QStringLiteral("Office Letterhead"), f.Description());
    }
}

void Workstation::chooseOffice()
{
    OfficeSettingsDialog dialog(m_store->path(), this);
    if (dialog.exec() != QDialog::Accepted)
        return;
    OfficeSettingsDialog::saveLocation(dialog.location());
    statusBar()->showMessage(
        QStringLiteral("From the next start the office is %1").arg(dialog.location()), 10000);
}

QString Workstation::jobStatus() const
{
    return m_jobLabel->text();
}

QString Workstation::saveStatus() const
{
    return m_job ? m_saveState.text() : QString();
}

void Workstation::finishEdit()
{
    QWidget* focus = focusWidget();
    if (focus && tabs()->isAncestorOf(focus)) {
        tabs()->tabBar()->setFocus(Qt::OtherFocusReason);
        // Without the tab bar to go to (a window that is not shown), the focus just leaves.
        if (focus->hasFocus())
            focus->clearFocus();
    }
    // While another window is active the focus moves nowhere: a date typed here and not yet
    // handed on is handed on all the same.
    for (auto* date : tabs()->findChildren<ZebSubCtl::DateEdit*>())
        if (date->isEditPending())
            date->finishEdit();
}

void Workstation::followPendingEdits(QWidget* page)
{
    // Asked only when a page is bound and when a field's edit starts or ends, never per write:
    // the walk visits every widget of the bound pages.
    const auto follow = [this] { m_saveState.setPendingEdit(pendingEdit()); };
    follow();
    for (auto* date : page->findChildren<ZebSubCtl::DateEdit*>())
        connect(date, &ZebSubCtl::DateEdit::editPendingChanged, this, [this, follow] {
            follow();
            updateSaveStatus();
        });
}

QString Workstation::pendingEdit() const
{
    for (const auto* date : tabs()->findChildren<ZebSubCtl::DateEdit*>())
        if (date->isEditPending())
            return date->accessibleName();
    return {};
}

void Workstation::updateStatus()
{
    if (!m_job) {
        setWindowTitle(m_baseTitle);
        m_jobLabel->setText(QStringLiteral("No job open"));
        static_cast<SaveStateLabel*>(m_saveLabel)->setFullText(QString());
        return;
    }
    const QString job = QStringLiteral("Job %1 %2").arg(m_job->number(), m_job->name());
    setWindowTitle(QStringLiteral("%1 - %2").arg(m_baseTitle, job));
    m_jobLabel->setText(job);
    updateSaveStatus();
}

void Workstation::updateSaveStatus()
{
    static_cast<SaveStateLabel*>(m_saveLabel)->setFullText(saveStatus());
}

void Workstation::closeEvent(QCloseEvent* event)
{
    finishEdit();
    if (m_options.remember) {
        QSettings settings;
        settings.setValue(kGeometryKey, saveGeometry());
        settings.setValue(kStateKey, saveState());
    }
    QMainWindow::closeEvent(event);
}
