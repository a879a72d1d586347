#include "platform/checkbox.h"

#include "contracts/failure.h"

namespace ZebSubCtl {

CheckBox::CheckBox(QWidget* parent) : CheckBox(QString(), parent) { }

CheckBox::CheckBox(const QString& text, QWidget* parent) : QCheckBox(text, parent)
{
    connect(this, &QCheckBox::stateChanged, this, [this] { emit valueChanged(value()); });
}

CheckBox::~CheckBox() = default;

int CheckBox::value() const
{
    switch (checkState()) {
    case Qt::Checked: return 1;
    case Qt::PartiallyChecked: return 2;
    default: return 0;
    }
}

void CheckBox::setValue(int value)
{
    switch (value) {
    case 0: setCheckState(Qt::Unchecked); break;
    case 1: setCheckState(Qt::Checked); break;
    case 2: setCheckState(Qt::PartiallyChecked); break;
    default: throw ZebObjects::Failure::invalidPropertyValue();
    }
}

void CheckBox::nextCheckState()
{
    setCheckState(checkState() == Qt::Checked ? Qt::Unchecked : Qt::Checked);
}

}  // namespace ZebSubCtl
