#include "support/accessibleevents.h"

#include <QtGui/private/qguiapplication_p.h>
#include <QtGui/qpa/qplatformaccessibility.h>
#include <QtGui/qpa/qplatformintegration.h>

namespace ZebTest {

namespace {
AccessibleEvents* g_recorder = nullptr;

void setActive(bool active)
{
    // The offscreen platform has no screen reader to switch accessibility on; do what it would.
    if (QPlatformIntegration* integration = QGuiApplicationPrivate::platformIntegration())
        if (QPlatformAccessibility* accessibility = integration->accessibility())
            accessibility->setActive(active);
}
}  // namespace

AccessibleEvents::AccessibleEvents()
{
    g_recorder = this;
    QAccessible::installUpdateHandler(&AccessibleEvents::handle);
    setActive(true);
}

AccessibleEvents::~AccessibleEvents()
{
    setActive(false);
    QAccessible::installUpdateHandler(nullptr);
    g_recorder = nullptr;
}

void AccessibleEvents::handle(QAccessibleEvent* event)
{
    if (!g_recorder)
        return;
    Event e{event->type(), event->object(), event->child(), QString(), {}};
    if (QAccessibleInterface* iface = event->accessibleInterface())
        e.name = iface->text(QAccessible::Name);
    if (event->type() == QAccessible::StateChanged)
        e.changed = static_cast<QAccessibleStateChangeEvent*>(event)->changedStates();
    g_recorder->m_events.append(e);
}

QStringList AccessibleEvents::names(QAccessible::Event type) const
{
    QStringList out;
    for (const Event& e : m_events)
        if (e.type == type)
            out.append(e.name);
    return out;
}

QStringList AccessibleEvents::checkChanges() const
{
    QStringList out;
    for (const Event& e : m_events)
        if (e.type == QAccessible::StateChanged && e.changed.checked)
            out.append(e.name);
    return out;
}

}  // namespace ZebTest
