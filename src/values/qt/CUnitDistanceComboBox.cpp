#include <Zel260/values/qt/CUnitDistanceComboBox.h>

#include "values/ZelUnitTables.h"

CZelUnitSettingsDistance::CUnitDistanceComboBox::CUnitDistanceComboBox(QWidget* parent) : CZelComboBox(parent)
{
    setEditable(true);
    setInsertPolicy(QComboBox::NoInsert);
}

long CZelUnitSettingsDistance::CUnitDistanceComboBox::GetCurrentSelection() const
{
    const long unit = static_cast<long>(GetItemData(GetCurSel()));
    return zelvalues::InList(zelvalues::kDistanceUnits, unit) ? unit : 21;
}
