#include "frame/errorpath.h"
#include "frame/usercontrol.h"
#include "support/testsupport.h"

#include <QLabel>
#include <QSignalSpy>
#include <QTest>

using namespace ZebSubCtl;

namespace ZebSubCtl {
// A small control with the persistence pattern of the library's controls: each key is read
// with its default and assigned through the property's own setter.
class ctlSample : public UserControl {
    Q_OBJECT
    Q_PROPERTY(bool AllowAdd READ AllowAdd WRITE setAllowAdd)
    Q_PROPERTY(qint32 Limit READ Limit WRITE setLimit)
public:
    explicit ctlSample(QWidget* parent = nullptr) : UserControl(parent)
    {
        m_entry = new QLabel(this);
        m_entry->setObjectName(QStringLiteral("lblEntry"));
        m_entry->setVisible(false);
    }

    bool AllowAdd() const { return m_allowAdd; }
    void setAllowAdd(bool value)
    {
        ++allowAddWrites;
        m_allowAdd = value;
        m_entry->setVisible(value);
        PropertyChanged(QStringLiteral("AllowAdd"));
    }
    qint32 Limit() const { return m_limit; }
    void setLimit(qint32 value)
    {
        m_limit = value;
        PropertyChanged(QStringLiteral("Limit"));
    }

    void UserControl_WriteProperties(PropertyBag& bag) override
    {
        bag.WriteProperty(QStringLiteral("AllowAdd"), AllowAdd(), false);
        bag.WriteProperty(QStringLiteral("Limit"), Limit(), qint32(0));
    }
    void UserControl_ReadProperties(const PropertyBag& bag) override
    {
        setAllowAdd(bag.ReadProperty(QStringLiteral("AllowAdd"), false).toBool());
        setLimit(bag.ReadProperty(QStringLiteral("Limit"), qint32(0)).toInt());
    }

    bool failOnResize = false;
    int allowAddWrites = 0;

protected:
    void UserControl_Resize() override
    {
        ErrorPath::run(Procedure::untraced(this, QStringLiteral("UserControl_Resize()")),
                       Ending::propagate(), [this] {
                           if (failOnResize)
                               throw ZebObjects::Failure(5, QStringLiteral("ctlSample"),
                                                         QStringLiteral("Invalid procedure call"));
                       });
    }

private:
    QLabel* m_entry = nullptr;
    bool m_allowAdd = false;
    qint32 m_limit = 0;
};
}  // namespace ZebSubCtl

class tst_UserControl : public QObject {
    Q_OBJECT
private slots:
    void freshControlReadsEveryFlagFalseAndNumbersZero();
    void freshControlSavesNothing();
    void bagMissingOneKeyRestoresThatOneToItsDefault();
    void restoringAFlagRunsTheSameWriteProcedureAsSettingIt();
    void saveAndRestoreRoundTripThroughJson();
    void propertyChangeMarkIsObservable();
    void nameIsTheBareClassName();
    void controlsUseTheEightPointDesignFont();
    void failureOutOfTheResizeHandlerEndsAtTheLastResortHook();
};

void tst_UserControl::freshControlReadsEveryFlagFalseAndNumbersZero()
{
    ctlSample c;
    QCOMPARE(c.AllowAdd(), false);
    QCOMPARE(c.Limit(), 0);
}

void tst_UserControl::freshControlSavesNothing()
{
    ctlSample c;
    PropertyBag bag;
    c.UserControl_WriteProperties(bag);
    QVERIFY(bag.isEmpty());
}

void tst_UserControl::bagMissingOneKeyRestoresThatOneToItsDefault()
{
    ctlSample c;
    c.setAllowAdd(true);
    c.setLimit(9);
    const PropertyBag bag = PropertyBag::fromJson("{\"Limit\": 12}");
    c.UserControl_ReadProperties(bag);
    QCOMPARE(c.AllowAdd(), false);
    QCOMPARE(c.Limit(), 12);
}

void tst_UserControl::restoringAFlagRunsTheSameWriteProcedureAsSettingIt()
{
    ctlSample atRunTime;
    atRunTime.setAllowAdd(true);

    ctlSample restored;
    restored.UserControl_ReadProperties(PropertyBag::fromJson("{\"AllowAdd\": true}"));

    auto* a = atRunTime.findChild<QLabel*>(QStringLiteral("lblEntry"));
    auto* b = restored.findChild<QLabel*>(QStringLiteral("lblEntry"));
    QCOMPARE(b->isVisibleTo(&restored), a->isVisibleTo(&atRunTime));
    QVERIFY(b->isVisibleTo(&restored));
    QCOMPARE(restored.allowAddWrites, 1);
    QVERIFY(restored.isPropertyChanged(QStringLiteral("AllowAdd")));
}

void tst_UserControl::saveAndRestoreRoundTripThroughJson()
{
    ctlSample c;
    c.setAllowAdd(true);
    c.setLimit(-4);
    PropertyBag bag;
    c.UserControl_WriteProperties(bag);
    ctlSample d;
    d.UserControl_ReadProperties(PropertyBag::fromJson(bag.toJson()));
    QCOMPARE(d.AllowAdd(), true);
    QCOMPARE(d.Limit(), -4);
}

void tst_UserControl::propertyChangeMarkIsObservable()
{
    ctlSample c;
    QSignalSpy spy(&c, &UserControl::propertyChanged);
    c.setLimit(3);
    QCOMPARE(spy.count(), 1);
    QCOMPARE(spy.at(0).at(0).toString(), QStringLiteral("Limit"));
    QCOMPARE(c.changedProperties(), QStringList{QStringLiteral("Limit")});
    c.clearPropertyChanged();
    QVERIFY(!c.isPropertyChanged(QStringLiteral("Limit")));
}

void tst_UserControl::controlsUseTheEightPointDesignFont()
{
    QWidget host;
    QFont large = host.font();
    large.setPointSize(14);
    host.setFont(large);
    auto* c = new ctlSample(&host);
    QCOMPARE(c->font().pointSize(), 8);
    QCOMPARE(c->findChild<QLabel*>(QStringLiteral("lblEntry"))->font().pointSize(), 8);
}

void tst_UserControl::nameIsTheBareClassName()
{
    ctlSample c;
    QCOMPARE(c.Name(), QStringLiteral("ctlSample"));
}

void tst_UserControl::failureOutOfTheResizeHandlerEndsAtTheLastResortHook()
{
    ZebTest::Harness h;
    ctlSample c;
    c.failOnResize = true;
    c.resize(200, 100);
    c.show();
    QVERIFY(QTest::qWaitForWindowExposed(&c));
    c.resize(300, 120);
    QVERIFY(!h.lastResort().isEmpty());
    QCOMPARE(h.lastResort().last().Number, 5);
    QCOMPARE(h.log().failureLines().last(),
             QStringLiteral("LogError|ctlSample|UserControl_Resize()|5|ctlSample|"
                            "Invalid procedure call|0"));
}

QTEST_MAIN(tst_UserControl)
#include "tst_usercontrol.moc"
