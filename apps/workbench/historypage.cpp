#include "historypage.h"

#include "contracts/failure.h"
#include "contracts/submittal.h"
#include "exportcheckdialog.h"
#include "packageissuer.h"
#include "reviewdialog.h"
#include "store/store.h"
#include "store/storejob.h"
#include "store/storesubmittal.h"

#include <QApplication>
#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QMessageBox>
#include <QPdfDocument>
#include <QPdfView>
#include <QProgressDialog>
#include <QPushButton>
#include <QSaveFile>
#include <QScrollBar>
#include <QSplitter>
#include <QStandardPaths>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace {

// The purpose option of a resubmittal on the general information panel.
constexpr qint16 kResubmittalPurpose = 4;

enum Column {
    RevisionColumn,
    StatusColumn,
    SentColumn,
    ReturnedColumn,
    ReviewColumn,
    VerdictColumn,
    IssuedByColumn,
    PurposeColumn,
    LinesColumn,
    ShaColumn,
    ColumnCount
};

QString reviewTime(const ZebObjects::IssuedRevision& r)
{
    const qint64 days = r.reviewDays();
    if (days < 0)
        return QString();
    return days == 1 ? QStringLiteral("1 day") : QStringLiteral("%1 days").arg(days);
}

}  // namespace

HistoryPage::HistoryPage(std::shared_ptr<ZebObjects::Store> store,
                         std::shared_ptr<ZebObjects::StoreJob> job, Hooks hooks, QWidget* parent)
    : QWidget(parent), m_store(std::move(store)), m_job(std::move(job)), m_hooks(std::move(hooks))
{
    setObjectName(QStringLiteral("pageHistory"));
    setAccessibleName(QStringLiteral("History"));
    setAccessibleDescription(QStringLiteral(
        "The revisions of the job's submittal that were issued, and what came back"));

    auto* layout = new QVBoxLayout(this);
    auto* heading = new QLabel(QStringLiteral("Issued Revisions"), this);
    heading->setObjectName(QStringLiteral("lblHistoryHeading"));
    QFont bold = heading->font();
    bold.setBold(true);
    heading->setFont(bold);
    layout->addWidget(heading);
    m_summary = new QLabel(this);
    m_summary->setObjectName(QStringLiteral("lblHistorySummary"));
    m_summary->setWordWrap(true);
    layout->addWidget(m_summary);

    auto* split = new QSplitter(Qt::Vertical, this);
    split->setObjectName(QStringLiteral("splHistory"));
    m_list = new QTreeWidget(split);
    m_list->setObjectName(QStringLiteral("lsvRevisions"));
    m_list->setAccessibleName(QStringLiteral("Issued revisions"));
    m_list->setAccessibleDescription(
        QStringLiteral("Each revision with its status, the dates it was sent and returned, how "
                       "long the review took and the overall verdict"));
    m_list->setRootIsDecorated(false);
    m_list->setUniformRowHeights(true);
    m_list->setAllColumnsShowFocus(true);
    m_list->setHeaderLabels({QStringLiteral("Revision"), QStringLiteral("Status"),
                             QStringLiteral("Sent"), QStringLiteral("Returned"),
                             QStringLiteral("Review Time"), QStringLiteral("Verdict"),
                             QStringLiteral("Issued By"), QStringLiteral("Purpose"),
                             QStringLiteral("Lines"), QStringLiteral("SHA-256")});
    connect(m_list, &QTreeWidget::currentItemChanged, this, [this] {
        showSelected();
        updateButtons();
    });
    m_split = split;
    m_document = new QPdfDocument(this);
    m_list->verticalScrollBar()->setAccessibleName(
        QStringLiteral("Scroll the revisions up and down"));
    m_list->horizontalScrollBar()->setAccessibleName(
        QStringLiteral("Scroll the revisions sideways"));
    layout->addWidget(split, 1);

    auto* buttons = new QHBoxLayout;
    const auto button = [&](const QString& name, const QString& caption,
                            void (HistoryPage::*slot)()) {
        auto* b = new QPushButton(caption, this);
        b->setObjectName(name);
        connect(b, &QPushButton::clicked, this, slot);
        buttons->addWidget(b);
        return b;
    };
    button(QStringLiteral("cmdIssuePackage"), QStringLiteral("&Issue Package..."),
           &HistoryPage::chooseIssue);
    m_review = button(QStringLiteral("cmdRecordReview"), QStringLiteral("Record &Review..."),
                      &HistoryPage::recordReview);
    m_resubmit =
        button(QStringLiteral("cmdResubmit"), QStringLiteral("Re&submit"), &HistoryPage::resubmit);
    m_open = button(QStringLiteral("cmdOpenRevision"), QStringLiteral("&Open"),
                    &HistoryPage::openRevision);
    m_export = button(QStringLiteral("cmdExportRevision"), QStringLiteral("E&xport Revision..."),
                      &HistoryPage::chooseExportRevision);
    buttons->addStretch(1);
    m_exportLog = button(QStringLiteral("cmdExportLog"), QStringLiteral("Export &Log as CSV..."),
                         &HistoryPage::chooseExportLog);
    layout->addLayout(buttons);

    if (!m_hooks.saveFile)
        m_hooks.saveFile = [this](const QString& title, const QString& suggested,
                                  const QString& filter) {
            return QFileDialog::getSaveFileName(this, title, suggested, filter);
        };
    reload();
}

