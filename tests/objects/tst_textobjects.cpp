#include "objects/standalonetextobjects.h"
#include "rules/textkind.h"

#include <QSignalSpy>
#include <QTest>

using namespace ZebObjects;

namespace {

QStringList texts(const TextObjects& c)
{
    QStringList out;
    for (const auto& o : c.Enumerate())
        out.append(o->Text());
    return out;
}

QStringList keys(const TextObjects& c)
{
    QStringList out;
    for (const auto& o : c.Enumerate())
        out.append(o->Key());
    return out;
}

// Every signal of a collection, in the order raised, with its arguments.
class EventLog {
public:
    explicit EventLog(TextObjects& c)
    {
        QObject::connect(&c, &TextObjects::Changed,
                         [this] { events << QStringLiteral("Changed"); });
        QObject::connect(&c, &TextObjects::ItemAdded, [this](const QString& k) {
            events << QStringLiteral("ItemAdded(%1)").arg(k);
        });
        QObject::connect(&c, &TextObjects::ItemDeleted, [this](const QString& k) {
            events << QStringLiteral("ItemDeleted(%1)").arg(k);
        });
        QObject::connect(&c, &TextObjects::ItemInserted, [this](const QString& k, qint32 p) {
            events << QStringLiteral("ItemInserted(%1,%2)").arg(k).arg(p);
        });
        QObject::connect(&c, &TextObjects::ItemMoved,
                         [this] { events << QStringLiteral("ItemMoved"); });
        QObject::connect(&c, &TextObjects::OrderSaved,
                         [this] { events << QStringLiteral("OrderSaved"); });
    }
    QStringList events;
};

}  // namespace

class TestTextObjects : public QObject {
    Q_OBJECT
private slots:
    void emptyCollectionEnumeratesNothing()
    {
        StandaloneTextObjects c;
        QVERIFY(c.Enumerate().isEmpty());
        QCOMPARE(c.Count(), 0);
        QVERIFY(!c.IsDirty());
    }

    void addAppendsWithTextAndTickAndRaisesItemAddedThenChanged()
    {
        StandaloneTextObjects c;
        EventLog log(c);
        QSignalSpy added(&c, &TextObjects::ItemAdded);
        const auto first = c.Add(QStringLiteral("First"), true);
        const auto second = c.Add(QStringLiteral("Second\r\nline"), false);
        QCOMPARE(texts(c),
                 (QStringList{QStringLiteral("First"), QStringLiteral("Second\r\nline")}));
        QCOMPARE(first->Selected(), true);
        QCOMPARE(second->Selected(), false);
        QCOMPARE(added.count(), 2);
        QCOMPARE(added.at(0).at(0).toString(), first->Key());
        QCOMPARE(added.at(1).at(0).toString(), second->Key());
        QCOMPARE(log.events, (QStringList{QStringLiteral("ItemAdded(%1)").arg(first->Key()),
                                          QStringLiteral("Changed"),
                                          QStringLiteral("ItemAdded(%1)").arg(second->Key()),
                                          QStringLiteral("Changed")}));
    }

    void addHandsOutDistinctStableKeys()
    {
        StandaloneTextObjects c;
        const QString a = c.Add(QStringLiteral("a"), false)->Key();
        const QString b = c.Add(QStringLiteral("b"), false)->Key();
        c.Remove(a);
        const QString d = c.Add(QStringLiteral("d"), false)->Key();
        QVERIFY(a != b && b != d && a != d);
        QCOMPARE(c.Item(b)->Text(), QStringLiteral("b"));
        QCOMPARE(c.Item(d)->Text(), QStringLiteral("d"));
    }

    void itemLooksUpByKeyAndByOneBasedPosition()
    {
        StandaloneTextObjects c;
        const auto a = c.Add(QStringLiteral("a"), false);
        const auto b = c.Add(QStringLiteral("b"), false);
        QCOMPARE(c.Item(a->Key()), a);
        QCOMPARE(c.Item(b->Key()), b);
        QCOMPARE(c.Item(1), a);
        QCOMPARE(c.Item(2), b);
    }

    void itemWithMissingKeyFailsWithSubscriptOutOfRange()
    {
        StandaloneTextObjects c;
        c.Add(QStringLiteral("a"), false);
        try {
            c.Item(QStringLiteral("nope"));
            QFAIL("no failure");
        } catch (const Failure& f) {
            QCOMPARE(f.Number(), 9);
            QCOMPARE(f.Source(), QStringLiteral("ZebObjects.TextObjects"));
            QCOMPARE(f.Description(),
                     QStringLiteral("Subscript out of range: no text object has the key \"nope\""));
        }
    }

    void itemWithPositionOutOfRangeFails()
    {
        StandaloneTextObjects c;
        c.Add(QStringLiteral("a"), false);
        for (qint32 position : {0, 2, -1}) {
            try {
                c.Item(position);
                QFAIL("no failure");
            } catch (const Failure& f) {
                QCOMPARE(f.Number(), 9);
                QCOMPARE(
                    f.Description(),
                    QStringLiteral("Subscript out of range: no text object at position %1 of 1")
                        .arg(position));
            }
        }
    }

