#include "officefile.h"

#include "contracts/failure.h"
#include "store/sampleoffice.h"
#include "store/store.h"
#include "store/storedialect.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

using ZebObjects::Failure;
using ZebObjects::Store;

namespace {
const QString kSource = QStringLiteral("zeb-workbench");

Failure fileFailure(const QString& path, const QString& cause)
{
    return Failure(ZebObjects::ErrorNumber::ElementNotFound, kSource,
                   QStringLiteral("Cannot open the office \"%1\": %2").arg(path, cause));
}

// A SQLite file comes with its journal files; a file put in its place must not meet old ones.
void removeWithJournals(const QString& path)
{
    for (const QString& suffix : {QString(), QStringLiteral("-wal"), QStringLiteral("-shm"),
                                  QStringLiteral("-journal")})
        QFile::remove(path + suffix);
}
}  // namespace

QString OfficeFile::defaultPath()
{
    return QDir(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation))
        .filePath(QStringLiteral("office.sqlite"));
}

std::shared_ptr<Store> OfficeFile::open(const QString& path, bool create)
{
    if (ZebObjects::StoreDialect::isServerLocation(path))
        return Store::open(path, Store::OpenMode::OpenOrCreate);
    const QFileInfo info(path);
    if (!info.exists()) {
        if (create)
            return resetSample(path);
        throw fileFailure(path, QStringLiteral("the file does not exist (--reset-sample makes it "
                                               "with the sample office)"));
    }
    if (info.isDir())
        throw fileFailure(path, QStringLiteral("it is a folder, not a file"));
    if (!info.isReadable())
        throw fileFailure(path, QStringLiteral("the file cannot be read (permission denied)"));
    auto store = Store::open(path, Store::OpenMode::OpenExisting);
    if (create && store->isEmpty())
        ZebObjects::SampleOffice::fill(*store);
    return store;
}

std::shared_ptr<Store> OfficeFile::resetSample(const QString& path)
{
    if (ZebObjects::StoreDialect::isServerLocation(path)) {
        // The office's shared database is never thrown away from a workstation: the sample goes
        // only into a database that holds nothing yet.
        auto store = Store::open(path, Store::OpenMode::OpenOrCreate);
        if (!store->isEmpty())
            throw Failure(ZebObjects::ErrorNumber::KeyAlreadyInCollection, kSource,
                          QStringLiteral("Cannot load the sample office into \"%1\": the "
                                         "database already holds an office")
                              .arg(store->path()));
        ZebObjects::SampleOffice::fill(*store);
        return store;
    }
    const QFileInfo info(path);
    if (!QDir().mkpath(info.absolutePath()))
        throw fileFailure(path, QStringLiteral("its folder cannot be made"));
    const QString fresh = path + QStringLiteral(".new");
    removeWithJournals(fresh);
    try {
        auto store = Store::open(fresh, Store::OpenMode::OpenOrCreate);
        ZebObjects::SampleOffice::fill(*store);
    } catch (...) {
        removeWithJournals(fresh);
        throw;
    }
    // The store above is closed: its file is whole and checkpointed.
    removeWithJournals(path);
    if (!QFile::rename(fresh, path)) {
        removeWithJournals(fresh);
        throw fileFailure(path, QStringLiteral("the new sample office cannot be put in its place"));
    }
    removeWithJournals(fresh);
    return Store::open(path, Store::OpenMode::OpenExisting);
}
