// A form view whose input controls are validated, as CZelDialogCV's are: the focus
// stays on invalid content, whose reason shows below the control for 3 seconds.
#pragma once

#include <Zel260/controls/qt/CZelInputControlContainer.h>
#include <Zel260/hosts/qt/CZelFormView.h>

class CZelFormViewCV : public CZelFormView, public CZelInputControlContainer {
    DECLARE_DYNAMIC(CZelFormViewCV)

public:
    explicit CZelFormViewCV(UINT templateId = 0, QWidget* parent = nullptr);
    ~CZelFormViewCV() override;

    void OnPostInitialUpdate() override;
    int OnShowValidationText(HWND hWnd, unsigned int id, unsigned long detail, CString* text) override;
    int OnHideValidationText() override;

protected:
    void OnInitialUpdate() override;
};
