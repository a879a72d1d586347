#pragma once

// Counts the QObjects alive in the process through Qt's object hooks (the same entry points
// object inspectors use), and reads the process's memory figures.

#include <QStringList>
#include <QtGlobal>

#include <cstddef>

class QObject;

namespace ZebTest {

// Installs the counting hooks on first use; later QObjects are counted from then on, so compare
// two readings, never one reading with zero.
class LiveObjects {
public:
    static void install();
    // QObjects constructed minus QObjects destroyed since install().
    static qint64 count();
    // Remembers every QObject constructed from now on, until trackedSurvivors() names those still
    // alive (class, object name, parent's class), but for the expected ones, and stops.
    static void track();
    static QStringList trackedSurvivors(const QList<const QObject*>& expected = {});
};

// Heap bytes in use: the sanitizer allocator's own figure in a sanitizer build, the C library's
// otherwise.
std::size_t heapInUse();
// Resident set size of the process.
std::size_t residentBytes();
// Whether the build runs under AddressSanitizer (its quarantine holds freed memory resident).
bool underAddressSanitizer();

}  // namespace ZebTest
