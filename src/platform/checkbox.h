#pragma once

#include "zebsubctl_export.h"

#include <QCheckBox>

namespace ZebSubCtl {

// A check box with the value semantics the controls rely on: value 0 (unticked), 1 (ticked) or
// 2 (grey). valueChanged() is the box's click notification: it runs when the value really
// changes, the same whether the user clicked or code set the value, and never when code sets the
// value it already has. A user click ticks any box that is not ticked and unticks a ticked one.
class ZEBSUBCTL_EXPORT CheckBox : public QCheckBox {
    Q_OBJECT
    // valueChanged is also the notify signal, so bindings and item mappers follow the box.
    Q_PROPERTY(int Value READ value WRITE setValue NOTIFY valueChanged USER true)
public:
    explicit CheckBox(QWidget* parent = nullptr);
    explicit CheckBox(const QString& text, QWidget* parent = nullptr);
    ~CheckBox() override;

    int value() const;
    // A value other than 0, 1 or 2 fails with 380.
    void setValue(int value);

signals:
    void valueChanged(int value);

protected:
    void nextCheckState() override;
};

}  // namespace ZebSubCtl
