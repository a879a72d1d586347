#pragma once

#include "store/jobcontents.h"
#include "store/store.h"

#include <QCommandLineParser>
#include <QString>
#include <QStringList>

#include <optional>

// The office's work without a window, for scripts that feed jobs from a quoting system, and the
// pieces the window's dialogs share with them. Each command answers the one line it reports, or
// fails with a Failure (a bad import lists every bad row and column in its description).
namespace JobCommands {

// What a new job starts with: the office's first issuer, a cover letter, a bill of materials and
// labels with the usual columns and fields, and the office's paragraph and remark libraries.
ZebObjects::JobContents newJobContents(ZebObjects::Store& store,
                                       const ZebObjects::JobDetails& details);
// Makes the job; a number the office already has fails with 457.
QString newJob(ZebObjects::Store& store, const ZebObjects::JobDetails& details);
// Imports the lines of a CSV file into the job with this number: all of them, or none when a
// row is bad.
QString importLines(ZebObjects::Store& store, const QString& jobNumber, const QString& path,
                    bool replace);
// Adds the customers of a CSV file to the directory: all of them, or none when a row is bad.
QString importCustomers(ZebObjects::Store& store, const QString& path);

// The command line's options for these commands: --new-job NUMBER --job-name NAME,
// --import-lines FILE [--replace] (into --job NUMBER, or the new job), --import-customers FILE.
void addOptions(QCommandLineParser& parser);
// What the command line asks of these commands.
struct Request {
    std::optional<QString> newJob;  // --new-job NUMBER
    QString jobName;  // --job-name NAME
    std::optional<QString> importLines;  // --import-lines FILE
    bool replace = false;  // --replace
    std::optional<QString> importCustomers;  // --import-customers FILE
    QString job;  // --job NUMBER, where the lines go

    // True when the command line asks for one of them (and for nothing with a window).
    bool wanted() const { return newJob || importLines || importCustomers; }
};
Request read(const QCommandLineParser& parser);
// Runs what the command line asks for: one line on standard output for each command and 0, or
// the failure on standard error and 1 (nothing written by the failed command).
int run(ZebObjects::Store& store, const Request& request);

}  // namespace JobCommands
