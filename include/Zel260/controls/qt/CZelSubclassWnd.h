// A hook on a window that the hook doesn't own. It sees the window's focus, key,
// mouse and paint events, and every message sent to the window, before the window
// does, and may swallow them:
//
//   class CMyHook : public CZelSubclassWnd {
//       LRESULT WindowProc(UINT msg, WPARAM wp, LPARAM lp) override
//       {
//           if (msg == WM_KEYDOWN && wp == VK_TAB)
//               return 0;            // swallowed: Default() not called
//           return Default();        // on to older hooks and the window
//       }
//   };
//
// Qt events arrive as messages: FocusIn WM_SETFOCUS, FocusOut WM_KILLFOCUS (wParam
// the other window's handle or 0), KeyPress WM_KEYDOWN and KeyRelease WM_KEYUP
// (wParam the virtual-key code of <Zel260/controls/ZelVirtualKeys.h>), mouse button
// presses, releases and double clicks WM_LBUTTONDOWN...WM_RBUTTONDBLCLK (lParam the
// point, MAKELPARAM(x, y)), Paint WM_PAINT. A press on a window that doesn't have the
// focus and would take it comes first as WM_MOUSEACTIVATE. Messages of the message
// layer (SendMessage, PostMessage) arrive unchanged.
//
// Several hooks may sit on one window; the newest sees everything first. A hook
// lives until UnhookWindow, its destruction, or the window's destruction (after
// which OnDestroyWindow runs; the hook may delete itself there).
#pragma once

#include <Zel260/platform/CWnd.h>

#include <memory>

class ZelHookFilter;

class CZelSubclassWnd {
public:
    CZelSubclassWnd();
    // Unhooks.
    virtual ~CZelSubclassWnd();
    CZelSubclassWnd(const CZelSubclassWnd&) = delete;
    CZelSubclassWnd& operator=(const CZelSubclassWnd&) = delete;

    // Hooks a live window. FALSE when the handle is null or dead, or when this hook
    // already hooks a window. Must run on the window's (GUI) thread.
    BOOL HookWindow(HWND hWnd);
    BOOL HookWindow(CWnd* wnd);
    // Removes the hook; FALSE when nothing was hooked.
    BOOL UnhookWindow();
    BOOL IsHooked() const;
    // The hooked window, null when none.
    HWND GetHookedWindow() const;

    // The newest hook on `hWnd`, null when none.
    static CZelSubclassWnd* FromHandle(HWND hWnd);

    // Sees each event or message. The default passes it on (Default()).
    virtual LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam);
    // The hooked window was destroyed; the hook is already removed.
    virtual void OnDestroyWindow();

    // Passes the event in hand on. A message of the message layer is delivered
    // to older hooks and the window at once, and their answer returned. A Qt input
    // event goes on when WindowProc returns (the answer here is 0; MA_ACTIVATE for
    // WM_MOUSEACTIVATE). Outside WindowProc: 0.
    LRESULT Default();

private:
    struct Impl;
    friend struct Impl;
    friend class ZelHookFilter;
    std::unique_ptr<Impl> d;
};
