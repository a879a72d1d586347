#include "objects/customerdirectory.h"
#include "objects/defaultdiagnosticlog.h"
#include "objects/memorydiagnosticlog.h"
#include "objects/standaloneapplicationservices.h"
#include "objects/standalonebom.h"
#include "objects/standalonecoverletter.h"
#include "objects/standalonecustomer.h"
#include "objects/standalonecustomerfinder.h"
#include "objects/standalonecustomers.h"
#include "objects/standalonecustomersearchcontext.h"
#include "objects/standalonecustomersearchresult.h"
#include "objects/standalonelabelfield.h"
#include "objects/standalonelabelfields.h"
#include "objects/standalonelabels.h"
#include "objects/standalonelineitems.h"
#include "objects/standalonerecipients.h"
#include "objects/standalonesubmittal.h"
#include "objects/standalonetextobjects.h"

#include <QSignalSpy>
#include <QTest>

#include <functional>

using namespace ZebObjects;

namespace {

// One member of one object: a call that succeeds whenever nothing is armed, however often it runs.
struct Case {
    QString object;
    QString member;
    std::shared_ptr<void> owner;
    FaultInjector* faults;
    std::function<void()> call;
};

template <typename T>
void add(QList<Case>& cases, const QString& object, const std::shared_ptr<T>& owner,
         const QString& member, std::function<void()> call)
{
    cases.append(Case{object, member, owner, &owner->faults(), std::move(call)});
}

StandaloneCustomer::Data customerData(const QString& key)
{
    StandaloneCustomer::Data d;
    d.key = key;
    d.name = QStringLiteral("Customer ") + key;
    d.accountNumber = key;
    return d;
}

// Every member of every object of the library, each on a fresh object.
QList<Case> allCases()
{
    QList<Case> cases;
    auto counter = std::make_shared<int>(0);
    const auto unique = [counter] { return QStringLiteral("k%1").arg(++*counter); };

    {
        auto o =
            std::make_shared<StandaloneTextObject>(QStringLiteral("1"), QStringLiteral("t"), false);
        const QString n = QStringLiteral("TextObject");
        add(cases, n, o, QStringLiteral("Key"), [o] { o->Key(); });
        add(cases, n, o, QStringLiteral("Text"), [o] { o->Text(); });
        add(cases, n, o, QStringLiteral("Text="), [o] { o->setText(QStringLiteral("x")); });
        add(cases, n, o, QStringLiteral("Selected"), [o] { o->Selected(); });
        add(cases, n, o, QStringLiteral("Selected="), [o] { o->setSelected(true); });
    }
    {
        const QString n = QStringLiteral("TextObjects");
        const auto make = [] {
            auto c = std::make_shared<StandaloneTextObjects>();
            c->addWithKey(QStringLiteral("a"), QStringLiteral("A"), false);
            c->addWithKey(QStringLiteral("b"), QStringLiteral("B"), false);
            return c;
        };
        auto c = make();
        add(cases, n, c, QStringLiteral("TextObjectType"), [c] { c->TextObjectType(); });
        c = make();
        add(cases, n, c, QStringLiteral("TextObjectType="), [c] { c->setTextObjectType(2); });
        c = make();
        add(cases, n, c, QStringLiteral("IsDirty"), [c] { c->IsDirty(); });
        c = make();
        add(cases, n, c, QStringLiteral("Item"), [c] { c->Item(QStringLiteral("a")); });
        c = make();
        add(cases, n, c, QStringLiteral("Item"), [c] { c->Item(2); });
        c = make();
        add(cases, n, c, QStringLiteral("Count"), [c] { c->Count(); });
        c = make();
        add(cases, n, c, QStringLiteral("Add"), [c] { c->Add(QStringLiteral("x"), false); });
        c = make();
        add(cases, n, c, QStringLiteral("Add"),
            [c, unique] { c->addWithKey(unique(), QStringLiteral("x"), false); });
        c = make();
        add(cases, n, c, QStringLiteral("Remove"),
            [c] { c->Remove(c->Add(QStringLiteral("x"), false)->Key()); });
        c = make();
        add(cases, n, c, QStringLiteral("MoveDown"), [c] { c->MoveDown(QStringLiteral("a")); });
        c = make();
        add(cases, n, c, QStringLiteral("MoveUp"), [c] { c->MoveUp(QStringLiteral("a")); });
        c = make();
        add(cases, n, c, QStringLiteral("SaveOrder"), [c] { c->SaveOrder(); });
        c = make();
        add(cases, n, c, QStringLiteral("Enumerate"), [c] { c->Enumerate(); });
        c = make();
        add(cases, n, c, QStringLiteral("Insert"),
            [c] { c->Insert(1, QStringLiteral("x"), false); });
    }
    {
        const QString n = QStringLiteral("ApplicationServices");
        auto s = std::make_shared<StandaloneApplicationServices>();
        add(cases, n, s, QStringLiteral("ReformatText"), [s] {
            QString t = QStringLiteral("x");
            s->ReformatText(t);
        });
        add(cases, n, s, QStringLiteral("IssuedByNames"), [s] { s->IssuedByNames(); });
        add(cases, n, s, QStringLiteral("IssuedByNames="),
            [s] { s->setIssuedByNames({QStringLiteral("A")}); });
        add(cases, n, s, QStringLiteral("SearchContext"), [s] { s->SearchContext(); });
        add(cases, n, s, QStringLiteral("SearchContext="), [s] { s->setSearchContext(nullptr); });
        add(cases, n, s, QStringLiteral("CreateCustomerFinder"),
            [s] { s->CreateCustomerFinder(); });
        add(cases, n, s, QStringLiteral("CustomerDirectory="),
            [s] { s->setCustomerDirectory(s->customerDirectory()); });
    }
    {
        const QString n = QStringLiteral("MemoryDiagnosticLog");
        auto l = std::make_shared<MemoryDiagnosticLog>();
        add(cases, n, l, QStringLiteral("LogError"), [l] { l->LogError({}, {}, {}, 0); });
        add(cases, n, l, QStringLiteral("LogNotice"), [l] { l->LogNotice({}, {}, {}, 0); });
        add(cases, n, l, QStringLiteral("LogWarning"), [l] { l->LogWarning({}, {}, {}, 0); });
        add(cases, n, l, QStringLiteral("Trace"), [l] { l->Trace({}, {}, {}, 0); });
    }
    {
        const QString n = QStringLiteral("DefaultDiagnosticLog");
        auto l = std::make_shared<DefaultDiagnosticLog>();
        add(cases, n, l, QStringLiteral("LogError"), [l] { l->LogError({}, {}, {}, 0); });
        add(cases, n, l, QStringLiteral("LogNotice"), [l] { l->LogNotice({}, {}, {}, 0); });
        add(cases, n, l, QStringLiteral("LogWarning"), [l] { l->LogWarning({}, {}, {}, 0); });
        add(cases, n, l, QStringLiteral("Trace"), [l] { l->Trace({}, {}, {}, 0); });
        add(cases, n, l, QStringLiteral("File"), [l] { l->file(); });
        add(cases, n, l, QStringLiteral("File="), [l] { l->setFile(QString()); });
    }
    {
        const QString n = QStringLiteral("Submittal");
        auto s = std::make_shared<StandaloneSubmittal>();
        add(cases, n, s, QStringLiteral("IssuedBy"), [s] { s->IssuedBy(); });
        add(cases, n, s, QStringLiteral("IssuedBy="), [s] { s->setIssuedBy(QStringLiteral("A")); });
        add(cases, n, s, QStringLiteral("SubmittalDate"), [s] { s->SubmittalDate(); });
        add(cases, n, s, QStringLiteral("SubmittalDate="),
            [s] { s->setSubmittalDate(QStringLiteral("2026-01-02")); });
        add(cases, n, s, QStringLiteral("IncludeCoverLetter"), [s] { s->IncludeCoverLetter(); });
        add(cases, n, s, QStringLiteral("IncludeCoverLetter="),
            [s] { s->setIncludeCoverLetter(true); });
        add(cases, n, s, QStringLiteral("CoverLetter"), [s] { s->CoverLetter(); });
        add(cases, n, s, QStringLiteral("CoverLetter="), [s] { s->setCoverLetter(nullptr); });
        add(cases, n, s, QStringLiteral("IncludeBOM"), [s] { s->IncludeBOM(); });
        add(cases, n, s, QStringLiteral("IncludeBOM="), [s] { s->setIncludeBOM(true); });
        add(cases, n, s, QStringLiteral("IncludeLabels"), [s] { s->IncludeLabels(); });
        add(cases, n, s, QStringLiteral("IncludeLabels="), [s] { s->setIncludeLabels(true); });
        add(cases, n, s, QStringLiteral("Recipients"), [s] { s->Recipients(); });
        add(cases, n, s, QStringLiteral("Recipients="), [s] { s->setRecipients(nullptr); });
        add(cases, n, s, QStringLiteral("SubmittalPurpose"), [s] { s->SubmittalPurpose(); });
        add(cases, n, s, QStringLiteral("SubmittalPurpose="),
            [s] { s->setSubmittalPurpose(QStringLiteral("P")); });
        add(cases, n, s, QStringLiteral("SelectPurpose"), [s] { s->SelectPurpose(3); });
        add(cases, n, s, QStringLiteral("SubmittalPurposeIndex"),
            [s] { s->SubmittalPurposeIndex(); });
    }
    {
        const QString n = QStringLiteral("CoverLetter");
        auto c = std::make_shared<StandaloneCoverLetter>();
        add(cases, n, c, QStringLiteral("IncludeLogo"), [c] { c->IncludeLogo(); });
        add(cases, n, c, QStringLiteral("IncludeLogo="), [c] { c->setIncludeLogo(true); });
        add(cases, n, c, QStringLiteral("IncludeDefaultParagraphs"),
            [c] { c->IncludeDefaultParagraphs(); });
        add(cases, n, c, QStringLiteral("IncludeDefaultParagraphs="),
            [c] { c->setIncludeDefaultParagraphs(true); });
        add(cases, n, c, QStringLiteral("IncludeRemarks"), [c] { c->IncludeRemarks(); });
        add(cases, n, c, QStringLiteral("IncludeRemarks="), [c] { c->setIncludeRemarks(true); });
        add(cases, n, c, QStringLiteral("SeparateLetters"), [c] { c->SeparateLetters(); });
        add(cases, n, c, QStringLiteral("SeparateLetters="), [c] { c->setSeparateLetters(true); });
        add(cases, n, c, QStringLiteral("IncludeCarbonCopy"), [c] { c->IncludeCarbonCopy(); });
        add(cases, n, c, QStringLiteral("IncludeCarbonCopy="),
            [c] { c->setIncludeCarbonCopy(true); });
    }
    {
        const QString n = QStringLiteral("Recipients");
        auto r = std::make_shared<StandaloneRecipients>();
        r->Add(QStringLiteral("A"), QStringLiteral("a"));
        add(cases, n, r, QStringLiteral("Count"), [r] { r->Count(); });
        add(cases, n, r, QStringLiteral("Item"), [r] { r->Item(1); });
        add(cases, n, r, QStringLiteral("Enumerate"), [r] { r->Enumerate(); });
        add(cases, n, r, QStringLiteral("Add"),
            [r] { r->Add(QStringLiteral("B"), QStringLiteral("b")); });
        add(cases, n, r, QStringLiteral("Remove"), [r] {
            r->Add(QStringLiteral("B"), QStringLiteral("b"));
            r->Remove(2);
        });
        auto one = std::make_shared<StandaloneRecipient>(QStringLiteral("A"), QStringLiteral("a"));
        add(cases, QStringLiteral("Recipient"), one, QStringLiteral("Name"),
            [one] { one->Name(); });
        add(cases, QStringLiteral("Recipient"), one, QStringLiteral("Company"),
            [one] { one->Company(); });
    }
    {
        const QString n = QStringLiteral("BOM");
        auto b = std::make_shared<StandaloneBOM>();
        using G = bool (StandaloneBOM::*)() const;
        using S = void (StandaloneBOM::*)(bool);
        const std::tuple<const char*, G, S> flags[] = {
            {"IncludeQuantity", &StandaloneBOM::IncludeQuantity,
             &StandaloneBOM::setIncludeQuantity},
            {"IncludeType", &StandaloneBOM::IncludeType, &StandaloneBOM::setIncludeType},
            {"IncludeDefaultRemarks", &StandaloneBOM::IncludeDefaultRemarks,
             &StandaloneBOM::setIncludeDefaultRemarks},
            {"IncludeBrand", &StandaloneBOM::IncludeBrand, &StandaloneBOM::setIncludeBrand},
            {"IncludeManufacturer", &StandaloneBOM::IncludeManufacturer,
             &StandaloneBOM::setIncludeManufacturer},
            {"IncludeCatalogNumber", &StandaloneBOM::IncludeCatalogNumber,
             &StandaloneBOM::setIncludeCatalogNumber},
            {"IncludeDescription", &StandaloneBOM::IncludeDescription,
             &StandaloneBOM::setIncludeDescription},
            {"IncludeLineComments", &StandaloneBOM::IncludeLineComments,
             &StandaloneBOM::setIncludeLineComments},
            {"IncludeMTO", &StandaloneBOM::IncludeMTO, &StandaloneBOM::setIncludeMTO},
            {"IncludeGroupCodes", &StandaloneBOM::IncludeGroupCodes,
             &StandaloneBOM::setIncludeGroupCodes},
        };
        for (const auto& [name, get, set] : flags) {
            add(cases, n, b, QString::fromLatin1(name), [b, get = get] { ((*b).*get)(); });
            add(cases, n, b, QString::fromLatin1(name) + QLatin1Char('='),
                [b, set = set] { ((*b).*set)(true); });
        }
        add(cases, n, b, QStringLiteral("DefaultRemarks"), [b] { b->DefaultRemarks(); });
        add(cases, n, b, QStringLiteral("PopulateRemarks"),
            [b] { b->PopulateRemarks({QStringLiteral("r")}); });
        add(cases, n, b, QStringLiteral("DefaultRemarks="),
            [b] { b->setDefaultRemarks(b->DefaultRemarks()); });
    }
    {
        auto l = std::make_shared<StandaloneLabels>();
        add(cases, QStringLiteral("Labels"), l, QStringLiteral("LabelFields"),
            [l] { l->LabelFields(); });
        add(cases, QStringLiteral("Labels"), l, QStringLiteral("LabelFields="),
            [l] { l->setLabelFields(l->LabelFields()); });
        const QString n = QStringLiteral("LabelFields");
        auto f = std::make_shared<StandaloneLabelFields>();
        f->Add(QStringLiteral("A"), QStringLiteral("a"));
        add(cases, n, f, QStringLiteral("Item"), [f] { f->Item(QStringLiteral("A")); });
        add(cases, n, f, QStringLiteral("Count"), [f] { f->Count(); });
        add(cases, n, f, QStringLiteral("Enumerate"), [f] { f->Enumerate(); });
        add(cases, n, f, QStringLiteral("Add"),
            [f, unique] { f->Add(unique(), QStringLiteral("x")); });
        const QString m = QStringLiteral("LabelField");
        auto field = f->field(QStringLiteral("A"));
        add(cases, m, field, QStringLiteral("Caption"), [field] { field->Caption(); });
        add(cases, m, field, QStringLiteral("Key"), [field] { field->Key(); });
        add(cases, m, field, QStringLiteral("Included"), [field] { field->Included(); });
        add(cases, m, field, QStringLiteral("PrintOrder"), [field] { field->PrintOrder(); });
        add(cases, m, field, QStringLiteral("PrintOrder="), [field] { field->setPrintOrder(1); });
        add(cases, m, field, QStringLiteral("PrintOrder="), [field] {
            if (!field->setProperty("PrintOrder", QVariant(qint32(2))))
                throw std::logic_error("PrintOrder is not writable by name");
        });
    }
    {
        const QString n = QStringLiteral("LineItems");
        auto items = std::make_shared<StandaloneLineItems>();
        StandaloneLineItem::Data d;
        d.comment = QStringLiteral("c");
        items->Add(d);
        add(cases, n, items, QStringLiteral("Count"), [items] { items->Count(); });
        add(cases, n, items, QStringLiteral("Item"), [items] { items->Item(1); });
        add(cases, n, items, QStringLiteral("Enumerate"), [items] { items->Enumerate(); });
        add(cases, n, items, QStringLiteral("Add"), [items, d] { items->Add(d); });
        auto other = std::make_shared<StandaloneLineItems>();
        add(cases, n, other, QStringLiteral("Clear"), [other] { other->Clear(); });
        const QString m = QStringLiteral("LineItem");
        auto line = items->line(1);
        add(cases, m, line, QStringLiteral("Selected"), [line] { line->Selected(); });
        add(cases, m, line, QStringLiteral("Selected="), [line] { line->setSelected(true); });
        add(cases, m, line, QStringLiteral("Quantity"), [line] { line->Quantity(); });
        add(cases, m, line, QStringLiteral("Type"), [line] { line->Type(); });
        add(cases, m, line, QStringLiteral("Brand"), [line] { line->Brand(); });
        add(cases, m, line, QStringLiteral("CatalogNumber"), [line] { line->CatalogNumber(); });
        add(cases, m, line, QStringLiteral("Description"), [line] { line->Description(); });
        add(cases, m, line, QStringLiteral("Group"), [line] { line->Group(); });
        add(cases, m, line, QStringLiteral("MTO"), [line] { line->MTO(); });
        add(cases, m, line, QStringLiteral("Comment"), [line] { line->Comment(); });
        auto comment = std::static_pointer_cast<StandaloneLineItemComment>(line->Comment());
        add(cases, QStringLiteral("LineItemComment"), comment, QStringLiteral("Text"),
            [comment] { comment->Text(); });
    }
    {
        const QString n = QStringLiteral("Customers");
        auto c = std::make_shared<StandaloneCustomers>();
        c->Add(QStringLiteral("A"),
               std::make_shared<StandaloneCustomer>(customerData(QStringLiteral("A"))));
        add(cases, n, c, QStringLiteral("Add"), [c, unique] {
            const QString k = unique();
            c->Add(k, std::make_shared<StandaloneCustomer>(customerData(k)));
        });
        add(cases, n, c, QStringLiteral("Remove"), [c, unique] {
            const QString k = unique();
            c->Add(k, std::make_shared<StandaloneCustomer>(customerData(k)));
            c->Remove(c->Count());
        });
        auto empty = std::make_shared<StandaloneCustomers>();
        add(cases, n, empty, QStringLiteral("RemoveAll"), [empty] { empty->RemoveAll(); });
        add(cases, n, c, QStringLiteral("Item"), [c] { c->Item(1); });
        add(cases, n, c, QStringLiteral("Count"), [c] { c->Count(); });
        add(cases, n, c, QStringLiteral("Enumerate"), [c] { c->Enumerate(); });
        const QString m = QStringLiteral("Customer");
        auto one = std::make_shared<StandaloneCustomer>(customerData(QStringLiteral("A")));
        add(cases, m, one, QStringLiteral("Key"), [one] { one->Key(); });
        add(cases, m, one, QStringLiteral("DisplayText"), [one] { one->DisplayText(); });
        add(cases, m, one, QStringLiteral("Name"), [one] { one->Name(); });
        add(cases, m, one, QStringLiteral("AccountNumber"), [one] { one->AccountNumber(); });
        add(cases, m, one, QStringLiteral("City"), [one] { one->City(); });
        add(cases, m, one, QStringLiteral("State"), [one] { one->State(); });
        add(cases, m, one, QStringLiteral("Type"), [one] { one->Type(); });
        add(cases, m, one, QStringLiteral("Category"), [one] { one->Category(); });
        add(cases, m, one, QStringLiteral("Included"), [one] { one->Included(); });
        add(cases, m, one, QStringLiteral("Included="), [one] { one->setIncluded(true); });
    }
    {
        const QString n = QStringLiteral("CustomerDirectory");
        auto d = std::make_shared<CustomerDirectory>();
        d->Add(customerData(QStringLiteral("A")));
        add(cases, n, d, QStringLiteral("Add"), [d, unique] { d->Add(customerData(unique())); });
        add(cases, n, d, QStringLiteral("Count"), [d] { d->Count(); });
        add(cases, n, d, QStringLiteral("Records"), [d] { d->Records(); });
        add(cases, n, d, QStringLiteral("Search"), [d] {
            CustomerDirectory::Query q;
            q.accountNumber = QStringLiteral("A");
            d->Search(q);
        });
        auto finder = std::make_shared<StandaloneCustomerFinder>(d);
        add(cases, QStringLiteral("CustomerFinder"), finder, QStringLiteral("Search"), [finder] {
            finder->Search(false, false, false, false, false, {}, {}, QStringLiteral("A"), {}, {},
                           {}, {}, {}, {}, 0);
        });
        auto context = std::make_shared<StandaloneCustomerSearchContext>(QVariant(1));
        add(cases, QStringLiteral("CustomerSearchContext"), context, QStringLiteral("Value"),
            [context] { context->Value(); });
        auto result = std::make_shared<StandaloneCustomerSearchResult>(nullptr, 0);
        add(cases, QStringLiteral("CustomerSearchResult"), result, QStringLiteral("ChosenCustomer"),
            [result] { result->ChosenCustomer(); });
    }
    return cases;
}

const ErrorInfo kError{-2147221504 + 513, QStringLiteral("Test.Source"),
                       QStringLiteral("Injected failure")};

void expectFailure(const Case& c, const ErrorInfo& error)
{
    try {
        c.call();
    } catch (const Failure& f) {
        QCOMPARE(f.info(), error);
        return;
    }
    QFAIL(qPrintable(QStringLiteral("%1.%2 did not fail").arg(c.object, c.member)));
}

}  // namespace

