// A damaged office file: any bytes written to a file that the store then opens. Opening either
// gives a store whose reads answer or fail with a Failure naming the file, or fails itself with
// a Failure naming the file and the cause; it never crashes or hangs.
#include "fuzzcheck.h"

#include "contracts/failure.h"
#include "store/store.h"
#include "store/storejob.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <cstddef>
#include <cstdint>

using ZebObjects::Failure;
using ZebObjects::Store;

namespace {

// Qt SQL loads its SQLite driver only with an application object.
void ensureApplication()
{
    if (QCoreApplication::instance())
        return;
    static int argc = 1;
    static char name[] = "storeopen";
    static char* argv[] = {name, nullptr};
    static QCoreApplication app(argc, argv);
}

// One file, rewritten for every input, in a folder removed at exit.
const QString& filePath()
{
    static QTemporaryDir dir(QDir::tempPath() + QStringLiteral("/zeb-storeopen-XXXXXX"));
    static const QString path = dir.filePath(QStringLiteral("office.zebstore"));
    ZEB_FUZZ_CHECK(dir.isValid(), "a folder for the damaged file can be made");
    return path;
}

void removeFiles(const QString& path)
{
    for (const char* suffix : {"", "-wal", "-shm", "-journal"})
        QFile::remove(path + QLatin1String(suffix));
}

void checkFailure(const Failure& f, const QString& path)
{
    ZEB_FUZZ_CHECK(f.Number() != 0, "a failure has a number");
    ZEB_FUZZ_CHECK(f.Description().contains(QDir::toNativeSeparators(path)),
                   "a failure names the file");
}

template <typename Read>
void read(const QString& path, Read body)
{
    try {
        body();
    } catch (const Failure& f) {
        checkFailure(f, path);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    ensureApplication();
    const QString& path = filePath();
    removeFiles(path);
    {
        QFile file(path);
        ZEB_FUZZ_CHECK(file.open(QIODevice::WriteOnly), "the damaged file can be written");
        file.write(reinterpret_cast<const char*>(data), qint64(size));
    }
    try {
        const std::shared_ptr<Store> store = Store::open(path, Store::OpenMode::OpenExisting);
        ZEB_FUZZ_CHECK(store != nullptr, "an open store is there");
        read(path, [&] { store->isEmpty(); });
        read(path, [&] { store->issuedByNames(); });
        read(path, [&] { store->directoryCustomers(); });
        read(path, [&] { store->searchContextValue(); });
        read(path, [&] {
            const auto jobs = store->jobs();
            if (!jobs.isEmpty()) {
                const auto job = store->openJob(jobs.first().id);
                job->number();
                job->name();
            }
        });
    } catch (const Failure& f) {
        checkFailure(f, path);
    }
    removeFiles(path);
    return 0;
}
