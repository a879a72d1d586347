// The Designer plugin and forms: every registered control offered, described and made; only
// the persisted properties designable; a form's design values reach the controls through the
// same setters as the property bag's restore.
#include "controls/customers/ctlcustselect.h"
#include "controls/textselect/ctltextselect.h"
#include "frame/controlregistry.h"
#include "frame/libraryinfo.h"
#include "frame/propertybag.h"
#include "frame/usercontrol.h"
#include "support/testsupport.h"

#include <QAction>
#include <QBuffer>
#include <QDir>
#include <QDomDocument>
#include <QFile>
#include <QFileInfo>
#include <QIcon>
#include <QMap>
#include <QMetaProperty>
#include <QPluginLoader>
#include <QScopeGuard>
#include <QScopedPointer>
#include <QSet>
#include <QtDesigner/QFormBuilder>
#include <QtTest>
#include <QtUiPlugin/QDesignerCustomWidgetCollectionInterface>
#include <QtUiPlugin/QDesignerCustomWidgetInterface>
#include <QUiLoader>

using namespace ZebSubCtl;

namespace {

const QString kPluginDir = QStringLiteral(ZEB_DESIGNER_PLUGIN_DIR);
const QString kForm = QStringLiteral(ZEB_SUBMITTAL_FORM);

// The design values of the test form, by object name; the same values restored from a bag.
struct Placed {
    QString objectName;
    QString identifier;
    QMap<QString, QVariant> design;
};

QList<Placed> placedControls()
{
    auto id = [](const char* name) { return ControlRegistry::identifierFor(QLatin1String(name)); };
    return {
        {"textSelect",
         id("ctlTextSelect"),
         {{"AllowUpdate", true},
          {"AllowReorder", true},
          {"MaxLength", qint32(40)},
          {"TextObjectType", qint32(3)},
          {"AllowSave", true}}},
        {"custSelect", id("ctlCustSelect"), {{"AllowAdd", true}, {"AllowDelete", true}}},
        {"generalInfo", id("ctlGeneralInfo"), {}},
        {"cvrLtrCriteria", id("ctlCvrLtrCriteria"), {}},
        {"bomCriteria", id("ctlBOMCriteria"), {}},
        {"labelCriteria", id("ctlLabelCriteria"), {}},
        {"subLine", id("ctlSubLine"), {}},
        {"subLines", id("ctlSubLines"), {}},
        {"subLineDsp", id("ctlSubLineDsp"), {}},
    };
}

// The properties a host's design keeps, per control.
QMap<QString, QSet<QString>> persistedProperties()
{
    QMap<QString, QSet<QString>> expected;
    for (const QString& identifier : ControlRegistry::instance().identifiers())
        expected.insert(identifier, {});
    expected[ControlRegistry::identifierFor(QStringLiteral("ctlTextSelect"))] = {
        "AllowUpdate", "AllowReorder", "MaxLength", "TextObjectType", "AllowSave"};
    expected[ControlRegistry::identifierFor(QStringLiteral("ctlCustSelect"))] = {"AllowAdd",
                                                                                 "AllowDelete"};
    return expected;
}

// The control's own properties (not QWidget's) that Designer's property editor offers.
QSet<QString> designableOwnProperties(const QMetaObject* meta)
{
    QSet<QString> names;
    for (int i = UserControl::staticMetaObject.propertyCount(); i < meta->propertyCount(); ++i) {
        const QMetaProperty property = meta->property(i);
        if (property.isDesignable())
            names.insert(QString::fromLatin1(property.name()));
    }
    return names;
}

QString identifierOf(const QDesignerCustomWidgetInterface* widget)
{
    const QString prefix = LibraryInfo::InternalName() + QStringLiteral("::");
    if (!widget->name().startsWith(prefix))
        return {};
    return ControlRegistry::identifierFor(widget->name().mid(prefix.size()));
}

// What a person sees of a control: every child's visibility, enabled state and place, its
// actions' enabled state and the persistence marks.
QStringList visibleState(UserControl* control)
{
    QStringList state;
    const QList<QWidget*> children = control->findChildren<QWidget*>();
    for (QWidget* child : children) {
        if (child->objectName().isEmpty() || child->isWindow())
            continue;
        const QRect r = child->geometry();
        state << QStringLiteral("%1 visible=%2 enabled=%3 at %4,%5 %6x%7")
                     .arg(child->objectName())
                     .arg(child->isVisibleTo(control))
                     .arg(child->isEnabled())
                     .arg(r.x())
                     .arg(r.y())
                     .arg(r.width())
                     .arg(r.height());
    }
    const QList<QAction*> actions = control->findChildren<QAction*>();
    for (QAction* action : actions) {
        if (!action->objectName().isEmpty())
            state << QStringLiteral("%1 enabled=%2")
                         .arg(action->objectName())
                         .arg(action->isEnabled());
    }
    QStringList changed = control->changedProperties();
    changed.sort();
    state << QStringLiteral("changed: ") + changed.join(QLatin1Char(','));
    state.sort();
    return state;
}

PropertyBag savedDesign(UserControl* control)
{
    PropertyBag bag;
    control->UserControl_WriteProperties(bag);
    return bag;
}

// Saves a form as Designer does: a control's own widgets are not part of the form.
class FormWriter : public QFormBuilder {
protected:
    using QFormBuilder::createDom;
    DomWidget* createDom(QWidget* widget, DomWidget* parent, bool recursive) override
    {
        return QFormBuilder::createDom(widget, parent,
                                       recursive && !qobject_cast<UserControl*>(widget));
    }
};

}  // namespace

