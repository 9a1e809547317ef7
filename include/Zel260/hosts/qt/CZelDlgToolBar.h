// A tool bar along the top of a dialog. Its buttons speak to the dialog as
// push buttons do: a click arrives as WM_COMMAND (MAKEWPARAM(id, BN_CLICKED),
// lParam the bar's handle), so that the dialog's OnCommand and its hooks hear it.
//
//   EnableToolbar(TRUE);                 // before OnInitDialog, which creates it
//   ...
//   GetToolbar()->AddButton(ID_ZOOM, "Zoom", "Zoom into the picture");
#pragma once

#include <Zel260/platform/CWnd.h>

#include <QToolBar>

class QAction;

class CZelDlgToolBar : public QToolBar, public CWnd {
public:
    // The bar of dialog `owner` (its commands go there); a child of it.
    explicit CZelDlgToolBar(QWidget* owner);
    ~CZelDlgToolBar() override;

    // Adds a button with command `id` (1..0xFFFF), its text and an optional tip
    // (null: none). FALSE for id 0 or an id the bar has already.
    BOOL AddButton(UINT id, const char* text, const char* tip = nullptr);
    void AddSeparator();
    // FALSE when the bar has no button `id`.
    BOOL EnableButton(UINT id, BOOL enable);
    BOOL CheckButton(UINT id, BOOL check);
    BOOL IsButtonEnabled(UINT id) const;
    int GetButtonCount() const;
    // The button's action, null when none (for tests and shortcuts).
    QAction* GetButtonAction(UINT id) const;

private:
    QWidget* m_owner;
};
