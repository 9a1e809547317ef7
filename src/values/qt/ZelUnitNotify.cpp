#include "ZelUnitNotify.h"

namespace zelvalues {

void NotifyUnitChanged(HWND wnd, bool angle, long oldUnit, long newUnit)
{
    // Delivered through the window-message layer (registered messages and
    // SendMessageToDescendants) once that layer is part of the build.
    (void)wnd;
    (void)angle;
    (void)oldUnit;
    (void)newUnit;
}

} // namespace zelvalues
