#include "store/storehistory.h"

#include "contracts/failure.h"
#include "store/storeconnection.h"

#include <QCryptographicHash>
#include <QHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <csv.h>

#include <algorithm>

namespace ZebObjects {

namespace {

const QString kSource = QStringLiteral("ZebObjects.History");

// Thrown inside the issuing transaction when another workstation took the number the package
// was made for; the transaction is rolled back and the package made again.
struct NumberTaken {
    qint32 next = 0;
};

const QString kLineColumns = QStringLiteral(
    "line_item_id, number, quantity, type, brand, catalog_number, description, group_code, mto, "
    "comment, action, note");

IssuedLine lineFrom(const QVariantList& r)
{
    IssuedLine l;
    l.lineItemId = r[0].toLongLong();
    l.number = r[1].toInt();
    l.quantity = r[2].toString();
    l.type = r[3].toString();
    l.brand = r[4].toString();
    l.catalogNumber = r[5].toString();
    l.description = r[6].toString();
    l.group = r[7].toString();
    l.mto = r[8].toBool();
    l.comment = r[9].toString();
    l.action = r[10].toString();
    l.note = r[11].toString();
    return l;
}

const QString kRevisionColumns = QStringLiteral(
    "r.revision, r.issued_at, r.issued_by, r.purpose, r.recipients, r.settings, r.sha256, "
    "r.pdf_size, r.status, r.returned_date, r.verdict, r.review_note, "
    "(SELECT COUNT(*) FROM issued_lines l WHERE l.revision_id = r.id)");

IssuedRevision revisionFrom(const QVariantList& r)
{
    IssuedRevision v;
    v.number = r[0].toInt();
    v.issuedAt = QDateTime::fromString(r[1].toString(), Qt::ISODate);
    v.issuedBy = r[2].toString();
    v.purpose = r[3].toString();
    v.recipients = r[4].toString().split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    v.settings = r[5].toString().toUtf8();
    v.sha256 = r[6].toString();
    v.pdfSize = r[7].toLongLong();
    v.status = IssuedRevision::Status(r[8].toInt());
    v.returned = QDate::fromString(r[9].toString(), Qt::ISODate);
    v.verdict = r[10].toString();
    v.reviewNote = r[11].toString();
    v.lineCount = r[12].toInt();
    return v;
}

Failure noRevision(qint32 number)
{
    return Failure(ErrorNumber::ElementNotFound, kSource,
                   QStringLiteral("Element not found: the job has no revision %1").arg(number));
}

QByteArray csvField(const QString& text)
{
    const QByteArray utf8 = text.toUtf8();
    QByteArray out(utf8.size() * 2 + 2, Qt::Uninitialized);
    out.resize(qsizetype(csv_write(out.data(), std::size_t(out.size()), utf8.constData(),
                                   std::size_t(utf8.size()))));
    return out;
}

}  // namespace

QStringList ReviewAction::all()
{
    return {Approved, ApprovedAsNoted, ReviseAndResubmit, Rejected, NotReviewed};
}

QString ReviewAction::overall(const QStringList& actions)
{
    if (actions.contains(Rejected) || actions.contains(ReviseAndResubmit))
        return ReviseAndResubmit;
    if (actions.contains(ApprovedAsNoted))
        return ApprovedAsNoted;
    if (actions.contains(Approved))
        return Approved;
    return NotReviewed;
}

bool IssuedLine::samePrint(const IssuedLine& o) const
{
    return quantity == o.quantity && type == o.type && brand == o.brand
           && catalogNumber == o.catalogNumber && description == o.description && group == o.group
           && mto == o.mto && comment == o.comment;
}

QString IssuedLine::summary() const
{
    QString s = QStringLiteral("Line %1:").arg(number);
    if (!type.isEmpty())
        s += QStringLiteral(" Type ") + type + QLatin1Char(',');
    s += QStringLiteral(" %1 x %2")
             .arg(quantity, catalogNumber.isEmpty() ? description : catalogNumber);
    return s;
}

QString IssuedRevision::statusText(Status status)
{
    switch (status) {
    case Status::Sent: return QStringLiteral("Sent");
    case Status::Returned: return QStringLiteral("Returned");
    case Status::Closed: return QStringLiteral("Closed");
    }
    return QString();
}

StoreHistory::StoreHistory(std::shared_ptr<StoreConnection> db, qint64 jobId)
    : m_db(std::move(db)), m_job(jobId)
{ }

qint64 StoreHistory::submittalId() const
{
    return m_db->value(QStringLiteral("SELECT id FROM submittals WHERE job_id = ?"), {m_job})
        .toLongLong();
}

qint32 StoreHistory::nextRevision() const
{
    return m_db
        ->value(QStringLiteral("SELECT COALESCE(MAX(revision), -1) + 1 FROM issued_revisions "
                               "WHERE job_id = ?"),
                {m_job})
        .toInt();
}

QList<IssuedRevision> StoreHistory::revisions() const
{
    QList<IssuedRevision> out;
    for (const QVariantList& r :
         m_db->rows(QStringLiteral("SELECT %1 FROM issued_revisions r WHERE r.job_id = ? "
                                   "ORDER BY r.revision")
                        .arg(kRevisionColumns),
                    {m_job}))
        out << revisionFrom(r);
    return out;
}

qint64 StoreHistory::revisionId(qint32 number) const
{
    const QVariant id = m_db->value(
        QStringLiteral("SELECT id FROM issued_revisions WHERE job_id = ? AND revision = ?"),
        {m_job, number});
    if (!id.isValid())
        throw noRevision(number);
    return id.toLongLong();
}

IssuedRevision StoreHistory::revision(qint32 number) const
{
    const QVariantList r = m_db->row(
        QStringLiteral("SELECT %1 FROM issued_revisions r WHERE r.job_id = ? AND r.revision = ?")
            .arg(kRevisionColumns),
        {m_job, number});
    if (r.isEmpty())
        throw noRevision(number);
    return revisionFrom(r);
}

QByteArray StoreHistory::pdf(qint32 number) const
{
    const QVariant bytes = m_db->value(
        QStringLiteral("SELECT pdf FROM issued_revisions WHERE job_id = ? AND revision = ?"),
        {m_job, number});
    if (!bytes.isValid())
        throw noRevision(number);
    return bytes.toByteArray();
}

QList<IssuedLine> StoreHistory::lines(qint32 number) const
{
    const qint64 id = revisionId(number);
    QList<IssuedLine> out;
    for (const QVariantList& r : m_db->rows(
             QStringLiteral("SELECT %1 FROM issued_lines WHERE revision_id = ? ORDER BY number")
                 .arg(kLineColumns),
             {id}))
        out << lineFrom(r);
    return out;
}

QList<IssuedLine> StoreHistory::currentLines() const
{
    QList<IssuedLine> out;
    qint32 number = 0;
    for (const QVariantList& r : m_db->rows(
             QStringLiteral("SELECT l.id, l.selected, l.quantity, l.type, l.brand, "
                            "l.catalog_number, l.description, l.group_code, l.mto, c.text "
                            "FROM line_items l LEFT JOIN line_item_comments c ON "
                            "c.line_item_id = l.id WHERE l.submittal_id = ? ORDER BY l.position"),
             {submittalId()})) {
        ++number;
        if (!r[1].toBool())
            continue;
        IssuedLine l;
        l.lineItemId = r[0].toLongLong();
        l.number = number;
        l.quantity = QString::number(r[2].toLongLong());
        l.type = r[3].toString();
        l.brand = r[4].toString();
        l.catalogNumber = r[5].toString();
        l.description = r[6].toString();
        l.group = r[7].toString();
        l.mto = r[8].toBool();
        l.comment = r[9].toString();
        out << l;
    }
    return out;
}

RevisionChanges StoreHistory::changesSince(qint32 since) const
{
    RevisionChanges changes;
    const QVariant has = m_db->value(
        QStringLiteral("SELECT id FROM issued_revisions WHERE job_id = ? AND revision = ?"),
        {m_job, since});
    if (!has.isValid())
        return changes;
    changes.since = since;
    const QList<IssuedLine> printed = lines(since);
    QHash<qint64, IssuedLine> before;
    for (const IssuedLine& l : printed)
        before.insert(l.lineItemId, l);
    for (const IssuedLine& now : currentLines()) {
        const auto it = before.constFind(now.lineItemId);
        if (it == before.constEnd() || !it->samePrint(now))
            changes.changedLines.insert(now.number);
    }
    // A line the job no longer has is gone from the package; one merely unticked is left out,
    // which the contents page already counts.
    QSet<qint64> kept;
    for (const QVariantList& r : m_db->rows(
             QStringLiteral("SELECT id FROM line_items WHERE submittal_id = ?"), {submittalId()}))
        kept.insert(r[0].toLongLong());
    for (const IssuedLine& l : printed) {
        if (!kept.contains(l.lineItemId))
            changes.removedLines << l.summary();
    }
    return changes;
}

QByteArray StoreHistory::settingsSnapshot() const
{
    const qint64 s = submittalId();
    QJsonObject o;
    const QVariantList sub = m_db->row(
        QStringLiteral("SELECT issued_by, submittal_date, include_cover_letter, include_bom, "
                       "include_labels, purpose_index, purpose, other_purpose FROM submittals "
                       "WHERE id = ?"),
        {s});
    const char* const subNames[] = {"issuedBy",   "submittalDate", "includeCoverLetter",
                                    "includeBOM", "includeLabels", "purposeIndex",
                                    "purpose",    "otherPurpose"};
    for (qsizetype i = 0; i < sub.size(); ++i)
        o.insert(QLatin1String(subNames[i]), QJsonValue::fromVariant(sub[i]));
    const QVariantList letter = m_db->row(
        QStringLiteral("SELECT include_logo, include_default_paragraphs, include_remarks, "
                       "separate_letters, include_carbon_copy FROM cover_letters WHERE "
                       "submittal_id = ?"),
        {s});
    const char* const letterNames[] = {"includeLogo", "includeDefaultParagraphs", "includeRemarks",
                                       "separateLetters", "includeCarbonCopy"};
    QJsonObject letterObject;
    for (qsizetype i = 0; i < letter.size(); ++i)
        letterObject.insert(QLatin1String(letterNames[i]), letter[i].toBool());
    o.insert(QStringLiteral("coverLetter"), letterObject);
    const QVariantList bom =
        m_db->row(QStringLiteral("SELECT include_quantity, include_type, include_default_remarks, "
                                 "include_brand, include_manufacturer, include_catalog_number, "
                                 "include_description, include_line_comments, include_mto, "
                                 "include_group_codes FROM boms WHERE submittal_id = ?"),
                  {s});
    const char* const bomNames[] = {
        "quantity",      "type",        "defaultRemarks", "brand", "manufacturer",
        "catalogNumber", "description", "lineComments",   "mto",   "groupCodes"};
    QJsonObject bomObject;
    for (qsizetype i = 0; i < bom.size(); ++i)
        bomObject.insert(QLatin1String(bomNames[i]), bom[i].toBool());
    o.insert(QStringLiteral("bom"), bomObject);
    return QJsonDocument(o).toJson(QJsonDocument::Compact);
}

IssuedRevision StoreHistory::issue(const PdfMaker& makePdf, const QDateTime& when)
{
    qint32 number = nextRevision();
    // Each try makes the package outside the write lock, so other workstations wait only for
    // the record; a number taken meanwhile means one more try with the next.
    for (;;) {
        const QByteArray pdf = makePdf(number);
        const QString sha =
            QString::fromLatin1(QCryptographicHash::hash(pdf, QCryptographicHash::Sha256).toHex());
        try {
            m_db->write([&] {
                StoreConnection& db = *m_db;
                const qint32 next = nextRevision();
                if (next != number)
                    throw NumberTaken{next};
                const qint64 s = submittalId();
                const QVariantList sub = db.row(
                    QStringLiteral("SELECT issued_by, purpose FROM submittals WHERE id = ?"), {s});
                QStringList recipients;
                for (const QVariantList& r : db.rows(
                         QStringLiteral("SELECT name, company FROM recipients WHERE submittal_id "
                                        "= ? ORDER BY position"),
                         {s}))
                    recipients << (r[1].toString().isEmpty()
                                       ? r[0].toString()
                                       : r[0].toString() + QStringLiteral(", ") + r[1].toString());
                // Revisions that came back are answered by this one.
                db.run(QStringLiteral("UPDATE issued_revisions SET status = 2 WHERE job_id = ? "
                                      "AND status = 1"),
                       {m_job});
                const qint64 id = db.insert(
                    QStringLiteral("INSERT INTO issued_revisions (job_id, revision, issued_at, "
                                   "issued_by, purpose, recipients, settings, pdf, sha256, "
                                   "pdf_size) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?)"),
                    {m_job, number, when.toUTC().toString(Qt::ISODate), sub.value(0), sub.value(1),
                     recipients.join(QLatin1Char('\n')), QString::fromUtf8(settingsSnapshot()), pdf,
                     sha, qint64(pdf.size())});
                // Many rows per statement: a large job's lines go in a few round trips.
                const QList<IssuedLine> printed = currentLines();
                constexpr qsizetype kRowsPerInsert = 50;
                for (qsizetype from = 0; from < printed.size(); from += kRowsPerInsert) {
                    const qsizetype rows = std::min(kRowsPerInsert, printed.size() - from);
                    QStringList values;
                    QVariantList args;
                    for (qsizetype i = from; i < from + rows; ++i) {
                        const IssuedLine& l = printed[i];
                        values << QStringLiteral("(?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)");
                        args << id << l.lineItemId << l.number << l.quantity << l.type << l.brand
                             << l.catalogNumber << l.description << l.group << int(l.mto)
                             << l.comment;
                    }
                    db.run(QStringLiteral("INSERT INTO issued_lines (revision_id, line_item_id, "
                                          "number, quantity, type, brand, catalog_number, "
                                          "description, group_code, mto, comment) VALUES ")
                               + values.join(QStringLiteral(", ")),
                           args);
                }
            });
        } catch (const NumberTaken& taken) {
            number = taken.next;
            continue;
        }
        return revision(number);
    }
}

void StoreHistory::recordReview(qint32 number, const QList<LineReview>& reviews,
                                const QDate& returned, const QString& note)
{
    const QStringList known = ReviewAction::all();
    for (const LineReview& r : reviews) {
        if (!known.contains(r.action))
            throw Failure(ErrorNumber::InvalidProcedureCall, kSource,
                          QStringLiteral("Invalid procedure call or argument: \"%1\" is not a "
                                         "review action")
                              .arg(r.action));
    }
    if (!returned.isValid())
        throw Failure(ErrorNumber::InvalidProcedureCall, kSource,
                      QStringLiteral("Invalid procedure call or argument: a review needs the "
                                     "date the package came back"));
    m_db->write([&] {
        StoreConnection& db = *m_db;
        const qint64 id = revisionId(number);
        for (const LineReview& r : reviews) {
            if (!db.value(QStringLiteral("SELECT 1 FROM issued_lines WHERE revision_id = ? AND "
                                         "number = ?"),
                          {id, r.number})
                     .isValid())
                throw Failure(ErrorNumber::ElementNotFound, kSource,
                              QStringLiteral("Element not found: revision %1 printed no line %2")
                                  .arg(number)
                                  .arg(r.number));
            db.run(QStringLiteral("UPDATE issued_lines SET action = ?, note = ? WHERE "
                                  "revision_id = ? AND number = ?"),
                   {r.action, r.note, id, r.number});
        }
        QStringList actions;
        for (const QVariantList& r :
             db.rows(QStringLiteral("SELECT action FROM issued_lines WHERE revision_id = ?"), {id}))
            actions << r[0].toString();
        // A revision already answered by the next one stays closed.
        db.run(QStringLiteral("UPDATE issued_revisions SET status = CASE WHEN status = 2 THEN 2 "
                              "ELSE 1 END, returned_date = ?, verdict = ?, review_note = ? "
                              "WHERE id = ?"),
               {returned.toString(Qt::ISODate), ReviewAction::overall(actions), note, id});
    });
}

qint32 StoreHistory::tickForResubmittal(qint32 from)
{
    const QList<IssuedLine> printed = lines(from);
    return m_db->write([&] {
        qint32 ticked = 0;
        for (const IssuedLine& l : printed) {
            const bool approved =
                l.action == ReviewAction::Approved || l.action == ReviewAction::ApprovedAsNoted;
            // A line the job no longer has stays gone.
            if (!m_db->value(QStringLiteral("SELECT 1 FROM line_items WHERE id = ?"),
                             {l.lineItemId})
                     .isValid())
                continue;
            m_db->run(QStringLiteral("UPDATE line_items SET selected = ? WHERE id = ? AND "
                                     "selected <> ?"),
                      {int(!approved), l.lineItemId, int(!approved)});
            if (!approved)
                ++ticked;
        }
        return ticked;
    });
}

QByteArray StoreHistory::csv() const
{
    const QStringList header{
        QStringLiteral("Revision"), QStringLiteral("Sent"),       QStringLiteral("Issued By"),
        QStringLiteral("Purpose"),  QStringLiteral("Recipients"), QStringLiteral("Lines"),
        QStringLiteral("Status"),   QStringLiteral("Returned"),   QStringLiteral("Review Days"),
        QStringLiteral("Verdict"),  QStringLiteral("SHA-256")};
    const auto line = [](const QStringList& fields) {
        QByteArrayList out;
        for (const QString& f : fields)
            out << csvField(f);
        return out.join(',') + "\r\n";
    };
    QByteArray out = line(header);
    for (const IssuedRevision& r : revisions())
        out += line({QString::number(r.number), r.sent().toString(Qt::ISODate), r.issuedBy,
                     r.purpose, r.recipients.join(QStringLiteral("; ")),
                     QString::number(r.lineCount), IssuedRevision::statusText(r.status),
                     r.returned.isValid() ? r.returned.toString(Qt::ISODate) : QString(),
                     r.reviewDays() < 0 ? QString() : QString::number(r.reviewDays()), r.verdict,
                     r.sha256});
    return out;
}

}  // namespace ZebObjects
