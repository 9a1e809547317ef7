// The library's dialog on QDialog: a template from a resource module builds its
// children, buttons speak WM_COMMAND with their ids, and follow-up work after
// initialisation runs from a posted message (OnPostInitDialog runs after
// OnInitDialog and everything that called it has returned).
//
//   CMyDialog dlg;                       // CZelDialog(IDD_MY)
//   if (dlg.DoModal(myModule) == IDOK) ...
//   // or modeless: dlg->Create(myModule, parentWnd);
//
// OK (1) and Cancel (2) arrive as WM_COMMAND and go to OnOK and OnCancel; Enter and
// Escape take the same road. The OK button (and 12321) follows EnableOkButton; a
// click on it while disabled calls OnDisabledOkButtonClicked.
#pragma once

#include <Zel260/hosts/qt/CZelDialogExtensions.h>
#include <Zel260/platform/qt/ZelMessageTarget.h>

#include <QDialog>

constexpr int IDOK = 1;
constexpr int IDCANCEL = 2;
constexpr int ID_APPLY_NOW = 12321;

class CZelDialog : public QDialog, public CWnd, public ZelMessageTarget, public CZelDialogExtensions {
    DECLARE_DYNAMIC(CZelDialog)

public:
    explicit CZelDialog(UINT templateId = 0, QWidget* parent = nullptr);
    ~CZelDialog() override;

    UINT GetTemplateId() const { return m_templateId; }
    void SetTemplateId(UINT id) { m_templateId = id; }

    // Builds the template of `instance` (null: AfxGetResourceHandle()), runs
    // OnInitDialog and the dialog's loop; IDOK, IDCANCEL or EndDialog's value, -1
    // when the template isn't found.
    virtual INT_PTR DoModal(HINSTANCE instance = nullptr);
    // Modeless: builds, initialises and shows the dialog as a window of its own
    // owned by `parent` (may be null). FALSE when the template isn't found.
    virtual BOOL Create(HINSTANCE instance, CWnd* parent);
    virtual BOOL Create(HINSTANCE instance, const char* name, CWnd* parent);
    // Builds the template into this widget as a child window of `parent` (for child
    // dialogs). FALSE when the template isn't found.
    BOOL CreateChild(HINSTANCE instance, QWidget* parent);

    virtual BOOL OnInitDialog();
    virtual void OnPostInitDialog();
    virtual void OnOK();
    virtual void OnCancel();
    void EndDialog(int result);
    virtual void OnComboBoxSelChange(UINT id);
    virtual void OnComboBoxEditChange(UINT id);
    virtual void OnListBoxSelChange(UINT id);
    virtual void OnDisabledOkButtonClicked(UINT id);
    // Whether OK may be enabled; `showMessage` lets a host say why not. TRUE here.
    virtual BOOL OnEnableOkButton(BOOL showMessage);
    virtual void EnableDisable();
    // Enables or disables OK and Apply by OnEnableOkButton(0); a child dialog asks
    // its parent dialog instead (EnableParentDialogOkButton).
    void EnableOkButton();
    // EnableOkButton of the nearest dialog around this one; nothing without one.
    void EnableParentDialogOkButton();
    // WM_COMMAND: OK, Cancel and the notifications of combo and list boxes.
    virtual BOOL OnCommand(WPARAM wParam, LPARAM lParam);

    // Shortcuts of the main window (its actions with a shortcut) work in the
    // dialog too, while active (the default): OnInitDialog takes them over.
    void SetAcceleratorsActive(BOOL active) { m_acceleratorsActive = active; }
    BOOL GetAcceleratorsActive() const { return m_acceleratorsActive; }
    // How many main window shortcuts the dialog took over.
    int GetAcceleratorCount() const { return m_accelerators; }
    // F1 on the dialog or one of its controls, `controlId` the control with the
    // focus (0: none). A child dialog passes it to its parent dialog; otherwise
    // WM_HELP (wParam the control id) goes to the main window. TRUE when someone
    // got it. IsHelpKey is TRUE while F1 is being handled.
    virtual BOOL OnHelpInfo(UINT controlId);
    BOOL IsHelpKey() const { return m_helpKey; }

    BOOL IsModeless() const { return m_modeless; }
    BOOL IsInitialized() const { return m_initialized; }
    void SetAutoDelete(BOOL autoDelete) { m_autoDelete = autoDelete; }

    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

    void accept() override;
    void reject() override;

protected:
    // The control whose last state explains a disabled OK (the one with the focus
    // here; the container's topmost focus in dialogs that validate).
    virtual HWND GetLastControl() const;
    void mousePressEvent(QMouseEvent* event) override;
    // Disabled buttons swallow their clicks; the dialog watches OK and Apply.
    bool eventFilter(QObject* watched, QEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

    BOOL m_initialized = FALSE;
    BOOL m_modeless = FALSE;
    BOOL m_autoDelete = TRUE;
    int m_accelerators = 0;
    BOOL m_acceleratorsActive = TRUE;
    BOOL m_helpKey = FALSE;

private:
    BOOL build(const struct ZelDialogTemplate* tmpl);
    void routeCommands();
    void finish(bool accepted);
    UINT m_templateId;
};
