#include <Zel260/hosts/qt/CZelFormView.h>
#include <Zel260/hosts/qt/ZelDialogTemplates.h>

#include <Zel260/controls/ZelVirtualKeys.h>
#include <Zel260/platform/ResourceModule.h>
#include <Zel260/platform/qt/QtWindowBackend.h>

#include <QAbstractButton>

IMPLEMENT_DYNAMIC(CZelFormView, CZelView)

CZelFormView::CZelFormView(UINT templateId, QWidget* parent)
    : CZelView(parent), CZelDialogExtensions(this), m_templateId(templateId)
{
    setProperty("zelFormView", true);
}

CZelFormView::~CZelFormView() = default;

BOOL CZelFormView::Create(HINSTANCE instance, CWnd* parent)
{
    const ZelDialogTemplate* tmpl = ZelFindDialogTemplate(instance ? instance : AfxGetResourceHandle(), m_templateId);
    if (!tmpl)
        return FALSE;
    if (QWidget* p = parent ? ZelWidgetFromHwnd(parent->GetSafeHwnd()) : nullptr)
        setParent(p);
    tmpl->build(this);
    const HWND self = m_hWnd;
    for (auto* b : findChildren<QAbstractButton*>()) {
        const HWND h = ZelHwndFromWidget(b);
        if (b->property("zelRoutesCommand").toBool() || ::GetDlgCtrlID(h) == 0)
            continue;
        b->setProperty("zelRoutesCommand", true);
        QObject::connect(b, &QAbstractButton::clicked, this, [self, h] {
            ::SendMessage(self, WM_COMMAND, MAKEWPARAM(static_cast<WORD>(::GetDlgCtrlID(h)), BN_CLICKED),
                          reinterpret_cast<LPARAM>(h));
        });
    }
    OnInitialUpdate();
    return TRUE;
}

void CZelFormView::OnInitialUpdate()
{
    InitChildDialogs(TRUE);
    CZelView::OnInitialUpdate();
}

BOOL CZelFormView::OnCommand(WPARAM, LPARAM) { return FALSE; }

LRESULT CZelFormView::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_COMMAND)
        return OnCommand(wParam, lParam);
    return CZelView::WindowProc(message, wParam, lParam);
}