class TestFaultInjection : public QObject {
    Q_OBJECT
private slots:
    void everyMemberFailsOnItsNextCallOnlyWithTheGivenError_data()
    {
        QTest::addColumn<int>("index");
        const auto cases = allCases();
        for (int i = 0; i < cases.size(); ++i)
            QTest::addRow("%d %s.%s", i, qPrintable(cases[i].object), qPrintable(cases[i].member))
                << i;
    }
    void everyMemberFailsOnItsNextCallOnlyWithTheGivenError()
    {
        QFETCH(int, index);
        const Case c = allCases().at(index);
        c.call();  // works unarmed
        c.faults->failNext(c.member, kError);
        expectFailure(c, kError);
        c.call();
        c.call();
    }

    void everyMemberFailsOnEveryCallUntilCleared_data()
    {
        everyMemberFailsOnItsNextCallOnlyWithTheGivenError_data();
    }
    void everyMemberFailsOnEveryCallUntilCleared()
    {
        QFETCH(int, index);
        const Case c = allCases().at(index);
        const ErrorInfo error{91, QStringLiteral("ZebObjects.Test"),
                              QStringLiteral("Object variable not set")};
        c.faults->failAlways(c.member, error);
        for (int i = 0; i < 3; ++i)
            expectFailure(c, error);
        c.faults->clear(c.member);
        c.call();
    }

