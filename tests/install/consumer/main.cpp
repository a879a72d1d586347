// A host that knows the library only through its installed package.
#include "frame/controlregistry.h"
#include "frame/libraryinfo.h"
#include "frame/usercontrol.h"
#include "objects/standalonepackagesource.h"
#include "objects/standalonetextobjects.h"
#include "package/packagegenerator.h"
#include "store/jobcontents.h"
#include "store/store.h"

#include <QApplication>
#include <QTemporaryDir>

#include <cstdio>

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    using namespace ZebSubCtl;
    if (LibraryInfo::Name() != QStringLiteral("ZebSubmittalControls")
        || LibraryInfo::Version() != QStringLiteral("4.09.0040"))
        return 1;

    const QStringList ids = ControlRegistry::instance().identifiers();
    QWidget form;
    for (const QString& id : ids) {
        UserControl* control = ControlRegistry::instance().create(id, &form);
        if (!control || id != ControlRegistry::identifierFor(control->Name()))
            return 2;
        std::printf("created %s\n", qPrintable(id));
    }

    ZebObjects::StandaloneTextObjects texts;
    texts.Add(QStringLiteral("Thank you for the opportunity."), true);
    if (texts.Count() != 1)
        return 3;

    QTemporaryDir dir;
    ZebPackage::PackageGenerator generator;
    if (!generator.Generate(*ZebObjects::StandalonePackageSource::sampleJob(),
                            dir.filePath(QStringLiteral("package.pdf")))
        || generator.pageCount() < 3)
        return 4;
    const auto store = ZebObjects::Store::open(dir.filePath(QStringLiteral("office.zebdb")));
    ZebObjects::JobContents job;
    job.number = QStringLiteral("24-0131");
    job.name = QStringLiteral("Riverside Medical Office Building");
    store->createJob(job);
    if (store->jobs().size() != 1)
        return 5;
    std::printf("consumer ok: %lld controls\n", static_cast<long long>(ids.size()));
    return 0;
}
