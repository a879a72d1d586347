#pragma once

#include "zebsubctl_export.h"

#include "frame/propertybag.h"

#include <QSet>
#include <QString>
#include <QWidget>

namespace ZebSubCtl {

/// The common base of the library's controls: a name, the save and restore handlers over the
/// host's property bag, the persistence mark, and a resize handler that never lets a failure
/// reach Qt's event loop.
class ZEBSUBCTL_EXPORT UserControl : public QWidget {
    Q_OBJECT
public:
    /// Creates the control as a child of parent.
    explicit UserControl(QWidget* parent = nullptr);
    ~UserControl() override;

    /// The component's name: its bare class name ("ctlTextSelect").
    QString Name() const;

    /// Writes each persisted property under its key with its default (key order is the
    /// control's own). The base persists nothing.
    virtual void UserControl_WriteProperties(PropertyBag& bag);
    /// Reads each persisted property and assigns it through its own setter.
    virtual void UserControl_ReadProperties(const PropertyBag& bag);

    /// The persistence mark: properties changed since the host last cleared the marks.
    bool isPropertyChanged(const QString& name) const;
    /// The properties marked since the last clearPropertyChanged(), in no particular order.
    QStringList changedProperties() const;
    /// Clears every persistence mark, after the host has saved the design.
    void clearPropertyChanged();

    /// The inner size in the control's scale units (pixels).
    int ScaleWidth() const { return width(); }
    /// The inner height in pixels.
    int ScaleHeight() const { return height(); }

signals:
    /// Raised each time a property is marked as changed for persistence.
    void propertyChanged(const QString& name);

protected:
    /// Marks a property as changed so that the host saves the design again.
    void PropertyChanged(const QString& name);
    /// The control's own layout; runs on every resize.
    virtual void UserControl_Resize();
    /// Runs UserControl_Resize(); a failure that leaves it ends at the last-resort hook.
    void resizeEvent(QResizeEvent* event) override;

private:
    QSet<QString> m_changed;
};

}  // namespace ZebSubCtl
