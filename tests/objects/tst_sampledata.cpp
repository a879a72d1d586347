#include "objects/customerdirectory.h"
#include "objects/sampledata.h"
#include "objects/standalonebom.h"
#include "objects/standalonecoverletter.h"
#include "objects/standalonecustomers.h"
#include "objects/standalonelabelfields.h"
#include "objects/standalonelabels.h"
#include "objects/standalonelineitems.h"
#include "objects/standalonerecipients.h"
#include "objects/standalonesubmittal.h"
#include "objects/standalonetextobjects.h"
#include "rules/textformatter.h"
#include "rules/textkind.h"

#include "contracts/lineitemcomment.h"

#include <QDate>
#include <QSet>
#include <QTest>

using namespace ZebObjects;

namespace {

QStringList texts(const TextObjects& c)
{
    QStringList out;
    for (const auto& o : c.Enumerate())
        out << o->Text();
    return out;
}

// Every text the documents would print must already be in the supported form.
void verifySupported(const QString& text)
{
    QString copy = text;
    QVERIFY2(!TextFormatter::reformat(copy), qPrintable(text));
}

}  // namespace

class TestSampleData : public QObject {
    Q_OBJECT
private slots:
    void coverLetterParagraphsAreParagraphsWithOneOverSeveralLines()
    {
        const auto p = SampleData::coverLetterParagraphs();
        QCOMPARE(p->TextObjectType(), TextKind::CoverLetterParagraph);
        QVERIFY(p->Count() >= 4);
        int multiLine = 0;
        for (const QString& t : texts(*p)) {
            QVERIFY(!t.isEmpty());
            verifySupported(t);
            if (t.contains(QStringLiteral("\r\n")))
                ++multiLine;
            // Line breaks are CR-LF pairs only.
            QCOMPARE(t.count(QLatin1Char('\n')), t.count(QStringLiteral("\r\n")));
            QCOMPARE(t.count(QLatin1Char('\r')), t.count(QStringLiteral("\r\n")));
        }
        QVERIFY(multiLine >= 1);
        QVERIFY(!p->IsDirty());
    }

    void coverLetterRemarksAreRemarks()
    {
        const auto r = SampleData::coverLetterRemarks();
        QCOMPARE(r->TextObjectType(), TextKind::CoverLetterRemark);
        QVERIFY(r->Count() >= 3);
        for (const QString& t : texts(*r))
            verifySupported(t);
    }

    void textObjectsSelectsTheTextsOfAKind()
    {
        QCOMPARE(texts(*SampleData::textObjects(TextKind::CoverLetterParagraph)),
                 texts(*SampleData::coverLetterParagraphs()));
        QCOMPARE(texts(*SampleData::textObjects(TextKind::CoverLetterRemark)),
                 texts(*SampleData::coverLetterRemarks()));
        const auto bomRemarks = SampleData::textObjects(TextKind::BOMRemark);
        QCOMPARE(bomRemarks->TextObjectType(), TextKind::BOMRemark);
        QCOMPARE(texts(*bomRemarks), SampleData::bomRemarkTexts());
        const auto unknown = SampleData::textObjects(99);
        QCOMPARE(unknown->TextObjectType(), 99);
        QCOMPARE(unknown->Count(), 0);
    }

    void everyCallBuildsNewObjects()
    {
        QVERIFY(SampleData::coverLetterParagraphs() != SampleData::coverLetterParagraphs());
        QVERIFY(SampleData::submittal() != SampleData::submittal());
        QVERIFY(SampleData::lineItems() != SampleData::lineItems());
        QVERIFY(SampleData::customerDirectory() != SampleData::customerDirectory());
        const auto a = SampleData::lineItems();
        a->Item(1)->setSelected(false);
        QCOMPARE(SampleData::lineItems()->Item(1)->Selected(), true);
    }

    void submittalIsFilledInWithThreeRecipients()
    {
        const auto s = SampleData::submittal();
        QVERIFY(SampleData::issuedByNames().contains(s->IssuedBy()));
        QVERIFY(QDate::fromString(s->SubmittalDate(), Qt::ISODate).isValid());
        QCOMPARE(s->SubmittalPurposeIndex(), qint16(1));
        QCOMPARE(s->SubmittalPurpose(), QStringLiteral("Request For Approval"));
        QCOMPARE(s->IncludeCoverLetter(), true);
        QCOMPARE(s->IncludeBOM(), true);
        QCOMPARE(s->IncludeLabels(), false);
        QVERIFY(s->CoverLetter() != nullptr);
        QCOMPARE(s->CoverLetter()->IncludeLogo(), true);
        QCOMPARE(s->CoverLetter()->IncludeCarbonCopy(), true);
        QCOMPARE(s->Recipients()->Count(), qint16(3));
        QSet<QString> names;
        for (const auto& r : s->Recipients()->Enumerate()) {
            QVERIFY(!r->Name().isEmpty());
            QVERIFY(!r->Company().isEmpty());
            names.insert(r->Name());
        }
        QCOMPARE(names.size(), 3);
    }

    void bomHasItsDefaultRemarksFilled()
    {
        const auto b = SampleData::bom();
        QCOMPARE(b->IncludeDefaultRemarks(), true);
        QCOMPARE(b->IncludeQuantity(), true);
        QCOMPARE(b->DefaultRemarks()->TextObjectType(), TextKind::BOMRemark);
        QCOMPARE(texts(*b->DefaultRemarks()), SampleData::bomRemarkTexts());
        QVERIFY(SampleData::bomRemarkTexts().size() >= 3);
        for (const QString& t : SampleData::bomRemarkTexts())
            verifySupported(t);
    }

