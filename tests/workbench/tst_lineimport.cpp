// Line items and customers in from CSV files and the clipboard: the parsing, the column mapping
// and the office's memory of it, every bad cell named by row and column, the preview before
// anything is written, one transaction, and the command line's --import-lines and
// --import-customers.
#include "contracts/lineitems.h"
#include "csvtable.h"
#include "formdescription.h"
#include "importdialog.h"
#include "contracts/runtime.h"
#include "officefile.h"
#include "officeimports.h"
#include "store/jobcontents.h"
#include "store/store.h"
#include "store/storebom.h"
#include "store/storecustomers.h"
#include "store/storejob.h"
#include "store/storelineitems.h"
#include "support/testsupport.h"
#include "support/workbenchtesting.h"
#include "userinput.h"
#include "workstation.h"

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QFile>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QStandardItemModel>
#include <QTemporaryDir>
#include <QTest>

using ZebObjects::Store;

namespace {
const QString kData = QStringLiteral(ZEB_DATA_DIR);

using ZebTest::catalogNumbers;

TableImport checkedLines(const QByteArray& csv)
{
    TableImport import = OfficeImports::lineItems();
    import.setTable(CsvTable::parse(csv, QStringLiteral("test")));
    import.guessMapping();
    import.check();
    return import;
}

QStringList messages(const TableImport& import)
{
    QStringList out;
    for (const auto& p : import.problems())
        out.append(p.message());
    return out;
}
}  // namespace

class tst_LineImport : public QObject {
    Q_OBJECT
private slots:
    void initTestCase()
    {
        QVERIFY(m_home.isValid());
        ZebTest::useScratchHome(m_home, false);
    }
    void init()
    {
        m_scratch = std::make_unique<QTemporaryDir>();
        m_db = m_scratch->filePath(QStringLiteral("office.sqlite"));
    }
    void cleanup()
    {
        ZebObjects::Runtime::setApplicationServices(nullptr);
        m_store.reset();
        m_scratch.reset();
    }

    void quotedDelimitersQuotesAndLineBreaksStayInTheirCell()
    {
        const CsvTable t = CsvTable::parse("a,\"b,c\",\"d\r\ne\",\"f\"\"g\"\r\n1,2,3,4\r\n",
                                           QStringLiteral("test"));
        QCOMPARE(t.rows.size(), 2);
        QCOMPARE(t.rows[0], (QStringList{QStringLiteral("a"), QStringLiteral("b,c"),
                                         QStringLiteral("d\r\ne"), QStringLiteral("f\"g")}));
        QCOMPARE(t.rows[1].size(), 4);
        QCOMPARE(t.delimiter, ',');
    }

    void utf8WithAndWithoutAMarkAndWindows1252AreTold()
    {
        const CsvTable marked =
            CsvTable::parse("\xEF\xBB\xBFType,Desc\nA,Caf\xC3\xA9\n", QStringLiteral("test"));
        QCOMPARE(marked.encoding, QStringLiteral("UTF-8 with BOM"));
        QCOMPARE(marked.rows[0][0], QStringLiteral("Type"));
        QCOMPARE(marked.rows[1][1], QStringLiteral("Caf\u00e9"));
        const CsvTable plain =
            CsvTable::parse("Type,Desc\nA,Caf\xC3\xA9\n", QStringLiteral("test"));
        QCOMPARE(plain.encoding, QStringLiteral("UTF-8"));
        QCOMPARE(plain.rows[1][1], QStringLiteral("Caf\u00e9"));
        const CsvTable old =
            CsvTable::parse("Type,Desc\nA,Caf\xE9 \x96 8\x92\n", QStringLiteral("test"));
        QCOMPARE(old.encoding, QStringLiteral("Windows-1252"));
        QCOMPARE(old.rows[1][1], QStringLiteral("Caf\u00e9 \u2013 8\u2019"));
    }

    void aQuoteThatNeverClosesFailsNamingTheFileAndTheRow()
    {
        const auto e = ZebTest::failureOf(
            [] { CsvTable::parse("a,b\n1,2\n\"3,4\n", QStringLiteral("\"lines.csv\"")); });
        QCOMPARE(e.Number, 321);
        QCOMPARE(e.Description,
                 QStringLiteral("\"lines.csv\" is not a readable CSV file: row 3: error "
                                "parsing data while strict checking enabled"));
    }

