// The widget half of CZelUnitSettingsDistance: the unit combo box.
#include <Zel260/values/qt/CUnitDistanceComboBox.h>

#include "ZelUnitNotify.h"
#include "values/ZelUnitTables.h"
#include "values/ZelValuesResources.h"

using namespace zelvalues;

void CZelUnitSettingsDistance::InitializeUnitDistanceComboBox(CUnitDistanceComboBox& box)
{
    for (const UnitEntry* e = kDistanceUnits; e->unit != -1; ++e) {
        const int index = box.AddString(LoadString(e->textId));
        box.SetItemData(index, static_cast<DWORD_PTR>(e->unit));
    }
    const long stored = ReadStoredUnit(SectionDistance(), KeyDistanceNumber(), 21);
    int select = -1;
    for (int i = 0; i < box.GetCount(); ++i)
        if (static_cast<long>(box.GetItemData(i)) == stored)
            select = i;
    box.SetCurSel(select);
}

long CZelUnitSettingsDistance::GetCurrentSelection(const CUnitDistanceComboBox& box) const
{
    return box.GetCurrentSelection();
}

void CZelUnitSettingsDistance::SaveCurrentSelection(const CUnitDistanceComboBox& box, CWnd* wnd)
{
    const long unit = box.GetCurrentSelection();
    CZelUnitSettingsDistance& shared = Default();
    const long old = shared.Unit();
    shared.Unit(unit);
    CString abbreviation;
    UnitAbbreviation(unit, abbreviation, 0);
    WriteStoredUnit(SectionDistance(), KeyDistanceNumber(), KeyDistanceText(), unit, abbreviation);
    if (unit != old)
        NotifyUnitChanged(wnd, false, old, unit);
}
