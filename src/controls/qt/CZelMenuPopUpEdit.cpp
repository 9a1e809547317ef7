#include <Zel260/controls/qt/CZelMenuPopUpEdit.h>
#include <Zel260/controls/qt/CZelEdit.h>

#include "../ControlsString.h"

#include <Zel260/frame/ZelMessages.h>
#include <Zel260/resources/ZelControlsResourceIds.h>

#include <QAction>

namespace {

struct Replacement {
    const char* key;
    const UINT* command; // registered messages are known only at run time
    UINT fixed;
    UINT text;
};

UINT commandOf(const Replacement& r) { return r.command ? *r.command : r.fixed; }

const Replacement kReplacements[] = {
    {"%UNDO", nullptr, WM_UNDO, IDS_ZEL_EDIT_MENU_UNDO},
    {"%REDO", nullptr, CZelEdit::kRedoCommand, IDS_ZEL_EDIT_MENU_REDO},
    {"%CUT", nullptr, WM_CUT, IDS_ZEL_EDIT_MENU_CUT},
    {"%COPY", nullptr, WM_COPY, IDS_ZEL_EDIT_MENU_COPY},
    {"%PASTE", nullptr, WM_PASTE, IDS_ZEL_EDIT_MENU_PASTE},
    {"%DELETE", &WM_ZEL_EDIT_DELETE, 0, IDS_ZEL_EDIT_MENU_DELETE},
    {"%SELECTALL", &WM_ZEL_EDIT_SELECT_ALL, 0, IDS_ZEL_EDIT_MENU_SELECTALL},
};

QString menuText(const CString& s)
{
    QString t = QString::fromUtf8(s.GetString());
    return t;
}

} // namespace

CZelMenuPopUpEdit::CZelMenuPopUpEdit(CZelEdit* edit, QWidget* parent) : QMenu(parent), m_edit(edit) {}

std::vector<CString> CZelMenuPopUpEdit::MenuTemplate()
{
    return {"%INSERT", "-", "%UNDO", "%REDO", "-", "%CUT", "%COPY", "%PASTE", "%DELETE", "-", "%SELECTALL"};
}

UINT CZelMenuPopUpEdit::CommandOf(const QAction* action)
{
    return action ? action->data().toUInt() : 0;
}

void CZelMenuPopUpEdit::LoadMenu(const std::vector<CString>& keys, const std::vector<CString>& lastItems)
{
    clear();
    m_lastItems = lastItems;
    for (const CString& k : keys) {
        if (k == "-")
            addSeparator();
        else
            addAction(QString::fromUtf8(k.GetString()));
    }
    CustomizeMenu();
}

void CZelMenuPopUpEdit::CustomizeMenu()
{
    const QList<QAction*> items = actions();
    for (QAction* a : items) {
        if (a->isSeparator())
            continue;
        const QString key = a->text().toUpper();
        if (key == "%INSERT") {
            if (m_lastItems.empty()) {
                removeAction(a);
                delete a;
                continue;
            }
            auto* popup = new QMenu(menuText(zelcontrols::LoadControlsString(IDS_ZEL_EDIT_MENU_INSERT)), this);
            for (std::size_t i = 0; i < m_lastItems.size(); ++i) {
                // A single "&" would turn the next character into a mnemonic.
                QString text = QString::fromUtf8(m_lastItems[i].GetString()).replace("&", "&&");
                QAction* item = popup->addAction(text);
                item->setData(static_cast<UINT>(CZelEdit::kFirstLastItemCommand + i));
            }
            insertMenu(a, popup);
            removeAction(a);
            delete a;
            continue;
        }
        for (const Replacement& r : kReplacements) {
            if (key == r.key) {
                a->setText(menuText(zelcontrols::LoadControlsString(r.text)));
                a->setData(commandOf(r));
            }
        }
    }
    // Separators: none at the top, never two in a row.
    bool previousWasSeparator = true;
    for (QAction* a : actions()) {
        if (a->isSeparator() && previousWasSeparator) {
            removeAction(a);
            delete a;
            continue;
        }
        previousWasSeparator = a->isSeparator();
    }
}

void CZelMenuPopUpEdit::UpdateCommands()
{
    auto enable = [this](QAction* a) {
        const UINT c = CommandOf(a);
        if (!c)
            return;
        int on = 1;
        if (c == WM_UNDO)
            on = m_edit->CanUndo();
        else if (c == CZelEdit::kRedoCommand)
            on = m_edit->CanRedo();
        else if (c == WM_CUT)
            on = m_edit->CanCut();
        else if (c == WM_COPY)
            on = m_edit->CanCopy();
        else if (c == WM_PASTE)
            on = m_edit->CanPaste();
        else if (c == WM_ZEL_EDIT_DELETE)
            on = m_edit->CanDelete();
        else if (c == WM_ZEL_EDIT_SELECT_ALL)
            on = m_edit->CanSelectAll();
        else if (c >= CZelEdit::kFirstLastItemCommand)
            on = m_edit->CanInsert();
        a->setEnabled(on != 0);
    };
    for (QAction* a : actions()) {
        if (QMenu* sub = a->menu()) {
            for (QAction* s : sub->actions())
                enable(s);
            sub->setEnabled(m_edit->CanInsert() != 0);
        } else {
            enable(a);
        }
    }
}

UINT CZelMenuPopUpEdit::Track(CPoint point)
{
    UpdateCommands();
    QAction* chosen = exec(QPoint(point.x, point.y));
    const UINT c = CommandOf(chosen);
    if (c)
        m_edit->SendMessage(WM_COMMAND, c, 0);
    return c;
}