HistoryPage::~HistoryPage()
{
    m_document->close();
}

void HistoryPage::warn(const QString& title, const QString& message)
{
    QMessageBox::warning(this, title, message);
}

void HistoryPage::reload()
{
    const qint32 selected = selectedRevision();
    try {
        m_revisions = m_job->history()->revisions();
    } catch (const ZebObjects::Failure& f) {
        m_revisions.clear();
        m_summary->setText(f.Description());
    }
    m_list->clear();
    for (const auto& r : std::as_const(m_revisions)) {
        auto* item = new QTreeWidgetItem(m_list);
        item->setData(RevisionColumn, Qt::UserRole, r.number);
        item->setText(RevisionColumn, QString::number(r.number));
        item->setText(StatusColumn, ZebObjects::IssuedRevision::statusText(r.status));
        item->setText(SentColumn, QLocale().toString(r.sent(), QLocale::ShortFormat));
        item->setText(ReturnedColumn, r.returned.isValid()
                                          ? QLocale().toString(r.returned, QLocale::ShortFormat)
                                          : QString());
        item->setText(ReviewColumn, reviewTime(r));
        item->setText(VerdictColumn, r.verdict);
        item->setText(IssuedByColumn, r.issuedBy);
        item->setText(PurposeColumn, r.purpose);
        item->setText(LinesColumn, QString::number(r.lineCount));
        item->setText(ShaColumn, r.sha256.left(16));
        item->setToolTip(ShaColumn, r.sha256);
    }
    for (int c = 0; c < ColumnCount; ++c)
        m_list->resizeColumnToContents(c);
    m_summary->setText(m_revisions.isEmpty()
                           ? QStringLiteral("No revision of job %1 has been issued yet. File > "
                                            "Issue Package... issues revision 0.")
                                 .arg(m_job->number())
                           : QStringLiteral("Job %1: %2 issued, the next is revision %3.")
                                 .arg(m_job->number())
                                 .arg(m_revisions.size() == 1
                                          ? QStringLiteral("1 revision")
                                          : QStringLiteral("%1 revisions").arg(m_revisions.size()))
                                 .arg(m_revisions.last().number + 1));
    if (!m_revisions.isEmpty())
        selectRevision(selected >= 0 ? selected : m_revisions.last().number);
    showSelected();
    updateButtons();
}

qint32 HistoryPage::selectedRevision() const
{
    const QTreeWidgetItem* item = m_list->currentItem();
    return item ? item->data(RevisionColumn, Qt::UserRole).toInt() : -1;
}

void HistoryPage::selectRevision(qint32 number)
{
    for (int i = 0; i < m_list->topLevelItemCount(); ++i)
        if (m_list->topLevelItem(i)->data(RevisionColumn, Qt::UserRole).toInt() == number)
            m_list->setCurrentItem(m_list->topLevelItem(i));
}

void HistoryPage::updateButtons()
{
    const bool any = selectedRevision() >= 0;
    m_review->setEnabled(any);
    m_open->setEnabled(any);
    m_export->setEnabled(any);
    // Only the latest revision is answered by the next one.
    m_resubmit->setEnabled(any && selectedRevision() == m_revisions.last().number);
    m_exportLog->setEnabled(!m_revisions.isEmpty());
}

