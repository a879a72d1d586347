// A sales office's first job, from an empty office to the package, through the real widgets:
// a new job, its lines imported from a CSV file, a bad line fixed in the editor, a new customer
// with an address, the job's customer and the letter's recipient chosen, and the package's
// letter, labels and bill of materials read back.
#include "contracts/customers.h"
#include "contracts/lineitems.h"
#include "csvtable.h"
#include "customerdialog.h"
#include "directorydialog.h"
#include "exportcheckdialog.h"
#include "formdescription.h"
#include "frame/usercontrol.h"
#include "importdialog.h"
#include "jobdialog.h"
#include "lineitemeditor.h"
#include "contracts/runtime.h"
#include "platform/keyedlistview.h"
#include "recipientspage.h"
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

#include <QAbstractButton>
#include <QApplication>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTableView>
#include <QTemporaryDir>
#include <QTest>

using ZebObjects::Store;

namespace {
const QString kData = QStringLiteral(ZEB_DATA_DIR);

using ZebTest::pdfText;
using ZebTest::showPage;

void type(QWidget* dialog, const char* name, const QString& text)
{
    auto* edit = dialog->findChild<QLineEdit*>(QLatin1String(name));
    QVERIFY2(edit, name);
    edit->setFocus();
    QTest::keyClicks(edit, text);
}
}  // namespace

class tst_OfficeWorkflow : public QObject {
    Q_OBJECT
private slots:
    void initTestCase()
    {
        QVERIFY(m_home.isValid());
        ZebTest::useScratchHome(m_home, false);
    }

    void fromAnEmptyOfficeToAPackageThatShowsItAll()
    {
        QTemporaryDir scratch;
        const QString db = scratch.filePath(QStringLiteral("office.sqlite"));
        auto store = Store::open(db);
        QVERIFY(store->isEmpty());
        const auto owned = ZebTest::openWorkstation(store);
        Workstation& window = *owned;
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        QVERIFY(QTest::qWaitForWindowActive(&window));
        QCOMPARE(window.jobStatus(), QStringLiteral("No job open"));

        // A new job.
        {
            ZebTest::WhenModal<JobDialog> answer([](JobDialog& dialog) {
                QVERIFY(QTest::qWaitForWindowActive(&dialog));
                // The number box has the focus when the dialog opens.
                QTRY_VERIFY(
                    dialog.findChild<QLineEdit*>(QStringLiteral("txtJobNumber"))->hasFocus());
                QTest::keyClicks(dialog.focusWidget(), QStringLiteral("25-0042"));
                QTest::keyClick(dialog.focusWidget(), Qt::Key_Tab);
                QTest::keyClicks(dialog.focusWidget(), QStringLiteral("Tidewater Library"));
                QTest::keyClick(dialog.focusWidget(), Qt::Key_Return);
            });
            QTest::keyClick(&window, Qt::Key_N, Qt::ControlModifier);
            QVERIFY(answer.answered());
        }
        QCOMPARE(window.jobStatus(), QStringLiteral("Job 25-0042 Tidewater Library"));

        // Its lines from the quoting system's file.
        {
            ZebTest::WhenModal<ImportDialog> answer([](ImportDialog& dialog) {
                QTest::mouseClick(dialog.findChild<QPushButton*>(QStringLiteral("cmdImport")),
                                  Qt::LeftButton);
            });
            QVERIFY(window.importLines(
                CsvTable::read(kData + QStringLiteral("/lines-quoting-system.csv")),
                QStringLiteral("lines-quoting-system.csv")));
            QVERIFY(answer.answered());
        }
        QCOMPARE(window.job()->lineItems()->Count(), qint16(5));

        // The quote had a wrong catalog number on line 4: fixed in the editor by keyboard.
        showPage(window, QStringLiteral("Line Items Editor"));
        // The window manager gives the window back its keys when a dialog closes.
        window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        LineItemEditor* editor = window.lineItemEditor();
        QTableView* table = editor->table();
        table->setFocus();
        QTRY_VERIFY(table->hasFocus());
        table->setCurrentIndex(editor->model()->index(3, LineItemTableModel::CatalogNumber));
        QTest::keyClick(table, Qt::Key_F2);
        QTRY_VERIFY(QApplication::focusWidget()
                    && table->isAncestorOf(QApplication::focusWidget()));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("VH-EXIT-GRN-BATT"));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        QTRY_COMPARE(window.job()->lineItems()->rows().at(3).data.catalogNumber,
                     QStringLiteral("VH-EXIT-GRN-BATT"));

