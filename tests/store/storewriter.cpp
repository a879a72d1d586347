// Another program on a store's file, for the processes test:
//   zeb_storewriter churn FILE          adds paragraphs to the first job until killed, printing
//                                       "committed N" after each commit
//   zeb_storewriter set-issuer FILE NAME
//   zeb_storewriter read-issuer FILE    prints the first job's issuer
//   zeb_storewriter open FILE          opens the file, making it when it is new
//   zeb_storewriter hold-lock FILE      takes the write lock, prints "locked", keeps it until a
//                                       line arrives on standard input
//   zeb_storewriter add-texts DB N TAG  waits for a line on standard input, then adds N
//                                       paragraphs "TAG i" to the first job, each its own write,
//                                       and prints "wrote N in MS ms"
#include "contracts/failure.h"
#include "contracts/lineitems.h"
#include "store/store.h"
#include "store/storejob.h"
#include "store/storelineitems.h"
#include "store/storesubmittal.h"
#include "store/storetextobjects.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QSqlDatabase>
#include <QSqlQuery>

#include <cstdio>
#include <iostream>
#include <string>

using namespace ZebObjects;

namespace {

int churn(const QString& file)
{
    const auto store = Store::open(file, Store::OpenMode::OpenExisting);
    const auto job = store->openJob(store->jobs().first().id);
    const auto texts = job->coverLetterParagraphs();
    const auto lines = job->lineItems();
    for (int n = 1; n <= 1000000; ++n) {
        texts->Add(QStringLiteral("Paragraph %1").arg(n), n % 2 == 0);
        std::printf("committed %d\n", n);
        std::fflush(stdout);
        // Work between the commits as well, so that a kill may land anywhere.
        const auto line = lines->Item(qint16(1 + n % lines->Count()));
        line->setSelected(!line->Selected());
    }
    return 0;
}

int holdLock(const QString& file)
{
    {
        auto db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("lock"));
        db.setDatabaseName(file);
        if (!db.open())
            return 2;
        QSqlQuery q(db);
        if (!q.exec(QStringLiteral("BEGIN IMMEDIATE")))
            return 3;
        std::printf("locked\n");
        std::fflush(stdout);
        std::string line;
        std::getline(std::cin, line);
        q.exec(QStringLiteral("ROLLBACK"));
        db.close();
    }
    QSqlDatabase::removeDatabase(QStringLiteral("lock"));
    return 0;
}

int addTexts(const QString& location, int count, const QString& tag)
{
    const auto store = Store::open(location, Store::OpenMode::OpenExisting);
    const auto texts = store->openJob(store->jobs().first().id)->coverLetterParagraphs();
    std::printf("ready\n");
    std::fflush(stdout);
    // Both writers start on the same signal, so that their writes meet.
    std::string line;
    std::getline(std::cin, line);
    QElapsedTimer clock;
    clock.start();
    for (int i = 1; i <= count; ++i)
        texts->Add(QStringLiteral("%1 %2").arg(tag).arg(i), false);
    std::printf("wrote %d in %lld ms\n", count, clock.elapsed());
    return 0;
}

}  // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    const QStringList args = app.arguments();
    if (args.size() < 3)
        return 64;
    const QString& mode = args[1];
    const QString& file = args[2];
    try {
        if (mode == QLatin1String("churn"))
            return churn(file);
        if (mode == QLatin1String("hold-lock"))
            return holdLock(file);
        if (mode == QLatin1String("add-texts") && args.size() > 4)
            return addTexts(file, args[3].toInt(), args[4]);
        if (mode == QLatin1String("open")) {
            Store::open(file);
            return 0;
        }
        const auto store = Store::open(file, Store::OpenMode::OpenExisting);
        const auto submittal = store->openJob(store->jobs().first().id)->submittal();
        if (mode == QLatin1String("set-issuer") && args.size() > 3) {
            submittal->setIssuedBy(args[3]);
            return 0;
        }
        if (mode == QLatin1String("read-issuer")) {
            std::printf("%s\n", qPrintable(submittal->IssuedBy()));
            return 0;
        }
    } catch (const Failure& f) {
        std::fprintf(stderr, "%s\n", f.what());
        return 1;
    }
    return 64;
}
