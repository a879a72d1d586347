// The behaviour every implementation of the business-object contracts shares, checked against
// the stand-alone objects and the store alike: one suite, run once per implementation.
#include "contracts/applicationservices.h"
#include "contracts/customerfinder.h"
#include "contracts/customersearchcontext.h"
#include "contracts/customersearchresult.h"
#include "customerchooser.h"
#include "objects/customerdirectory.h"
#include "objects/sampledata.h"
#include "objects/standaloneapplicationservices.h"
#include "objects/standalonebom.h"
#include "objects/standalonecustomers.h"
#include "objects/standalonelabelfields.h"
#include "objects/standalonelabels.h"
#include "objects/standalonelineitems.h"
#include "objects/standalonerecipients.h"
#include "objects/standalonesubmittal.h"
#include "objects/standalonetextobjects.h"
#include "rules/textkind.h"
#include "pgserver.h"
#include "store/jobcontents.h"
#include "store/store.h"
#include "store/storebom.h"
#include "store/storecustomers.h"
#include "store/storejob.h"
#include "store/storelabels.h"
#include "store/storelineitems.h"
#include "store/storesubmittal.h"
#include "store/storetextobjects.h"
#include "support/contracttesting.h"
#include "support/testsupport.h"

#include <QApplication>
#include <QPushButton>
#include <QSignalSpy>
#include <QTimer>
#include <QTreeWidget>
#include <QTemporaryDir>
#include <QTest>

using namespace ZebObjects;

namespace {

using Fields = QList<JobContents::LabelField>;
using Lines = QList<StandaloneLineItem::Data>;

// Hands out fresh objects of one implementation.
class Implementation {
public:
    virtual ~Implementation() = default;
    // A submittal with nothing chosen, purpose option 0, and these recipients.
    virtual std::shared_ptr<Submittal> submittal(
        const QList<JobContents::Recipient>& recipients = {}) = 0;
    virtual std::shared_ptr<TextObjects> texts() = 0;
    virtual std::shared_ptr<BOM> bom() = 0;
    virtual void populateRemarks(BOM& bom, const QStringList& texts) = 0;
    // Labels with these fields, in this order, at most five on the label.
    virtual std::shared_ptr<Labels> labels(const Fields& fields) = 0;
    virtual std::shared_ptr<LineItems> lines(const Lines& lines) = 0;
    virtual std::shared_ptr<Customers> customers() = 0;
    // Issuers and directory of the sample office.
    virtual std::shared_ptr<ApplicationServices> services() = 0;
};

class Standalone : public Implementation {
public:
    std::shared_ptr<Submittal> submittal(const QList<JobContents::Recipient>& recipients) override
    {
        auto s = std::make_shared<StandaloneSubmittal>();
        for (const auto& r : recipients)
            s->standaloneRecipients()->Add(r.name, r.company);
        return s;
    }
    std::shared_ptr<TextObjects> texts() override
    {
        return std::make_shared<StandaloneTextObjects>();
    }
    std::shared_ptr<BOM> bom() override { return std::make_shared<StandaloneBOM>(); }
    void populateRemarks(BOM& bom, const QStringList& texts) override
    {
        static_cast<StandaloneBOM&>(bom).PopulateRemarks(texts);
    }
    std::shared_ptr<Labels> labels(const Fields& fields) override
    {
        auto l = std::make_shared<StandaloneLabels>();
        for (const auto& f : fields)
            l->standaloneFields()->Add(f.key, f.caption, f.printOrder);
        return l;
    }
    std::shared_ptr<LineItems> lines(const Lines& lines) override
    {
        auto out = std::make_shared<StandaloneLineItems>();
        for (const auto& l : lines)
            out->Add(l);
        return out;
    }
    std::shared_ptr<Customers> customers() override
    {
        return std::make_shared<StandaloneCustomers>();
    }
    std::shared_ptr<ApplicationServices> services() override
    {
        return std::make_shared<StandaloneApplicationServices>();
    }
};

class InStore : public Implementation {
public:
    // A new office in a file, or in a new database when location names a server.
    explicit InStore(const QString& location = {})
    {
        m_store = Store::open(location.isEmpty() ? m_dir.filePath(QStringLiteral("office.zebdb"))
                                                 : location);
        m_store->setIssuedByNames(SampleData::issuedByNames());
        m_store->setSearchContextValue(SampleData::searchContextValue());
        m_store->addDirectoryCustomers(SampleData::customerDirectory()->Records());
    }
    std::shared_ptr<Submittal> submittal(const QList<JobContents::Recipient>& recipients) override
    {
        JobContents c;
        c.recipients = recipients;
        return job(c)->submittal();
    }
    std::shared_ptr<TextObjects> texts() override { return job({})->coverLetterParagraphs(); }
    std::shared_ptr<BOM> bom() override { return job({})->bom(); }
    void populateRemarks(BOM& bom, const QStringList& texts) override
    {
        static_cast<StoreBOM&>(bom).PopulateRemarks(texts);
    }
    std::shared_ptr<Labels> labels(const Fields& fields) override
    {
        JobContents c;
        c.labelFields = fields;
        return job(c)->labels();
    }
    std::shared_ptr<LineItems> lines(const Lines& lines) override
    {
        JobContents c;
        c.lines = lines;
        return job(c)->lineItems();
    }
    std::shared_ptr<Customers> customers() override { return job({})->customers(); }
    std::shared_ptr<ApplicationServices> services() override
    {
        return m_store->applicationServices();
    }

private:
    std::shared_ptr<StoreJob> job(JobContents c)
    {
        c.number = QStringLiteral("J-%1").arg(++m_jobs);
        c.name = QStringLiteral("Job %1").arg(m_jobs);
        return m_store->openJob(m_store->createJob(c));
    }