    void rowsFromASpreadsheetOnTheClipboardAreTabSeparated()
    {
        const CsvTable t = CsvTable::fromClipboardText(
            QStringLiteral("Qty\tType\tCatalog\tDescription\n3\tA\tVH-1\tTroffer, 2x4\n"));
        QCOMPARE(t.delimiter, '\t');
        QCOMPARE(t.rows[1], (QStringList{QStringLiteral("3"), QStringLiteral("A"),
                                         QStringLiteral("VH-1"), QStringLiteral("Troffer, 2x4")}));
    }

    void theMappingIsGuessedFromEitherSampleFilesHeader()
    {
        TableImport a = OfficeImports::lineItems();
        a.setTable(CsvTable::read(kData + QStringLiteral("/lines-quoting-system.csv")));
        a.guessMapping();
        // Quantity, Type, Brand, Catalog Number, Description, Group, MTO, Comment, Selected,
        // Manufacturer: a lone "Manufacturer" column is the brand.
        QCOMPARE(a.mapping(), (QList<int>{1, 0, 2, 3, 4, 5, 6, 7, -1, -1}));
        TableImport b = OfficeImports::lineItems();
        b.setTable(CsvTable::read(kData + QStringLiteral("/lines-spreadsheet-export.csv")));
        b.guessMapping();
        QCOMPARE(b.table().delimiter, ';');
        QCOMPARE(b.table().encoding, QStringLiteral("Windows-1252"));
        QCOMPARE(b.mapping(), (QList<int>{0, 2, 3, 1, 4, 5, -1, 6, -1, -1}));
    }

    void everyBadCellIsNamedByRowAndColumn()
    {
        const TableImport import = checkedLines("Qty,Type,Catalog,Description\n"
                                                "2.5,A,VH-1,Troffer\n"
                                                "4,,VH-2,Downlight\n"
                                                "6,C,,Pendant\n"
                                                "8,DDDDDDDDDDDDDDDDDDDDD,VH-4,Strip\n"
                                                "ten,E,VH-5,Wall pack\n");
        QCOMPARE(
            messages(import),
            (QStringList{
                QStringLiteral(
                    "Row 2, column \"Qty\" (A): the quantity \"2.5\" is not a whole number"),
                QStringLiteral("Row 3, column \"Type\" (B): the type is missing"),
                QStringLiteral("Row 4, column \"Catalog\" (C): the catalog number is missing"),
                QStringLiteral(
                    "Row 5, column \"Type\" (B): the type has 21 characters; it holds at most 20"),
                QStringLiteral(
                    "Row 6, column \"Qty\" (A): the quantity \"ten\" is not a whole number"),
            }));
        QCOMPARE(import.rows().size(), 5);
    }

    void bothSampleFilesImportOnTheCommandLineWithOneLineEach()
    {
        makeOfficeWithJob();
        auto r = run({QStringLiteral("--db"), m_db, QStringLiteral("--job"),
                      QStringLiteral("25-0001"), QStringLiteral("--import-lines"),
                      kData + QStringLiteral("/lines-quoting-system.csv")});
        QCOMPARE(r.err, QString());
        QCOMPARE(r.code, 0);
        QCOMPARE(
            r.out,
            QStringLiteral("Imported 5 lines from \"%1/lines-quoting-system.csv\" into job 25-0001 "
                           "(added after its 0 lines; it has 5 lines); 4 brands added to the "
                           "office\n")
                .arg(kData));
        r = run({QStringLiteral("--db"), m_db, QStringLiteral("--job"), QStringLiteral("25-0001"),
                 QStringLiteral("--import-lines"),
                 kData + QStringLiteral("/lines-spreadsheet-export.csv")});
        QCOMPARE(r.code, 0);
        QCOMPARE(r.out,
                 QStringLiteral(
                     "Imported 3 lines from \"%1/lines-spreadsheet-export.csv\" into job 25-0001 "
                     "(added after its 5 lines; it has 8 lines)\n")
                     .arg(kData));
        const auto store = Store::open(m_db, Store::OpenMode::OpenExisting);
        const auto rows = store->openJob(store->jobs().first().id)->lineItems()->rows();
        QCOMPARE(rows.size(), 8);
        QCOMPARE(rows[1].data.quantity, 12);
        QCOMPARE(rows[1].data.description, QStringLiteral("6\" downlight, 1500 lm, 3000K"));
        QCOMPARE(*rows[1].data.comment,
                 QStringLiteral("Verify ceiling\ncavity depth before ordering"));
        QVERIFY(!rows[0].data.comment.has_value());
        QCOMPARE(rows[2].data.mto, true);
        // Lines from a file without a column for it go on the bill of materials.
        QVERIFY(rows[0].data.selected && rows[7].data.selected);
        QCOMPARE(rows[6].data.catalogNumber, QStringLiteral("VH-PEND-CAF\u00c9-27K"));
        QCOMPARE(rows[6].data.description, QStringLiteral("Caf\u00e9 pendant, 2700K"));
        QCOMPARE(*rows[6].data.comment, QStringLiteral("Hang at 8\u2019-6\""));
        QCOMPARE(rows[5].data.description, QStringLiteral("2x2 troffer \u2013 3000 lm"));
    }

