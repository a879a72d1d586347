#include "bindcycleshooks.h"

#include <QFile>
#include <QObject>

#include <atomic>
#include <set>

#include <malloc.h>
#include <unistd.h>

#if defined(__SANITIZE_ADDRESS__)
#define ZEB_TEST_ASAN 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define ZEB_TEST_ASAN 1
#endif
#endif

#ifdef ZEB_TEST_ASAN
// The sanitizer runtime's own count of the bytes the program holds (its quarantine excluded);
// GCC ships the runtime without the header that declares it.
extern "C" std::size_t __sanitizer_get_current_allocated_bytes();
#endif

// Qt's hook table (QtCore exports it for object inspectors). The indices are fixed by its
// version 1 layout: 0 version, 1 size, 2 Qt version, 3 object added, 4 object removed.
QT_BEGIN_NAMESPACE
extern Q_CORE_EXPORT quintptr qtHookData[];
QT_END_NAMESPACE

namespace ZebTest {

namespace {

constexpr int kHookDataSize = 1;
constexpr int kAddQObject = 3;
constexpr int kRemoveQObject = 4;

using Callback = void (*)(QObject*);

std::atomic<qint64> g_live{0};
std::set<QObject*>* g_tracked = nullptr;
Callback g_previousAdd = nullptr;
Callback g_previousRemove = nullptr;
bool g_installed = false;

void added(QObject* object)
{
    g_live.fetch_add(1, std::memory_order_relaxed);
    if (g_tracked)
        g_tracked->insert(object);
    if (g_previousAdd)
        g_previousAdd(object);
}

void removed(QObject* object)
{
    g_live.fetch_sub(1, std::memory_order_relaxed);
    if (g_tracked)
        g_tracked->erase(object);
    if (g_previousRemove)
        g_previousRemove(object);
}

}  // namespace

void LiveObjects::install()
{
    if (g_installed)
        return;
    if (qtHookData[kHookDataSize] <= quintptr(kRemoveQObject))
        qFatal("QtCore offers no object hooks");
    g_previousAdd = reinterpret_cast<Callback>(qtHookData[kAddQObject]);
    g_previousRemove = reinterpret_cast<Callback>(qtHookData[kRemoveQObject]);
    qtHookData[kAddQObject] = reinterpret_cast<quintptr>(&added);
    qtHookData[kRemoveQObject] = reinterpret_cast<quintptr>(&removed);
    g_installed = true;
}

qint64 LiveObjects::count()
{
    return g_live.load(std::memory_order_relaxed);
}

void LiveObjects::track()
{
    delete g_tracked;
    g_tracked = new std::set<QObject*>;
}

QStringList LiveObjects::trackedSurvivors(const QList<const QObject*>& expected)
{
    QStringList out;
    if (!g_tracked)
        return out;
    for (QObject* o : *g_tracked)
        if (!expected.contains(o))
            out.append(QStringLiteral("%1 \"%2\" (parent %3)")
                           .arg(QLatin1String(o->metaObject()->className()), o->objectName(),
                                o->parent() ? QLatin1String(o->parent()->metaObject()->className())
                                            : QStringLiteral("none")));
    delete g_tracked;
    g_tracked = nullptr;
    return out;
}

std::size_t heapInUse()
{
#ifdef ZEB_TEST_ASAN
    return __sanitizer_get_current_allocated_bytes();
#else
    const struct mallinfo2 info = mallinfo2();
    return info.uordblks + info.hblkhd;
#endif
}

std::size_t residentBytes()
{
    QFile statm(QStringLiteral("/proc/self/statm"));
    if (!statm.open(QIODevice::ReadOnly))
        return 0;
    const QList<QByteArray> fields = statm.readAll().split(' ');
    if (fields.size() < 2)
        return 0;
    return std::size_t(fields.at(1).toULongLong()) * std::size_t(sysconf(_SC_PAGESIZE));
}

bool underAddressSanitizer()
{
#ifdef ZEB_TEST_ASAN
    return true;
#else
    return false;
#endif
}

}  // namespace ZebTest
