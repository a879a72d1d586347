#include "platform/combobox.h"

#include <QLineEdit>

namespace ZebSubCtl {

ComboBox::ComboBox(QWidget* parent) : QComboBox(parent)
{
    setEditable(true);
    setInsertPolicy(QComboBox::NoInsert);
    setCompleter(nullptr);
    setCurrentIndex(-1);
    connect(lineEdit(), &QLineEdit::textEdited, this, [this] { emit changed(); });
    connect(this, &QComboBox::activated, this, [this] { emit clicked(); });
}

ComboBox::~ComboBox() = default;

QString ComboBox::text() const
{
    return currentText();
}

void ComboBox::setText(const QString& text)
{
    if (text == currentText())
        return;
    setEditText(text);
    emit changed();
}

void ComboBox::AddItem(const QString& item)
{
    // Adding the first entry would otherwise show it as the text.
    const QString shown = currentText();
    const int current = currentIndex();
    addItem(item);
    if (current == -1) {
        setCurrentIndex(-1);
        setEditText(shown);
    }
}

}  // namespace ZebSubCtl
