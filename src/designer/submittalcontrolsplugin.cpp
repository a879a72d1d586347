#include "designer/submittalcontrolsplugin.h"

#include "designer/controlwidgetplugin.h"
#include "frame/controlregistry.h"

namespace ZebSubCtl {

SubmittalControlsPlugin::SubmittalControlsPlugin(QObject* parent) : QObject(parent)
{
    const ControlRegistry& registry = ControlRegistry::instance();
    for (const QString& identifier : registry.identifiers())
        m_widgets.append(new ControlWidgetPlugin(identifier, this));
}

QList<QDesignerCustomWidgetInterface*> SubmittalControlsPlugin::customWidgets() const
{
    return m_widgets;
}

}  // namespace ZebSubCtl