    void aBadRowOnTheCommandLineListsEveryProblemAndWritesNothing()
    {
        makeOfficeWithJob();
        const QString bad = m_scratch->filePath(QStringLiteral("bad.csv"));
        QFile f(bad);
        QVERIFY(f.open(QIODevice::WriteOnly));
        f.write("Qty,Type,Catalog\n3,A,VH-1\n1.5,B,VH-2\n4,,\n");
        f.close();
        const auto r = run({QStringLiteral("--db"), m_db, QStringLiteral("--job"),
                            QStringLiteral("25-0001"), QStringLiteral("--import-lines"), bad});
        QCOMPARE(r.code, 1);
        QCOMPARE(r.out, QString());
        QCOMPARE(r.err,
                 QStringLiteral(
                     "zeb-workbench: Nothing was imported: 2 of 3 rows of \"%1\" are not right:\n"
                     "Row 3, column \"Qty\" (A): the quantity \"1.5\" is not a whole number\n"
                     "Row 4, column \"Type\" (B): the type is missing\n"
                     "Row 4, column \"Catalog\" (C): the catalog number is missing")
                     .arg(bad));
        const auto store = Store::open(m_db, Store::OpenMode::OpenExisting);
        QCOMPARE(store->openJob(store->jobs().first().id)->lineItems()->Count(), qint16(0));
    }

    void replaceOnTheCommandLinePutsTheFilesLinesInPlaceOfTheJobs()
    {
        makeOfficeWithJob();
        const QString file = kData + QStringLiteral("/lines-spreadsheet-export.csv");
        QCOMPARE(run({QStringLiteral("--db"), m_db, QStringLiteral("--job"),
                      QStringLiteral("25-0001"), QStringLiteral("--import-lines"), file})
                     .code,
                 0);
        const auto r =
            run({QStringLiteral("--db"), m_db, QStringLiteral("--job"), QStringLiteral("25-0001"),
                 QStringLiteral("--import-lines"), file, QStringLiteral("--replace")});
        QCOMPARE(r.code, 0);
        QCOMPARE(r.out, QStringLiteral(
                            "Imported 3 lines from \"%1\" into job 25-0001 (replacing its 3 lines; "
                            "it has 3 lines)\n")
                            .arg(file));
        const auto store = Store::open(m_db, Store::OpenMode::OpenExisting);
        QCOMPARE(
            catalogNumbers(*store->openJob(store->jobs().first().id)->lineItems()),
            (QStringList{QStringLiteral("QZ-TR-2X2-30L-35K"),
                         QStringLiteral("VH-PEND-CAF\u00c9-27K"), QStringLiteral("BM-STRIP-4FT")}));
    }

    void anImportThatFailsLeavesTheJobAsItWas()
    {
        makeOfficeWithJob();
        const auto lines = m_store->openJob(m_store->jobs().first().id)->lineItems();
        lines->importLines(
            {{3, QStringLiteral("A"), {}, QStringLiteral("VH-1"), {}, {}, false, {}, false}},
            false);
        // More lines than a job holds: the replacing delete is undone with the rest.
        QList<ZebObjects::LineItemRecord> many(
            32768, {1, QStringLiteral("B"), {}, QStringLiteral("X"), {}, {}, false, {}, false});
        const auto e = ZebTest::failureOf([&] { lines->importLines(many, true); });
        QCOMPARE(e.Number, 6);
        QCOMPARE(catalogNumbers(*lines), QStringList{QStringLiteral("VH-1")});
    }

