#pragma once

// Real input for the sweep's scenarios: clicks, keys and answers to modal windows.

#include "controls/textselect/userinput.h"
#include "frame/propertybag.h"
#include "platform/keyedlistview.h"

#include <QAbstractButton>
#include <QTest>
#include <QWidget>

#include <memory>

namespace ZebSweep {

// A control of type T, shown at its design size and exposed.
template <class T>
std::unique_ptr<QWidget> shown()
{
    auto control = std::make_unique<T>();
    control->show();
    if (!QTest::qWaitForWindowExposed(control.get()))
        qFatal("control not exposed");
    return control;
}

template <class T = QWidget>
T* child(QWidget& root, const char* name)
{
    T* found = root.findChild<T*>(QLatin1String(name));
    if (!found)
        qFatal("no child %s", name);
    return found;
}

inline void click(QWidget& root, const char* name)
{
    QTest::mouseClick(child(root, name), Qt::LeftButton);
}

// A point on a list item's text, away from its check box.
inline QPoint itemPoint(ZebSubCtl::KeyedListView* list, int row)
{
    return QPoint(list->checkBoxRect(row).right() + 40, list->itemRect(row).center().y());
}

inline void clickItem(ZebSubCtl::KeyedListView* list, int row)
{
    if (row < list->count())
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, itemPoint(list, row));
}

inline void tickItem(ZebSubCtl::KeyedListView* list, int row)
{
    if (row < list->count())
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->checkBoxRect(row).center());
}

inline void doubleClickItem(ZebSubCtl::KeyedListView* list, int row)
{
    if (row >= list->count())
        return;
    const QPoint at = itemPoint(list, row);
    QTest::mousePress(list->viewport(), Qt::LeftButton, {}, at);
    QTest::mouseRelease(list->viewport(), Qt::LeftButton, {}, at);
    QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, at);
    QTest::mouseRelease(list->viewport(), Qt::LeftButton, {}, at);
}

// Grows the control a little: Qt delivers the resize at once to a shown widget.
inline void grow(QWidget& control, int dw, int dh)
{
    control.resize(control.width() + dw, control.height() + dh);
}

}  // namespace ZebSweep
