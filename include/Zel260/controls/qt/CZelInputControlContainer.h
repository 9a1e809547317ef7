// The mix-in of windows that hold input controls (dialogs, form views, inline
// editors). It hooks every child of the host and keeps the focus on a control whose
// content is invalid:
//
//   m_container.HookContainer();        // once the host window exists
//   m_container.HookAllDlgCtrls();      // once its children exist
//
// At each change of focus (keyboard, click on another control) the control that
// had the focus is asked to validate; in state 2 the focus goes back to it and
// OnShowValidationText shows the reason. An empty control that may not be empty
// lets the focus go unless strict focus is set, and fails only when OK is pressed
// (WM_COMMAND 1, 12321, 12324 or 12325 to the host), which validates every child.
// Cancel (id 2) is never blocked. Containers of the host (plain QWidget, QFrame and
// QGroupBox children without an id of their own) are looked through: their children
// count as the host's children.
#pragma once

#include <Zel260/controls/qt/CZelSubclassWnd.h>
#include <Zel260/platform/CString.h>
#include <Zel260/platform/CWnd.h>

#include <utility>
#include <vector>

class CZelInputControlContainer {
public:
    // The hook on the host window.
    class CZelSubclassContainer : public CZelSubclassWnd {
    public:
        explicit CZelSubclassContainer(CZelInputControlContainer* container) : m_container(container) {}
        LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
        CZelInputControlContainer* m_container;
    };

    // The hook on one control, or on one child window of a control.
    class CZelSubclassDlgItem : public CZelSubclassWnd {
    public:
        CZelSubclassDlgItem(CZelInputControlContainer* container, HWND owner);
        ~CZelSubclassDlgItem() override;
        BOOL HookItem(HWND hWnd);
        LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
        void OnDestroyWindow() override;

        HWND m_owner;                 // the owning control
        int m_ownerId = -1;           // its id, read at the first message
        CZelInputControlContainer* m_container;
        int m_lastFocusCheck = 1;     // result of the last OnDlgItemGainFocus
        bool m_focusRefused = false;  // that result came from a refused WM_SETFOCUS
        CString m_ownerClass;         // Windows class names ("Edit", "Button"...)
        CString m_class;

    private:
        struct Links;
        Links* m_links = nullptr;
    };

    explicit CZelInputControlContainer(CWnd* host);
    // Unhooks and deletes every hook, last first.
    virtual ~CZelInputControlContainer();
    CZelInputControlContainer(const CZelInputControlContainer&) = delete;
    CZelInputControlContainer& operator=(const CZelInputControlContainer&) = delete;

    // Nonzero while validation has failed and the focus was forced back.
    virtual int FocusIsBlocked();
    // Validates the control with the focus, then every child in order; the first
    // failing window (its reason in `text`, `detail` 0 here), or null when all pass.
    // `ignoreEmpty` nonzero lets empty controls pass; `command` is for the hosts.
    virtual CWnd* ValidateAllDlgCtrls(int ignoreEmpty, int command, unsigned long& detail, CString& text);
    // The first child that is empty though it may not be, or null.
    virtual CWnd* GetFirstEmptyDlgItem(unsigned long& detail);
    // A control's emptiness changed (only while hooked and tracking is on); keeps
    // the empty-fields flag and calls OnEmptyFieldsChanged when it changes.
    virtual void OnDlgCtrlEmptyChanged(unsigned int id, int empty);
    // The focus is about to go to `newOwner`: validates the control that has it. 1
    // lets the focus go; 0 has put it back and shown the reason.
    virtual int OnDlgItemGainFocus(HWND newOwner);
    // Asks one window; nonzero when it passes. State 1 passes with `ignoreEmpty`,
    // else fails with "Field must not be empty" in `text` (when not null).
    virtual int OnValidateDlgItem(int ignoreEmpty, HWND hWnd, unsigned int id, unsigned long& detail, CString* text);
    // 1 when the window is empty and may not be.
    virtual int OnValidateEmptyDlgItem(HWND hWnd, unsigned int id, unsigned long& detail);
    // Hooks for the hosts; all do nothing and return 0 here.
    virtual int OnPrepareShowValidationText(HWND hWnd, unsigned int id, unsigned long detail, CString* text);
    virtual int OnShowValidationText(HWND hWnd, unsigned int id, unsigned long detail, CString* text);
    virtual int OnHideValidationText();
    virtual int OnFocusBlockedChanged(int blocked);
    virtual int OnEmptyFieldsChanged(int emptyFields);
    // TAB (with tab handled) or WM_NEXTDLGCTL; nonzero swallows it.
    virtual int OnNextDlgCtl(int previous);
    virtual CZelInputControlContainer* GetActiveContainer();
    virtual void SetActiveContainer(CZelInputControlContainer* container);

