// Unit settings of distances: units 21, 22, 23, stored under section
// "CZelUnitSettingsDistance".
#pragma once

#include <Zel260/values/CZelUnitSettings.h>

class CWnd;

class CZelUnitSettingsDistance : public CZelUnitSettings {
    DECLARE_DYNCREATE(CZelUnitSettingsDistance)

public:
    // The unit combo box (a widget; defined in <Zel260/values/qt/CUnitDistanceComboBox.h>).
    class CUnitDistanceComboBox;

    CZelUnitSettingsDistance();
    CZelUnitSettingsDistance(long unit, const char* format);

    // The object shared by all distances made without settings.
    static CZelUnitSettingsDistance& Default();
    // Takes the stored unit if it is a distance unit, otherwise stores `unit` and
    // takes it. Units 2 and 20 and units outside 21..23 do nothing.
    static void DefaultSettings(long unit);

    // Widget side (zel260widgets). Fills the box with the three units and selects
    // the stored one (default 21).
    void InitializeUnitDistanceComboBox(CUnitDistanceComboBox& box);
    // The box's unit: its selection's item data when that is a distance unit, else 21.
    long GetCurrentSelection(const CUnitDistanceComboBox& box) const;
    // As the angle one, with WM_ZEL_UNIT_CHANGED_DISTANCE.
    void SaveCurrentSelection(const CUnitDistanceComboBox& box, CWnd* wnd);
};
