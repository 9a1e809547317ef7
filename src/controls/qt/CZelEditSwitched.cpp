#include <Zel260/controls/qt/CZelEditSwitched.h>

IMPLEMENT_DYNAMIC(CZelEditSwitched, CObject)

CZelEditSwitched::CZelEditSwitched() = default;

// The edit is a child window of the dialog and goes with it.
CZelEditSwitched::~CZelEditSwitched() = default;

CZelEdit* CZelEditSwitched::make(CRuntimeClass* cls)
{
    if (!cls)
        return new CZelEdit;
    CObject* o = cls->CreateObject();
    auto* edit = dynamic_cast<CZelEdit*>(o);
    if (!edit)
        delete o;
    return edit;
}

BOOL CZelEditSwitched::Create(UINT id, CWnd* parent, CRuntimeClass* cls)
{
    if (m_edit || !parent || !::GetDlgItem(parent->GetSafeHwnd(), static_cast<int>(id)))
        return FALSE;
    CZelEdit* edit = make(cls);
    if (!edit)
        return FALSE;
    if (!edit->SubclassDlgItem(id, parent)) {
        delete edit;
        return FALSE;
    }
    m_edit = edit;
    m_id = id;
    return TRUE;
}

BOOL CZelEditSwitched::Switch(CRuntimeClass* cls)
{
    CZelEdit* old = m_edit.data();
    if (!old)
        return FALSE;
    CZelEdit* edit = make(cls);
    if (!edit)
        return FALSE;
    const CString text = old->GetRawString();
    const int emptyAllowed = old->GetEmptyAllowed();
    const int readOnly = old->GetReadOnlyMode();
    const bool focused = old->hasFocus();
    if (!edit->SubclassWindow(old->GetSafeHwnd())) {
        delete edit;
        return FALSE;
    }
    m_edit = edit;
    edit->SetEmptyAllowed(emptyAllowed);
    edit->SetReadOnlyMode(readOnly);
    edit->SetString(text);
    if (focused)
        edit->setFocus();
    return TRUE;
}

CString CZelEditSwitched::GetString() const { return m_edit ? m_edit->GetString() : CString(); }
int CZelEditSwitched::SetString(const char* text) { return m_edit ? m_edit->SetString(text) : 0; }
int CZelEditSwitched::IsEmpty() const { return m_edit ? m_edit->IsEmpty() : 0; }
int CZelEditSwitched::GetEmptyAllowed() const { return m_edit ? m_edit->GetEmptyAllowed() : 0; }
int CZelEditSwitched::SetEmptyAllowed(int allowed) { return m_edit ? m_edit->SetEmptyAllowed(allowed) : 0; }
int CZelEditSwitched::GetReadOnlyMode() const { return m_edit ? m_edit->GetReadOnlyMode() : 0; }
int CZelEditSwitched::SetReadOnlyMode(int readOnly) { return m_edit ? m_edit->SetReadOnlyMode(readOnly) : 0; }

CZelInputControl::eState CZelEditSwitched::Validate(CString* text)
{
    return m_edit ? m_edit->Validate(text) : CZelInputControl::eStateValid;
}

int CZelEditSwitched::ValidateEmpty() { return m_edit ? m_edit->ValidateEmpty() : 0; }

void CZelEditSwitched::SetFocusInputControl()
{
    if (m_edit)
        m_edit->SetFocusInputControl();
}
