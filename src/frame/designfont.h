#pragma once

#include "zebsubctl_export.h"

#include <QFont>

namespace ZebSubCtl {

// The face the controls' and dialogs' design places are laid out for: 8 points, with Arial's
// widths. Wider or larger host fonts would clip captions.
ZEBSUBCTL_EXPORT QFont designFont(const QFont& base);

}  // namespace ZebSubCtl
