#pragma once

#include "zebsubctl_export.h"

class QAbstractScrollArea;

namespace ZebSubCtl {

// A screen reader announces a scroll area's bars by name; Qt leaves them unnamed.
ZEBSUBCTL_EXPORT void nameScrollBars(QAbstractScrollArea* area);

}  // namespace ZebSubCtl
