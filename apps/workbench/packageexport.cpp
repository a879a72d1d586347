#include "packageexport.h"

#include "package/packagegenerator.h"
#include "storepackagesource.h"

PackageExport::Result PackageExport::write(const ZebObjects::Store& store,
                                           const std::shared_ptr<ZebObjects::StoreJob>& job,
                                           const QString& path,
                                           const WriteIncomplete& writeIncomplete,
                                           const Progress& progress)
{
    Result result;
    {
        // An incomplete package goes out only when someone says so; the list says what it lacks.
        const QStringList gaps =
            ZebPackage::PackageGenerator::Check(StorePackageSource(store, job));
        if (!gaps.isEmpty() && !writeIncomplete(gaps))
            return result;
    }
    ZebPackage::PackageGenerator generator;
    if (progress)
        generator.setProgress(progress);
    const StorePackageSource source(store, job);
    result.outcome = generator.Generate(source, path) ? Outcome::Written : Outcome::Cancelled;
    result.pages = generator.pageCount();
    return result;
}
