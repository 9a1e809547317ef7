// Unit settings of plain angles: units 11 to 18, stored in the settings file under
// section "CZelUnitSettingsAngle".
#pragma once

#include <Zel260/values/CZelUnitSettings.h>

class CWnd;

class CZelUnitSettingsAngle : public CZelUnitSettings {
    DECLARE_DYNCREATE(CZelUnitSettingsAngle)

public:
    // The unit combo box (a widget; defined in <Zel260/values/qt/CUnitAngleComboBox.h>).
    class CUnitAngleComboBox;

    // Section "CZelUnitSettingsAngle", precision 5.
    CZelUnitSettingsAngle();
    // The given unit and template; precision and section stay as they are (6, empty).
    CZelUnitSettingsAngle(long unit, const char* format);

    void UseDmsSymbols(int on);
    int UseDmsSymbols() const;
    void UseSecOnly(int on);
    int UseSecOnly() const;
    void TrimLeadingZeros(int on);
    int TrimLeadingZeros() const;
    void LimitToCircle(int on);
    int LimitToCircle() const;

    // The section of the settings file that holds this object's unit.
    const CString& Section() const { return m_section; }

    // The object shared by all plain angles made without settings.
    static CZelUnitSettingsAngle& Default();
    // What an application calls at start: takes the stored unit if it is an angle
    // unit not in `excluded`, otherwise stores `unit` and takes it. Units 2 and 10,
    // an excluded unit and a unit outside 11..18 do nothing. `excluded` ends with any
    // number below 1; null excludes nothing.
    static void DefaultSettings(long unit, const int* excluded);

    // Widget side (zel260widgets). Fills the box with the units not excluded and
    // selects the stored unit, or the default (14 grad; 12 DMS for latitudes and
    // longitudes; the first unit not excluded when that is excluded).
    void InitializeUnitAngleComboBox(CUnitAngleComboBox& box, const int* excluded);
    // The box's unit: its selection's item data when that is an angle unit, else 11.
    long GetCurrentSelection(const CUnitAngleComboBox& box) const;
    // Takes the box's unit into the shared object, stores it, and if it changed sends
    // WM_ZEL_UNIT_CHANGED_ANGLE (old unit, new unit) to every descendant of `wnd`,
    // deep. A null `wnd`, or one that isn't a window, gets nothing.
    void SaveCurrentSelection(const CUnitAngleComboBox& box, CWnd* wnd);

protected:
    CZelUnitSettingsAngle(const char* section, int precision);
    // The shared object that SaveCurrentSelection changes.
    virtual CZelUnitSettingsAngle& SharedObject() const;
    virtual long DefaultBoxUnit() const { return 14; }
    // The section the unit box reads: this object's, else its shared object's.
    const char* BoxSection() const;

    CString m_section;
    long m_defaultUnit = -1;
};