        // A new customer with an address, in the office's directory.
        {
            ZebTest::WhenModal<CustomerDialog> customer([](CustomerDialog& dialog) {
                type(&dialog, "txtContact", QStringLiteral("Ingrid Solberg"));
                type(&dialog, "txtStreet", QStringLiteral("77 Harbor Street"));
                type(&dialog, "txtCity", QStringLiteral("Newport"));
                type(&dialog, "txtState", QStringLiteral("OR"));
                type(&dialog, "txtZip", QStringLiteral("97365"));
                type(&dialog, "txtAccount", QStringLiteral("TW-501"));
                QTest::mouseClick(dialog.findChild<QPushButton*>(QStringLiteral("cmdOK")),
                                  Qt::LeftButton);
            });
            ZebTest::WhenModal<DirectoryDialog> directory([&customer](DirectoryDialog& dialog) {
                // A search that finds nobody says so; Add takes the typed name.
                type(&dialog, "txtFindCustomer", QStringLiteral("Tidewater Electric"));
                QCOMPARE(dialog.shownKeys(), QStringList());
                QTest::mouseClick(dialog.findChild<QPushButton*>(QStringLiteral("cmdAddCustomer")),
                                  Qt::LeftButton);
                QVERIFY(customer.answered());
                QCOMPARE(dialog.shownKeys().size(), 1);
                QTest::mouseClick(dialog.findChild<QPushButton*>(QStringLiteral("cmdClose")),
                                  Qt::LeftButton);
            });
            window.chooseDirectory();
            QVERIFY(directory.answered());
        }
        const auto directory = store->directoryCustomers();
        QCOMPARE(directory.size(), 1);
        QCOMPARE(directory.first().name, QStringLiteral("Tidewater Electric"));
        QCOMPARE(directory.first().street, QStringLiteral("77 Harbor Street"));

        // The job's customer, found on the Customers page by its account number.
        showPage(window, QStringLiteral("Customers"));
        window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        auto* panel = window.findChild<ZebSubCtl::UserControl*>(QStringLiteral("ctlCustomers"));
        auto* account = panel->findChild<QLineEdit*>(QStringLiteral("txtAcctNum"));
        QTest::mouseClick(account, Qt::LeftButton);
        QTest::keyClicks(account, QStringLiteral("TW-501"));
        QTest::mouseClick(panel->findChild<QAbstractButton*>(QStringLiteral("cmdSearch")),
                          Qt::LeftButton);
        QTest::mouseClick(panel->findChild<QAbstractButton*>(QStringLiteral("cmdAdd")),
                          Qt::LeftButton);
        QCOMPARE(window.job()->customers()->Count(), qint16(1));

        // The letter's recipient, from the customer's contact.
        showPage(window, QStringLiteral("Recipients"));
        auto* recipients = window.findChild<RecipientsPage*>(QStringLiteral("pagRecipients"));
        QVERIFY(recipients && recipients->isVisible());
        {
            ZebTest::WhenModal<QDialog> answer([](QDialog& dialog) {
                QCOMPARE(dialog.objectName(), QStringLiteral("dlgAddRecipient"));
                QTest::keyClick(dialog.findChild<QListWidget*>(QStringLiteral("lstContacts")),
                                Qt::Key_Return);
            });
            QTest::mouseClick(
                recipients->findChild<QPushButton*>(QStringLiteral("cmdAddRecipient")),
                Qt::LeftButton);
            QVERIFY(answer.answered());
        }
        QCOMPARE(recipients->list()->count(), 1);
        QCOMPARE(recipients->list()->item(0)->text(),
                 QStringLiteral("Ingrid Solberg, Tidewater Electric - Newport, OR 97365"));

        // The package.
        const QString pdf = scratch.filePath(QStringLiteral("package.pdf"));
        ZebTest::WhenModal<ExportCheckDialog> anyway([](ExportCheckDialog& dialog) {
            QTest::mouseClick(dialog.findChild<QAbstractButton*>(QStringLiteral("btnExportAnyway")),
                              Qt::LeftButton);
        });
        QVERIFY(window.exportPackage(pdf));
        const QString text = pdfText(pdf);
        // The letter.
        QVERIFY2(text.contains(QStringLiteral("Ingrid Solberg")), qPrintable(text));
        QVERIFY(text.contains(QStringLiteral("77 Harbor Street")));
        QVERIFY(text.contains(QStringLiteral("Tidewater Library")));
        // The label.
        QVERIFY(text.contains(QStringLiteral("Newport, OR 97365")));
        // The bill of materials, with the fixed line and not the wrong one.
        QVERIFY(text.contains(QStringLiteral("VH-EXIT-GRN-BATT")));
        QVERIFY(!text.contains(QStringLiteral("VH-EXIT-RED-BATT")));
        QVERIFY(text.contains(QStringLiteral("QZ-DL6-15W-30K")));
        window.close();
        ZebObjects::Runtime::setApplicationServices(nullptr);
    }

private:
    QTemporaryDir m_home;
};

QTEST_MAIN(tst_OfficeWorkflow)
#include "tst_officeworkflow.moc"
