// A holder of one edit that stands in the place of a template control and whose
// kind can change while the dialog runs (a field that takes a distance in one mode
// and a name in another). The holder passes the input control operations on to
// the edit it holds:
//
//   CZelEditSwitched* f = AddEdit(IDC_VALUE, RUNTIME_CLASS(CMyDistanceEdit));
//   ...
//   f->Switch(RUNTIME_CLASS(CZelEdit));   // same place, id and text; new kind
#pragma once

#include <Zel260/controls/qt/CZelEdit.h>
#include <Zel260/platform/CObject.h>

#include <QPointer>

class CZelEditSwitched : public CObject {
    DECLARE_DYNAMIC(CZelEditSwitched)

public:
    CZelEditSwitched();
    ~CZelEditSwitched() override;

    // Makes an edit of class `cls` (CZelEdit when null; it must derive from
    // CZelEdit and be creatable) in the place of control `id` of `parent`, which
    // it takes over (geometry, id, layout place; the control is deleted). FALSE
    // when there is no such control, the class isn't an edit, or this holder
    // already holds one.
    BOOL Create(UINT id, CWnd* parent, CRuntimeClass* cls = nullptr);
    // Puts an edit of class `cls` in the place of the present one, keeping the
    // text, the empty-allowed and read-only settings. FALSE without an edit or
    // when `cls` can't make a CZelEdit (the present edit stays).
    BOOL Switch(CRuntimeClass* cls);

    // The edit held; null before Create or after its window was destroyed.
    CZelEdit* GetEdit() const { return m_edit.data(); }
    UINT GetDlgCtrlID() const { return m_id; }

    // The input control operations of the edit held. Without an edit: "" and 0,
    // validation answers valid (0) as a window that doesn't validate does.
    CString GetString() const;
    int SetString(const char* text);
    int IsEmpty() const;
    int GetEmptyAllowed() const;
    int SetEmptyAllowed(int allowed);
    int GetReadOnlyMode() const;
    int SetReadOnlyMode(int readOnly);
    CZelInputControl::eState Validate(CString* text = nullptr);
    int ValidateEmpty();
    void SetFocusInputControl();

private:
    static CZelEdit* make(CRuntimeClass* cls);
    QPointer<CZelEdit> m_edit;
    UINT m_id = 0;
};
