#pragma once

#include <QLatin1String>
#include <QRect>
#include <QWidget>

#include <utility>

namespace ZebSubCtl {

// Makes one of a control's child widgets: constructed with args and the parent last, named for
// findChild and screen readers' fallbacks, and put at its design place (a null place leaves it
// where the widget puts itself).
template <class W, class... Args>
W* makeChild(QWidget* parent, const char* name, const QRect& place, Args&&... args)
{
    auto* child = new W(std::forward<Args>(args)..., parent);
    child->setObjectName(QLatin1String(name));
    if (!place.isNull())
        child->setGeometry(place);
    return child;
}

}  // namespace ZebSubCtl
