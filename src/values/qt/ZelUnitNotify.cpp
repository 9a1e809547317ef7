#include "ZelUnitNotify.h"

#include <Zel260/frame/ZelMessages.h>
#include <Zel260/platform/CWnd.h>

namespace zelvalues {

void NotifyUnitChanged(CWnd* wnd, bool angle, long oldUnit, long newUnit)
{
    if (!wnd || !IsWindow(wnd->GetSafeHwnd()))
        return;
    // Every window below, not only those with an object of the library attached.
    wnd->SendMessageToDescendants(angle ? WM_ZEL_UNIT_CHANGED_ANGLE : WM_ZEL_UNIT_CHANGED_DISTANCE,
                                  static_cast<WPARAM>(oldUnit), static_cast<LPARAM>(newUnit), TRUE, FALSE);
}

} // namespace zelvalues
