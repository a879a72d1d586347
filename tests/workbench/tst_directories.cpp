// What the office keeps besides its jobs: the customer directory (edited, merged), the
// recipients of a job's letters (ordered, removed), the welcome of a first start and the Help
// menu's list of keys.
#include "contracts/applicationservices.h"
#include "contracts/customer.h"
#include "contracts/customerfinder.h"
#include "contracts/customersearchresult.h"
#include "contracts/customers.h"
#include "csvtable.h"
#include "customerchooser.h"
#include "customerdialog.h"
#include "frame/usercontrol.h"
#include "rules/customerchoice.h"
#include "importdialog.h"
#include "jobdialog.h"
#include "officeimports.h"
#include "directorydialog.h"
#include "formdescription.h"
#include "issuersdialog.h"
#include "contracts/runtime.h"
#include "recipientspage.h"
#include "store/jobcontents.h"
#include "store/store.h"
#include "store/storecustomers.h"
#include "store/storejob.h"
#include "store/storesubmittal.h"
#include "support/testsupport.h"
#include "support/workbenchtesting.h"
#include "userinput.h"
#include "welcomedialog.h"
#include "workstation.h"

#include <QCommandLinkButton>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScopeGuard>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QSqlDatabase>
#include <QTabWidget>
#include <QSqlQuery>

using ZebObjects::CustomerRecord;
using ZebObjects::Store;

namespace {
CustomerRecord customer(const QString& key, const QString& name, const QString& city,
                        const QString& contact = {})
{
    CustomerRecord d;
    d.key = key;
    d.name = name;
    d.displayText = name + QStringLiteral(" (") + city + QLatin1Char(')');
    d.city = city;
    d.attention = contact;
    return d;
}
}  // namespace

