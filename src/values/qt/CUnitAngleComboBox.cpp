#include <Zel260/values/qt/CUnitAngleComboBox.h>

#include "values/ZelUnitTables.h"

CZelUnitSettingsAngle::CUnitAngleComboBox::CUnitAngleComboBox(QWidget* parent) : CZelComboBox(parent)
{
    // A drop-down with an edit field, in the order the items are added.
    setEditable(true);
    setInsertPolicy(QComboBox::NoInsert);
}

long CZelUnitSettingsAngle::CUnitAngleComboBox::GetCurrentSelection() const
{
    const long unit = static_cast<long>(GetItemData(GetCurSel()));
    return zelvalues::InList(zelvalues::kAngleUnits, unit) ? unit : 11;
}
