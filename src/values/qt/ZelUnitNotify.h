// Announces a new unit to the windows below `wnd`.
#pragma once

class CWnd;

namespace zelvalues {

// Sends WM_ZEL_UNIT_CHANGED_ANGLE (angle true) or WM_ZEL_UNIT_CHANGED_DISTANCE with
// the old unit as wParam and the new one as lParam to every descendant of `wnd`.
// A null `wnd` or one that is no longer a window gets nothing.
void NotifyUnitChanged(CWnd* wnd, bool angle, long oldUnit, long newUnit);

} // namespace zelvalues
