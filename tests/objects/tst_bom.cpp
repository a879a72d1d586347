#include "objects/standalonebom.h"
#include "objects/standalonetextobjects.h"
#include "rules/textkind.h"
#include "support/contracttesting.h"

#include <QSignalSpy>
#include <QTest>

using namespace ZebObjects;

namespace {

using Flag = ZebTest::BomFlag;
const auto& kFlags = ZebTest::kBomFlags;

QStringList remarkTexts(const TextObjects& c)
{
    QStringList out;
    for (const auto& o : c.Enumerate())
        out << o->Text();
    return out;
}

}  // namespace

class TestBOM : public QObject {
    Q_OBJECT
private slots:
    void eachFlagIsKeptOnItsOwn()
    {
        for (int which = 0; which < int(std::size(kFlags)); ++which) {
            const Flag& flag = kFlags[which];
            StandaloneBOM bom;
            QSignalSpy populated(&bom, &BOM::RemarksPopulated);
            (bom.*flag.set)(true);
            for (const Flag& other : kFlags)
                QVERIFY2((bom.*other.get)() == (&other == &flag), other.name);
            (bom.*flag.set)(true);
            QVERIFY2((bom.*flag.get)(), flag.name);
            (bom.*flag.set)(false);
            QVERIFY2(!(bom.*flag.get)(), flag.name);
            QCOMPARE(populated.count(), 0);
        }
    }

    void defaultRemarksStartAsAnEmptyCollectionOfBomRemarks()
    {
        StandaloneBOM bom;
        const auto remarks = bom.DefaultRemarks();
        QVERIFY(remarks != nullptr);
        QVERIFY(remarks->Enumerate().isEmpty());
        QCOMPARE(remarks->TextObjectType(), TextKind::BOMRemark);
    }

    void populateRemarksFillsANewCollectionAndRaisesRemarksPopulatedAfterwards()
    {
        StandaloneBOM bom;
        const auto before = bom.DefaultRemarks();
        QStringList seen;
        std::shared_ptr<TextObjects> seenCollection;
        connect(&bom, &BOM::RemarksPopulated, this, [&] {
            seenCollection = bom.DefaultRemarks();
            seen = remarkTexts(*seenCollection);
        });
        QSignalSpy populated(&bom, &BOM::RemarksPopulated);
        const auto filled = bom.PopulateRemarks({QStringLiteral("One"), QStringLiteral("Two")});
        QCOMPARE(populated.count(), 1);
        QVERIFY(bom.DefaultRemarks() != before);
        QCOMPARE(bom.DefaultRemarks(), std::static_pointer_cast<TextObjects>(filled));
        QCOMPARE(seenCollection, bom.DefaultRemarks());
        QCOMPARE(seen, (QStringList{QStringLiteral("One"), QStringLiteral("Two")}));
        QCOMPARE(filled->TextObjectType(), TextKind::BOMRemark);
        for (const auto& o : filled->Enumerate())
            QCOMPARE(o->Selected(), false);
    }

    void populateRemarksWithNoTextsStillFillsAnewAndRaises()
    {
        StandaloneBOM bom;
        bom.PopulateRemarks({QStringLiteral("One")});
        QSignalSpy populated(&bom, &BOM::RemarksPopulated);
        bom.PopulateRemarks({});
        QCOMPARE(populated.count(), 1);
        QVERIFY(bom.DefaultRemarks()->Enumerate().isEmpty());
    }

    void setDefaultRemarksPutsTheCollectionInPlaceAndRaisesRemarksPopulated()
    {
        StandaloneBOM bom;
        auto mine = std::make_shared<StandaloneTextObjects>();
        mine->Add(QStringLiteral("Host remark"), true);
        QSignalSpy populated(&bom, &BOM::RemarksPopulated);
        bom.setDefaultRemarks(mine);
        QCOMPARE(populated.count(), 1);
        QCOMPARE(bom.DefaultRemarks(), std::static_pointer_cast<TextObjects>(mine));
        bom.setDefaultRemarks(nullptr);
        QCOMPARE(populated.count(), 2);
        QVERIFY(bom.DefaultRemarks() == nullptr);
    }

    void remarksPopulatedIsNotRaisedByEditingTheRemarks()
    {
        StandaloneBOM bom;
        const auto remarks = bom.PopulateRemarks({QStringLiteral("One")});
        QSignalSpy populated(&bom, &BOM::RemarksPopulated);
        remarks->Add(QStringLiteral("Two"), false);
        remarks->Remove(remarks->Item(1)->Key());
        QCOMPARE(populated.count(), 0);
    }
};

QTEST_GUILESS_MAIN(TestBOM)
#include "tst_bom.moc"
