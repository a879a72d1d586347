#include "packageissuer.h"

#include "contracts/failure.h"
#include "store/store.h"
#include "store/storejob.h"
#include "storepackagesource.h"

#include <QFile>
#include <QSaveFile>
#include <QTemporaryDir>

namespace {

const QString kSource = QStringLiteral("zeb-workbench");

[[noreturn]] void cannotWrite(const QString& path, const QString& why)
{
    throw ZebObjects::Failure(ZebObjects::ErrorNumber::PathFileAccessError, kSource,
                              QStringLiteral("Path/File access error: cannot write \"%1\": %2").arg(path, why));
}

// Cancelled by the user: nothing is recorded.
struct Cancelled {};

void writeWhole(const QString& path, const QByteArray& bytes)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        cannotWrite(path, file.errorString());
    if (file.write(bytes) != bytes.size()) {
        const QString why = file.errorString();
        file.cancelWriting();
        cannotWrite(path, why);
    }
    if (!file.commit())
        cannotWrite(path, file.errorString());
}

}  // namespace

PackageIssuer::PackageIssuer(std::shared_ptr<ZebObjects::Store> store, std::shared_ptr<ZebObjects::StoreJob> job)
    : m_store(std::move(store)), m_job(std::move(job))
{
}

void PackageIssuer::setProgress(ZebPackage::PackageGenerator::Progress progress)
{
    m_progress = std::move(progress);
}

QStringList PackageIssuer::gaps() const
{
    return ZebPackage::PackageGenerator::Check(StorePackageSource(*m_store, m_job));
}

ZebPackage::RevisionMarks PackageIssuer::marksFor(qint32 number) const
{
    ZebPackage::RevisionMarks marks;
    marks.Revision = number;
    if (number > 0) {
        const ZebObjects::RevisionChanges changes = m_job->history()->changesSince(number - 1);
        marks.ChangedLines = changes.changedLines;
        marks.RemovedLines = changes.removedLines;
    }
    return marks;
}

bool PackageIssuer::issue(const QString& path)
{
    QTemporaryDir scratch;
    if (!scratch.isValid())
        cannotWrite(path, scratch.errorString());
    const QString drawn = scratch.filePath(QStringLiteral("package.pdf"));
    const auto history = m_job->history();
    bool delivered = false;
    try {
        m_issued = history->issue(
            [&](qint32 number) {
                ZebPackage::PackageGenerator generator;
                generator.setRevision(marksFor(number));
                generator.setProgress(m_progress);
                if (!generator.Generate(StorePackageSource(*m_store, m_job), drawn))
                    throw Cancelled{};
                QFile file(drawn);
                if (!file.open(QIODevice::ReadOnly))
                    cannotWrite(path, file.errorString());
                return file.readAll();
            },
            QDateTime::currentDateTimeUtc(),
            [&](const ZebObjects::IssuedRevision&, const QByteArray& pdf) {
                writeWhole(path, pdf);
                delivered = true;
            });
    } catch (const Cancelled&) {
        return false;
    } catch (...) {
        // The commit failed after the file was written: the file goes with the record.
        if (delivered)
            QFile::remove(path);
        throw;
    }
    return true;
}

void PackageIssuer::writeRevision(ZebObjects::StoreJob& job, qint32 number, const QString& path)
{
    writeWhole(path, job.history()->pdf(number));
}
