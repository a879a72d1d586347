#pragma once

#include "zebsubctl_export.h"

namespace ZebSubCtl {

// Page tabs as a screen reader expects them: the open page's tab is "selected" (and "focused"
// only while the tab bar has the focus), each tab can be chosen by the reader's press action.
// Applies to every QTabBar made after the call; calling it again does nothing.
ZEBSUBCTL_EXPORT void installTabBarAccessibility();

}  // namespace ZebSubCtl