class tst_DesignerPlugin : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void pluginListsEveryRegisteredControl();
    void entriesCarryGroupIconTextsAndInclude();
    void pluginCreatesEachControl();
    void newControlOnFormTakesItsDesignSize();
    void onlyPersistedPropertiesAreDesignable();
    void designablePropertiesStartAtTheirDefaults();
    void designablePropertiesAreWhatTheBagSaves();
    void businessObjectPropertiesAreNotDesignable();
    void uiLoaderFindsTheControlsThroughThePlugin();
    void uiLoaderFormAppliesDesignValuesLikeTheBag();
    void formSavedAndLoadedAgainKeepsDesignValues();
    void formMaxLengthTakesTheSameSetterAsCode();
    void formMaxLengthBeyondSixteenBitsIsReportedAndLeavesTheLength();

private:
    QDesignerCustomWidgetCollectionInterface* collection();

    QScopedPointer<QPluginLoader> m_loader;
    QScopedPointer<ZebTest::Harness> m_harness;
};

void tst_DesignerPlugin::init()
{
    m_harness.reset(new ZebTest::Harness);
}

void tst_DesignerPlugin::cleanup()
{
    m_harness.reset();
}

QDesignerCustomWidgetCollectionInterface* tst_DesignerPlugin::collection()
{
    if (!m_loader) {
        const QDir dir(kPluginDir);
        const QStringList files =
            dir.entryList({QStringLiteral("*zebsubctl_designer*")}, QDir::Files);
        if (files.size() != 1)
            return nullptr;
        m_loader.reset(new QPluginLoader(dir.filePath(files.first())));
    }
    QObject* instance = m_loader->instance();
    if (!instance)
        qWarning("%s", qPrintable(m_loader->errorString()));
    return qobject_cast<QDesignerCustomWidgetCollectionInterface*>(instance);
}

void tst_DesignerPlugin::pluginListsEveryRegisteredControl()
{
    QDesignerCustomWidgetCollectionInterface* plugin = collection();
    QVERIFY2(plugin, "the plugin loads and is a custom widget collection");
    QStringList offered;
    for (QDesignerCustomWidgetInterface* widget : plugin->customWidgets())
        offered << identifierOf(widget);
    offered.sort();
    QCOMPARE(offered, ControlRegistry::instance().identifiers());
    // The nine controls of the library are all there.
    for (const Placed& placed : placedControls())
        QVERIFY2(offered.contains(placed.identifier), qPrintable(placed.identifier));
}

void tst_DesignerPlugin::entriesCarryGroupIconTextsAndInclude()
{
    QDesignerCustomWidgetCollectionInterface* plugin = collection();
    QVERIFY(plugin);
    for (QDesignerCustomWidgetInterface* widget : plugin->customWidgets()) {
        const QByteArray name = widget->name().toLatin1();
        QCOMPARE(widget->group(), QStringLiteral("Submittal Controls"));
        QVERIFY2(!widget->icon().isNull(), name);
        QVERIFY2(!widget->icon().pixmap(22, 22).isNull(), name);
        QVERIFY2(widget->toolTip().size() > 10, name);
        QVERIFY2(widget->whatsThis().size() > widget->toolTip().size(), name);
        // The What's This text names the control it describes.
        QVERIFY2(widget->whatsThis().contains(widget->name().section(QStringLiteral("::"), 1)),
                 name);
        QVERIFY2(!widget->isContainer(), name);
        // The include file is the control's own public header.
        const QFileInfo header(QStringLiteral(ZEB_INCLUDE_ROOT) + QLatin1Char('/')
                               + widget->includeFile());
        QVERIFY2(header.exists(), qPrintable(header.filePath()));
        QFile file(header.filePath());
        QVERIFY(file.open(QIODevice::ReadOnly));
        QVERIFY2(
            file.readAll().contains("class ZEBSUBCTL_EXPORT "
                                    + widget->name().section(QStringLiteral("::"), 1).toLatin1()
                                    + " : public UserControl"),
            name);
    }
}

