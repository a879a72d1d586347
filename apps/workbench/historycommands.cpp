#include "historycommands.h"

#include "contracts/failure.h"
#include "packageissuer.h"
#include "store/store.h"
#include "store/storehistory.h"
#include "store/storejob.h"

#include <QCommandLineOption>
#include <QCommandLineParser>

namespace HistoryCommands {

namespace {

const QString kIssue = QStringLiteral("issue-package");
const QString kRevision = QStringLiteral("revision");
const QString kHistory = QStringLiteral("history");

int failed(std::FILE* err, const QString& message)
{
    std::fprintf(err, "zeb-workbench: %s\n", qPrintable(message));
    std::fflush(err);
    return 1;
}

}  // namespace

void addOptions(QCommandLineParser& parser)
{
    parser.addOption(QCommandLineOption(
        kIssue,
        QStringLiteral("Issue the job's next revision: write its package to this PDF file, record "
                       "it in the office and print its number and SHA-256."),
        QStringLiteral("file")));
    parser.addOption(QCommandLineOption(
        kRevision,
        QStringLiteral(
            "With --export: write this issued revision of the job again, byte for byte."),
        QStringLiteral("number")));
    parser.addOption(QCommandLineOption(
        kHistory, QStringLiteral("Print the job's issued revisions as CSV and exit.")));
}

Request read(const QCommandLineParser& parser)
{
    Request request;
    if (parser.isSet(kIssue))
        request.issuePackage = parser.value(kIssue);
    if (parser.isSet(kRevision))
        request.revision = parser.value(kRevision);
    request.history = parser.isSet(kHistory);
    return request;
}

int run(const Request& request, const std::shared_ptr<ZebObjects::Store>& store, qint64 jobId,
        const QString& jobNumber, std::FILE* out, std::FILE* err)
{
    const int modes =
        int(bool(request.issuePackage)) + int(bool(request.revision)) + int(request.history);
    if (modes > 1)
        return failed(err,
                      QStringLiteral("--issue-package, --revision and --history go one at a time"));
    if (request.revision && !request.exportPdf)
        return failed(
            err, QStringLiteral("--revision needs --export FILE.pdf to write the revision to"));
    if (jobId == 0)
        return failed(err, jobNumber.isEmpty()
                               ? QStringLiteral("the office \"%1\" has no job").arg(store->path())
                               : QStringLiteral("the office \"%1\" has no job numbered \"%2\"")
                                     .arg(store->path(), jobNumber));
    try {
        const auto job = store->openJob(jobId);
        if (request.history) {
            const QByteArray csv = job->history()->csv();
            std::fwrite(csv.constData(), 1, std::size_t(csv.size()), out);
            std::fflush(out);
            return 0;
        }
        if (request.revision) {
            bool ok = false;
            const qint32 number = request.revision->toInt(&ok);
            if (!ok || number < 0)
                return failed(
                    err,
                    QStringLiteral("--revision needs a revision number (0, 1, 2 ...), not \"%1\"")
                        .arg(*request.revision));
            const QString path = *request.exportPdf;
            PackageIssuer::writeRevision(*job, number, path);
            std::fprintf(out, "%s: revision %d of job %s\n", qPrintable(path), int(number),
                         qPrintable(job->number()));
            return 0;
        }
        PackageIssuer issuer(store, job);
        const QStringList gaps = issuer.gaps();
        if (!gaps.isEmpty() && !request.force) {
            std::fprintf(
                err,
                "zeb-workbench: the package of job %s is incomplete (--force issues it anyway):\n",
                qPrintable(job->number()));
            for (const QString& gap : gaps)
                std::fprintf(err, "  - %s\n", qPrintable(gap));
            return 2;
        }
        issuer.issue(*request.issuePackage);
        std::fprintf(out, "Revision: %d\nSHA-256: %s\n", int(issuer.issued().number),
                     qPrintable(issuer.issued().sha256));
        std::fflush(out);
        return 0;
    } catch (const ZebObjects::Failure& f) {
        return failed(err, f.Description());
    }
}

}  // namespace HistoryCommands