    void removeDeletesAndRaisesItemDeletedThenChanged()
    {
        StandaloneTextObjects c;
        const auto a = c.Add(QStringLiteral("a"), false);
        const auto b = c.Add(QStringLiteral("b"), false);
        EventLog log(c);
        c.Remove(a->Key());
        QCOMPARE(texts(c), QStringList{QStringLiteral("b")});
        QCOMPARE(log.events, (QStringList{QStringLiteral("ItemDeleted(%1)").arg(a->Key()),
                                          QStringLiteral("Changed")}));
        QVERIFY_THROWS_EXCEPTION(Failure, c.Item(a->Key()));
        QCOMPARE(c.Item(b->Key()), b);
    }

    void removeWithMissingKeyFailsAndChangesNothing()
    {
        StandaloneTextObjects c;
        c.Add(QStringLiteral("a"), false);
        EventLog log(c);
        try {
            c.Remove(QStringLiteral("zz"));
            QFAIL("no failure");
        } catch (const Failure& f) {
            QCOMPARE(f.Number(), 9);
            QCOMPARE(f.Description(),
                     QStringLiteral("Subscript out of range: no text object has the key \"zz\""));
        }
        QCOMPARE(texts(c), QStringList{QStringLiteral("a")});
        QVERIFY(log.events.isEmpty());
    }

    void moveUpSwapsWithPreviousMarksDirtyAndRaisesItemMovedThenChanged()
    {
        StandaloneTextObjects c;
        c.Add(QStringLiteral("a"), false);
        const auto b = c.Add(QStringLiteral("b"), false);
        c.Add(QStringLiteral("c"), false);
        EventLog log(c);
        c.MoveUp(b->Key());
        QCOMPARE(texts(c),
                 (QStringList{QStringLiteral("b"), QStringLiteral("a"), QStringLiteral("c")}));
        QVERIFY(c.IsDirty());
        QCOMPARE(log.events, (QStringList{QStringLiteral("ItemMoved"), QStringLiteral("Changed")}));
    }

    void moveDownSwapsWithNextAndMarksDirty()
    {
        StandaloneTextObjects c;
        c.Add(QStringLiteral("a"), false);
        const auto b = c.Add(QStringLiteral("b"), false);
        c.Add(QStringLiteral("c"), false);
        EventLog log(c);
        c.MoveDown(b->Key());
        QCOMPARE(texts(c),
                 (QStringList{QStringLiteral("a"), QStringLiteral("c"), QStringLiteral("b")}));
        QVERIFY(c.IsDirty());
        QCOMPARE(log.events, (QStringList{QStringLiteral("ItemMoved"), QStringLiteral("Changed")}));
    }

    void moveUpOnFirstItemChangesNothingAndRaisesNoError()
    {
        StandaloneTextObjects c;
        const auto a = c.Add(QStringLiteral("a"), false);
        c.Add(QStringLiteral("b"), false);
        EventLog log(c);
        c.MoveUp(a->Key());
        QCOMPARE(texts(c), (QStringList{QStringLiteral("a"), QStringLiteral("b")}));
        QVERIFY(!c.IsDirty());
        QVERIFY(log.events.isEmpty());
    }

    void moveDownOnLastItemChangesNothingAndRaisesNoError()
    {
        StandaloneTextObjects c;
        c.Add(QStringLiteral("a"), false);
        const auto b = c.Add(QStringLiteral("b"), false);
        EventLog log(c);
        c.MoveDown(b->Key());
        QCOMPARE(texts(c), (QStringList{QStringLiteral("a"), QStringLiteral("b")}));
        QVERIFY(!c.IsDirty());
        QVERIFY(log.events.isEmpty());
    }

    void moveOnTheOnlyItemChangesNothing()
    {
        StandaloneTextObjects c;
        const auto a = c.Add(QStringLiteral("a"), false);
        c.MoveUp(a->Key());
        c.MoveDown(a->Key());
        QCOMPARE(keys(c), QStringList{a->Key()});
        QVERIFY(!c.IsDirty());
    }

    void moveWithMissingKeyFails()
    {
        StandaloneTextObjects c;
        c.Add(QStringLiteral("a"), false);
        QVERIFY_THROWS_EXCEPTION(Failure, c.MoveUp(QStringLiteral("x")));
        QVERIFY_THROWS_EXCEPTION(Failure, c.MoveDown(QStringLiteral("x")));
    }

