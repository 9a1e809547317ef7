// The core of MFC's CWnd: an object bound to a window handle, with the message
// calls as members. Window classes of the widget library derive from it and from
// a QWidget; the handle comes from the window-message layer.
#pragma once

#include <Zel260/platform/CObject.h>
#include <Zel260/platform/WindowMessages.h>

// A font handle. In the widget library it points at a QFont that outlives its use.
struct HFONT__;
using HFONT = HFONT__*;

// The header of a WM_NOTIFY message (lParam points at it).
struct NMHDR {
    HWND hwndFrom = nullptr;
    UINT_PTR idFrom = 0;
    UINT code = 0;
};

class CWnd : public CObject {
    DECLARE_DYNCREATE(CWnd)

public:
    CWnd() = default;
    // Detaches; never destroys the window, which belongs to its window system.
    ~CWnd() override;
    CWnd(const CWnd&) = delete;
    CWnd& operator=(const CWnd&) = delete;

    HWND m_hWnd = nullptr;

    HWND GetSafeHwnd() const { return m_hWnd; }
    operator HWND() const { return m_hWnd; }

    // The object attached to `hWnd`; for a live handle without one, a temporary
    // object that lives until DeleteTempMap. Null for null or dead handles.
    static CWnd* FromHandle(HWND hWnd);
    // Only an attached object; null otherwise.
    static CWnd* FromHandlePermanent(HWND hWnd);
    // Frees the temporary objects of FromHandle (call it when idle).
    static void DeleteTempMap();

    // Binds the object to a live handle that no other object holds. FALSE for null,
    // dead or already attached handles, or when this object already has one.
    BOOL Attach(HWND hWnd);
    // Unbinds and returns the handle (null when none).
    HWND Detach();

    LRESULT SendMessage(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const;
    BOOL PostMessage(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const;
    // `onlyPerm` limits the walk to children that have an attached object.
    void SendMessageToDescendants(UINT message, WPARAM wParam = 0, LPARAM lParam = 0, BOOL deep = TRUE,
                                  BOOL onlyPerm = FALSE) const;

    int GetDlgCtrlID() const;
    // Returns the previous id; 0 without a window.
    int SetDlgCtrlID(int id);
    CWnd* GetDlgItem(int id) const;
    CWnd* GetParent() const;

    // The class's window procedure; the default answers DefWindowProc. A widget
    // class that also derives from ZelMessageTarget overrides both at once.
    virtual LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam);
    virtual LRESULT DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam);
};
