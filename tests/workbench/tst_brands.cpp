// The office's brands and who makes each: kept in the store (an office of the previous version
// gains the brands its lines use), edited in their dialog, learned from imports and from the Line
// Items Editor, printed on the bill of materials, and seen by every workstation of a server office.
#include "brandsdialog.h"
#include "contracts/runtime.h"
#include "csvtable.h"
#include "formdescription.h"
#include "importdialog.h"
#include "lineitemeditor.h"
#include "package/packagegenerator.h"
#include "pgserver.h"
#include "rules/brandrecord.h"
#include "sampleoffice/sampleoffice.h"
#include "store/jobcontents.h"
#include "store/store.h"
#include "store/storebrands.h"
#include "store/storejob.h"
#include "store/storelineitems.h"
#include "storepackagesource.h"
#include "support/testsupport.h"
#include "userinput.h"
#include "workstation.h"

#include <QApplication>
#include <QFile>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QStatusBar>
#include <QTableView>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QTest>

using ZebObjects::BrandRecord;
using ZebObjects::Store;
using ZebTest::error;
using ZebTest::failureOf;

namespace {
const QString kSource = QStringLiteral("ZebObjects.StoreBrands");

ZebObjects::LineItemRecord line(const QString& type, const QString& brand, const QString& catalog)
{
    ZebObjects::LineItemRecord d;
    d.quantity = 2;
    d.type = type;
    d.brand = brand;
    d.catalogNumber = catalog;
    d.description = QStringLiteral("Recessed downlight");
    d.selected = true;
    return d;
}

QStringList lineBrands(ZebObjects::StoreLineItems& lines)
{
    QStringList out;
    for (const auto& r : lines.rows())
        out.append(r.data.brand);
    return out;
}

// Runs a statement on the SQLite file beside the store's own connection.
QVariant rawValue(const QString& path, const QString& sql)
{
    QVariant out;
    {
        QSqlDatabase db =
            QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("tst_brands_raw"));
        db.setDatabaseName(path);
        if (db.open()) {
            QSqlQuery q(db);
            if (q.exec(sql) && q.next())
                out = q.value(0);
        }
        db.close();
    }
    QSqlDatabase::removeDatabase(QStringLiteral("tst_brands_raw"));
    return out;
}

// Opens the editor of the table's current cell with F2, as a user would, and answers it.
QLineEdit* editCurrentCell(QAbstractItemView* table)
{
    table->setFocus();
    QTest::keyClick(table, Qt::Key_F2);
    return qobject_cast<QLineEdit*>(QApplication::focusWidget());
}

void typeAndEnter(QLineEdit* editor, const QString& text)
{
    QVERIFY2(editor, "no editor opened");
    editor->selectAll();
    QTest::keyClicks(editor, text);
    QTest::keyClick(editor, Qt::Key_Return);
    // A table commits an edit ended by Enter from the event loop; the dialog then shows the
    // store's order, also from the event loop.
    QCoreApplication::processEvents();
    QCoreApplication::processEvents();
}

}  // namespace

class tst_Brands : public QObject {
    Q_OBJECT
private slots:
    void initTestCase()
    {
        QVERIFY(m_home.isValid());
        qputenv("XDG_DATA_HOME", m_home.filePath(QStringLiteral("data")).toUtf8());
        qputenv("XDG_CONFIG_HOME", m_home.filePath(QStringLiteral("config")).toUtf8());
    }
    void init()
    {
        m_scratch = std::make_unique<QTemporaryDir>();
        m_db = m_scratch->filePath(QStringLiteral("office.sqlite"));
        m_store = Store::open(m_db);
    }
    void cleanup()
    {
        ZebObjects::Runtime::setApplicationServices(nullptr);
        m_store.reset();
        m_scratch.reset();
    }

