#include "platform/keycodes.h"

namespace ZebSubCtl {

qint16 hostKeyCode(int qtKey)
{
    if ((qtKey >= Qt::Key_0 && qtKey <= Qt::Key_9) || (qtKey >= Qt::Key_A && qtKey <= Qt::Key_Z))
        return qint16(qtKey);
    if (qtKey >= Qt::Key_F1 && qtKey <= Qt::Key_F24)
        return qint16(KeyCode::F1 + (qtKey - Qt::Key_F1));
    switch (qtKey) {
    case Qt::Key_Backspace: return KeyCode::Back;
    case Qt::Key_Tab:
    case Qt::Key_Backtab: return KeyCode::Tab;
    case Qt::Key_Return:
    case Qt::Key_Enter: return KeyCode::Return;
    case Qt::Key_Shift: return KeyCode::Shift;
    case Qt::Key_Control: return KeyCode::Control;
    case Qt::Key_Alt: return KeyCode::Menu;
    case Qt::Key_Escape: return KeyCode::Escape;
    case Qt::Key_Space: return KeyCode::Space;
    case Qt::Key_PageUp: return KeyCode::PageUp;
    case Qt::Key_PageDown: return KeyCode::PageDown;
    case Qt::Key_End: return KeyCode::End;
    case Qt::Key_Home: return KeyCode::Home;
    case Qt::Key_Left: return KeyCode::Left;
    case Qt::Key_Up: return KeyCode::Up;
    case Qt::Key_Right: return KeyCode::Right;
    case Qt::Key_Down: return KeyCode::Down;
    case Qt::Key_Insert: return KeyCode::Insert;
    case Qt::Key_Delete: return KeyCode::Delete;
    default: return 0;
    }
}

qint16 hostShift(Qt::KeyboardModifiers modifiers)
{
    qint16 shift = 0;
    if (modifiers & Qt::ShiftModifier)
        shift |= ShiftMask::Shift;
    if (modifiers & Qt::ControlModifier)
        shift |= ShiftMask::Ctrl;
    if (modifiers & Qt::AltModifier)
        shift |= ShiftMask::Alt;
    return shift;
}

}  // namespace ZebSubCtl
