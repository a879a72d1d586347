#include "jobcommands.h"

#include "contracts/textobject.h"
#include "contracts/textobjects.h"
#include "csvtable.h"
#include "rules/textkind.h"
#include "officeimports.h"
#include "store/storebrands.h"
#include "store/storejob.h"
#include "store/storelineitems.h"

#include <QSet>

#include <cstdio>

namespace JobCommands {

namespace {

const QString kSource = QStringLiteral("zeb-workbench.Import");

QList<ZebObjects::JobContents::Text> libraryTexts(ZebObjects::Store& store, qint32 kind)
{
    QList<ZebObjects::JobContents::Text> out;
    const auto library = store.library(kind);
    for (qint32 i = 1; i <= library->Count(); ++i) {
        const auto t = library->Item(i);
        out.append({t->Text(), t->Selected()});
    }
    return out;
}

// Every problem of a checked import, one a line, under a line that says how many rows are bad.
ZebObjects::Failure badRows(const QString& path, const TableImport& import)
{
    QSet<int> rows;
    QStringList lines;
    for (const TableImport::Problem& p : import.problems()) {
        rows.insert(p.row);
        lines.append(p.message());
    }
    return ZebObjects::Failure(
        ZebObjects::ErrorNumber::BadFileFormat, kSource,
        QStringLiteral("Nothing was imported: %1 of %2 rows of \"%3\" %4 not right:\n%5")
            .arg(rows.size())
            .arg(import.rows().size())
            .arg(path, rows.size() == 1 ? QStringLiteral("is") : QStringLiteral("are"),
                 lines.join(QLatin1Char('\n'))));
}

TableImport checked(TableImport import, ZebObjects::Store& store, const QString& path,
                    const QString& setting)
{
    import.setTable(CsvTable::read(path));
    if (import.table().rows.size() < 2)
        throw ZebObjects::Failure(
            ZebObjects::ErrorNumber::BadFileFormat, kSource,
            QStringLiteral("\"%1\" holds no rows under its header").arg(path));
    OfficeImports::mapColumns(import, store, setting);
    import.check();
    if (!import.problems().isEmpty())
        throw badRows(path, import);
    return import;
}

}  // namespace

ZebObjects::JobContents newJobContents(ZebObjects::Store& store,
                                       const ZebObjects::JobDetails& details)
{
    ZebObjects::JobContents c;
    c.number = details.number.trimmed();
    c.name = details.name.trimmed();
    c.siteAddress = details.siteAddress;
    c.architect = details.architect;
    c.engineer = details.engineer;
    c.contractor = details.contractor;
    const QStringList issuers = store.issuedByNames();
    c.issuedBy = issuers.isEmpty() ? QString() : issuers.first();
    c.includeCoverLetter = true;
    c.includeBOM = true;
    c.includeLabels = true;
    c.includeDefaultParagraphs = true;
    c.includeQuantity = true;
    c.includeType = true;
    c.includeBrand = true;
    c.includeManufacturer = true;
    c.includeCatalogNumber = true;
    c.includeDescription = true;
    c.includeLineComments = true;
    c.paragraphs = libraryTexts(store, ZebObjects::TextKind::CoverLetterParagraph);
    c.remarks = libraryTexts(store, ZebObjects::TextKind::CoverLetterRemark);
    c.bomRemarks = libraryTexts(store, ZebObjects::TextKind::BOMRemark);
    c.labelFields = {
        {QStringLiteral("COMPANY"), QStringLiteral("Company"), 1},
        {QStringLiteral("ATTENTION"), QStringLiteral("Attention"), 2},
        {QStringLiteral("STREET"), QStringLiteral("Street Address"), 3},
        {QStringLiteral("STREET2"), QStringLiteral("Suite / Floor"), 0},
        {QStringLiteral("CITYSTATEZIP"), QStringLiteral("City, State Zip"), 4},
        {QStringLiteral("JOBNAME"), QStringLiteral("Job Name"), 0},
        {QStringLiteral("JOBNUMBER"), QStringLiteral("Job Number"), 0},
        {QStringLiteral("PONUMBER"), QStringLiteral("Purchase Order"), 0},
        {QStringLiteral("PHONE"), QStringLiteral("Phone"), 0},
        {QStringLiteral("SUBMITTALDATE"), QStringLiteral("Submittal Date"), 0},
    };
    return c;
}

QString newJob(ZebObjects::Store& store, const ZebObjects::JobDetails& details)
{
    if (details.number.trimmed().isEmpty() || details.name.trimmed().isEmpty())
        throw ZebObjects::Failure(ZebObjects::ErrorNumber::InvalidProcedureCall, kSource,
                                  QStringLiteral("A new job needs a number and a name"));
    for (const ZebObjects::JobSummary& j : store.jobs())
        if (j.number == details.number.trimmed())
            throw ZebObjects::Failure(
                ZebObjects::ErrorNumber::KeyAlreadyInCollection, kSource,
                QStringLiteral("This key is already associated with an element of this "
                               "collection: the office already has a job numbered \"%1\"")
                    .arg(j.number));
    store.createJob(newJobContents(store, details));
    return QStringLiteral("Made job %1 \"%2\" in %3")
        .arg(details.number.trimmed(), details.name.trimmed(), store.path());
}

QString importLines(ZebObjects::Store& store, const QString& jobNumber, const QString& path,
                    bool replace)
{
    qint64 id = 0;
    for (const ZebObjects::JobSummary& j : store.jobs())
        if (j.number == jobNumber)
            id = j.id;
    if (id == 0)
        throw ZebObjects::Failure(ZebObjects::ErrorNumber::ElementNotFound, kSource,
                                  QStringLiteral("The office \"%1\" has no job numbered \"%2\"")
                                      .arg(store.path(), jobNumber));
    const TableImport import =
        checked(OfficeImports::lineItems(), store, path, OfficeImports::LineMappingSetting);
    const auto lines = store.openJob(id)->lineItems();
    const qint32 before = lines->Count();
    // The lines and the brands new to the office, together.
    qint32 brandsAdded = 0;
    store.writeAll([&] {
        lines->importLines(OfficeImports::lines(import), replace);
        brandsAdded = store.brands().addMissing(OfficeImports::brands(import));
    });
    return QStringLiteral("Imported %1 lines from \"%2\" into job %3 (%4; it has %5 lines)%6")
        .arg(import.rows().size())
        .arg(path, jobNumber,
             replace ? QStringLiteral("replacing its %1 lines").arg(before)
                     : QStringLiteral("added after its %1 lines").arg(before))
        .arg(lines->Count())
        .arg(OfficeImports::brandsAdded(brandsAdded));
}

QString importCustomers(ZebObjects::Store& store, const QString& path)
{
    const TableImport import =
        checked(OfficeImports::customers(), store, path, OfficeImports::CustomerMappingSetting);
    store.addDirectoryCustomers(OfficeImports::customers(import, store));
    return QStringLiteral("Imported %1 customers from \"%2\" into the directory (it has %3)")
        .arg(import.rows().size())
        .arg(path)
        .arg(store.directoryCount());
}

namespace { }

void addOptions(QCommandLineParser& parser)
{
    parser.addOptions({
        {QStringLiteral("new-job"),
         QStringLiteral("Make a job with this number (and --job-name) and exit; fails when the "
                        "number exists. A --db file that does not exist becomes a new, empty "
                        "office."),
         QStringLiteral("number")},
        {QStringLiteral("job-name"), QStringLiteral("With --new-job: the new job's name."),
         QStringLiteral("name")},
        {QStringLiteral("import-lines"),
         QStringLiteral("Import the line items of this CSV file into the job of --job (or "
                        "--new-job) and exit; nothing is written when a row is bad."),
         QStringLiteral("file")},
        {QStringLiteral("replace"), QStringLiteral("With --import-lines: the file's lines replace "
                                                   "the job's lines instead of following them.")},
        {QStringLiteral("import-customers"),
         QStringLiteral("Add the customers of this CSV file to the office's directory and exit; "
                        "nothing is written when a row is bad."),
         QStringLiteral("file")},
    });
}

Request read(const QCommandLineParser& parser)
{
    const auto value = [&parser](const char* name) -> std::optional<QString> {
        if (!parser.isSet(QString::fromLatin1(name)))
            return std::nullopt;
        return parser.value(QString::fromLatin1(name));
    };
    Request request;
    request.newJob = value("new-job");
    request.jobName = parser.value(QStringLiteral("job-name"));
    request.importLines = value("import-lines");
    request.replace = parser.isSet(QStringLiteral("replace"));
    request.importCustomers = value("import-customers");
    request.job = parser.value(QStringLiteral("job"));
    return request;
}

int run(ZebObjects::Store& store, const Request& request)
{
    const QString newJobNumber = request.newJob.value_or(QString());
    const QString jobNumber = request.job;
    const QString linesFile = request.importLines.value_or(QString());
    const QString customersFile = request.importCustomers.value_or(QString());
    try {
        if (request.importLines && jobNumber.isEmpty() && newJobNumber.isEmpty())
            throw ZebObjects::Failure(ZebObjects::ErrorNumber::InvalidProcedureCall, kSource,
                                      QStringLiteral("--import-lines needs the job: --job NUMBER"));
        QStringList done;
        if (!newJobNumber.isEmpty()) {
            ZebObjects::JobDetails details;
            details.number = newJobNumber;
            details.name = request.jobName;
            done << newJob(store, details);
        }
        if (!customersFile.isEmpty())
            done << importCustomers(store, customersFile);
        if (!linesFile.isEmpty())
            done << importLines(store, jobNumber.isEmpty() ? newJobNumber : jobNumber, linesFile,
                                request.replace);
        for (const QString& line : done)
            std::printf("%s\n", qPrintable(line));
        return 0;
    } catch (const ZebObjects::Failure& f) {
        std::fprintf(stderr, "zeb-workbench: %s\n", qPrintable(f.Description()));
        return 1;
    }
}

}  // namespace JobCommands
