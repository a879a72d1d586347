#include "designer/controlwidgetplugin.h"

#include "frame/controlregistry.h"
#include "frame/libraryinfo.h"
#include "frame/usercontrol.h"

#include <QIcon>
#include <QMetaClassInfo>
#include <QMetaObject>
#include <QScopedPointer>
#include <QSize>

namespace ZebSubCtl {

namespace {
const QString kGroup = QStringLiteral("Submittal Controls");
}

ControlWidgetPlugin::ControlWidgetPlugin(const QString& identifier, QObject* parent)
    : QObject(parent), m_identifier(identifier),
      m_metaObject(ControlRegistry::instance().metaObject(identifier))
{ }

QString ControlWidgetPlugin::classInfo(const char* key) const
{
    if (!m_metaObject)
        return {};
    const int index = m_metaObject->indexOfClassInfo(key);
    return index < 0 ? QString() : QString::fromUtf8(m_metaObject->classInfo(index).value());
}

QString ControlWidgetPlugin::bareName() const
{
    return m_identifier.mid(LibraryInfo::Name().size() + 1);
}

// The C++ class name: what the form files and uic's generated code use.
QString ControlWidgetPlugin::name() const
{
    return m_metaObject ? QString::fromLatin1(m_metaObject->className())
                        : LibraryInfo::InternalName() + QStringLiteral("::") + bareName();
}

QString ControlWidgetPlugin::group() const
{
    return kGroup;
}

QIcon ControlWidgetPlugin::icon() const
{
    return QIcon(QStringLiteral(":/designer/control.xpm"));
}

QString ControlWidgetPlugin::toolTip() const
{
    const QString text = classInfo("ToolTip");
    return text.isEmpty() ? bareName() + QStringLiteral(": ") + LibraryInfo::Description() : text;
}

QString ControlWidgetPlugin::whatsThis() const
{
    const QString text = classInfo("WhatsThis");
    return text.isEmpty() ? toolTip() : text;
}

QString ControlWidgetPlugin::includeFile() const
{
    const QString file = classInfo("IncludeFile");
    return file.isEmpty() ? bareName().toLower() + QStringLiteral(".h") : file;
}

bool ControlWidgetPlugin::isContainer() const
{
    return false;
}

QWidget* ControlWidgetPlugin::createWidget(QWidget* parent)
{
    return ControlRegistry::instance().create(m_identifier, parent);
}

bool ControlWidgetPlugin::isInitialized() const
{
    return m_initialized;
}

void ControlWidgetPlugin::initialize(QDesignerFormEditorInterface*)
{
    m_initialized = true;
}

// A new control on a form takes the size it is designed at.
QString ControlWidgetPlugin::domXml() const
{
    QSize size(200, 100);
    {
        QScopedPointer<UserControl> sample(ControlRegistry::instance().create(m_identifier));
        if (sample->width() > 0 && sample->height() > 0)
            size = sample->size();
    }
    return QStringLiteral("<ui language=\"c++\" displayname=\"%1\">\n"
                          " <widget class=\"%2\" name=\"%3\">\n"
                          "  <property name=\"geometry\">\n"
                          "   <rect><x>0</x><y>0</y><width>%4</width><height>%5</height></rect>\n"
                          "  </property>\n"
                          " </widget>\n"
                          "</ui>\n")
        .arg(bareName(), name(), bareName())
        .arg(size.width())
        .arg(size.height());
}

}  // namespace ZebSubCtl
