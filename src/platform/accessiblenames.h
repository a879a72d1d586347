#pragma once

class QAbstractScrollArea;

namespace ZebSubCtl {

// A screen reader announces a scroll area's bars by name; Qt leaves them unnamed.
void nameScrollBars(QAbstractScrollArea* area);

}  // namespace ZebSubCtl
