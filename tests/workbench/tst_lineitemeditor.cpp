// The Line Items Editor page: edits in place written to the store, new, inserted, deleted and
// moved lines, copy and paste of rows, undo and redo, the display page following, and a job
// with more lines than the display holds.
#include "contracts/lineitems.h"
#include "firstlines.h"
#include "formdescription.h"
#include "frame/usercontrol.h"
#include "lineitemeditor.h"
#include "contracts/runtime.h"
#include "officefile.h"
#include "package/packagegenerator.h"
#include "storepackagesource.h"
#include "store/jobcontents.h"
#include "store/store.h"
#include "store/storebom.h"
#include "store/storecustomers.h"
#include "store/storejob.h"
#include "store/storelineitems.h"
#include "support/testsupport.h"
#include "support/workbenchtesting.h"
#include "workstation.h"

#include <QApplication>
#include <QClipboard>
#include <QLabel>
#include <QPushButton>
#include <QTabWidget>
#include <QTableView>
#include <QTemporaryDir>
#include <QTest>
#include <QUndoStack>

using ZebObjects::LineItemRecord;
using ZebObjects::Store;

namespace {
LineItemRecord line(int quantity, const QString& type, const QString& catalog)
{
    LineItemRecord d;
    d.quantity = quantity;
    d.type = type;
    d.catalogNumber = catalog;
    d.brand = QStringLiteral("Varnholt");
    d.description = QStringLiteral("Fixture ") + type;
    // Ticked, so that the bill of materials prints it.
    d.selected = true;
    return d;
}

using ZebTest::catalogNumbers;
using ZebTest::pdfText;
}  // namespace

