#pragma once

#include <QString>

#include <cstdio>
#include <memory>
#include <optional>

class QCommandLineParser;
namespace ZebObjects {
class Store;
}

// The command-line modes of a job's issued revisions:
//   --issue-package FILE.pdf   issues the next revision to FILE and prints its number and SHA-256
//   --revision N --export FILE writes issued revision N again, byte for byte
//   --history                  prints the job's revisions as CSV, one line each after a header
// A failure is one line on standard error and exit code 1; an incomplete package is refused
// (exit code 2) unless --force.
namespace HistoryCommands {

// What the command line asks of the history; --export and --force are the export's own options.
struct Request {
    std::optional<QString> issuePackage;  // --issue-package FILE.pdf
    std::optional<QString> revision;  // --revision N
    bool history = false;  // --history
    std::optional<QString> exportPdf;  // --export FILE.pdf
    bool force = false;  // --force

    bool wanted() const { return issuePackage || revision || history; }
};

void addOptions(QCommandLineParser& parser);
Request read(const QCommandLineParser& parser);
// Runs the mode on the job (0: the office has no such job, named by jobNumber).
int run(const Request& request, const std::shared_ptr<ZebObjects::Store>& store, qint64 jobId,
        const QString& jobNumber, std::FILE* out = stdout, std::FILE* err = stderr);

}  // namespace HistoryCommands
