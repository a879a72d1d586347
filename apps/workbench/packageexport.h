#pragma once

#include <QStringList>

#include <functional>
#include <memory>

namespace ZebObjects {
class Store;
class StoreJob;
}  // namespace ZebObjects

// Writing a job's submittal package: one way for the window's Export Package and for
// `zeb-workbench --export`, so the two cannot disagree about what goes out.
class PackageExport {
public:
    enum class Outcome {
        Written,
        // The package lacks something and writeIncomplete said no.
        Declined,
        // progress answered false while the package was being written.
        Cancelled,
    };
    struct Result {
        Outcome outcome = Outcome::Declined;
        qint32 pages = 0;
    };
    // Asked with what an incomplete package lacks (PackageGenerator::Check); true writes it anyway.
    using WriteIncomplete = std::function<bool(const QStringList& gaps)>;
    // Told how far the writing is; false cancels it.
    using Progress = std::function<bool(qint32 done, qint32 total)>;

    // Checks the job's package and writes it to path. A failure of the store or of the file
    // propagates and leaves no file behind.
    static Result write(const ZebObjects::Store& store,
                        const std::shared_ptr<ZebObjects::StoreJob>& job, const QString& path,
                        const WriteIncomplete& writeIncomplete, const Progress& progress = {});
};
