#pragma once

#include "zebstore_export.h"

#include "contracts/packagesource.h"

#include <QDateTime>
#include <QList>
#include <QString>

#include <memory>

namespace ZebObjects {

class StoreConnection;

// The office's library of manufacturers' cut sheets and which of them each job's fixture types
// print. A sheet's bytes are stored once, however many types and jobs use it: a file whose
// SHA-256 the library already holds is the same sheet. Checking that a file is a usable PDF is
// the caller's part; the store keeps what it is given.
class ZEBSTORE_EXPORT StoreCutSheets {
public:
    struct Sheet {
        qint64 id = 0;
        QString fileName;
        qint32 pageCount = 0;
        // Lower-case hexadecimal.
        QString sha256;
        qint64 size = 0;
        QString addedBy;
        QDateTime addedAt;
    };
    struct Attachment {
        QString type;
        Sheet sheet;
    };

    explicit StoreCutSheets(std::shared_ptr<StoreConnection> db);

    // Adds pdf to the library unless a sheet with its SHA-256 is there; answers the sheet's id
    // either way (the first file name and adder stay).
    qint64 add(const QString& fileName, const QByteArray& pdf, qint32 pageCount,
               const QString& addedBy);
    // Attaches the sheet to the job's type, after the sheets the type has; a sheet the type
    // already has stays where it is. A job or sheet that is not in the store fails with 35601.
    void attach(qint64 jobId, const QString& type, qint64 sheetId);
    // A sheet the type does not have is not an error.
    void detach(qint64 jobId, const QString& type, qint64 sheetId);

    // The job's attachments by type (in the order types were first given a sheet), each type's
    // sheets in the order they were attached; without their bytes.
    QList<Attachment> attachments(qint64 jobId) const;
    // The same with the bytes, as the package prints them; one statement.
    QList<ZebPackage::CutSheet> sheetsOf(qint64 jobId) const;
    QList<Sheet> library() const;
    // A sheet that is not in the store fails with 35601.
    QByteArray bytes(qint64 sheetId) const;

    static QString sha256Of(const QByteArray& pdf);

private:
    std::shared_ptr<StoreConnection> m_db;
};

}  // namespace ZebObjects