    void brandsAreAddedRenamedWithTheirLinesAndRemovedOnlyWhenUnused()
    {
        auto brands = m_store->brands();
        brands.add({QStringLiteral(" Brightline "), QStringLiteral("Brightline Manufacturing")});
        brands.add({QStringLiteral("Orphan"), QString()});
        QCOMPARE(failureOf([&] {
                     brands.add({QStringLiteral("Brightline"), QString()});
                 }),
                 error(457, kSource,
                       QStringLiteral("This key is already associated with an element of this "
                                      "collection: the office already has the brand "
                                      "\"Brightline\"")));
        QCOMPARE(failureOf([&] {
                     brands.add({QStringLiteral("  "), QString()});
                 }),
                 error(5, kSource, QStringLiteral("A brand needs a name")));
        const qint64 id = makeJob(
            {line(QStringLiteral("A"), QStringLiteral("Brightline"), QStringLiteral("BL-1")),
             line(QStringLiteral("B"), QStringLiteral("Brightline"), QStringLiteral("BL-2"))});

        brands.rename(QStringLiteral("Brightline"), QStringLiteral("Brightline Pro"));
        brands.setManufacturer(QStringLiteral("Brightline Pro"), QStringLiteral("Brightline Inc."));
        QCOMPARE(brands.all(), (QList<BrandRecord>{{QStringLiteral("Brightline Pro"),
                                                    QStringLiteral("Brightline Inc.")},
                                                   {QStringLiteral("Orphan"), QString()}}));
        QCOMPARE(lineBrands(*m_store->openJob(id)->lineItems()),
                 (QStringList{QStringLiteral("Brightline Pro"), QStringLiteral("Brightline Pro")}));
        QCOMPARE(failureOf([&] {
                     brands.rename(QStringLiteral("Orphan"), QStringLiteral("Brightline Pro"));
                 }),
                 error(457, kSource,
                       QStringLiteral("This key is already associated with an element of this "
                                      "collection: the office already has the brand "
                                      "\"Brightline Pro\"")));

        QCOMPARE(failureOf([&] { brands.remove(QStringLiteral("Brightline Pro")); }),
                 error(5, kSource,
                       QStringLiteral("The brand \"Brightline Pro\" stays: 2 lines of the "
                                      "office's jobs use it. Give those lines another brand "
                                      "first.")));
        QCOMPARE(failureOf([&] { brands.remove(QStringLiteral("Nowhere")); }),
                 error(35601, kSource,
                       QStringLiteral("Element not found: the office has no brand \"Nowhere\"")));
        brands.remove(QStringLiteral("Orphan"));
        QCOMPARE(brands.all().size(), 1);
    }

    void anOfficeOfTheVersionBeforeGainsTheBrandsItsLinesUse()
    {
        makeJob({line(QStringLiteral("A"), QStringLiteral("Varnholt"), QStringLiteral("VH-1")),
                 line(QStringLiteral("B"), QStringLiteral("Brightline"), QStringLiteral("BL-1")),
                 line(QStringLiteral("C"), QString(), QStringLiteral("X-1")),
                 line(QStringLiteral("D"), QStringLiteral("Varnholt"), QStringLiteral("VH-2"))});
        m_store.reset();
        // The file as the version before this one left it: no brands.
        rawValue(m_db, QStringLiteral("DROP TABLE brands"));
        rawValue(m_db, QStringLiteral("PRAGMA user_version = 6"));
        QCOMPARE(rawValue(m_db, QStringLiteral("PRAGMA user_version")).toInt(), 6);

        m_store = Store::open(m_db, Store::OpenMode::OpenExisting);
        // A brand the bill of materials printed a maker for keeps it; any other starts without.
        QCOMPARE(m_store->brands().all(),
                 (QList<BrandRecord>{
                     {QStringLiteral("Brightline"), QString()},
                     {QStringLiteral("Varnholt"), QStringLiteral("Varnholt Lighting Works")}}));
        m_store.reset();
        QCOMPARE(rawValue(m_db, QStringLiteral("PRAGMA user_version")).toInt(), 7);
    }

