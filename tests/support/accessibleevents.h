#pragma once

#include <QAccessible>
#include <QList>
#include <QPointer>
#include <QString>

namespace ZebTest {

// Turns Qt's accessibility on (as a screen reader does) and records every accessibility event
// while it lives: its type, the object, the child, the name of what it is about and, for a state
// change, which states changed.
class AccessibleEvents {
public:
    struct Event {
        QAccessible::Event type;
        QPointer<QObject> object;
        int child;
        QString name;
        QAccessible::State changed;
    };

    AccessibleEvents();
    ~AccessibleEvents();
    AccessibleEvents(const AccessibleEvents&) = delete;
    AccessibleEvents& operator=(const AccessibleEvents&) = delete;

    const QList<Event>& events() const { return m_events; }
    void clear() { m_events.clear(); }
    // The events of one type, as "name" texts in the order they came.
    QStringList names(QAccessible::Event type) const;
    // The names of the objects whose checked state changed.
    QStringList checkChanges() const;

private:
    static void handle(QAccessibleEvent* event);
    QList<Event> m_events;
};

}  // namespace ZebTest