    // Hooks the host window; FALSE without one or when hooked already.
    BOOL HookContainer();
    // Hooks every child (and their children) of the host, except windows whose
    // object is of class `skip`.
    void HookAllDlgCtrls(CRuntimeClass* skip = nullptr);
    void UnhookAllDlgCtrls();
    // Hooks `hWnd` anew (while hooked).
    void HookDlgCtrl(HWND hWnd);
    // Removes the hooks that `hWnd` owns.
    void UnhookDlgCtrl(HWND hWnd);
    // `child` belongs to `control`: hooked with it as owner (or kept for
    // HookAllDlgCtrls when that hasn't run yet).
    void AddDlgCtrlChild(HWND control, HWND child);
    // Makes a push button other than OK, Cancel, Apply, Back, Next and Finish unable
    // to become the default button while the focus moves. 1 when it changed it.
    static int MakePushlikeIfNotStandardButton(HWND hWnd);

    CWnd* GetHost() const { return m_host; }
    HWND GetWndTopmostFocus() const { return m_topmostFocus; }
    int IsHookedAll() const { return m_hooked; }
    int GetEmptyFields() const { return m_emptyFields; }
    void SetEmptyFields(int emptyFields) { m_emptyFields = emptyFields; }
    int GetStrictFocus() const { return m_strictFocus; }
    void SetStrictFocus(int strict) { m_strictFocus = strict; }
    int GetEmptyTrackingOff() const { return m_emptyTrackingOff; }
    void SetEmptyTrackingOff(int off) { m_emptyTrackingOff = off; }
    int GetTabHandled() const { return m_tabHandled; }
    void SetTabHandled(int handled) { m_tabHandled = handled; }
    int GetHostIsFileDialog() const { return m_hostIsFileDialog; }
    void SetHostIsFileDialog(int fileDialog) { m_hostIsFileDialog = fileDialog; }
    // The windows validated, in order: the host's children, looked through plain
    // containers.
    std::vector<HWND> GetDlgCtrls() const;

protected:
    // Reports a failing window: prepare, focus, show.
    void ReportFailure(HWND hWnd, unsigned long detail, CString& text);
    void HookDlgCtrlInternal(HWND hWnd);
    void DeleteDlgCtrlInternal(HWND hWnd);

    CWnd* m_host;
    int m_hostIsFileDialog = 0;
    HWND m_topmostFocus = nullptr;
    int m_focusBlocked = 0;
    int m_hooked = 0;
    int m_emptyTrackingOff = 0;
    int m_emptyFields = 0;
    int m_tabHandled = 0;
    int m_strictFocus = 0;
    CZelInputControlContainer* m_activeContainer = nullptr;
    CZelSubclassContainer m_containerHook{this};
    std::vector<CZelSubclassDlgItem*> m_items;
    std::vector<std::pair<HWND, HWND>> m_childrenToAdd;

private:
    friend class CZelSubclassDlgItem;
    void hookTree(HWND hWnd, HWND owner);
    void removeItem(CZelSubclassDlgItem* item);
};
