// Binding the controls to a store's collections: the statements a bind sends do not grow with
// the number of lines, paragraphs or customers, and what a collection keeps between its own
// events is always what the file holds (after another program's commit once the event loop has
// run, after another connection of this program at once, after a write that failed or was
// rolled back, after the collection's own writes).
#include "contracts/customer.h"
#include "contracts/customers.h"
#include "contracts/lineitem.h"
#include "contracts/lineitems.h"
#include "contracts/textobject.h"
#include "contracts/textobjects.h"
#include "controls/customers/ctlcustselect.h"
#include "controls/lineitems/ctlsubline.h"
#include "controls/lineitems/ctlsublinedsp.h"
#include "controls/textselect/ctltextselect.h"
#include "platform/keyedlistview.h"
#include "store/jobcontents.h"
#include "store/store.h"
#include "store/storecustomers.h"
#include "store/storejob.h"
#include "store/storelineitems.h"
#include "store/storetextobjects.h"
#include "rawdatabase.h"
#include "support/testsupport.h"

#include <QCoreApplication>
#include <QTemporaryDir>
#include <QTest>

using namespace ZebObjects;

namespace {

JobContents job(const QString& number, int lines, int paragraphs, int customers)
{
    JobContents c;
    c.number = number;
    c.name = QStringLiteral("Riverside Medical Pavilion");
    for (int i = 1; i <= lines; ++i) {
        LineItemRecord l;
        l.quantity = i;
        l.type = QStringLiteral("T%1").arg(i);
        l.brand = QStringLiteral("Varnholt");
        l.catalogNumber = QStringLiteral("VH-%1").arg(i);
        l.description = QStringLiteral("Troffer %1").arg(i);
        l.group = QStringLiteral("LVL1");
        l.mto = i % 5 == 0;
        if (i % 4 == 0)
            l.comment = QStringLiteral("Sample first.");
        l.selected = i % 3 == 0;
        c.lines.append(l);
    }
    for (int i = 1; i <= paragraphs; ++i)
        c.paragraphs.append({QStringLiteral("Paragraph %1").arg(i), i % 2 == 0});
    for (int i = 1; i <= customers; ++i) {
        CustomerRecord r;
        r.key = QStringLiteral("C%1").arg(i);
        r.name = QStringLiteral("Customer %1").arg(i);
        r.displayText = r.name;
        r.accountNumber = QString::number(1000 + i);
        r.city = QStringLiteral("Portland");
        r.state = QStringLiteral("OR");
        r.type = QStringLiteral("Contractor");
        r.category = QStringLiteral("Electrical");
        r.included = i % 2 == 0;
        c.customers.append(r);
    }
    return c;
}

// Layout and the first paint, as the user sees the bound control.
void settle()
{
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents();
}

// The statements a store runs for call, the posted events and the first paint after it
// included.
template <class Call>
quint64 statementsOf(const Store& store, Call&& call)
{
    const quint64 before = store.statementCount();
    call();
    settle();
    return store.statementCount() - before;
}

// The statements the store runs to bind the small job and then the large one into control,
// shown at size; bind binds one job's collection.
template <class Control, class Bind>
std::pair<quint64, quint64> bindStatements(const Store& store, Control& control, QSize size,
                                           Bind bind, StoreJob& small, StoreJob& large)
{
    control.resize(size);
    control.show();
    settle();
    return {statementsOf(store, [&] { bind(small); }), statementsOf(store, [&] { bind(large); })};
}

QString file(const QTemporaryDir& dir)
{
    return dir.filePath(QStringLiteral("office.zebdb"));
}

}  // namespace

