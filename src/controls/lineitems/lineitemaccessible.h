#pragma once

#include "zebsubctl_export.h"

#include <QString>

class QWidget;

namespace ZebSubCtl {

class ctlSubLine;

// What a screen reader hears of the line items. Everything is worked out when it is asked for,
// from what the rows already show, so the rows carry nothing extra for it:
// - a row is a list item named "Line n" whose description reads the whole line, and that says
//   it is not showing while it is scrolled out of the window;
// - its check box says which line it selects;
// - its texts are labelled by the matching column heading;
// - the viewer's scroll bar reads in lines ("line 12 of 744").
class ZEBSUBCTL_EXPORT LineItemAccess {
public:
    // Makes the above apply; the rows and the viewer call it as they are made.
    static void install();

    // "Line 1: 24 of type A, Varnholt VH-2X4-LP-40L-35K-DIM, group LVL1, made to order, has a
    // comment".
    static QString lineReading(const ctlSubLine* row);
    // "24 of type A, Varnholt VH-2X4-LP-40L-35K-DIM": what the row's check box selects.
    static QString lineSummary(const ctlSubLine* row);
    // Whether the row's texts are all made (a reader may ask while the row is being built).
    static bool isBuilt(const ctlSubLine* row);
    // Whether any of the row shows in the window that clips its list.
    static bool rowShowing(const QWidget* row);
    // The heading over a row's text, or null.
    static QWidget* headingOf(const QWidget* rowLabel);
};

}  // namespace ZebSubCtl
