#pragma once

#include "zebstore_export.h"

#include <QByteArray>
#include <QDate>
#include <QDateTime>
#include <QList>
#include <QSet>
#include <QString>
#include <QStringList>

#include <functional>
#include <memory>

namespace ZebObjects {

class StoreConnection;

// What came back from the architect or engineer for one fixture line.
namespace ReviewAction {
inline const QString Approved = QStringLiteral("Approved");
inline const QString ApprovedAsNoted = QStringLiteral("Approved As Noted");
inline const QString ReviseAndResubmit = QStringLiteral("Revise And Resubmit");
inline const QString Rejected = QStringLiteral("Rejected");
inline const QString NotReviewed = QStringLiteral("Not Reviewed");
// In the order a reviewer's stamp lists them.
ZEBSTORE_EXPORT QStringList all();
// The verdict of a whole package from its lines' actions: any rejection or revise-and-resubmit
// makes it "Revise And Resubmit"; else any "Approved As Noted" makes it that; else any
// "Approved" makes it "Approved"; else it was "Not Reviewed".
ZEBSTORE_EXPORT QString overall(const QStringList& actions);
}  // namespace ReviewAction

// One line of a job as a package printed it.
struct ZEBSTORE_EXPORT IssuedLine {
    // The job's line it was; 0 when the line was not kept in the office's store.
    qint64 lineItemId = 0;
    // The number the package printed.
    qint32 number = 0;
    QString quantity;
    QString type;
    QString brand;
    QString catalogNumber;
    QString description;
    QString group;
    bool mto = false;
    QString comment;
    // The review: one of ReviewAction, empty until a review is recorded.
    QString action;
    QString note;

    // True when the printed facts of the two are the same (the review is not compared).
    bool samePrint(const IssuedLine& other) const;
    // "Line 4: A2, 12 x CAT-100" for lists.
    QString summary() const;
};

// One issued revision of a job's submittal. The PDF it went out as never changes.
struct ZEBSTORE_EXPORT IssuedRevision {
    enum class Status { Sent = 0, Returned = 1, Closed = 2 };

    qint32 number = 0;
    QDateTime issuedAt;
    QString issuedBy;
    QString purpose;
    QStringList recipients;
    // The job's settings at the time (flags, columns, letter options), as JSON.
    QByteArray settings;
    QString sha256;
    qint64 pdfSize = 0;
    Status status = Status::Sent;
    // Invalid until a review is recorded.
    QDate returned;
    QString verdict;
    QString reviewNote;
    qint32 lineCount = 0;

    // The date it was sent, on this workstation's calendar.
    QDate sent() const { return issuedAt.toLocalTime().date(); }
    // Days from sent to returned; -1 while it is out.
    qint64 reviewDays() const { return returned.isValid() ? sent().daysTo(returned) : -1; }
    static QString statusText(Status status);
};

// What changed in the ticked lines since a revision.
struct RevisionChanges {
    // The revision compared with.
    qint32 since = -1;
    // Numbers of the lines now ticked that the revision did not print, or printed otherwise.
    QSet<qint32> changedLines;
    // The revision's lines the job no longer has, as summaries.
    QStringList removedLines;
};

// The issued revisions of one job and their reviews, in the office's store. Issuing takes its
// number under the office's write lock, so two workstations issuing at once get n and n + 1;
// the number is also unique in the table.
class ZEBSTORE_EXPORT StoreHistory {
public:
    StoreHistory(std::shared_ptr<StoreConnection> db, qint64 jobId);

    // The number the next issue gets, as the store holds it now.
    qint32 nextRevision() const;
    QList<IssuedRevision> revisions() const;
    // A revision the job does not have fails with 35601.
    IssuedRevision revision(qint32 number) const;
    QByteArray pdf(qint32 number) const;
    QList<IssuedLine> lines(qint32 number) const;
    // The job's ticked lines now, numbered as the package prints them.
    QList<IssuedLine> currentLines() const;
    // The changes of the ticked lines since revision `since` (none for a job without it).
    RevisionChanges changesSince(qint32 since) const;

    // Makes the package for a revision number and records it as issued, in one transaction with
    // the package's bytes. makePdf is called with the number the revision will get; when another
    // workstation took that number meanwhile it is called again with the next one. The earlier
    // revisions that came back are closed. Answers the revision recorded.
    using PdfMaker = std::function<QByteArray(qint32 revision)>;
    IssuedRevision issue(const PdfMaker& makePdf,
                         const QDateTime& when = QDateTime::currentDateTimeUtc());

    // Records the review of a revision: the action and note of each line (by printed number;
    // a line not named keeps what it had), the date it came back and the reviewer's note. The
    // revision becomes Returned and takes the overall verdict of its lines. An action not of
    // ReviewAction fails with 5, a line number the revision did not print with 35601.
    struct LineReview {
        qint32 number = 0;
        QString action;
        QString note;
    };
    void recordReview(qint32 number, const QList<LineReview>& reviews, const QDate& returned,
                      const QString& note);

    // Ticks the job's lines for a resubmittal of revision `from`: lines approved (as submitted or
    // as noted) unticked, lines to revise, rejected or not reviewed ticked, lines the revision
    // did not print left as they are. One transaction. Answers the lines ticked.
    qint32 tickForResubmittal(qint32 from);

    // The log of every revision as CSV, with a header line.
    QByteArray csv() const;

private:
    qint64 submittalId() const;
    qint64 revisionId(qint32 number) const;
    QByteArray settingsSnapshot() const;

    std::shared_ptr<StoreConnection> m_db;
    qint64 m_job;
};

}  // namespace ZebObjects
