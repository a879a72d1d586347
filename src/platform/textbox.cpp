#include "platform/textbox.h"

#include <QKeyEvent>

namespace ZebSubCtl {

TextBox::TextBox(QWidget* parent) : QLineEdit(parent)
{
    connect(this, &QLineEdit::textChanged, this, [this] { emit changed(); });
    connect(this, &QLineEdit::textChanged, this, &TextBox::textChanged);
}

TextBox::~TextBox() = default;

void TextBox::keyReleaseEvent(QKeyEvent* event)
{
    QLineEdit::keyReleaseEvent(event);
    // A held key repeats its press, but is released once.
    if (!event->isAutoRepeat())
        emit keyUp(event->key(), event->modifiers());
}

}  // namespace ZebSubCtl