    void thePreviewMarksEveryBadCellAndImportWaitsForAGoodMapping()
    {
        TableImport import = OfficeImports::lineItems();
        import.setTable(CsvTable::parse("Fixture Qty,Type,Catalog\n3,A,VH-1\n4,B,VH-2\n",
                                        QStringLiteral("test")));
        import.guessMapping();
        ImportDialog dialog(QStringLiteral("Import Line Items"), QStringLiteral("test.csv"), import,
                            true);
        auto* importButton = dialog.findChild<QPushButton*>(QStringLiteral("cmdImport"));
        // "Fixture Qty" names no field: every quantity is missing.
        QVERIFY(!importButton->isEnabled());
        QCOMPARE(dialog.problemList()->count(), 2);
        QCOMPARE(dialog.problemList()->item(0)->text(),
                 QStringLiteral("Row 2, column \"Quantity\": the quantity is missing"));
        const QAbstractItemModel* preview = dialog.preview();
        QCOMPARE(preview->index(0, 0).data(Qt::ToolTipRole).toString(),
                 QStringLiteral("Row 2, column \"Quantity\": the quantity is missing"));
        QCOMPARE(preview->index(0, 0).data(Qt::AccessibleDescriptionRole).toString(),
                 QStringLiteral("Row 2, column \"Quantity\": the quantity is missing"));
        QCOMPARE(preview->index(0, 1).data().toString(), QStringLiteral("A"));
        QCOMPARE(preview->headerData(0, Qt::Vertical).toInt(), 2);
        QVERIFY(preview->index(0, 0).data(Qt::BackgroundRole)
                != preview->index(0, 1).data(Qt::BackgroundRole));
        QCOMPARE(dialog.findChild<QLabel*>(QStringLiteral("lblSummary"))->text(),
                 QStringLiteral("2 of 2 rows are not right; nothing is imported until they are "
                                "fixed in the file or "
                                "the columns are chosen again."));
        // The user chooses the column by keyboard.
        QComboBox* quantity = dialog.mappingBox(0);
        quantity->setFocus();
        QTest::keyClick(quantity, Qt::Key_Down);
        QCOMPARE(quantity->currentText(), QStringLiteral("\"Fixture Qty\" (A)"));
        QCOMPARE(dialog.problemList()->count(), 0);
        QVERIFY(importButton->isEnabled());
        QCOMPARE(dialog.findChild<QLabel*>(QStringLiteral("lblSummary"))->text(),
                 QStringLiteral("All 2 rows are ready to import."));
        QCOMPARE(dialog.import().mappingText(),
                 QStringLiteral("Quantity=Fixture Qty\nType=Type\nCatalog Number=Catalog"));
    }

    void theColumnsChosenInTheWindowAreRememberedForTheOffice()
    {
        makeOfficeWithJob();
        auto window = openWorkstation();
        ZebTest::WhenModal<ImportDialog> answer([](ImportDialog& dialog) {
            QComboBox* quantity = dialog.mappingBox(0);
            quantity->setFocus();
            QTest::keyClick(quantity, Qt::Key_Down);
            QTest::mouseClick(dialog.findChild<QRadioButton*>(QStringLiteral("optReplace")),
                              Qt::LeftButton);
            QTest::mouseClick(dialog.findChild<QPushButton*>(QStringLiteral("cmdImport")),
                              Qt::LeftButton);
        });
        QVERIFY(window->importLines(
            CsvTable::parse("Fixture Qty,Type,Catalog\n3,A,VH-1\n", QStringLiteral("test")),
            QStringLiteral("test.csv")));
        QVERIFY(answer.answered());
        QCOMPARE(catalogNumbers(*window->job()->lineItems()), QStringList{QStringLiteral("VH-1")});
        window.reset();
        ZebObjects::Runtime::setApplicationServices(nullptr);
        m_store.reset();
        // The next file of that layout imports without a word, also from a script.
        const QString next = m_scratch->filePath(QStringLiteral("next.csv"));
        QFile f(next);
        QVERIFY(f.open(QIODevice::WriteOnly));
        f.write("Catalog,Fixture Qty,Type\nVH-7,9,G\n");
        f.close();
        const auto r = run({QStringLiteral("--db"), m_db, QStringLiteral("--job"),
                            QStringLiteral("25-0001"), QStringLiteral("--import-lines"), next});
        QCOMPARE(r.err, QString());
        QCOMPARE(r.code, 0);
        const auto store = Store::open(m_db, Store::OpenMode::OpenExisting);
        const auto rows = store->openJob(store->jobs().first().id)->lineItems()->rows();
        QCOMPARE(rows.size(), 2);
        QCOMPARE(rows[1].data.quantity, 9);
        QCOMPARE(rows[1].data.type, QStringLiteral("G"));
    }

