#include <Zel260/values/CZelUnitSettingsAngleLatLon.h>

#include "ZelUnitTables.h"

IMPLEMENT_DYNCREATE(CZelUnitSettingsAngleLatLon, CZelUnitSettingsAngle)

CZelUnitSettingsAngleLatLon::CZelUnitSettingsAngleLatLon() : CZelUnitSettingsAngle(zelvalues::SectionAngleLatLon(), 9) {}

CZelUnitSettingsAngleLatLon::CZelUnitSettingsAngleLatLon(long unit, const char* format)
    : CZelUnitSettingsAngle(unit, format)
{
}

CZelUnitSettingsAngleLatLon& CZelUnitSettingsAngleLatLon::Default()
{
    static CZelUnitSettingsAngleLatLon shared;
    return shared;
}

CZelUnitSettingsAngle& CZelUnitSettingsAngleLatLon::SharedObject() const { return Default(); }

void CZelUnitSettingsAngleLatLon::DefaultSettings(long unit, const int* excluded)
{
    // The shared object keeps unit 2 here: the first value that asks fixes it.
    zelvalues::ChooseDefaultAngleUnit(zelvalues::SectionAngleLatLon(), unit, excluded);
}
