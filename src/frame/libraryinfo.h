#pragma once

#include "zebsubctl_export.h"

#include <QString>

namespace ZebSubCtl {

// The library's identity as hosts see it. Functions, not statics, so that controls may register
// themselves during static initialisation.
struct ZEBSUBCTL_EXPORT LibraryInfo {
    static QString Name() { return QStringLiteral("ZebSubmittalControls"); }
    static QString InternalName() { return QStringLiteral("ZebSubCtl"); }
    static QString Description() { return QStringLiteral("Varnholt Quenza Submittal Controls"); }
    static QString Version() { return QStringLiteral("4.09.0040"); }
    static constexpr int VersionMajor = 4;
    static constexpr int VersionMinor = 9;
    static constexpr int VersionRevision = 40;
};

}  // namespace ZebSubCtl
