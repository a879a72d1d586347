#pragma once

#include <QString>

// Opens a file or a folder with the program the desktop keeps for its type (a PDF viewer, a file
// manager).
class DesktopOpener {
public:
    // False when the desktop has no program for the type, or the program could not be started.
    static bool open(const QString& path);
};
