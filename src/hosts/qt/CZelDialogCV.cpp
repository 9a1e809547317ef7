#include <Zel260/hosts/qt/CZelDialogCV.h>
#include <Zel260/hosts/qt/CZelFormViewCV.h>

#include <Zel260/frame/ZelMessages.h>
#include <Zel260/frame/ZelModule.h>
#include <Zel260/platform/qt/QtWindowBackend.h>
#include <Zel260/resources/ZelControlsResourceIds.h>

IMPLEMENT_DYNAMIC(CZelDialogCV, CZelDialog)

CZelDialogCV::CZelDialogCV(UINT templateId, QWidget* parent)
    : CZelDialog(templateId, parent), CZelInputControlContainer(this)
{
}

CZelDialogCV::~CZelDialogCV()
{
    UnhookAllDlgCtrls();
    m_containerHook.UnhookWindow();
}

CZelDialogCV* CZelDialogCV::parentCV() const
{
    if (!m_childInDialog)
        return nullptr;
    for (QWidget* p = parentWidget(); p; p = p->parentWidget())
        if (auto* d = dynamic_cast<CZelDialogCV*>(p))
            return d;
    return nullptr;
}

BOOL CZelDialogCV::OnInitDialog()
{
    if (m_hasBeenInitialized)
        UnhookAllDlgCtrls();
    m_hasBeenInitialized = 1;
    if (!m_containerHook.IsHooked())
        HookContainer();
    return CZelDialog::OnInitDialog();
}

void CZelDialogCV::OnPostInitDialog()
{
    if (m_hookAllOnInit)
        HookAllDlgCtrls(RUNTIME_CLASS(CZelDialog)); // child dialogs hook their own
    unsigned long detail = 0;
    m_emptyFields = GetFirstEmptyDlgItem(detail) ? 1 : 0;
    EnableOkButton();
    CZelDialog::OnPostInitDialog();
}

BOOL CZelDialogCV::OnEnableOkButton(BOOL showMessage)
{
    if (m_emptyFields) {
        if (showMessage) {
            unsigned long detail = 0;
            if (CWnd* w = GetFirstEmptyDlgItem(detail)) {
                CString text = ZelLoadLibraryString(IDS_ZEL_FIELD_MUST_NOT_BE_EMPTY);
                const HWND h = w->GetSafeHwnd();
                if (QWidget* qw = ZelWidgetFromHwnd(h))
                    qw->setFocus(Qt::OtherFocusReason);
                OnShowValidationText(h, static_cast<unsigned int>(::GetDlgCtrlID(h)), 0, &text);
            }
        }
        return FALSE;
    }
    return OnChildDialogEnableOk(showMessage);
}

BOOL CZelDialogCV::OnChildDialogEnableOk(BOOL showMessage)
{
    if (auto* child = dynamic_cast<CZelDialogCV*>(CurrentChildDialog()))
        return child->OnEnableOkButton(showMessage);
    return TRUE;
}

BOOL CZelDialogCV::SwitchChildDialog(int idOrIndex, int byId)
{
    if (!CZelDialog::SwitchChildDialog(idOrIndex, byId))
        return FALSE;
    unsigned long detail = 0;
    m_emptyFields = GetFirstEmptyDlgItem(detail) ? 1 : 0;
    OnEmptyFieldsChanged(m_emptyFields);
    return TRUE;
}

CWnd* CZelDialogCV::ValidateAllDlgCtrls(int ignoreEmpty, int command, unsigned long& detail, CString& text)
{
    if (CWnd* w = CZelInputControlContainer::ValidateAllDlgCtrls(ignoreEmpty, command, detail, text))
        return w;
    if (auto* child = dynamic_cast<CZelDialogCV*>(CurrentChildDialog()))
        if (CWnd* w = child->ValidateAllDlgCtrls(ignoreEmpty, command, detail, text))
            return w;
    for (QObject* o : children())
        if (auto* form = dynamic_cast<CZelFormViewCV*>(o))
            if (CWnd* w = form->ValidateAllDlgCtrls(ignoreEmpty, command, detail, text))
                return w;
    return nullptr;
}