    void everyMemberIsRecordedUnderItsName_data()
    {
        everyMemberFailsOnItsNextCallOnlyWithTheGivenError_data();
    }
    void everyMemberIsRecordedUnderItsName()
    {
        QFETCH(int, index);
        const Case c = allCases().at(index);
        c.faults->setRecording(true);
        c.call();
        QVERIFY2(c.faults->calls().contains(c.member),
                 qPrintable(c.faults->calls().join(QLatin1Char(','))));
    }

    void aFaultOnOneMemberLeavesTheOthersWorking()
    {
        StandaloneSubmittal s;
        s.faults().failAlways(QStringLiteral("IssuedBy="), kError);
        s.setIncludeBOM(true);
        QCOMPARE(s.IssuedBy(), QString());
        QVERIFY_THROWS_EXCEPTION(Failure, s.setIssuedBy(QStringLiteral("x")));
    }

    void aFaultOnOneObjectLeavesAnotherOfItsKindWorking()
    {
        StandaloneSubmittal a;
        StandaloneSubmittal b;
        a.faults().failAlways(QStringLiteral("IssuedBy"), kError);
        QVERIFY_THROWS_EXCEPTION(Failure, a.IssuedBy());
        QCOMPARE(b.IssuedBy(), QString());
    }

    void clearAllDisarmsEveryMember()
    {
        StandaloneTextObjects c;
        c.faults().failAlways(QStringLiteral("Count"), kError);
        c.faults().failNext(QStringLiteral("Enumerate"), kError);
        c.faults().clearAll();
        QCOMPARE(c.Count(), 0);
        QVERIFY(c.Enumerate().isEmpty());
    }

