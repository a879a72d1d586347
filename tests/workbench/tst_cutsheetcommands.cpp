// Cut sheets from scripts: zeb-workbench --attach-cut-sheet TYPE=FILE.pdf on the office's store,
// then --export with them; a bad file refused with its reason and nothing attached.
#include "contracts/lineitem.h"
#include "contracts/lineitems.h"
#include "officefile.h"
#include "store/store.h"
#include "store/storecutsheets.h"
#include "store/storejob.h"
#include "store/storelineitems.h"
#include "support/testsupport.h"
#include "support/workbenchtesting.h"
#include "workstation.h"

#include <QBuffer>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

using ZebObjects::Store;

namespace {

ZebTest::ProgramRun run(const QStringList& args)
{
    return ZebTest::runWorkbench(args);
}

QString pdfText(const QString& path)
{
    QProcess p;
    p.start(QStringLiteral("pdftotext"), {path, QStringLiteral("-")});
    p.waitForFinished(60000);
    return QString::fromUtf8(p.readAllStandardOutput()).simplified();
}

using ZebTest::writeCutSheet;

const QString kJob = QStringLiteral("24-0117");

}  // namespace

class tst_CutSheetCommands : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> m_dir;
    QString m_db;
    // The types of the job's ticked lines, in line order.
    QStringList m_types;
    qint64 m_jobId = 0;

    QString file(const QString& name) const { return m_dir->filePath(name); }

    QList<ZebObjects::StoreCutSheets::Attachment> attachments() const
    {
        const auto store = Store::open(m_db, Store::OpenMode::OpenExisting);
        return store->cutSheets().attachments(m_jobId);
    }

