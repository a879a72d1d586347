#pragma once

#include "contracts/failure.h"
#include "frame/errorpath.h"
#include "frame/messageboxes.h"
#include "objects/memorydiagnosticlog.h"

#include <QList>
#include <QStringList>

#include <memory>

class QAbstractButton;
class QWidget;

namespace ZebTest {

// Gives one test its own diagnostic log, scripted message boxes and last-resort hook, and puts
// the process-wide defaults back when it ends.
class Harness {
public:
    Harness();
    ~Harness();
    Harness(const Harness&) = delete;
    Harness& operator=(const Harness&) = delete;

    ZebObjects::MemoryDiagnosticLog& log() { return *m_log; }
    std::shared_ptr<ZebObjects::MemoryDiagnosticLog> logPtr() { return m_log; }
    ZebSubCtl::ScriptedMessageBoxService& boxes() { return *m_boxes; }
    // Failures that reached the last-resort hook.
    const QList<ZebObjects::ErrorInfo>& lastResort() const { return m_lastResort; }

private:
    std::shared_ptr<ZebObjects::MemoryDiagnosticLog> m_log;
    std::shared_ptr<ZebSubCtl::ScriptedMessageBoxService> m_boxes;
    QList<ZebObjects::ErrorInfo> m_lastResort;
};

// What the call threw, or an empty ErrorInfo when it returned.
template <class Call>
ZebObjects::ErrorInfo failureOf(Call&& call)
{
    try {
        call();
    } catch (const ZebObjects::Failure& f) {
        return f.info();
    }
    return {};
}

inline ZebObjects::ErrorInfo error(qint32 number, const QString& source, const QString& description)
{
    return ZebObjects::ErrorInfo{number, source, description};
}

// Points XDG_DATA_HOME at a scratch folder that lives as long as the test program, so that nothing
// the test writes there lands in the real one.
void useScratchDataHome();

// How a program the test started ended and what it said.
struct ProgramRun {
    int code = -1;  // -1 when it crashed or did not end in time
    bool timedOut = false;  // killed for not ending in time
    QString out;
    QString err;  // without the notes Qt writes about QStandardPaths before the program speaks
};

// How runProgram starts a program and how long it waits for it.
struct ProgramOptions {
    // NAME=value settings added to this program's environment for it.
    QStringList environment;
    // Runs it as the user nobody (through setpriv), with no supplementary groups.
    bool asNobody = false;
    // What it writes to standard error lands in out, in order, as a terminal shows it, and
    // nothing is left out.
    bool mergeChannels = false;
    // Also leaves out of err Qt's notes about the platform and the diagnostics category, so that
    // err holds the program's own lines alone.
    bool ownLinesOnly = false;
    // A program still running after this long is killed and reported as crashed.
    int timeoutMs = 120000;
};
ProgramRun runProgram(const QString& program, const QStringList& args,
                      const ProgramOptions& options = {});

// The PDF's text as pdftotext lays it out, in UTF-8; empty when pdftotext fails or does not end
// within a minute.
QString pdfText(const QString& pdf);

// Clicks a check box on its box, as a user would; its caption may be far narrower than the widget.
void clickCheckBox(QAbstractButton* box);

// Walks the accessibility tree under root and lists every visible interactive element (button,
// check box, option, entry box, list, combo box, scroll bar, ...) that a screen reader could not
// name, as "role objectName". root itself must carry a name and a description.
QStringList unnamedAccessibleElements(QWidget* root);

}  // namespace ZebTest
