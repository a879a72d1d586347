#pragma once

#include "zebsubctl_export.h"

#include <QRadioButton>

namespace ZebSubCtl {

class OptionGroup;

// An option button with the value semantics the controls rely on. selected() is the button's
// click notification: it runs when the button becomes selected, the same whether the user
// clicked it, moved onto it with an arrow key or code set its value, and never when the button
// is cleared or set to the value it already has. Code may select a disabled button; the user
// cannot. Buttons outside an OptionGroup are exclusive among their siblings.
class ZEBSUBCTL_EXPORT OptionButton : public QRadioButton {
    Q_OBJECT
    Q_PROPERTY(bool Value READ value WRITE setValue NOTIFY valueChanged USER true)
public:
    explicit OptionButton(QWidget* parent = nullptr);
    explicit OptionButton(const QString& text, QWidget* parent = nullptr);
    ~OptionButton() override;

    bool value() const { return isChecked(); }
    // Selecting clears the other buttons of the group; clearing leaves the group with none.
    void setValue(bool value);

    // The group this button belongs to, or nullptr.
    OptionGroup* group() const { return m_group; }

signals:
    void selected();
    // Every change of the value, selected or cleared: the property's notify signal.
    void valueChanged(bool value);

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    friend class OptionGroup;
    OptionGroup* m_group = nullptr;
};

}  // namespace ZebSubCtl
