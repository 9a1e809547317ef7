#include <Zel260/values/CZelUnitSettingsDistance.h>

#include "ZelUnitTables.h"

using namespace zelvalues;

IMPLEMENT_DYNCREATE(CZelUnitSettingsDistance, CZelUnitSettings)

CZelUnitSettingsDistance::CZelUnitSettingsDistance() = default;

CZelUnitSettingsDistance::CZelUnitSettingsDistance(long unit, const char* format) : CZelUnitSettings(unit, format) {}

CZelUnitSettingsDistance& CZelUnitSettingsDistance::Default()
{
    static CZelUnitSettingsDistance shared;
    return shared;
}

void CZelUnitSettingsDistance::DefaultSettings(long unit)
{
    if (unit == 2 || unit == 20 || !InList(kDistanceUnits, unit))
        return;
    const long stored = ReadStoredUnit(SectionDistance(), KeyDistanceNumber(), -1);
    if (InList(kDistanceUnits, stored)) {
        Default().Unit(stored);
        return;
    }
    CString abbreviation;
    UnitAbbreviation(unit, abbreviation, 0);
    WriteStoredUnit(SectionDistance(), KeyDistanceNumber(), KeyDistanceText(), unit, abbreviation);
    Default().Unit(unit);
}