// Made with the first revision to show: a job that has issued nothing needs no viewer.
void HistoryPage::makePreview()
{
    if (m_preview)
        return;
    m_preview = new QPdfView(m_split);
    m_preview->setObjectName(QStringLiteral("pdfRevisionPreview"));
    m_preview->setAccessibleName(QStringLiteral("Preview of the selected revision as it was sent"));
    m_preview->setDocument(m_document);
    m_preview->setPageMode(QPdfView::PageMode::MultiPage);
    m_preview->setZoomMode(QPdfView::ZoomMode::FitToWidth);
    m_preview->verticalScrollBar()->setAccessibleName(
        QStringLiteral("Scroll the preview up and down"));
    m_preview->horizontalScrollBar()->setAccessibleName(
        QStringLiteral("Scroll the preview sideways"));
    m_split->setStretchFactor(0, 1);
    m_split->setStretchFactor(1, 2);
}

void HistoryPage::showSelected()
{
    m_document->close();
    m_previewBytes.reset();
    const qint32 number = selectedRevision();
    if (number < 0)
        return;
    makePreview();
    try {
        m_previewBytes = std::make_unique<QBuffer>();
        m_previewBytes->setData(m_job->history()->pdf(number));
        m_previewBytes->open(QIODevice::ReadOnly);
        m_document->load(m_previewBytes.get());
    } catch (const ZebObjects::Failure& f) {
        m_summary->setText(f.Description());
    }
}

void HistoryPage::chooseIssue()
{
    if (m_hooks.finishEdit)
        m_hooks.finishEdit();
    const qint32 next = m_revisions.isEmpty() ? 0 : m_revisions.last().number + 1;
    const QString suggested = QDir::home().filePath(
        QStringLiteral("%1 Submittal Revision %2.pdf").arg(m_job->number()).arg(next));
    const QString path =
        m_hooks.saveFile(QStringLiteral("Issue Package"), suggested, QStringLiteral("PDF (*.pdf)"));
    if (!path.isEmpty())
        issue(path);
}

bool HistoryPage::issue(const QString& path)
{
    if (m_hooks.finishEdit)
        m_hooks.finishEdit();
    PackageIssuer issuer(m_store, m_job);
    try {
        const QStringList gaps = issuer.gaps();
        if (!gaps.isEmpty()) {
            ExportCheckDialog check(m_job->number(), gaps, this);
            if (check.exec() != QDialog::Accepted)
                return false;
        }
    } catch (const ZebObjects::Failure& f) {
        warn(QStringLiteral("Issue Package"), f.Description());
        return false;
    }
    QProgressDialog progress(
        QStringLiteral("Issuing the package of job %1...").arg(m_job->number()),
        QStringLiteral("Cancel"), 0, 1, this);
    progress.setObjectName(QStringLiteral("dlgIssueProgress"));
    progress.setWindowTitle(QStringLiteral("Issue Package"));
    progress.setWindowModality(Qt::WindowModal);
    progress.setMinimumDuration(500);
    issuer.setProgress([&progress](qint32 done, qint32 total) {
        progress.setMaximum(std::max(total, 1));
        progress.setValue(std::min(done, std::max(total, 1)));
        QApplication::processEvents();
        return !progress.wasCanceled();
    });
    bool issued = false;
    try {
        issued = issuer.issue(path);
    } catch (const ZebObjects::Failure& f) {
        progress.reset();
        warn(QStringLiteral("Issue Package"), f.Description());
        return false;
    }
    progress.reset();
    if (!issued) {
        if (m_hooks.tell)
            m_hooks.tell(QStringLiteral("Issue cancelled: nothing was recorded"));
        return false;
    }
    reload();
    selectRevision(issuer.issued().number);
    if (m_hooks.tell)
        m_hooks.tell(QStringLiteral("Revision %1 issued to %2 (SHA-256 %3)")
                         .arg(issuer.issued().number)
                         .arg(path, issuer.issued().sha256));
    return true;
}