class tst_LineItemEditor : public QObject {
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
        m_store = Store::open(m_db);
        ZebObjects::JobContents c;
        c.number = QStringLiteral("25-0001");
        c.name = QStringLiteral("Editor Test");
        c.includeBOM = true;
        c.includeCatalogNumber = true;
        c.lines = {line(1, QStringLiteral("A"), QStringLiteral("CAT-A")),
                   line(2, QStringLiteral("B"), QStringLiteral("CAT-B")),
                   line(3, QStringLiteral("C"), QStringLiteral("CAT-C"))};
        m_store->createJob(c);
        m_window = ZebTest::openWorkstation(m_store);
        m_window->openJob(m_store->jobs().first().id);
        m_window->show();
        QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
        ZebTest::showPage(*m_window, QStringLiteral("Line Items Editor"));
        m_editor = m_window->lineItemEditor();
        QVERIFY(m_editor && m_editor->isVisible());
        m_table = m_editor->table();
    }
    void cleanup()
    {
        m_window.reset();
        ZebObjects::Runtime::setApplicationServices(nullptr);
        m_store.reset();
        m_scratch.reset();
    }

    void theEditorSitsBesideTheDisplayPage()
    {
        QTabWidget* tabs = m_window->findChild<QTabWidget*>();
        const QStringList titles = m_window->pageTitles();
        const qsizetype display = titles.indexOf(QStringLiteral("Line Items"));
        QVERIFY(display >= 0);
        QCOMPARE(titles.value(display + 1), QStringLiteral("Line Items Editor"));
        QCOMPARE(tabs->count(), int(titles.size()));
        QCOMPARE(m_editor->model()->headerData(0, Qt::Horizontal, Qt::DisplayRole).toString(),
                 QStringLiteral("Type"));
        QCOMPARE(m_editor->model()->rowCount(), 3);
        QCOMPARE(ZebTest::unnamedAccessibleElements(m_editor), QStringList());
    }

    void aCellTypedOverIsWrittenAndUndoRedoTakeItBackAndAgain()
    {
        const auto lines = m_window->job()->lineItems();
        // The display page is bound before the edit, as after a visit: the edit reaches it.
        m_window->bindAllPages();
        m_table->setFocus();
        m_table->setCurrentIndex(m_editor->model()->index(1, LineItemTableModel::CatalogNumber));
        QTest::keyClick(m_table, Qt::Key_F2);
        QWidget* editor = QApplication::focusWidget();
        QVERIFY2(editor && editor != m_table, editor ? editor->metaObject()->className() : "none");
        QVERIFY(m_table->isAncestorOf(editor));
        QTest::keyClick(editor, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(editor, QStringLiteral("CAT-B2"));
        QTest::keyClick(editor, Qt::Key_Return);
        // The view hands the edit on once the key is done.
        QTRY_COMPARE(catalogNumbers(*lines),
                     (QStringList{QStringLiteral("CAT-A"), QStringLiteral("CAT-B2"),
                                  QStringLiteral("CAT-C")}));
        // A quantity that is not a whole number is not taken.
        m_table->setCurrentIndex(m_editor->model()->index(0, LineItemTableModel::Quantity));
        QTest::keyClick(m_table, Qt::Key_F2);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("-4"));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        QTRY_COMPARE(QApplication::focusWidget(), static_cast<QWidget*>(m_table));
        QCOMPARE(lines->rows().first().data.quantity, 1);
        QCOMPARE(m_editor->undoStack()->count(), 1);

        QTest::keyClick(m_table, Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(catalogNumbers(*lines),
                 (QStringList{QStringLiteral("CAT-A"), QStringLiteral("CAT-B"),
                              QStringLiteral("CAT-C")}));
        QTest::keyClick(m_table, Qt::Key_Y, Qt::ControlModifier);
        QCOMPARE(catalogNumbers(*lines).at(1), QStringLiteral("CAT-B2"));
        // The display page shows what the editor wrote.
        auto* display =
            m_window->findChild<ZebSubCtl::UserControl*>(QStringLiteral("ctlLineItems"));
        const auto shown =
            display->property("LineItems").value<std::shared_ptr<ZebObjects::LineItems>>();
        QCOMPARE(shown->Item(2)->CatalogNumber(), QStringLiteral("CAT-B2"));
    }

    void linesAreAddedInsertedDeletedAndMovedAndEachStepUndoes()
    {
        const auto lines = m_window->job()->lineItems();
        QTest::mouseClick(m_editor->findChild<QPushButton*>(QStringLiteral("cmdAddLine")),
                          Qt::LeftButton);
        QCOMPARE(lines->Count(), qint16(4));
        QTest::keyClick(m_table, Qt::Key_Escape);
        // Rows 2 and 3 chosen with the keyboard, then moved up.
        m_table->setFocus();
        m_table->setCurrentIndex(m_editor->model()->index(1, 0));
        QTest::keyClick(m_table, Qt::Key_Down, Qt::ShiftModifier);
        QCOMPARE(m_editor->selectedRows(), (QList<int>{1, 2}));
        QTest::keyClick(m_table, Qt::Key_Up, Qt::AltModifier);
        QCOMPARE(catalogNumbers(*lines),
                 (QStringList{QStringLiteral("CAT-B"), QStringLiteral("CAT-C"),
                              QStringLiteral("CAT-A"), QString()}));
        QCOMPARE(m_editor->selectedRows(), (QList<int>{0, 1}));
        QTest::keyClick(m_table, Qt::Key_Delete);
        QCOMPARE(catalogNumbers(*lines), (QStringList{QStringLiteral("CAT-A"), QString()}));
        m_table->setCurrentIndex(m_editor->model()->index(0, 0));
        QTest::keyClick(m_table, Qt::Key_Insert);
        QCOMPARE(lines->Count(), qint16(3));
        QCOMPARE(lines->rows().first().data.catalogNumber, QString());
        // Back step by step to where the job started.
        for (int i = 0; i < 4; ++i)
            QTest::mouseClick(m_editor->findChild<QPushButton*>(QStringLiteral("cmdUndo")),
                              Qt::LeftButton);
        QCOMPARE(catalogNumbers(*lines),
                 (QStringList{QStringLiteral("CAT-A"), QStringLiteral("CAT-B"),
                              QStringLiteral("CAT-C")}));
        QVERIFY(!m_editor->findChild<QPushButton*>(QStringLiteral("cmdUndo"))->isEnabled());
        QTest::mouseClick(m_editor->findChild<QPushButton*>(QStringLiteral("cmdRedo")),
                          Qt::LeftButton);
        QCOMPARE(lines->Count(), qint16(4));
    }

    void rowsCopiedArePastedAfterTheCurrentRowAsTheyWere()
    {
        const auto lines = m_window->job()->lineItems();
        lines->updateLine(lines->rows().at(2).id, [&] {
            auto d = lines->rows().at(2).data;
            d.comment = QStringLiteral("Tab\there, \"quoted\"\nand two lines");
            d.mto = true;
            return d;
        }());
        m_editor->model()->reload();
        m_table->setFocus();
        m_table->setCurrentIndex(m_editor->model()->index(2, 0));
        QTest::keyClick(m_table, Qt::Key_Up, Qt::ShiftModifier);
        QTest::keyClick(m_table, Qt::Key_C, Qt::ControlModifier);
        m_table->setCurrentIndex(m_editor->model()->index(0, 0));
        QTest::keyClick(m_table, Qt::Key_V, Qt::ControlModifier);
        const auto rows = lines->rows();
        QCOMPARE(rows.size(), 5);
        QCOMPARE(
            catalogNumbers(*lines),
            (QStringList{QStringLiteral("CAT-A"), QStringLiteral("CAT-B"), QStringLiteral("CAT-C"),
                         QStringLiteral("CAT-B"), QStringLiteral("CAT-C")}));
        QCOMPARE(*rows[2].data.comment, QStringLiteral("Tab\there, \"quoted\"\nand two lines"));
        QCOMPARE(rows[2].data.mto, true);
        QCOMPARE(rows[2].data.quantity, 3);
        QTest::keyClick(m_table, Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(lines->Count(), qint16(3));
    }

    void aJobWithMoreLinesThanTheDisplayHoldsShowsTheFirstAndSaysSoAndPrintsThemAll()
    {
        const auto lines = m_window->job()->lineItems();
        QList<LineItemRecord> more;
        for (int i = 4; i <= 800; ++i)
            more.append(line(i, QStringLiteral("T"), QStringLiteral("CAT-%1").arg(i)));
        lines->importLines(more, false);
        QVERIFY(m_window->refresh());
        // The display page, read as it shows when the user goes there.
        m_window->bindAllPages();
        auto* display =
            m_window->findChild<ZebSubCtl::UserControl*>(QStringLiteral("ctlLineItems"));
        QCOMPARE(int(display->findChildren<QWidget*>(QStringLiteral("ctlSubLine")).size()), 744);
        auto* note = m_window->findChild<QLabel*>(QStringLiteral("lblDisplayNote"));
        QVERIFY(note);
        QVERIFY(!note->isHidden());
        QCOMPARE(note->text(),
                 QStringLiteral("This page shows the first 744 of the job's 800 lines; the package "
                                "prints all 800, and the Line Items Editor shows them all."));
        QCOMPARE(m_window->problems(), QStringList());
        QCOMPARE(m_window->lineItemEditor()->model()->rowCount(), 800);
        const QString pdf = m_scratch->filePath(QStringLiteral("package.pdf"));
        ZebPackage::PackageGenerator generator;
        QVERIFY(generator.Generate(StorePackageSource(*m_store, m_window->job()), pdf));
        const QString text = pdfText(pdf);
        QVERIFY2(text.contains(QStringLiteral("CAT-800")), qPrintable(text.right(400)));
        QVERIFY(text.contains(QStringLiteral("CAT-745")));
    }

private:
    QTemporaryDir m_home;
    std::unique_ptr<QTemporaryDir> m_scratch;
    QString m_db;
    std::shared_ptr<Store> m_store;
    std::unique_ptr<Workstation> m_window;
    LineItemEditor* m_editor = nullptr;
    QTableView* m_table = nullptr;
};

QTEST_MAIN(tst_LineItemEditor)
#include "tst_lineitemeditor.moc"
