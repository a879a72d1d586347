#pragma once

#include "zebsubctl_export.h"

class QLineEdit;
class QWidget;

namespace ZebSubCtl {

// Links a text box to the caption a user sees for it, where Qt's own buddy link cannot reach: the
// box sits inside another control (the date field's text box) or its caption is no QLabel (the
// box beside the "Other" option). The box reads to a screen reader as before (its name, text,
// caret and selection) and now also as labelled by the caption. Nothing moves and no widget is
// added. Call once both exist; the link ends when either goes.
ZEBSUBCTL_EXPORT void labelForScreenReaders(QLineEdit* box, QWidget* caption);

}  // namespace ZebSubCtl