    QTemporaryDir m_dir;
    std::shared_ptr<Store> m_store;
    int m_jobs = 0;
};

// One server for the whole program: starting one takes seconds.
std::unique_ptr<PgServer>& server()
{
    static std::unique_ptr<PgServer> s;
    return s;
}

std::unique_ptr<Implementation> implementation()
{
    QFETCH_GLOBAL(QString, implementation);
    if (implementation == QLatin1String("store"))
        return std::make_unique<InStore>();
    if (implementation == QLatin1String("postgresql"))
        return std::make_unique<InStore>(server()->location(server()->newDatabaseName()));
    return std::make_unique<Standalone>();
}

const QStringList kCaptions = {QStringLiteral("Request For Prior Approval"),
                               QStringLiteral("Request For Approval"),
                               QStringLiteral("Request For Approval As Submitted"),
                               QStringLiteral("Request For Approval As Noted"),
                               QStringLiteral("Resubmittal For Approval"),
                               QStringLiteral("Corrections"),
                               QStringLiteral("Record Only")};

using ZebTest::SubmittalEvents;

class TextEvents {
public:
    explicit TextEvents(TextObjects& c)
    {
        QObject::connect(&c, &TextObjects::Changed,
                         [this] { events << QStringLiteral("Changed"); });
        QObject::connect(&c, &TextObjects::ItemAdded, [this](const QString& k) {
            events << QStringLiteral("ItemAdded(%1)").arg(k);
        });
        QObject::connect(&c, &TextObjects::ItemDeleted, [this](const QString& k) {
            events << QStringLiteral("ItemDeleted(%1)").arg(k);
        });
        QObject::connect(&c, &TextObjects::ItemMoved,
                         [this] { events << QStringLiteral("ItemMoved"); });
        QObject::connect(&c, &TextObjects::OrderSaved,
                         [this] { events << QStringLiteral("OrderSaved"); });
    }
    QStringList events;
};

QStringList textsOf(const TextObjects& c)
{
    QStringList out;
    for (const auto& o : c.Enumerate())
        out << o->Text();
    return out;
}

Fields sevenFields()
{
    Fields out;
    for (int i = 1; i <= 7; ++i)
        out.append({QStringLiteral("F%1").arg(i), QStringLiteral("Field %1").arg(i), 0});
    return out;
}

QStringList orderOf(const LabelFields& fields)
{
    QStringList out;
    for (const auto& f : fields.Enumerate())
        out << QStringLiteral("%1:%2").arg(f->Key()).arg(f->PrintOrder());
    return out;
}

StandaloneLineItem::Data line(qint32 quantity, const char* type)
{
    StandaloneLineItem::Data d;
    d.quantity = quantity;
    d.type = QString::fromLatin1(type);
    return d;
}

std::shared_ptr<StandaloneCustomer> customer(const QString& key)
{
    StandaloneCustomer::Data d;
    d.key = key;
    d.displayText = QStringLiteral("Customer ") + key;
    d.name = QStringLiteral("Name ") + key;
    d.accountNumber = QStringLiteral("A-") + key;
    d.city = QStringLiteral("Portland");
    d.state = QStringLiteral("OR");
    d.type = QStringLiteral("Contractor");
    d.category = QStringLiteral("Electrical");
    return std::make_shared<StandaloneCustomer>(d);
}

QStringList keysOf(const Customers& c)
{
    QStringList out;
    for (const auto& x : c.Enumerate())
        out << x->Key();
    return out;
}

using ZebTest::failureOf;

using Flag = ZebTest::BomFlag;
const auto& kFlags = ZebTest::kBomFlags;

}  // namespace

class TestStoreContracts : public QObject {
    Q_OBJECT
private slots:
    // The tests play a host that shows the workstation's chooser.
    void initTestCase() { ZebObjects::CustomerChooser::install(); }

    void initTestCase_data()
    {
        QTest::addColumn<QString>("implementation");
        QTest::newRow("standalone") << QStringLiteral("standalone");
        QTest::newRow("store") << QStringLiteral("store");
        QTest::newRow("postgresql") << QStringLiteral("postgresql");
    }

    // Without a server the PostgreSQL half fails, saying why; it is never skipped.
    void init()
    {
        QFETCH_GLOBAL(QString, implementation);
        if (implementation != QLatin1String("postgresql"))
            return;
        if (!server())
            server() = std::make_unique<PgServer>();
        if (!server()->isRunning())
            QFAIL(qPrintable(QStringLiteral("The store on PostgreSQL cannot be tested: ")
                             + server()->error()));
    }

    void cleanupTestCase() { server().reset(); }

    // Submittal --------------------------------------------------------------------------------

    void newSubmittalIsEmptyWithPurposeOptionZero()
    {
        const auto impl = implementation();
        const auto s = impl->submittal();
        QCOMPARE(s->IssuedBy(), QString());
        QCOMPARE(s->SubmittalDate(), QString());
        QCOMPARE(s->IncludeCoverLetter(), false);
        QCOMPARE(s->IncludeBOM(), false);
        QCOMPARE(s->IncludeLabels(), false);
        QCOMPARE(s->SubmittalPurposeIndex(), qint16(0));
        QCOMPARE(s->SubmittalPurpose(), kCaptions[0]);
        QVERIFY(s->CoverLetter() != nullptr);
        QCOMPARE(s->Recipients()->Count(), qint16(0));
    }

