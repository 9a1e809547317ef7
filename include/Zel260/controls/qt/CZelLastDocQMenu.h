// CZelLastDocMenu over a QMenu: the recent documents of CZelLastDocuments shown in a
// Qt menu. Each item is a QAction whose data is its command id; choosing it sends
// WM_COMMAND with that id to the target window (when one is given).
//
//   QMenu* file = menuBar()->addMenu("&File");
//   CZelLastDocQMenu recent(file, ZelHwndFromWidget(this));
//   docs.CreateLastDocMenu(recent, ID_FILE_MRU, ids);
#pragma once

#include <Zel260/platform/Win32Types.h>
#include <Zel260/services/CZelLastDocMenu.h>

class QAction;
class QMenu;

class CZelLastDocQMenu : public CZelLastDocMenu {
public:
    // `menu` must outlive this object; `target` (may be null) receives the commands.
    explicit CZelLastDocQMenu(QMenu* menu, HWND target = nullptr);

    int GetItemPosition(UINT id) const override;
    void InsertItem(int position, UINT id, const char* text) override;
    void ModifyItem(int position, UINT id, const char* text) override;
    void RemoveItem(UINT id) override;
    void EnableItem(UINT id, BOOL enable) override;

    QMenu* menu() const { return m_menu; }

private:
    QAction* makeAction(UINT id, const char* text);
    QMenu* m_menu;
    HWND m_target;
};
