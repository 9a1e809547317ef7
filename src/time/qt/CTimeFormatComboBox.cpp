#include <Zel260/time/qt/CTimeFormatComboBox.h>

#include <Zel260/frame/ZelMessages.h>
#include <Zel260/platform/CWnd.h>
#include <Zel260/platform/WindowMessages.h>

CZelTime::CTimeFormatComboBox::CTimeFormatComboBox(QWidget* parent) : CZelComboBox(parent)
{
    UINT style = 0;
    PreCreateWindow(style);
    m_style = style;
    // A drop-down with an edit field, in the order the items are added.
    setEditable((style & 0x3) == CBS_DROPDOWN);
    setInsertPolicy(QComboBox::NoInsert);
    setMaxVisibleItems(16);
}

BOOL CZelTime::CTimeFormatComboBox::PreCreateWindow(UINT& style)
{
    style = (style & ~static_cast<UINT>(0x131)) | CBS_DROPDOWN;
    return TRUE;
}

unsigned int CZelTime::GetCurrentSelection(const CTimeFormatComboBox& combo) const
{
    const int selection = combo.GetCurSel();
    return selection >= 0 && selection <= 31 ? static_cast<unsigned int>(selection) : 0u;
}

void CZelTime::InitializeTimeFormatComboBox(CTimeFormatComboBox& combo) const
{
    const CZelTime now;
    for (unsigned int i = 0; i < eTimeFormatCount; ++i)
        combo.AddString(now.Format(TimeFormatTemplate(i), 0));
    LoadCurrentTimeFormat();
    combo.SetCurSel(static_cast<int>(CurrentTimeFormatIndex()));
}

void CZelTime::SaveCurrentSelection(const CTimeFormatComboBox& combo, CWnd* notify) const
{
    const unsigned int before = CurrentTimeFormatIndex();
    const unsigned int selection = GetCurrentSelection(combo);
    StoreCurrentTimeFormat(selection);
    if (selection == before || !notify || !::IsWindow(notify->GetSafeHwnd()))
        return;
    // Every descendant, however deep, re-formats the times it shows.
    notify->SendMessageToDescendants(WM_ZEL_FORMAT_CHANGED_TIME, before, selection, TRUE, FALSE);
}