void tst_DesignerPlugin::pluginCreatesEachControl()
{
    QDesignerCustomWidgetCollectionInterface* plugin = collection();
    QVERIFY(plugin);
    QWidget form;
    for (QDesignerCustomWidgetInterface* widget : plugin->customWidgets()) {
        QWidget* made = widget->createWidget(&form);
        QVERIFY2(made, qPrintable(widget->name()));
        QCOMPARE(made->parentWidget(), &form);
        QCOMPARE(QString::fromLatin1(made->metaObject()->className()), widget->name());
        auto* control = qobject_cast<UserControl*>(made);
        QVERIFY(control);
        QCOMPARE(ControlRegistry::identifierFor(control->Name()), identifierOf(widget));
    }
    QCOMPARE(form.findChildren<UserControl*>(Qt::FindDirectChildrenOnly).size(),
             ControlRegistry::instance().identifiers().size());
}

void tst_DesignerPlugin::newControlOnFormTakesItsDesignSize()
{
    QDesignerCustomWidgetCollectionInterface* plugin = collection();
    QVERIFY(plugin);
    for (QDesignerCustomWidgetInterface* widget : plugin->customWidgets()) {
        QDomDocument dom;
        QVERIFY2(dom.setContent(widget->domXml()), qPrintable(widget->name()));
        const QDomElement ui = dom.documentElement();
        QCOMPARE(ui.tagName(), QStringLiteral("ui"));
        const QString bare = widget->name().section(QStringLiteral("::"), 1);
        QCOMPARE(ui.attribute(QStringLiteral("displayname")), bare);
        const QDomElement element = ui.firstChildElement(QStringLiteral("widget"));
        QCOMPARE(element.attribute(QStringLiteral("class")), widget->name());
        QCOMPARE(element.attribute(QStringLiteral("name")), bare);
        QScopedPointer<UserControl> control(
            ControlRegistry::instance().create(identifierOf(widget)));
        const QDomElement rect = element.firstChildElement(QStringLiteral("property"))
                                     .firstChildElement(QStringLiteral("rect"));
        QCOMPARE(rect.firstChildElement(QStringLiteral("width")).text().toInt(), control->width());
        QCOMPARE(rect.firstChildElement(QStringLiteral("height")).text().toInt(),
                 control->height());
    }
}

void tst_DesignerPlugin::onlyPersistedPropertiesAreDesignable()
{
    const QMap<QString, QSet<QString>> expected = persistedProperties();
    for (auto it = expected.cbegin(); it != expected.cend(); ++it) {
        const QMetaObject* meta = ControlRegistry::instance().metaObject(it.key());
        QVERIFY2(meta, qPrintable(it.key()));
        QCOMPARE(designableOwnProperties(meta), it.value());
    }
}

void tst_DesignerPlugin::designablePropertiesStartAtTheirDefaults()
{
    // A new control saves nothing: every designable property holds its default.
    for (const QString& identifier : ControlRegistry::instance().identifiers()) {
        QScopedPointer<UserControl> control(ControlRegistry::instance().create(identifier));
        QVERIFY2(savedDesign(control.data()).isEmpty(), qPrintable(identifier));
    }
    ctlTextSelect text;
    QCOMPARE(text.property("AllowUpdate"), QVariant(false));
    QCOMPARE(text.property("AllowReorder"), QVariant(false));
    QCOMPARE(text.property("MaxLength").toInt(), 0);
    QCOMPARE(text.property("TextObjectType").toInt(), 0);
    QCOMPARE(text.property("AllowSave"), QVariant(false));
    ctlCustSelect customers;
    QCOMPARE(customers.property("AllowAdd"), QVariant(false));
    QCOMPARE(customers.property("AllowDelete"), QVariant(false));
}

