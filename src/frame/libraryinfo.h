#pragma once

#include "zebsubctl_export.h"

#include <QString>

namespace ZebSubCtl {

/// The library's identity as hosts see it. Functions, not statics, so that controls may register
/// themselves during static initialisation.
struct ZEBSUBCTL_EXPORT LibraryInfo {
    /// The library's name: "ZebSubmittalControls", the prefix of every control identifier.
    static QString Name() { return QStringLiteral("ZebSubmittalControls"); }
    /// The library's short name: "ZebSubCtl".
    static QString InternalName() { return QStringLiteral("ZebSubCtl"); }
    /// The library's description as hosts list it.
    static QString Description() { return QStringLiteral("Varnholt Quenza Submittal Controls"); }
    /// The version as text: major, two-digit minor, four-digit revision.
    static QString Version() { return QStringLiteral("4.09.0040"); }
    /// The major version.
    static constexpr int VersionMajor = 4;
    /// The minor version.
    static constexpr int VersionMinor = 9;
    /// The revision.
    static constexpr int VersionRevision = 40;
};

}  // namespace ZebSubCtl
