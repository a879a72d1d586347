#include "platform/optionbutton.h"

#include "platform/optiongroup.h"

#include <QButtonGroup>
#include <QKeyEvent>

namespace ZebSubCtl {

OptionButton::OptionButton(QWidget* parent) : OptionButton(QString(), parent) { }

OptionButton::OptionButton(const QString& text, QWidget* parent) : QRadioButton(text, parent)
{
    connect(this, &QAbstractButton::toggled, this, [this](bool checked) {
        if (checked)
            emit selected();
        emit valueChanged(checked);
    });
}

OptionButton::~OptionButton() = default;

void OptionButton::setValue(bool value)
{
    if (value == isChecked())
        return;
    if (value) {
        setChecked(true);
        return;
    }
    // An exclusive group refuses to clear its selected button; code may leave none selected.
    if (m_group) {
        QButtonGroup* group = m_group->buttonGroup();
        group->setExclusive(false);
        setChecked(false);
        group->setExclusive(true);
    } else {
        const bool exclusive = autoExclusive();
        setAutoExclusive(false);
        setChecked(false);
        setAutoExclusive(exclusive);
    }
}

void OptionButton::keyPressEvent(QKeyEvent* event)
{
    if (m_group && (event->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier) {
        switch (event->key()) {
        case Qt::Key_Up:
        case Qt::Key_Left:
            m_group->step(this, false);
            event->accept();
            return;
        case Qt::Key_Down:
        case Qt::Key_Right:
            m_group->step(this, true);
            event->accept();
            return;
        default: break;
        }
    }
    QRadioButton::keyPressEvent(event);
}

}  // namespace ZebSubCtl