    void everyWriteRaisesItsOwnEventAfterTheChange()
    {
        const auto impl = implementation();
        const auto s = impl->submittal();
        SubmittalEvents log(*s);
        s->setIssuedBy(QStringLiteral("Marta Halloran"));
        s->setSubmittalDate(QStringLiteral("2026-11-21"));
        s->setIncludeCoverLetter(true);
        s->setIncludeBOM(true);
        s->setIncludeLabels(true);
        s->setIncludeBOM(false);
        s->setSubmittalDate(QString());
        QCOMPARE(
            log.events,
            (QStringList{QStringLiteral("IssuedByChanged:Marta Halloran"),
                         QStringLiteral("SubmittalDateChanged:2026-11-21"),
                         QStringLiteral("CoverLetterChanged:1"), QStringLiteral("BOMChanged:1"),
                         QStringLiteral("LabelsChanged:1"), QStringLiteral("BOMChanged:0"),
                         QStringLiteral("SubmittalDateChanged:")}));
    }

    void writingTheValueAMemberHoldsRaisesNothing()
    {
        const auto impl = implementation();
        const auto s = impl->submittal();
        s->setIssuedBy(QStringLiteral("A"));
        s->setSubmittalDate(QStringLiteral("2026-11-21"));
        s->setIncludeCoverLetter(true);
        s->setIncludeBOM(true);
        s->setIncludeLabels(true);
        s->setSubmittalPurpose(s->SelectPurpose(3));
        SubmittalEvents log(*s);
        s->setIssuedBy(QStringLiteral("A"));
        s->setSubmittalDate(QStringLiteral("2026-11-21"));
        s->setIncludeCoverLetter(true);
        s->setIncludeBOM(true);
        s->setIncludeLabels(true);
        QCOMPARE(s->SelectPurpose(3), kCaptions[3]);
        s->setSubmittalPurpose(kCaptions[3]);
        QVERIFY(log.events.isEmpty());
    }