    void aFailingWriteChangesNothingAndRaisesNothing()
    {
        StandaloneSubmittal s;
        QSignalSpy spy(&s, &Submittal::IssuedByChanged);
        s.faults().failNext(QStringLiteral("IssuedBy="), kError);
        QVERIFY_THROWS_EXCEPTION(Failure, s.setIssuedBy(QStringLiteral("x")));
        QCOMPARE(s.IssuedBy(), QString());
        QCOMPARE(spy.count(), 0);
    }

    void aFailingAddLeavesTheCollectionAndRaisesNothing()
    {
        StandaloneTextObjects c;
        QSignalSpy added(&c, &TextObjects::ItemAdded);
        QSignalSpy changed(&c, &TextObjects::Changed);
        c.faults().failNext(QStringLiteral("Add"), kError);
        QVERIFY_THROWS_EXCEPTION(Failure, c.Add(QStringLiteral("x"), true));
        QCOMPARE(c.Count(), 0);
        QCOMPARE(added.count(), 0);
        QCOMPARE(changed.count(), 0);
    }

    void aFailingRemoveAllRemovesNothingAndRaisesNothing()
    {
        StandaloneCustomers c;
        c.Add(QStringLiteral("A"),
              std::make_shared<StandaloneCustomer>(customerData(QStringLiteral("A"))));
        QSignalSpy removed(&c, &Customers::CustomerRemoved);
        c.faults().failNext(QStringLiteral("RemoveAll"), kError);
        QVERIFY_THROWS_EXCEPTION(Failure, c.RemoveAll());
        QCOMPARE(c.Count(), qint16(1));
        QCOMPARE(removed.count(), 0);
    }

