// The services of the library's views over the shared ones (tool tip, arranged
// controls): the application's document, the windows around the view, popups to
// hide while a view works, and a stop for window updates.
//
// Where MFC has a document/view frame, Qt has none; a view here is a QWidget that
// the application places where it likes (a main window, an MDI area, a dialog):
//   - the document is the application's object, handed over with SetViewDocument;
//   - OnInitialUpdate runs when the view is first shown unless the application
//     called it before;
//   - the view counts as active while the focus is inside it (OnActivateView);
//   - frames are QMainWindow (SDI frame) and QMdiSubWindow (MDI child).
#pragma once

#include <Zel260/hosts/qt/CZelHostServices.h>
#include <Zel260/platform/CBitmap.h>
#include <Zel260/platform/CDC.h>
#include <Zel260/platform/CObject.h>

#include <memory>

class CZelView;
class QPrinter;

class CZelViewExtensions : public virtual CZelHostServices {
public:
    explicit CZelViewExtensions(CWnd* host);
    ~CZelViewExtensions() override;

    // The view mix-in of a library view object, or null.
    static CZelViewExtensions* CastObjectSafe(CObject* object);

    // Puts the view in the place of control `id` of `parent` (its geometry, id and
    // place in a layout); the control is deleted. FALSE when there is none.
    BOOL ExchangeDlgItem(CWnd* parent, UINT id);

    // Windows around the view: the direct parent when it is of the kind, or the
    // nearest ancestor of the kind; null when none. Dialogs are QDialogs; SDI
    // frames QMainWindows; MDI children QMdiSubWindows; form views CZelFormViews.
    CWnd* GetDirectParentDialog() const;
    CWnd* GetDirectParentMDIChildWnd() const;
    CWnd* GetDirectParentSDIFrameWnd() const;
    CWnd* GetDirectParentFormView() const;
    CWnd* GetParentDialog() const;
    CWnd* GetParentMDIChildWnd() const;
    CWnd* GetParentSDIFrameWnd() const;
    CWnd* GetParentNestedView() const;
    CWnd* GetParentFormView() const;
    // The outermost library view that holds this one (this view when none does).
    CWnd* GetTopmostView() const;

    // The application's document of this view and of any window.
    void SetViewDocument(CObject* document);
    void UnsetViewDocument();
    CObject* GetViewDocument() const { return m_document; }
    static void SetWndViewDocument(CWnd* wnd, CObject* document);
    static CObject* GetWndViewDocument(CWnd* wnd);

    // Hides the top-level popup window the view lives in (a tool window or
    // floating dialog) and returns it, null when the view isn't in one.
    CWnd* HidePopupWnd();
    // Shows a window hidden by HidePopupWnd again; `focus` gives it the focus.
    void RestorePopupWnd(CWnd* wnd, BOOL focus);

    // Nonzero stops repainting until StopWindowUpdate(FALSE).
    void StopWindowUpdate(BOOL stop);
    BOOL IsWindowUpdateStopped() const { return m_stopped; }

    // Prints `view` (null: the host, when it is a CZelView) on `printer`, or on a
    // printer the user picks when `printer` is null (FALSE when they cancel).
    // The view's hooks run as a print job: OnPreparePrinting (FALSE ends the job
    // before anything is printed), OnBeginPrinting, then for each page
    // OnPrepareDC and OnPrint, and OnEndPrinting. A small dialog with Cancel
    // stands while the pages print; the event loop runs between pages, and
    // Cancel ends the job after the page at hand. TRUE when the job ran to its
    // end; FALSE without a view, when cancelled, or when the printer can't start.
    BOOL OnFilePrint(CZelView* view = nullptr, QPrinter* printer = nullptr);
    // The dialog of the running job, null when none (tests press its Cancel).
    QWidget* GetPrintingDialog() const;
    // Draws the host window as it looks, with its children, into `dc` at the
    // device's origin. FALSE when `dc` isn't a device to draw on here.
    virtual BOOL OnPrintClient(CDC* dc);
    // A device bitmap of the host's client area as it looks now, width and height
    // in pixels; null when the window has no area. The caller deletes it
    // (DeleteObject).
    HBITMAP GetBitmapFromClientRect();

    // Offers a command to the library views inside this one, the one holding the
    // focus first, and then to this view's OnCmdMsg. TRUE when one took it.
    BOOL HandleCmdMsg(UINT id, int code);
    // A view's own commands; FALSE here (not handled).
    virtual BOOL OnCmdMsg(UINT id, int code);

    // Timers of the view: each fires WM_TIMER (wParam the id) at the host every
    // `elapseMs` milliseconds until killed; setting an id again restarts it.
    // FALSE for id 0, a zero time or without a host window.
    BOOL SetViewTimer(UINT_PTR id, UINT elapseMs);
    BOOL KillViewTimer(UINT_PTR id);

    // The slow double click (a second click on the same item, slower than a
    // double click, which starts editing it): a list in the view asks whether it
    // is armed before it sends WM_ZEL_DBLCLK_SLOW. Deactivating the view disarms it.
    void ArmDblClkSlow(BOOL arm) { m_dblClkSlowArmed = arm; }
    BOOL IsDblClkSlowArmed() const { return m_dblClkSlowArmed; }

protected:
    CObject* m_document = nullptr;
    BOOL m_stopped = FALSE;
    BOOL m_dblClkSlowArmed = FALSE;

private:
    struct Impl;
    std::unique_ptr<Impl> d;
};