class TestStoreBinding : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { ZebTest::useScratchDataHome(); }

    void bindingTheLineItemViewerSendsAFewStatementsWhateverTheLines()
    {
        ZebTest::Harness h;
        QTemporaryDir dir;
        const auto store = Store::open(file(dir));
        const auto small = store->openJob(store->createJob(job(QStringLiteral("1"), 20, 0, 0)));
        const auto large = store->openJob(store->createJob(job(QStringLiteral("2"), 744, 0, 0)));
        ZebSubCtl::ctlSubLineDsp viewer;
        const auto [forSmall, forLarge] = bindStatements(
            *store, viewer, {610, 355}, [&](StoreJob& j) { viewer.setLineItems(j.lineItems()); },
            *small, *large);
        QCOMPARE(viewer.findChildren<ZebSubCtl::ctlSubLine*>().size(), 744);
        QVERIFY2(forLarge <= 4, qPrintable(QStringLiteral("%1 statements").arg(forLarge)));
        QCOMPARE(forLarge, forSmall);
        QCOMPARE(h.log().failureLines(), QStringList());
    }

    void bindingTheParagraphListSendsAFewStatementsWhateverTheParagraphs()
    {
        ZebTest::Harness h;
        QTemporaryDir dir;
        const auto store = Store::open(file(dir));
        const auto small = store->openJob(store->createJob(job(QStringLiteral("1"), 0, 2, 0)));
        const auto large = store->openJob(store->createJob(job(QStringLiteral("2"), 0, 1000, 0)));
        ZebSubCtl::ctlTextSelect list;
        const auto [forSmall, forLarge] = bindStatements(
            *store, list, {400, 300},
            [&](StoreJob& j) { list.setTextObjects(j.coverLetterParagraphs()); }, *small, *large);
        QCOMPARE(list.findChild<ZebSubCtl::KeyedListView*>(QStringLiteral("ListView"))->count(),
                 1000);
        // The list's kind of text read and written back (four), the paragraphs with their
        // state (one), and whether the file changed when the tool tips follow the first paint.
        QVERIFY2(forLarge <= 6, qPrintable(QStringLiteral("%1 statements").arg(forLarge)));
        QCOMPARE(forLarge, forSmall);
        QCOMPARE(h.log().failureLines(), QStringList());
    }

    void bindingTheCustomerPanelSendsAFewStatementsWhateverTheCustomers()
    {
        ZebTest::Harness h;
        QTemporaryDir dir;
        const auto store = Store::open(file(dir));
        const auto small = store->openJob(store->createJob(job(QStringLiteral("1"), 0, 0, 2)));
        const auto large = store->openJob(store->createJob(job(QStringLiteral("2"), 0, 0, 1000)));
        ZebSubCtl::ctlCustSelect panel;
        const auto [forSmall, forLarge] = bindStatements(
            *store, panel, {940, 420}, [&](StoreJob& j) { panel.setCustomers(j.customers()); },
            *small, *large);
        auto* list = panel.findChild<ZebSubCtl::KeyedListView*>(QStringLiteral("lsvCustomers"));
        QCOMPARE(list->count(), 1000);
        QCOMPARE(list->text(999), QStringLiteral("Customer 1000"));
        QVERIFY2(forLarge <= 4, qPrintable(QStringLiteral("%1 statements").arg(forLarge)));
        QCOMPARE(forLarge, forSmall);
        QCOMPARE(h.log().failureLines(), QStringList());
    }

    void removingEveryCustomerIsOneWriteWhateverTheCustomers()
    {
        QTemporaryDir dir;
        const auto store = Store::open(file(dir));
        const qint64 smallJob = store->createJob(job(QStringLiteral("1"), 0, 0, 10));
        const qint64 largeJob = store->createJob(job(QStringLiteral("2"), 0, 0, 400));
        const auto statementsToRemoveAll = [&](qint64 id) {
            const auto customers = store->openJob(id)->customers();
            const qint16 count = customers->Count();
            QList<qint16> events;
            connect(customers.get(), &Customers::CustomerRemoved, this,
                    [&](qint16 index) { events.append(index); });
            const quint64 statements = statementsOf(*store, [&] { customers->RemoveAll(); });
            // One event per customer, the last first, and nothing left behind in the file.
            QList<qint16> expected;
            for (qint16 i = count; i >= 1; --i)
                expected.append(i);
            return events == expected && store->openJob(id)->customers()->Count() == 0 ? statements
                                                                                       : quint64(0);
        };
        const quint64 forSmall = statementsToRemoveAll(smallJob);
        const quint64 forLarge = statementsToRemoveAll(largeJob);
        QVERIFY(forSmall > 0 && forLarge > 0);
        // One transaction and one DELETE, however many customers leave.
        QVERIFY2(forLarge <= 6, qPrintable(QStringLiteral("%1 statements").arg(forLarge)));
        QCOMPARE(forLarge, forSmall);
    }

    void aCustomerAnswersWhatItShowedUntilItsRemovalIsAnnounced()
    {
        QTemporaryDir dir;
        const auto store = Store::open(file(dir));
        const auto customers =
            store->openJob(store->createJob(job(QStringLiteral("1"), 0, 0, 3)))->customers();
        const std::shared_ptr<Customer> first = customers->Item(1);
        QStringList seen;
        connect(customers.get(), &Customers::CustomerRemoved, this, [&](qint16 index) {
            QStringList names;
            for (const auto& c : customers->Enumerate())
                names << c->Name();
            seen << QStringLiteral("%1:%2:%3")
                        .arg(index)
                        .arg(customers->Count())
                        .arg(names.join(QLatin1Char(',')));
            if (index > 1)
                QCOMPARE(first->Name(), QStringLiteral("Customer 1"));
        });
        // A handler that asks for Remove All again changes nothing: the rest are on their way.
        connect(customers.get(), &Customers::CustomerRemoved, this, [&](qint16 index) {
            if (index == 3)
                customers->RemoveAll();
        });
        customers->RemoveAll();
        QCOMPARE(seen, (QStringList{QStringLiteral("3:2:Customer 1,Customer 2"),
                                    QStringLiteral("2:1:Customer 1"), QStringLiteral("1:0:")}));
        // Once announced, it is gone like any removed customer.
        QCOMPARE(ZebTest::failureOf([&] { first->Name(); }).Number, ErrorNumber::ElementNotFound);
    }

    void aRemoveAllTheFileRefusesAnnouncesNothingAndKeepsEveryCustomer()
    {
        QTemporaryDir dir;
        Store::Options options;
        options.busyTimeoutMs = 50;
        const auto store = Store::open(file(dir), Store::OpenMode::OpenOrCreate, options);
        const auto customers =
            store->openJob(store->createJob(job(QStringLiteral("1"), 0, 0, 3)))->customers();
        QCOMPARE(customers->Count(), qint16(3));
        int events = 0;
        connect(customers.get(), &Customers::CustomerRemoved, this, [&] { ++events; });
        RawDatabase other(file(dir));
        QVERIFY(other.exec(QStringLiteral("BEGIN IMMEDIATE")));
        const ErrorInfo refused = ZebTest::failureOf([&] { customers->RemoveAll(); });
        QCOMPARE(refused.Number, ErrorNumber::PermissionDenied);
        QCOMPARE(events, 0);
        QCOMPARE(customers->Count(), qint16(3));
        QCOMPARE(customers->Item(3)->Name(), QStringLiteral("Customer 3"));
        QVERIFY(other.exec(QStringLiteral("ROLLBACK")));
        customers->RemoveAll();
        QCOMPARE(events, 3);
        QCOMPARE(customers->Count(), qint16(0));
    }

    void aParagraphAddedAfterTheLastWasRemovedIsANewOneWithItsOwnKey()
    {
        QTemporaryDir dir;
        const auto store = Store::open(file(dir));
        const auto texts = store->openJob(store->createJob(job(QStringLiteral("1"), 0, 2, 0)))
                               ->coverLetterParagraphs();
        QCOMPARE(texts->Enumerate().size(), 2);
        const QString removed = texts->Add(QStringLiteral("Removed"), false)->Key();
        texts->Remove(removed);
        // The file may give the removed row's id to the next row.
        const std::shared_ptr<TextObject> added = texts->Add(QStringLiteral("Added"), true);
        QVERIFY(added->Key() != removed);
        QCOMPARE(added->Text(), QStringLiteral("Added"));
        QCOMPARE(texts->Item(added->Key())->Text(), QStringLiteral("Added"));
        QCOMPARE(texts->Item(3)->Key(), added->Key());
        texts->Remove(added->Key());
        QCOMPARE(texts->Count(), 2);
    }

    void textReadFromTheFileIsTheTextWritten()
    {
        QTemporaryDir dir;
        const auto store = Store::open(file(dir));
        const QString name =
            QStringLiteral("Lumi\u00e8re \u00c9clairage \u2014 \u00d8stby \U0001F4A1");
        JobContents contents = job(QStringLiteral("1"), 2, 1, 1);
        contents.customers[0].name = name;
        contents.customers[0].city = QString();
        contents.paragraphs[0].text = name;
        contents.lines[1].comment = QString();
        const auto opened = store->openJob(store->createJob(contents));
        QCOMPARE(opened->customers()->Enumerate().first()->Name(), name);
        QCOMPARE(opened->customers()->Item(1)->City(), QStringLiteral(""));
        QCOMPARE(opened->coverLetterParagraphs()->Enumerate().first()->Text(), name);
        // A line without a comment reads as one without, an empty comment as an empty one.
        QVERIFY(opened->lineItems()->Item(1)->Comment() == nullptr);
        QVERIFY(opened->lineItems()->Item(2)->Comment() != nullptr);
        QCOMPARE(opened->lineItems()->Item(2)->Comment()->Text(), QStringLiteral(""));
        QCOMPARE(opened->lineItems()->Item(2)->Quantity(), QStringLiteral("2"));
    }

    void aWriteRolledBackLeavesTheCollectionAsTheFileHoldsIt()
    {
        QTemporaryDir dir;
        const auto store = Store::open(file(dir));
        const auto opened = store->openJob(store->createJob(job(QStringLiteral("1"), 0, 3, 4)));
        const auto customers = opened->customers();
        const auto texts = opened->coverLetterParagraphs();
        QCOMPARE(customers->Count(), qint16(4));
        QCOMPARE(texts->Count(), 3);
        const ErrorInfo failed = ZebTest::failureOf([&] {
            store->writeAll([&] {
                customers->Remove(4);
                texts->Add(QStringLiteral("Never saved"), false);
                QCOMPARE(customers->Count(), qint16(3));
                QCOMPARE(texts->Count(), 4);
                throw Failure(ErrorNumber::InternalError, QStringLiteral("Test"),
                              QStringLiteral("Refused after the changes"));
            });
        });
        QCOMPARE(failed.Number, ErrorNumber::InternalError);
        QCOMPARE(customers->Count(), qint16(4));
        QCOMPARE(customers->Item(4)->Key(), QStringLiteral("C4"));
        QCOMPARE(texts->Count(), 3);
        QCOMPARE(texts->Item(3)->Text(), QStringLiteral("Paragraph 3"));
    }

    void aWriteTheFileRefusesLeavesTheCollectionAsTheFileHoldsIt()
    {
        QTemporaryDir dir;
        Store::Options options;
        options.busyTimeoutMs = 50;
        const auto store = Store::open(file(dir), Store::OpenMode::OpenOrCreate, options);
        const auto customers =
            store->openJob(store->createJob(job(QStringLiteral("1"), 0, 0, 3)))->customers();
        QCOMPARE(customers->Count(), qint16(3));
        RawDatabase other(file(dir));
        QVERIFY(other.exec(QStringLiteral("BEGIN IMMEDIATE")));
        QVERIFY(other.exec(QStringLiteral("DELETE FROM submittal_customers WHERE key = 'C1'")));
        QVERIFY(ZebTest::failureOf([&] { customers->Remove(3); }).Number != 0);
        QCOMPARE(customers->Count(), qint16(3));
        QVERIFY(other.exec(QStringLiteral("COMMIT")));
        settle();
        QCOMPARE(customers->Count(), qint16(2));
        QCOMPARE(customers->Item(1)->Key(), QStringLiteral("C2"));
        customers->Remove(2);
        QCOMPARE(customers->Count(), qint16(1));
        QCOMPARE(customers->Item(1)->Key(), QStringLiteral("C2"));
    }
};

QTEST_MAIN(TestStoreBinding)
#include "tst_storebinding.moc"
