// Unit settings of latitudes and longitudes, stored under section
// "CZelUnitSettingsAngleLatLon".
#pragma once

#include <Zel260/values/CZelUnitSettingsAngle.h>

class CZelUnitSettingsAngleLatLon : public CZelUnitSettingsAngle {
    DECLARE_DYNCREATE(CZelUnitSettingsAngleLatLon)

public:
    // Section "CZelUnitSettingsAngleLatLon", precision 9.
    CZelUnitSettingsAngleLatLon();
    CZelUnitSettingsAngleLatLon(long unit, const char* format);

    // The object shared by all latitudes and longitudes made without settings.
    static CZelUnitSettingsAngleLatLon& Default();
    // The same tests and writing as the angle one, in this section, but the shared
    // object is left alone: the first latitude or longitude fixes its unit.
    static void DefaultSettings(long unit, const int* excluded);

protected:
    CZelUnitSettingsAngle& SharedObject() const override;
    long DefaultBoxUnit() const override { return 12; }
};
