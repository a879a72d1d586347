#include "platform/scrollbar.h"

#include "contracts/failure.h"

#include <limits>

namespace ZebSubCtl {

namespace {

[[noreturn]] void invalidValue()
{
    throw ZebObjects::Failure::invalidPropertyValue();
}

void check16(int value)
{
    if (value < std::numeric_limits<qint16>::min() || value > std::numeric_limits<qint16>::max())
        invalidValue();
}

void checkStep(int step)
{
    if (step < 1 || step > std::numeric_limits<qint16>::max())
        invalidValue();
}

}  // namespace

ScrollBar::ScrollBar(QWidget* parent) : QScrollBar(Qt::Vertical, parent)
{
    setRange(0, 32767);
    setSingleStep(1);
    setPageStep(1);
    // Reachable by Tab, so the arrow and page keys work without a mouse.
    setFocusPolicy(Qt::StrongFocus);
    connect(this, &QAbstractSlider::valueChanged, this, &ScrollBar::changed);
    connect(this, &QAbstractSlider::valueChanged, this, &ScrollBar::valueChanged);
}

ScrollBar::~ScrollBar() = default;

void ScrollBar::setValueChecked(int value)
{
    if (value < minimum() || value > maximum())
        invalidValue();
    setValue(value);
}

void ScrollBar::setMin(int min)
{
    check16(min);
    // The maximum stays where it is unless it would fall below the minimum.
    setRange(min, qMax(min, maximum()));
}

void ScrollBar::setMax(int max)
{
    check16(max);
    setRange(qMin(minimum(), max), max);
}

void ScrollBar::setSmallChange(int step)
{
    checkStep(step);
    setSingleStep(step);
}

void ScrollBar::setLargeChange(int step)
{
    checkStep(step);
    setPageStep(step);
}

}  // namespace ZebSubCtl
