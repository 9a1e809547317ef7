// The widget half of CZelUnitSettingsAngle: the unit combo box.
#include <Zel260/values/qt/CUnitAngleComboBox.h>

#include "ZelUnitNotify.h"
#include "values/ZelUnitTables.h"
#include "values/ZelValuesResources.h"

using namespace zelvalues;

// Settings made with a unit carry no section; they read where their kind's shared
// object, and so SaveCurrentSelection, keeps the unit.
const char* CZelUnitSettingsAngle::BoxSection() const
{
    return m_section.IsEmpty() ? SharedObject().Section().GetString() : m_section.GetString();
}

void CZelUnitSettingsAngle::InitializeUnitAngleComboBox(CUnitAngleComboBox& box, const int* excluded)
{
    m_defaultUnit = DefaultBoxUnit();
    if (IsExcluded(excluded, m_defaultUnit)) {
        for (const UnitEntry* e = kAngleUnits; e->unit != -1; ++e)
            if (!IsExcluded(excluded, e->unit)) {
                m_defaultUnit = e->unit;
                break;
            }
    }
    for (const UnitEntry* e = kAngleUnits; e->unit != -1; ++e) {
        if (IsExcluded(excluded, e->unit))
            continue;
        const int index = box.AddString(LoadString(e->textId));
        box.SetItemData(index, static_cast<DWORD_PTR>(e->unit));
    }
    const long stored = ReadStoredUnit(BoxSection(), KeyAngleNumber(), -1);
    // A stored unit of the list is selected even when excluded: then nothing shows.
    const long wanted = InList(kAngleUnits, stored) ? stored : m_defaultUnit;
    int select = -1;
    for (int i = 0; i < box.GetCount(); ++i)
        if (static_cast<long>(box.GetItemData(i)) == wanted)
            select = i;
    box.SetCurSel(select);
}

long CZelUnitSettingsAngle::GetCurrentSelection(const CUnitAngleComboBox& box) const
{
    return box.GetCurrentSelection();
}

void CZelUnitSettingsAngle::SaveCurrentSelection(const CUnitAngleComboBox& box, CWnd* wnd)
{
    const long unit = box.GetCurrentSelection();
    CZelUnitSettingsAngle& shared = SharedObject();
    const long old = shared.Unit();
    shared.Unit(unit);
    CString abbreviation;
    UnitAbbreviation(unit, abbreviation, 0);
    WriteStoredUnit(shared.BoxSection(), KeyAngleNumber(), KeyAngleText(), unit, abbreviation);
    if (unit != old)
        NotifyUnitChanged(wnd, true, old, unit);
}
