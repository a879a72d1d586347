#pragma once

#include "zebsubctl_export.h"

#include <QList>
#include <QString>

class QWidget;

namespace ZebSubCtl {

// Named groupings for screen readers ("Submittal Purpose" holding its eight options) without
// moving any widget: the panel's children stay where they are, and only the accessibility tree
// shows the members under a grouping named by the heading above them.
//
// A panel calls declareGroupedPanel(this) first thing in its constructor (before anything asks
// for its accessible interface), and groupForScreenReaders() once the members exist. Members are
// the panel's own check boxes and option buttons.
ZEBSUBCTL_EXPORT void declareGroupedPanel(QWidget* panel);
ZEBSUBCTL_EXPORT void groupForScreenReaders(QWidget* panel, const QString& name,
                                            const QList<QWidget*>& members);

}  // namespace ZebSubCtl
