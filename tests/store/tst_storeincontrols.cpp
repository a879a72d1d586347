// A failure of the store's file reaches a control's error path like any other failure, and the
// control goes on working once the file is free again.
#include "controls/customers/ctlcustselect.h"
#include "controls/textselect/ctltextselect.h"
#include "contracts/runtime.h"
#include "platform/keyedlistview.h"
#include "platform/multilinetextbox.h"
#include "store/jobcontents.h"
#include "store/store.h"
#include "store/storecustomers.h"
#include "store/storejob.h"
#include "store/storetextobjects.h"
#include "rawdatabase.h"
#include "support/testsupport.h"

#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>

using namespace ZebObjects;
using Shown = ZebSubCtl::ScriptedMessageBoxService::Shown;

namespace {

// A new office in file whose store gives up on a lock after 50 ms, its services the process's.
std::shared_ptr<Store> openOffice(const QString& file)
{
    Store::Options options;
    options.busyTimeoutMs = 50;
    auto store = Store::open(file, Store::OpenMode::OpenOrCreate, options);
    Runtime::setApplicationServices(store->applicationServices());
    return store;
}

JobContents riverside()
{
    JobContents c;
    c.number = QStringLiteral("24-0131");
    c.name = QStringLiteral("Riverside Medical Office Building");
    return c;
}

// What a write meets while another program holds the file's write lock.
QString lockedDescription(const QString& file)
{
    return QStringLiteral("The database file \"%1\" is locked by another writer (database is "
                          "locked)")
        .arg(file);
}

}  // namespace

class TestStoreInControls : public QObject {
    Q_OBJECT
private slots:
    void initTestCase() { ZebTest::useScratchDataHome(); }

    void aLockedFileEndsTheAddInTheStandardReportAndTheNextAddWorks()
    {
        ZebTest::Harness h;
        QTemporaryDir dir;
        const QString file = dir.filePath(QStringLiteral("office.zebdb"));
        const auto store = openOffice(file);
        JobContents c = riverside();
        c.paragraphs = {{QStringLiteral("Enclosed please find our submittal."), true}};
        const auto job = store->openJob(store->createJob(c));

        ZebSubCtl::ctlTextSelect ctl;
        ctl.setAllowUpdate(true);
        ctl.setTextObjects(job->coverLetterParagraphs());
        ctl.show();
        QVERIFY(QTest::qWaitForWindowExposed(&ctl));
        auto* list = ctl.findChild<ZebSubCtl::KeyedListView*>(QStringLiteral("ListView"));
        auto* entry = ctl.findChild<ZebSubCtl::MultiLineTextBox*>(QStringLiteral("txtNewComment"));
        auto* add = ctl.findChild<QPushButton*>(QStringLiteral("cmdAdd"));
        QVERIFY(list && entry && add);
        QCOMPARE(list->count(), 1);

        {
            RawDatabase other(file);
            QVERIFY(other.exec(QStringLiteral("BEGIN IMMEDIATE")));
            h.log().clear();
            QTest::keyClicks(entry, QStringLiteral("Lead times start at approval."));
            QTest::mouseClick(add, Qt::LeftButton);
            const QString description = lockedDescription(file);
            QCOMPARE(
                h.boxes().shown(),
                (QList<Shown>{Shown{QStringLiteral("The requested operation cannot be completed."),
                                    48, QStringLiteral("70 - ") + description}}));
            QCOMPARE(h.log().lines(),
                     QStringList{QStringLiteral("LogError|ctlTextSelect|cmdAdd_Click()|70|"
                                                "ZebObjects.Store|%1|0")
                                     .arg(description)});
            QCOMPARE(list->count(), 1);
            QVERIFY(other.exec(QStringLiteral("ROLLBACK")));
        }

        h.boxes().clear();
        QTest::mouseClick(add, Qt::LeftButton);
        QVERIFY(h.boxes().shown().isEmpty());
        QCOMPARE(list->count(), 2);
        // Committed: another connection reads it at once.
        const auto again = Store::open(file, Store::OpenMode::OpenExisting);
        QCOMPARE(again->openJob(job->id())->coverLetterParagraphs()->Item(2)->Text(),
                 QStringLiteral("Lead times start at approval."));
    }

    void removeAllOnALockedFileKeepsEveryRowAndThenEmptiesTheFileAndTheList()
    {
        ZebTest::Harness h;
        QTemporaryDir dir;
        const QString file = dir.filePath(QStringLiteral("office.zebdb"));
        const auto store = openOffice(file);
        JobContents c = riverside();
        for (int i = 1; i <= 3; ++i) {
            CustomerRecord r;
            r.key = QStringLiteral("C%1").arg(i);
            r.name = QStringLiteral("Customer %1").arg(i);
            r.displayText = r.name;
            c.customers.append(r);
        }
        const auto job = store->openJob(store->createJob(c));

        ZebSubCtl::ctlCustSelect panel;
        panel.setAllowDelete(true);
        panel.setCustomers(job->customers());
        panel.show();
        QVERIFY(QTest::qWaitForWindowExposed(&panel));
        auto* list = panel.findChild<ZebSubCtl::KeyedListView*>(QStringLiteral("lsvCustomers"));
        auto* removeAll = panel.findChild<QPushButton*>(QStringLiteral("cmdRemoveAll"));
        QVERIFY(list && removeAll);
        QCOMPARE(list->count(), 3);
        list->setSelectedRow(0);

        {
            RawDatabase other(file);
            QVERIFY(other.exec(QStringLiteral("BEGIN IMMEDIATE")));
            h.log().clear();
            QTest::mouseClick(removeAll, Qt::LeftButton);
            const QString description = lockedDescription(file);
            QCOMPARE(h.boxes().shown(),
                     (QList<Shown>{Shown{QStringLiteral("This will remove all customers from "
                                                        "this submittal."),
                                         33, QStringLiteral("Are you sure?")},
                                   Shown{QStringLiteral("An error occurred while removing all "
                                                        "customers, some customers could not be "
                                                        "removed.  \r\n")
                                             + description,
                                         48, QStringLiteral("Error: 70 - ") + description}}));
            // Nothing left the file, so every row stays.
            QCOMPARE(list->count(), 3);
            QCOMPARE(job->customers()->Count(), qint16(3));
            QVERIFY(other.exec(QStringLiteral("ROLLBACK")));
        }

        h.boxes().clear();
        QTest::mouseClick(removeAll, Qt::LeftButton);
        QCOMPARE(h.boxes().shown().size(), 1);
        QCOMPARE(list->count(), 0);
        // Committed: another connection finds no customer on the job.
        const auto again = Store::open(file, Store::OpenMode::OpenExisting);
        QCOMPARE(again->openJob(job->id())->customers()->Count(), qint16(0));
    }
};

QTEST_MAIN(TestStoreInControls)
#include "tst_storeincontrols.moc"