    void aFailingWriteByNameReachesTheCallerAndLeavesThePrintOrder()
    {
        StandaloneLabelFields fields;
        const auto f = fields.Add(QStringLiteral("A"), QStringLiteral("a"), 1);
        f->faults().failNext(QStringLiteral("PrintOrder="), kError);
        QObject& byName = *f;
        try {
            byName.setProperty("PrintOrder", QVariant(qint32(3)));
            QFAIL("no failure");
        } catch (const Failure& e) {
            QCOMPARE(e.info(), kError);
        }
        QCOMPARE(f->PrintOrder(), qint16(1));
    }

    void recordingListsTheMembersInCallingOrder()
    {
        StandaloneLineItem item{StandaloneLineItem::Data{}};
        item.faults().setRecording(true);
        item.Selected();
        item.Quantity();
        item.Type();
        item.setSelected(true);
        QCOMPARE(item.faults().calls(),
                 (QStringList{QStringLiteral("Selected"), QStringLiteral("Quantity"),
                              QStringLiteral("Type"), QStringLiteral("Selected=")}));
        item.faults().clearCalls();
        QVERIFY(item.faults().calls().isEmpty());
        item.faults().setRecording(false);
        item.Type();
        QVERIFY(item.faults().calls().isEmpty());
    }

    void aFailingCallIsRecordedToo()
    {
        StandaloneCustomer c(customerData(QStringLiteral("A")));
        c.faults().setRecording(true);
        c.faults().failNext(QStringLiteral("Name"), kError);
        QVERIFY_THROWS_EXCEPTION(Failure, c.Name());
        QCOMPARE(c.faults().calls(), QStringList{QStringLiteral("Name")});
    }
    void aCallSequenceRecordsTheCallsOfEveryObjectInOneOrder()
    {
        StandaloneLineItem a{StandaloneLineItem::Data{}};
        StandaloneCustomer b(customerData(QStringLiteral("B")));
        CallSequence sequence;
        sequence.start();
        a.Selected();
        b.Name();
        a.setSelected(true);
        sequence.stop();
        b.Name();
        QCOMPARE(sequence.calls(), (QStringList{QStringLiteral("Selected"), QStringLiteral("Name"),
                                                QStringLiteral("Selected=")}));
        QCOMPARE(sequence.count(), qint64(3));
        QVERIFY(!CallSequence::active());
    }

