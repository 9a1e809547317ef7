// A borderless dialog that holds one input control over a list cell, for inline
// cell editing. Its owner (the list) hears the outcome by message:
// WM_ZEL_INPUT_CONTROL_SAVE_VALUE_INLINE (posted; wParam forward, lParam previous)
// when the value is to be taken, WM_ZEL_INPUT_CONTROL_CANCEL_INLINE (sent, 0, 0) when
// editing is abandoned. TAB moves between the container's controls and, past the
// last one, saves. Losing activation saves a valid value and cancels an invalid one,
// unless a dialog box of the control is pending (SetDialogBoxPending).
#pragma once

#include <Zel260/controls/qt/CZelInputControlContainer.h>
#include <Zel260/platform/CGeometry.h>
#include <Zel260/platform/qt/ZelMessageTarget.h>

#include <QDialog>

class CZelInputControl;

class CZelInlineControlContainer : public QDialog, public CWnd, public CZelInputControlContainer,
                                   public ZelMessageTarget {
public:
    // Command sent to the control's parent after a TAB past the last control.
    static constexpr UINT kNextCellCommand = 0x1267;

    explicit CZelInlineControlContainer(QWidget* parent = nullptr);
    ~CZelInlineControlContainer() override;

    // Clears both flags, takes the owner and its data, hooks the window once.
    virtual void InitializeContainer(CWnd* owner, int data);
    // Places the container and `control` over `cell` (parent coordinates of the
    // container) by the control's SetupInlineRect; `align` 2 right-aligns a narrower
    // control, any other nonzero value centres it, 0 leaves it left. Shows the
    // container and hooks its controls.
    virtual void InitializeControl(const RECT& cell, CZelInputControl* control, HFONT font, int flags,
                                   unsigned long align);
    // Posts WM_ZEL_INPUT_CONTROL_SAVE_VALUE_INLINE with `a` and `b` to the owner.
    virtual void OnSaveValue(int a, int b);
    virtual void OnOK();
    virtual void OnCancel();
    int OnNextDlgCtl(int previous) override;
    void SetDialogBoxPending(int pending) { m_dialogBoxPending = pending; }
    int GetDialogBoxPending() const { return m_dialogBoxPending; }
    int IsClosed() const { return m_closed; }
    CWnd* GetOwner() const { return CWnd::FromHandle(m_owner); }
    int GetOwnerData() const { return m_ownerData; }

    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

protected:
    void changeEvent(QEvent* event) override;
    void reject() override { OnCancel(); }
    void accept() override { OnOK(); }

private:
    HWND m_owner = nullptr;
    int m_ownerData = 0;
    int m_closed = 0;
    int m_dialogBoxPending = 0;
};
