#include <Zel260/hosts/qt/CZelFormViewCV.h>
#include <Zel260/hosts/qt/CZelDialog.h>

#include <Zel260/platform/qt/QtWindowBackend.h>

IMPLEMENT_DYNAMIC(CZelFormViewCV, CZelFormView)

CZelFormViewCV::CZelFormViewCV(UINT templateId, QWidget* parent)
    : CZelFormView(templateId, parent), CZelInputControlContainer(this)
{
}

CZelFormViewCV::~CZelFormViewCV()
{
    UnhookAllDlgCtrls();
    m_containerHook.UnhookWindow();
}

void CZelFormViewCV::OnInitialUpdate()
{
    if (!m_containerHook.IsHooked())
        HookContainer();
    CZelFormView::OnInitialUpdate();
}

void CZelFormViewCV::OnPostInitialUpdate()
{
    UnhookAllDlgCtrls();
    HookAllDlgCtrls(RUNTIME_CLASS(CZelDialog));
    unsigned long detail = 0;
    m_emptyFields = GetFirstEmptyDlgItem(detail) ? 1 : 0;
    CZelFormView::OnPostInitialUpdate();
}

int CZelFormViewCV::OnShowValidationText(HWND hWnd, unsigned int, unsigned long, CString* text)
{
    QWidget* w = ZelWidgetFromHwnd(hWnd);
    if (!w || !text)
        return 0;
    const QPoint bottomLeft = w->mapToGlobal(QPoint(0, w->height()));
    ShowToolTipLeftTop(*text, bottomLeft.x(), bottomLeft.y(), 3000);
    return 1;
}

int CZelFormViewCV::OnHideValidationText()
{
    HideTooltip();
    return 1;
}
