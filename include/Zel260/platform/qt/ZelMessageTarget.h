// The window procedure of a widget class: a QWidget subclass that also derives from
// ZelMessageTarget receives every message sent or posted to its handle (after the
// hooks of ZelAddMessageHandler and the widget's event filters have declined it).
//
//   class CMyEdit : public QLineEdit, public ZelMessageTarget {
//       LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
//   };
#pragma once

#include <Zel260/platform/Win32Types.h>

class ZelMessageTarget {
public:
    virtual ~ZelMessageTarget() = default;
    // Runs on the widget's thread. The result goes back to SendMessage's caller
    // (and is dropped for posted messages). Return 0 for messages the class doesn't
    // handle, as DefWindowProc would.
    virtual LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) = 0;
};
