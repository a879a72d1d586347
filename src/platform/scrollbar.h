#pragma once

#include "zebsubctl_export.h"

#include <QScrollBar>

namespace ZebSubCtl {

// A vertical scroll bar with the settings the controls rely on: value, minimum, maximum, small
// and large change, all 16-bit. changed() is the change notification: it runs once for every
// change of the value, whether the user moved the bar (arrow, trough, drag, wheel, key) or code
// set it, and also when a lowered maximum (or raised minimum) pulls the value back into range.
// A value outside the range, or a change step outside 1..32767, fails with 380.
class ZEBSUBCTL_EXPORT ScrollBar : public QScrollBar {
    Q_OBJECT
    Q_PROPERTY(int Value READ Value WRITE setValueChecked NOTIFY valueChanged USER true)
    Q_PROPERTY(int Min READ Min WRITE setMin)
    Q_PROPERTY(int Max READ Max WRITE setMax)
    Q_PROPERTY(int SmallChange READ SmallChange WRITE setSmallChange)
    Q_PROPERTY(int LargeChange READ LargeChange WRITE setLargeChange)
public:
    explicit ScrollBar(QWidget* parent = nullptr);
    ~ScrollBar() override;

    int Value() const { return value(); }
    void setValueChecked(int value);
    int Min() const { return minimum(); }
    void setMin(int min);
    int Max() const { return maximum(); }
    void setMax(int max);
    int SmallChange() const { return singleStep(); }
    void setSmallChange(int step);
    int LargeChange() const { return pageStep(); }
    void setLargeChange(int step);

signals:
    void changed(int value);
    // The Value property's notify signal. It stands in for QAbstractSlider's own, which a
    // property of this class cannot name, and runs with it.
    void valueChanged(int value);
};

}  // namespace ZebSubCtl