    void saveOrderKeepsOrderClearsDirtyAndRaisesOrderSavedThenChanged()
    {
        StandaloneTextObjects c;
        c.Add(QStringLiteral("a"), false);
        const auto b = c.Add(QStringLiteral("b"), false);
        c.MoveUp(b->Key());
        EventLog log(c);
        bool dirtyWhenSaved = true;
        connect(&c, &TextObjects::OrderSaved, this, [&] { dirtyWhenSaved = c.IsDirty(); });
        c.SaveOrder();
        QVERIFY(!c.IsDirty());
        QVERIFY(!dirtyWhenSaved);
        QCOMPARE(texts(c), (QStringList{QStringLiteral("b"), QStringLiteral("a")}));
        QCOMPARE(log.events,
                 (QStringList{QStringLiteral("OrderSaved"), QStringLiteral("Changed")}));
    }

    void insertPutsTextAtOneBasedPositionAndRaisesItemInsertedThenChanged()
    {
        StandaloneTextObjects c;
        c.Add(QStringLiteral("a"), false);
        c.Add(QStringLiteral("c"), false);
        EventLog log(c);
        const auto b = c.Insert(2, QStringLiteral("b"), true);
        QCOMPARE(texts(c),
                 (QStringList{QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")}));
        QCOMPARE(b->Selected(), true);
        QVERIFY(c.IsDirty());
        QCOMPARE(log.events, (QStringList{QStringLiteral("ItemInserted(%1,2)").arg(b->Key()),
                                          QStringLiteral("Changed")}));
        const auto first = c.Insert(1, QStringLiteral("0"), false);
        const auto last = c.Insert(5, QStringLiteral("z"), false);
        QCOMPARE(c.Item(1), first);
        QCOMPARE(c.Item(5), last);
    }

    void insertOutsideOneToCountPlusOneFails()
    {
        StandaloneTextObjects c;
        c.Add(QStringLiteral("a"), false);
        for (qint32 position : {0, 3}) {
            try {
                c.Insert(position, QStringLiteral("x"), false);
                QFAIL("no failure");
            } catch (const Failure& f) {
                QCOMPARE(f.Number(), 9);
                QCOMPARE(f.Description(),
                         QStringLiteral("Subscript out of range: cannot insert at position %1 of 1")
                             .arg(position));
            }
        }
        QCOMPARE(c.Count(), 1);
    }

    void addWithKeyUsesTheGivenKeyAndRefusesADuplicateWith457()
    {
        StandaloneTextObjects c;
        const auto o = c.addWithKey(QStringLiteral("INTRO"), QStringLiteral("Hello"), true);
        QCOMPARE(o->Key(), QStringLiteral("INTRO"));
        QCOMPARE(c.Item(QStringLiteral("INTRO")), o);
        try {
            c.addWithKey(QStringLiteral("INTRO"), QStringLiteral("Again"), false);
            QFAIL("no failure");
        } catch (const Failure& f) {
            QCOMPARE(f.Number(), 457);
            QCOMPARE(f.Description(),
                     QStringLiteral("This key is already associated with an element of this "
                                    "collection: \"INTRO\""));
        }
        QCOMPARE(c.Count(), 1);
        // Generated keys steer clear of a key the caller chose.
        c.addWithKey(QStringLiteral("1"), QStringLiteral("one"), false);
        const auto generated = c.Add(QStringLiteral("next"), false);
        QVERIFY(generated->Key() != QStringLiteral("1"));
    }

    void textObjectTypeIsKept()
    {
        StandaloneTextObjects c;
        QCOMPARE(c.TextObjectType(), TextKind::Unspecified);
        c.setTextObjectType(TextKind::CoverLetterRemark);
        QCOMPARE(c.TextObjectType(), TextKind::CoverLetterRemark);
    }

    void textAndSelectedAreWritable()
    {
        StandaloneTextObjects c;
        const auto o = c.Add(QStringLiteral("a"), false);
        o->setText(QStringLiteral("line 1\r\nline 2"));
        o->setSelected(true);
        QCOMPARE(c.Item(o->Key())->Text(), QStringLiteral("line 1\r\nline 2"));
        QCOMPARE(c.Item(o->Key())->Selected(), true);
        o->setSelected(true);
        QCOMPARE(o->Selected(), true);
    }

    void emptyTextIsAccepted()
    {
        StandaloneTextObjects c;
        const auto o = c.Add(QString(), false);
        QCOMPARE(o->Text(), QString());
    }

    void enumerationIsASnapshot()
    {
        StandaloneTextObjects c;
        c.Add(QStringLiteral("a"), false);
        const auto snapshot = c.Enumerate();
        c.Add(QStringLiteral("b"), false);
        QCOMPARE(snapshot.size(), 1);
        QCOMPARE(c.Enumerate().size(), 2);
    }

    void objectGivesTheConcreteParagraphAndFailsForMissingKey()
    {
        StandaloneTextObjects c;
        const auto o = c.Add(QStringLiteral("a"), false);
        QCOMPARE(std::static_pointer_cast<TextObject>(c.object(o->Key())), o);
        QVERIFY_THROWS_EXCEPTION(Failure, c.object(QStringLiteral("x")));
    }
};

QTEST_GUILESS_MAIN(TestTextObjects)
#include "tst_textobjects.moc"
