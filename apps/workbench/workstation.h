#pragma once

#include "savestate.h"
#include "workbenchwindow.h"

#include <functional>
#include <memory>

class HistoryPage;
class LineItemEditor;
class QLabel;
struct CsvTable;
namespace ZebObjects {
class Failure;
class Store;
class StoreJob;
}  // namespace ZebObjects

// The submittal workstation: the office's store, one job open at a time with its pages bound to
// the job's objects, menus to open a job, refresh it and quit, and a status bar with the job and
// the save state. On an office server, another workstation's commit refreshes the open job. Its
// size and place, and the job last open, are kept between runs.
class Workstation : public WorkbenchWindow {
    Q_OBJECT
public:
    struct Options {
        // Keeps and restores the window's size and place and the job last open; off when a
        // rendering of the form's own size and the sample job is wanted.
        bool remember = true;
        // When not negative, a generated job of this many lines is shown in place of the job's.
        int generatedLineItems = -1;
        // How long an export runs before its progress dialog shows.
        int exportProgressDelayMs = 500;
        // Opens a file or folder for the user; false when nothing on the machine shows it.
        // Unset: the desktop's program for its type.
        std::function<bool(const QString& path)> openFile;
        // Asks where to save a file (title, suggested path, filter); empty when cancelled.
        // Unset: the file dialog.
        std::function<QString(const QString&, const QString&, const QString&)> saveFile;
    };

    Workstation(const FormDescription& form, std::shared_ptr<ZebObjects::Store> store,
                const Options& options, QWidget* parent = nullptr);
    ~Workstation() override;

    // Opens the job: the page the user sees is bound to its objects at once, every other page
    // in idle time after its first paint, or sooner when it is shown or read (bindPage,
    // bindAllPages, lineItemEditor, historyPage). A job not in the store fails with 35601.
    void openJob(qint64 id);
    // The job to start with: the one last open when it still exists, else the office's sample
    // job, else the first; 0 for an office without jobs.
    qint64 startingJob() const;
    // The job with this number; 0 when there is none.
    qint64 jobByNumber(const QString& number) const;
    static qint64 jobByNumber(const ZebObjects::Store& store, const QString& number);
    // The office's sample job, else its first; 0 for an office without jobs.
    static qint64 defaultJob(const ZebObjects::Store& store);
    std::shared_ptr<ZebObjects::StoreJob> job() const { return m_job; }
    std::shared_ptr<ZebObjects::Store> store() const { return m_store; }
    // Asks for a job in the job list and opens it.
    void chooseJob();
    // Writes the open job's package to path, showing a progress dialog that can cancel it. A
    // package that lacks something (PackageGenerator::Check) is written only when the user
    // answers "Export Anyway" in the dialog that lists what it lacks. True when the file is
    // written; a failure is shown and logged, and leaves no file behind.
    bool exportPackage(const QString& path);
    // Asks where to write the package, writes it and offers to open it; without a program to
    // show it, says so and shows the folder that holds it.
    void chooseExport();
    // The open job's History page, bound when it was not yet; null without a job.
    HistoryPage* historyPage();
    // Shows the office's letterhead (name, address, logo) for editing and keeps what is accepted.
    void chooseLetterhead();
    // Asks where the office is (a file or the office's server) for the next start.
    void chooseOffice();
    // File > New Job...: asks for the new job's number, name, site and people, makes it and
    // opens it.
    void chooseNewJob();
    // File > Duplicate Job...: a new job like the open one (its lines when asked), opened.
    void chooseDuplicateJob();
    // File > Job Properties...: the open job's number, name, site, people, archived.
    void chooseJobProperties();
    // Shows the rows of table in the import dialog and, when the user imports them, writes them
    // to the open job in one transaction with the column mapping the office keeps. True when
    // written.
    bool importLines(const CsvTable& table, const QString& source);
    // File > Import Line Items...: from a CSV file. Edit > Paste Line Items: from the clipboard.
    void chooseImportLines();
    void pasteLines();
    // The Line Items Editor page of the open job, bound when it was not yet; null when no job is
    // open.
    LineItemEditor* lineItemEditor();
    // The same for the office's customer directory.
    bool importCustomers(const CsvTable& table, const QString& source);
    void chooseImportCustomers();
    // Help > Keyboard Shortcuts: every command's keys, the menus' and the editor's.
    QList<QPair<QString, QString>> shortcuts() const;
    void showShortcuts();
    // File > Issued By...: the office's salespeople offered under "Issued By".
    void chooseIssuers();
    // File > Customer Directory...: the office's customers to add, edit, merge and import.
    void chooseDirectory();
    // File > Brands and Manufacturers...: the office's brands and who makes each.
    void chooseBrands();

    // Opens the open job again, so that every page shows what the store holds now (other
    // workstations' changes included). A failure is shown and logged; the pages stay as they
    // were. Answers whether the job was opened again.
    bool refresh();
    // Refreshes once the user is between actions: not while a dialog or message box is open.
    // Several calls before that make one refresh.
    void refreshSoon();
    // Refreshes made because another workstation committed a change.
    int automaticRefreshes() const { return m_automaticRefreshes; }

    QString jobStatus() const;
    QString saveStatus() const;
    // Lets the control that has the focus finish its edit, as leaving it would (a date is
    // written when its editor is left): the focus moves to the page tabs.
    void finishEdit();

protected:
    void closeEvent(QCloseEvent* event) override;
    void pageBound(int index) override;

private:
    void addHostPages();
    // The Line Items page's line above its list, when the job has more lines than it shows.
    void noteLines(int index);
    void addHelpMenu();
    void lineItemsChanged();
    void updateDisplayNote();
    void showFailure(const QString& title, const ZebObjects::Failure& failure);
    void updateStatus();
    void updateSaveStatus();
    void keepCarbonCopyChoice(QWidget* page);
    void addHistoryPage();
    // What is typed but not written yet, as the status bar names it; empty when nothing is.
    QString pendingEdit() const;
    void followPendingEdits(QWidget* page);

    std::shared_ptr<ZebObjects::Store> m_store;
    std::shared_ptr<ZebObjects::StoreJob> m_job;
    Options m_options;
    QString m_baseTitle;
    QLabel* m_jobLabel = nullptr;
    QLabel* m_saveLabel = nullptr;
    SaveState m_saveState;
    bool m_refreshPending = false;
    int m_automaticRefreshes = 0;
    // Goes with the pages; null between them and until the History page is bound.
    HistoryPage* m_historyPage = nullptr;
    // The Line Items page carries the note that it does not show every line.
    bool m_linesNoted = false;
};
