#pragma once

#include "zebsubctl_export.h"

namespace ZebSubCtl {

// The date editor as a screen reader meets it: a combo box whose value is the date in words,
// its calendar window named after the field and found under it, the calendar's columns headed by
// the weekdays and each day named with its month and year ("Saturday, November 21, 2026").
// Called by every DateEdit as it is made.
ZEBSUBCTL_EXPORT void installDateEditAccessibility();

}  // namespace ZebSubCtl
