// Another program on a store's file, for the fault tests:
//   zeb_storefaultchild write FILE           sets the first job's issuer; prints "saved", or
//                                            the failure as "NUMBER DESCRIPTION" and exits 1
//   zeb_storefaultchild delete-texts FILE    prints "ready", waits for a line on standard
//                                            input, then deletes the first job's paragraphs
//                                            from the first on, each its own write
#include "contracts/failure.h"
#include "store/store.h"
#include "store/storejob.h"
#include "store/storesubmittal.h"
#include "store/storetextobjects.h"

#include <QCoreApplication>

#include <cstdio>
#include <iostream>
#include <string>

using namespace ZebObjects;

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    const QStringList args = app.arguments();
    if (args.size() < 3)
        return 64;
    const QString& mode = args[1];
    const QString& file = args[2];
    try {
        const auto store = Store::open(file, Store::OpenMode::OpenExisting);
        const auto job = store->openJob(store->jobs().first().id);
        if (mode == QLatin1String("write")) {
            job->submittal()->setIssuedBy(QStringLiteral("Written"));
            std::printf("saved\n");
            return 0;
        }
        if (mode == QLatin1String("delete-texts")) {
            const auto texts = job->coverLetterParagraphs();
            std::printf("ready\n");
            std::fflush(stdout);
            std::string line;
            std::getline(std::cin, line);
            while (texts->Count() > 0)
                texts->Remove(texts->Item(1)->Key());
            return 0;
        }
    } catch (const Failure& f) {
        std::printf("%d %s\n", int(f.Number()), qPrintable(f.Description()));
        return 1;
    }
    return 64;
}
