#include "objects/standalonecustomer.h"
#include "objects/standalonecustomers.h"

#include <QSignalSpy>
#include <QTest>

using namespace ZebObjects;

namespace {

std::shared_ptr<StandaloneCustomer> customer(const QString& key)
{
    StandaloneCustomer::Data d;
    d.key = key;
    d.displayText = QStringLiteral("Customer ") + key;
    d.name = QStringLiteral("Name ") + key;
    return std::make_shared<StandaloneCustomer>(d);
}

std::shared_ptr<StandaloneCustomers> filled(const QStringList& keys)
{
    auto c = std::make_shared<StandaloneCustomers>();
    for (const QString& k : keys)
        c->Add(k, customer(k));
    return c;
}

QStringList keysOf(const Customers& c)
{
    QStringList out;
    for (const auto& x : c.Enumerate())
        out << x->Key();
    return out;
}

// A list that follows the collection the way the customer panel does: one row out per event.
class MirrorList {
public:
    explicit MirrorList(Customers& c) : rows(keysOf(c))
    {
        QObject::connect(&c, &Customers::CustomerRemoved, [this, &c](qint16 index) {
            QVERIFY(index >= 1 && index <= rows.size());
            removed << rows.takeAt(index - 1);
            // After each event the list and the collection agree.
            QCOMPARE(rows, keysOf(c));
        });
    }
    QStringList rows;
    QStringList removed;
};

const QStringList kABCD = {QStringLiteral("A"), QStringLiteral("B"), QStringLiteral("C"),
                           QStringLiteral("D")};

}  // namespace

class TestCustomers : public QObject {
    Q_OBJECT
private slots:
    void emptyCollectionEnumeratesNothing()
    {
        StandaloneCustomers c;
        QVERIFY(c.Enumerate().isEmpty());
        QCOMPARE(c.Count(), qint16(0));
    }

    void addAnswersTrueAndKeepsCollectionOrder()
    {
        StandaloneCustomers c;
        const auto a = customer(QStringLiteral("A"));
        const auto b = customer(QStringLiteral("B"));
        QCOMPARE(c.Add(QStringLiteral("A"), a), true);
        QCOMPARE(c.Add(QStringLiteral("B"), b), true);
        QCOMPARE(c.Count(), qint16(2));
        QCOMPARE(c.Item(1), std::static_pointer_cast<Customer>(a));
        QCOMPARE(c.Item(2), std::static_pointer_cast<Customer>(b));
        QCOMPARE(keysOf(c), (QStringList{QStringLiteral("A"), QStringLiteral("B")}));
        QCOMPARE(c.keyAt(2), QStringLiteral("B"));
    }

    void addWithAKeyAlreadyHeldFailsWith457AndChangesNothing()
    {
        auto c = filled({QStringLiteral("A")});
        const auto other = customer(QStringLiteral("A"));
        try {
            c->Add(QStringLiteral("A"), other);
            QFAIL("no failure");
        } catch (const Failure& f) {
            QCOMPARE(f.Number(), 457);
            QCOMPARE(f.Source(), QStringLiteral("ZebObjects.Customers"));
            QCOMPARE(f.Description(),
                     QStringLiteral("This key is already associated with an element of this "
                                    "collection: \"A\""));
        }
        QCOMPARE(c->Count(), qint16(1));
        QVERIFY(c->Item(1) != std::static_pointer_cast<Customer>(other));
    }

    void duplicateIsDetectedByKeyNotByObject()
    {
        auto c = filled({QStringLiteral("A")});
        const auto same = c->Item(1);
        QCOMPARE(c->Add(QStringLiteral("A2"), same), true);
        QCOMPARE(c->Count(), qint16(2));
    }

    void addOfNoCustomerFailsWith91()
    {
        StandaloneCustomers c;
        try {
            c.Add(QStringLiteral("A"), nullptr);
            QFAIL("no failure");
        } catch (const Failure& f) {
            QCOMPARE(f.Number(), 91);
            QCOMPARE(f.Description(),
                     QStringLiteral(
                         "Object variable or With block variable not set: no customer to add"));
        }
        QCOMPARE(c.Count(), qint16(0));
    }

