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
#include <Zel260/platform/CObject.h>

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

protected:
    CObject* m_document = nullptr;
    BOOL m_stopped = FALSE;
};
