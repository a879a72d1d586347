#include "cutsheetattach.h"

#include "contracts/failure.h"
#include "package/cutsheetfile.h"
#include "store/store.h"
#include "store/storecutsheets.h"

#include <QFileInfo>

#include <cstdio>

namespace {

struct Checked {
    QString type;
    QString path;
    QByteArray bytes;
    ZebPackage::CutSheetFile::Inspection inspection;
};

Checked check(const QString& type, const QString& path)
{
    Checked c{type.trimmed(), path, {}, {}};
    c.inspection = ZebPackage::CutSheetFile::inspectFile(path, &c.bytes);
    return c;
}

void store(ZebObjects::Store& store, qint64 jobId, const Checked& c)
{
    ZebObjects::StoreCutSheets sheets = store.cutSheets();
    const qint64 id = sheets.add(QFileInfo(c.path).fileName(), c.bytes, c.inspection.pageCount,
                                 CutSheetAttach::currentUser());
    sheets.attach(jobId, c.type, id);
}

}  // namespace

QString CutSheetAttach::currentUser()
{
    QString user = qEnvironmentVariable("USER");
    if (user.isEmpty())
        user = qEnvironmentVariable("USERNAME");
    return user;
}

CutSheetAttach::Result CutSheetAttach::attach(ZebObjects::Store& s, qint64 jobId,
                                              const QString& type, const QString& path)
{
    const Checked c = check(type, path);
    store(s, jobId, c);
    return {QFileInfo(path).fileName(), c.inspection.pageCount, c.inspection.warnings};
}

int CutSheetAttach::fromCommandLine(ZebObjects::Store& s, qint64 jobId, const QStringList& pairs)
{
    QList<Checked> checked;
    for (const QString& pair : pairs) {
        const qsizetype eq = pair.indexOf(QLatin1Char('='));
        if (eq <= 0 || eq == pair.size() - 1 || pair.left(eq).trimmed().isEmpty()) {
            std::fprintf(stderr,
                         "zeb-workbench: --attach-cut-sheet needs TYPE=FILE.pdf, not \"%s\"\n",
                         qPrintable(pair));
            return 1;
        }
        try {
            checked.append(check(pair.left(eq), pair.mid(eq + 1)));
        } catch (const ZebObjects::Failure& f) {
            std::fprintf(stderr, "zeb-workbench: %s\n", qPrintable(f.Description()));
            return 1;
        }
    }
    try {
        s.writeAll([&] {
            for (const Checked& c : checked)
                store(s, jobId, c);
        });
    } catch (const ZebObjects::Failure& f) {
        std::fprintf(stderr, "zeb-workbench: %s\n", qPrintable(f.Description()));
        return 1;
    }
    for (const Checked& c : checked) {
        const QString name = QFileInfo(c.path).fileName();
        for (const QString& warning : c.inspection.warnings)
            std::fprintf(stderr,
                         "zeb-workbench: the cut sheet \"%s\" was repaired on reading: %s\n",
                         qPrintable(name), qPrintable(warning));
        std::printf("%s: %d %s attached to type %s\n", qPrintable(name),
                    int(c.inspection.pageCount), c.inspection.pageCount == 1 ? "page" : "pages",
                    qPrintable(c.type));
    }
    std::fflush(stdout);
    return 0;
}
