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
#include "support/testsupport.h"

#include <QCoreApplication>
#include <QSqlDatabase>
#include <QSqlQuery>
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

// Another program's connection to the file.
class OtherProgram {
public:
    explicit OtherProgram(const QString& file)
    {
        auto db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), kName);
        db.setDatabaseName(file);
        db.open();
    }
    ~OtherProgram() { QSqlDatabase::removeDatabase(kName); }
    OtherProgram(const OtherProgram&) = delete;
    OtherProgram& operator=(const OtherProgram&) = delete;

    bool run(const QString& sql)
    {
        QSqlQuery q(QSqlDatabase::database(kName));
        return q.exec(sql);
    }

private:
    static inline const QString kName = QStringLiteral("other program");
};

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
        viewer.resize(610, 355);
        viewer.show();
        settle();
        const quint64 forSmall =
            statementsOf(*store, [&] { viewer.setLineItems(small->lineItems()); });
        const quint64 forLarge =
            statementsOf(*store, [&] { viewer.setLineItems(large->lineItems()); });
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
        list.resize(400, 300);
        list.show();
        settle();
        const quint64 forSmall =
            statementsOf(*store, [&] { list.setTextObjects(small->coverLetterParagraphs()); });
        const quint64 forLarge =
            statementsOf(*store, [&] { list.setTextObjects(large->coverLetterParagraphs()); });
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
        panel.resize(940, 420);
        panel.show();
        settle();
        const quint64 forSmall =
            statementsOf(*store, [&] { panel.setCustomers(small->customers()); });
        const quint64 forLarge =
            statementsOf(*store, [&] { panel.setCustomers(large->customers()); });
        auto* list = panel.findChild<ZebSubCtl::KeyedListView*>(QStringLiteral("lsvCustomers"));
        QCOMPARE(list->count(), 1000);
        QCOMPARE(list->text(999), QStringLiteral("Customer 1000"));
        QVERIFY2(forLarge <= 4, qPrintable(QStringLiteral("%1 statements").arg(forLarge)));
        QCOMPARE(forLarge, forSmall);
        QCOMPARE(h.log().failureLines(), QStringList());
    }

    void removingEveryCustomerSendsTheSameStatementsForEach()
    {
        QTemporaryDir dir;
        const auto store = Store::open(file(dir));
        const auto small = store->openJob(store->createJob(job(QStringLiteral("1"), 0, 0, 10)));
        const auto large = store->openJob(store->createJob(job(QStringLiteral("2"), 0, 0, 400)));
        const auto perCustomer = [&](const std::shared_ptr<StoreCustomers>& customers) {
            const double count = customers->Count();
            const quint64 statements = statementsOf(*store, [&] { customers->RemoveAll(); });
            // Anything left behind makes the figure negative.
            return customers->Count() == 0 ? double(statements) / count : -1.0;
        };
        const double forSmall = perCustomer(small->customers());
        const double forLarge = perCustomer(large->customers());
        QVERIFY(forSmall > 0 && forLarge > 0);
        // One commit per removal, and no more reading for a long list than for a short one.
        QVERIFY2(forLarge <= 6.0, qPrintable(QString::number(forLarge)));
        QVERIFY2(forLarge <= forSmall,
                 qPrintable(QStringLiteral("%1 against %2").arg(forLarge).arg(forSmall)));
    }

    void anAddedParagraphIsNotReadBack()
    {
        QTemporaryDir dir;
        const auto store = Store::open(file(dir));
        const auto texts = store->openJob(store->createJob(job(QStringLiteral("1"), 0, 3, 0)))
                               ->coverLetterParagraphs();
        QCOMPARE(texts->Count(), 3);
        QString shown;
        bool selected = false;
        qint32 count = 0;
        quint64 inHandler = 0;
        connect(texts.get(), &TextObjects::ItemAdded, this, [&](const QString& key) {
            const quint64 before = store->statementCount();
            const auto added = texts->Item(key);
            shown = added->Text() + QLatin1Char('|') + added->Text();
            selected = added->Selected();
            count = texts->Count();
            inHandler = store->statementCount() - before;
        });
        texts->Add(QStringLiteral("Fixtures ship in one lot."), true);
        QCOMPARE(shown, QStringLiteral("Fixtures ship in one lot.|Fixtures ship in one lot."));
        QCOMPARE(selected, true);
        QCOMPARE(count, 4);
        // Whether the file changed since the write is asked once; nothing else is read.
        QCOMPARE(inHandler, quint64(1));
        QCOMPARE(texts->Item(4)->Text(), QStringLiteral("Fixtures ship in one lot."));
    }

    void anotherProgramsCommitIsSeenOnceTheEventLoopHasRun()
    {
        QTemporaryDir dir;
        const auto store = Store::open(file(dir));
        const auto opened = store->openJob(store->createJob(job(QStringLiteral("1"), 5, 5, 5)));
        const auto lines = opened->lineItems();
        const auto texts = opened->coverLetterParagraphs();
        const auto customers = opened->customers();
        QCOMPARE(lines->Count(), qint16(5));
        QCOMPARE(lines->Item(1)->Description(), QStringLiteral("Troffer 1"));
        QCOMPARE(texts->Count(), 5);
        QCOMPARE(customers->Count(), qint16(5));
        QCOMPARE(customers->Item(5)->Name(), QStringLiteral("Customer 5"));
        settle();
        // Kept: asking again reads only whether the file changed.
        const quint64 again = statementsOf(*store, [&] {
            QCOMPARE(lines->Count(), qint16(5));
            QCOMPARE(texts->Count(), 5);
            QCOMPARE(customers->Count(), qint16(5));
            QCOMPARE(customers->Item(5)->Name(), QStringLiteral("Customer 5"));
        });
        QCOMPARE(again, quint64(1));

        OtherProgram other(file(dir));
        QVERIFY(
            other.run(QStringLiteral("DELETE FROM line_items WHERE description = 'Troffer 1'")));
        QVERIFY(other.run(QStringLiteral("UPDATE line_items SET description = 'Downlight' WHERE "
                                         "description = 'Troffer 2'")));
        QVERIFY(other.run(QStringLiteral("DELETE FROM texts WHERE text = 'Paragraph 5'")));
        QVERIFY(other.run(QStringLiteral("UPDATE submittal_customers SET name = 'Renamed' WHERE "
                                         "key = 'C5'")));
        QVERIFY(other.run(QStringLiteral("DELETE FROM submittal_customers WHERE key = 'C1'")));
        settle();
        QCOMPARE(lines->Count(), qint16(4));
        QCOMPARE(lines->Item(1)->Description(), QStringLiteral("Downlight"));
        QCOMPARE(texts->Count(), 4);
        QCOMPARE(customers->Count(), qint16(4));
        QCOMPARE(customers->Item(4)->Name(), QStringLiteral("Renamed"));
        QCOMPARE(customers->Item(1)->Key(), QStringLiteral("C2"));
    }

    void anotherConnectionsCommitInThisProgramIsSeenAtOnce()
    {
        QTemporaryDir dir;
        const auto one = Store::open(file(dir));
        const qint64 id = one->createJob(job(QStringLiteral("1"), 3, 3, 3));
        const auto two = Store::open(file(dir));
        const auto mine = one->openJob(id);
        const auto theirs = two->openJob(id);
        QCOMPARE(mine->customers()->Count(), qint16(3));
        QCOMPARE(mine->lineItems()->Item(2)->Selected(), false);
        theirs->customers()->Remove(1);
        theirs->lineItems()->Item(2)->setSelected(true);
        QCOMPARE(mine->customers()->Count(), qint16(2));
        QCOMPARE(mine->customers()->Item(1)->Key(), QStringLiteral("C2"));
        QCOMPARE(mine->lineItems()->Item(2)->Selected(), true);
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
        OtherProgram other(file(dir));
        QVERIFY(other.run(QStringLiteral("BEGIN IMMEDIATE")));
        QVERIFY(other.run(QStringLiteral("DELETE FROM submittal_customers WHERE key = 'C1'")));
        QVERIFY(ZebTest::failureOf([&] { customers->Remove(3); }).Number != 0);
        QCOMPARE(customers->Count(), qint16(3));
        QVERIFY(other.run(QStringLiteral("COMMIT")));
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
