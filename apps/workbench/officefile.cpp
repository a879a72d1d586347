#include "officefile.h"

#include "contracts/failure.h"
#include "sampleoffice/sampleoffice.h"
#include "store/store.h"
#include "store/storedialect.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

using ZebObjects::Failure;
using ZebObjects::Store;

namespace {
const QString kSource = QStringLiteral("zeb-workbench");

Failure fileFailure(const QString& path, const QString& cause)
{
    return Failure(ZebObjects::ErrorNumber::ElementNotFound, kSource,
                   QStringLiteral("Cannot open the office \"%1\": %2").arg(path, cause));
}

// A SQLite file comes with its journal files; a file put in its place must not meet old ones,
// which SQLite would play into it.
void removeJournals(const QString& path)
{
    for (const QString& suffix :
         {QStringLiteral("-wal"), QStringLiteral("-shm"), QStringLiteral("-journal")})
        QFile::remove(path + suffix);
}

void removeWithJournals(const QString& path)
{
    QFile::remove(path);
    removeJournals(path);
}

// Flushes a file or a folder (the names it holds) to the disk.
void sync(const QString& path, bool folder)
{
    const int fd =
        ::open(QFile::encodeName(path).constData(), folder ? O_RDONLY | O_DIRECTORY : O_RDONLY);
    const int failed = fd < 0 || ::fsync(fd) != 0 ? errno : 0;
    if (fd >= 0)
        ::close(fd);
    if (failed)
        throw Failure(ZebObjects::ErrorNumber::DeviceIOError, kSource,
                      QStringLiteral("The %1 \"%2\" could not be written to the disk (%3)")
                          .arg(folder ? QStringLiteral("folder") : QStringLiteral("file"), path,
                               QString::fromLocal8Bit(std::strerror(failed))));
}

// The office cannot be changed here: the file or the folder its journal goes in is read-only.
bool readOnlyOffice(const QString& path)
{
    const QByteArray file = QFile::encodeName(path);
    const QByteArray folder = QFile::encodeName(QFileInfo(path).absolutePath());
    return ::access(file.constData(), W_OK) != 0 || ::access(folder.constData(), W_OK) != 0;
}
}  // namespace

QString OfficeFile::defaultPath()
{
    return QDir(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation))
        .filePath(QStringLiteral("office.sqlite"));
}

bool OfficeFile::isEmptyFile(const QString& path)
{
    if (ZebObjects::StoreDialect::isServerLocation(path))
        return false;
    const QFileInfo info(path);
    return info.exists() && info.isFile() && info.size() == 0;
}

std::shared_ptr<Store> OfficeFile::open(const QString& path, bool create, bool newOffice)
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
    // An empty file may be an office whose copy went wrong: it becomes an office only when
    // asked to.
    if (info.size() == 0 && !newOffice) {
        if (create)
            return resetSample(path);
        throw fileFailure(path, QStringLiteral("the file is empty (0 bytes); --reset-sample "
                                               "makes it an office with the sample"));
    }
    if (info.size() > 0 && readOnlyOffice(path))
        return Store::open(path, Store::OpenMode::ReadOnly);
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
    const QString target = info.absoluteFilePath();
    const QString folder = info.absolutePath();
    const QString fresh = target + QStringLiteral(".new");
    // All or nothing: the new office is made whole beside the old one, checked and flushed to
    // the disk, and only then renamed over it; until that rename the old office stays as it is.
    removeWithJournals(fresh);
    try {
        {
            auto store = Store::open(fresh, Store::OpenMode::OpenOrCreate);
            ZebObjects::SampleOffice::fill(*store);
            store->seal();
        }
        sync(fresh, false);
        sync(folder, true);
        // The old office's log goes into it first; the logs left then belong to no one and must
        // not meet the new file.
        Store::settle(target);
        removeJournals(target);
        if (std::rename(QFile::encodeName(fresh).constData(), QFile::encodeName(target).constData())
            != 0)
            throw Failure(ZebObjects::ErrorNumber::PathFileAccessError, kSource,
                          QStringLiteral("The new office cannot be put in place of \"%1\" (%2)")
                              .arg(target, QString::fromLocal8Bit(std::strerror(errno))));
        sync(folder, true);
    } catch (const Failure& f) {
        removeWithJournals(fresh);
        throw Failure(f.Number(), kSource,
                      QStringLiteral("The sample office cannot be made in \"%1\", so the office "
                                     "there is left as it was: %2")
                          .arg(target, f.Description()));
    }
    return Store::open(target, Store::OpenMode::OpenExisting);
}
