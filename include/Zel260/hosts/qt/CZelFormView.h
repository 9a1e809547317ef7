// A view built from a dialog template, with the services of both views and dialogs
// (child dialogs, arranged controls). Buttons with ids speak WM_COMMAND to the view.
//
//   auto* form = new CMyForm;                 // CZelFormView(IDD_MY_FORM)
//   form->Create(myModule, parentWnd);
#pragma once

#include <Zel260/hosts/qt/CZelDialogExtensions.h>
#include <Zel260/hosts/qt/CZelView.h>

class CZelFormView : public CZelView, public CZelDialogExtensions {
    DECLARE_DYNAMIC(CZelFormView)

public:
    explicit CZelFormView(UINT templateId = 0, QWidget* parent = nullptr);
    ~CZelFormView() override;

    UINT GetTemplateId() const { return m_templateId; }
    // Builds the template of `instance` (null: AfxGetResourceHandle()) as a child of
    // `parent` (may be null) and runs OnInitialUpdate. FALSE when the template
    // isn't found.
    virtual BOOL Create(HINSTANCE instance, CWnd* parent);
    // Buttons and other commands of the form; FALSE when not handled.
    virtual BOOL OnCommand(WPARAM wParam, LPARAM lParam);

    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

protected:
    void OnInitialUpdate() override;

private:
    UINT m_templateId;
};
