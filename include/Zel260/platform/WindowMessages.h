// The window-message layer: Win32's SendMessage family over an opaque HWND.
//
// The core knows windows only as handles. The widget library installs a backend
// (ZelWindowBackend) that maps handles onto real windows; zel260widgets does so by
// itself as soon as a QApplication exists (see <Zel260/platform/qt/QtWindowBackend.h>).
// Without a backend every call fails cleanly: results are 0 or FALSE and the last
// error is ERROR_INVALID_WINDOW_HANDLE (1400).
//
// Standard window messages keep their Win32 numbers inside this layer; registered
// messages (RegisterWindowMessage) take numbers from 0xC000 to 0xFFFF.
#pragma once

#include <Zel260/platform/Win32Types.h>

#include <vector>

// A process-wide number for a message name, as Win32's RegisterWindowMessage:
// numbers run from 0xC000 upward in order of first registration; the same name,
// compared without regard to ASCII case, always gets the same number. Returns 0
// (last error ERROR_INVALID_PARAMETER, 87) for a null or empty name, and 0 once all
// 16384 numbers are taken. Safe from any thread and during static initialisation.
UINT RegisterWindowMessage(const char* name);

// Standard messages that the library sends, posts or answers (Win32 numbers).
constexpr UINT WM_NULL = 0x0000;
constexpr UINT WM_CREATE = 0x0001;
constexpr UINT WM_DESTROY = 0x0002;
constexpr UINT WM_MOVE = 0x0003;
constexpr UINT WM_SIZE = 0x0005;
constexpr UINT WM_ACTIVATE = 0x0006;
constexpr UINT WM_SETFOCUS = 0x0007;
constexpr UINT WM_KILLFOCUS = 0x0008;
constexpr UINT WM_ENABLE = 0x000A;
constexpr UINT WM_SETREDRAW = 0x000B;
constexpr UINT WM_SETTEXT = 0x000C;
constexpr UINT WM_GETTEXT = 0x000D;
constexpr UINT WM_GETTEXTLENGTH = 0x000E;
constexpr UINT WM_PAINT = 0x000F;
constexpr UINT WM_CLOSE = 0x0010;
constexpr UINT WM_ERASEBKGND = 0x0014;
constexpr UINT WM_SHOWWINDOW = 0x0018;
constexpr UINT WM_SETTINGCHANGE = 0x001A;
constexpr UINT WM_SETCURSOR = 0x0020;
constexpr UINT WM_MOUSEACTIVATE = 0x0021;
constexpr UINT WM_NEXTDLGCTL = 0x0028;
constexpr UINT WM_DRAWITEM = 0x002B;
constexpr UINT WM_MEASUREITEM = 0x002C;
constexpr UINT WM_SETFONT = 0x0030;
constexpr UINT WM_GETFONT = 0x0031;
constexpr UINT WM_NOTIFY = 0x004E;
constexpr UINT WM_HELP = 0x0053;
constexpr UINT WM_CONTEXTMENU = 0x007B;
constexpr UINT WM_GETDLGCODE = 0x0087;
constexpr UINT WM_KEYDOWN = 0x0100;
constexpr UINT WM_KEYUP = 0x0101;
constexpr UINT WM_CHAR = 0x0102;
constexpr UINT WM_SYSKEYDOWN = 0x0104;
constexpr UINT WM_INITDIALOG = 0x0110;
constexpr UINT WM_COMMAND = 0x0111;
constexpr UINT WM_SYSCOMMAND = 0x0112;
constexpr UINT WM_TIMER = 0x0113;
constexpr UINT WM_HSCROLL = 0x0114;
constexpr UINT WM_VSCROLL = 0x0115;
constexpr UINT WM_INITMENUPOPUP = 0x0117;
constexpr UINT WM_MOUSEMOVE = 0x0200;
constexpr UINT WM_LBUTTONDOWN = 0x0201;
constexpr UINT WM_LBUTTONUP = 0x0202;
constexpr UINT WM_LBUTTONDBLCLK = 0x0203;
constexpr UINT WM_RBUTTONDOWN = 0x0204;
constexpr UINT WM_RBUTTONUP = 0x0205;
constexpr UINT WM_RBUTTONDBLCLK = 0x0206;
constexpr UINT WM_MOUSEWHEEL = 0x020A;
constexpr UINT WM_CUT = 0x0300;
constexpr UINT WM_COPY = 0x0301;
constexpr UINT WM_PASTE = 0x0302;
constexpr UINT WM_CLEAR = 0x0303;
constexpr UINT WM_UNDO = 0x0304;
constexpr UINT WM_USER = 0x0400;
constexpr UINT WM_APP = 0x8000;

// WM_MOUSEACTIVATE answers.
constexpr LRESULT MA_ACTIVATE = 1;
constexpr LRESULT MA_ACTIVATEANDEAT = 2;
constexpr LRESULT MA_NOACTIVATE = 3;
constexpr LRESULT MA_NOACTIVATEANDEAT = 4;

