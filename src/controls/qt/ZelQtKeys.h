// Qt key codes as the library's virtual-key codes.
#pragma once

#include <Zel260/controls/ZelVirtualKeys.h>

#include <Qt>

namespace zelcontrols {

inline UINT VirtualKeyFromQt(int key)
{
    if ((key >= Qt::Key_A && key <= Qt::Key_Z) || (key >= Qt::Key_0 && key <= Qt::Key_9))
        return static_cast<UINT>(key); // same codes as ASCII upper case
    if (key >= Qt::Key_F1 && key <= Qt::Key_F24)
        return VK_F1 + static_cast<UINT>(key - Qt::Key_F1);
    switch (key) {
    case Qt::Key_Backspace: return VK_BACK;
    case Qt::Key_Tab:
    case Qt::Key_Backtab: return VK_TAB;
    case Qt::Key_Return:
    case Qt::Key_Enter: return VK_RETURN;
    case Qt::Key_Shift: return VK_SHIFT;
    case Qt::Key_Control: return VK_CONTROL;
    case Qt::Key_Alt: return VK_MENU;
    case Qt::Key_Escape: return VK_ESCAPE;
    case Qt::Key_Space: return VK_SPACE;
    case Qt::Key_PageUp: return VK_PRIOR;
    case Qt::Key_PageDown: return VK_NEXT;
    case Qt::Key_End: return VK_END;
    case Qt::Key_Home: return VK_HOME;
    case Qt::Key_Left: return VK_LEFT;
    case Qt::Key_Up: return VK_UP;
    case Qt::Key_Right: return VK_RIGHT;
    case Qt::Key_Down: return VK_DOWN;
    case Qt::Key_Insert: return VK_INSERT;
    case Qt::Key_Delete: return VK_DELETE;
    case Qt::Key_Menu: return VK_APPS;
    default: return 0;
    }
}

} // namespace zelcontrols

namespace zelcontrols {

// The shift state of the key event that a hook is seeing now (a Backtab counts
// as shifted), or of the keyboard when no key event is in hand.
bool ShiftDownNow();

} // namespace zelcontrols