    void aDeclinedCustomerIsNotTakenInAndAddAnswersFalse()
    {
        StandaloneCustomers c;
        QStringList asked;
        c.setAddPolicy([&](const QString& key, const Customer& who) {
            asked << key + QLatin1Char(':') + who.Name();
            return key != QLatin1String("B");
        });
        QCOMPARE(c.Add(QStringLiteral("A"), customer(QStringLiteral("A"))), true);
        QCOMPARE(c.Add(QStringLiteral("B"), customer(QStringLiteral("B"))), false);
        QCOMPARE(keysOf(c), QStringList{QStringLiteral("A")});
        QCOMPARE(asked, (QStringList{QStringLiteral("A:Name A"), QStringLiteral("B:Name B")}));
        // A declined key is not held: a duplicate check does not see it.
        c.setAddPolicy({});
        QCOMPARE(c.Add(QStringLiteral("B"), customer(QStringLiteral("B"))), true);
    }

    void aDuplicateFailsEvenWhenThePolicyWouldDecline()
    {
        auto c = filled({QStringLiteral("A")});
        c->setAddPolicy([](const QString&, const Customer&) { return false; });
        QVERIFY_THROWS_EXCEPTION(Failure,
                                 c->Add(QStringLiteral("A"), customer(QStringLiteral("A"))));
    }

    void removeTakesOutTheCustomerAndRaisesCustomerRemovedAfterwards()
    {
        auto c = filled(kABCD);
        qint16 countSeen = -1;
        connect(c.get(), &Customers::CustomerRemoved, this, [&] { countSeen = c->Count(); });
        QSignalSpy removed(c.get(), &Customers::CustomerRemoved);
        c->Remove(2);
        QCOMPARE(keysOf(*c),
                 (QStringList{QStringLiteral("A"), QStringLiteral("C"), QStringLiteral("D")}));
        QCOMPARE(removed.count(), 1);
        QCOMPARE(removed.at(0).at(0).value<qint16>(), qint16(2));
        QCOMPARE(countSeen, qint16(3));
    }

    void removeOutOfRangeFailsWithNineAndRaisesNothing_data()
    {
        QTest::addColumn<qint16>("index");
        QTest::newRow("0") << qint16(0);
        QTest::newRow("5") << qint16(5);
        QTest::newRow("-1") << qint16(-1);
    }
    void removeOutOfRangeFailsWithNineAndRaisesNothing()
    {
        QFETCH(qint16, index);
        auto c = filled(kABCD);
        QSignalSpy removed(c.get(), &Customers::CustomerRemoved);
        try {
            c->Remove(index);
            QFAIL("no failure");
        } catch (const Failure& f) {
            QCOMPARE(f.Number(), 9);
            QCOMPARE(f.Description(),
                     QStringLiteral("Subscript out of range: no customer at position %1 of 4")
                         .arg(index));
        }
        QCOMPARE(removed.count(), 0);
        QCOMPARE(c->Count(), qint16(4));
    }

    void removeAllRaisesCustomerRemovedOnceForEachCustomerWithIndexesAListCanFollow()
    {
        auto c = filled(kABCD);
        MirrorList list(*c);
        QSignalSpy removed(c.get(), &Customers::CustomerRemoved);
        c->RemoveAll();
        QCOMPARE(c->Count(), qint16(0));
        QCOMPARE(removed.count(), 4);
        QList<qint16> indexes;
        for (const auto& args : removed)
            indexes << args.at(0).value<qint16>();
        QCOMPARE(indexes, (QList<qint16>{4, 3, 2, 1}));
        QVERIFY(list.rows.isEmpty());
        QCOMPARE(list.removed, (QStringList{QStringLiteral("D"), QStringLiteral("C"),
                                            QStringLiteral("B"), QStringLiteral("A")}));
    }

    void removeAllOnAnEmptyCollectionRaisesNothing()
    {
        StandaloneCustomers c;
        QSignalSpy removed(&c, &Customers::CustomerRemoved);
        c.RemoveAll();
        QCOMPARE(removed.count(), 0);
    }