    void labelsOfferTheFieldsOfAMailingLabel()
    {
        const auto l = SampleData::labels();
        const auto fields = l->LabelFields();
        QStringList keys;
        QStringList included;
        for (const auto& f : fields->Enumerate()) {
            keys << f->Key();
            QVERIFY(!f->Caption().isEmpty());
            if (f->Included())
                included << QStringLiteral("%1:%2").arg(f->Key()).arg(f->PrintOrder());
        }
        QCOMPARE(QSet<QString>(keys.begin(), keys.end()).size(), keys.size());
        for (const char* k : {"COMPANY", "ATTENTION", "STREET", "CITYSTATEZIP", "JOBNAME"})
            QVERIFY2(keys.contains(QString::fromLatin1(k)), k);
        QCOMPARE(fields->Item(QStringLiteral("CITYSTATEZIP"))->Caption(),
                 QStringLiteral("City, State Zip"));
        QCOMPARE(included,
                 (QStringList{QStringLiteral("COMPANY:1"), QStringLiteral("ATTENTION:2"),
                              QStringLiteral("STREET:3"), QStringLiteral("CITYSTATEZIP:4")}));
        QVERIFY(fields->Count() > 6);
        QCOMPARE(l->standaloneFields()->maximumIncluded(), qint16(5));
    }

    void lineItemsAreTwentyRealisticLines()
    {
        const auto items = SampleData::lineItems();
        QCOMPARE(items->Count(), qint16(20));
        QCOMPARE(items->Enumerate().size(), 20);
        int mto = 0;
        int comments = 0;
        int selected = 0;
        QSet<QString> types;
        QSet<QString> groups;
        for (const auto& i : items->Enumerate()) {
            QVERIFY(i->Quantity().toInt() > 0);
            QVERIFY(!i->Type().isEmpty());
            QVERIFY(!i->Brand().isEmpty());
            QVERIFY(!i->CatalogNumber().isEmpty());
            QVERIFY(!i->Description().isEmpty());
            QVERIFY(!i->Group().isEmpty());
            verifySupported(i->Description());
            types.insert(i->Type());
            groups.insert(i->Group());
            mto += i->MTO() ? 1 : 0;
            comments += i->Comment() ? 1 : 0;
            selected += i->Selected() ? 1 : 0;
        }
        QCOMPARE(types.size(), 20);
        QVERIFY(groups.size() >= 4);
        QVERIFY(mto > 0 && mto < 20);
        QVERIFY(comments > 0 && comments < 20);
        QVERIFY(selected > 0 && selected < 20);
    }

    void lineItemsIncludeAnEmptyComment()
    {
        bool found = false;
        for (const auto& i : SampleData::lineItems()->Enumerate())
            if (i->Comment() && i->Comment()->Text().isEmpty())
                found = true;
        QVERIFY(found);
    }

    void customerDirectoryHoldsAFewDozenCustomers()
    {
        const auto d = SampleData::customerDirectory();
        const auto records = d->Records();
        QVERIFY(records.size() >= 24);
        QSet<QString> keys;
        QSet<QString> accounts;
        int closed = 0;
        for (const auto& r : records) {
            keys.insert(r.key);
            accounts.insert(r.accountNumber);
            QVERIFY(!r.name.isEmpty());
            QVERIFY(!r.displayText.isEmpty());
            QVERIFY(!r.city.isEmpty());
            QCOMPARE(r.state.size(), 2);
            QVERIFY(!r.type.isEmpty());
            QVERIFY(!r.category.isEmpty());
            QVERIFY(!r.included);
            closed += r.active ? 0 : 1;
        }
        QCOMPARE(keys.size(), records.size());
        QCOMPARE(accounts.size(), records.size());
        QVERIFY(closed >= 1);
    }

    void customerDirectoryOffersOneAndSeveralMatches()
    {
        const auto d = SampleData::customerDirectory();
        CustomerDirectory::Query q;
        q.keyword = QStringLiteral("electric");
        QVERIFY(d->Search(q).size() > 3);
        q = {};
        q.accountNumber = QStringLiteral("100457");
        QCOMPARE(d->Search(q).size(), 1);
        QCOMPARE(d->Search(q).first().name, QStringLiteral("Halvorsen Electric Co."));
    }

    void customersAreASmallIncludedListFromTheDirectory()
    {
        const auto c = SampleData::customers();
        QCOMPARE(c->Count(), qint16(2));
        const auto records = SampleData::customerDirectory()->Records();
        for (const auto& x : c->Enumerate()) {
            QCOMPARE(x->Included(), true);
            QVERIFY(std::any_of(records.begin(), records.end(), [&](const auto& r) {
                return r.key == x->Key() && r.name == x->Name();
            }));
        }
    }

    void issuedByNamesAreDistinctPeople()
    {
        const QStringList names = SampleData::issuedByNames();
        QVERIFY(names.size() >= 3);
        QCOMPARE(QSet<QString>(names.begin(), names.end()).size(), names.size());
    }

    void searchContextValueIsText()
    {
        QCOMPARE(SampleData::searchContextValue().metaType(), QMetaType::fromType<QString>());
        QVERIFY(!SampleData::searchContextValue().toString().isEmpty());
        QCOMPARE(SampleData::jobName(), QStringLiteral("Riverside Medical Office Building"));
    }
};

QTEST_GUILESS_MAIN(TestSampleData)
#include "tst_sampledata.moc"
