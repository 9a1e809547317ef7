// A dialog whose input controls are validated (see CZelInputControlContainer): the
// focus stays on a control with invalid content and its reason shows in a tool tip
// below it for 3 seconds; OK stays disabled while a required field is empty, and a
// click on the disabled OK says which field is missing.
#pragma once

#include <Zel260/controls/qt/CZelInputControlContainer.h>
#include <Zel260/hosts/qt/CZelDialog.h>

class CZelDialogCV : public CZelDialog, public CZelInputControlContainer {
    DECLARE_DYNAMIC(CZelDialogCV)

public:
    // How long a validation text stays, in milliseconds.
    static constexpr UINT kValidationTextTime = 3000;

    explicit CZelDialogCV(UINT templateId = 0, QWidget* parent = nullptr);
    ~CZelDialogCV() override;

    // Whether OnPostInitDialog hooks every control (1 by default).
    void SetHookAllOnInit(int hook) { m_hookAllOnInit = hook; }

    BOOL OnInitDialog() override;
    void OnPostInitDialog() override;
    // FALSE while a field is empty; with `showMessage` the tip says so at the first
    // empty field, which gets the focus. Otherwise the current child dialog decides.
    BOOL OnEnableOkButton(BOOL showMessage) override;
    BOOL SwitchChildDialog(int idOrIndex, int byId = FALSE) override;

    CWnd* ValidateAllDlgCtrls(int ignoreEmpty, int command, unsigned long& detail, CString& text) override;
    CWnd* GetFirstEmptyDlgItem(unsigned long& detail) override;
    void OnDlgCtrlEmptyChanged(unsigned int id, int empty) override;
    int OnShowValidationText(HWND hWnd, unsigned int id, unsigned long detail, CString* text) override;
    int OnHideValidationText() override;
    int OnEmptyFieldsChanged(int emptyFields) override;
    // A change of focus is checked by the outermost validating dialog: its own
    // control, then the current child dialog's, then those of child form views.
    int OnDlgItemGainFocus(HWND newOwner) override;
    int FocusIsBlocked() override;
    CZelInputControlContainer* GetActiveContainer() override;
    void SetActiveContainer(CZelInputControlContainer* container) override;

protected:
    HWND GetLastControl() const override;
    // The parent dialog's container, for a child dialog; null otherwise.
    CZelDialogCV* parentCV() const;

    int m_hookAllOnInit = 1;
    int m_hasBeenInitialized = 0;
};