    void linesCopiedFromASpreadsheetArePastedThroughThePreview()
    {
        makeOfficeWithJob();
        auto window = openWorkstation();
        QApplication::clipboard()->setText(QStringLiteral("Qty\tType\tCatalog Number\tDescription\n"
                                                          "2\tK\tVH-9\tRecessed, round\n"));
        ZebTest::WhenModal<ImportDialog> answer([](ImportDialog& dialog) {
            QCOMPARE(dialog.findChild<QLabel*>(QStringLiteral("lblSource"))->text(),
                     QStringLiteral("From the clipboard (UTF-8, 1 rows under the header)"));
            QTest::mouseClick(dialog.findChild<QPushButton*>(QStringLiteral("cmdImport")),
                              Qt::LeftButton);
        });
        window->pasteLines();
        QVERIFY(answer.answered());
        const auto rows = window->job()->lineItems()->rows();
        QCOMPARE(rows.size(), 1);
        QCOMPARE(rows[0].data.description, QStringLiteral("Recessed, round"));
    }

    void customersImportOnTheCommandLineIntoTheDirectory()
    {
        makeOfficeWithJob();
        const QString file = kData + QStringLiteral("/customers-directory.csv");
        const auto r =
            run({QStringLiteral("--db"), m_db, QStringLiteral("--import-customers"), file});
        QCOMPARE(r.err, QString());
        QCOMPARE(r.code, 0);
        QCOMPARE(r.out,
                 QStringLiteral("Imported 2 customers from \"%1\" into the directory (it has 2)\n")
                     .arg(file));
        const auto store = Store::open(m_db, Store::OpenMode::OpenExisting);
        const auto customers = store->directoryCustomers();
        QCOMPARE(customers.size(), 2);
        const auto& c =
            customers.at(customers.at(0).name.startsWith(QLatin1String("Cascade")) ? 0 : 1);
        QCOMPARE(c.name, QStringLiteral("Cascade Builders, Inc."));
        QCOMPARE(c.attention, QStringLiteral("Luis Ortega"));
        QCOMPARE(c.street, QStringLiteral("88 Timberline Road"));
        QCOMPARE(c.city, QStringLiteral("Bend"));
        QCOMPARE(c.zip, QStringLiteral("97701"));
        QCOMPARE(c.accountNumber, QStringLiteral("CB-220"));
        QCOMPARE(c.key, QStringLiteral("CB-220"));
        QCOMPARE(c.type, QStringLiteral("Contractor"));
        QCOMPARE(c.displayText, QStringLiteral("Cascade Builders, Inc. (Bend)"));
    }

private:
    void makeOfficeWithJob()
    {
        m_store = Store::open(m_db);
        ZebObjects::JobContents c;
        c.number = QStringLiteral("25-0001");
        c.name = QStringLiteral("Import Test");
        m_store->createJob(c);
    }
    std::unique_ptr<Workstation> openWorkstation()
    {
        auto window = ZebTest::openWorkstation(m_store);
        window->openJob(m_store->jobs().first().id);
        return window;
    }
    static ZebTest::ProgramRun run(const QStringList& args) { return ZebTest::runWorkbench(args); }

    QTemporaryDir m_home;
    std::unique_ptr<QTemporaryDir> m_scratch;
    QString m_db;
    std::shared_ptr<Store> m_store;
};

QTEST_MAIN(tst_LineImport)
#include "tst_lineimport.moc"
