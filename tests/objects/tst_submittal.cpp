#include "objects/standalonecoverletter.h"
#include "objects/standalonerecipients.h"
#include "objects/standalonesubmittal.h"
#include "support/contracttesting.h"

#include <QSignalSpy>
#include <QTest>

using namespace ZebObjects;

namespace {

using EventLog = ZebTest::SubmittalEvents;

const QStringList kCaptions = {QStringLiteral("Request For Prior Approval"),
                               QStringLiteral("Request For Approval"),
                               QStringLiteral("Request For Approval As Submitted"),
                               QStringLiteral("Request For Approval As Noted"),
                               QStringLiteral("Resubmittal For Approval"),
                               QStringLiteral("Corrections"),
                               QStringLiteral("Record Only")};

}  // namespace

class TestSubmittal : public QObject {
    Q_OBJECT
private slots:
    void purposeCaptionsAreTheEightOptionTexts()
    {
        QCOMPARE(StandaloneSubmittal::purposeCaptions(),
                 kCaptions + QStringList{QStringLiteral("Other")});
    }

    void issuedByWriteRaisesIssuedByChangedAfterTheChange()
    {
        StandaloneSubmittal s;
        EventLog log(s);
        s.setIssuedBy(QStringLiteral("Marta Halloran"));
        QCOMPARE(s.IssuedBy(), QStringLiteral("Marta Halloran"));
        QCOMPARE(log.events, QStringList{QStringLiteral("IssuedByChanged:Marta Halloran")});
    }

    void submittalDateAcceptsIsoTextAndEmptyAndRaisesSubmittalDateChanged()
    {
        StandaloneSubmittal s;
        EventLog log(s);
        s.setSubmittalDate(QStringLiteral("2026-11-21"));
        QCOMPARE(s.SubmittalDate(), QStringLiteral("2026-11-21"));
        s.setSubmittalDate(QString());
        QCOMPARE(s.SubmittalDate(), QString());
        QCOMPARE(log.events, (QStringList{QStringLiteral("SubmittalDateChanged:2026-11-21"),
                                          QStringLiteral("SubmittalDateChanged:")}));
    }