void tst_DesignerPlugin::designablePropertiesAreWhatTheBagSaves()
{
    // Each designable property set away from its default by name is saved under its name.
    for (const QString& identifier : ControlRegistry::instance().identifiers()) {
        const QMetaObject* meta = ControlRegistry::instance().metaObject(identifier);
        for (const QString& name : designableOwnProperties(meta)) {
            QScopedPointer<UserControl> control(ControlRegistry::instance().create(identifier));
            const QVariant before = control->property(qPrintable(name));
            const QVariant changed = before.typeId() == QMetaType::Bool
                                         ? QVariant(!before.toBool())
                                         : QVariant(before.toInt() + 7);
            QVERIFY(control->setProperty(qPrintable(name), changed));
            const PropertyBag bag = savedDesign(control.data());
            QCOMPARE(bag.keys(), QStringList{name});
            QCOMPARE(bag.ReadProperty(name, before).toInt(), changed.toInt());
        }
    }
}

void tst_DesignerPlugin::businessObjectPropertiesAreNotDesignable()
{
    for (const QString& identifier : ControlRegistry::instance().identifiers()) {
        const QMetaObject* meta = ControlRegistry::instance().metaObject(identifier);
        int objects = 0;
        for (int i = UserControl::staticMetaObject.propertyCount(); i < meta->propertyCount();
             ++i) {
            const QMetaProperty property = meta->property(i);
            if (QByteArray(property.typeName()).contains("ZebObjects::")) {
                ++objects;
                QVERIFY2(!property.isDesignable(), property.name());
            }
        }
        // Each control is bound to exactly one business object.
        QVERIFY2(objects == 1, qPrintable(identifier));
    }
}

void tst_DesignerPlugin::uiLoaderFindsTheControlsThroughThePlugin()
{
    QUiLoader loader;
    loader.clearPluginPaths();
    loader.addPluginPath(kPluginDir);
    const QStringList available = loader.availableWidgets();
    for (const QString& identifier : ControlRegistry::instance().identifiers()) {
        const QString className =
            QString::fromLatin1(ControlRegistry::instance().metaObject(identifier)->className());
        QVERIFY2(available.contains(className), qPrintable(className));
    }
}

void tst_DesignerPlugin::uiLoaderFormAppliesDesignValuesLikeTheBag()
{
    QUiLoader loader;
    loader.clearPluginPaths();
    loader.addPluginPath(kPluginDir);
    QFile file(kForm);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QScopedPointer<QWidget> form(loader.load(&file));
    QVERIFY2(form, qPrintable(loader.errorString()));

    for (const Placed& placed : placedControls()) {
        auto* control = form->findChild<UserControl*>(placed.objectName);
        QVERIFY2(control, qPrintable(placed.objectName));
        QCOMPARE(ControlRegistry::identifierFor(control->Name()), placed.identifier);
        for (auto it = placed.design.cbegin(); it != placed.design.cend(); ++it)
            QCOMPARE(control->property(qPrintable(it.key())).toInt(), it.value().toInt());

        // The same values restored from a host's property bag give the same control.
        PropertyBag bag;
        for (auto it = placed.design.cbegin(); it != placed.design.cend(); ++it)
            bag.WriteProperty(it.key(), it.value(),
                              it.value().typeId() == QMetaType::Bool ? QVariant(false)
                                                                     : QVariant(qint32(0)));
        QScopedPointer<UserControl> restored(ControlRegistry::instance().create(placed.identifier));
        restored->resize(control->size());
        restored->UserControl_ReadProperties(bag);
        QCOMPARE(savedDesign(control).toJson(), bag.toJson());
        QCOMPARE(visibleState(control), visibleState(restored.data()));
    }

    // The side effects themselves, as a person sees them.
    auto* text = form->findChild<ctlTextSelect*>(QStringLiteral("textSelect"));
    QVERIFY(text);
    QVERIFY(text->findChild<QWidget*>(QStringLiteral("txtNewComment"))->isVisibleTo(text));
    QVERIFY(text->findChild<QWidget*>(QStringLiteral("cmdAdd"))->isVisibleTo(text));
    QVERIFY(text->isPropertyChanged(QStringLiteral("MaxLength")));
    QCOMPARE(m_harness->lastResort().size(), 0);
}

