#include <Zel260/controls/qt/CZelLastDocQMenu.h>

#include <Zel260/platform/WindowMessages.h>

#include <QAction>
#include <QMenu>

CZelLastDocQMenu::CZelLastDocQMenu(QMenu* menu, HWND target) : m_menu(menu), m_target(target) {}

int CZelLastDocQMenu::GetItemPosition(UINT id) const
{
    const QList<QAction*> actions = m_menu->actions();
    for (int i = 0; i < actions.size(); ++i)
        if (!actions[i]->isSeparator() && actions[i]->data().toUInt() == id)
            return i;
    return -1;
}

QAction* CZelLastDocQMenu::makeAction(UINT id, const char* text)
{
    auto* a = new QAction(QString::fromUtf8(text ? text : ""), m_menu);
    a->setData(id);
    HWND target = m_target;
    QObject::connect(a, &QAction::triggered, [a, target] {
        ::SendMessage(target, WM_COMMAND, a->data().toUInt(), 0);
    });
    return a;
}

void CZelLastDocQMenu::InsertItem(int position, UINT id, const char* text)
{
    const QList<QAction*> actions = m_menu->actions();
    QAction* a = makeAction(id, text);
    if (position < 0 || position >= actions.size())
        m_menu->addAction(a);
    else
        m_menu->insertAction(actions[position], a);
}

void CZelLastDocQMenu::ModifyItem(int position, UINT id, const char* text)
{
    const QList<QAction*> actions = m_menu->actions();
    if (position < 0 || position >= actions.size())
        return;
    actions[position]->setData(id);
    actions[position]->setText(QString::fromUtf8(text ? text : ""));
}

void CZelLastDocQMenu::RemoveItem(UINT id)
{
    const int at = GetItemPosition(id);
    if (at < 0)
        return;
    QAction* a = m_menu->actions()[at];
    m_menu->removeAction(a);
    delete a;
}

void CZelLastDocQMenu::EnableItem(UINT id, BOOL enable)
{
    const int at = GetItemPosition(id);
    if (at >= 0)
        m_menu->actions()[at]->setEnabled(enable != 0);
}