    void submittalDateRefusesTextThatIsNotAnIsoDate_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("us order") << QStringLiteral("11/21/2026");
        QTest::newRow("no such day") << QStringLiteral("2026-02-30");
        QTest::newRow("words") << QStringLiteral("tomorrow");
        QTest::newRow("blank") << QStringLiteral(" ");
    }
    void submittalDateRefusesTextThatIsNotAnIsoDate()
    {
        QFETCH(QString, text);
        StandaloneSubmittal s;
        s.setSubmittalDate(QStringLiteral("2026-11-21"));
        EventLog log(s);
        try {
            s.setSubmittalDate(text);
            QFAIL("no failure");
        } catch (const Failure& f) {
            QCOMPARE(f.Number(), 13);
            QCOMPARE(f.Source(), QStringLiteral("ZebObjects.Submittal"));
            QCOMPARE(f.Description(),
                     QStringLiteral("Type mismatch: \"%1\" is not a date of the form yyyy-mm-dd")
                         .arg(text));
        }
        QCOMPARE(s.SubmittalDate(), QStringLiteral("2026-11-21"));
        QVERIFY(log.events.isEmpty());
    }

    void includeFlagsRaiseTheirOwnEventOnly()
    {
        StandaloneSubmittal s;
        EventLog log(s);
        s.setIncludeCoverLetter(true);
        s.setIncludeBOM(true);
        s.setIncludeLabels(true);
        s.setIncludeBOM(false);
        QCOMPARE(
            log.events,
            (QStringList{QStringLiteral("CoverLetterChanged:1"), QStringLiteral("BOMChanged:1"),
                         QStringLiteral("LabelsChanged:1"), QStringLiteral("BOMChanged:0")}));
        QCOMPARE(s.IncludeCoverLetter(), true);
        QCOMPARE(s.IncludeBOM(), false);
        QCOMPARE(s.IncludeLabels(), true);
    }

    void selectPurposeDoesNotWriteThePurposeText()
    {
        StandaloneSubmittal s;
        s.setSubmittalPurpose(QStringLiteral("Kept"));
        s.SelectPurpose(4);
        QCOMPARE(s.SubmittalPurpose(), QStringLiteral("Kept"));
    }

    void selectPurposeChangedEventSeesTheNewIndex()
    {
        StandaloneSubmittal s;
        EventLog log(s);
        s.SelectPurpose(5);
        QCOMPARE(log.events, QStringList{QStringLiteral(
                                 "SubmittalPurposeChanged(5):5:Request For Prior Approval")});
    }

    void selectPurposeOtherAnswersTheCustomPurpose()
    {
        StandaloneSubmittal s;
        QCOMPARE(s.SelectPurpose(7), QString());
        QCOMPARE(s.SubmittalPurposeIndex(), qint16(7));
        s.setSubmittalPurpose(QStringLiteral("For coordination with the ceiling trade"));
        QCOMPARE(s.SelectPurpose(7), QStringLiteral("For coordination with the ceiling trade"));
    }

    void customPurposeSurvivesAnotherOptionAndRepopulation()
    {
        StandaloneSubmittal s;
        // What the panel does: choose "Other", then type.
        s.setSubmittalPurpose(s.SelectPurpose(7));
        s.setSubmittalPurpose(QStringLiteral("Budget review"));
        // Shown again: the panel selects option 7 and writes SelectPurpose(7) back.
        s.setSubmittalPurpose(s.SelectPurpose(7));
        QCOMPARE(s.SubmittalPurpose(), QStringLiteral("Budget review"));
        // The user picks a standard option, then "Other" again.
        s.setSubmittalPurpose(s.SelectPurpose(2));
        QCOMPARE(s.SubmittalPurpose(), kCaptions[2]);
        s.setSubmittalPurpose(s.SelectPurpose(7));
        QCOMPARE(s.SubmittalPurpose(), QStringLiteral("Budget review"));
        QCOMPARE(s.SubmittalPurposeIndex(), qint16(7));
    }

    void purposeTextWriteRaisesSubmittalPurposeChangedWithTheCurrentOption()
    {
        StandaloneSubmittal s;
        s.SelectPurpose(7);
        EventLog log(s);
        s.setSubmittalPurpose(QStringLiteral("Mine"));
        QCOMPARE(log.events, QStringList{QStringLiteral("SubmittalPurposeChanged(7):7:Mine")});
    }

    void coverLetterMayBeNone()
    {
        StandaloneSubmittal s;
        s.setCoverLetter(nullptr);
        QVERIFY(s.CoverLetter() == nullptr);
        QVERIFY(s.standaloneCoverLetter() == nullptr);
        auto letter = std::make_shared<StandaloneCoverLetter>();
        s.setCoverLetter(letter);
        QCOMPARE(s.CoverLetter(), std::static_pointer_cast<CoverLetter>(letter));
        QCOMPARE(s.standaloneCoverLetter(), letter);
    }

    void coverLetterOptionsAreKept()
    {
        StandaloneCoverLetter c;
        QCOMPARE(c.IncludeLogo(), false);
        QCOMPARE(c.IncludeDefaultParagraphs(), false);
        QCOMPARE(c.IncludeRemarks(), false);
        QCOMPARE(c.SeparateLetters(), false);
        QCOMPARE(c.IncludeCarbonCopy(), false);
        c.setIncludeLogo(true);
        QCOMPARE(c.IncludeLogo(), true);
        c.setIncludeDefaultParagraphs(true);
        QCOMPARE(c.IncludeDefaultParagraphs(), true);
        c.setIncludeRemarks(true);
        QCOMPARE(c.IncludeRemarks(), true);
        c.setSeparateLetters(true);
        QCOMPARE(c.SeparateLetters(), true);
        c.setIncludeCarbonCopy(true);
        QCOMPARE(c.IncludeCarbonCopy(), true);
        QCOMPARE(c.IncludeLogo(), true);
        c.setSeparateLetters(true);
        QCOMPARE(c.SeparateLetters(), true);
        c.setIncludeLogo(false);
        QCOMPARE(c.IncludeLogo(), false);
        QCOMPARE(c.IncludeDefaultParagraphs(), true);
    }

    void recipientsCountFollowsAddAndRemoveBelowTwo()
    {
        StandaloneRecipients r;
        QCOMPARE(r.Count(), qint16(0));
        QVERIFY(r.Enumerate().isEmpty());
        r.Add(QStringLiteral("Dana Whitcomb"), QStringLiteral("Halvorsen Electric Co."));
        QCOMPARE(r.Count(), qint16(1));
        r.Add(QStringLiteral("Priya Raman"), QStringLiteral("Cedar Ridge Architects"));
        QCOMPARE(r.Count(), qint16(2));
        r.Remove(1);
        QCOMPARE(r.Count(), qint16(1));
        QCOMPARE(r.Item(1)->Name(), QStringLiteral("Priya Raman"));
        QCOMPARE(r.Item(1)->Company(), QStringLiteral("Cedar Ridge Architects"));
    }

    void recipientsEnumerateInOrderAndCountMatches()
    {
        StandaloneRecipients r;
        r.Add(QStringLiteral("A"), QStringLiteral("a"));
        r.Add(QStringLiteral("B"), QStringLiteral("b"));
        r.Add(QStringLiteral("C"), QStringLiteral("c"));
        QStringList names;
        for (const auto& x : r.Enumerate())
            names << x->Name();
        QCOMPARE(names,
                 (QStringList{QStringLiteral("A"), QStringLiteral("B"), QStringLiteral("C")}));
        QCOMPARE(qsizetype(r.Count()), r.Enumerate().size());
        QCOMPARE(r.Item(3)->Name(), QStringLiteral("C"));
    }

    void recipientPositionOutOfRangeFails()
    {
        StandaloneRecipients r;
        r.Add(QStringLiteral("A"), QStringLiteral("a"));
        for (qint16 p : {qint16(0), qint16(2)}) {
            try {
                r.Item(p);
                QFAIL("no failure");
            } catch (const Failure& f) {
                QCOMPARE(f.Number(), 9);
                QCOMPARE(f.Description(),
                         QStringLiteral("Subscript out of range: no recipient at position %1 of 1")
                             .arg(p));
            }
            QVERIFY_THROWS_EXCEPTION(Failure, r.Remove(p));
        }
        QCOMPARE(r.Count(), qint16(1));
    }

    void submittalHandsOutTheRecipientsItHolds()
    {
        StandaloneSubmittal s;
        auto r = std::make_shared<StandaloneRecipients>();
        r->Add(QStringLiteral("A"), QStringLiteral("a"));
        s.setRecipients(r);
        QCOMPARE(s.Recipients()->Count(), qint16(1));
        QCOMPARE(s.standaloneRecipients(), r);
    }
};

QTEST_GUILESS_MAIN(TestSubmittal)
#include "tst_submittal.moc"