private slots:
    void init()
    {
        m_dir = std::make_unique<QTemporaryDir>();
        QVERIFY(m_dir->isValid());
        qputenv("XDG_DATA_HOME", file(QStringLiteral("data")).toUtf8());
        qputenv("XDG_CONFIG_HOME", file(QStringLiteral("config")).toUtf8());
        m_db = file(QStringLiteral("office.sqlite"));
        const auto store = OfficeFile::resetSample(m_db);
        m_jobId = Workstation::jobByNumber(*store, kJob);
        QVERIFY(m_jobId != 0);
        m_types.clear();
        for (const auto& line : store->openJob(m_jobId)->lineItems()->Enumerate()) {
            if (line->Selected() && !line->Type().trimmed().isEmpty()
                && !m_types.contains(line->Type().trimmed()))
                m_types << line->Type().trimmed();
        }
        QVERIFY2(m_types.size() >= 2, "the sample job needs two ticked types");
    }
    void cleanup() { m_dir.reset(); }

    void attachedSheetPrintsInTheExportedPackage()
    {
        QVERIFY(writeCutSheet(file(QStringLiteral("alpha.pdf")), QStringLiteral("alpha"), 2,
                              QPageSize::A4));
        const QString out = file(QStringLiteral("package.pdf"));
        const auto r = run({QStringLiteral("--db"), m_db, QStringLiteral("--job"), kJob,
                            QStringLiteral("--attach-cut-sheet"),
                            m_types[0] + QLatin1Char('=') + file(QStringLiteral("alpha.pdf")),
                            QStringLiteral("--export"), out, QStringLiteral("--force")});
        QCOMPARE(r.code, 0);
        QVERIFY2(r.out.startsWith(
                     QStringLiteral("alpha.pdf: 2 pages attached to type %1\n").arg(m_types[0])),
                 qPrintable(r.out));
        const QString text = pdfText(out);
        QVERIFY(text.contains(QStringLiteral("alpha-p1")));
        QVERIFY(text.contains(QStringLiteral("alpha-p2")));
        QVERIFY(text.contains(QStringLiteral("Type %1: No cut sheet attached").arg(m_types[1])));

        const auto attached = attachments();
        QCOMPARE(attached.size(), 1);
        QCOMPARE(attached[0].type, m_types[0]);
        QCOMPARE(attached[0].sheet.fileName, QStringLiteral("alpha.pdf"));
        QCOMPARE(attached[0].sheet.pageCount, 2);

        // Without --force the export stops at the types that still lack a sheet.
        const auto check = run({QStringLiteral("--db"), m_db, QStringLiteral("--job"), kJob,
                                QStringLiteral("--export"), file(QStringLiteral("again.pdf"))});
        QCOMPARE(check.code, 2);
        QVERIFY2(check.err.contains(
                     QStringLiteral("  - Type %1 has no cut sheet attached.\n").arg(m_types[1])),
                 qPrintable(check.err));
        QVERIFY(!check.err.contains(
            QStringLiteral("  - Type %1 has no cut sheet attached.").arg(m_types[0])));
        QVERIFY(!QFile::exists(file(QStringLiteral("again.pdf"))));
    }

    void badFileIsRefusedWithItsReasonAndNothingIsAttached()
    {
        QVERIFY(writeCutSheet(file(QStringLiteral("alpha.pdf")), QStringLiteral("alpha"), 1,
                              QPageSize::A4));
        QFile notes(file(QStringLiteral("notes.pdf")));
        QVERIFY(notes.open(QIODevice::WriteOnly));
        notes.write("Fixture schedule, see the drawings.\n");
        notes.close();
        const auto r = run({QStringLiteral("--db"), m_db, QStringLiteral("--job"), kJob,
                            QStringLiteral("--attach-cut-sheet"),
                            m_types[0] + QLatin1Char('=') + file(QStringLiteral("alpha.pdf")),
                            QStringLiteral("--attach-cut-sheet"),
                            m_types[1] + QLatin1Char('=') + file(QStringLiteral("notes.pdf"))});
        QCOMPARE(r.code, 1);
        QCOMPARE(
            r.err,
            QStringLiteral(
                "zeb-workbench: The cut sheet \"notes.pdf\" is refused: it is not a PDF file."));
        QCOMPARE(r.out, QString());
        QCOMPARE(attachments().size(), 0);
    }

    void repairedFileIsAttachedAndTheRepairIsTold()
    {
        QVERIFY(writeCutSheet(file(QStringLiteral("good.pdf")), QStringLiteral("golf"), 1,
                              QPageSize::A4));
        QFile good(file(QStringLiteral("good.pdf")));
        QVERIFY(good.open(QIODevice::ReadOnly));
        QByteArray pdf = good.readAll();
        // The cross-reference table's offset points nowhere: a reader rebuilds the table.
        pdf = pdf.left(pdf.lastIndexOf("startxref")) + "startxref\n999999\n%%EOF\n";
        QFile golf(file(QStringLiteral("golf.pdf")));
        QVERIFY(golf.open(QIODevice::WriteOnly));
        golf.write(pdf);
        golf.close();
        const auto r = run({QStringLiteral("--db"), m_db, QStringLiteral("--job"), kJob,
                            QStringLiteral("--attach-cut-sheet"),
                            m_types[0] + QLatin1Char('=') + file(QStringLiteral("golf.pdf"))});
        QCOMPARE(r.code, 0);
        QVERIFY2(r.err.startsWith(QStringLiteral(
                     "zeb-workbench: the cut sheet \"golf.pdf\" was repaired on reading: ")),
                 qPrintable(r.err));
        QCOMPARE(r.out, QStringLiteral("golf.pdf: 1 page attached to type %1\n").arg(m_types[0]));
        QCOMPARE(attachments().size(), 1);
    }

    void argumentWithoutTypeOrFileIsRefused()
    {
        const auto r = run({QStringLiteral("--db"), m_db, QStringLiteral("--job"), kJob,
                            QStringLiteral("--attach-cut-sheet"), QStringLiteral("alpha.pdf")});
        QCOMPARE(r.code, 1);
        QCOMPARE(r.err,
                 QStringLiteral(
                     "zeb-workbench: --attach-cut-sheet needs TYPE=FILE.pdf, not \"alpha.pdf\""));
        QCOMPARE(attachments().size(), 0);
    }
};

QTEST_MAIN(tst_CutSheetCommands)
#include "tst_cutsheetcommands.moc"