    void aCallSequenceFailsExactlyTheNthCallOverall()
    {
        StandaloneLineItem a{StandaloneLineItem::Data{}};
        StandaloneCustomer b(customerData(QStringLiteral("B")));
        CallSequence sequence;
        QList<qint64> seen;
        sequence.setObserver([&](qint64 n, const QString&) { seen.append(n); });
        sequence.failAt(2, kError);
        sequence.start();
        a.Selected();
        QVERIFY(!sequence.failed());
        try {
            b.Name();
            QFAIL("no failure");
        } catch (const Failure& e) {
            QCOMPARE(e.info(), kError);
        }
        QVERIFY(sequence.failed());
        b.Name();
        a.Selected();
        sequence.stop();
        QCOMPARE(seen, (QList<qint64>{1, 2, 3, 4}));
        QCOMPARE(sequence.calls().size(), 4);
    }

    void callsTheFilterRejectsAreNeitherCountedNorFailed()
    {
        StandaloneCustomer b(customerData(QStringLiteral("B")));
        CallSequence sequence;
        sequence.setFilter([](const QString& member) { return member != QLatin1String("Name"); });
        sequence.failAt(1, kError);
        sequence.start();
        b.Name();
        QVERIFY_THROWS_EXCEPTION(Failure, b.City());
        sequence.stop();
        QCOMPARE(sequence.calls(), QStringList{QStringLiteral("City")});
    }

    void anObjectLeftOutOfTheSequenceIsNotCounted()
    {
        MemoryDiagnosticLog log;
        log.faults().setInSequence(false);
        StandaloneCustomer b(customerData(QStringLiteral("B")));
        CallSequence sequence;
        sequence.failAt(1, kError);
        sequence.start();
        log.Trace(QStringLiteral("m"), QStringLiteral("l"), QStringLiteral("x"), 0);
        QVERIFY_THROWS_EXCEPTION(Failure, b.Name());
        sequence.stop();
        QCOMPARE(sequence.calls(), QStringList{QStringLiteral("Name")});
    }
};

QTEST_GUILESS_MAIN(TestFaultInjection)
#include "tst_faultinjection.moc"