// SendMessageTimeout flags. They are accepted for compatibility; the time-out
// rule below is the same for all of them.
constexpr UINT SMTO_NORMAL = 0x0000;
constexpr UINT SMTO_BLOCK = 0x0001;
constexpr UINT SMTO_ABORTIFHUNG = 0x0002;
constexpr UINT SMTO_NOTIMEOUTIFNOTHUNG = 0x0008;
constexpr UINT SMTO_ERRORONEXIT = 0x0020;

constexpr UINT INFINITE = 0xFFFFFFFFu;

// Sends a message and waits for the window's answer. From the window's own thread
// the handler is called directly; from any other thread the caller waits until the
// window's thread has handled it. Returns the handler's result; 0 (last error 1400)
// when `hWnd` is not a live window, or when the window goes away before it handled
// the message. As on Windows, a worker that the window's thread is waiting for
// (joining it, or blocked on a lock it holds) must use SendMessageTimeout or
// PostMessage instead, or both wait for ever.
LRESULT SendMessage(HWND hWnd, UINT message, WPARAM wParam = 0, LPARAM lParam = 0);

// Queues a message for the window's thread and returns at once. Safe from any
// thread. TRUE when queued; FALSE (last error 1400) when `hWnd` is not a live window.
// A message still queued when the window is destroyed is dropped.
BOOL PostMessage(HWND hWnd, UINT message, WPARAM wParam = 0, LPARAM lParam = 0);

// SendMessage with a limit on the wait, in milliseconds (INFINITE waits as long as
// it takes). Nonzero on success, with the handler's result in *result (when `result`
// isn't null). 0 on failure: last error ERROR_TIMEOUT (1460) when the window's
// thread didn't take the message within `timeoutMs` (the message is then dropped,
// never handled later), ERROR_INVALID_WINDOW_HANDLE (1400) when the window isn't
// live or goes away while the caller waits. The time-out covers the wait for the
// window's thread; once its handler has started, the caller waits for the answer,
// because wParam and lParam may point into the caller's memory. From the window's
// own thread the handler is called directly and the time-out does not apply.
LRESULT SendMessageTimeout(HWND hWnd, UINT message, WPARAM wParam, LPARAM lParam, UINT flags, UINT timeoutMs,
                           DWORD_PTR* result);

// TRUE while `hWnd` names a live window. Never touches a destroyed window: handles
// are not reused within a process.
BOOL IsWindow(HWND hWnd);

// Sends the message to every child window of `hWnd`, in child order; with `deep`
// each child's own descendants follow it before its next sibling. Windows that are
// top-level windows of their own (dialogs owned by `hWnd`) are not children.
void SendMessageToDescendants(HWND hWnd, UINT message, WPARAM wParam = 0, LPARAM lParam = 0, BOOL deep = TRUE);

// The parent window; null for a top-level window or a dead handle.
HWND GetParent(HWND hWnd);
// The direct child window of `hDlg` that carries control id `id`; null when none.
HWND GetDlgItem(HWND hDlg, int id);
// The control id a window carries (0 when it has none or isn't a window).
int GetDlgCtrlID(HWND hWnd);
// Gives the window control id `id`; returns the previous id, 0 when not a window.
int ZelSetDlgCtrlID(HWND hWnd, int id);

// Width in pixels of `text` in the window's font; -1 when `hWnd` isn't a live
// window. A null text measures 0.
int ZelWindowTextWidth(HWND hWnd, const char* text);

// The seam between the core and a window system. Every method may be called from
// any thread; handles may be dead or null. Implementations set the last error
// themselves where the functions above document one.
class ZelWindowBackend {
public:
    virtual ~ZelWindowBackend() = default;
    virtual BOOL IsWindow(HWND hWnd) = 0;
    virtual LRESULT Send(HWND hWnd, UINT message, WPARAM wParam, LPARAM lParam) = 0;
    virtual BOOL Post(HWND hWnd, UINT message, WPARAM wParam, LPARAM lParam) = 0;
    virtual BOOL SendTimeout(HWND hWnd, UINT message, WPARAM wParam, LPARAM lParam, UINT flags, UINT timeoutMs,
                             LRESULT* result) = 0;
    // The child windows of `hWnd` in child order (no top-level windows).
    virtual std::vector<HWND> Children(HWND hWnd) = 0;
    virtual HWND Parent(HWND hWnd) = 0;
    virtual int CtrlId(HWND hWnd) = 0;
    virtual int SetCtrlId(HWND hWnd, int id) = 0;
    virtual int TextWidth(HWND hWnd, const char* text) = 0;
};

// Installs the backend (null removes it). The backend must outlive its
// installation. Returns the previous one.
ZelWindowBackend* ZelSetWindowBackend(ZelWindowBackend* backend);
ZelWindowBackend* ZelGetWindowBackend();
