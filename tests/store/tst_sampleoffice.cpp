#include "contracts/labelfields.h"
#include "contracts/lineitemcomment.h"
#include "objects/sampledata.h"
#include "objects/standalonebom.h"
#include "objects/standalonelineitems.h"
#include "objects/standalonesubmittal.h"
#include "objects/standalonetextobjects.h"
#include "rules/textkind.h"
#include "sampleoffice/sampleoffice.h"
#include "store/store.h"
#include "store/storebom.h"
#include "store/storecustomers.h"
#include "store/storejob.h"
#include "store/storelabels.h"
#include "store/storelineitems.h"
#include "store/storesubmittal.h"
#include "store/storetextobjects.h"
#include "support/testsupport.h"

#include <QSet>
#include <QTemporaryDir>
#include <QTest>

using namespace ZebObjects;

namespace {

QStringList textsOf(const TextObjects& c)
{
    QStringList out;
    for (const auto& o : c.Enumerate())
        out << o->Text() + (o->Selected() ? QStringLiteral(" [x]") : QString());
    return out;
}

}  // namespace

class TestSampleOffice : public QObject {
    Q_OBJECT

    std::shared_ptr<Store> filled(const QTemporaryDir& dir)
    {
        auto store = Store::open(dir.filePath(QStringLiteral("office.zebdb")));
        SampleOffice::fill(*store);
        return store;
    }

private slots:
    void initTestCase() { ZebTest::useScratchDataHome(); }

    void fillingMakesFourJobsOfDifferentSizesInNumberOrder()
    {
        QTemporaryDir dir;
        const auto store = filled(dir);
        const auto jobs = store->jobs();
        QCOMPARE(jobs.size(), 4);
        QStringList rows;
        for (const auto& j : jobs)
            rows << QStringLiteral("%1|%2|%3|%4")
                        .arg(j.number, j.name)
                        .arg(j.customerCount)
                        .arg(j.lineCount);
        QCOMPARE(rows,
                 (QStringList{QStringLiteral("24-0117|Cascade Elementary School Gym Relight|1|4"),
                              QStringLiteral("24-0131|Riverside Medical Office Building|2|20"),
                              QStringLiteral("24-0152|Northgate Distribution Center|5|96"),
                              QStringLiteral("25-0009|Harbor Point Mixed-Use Tower|12|744")}));
    }

    void theDirectoryHoldsSeveralHundredCustomersWithUniqueKeysAndAccounts()
    {
        QTemporaryDir dir;
        const auto store = filled(dir);
        const auto records = store->directoryCustomers();
        QVERIFY2(records.size() >= 300, qPrintable(QString::number(records.size())));
        QSet<QString> keys;
        QSet<QString> accounts;
        int closed = 0;
        for (const auto& r : records) {
            keys.insert(r.key);
            accounts.insert(r.accountNumber);
            QVERIFY(!r.name.isEmpty() && !r.city.isEmpty() && !r.state.isEmpty());
            QCOMPARE(r.displayText,
                     r.name + QStringLiteral(" - ") + r.city + QStringLiteral(", ") + r.state);
            closed += r.active ? 0 : 1;
        }
        QCOMPARE(keys.size(), records.size());
        QCOMPARE(accounts.size(), records.size());
        QVERIFY(closed > 0);
        QCOMPARE(store->directoryCount(), qint32(records.size()));
    }

    void issuersSearchContextAndLibrariesAreFilled()
    {
        QTemporaryDir dir;
        const auto store = filled(dir);
        QCOMPARE(store->issuedByNames(), SampleOffice::issuedByNames());
        QVERIFY(store->issuedByNames().size() > SampleData::issuedByNames().size() - 1);
        QCOMPARE(store->searchContextValue().toString(),
                 SampleData::searchContextValue().toString());
        QCOMPARE(store->library(TextKind::CoverLetterParagraph)->Count(), 7);
        QCOMPARE(store->library(TextKind::CoverLetterRemark)->Count(), 5);
        QCOMPARE(store->library(TextKind::BOMRemark)->Count(), SampleData::bomRemarkTexts().size());
    }

