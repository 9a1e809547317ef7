#include <Zel260/hosts/qt/CZelDlgToolBar.h>

#include <Zel260/controls/ZelVirtualKeys.h>
#include <Zel260/platform/qt/QtWindowBackend.h>

#include <QAction>

namespace {

constexpr const char* kIdProperty = "zelCommandId";

} // namespace

CZelDlgToolBar::CZelDlgToolBar(QWidget* owner) : QToolBar(owner), m_owner(owner)
{
    Attach(ZelHwndFromWidget(this));
    setMovable(false);
    setFloatable(false);
    setToolButtonStyle(Qt::ToolButtonTextOnly);
}

CZelDlgToolBar::~CZelDlgToolBar() = default;

QAction* CZelDlgToolBar::GetButtonAction(UINT id) const
{
    for (QAction* a : actions())
        if (a->property(kIdProperty).toUInt() == id && id != 0)
            return a;
    return nullptr;
}

BOOL CZelDlgToolBar::AddButton(UINT id, const char* text, const char* tip)
{
    if (id == 0 || id > 0xFFFF || GetButtonAction(id))
        return FALSE;
    QAction* a = addAction(QString::fromUtf8(text ? text : ""));
    a->setProperty(kIdProperty, id);
    if (tip)
        a->setToolTip(QString::fromUtf8(tip));
    const HWND owner = ZelHwndFromWidget(m_owner);
    const HWND self = GetSafeHwnd();
    QObject::connect(a, &QAction::triggered, this, [owner, self, id] {
        ::SendMessage(owner, WM_COMMAND, MAKEWPARAM(static_cast<WORD>(id), BN_CLICKED), reinterpret_cast<LPARAM>(self));
    });
    return TRUE;
}

void CZelDlgToolBar::AddSeparator() { addSeparator(); }

BOOL CZelDlgToolBar::EnableButton(UINT id, BOOL enable)
{
    QAction* a = GetButtonAction(id);
    if (!a)
        return FALSE;
    a->setEnabled(enable != 0);
    return TRUE;
}

BOOL CZelDlgToolBar::CheckButton(UINT id, BOOL check)
{
    QAction* a = GetButtonAction(id);
    if (!a)
        return FALSE;
    a->setCheckable(true);
    a->setChecked(check != 0);
    return TRUE;
}

BOOL CZelDlgToolBar::IsButtonEnabled(UINT id) const
{
    const QAction* a = GetButtonAction(id);
    return a && a->isEnabled();
}

int CZelDlgToolBar::GetButtonCount() const
{
    int n = 0;
    for (QAction* a : actions())
        n += a->property(kIdProperty).isValid() ? 1 : 0;
    return n;
}