CWnd* CZelDialogCV::GetFirstEmptyDlgItem(unsigned long& detail)
{
    if (CWnd* w = CZelInputControlContainer::GetFirstEmptyDlgItem(detail))
        return w;
    if (auto* child = dynamic_cast<CZelDialogCV*>(CurrentChildDialog()))
        if (CWnd* w = child->GetFirstEmptyDlgItem(detail))
            return w;
    for (QObject* o : children())
        if (auto* form = dynamic_cast<CZelFormViewCV*>(o))
            if (CWnd* w = form->GetFirstEmptyDlgItem(detail))
                return w;
    return nullptr;
}

void CZelDialogCV::OnDlgCtrlEmptyChanged(unsigned int id, int empty)
{
    CZelInputControlContainer::OnDlgCtrlEmptyChanged(id, empty);
    if (CZelDialogCV* parent = parentCV())
        ::SendMessage(parent->GetSafeHwnd(), WM_ZEL_INPUT_CONTROL_EMPTY_CHANGED, id, empty);
}

int CZelDialogCV::OnShowValidationText(HWND hWnd, unsigned int, unsigned long, CString* text)
{
    QWidget* w = ZelWidgetFromHwnd(hWnd);
    if (!w || !text)
        return 0;
    const QPoint bottomLeft = w->mapToGlobal(QPoint(0, w->height()));
    ShowToolTipLeftTop(*text, bottomLeft.x(), bottomLeft.y(), kValidationTextTime);
    return 1;
}

int CZelDialogCV::OnHideValidationText()
{
    HideTooltip();
    if (CZelDialogCV* parent = parentCV())
        parent->HideTooltip();
    return 1;
}

int CZelDialogCV::OnEmptyFieldsChanged(int)
{
    EnableOkButton();
    return 0;
}

int CZelDialogCV::OnDlgItemGainFocus(HWND newOwner)
{
    if (CZelDialogCV* parent = parentCV())
        return parent->OnDlgItemGainFocus(newOwner);
    if (!CZelInputControlContainer::OnDlgItemGainFocus(newOwner))
        return 0;
    if (auto* child = dynamic_cast<CZelDialogCV*>(CurrentChildDialog()))
        if (!child->CZelInputControlContainer::OnDlgItemGainFocus(newOwner))
            return 0;
    for (QObject* o : children())
        if (auto* form = dynamic_cast<CZelFormViewCV*>(o))
            if (!form->CZelInputControlContainer::OnDlgItemGainFocus(newOwner))
                return 0;
    return 1;
}

int CZelDialogCV::FocusIsBlocked()
{
    if (CZelInputControlContainer::FocusIsBlocked())
        return 1;
    if (auto* child = dynamic_cast<CZelDialogCV*>(CurrentChildDialog()))
        if (child->CZelInputControlContainer::FocusIsBlocked())
            return 1;
    for (QObject* o : children())
        if (auto* form = dynamic_cast<CZelFormViewCV*>(o))
            if (form->FocusIsBlocked())
                return 1;
    return 0;
}

CZelInputControlContainer* CZelDialogCV::GetActiveContainer()
{
    if (CZelDialogCV* parent = parentCV())
        return parent->GetActiveContainer();
    return CZelInputControlContainer::GetActiveContainer();
}

void CZelDialogCV::SetActiveContainer(CZelInputControlContainer* container)
{
    if (CZelDialogCV* parent = parentCV())
        parent->SetActiveContainer(container);
    else
        CZelInputControlContainer::SetActiveContainer(container);
}

HWND CZelDialogCV::GetLastControl() const { return m_topmostFocus ? m_topmostFocus : CZelDialog::GetLastControl(); }