    void submittalDateRefusesTextThatIsNotAnIsoDate_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("us order") << QStringLiteral("11/21/2026");
        QTest::newRow("no such day") << QStringLiteral("2026-02-30");
        QTest::newRow("words") << QStringLiteral("tomorrow");
    }
    void submittalDateRefusesTextThatIsNotAnIsoDate()
    {
        QFETCH(QString, text);
        const auto impl = implementation();
        const auto s = impl->submittal();
        s->setSubmittalDate(QStringLiteral("2026-11-21"));
        SubmittalEvents log(*s);
        const ErrorInfo e = failureOf([&] { s->setSubmittalDate(text); });
        QCOMPARE(e.Number, 13);
        QCOMPARE(e.Source, QStringLiteral("ZebObjects.Submittal"));
        QCOMPARE(
            e.Description,
            QStringLiteral("Type mismatch: \"%1\" is not a date of the form yyyy-mm-dd").arg(text));
        QCOMPARE(s->SubmittalDate(), QStringLiteral("2026-11-21"));
        QVERIFY(log.events.isEmpty());
    }

    void selectPurposeRecordsTheOptionAndAnswersItsCaption()
    {
        const auto impl = implementation();
        const auto s = impl->submittal();
        for (qint16 index = 0; index < 7; ++index) {
            s->SelectPurpose(index == 6 ? 5 : 6);
            QSignalSpy spy(s.get(), &Submittal::SubmittalPurposeChanged);
            QCOMPARE(s->SelectPurpose(index), kCaptions[index]);
            QCOMPARE(s->SubmittalPurposeIndex(), index);
            QCOMPARE(spy.count(), 1);
            QCOMPARE(spy.at(0).at(0).value<qint16>(), index);
        }
    }

    void selectPurposeOtherAnswersTheCurrentFreeText()
    {
        const auto impl = implementation();
        const auto s = impl->submittal();
        QCOMPARE(s->SelectPurpose(7), QString());
        s->setSubmittalPurpose(QStringLiteral("Budget review"));
        QCOMPARE(s->SelectPurpose(7), QStringLiteral("Budget review"));
        s->setSubmittalPurpose(s->SelectPurpose(2));
        QCOMPARE(s->SubmittalPurpose(), kCaptions[2]);
        s->setSubmittalPurpose(s->SelectPurpose(7));
        QCOMPARE(s->SubmittalPurpose(), QStringLiteral("Budget review"));
        QCOMPARE(s->SubmittalPurposeIndex(), qint16(7));
    }

    void selectPurposeOutsideZeroToSevenFailsAndChangesNothing()
    {
        const auto impl = implementation();
        const auto s = impl->submittal();
        s->SelectPurpose(3);
        SubmittalEvents log(*s);
        for (qint16 index : {qint16(-1), qint16(8), qint16(32767)}) {
            const ErrorInfo e = failureOf([&] { s->SelectPurpose(index); });
            QCOMPARE(e.Number, 9);
            QCOMPARE(
                e.Description,
                QStringLiteral("Subscript out of range: there is no purpose option %1").arg(index));
        }
        QCOMPARE(s->SubmittalPurposeIndex(), qint16(3));
        QVERIFY(log.events.isEmpty());
    }

    void panelClickSequenceRaisesIndexThenText()
    {
        const auto impl = implementation();
        const auto s = impl->submittal();
        SubmittalEvents log(*s);
        s->setSubmittalPurpose(s->SelectPurpose(1));
        QCOMPARE(
            log.events,
            (QStringList{QStringLiteral("SubmittalPurposeChanged(1):1:Request For Prior Approval"),
                         QStringLiteral("SubmittalPurposeChanged(1):1:Request For Approval")}));
    }

    void coverLetterOptionsAreKeptEachOnItsOwn()
    {
        const auto impl = implementation();
        const auto s = impl->submittal();
        const auto c = s->CoverLetter();
        c->setIncludeLogo(true);
        QCOMPARE(c->IncludeLogo(), true);
        QCOMPARE(c->IncludeDefaultParagraphs(), false);
        c->setIncludeDefaultParagraphs(true);
        c->setIncludeRemarks(true);
        c->setSeparateLetters(true);
        c->setIncludeLogo(false);
        QCOMPARE(c->IncludeLogo(), false);
        QCOMPARE(c->IncludeDefaultParagraphs(), true);
        QCOMPARE(c->IncludeRemarks(), true);
        QCOMPARE(c->SeparateLetters(), true);
        QCOMPARE(c->IncludeCarbonCopy(), false);
    }

    void recipientsCountAndEnumerateInOrder()
    {
        const auto impl = implementation();
        JobContents::Recipient a;
        a.name = QStringLiteral("A");
        a.company = QStringLiteral("a");
        JobContents::Recipient b;
        b.name = QStringLiteral("B");
        b.company = QStringLiteral("b");
        const auto s = impl->submittal({a, b});
        const auto r = s->Recipients();
        QCOMPARE(r->Count(), qint16(2));
        QStringList names;
        for (const auto& x : r->Enumerate())
            names << x->Name() + x->Company();
        QCOMPARE(names, (QStringList{QStringLiteral("Aa"), QStringLiteral("Bb")}));
        QCOMPARE(r->Item(2)->Name(), QStringLiteral("B"));
        const ErrorInfo e = failureOf([&] { r->Item(3); });
        QCOMPARE(e.Number, 9);
        QCOMPARE(e.Description,
                 QStringLiteral("Subscript out of range: no recipient at position 3 of 2"));
    }

    // Texts ------------------------------------------------------------------------------------

    void addAppendsWithTextAndTickAndRaisesItemAddedThenChanged()
    {
        const auto impl = implementation();
        const auto c = impl->texts();
        TextEvents log(*c);
        const auto first = c->Add(QStringLiteral("First"), true);
        const auto second = c->Add(QStringLiteral("Second\r\nline"), false);
        QCOMPARE(textsOf(*c),
                 (QStringList{QStringLiteral("First"), QStringLiteral("Second\r\nline")}));
        QCOMPARE(first->Selected(), true);
        QCOMPARE(second->Selected(), false);
        QVERIFY(first->Key() != second->Key());
        QCOMPARE(log.events, (QStringList{QStringLiteral("ItemAdded(%1)").arg(first->Key()),
                                          QStringLiteral("Changed"),
                                          QStringLiteral("ItemAdded(%1)").arg(second->Key()),
                                          QStringLiteral("Changed")}));
    }

    void keysStayDistinctAfterARemoval()
    {
        const auto impl = implementation();
        const auto c = impl->texts();
        const QString a = c->Add(QStringLiteral("a"), false)->Key();
        const QString b = c->Add(QStringLiteral("b"), false)->Key();
        c->Remove(a);
        const QString d = c->Add(QStringLiteral("d"), false)->Key();
        QVERIFY(a != b && b != d && a != d);
        QCOMPARE(c->Item(b)->Text(), QStringLiteral("b"));
        QCOMPARE(c->Item(d)->Text(), QStringLiteral("d"));
    }

    void itemLooksUpByKeyAndByOneBasedPosition()
    {
        const auto impl = implementation();
        const auto c = impl->texts();
        const auto a = c->Add(QStringLiteral("a"), false);
        const auto b = c->Add(QStringLiteral("b"), false);
        QCOMPARE(c->Item(a->Key()), a);
        QCOMPARE(c->Item(2), b);
        QCOMPARE(c->Count(), 2);
    }

    void itemWithMissingKeyOrPositionFailsWithSubscriptOutOfRange()
    {
        const auto impl = implementation();
        const auto c = impl->texts();
        c->Add(QStringLiteral("a"), false);
        ErrorInfo e = failureOf([&] { c->Item(QStringLiteral("nope")); });
        QCOMPARE(
            e, (ErrorInfo{
                   9, QStringLiteral("ZebObjects.TextObjects"),
                   QStringLiteral("Subscript out of range: no text object has the key \"nope\"")}));
        e = failureOf([&] { c->Item(2); });
        QCOMPARE(e.Description,
                 QStringLiteral("Subscript out of range: no text object at position 2 of 1"));
        e = failureOf([&] { c->Remove(QStringLiteral("zz")); });
        QCOMPARE(e.Number, 9);
        QCOMPARE(c->Count(), 1);
    }

    void itemEventsSeeTheCollectionAlreadyChanged()
    {
        const auto impl = implementation();
        const auto c = impl->texts();
        QStringList seen;
        connect(c.get(), &TextObjects::ItemAdded, this, [&](const QString& key) {
            seen << c->Item(key)->Text() << QString::number(c->Count());
        });
        connect(c.get(), &TextObjects::ItemDeleted, this,
                [&](const QString&) { seen << QString::number(c->Count()); });
        const auto o = c->Add(QStringLiteral("x"), false);
        c->Remove(o->Key());
        QCOMPARE(seen,
                 (QStringList{QStringLiteral("x"), QStringLiteral("1"), QStringLiteral("0")}));
    }

    void removeDeletesAndRaisesItemDeletedThenChanged()
    {
        const auto impl = implementation();
        const auto c = impl->texts();
        const auto a = c->Add(QStringLiteral("a"), false);
        c->Add(QStringLiteral("b"), false);
        TextEvents log(*c);
        c->Remove(a->Key());
        QCOMPARE(textsOf(*c), QStringList{QStringLiteral("b")});
        QCOMPARE(log.events, (QStringList{QStringLiteral("ItemDeleted(%1)").arg(a->Key()),
                                          QStringLiteral("Changed")}));
    }

    void movesSwapNeighboursMarkDirtyAndSaveOrderClearsIt()
    {
        const auto impl = implementation();
        const auto c = impl->texts();
        c->Add(QStringLiteral("a"), false);
        const auto b = c->Add(QStringLiteral("b"), false);
        c->Add(QStringLiteral("c"), false);
        QVERIFY(!c->IsDirty());
        TextEvents log(*c);
        c->MoveUp(b->Key());
        QCOMPARE(textsOf(*c),
                 (QStringList{QStringLiteral("b"), QStringLiteral("a"), QStringLiteral("c")}));
        QVERIFY(c->IsDirty());
        c->MoveDown(b->Key());
        c->MoveDown(b->Key());
        QCOMPARE(textsOf(*c),
                 (QStringList{QStringLiteral("a"), QStringLiteral("c"), QStringLiteral("b")}));
        bool dirtyWhenSaved = true;
        connect(c.get(), &TextObjects::OrderSaved, this, [&] { dirtyWhenSaved = c->IsDirty(); });
        c->SaveOrder();
        QVERIFY(!c->IsDirty());
        QVERIFY(!dirtyWhenSaved);
        QCOMPARE(log.events,
                 (QStringList{QStringLiteral("ItemMoved"), QStringLiteral("Changed"),
                              QStringLiteral("ItemMoved"), QStringLiteral("Changed"),
                              QStringLiteral("ItemMoved"), QStringLiteral("Changed"),
                              QStringLiteral("OrderSaved"), QStringLiteral("Changed")}));
    }

    void moveAtEitherEndChangesNothingAndRaisesNothing()
    {
        const auto impl = implementation();
        const auto c = impl->texts();
        const auto a = c->Add(QStringLiteral("a"), false);
        const auto b = c->Add(QStringLiteral("b"), false);
        TextEvents log(*c);
        c->MoveUp(a->Key());
        c->MoveDown(b->Key());
        QCOMPARE(textsOf(*c), (QStringList{QStringLiteral("a"), QStringLiteral("b")}));
        QVERIFY(!c->IsDirty());
        QVERIFY(log.events.isEmpty());
        QCOMPARE(failureOf([&] { c->MoveUp(QStringLiteral("x")); }).Number, 9);
    }

    void textSelectedAndTypeAreKept()
    {
        const auto impl = implementation();
        const auto c = impl->texts();
        c->setTextObjectType(TextKind::CoverLetterRemark);
        QCOMPARE(c->TextObjectType(), TextKind::CoverLetterRemark);
        const auto o = c->Add(QStringLiteral("a"), false);
        o->setText(QStringLiteral("line 1\r\nline 2"));
        o->setSelected(true);
        o->setSelected(true);
        QCOMPARE(c->Item(o->Key())->Text(), QStringLiteral("line 1\r\nline 2"));
        QCOMPARE(c->Item(o->Key())->Selected(), true);
        QCOMPARE(c->Add(QString(), false)->Text(), QString());
    }

    void reformatTextFollowsTheSameRule()
    {
        const auto impl = implementation();
        const auto services = impl->services();
        QString text = QStringLiteral("It\u2019s \u201Cdone\u201D \u2014 ok\u2026");
        QVERIFY(services->ReformatText(text));
        QCOMPARE(text, QStringLiteral("It's \"done\" - ok..."));
        QString plain = QStringLiteral("Plain text\r\n");
        QVERIFY(!services->ReformatText(plain));
        QCOMPARE(plain, QStringLiteral("Plain text\r\n"));
    }

    void issuersAndSearchContextComeFromTheOffice()
    {
        const auto impl = implementation();
        const auto services = impl->services();
        QCOMPARE(services->IssuedByNames(), SampleData::issuedByNames());
        QCOMPARE(services->SearchContext()->Value().toString(),
                 SampleData::searchContextValue().toString());
    }

    void customerFinderSettlesOnTheOnlyMatchAndAnswersNothingForNone()
    {
        const auto impl = implementation();
        const auto services = impl->services();
        const auto finder = services->CreateCustomerFinder();
        const QVariant context = services->SearchContext()->Value();
        const auto found = finder->Search(false, false, false, false, false, context,
                                          QStringLiteral("halvorsen"), QString(), QString(),
                                          QString(), QString(), QString(), QString(), QString(), 0);
        QVERIFY(found);
        QCOMPARE(found->ChosenCustomer()->Key(), QStringLiteral("C1001"));
        QCOMPARE(found->ChosenCustomer()->Included(), false);
        QVERIFY(!finder->Search(false, false, false, false, false, context,
                                QStringLiteral("no such customer"), QString(), QString(), QString(),
                                QString(), QString(), QString(), QString(), 0));
        // A closed account is found only when asked for.
        QVERIFY(!finder->Search(false, false, false, false, false, context, QString(),
                                QStringLiteral("100872"), QString(), QString(), QString(),
                                QString(), QString(), QString(), 0));
        QVERIFY(finder->Search(true, false, false, false, false, context, QString(),
                               QStringLiteral("100872"), QString(), QString(), QString(), QString(),
                               QString(), QString(), 0));
    }

    void anInteractiveSearchWithSeveralMatchesLetsTheUserChoose()
    {
        const auto impl = implementation();
        const auto services = impl->services();
        const auto finder = services->CreateCustomerFinder();
        // The user picks the second row of the chooser and presses OK.
        QString offered;
        QTimer answer;
        answer.setInterval(10);
        connect(&answer, &QTimer::timeout, this, [&] {
            QWidget* modal = QApplication::activeModalWidget();
            if (!modal || modal->objectName() != QLatin1String("frmChooseCustomer"))
                return;
            answer.stop();
            auto* list = modal->findChild<QTreeWidget*>(QStringLiteral("lsvMatches"));
            offered = QString::number(list->topLevelItemCount());
            list->setCurrentItem(list->topLevelItem(1));
            QTest::mouseClick(modal->findChild<QPushButton*>(QStringLiteral("cmdOK")),
                              Qt::LeftButton);
        });
        answer.start();
        const auto found =
            finder->Search(false, true, false, false, false, services->SearchContext()->Value(),
                           QString(), QString(), QStringLiteral("Seattle"), QString(), QString(),
                           QString(), QString(), QString(), 0);
        // Seattle, by name: Harborview, Nordic Light, Summit (Pioneer Square's account is closed).
        QCOMPARE(offered, QStringLiteral("3"));
        QVERIFY(found);
        QCOMPARE(found->ChosenCustomer()->Name(), QStringLiteral("Nordic Light Agency"));
    }

    // BOM --------------------------------------------------------------------------------------

    void everyBomFlagStartsFalseAndIsKeptOnItsOwn()
    {
        const auto impl = implementation();
        for (const Flag& flag : kFlags) {
            const auto bom = impl->bom();
            for (const Flag& f : kFlags)
                QVERIFY2(!(bom.get()->*f.get)(), f.name);
            (bom.get()->*flag.set)(true);
            for (const Flag& f : kFlags)
                QVERIFY2((bom.get()->*f.get)() == (&f == &flag), f.name);
        }
    }

    void populateRemarksFillsANewCollectionAndRaisesRemarksPopulatedAfterwards()
    {
        const auto impl = implementation();
        const auto bom = impl->bom();
        QVERIFY(bom->DefaultRemarks() != nullptr);
        QCOMPARE(bom->DefaultRemarks()->Count(), 0);
        QStringList seen;
        connect(bom.get(), &BOM::RemarksPopulated, this,
                [&] { seen = textsOf(*bom->DefaultRemarks()); });
        impl->populateRemarks(*bom, {QStringLiteral("One"), QStringLiteral("Two")});
        QCOMPARE(seen, (QStringList{QStringLiteral("One"), QStringLiteral("Two")}));
        QCOMPARE(bom->DefaultRemarks()->TextObjectType(), TextKind::BOMRemark);
        for (const auto& o : bom->DefaultRemarks()->Enumerate())
            QVERIFY(!o->Selected());
    }

    // Labels -----------------------------------------------------------------------------------

    void labelFieldLookupOfAMissingKeyFails()
    {
        const auto impl = implementation();
        const auto fields = impl->labels(sevenFields())->LabelFields();
        QCOMPARE(fields->Count(), qint16(7));
        const ErrorInfo e = failureOf([&] { fields->Item(QStringLiteral("F8")); });
        QCOMPARE(e, (ErrorInfo{9, QStringLiteral("ZebObjects.LabelFields"),
                               QStringLiteral(
                                   "Subscript out of range: no label field has the key \"F8\"")}));
        QCOMPARE(fields->Item(QStringLiteral("F3"))->Caption(), QStringLiteral("Field 3"));
    }

    void includedIsTrueExactlyWhenPrintOrderIsNotZero()
    {
        const auto impl = implementation();
        const auto fields = impl->labels(sevenFields())->LabelFields();
        const auto f = fields->Item(QStringLiteral("F1"));
        QCOMPARE(f->Included(), false);
        f->setPrintOrder(3);
        QCOMPARE(f->Included(), true);
        QCOMPARE(f->PrintOrder(), qint16(3));
        f->setPrintOrder(0);
        QCOMPARE(f->Included(), false);
        // 0 on a field that is not on the label is accepted.
        f->setPrintOrder(0);
        QVERIFY(f->setProperty("PrintOrder", QVariant::fromValue<qint32>(0)));
        QCOMPARE(f->Included(), false);
    }

    void aSixthFieldStaysOffTheLabelWithoutError()
    {
        const auto impl = implementation();
        const auto fields = impl->labels(sevenFields())->LabelFields();
        for (qint16 i = 1; i <= 5; ++i)
            fields->Item(QStringLiteral("F%1").arg(i))->setPrintOrder(i);
        const auto sixth = fields->Item(QStringLiteral("F6"));
        sixth->setPrintOrder(6);
        QCOMPARE(sixth->Included(), false);
        QVERIFY(sixth->setProperty("PrintOrder", QVariant::fromValue<qint32>(6)));
        QCOMPARE(sixth->Included(), false);
        // Room again once another goes off.
        fields->Item(QStringLiteral("F2"))->setPrintOrder(0);
        sixth->setPrintOrder(5);
        QCOMPARE(sixth->Included(), true);
    }

    void equalPrintOrdersInTheMiddleOfARenumberingAreAccepted()
    {
        const auto impl = implementation();
        const auto fields = impl->labels(sevenFields())->LabelFields();
        for (qint16 i = 1; i <= 3; ++i)
            fields->Item(QStringLiteral("F%1").arg(i))->setPrintOrder(i);
        fields->Item(QStringLiteral("F2"))->setPrintOrder(0);
        QVERIFY(fields->Item(QStringLiteral("F3"))
                    ->setProperty("PrintOrder", QVariant::fromValue<qint32>(1)));
        QCOMPARE(fields->Item(QStringLiteral("F3"))->PrintOrder(), qint16(1));
        QCOMPARE(fields->Item(QStringLiteral("F1"))->PrintOrder(), qint16(1));
        fields->Item(QStringLiteral("F1"))
            ->setProperty("PrintOrder", QVariant::fromValue<qint32>(2));
        QCOMPARE(
            orderOf(*fields).mid(0, 3),
            (QStringList{QStringLiteral("F3:1"), QStringLiteral("F1:2"), QStringLiteral("F2:0")}));
    }

    void printOrderThatDoesNotFitOrIsNegativeFails()
    {
        const auto impl = implementation();
        const auto fields = impl->labels(sevenFields())->LabelFields();
        const auto f = fields->Item(QStringLiteral("F1"));
        ErrorInfo e = failureOf([&] { f->writePrintOrder(40000); });
        QCOMPARE(e.Number, 6);
        e = failureOf([&] { f->setPrintOrder(-1); });
        QCOMPARE(e, (ErrorInfo{5, QStringLiteral("ZebObjects.LabelField"),
                               QStringLiteral("Invalid procedure call or argument: the print order "
                                              "of \"F1\" cannot be -1")}));
        QCOMPARE(f->PrintOrder(), qint16(0));
    }

    void enumerationGivesTheLabelInPrintOrderThenTheOthersAsAdded()
    {
        const auto impl = implementation();
        Fields given = sevenFields();
        given[4].printOrder = 1;
        given[1].printOrder = 2;
        const auto fields = impl->labels(given)->LabelFields();
        QCOMPARE(orderOf(*fields), (QStringList{QStringLiteral("F5:1"), QStringLiteral("F2:2"),
                                                QStringLiteral("F1:0"), QStringLiteral("F3:0"),
                                                QStringLiteral("F4:0"), QStringLiteral("F6:0"),
                                                QStringLiteral("F7:0")}));
    }

    // Lines ------------------------------------------------------------------------------------

    void lineCountEqualsTheEnumerationInTheOrderGiven()
    {
        const auto impl = implementation();
        QVERIFY(impl->lines({})->Enumerate().isEmpty());
        const auto items = impl->lines({line(1, "A"), line(2, "B"), line(3, "C")});
        QStringList types;
        for (const auto& i : items->Enumerate())
            types << i->Type();
        QCOMPARE(types,
                 (QStringList{QStringLiteral("A"), QStringLiteral("B"), QStringLiteral("C")}));
        QCOMPARE(items->Count(), qint16(3));
        QCOMPARE(items->Item(2)->Type(), QStringLiteral("B"));
        QCOMPARE(items->Item(2), items->Enumerate().at(1));
        const ErrorInfo e = failureOf([&] { items->Item(4); });
        QCOMPARE(e,
                 (ErrorInfo{9, QStringLiteral("ZebObjects.LineItems"),
                            QStringLiteral("Subscript out of range: no line at position 4 of 3")}));
    }

    void lineMembersAnswerWhatTheLineHolds()
    {
        const auto impl = implementation();
        StandaloneLineItem::Data d{1200,
                                   QStringLiteral("A1E"),
                                   QStringLiteral("Varnholt"),
                                   QStringLiteral("VH-2X2"),
                                   QStringLiteral("Troffer"),
                                   QStringLiteral("LVL1"),
                                   true,
                                   QStringLiteral("Battery"),
                                   true};
        StandaloneLineItem::Data empty;
        empty.comment = QString();
        const auto items = impl->lines({d, empty, line(0, "")});
        const auto a = items->Item(1);
        QCOMPARE(a->Selected(), true);
        QCOMPARE(a->Quantity(), QStringLiteral("1200"));
        QCOMPARE(a->Type(), QStringLiteral("A1E"));
        QCOMPARE(a->Brand(), QStringLiteral("Varnholt"));
        QCOMPARE(a->CatalogNumber(), QStringLiteral("VH-2X2"));
        QCOMPARE(a->Description(), QStringLiteral("Troffer"));
        QCOMPARE(a->Group(), QStringLiteral("LVL1"));
        QCOMPARE(a->MTO(), true);
        QCOMPARE(a->Comment()->Text(), QStringLiteral("Battery"));
        // An empty comment is a comment all the same; none is none.
        QVERIFY(items->Item(2)->Comment() != nullptr);
        QCOMPARE(items->Item(2)->Comment()->Text(), QString());
        QVERIFY(items->Item(3)->Comment() == nullptr);
        QCOMPARE(items->Item(3)->Brand(), QString());
        QCOMPARE(items->Item(3)->Quantity(), QStringLiteral("0"));
    }

    void writingSelectedWithItsCurrentValueIsAccepted()
    {
        const auto impl = implementation();
        const auto items = impl->lines({line(1, "A")});
        const auto a = items->Item(1);
        a->setSelected(false);
        QCOMPARE(a->Selected(), false);
        a->setSelected(true);
        a->setSelected(true);
        QCOMPARE(items->Item(1)->Selected(), true);
    }

    // Customers --------------------------------------------------------------------------------

    void addAnswersTrueAndKeepsCollectionOrder()
    {
        const auto impl = implementation();
        const auto c = impl->customers();
        QVERIFY(c->Enumerate().isEmpty());
        QVERIFY(c->Add(QStringLiteral("B"), customer(QStringLiteral("B"))));
        QVERIFY(c->Add(QStringLiteral("A"), customer(QStringLiteral("A"))));
        QCOMPARE(keysOf(*c), (QStringList{QStringLiteral("B"), QStringLiteral("A")}));
        QCOMPARE(c->Count(), qint16(2));
        const auto a = c->Item(2);
        QCOMPARE(a->DisplayText(), QStringLiteral("Customer A"));
        QCOMPARE(a->Name(), QStringLiteral("Name A"));
        QCOMPARE(a->AccountNumber(), QStringLiteral("A-A"));
        QCOMPARE(a->City(), QStringLiteral("Portland"));
        QCOMPARE(a->State(), QStringLiteral("OR"));
        QCOMPARE(a->Type(), QStringLiteral("Contractor"));
        QCOMPARE(a->Category(), QStringLiteral("Electrical"));
        QCOMPARE(a->Included(), false);
        a->setIncluded(true);
        QCOMPARE(c->Item(2)->Included(), true);
    }

    // The customer panel adds the customer a search found and then ticks that very object: the
    // tick must reach the submittal's customer.
    void aFoundCustomerOnceAddedIsTheSubmittalsCustomerAndTakesItsWrites()
    {
        const auto impl = implementation();
        const auto services = impl->services();
        const auto c = impl->customers();
        const auto result = services->CreateCustomerFinder()->Search(
            false, false, false, false, false, services->SearchContext()->Value(),
            QStringLiteral("halvorsen"), QString(), QString(), QString(), QString(), QString(),
            QString(), QString(), 0);
        QVERIFY(result);
        const auto found = result->ChosenCustomer();
        QVERIFY(c->Add(found->Key(), found));
        found->setIncluded(true);
        QCOMPARE(c->Item(1)->Included(), true);
        QCOMPARE(c->Enumerate().front()->Included(), true);
        QVERIFY(c->Item(1) == found);
        c->Item(1)->setIncluded(false);
        QCOMPARE(found->Included(), false);
        found->setIncluded(true);
        QCOMPARE(c->Item(1)->Included(), true);
        QCOMPARE(found->Key(), QStringLiteral("C1001"));
    }

    void addWithAKeyAlreadyHeldFailsWith457AndChangesNothing()
    {
        const auto impl = implementation();
        const auto c = impl->customers();
        c->Add(QStringLiteral("A"), customer(QStringLiteral("A")));
        const ErrorInfo e =
            failureOf([&] { c->Add(QStringLiteral("A"), customer(QStringLiteral("A"))); });
        QCOMPARE(e, (ErrorInfo{457, QStringLiteral("ZebObjects.Customers"),
                               QStringLiteral("This key is already associated with an element of "
                                              "this collection: \"A\"")}));
        QCOMPARE(keysOf(*c), QStringList{QStringLiteral("A")});
        QCOMPARE(failureOf([&] { c->Add(QStringLiteral("X"), nullptr); }).Number, 91);
        QCOMPARE(c->Count(), qint16(1));
    }

    void removeRaisesCustomerRemovedAfterTheCustomerHasLeft()
    {
        const auto impl = implementation();
        const auto c = impl->customers();
        for (const char* k : {"A", "B", "C"})
            c->Add(QString::fromLatin1(k), customer(QString::fromLatin1(k)));
        QStringList seen;
        connect(c.get(), &Customers::CustomerRemoved, this, [&](qint16 index) {
            seen << QStringLiteral("%1:%2").arg(index).arg(keysOf(*c).join(QLatin1Char(',')));
        });
        c->Remove(2);
        QCOMPARE(seen, QStringList{QStringLiteral("2:A,C")});
        const ErrorInfo e = failureOf([&] { c->Remove(3); });
        QCOMPARE(e.Description,
                 QStringLiteral("Subscript out of range: no customer at position 3 of 2"));
        QCOMPARE(seen.size(), 1);
    }

    void removeAllRaisesOneEventPerCustomerWithIndexesAListCanFollow()
    {
        const auto impl = implementation();
        const auto c = impl->customers();
        QSignalSpy none(c.get(), &Customers::CustomerRemoved);
        c->RemoveAll();
        QCOMPARE(none.count(), 0);
        for (const char* k : {"A", "B", "C", "D"})
            c->Add(QString::fromLatin1(k), customer(QString::fromLatin1(k)));
        QStringList rows = keysOf(*c);
        connect(c.get(), &Customers::CustomerRemoved, this, [&](qint16 index) {
            QVERIFY(index >= 1 && index <= rows.size());
            rows.removeAt(index - 1);
            QCOMPARE(rows, keysOf(*c));
        });
        c->RemoveAll();
        QVERIFY(rows.isEmpty());
        QCOMPARE(c->Count(), qint16(0));
    }
};

QTEST_MAIN(TestStoreContracts)
#include "tst_storecontracts.moc"