class tst_Directories : public QObject {
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
        m_store = Store::open(m_scratch->filePath(QStringLiteral("office.sqlite")));
    }
    void cleanup()
    {
        ZebObjects::Runtime::setApplicationServices(nullptr);
        m_store.reset();
        m_scratch.reset();
    }

    void twoEntriesOfOneCustomerMergeAndTheJobsFollowTheOneKept()
    {
        auto keep = customer(QStringLiteral("K1"), QStringLiteral("Keystone Electric"),
                             QStringLiteral("Salem"));
        auto drop = customer(QStringLiteral("K2"), QStringLiteral("Keystone Electric Co."),
                             QStringLiteral("Salem"), QStringLiteral("Ray Adler"));
        drop.street = QStringLiteral("5 Mill Street");
        drop.zip = QStringLiteral("97301");
        m_store->addDirectoryCustomers({keep, drop});
        ZebObjects::JobContents c;
        c.number = QStringLiteral("1");
        c.name = QStringLiteral("Job");
        c.customers = {drop};
        const qint64 id = m_store->createJob(c);

        DirectoryDialog dialog(m_store);
        QTableWidget* table = dialog.table();
        table->selectRow(0);
        QTest::mouseClick(table->viewport(), Qt::LeftButton, Qt::ControlModifier,
                          table->visualItemRect(table->item(1, 0)).center());
        ZebTest::WhenModal<QMessageBox> confirm([](QMessageBox& box) {
            QCOMPARE(box.text(),
                     QStringLiteral(
                         "Keep \"Keystone Electric (Salem)\" and merge \"Keystone Electric Co. "
                         "(Salem)\" "
                         "into it?\nThe jobs that have \"Keystone Electric Co. (Salem)\" then have "
                         "\"Keystone Electric (Salem)\"; \"Keystone Electric Co. (Salem)\" leaves "
                         "the directory."));
            box.button(QMessageBox::Yes)->click();
        });
        QTest::mouseClick(dialog.findChild<QPushButton*>(QStringLiteral("cmdMergeCustomers")),
                          Qt::LeftButton);
        QVERIFY(confirm.answered());
        const auto directory = m_store->directoryCustomers();
        QCOMPARE(directory.size(), 1);
        QCOMPARE(directory.first().key, QStringLiteral("K1"));
        QCOMPARE(directory.first().name, QStringLiteral("Keystone Electric"));
        // What only the dropped entry knew is kept.
        QCOMPARE(directory.first().attention, QStringLiteral("Ray Adler"));
        QCOMPARE(directory.first().street, QStringLiteral("5 Mill Street"));
        QCOMPARE(dialog.shownKeys(), QStringList{QStringLiteral("K1")});
        QCOMPARE(m_store->openJob(id)->customers()->Count(), qint16(1));
        QSqlQuery q(QSqlDatabase::database(m_store->connectionName()));
        QVERIFY(q.exec(QStringLiteral("SELECT customer_key FROM submittal_customers")) && q.next());
        QCOMPARE(q.value(0).toString(), QStringLiteral("K1"));
        q.finish();
    }

    void aCustomerIsEditedThroughItsDialog()
    {
        m_store->addDirectoryCustomers({customer(
            QStringLiteral("H1"), QStringLiteral("Harbor Supply"), QStringLiteral("Astoria"))});
        DirectoryDialog dialog(m_store);
        dialog.table()->selectRow(0);
        ZebTest::WhenModal<CustomerDialog> edit([](CustomerDialog& d) {
            QCOMPARE(d.windowTitle(), QStringLiteral("Edit Customer"));
            auto* city = d.findChild<QLineEdit*>(QStringLiteral("txtCity"));
            city->selectAll();
            QTest::keyClicks(city, QStringLiteral("Warrenton"));
            auto* phone = d.findChild<QLineEdit*>(QStringLiteral("txtPhone"));
            QTest::keyClicks(phone, QStringLiteral("503-555-0100"));
            QTest::mouseClick(d.findChild<QPushButton*>(QStringLiteral("cmdOK")), Qt::LeftButton);
        });
        QTest::mouseClick(dialog.findChild<QPushButton*>(QStringLiteral("cmdEditCustomer")),
                          Qt::LeftButton);
        QVERIFY(edit.answered());
        const auto d = m_store->directoryCustomers().first();
        QCOMPARE(d.city, QStringLiteral("Warrenton"));
        QCOMPARE(d.phone, QStringLiteral("503-555-0100"));
        QCOMPARE(d.displayText, QStringLiteral("Harbor Supply (Warrenton)"));
        QCOMPARE(dialog.table()->item(0, 2)->text(), QStringLiteral("Warrenton"));
    }

    void aSearchThatFindsNobodySaysSoAndOffersTheNameToAdd()
    {
        DirectoryDialog dialog(m_store);
        QTest::keyClicks(dialog.findChild<QLineEdit*>(QStringLiteral("txtFindCustomer")),
                         QStringLiteral("Cobalt Lighting"));
        QCOMPARE(dialog.shownKeys(), QStringList());
        QCOMPARE(dialog.findChild<QLabel*>(QStringLiteral("lblNoCustomer"))->text(),
                 QStringLiteral("No customer matches \"Cobalt Lighting\". Add... makes a new "
                                "customer with that name."));
        bool named = false;
        ZebTest::WhenModal<CustomerDialog> add([&](CustomerDialog& d) {
            named = d.findChild<QLineEdit*>(QStringLiteral("txtCompany"))->text()
                    == QLatin1String("Cobalt Lighting");
            QTest::mouseClick(d.findChild<QPushButton*>(QStringLiteral("cmdOK")), Qt::LeftButton);
        });
        QTest::mouseClick(dialog.findChild<QPushButton*>(QStringLiteral("cmdAddCustomer")),
                          Qt::LeftButton);
        QVERIFY(add.answered());
        QVERIFY(named);
        QCOMPARE(m_store->directoryCustomers().first().name, QStringLiteral("Cobalt Lighting"));
    }

    void aCustomersPageSearchThatFindsNobodyOffersTheNameAsANewCustomer()
    {
        m_store->addDirectoryCustomers({customer(
            QStringLiteral("H1"), QStringLiteral("Harbor Supply"), QStringLiteral("Astoria"))});
        ZebObjects::JobContents c;
        c.number = QStringLiteral("1");
        c.name = QStringLiteral("Job");
        const qint64 id = m_store->createJob(c);
        ZebObjects::Runtime::setApplicationServices(m_store->applicationServices());
        Workstation::Options options;
        options.remember = false;
        Workstation window(FormDescription::fromFile(QStringLiteral(":/forms/workbench.json")),
                           m_store, options);
        window.openJob(id);
        // As the workstation's program sets up its users' searches.
        ZebObjects::CustomerChooser::install();
        ZebObjects::CustomerChooser::setTellsWhenNothingFound(true);
        ZebObjects::CustomerChooser::installNewCustomerOffer(&CustomerDialog::askNew);
        const auto restore = qScopeGuard([] {
            ZebObjects::CustomerChoice::setChooser({});
            ZebObjects::CustomerChoice::setNothingFound({});
            ZebObjects::CustomerChoice::setNewCustomer({});
            ZebObjects::CustomerChooser::setTellsWhenNothingFound(false);
        });
        window.show();
        QTabWidget* tabs = window.findChild<QTabWidget*>();
        for (int i = 0; i < tabs->count(); ++i)
            if (tabs->tabText(i) == QLatin1String("Customers"))
                tabs->setCurrentIndex(i);
        window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        auto* panel = window.findChild<ZebSubCtl::UserControl*>(QStringLiteral("ctlCustomers"));
        QVERIFY(panel && panel->isVisible());
        auto* name = panel->findChild<QLineEdit*>(QStringLiteral("txtNameKeyword"));
        QTest::mouseClick(name, Qt::LeftButton);
        QTest::keyClicks(name, QStringLiteral("Cobalt Lighting"));

        QString title;
        QString text;
        ZebTest::WhenModal<QMessageBox> offer([&](QMessageBox& box) {
            title = box.windowTitle();
            text = box.text();
            if (QAbstractButton* yes = box.button(QMessageBox::Yes))
                yes->click();
        });
        QString company;
        ZebTest::WhenModal<CustomerDialog> add([&](CustomerDialog& d) {
            QCOMPARE(d.windowTitle(), QStringLiteral("New Customer"));
            company = d.findChild<QLineEdit*>(QStringLiteral("txtCompany"))->text();
            auto* city = d.findChild<QLineEdit*>(QStringLiteral("txtCity"));
            city->setFocus();
            QTest::keyClicks(city, QStringLiteral("Salem"));
            QTest::mouseClick(d.findChild<QPushButton*>(QStringLiteral("cmdOK")), Qt::LeftButton);
        });
        QTest::mouseClick(panel->findChild<QAbstractButton*>(QStringLiteral("cmdSearch")),
                          Qt::LeftButton);
        QVERIFY(offer.answered());
        QCOMPARE(title, QStringLiteral("Customer Search"));
        QCOMPARE(text, QStringLiteral("No customer matches \"Cobalt Lighting\".\nAdd a new "
                                      "customer named \"Cobalt Lighting\"?"));
        QVERIFY(add.answered());
        QCOMPARE(company, QStringLiteral("Cobalt Lighting"));

        // The new customer is in the directory and is the one found: Add takes it to the job.
        const auto directory = m_store->directoryCustomers();
        QCOMPARE(directory.size(), 2);
        QCOMPARE(directory.last().name, QStringLiteral("Cobalt Lighting"));
        QCOMPARE(directory.last().city, QStringLiteral("Salem"));
        QCOMPARE(directory.last().key, QStringLiteral("C1"));
        QTest::mouseClick(panel->findChild<QAbstractButton*>(QStringLiteral("cmdAdd")),
                          Qt::LeftButton);
        const auto customers = window.job()->customers();
        QCOMPARE(customers->Count(), qint16(1));
        QCOMPARE(customers->Item(1)->Name(), QStringLiteral("Cobalt Lighting"));
        QCOMPARE(m_store->openJob(id)->customers()->Count(), qint16(1));
    }

    void declinedTheOfferAddsNobody()
    {
        ZebObjects::JobContents c;
        c.number = QStringLiteral("1");
        c.name = QStringLiteral("Job");
        m_store->createJob(c);
        ZebObjects::CustomerChooser::setTellsWhenNothingFound(true);
        ZebObjects::CustomerChooser::installNewCustomerOffer(&CustomerDialog::askNew);
        const auto restore = qScopeGuard([] {
            ZebObjects::CustomerChoice::setNewCustomer({});
            ZebObjects::CustomerChooser::setTellsWhenNothingFound(false);
        });
        const auto finder = m_store->applicationServices()->CreateCustomerFinder();
        QString text;
        ZebTest::WhenModal<QMessageBox> offer([&](QMessageBox& box) {
            text = box.text();
            if (QAbstractButton* no = box.button(QMessageBox::No))
                no->click();
        });
        const auto result = finder->Search(
            false, true, false, false, false, QVariant(), QStringLiteral("Cobalt"), QString(),
            QString(), QString(), QString(), QString(), QString(), QString(), 0);
        QVERIFY(offer.answered());
        QCOMPARE(text, QStringLiteral("No customer matches \"Cobalt\".\nAdd a new customer named "
                                      "\"Cobalt\"?"));
        QVERIFY(!result);
        QCOMPARE(m_store->directoryCount(), 0);
    }

    void recipientsAreOrderedAndRemovedOnTheirPage()
    {
        ZebObjects::JobContents c;
        c.number = QStringLiteral("1");
        c.name = QStringLiteral("Job");
        c.recipients = {{QStringLiteral("Ann"),
                         QStringLiteral("A Co"),
                         {},
                         {},
                         QStringLiteral("Bend"),
                         QStringLiteral("OR"),
                         {},
                         {},
                         {}},
                        {QStringLiteral("Bo"), QStringLiteral("B Co"), {}, {}, {}, {}, {}, {}, {}},
                        {QStringLiteral("Cy"), QStringLiteral("C Co"), {}, {}, {}, {}, {}, {}, {}}};
        const auto job = m_store->openJob(m_store->createJob(c));
        RecipientsPage page(m_store, job);
        QListWidget* list = page.list();
        QCOMPARE(list->item(0)->text(), QStringLiteral("Ann, A Co - Bend, OR"));
        list->setCurrentRow(2);
        QTest::mouseClick(page.findChild<QPushButton*>(QStringLiteral("cmdRecipientUp")),
                          Qt::LeftButton);
        QCOMPARE(list->currentRow(), 1);
        QCOMPARE(list->item(1)->text(), QStringLiteral("Cy, C Co"));
        list->setCurrentRow(0);
        QTest::mouseClick(page.findChild<QPushButton*>(QStringLiteral("cmdRecipientDown")),
                          Qt::LeftButton);
        QTest::mouseClick(page.findChild<QPushButton*>(QStringLiteral("cmdRemoveRecipient")),
                          Qt::LeftButton);
        QStringList names;
        for (const auto& r : job->submittal()->Recipients()->Enumerate())
            names.append(r->Name());
        QCOMPARE(names, (QStringList{QStringLiteral("Cy"), QStringLiteral("Bo")}));
        QCOMPARE(list->count(), 2);
        QCOMPARE(ZebTest::unnamedAccessibleElements(&page), QStringList());
    }

    void aFirstStartCanMakeAnEmptyOffice()
    {
        QString path = m_scratch->filePath(QStringLiteral("mine.sqlite"));
        bool create = true;
        ZebTest::WhenModal<WelcomeDialog> answer([](WelcomeDialog& w) {
            QTest::mouseClick(w.findChild<QCommandLinkButton*>(QStringLiteral("cmdEmptyOffice")),
                              Qt::LeftButton);
        });
        QVERIFY(WelcomeDialog::firstStart(path, create));
        QVERIFY(answer.answered());
        QVERIFY(!create);
        QVERIFY(QFileInfo::exists(path));
        QVERIFY(Store::open(path, Store::OpenMode::OpenExisting)->isEmpty());
    }

    void theIssuersAreEditedOneALine()
    {
        m_store->setIssuedByNames({QStringLiteral("Marta Halloran")});
        const auto owned = ZebTest::openWorkstation(m_store);
        Workstation& window = *owned;
        ZebTest::WhenModal<IssuersDialog> answer([](IssuersDialog& d) {
            auto* names = d.findChild<QPlainTextEdit*>(QStringLiteral("txtIssuers"));
            names->moveCursor(QTextCursor::End);
            QTest::keyClick(names, Qt::Key_Return);
            QTest::keyClicks(names, QStringLiteral("Dev Patel"));
            QTest::keyClick(names, Qt::Key_Return);
            QTest::keyClicks(names, QStringLiteral("Marta Halloran"));
            QTest::mouseClick(d.findChild<QPushButton*>(QStringLiteral("cmdOK")), Qt::LeftButton);
        });
        window.chooseIssuers();
        QVERIFY(answer.answered());
        QCOMPARE(m_store->issuedByNames(),
                 (QStringList{QStringLiteral("Marta Halloran"), QStringLiteral("Dev Patel")}));
    }

    void everyNewDialogNamesEveryElementForAScreenReader()
    {
        m_store->addDirectoryCustomers({customer(
            QStringLiteral("H1"), QStringLiteral("Harbor Supply"), QStringLiteral("Astoria"))});
        TableImport import = OfficeImports::lineItems();
        import.setTable(CsvTable::parse("Qty,Type,Catalog\n1.5,A,VH-1\n", QStringLiteral("test")));
        import.guessMapping();
        ImportDialog importDialog(QStringLiteral("Import Line Items"), QStringLiteral("test.csv"),
                                  import, true);
        JobDialog job(JobDialog::Purpose::Duplicate, {}, {});
        DirectoryDialog directory(m_store);
        CustomerDialog one(QStringLiteral("New Customer"), {});
        IssuersDialog issuers({QStringLiteral("Marta Halloran")});
        WelcomeDialog welcome;
        for (QDialog* d : std::initializer_list<QDialog*>{&importDialog, &job, &directory, &one,
                                                          &issuers, &welcome}) {
            d->show();
            QVERIFY(QTest::qWaitForWindowExposed(d));
            QCOMPARE(ZebTest::unnamedAccessibleElements(d), QStringList());
            d->hide();
        }
    }

    void theHelpMenuListsTheKeysOfEveryCommand()
    {
        const auto owned = ZebTest::openWorkstation(m_store);
        Workstation& window = *owned;
        const auto keys = window.shortcuts();
        QVERIFY(keys.contains(
            qMakePair(QStringLiteral("New Job"),
                      QKeySequence(QKeySequence::New).toString(QKeySequence::NativeText))));
        QVERIFY(keys.contains(
            qMakePair(QStringLiteral("Import Line Items"), QStringLiteral("Ctrl+I"))));
        QVERIFY(keys.contains(
            qMakePair(QStringLiteral("Line Items Editor: undo"), QStringLiteral("Ctrl+Z"))));
        QVERIFY(window.findChild<QAction*>(QStringLiteral("actAbout")));
    }

private:
    QTemporaryDir m_home;
    std::unique_ptr<QTemporaryDir> m_scratch;
    std::shared_ptr<Store> m_store;
};

QTEST_MAIN(tst_Directories)
#include "tst_directories.moc"
