#pragma once

#include "zebsubctl_export.h"

#include <QtGlobal>
#include <qnamespace.h>

namespace ZebSubCtl {

// The host's key codes, as key-down and key-up handlers receive them: Enter is 13 whether it
// comes from the main keyboard or the keypad, letters are their capitals' codes.
namespace KeyCode {
inline constexpr qint16 Back = 8;
inline constexpr qint16 Tab = 9;
inline constexpr qint16 Return = 13;
inline constexpr qint16 Shift = 16;
inline constexpr qint16 Control = 17;
inline constexpr qint16 Menu = 18;
inline constexpr qint16 Escape = 27;
inline constexpr qint16 Space = 32;
inline constexpr qint16 PageUp = 33;
inline constexpr qint16 PageDown = 34;
inline constexpr qint16 End = 35;
inline constexpr qint16 Home = 36;
inline constexpr qint16 Left = 37;
inline constexpr qint16 Up = 38;
inline constexpr qint16 Right = 39;
inline constexpr qint16 Down = 40;
inline constexpr qint16 Insert = 45;
inline constexpr qint16 Delete = 46;
inline constexpr qint16 F1 = 112;
}  // namespace KeyCode

// The shift argument beside a key code: 1 Shift, 2 Ctrl, 4 Alt, added together.
namespace ShiftMask {
inline constexpr qint16 Shift = 1;
inline constexpr qint16 Ctrl = 2;
inline constexpr qint16 Alt = 4;
}  // namespace ShiftMask

// The host's code for a Qt key (Qt::Key), 0 for a key that has none.
ZEBSUBCTL_EXPORT qint16 hostKeyCode(int qtKey);
ZEBSUBCTL_EXPORT qint16 hostShift(Qt::KeyboardModifiers modifiers);

}  // namespace ZebSubCtl
