#pragma once

#include <QString>

#include <cstdio>

// A failure that ends the workbench's start. It always goes to the terminal as one line; a user
// who started the workbench from an icon has no terminal, so with a display the same message
// also shows in a dialog. A command-line mode never shows one: nobody may be there to answer it.
class StartupFailure {
public:
    // Whether windows reach a user: a platform other than the offscreen and minimal ones.
    static bool hasDisplay();
    // Writes "zeb-workbench: <message>" to terminal and, when dialog is true, shows the message
    // in a modal error box and waits for it. Answers the exit code, 1.
    static int report(const QString& message, bool dialog, std::FILE* terminal = stderr);
    // The dialog's title.
    static QString title() { return QStringLiteral("Submittal Workbench"); }
};
