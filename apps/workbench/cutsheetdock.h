#pragma once

#include <QByteArray>

class Workstation;

// The cut sheet panel of the workstation: docked beside the Line Items page while that page is
// open, bound to the open job, and the package preview it and the File menu open.
class CutSheetDock {
public:
    // Adds the dock, the View menu's "Cut Sheets" and the File menu's "Preview Package...".
    static void install(Workstation& window);
    // Binds the panel to the window's open job (after each open or refresh): at once while the
    // dock shows, else when it is next shown.
    static void bind(Workstation& window);
    // Makes the panel that waits for the dock to show, so that showing it costs no reading; for
    // idle time, once the pages are bound.
    static void prepare(Workstation& window);
    // The job's lines changed: a panel that does not show is read again when the dock shows.
    static void linesChanged(Workstation& window);
    // The package of the open job as Export would write it now: the pre-export check and the
    // progress included; empty when it was cancelled or failed (the failure is shown).
    static QByteArray packageBytes(Workstation& window);
    // Shows the package in the preview, from which it can be exported.
    static void preview(Workstation& window);
};