    void removeOfAProtectedCustomerFailsWith70AndKeepsIt()
    {
        auto c = filled(kABCD);
        c->setRemovePolicy([](const Customer& who) { return who.Key() != QLatin1String("B"); });
        QSignalSpy removed(c.get(), &Customers::CustomerRemoved);
        try {
            c->Remove(2);
            QFAIL("no failure");
        } catch (const Failure& f) {
            QCOMPARE(f.Number(), 70);
            QCOMPARE(f.Description(),
                     QStringLiteral("Permission denied: the submittal must keep \"B\""));
        }
        QCOMPARE(removed.count(), 0);
        QCOMPARE(c->Count(), qint16(4));
        c->Remove(1);
        QCOMPARE(keysOf(*c),
                 (QStringList{QStringLiteral("B"), QStringLiteral("C"), QStringLiteral("D")}));
    }

    void removeAllTakesOutTheOthersThenFailsForTheProtectedOnes()
    {
        auto c = filled(kABCD);
        c->setRemovePolicy([](const Customer& who) {
            return who.Key() != QLatin1String("B") && who.Key() != QLatin1String("D");
        });
        MirrorList list(*c);
        try {
            c->RemoveAll();
            QFAIL("no failure");
        } catch (const Failure& f) {
            QCOMPARE(f.Number(), 70);
            QCOMPARE(f.Description(),
                     QStringLiteral("Permission denied: the submittal must keep \"B\", \"D\""));
        }
        QCOMPARE(keysOf(*c), (QStringList{QStringLiteral("B"), QStringLiteral("D")}));
        QCOMPARE(list.rows, keysOf(*c));
        QCOMPARE(list.removed, (QStringList{QStringLiteral("C"), QStringLiteral("A")}));
    }

    void aHandlerThatRemovesDuringRemoveAllDoesNotThrowTheIndexesOff()
    {
        auto c = filled(kABCD);
        MirrorList list(*c);
        bool once = true;
        connect(c.get(), &Customers::CustomerRemoved, this, [&] {
            if (once) {
                once = false;
                c->Remove(1);
            }
        });
        c->RemoveAll();
        QCOMPARE(c->Count(), qint16(0));
        QVERIFY(list.rows.isEmpty());
        QCOMPARE(list.removed.size(), 4);
    }

    void itemOutOfRangeFails()
    {
        auto c = filled({QStringLiteral("A")});
        QVERIFY_THROWS_EXCEPTION(Failure, c->Item(0));
        QVERIFY_THROWS_EXCEPTION(Failure, c->Item(2));
        QVERIFY_THROWS_EXCEPTION(Failure, c->keyAt(2));
    }

    void customerAnswersItsMembersAndKeepsIncluded()
    {
        StandaloneCustomer::Data d;
        d.key = QStringLiteral("C1001");
        d.displayText = QStringLiteral("Halvorsen Electric Co. - Portland, OR");
        d.name = QStringLiteral("Halvorsen Electric Co.");
        d.accountNumber = QStringLiteral("100457");
        d.city = QStringLiteral("Portland");
        d.state = QStringLiteral("OR");
        d.type = QStringLiteral("Contractor");
        d.category = QStringLiteral("Electrical");
        StandaloneCustomer c(d);
        QCOMPARE(c.Key(), QStringLiteral("C1001"));
        QCOMPARE(c.DisplayText(), QStringLiteral("Halvorsen Electric Co. - Portland, OR"));
        QCOMPARE(c.Name(), QStringLiteral("Halvorsen Electric Co."));
        QCOMPARE(c.AccountNumber(), QStringLiteral("100457"));
        QCOMPARE(c.City(), QStringLiteral("Portland"));
        QCOMPARE(c.State(), QStringLiteral("OR"));
        QCOMPARE(c.Type(), QStringLiteral("Contractor"));
        QCOMPARE(c.Category(), QStringLiteral("Electrical"));
        QCOMPARE(c.Included(), false);
        c.setIncluded(true);
        QCOMPARE(c.Included(), true);
        QCOMPARE(c.data().included, true);
        c.setIncluded(false);
        QCOMPARE(c.Included(), false);
    }
};

QTEST_GUILESS_MAIN(TestCustomers)
#include "tst_customers.moc"
