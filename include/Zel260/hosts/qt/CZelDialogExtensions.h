// The services of the library's dialogs and form views over the shared ones
// (tool tip, arranged controls): child dialogs shown in a placeholder, the
// application's document, free control ids.
//
// Child dialogs: AddChildDialog for each page, SetChildDialogPlaceholder with the id
// of a control whose rectangle they share, then InitChildDialogs (CZelDialog's
// OnInitDialog does that) and SwitchChildDialog to change the page.
#pragma once

#include <Zel260/hosts/qt/CZelHostServices.h>
#include <Zel260/platform/CObject.h>

#include <vector>

class CZelDialog;

class CZelDialogExtensions : public virtual CZelHostServices {
public:
    struct CChildDialog {
        HINSTANCE instance = nullptr;
        UINT templateId = 0;
        CZelDialog* dialog = nullptr; // owned by the host window once created
        CRect original;               // its client rectangle from the template
    };

    explicit CZelDialogExtensions(CWnd* host);
    ~CZelDialogExtensions() override;

    // A child dialog of template `id` (class CZelDialog, or `cls`, which must derive
    // from it); `startHere` makes it the one shown first. Returns its index, -1
    // when `cls` can't make a CZelDialog.
    int AddChildDialog(HINSTANCE instance, UINT id, int startHere = 0);
    int AddChildDialog(CRuntimeClass* cls, HINSTANCE instance, UINT id, int startHere = 0);
    void SetChildDialogPlaceholder(int id) { m_placeholderId = id; }
    int GetChildDialogPlaceholder() const { return m_placeholderId; }
    // Takes the placeholder's rectangle (and removes the placeholder), creates each
    // child dialog there and shows the start child. 1 also without a placeholder
    // (then nothing happens).
    virtual int InitChildDialogs(int move = TRUE);
    // Shows child `idOrIndex` (a template id when `byId`), hiding the current one.
    // FALSE when there is no such child.
    virtual BOOL SwitchChildDialog(int idOrIndex, int byId = FALSE);
    CZelDialog* ChildDialog(int index) const;
    // The index of the child of template `id`, -1 when none.
    int ChildDialogIndex(UINT id) const;
    CRect ChildDialogRectOriginal(int index) const;
    CZelDialog* CurrentChildDialog() const;
    int CurrentChildDialogIndex() const { return m_currentChild; }
    BOOL IsCurrentChildDialogValid() const { return CurrentChildDialog() != nullptr; }
    int GetChildDialogCount() const { return static_cast<int>(m_children.size()); }
    // Gives child `index` another template id (before InitChildDialogs).
    BOOL ExchangeChildDialogId(int index, UINT id);
    // The area the child dialogs share, in the host's client coordinates.
    CRect GetChildDialogArea() const { return m_childArea; }
    // This dialog is itself a child dialog of another.
    BOOL IsChildInDialog() const { return m_childInDialog; }
    void SetChildInDialog(BOOL child) { m_childInDialog = child; }

    // The application's document; passed on to the child dialogs.
    void SetDialogDocument(CObject* document);
    void UnsetDialogDocument();
    CObject* GetDialogDocument() const { return m_document; }
    virtual void OnSetDialogDocument(CObject* document);
    virtual void OnUnsetDialogDocument();

    // Moves control `id` by (dx, dy) pixels; FALSE when there is none.
    BOOL ShiftDlgItem(UINT id, int dx, int dy);
    // The lowest control id above every id in use in the host (at least 1001).
    int GetNextFreeDlgItemID() const;

protected:
    BOOL m_childInDialog = FALSE;
    int m_startChild = 0;
    int m_currentChild = -1;
    int m_placeholderId = -1;
    std::vector<CChildDialog> m_children;
    CRect m_childArea;
    CObject* m_document = nullptr;
};
