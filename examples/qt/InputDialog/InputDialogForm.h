// The example's dialog: an integer edit, a name edit with a display form, a
// required field, OK and Cancel, validated as the user moves through it.
#pragma once

#include <Zel260/controls/qt/CZelEdit.h>
#include <Zel260/hosts/qt/CZelDialogCV.h>
#include <Zel260/hosts/qt/ZelDialogTemplates.h>
#include <Zel260/platform/ResourceModule.h>
#include <Zel260/platform/qt/QtWindowBackend.h>

#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include <cerrno>
#include <cstdlib>

namespace inputdialog {

constexpr UINT IDD_INPUT = 100;
constexpr int IDC_COUNT = 1001;
constexpr int IDC_NAME = 1002;
constexpr int IDC_STATION = 1003;

// Whole numbers from 1 to 1000.
class CCountEdit : public CZelEdit {
public:
    explicit CCountEdit(QWidget* parent) : CZelEdit(parent)
    {
        CString digits("-0123456789");
        SetAllowedChars(eAllowedCharsCustom, &digits);
        SetMaxChars(5);
    }
    eState OnValidate(CString* reason) override
    {
        const eState byLength = CZelEdit::OnValidate(reason);
        if (byLength != eStateValid || IsEmpty())
            return byLength;
        const CString text = GetStringTrimmed();
        char* end = nullptr;
        errno = 0;
        const long value = std::strtol(text.GetString(), &end, 10);
        if (errno != 0 || *end != '\0' || value < 1 || value > 1000) {
            if (reason)
                *reason = "Enter a whole number from 1 to 1000";
            return eStateInvalid;
        }
        return eStateValid;
    }
    int GetInt() const override { return std::atoi(GetStringTrimmed().GetString()); }
};

// Shows the name through its display format ("Surveyor: %s") while not edited.
class CNameEdit : public CZelEdit {
public:
    explicit CNameEdit(QWidget* parent) : CZelEdit(parent)
    {
        SetDisplayFormat(CString("Surveyor: %s"));
        SetMaxChars(20);
    }
    void ShowDisplayValue() override
    {
        if (m_currentValue.IsEmpty()) {
            CZelEdit::ShowDisplayValue();
            return;
        }
        CString shown;
        shown.Format(GetDisplayFormat().GetString(), m_currentValue.GetString());
        CZelIgnoreEditChange ignore(this);
        setText(QString::fromUtf8(shown.GetString()));
    }
};

inline void BuildInput(QWidget* dlg)
{
    auto* layout = new QVBoxLayout(dlg);
    auto* form = new QFormLayout;
    auto* count = new CCountEdit(dlg);
    count->SetEmptyAllowed(1);
    auto* name = new CNameEdit(dlg);
    name->SetEmptyAllowed(1);
    auto* station = new CZelEdit(dlg);
    station->SetConversion(CZelEdit::eConversionUpper);
    station->SetMinChars(2);
    ZelSetDlgCtrlID(ZelHwndFromWidget(count), IDC_COUNT);
    ZelSetDlgCtrlID(ZelHwndFromWidget(name), IDC_NAME);
    ZelSetDlgCtrlID(ZelHwndFromWidget(station), IDC_STATION);
    form->addRow(new QLabel("Number of sets (1-1000):", dlg), count);
    form->addRow(new QLabel("Name:", dlg), name);
    form->addRow(new QLabel("Station (required):", dlg), station);
    layout->addLayout(form);
    auto* buttons = new QHBoxLayout;
    auto* ok = new QPushButton("OK", dlg);
    auto* cancel = new QPushButton("Cancel", dlg);
    ok->setDefault(true);
    ZelSetDlgCtrlID(ZelHwndFromWidget(ok), IDOK);
    ZelSetDlgCtrlID(ZelHwndFromWidget(cancel), IDCANCEL);
    buttons->addStretch();
    buttons->addWidget(ok);
    buttons->addWidget(cancel);
    layout->addLayout(buttons);
}

// The application's resource module with the dialog's template.
inline HINSTANCE Resources()
{
    static HINSTANCE module = [] {
        HINSTANCE m = ZelCreateResourceModule("InputDialogExample");
        ZelRegisterDialogTemplate(m, IDD_INPUT, {"Set-up", 0, 0, BuildInput});
        return m;
    }();
    return module;
}

class CInputDialog : public CZelDialogCV {
public:
    CInputDialog() : CZelDialogCV(IDD_INPUT) {}
    CZelEdit* Edit(int id) const
    {
        return dynamic_cast<CZelEdit*>(CWnd::FromHandlePermanent(::GetDlgItem(m_hWnd, id)));
    }
};

} // namespace inputdialog
