#pragma once

#include "frame/messageboxes.h"

#include <QString>

#include <cstdio>
#include <memory>

// The workstation's message boxes. With a person at the screen they are the platform's modal
// boxes. Without one (a command-line mode, or no display) a box nobody could answer is never
// shown: it becomes one line on standard error and is answered at once (OK, or Cancel where the
// box asks), and the program ends with a failure. A failure the window already states once
// (the office is read-only) shows no box at all.
class HostMessageBoxes : public ZebSubCtl::MessageBoxService {
public:
    // console: no box can be answered; lines go to out.
    explicit HostMessageBoxes(bool console, std::FILE* out = stderr);
    // Wraps another service (a test's) for the boxes that are shown.
    HostMessageBoxes(std::shared_ptr<ZebSubCtl::MessageBoxService> shown, bool console,
                     std::FILE* out = stderr);

    // Boxes that tell of this failure (its description) are not shown.
    void setQuiet(const QString& description) { m_quiet = description; }
    bool console() const { return m_console; }
    // Boxes written to standard error instead of shown.
    int consoleLines() const { return m_lines; }

    int MsgBox(const QString& prompt, int style, const QString& title) override;

private:
    std::shared_ptr<ZebSubCtl::MessageBoxService> m_shown;
    bool m_console;
    std::FILE* m_out;
    QString m_quiet;
    int m_lines = 0;
};
