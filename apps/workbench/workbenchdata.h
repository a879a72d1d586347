#pragma once

#include <QMap>
#include <QString>
#include <QVariant>

namespace ZebObjects {
class StoreJob;
}
namespace ZebSubCtl {
class UserControl;
}

// The business objects the workbench binds its controls to, by name: the stand-alone library's
// sample submittal, or the objects of a job open in the store.
class WorkbenchData {
public:
    WorkbenchData();
    explicit WorkbenchData(ZebObjects::StoreJob& job);

    QStringList names() const { return m_objects.keys(); }
    QVariant object(const QString& name) const { return m_objects.value(name); }
    void add(const QString& name, const QVariant& object) { m_objects.insert(name, object); }
    // Puts a generated job of count lines under "lineItems" in place of the sample's twenty.
    // More than 32,767 lines fail with overflow (6).
    void generateLineItems(int count);

    // Hands the named object to the control's object property (by name, as a host does).
    // An unknown name, or a property that does not take it, fails with 438.
    void bind(ZebSubCtl::UserControl* control, const QString& property, const QString& name);

private:
    QMap<QString, QVariant> m_objects;
};
