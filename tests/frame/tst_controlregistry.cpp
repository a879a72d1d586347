#include "contracts/failure.h"
#include "frame/controlregistry.h"
#include "frame/libraryinfo.h"
#include "frame/usercontrol.h"

#include <QTest>

using namespace ZebSubCtl;

namespace ZebSubCtl {
class ctlRegistryProbe : public UserControl {
    Q_OBJECT
public:
    using UserControl::UserControl;
};
ZEB_REGISTER_CONTROL(ctlRegistryProbe)
}  // namespace ZebSubCtl

class tst_ControlRegistry : public QObject {
    Q_OBJECT
private slots:
    void identifierIsLibraryNameDotControlName();
    void registeredControlIsListedAndCreatedByIdentifier();
    void unknownIdentifierFailsClearly();
    void identifiersAreSorted();
    void libraryIdentity();
    void registeredControlsClassIsKnownWithoutMakingOne();
};

void tst_ControlRegistry::identifierIsLibraryNameDotControlName()
{
    QCOMPARE(ControlRegistry::identifierFor(QStringLiteral("ctlTextSelect")),
             QStringLiteral("ZebSubmittalControls.ctlTextSelect"));
}

void tst_ControlRegistry::registeredControlIsListedAndCreatedByIdentifier()
{
    const QString id = QStringLiteral("ZebSubmittalControls.ctlRegistryProbe");
    QVERIFY(ControlRegistry::instance().identifiers().contains(id));
    QVERIFY(ControlRegistry::instance().contains(id));
    QWidget parent;
    UserControl* c = ControlRegistry::instance().create(id, &parent);
    QVERIFY(qobject_cast<ctlRegistryProbe*>(c));
    QCOMPARE(c->parent(), &parent);
    QCOMPARE(c->Name(), QStringLiteral("ctlRegistryProbe"));
}

void tst_ControlRegistry::unknownIdentifierFailsClearly()
{
    try {
        ControlRegistry::instance().create(QStringLiteral("ZebSubmittalControls.ctlNoSuch"));
        QFAIL("created");
    } catch (const ZebObjects::Failure& f) {
        QCOMPARE(f.Number(), 429);
        QCOMPARE(f.Description(), QStringLiteral("Cannot create control: no control is registered "
                                                 "as \"ZebSubmittalControls.ctlNoSuch\""));
    }
}

void tst_ControlRegistry::identifiersAreSorted()
{
    QStringList ids = ControlRegistry::instance().identifiers();
    QStringList sorted = ids;
    sorted.sort();
    QCOMPARE(ids, sorted);
}

void tst_ControlRegistry::libraryIdentity()
{
    QCOMPARE(LibraryInfo::Name(), QStringLiteral("ZebSubmittalControls"));
    QCOMPARE(LibraryInfo::InternalName(), QStringLiteral("ZebSubCtl"));
    QCOMPARE(LibraryInfo::Description(), QStringLiteral("Varnholt Quenza Submittal Controls"));
    QCOMPARE(LibraryInfo::Version(), QStringLiteral("4.09.0040"));
}

void tst_ControlRegistry::registeredControlsClassIsKnownWithoutMakingOne()
{
    const QString id = QStringLiteral("ZebSubmittalControls.ctlRegistryProbe");
    QCOMPARE(ControlRegistry::instance().metaObject(id), &ctlRegistryProbe::staticMetaObject);
    QCOMPARE(
        ControlRegistry::instance().metaObject(QStringLiteral("ZebSubmittalControls.ctlNoSuch")),
        nullptr);
}

QTEST_MAIN(tst_ControlRegistry)
#include "tst_controlregistry.moc"
