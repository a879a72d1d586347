#include "packageissuer.h"

#include "contracts/failure.h"
#include "store/store.h"
#include "store/storejob.h"
#include "storepackagesource.h"

#include <QFile>
#include <QSaveFile>

namespace {

const QString kSource = QStringLiteral("zeb-workbench");

[[noreturn]] void cannotWrite(const QString& path, const QString& why)
{
    throw ZebObjects::Failure(
        ZebObjects::ErrorNumber::PathFileAccessError, kSource,
        QStringLiteral("Path/File access error: cannot write \"%1\": %2").arg(path, why));
}

// Cancelled by the user: nothing is recorded.
struct Cancelled { };

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

PackageIssuer::PackageIssuer(std::shared_ptr<ZebObjects::Store> store,
                             std::shared_ptr<ZebObjects::StoreJob> job)
    : m_store(std::move(store)), m_job(std::move(job))
{ }

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
    // The package is written where the user asked, then recorded with its bytes; a record that
    // fails takes the file away again, so a file there is always a revision of the office.
    const auto history = m_job->history();
    bool written = false;
    try {
        m_issued = history->issue([&](qint32 number) {
            ZebPackage::PackageGenerator generator;
            generator.setRevision(marksFor(number));
            generator.setProgress(m_progress);
            if (!generator.Generate(StorePackageSource(*m_store, m_job), path))
                throw Cancelled{};
            written = true;
            QFile file(path);
            if (!file.open(QIODevice::ReadOnly))
                cannotWrite(path, file.errorString());
            return file.readAll();
        });
    } catch (const Cancelled&) {
        // A package made for a number taken meanwhile was written before the cancel.
        if (written)
            QFile::remove(path);
        return false;
    } catch (...) {
        if (written)
            QFile::remove(path);
        throw;
    }
    return true;
}

void PackageIssuer::writeRevision(ZebObjects::StoreJob& job, qint32 number, const QString& path)
{
    writeWhole(path, job.history()->pdf(number));
}
