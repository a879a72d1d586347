#include "store/storecutsheets.h"

#include "contracts/failure.h"
#include "store/storeconnection.h"

#include <QCryptographicHash>

namespace ZebObjects {

namespace {

const QString kSource = QStringLiteral("ZebObjects.StoreCutSheets");

[[noreturn]] void notFound(const QString& what)
{
    throw Failure(ErrorNumber::ElementNotFound, kSource,
                  QStringLiteral("Element not found: %1").arg(what));
}

StoreCutSheets::Sheet sheetFrom(const QVariantList& r, qsizetype at)
{
    StoreCutSheets::Sheet s;
    s.id = r[at].toLongLong();
    s.fileName = r[at + 1].toString();
    s.pageCount = r[at + 2].toInt();
    s.sha256 = r[at + 3].toString();
    s.size = r[at + 4].toLongLong();
    s.addedBy = r[at + 5].toString();
    s.addedAt = QDateTime::fromString(r[at + 6].toString(), Qt::ISODate);
    return s;
}

const char* const kSheetColumns =
    "s.id, s.file_name, s.page_count, s.sha256, s.size, s.added_by, s.added_at";

}  // namespace

StoreCutSheets::StoreCutSheets(std::shared_ptr<StoreConnection> db) : m_db(std::move(db)) { }

QString StoreCutSheets::sha256Of(const QByteArray& pdf)
{
    return QString::fromLatin1(QCryptographicHash::hash(pdf, QCryptographicHash::Sha256).toHex());
}

qint64 StoreCutSheets::add(const QString& fileName, const QByteArray& pdf, qint32 pageCount,
                           const QString& addedBy)
{
    const QString sha = sha256Of(pdf);
    return m_db->write([&]() -> qint64 {
        const QVariant held =
            m_db->value(QStringLiteral("SELECT id FROM cut_sheets WHERE sha256 = ?"), {sha});
        if (held.isValid() && !held.isNull())
            return held.toLongLong();
        const QString now = QDateTime::currentDateTimeUtc().toString(Qt::ISODate);
        return m_db->insert(
            QStringLiteral("INSERT INTO cut_sheets (sha256, file_name, page_count, size, "
                           "bytes, added_by, added_at) VALUES (?, ?, ?, ?, ?, ?, ?)"),
            {sha, fileName, pageCount, qint64(pdf.size()), pdf, addedBy, now});
    });
}

void StoreCutSheets::attach(qint64 jobId, const QString& type, qint64 sheetId)
{
    m_db->write([&] {
        if (!m_db->value(QStringLiteral("SELECT id FROM jobs WHERE id = ?"), {jobId}).isValid())
            notFound(QStringLiteral("job %1").arg(jobId));
        if (!m_db->value(QStringLiteral("SELECT id FROM cut_sheets WHERE id = ?"), {sheetId})
                 .isValid())
            notFound(QStringLiteral("cut sheet %1").arg(sheetId));
        if (m_db->value(QStringLiteral("SELECT id FROM cut_sheet_attachments WHERE job_id = ? AND "
                                       "line_type = ? AND cut_sheet_id = ?"),
                        {jobId, type, sheetId})
                .isValid())
            return;
        const qint64 position =
            m_db->value(QStringLiteral("SELECT COALESCE(MAX(position), 0) + 1 FROM "
                                       "cut_sheet_attachments WHERE job_id = ?"),
                        {jobId})
                .toLongLong();
        m_db->insert(
            QStringLiteral("INSERT INTO cut_sheet_attachments (job_id, line_type, cut_sheet_id, "
                           "position) VALUES (?, ?, ?, ?)"),
            {jobId, type, sheetId, position});
    });
}

void StoreCutSheets::detach(qint64 jobId, const QString& type, qint64 sheetId)
{
    m_db->write([&] {
        m_db->run(
            QStringLiteral("DELETE FROM cut_sheet_attachments WHERE job_id = ? AND line_type = ? "
                           "AND cut_sheet_id = ?"),
            {jobId, type, sheetId});
    });
}

QList<StoreCutSheets::Attachment> StoreCutSheets::attachments(qint64 jobId) const
{
    // Types in the order they got their first sheet, then each type's sheets in order.
    const QList<QVariantList> rows = m_db->rows(
        QStringLiteral(
            "SELECT a.line_type, %1 FROM cut_sheet_attachments a JOIN cut_sheets s ON "
            "s.id = a.cut_sheet_id WHERE a.job_id = ? ORDER BY (SELECT MIN(b.position) FROM "
            "cut_sheet_attachments b WHERE b.job_id = a.job_id AND b.line_type = "
            "a.line_type), a.position")
            .arg(QLatin1String(kSheetColumns)),
        {jobId});
    QList<Attachment> out;
    out.reserve(rows.size());
    for (const QVariantList& r : rows)
        out.append({r[0].toString(), sheetFrom(r, 1)});
    return out;
}

QList<ZebPackage::CutSheet> StoreCutSheets::sheetsOf(qint64 jobId) const
{
    const QList<QVariantList> rows = m_db->rows(
        QStringLiteral(
            "SELECT a.line_type, s.file_name, s.bytes, s.page_count FROM cut_sheet_attachments a "
            "JOIN cut_sheets s ON s.id = a.cut_sheet_id WHERE a.job_id = ? ORDER BY (SELECT "
            "MIN(b.position) FROM cut_sheet_attachments b WHERE b.job_id = a.job_id AND "
            "b.line_type = a.line_type), a.position"),
        {jobId});
    QList<ZebPackage::CutSheet> out;
    out.reserve(rows.size());
    for (const QVariantList& r : rows)
        out.append({r[0].toString(), r[1].toString(), r[2].toByteArray(), r[3].toInt()});
    return out;
}

QList<StoreCutSheets::Sheet> StoreCutSheets::library() const
{
    const QList<QVariantList> rows =
        m_db->rows(QStringLiteral("SELECT %1 FROM cut_sheets s ORDER BY s.file_name, s.id")
                       .arg(QLatin1String(kSheetColumns)));
    QList<Sheet> out;
    out.reserve(rows.size());
    for (const QVariantList& r : rows)
        out.append(sheetFrom(r, 0));
    return out;
}

QByteArray StoreCutSheets::bytes(qint64 sheetId) const
{
    const QVariant v =
        m_db->value(QStringLiteral("SELECT bytes FROM cut_sheets WHERE id = ?"), {sheetId});
    if (!v.isValid())
        notFound(QStringLiteral("cut sheet %1").arg(sheetId));
    return v.toByteArray();
}

}  // namespace ZebObjects
