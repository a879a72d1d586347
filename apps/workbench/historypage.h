#pragma once

#include "store/storehistory.h"

#include <QWidget>

#include <functional>
#include <memory>

class QBuffer;
class QLabel;
class QPdfDocument;
class QPdfView;
class QPushButton;
class QSplitter;
class QTreeWidget;
namespace ZebObjects {
class Store;
class StoreJob;
}  // namespace ZebObjects

// The job's history: the revisions issued with their status, dates, overall verdict and how long
// each review took; issuing the next one, recording a review, preparing a resubmittal, and
// showing, opening or exporting an issued revision exactly as it was sent.
class HistoryPage : public QWidget {
    Q_OBJECT
public:
    struct Hooks {
        // Asks where to save a file: (title, suggested path, filter); empty when cancelled.
        std::function<QString(const QString&, const QString&, const QString&)> saveFile;
        // Opens a file for the user; false when nothing on the machine shows it.
        std::function<bool(const QString&)> openFile;
        // Runs before a package is made, so that an edit in progress reaches it.
        std::function<void()> finishEdit;
        // Tells the user something in passing (the status bar).
        std::function<void(const QString&)> tell;
    };

    HistoryPage(std::shared_ptr<ZebObjects::Store> store, std::shared_ptr<ZebObjects::StoreJob> job,
                Hooks hooks, QWidget* parent = nullptr);
    ~HistoryPage() override;

    // Reads the revisions again; keeps the one selected when it is still there.
    void reload();
    // The selected revision's number; -1 when none is selected.
    qint32 selectedRevision() const;
    void selectRevision(qint32 number);
    QList<ZebObjects::IssuedRevision> revisions() const { return m_revisions; }

    // Asks where to write the package and issues the next revision there.
    void chooseIssue();
    // Issues the next revision to path (asking first when the package is incomplete). True when
    // it was recorded and written.
    bool issue(const QString& path);
    void recordReview();
    // Prepares the job for the next revision from the selected one.
    void resubmit();
    void chooseExportRevision();
    void openRevision();
    void chooseExportLog();

signals:
    // The job's own data changed (a resubmittal ticked lines and chose the purpose).
    void jobChanged();

private:
    void makePreview();
    void showSelected();
    void updateButtons();
    void warn(const QString& title, const QString& message);

    std::shared_ptr<ZebObjects::Store> m_store;
    std::shared_ptr<ZebObjects::StoreJob> m_job;
    Hooks m_hooks;
    QList<ZebObjects::IssuedRevision> m_revisions;
    QTreeWidget* m_list = nullptr;
    QLabel* m_summary = nullptr;
    QPushButton* m_review = nullptr;
    QPushButton* m_resubmit = nullptr;
    QPushButton* m_open = nullptr;
    QPushButton* m_export = nullptr;
    QPushButton* m_exportLog = nullptr;
    QSplitter* m_split = nullptr;
    QPdfDocument* m_document = nullptr;
    QPdfView* m_preview = nullptr;
    std::unique_ptr<QBuffer> m_previewBytes;
};