    void riversideHoldsTodaysSampleJob()
    {
        QTemporaryDir dir;
        const auto store = filled(dir);
        const auto job = store->openJob(store->jobs().at(1).id);
        QCOMPARE(job->name(), SampleData::jobName());
        const auto sample = SampleData::submittal();
        const auto s = job->submittal();
        QCOMPARE(s->IssuedBy(), sample->IssuedBy());
        QCOMPARE(s->SubmittalDate(), sample->SubmittalDate());
        QCOMPARE(s->SubmittalPurposeIndex(), sample->SubmittalPurposeIndex());
        QCOMPARE(s->SubmittalPurpose(), sample->SubmittalPurpose());
        QCOMPARE(s->IncludeCoverLetter(), sample->IncludeCoverLetter());
        QCOMPARE(s->IncludeBOM(), sample->IncludeBOM());
        QCOMPARE(s->CoverLetter()->IncludeCarbonCopy(), true);
        QCOMPARE(s->Recipients()->Count(), sample->Recipients()->Count());
        QCOMPARE(textsOf(*job->coverLetterParagraphs()),
                 textsOf(*SampleData::coverLetterParagraphs()));
        QCOMPARE(textsOf(*job->coverLetterRemarks()), textsOf(*SampleData::coverLetterRemarks()));
        QCOMPARE(textsOf(*job->bom()->DefaultRemarks()),
                 textsOf(*SampleData::bom()->DefaultRemarks()));
        QCOMPARE(job->bom()->IncludeMTO(), true);
        const auto lines = job->lineItems()->Enumerate();
        const auto sampleLines = SampleData::lineItems()->Enumerate();
        QCOMPARE(lines.size(), sampleLines.size());
        for (qsizetype i = 0; i < lines.size(); ++i) {
            QCOMPARE(lines[i]->CatalogNumber(), sampleLines[i]->CatalogNumber());
            QCOMPARE(lines[i]->Quantity(), sampleLines[i]->Quantity());
            QCOMPARE(lines[i]->Selected(), sampleLines[i]->Selected());
            QCOMPARE(lines[i]->Comment() != nullptr, sampleLines[i]->Comment() != nullptr);
            if (lines[i]->Comment())
                QCOMPARE(lines[i]->Comment()->Text(), sampleLines[i]->Comment()->Text());
        }
        QStringList onLabel;
        for (const auto& f : job->labels()->LabelFields()->Enumerate())
            if (f->Included())
                onLabel << f->Key();
        QCOMPARE(onLabel, (QStringList{QStringLiteral("COMPANY"), QStringLiteral("ATTENTION"),
                                       QStringLiteral("STREET"), QStringLiteral("CITYSTATEZIP")}));
        QStringList customers;
        for (const auto& c : job->customers()->Enumerate())
            customers << c->Key() + (c->Included() ? QStringLiteral("+") : QString());
        QCOMPARE(customers, (QStringList{QStringLiteral("C1001+"), QStringLiteral("C1003+")}));
    }

    void theLargeJobHas744LinesAndACustomPurpose()
    {
        QTemporaryDir dir;
        const auto store = filled(dir);
        const auto job = store->openJob(store->jobs().last().id);
        const auto lines = job->lineItems();
        QCOMPARE(lines->Count(), qint16(SampleOffice::LargeJobLineCount));
        QCOMPARE(lines->Enumerate().size(), qsizetype(744));
        int comments = 0;
        int mto = 0;
        for (const auto& l : lines->Enumerate()) {
            comments += l->Comment() ? 1 : 0;
            mto += l->MTO() ? 1 : 0;
            QVERIFY(!l->CatalogNumber().isEmpty());
        }
        QVERIFY(comments > 50 && mto > 50);
        QCOMPARE(job->submittal()->SubmittalPurposeIndex(), qint16(7));
        QCOMPARE(job->submittal()->SelectPurpose(7),
                 QStringLiteral("For coordination with the ceiling and controls trades"));
        QCOMPARE(job->customers()->Count(), qint16(12));
    }

    void fillingIsOneTransaction()
    {
        QTemporaryDir dir;
        const auto store = Store::open(dir.filePath(QStringLiteral("office.zebdb")));
        const quint64 before = store->commitCount();
        SampleOffice::fill(*store);
        QCOMPARE(store->commitCount(), before + 1);
    }

    void fillingAStoreThatHoldsAnythingFailsAndChangesNothing()
    {
        QTemporaryDir dir;
        const auto store = filled(dir);
        try {
            SampleOffice::fill(*store);
            QFAIL("no failure");
        } catch (const Failure& f) {
            QCOMPARE(f.Number(), 457);
            QCOMPARE(f.Description(), QStringLiteral("The database file \"%1\" already holds an "
                                                     "office; the sample office goes only into an "
                                                     "empty file")
                                          .arg(store->path()));
        }
        QCOMPARE(store->jobs().size(), 4);
        QCOMPARE(store->library(TextKind::CoverLetterParagraph)->Count(), 7);
    }

    void theOfficeIsTheSameEveryTime()
    {
        QCOMPARE(SampleOffice::directory().size(), SampleOffice::directory().size());
        QCOMPARE(SampleOffice::largeJob().lines.at(500).catalogNumber,
                 SampleOffice::largeJob().lines.at(500).catalogNumber);
        QTemporaryDir one;
        QTemporaryDir two;
        const auto a = filled(one);
        const auto b = filled(two);
        QCOMPARE(a->jobs(), b->jobs());
        QCOMPARE(a->directoryCustomers().last().name, SampleOffice::directory().last().name);
    }
};

QTEST_GUILESS_MAIN(TestSampleOffice)
#include "tst_sampleoffice.moc"