    void theSampleOfficeKnowsTheMakersOfItsBrands()
    {
        ZebObjects::SampleOffice::fill(*m_store);
        QList<BrandRecord> expected = ZebObjects::SampleBrands::all();
        std::sort(expected.begin(), expected.end(),
                  [](const BrandRecord& a, const BrandRecord& b) { return a.name < b.name; });
        QCOMPARE(m_store->brands().all(), expected);
    }

    void theBrandsDialogAddsEditsInPlaceAndRemovesByKeyboard()
    {
        const qint64 id = makeJob(
            {line(QStringLiteral("A"), QStringLiteral("Varnholt"), QStringLiteral("VH-1"))});
        m_store->brands().addMissing(
            {{QStringLiteral("Varnholt"), QString()}, {QStringLiteral("Orphan"), QString()}});
        BrandsDialog dialog(m_store);
        dialog.show();
        QVERIFY(QTest::qWaitForWindowExposed(&dialog));
        QCOMPARE(ZebTest::unnamedAccessibleElements(&dialog), QStringList());
        QTableWidget* table = dialog.table();
        QCOMPARE(dialog.shown(), (QList<BrandRecord>{{QStringLiteral("Orphan"), QString()},
                                                     {QStringLiteral("Varnholt"), QString()}}));
        QCOMPARE(table->item(0, 2)->text(), QStringLiteral("0"));
        QCOMPARE(table->item(1, 2)->text(), QStringLiteral("1"));

        // Add: a new row whose brand is being typed.
        QTest::mouseClick(dialog.findChild<QPushButton*>(QStringLiteral("cmdAddBrand")),
                          Qt::LeftButton);
        auto* editor = qobject_cast<QLineEdit*>(QApplication::focusWidget());
        QVERIFY(editor);
        typeAndEnter(editor, QStringLiteral("Brightline"));
        QCOMPARE(dialog.shown().first(), (BrandRecord{QStringLiteral("Brightline"), QString()}));
        // The manufacturer of the new brand is the cell current after it.
        QCOMPARE(table->currentRow(), 0);
        QCOMPARE(table->currentColumn(), 1);
        typeAndEnter(editCurrentCell(table), QStringLiteral("Brightline Manufacturing"));

        // Rename in place: the job's line takes the new name.
        table->setCurrentCell(2, 0);
        typeAndEnter(editCurrentCell(table), QStringLiteral("Varnholt Works"));
        QCOMPARE(m_store->brands().all(),
                 (QList<BrandRecord>{
                     {QStringLiteral("Brightline"), QStringLiteral("Brightline Manufacturing")},
                     {QStringLiteral("Orphan"), QString()},
                     {QStringLiteral("Varnholt Works"), QString()}}));
        QCOMPARE(dialog.shown(), m_store->brands().all());
        QCOMPARE(lineBrands(*m_store->openJob(id)->lineItems()),
                 QStringList{QStringLiteral("Varnholt Works")});

        // A brand a line uses stays, and says why.
        table->setCurrentCell(2, 0);
        QString title;
        QString text;
        ZebTest::WhenModal<QMessageBox> refused([&](QMessageBox& box) {
            title = box.windowTitle();
            text = box.text();
            if (QAbstractButton* ok = box.button(QMessageBox::Ok))
                ok->click();
        });
        QTest::keyClick(table, Qt::Key_Delete);
        QVERIFY(refused.answered());
        QCOMPARE(title, QStringLiteral("Remove Brand"));
        QCOMPARE(text, QStringLiteral("The brand \"Varnholt Works\" stays: 1 line of the office's "
                                      "jobs uses it. Give that line another brand first."));
        QCOMPARE(m_store->brands().all().size(), 3);

        table->setCurrentCell(1, 0);
        QTest::mouseClick(dialog.findChild<QPushButton*>(QStringLiteral("cmdRemoveBrand")),
                          Qt::LeftButton);
        QCOMPARE(m_store->brands().all(),
                 (QList<BrandRecord>{
                     {QStringLiteral("Brightline"), QStringLiteral("Brightline Manufacturing")},
                     {QStringLiteral("Varnholt Works"), QString()}}));

        // A new row left without a name is no brand.
        dialog.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&dialog));
        table->setFocus();
        QTest::keyClick(table, Qt::Key_Insert);
        QCOMPARE(table->rowCount(), 3);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
        QCOMPARE(table->rowCount(), 2);
        QCOMPARE(m_store->brands().all().size(), 2);
    }

    void anImportAddsTheBrandsTheOfficeLacksWithTheManufacturerColumn()
    {
        makeJob({});
        m_store->brands().add({QStringLiteral("Varnholt"), QString()});
        const QString file = m_scratch->filePath(QStringLiteral("lines.csv"));
        QFile f(file);
        QVERIFY(f.open(QIODevice::WriteOnly));
        f.write("Qty,Type,Brand,Manufacturer,Catalog\n"
                "4,A,Brightline,Brightline Manufacturing,BL-1\n"
                "2,B,Brightline,,BL-2\n"
                "1,C,Varnholt,Varnholt Lighting Works,VH-1\n"
                "6,D,Kestrel,,KS-1\n"
                "3,E,,,X-1\n");
        f.close();
        m_store.reset();
        const auto r = ZebTest::runProgram(QStringLiteral(ZEB_WORKBENCH_EXE),
                                           {QStringLiteral("--db"), m_db, QStringLiteral("--job"),
                                            QStringLiteral("25-0001"),
                                            QStringLiteral("--import-lines"), file});
        QCOMPARE(r.err, QString());
        QCOMPARE(r.code, 0);
        QCOMPARE(r.out, QStringLiteral("Imported 5 lines from \"%1\" into job 25-0001 (added "
                                       "after its 0 lines; it has 5 lines); 2 brands added to "
                                       "the office\n")
                            .arg(file));
        m_store = Store::open(m_db, Store::OpenMode::OpenExisting);
        // A brand the office had without a maker takes the file's.
        QCOMPARE(m_store->brands().all(),
                 (QList<BrandRecord>{
                     {QStringLiteral("Brightline"), QStringLiteral("Brightline Manufacturing")},
                     {QStringLiteral("Kestrel"), QString()},
                     {QStringLiteral("Varnholt"), QStringLiteral("Varnholt Lighting Works")}}));
    }

    void theImportDialogsLinesBringTheirBrandsAndTheStatusSaysHowMany()
    {
        makeJob({});
        auto window = openWorkstation();
        ZebTest::WhenModal<ImportDialog> answer([](ImportDialog& dialog) {
            QTest::mouseClick(dialog.findChild<QPushButton*>(QStringLiteral("cmdImport")),
                              Qt::LeftButton);
        });
        QVERIFY(
            window->importLines(CsvTable::parse("Qty,Type,Manufacturer,Catalog\n3,A,Novalux,NX-1\n",
                                                QStringLiteral("test")),
                                QStringLiteral("test.csv")));
        QVERIFY(answer.answered());
        QCOMPARE(window->statusBar()->currentMessage(),
                 QStringLiteral("Imported 1 lines from test.csv; 1 brand added to the office"));
        // A lone "Manufacturer" column names the brand, as offices' files use it.
        QCOMPARE(m_store->brands().all(),
                 (QList<BrandRecord>{{QStringLiteral("Novalux"), QString()}}));
        QCOMPARE(lineBrands(*window->job()->lineItems()), QStringList{QStringLiteral("Novalux")});
    }

    void aBrandTypedInTheLineItemsEditorJoinsTheOffice()
    {
        makeJob({line(QStringLiteral("A"), QStringLiteral("Varnholt"), QStringLiteral("VH-1"))});
        auto window = openWorkstation();
        window->show();
        QVERIFY(QTest::qWaitForWindowExposed(window.get()));
        LineItemEditor* editor = window->lineItemEditor();
        QVERIFY(editor);
        QTableView* table = editor->table();
        table->setCurrentIndex(editor->model()->index(0, LineItemTableModel::Brand));
        typeAndEnter(editCurrentCell(table), QStringLiteral("Solstice"));
        QCOMPARE(lineBrands(*window->job()->lineItems()), QStringList{QStringLiteral("Solstice")});
        QCOMPARE(m_store->brands().all(),
                 (QList<BrandRecord>{{QStringLiteral("Solstice"), QString()}}));
    }

    void theBillOfMaterialsPrintsTheMakerTheOfficeGaveItsOwnBrand()
    {
        ZebObjects::JobContents c;
        c.number = QStringLiteral("25-0001");
        c.name = QStringLiteral("Brand Test");
        c.includeBOM = true;
        c.includeType = true;
        c.includeQuantity = true;
        c.includeBrand = true;
        c.includeManufacturer = true;
        c.includeCatalogNumber = true;
        c.lines = {line(QStringLiteral("A"), QStringLiteral("Brightline"), QStringLiteral("BL-1"))};
        const qint64 id = m_store->createJob(c);
        m_store->brands().addMissing({{QStringLiteral("Brightline"), QString()}});
        {
            BrandsDialog dialog(m_store);
            dialog.show();
            QVERIFY(QTest::qWaitForWindowExposed(&dialog));
            QCOMPARE(dialog.table()->rowCount(), 1);
            dialog.table()->setCurrentCell(0, 1);
            typeAndEnter(editCurrentCell(dialog.table()),
                         QStringLiteral("Brightline Manufacturing"));
        }
        const QString pdf = m_scratch->filePath(QStringLiteral("package.pdf"));
        ZebPackage::PackageGenerator generator;
        QVERIFY(generator.Generate(StorePackageSource(*m_store, m_store->openJob(id)), pdf));
        const QString text = ZebTest::pdfText(pdf);
        QVERIFY2(text.contains(QStringLiteral("Brightline Manufacturing")), qPrintable(text));
    }

    void aServerOfficesWorkstationsSeeEachOthersBrands()
    {
        PgServer server;
        QVERIFY2(server.isRunning(), qPrintable(server.error()));
        const QString location = server.location(server.newDatabaseName());
        const auto a = Store::open(location);
        const auto b = Store::open(location, Store::OpenMode::OpenExisting);
        int told = 0;
        QVERIFY(b->watchOtherWorkstations([&] { ++told; }));
        a->brands().add({QStringLiteral("Brightline"), QStringLiteral("Brightline Manufacturing")});
        QTRY_VERIFY_WITH_TIMEOUT(told > 0, 10000);
        QCOMPARE(b->brands().all(),
                 (QList<BrandRecord>{
                     {QStringLiteral("Brightline"), QStringLiteral("Brightline Manufacturing")}}));
        told = 0;
        b->brands().setManufacturer(QStringLiteral("Brightline"), QStringLiteral("BL Works"));
        QTRY_VERIFY_WITH_TIMEOUT(
            a->brands().all().first().manufacturer == QLatin1String("BL Works"), 10000);
    }

private:
    qint64 makeJob(const QList<ZebObjects::LineItemRecord>& lines)
    {
        ZebObjects::JobContents c;
        c.number = QStringLiteral("25-0001");
        c.name = QStringLiteral("Brand Test");
        c.lines = lines;
        return m_store->createJob(c);
    }
    std::unique_ptr<Workstation> openWorkstation()
    {
        ZebObjects::Runtime::setApplicationServices(m_store->applicationServices());
        Workstation::Options options;
        options.remember = false;
        auto window = std::make_unique<Workstation>(
            FormDescription::fromFile(QStringLiteral(":/forms/workbench.json")), m_store, options);
        window->openJob(m_store->jobs().first().id);
        return window;
    }

    QTemporaryDir m_home;
    std::unique_ptr<QTemporaryDir> m_scratch;
    QString m_db;
    std::shared_ptr<Store> m_store;
};

QTEST_MAIN(tst_Brands)
#include "tst_brands.moc"
