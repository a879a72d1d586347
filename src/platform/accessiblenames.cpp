#include "platform/accessiblenames.h"

#include <QAbstractScrollArea>
#include <QScrollBar>

namespace ZebSubCtl {

void nameScrollBars(QAbstractScrollArea* area)
{
    area->verticalScrollBar()->setAccessibleName(QStringLiteral("Vertical scroll bar"));
    area->verticalScrollBar()->setAccessibleDescription(
        QStringLiteral("Scrolls the contents up and down."));
    area->horizontalScrollBar()->setAccessibleName(QStringLiteral("Horizontal scroll bar"));
    area->horizontalScrollBar()->setAccessibleDescription(
        QStringLiteral("Scrolls the contents left and right."));
}

}  // namespace ZebSubCtl
