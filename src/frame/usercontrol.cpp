#include "frame/usercontrol.h"

#include "frame/designfont.h"
#include "frame/errorpath.h"

#include <QResizeEvent>

namespace ZebSubCtl {

UserControl::UserControl(QWidget* parent) : QWidget(parent)
{
    setFont(designFont(font()));
}

UserControl::~UserControl() = default;

QString UserControl::Name() const
{
    return componentName(this);
}

void UserControl::UserControl_WriteProperties(PropertyBag&) { }

void UserControl::UserControl_ReadProperties(const PropertyBag&) { }

bool UserControl::isPropertyChanged(const QString& name) const
{
    return m_changed.contains(name);
}

QStringList UserControl::changedProperties() const
{
    QStringList out(m_changed.begin(), m_changed.end());
    out.sort();
    return out;
}

void UserControl::clearPropertyChanged()
{
    m_changed.clear();
}

void UserControl::PropertyChanged(const QString& name)
{
    m_changed.insert(name);
    emit propertyChanged(name);
}

void UserControl::UserControl_Resize() { }

void UserControl::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    ErrorPath::guardEventLoop([this] { UserControl_Resize(); });
}

}  // namespace ZebSubCtl
