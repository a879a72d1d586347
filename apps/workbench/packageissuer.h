#pragma once

#include "package/packagegenerator.h"
#include "store/storehistory.h"

#include <QString>

#include <memory>

namespace ZebObjects {
class Store;
class StoreJob;
}  // namespace ZebObjects

// Issues a job's package: makes it as an export does, marked as the revision it becomes, and
// records it with its bytes in the office's store in one transaction. A record that fails
// leaves no file behind.
class PackageIssuer {
public:
    PackageIssuer(std::shared_ptr<ZebObjects::Store> store,
                  std::shared_ptr<ZebObjects::StoreJob> job);

    // Called as the generator's progress is; answering false cancels the issue (nothing is
    // recorded or written then).
    void setProgress(ZebPackage::PackageGenerator::Progress progress);
    // What the package would lack, one sentence each; empty when it is complete.
    QStringList gaps() const;
    // The marks of revision `number`: what changed since the revision before.
    ZebPackage::RevisionMarks marksFor(qint32 number) const;

    // Issues the next revision to path. Answers false when cancelled. Fails with the store's or
    // the generator's failure; a file that cannot be written fails with 75.
    bool issue(const QString& path);
    // The revision the last issue recorded.
    ZebObjects::IssuedRevision issued() const { return m_issued; }

    // Writes an issued revision's package to path again, byte for byte.
    static void writeRevision(ZebObjects::StoreJob& job, qint32 number, const QString& path);

private:
    std::shared_ptr<ZebObjects::Store> m_store;
    std::shared_ptr<ZebObjects::StoreJob> m_job;
    ZebPackage::PackageGenerator::Progress m_progress;
    ZebObjects::IssuedRevision m_issued;
};
