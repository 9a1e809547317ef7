// The context menu of CZelEdit. It is made from the template of keys
// ("%INSERT", "%UNDO", "%REDO", "%CUT", "%COPY", "%PASTE", "%DELETE", "%SELECTALL",
// separators between), which CustomizeMenu turns into commands with their texts;
// "%INSERT" becomes a popup "&Insert" of the last items (commands 2024 upward) or
// goes away when there are none. Before it shows, an update pass enables each
// command by the edit's Can... test. A chosen command reaches the edit as
// WM_COMMAND through the message layer.
#pragma once

#include <Zel260/platform/CGeometry.h>
#include <Zel260/platform/CString.h>

#include <QMenu>

#include <vector>

class CZelEdit;

class CZelMenuPopUpEdit : public QMenu {
public:
    explicit CZelMenuPopUpEdit(CZelEdit* edit, QWidget* parent = nullptr);

    // The keys of the edit's menu template in order; "-" is a separator.
    static std::vector<CString> MenuTemplate();
    // Fills the menu with the template's keys as captions, then CustomizeMenu.
    void LoadMenu(const std::vector<CString>& keys, const std::vector<CString>& lastItems);
    // Replaces the keys by commands and texts, drops "%INSERT" without last items,
    // and removes a separator at the top and the second of two in a row.
    virtual void CustomizeMenu();
    // Enables each command by the edit's Can... tests.
    virtual void UpdateCommands();
    // Opens at `point` (screen) and returns the chosen command, 0 when none; the
    // command has then been sent to the edit.
    UINT Track(CPoint point);
    // The command an action stands for (0 for separators and popups).
    static UINT CommandOf(const QAction* action);

private:
    CZelEdit* m_edit;
    std::vector<CString> m_lastItems;
};
