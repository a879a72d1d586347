#pragma once

#include <QFont>

namespace ZebSubCtl {

// The face the controls' and dialogs' design places are laid out for: 8 points, with Arial's
// widths. Wider or larger host fonts would clip captions.
QFont designFont(const QFont& base);

}  // namespace ZebSubCtl