void HistoryPage::recordReview()
{
    const qint32 number = selectedRevision();
    if (number < 0)
        return;
    makePreview();
    try {
        const auto history = m_job->history();
        ReviewDialog dialog(history->revision(number), history->lines(number), this);
        if (dialog.exec() != QDialog::Accepted)
            return;
        history->recordReview(number, dialog.reviews(), dialog.returned(), dialog.note());
    } catch (const ZebObjects::Failure& f) {
        warn(QStringLiteral("Record Review"), f.Description());
        return;
    }
    reload();
    if (m_hooks.tell)
        m_hooks.tell(QStringLiteral("Review of revision %1 recorded").arg(number));
}

void HistoryPage::resubmit()
{
    const qint32 number = selectedRevision();
    if (number < 0)
        return;
    qint32 ticked = 0;
    try {
        const auto submittal = m_job->submittal();
        submittal->setSubmittalPurpose(submittal->SelectPurpose(kResubmittalPurpose));
        ticked = m_job->history()->tickForResubmittal(number);
    } catch (const ZebObjects::Failure& f) {
        warn(QStringLiteral("Resubmit"), f.Description());
        return;
    }
    if (m_hooks.tell)
        m_hooks.tell(
            QStringLiteral("Revision %1 is prepared from revision %2: %3 ticked for resubmittal; "
                           "tick any other line to send it again, then issue the package")
                .arg(number + 1)
                .arg(number)
                .arg(ticked == 1 ? QStringLiteral("1 line")
                                 : QStringLiteral("%1 lines").arg(ticked)));
    emit jobChanged();
}

void HistoryPage::chooseExportRevision()
{
    const qint32 number = selectedRevision();
    if (number < 0)
        return;
    const QString suggested = QDir::home().filePath(
        QStringLiteral("%1 Submittal Revision %2.pdf").arg(m_job->number()).arg(number));
    const QString path = m_hooks.saveFile(QStringLiteral("Export Revision"), suggested,
                                          QStringLiteral("PDF (*.pdf)"));
    if (path.isEmpty())
        return;
    try {
        PackageIssuer::writeRevision(*m_job, number, path);
    } catch (const ZebObjects::Failure& f) {
        warn(QStringLiteral("Export Revision"), f.Description());
        return;
    }
    if (m_hooks.tell)
        m_hooks.tell(QStringLiteral("Revision %1 written to %2").arg(number).arg(path));
}

void HistoryPage::openRevision()
{
    const qint32 number = selectedRevision();
    if (number < 0)
        return;
    // A copy the user cannot change by mistake: the revision stays as it was sent.
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::TempLocation);
    const QString path = QDir(folder).filePath(
        QStringLiteral("%1 Submittal Revision %2.pdf").arg(m_job->number()).arg(number));
    try {
        QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner);
        PackageIssuer::writeRevision(*m_job, number, path);
        QFile::setPermissions(path, QFile::ReadOwner | QFile::ReadGroup | QFile::ReadOther);
    } catch (const ZebObjects::Failure& f) {
        warn(QStringLiteral("Open Revision"), f.Description());
        return;
    }
    if (m_hooks.openFile && !m_hooks.openFile(path))
        QMessageBox::information(this, QStringLiteral("Open Revision"),
                                 QStringLiteral("There is no program on this computer that shows "
                                                "PDF files.\nThe revision is in the folder %1.")
                                     .arg(QDir::toNativeSeparators(folder)));
}

void HistoryPage::chooseExportLog()
{
    const QString suggested =
        QDir::home().filePath(QStringLiteral("%1 Submittal Log.csv").arg(m_job->number()));
    const QString path =
        m_hooks.saveFile(QStringLiteral("Export Log"), suggested, QStringLiteral("CSV (*.csv)"));
    if (path.isEmpty())
        return;
    QSaveFile file(path);
    QByteArray csv;
    try {
        csv = m_job->history()->csv();
    } catch (const ZebObjects::Failure& f) {
        warn(QStringLiteral("Export Log"), f.Description());
        return;
    }
    if (!file.open(QIODevice::WriteOnly) || file.write(csv) != csv.size() || !file.commit()) {
        warn(QStringLiteral("Export Log"),
             QStringLiteral("Cannot write \"%1\": %2").arg(path, file.errorString()));
        return;
    }
    if (m_hooks.tell)
        m_hooks.tell(
            QStringLiteral("The log of job %1 is written to %2").arg(m_job->number(), path));
}