void tst_DesignerPlugin::formSavedAndLoadedAgainKeepsDesignValues()
{
    // The plain form builder cannot write QWidget's enum properties (Designer's own writer
    // can); those warnings are not about our controls.
    static QtMessageHandler previous = nullptr;
    previous = qInstallMessageHandler(
        [](QtMsgType type, const QMessageLogContext& context, const QString& message) {
            if (message.startsWith(QLatin1String("Designer: The property "))
                && message.contains(QLatin1String("is not supported yet")))
                return;
            previous(type, context, message);
        });
    const auto restoreHandler = qScopeGuard([] { qInstallMessageHandler(previous); });

    // Designer writes forms with the same form builder; load, save, load again.
    FormWriter builder;
    builder.setPluginPath({kPluginDir});
    QFile file(kForm);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QScopedPointer<QWidget> form(builder.load(&file));
    QVERIFY2(form, qPrintable(builder.errorString()));
    QBuffer saved;
    QVERIFY(saved.open(QIODevice::WriteOnly));
    builder.save(&saved, form.data());
    saved.close();
    QVERIFY(
        saved.data().contains("<widget class=\"ZebSubCtl::ctlTextSelect\" name=\"textSelect\""));
    QVERIFY2(!saved.data().contains("cmdAdd"), saved.data().constData());
    QVERIFY(saved.open(QIODevice::ReadOnly));
    QScopedPointer<QWidget> again(builder.load(&saved));
    QVERIFY2(again, qPrintable(builder.errorString()));
    for (const Placed& placed : placedControls()) {
        auto* control = again->findChild<UserControl*>(placed.objectName);
        QVERIFY2(control, qPrintable(placed.objectName));
        for (auto it = placed.design.cbegin(); it != placed.design.cend(); ++it)
            QCOMPARE(control->property(qPrintable(it.key())).toInt(), it.value().toInt());
        auto* original = form->findChild<UserControl*>(placed.objectName);
        QCOMPARE(savedDesign(control).toJson(), savedDesign(original).toJson());
        QCOMPARE(control->findChildren<QWidget*>().size(),
                 original->findChildren<QWidget*>().size());
    }
}

namespace {

QWidget* loadForm(QUiLoader& loader, const QByteArray& controlXml)
{
    QByteArray ui = "<ui version=\"4.0\"><class>F</class>"
                    "<widget class=\"QWidget\" name=\"F\">"
                    + controlXml + "</widget></ui>";
    QBuffer buffer(&ui);
    buffer.open(QIODevice::ReadOnly);
    return loader.load(&buffer);
}

}  // namespace

void tst_DesignerPlugin::formMaxLengthTakesTheSameSetterAsCode()
{
    ctlTextSelect byCode;
    m_harness->log().clear();
    byCode.setMaxLength(12);
    const QStringList codeLog = m_harness->log().lines();
    QVERIFY(!codeLog.isEmpty());

    QUiLoader loader;
    loader.clearPluginPaths();
    loader.addPluginPath(kPluginDir);
    QScopedPointer<QWidget> form(
        loadForm(loader, "<widget class=\"ZebSubCtl::ctlTextSelect\" name=\"t\">"
                         "<property name=\"MaxLength\"><number>12</number></property></widget>"));
    QVERIFY(form);
    auto* text = form->findChild<ctlTextSelect*>(QStringLiteral("t"));
    QVERIFY(text);
    QCOMPARE(text->MaxLength(), qint16(12));
    m_harness->log().clear();
    QVERIFY(text->setProperty("MaxLength", 12));
    QCOMPARE(m_harness->log().lines(), codeLog);
    QVERIFY(m_harness->boxes().shown().isEmpty());
}

void tst_DesignerPlugin::formMaxLengthBeyondSixteenBitsIsReportedAndLeavesTheLength()
{
    QUiLoader loader;
    loader.clearPluginPaths();
    loader.addPluginPath(kPluginDir);
    m_harness->log().clear();
    QScopedPointer<QWidget> form(
        loadForm(loader, "<widget class=\"ZebSubCtl::ctlTextSelect\" name=\"t\">"
                         "<property name=\"MaxLength\"><number>40000</number></property>"
                         "<property name=\"AllowSave\"><bool>true</bool></property></widget>"));
    QVERIFY(form);
    auto* text = form->findChild<ctlTextSelect*>(QStringLiteral("t"));
    QVERIFY(text);
    QCOMPARE(text->MaxLength(), qint16(0));
    // The form goes on: the next design value is still applied.
    QCOMPARE(text->AllowSave(), true);
    QCOMPARE(m_harness->boxes().shown().size(), 1);
    QCOMPARE(m_harness->boxes().shown().first().style, 48);
    QCOMPARE(m_harness->log().failureLines().size(), 1);
    QVERIFY2(m_harness->log().failureLines().first().startsWith(
                 QStringLiteral("LogError|ctlTextSelect|MaxLength() - Property Set|6|")),
             qPrintable(m_harness->log().failureLines().first()));
}

QTEST_MAIN(tst_DesignerPlugin)
#include "tst_designerplugin.moc"
